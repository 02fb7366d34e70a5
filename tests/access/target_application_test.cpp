#include "access/target_application.h"

#include <fstream>

#include <gtest/gtest.h>

#include "jet/open_database.h"
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

RunTimeError failureOf(const std::function<void()>& statement) {
    try {
        statement();
    } catch (const RunTimeError& error) {
        return error;
    }
    ADD_FAILURE() << "nothing failed";
    return RunTimeError(0, {});
}

// The range of numbers that ends the program.
bool isFatal(const RunTimeError& error) {
    return error.number() >= 2449 && error.number() <= 2999;
}

TEST(TargetApplication, EveryDesignOfANewerFileOpens) {
    const Text path = sample("later/northwind-2000-ja.mdb");
    if (path.empty()) {
        return;
    }
    const auto application = newTargetApplication();
    application->OpenCurrentDatabase(path, false);
    auto& commands = application->DoCmd();
    EXPECT_EQ(errorOf([&] { commands.OpenForm(u"nothing of that name", acViewDesign); }), 2102);
    EXPECT_EQ(errorOf([&] { commands.OpenReport(u"nothing of that name", acViewDesign); }), 2103);
    const auto database = jet::openDatabase(path);
    for (const auto& document : database->Containers().Item(u"Forms").Documents()) {
        commands.OpenForm(document->Name(), acViewDesign);
        EXPECT_EQ(application->Forms(document->Name()).Name(), document->Name());
    }
    for (const auto& document : database->Containers().Item(u"Reports").Documents()) {
        commands.OpenReport(document->Name(), acViewDesign);
        EXPECT_GT(application->Reports(document->Name()).Controls().Count(), 0);
    }
    EXPECT_EQ(application->Forms(u"受注")(u"RecordSource"), Value(Text(u"受注クエリ")));
}

struct Target {
    std::filesystem::path file;
    Text form, formInOtherCase, otherForm, report;
};

std::vector<Target> targets() {
    std::vector<Target> all{
        {test::ownSample("juchu.mdb"), u"受注明細ｻﾌﾞ", u"受注明細ｻﾌﾞ", u"得意先台帳", u"請求書"}};
    if (const auto northwind = test::realSample("access97/nwind.mdb")) {
        all.push_back({*northwind, u"Orders", u"oRDERS", u"Customers", u"Catalog"});
    }
    return all;
}

class OpenTarget : public ::testing::TestWithParam<Target> {
protected:
    void SetUp() override {
        application->OpenCurrentDatabase(textOfNativePath(GetParam().file.native()), false);
    }
    DoCmd& commands() const { return application->DoCmd(); }

    std::shared_ptr<Application> application = newTargetApplication();
};

INSTANTIATE_TEST_SUITE_P(OwnAndReal, OpenTarget, ::testing::ValuesIn(targets()),
                         [](const auto& target) { return target.param.file.stem().string(); });

// No Japanese name has another case.
TEST(OpenTargetNames, AreLookedUpWithoutRegardToCase) {
    const auto application = newTargetApplication();
    application->OpenCurrentDatabase(textOfNativePath(test::ownSample("juchu.mdb").native()), false);
    application->DoCmd().OpenForm(u"f_1998", acViewDesign);
    EXPECT_EQ(application->Forms(u"F_1998").Name(), u"F_1998");
}

TEST_P(OpenTarget, NamesThatDoNotExistAndViewsThatAreNotTheDesignAreNotFatal) {
    EXPECT_EQ(errorOf([&] { commands().OpenForm(GetParam().report, acViewDesign); }), 2102);
    EXPECT_EQ(errorOf([&] { commands().OpenReport(GetParam().form, acViewDesign); }), 2103);
    EXPECT_EQ(errorOf([&] { commands().OpenReport(u"nothing of that name", acViewPreview); }), 2103);
    for (const View view : {acViewNormal, acViewPreview}) {
        const RunTimeError error = failureOf([&] { commands().OpenReport(GetParam().report, view); });
        EXPECT_FALSE(isFatal(error));
        EXPECT_NE(error.description().find(u"デザイン"), Text::npos);
    }
    EXPECT_FALSE(isFatal(failureOf([&] { commands().OpenForm(GetParam().form, acViewPreview); })));
    EXPECT_EQ(errorOf([&] { application->Forms(GetParam().form); }), 2450);
    EXPECT_EQ(errorOf([&] { application->Reports(GetParam().report); }), 2451);
}

