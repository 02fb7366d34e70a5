// The analysis of tables and indexes on real files: what it leaves in the work database against what independent
// decoders read, and every sample walked through with every option.
#include <gtest/gtest.h>

#include "core/vocabulary.h"
#include "goldens.h"
#include "real_program.h"

namespace relvane {
namespace {

using test::dateOf;
using test::Json;
using test::RealProgram;
using test::StoredRow;
using test::textOf;

const Value unwritten = Null{};

Value number(long long value) {
    return std::int64_t{value};
}
Value number(const Json& value) {
    return value.get<std::int64_t>();
}
Value cut(const Json& value, std::size_t length) {
    const Text whole = textOf(value).substr(0, length);
    return whole.substr(0, whole.find_last_not_of(u' ') + 1);
}
Value descriptionOf(const Json& object) {
    return object.contains("description") ? Value(textOf(object.at("description"))) : unwritten;
}

std::vector<Json> shownTables(const Json& golden) {
    std::vector<Json> shown;
    for (const Json& table : golden.at("tables")) {
        const auto attributes = table.at("attributes").get<std::int64_t>();
        if (attributes != -0x80000000LL && attributes != 2) {
            shown.push_back(table);
        }
    }
    return shown;
}

// None of these files has a link.
StoredRow expectedTable(const Json& table, long long objectNo, int option) {
    EXPECT_EQ(table.at("connect"), "");
    return {{u"objectNo", number(objectNo)},
            {u"TableName", cut(table.at("name"), 150)},
            {u"DateCreated", dateOf(table.at("dateCreated"))},
            {u"LastUpdated", dateOf(table.at("lastUpdated"))},
            {u"Attributes", number(table.at("attributes"))},
            {u"LinkTable", unwritten},
            {u"Connect", unwritten},
            {u"RecordCount", number(table.at("recordCount"))},
            {u"SourceTableName", cut(table.at("sourceTableName"), 150)},
            {u"Updatable", table.at("updatable").get<bool>()},
            {u"Midasi", number(option)},
            {u"Description", descriptionOf(table)}};
}

Text typeWord(const Json& field) {
    const int type = field.at("type"), attributes = field.at("attributes");
    if (type == 4 && attributes == 17) {
        return u"ｵｰﾄﾅﾝﾊﾞｰ型";
    }
    if (type == 12 && attributes == 32770) {
        return u"ﾊｲﾊﾟｰﾘﾝｸ型";
    }
    return GetFieldTypeName(toText(static_cast<long long>(type)));
}

// In all these files the fields of a key stand in the table in the order of the key, so that none is missed.
bool isInKey(const Json& table, const Json& field) {
    for (const Json& index : table.at("indexes")) {
        for (const Json& part : index.at("fields")) {
            if (index.at("primary") == true && part.at("name") == field.at("name")) {
                return true;
            }
        }
    }
    return false;
}

std::vector<StoredRow> expectedFields(const Json& table, long long objectNo, int option) {
    std::vector<StoredRow> rows;
    for (const Json& field : table.at("fields")) {
        rows.push_back({{u"objectNo", number(objectNo)},
                        {u"FieldNo", number(static_cast<long long>(rows.size() + 1))},
                        {u"FieldName", cut(field.at("name"), 150)},
                        {u"PrimaryKey", option == 3 && isInKey(table, field)},
                        {u"FieldType", typeWord(field)},
                        {u"FieldSize", number(field.at("size"))},
                        {u"ZeroLength", field.at("allowZeroLength").get<bool>()},
                        {u"DefaultValue", cut(field.at("defaultValue"), 50)},
                        {u"ValRule", cut(field.at("validationRule"), 150)},
                        {u"Description", option == 3 ? descriptionOf(field) : unwritten}});
    }
    return rows;
}

std::vector<StoredRow> expectedIndexes(const Json& table, long long objectNo) {
    std::vector<StoredRow> rows;
    for (const Json& index : table.at("indexes")) {
        for (std::size_t i = 0; i < index.at("fields").size(); ++i) {
            const auto flag = [&](const char* name) { return Value(i == 0 && index.at(name).get<bool>()); };
            rows.push_back({{u"objectNo", number(objectNo)},
                            {u"FieldNo", number(static_cast<long long>(rows.size() + 1))},
                            {u"TableName", i == 0 ? cut(table.at("name"), 150) : unwritten},
                            {u"IndexName", i == 0 ? cut(index.at("name"), 150) : unwritten},
                            {u"FieldName", textOf(index.at("fields")[i].at("name"))},
                            {u"Primary", flag("primary")},
                            {u"Clustered", flag("clustered")},
                            {u"Foreign", flag("foreign")},
                            {u"Unique", flag("unique")},
                            {u"IgnoreNulls", flag("ignoreNulls")},
                            {u"Required", flag("required")}});
        }
    }
    return rows;
}

void append(std::vector<StoredRow>& to, const std::vector<StoredRow>& rows) {
    to.insert(to.end(), rows.begin(), rows.end());
}

void expectEqual(const std::vector<StoredRow>& rows, const std::vector<StoredRow>& expected,
                 const char* what) {
    EXPECT_EQ(rows.size(), expected.size()) << what;
    for (std::size_t i = 0; i < std::min(rows.size(), expected.size()); ++i) {
        EXPECT_EQ(rows[i], expected[i]) << what << ", row " << i + 1;
    }
}

void run(RealProgram& program, int option) {
    program.form().optTable.choose(option - 1);
    EXPECT_TRUE(program.press(program.form().cmdTable)) << toUtf8(program.dialogs.lastText());
}

TEST(RealTables, TableListsEqualTheGoldens) {
    for (const Json& golden : test::goldens()) {
        const auto target = test::sampleOf(golden);
        SCOPED_TRACE(target.filename().string());
        const std::string before = test::bytesOf(target);
        RealProgram program;
        ASSERT_TRUE(program.select(target));
        for (const int option : {3, 2}) {
            run(program, option);
            std::vector<StoredRow> tables, fields;
            for (const Json& table : shownTables(golden)) {
                const auto objectNo = static_cast<long long>(tables.size() + 1);
                tables.push_back(expectedTable(table, objectNo, option));
                append(fields, expectedFields(table, objectNo, option));
            }
            expectEqual(program.rows(u"T_RvTblInfo"), tables, "tables");
            expectEqual(program.rows(u"T_RvTblItem"), fields, "fields");
            EXPECT_FALSE(fields.empty());
        }
        EXPECT_TRUE(program.dialogs.boxes.empty()) << toUtf8(program.dialogs.lastText());
        EXPECT_EQ(test::bytesOf(target), before);
    }
}

TEST(RealTables, IndexListsEqualTheGoldens) {
    for (const Json& golden : test::goldens()) {
        const auto target = test::sampleOf(golden);
        SCOPED_TRACE(target.filename().string());
        RealProgram program;
        ASSERT_TRUE(program.select(target));
        run(program, 1);
        std::vector<StoredRow> indexes;
        long long objectNo = 0;
        for (const Json& table : shownTables(golden)) {
            append(indexes, expectedIndexes(table, ++objectNo));
        }
        expectEqual(program.rows(u"T_RvIndex"), indexes, "indexes");
        EXPECT_TRUE(program.dialogs.boxes.empty()) << toUtf8(program.dialogs.lastText());
    }
}

TEST(RealTables, EverySampleIsAnalysedWithEveryOptionAndNoneIsChanged) {
    int analysed = 0;
    for (const auto& target : test::sampleDatabases()) {
        SCOPED_TRACE(target.filename().string());
        const std::string before = test::bytesOf(target);
        RealProgram program;
        EXPECT_TRUE(program.select(target)) << toUtf8(program.dialogs.lastText());
        if (program.form().cmdTable.isUsable()) {
            program.dialogs.boxes.clear(); // of the selection: an AutoExec macro
            for (const int option : {1, 2, 3}) {
                run(program, option);
                EXPECT_EQ(program.desk->context.DoneTable, option);
            }
            EXPECT_TRUE(program.dialogs.boxes.empty()) << toUtf8(program.dialogs.lastText());
            const auto tables = program.rows(u"T_RvTblInfo");
            EXPECT_GE(tables.size(), static_cast<std::size_t>(program.desk->context.TableCount -
                                                              program.desk->context.LinkTableCount))
                << "no table of its own is left out";
            EXPECT_EQ(tables.empty(), program.rows(u"T_RvTblItem").empty());
            ++analysed;
        }
        program.desk->dispatch([&] { program.form().m1z.press(); });
        EXPECT_EQ(test::bytesOf(target), before);
    }
    if (test::realSamples()) {
        EXPECT_GT(analysed, 15);
    }
}

} // namespace
} // namespace relvane
