#include "access/target_application.h"

#include <fstream>

#include <gtest/gtest.h>

#include "platform/native_path.h"
#include "platform/runtime_error.h"
#include "support/samples.h"

namespace relvane::access {
namespace {

int errorOf(const std::function<void()>& statement) {
    return skipErrors(statement);
}

Text sample(const std::string& name) {
    const auto path = test::realSample(name);
    return path ? textOfNativePath(path->native()) : Text();
}

TEST(TargetApplication, ClosingWithoutADatabaseIs2467) {
    const auto application = newTargetApplication();
    EXPECT_EQ(errorOf([&] { application->CloseCurrentDatabase(); }), 2467);
}

TEST(TargetApplication, OpensClosesAndOpensAgain) {
    const Text path = sample("access97/nwind.mdb");
    if (path.empty()) {
        return;
    }
    const auto application = newTargetApplication();
    application->OpenCurrentDatabase(path, false);
    EXPECT_EQ(errorOf([&] { application->OpenCurrentDatabase(path, false); }), 7867);
    application->CloseCurrentDatabase();
    EXPECT_EQ(errorOf([&] { application->CloseCurrentDatabase(); }), 2467);
    application->OpenCurrentDatabase(path, false);
}

TEST(TargetApplication, AFileOfAccess95Is7866) {
    if (const Text path = sample("older/acc95.mdb"); !path.empty()) {
        const auto application = newTargetApplication();
        EXPECT_EQ(errorOf([&] { application->OpenCurrentDatabase(path, false); }), 7866);
        EXPECT_EQ(errorOf([&] { application->CloseCurrentDatabase(); }), 2467);
    }
}

TEST(TargetApplication, AFileOfAccess2Is7866) {
    const test::TemporaryFolder folder;
    std::string bytes(2048, '\0');
    bytes.replace(1, 1, 1, '\1');
    bytes.replace(4, 15, "Standard Jet DB");
    bytes[0x40A] = 8;
    std::ofstream(folder / "old.mdb", std::ios::binary) << bytes;
    const auto application = newTargetApplication();
    const Text path = textOfNativePath((folder / "old.mdb").native());
    EXPECT_EQ(errorOf([&] { application->OpenCurrentDatabase(path, false); }), 7866);
}

TEST(TargetApplication, OtherFaultsKeepTheNumbersOfOpening) {
    const auto application = newTargetApplication();
    EXPECT_EQ(errorOf([&] { application->OpenCurrentDatabase(u"/no such folder/x.mdb", false); }), 3044);
    if (const Text path = sample("odd/not-a-database.mdb"); !path.empty()) {
        EXPECT_EQ(errorOf([&] { application->OpenCurrentDatabase(path, false); }), 3343);
    }
    if (const Text path = sample("access97/password97.mdb"); !path.empty()) {
        EXPECT_EQ(errorOf([&] { application->OpenCurrentDatabase(path, false); }), 3031);
    }
}

TEST(TargetApplication, NewerFilesOpenButTheirDesignsAreNotReadYet) {
    const Text path = sample("later/northwind-2000-ja.mdb");
    if (path.empty()) {
        return;
    }
    const auto application = newTargetApplication();
    application->OpenCurrentDatabase(path, false);
    EXPECT_EQ(errorOf([&] { application->DoCmd().OpenReport(u"nothing of that name", acViewPreview); }),
              2103);
}

TEST(TargetApplication, OpeningAReportSaysThatItsDesignIsNotRead) {
    const Text path = sample("access97/nwind.mdb");
    if (path.empty()) {
        return;
    }
    const auto application = newTargetApplication();
    EXPECT_EQ(errorOf([&] { application->DoCmd().OpenReport(u"Catalog", acViewPreview); }), 2467);
    application->OpenCurrentDatabase(path, false);
    try {
        application->DoCmd().OpenReport(u"catalog", acViewPreview);
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number(), 2103);
        EXPECT_NE(error.description().find(u"デザイン"), Text::npos);
    }
}

} // namespace
} // namespace relvane::access
