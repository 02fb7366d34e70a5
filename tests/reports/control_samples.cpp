#include "analysis_samples.h"
#include "report_samples.h"

namespace relvane::test {
namespace {

constexpr DateTime created{1997, 8, 1, 9, 30, 0}, updated{2003, 12, 24, 18, 5, 59};

struct ControlSample {
    const char* name;
    const char* type;
    const char* place;
    std::vector<std::array<const char*, 3>> properties;
};

const std::vector<ControlSample>& controlSamples() {
    static const std::vector<ControlSample> samples{
        {"ラベル", "ﾗﾍﾞﾙ", "0.101cm・0.101cm・2.499cm・0.423cm", {{"書式", "標題", "得意先コード:"}}},
        {"得意先コード",
         "ｺﾝﾎﾞﾎﾞｯｸｽ",
         "0.101cm・2.7cm・5cm・0.423cm",
         {{"ﾃﾞｰﾀ", "ｺﾝﾄﾛｰﾙｿｰｽ", "得意先コード"},
          {"その他", "IMEﾓｰﾄﾞ・保持", "使用不可・いいえ"},
          {"ﾃﾞｰﾀ", "値集合ﾀｲﾌﾟ", "ﾃｰﾌﾞﾙ/ｸｴﾘｰ"},
          {"ﾃﾞｰﾀ", "値集合ｿｰｽ",
           "SELECT DISTINCTROW 得意先コード, 得意先名, 住所, 電話番号 FROM 得意先 WHERE 取引中 = True AND "
           "締め日 "
           "Between 1 And 31 ORDER BY 得意先名;"},
          {"ﾃﾞｰﾀ", "列数・連結列", "4・1"},
          {"ﾃﾞｰﾀ", "規定値・編集ﾛｯｸ", "・いいえ"},
          {"その他", "ﾀﾌﾞｽﾄｯﾌﾟ・移動順", "はい・0"},
          {"ｲﾍﾞﾝﾄ", "更新後処理", "[ｲﾍﾞﾝﾄ ﾌﾟﾛｼｰｼﾞｬ]"}}},
        {"受注日",
         "ﾃｷｽﾄﾎﾞｯｸｽ",
         "0.7cm・2.7cm・2.999cm・0.423cm",
         {{"ﾃﾞｰﾀ", "ｺﾝﾄﾛｰﾙｿｰｽ", "受注日"},
          {"書式", "書式・定型入力", "yyyy/mm/dd・0000/00/00;0;_"},
          {"その他", "IMEﾓｰﾄﾞ・保持", "使用不可・いいえ"},
          {"ﾃﾞｰﾀ", "規定値・編集ﾛｯｸ", "=Date()・いいえ"},
          {"ﾃﾞｰﾀ", "入力規則(ﾒｯｾｰｼﾞ)", ">=#1996/01/01#(受注日が正しくありません。)"},
          {"その他", "ﾀﾌﾞｽﾄｯﾌﾟ・移動順", "はい・1"}}},
        {"金額",
         "ﾃｷｽﾄﾎﾞｯｸｽ",
         "1.3cm・2.7cm・2.999cm・0.423cm",
         {{"ﾃﾞｰﾀ", "ｺﾝﾄﾛｰﾙｿｰｽ", "=CLng(Nz([単価])*[数量]*(1-Nz([割引]))*100)/100"},
          {"書式", "書式・定型入力", "\\#,##0・"}}},
        {"閉じる",
         "ｺﾏﾝﾄﾞﾎﾞﾀﾝ",
         "6.001cm・10.201cm・2.3cm・0.7cm",
         {{"書式", "標題", "閉じる(&C)"},
          {"その他", "ﾀﾌﾞｽﾄｯﾌﾟ・移動順", "はい・12"},
          {"その他", "ﾋﾝﾄﾃｷｽﾄ", "入力を終わります"},
          {"ｲﾍﾞﾝﾄ", "ｸﾘｯｸ時", "[ｲﾍﾞﾝﾄ ﾌﾟﾛｼｰｼﾞｬ]"}}},
        {"改ページ", "改ﾍﾟｰｼﾞ", "12.001cm・0cm", {{"", "", ""}}},
        {"境界線", "線", "5.5cm・0cm・15.998cm・0cm", {{"書式", "線種・線幅", "実線・1"}}},
        {"明細",
         "ｻﾌﾞﾌｫｰﾑ/ｻﾌﾞﾚﾎﾟｰﾄ",
         "2.501cm・0.2cm・14.5cm・2.9cm",
         {{"ﾃﾞｰﾀ", "ｿｰｽｵﾌﾞｼﾞｪｸﾄ", "F_受注入力 サブフォーム"},
          {"ﾃﾞｰﾀ", "ﾘﾝｸ子ﾌｨｰﾙﾄﾞ", "受注コード"},
          {"ﾃﾞｰﾀ", "ﾘﾝｸ親ﾌｨｰﾙﾄﾞ", "受注コード"},
          {"ﾃﾞｰﾀ", "編集ﾛｯｸ", "いいえ"}}},
    };
    return samples;
}

} // namespace

void AnalysedStore::addForm(const Text& name, const Text& recordSource, int option) {
    onReport_ = false;
    Cells cells{{u"objectNo", ++forms_},
                {u"RecordSource", text("ﾚｺｰﾄﾞｿｰｽ : ") + recordSource},
                {u"Filter", text("フィルタ : ")},
                {u"OrderBy", text("並べ替え : ") + (forms_ % 2 == 1 ? text("受注日 DESC") : Text())},
                {u"Caption", text("受注の入力")},
                {u"DefaultView", (forms_ - 1) % 6}, // three of them of later versions
                {u"AllowEdits", true},
                {u"AllowDeletions", false},
                {u"AllowAdditions", true},
                {u"DataEntry", false},
                {u"RecordsetType", (forms_ - 1) % 3},
                {u"RecordLocks", (forms_ - 1) % 3},
                {u"PopUp", false},
                {u"Modal", false},
                {u"Smenubar", Text()},
                {u"Midasi", std::int64_t{option}},
                {u"FormName", name},
                {u"DateCreated", created},
                {u"LastUpdated", updated}};
    if (forms_ % 2 == 1) {
        cells.insert(cells.end(),
                     {{u"Ibent1", text("ﾚｺｰﾄﾞ移動時")},
                      {u"IbentVL1", text("[ｲﾍﾞﾝﾄ ﾌﾟﾛｼｰｼﾞｬ]")},
                      {u"Ibent2", text("開く時")},
                      {u"IbentVL2", text("M_起動処理.開く")},
                      {u"Ibent3", text("閉じる時")},
                      {u"IbentVL3", text("[ｲﾍﾞﾝﾄ ﾌﾟﾛｼｰｼﾞｬ]")},
                      {u"Description", text("受注と明細を入力します。締め日の後は開きません。")}});
    }
    add(u"T_RvFrmInfo", cells);
}

void AnalysedStore::addReport(const Text& name, const Text& recordSource, int option) {
    onReport_ = true;
    levels_ = 0;
    add(u"T_RvRepInfo", {{u"objectNo", ++reports_},
                         {u"RecordSource", text("ﾚｺｰﾄﾞｿｰｽ : ") + recordSource},
                         {u"Filter", text("フィルタ : ")},
                         {u"OrderBy", text("並べ替え : ")},
                         {u"Caption", text("納品書")},
                         {u"RecordLocks", (reports_ - 1) % 2},
                         {u"Smenubar", Text()},
                         {u"Midasi", std::int64_t{option}},
                         {u"Ibent1", text("空ﾃﾞｰﾀ時")},
                         {u"IbentVL1", text("[ｲﾍﾞﾝﾄ ﾌﾟﾛｼｰｼﾞｬ]")},
                         {u"ReportName", name},
                         {u"DateCreated", created},
                         {u"LastUpdated", updated}});
}

void AnalysedStore::addGroupLevel(const Text& source, std::int64_t order, bool header, std::int64_t unit,
                                  std::int64_t interval, std::int64_t together) {
    add(u"T_RvRepGrp", {{u"objectNo", reports_},
                        {u"GroupNo", levels_++},
                        {u"ControlSource", source},
                        {u"SortOrder", order},
                        {u"GroupHeader", header},
                        {u"GroupFooter", false},
                        {u"GroupOn", unit},
                        {u"GroupInterval", interval},
                        {u"KeepTogether", together}});
}

void AnalysedStore::addControl(const Text& name, const Text& type, const Text& place,
                               const std::vector<Property>& properties) {
    ++controls_;
    for (std::size_t i = 0; i < properties.size(); ++i) {
        add(onReport_ ? u"T_RvRepItem" : u"T_RvFrmItem",
            {{u"objectNo", onReport_ ? reports_ : forms_},
             {u"ControlNo", controls_},
             {u"PropertyNo", static_cast<std::int64_t>(i + 1)},
             {u"Name", name},
             {u"ControlType", type},
             {u"cntlVisible", Text(controls_ % 5 == 0 ? u"False" : u"True")},
             {u"TLWH", place},
             {u"Bunrui", properties[i][0]},
             {u"PropertyName", properties[i][1]},
             {u"PropertyValue", properties[i][2]}});
    }
}

void AnalysedStore::addControls(int count) {
    const auto& samples = controlSamples();
    for (int i = 0; i < count; ++i) {
        const ControlSample& sample = samples[static_cast<std::size_t>(i) % samples.size()];
        std::vector<Property> properties;
        for (const auto& property : sample.properties) {
            properties.push_back({text(property[0]), text(property[1]), text(property[2])});
        }
        const std::string number = i < static_cast<int>(samples.size()) ? "" : std::to_string(i);
        addControl(text(sample.name + number), text(sample.type), text(sample.place), properties);
    }
}

void AnalysedStore::addCensus(const Text& kind, const Text& name, const std::vector<std::int64_t>& counts) {
    static constexpr const char16_t* fields[] = {
        u"RectangleCount",        u"LabelCount",        u"LineCount",      u"ImageCount",
        u"CommandButtonCount",    u"OptionButtonCount", u"CheckBoxCount",  u"OptionGroupCount",
        u"BoundObjectFrameCount", u"TextBoxCount",      u"ListBoxCount",   u"ComboBoxCount",
        u"SubformCount",          u"ObjectFrameCount",  u"PageBreakCount", u"PageCount",
        u"CustomControlCount",    u"ToggleButtonCount", u"TabCtlCount"};
    Cells cells{{u"objectNo", ++counted_}, {u"Class", kind}, {u"ObjectName", name}};
    for (std::size_t i = 0; i < std::size(fields); ++i) {
        cells.emplace_back(fields[i], i < counts.size() ? counts[i] : std::int64_t{0});
    }
    add(u"T_RvControlCount", cells);
}

} // namespace relvane::test
