// The samples as mdbtools, a reader that others wrote, sees them: tables, columns, types, numbers of rows and every
// value. Where mdbtools is not installed, these tests say so and are skipped.

#include <algorithm>
#include <cstdlib>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "database_comparison.h"
#include "sample_builder/database_writer.h"
#include "sample_builder/description.h"
#include "sample_builder/many_tables.h"
#include "support/file_formats.h"
#include "support/samples.h"

namespace relvane::samples {
namespace {

constexpr int noSuchProgram = 127;

struct Output {
    int status = 0;
    std::string text{};
};

// Runs a program with the database's code page told to mdbtools, and takes what it prints.
Output run(std::vector<std::string> words) {
    int ends[2];
    if (pipe(ends) != 0) {
        throw std::runtime_error("no pipe");
    }
    const pid_t child = fork();
    if (child == 0) {
        dup2(ends[1], STDOUT_FILENO);
        dup2(open("/dev/null", O_WRONLY), STDERR_FILENO);
        close(ends[0]);
        setenv("MDB_JET3_CHARSET", "CP932", 1);
        setenv("LC_ALL", "C.UTF-8", 1);
        std::vector<char*> arguments;
        for (std::string& word : words) {
            arguments.push_back(word.data());
        }
        arguments.push_back(nullptr);
        execvp(arguments[0], arguments.data());
        _exit(noSuchProgram);
    }
    close(ends[1]);
    Output output;
    char buffer[65536];
    for (ssize_t got = 0; (got = read(ends[0], buffer, sizeof buffer)) > 0;) {
        output.text.append(buffer, static_cast<std::size_t>(got));
    }
    close(ends[0]);
    int status = 0;
    waitpid(child, &status, 0);
    output.status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    return output;
}

bool hasMdbtools() {
    return run({"mdb-tables", "--version"}).status != noSuchProgram;
}

std::vector<std::string> cut(const std::string& text, char separator) {
    std::vector<std::string> parts;
    std::size_t start = 0;
    for (std::size_t end; (end = text.find(separator, start)) != std::string::npos; start = end + 1) {
        parts.push_back(text.substr(start, end - start));
    }
    if (start < text.size()) {
        parts.push_back(text.substr(start));
    }
    return parts;
}

std::string hex(std::span<const std::uint8_t> bytes) {
    std::string digits;
    for (const std::uint8_t byte : bytes) {
        char two[3];
        std::snprintf(two, sizeof two, "%02X", byte);
        digits += two;
    }
    return digits;
}

template <class... Arguments>
std::string print(const char* form, Arguments... arguments) {
    char text[400];
    std::snprintf(text, sizeof text, form, arguments...);
    return text;
}

constexpr char nullMark[] = "<null>";

std::string orNullMark(const std::string& cell) {
    return cell.empty() ? nullMark : cell;
}

std::string currencyText(std::int64_t tenThousandths) {
    return print("%s%lld.%04lld", tenThousandths < 0 ? "-" : "", std::llabs(tenThousandths / 10'000),
                 std::llabs(tenThousandths % 10'000));
}

// Without the last hyphen, and in hexadecimal digits of the text.
std::string guidText(const Value& guid) {
    std::string text = toUtf8(toText(guid));
    std::ranges::transform(text, text.begin(),
                           [](unsigned char c) { return static_cast<char>(std::toupper(c)); });
    text.erase(text.rfind('-'), 1);
    return hex({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
}

// The cell that mdb-export prints for a value. Its habits: bytes of a Binary column end at the first zero, and what is
// empty in a Binary or Memo column is Null.
std::string exported(const Value& given, const ColumnSpec& column, TextCoding coding) {
    const Value value = expectedValue(given, column, coding);
    if (std::holds_alternative<Null>(value)) {
        return nullMark;
    }
    switch (column.type) {
    case ColumnType::Boolean:
        return std::get<bool>(value) ? "1" : "0";
    case ColumnType::Currency:
        return currencyText(std::get<Currency>(value).tenThousandths);
    case ColumnType::Single:
        return print("%.8g", static_cast<double>(std::get<float>(value)));
    case ColumnType::Double:
        return print("%.16g", std::get<double>(value));
    case ColumnType::Date:
        return toUtf8(std::get<DateTime>(value).text());
    case ColumnType::Binary: {
        const Bytes& bytes = std::get<Bytes>(value);
        return orNullMark(hex({bytes.begin(), std::ranges::find(bytes, 0)}));
    }
    case ColumnType::Ole:
        return hex(std::get<Bytes>(value));
    case ColumnType::Guid:
        return guidText(value);
    case ColumnType::Memo:
        return orNullMark(toUtf8(std::get<Text>(value)));
    case ColumnType::Text:
        return toUtf8(std::get<Text>(value));
    default:
        return std::to_string(std::get<std::int64_t>(value));
    }
}

std::string schemaType(const ColumnSpec& column) {
    const std::string size = " (" + std::to_string(column.size == 0 ? 255 : column.size) + ")";
    switch (column.type) {
    case ColumnType::Boolean:
        return "Boolean";
    case ColumnType::Byte:
        return "Byte";
    case ColumnType::Integer:
        return "Integer";
    case ColumnType::Long:
        return "Long Integer";
    case ColumnType::Currency:
        return "Currency";
    case ColumnType::Single:
        return "Single";
    case ColumnType::Double:
        return "Double";
    case ColumnType::Date:
        return "DateTime";
    case ColumnType::Binary:
        return "Binary";
    case ColumnType::Text:
        return "Text" + size;
    case ColumnType::Ole:
        return "OLE (255)";
    case ColumnType::Memo:
        return "Memo/Hyperlink (255)";
    case ColumnType::Guid:
        return "Replication ID";
    default:
        return "?";
    }
}

// The lines of a table's columns as mdb-schema prints them without constraints.
std::vector<std::string> schemaLines(const TableSpec& table) {
    std::vector<std::string> lines;
    for (const ColumnSpec* column : livingColumns(table)) {
        lines.push_back("\t[" + toUtf8(column->name) + "]\t\t\t" + schemaType(*column));
    }
    return lines;
}

void compareSchema(const TableSpec& table, const std::string& path) {
    const Output schema = run({"mdb-schema", "--no-not-null", "-T", toUtf8(table.name), path});
    std::vector<std::string> lines;
    for (std::string line : cut(schema.text, '\n')) {
        if (line.starts_with("\t[")) {
            line.erase(line.find_last_not_of(", ") + 1);
            lines.push_back(line);
        }
    }
    EXPECT_EQ(lines, schemaLines(table));
}

// Characters that no value of a sample has.
constexpr const char *betweenValues = "\x1D", *behindRow = "\x1E";

// Rows are compared as a set: mdb-export prints a moved row where it stands now.
void compareRows(const TableSpec& table, const std::string& path, TextCoding coding) {
    const std::string name = toUtf8(table.name);
    std::vector<std::string> expected;
    for (const RowSpec& row : table.rows) {
        if (row.deleted) {
            continue;
        }
        std::string line;
        std::size_t position = 0;
        for (const ColumnSpec* column : livingColumns(table)) {
            const Value value = position < row.values.size() ? row.values[position] : Value();
            line += (position++ == 0 ? "" : betweenValues) + exported(value, *column, coding);
        }
        expected.push_back(line);
    }
    const auto written = run({"mdb-export", "-H", "-Q", "-d", betweenValues, "-R", behindRow, "-0", nullMark,
                              "-b", "hex", "-D", "%Y-%m-%d %H:%M:%S", "-T", "%Y-%m-%d %H:%M:%S", path, name});
    std::vector<std::string> found = cut(written.text, *behindRow);
    EXPECT_EQ(run({"mdb-count", path, name}).text, std::to_string(expected.size()) + "\n");
    std::ranges::sort(expected);
    std::ranges::sort(found);
    ASSERT_EQ(found.size(), expected.size());
    for (std::size_t i = 0; i < found.size(); ++i) {
        EXPECT_EQ(found[i], expected[i]);
    }
}

void compareTables(const DatabaseSpec& spec, const std::string& path) {
    std::vector<std::string> names;
    for (const TableSpec& table : spec.tables) {
        SCOPED_TRACE("table " + toUtf8(table.name));
        compareSchema(table, path);
        compareRows(table, path, textCoding(spec));
        if ((table.flags & (systemFlag | accessTableFlag)) == 0) {
            names.push_back(toUtf8(table.name));
        }
    }
    EXPECT_EQ(cut(run({"mdb-tables", "-1", path}).text, '\n'), names);
}

class Mdbtools : public testing::TestWithParam<FileFormat> {
protected:
    void SetUp() override {
        if (!hasMdbtools()) {
            GTEST_SKIP() << "mdbtools is not installed: the comparison with it is left out.";
        }
    }

    static DatabaseSpec described(const std::string& name) {
        const auto path = test::sourceFolder() / "samples" / (name + ".txt");
        return savedAs(readDescription(path), GetParam());
    }
    static std::string sample(const std::string& name) { return test::ownSample(name, GetParam()).string(); }
};

INSTANTIATE_TEST_SUITE_P(Formats, Mdbtools, test::everyFormat, test::formatName);

TEST_P(Mdbtools, AgreeWithTheDescriptionsOfAllSamples) {
    std::vector<std::string> names = {"juchu", "zaiko", "empty", "encoded"};
    if (GetParam() == FileFormat::Access97) {
        names.push_back("access95"); // which saved in no other
    }
    for (const std::string& name : names) {
        SCOPED_TRACE(name);
        compareTables(described(name), sample(name));
    }
}

TEST_P(Mdbtools, ListTheQueriesAndRelationsOfTheSample) {
    const DatabaseSpec spec = described("juchu");
    const std::string path = sample("juchu");
    std::vector<std::string> names;
    for (const QuerySpec& query : spec.queries) {
        names.push_back(toUtf8(query.name));
    }
    EXPECT_EQ(cut(run({"mdb-queries", "-1", "-L", path}).text, '\n'), names);

    std::size_t columns = 0;
    for (const RelationSpec& relation : spec.relations) {
        columns += relation.columns.size();
    }
    EXPECT_EQ(run({"mdb-count", path, "MSysRelationships"}).text, std::to_string(columns) + "\n");
}

TEST_P(Mdbtools, AgreeOnABigDatabase) {
    const test::TemporaryFolder folder;
    DatabaseSpec spec = savedAs(manyTables(250, 3), GetParam());
    TableSpec& big = spec.tables.front();
    big = manyTables(1, 6'000).tables.front();
    const auto path = folder / "big.mdb";
    writeDatabase(spec, path);
    std::vector<std::string> names;
    for (const TableSpec& table : spec.tables) {
        names.push_back(toUtf8(table.name));
    }
    EXPECT_EQ(cut(run({"mdb-tables", "-1", path.string()}).text, '\n'), names);
    compareSchema(big, path.string());
    compareRows(big, path.string(), textCoding(spec));
    compareRows(spec.tables.back(), path.string(), textCoding(spec));
}

} // namespace
} // namespace relvane::samples