TEST_P(OpenTarget, ClosingTakesAFormOutOfForms) {
    commands().OpenForm(GetParam().formInOtherCase, acViewDesign);
    EXPECT_EQ(application->Forms(GetParam().formInOtherCase).Name(), GetParam().form);
    EXPECT_EQ(errorOf([&] { application->Reports(GetParam().form); }), 2451);
    commands().Close(acReport, GetParam().form, acSaveNo); // another kind of object
    EXPECT_EQ(application->Forms(GetParam().form).Name(), GetParam().form);
    commands().Close(acForm, GetParam().formInOtherCase, acSaveNo);
    EXPECT_EQ(errorOf([&] { application->Forms(GetParam().form); }), 2450);
    commands().Close(acForm, GetParam().form, acSaveNo);
    commands().Close(acForm, u"nothing of that name", acSaveNo);
}

TEST_P(OpenTarget, OpeningTwiceKeepsWhatIsOpen) {
    commands().OpenForm(GetParam().form, acViewDesign);
    Form& form = application->Forms(GetParam().form);
    form.setVisible(false);
    commands().OpenForm(GetParam().formInOtherCase, acViewDesign);
    EXPECT_EQ(&application->Forms(GetParam().form), &form);
    EXPECT_EQ(form(u"Visible"), Value(false));
}

TEST_P(OpenTarget, FormsAndReportsAreOpenBesideEachOther) {
    commands().OpenForm(GetParam().form, acViewDesign);
    Form& orders = application->Forms(GetParam().form);
    ASSERT_GT(orders.Controls().Count(), 0);
    Control& control = orders.Controls().Item(0);
    const Text name = control.Name();
    commands().OpenForm(GetParam().otherForm, acViewDesign);
    commands().OpenReport(GetParam().report, acViewDesign);
    EXPECT_EQ(application->Forms(GetParam().otherForm).Name(), GetParam().otherForm);
    EXPECT_EQ(application->Reports(GetParam().report).Name(), GetParam().report);
    commands().Close(acForm, GetParam().otherForm, acSaveNo);
    EXPECT_EQ(&application->Forms(GetParam().form), &orders); // lives until it is closed itself
    EXPECT_EQ(control(u"Name"), Value(name));
    EXPECT_EQ(application->Reports(GetParam().report).Name(), GetParam().report);
}

TEST_P(OpenTarget, ClosingTheDatabaseClosesWhatIsOpen) {
    commands().OpenForm(GetParam().form, acViewDesign);
    application->CloseCurrentDatabase();
    EXPECT_EQ(errorOf([&] { application->Forms(GetParam().form); }), 2450);
    EXPECT_EQ(errorOf([&] { commands().OpenForm(GetParam().form, acViewDesign); }), 2467);
    EXPECT_EQ(errorOf([&] { commands().Close(acForm, GetParam().form, acSaveNo); }), 2467);
}

// The pages that hold a row of the catalogue hold the designs as well: one is damaged where its stream begins.
TEST_P(OpenTarget, ADamagedDesignIsNamed) {
    std::ifstream in(GetParam().file, std::ios::binary);
    std::string bytes((std::istreambuf_iterator<char>(in)), {});
    commands().OpenForm(GetParam().otherForm, acViewDesign);
    const std::string head("\x11\0\x11\0\0\0\0\0\x96\0", 10);
    std::size_t damaged = 0;
    for (std::size_t at = bytes.find(head); at != std::string::npos; at = bytes.find(head, at + 1)) {
        bytes[at + head.size()] = '\xFD'; // the end, with everything behind it left over
        ++damaged;
    }
    ASSERT_GT(damaged, 0u);
    const test::TemporaryFolder folder;
    std::ofstream(folder / "damaged.mdb", std::ios::binary) << bytes;
    application->CloseCurrentDatabase();
    application->OpenCurrentDatabase(textOfNativePath((folder / "damaged.mdb").native()), false);
    const RunTimeError error =
        failureOf([&] { commands().OpenForm(GetParam().formInOtherCase, acViewDesign); });
    EXPECT_EQ(error.number(), 3049);
    EXPECT_NE(error.description().find(u"フォーム \"" + GetParam().form + u"\""), Text::npos);
    EXPECT_EQ(errorOf([&] { application->Forms(GetParam().form); }), 2450);
    commands().OpenReport(GetParam().report, acViewDesign); // the others are as whole as before
    EXPECT_EQ(application->Reports(GetParam().report).Name(), GetParam().report);
}

} // namespace
} // namespace relvane::access
