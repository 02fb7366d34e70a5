// The shell's question before it replaces a file.
#include "system/shell_copy.h"

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/native_path.h"
#include "support/fakes_platform.h"
#include "support/samples.h"

namespace relvane {
namespace {

class ShellCopy : public testing::Test {
protected:
    void copy(const Text& to) {
        shellCopy(dialogs, [this](const Text& from, const Text& place) {
            copied = {from, place};
        })(u"from", to);
    }

    test::TemporaryFolder folder;
    Text path = textOfNativePath((folder / "a.adb").string());
    test::FakeDialogs dialogs;
    std::vector<Text> copied;
};

TEST_F(ShellCopy, NewFileIsMadeWithoutAQuestion) {
    copy(path);
    EXPECT_THAT(copied, testing::ElementsAre(u"from", path));
    EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(ShellCopy, FileThatIsThereIsReplacedWhenThePersonAgrees) {
    std::ofstream(folder / "a.adb") << "old";
    dialogs.answers = {boxYes};
    copy(path);
    EXPECT_THAT(copied, testing::ElementsAre(u"from", path));
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(dialogs.boxes[0].text, u"ファイルは既に存在します。上書きしますか？\r" + path);
    EXPECT_EQ(dialogs.boxes[0].style, yesNo | exclamationIcon);
}

TEST_F(ShellCopy, RefusalLeavesEverythingAsItIsAndIsNoError) {
    std::ofstream(folder / "a.adb") << "old";
    dialogs.answers = {boxNo};
    copy(path);
    EXPECT_TRUE(copied.empty());
}

} // namespace
} // namespace relvane
