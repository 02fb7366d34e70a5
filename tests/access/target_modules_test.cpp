// Source through the application, as the analyses ask for it: the modules of forms, reports and modules, opened and
// closed.

#include <fstream>
#include <iterator>

#include <gtest/gtest.h>

#include "access/target_application.h"
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

TEST(TargetModules, AFormWithoutCodeHasNoModule) {
    const auto path = test::realSample("access97/nwind.mdb");
    if (!path) {
        return;
    }
    const auto application = applicationOn(*path);
    application->DoCmd().OpenForm(u"Categories", acViewDesign);
    EXPECT_FALSE(application->Forms(u"Categories").HasModule());
    EXPECT_EQ(errorOf([&] { application->Forms(u"Categories").Module(); }), 2467);
    application->DoCmd().OpenForm(u"Orders", acViewDesign);
    EXPECT_TRUE(application->Forms(u"Orders").HasModule());
}

TEST(TargetModules, AModuleIsThereFromOpeningToClosing) {
    const auto path = test::realSample("access97/nwind.mdb");
    if (!path) {
        return;
    }
    const auto application = applicationOn(*path);
    DoCmd& commands = application->DoCmd();
    EXPECT_EQ(errorOf([&] { application->Modules(u"Startup"); }), 7961);
    EXPECT_EQ(errorOf([&] { commands.OpenModule(u"Orders"); }), 2516); // a form
    commands.OpenModule(u"sTARTUP");
    const Module& module = application->Modules(u"Startup");
    commands.OpenModule(u"Startup");
    EXPECT_EQ(&application->Modules(u"STARTUP"), &module); // open already
    commands.Close(acForm, u"Startup", acSaveNo);          // another kind of object
    EXPECT_EQ(&application->Modules(u"Startup"), &module);
    commands.Close(acModule, u"startup", acSaveNo);
    EXPECT_EQ(errorOf([&] { application->Modules(u"Startup"); }), 7961);
    commands.OpenModule(u"Startup");
    application->CloseCurrentDatabase();
    EXPECT_EQ(errorOf([&] { application->Modules(u"Startup"); }), 7961);
    EXPECT_EQ(errorOf([&] { commands.OpenModule(u"Startup"); }), 2467);
    EXPECT_EQ(errorOf([&] { commands.Minimize(); }), 2467);
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

TEST(TargetModules, ADamagedSourceIsNamedAndTheOthersAreRead) {
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

    const RunTimeError module = failureOf([&] { commands.OpenModule(u"Utility Functions"); });
    EXPECT_EQ(module.number(), 3049);
    EXPECT_NE(module.description().find(u"モジュール \"Utility Functions\""), Text::npos) << module.what();
    EXPECT_EQ(errorOf([&] { application->Modules(u"Utility Functions"); }), 7961);
    commands.OpenModule(u"Startup");
    EXPECT_GT(application->Modules(u"Startup").CountOfLines(), 0);

    commands.OpenForm(u"Orders", acViewDesign); // the design is whole
    Form& form = application->Forms(u"Orders");
    EXPECT_TRUE(form.HasModule());
    const RunTimeError behindForm = failureOf([&] { form.Module(); });
    EXPECT_EQ(behindForm.number(), 3049);
    EXPECT_NE(behindForm.description().find(u"フォーム \"Orders\""), Text::npos) << behindForm.what();
    commands.OpenForm(u"Employees", acViewDesign);
    EXPECT_EQ(application->Forms(u"Employees").Module().CountOfLines(), 8);
}

TEST(TargetModules, ModulesOfANewerFileSayThatTheyCannotBeReadYet) {
    const auto path = test::realSample("later/northwind-2000-ja.mdb");
    if (!path) {
        return;
    }
    const auto application = applicationOn(*path);
    DoCmd& commands = application->DoCmd();
    EXPECT_EQ(errorOf([&] { commands.OpenModule(u"nothing of that name"); }), 2516);
    const Text name = jet::openDatabase(textOfNativePath(path->native()))
                          ->Containers()
                          .Item(u"Modules")
                          .Documents()
                          .Item(0)
                          .Name();
    const RunTimeError error = failureOf([&] { commands.OpenModule(name); });
    EXPECT_EQ(error.number(), 3343);
    EXPECT_NE(error.description().find(name), Text::npos);
}

} // namespace
} // namespace relvane::access
