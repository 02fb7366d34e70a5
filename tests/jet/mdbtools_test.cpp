// Real files as mdbtools, a reader that others wrote, sees them: tables, columns, numbers of rows and indexes. Where
// mdbtools or the folder of real files is missing, this test says so and passes.

#include <algorithm>
#include <cstdio>
#include <iostream>
#include <map>
#include <regex>
#include <set>
#include <sys/wait.h>

#include <gtest/gtest.h>

#include "jet/jet_file.h"
#include "jet/open_database.h"
#include "platform/native_path.h"
#include "support/samples.h"

namespace relvane::jet {
namespace {

namespace fs = std::filesystem;

struct Output {
    int status = 0;
    std::vector<std::string> lines{};
};

std::string quoted(const std::string& word) {
    std::string result = "'";
    for (const char c : word) {
        result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    }
    return result + "'";
}

Output run(const std::string& command) {
    Output output;
    FILE* pipe = popen(("LC_ALL=C.UTF-8 " + command + " 2>/dev/null").c_str(), "r");
    std::string line;
    for (int c; (c = std::fgetc(pipe)) != EOF;) {
        if (c == '\n') {
            output.lines.push_back(std::move(line));
            line.clear();
        } else {
            line += static_cast<char>(c);
        }
    }
    const int status = pclose(pipe);
    output.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return output;
}

// A difference that was looked into: which file, which table ("*": all), what of it, and why mdbtools differs.
struct Difference {
    const char* file;
    const char* table;
    const char* what;
    const char* why;
};

constexpr Difference knownDifferences[] = {
#include "mdbtools_differences.inc"
};

class Comparison {
public:
    Comparison(const fs::path& path, dao::Database& database)
        : path_(path), name_(path.filename()), database_(database) {}

    void run() {
        compareTables();
        const auto columns = schema("access", "--no-indexes");
        const auto indexes = schema("mysql", "--indexes");
        for (const auto& table : database_.TableDefs()) {
            const std::string name = toUtf8(table->Name());
            if (table->Connect().empty()) {
                compareRows(*table, name);
                if (columns.contains(name)) { // mdb-schema leaves system tables out
                    compareColumns(*table, name, columns.at(name));
                    compareIndexes(*table, name, indexes.contains(name) ? indexes.at(name) : Lines());
                }
            }
        }
    }

private:
    using Lines = std::vector<std::string>;
    using Set = std::multiset<std::string>;

    void expectEqual(const Set& ours, const Set& theirs, const std::string& table, const std::string& what) {
        const auto known = std::ranges::find_if(knownDifferences, [&](const Difference& difference) {
            return difference.file == name_ &&
                   (difference.table == table || std::string(difference.table) == "*") &&
                   difference.what == what;
        });
        if (known == std::end(knownDifferences)) {
            EXPECT_EQ(ours, theirs) << name_ << ", " << table << ": " << what;
        } else if (std::string(known->table) != "*") {
            EXPECT_NE(ours, theirs) << name_ << ", " << table << ": no longer different, " << known->why;
        }
    }

    void compareTables() {
        Set ours;
        for (const auto& table : database_.TableDefs()) {
            if (table->Connect().empty()) {
                ours.insert(toUtf8(table->Name()));
            }
        }
        const Output theirs = jet::run("mdb-tables -1 -S " + quoted(path_));
        expectEqual(ours, Set(theirs.lines.begin(), theirs.lines.end()), "", "tables");
    }

    // The lines between brackets (columns) and those that add indexes, by table.
    std::map<std::string, Lines> schema(const std::string& backend, const std::string& option) {
        std::map<std::string, Lines> tables;
        const bool wantsIndexes = backend == "mysql";
        std::string table;
        for (const std::string& line :
             jet::run("mdb-schema --no-relations --no-not-null --no-default-values --no-comments " + option +
                      " " + quoted(path_) + " " + backend)
                 .lines) {
            if (line.starts_with("CREATE TABLE ")) {
                table = line.substr(14, line.size() - 15);
                tables[table];
            } else if (wantsIndexes ? line.starts_with("ALTER TABLE ") : line.starts_with("\t[")) {
                tables[table].push_back(line);
            }
        }
        return tables;
    }

