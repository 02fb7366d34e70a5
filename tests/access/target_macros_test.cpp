// Macros through the application: selecting one, converting it by the menu, opening and deleting the module.

#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

#include "access/macro_conversion.h"
#include "access/macro_source.h"
#include "access/target_application.h"
#include "code_database.h"
#include "platform/native_path.h"
#include "platform/runtime_error.h"
#include "support/samples.h"

namespace relvane::access {
namespace {

constexpr TextView answers = u"%M{ENTER}%C{ENTER}";

std::string bytesOf(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

int errorOf(const std::function<void()>& statement) {
    return skipErrors(statement);
}

std::shared_ptr<Application> applicationOn(const std::filesystem::path& path) {
    auto application = newTargetApplication();
    application->OpenCurrentDatabase(textOfNativePath(path.native()), false);
    return application;
}

bool isModule(Application& application, const Text& name) {
    const int error = errorOf([&] { application.DoCmd().OpenModule(name); });
    EXPECT_TRUE(error == 0 || error == 2516) << error;
    return error == 0;
}

void convertSelected(Application& application) {
    application.DoCmd().DoMenuItem(9, 0, 5, 0, 70);
}

void convert(Application& application, const Text& macro) {
    application.DoCmd().SelectObject(acMacro, macro, true);
    application.SendKeys(Text(answers));
    convertSelected(application);
}

struct Target {
    std::filesystem::path file;
    std::size_t macros = 0;
    Text macro, macroInOtherCase, otherMacro, form, report, module;
};

std::vector<Target> targets() {
    std::vector<Target> all{
        {test::codeDatabase(), 3, u"Startup", u"sTARTUP", u"印刷", u"受注", u"請求書", u"basMain"}};
    if (const auto northwind = test::realSample("access97/nwind.mdb")) {
        all.push_back({*northwind, 7, u"Sample Autokeys", u"sAMPLE autokeys", u"Suppliers", u"Orders",
                       u"Catalog", u"Startup"});
    }
    return all;
}

class TargetMacros : public ::testing::TestWithParam<Target> {
protected:
    DoCmd& commands() const { return application->DoCmd(); }
    int conversionError() const {
        return errorOf([&] { convertSelected(*application); });
    }
    bool isModule(const Text& name) const { return access::isModule(*application, name); }

    const std::filesystem::path& file() const { return GetParam().file; }
    const Text& macro() const { return GetParam().macro; }
    Text converted() const { return u"変換するﾏｸﾛ : " + macro(); }

    std::shared_ptr<Application> application = applicationOn(file());
};

INSTANTIATE_TEST_SUITE_P(OwnAndReal, TargetMacros, ::testing::ValuesIn(targets()),
                         [](const auto& target) { return target.param.file.stem().string(); });

TEST_P(TargetMacros, AMacroIsSelectedConvertedOpenedClosedAndDeleted) {
    const std::string before = bytesOf(file());
    const MacroSource source(jet::openJetFile(file().native(), {}));
    ASSERT_EQ(source.macros().size(), GetParam().macros);
    for (const MacroDocument& macro : source.macros()) {
        if (errorOf([&] { source.sheet(macro); }) != 0) {
            continue; // damaged on purpose
        }
        SCOPED_TRACE(toUtf8(macro.name));
        const Text name = u"変換するﾏｸﾛ : " + macro.name;
        commands().SelectObject(acMacro, macro.name, true);
        application->SendKeys(Text(answers));
        commands().DoMenuItem(9, 0, 5, 0, 70);
        commands().SelectObject(acMacro, macro.name, true);
        commands().OpenModule(name);
        commands().Minimize();

        const Module& module = application->Modules(name);
        EXPECT_EQ(module.Type(), 0);
        const ModuleText expected(ModuleKind::Standard, convertMacro(macro.name, source.sheet(macro)));
        EXPECT_EQ(module.CountOfLines(), static_cast<std::int32_t>(expected.lineCount()));
        EXPECT_GT(module.CountOfLines(), module.CountOfDeclarationLines());
        EXPECT_EQ(module.Lines(1, 1), u"Option Compare Database");
        EXPECT_EQ(Text(module.Lines(1, module.CountOfLines())) + u"\r\n", expected.text());

        commands().Close(acModule, name, acSaveNo);
        EXPECT_EQ(errorOf([&] { application->Modules(name); }), 7961);
        EXPECT_TRUE(isModule(name)); // closing does not delete it
        commands().Close(acModule, name, acSaveNo);
        commands().DeleteObject(acModule, name);
        EXPECT_EQ(errorOf([&] { application->Modules(name); }), 7961);
        if (macro.name != u"印刷") { // whose module the file has too
            EXPECT_FALSE(isModule(name));
            EXPECT_EQ(errorOf([&] { commands().DeleteObject(acModule, name); }), 7874);
            EXPECT_EQ(errorOf([&] { commands().SelectObject(acModule, name, true); }), 2544);
        }
    }
    EXPECT_EQ(bytesOf(file()), before);
}

TEST_P(TargetMacros, TheCommandNeedsAMacroThatIsSelectedInTheDatabaseWindow) {
    application->SendKeys(Text(answers));
    EXPECT_EQ(conversionError(), 2046);
    commands().SelectObject(acForm, GetParam().form, true);
    EXPECT_EQ(conversionError(), 2046);
    commands().SelectObject(acMacro, macro(), false);
    EXPECT_EQ(conversionError(), 2046);
    commands().SelectObject(acMacro, macro(), true);
    EXPECT_EQ(errorOf([&] { commands().DoMenuItem(9, 0, 5, 1, 70); }), 2046);
    EXPECT_EQ(errorOf([&] { commands().DoMenuItem(0, 0, 5, 0, 70); }), 2046);
    EXPECT_FALSE(isModule(converted()));
}

TEST_P(TargetMacros, AnotherWindowTakesTheSelectionAway) {
    const std::function<void()> steps[] = {
        [&] { commands().OpenForm(GetParam().form, acViewDesign); },
        [&] { commands().OpenReport(GetParam().report, acViewDesign); },
        [&] { commands().OpenModule(GetParam().module); },
        [&] { convert(*application, GetParam().otherMacro); },
        [&] { commands().SelectObject(acModule, GetParam().module, true); },
    };
    for (const auto& step : steps) {
        commands().SelectObject(acMacro, macro(), true);
        step();
        application->SendKeys(Text(answers));
        EXPECT_EQ(conversionError(), 2046);
    }
    // What selects nothing, because it fails, leaves the selection.
    commands().SelectObject(acMacro, macro(), true);
    EXPECT_EQ(errorOf([&] { commands().SelectObject(acMacro, u"nothing of that name", true); }), 2544);
    application->SendKeys(Text(answers));
    EXPECT_EQ(conversionError(), 0);
}

TEST_P(TargetMacros, BothDialogsMustBeAnswered) {
    commands().SelectObject(acMacro, macro(), true);
    for (const TextView keys : {u"", u"%M{ENTER}", u"%M%C", u"{ESC}{ESC}"}) {
        application->SendKeys(Text(keys));
        EXPECT_EQ(conversionError(), 2501) << toUtf8(keys);
        EXPECT_FALSE(isModule(converted()));
        commands().SelectObject(acMacro, macro(), true);
    }
    application->SendKeys(u"%M{ENTER}");
    application->SendKeys(u"%C{ENTER}");
    EXPECT_EQ(conversionError(), 0);
    EXPECT_TRUE(isModule(converted()));
}

TEST_P(TargetMacros, KeysAnswerOneCommandAlone) {
    application->SendKeys(Text(answers));
    EXPECT_EQ(conversionError(), 2046); // nothing is selected
    commands().SelectObject(acMacro, macro(), true);
    EXPECT_EQ(conversionError(), 2501);
    application->SendKeys(Text(answers) + Text(answers));
    EXPECT_EQ(conversionError(), 0);
    commands().SelectObject(acMacro, macro(), true);
    EXPECT_EQ(conversionError(), 2501);
}

TEST_P(TargetMacros, OnlyObjectsThatExistAreSelected) {
    commands().SelectObject(acForm, GetParam().form, true);
    commands().SelectObject(acReport, GetParam().report, true);
    commands().SelectObject(acMacro, GetParam().macroInOtherCase, true);
    commands().SelectObject(acModule, GetParam().module, true);
    for (const ObjectType type : {acForm, acReport, acMacro, acModule}) {
        EXPECT_EQ(errorOf([&] { commands().SelectObject(type, u"nothing of that name", true); }), 2544);
    }
    EXPECT_EQ(errorOf([&] { commands().SelectObject(acMacro, GetParam().module, true); }), 2544); // a module
    convert(*application, macro());
    commands().SelectObject(acModule, converted(), true);
    EXPECT_EQ(errorOf([&] { commands().SelectObject(acMacro, converted(), true); }), 2544);
}

TEST_P(TargetMacros, ObjectsOfTheFileAreNotDeleted) {
    convert(*application, macro());
    EXPECT_EQ(errorOf([&] { commands().DeleteObject(acModule, GetParam().module); }), 3027);
    EXPECT_EQ(errorOf([&] { commands().DeleteObject(acForm, GetParam().form); }), 3027);
    EXPECT_EQ(errorOf([&] { commands().DeleteObject(acReport, GetParam().report); }), 3027);
    EXPECT_EQ(errorOf([&] { commands().DeleteObject(acMacro, macro()); }), 3027);
    for (const ObjectType type : {acForm, acReport, acMacro}) {
        EXPECT_EQ(errorOf([&] { commands().DeleteObject(type, converted()); }), 7874);
    }
    EXPECT_TRUE(isModule(GetParam().module));
    EXPECT_TRUE(isModule(converted()));
}

TEST_P(TargetMacros, DeletingAnOpenModuleClosesIt) {
    convert(*application, macro());
    commands().OpenModule(converted());
    commands().DeleteObject(acModule, converted());
    EXPECT_EQ(errorOf([&] { application->Modules(converted()); }), 7961);
}

TEST_P(TargetMacros, ConvertingAgainReplacesTheModule) {
    convert(*application, macro());
    commands().OpenModule(converted());
    convert(*application, GetParam().macroInOtherCase);
    EXPECT_EQ(errorOf([&] { application->Modules(converted()); }), 7961); // it was another
    commands().DeleteObject(acModule, converted());
    EXPECT_FALSE(isModule(converted()));
}

TEST_P(TargetMacros, ConvertedModulesVanishWithTheDatabase) {
    convert(*application, macro());
    commands().SelectObject(acMacro, macro(), true);
    application->SendKeys(Text(answers));
    application->CloseCurrentDatabase();
    EXPECT_EQ(conversionError(), 2046);
    EXPECT_EQ(errorOf([&] { commands().SelectObject(acMacro, macro(), true); }), 2467);
    EXPECT_EQ(errorOf([&] { commands().DeleteObject(acModule, converted()); }), 2467);
    application->OpenCurrentDatabase(textOfNativePath(file().native()), false);
    EXPECT_FALSE(isModule(converted()));
    EXPECT_EQ(conversionError(), 2046);
}

TEST(TargetMacrosOfOneFile, AHiddenMacroIsConvertedLikeOthers) {
    ASSERT_TRUE(
        MacroSource(jet::openJetFile(test::codeDatabase().native(), {})).find(u"Startup")->isHidden());
    const auto application = applicationOn(test::codeDatabase());
    convert(*application, u"Startup");
    EXPECT_TRUE(isModule(*application, u"変換するﾏｸﾛ : Startup"));
}

// A module that somebody kept from an earlier conversion has the name of the new one.
TEST(TargetMacrosOfOneFile, AConvertedModuleHidesTheOneOfTheFileUntilItIsDeleted) {
    const Text name = u"変換するﾏｸﾛ : 印刷";
    const auto application = applicationOn(test::codeDatabase());
    DoCmd& commands = application->DoCmd();
    commands.OpenModule(name);
    EXPECT_EQ(application->Modules(name).Lines(1, 1), u"' 以前の変換");
    EXPECT_EQ(errorOf([&] { commands.DeleteObject(acModule, name); }), 3027);
    convert(*application, u"印刷");
    EXPECT_EQ(errorOf([&] { application->Modules(name); }), 7961); // what was open was the other
    commands.OpenModule(name);
    EXPECT_EQ(application->Modules(name).Lines(1, 1), u"Option Compare Database");
    commands.DeleteObject(acModule, name);
    commands.OpenModule(name);
    EXPECT_EQ(application->Modules(name).Lines(1, 1), u"' 以前の変換");
    EXPECT_EQ(errorOf([&] { commands.DeleteObject(acModule, name); }), 3027);
}

// `whole` is another macro of the file.
void expectDamaged(Application& application, const Text& damaged, const Text& whole) {
    const Text converted = u"変換するﾏｸﾛ : " + damaged;
    try {
        convert(application, damaged);
        ADD_FAILURE() << "nothing failed";
    } catch (const RunTimeError& error) {
        EXPECT_EQ(error.number(), 3049);
        EXPECT_NE(error.description().find(u"マクロ \"" + damaged + u"\""), Text::npos) << error.what();
    }
    EXPECT_FALSE(isModule(application, converted));
    EXPECT_EQ(errorOf([&] { application.DoCmd().DeleteObject(acModule, converted); }), 7874);
    convert(application, whole);
    EXPECT_TRUE(isModule(application, u"変換するﾏｸﾛ : " + whole));
}

TEST(TargetMacrosOfOneFile, ADamagedMacroIsNamedAndTheOthersAreConverted) {
    expectDamaged(*applicationOn(test::codeDatabase()), u"壊れたﾏｸﾛ", u"Startup");
    const auto path = test::realSample("access97/nwind.mdb");
    if (!path) {
        return;
    }
    // The high byte of the length of a text becomes 1, in both copies that the file has.
    std::string bytes = bytesOf(*path);
    const std::string text("=\0Runs automatically", 20);
    for (std::size_t at = 0; (at = bytes.find(text, at)) != std::string::npos; ++at) {
        bytes[at + 1] = 1;
    }
    const test::TemporaryFolder folder;
    std::ofstream(folder / "damaged.mdb", std::ios::binary) << bytes;
    expectDamaged(*applicationOn(folder / "damaged.mdb"), u"Sample Autokeys", u"Suppliers");
}

TEST(TargetMacrosOfNewerFiles, AreConvertedLikeOthers) {
    const auto path = test::realSample("later/northwind-2000-ja.mdb");
    if (!path) {
        return;
    }
    const MacroSource source(jet::openJetFile(path->native(), {}));
    const auto application = applicationOn(*path);
    ASSERT_EQ(source.macros().size(), 5u);
    for (const MacroDocument& macro : source.macros()) {
        convert(*application, macro.name);
        const Text module = convertedModuleName(macro.name);
        application->DoCmd().OpenModule(module);
        EXPECT_GT(application->Modules(module).CountOfLines(), 10) << toUtf8(macro.title());
    }
}

} // namespace
} // namespace relvane::access
