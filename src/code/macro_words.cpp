#include "code/macro_words.h"

#include <unordered_map>

namespace relvane {
namespace {

struct MethodPrefix {
    TextView prefix;
    std::int16_t action;
};

// clang-format off
constexpr MethodPrefix methods[] = {
    {u"RunSQ", 1},
    {u"Cance", 3},
    {u"Echo ", 4},
    {u"CopyO", 5},
    {u"Repai", 6},
    {u"Delet", 7},
    {u"Selec", 8},
    {u"SendO", 9},
    {u"SaveO", 10},
    {u"OpenQ", 12},
    {u"RunCo", 13},
    {u"GoToC", 14},
    {u"MoveS", 15},
    {u"ShowT", 16},
    {u"OpenT", 18},
    {u"Apply", 20},
    {u"OpenF", 21},
    {u"GoToP", 23},
    {u"RunMa", 24},
    {u"SetWa", 26},
    {u"SetMe", 28},
    {u"OpenM", 30},
    {u"GoToR", 31},
    {u"FindR", 32},
    {u"OpenR", 33},
    {u"Print", 35},
    {u"Resto", 37},
    {u"Hourg", 38},
    {u"Reque", 39},
    {u"Minim", 40},
    {u"Maxim", 41},
    {u"FindN", 42},
    {u"Quit ", 43},
    {u"Outpu", 44},
    {u"ShowA", 46},
    {u"Close", 48},
    {u"Renam", 49},
    {u"OpenS", 51},
    {u"OpenV", 54},
    {u"OpenD", 98},
};

struct ConstantLabel {
    TextView constant, label; // the constant in capitals
};

// The previous record bears the label of the first one. The two constants with a small l are never met: those who know
// the lists know them so.
constexpr ConstantLabel constants[] = {
    {u"TRUE", u"はい"},
    {u"FALSE", u"いいえ"},
    {u"ACNORMAL", u"標準"},
    {u"ACADD", u"追加"},
    {u"ACEDIT", u"編集"},
    {u"ACSAVE", u"すべて保存"},
    {u"ACREADONLY", u"読み取り専用"},
    {u"ACVIEWDESIGN", u"ﾃﾞｻﾞｲﾝﾋﾞｭｰ"},
    {u"ACVIEWNORMAL", u"ﾃﾞｰﾀｼｰﾄﾋﾞｭｰ"},
    {u"ACVIEWPREVIEW", u"印刷ﾌﾟﾚﾋﾞｭｰ"},
    {u"ACPREVIEW", u"印刷ﾌﾟﾚﾋﾞｭｰ"},
    {u"ACTABLE", u"ﾃｰﾌﾞﾙ"},
    {u"ACQUERY", u"ｸｴﾘｰ"},
    {u"ACFORM", u"ﾌｫｰﾑ"},
    {u"ACREPORT", u"ﾚﾎﾟｰﾄ"},
    {u"ACMACRO", u"ﾏｸﾛ"},
    {u"ACMODULE", u"ﾓｼﾞｭｰﾙ"},
    {u"VBCRITICAL", u"警告"},
    {u"VBQUESTION", u"注意?"},
    {u"VBEXCLAMATION", u"注意!"},
    {u"VBINFORMATION", u"情報"},
    {u"ACTOOLBARNO", u"しない"},
    {u"ACIMPORT", u"ｲﾝﾎﾟｰﾄ"},
    {u"ACEXPORT", u"ｴｸｽﾎﾟｰﾄ"},
    {u"ACIMPORTDERIM", u"区切り記号付きｲﾝﾎﾟｰﾄ"},
    {u"ACEXPORTDERIM", u"区切り記号付きｴｸｽﾎﾟｰﾄ"},
    {u"ACMENUUNGRAY", u"通常表示"},
    {u"ACNEXT", u"次のﾚｺｰﾄﾞ"},
    {u"ACPREVIOUS", u"先頭のﾚｺｰﾄﾞ"},
    {u"ACLAST", u"最後のﾚｺｰﾄﾞへ"},
    {u"ACNEW", u"新しいﾚｺｰﾄﾞ"},
    {u"ACENTIRE", u"ﾌｨｰﾙﾄﾞ全体"},
    {u"ACCMDPREVIEWONEPAGE", u"1ﾍﾟｰｼﾞ表示"},
    {u"ACCMDPREVIEWTWOPAGES", u"2ﾍﾟｰｼﾞ表示"},
    {u"ACCMDPREVIEWFOURPAGES", u"4ﾍﾟｰｼﾞ表示"},
    {u"ACCMDPREVIEWEIGHTPAGES", u"8ﾍﾟｰｼﾞ表示"},
    {u"ACCMDPREVIEWTWELVEPAGES", u"12ﾍﾟｰｼﾞ表示"},
    {u"ACCMDZOOM10", u"ｽﾞｰﾑ(10%)"},
    {u"ACCMDZOOM25", u"ｽﾞｰﾑ(25%)"},
    {u"ACCMDZOOM50", u"ｽﾞｰﾑ(50%)"},
    {u"ACCMDZOOM75", u"ｽﾞｰﾑ(75%)"},
    {u"ACCMDZOOM100", u"ｽﾞｰﾑ(100%)"},
    {u"ACCMDZOOM150", u"ｽﾞｰﾑ(150%)"},
    {u"ACCMDZOOM200", u"ｽﾞｰﾑ(200%)"},
    {u"ACCMDZOOMBOX", u"ｽﾞｰﾑﾎﾞｯｸｽ"},
    {u"ACCMDPAGESETUP", u"ﾍﾟｰｼﾞ設定"},
    {u"ACCMDPRINT", u"印刷"},
    {u"ACCMDPRINTPREVIEW", u"印刷ﾌﾟﾚﾋﾞｭｰ"},
    {u"ACCMDDOCMAXIMIZE", u"最大化"},
    {u"ACCMDAPPMAXIMIZE", u"最大化(ｱﾌﾟﾘｹｰｼｮﾝ)"},
    {u"ACCMDDOCMINIMIZE", u"最小化"},
    {u"ACCMDAPPMINIMIZE", u"最小化(ｱﾌﾟﾘｹｰｼｮﾝ)"},
    {u"ACCMDDOCMOVE", u"移動"},
    {u"ACCMDAPPMOVE", u"移動(ｱﾌﾟﾘｹｰｼｮﾝ)"},
    {u"ACCMDDOCRESTORE", u"元のｻｲｽﾞに戻す"},
    {u"ACCMDAPPRESTORE", u"元のｻｲｽﾞに戻す(ｱﾌﾟﾘｹｰｼｮﾝ)"},
    {u"ACCMDAPPSIZE", u"ｻｲｽﾞ変更(ｱﾌﾟﾘｹｰｼｮﾝ)"},
    {u"ACCMDClOSE", u"閉じる"},
    {u"ACCMDClOSEWINDOW", u"ｳｨﾝﾄﾞｳを閉じる"},
    {u"ACCMDEXIT", u"ｱﾌﾟﾘｹｰｼｮﾝの終了"},
    {u"ACCMDEND", u"終了"},
    {u"ACCMDGOBACK", u"戻る"},
    {u"ACCMDUNDO", u"元に戻す"},
    {u"ACCMDSAVE", u"上書き保存"},
    {u"ACCMDCOPY", u"ｺﾋﾟｰ"},
    {u"ACCMDCUT", u"切り取り"},
    {u"ACCMDPASTE", u"貼り付け"},
    {u"ACCMDRECORDSGOTOPREVIOUS", u"前のﾚｺｰﾄﾞへ"},
    {u"ACCMDRECORDSGOTONEXT", u"次のﾚｺｰﾄﾞへ"},
    {u"ACCMDRECORDSGOTONEW", u"新しいﾚｺｰﾄﾞへ"},
    {u"ACCMDRECORDSGOTOFIRST", u"先頭のﾚｺｰﾄﾞへ"},
    {u"ACCMDRECORDSGOTOLAST", u"最後のﾚｺｰﾄﾞへ"},
    {u"ACCMDDELETERECORD", u"ﾚｺｰﾄﾞの削除"},
    {u"ACCMDSELECTRECORD", u"ﾚｺｰﾄﾞの選択"},
    {u"ACCMDSAVERECORD", u"ﾚｺｰﾄﾞの保存"},
    {u"ACCMDSIZETOGRID", u"ｻｲｽﾞ変更 (ｸﾞﾘｯﾄﾞに)"},
    {u"ACCMDSIZETOFITFORM", u"ｻｲｽﾞ変更 (ﾌｫｰﾑに)"},
    {u"ACCMDSIZETONARROWEST", u"ｻｲｽﾞ変更 (狭いｺﾝﾄﾛｰﾙに)"},
    {u"ACCMDSIZETOWIDEST", u"ｻｲｽﾞ変更 (広いｺﾝﾄﾛｰﾙに)"},
    {u"ACCMDALIGNTOTALLEST", u"ｻｲｽﾞ変更 (高いｺﾝﾄﾛｰﾙに)"},
    {u"ACCMDSIZETOFIT", u"ｻｲｽﾞ変更 (自動調整)"},
    {u"ACCMDALIGNTOSHORTEST", u"ｻｲｽﾞ変更 (低いｺﾝﾄﾛｰﾙに)"},
    {u"ACCMDAPPLYFILTERSORT", u"ﾌｨﾙﾀ/並べ替えの実行"},
    {u"ACCMDREMOVEFILTERSORT", u"ﾌｨﾙﾀ/並べ替えの解除"},
    {u"ACCMDADVANCEDFILTERSORT", u"ﾌｨﾙﾀ/並べ替えの編集"},
    {u"ACCMDTOGGLEFILTER", u"ﾌｨﾙﾀの実行/解除"},
    {u"ACCMDFILTERBYFORM", u"ﾌｫｰﾑﾌｨﾙﾀ"},
    {u"ACCMDCOMPACTDATABASE", u"最適化"},
    {u"ACCMDCONVERTDATABASE", u"修復"},
    {u"ACCMDFIND", u"検索"},
    {u"ACCMDREPLACE", u"置換"},
    {u"ACCMDOUTPUTTOEXCEL", u"Excelに出力"},
    {u"ACCMDWORDMAILMERGE", u"Wordに差し込み"},
    {u"ACCMDOPENURL", u"URLを開く"},
    {u"ACCMDAUTODIAL", u"ｵｰﾄﾀﾞｲｱﾙ"},
    {u"ACCMDAUTOCORRECT", u"ｵｰﾄｺﾚｸﾄ"},
    {u"ACCMDAUTOFORMAT", u"ｵｰﾄﾌｫｰﾏｯﾄ"},
    {u"ACCMDCREATESHORTCUT", u"ｼｮｰﾄｶｯﾄの作成"},
    {u"ACCMDOPENSTARTPAGE", u"ｽﾀｰﾄﾍﾟｰｼﾞを開く"},
    {u"ACCMDTABORDER", u"ﾀﾌﾞｵｰﾀﾞｰ"},
    {u"ACCMDVIEWTOOLBOX", u"ﾂｰﾙﾎﾞｯｸｽの表示"},
    {u"ACCMDFONT", u"ﾌｫﾝﾄ"},
    {u"ACCMDIMPORT", u"ｲﾝﾎﾟｰﾄ"},
    {u"ACCMDOBJBRWSHOWHIDDENMEMBERS", u"ｵﾌﾞｼﾞｪｸﾄﾌﾞﾗｳｻﾞ隠しﾒﾝﾊﾞの表示"},
    {u"ACCMDOPTIONS", u"ｵﾌﾟｼｮﾝ"},
    {u"ACCMDSTARTUPPROPERTIES", u"起動時の設定"},
    {u"ACCMDSEND", u"送信"},
};
// clang-format on

} // namespace

std::int16_t GetMacroActionNo(TextView prefix) {
    for (const MethodPrefix& method : methods) {
        if (method.prefix == prefix) {
            return method.action;
        }
    }
    return unknownMacroAction;
}

Text GetMacroConstantLabel(TextView text) {
    static const auto labels = [] {
        std::unordered_map<TextView, TextView> made;
        for (const ConstantLabel& constant : constants) {
            made.emplace(constant.constant, constant.label);
        }
        return made;
    }();
    const auto found = labels.find(upperCase(text));
    return Text(found == labels.end() ? text : found->second);
}

} // namespace relvane
