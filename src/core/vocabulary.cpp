#include "core/vocabulary.h"

#include <span>

namespace relvane {
namespace {

struct Word {
    TextView key, word;
};

// clang-format off
constexpr Word queryTypes[] = {
    {u"0", u"選択ｸｴﾘｰ"},
    {u"16", u"ｸﾛｽ集計ｸｴﾘｰ"},
    {u"32", u"削除ｸｴﾘｰ"},
    {u"48", u"更新ｸｴﾘｰ"},
    {u"64", u"追加ｸｴﾘｰ"},
    {u"80", u"作成ｸｴﾘｰ"},
    {u"96", u"定義ｸｴﾘｰ"},
    {u"112", u"ﾊﾟｽｽﾙｰｸｴﾘｰ"},
    {u"128", u"ﾕﾆｵﾝｸｴﾘｰ"},
    {u"144", u"ﾊﾟｽｽﾙｰ&更新ｸｴﾘｰ"},
    {u"240", u"ｱｸｼｮﾝｸｴﾘｰ"},
    {u"160", u"複合ｸｴﾘｰ"},
    {u"224", u"遂行ｸｴﾘｰ"},
    {u"8", u"選択ｸｴﾘｰ(隠し)"},
    {u"24", u"ｸﾛｽ集計ｸｴﾘｰ(隠し)"},
    {u"40", u"削除ｸｴﾘｰ(隠し)"},
    {u"56", u"更新ｸｴﾘｰ(隠し)"},
    {u"72", u"追加ｸｴﾘｰ(隠し)"},
    {u"88", u"作成ｸｴﾘｰ(隠し)"},
};

constexpr Word controlTypes[] = {
    {u"101", u"Rectangle"},
    {u"100", u"Label"},
    {u"102", u"Line"},
    {u"103", u"Image"},
    {u"104", u"CommandButton"},
    {u"105", u"OptionButton"},
    {u"106", u"CheckBox"},
    {u"107", u"OptionGroup"},
    {u"108", u"BoundObjectFrame"},
    {u"109", u"TextBox"},
    {u"110", u"ListBox"},
    {u"111", u"ComboBox"},
    {u"112", u"Subform"},
    {u"114", u"ObjectFrame"},
    {u"118", u"PageBreak"},
    {u"124", u"Page"},
    {u"119", u"CustomControl"},
    {u"122", u"ToggleButton"},
    {u"123", u"TabCtl"},
};

constexpr Word controlLabels[] = {
    {u"Rectangle", u"四角形"},
    {u"Label", u"ﾗﾍﾞﾙ"},
    {u"Line", u"線"},
    {u"Image", u"ｲﾒｰｼﾞ"},
    {u"CommandButton", u"ｺﾏﾝﾄﾞﾎﾞﾀﾝ"},
    {u"OptionButton", u"ｵﾌﾟｼｮﾝﾎﾞﾀﾝ"},
    {u"CheckBox", u"ﾁｪｯｸﾎﾞｯｸｽ"},
    {u"OptionGroup", u"ｵﾌﾟｼｮﾝｸﾞﾙｰﾌﾟ"},
    {u"BoundObjectFrame", u"連結ｵﾌﾞｼﾞｪｸﾄﾌﾚｰﾑ"},
    {u"TextBox", u"ﾃｷｽﾄﾎﾞｯｸｽ"},
    {u"ListBox", u"ﾘｽﾄﾎﾞｯｸｽ"},
    {u"ComboBox", u"ｺﾝﾎﾞﾎﾞｯｸｽ"},
    {u"Subform", u"ｻﾌﾞﾌｫｰﾑ/ｻﾌﾞﾚﾎﾟｰﾄ"},
    {u"ObjectFrame", u"非連結ｵﾌﾞｼﾞｪｸﾄﾌﾚｰﾑ"},
    {u"PageBreak", u"改ﾍﾟｰｼﾞ"},
    {u"Page", u"ﾍﾟｰｼﾞ"},
    {u"CustomControl", u"ｶｽﾀﾑｺﾝﾄﾛｰﾙ"},
    {u"ToggleButton", u"ﾄｸﾞﾙﾎﾞﾀﾝ"},
    {u"TabCtl", u"ﾀﾌﾞｺﾝﾄﾛｰﾙ"},
};

constexpr Word fieldTypes[] = {
    {u"1", u"Yes/No型"},
    {u"2", u"ﾊﾞｲﾄ型"},
    {u"3", u"整数型"},
    {u"4", u"長整数型"},
    {u"5", u"通貨型"},
    {u"6", u"単精度小数型"},
    {u"7", u"倍精度小数型"},
    {u"8", u"日付型"},
    {u"10", u"ﾃｷｽﾄ型"},
    {u"11", u"OLE型"},
    {u"12", u"ﾒﾓ型"},
    {u"15", u"ﾚﾌﾟﾘｹｰｼｮﾝ型"},
    {u"20", u"十進型"},
};

constexpr Word events[] = {
    {u"OnCurrent", u"ﾚｺｰﾄﾞ移動時"},
    {u"BeforeInsert", u"挿入前処理"},
    {u"AfterInsert", u"挿入後処理"},
    {u"BeforeUpdate", u"更新前処理"},
    {u"AfterUpdate", u"更新後処理"},
    {u"OnChange", u"変更時"},
    {u"OnNotInList", u"ﾘｽﾄ外入力時"},
    {u"OnEnter", u"ﾌｫｰｶｽ取得時"},
    {u"OnExit", u"ﾌｫｰｶｽ喪失時"},
    {u"OnGotFocus", u"ﾌｫｰｶｽ取得後"},
    {u"OnLostFocus", u"ﾌｫｰｶｽ喪失後"},
    {u"OnClick", u"ｸﾘｯｸ時"},
    {u"OnDblClick", u"ﾀﾞﾌﾞﾙｸﾘｯｸ時"},
    {u"OnMouseDown", u"ﾏｳｽｸﾘｯｸ時"},
    {u"OnMouseMove", u"ﾏｳｽ移動時"},
    {u"OnMouseUp", u"ﾏｳｽ解放時"},
    {u"OnKeyDown", u"ｷｰｸﾘｯｸ時"},
    {u"OnKeyUp", u"ｷｰ解放時"},
    {u"OnKeyPress", u"ｷｰ入力時"},
    {u"OnOpen", u"開く時"},
    {u"OnLoad", u"読込時"},
    {u"OnResize", u"ｻｲｽﾞ変更時"},
    {u"OnUnload", u"読込解放時"},
    {u"OnClose", u"閉じる時"},
    {u"OnActivate", u"ｱｸﾃｨﾌﾞ時"},
    {u"OnDeactivate", u"非ｱｸﾃｨﾌﾞ時"},
    {u"OnError", u"ｴﾗｰ時"},
    {u"OnFilter", u"ﾌｨﾙﾀ設定時"},
    {u"OnApplyFilter", u"ﾌｨﾙﾀ実行時"},
    {u"OnTimer", u"ﾀｲﾏ時"},
    {u"OnNoData", u"空ﾃﾞｰﾀ時"},
    {u"OnPage", u"ﾍﾟｰｼﾞﾌｫｰﾏｯﾄ時"},
    {u"OnPrint", u"印刷時"},
    {u"OnFormat", u"ﾌｫｰﾏｯﾄ時"},
    {u"OnRetreat", u"戻り時"},
    {u"OnDirty", u"ﾀﾞｰﾃｨｰ時"},
    {u"OnDelete", u"ﾚｺｰﾄﾞ削除時"},
    {u"BeforeDelConfirm", u"削除前確認"},
    {u"AfterDelConfirm", u"削除後確認"},
};

constexpr Word lineStyles[] = {
    {u"0", u"透明"},
    {u"1", u"実線"},
    {u"2", u"破線１"},
    {u"3", u"破線２"},
    {u"4", u"点線１"},
    {u"5", u"点線２"},
    {u"6", u"一点鎖線"},
    {u"7", u"二点鎖線"},
};

constexpr Word imeModes[] = {
    {u"0", u"ｺﾝﾄﾛｰﾙなし"},
    {u"1", u"オン"},
    {u"2", u"オフ"},
    {u"3", u"使用不可"},
    {u"4", u"ひらがな"},
    {u"5", u"全角ｶﾀｶﾅ"},
    {u"6", u"半角ｶﾀｶﾅ"},
    {u"7", u"全角英数"},
    {u"8", u"半角英数"},
};

constexpr Word rowSourceTypes[] = {
    {u"Table/Query", u"ﾃｰﾌﾞﾙ/ｸｴﾘｰ"},
    {u"Value List", u"値ﾘｽﾄ"},
    {u"Field List", u"ﾌｨｰﾙﾄﾞﾘｽﾄ"},
};

constexpr Word oleTypes[] = {
    {u"0", u"ﾘﾝｸ"},
    {u"1", u"埋め込み"},
    {u"3", u"なし"},
};

constexpr Word sizeModes[] = {
    {u"0", u"ｸﾘｯﾌﾟ"},
    {u"1", u"ｽﾄﾚｯﾁ"},
    {u"3", u"ｽﾞｰﾑ"},
};

constexpr Word yesNo[] = {
    {u"True", u"はい"},
    {u"False", u"いいえ"},
};
// clang-format on

Text look(std::span<const Word> words, TextView key, TextView unknown = unknownWord) {
    for (const Word& entry : words) {
        if (entry.key == key) {
            return Text(entry.word);
        }
    }
    return Text(unknown);
}

} // namespace

Text GetQueryTypeName(TextView type) {
    return look(queryTypes, type, systemQueryWord);
}

Text GetControlTypeName(TextView type) {
    return look(controlTypes, type);
}

Text GetControlTypeLabel(TextView word) {
    return look(controlLabels, word);
}

Text GetFieldTypeName(TextView type) {
    return look(fieldTypes, type);
}

Text GetEventLabel(TextView property) {
    return look(events, property);
}

Text GetLineStyleName(TextView style) {
    return look(lineStyles, style);
}

Text GetImeModeName(TextView mode) {
    return look(imeModes, mode);
}

Text GetRowSourceTypeName(TextView property) {
    return look(rowSourceTypes, property);
}

Text GetOleTypeName(TextView type) {
    return look(oleTypes, type);
}

Text GetSizeModeName(TextView mode) {
    return look(sizeModes, mode);
}

Text GetYesNoName(TextView boolean) {
    return look(yesNo, boolean);
}

} // namespace relvane
