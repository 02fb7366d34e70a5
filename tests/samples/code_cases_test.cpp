// The code and the macros of the sample application: they read back as described, they fit the designs whose events
// name them, and they have the cases that lists of code are particular about.

#include <algorithm>
#include <set>

#include <gtest/gtest.h>

#include "access/macro_source.h"
#include "access/module_procedures.h"
#include "access/module_source.h"
#include "sample_builder/description.h"
#include "sample_builder/design_writer.h"
#include "support/file_formats.h"
#include "support/samples.h"

namespace relvane::samples {
namespace {

using access::ModuleKind;
using access::ModuleOwner;
using access::ModuleProcedures;
using access::ModuleText;
using access::ProcedureKind;

class CodeCases : public testing::TestWithParam<FileFormat> {
protected:
    CodeCases()
        : spec_(readDescription(test::sourceFolder() / "samples" / "juchu.txt")),
          file_(jet::openJetFile(test::ownSample("juchu", GetParam()).native(), {})),
          modules_(file_),
          macros_(file_) {}

    ModuleText text(ModuleOwner owner, TextView name) const {
        const auto* document = modules_.find(owner, name);
        return document == nullptr ? throw std::out_of_range(toUtf8(name)) : modules_.text(*document);
    }

    std::vector<std::pair<ModuleOwner, const DocumentSpec*>> documentsWithModule() const {
        std::vector<std::pair<ModuleOwner, const DocumentSpec*>> documents;
        const auto add = [&](ModuleOwner owner, const std::vector<DocumentSpec>& list) {
            for (const DocumentSpec& document : list) {
                if (document.module) {
                    documents.emplace_back(owner, &document);
                }
            }
        };
        add(ModuleOwner::Form, spec_.forms);
        add(ModuleOwner::Report, spec_.reports);
        add(ModuleOwner::Module, spec_.modules);
        return documents;
    }

    // Every event of every object of every form and report, with the name that its procedure has before "_".
    template <class Visitor>
    void visitEvents(Visitor visit) const {
        for (const auto* documents : {&spec_.forms, &spec_.reports}) {
            for (const DocumentSpec& document : *documents) {
                if (document.design) {
                    visitEvents(document, document.design->root, visit);
                }
            }
        }
    }

    bool hasMember(const Text& macro, const Text& member) const {
        const access::MacroDocument* document = macros_.find(macro);
        if (document == nullptr) {
            return false;
        }
        const access::MacroSheet sheet = macros_.sheet(*document);
        return std::ranges::any_of(membersOf(sheet), [&](const auto& each) { return each.name == member; });
    }

    bool hasFunction(const Text& name) const {
        return std::ranges::any_of(spec_.modules, [&](const DocumentSpec& module) {
            const ModuleText code = text(ModuleOwner::Module, module.name);
            return std::ranges::any_of(ModuleProcedures(code).all(), [&](const auto& procedure) {
                return equalsIgnoringCase(procedure.name, name);
            });
        });
    }

    DatabaseSpec spec_;
    std::shared_ptr<const jet::JetFile> file_;
    access::ModuleSource modules_;
    access::MacroSource macros_;

private:
    template <class Visitor>
    void visitEvents(const DocumentSpec& document, const DesignObjectSpec& object, Visitor& visit) const {
        const Text prefix = object.type == DesignType::Form     ? u"Form"
                            : object.type == DesignType::Report ? u"Report"
                                                                : procedurePrefix(object.name());
        for (const DesignPropertySpec& property : object.properties) {
            const TextView name = property.name;
            const bool isEvent = (name.starts_with(u"On") && name.size() > 2 && name[2] < u'a') ||
                                 name.starts_with(u"Before") || name.starts_with(u"After");
            if (isEvent && isText(property.value)) {
                visit(document, prefix, Text(name.substr(name.starts_with(u"On") ? 2 : 0)),
                      toText(property.value));
            }
        }
        for (const DesignObjectSpec& child : object.children) {
            visitEvents(document, child, visit);
        }
    }