    void compareRows(dao::TableDef& table, const std::string& name) {
        const Output stored = jet::run("mdb-count " + quoted(path_) + " " + quoted(name));
        expectEqual({std::to_string(table.RecordCount())}, Set(stored.lines.begin(), stored.lines.end()),
                    name, "stored row count");
        std::size_t rows = 0;
        for (const auto cursor = database_.OpenRecordset(table.Name()); !cursor->EOF_(); cursor->MoveNext()) {
            ++rows;
        }
        const Output read = jet::run("mdb-json " + quoted(path_) + " " + quoted(name));
        expectEqual({std::to_string(rows)}, {std::to_string(read.lines.size())}, name, "rows");
    }

    // "[name] Type (size)", as mdb-schema words it for Access.
    void compareColumns(dao::TableDef& table, const std::string& name, const Lines& lines) {
        static const std::map<int, const char*> types = {
            {1, "Boolean"},         {2, "Byte"},     {3, "Integer"},       {4, "Long Integer"},
            {5, "Currency"},        {6, "Single"},   {7, "Double"},        {8, "DateTime"},
            {9, "Binary"},          {10, "Text"},    {11, "OLE"},          {15, "Replication ID"},
            {12, "Memo/Hyperlink"}, {20, "Numeric"}, {101, "Unknown 0x12"}};
        Set ours;
        for (const auto& field : table.Fields()) {
            std::string column = toUtf8(field->Name());
            const auto type = types.find(field->Type());
            column += type == types.end() ? " type " + std::to_string(field->Type())
                                          : std::string(" ") + type->second;
            if (field->Type() == 10) {
                column += " (" + std::to_string(field->Size()) + ")";
            }
            ours.insert(column);
        }
        Set theirs;
        for (const std::string& line : lines) {
            static const std::regex form(R"(\t\[(.*)\]\t+(.*?)( \(.*\))?,? *)");
            std::smatch match;
            ASSERT_TRUE(std::regex_match(line, match, form)) << line;
            const std::string type = match[2];
            theirs.insert(match[1].str() + " " + type + (type == "Text" ? match[3].str() : ""));
        }
        expectEqual(ours, theirs, name, "columns");
    }

    // "name: column, column" and "unique ..."; mdb-schema leaves the foreign indexes out.
    void compareIndexes(dao::TableDef& table, const std::string& name, const Lines& lines) {
        Set ours;
        for (const auto& index : table.Indexes()) {
            if (index->Foreign()) {
                continue;
            }
            std::string text = index->Primary() ? "primary" : index->Unique() ? "unique " : "";
            text += (index->Primary() ? "" : toUtf8(index->Name())) + ":";
            for (const auto& field : index->Fields()) {
                text += " " + toUtf8(field->FieldName) + (field->Attributes == 1 ? " DESC" : "");
            }
            ours.insert(text);
        }
        Set theirs;
        for (const std::string& line : lines) {
            static const std::regex form(
                R"(ALTER TABLE `.*?` ADD (UNIQUE |)(INDEX `(.*?)`|PRIMARY KEY) \((.*)\);)");
            std::smatch match;
            ASSERT_TRUE(std::regex_match(line, match, form)) << line;
            std::string columns = std::regex_replace(match[4].str(), std::regex("`|,"), "");
            theirs.insert((match[2] == "PRIMARY KEY"
                               ? "primary"
                               : (match[1].length() > 0 ? "unique " : "") + match[3].str()) +
                          ": " + columns);
        }
        expectEqual(ours, theirs, name, "indexes");
    }

    fs::path path_;
    std::string name_;
    dao::Database& database_;
};

TEST(Mdbtools, SeesTheSameTablesColumnsRowsAndIndexes) {
    const auto samples = test::realSamples();
    if (!samples) {
        return;
    }
    if (run("mdb-tables --version").status == 127) {
        std::cout << "mdbtools is not installed: the comparison with it is left out.\n";
        return;
    }
    int compared = 0;
    for (const auto& entry : fs::recursive_directory_iterator(*samples)) {
        const std::string path = entry.path();
        if (!entry.is_regular_file() || entry.path().extension() == ".md" ||
            run("mdb-tables -1 -S " + quoted(path)).lines.empty() ||
            entry.path().filename() == "password97.mdb") { // mdbtools does not ask for passwords
            continue;
        }
        const auto database = openDatabase(textOfNativePath(path));
        Comparison(path, *database).run();
        ++compared;
    }
    EXPECT_GT(compared, 0);
    std::cout << compared << " files compared with mdbtools\n";
}

} // namespace
} // namespace relvane::jet
