// Whom the opener asks for a password, and how long it remembers.
#include "access/target_opener.h"

#include <gtest/gtest.h>

#include "access/target_application.h"
#include "platform/native_path.h"
#include "platform/runtime_error.h"
#include "sample_builder/database_writer.h"
#include "support/fakes_platform.h"
#include "support/samples.h"

namespace relvane::access {
namespace {

class TargetOpenerTest : public testing::Test {
protected:
    Text write(const std::string& name, Text password) {
        samples::DatabaseSpec spec;
        spec.password = std::move(password);
        samples::writeDatabase(spec, folder_ / name);
        return textOfNativePath((folder_ / name).native());
    }

    test::TemporaryFolder folder_;
    test::FakeDialogs dialogs_;
    TargetOpener opener_{dialogs_};
};

TEST_F(TargetOpenerTest, RemembersAsLongAsTheApplicationIsThere) {
    const Text path = write("a.mdb", u"鍵");
    dialogs_.passwords = {u"鍵", u"鍵", u"鍵"};
    auto application = newTargetApplication(opener_.newSelection());
    application->OpenCurrentDatabase(path, false);
    opener_.open(path);
    application->CloseCurrentDatabase();
    application->OpenCurrentDatabase(path, false);
    EXPECT_EQ(dialogs_.askedPasswords.size(), 1u);

    application.reset();
    opener_.open(path);
    EXPECT_EQ(dialogs_.askedPasswords.size(), 2u);
    application = newTargetApplication(opener_.newSelection());
    application->OpenCurrentDatabase(path, false);
    EXPECT_EQ(dialogs_.askedPasswords.size(), 3u);
}

TEST_F(TargetOpenerTest, ForgetsWithAnotherTarget) {
    const Text first = write("a.mdb", u"鍵"), second = write("b.mdb", u"錠");
    dialogs_.passwords = {u"鍵", u"錠", u"鍵"};
    const auto application = newTargetApplication(opener_.newSelection());
    opener_.open(first);
    opener_.open(second);
    opener_.open(first);
    EXPECT_EQ(dialogs_.askedPasswords, (std::vector<Text>{first, second, first}));
}

TEST_F(TargetOpenerTest, OtherErrorsAskNothing) {
    EXPECT_EQ(skipErrors([&] { opener_.open(textOfNativePath((folder_ / "none.mdb").native())); }), 3024);
    EXPECT_TRUE(dialogs_.askedPasswords.empty());
}

TEST_F(TargetOpenerTest, CancellingIsTheErrorOfTheWrongPassword) {
    const Text path = write("a.mdb", u"鍵");
    EXPECT_EQ(skipErrors([&] { opener_.open(path); }), 3031);
    EXPECT_EQ(dialogs_.askedPasswords.size(), 1u);
}

} // namespace
} // namespace relvane::access