    static bool isText(const Value& value) { return std::holds_alternative<Text>(value); }
};

// The lines of a source that are shown.
Text withoutAttributes(TextView source) {
    Text shown;
    while (!source.empty()) {
        const TextView line = source.substr(0, source.find(u"\r\n") + 2);
        source.remove_prefix(line.size());
        if (!line.starts_with(u"Attribute ")) {
            shown += line;
        }
    }
    return shown;
}

INSTANTIATE_TEST_SUITE_P(Formats, CodeCases, test::everyFormat, test::formatName);

TEST_P(CodeCases, EveryModuleReadsBackAsDescribed) {
    const auto documents = documentsWithModule();
    EXPECT_EQ(modules_.modules().size(), documents.size());
    EXPECT_EQ(documents.size(), 12u);
    for (const auto& [owner, document] : documents) {
        SCOPED_TRACE(toUtf8(document->name));
        const ModuleText read = text(owner, document->name);
        EXPECT_EQ(read.text(), withoutAttributes(document->module->source));
        const bool isClass = document->module->isClass || owner != ModuleOwner::Module;
        EXPECT_EQ(read.kind(), isClass ? ModuleKind::Class : ModuleKind::Standard);
    }
}

TEST_P(CodeCases, EveryMacroReadsBackAsDescribed) {
    EXPECT_EQ(macros_.macros().size(), spec_.macros.size());
    for (const DocumentSpec& document : spec_.macros) {
        SCOPED_TRACE(toUtf8(document.name));
        const access::MacroDocument* macro = macros_.find(document.name);
        ASSERT_NE(macro, nullptr);
        EXPECT_EQ(macro->isHidden(), document.hidden);
        const access::MacroSheet sheet = macros_.sheet(*macro);
        const auto& rows = document.macro->rows;
        ASSERT_EQ(sheet.rows.size(), rows.size());
        for (std::size_t i = 0; i < rows.size(); ++i) {
            EXPECT_EQ(sheet.rows[i].name, rows[i].name);
            EXPECT_EQ(sheet.rows[i].condition, rows[i].condition);
            EXPECT_EQ(sheet.rows[i].comment, rows[i].comment);
            EXPECT_EQ(sheet.rows[i].actionNumber, rows[i].action);
            for (std::size_t j = 0; j < rows[i].arguments.size(); ++j) {
                EXPECT_EQ(sheet.rows[i].arguments[j], rows[i].arguments[j]);
            }
        }
    }
}

TEST_P(CodeCases, EveryEventProcedureThatADesignNamesIsInItsModule) {
    std::size_t found = 0;
    visitEvents([&](const DocumentSpec& document, const Text& object, const Text& event, const Text& value) {
        if (value != u"[Event Procedure]") {
            return;
        }
        const bool isReport = document.design->root.type == DesignType::Report;
        const ModuleText code = text(isReport ? ModuleOwner::Report : ModuleOwner::Form, document.name);
        const Text name = object + u"_" + event;
        EXPECT_NO_THROW(ModuleProcedures(code).find(name, ProcedureKind::Procedure))
            << toUtf8(document.name + u"." + name);
        ++found;
    });
    EXPECT_GT(found, 130u);
}

TEST_P(CodeCases, EveryMacroAndFunctionThatAnEventNamesIsThere) {
    std::size_t macros = 0, functions = 0;
    visitEvents([&](const DocumentSpec&, const Text&, const Text&, const Text& value) {
        if (value.starts_with(u'=')) {
            EXPECT_TRUE(hasFunction(value.substr(1, value.find(u'(') - 1))) << toUtf8(value);
            ++functions;
        } else if (value != u"[Event Procedure]") {
            const auto dot = value.find(u'.');
            EXPECT_TRUE(hasMember(value.substr(0, dot), value.substr(dot + 1))) << toUtf8(value);
            ++macros;
        }
    });
    EXPECT_GT(macros, 100u);
    EXPECT_GT(functions, 100u);
}

TEST_P(CodeCases, ModulesOfAllKindsOccur) {
    std::set<ProcedureKind> kinds;
    std::size_t withoutProcedures = 0, classes = 0;
    for (const auto& [owner, document] : documentsWithModule()) {
        const ModuleText code = text(owner, document->name);
        const ModuleProcedures procedures(code);
        for (const auto& procedure : procedures.all()) {
            kinds.insert(procedure.kind);
        }
        withoutProcedures += procedures.all().empty() ? 1 : 0;
        classes += owner == ModuleOwner::Module && code.kind() == ModuleKind::Class ? 1 : 0;
    }
    EXPECT_EQ(kinds.size(), 4u) << "procedures, and properties to get, let and set";
    EXPECT_EQ(withoutProcedures, 1u);
    EXPECT_EQ(classes, 1u);
}

TEST_P(CodeCases, LinesThatScannersAreParticularAboutOccur) {
    Text all;
    for (const auto& [owner, document] : documentsWithModule()) {
        all += text(owner, document->name).text();
    }
    for (const char16_t* part : {u"Private Declare Function ",
                                 u"\r\nDeclare Sub ",
                                 u"Alias \"",
                                 u"\r\nType ",
                                 u"Public Type ",
                                 u"Global ",
                                 u"#Const ",
                                 u"#If ",
                                 u"DefInt ",
                                 u" _\r\n",
                                 u"\r\nRem ",
                                 u"    Rem ",
                                 u"\r\n失敗:\r\n",
                                 u"On Error GoTo ",
                                 u"On Error Resume Next",
                                 u"GoSub ",
                                 u"\r\n10  ",
                                 u"WithEvents ",
                                 u"Static Function ",
                                 u"Exit Property",
                                 u"End Sub ' ",
                                 u"As String * ",
                                 u" As New ",
                                 u"Optional ",
                                 u"Const 文の例 = \"Function ",
                                 u"\r\nOption Base 1",
                                 u"(1 To 12) As ",
                                 u": End Function"}) {
        EXPECT_NE(all.find(part), Text::npos) << toUtf8(part);
    }
}

TEST_P(CodeCases, MacrosOfAllKindsOccur) {
    std::set<std::uint16_t> actions;
    std::size_t continued = 0, remarks = 0, longStatements = 0, hidden = 0, early = 0;
    for (const access::MacroDocument& macro : macros_.macros()) {
        const access::MacroSheet sheet = macros_.sheet(macro);
        hidden += macro.isHidden() ? 1 : 0;
        early += sheet.version ? 0 : 1;
        for (const access::MacroRow& row : sheet.rows) {
            actions.insert(row.actionNumber);
            continued += row.continuesCondition() ? 1 : 0;
            remarks += !row.hasAction() && !row.comment.empty() ? 1 : 0;
            longStatements += row.arguments[0].size() > 200 ? 1 : 0;
        }
    }
    constexpr std::uint16_t laterActions = 72; // from here on those of later versions
    for (const access::MacroAction& action : access::macroActions()) {
        EXPECT_EQ(actions.contains(action.number), action.number < laterActions) << toUtf8(action.name);
    }
    EXPECT_GT(continued, 5u);
    EXPECT_GT(remarks, 5u);
    EXPECT_EQ(longStatements, 1u);
    EXPECT_EQ(hidden, 1u);
    EXPECT_EQ(early, 1u);
}

} // namespace
} // namespace relvane::samples
