#include "core/vocabulary.h"

#include <gtest/gtest.h>

#include "platform/value.h"

namespace relvane {
namespace {

TEST(Vocabulary, UnknownQueryTypeIsSystem) {
    EXPECT_EQ(GetQueryTypeName(u"4"), u"System");
    EXPECT_EQ(GetQueryTypeName(u"3"), u"System");
    EXPECT_EQ(GetQueryTypeName(u"016"), u"System");
}

TEST(Vocabulary, HiddenQueryTypesAreMarkedUpToEightyEight) {
    EXPECT_EQ(GetQueryTypeName(u"0"), u"選択ｸｴﾘｰ");
    EXPECT_EQ(GetQueryTypeName(u"8"), u"選択ｸｴﾘｰ(隠し)");
    EXPECT_EQ(GetQueryTypeName(u"80"), u"作成ｸｴﾘｰ");
    EXPECT_EQ(GetQueryTypeName(u"88"), u"作成ｸｴﾘｰ(隠し)");
    EXPECT_EQ(GetQueryTypeName(u"96"), u"定義ｸｴﾘｰ");
    EXPECT_EQ(GetQueryTypeName(u"104"), u"System");
    EXPECT_EQ(GetQueryTypeName(u"128"), u"ﾕﾆｵﾝｸｴﾘｰ");
    EXPECT_EQ(GetQueryTypeName(u"144"), u"ﾊﾟｽｽﾙｰ&更新ｸｴﾘｰ");
    EXPECT_EQ(GetQueryTypeName(u"240"), u"ｱｸｼｮﾝｸｴﾘｰ");
}

TEST(Vocabulary, ControlTypesHaveAnEnglishWordAndALabel) {
    EXPECT_EQ(GetControlTypeName(u"100"), u"Label");
    EXPECT_EQ(GetControlTypeName(u"101"), u"Rectangle");
    EXPECT_EQ(GetControlTypeName(u"124"), u"Page");
    EXPECT_EQ(GetControlTypeLabel(u"Page"), u"ﾍﾟｰｼﾞ");
    EXPECT_EQ(GetControlTypeLabel(u"Subform"), u"ｻﾌﾞﾌｫｰﾑ/ｻﾌﾞﾚﾎﾟｰﾄ");
    EXPECT_EQ(GetControlTypeName(u"113"), u"?");
    EXPECT_EQ(GetControlTypeLabel(u"?"), u"?");
    int known = 0;
    for (int type = 0; type < 300; ++type) {
        const Text word = GetControlTypeName(toText(static_cast<long long>(type)));
        known += word != u"?" ? 1 : 0;
        EXPECT_EQ(word == u"?", GetControlTypeLabel(word) == u"?");
    }
    EXPECT_EQ(known, 19);
}

TEST(Vocabulary, FieldTypes) {
    EXPECT_EQ(GetFieldTypeName(u"1"), u"Yes/No型");
    EXPECT_EQ(GetFieldTypeName(u"8"), u"日付型");
    EXPECT_EQ(GetFieldTypeName(u"9"), u"?");
    EXPECT_EQ(GetFieldTypeName(u"15"), u"ﾚﾌﾟﾘｹｰｼｮﾝ型");
    EXPECT_EQ(GetFieldTypeName(u"20"), u"十進型");
}

TEST(Vocabulary, KeysAbsentFromTheTablesAreUnknown) {
    EXPECT_EQ(GetOleTypeName(u"1"), u"埋め込み");
    EXPECT_EQ(GetOleTypeName(u"2"), u"?");
    EXPECT_EQ(GetOleTypeName(u"3"), u"なし");
    EXPECT_EQ(GetSizeModeName(u"0"), u"ｸﾘｯﾌﾟ");
    EXPECT_EQ(GetSizeModeName(u"2"), u"?");
    EXPECT_EQ(GetSizeModeName(u"3"), u"ｽﾞｰﾑ");
}

TEST(Vocabulary, EmptyTextGivesTheDefaultEverywhere) {
    EXPECT_EQ(GetQueryTypeName(u""), u"System");
    for (const auto function :
         {GetControlTypeName, GetControlTypeLabel, GetFieldTypeName, GetEventLabel, GetLineStyleName,
          GetImeModeName, GetRowSourceTypeName, GetOleTypeName, GetSizeModeName, GetYesNoName}) {
        EXPECT_EQ(function(u""), u"?");
    }
}

TEST(Vocabulary, EventLabelsAreCaseSensitive) {
    EXPECT_EQ(GetEventLabel(u"OnClick"), u"ｸﾘｯｸ時");
    EXPECT_EQ(GetEventLabel(u"onclick"), u"?");
    EXPECT_EQ(GetEventLabel(u"AfterDelConfirm"), u"削除後確認");
    EXPECT_EQ(GetEventLabel(u"OnDirty"), u"ﾀﾞｰﾃｨｰ時");
}

TEST(Vocabulary, StylesAndModes) {
    EXPECT_EQ(GetLineStyleName(u"0"), u"透明");
    EXPECT_EQ(GetLineStyleName(u"2"), u"破線１");
    EXPECT_EQ(GetLineStyleName(u"8"), u"?");
    EXPECT_EQ(GetImeModeName(u"4"), u"ひらがな");
    EXPECT_EQ(GetImeModeName(u"9"), u"?");
    EXPECT_EQ(GetRowSourceTypeName(u"Table/Query"), u"ﾃｰﾌﾞﾙ/ｸｴﾘｰ");
    EXPECT_EQ(GetRowSourceTypeName(u"value list"), u"?");
}

TEST(Vocabulary, YesAndNoAreTheTextsOfBooleans) {
    EXPECT_EQ(GetYesNoName(toText(Value(true))), u"はい");
    EXPECT_EQ(GetYesNoName(toText(Value(false))), u"いいえ");
    EXPECT_EQ(GetYesNoName(u"-1"), u"?");
    EXPECT_EQ(GetYesNoName(u"0"), u"?");
}

} // namespace
} // namespace relvane
