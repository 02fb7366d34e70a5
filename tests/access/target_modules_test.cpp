// Source through the application, as the analyses ask for it: the modules of forms, reports and modules, opened and
// closed.

#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

#include "access/target_application.h"
#include "code_database.h"
#include "golden_modules.h"
#include "jet/open_database.h"
#include "platform/codepage.h"
#include "platform/native_path.h"
#include "platform/runtime_error.h"
#include "sha256.h"
#include "support/samples.h"

namespace relvane::access {
namespace {

std::shared_ptr<Application> applicationOn(const std::filesystem::path& path) {
    auto application = newTargetApplication();
    application->OpenCurrentDatabase(textOfNativePath(path.native()), false);
    return application;
}

std::string bytesOf(const std::filesystem::path& path) {
    std::ifstream in(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(in), {}};
}

int errorOf(const std::function<void()>& statement) {
    return skipErrors(statement);
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

ObjectType typeOf(const test::GoldenModule& golden) {
    return golden.owner == "form" ? acForm : golden.owner == "report" ? acReport : acModule;
}

// As the walk does it; the object stays open.
const Module& openedModule(Application& application, ObjectType type, const Text& name) {
    switch (type) {
    case acForm:
        application.DoCmd().OpenForm(name, acViewDesign);
        return application.Forms(name).Module();
    case acReport:
        application.DoCmd().OpenReport(name, acViewDesign);
        return application.Reports(name).Module();
    default:
        application.DoCmd().OpenModule(name);
        application.DoCmd().Minimize();
        return application.Modules(name);
    }
}

// "name kind start body count; " of each procedure, found as the scanners find them: by the owners of the lines.
std::string proceduresOf(const Module& module) {
    std::string procedures;
    Text last;
    std::int32_t lastKind = 0;
    for (std::int32_t line = 1; line <= module.CountOfLines(); ++line) {
        std::int32_t kind = -1;
        const TextView name = module.ProcOfLine(line, kind);
        if (name != last || kind != lastKind) {
            last = name;
            lastKind = kind;
            procedures += toUtf8(name);
            for (const std::int32_t number :
                 {kind, module.ProcStartLine(name, kind), module.ProcBodyLine(name, kind),
                  module.ProcCountLines(name, kind)}) {
                procedures += ' ' + std::to_string(number);
            }
            procedures += "; ";
            EXPECT_EQ(module.ProcStartLine(name, kind), line);
        }
    }
    return procedures;
}

std::string digestOf(const Module& module) {
    Text all;
    for (std::int32_t line = 1; line <= module.CountOfLines(); ++line) {
        all += module.Lines(line, 1);
        all += u"\r\n";
    }
    return test::sha256(encode(all, latinCodePage));
}

TEST(TargetModules, TheModulesOfARealFileAreThoseOfTheGolden) {
    const auto path = test::realSample("access97/nwind.mdb");
    const auto golden = test::goldenModules();
    if (!path || !golden) {
        return;
    }
    const auto application = applicationOn(*path);
    ASSERT_EQ(golden->size(), 15u);
    for (const test::GoldenModule& each : *golden) {
        SCOPED_TRACE(each.row);
        const Text name = fromUtf8(each.name());
        const Module& module = openedModule(*application, typeOf(each), name);
        EXPECT_EQ(module.Type(), each.type);
        EXPECT_EQ(module.CountOfLines(), each.countOfLines);
        EXPECT_EQ(module.CountOfDeclarationLines(), each.countOfDeclarationLines);
        EXPECT_EQ(digestOf(module), each.digest);
        EXPECT_EQ(proceduresOf(module), each.procedures);
        EXPECT_EQ(module.Lines(each.countOfLines + 1, 1), u"");
        EXPECT_EQ(errorOf([&] { module.ProcStartLine(u"nothing of that name", 0); }), 35);
        application->DoCmd().Close(typeOf(each), name, acSaveNo);
    }
}

// "type lines declarations: " and the procedures.
std::string summaryOf(const Module& module) {
    return std::to_string(module.Type()) + ' ' + std::to_string(module.CountOfLines()) + ' ' +
           std::to_string(module.CountOfDeclarationLines()) + ": " + proceduresOf(module);
}

TEST(TargetModules, EveryKindOfModuleIsRead) {
    const auto application = applicationOn(test::codeDatabase());
    const auto open = [&](ObjectType type, const Text& name) -> const Module& {
        return openedModule(*application, type, name);
    };
    EXPECT_EQ(summaryOf(open(acForm, u"受注")), "1 6 1: 受注日_AfterUpdate 0 2 4 5; ");
    EXPECT_EQ(open(acForm, u"受注").Lines(5, 1), u"\tMe!受注日 = Date");
    EXPECT_EQ(open(acForm, u"受注").Lines(1, 2), u"Option Explicit\r\n");
    EXPECT_EQ(summaryOf(open(acReport, u"請求書")), "1 3 0: 頁 0 1 1 3; ");
    EXPECT_EQ(summaryOf(open(acModule, u"basMain")), "0 3 1: 合計 0 2 2 2; ");
    EXPECT_EQ(summaryOf(open(acModule, u"clsItem")), "1 4 0: 単価 3 1 1 2; 単価 1 3 3 2; ");
    EXPECT_EQ(open(acModule, u"clsItem").ProcBodyLine(u"単価", 0), 1); // the first property of the name
    EXPECT_EQ(errorOf([&] { open(acModule, u"clsItem").ProcBodyLine(u"単価", 2); }), 35);
}

TEST(TargetModules, AFormWithoutCodeHasNoModule) {
    const auto application = applicationOn(test::codeDatabase());
    application->DoCmd().OpenForm(u"Item", acViewDesign);
    EXPECT_FALSE(application->Forms(u"Item").HasModule());
    EXPECT_EQ(errorOf([&] { application->Forms(u"Item").Module(); }), 2467);
    application->DoCmd().OpenForm(u"受注", acViewDesign);
    EXPECT_TRUE(application->Forms(u"受注").HasModule());
}

TEST(TargetModules, AModuleIsThereFromOpeningToClosing) {
    const auto application = applicationOn(test::codeDatabase());
    DoCmd& commands = application->DoCmd();
    EXPECT_EQ(errorOf([&] { application->Modules(u"basMain"); }), 7961);
    EXPECT_EQ(errorOf([&] { commands.OpenModule(u"受注"); }), 2516); // a form
    commands.OpenModule(u"BASMAIN");
    const Module& module = application->Modules(u"basMain");
    commands.OpenModule(u"basMain");
    EXPECT_EQ(&application->Modules(u"BasMain"), &module); // open already
    commands.Close(acForm, u"basMain", acSaveNo);          // another kind of object
    EXPECT_EQ(&application->Modules(u"basMain"), &module);
    commands.Close(acModule, u"basmain", acSaveNo);
    EXPECT_EQ(errorOf([&] { application->Modules(u"basMain"); }), 7961);
    commands.OpenModule(u"basMain");
    application->CloseCurrentDatabase();
    EXPECT_EQ(errorOf([&] { application->Modules(u"basMain"); }), 7961);
    EXPECT_EQ(errorOf([&] { commands.OpenModule(u"basMain"); }), 2467);
    EXPECT_EQ(errorOf([&] { commands.Minimize(); }), 2467);
}

void expectNamed(const RunTimeError& error, TextView title) {
    EXPECT_EQ(error.number(), 3049);
    EXPECT_NE(error.description().find(title), Text::npos) << error.what();
}

TEST(TargetModules, AModuleWhoseSourceIsMissingOrDamagedIsNamed) {
    const auto application = applicationOn(test::codeDatabase());
    for (const Text name : {u"途中", u"行方不明", u"空"}) {
        expectNamed(failureOf([&] { application->DoCmd().OpenModule(name); }),
                    u"モジュール \"" + name + u"\"");
        EXPECT_EQ(errorOf([&] { application->Modules(name); }), 7961);
    }
    application->DoCmd().OpenForm(u"壊れた画面", acViewDesign); // its design is whole
    EXPECT_TRUE(application->Forms(u"壊れた画面").HasModule());
    expectNamed(failureOf([&] { application->Forms(u"壊れた画面").Module(); }), u"フォーム \"壊れた画面\"");
    application->DoCmd().OpenModule(u"basMain");
    EXPECT_EQ(application->Modules(u"basMain").CountOfLines(), 3);
}

// A text begins with the module's name, "Attribute VB_Name = ", here as it is compressed. The file has each twice, as a
// newer Access has added its own.
std::string withDamagedText(std::string bytes, std::string_view begin) {
    std::size_t damaged = 0;
    for (std::size_t at = bytes.find(begin); at != std::string::npos; at = bytes.find(begin, at + 1)) {
        bytes[at + 1] = '?'; // no longer "Attribut"
        ++damaged;
    }
    EXPECT_GT(damaged, 0u);
    return bytes;
}

TEST(TargetModules, ADamagedSourceOfARealFileIsNamedAndTheOthersAreRead) {
    const auto path = test::realSample("access97/nwind.mdb");
    if (!path) {
        return;
    }
    const test::TemporaryFolder folder;
    std::string bytes = withDamagedText(bytesOf(*path), {"\0Attribut\0e VB_Nam\0e = \"Uti", 27});
    bytes = withDamagedText(std::move(bytes), {"\0Attribut\0e VB_Nam\0e = \"For\0m_Orders\x88", 37});
    std::ofstream(folder / "damaged.mdb", std::ios::binary) << bytes;
    const auto application = applicationOn(folder / "damaged.mdb");
    DoCmd& commands = application->DoCmd();

    expectNamed(failureOf([&] { commands.OpenModule(u"Utility Functions"); }),
                u"モジュール \"Utility Functions\"");
    commands.OpenModule(u"Startup");
    EXPECT_GT(application->Modules(u"Startup").CountOfLines(), 0);

    commands.OpenForm(u"Orders", acViewDesign);
    expectNamed(failureOf([&] { application->Forms(u"Orders").Module(); }), u"フォーム \"Orders\"");
    commands.OpenForm(u"Employees", acViewDesign);
    EXPECT_EQ(application->Forms(u"Employees").Module().CountOfLines(), 8);
}

TEST(TargetModules, ModulesOfANewerFileOpen) {
    const auto path = test::realSample("later/northwind-2000-ja.mdb");
    if (!path) {
        return;
    }
    const auto application = applicationOn(*path);
    DoCmd& commands = application->DoCmd();
    EXPECT_EQ(errorOf([&] { commands.OpenModule(u"nothing of that name"); }), 2516);
    const Module& module = openedModule(*application, acModule, u"ユーティリティ関数");
    EXPECT_EQ(module.Type(), 0);
    EXPECT_EQ(proceduresOf(module), "IsLoaded 0 3 4 17; ");
    for (const char* name : {"later/vbaV2000.mdb", "later/vbaV2003.mdb", "later/vbaV2007.accdb"}) {
        const auto small = applicationOn(*test::realSample(name));
        EXPECT_EQ(openedModule(*small, acModule, u"Module1").Type(), 0);
        EXPECT_EQ(openedModule(*small, acModule, u"Class1").Type(), 1);
        EXPECT_EQ(proceduresOf(small->Modules(u"Class1")), "Name 3 5 6 4; Name 1 9 10 5; ");
    }
}

TEST(TargetModules, AFormOfANewerFileHasItsModule) {
    const auto path = test::realSample("later/northwind-2000-ja.mdb");
    if (!path) {
        return;
    }
    const auto application = applicationOn(*path);
    application->DoCmd().OpenForm(u"メイン スイッチボード", acViewDesign);
    const Form& form = application->Forms(u"メイン スイッチボード");
    ASSERT_TRUE(form.HasModule());
    EXPECT_GT(form.Module().CountOfLines(), form.Module().CountOfDeclarationLines());
    application->DoCmd().OpenForm(u"スタートアップ", acViewDesign);
    EXPECT_FALSE(application->Forms(u"スタートアップ").HasModule());
}

} // namespace
} // namespace relvane::access
