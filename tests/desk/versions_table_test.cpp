// The tables of the two READMEs that say what is read from which version: held against real files of each.
#include <gtest/gtest.h>

#include "access/macro_source.h"
#include "access/module_source.h"
#include "access/target_application.h"
#include "real_program.h"

namespace relvane {
namespace {

// A row of the table, and the files that prove it.
struct Version {
    TextView row; // how it begins
    std::vector<std::string> samples;
};

const Version versions[] = {
    {u"| Access 97 `.mdb` |", {"access97/nwind.mdb", "access97/afr.mdb"}},
    {u"| Access 2000–2003 `.mdb` |", {"later/northwind-2000-ja.mdb", "later/vbaV2003.mdb"}},
    {u"| Access 2007 `.accdb` |", {"later/vbaV2007.accdb", "later/queryTestV2007.accdb"}},
    {u"| Access 2010– `.accdb` |", {"later/formPropTest.accdb"}},
};

// Counts of what was read and what was refused.
struct Tally {
    int read = 0, refused = 0;
    void of(const std::function<void()>& reading) { ++(skipErrors(reading) == 0 ? read : refused); }
};

// What DAO says to some queries of any version.
constexpr int ambiguousJoins = 3258;

Tally tables(const Text& path) {
    Tally tally;
    const auto database = jet::openDatabase(path);
    for (const auto& table : database->TableDefs()) {
        tally.of([&] { table->Fields(); });
    }
    for (const auto& query : database->QueryDefs()) {
        tally.of([&] {
            const int error = skipErrors([&] { query->SQL(); });
            if (error != ambiguousJoins && error != 0) {
                throw RunTimeError(error, {});
            }
        });
    }
    return tally;
}

Tally designs(const Text& path) {
    Tally tally;
    const auto database = jet::openDatabase(path);
    const auto application = access::newTargetApplication();
    application->OpenCurrentDatabase(path, false);
    for (const auto& document : database->Containers().Item(u"Forms").Documents()) {
        tally.of([&] { application->DoCmd().OpenForm(document->Name(), access::acViewDesign); });
    }
    for (const auto& document : database->Containers().Item(u"Reports").Documents()) {
        tally.of([&] { application->DoCmd().OpenReport(document->Name(), access::acViewDesign); });
    }
    return tally;
}

Tally source(const Text& path) {
    Tally tally;
    const auto database = jet::openDatabase(path);
    const access::ModuleSource modules(jet::fileOf(*database));
    for (const access::ModuleDocument& module : modules.modules()) {
        tally.of([&] { modules.text(module); });
    }
    return tally;
}

Tally macros(const Text& path) {
    Tally tally;
    const auto database = jet::openDatabase(path);
    const access::MacroSource sheets(jet::fileOf(*database));
    for (const access::MacroDocument& macro : sheets.macros()) {
        tally.of([&] { sheets.sheet(macro); });
    }
    return tally;
}

// In the order of the columns.
constexpr Tally (*columns[])(const Text&) = {tables, designs, source, macros};

// The cells of the row behind its head: whether each says yes.
std::vector<bool> rowOf(const char* readme, TextView head) {
    const Text text = fromUtf8(test::bytesOf(test::sourceFolder() / readme));
    const std::size_t at = text.find(head);
    std::vector<bool> cells;
    if (at != Text::npos) {
        std::size_t from = at + head.size();
        const std::size_t end = text.find(u'\n', at);
        for (std::size_t bar = text.find(u'|', from); bar < end; bar = text.find(u'|', from)) {
            cells.push_back(TextView(text).substr(from, bar - from).find(u'○') != TextView::npos);
            from = bar + 1;
        }
    }
    return cells;
}

TEST(TableOfVersions, SaysOfEachVersionWhatIsReadFromIt) {
    for (const Version& version : versions) {
        const auto says = rowOf("README.md", version.row);
        ASSERT_EQ(says.size(), std::size(columns)) << toUtf8(version.row);
        EXPECT_EQ(rowOf("README.ja.md", version.row), says) << toUtf8(version.row);
        for (const std::string& sample : version.samples) {
            const auto path = test::realSample(sample);
            for (std::size_t column = 0; path && column < says.size(); ++column) {
                const Tally tally = columns[column](textOfNativePath(path->native()));
                EXPECT_EQ(says[column] ? tally.refused : tally.read, 0) << sample << ", column " << column;
            }
        }
    }
}

} // namespace
} // namespace relvane
