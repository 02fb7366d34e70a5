// The listing of source, the step counts and the list of comments on real files, against the texts of their modules
// and the lines of their procedures, and every sample with every option.
#include <gtest/gtest.h>

#include <array>

#include "access/module_procedures.h"
#include "access/module_source.h"
#include "goldens.h"
#include "real_program.h"

namespace relvane {
namespace {

using test::RealProgram;
using test::StoredRow;

const Text kindWords[] = {u"Form", u"Report", u"Module"};

// Lines of a module that have one owner; the declarations have no name.
struct Stretch {
    Text procedure;
    std::size_t header = 0; // among the lines
    std::vector<Text> lines;
};

struct Source {
    std::size_t kind; // form, report, module
    Text name;
    std::vector<Stretch> stretches;
};

std::vector<Text> linesOf(const access::ModuleText& text, std::size_t first, std::size_t count) {
    std::vector<Text> lines;
    for (std::size_t i = 0; i < count; ++i) {
        lines.emplace_back(text.line(first + i));
    }
    return lines;
}

std::vector<Source> sourcesOf(const std::filesystem::path& path) {
    const access::ModuleSource modules(jet::openJetFile(path.native(), {}));
    std::vector<Source> all;
    for (const access::ModuleDocument& document : modules.modules()) {
        const access::ModuleText text = modules.text(document);
        const access::ModuleProcedures procedures(text);
        Source source{static_cast<std::size_t>(document.owner), document.name, {}};
        if (procedures.declarationLines() > 0) {
            source.stretches.push_back({{}, 0, linesOf(text, 1, procedures.declarationLines())});
        }
        for (const access::ModuleProcedure& procedure : procedures.all()) {
            source.stretches.push_back({procedure.name, procedure.body - procedure.start,
                                        linesOf(text, procedure.start, procedure.count)});
        }
        all.push_back(std::move(source));
    }
    return all;
}

// The words of a line in capitals, blanks around it and between them aside.
std::vector<Text> wordsOf(const Text& line) {
    std::vector<Text> words(1);
    for (const char16_t character : upperCase(line)) {
        if (character != u' ') {
            words.back() += character;
        } else if (!words.back().empty()) {
            words.emplace_back();
        }
    }
    return words;
}
bool isBlank(const Text& line) {
    return wordsOf(line) == std::vector<Text>{Text()};
}
bool isComment(const Text& line) {
    const auto words = wordsOf(line);
    return words[0].starts_with(u'\'') || (words[0] == u"REM" && words.size() > 1);
}

Text field(const StoredRow& row, TextView name) {
    return toText(row.at(Text(name)));
}
Text textOf(std::size_t number) {
    return toText(static_cast<long long>(number));
}

// "label | number | object | line | procedure | text" of what is to be listed.
std::vector<Text> expectedListing(const std::vector<Source>& sources) {
    std::vector<Text> rows;
    std::size_t number = 0;
    for (const Source& source : sources) {
        std::size_t line = 0;
        ++number;
        for (const Stretch& stretch : source.stretches) {
            for (const Text& text : stretch.lines) {
                if (const auto words = wordsOf(text);
                    !isBlank(text) && (words[0] != u"OPTION" || words.size() == 1)) {
                    rows.push_back(textOf(source.kind + 1) + u" | " + textOf(number) + u" | " + source.name +
                                   u" | " + textOf(++line) + u" | " + stretch.procedure + u" | " + text);
                }
            }
        }
    }
    return rows;
}

std::vector<Text> listing(const std::vector<StoredRow>& stored) {
    std::vector<Text> rows;
    for (const StoredRow& row : stored) {
        rows.push_back(field(row, u"Label") + u" | " + field(row, u"objectNo") + u" | " +
                       field(row, u"ObjectName") + u" | " + field(row, u"Line") + u" | " +
                       field(row, u"ProcedureName") + u" | " + field(row, u"Procedure"));
    }
    return rows;
}

void expectSame(const std::vector<Text>& rows, const std::vector<Text>& expected) {
    EXPECT_EQ(rows.size(), expected.size());
    for (std::size_t i = 0; i < std::min(rows.size(), expected.size()); ++i) {
        EXPECT_EQ(toUtf8(rows[i]), toUtf8(expected[i])) << "row " << i + 1;
    }
}

void run(RealProgram& program, OptionGroup& options, int option, CommandButton& button) {
    options.choose(option - 1);
    EXPECT_TRUE(program.press(button));
}

constexpr const char* nwind = "access97/nwind.mdb";

TEST(RealCode, EveryLineOfNwindIsListedButBlankAndOptionLines) {
    const auto target = test::realSample(nwind);
    if (!target) {
        return;
    }
    const std::string before = test::bytesOf(*target);
    RealProgram program;
    ASSERT_TRUE(program.select(*target));
    run(program, program.form().optModule, 4, program.form().cmdModule);
    const auto sources = sourcesOf(*target);
    EXPECT_EQ(sources.size(), 15u);
    expectSame(listing(program.rows(u"T_RvModule")), expectedListing(sources));
    EXPECT_EQ(program.rows(u"T_RvModule").size(), 634u);
    EXPECT_TRUE(program.dialogs.boxes.empty()) << toUtf8(program.dialogs.lastText());
    EXPECT_EQ(test::bytesOf(*target), before);
}

// Comments, blank lines, lines in all.
using Counts = std::array<std::size_t, 3>;

Counts countsOf(const Stretch& stretch) {
    const auto count = [&](bool (*is)(const Text&)) {
        return static_cast<std::size_t>(std::ranges::count_if(stretch.lines, is));
    };
    return {count(isComment), count(isBlank), stretch.lines.size()};
}

Text countsText(const Text& object, const Text& procedure, const Counts& counts) {
    return object + u" | " + procedure + u" | " + textOf(counts[0]) + u" | " + textOf(counts[1]) + u" | " +
           textOf(counts[2] - counts[1] - counts[0]) + u" | " + textOf(counts[2]);
}

// Every form and report of nwind begins with declarations, so that its last procedure is counted with the declarations
// that follow; a module's last one has a row of its own.
std::vector<Text> expectedCounts(const std::vector<Source>& sources) {
    std::vector<Text> rows;
    Counts left{};
    for (const Source& source : sources) {
        for (std::size_t i = 0; i < source.stretches.size(); ++i) {
            Counts counts = countsOf(source.stretches[i]);
            std::ranges::transform(counts, left, counts.begin(), std::plus());
            left = {};
            const Text& procedure = source.stretches[i].procedure;
            if (i + 1 == source.stretches.size() && kindWords[source.kind] != u"Module") {
                left = counts;
            } else {
                rows.push_back(
                    countsText(source.name, procedure.empty() ? Text(u"(Declations)") : procedure, counts));
            }
        }
    }
    return rows;
}

TEST(RealCode, StepsOfNwindAddUpToItsLines) {
    const auto target = test::realSample(nwind);
    if (!target) {
        return;
    }
    RealProgram program;
    ASSERT_TRUE(program.select(*target));
    run(program, program.form().optModStep, 4, program.form().cmdModStep);
    const auto stored = program.rows(u"T_RvProcCount");
    std::vector<Text> rows;
    std::int64_t lines = 0;
    for (const StoredRow& row : stored) {
        rows.push_back(field(row, u"ObjectName") + u" | " + field(row, u"ProcedureName") + u" | " +
                       field(row, u"ComentCnt") + u" | " + field(row, u"SpaceCnt") + u" | " +
                       field(row, u"ProcCnt") + u" | " + field(row, u"TotalCnt"));
        lines += std::get<std::int64_t>(row.at(u"TotalCnt"));
    }
    const auto sources = sourcesOf(*target);
    expectSame(rows, expectedCounts(sources));
    std::int64_t allLines = 0;
    for (const Source& source : sources) {
        for (const Stretch& stretch : source.stretches) {
            allLines += static_cast<std::int64_t>(stretch.lines.size());
        }
    }
    EXPECT_EQ(lines, allLines);
    EXPECT_EQ(lines, 923);
    // The numbers of the two last modules were lowered, one after the other, to that of the first.
    EXPECT_EQ(field(stored.back(), u"ObjectName"), u"Utility Functions");
    EXPECT_EQ(field(stored.back(), u"objectNo"), u"13");
    EXPECT_EQ(field(stored.back(), u"ProcedureNo"), textOf(stored.size()));
    EXPECT_TRUE(program.dialogs.boxes.empty()) << toUtf8(program.dialogs.lastText());
}

TEST(RealCode, CommentsOfNwindAreThoseBehindTheHeaders) {
    const auto target = test::realSample(nwind);
    if (!target) {
        return;
    }
    RealProgram program;
    ASSERT_TRUE(program.select(*target));
    EXPECT_TRUE(program.press(program.form().cmdComment));
    std::vector<Text> rows, expected;
    for (const StoredRow& row : program.rows(u"T_RvComment")) {
        rows.push_back(field(row, u"Object") + u" | " + field(row, u"ObjectName") + u" | " +
                       field(row, u"ProcedureName") + u" | " + field(row, u"Comment"));
    }
    for (const Source& source : sourcesOf(*target)) {
        for (const Stretch& stretch : source.stretches) {
            for (std::size_t i = stretch.header; i < stretch.lines.size() && !stretch.procedure.empty();
                 ++i) {
                const Text& line = stretch.lines[i];
                if (isComment(line)) {
                    expected.push_back(kindWords[source.kind] + u" | " + source.name + u" | " +
                                       stretch.procedure + u" | " +
                                       line.substr(0, line.find_last_not_of(u' ') + 1));
                }
            }
        }
    }
    expectSame(rows, expected);
    const auto commentsIn = [&rows](TextView procedure) {
        return std::ranges::count_if(rows, [&](const Text& row) { return row.starts_with(procedure); });
    };
    EXPECT_EQ(commentsIn(u"Form | Suppliers | AddProducts_Click | "), 5);
    EXPECT_EQ(commentsIn(u"Report | Sales by Year | Report_Open | "), 9);
    EXPECT_EQ(commentsIn(u"Module | Startup | OpenStartup | "), 12);
    EXPECT_TRUE(program.dialogs.boxes.empty()) << toUtf8(program.dialogs.lastText());
}

// Every file of Access 97 with every option: no box, no byte changed, and the listing that of its texts.
TEST(RealCode, EverySampleOfAccess97RunsClean) {
    const auto samples = test::realSamples();
    if (!samples) {
        return;
    }
    for (const char* name : {"nwind", "afr", "CodBarra39Etiquetas", "ListaArquivosDir", "acc97"}) {
        const auto target = *samples / "access97" / (std::string(name) + ".mdb");
        SCOPED_TRACE(name);
        const std::string before = test::bytesOf(target);
        RealProgram program;
        if (!program.select(target)) {
            continue;
        }
        program.dialogs.boxes.clear(); // a target that starts with a macro says so
        for (const int option : {1, 2, 3, 4}) {
            run(program, program.form().optModule, option, program.form().cmdModule);
            run(program, program.form().optModStep, option, program.form().cmdModStep);
        }
        EXPECT_TRUE(program.press(program.form().cmdComment));
        expectSame(listing(program.rows(u"T_RvModule")), expectedListing(sourcesOf(target)));
        EXPECT_TRUE(program.dialogs.boxes.empty()) << toUtf8(program.dialogs.lastText());
        EXPECT_EQ(test::bytesOf(target), before);
    }
}

} // namespace
} // namespace relvane
