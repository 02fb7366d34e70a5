#include "sample_builder/many_tables.h"

namespace relvane::samples {

namespace {

Text fourDigits(int number) {
    return toText(10'000 + number).substr(1);
}

Text tableName(int number) {
    return u"業務" + fourDigits(number);
}

TableSpec numberedTable(int number, int rowsEach) {
    const Text digits = fourDigits(number);
    TableSpec table;
    table.name = tableName(number);
    table.properties = {{u"Description", u"業務データ " + digits + u" の記録"}};
    table.columns = {
        {.name = u"番号",
         .type = ColumnType::Long,
         .autoNumber = true,
         .properties = {{u"Description", u"自動採番"}, {u"Required", true}}},
        {.name = u"名称",
         .type = ColumnType::Text,
         .size = 60,
         .properties = {{u"Description", u"画面に出す名前"}, {u"Caption", u"名称"}}},
        {.name = u"ﾌﾘｶﾞﾅ", .type = ColumnType::Text, .size = 60},
        {.name = u"登録日", .type = ColumnType::Date, .properties = {{u"DefaultValue", u"=Date()"}}},
        {.name = u"金額",
         .type = ColumnType::Currency,
         .properties = {{u"ValidationRule", u">=0"}, {u"ValidationText", u"金額は0以上です。"}}},
        {.name = u"有効", .type = ColumnType::Boolean},
        {.name = u"備考", .type = ColumnType::Memo},
    };
    table.indexes = {{.name = u"PrimaryKey", .columns = {{u"番号"}}, .primary = true},
                     {.name = u"名称", .columns = {{u"名称"}, {u"登録日", true}}}};
    for (int row = 1; row <= rowsEach; ++row) {
        const DateTime date{1990 + row % 9, 1 + row % 12, 1 + row % 28, row % 24, row % 60, number % 60};
        const Value memo = row % 4 == 0 ? Value(Text(static_cast<std::size_t>(row % 300), u'備')) : Value();
        table.rows.push_back({row, u"名称" + toText(row * 7919 % 10'007), u"ﾒｲｼｮｳ" + toText(row), date,
                              Currency{row * 12'345}, row % 3 == 0, memo});
    }
    return table;
}

// Seven columns of numberedTable and eight more.
TableSpec wideTable(int number) {
    TableSpec table = numberedTable(number, 2);
    constexpr ColumnType types[] = {ColumnType::Text, ColumnType::Long, ColumnType::Double, ColumnType::Date};
    for (int column = 1; column <= 8; ++column) {
        ColumnSpec field{.name = u"項目" + toText(column), .type = types[column % 4]};
        field.size = field.type == ColumnType::Text ? 50 : 0;
        field.properties = {{u"Description", u"項目 " + toText(column) + u" の説明"}};
        table.columns.push_back(std::move(field));
    }
    return table;
}

// ---- Rows of queries

enum Attribute {
    Kind = 1,
    Parameter = 2,
    Options = 3,
    Source = 5,
    Column = 6,
    Join = 7,
    Where = 8,
    GroupBy = 9
};
enum KindFlag { Select = 1, Append = 3, Update = 4, Delete = 5, Crosstab = 6, Union = 9 };
enum JoinFlag { Inner = 1, LeftOuter = 2 };

QueryRowSpec kind(int flag, std::optional<Text> target = std::nullopt) {
    return {.attribute = Kind, .name1 = std::move(target), .flag = flag};
}
QueryRowSpec source(const Text& name) {
    return {.attribute = Source, .name1 = name};
}
QueryRowSpec column(Text expression, std::optional<Text> alias = std::nullopt, int flag = 0) {
    return {
        .attribute = Column, .name1 = std::move(alias), .expression = std::move(expression), .flag = flag};
}
QueryRowSpec where(Text condition) {
    return {.attribute = Where, .expression = std::move(condition)};
}
QueryRowSpec join(const Text& left, const Text& right, int flag) {
    return {.attribute = Join,
            .name1 = left,
            .name2 = right,
            .expression = left + u".番号 = " + right + u".番号",
            .flag = flag};
}

// What a query of the list draws on: tables from its own number on, and the query before it.
struct Place {
    int number, each;
    Text table(int further = 0) const { return tableName((number + further - 1) % each + 1); }
    Text queryBefore() const { return u"一覧" + fourDigits(number - 1); }
};

using Rows = std::vector<QueryRowSpec>;

Rows chainOfJoins(const Place& at, int tables, int flag) {
    Rows rows = {kind(Select)};
    for (int i = 0; i < tables; ++i) {
        rows.push_back(source(at.table(i)));
        rows.push_back(column(at.table(i) + u".名称", u"名称" + toText(i + 1)));
        rows.push_back(column(at.table(i) + u".金額"));
        if (i > 0) {
            rows.push_back(join(at.table(i - 1), at.table(i), flag));
        }
    }
    return rows;
}

Rows joinOfTwo(const Place& at) {
    return chainOfJoins(at, 2, Inner);
}
Rows onQuery(const Place& at) {
    return {kind(Select), source(at.queryBefore()), column(at.queryBefore() + u".*"),
            column(u"[名称1] & \"様\"", u"宛名" + toText(at.number))};
}
Rows onQueryOnQuery(const Place& at) {
    return {kind(Select),
            source(at.queryBefore()),
            {.attribute = Options, .flag = 1},
            where(u"[名称1] Is Not Null")};
}
Rows joinOfFour(const Place& at) {
    return chainOfJoins(at, 4, Inner);
}
Rows outerJoinOfThree(const Place& at) {
    return chainOfJoins(at, 3, LeftOuter);
}
Rows crosstab(const Place& at) {
    constexpr int value = 0, columnHeading = 1, rowHeading = 2;
    const Text table = at.table();
    Rows rows = {kind(Crosstab), source(table), column(u"Sum(" + table + u".金額)", Text(u"合計"), value),
                 column(u"Month([登録日]) In (1,2,3,4,5,6)", std::nullopt, columnHeading),
                 column(table + u".名称", std::nullopt, rowHeading)};
    rows.push_back({.attribute = GroupBy, .expression = u"Month([登録日])", .flag = columnHeading});
    rows.push_back({.attribute = GroupBy, .expression = table + u".名称", .flag = rowHeading});
    return rows;
}
Rows unionOfTwo(const Place& at) {
    const auto part = [](const Text& table, TextView name) {
        return QueryRowSpec{.attribute = Source,
                            .name2 = Text(name),
                            .expression = u"SELECT 番号, 名称, 金額 FROM " + table + u"\r\n"};
    };
    return {kind(Union), part(at.table(), u"X7YZ_____1"), part(at.table(1), u"X7YZ_____2")};
}
Rows update(const Place& at) {
    QueryRowSpec set = column(u"[金額]*1.05");
    set.name2 = at.table() + u".金額";
    return {kind(Update), source(at.table()), std::move(set), where(at.table() + u".有効=True")};
}
Rows append(const Place& at) {
    QueryRowSpec name = column(at.table(1) + u".名称");
    name.name2 = u"名称";
    return {kind(Append, at.table()), source(at.table(1)), std::move(name)};
}
Rows deletion(const Place& at) {
    return {kind(Delete), source(at.table()), column(at.table() + u".*"), where(u"[登録日]<#1/1/90#")};
}
Rows expressions(const Place& at) {
    const Text table = at.table();
    return {kind(Select),
            source(table),
            column(table + u".*"),
            column(u"IIf([金額]>1000,\"大\",\"小\")", Text(u"区分")),
            column(u"Nz([項目1])+[項目2]*2", Text(u"計算")),
            column(u"Format([登録日],\"yyyy/mm/dd\")", Text(u"日付"))};
}
Rows parameters(const Place& at) {
    return {kind(Select),
            {.attribute = Parameter, .name1 = u"開始日を入力", .flag = 8},
            {.attribute = Parameter, .name1 = u"終了日を入力", .flag = 8},
            source(at.table()),
            column(at.table() + u".名称"),
            column(u"[開始日を入力]", Text(u"開始")),
            where(at.table() + u".登録日 Between [開始日を入力] And [終了日を入力]")};
}

struct QueryKindRow {
    std::uint32_t flags;
    Rows (*rows)(const Place&);
};
// Each begins with a table of its own but for those that draw on the query before them.
constexpr QueryKindRow queryKinds[] = {
    {querySelect, joinOfTwo},  {querySelect, onQuery},          {querySelect, onQueryOnQuery},
    {querySelect, joinOfFour}, {querySelect, outerJoinOfThree}, {queryCrosstab, crosstab},
    {queryUnion, unionOfTwo},  {queryUpdate, update},           {queryAppend, append},
    {queryDelete, deletion},   {querySelect, expressions},      {querySelect, parameters},
};

QuerySpec numberedQuery(const Place& at) {
    const QueryKindRow& made = queryKinds[static_cast<std::size_t>(at.number - 1) % std::size(queryKinds)];
    QuerySpec query;
    query.name = u"一覧" + fourDigits(at.number);
    query.flags = made.flags;
    query.rows = made.rows(at);
    query.properties = {{u"Description", u"業務の一覧 " + fourDigits(at.number)}};
    return query;
}

} // namespace

DatabaseSpec manyTables(int tables, int rowsEach) {
    DatabaseSpec spec;
    for (int number = 1; number <= tables; ++number) {
        spec.tables.push_back(numberedTable(number, rowsEach));
        if (number % 10 == 0) {
            const Text &before = spec.tables[spec.tables.size() - 2].name, &last = spec.tables.back().name;
            spec.relations.push_back({.name = before + last,
                                      .table = before,
                                      .foreignTable = last,
                                      .columns = {{u"番号", u"番号"}}});
        }
    }
    return spec;
}

DatabaseSpec manyTablesAndQueries(int each) {
    DatabaseSpec spec;
    for (int number = 1; number <= each; ++number) {
        spec.tables.push_back(wideTable(number));
        spec.queries.push_back(numberedQuery({number, each}));
    }
    return spec;
}

} // namespace relvane::samples
