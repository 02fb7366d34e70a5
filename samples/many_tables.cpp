#include "sample_builder/many_tables.h"

namespace relvane::samples {

namespace {

TableSpec numberedTable(int number, int rowsEach) {
    const Text digits = toText(10'000 + number).substr(1);
    TableSpec table;
    table.name = u"業務" + digits;
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

} // namespace relvane::samples
