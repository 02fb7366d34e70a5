// The program make_sample: what its words do and what it answers to wrong ones.

#include <cstdlib>
#include <fstream>
#include <sys/wait.h>

#include <gtest/gtest.h>

#include "jet/open_database.h"
#include "sample_builder/database_writer.h"
#include "sample_builder/description.h"
#include "support/samples.h"

namespace relvane::samples {
namespace {

class MakeSample : public testing::Test {
protected:
    int run(const std::string& words) {
        const std::string command = std::string(RELVANE_MAKE_SAMPLE) + ' ' + described_.string() + ' ' +
                                    output_.string() + words + " 2> " + (folder_ / "errors").string();
        return WEXITSTATUS(std::system(command.c_str()));
    }
    std::string errors() const {
        std::ifstream file(folder_ / "errors");
        return {std::istreambuf_iterator<char>(file), {}};
    }
    Bytes written() const {
        std::ifstream file(output_, std::ios::binary);
        return {std::istreambuf_iterator<char>(file), {}};
    }

    test::TemporaryFolder folder_;
    std::filesystem::path described_ = test::sourceFolder() / "samples" / "zaiko.txt";
    std::filesystem::path output_ = folder_ / "zaiko.mdb";
};

TEST_F(MakeSample, WritesAccess97UnlessToldAnotherFormat) {
    const DatabaseSpec spec = readDescription(described_);
    ASSERT_EQ(run(""), 0) << errors();
    EXPECT_TRUE(written() == databaseBytes(spec));
    ASSERT_EQ(run(" --format 97"), 0) << errors();
    EXPECT_TRUE(written() == databaseBytes(spec));
    ASSERT_EQ(run(" --format 2000"), 0) << errors();
    EXPECT_TRUE(written() == databaseBytes(savedAs(spec, FileFormat::Access2000)));
}

TEST_F(MakeSample, SaysTheVersionOfAccess2000) {
    ASSERT_EQ(run(" --format 2000"), 0) << errors();
    const auto database = jet::openDatabase(fromUtf8(output_.string()));
    EXPECT_EQ(database->Version(), u"4.0");
    EXPECT_EQ(database->Properties()(u"AccessVersion"), Value(u"08.50"));
}

TEST_F(MakeSample, RefusesWordsThatItDoesNotKnow) {
    EXPECT_EQ(run(" --format 2003"), 2);
    EXPECT_EQ(errors(), "make_sample: no such format: 2003 (97 or 2000)\n");
    EXPECT_EQ(run(" --format"), 2);
    EXPECT_EQ(errors(), "usage: make_sample DESCRIPTION OUTPUT.mdb [--format 97|2000]\n");
    EXPECT_EQ(run(" --version 2000"), 2);
    EXPECT_FALSE(std::filesystem::exists(output_));
}

} // namespace
} // namespace relvane::samples
