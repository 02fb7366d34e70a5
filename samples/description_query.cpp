#include "sample_builder/description_query.h"

#include <algorithm>

#include "sample_builder/description_value.h"

namespace relvane::samples {

namespace {

namespace attribute {
constexpr int kind = 1, parameter = 2, options = 3, otherDatabase = 4, source = 5, field = 6, join = 7,
              where = 8, group = 9, having = 10, order = 11;
}

struct NamedFlag {
    const char16_t* name;
    int flag;
};

struct QueryKind {
    const char16_t* name;
    std::uint32_t flags; // of the catalogue
    int kind;            // of the row of attribute 1; 0: no such row
};

constexpr QueryKind queryKinds[] = {
    {u"select", querySelect, 1},         {u"make-table", queryMakeTable, 2},
    {u"append", queryAppend, 3},         {u"update", queryUpdate, 4},
    {u"delete", queryDelete, 5},         {u"crosstab", queryCrosstab, 6},
    {u"definition", queryDefinition, 7}, {u"pass-through", queryPassThrough, 8},
    {u"union", queryUnion, 9},           {u"embedded", queryEmbedded, 0},
};

constexpr NamedFlag optionFlags[] = {{u"all-fields", 1},  {u"distinct", 2}, {u"owner-access", 4},
                                     {u"distinctrow", 8}, {u"top", 0x10},   {u"percent", 0x20}};
constexpr NamedFlag joinFlags[] = {{u"inner", 1}, {u"left", 2}, {u"right", 3}};
constexpr NamedFlag fieldFlags[] = {
    {u"value", 0}, {u"column-heading", 1}, {u"row-heading", 2}, {u"values", 0x8000 - 0x10000}};

std::optional<int> takeFlag(std::span<const NamedFlag> flags, DescriptionLine& line) {
    for (const NamedFlag& known : flags) {
        if (line.takeIf(known.name)) {
            return known.flag;
        }
    }
    return std::nullopt;
}

std::optional<Text> takeOptional(DescriptionLine& line) {
    return line.atEnd() ? std::nullopt : std::optional(line.takeText("a word"));
}

QueryRowSpec& kindRow(QuerySpec& query, DescriptionLine& line) {
    const auto found = std::ranges::find(query.rows, attribute::kind, &QueryRowSpec::attribute);
    if (found == query.rows.end()) {
        line.fail("this kind of query has no such line");
    }
    return *found;
}

void readTarget(QuerySpec& query, DescriptionLine& line) {
    QueryRowSpec& row = kindRow(query, line);
    row.name1 = line.takeText("a table");
    row.name2 = takeOptional(line);
    row.expression = takeOptional(line);
}

void readConnect(QuerySpec& query, DescriptionLine& line) {
    kindRow(query, line).name1 = line.takeText("a connection");
}

void readSql(QuerySpec& query, DescriptionLine& line) {
    kindRow(query, line).expression = line.takeText("a statement");
}

void readParameter(QuerySpec& query, DescriptionLine& line) {
    QueryRowSpec row{.attribute = attribute::parameter, .name1 = line.takeText("a name")};
    row.flag = line.takeIf(u"value") ? 0 : static_cast<int>(takeType(line));
    query.rows.push_back(row);
}

void readOptions(QuerySpec& query, DescriptionLine& line) {
    QueryRowSpec row{.attribute = attribute::options, .flag = 0};
    constexpr int top = 0x10;
    while (const auto flag = takeFlag(optionFlags, line)) {
        row.flag = *row.flag | *flag;
        if (*flag == top) {
            row.name1 = line.takeText("a number");
        }
    }
    query.rows.push_back(row);
}

void readIn(QuerySpec& query, DescriptionLine& line) {
    QueryRowSpec row{.attribute = attribute::otherDatabase, .name1 = line.takeText("a database")};
    row.expression = takeOptional(line);
    query.rows.push_back(row);
}

void readFrom(QuerySpec& query, DescriptionLine& line) {
    QueryRowSpec row{.attribute = attribute::source, .name1 = line.takeText("a table")};
    row.name2 = takeOptional(line);
    query.rows.push_back(row);
}

void readFromQuery(QuerySpec& query, DescriptionLine& line) {
    QueryRowSpec row{.attribute = attribute::source, .expression = line.takeText("a statement")};
    row.name2 = line.takeText("an alias");
    query.rows.push_back(row);
}

void readUnionPart(QuerySpec& query, DescriptionLine& line) {
    const auto before = std::ranges::count(query.rows, attribute::source, &QueryRowSpec::attribute);
    query.rows.push_back({.attribute = attribute::source,
                          .name2 = u"X7YZ_____" + toText(before + 1),
                          .expression = line.takeText("a statement")});
}

void readField(QuerySpec& query, DescriptionLine& line) {
    QueryRowSpec row{.attribute = attribute::field, .expression = line.takeText("an expression"), .flag = 0};
    if (line.takeIf(u"as")) {
        row.name1 = line.takeText("an alias");
    }
    if (line.takeIf(u"into")) {
        row.name2 = line.takeText("a field");
    }
    row.flag = takeFlag(fieldFlags, line).value_or(0);
    query.rows.push_back(row);
}

void readJoin(QuerySpec& query, DescriptionLine& line) {
    QueryRowSpec row{.attribute = attribute::join, .flag = takeFlag(joinFlags, line)};
    if (!row.flag) {
        line.fail("a join is inner, left or right");
    }
    row.name1 = line.takeText("a table");
    row.name2 = line.takeText("a table");
    row.expression = line.takeText("a condition");
    query.rows.push_back(row);
}

template <int attributeNumber>
void readExpression(QuerySpec& query, DescriptionLine& line) {
    QueryRowSpec row{.attribute = attributeNumber, .expression = line.takeText("an expression")};
    row.flag = takeFlag(fieldFlags, line);
    if (line.takeIf(u"descending")) {
        row.name1 = u"D";
    }
    query.rows.push_back(row);
}

struct Keyword {
    const char16_t* name;
    void (*read)(QuerySpec&, DescriptionLine&);
};

constexpr Keyword keywords[] = {
    {u"parameter", readParameter},
    {u"options", readOptions},
    {u"target", readTarget},
    {u"connect", readConnect},
    {u"sql", readSql},
    {u"in", readIn},
    {u"from", readFrom},
    {u"from-query", readFromQuery},
    {u"union-part", readUnionPart},
    {u"field", readField},
    {u"join", readJoin},
    {u"where", readExpression<attribute::where>},
    {u"having", readExpression<attribute::having>},
    {u"group", readExpression<attribute::group>},
    {u"order", readExpression<attribute::order>},
};

} // namespace

QuerySpec startQuery(DescriptionLine& line) {
    QuerySpec query;
    query.name = line.takeText("a name");
    const Text kindName = line.takeText("a kind of query");
    const auto kind =
        std::ranges::find_if(queryKinds, [&](const QueryKind& known) { return kindName == known.name; });
    if (kind == std::end(queryKinds)) {
        line.fail("no kind of query: " + toUtf8(kindName));
    }
    query.flags = kind->flags;
    if (kind->kind != 0) {
        query.rows.push_back({.attribute = attribute::kind, .flag = kind->kind});
    }
    return query;
}

bool readQueryLine(QuerySpec& query, TextView keyword, DescriptionLine& line) {
    const auto known =
        std::ranges::find_if(keywords, [&](const Keyword& one) { return keyword == one.name; });
    if (known == std::end(keywords)) {
        return false;
    }
    known->read(query, line);
    return true;
}

} // namespace relvane::samples
