#include "code/dim_call_row.h"

#include <algorithm>

#include "core/text_functions.h"

namespace relvane {
namespace {

enum class Opens { Anywhere, AtTheBeginning }; // where a keyword makes its line one of the list
enum class Assumed { First, WhereItIs };       // where the length of the text has the keyword stand

struct DimCallKeyword {
    TextView word; // in capitals
    std::int16_t number;
    TextView group, type;
    Opens opens = Opens::Anywhere;
    Assumed assumed = Assumed::First;

    std::int64_t length() const { return static_cast<std::int64_t>(word.size()); }
};

// In the order in which they are looked for.
constexpr DimCallKeyword keywords[] = {
    {u"DIM ", 4, u"変数", u"Dim", Opens::AtTheBeginning},
    {u"CONST ", 5, u"定数", u"Const", Opens::Anywhere, Assumed::WhereItIs},
    {u"GLOBAL ", 1, u"変数", u"Global"},
    {u"PRIVATE ", 3, u"変数", u"Private"},
    {u"PUBLIC ", 2, u"変数", u"Public"},
    {u"CALL ", 6, u"呼出", u"Call"},
};

constexpr std::int64_t longestText = 255;

const DimCallKeyword& keywordOf(TextView capitals) {
    const auto found = std::ranges::find_if(
        keywords, [&](const DimCallKeyword& keyword) { return holds(capitals, keyword.word); });
    if (found == std::end(keywords)) {
        throw RunTimeError(ErrorNumber::InvalidProcedureCall);
    }
    return *found;
}

} // namespace

bool isDimCall(TextView capitals) {
    return std::ranges::any_of(keywords, [&](const DimCallKeyword& keyword) {
        return keyword.opens == Opens::AtTheBeginning ? capitals.starts_with(keyword.word)
                                                      : holds(capitals, keyword.word);
    });
}

void AddDimCallRow(AnalysisContext& context) {
    const ScanState& scan = context.Scan;
    const TextView line = LTrimView(scan.NextCodeLine);
    const Text capitals = UCase(line);
    Recordset& row = need(context.WorkRs2);
    row.AddNew();
    row.Collect(u"objectNo", std::int64_t{context.ObjectNo});
    const DimCallKeyword& keyword = keywordOf(capitals);
    row.Collect(u"ProcedureNo", std::int64_t{scan.CurProcName.empty() ? std::int16_t{0} : scan.ProcNo});
    row.Collect(u"pLine", std::int64_t{scan.ProcLineNo});
    row.Collect(u"DimCall", std::int64_t{keyword.number});
    row.Collect(u"Bunrui", Text(keyword.group));
    row.Collect(u"Type", Text(keyword.type));

    const std::int64_t text = InStr(capitals, keyword.word) + keyword.length();
    const std::int64_t assumedText = keyword.assumed == Assumed::First ? 1 + keyword.length() : text;
    std::int64_t comment = InStr(capitals, u"'");
    if (comment >= keyword.length()) {
        row.Collect(u"As", RTrim(Mid(line, comment + 1, longestText)));
    } else {
        row.Collect(u"As", Null{});
        comment = longestText;
    }
    row.Collect(u"Parameters", RTrim(Mid(line, text, comment - assumedText)));
    row.Update();
}

} // namespace relvane
