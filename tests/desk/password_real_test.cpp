// Targets that ask for a password: when it is asked for, what a wrong one does, and that it is kept nowhere.
#include <gtest/gtest.h>

#include "jet/file_header.h"
#include "real_program.h"

namespace relvane {
namespace {

using test::RealProgram;

constexpr TextView password = u"ﾋﾐﾂno97"; // of the project's own sample

std::filesystem::path lockedSample() {
    return test::ownSample("password.mdb");
}

TEST(TargetPassword, IsAskedForOnceASelectionThoughTheTargetIsOpenedTwice) {
    RealProgram program;
    program.dialogs.passwords = {Text(password), Text(password)};
    ASSERT_TRUE(program.select(lockedSample()));
    const Text path = program.form().lblDBName.Caption;
    EXPECT_EQ(program.dialogs.askedPasswords, std::vector<Text>{path});
    EXPECT_TRUE(program.dialogs.boxes.empty());

    program.form().optTable.choose(1);
    EXPECT_TRUE(program.press(program.form().cmdTable));
    EXPECT_EQ(program.rows(u"T_RvTblInfo").size(), 1u);
    EXPECT_EQ(program.dialogs.askedPasswords.size(), 1u);

    ASSERT_TRUE(program.select(lockedSample())); // another selection, of the same file
    EXPECT_EQ(program.dialogs.askedPasswords.size(), 2u);
}

TEST(TargetPassword, ATargetWithoutOneIsNotAskedFor) {
    RealProgram program;
    ASSERT_TRUE(program.select(test::ownSample("juchu.mdb")));
    EXPECT_TRUE(program.dialogs.askedPasswords.empty());
}

TEST(TargetPassword, IsAskedForAgainAfterAWrongOne) {
    RealProgram program;
    program.dialogs.passwords = {u"wrong", u"", Text(password)};
    ASSERT_TRUE(program.select(lockedSample()));
    EXPECT_EQ(program.dialogs.askedPasswords.size(), 3u);
    EXPECT_TRUE(program.dialogs.boxes.empty());
    EXPECT_TRUE(program.form().cmdTable.Enabled);
}

TEST(TargetPassword, CancellingIsError3031) {
    RealProgram program;
    program.dialogs.passwords = {u"wrong"};
    program.select(lockedSample());
    EXPECT_EQ(program.dialogs.askedPasswords.size(), 2u);
    ASSERT_EQ(program.dialogs.boxes.size(), 1u);
    EXPECT_NE(program.dialogs.lastText().find(u"3031"), Text::npos);
    EXPECT_EQ(program.dialogs.lastText().find(u"wrong"), Text::npos);
}

TEST(TargetPassword, TheRealFileOfAccess97OpensWithItsOwn) {
    const auto path = test::realSample("access97/password97.mdb");
    if (!path) {
        return;
    }
    RealProgram program;
    program.dialogs.passwords = {jet::readFileHeader(*jet::openByteFile(path->native())).password};
    ASSERT_TRUE(program.select(*path));
    EXPECT_TRUE(program.dialogs.boxes.empty());
    EXPECT_TRUE(program.press(program.form().cmdObject));
    EXPECT_FALSE(program.rows(u"T_RvObject").empty());
}

TEST(TargetPassword, NoFileOfTheProgramHoldsIt) {
    RealProgram program;
    program.dialogs.passwords = {u"gehe1mA", Text(password)};
    ASSERT_TRUE(program.select(lockedSample()));
    EXPECT_TRUE(program.press(program.form().cmdObject));
    program.desk->dispatch([&] { program.form().m1z.press(); });
    int files = 0;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(program.folder.path())) {
        if (entry.is_regular_file()) {
            ++files;
            const std::string bytes = test::bytesOf(entry.path());
            for (const TextView secret : {TextView(u"gehe1mA"), password}) {
                EXPECT_EQ(bytes.find(toUtf8(secret)), std::string::npos) << entry.path();
                const std::string utf16(reinterpret_cast<const char*>(secret.data()), secret.size() * 2);
                EXPECT_EQ(bytes.find(utf16), std::string::npos) << entry.path();
            }
        }
    }
    EXPECT_GE(files, 2);
}

} // namespace
} // namespace relvane
