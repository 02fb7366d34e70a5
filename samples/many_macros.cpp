#include "sample_builder/many_macros.h"

#include <stdexcept>

namespace relvane::samples {

namespace {

// "#" in a text stands for a number that differs from row to row.
const MacroRowSpec rowKinds[] = {
    {.action = 23,
     .arguments = {u"受注入力", u"0", u"", u"[受注番号]=#", u"1", u"0"},
     .comment = u"受注番号 # の画面を開く"},
    {.condition = u"[数量]>#", .action = 40, .arguments = {u"[金額]", u"[単価]*[数量]"}},
    {.condition = u"...", .action = 22, .arguments = {u"数量は # です。", u"-1", u"4", u"確認"}},
    {.action = 17, .arguments = {u"-1"}},
    {.action = 33, .arguments = {u"計算する(#)"}, .comment = u"金額を求める"},
    {.comment = u"ここから後の処理"},
    {.condition = u"IsNull([顧客#])", .action = 5},
    {.action = 13, .arguments = {u"明細#"}},
    {.action = 6, .arguments = {u"2", u"受注入力", u"2"}, .comment = u"画面を閉じる"},
};

Text numbered(TextView text, int number) {
    Text result;
    for (const char16_t unit : text) {
        result += unit == u'#' ? toText(number) : Text(1, unit);
    }
    return result;
}

MacroRowSpec row(int number) {
    MacroRowSpec row = rowKinds[static_cast<std::size_t>(number) % std::size(rowKinds)];
    row.condition = numbered(row.condition, number);
    row.comment = numbered(row.comment, number);
    for (Text& argument : row.arguments) {
        argument = numbered(argument, number);
    }
    return row;
}

int share(int all, int parts, int index) {
    return all / parts + (index < all % parts ? 1 : 0);
}

} // namespace

DatabaseSpec manyMacros(int macros, int rows, int members) {
    if (macros < 1 || members < macros || rows < members) {
        throw std::invalid_argument("too few rows for so many macros and members");
    }
    DatabaseSpec spec;
    int rowNumber = 0, memberNumber = 0;
    for (int i = 0; i < macros; ++i) {
        DocumentSpec& document = spec.macros.emplace_back();
        document.name = u"処理" + toText(i + 1);
        std::vector<MacroRowSpec>& sheet = document.macro.emplace().rows;
        for (int member = share(members, macros, i); member > 0; --member) {
            const std::size_t first = sheet.size();
            for (int left = share(rows, members, memberNumber); left > 0; --left) {
                sheet.push_back(row(rowNumber++));
            }
            sheet[first].name = u"手順" + toText(++memberNumber);
        }
    }
    return spec;
}

} // namespace relvane::samples
