// Every row that the four lists have for every type of control, held against tables of its own.
#include "objects/control_properties.h"

#include <optional>

#include "design_program.h"

namespace relvane {
namespace {

using namespace test;

// "group|label|text"
using Rows = std::vector<std::string>;

enum List { fullForm, shortForm, fullReport, shortReport };
constexpr List lists[] = {fullForm, shortForm, fullReport, shortReport};
const char* const listNames[] = {"full form list", "short form list", "full report list",
                                 "short report list"};

// The value that lets every row appear.
const std::map<std::string, Value> richValues = {
    {"Caption", text(u"標題です")},
    {"ControlSource", text(u"商品名")},
    {"Format", text(u"0.0")},
    {"InputMask", text(u"00")},
    {"IMEMode", number(4)},
    {"IMEHold", true},
    {"RowSource", text(u"SELECT 1;")},
    {"RowSourceType", text(u"Table/Query")},
    {"ColumnCount", number(2)},
    {"BoundColumn", number(1)},
    {"Locked", false},
    {"DefaultValue", text(u"10")},
    {"ValidationRule", text(u">0")},
    {"ValidationText", text(u"msg")},
    {"LimitToList", true},
    {"StatusBarText", text(u"案内")},
    {"TabStop", true},
    {"TabIndex", number(3)},
    {"ControlTipText", text(u"助言")},
    {"Picture", text(u"a.bmp")},
    {"PictureType", number(1)},
    {"SizeMode", number(3)},
    {"PictureAlignment", number(2)},
    {"SourceObject", text(u"明細")},
    {"LinkChildFields", text(u"子")},
    {"LinkMasterFields", text(u"親")},
    {"BorderStyle", number(2)},
    {"BorderWidth", number(1)},
    {"OLEClass", text(u"文書")},
    {"OptionValue", number(5)},
};

// A type of control with the properties that it has, and its rows when all of them have their rich value. One without
// properties of its own, or with others, fails with error 438 when a list asks for what it does not have.
struct TypeCase {
    int type;
    bool isMember; // of an option group
    const char* word;
    std::vector<std::string> has;
    Rows rows[4]; // by List
};

const char* const sourceRow = "ﾃﾞｰﾀ|ｺﾝﾄﾛｰﾙｿｰｽ|商品名";
const char* const formatRow = "書式|書式・定型入力|0.0・00";
const char* const imeRow = "その他|IMEﾓｰﾄﾞ・保持|ひらがな・はい";
const char* const sourceTypeRow = "ﾃﾞｰﾀ|値集合ﾀｲﾌﾟ|ﾃｰﾌﾞﾙ/ｸｴﾘｰ";
const char* const rowSourceRow = "ﾃﾞｰﾀ|値集合ｿｰｽ|SELECT 1;";
const char* const columnRow = "ﾃﾞｰﾀ|列数・連結列|2・1";
const char* const defaultRow = "ﾃﾞｰﾀ|規定値・編集ﾛｯｸ|10・いいえ";
const char* const ruleRow = "ﾃﾞｰﾀ|入力規則(ﾒｯｾｰｼﾞ)|>0(msg)";
const char* const checkRow = "ﾃﾞｰﾀ|入力ﾁｪｯｸ(ﾒｯｾｰｼﾞ)|はい(msg)";
const char* const statusRow = "ﾃﾞｰﾀ|ｽﾃｰﾀｽﾊﾞｰ|案内";
const char* const tabRow = "その他|ﾀﾌﾞｽﾄｯﾌﾟ・移動順|はい・3";
const char* const tipRow = "その他|ﾋﾝﾄﾃｷｽﾄ|助言";
const char* const captionRow = "書式|標題|標題です";
const char* const pictureRow = "書式|ﾋﾟｸﾁｬ・ﾀｲﾌﾟ|a.bmp・埋め込み";
const char* const lineRow = "書式|線種・線幅|破線１・1";
const char* const oleRow = "書式|OLEｻｲｽﾞ・OLEｸﾗｽ|ｽﾞｰﾑ・文書";
const char* const subRow = "ﾃﾞｰﾀ|ｿｰｽｵﾌﾞｼﾞｪｸﾄ|明細";
const char* const childRow = "ﾃﾞｰﾀ|ﾘﾝｸ子ﾌｨｰﾙﾄﾞ|子";
const char* const masterRow = "ﾃﾞｰﾀ|ﾘﾝｸ親ﾌｨｰﾙﾄﾞ|親";
const char* const lockRow = "ﾃﾞｰﾀ|編集ﾛｯｸ|いいえ";
const char* const sizeRow = "書式|OLEｻｲｽﾞ・配置|ｽﾞｰﾑ・2";
const char* const optionLockRow = "ﾃﾞｰﾀ|ｵﾌﾟｼｮﾝ値・編集ﾛｯｸ|5・いいえ";
const char* const optionRow = "ﾃﾞｰﾀ|ｵﾌﾟｼｮﾝ値|5";
const char* const emptyRow = "||";

const Rows onlySource = {sourceRow}, onlyCaption = {captionRow}, onlyEmpty = {emptyRow};

// clang-format off
const std::vector<TypeCase> types = {
    {100, false, "ﾗﾍﾞﾙ", {"Caption"}, {onlyCaption, onlyCaption, onlyCaption, onlyCaption}},
    {124, false, "ﾍﾟｰｼﾞ", {"Caption"}, {onlyCaption, onlyCaption, onlyCaption, onlyCaption}},
    {111, false, "ｺﾝﾎﾞﾎﾞｯｸｽ",
     {"ControlSource", "Format", "InputMask", "IMEMode", "IMEHold", "RowSource", "RowSourceType", "ColumnCount",
      "BoundColumn", "Locked", "DefaultValue", "ValidationRule", "ValidationText", "LimitToList", "StatusBarText",
      "TabStop", "TabIndex", "ControlTipText"},
     {{sourceRow, formatRow, imeRow, sourceTypeRow, rowSourceRow, columnRow, defaultRow, ruleRow, statusRow, tabRow,
       tipRow},
      onlySource,
      {sourceRow, formatRow, sourceTypeRow, rowSourceRow, columnRow},
      onlySource}},
    {110, false, "ﾘｽﾄﾎﾞｯｸｽ",
     {"ControlSource", "RowSource", "RowSourceType", "ColumnCount", "BoundColumn", "Locked", "DefaultValue",
      "ValidationRule", "ValidationText", "StatusBarText", "TabStop", "TabIndex", "ControlTipText"},
     {{sourceRow, sourceTypeRow, rowSourceRow, columnRow, defaultRow, ruleRow, statusRow, tabRow, tipRow},
      onlySource,
      {sourceRow, sourceTypeRow, rowSourceRow, columnRow},
      onlySource}},
    {109, false, "ﾃｷｽﾄﾎﾞｯｸｽ",
     {"ControlSource", "Format", "InputMask", "IMEMode", "IMEHold", "Locked", "DefaultValue", "ValidationRule",
      "ValidationText", "StatusBarText", "TabStop", "TabIndex", "ControlTipText"},
     {{sourceRow, formatRow, imeRow, defaultRow, ruleRow, statusRow, tabRow, tipRow},
      onlySource,
      {sourceRow, formatRow},
      onlySource}},
    {107, false, "ｵﾌﾟｼｮﾝｸﾞﾙｰﾌﾟ",
     {"ControlSource", "Locked", "DefaultValue", "ValidationRule", "ValidationText", "TabStop", "TabIndex",
      "ControlTipText"},
     {{sourceRow, defaultRow, ruleRow, tabRow, tipRow}, onlySource, onlySource, onlySource}},
    {108, false, "連結ｵﾌﾞｼﾞｪｸﾄﾌﾚｰﾑ", {"ControlSource", "TabStop", "TabIndex", "ControlTipText"},
     {{sourceRow, tabRow, tipRow}, onlySource, onlySource, onlySource}},
    {106, false, "ﾁｪｯｸﾎﾞｯｸｽ",
     {"ControlSource", "Locked", "DefaultValue", "ValidationRule", "ValidationText", "TabStop", "TabIndex",
      "ControlTipText"},
     {{sourceRow, defaultRow, ruleRow, tabRow, tipRow}, onlySource, onlySource, onlySource}},
    {105, false, "ｵﾌﾟｼｮﾝﾎﾞﾀﾝ",
     {"ControlSource", "Locked", "DefaultValue", "ValidationRule", "ValidationText", "TabStop", "TabIndex",
      "ControlTipText"},
     {{sourceRow, defaultRow, ruleRow, tabRow, tipRow}, onlySource, onlySource, onlySource}},
    {122, false, "ﾄｸﾞﾙﾎﾞﾀﾝ",
     {"ControlSource", "Locked", "DefaultValue", "ValidationRule", "ValidationText", "Caption", "Picture",
      "PictureType", "TabStop", "TabIndex", "ControlTipText"},
     {{sourceRow, defaultRow, ruleRow, captionRow, pictureRow, tabRow, tipRow},
      onlySource,
      {sourceRow, captionRow, pictureRow},
      onlySource}},
    {104, false, "ｺﾏﾝﾄﾞﾎﾞﾀﾝ", {"Caption", "Picture", "PictureType", "TabStop", "TabIndex", "ControlTipText"},
     {{captionRow, pictureRow, tabRow, tipRow}, onlyCaption, {captionRow, pictureRow}, onlyCaption}},
    {106, true, "ﾁｪｯｸﾎﾞｯｸｽ", {"Locked", "OptionValue", "ControlTipText"},
     {{optionLockRow, tipRow}, {optionLockRow}, {optionRow}, {optionRow}}},
    {105, true, "ｵﾌﾟｼｮﾝﾎﾞﾀﾝ", {"Locked", "OptionValue", "ControlTipText"},
     {{optionLockRow, tipRow}, {optionLockRow}, {optionRow}, {optionRow}}},
    {122, true, "ﾄｸﾞﾙﾎﾞﾀﾝ", {"Locked", "OptionValue", "ControlTipText"},
     {{optionLockRow, tipRow}, {optionLockRow}, {optionRow}, {optionRow}}},
    {112, false, "ｻﾌﾞﾌｫｰﾑ/ｻﾌﾞﾚﾎﾟｰﾄ",
     {"SourceObject", "LinkChildFields", "LinkMasterFields", "Locked", "TabStop", "TabIndex"},
     {{subRow, childRow, masterRow, lockRow, tabRow}, {subRow}, {subRow, childRow, masterRow}, {subRow}}},
    {103, false, "ｲﾒｰｼﾞ", {"Picture", "PictureType", "SizeMode", "PictureAlignment"},
     {{pictureRow, sizeRow}, {pictureRow}, {pictureRow, sizeRow}, {pictureRow}}},
    {101, false, "四角形", {"BorderStyle", "BorderWidth"}, {{lineRow}, {lineRow}, {lineRow}, {lineRow}}},
    {102, false, "線", {"BorderStyle", "BorderWidth"}, {{lineRow}, {lineRow}, {lineRow}, {lineRow}}},
    {114, false, "非連結ｵﾌﾞｼﾞｪｸﾄﾌﾚｰﾑ", {"SizeMode", "OLEClass"}, {{oleRow}, {oleRow}, {oleRow}, {oleRow}}},
    {123, false, "ﾀﾌﾞｺﾝﾄﾛｰﾙ", {"TabStop", "TabIndex"}, {{tabRow}, {tabRow}, onlyEmpty, onlyEmpty}},
    {118, false, "改ﾍﾟｰｼﾞ", {}, {onlyEmpty, onlyEmpty, onlyEmpty, onlyEmpty}},
    {119, false, "ｶｽﾀﾑｺﾝﾄﾛｰﾙ", {}, {onlyEmpty, onlyEmpty, onlyEmpty, onlyEmpty}},
    {113, false, "?", {}, {{}, {}, {}, {}}},
};
// clang-format on

// A program whose target has one form or one report, the one that the list is about.
class ListProgram : public DesignProgram {
public:
    explicit ListProgram(List list) : list_(list), ofForms_(list == fullForm || list == shortForm) {
        ofForms_ ? void(form_ = &addForm(u"F")) : void(report_ = &addReport(u"R"));
    }

    FakeControl& add(const Text& name, int type) {
        return ofForms_ ? form_->add(name, type) : report_->add(name, type);
    }
    FakeControl& add(const TypeCase& type, const Text& name = u"c") {
        FakeControl& control = add(name, type.type);
        for (const std::string& property : type.has) {
            control.set(fromUtf8(property), richValues.at(property));
        }
        if (type.isMember) {
            markMember(control);
        }
        return control;
    }
    // Puts the mark where the list looks for it.
    void markMember(FakeControl& control) {
        const int position = control.ControlType() == toggleButtonType ? 7 : list_ == fullForm ? 1 : 3;
        control.put(position, u"OptionValue", number(5));
    }

    const std::vector<FakeRow>& items() {
        const int option = list_ == fullForm || list_ == fullReport ? 2 : 1;
        ofForms_ ? runForms(option) : runReports(option);
        EXPECT_TRUE(dialogs.boxes.empty()) << toUtf8(dialogs.lastText());
        return store.rows(ofForms_ ? u"T_RvFrmItem" : u"T_RvRepItem");
    }
    Rows rows() {
        Rows rows;
        for (const FakeRow& row : items()) {
            rows.push_back(toUtf8(toText(valueOf(row, u"Bunrui")) + u"|" +
                                  toText(valueOf(row, u"PropertyName")) + u"|" +
                                  toText(valueOf(row, u"PropertyValue"))));
        }
        return rows;
    }

private:
    List list_;
    bool ofForms_;
    FakeForm* form_ = nullptr;
    FakeReport* report_ = nullptr;
};

TEST(ControlRows, EachTypeHasItsRowsInEachList) {
    for (const TypeCase& type : types) {
        for (const List list : lists) {
            ListProgram program(list);
            program.add(type);
            EXPECT_EQ(program.rows(), type.rows[list])
                << type.word << (type.isMember ? " in a group, " : ", ") << listNames[list];
        }
    }
}

TEST(ControlRows, RowsOfAControlAreNumberedFromOneAndRepeatItsHead) {
    for (const TypeCase& type : types) {
        for (const List list : lists) {
            ListProgram program(list);
            program.add(type);
            std::int64_t propertyNo = 0;
            for (const FakeRow& row : program.items()) {
                EXPECT_EQ(valueOf(row, u"PropertyNo"), number(++propertyNo)) << type.word;
                EXPECT_EQ(valueOf(row, u"objectNo"), number(1));
                EXPECT_EQ(valueOf(row, u"ControlNo"), number(1));
                EXPECT_EQ(valueOf(row, u"Name"), text(u"c"));
                EXPECT_EQ(valueOf(row, u"ControlType"), text(fromUtf8(type.word)));
                EXPECT_EQ(valueOf(row, u"cntlVisible"), text(u"True"));
            }
        }
    }
}

// What another value of one property changes in the rows of a type.
struct Change {
    int type;
    bool isMember;
    const char* property;
    Value value;
    List list;
    Rows gone, come;
};

const Value null = Null{};
const Value empty = Text();

const TypeCase& caseOf(int type, bool isMember) {
    return *std::ranges::find_if(
        types, [&](const TypeCase& each) { return each.type == type && each.isMember == isMember; });
}

bool contains(const Rows& rows, const std::string& row) {
    return std::ranges::find(rows, row) != rows.end();
}

void expectChange(const Change& change) {
    const TypeCase& type = caseOf(change.type, change.isMember);
    ListProgram program(change.list);
    program.add(type).set(fromUtf8(change.property), change.value);
    const Rows rows = program.rows();
    const std::string what = std::string(type.word) + ", " + change.property + " = " +
                             (change.value == null ? "Null" : toUtf8(toText(change.value))) + ", " +
                             listNames[change.list];
    EXPECT_EQ(rows.size(), type.rows[change.list].size() - change.gone.size() + change.come.size()) << what;
    for (const std::string& row : type.rows[change.list]) {
        EXPECT_EQ(contains(rows, row), !contains(change.gone, row)) << what << ": " << row;
    }
    for (const std::string& row : change.come) {
        EXPECT_TRUE(contains(rows, row)) << what << ": " << row;
    }
}

// A row that asks for a text that is not empty: gone when the text is empty, and when it is Null.
struct TextCondition {
    std::vector<int> types;
    bool isMember;
    const char* property;
    std::vector<List> inLists;
    Rows gone;
};

// clang-format off
const std::vector<TextCondition> textConditions = {
    {{111, 109}, false, "Format", {fullForm, fullReport}, {formatRow}},
    {{111, 110}, false, "RowSource", {fullForm, fullReport}, {sourceTypeRow, rowSourceRow, columnRow}},
    {{110, 109, 107, 106, 105, 122}, false, "ValidationRule", {fullForm}, {ruleRow}},
    {{111, 110, 109}, false, "StatusBarText", {fullForm}, {statusRow}},
    {{111, 110, 109, 107, 108, 106, 105, 122, 104}, false, "ControlTipText", {fullForm}, {tipRow}},
    {{106, 105, 122}, true, "ControlTipText", {fullForm}, {tipRow}},
    {{106, 105, 122}, false, "ControlSource", {fullForm, shortForm, fullReport, shortReport}, {sourceRow}},
    {{111, 110, 109, 107, 108}, false, "ControlSource", {fullReport, shortReport}, {sourceRow}},
    {{122, 104}, false, "Caption", {fullForm, fullReport}, {captionRow}},
    {{104}, false, "Caption", {shortForm, shortReport}, {captionRow}},
    {{122, 104}, false, "Picture", {fullForm, fullReport}, {pictureRow}},
    {{112}, false, "SourceObject", {fullForm, shortForm, fullReport, shortReport}, {subRow}},
    {{112}, false, "LinkChildFields", {fullForm, fullReport}, {childRow}},
    {{112}, false, "LinkMasterFields", {fullForm, fullReport}, {masterRow}},
    {{103}, false, "Picture", {fullForm, fullReport}, {pictureRow, sizeRow}},
    {{103}, false, "Picture", {shortForm, shortReport}, {pictureRow}},
};
// clang-format on

TEST(ControlRows, RowsThatAskForATextAreLeftOutWhenItIsEmptyOrNull) {
    for (const TextCondition& condition : textConditions) {
        for (const int type : condition.types) {
            for (const List list : condition.inLists) {
                for (const Value& value : {empty, null}) {
                    expectChange(
                        {type, condition.isMember, condition.property, value, list, condition.gone, {}});
                }
            }
        }
    }
}

TEST(ControlRows, LockedControlHasNoRowThatEndsInItsLock) {
    for (const Value& locked : {Value(true), null}) {
        for (const int type : {111, 110, 109, 107, 106, 105, 122}) {
            expectChange({type, false, "Locked", locked, fullForm, {defaultRow}, {}});
        }
        expectChange({112, false, "Locked", locked, fullForm, {lockRow}, {}});
        for (const int type : {106, 105, 122}) {
            expectChange({type, true, "Locked", locked, fullForm, {optionLockRow}, {}});
            expectChange({type, true, "Locked", locked, shortForm, {optionLockRow}, {}});
            expectChange({type, true, "Locked", locked, fullReport, {optionRow}, {}});
            expectChange({type, true, "Locked", locked, shortReport, {optionRow}, {}});
        }
    }
}

TEST(ControlRows, ControlThatIsNoTabStopHasNoTabRow) {
    for (const Value& stop : {Value(false), null}) {
        for (const int type : {111, 110, 109, 107, 108, 106, 105, 122, 104, 112}) {
            expectChange({type, false, "TabStop", stop, fullForm, {tabRow}, {}});
        }
    }
}

TEST(ControlRows, TabControlTellsItsTabOrderWhetherItIsAStopOrNot) {
    const char* const noStop = "その他|ﾀﾌﾞｽﾄｯﾌﾟ・移動順|いいえ・3";
    expectChange({123, false, "TabStop", false, fullForm, {tabRow}, {noStop}});
    expectChange({123, false, "TabStop", false, shortForm, {tabRow}, {noStop}});
}

TEST(ControlRows, FormSaysWhenAControlHasNoSourceAndAReportKeepsSilent) {
    const char* const noSource = "ﾃﾞｰﾀ|ｺﾝﾄﾛｰﾙｿｰｽ|なし";
    const char* const nullSource = "ﾃﾞｰﾀ|ｺﾝﾄﾛｰﾙｿｰｽ|";
    for (const int type : {111, 110, 109, 107, 108}) {
        for (const List list : {fullForm, shortForm}) {
            expectChange({type, false, "ControlSource", empty, list, {sourceRow}, {noSource}});
            expectChange({type, false, "ControlSource", null, list, {sourceRow}, {nullSource}});
        }
    }
}

TEST(ControlRows, ComboBoxWithoutARuleTellsThatItIsLimitedToItsList) {
    expectChange({111, false, "ValidationRule", empty, fullForm, {ruleRow}, {checkRow}});
    expectChange({111, false, "ValidationRule", null, fullForm, {ruleRow}, {}});
    for (const Value& limited : {Value(false), null}) {
        ListProgram program(fullForm);
        program.add(caseOf(111, false)).set(u"ValidationRule", empty).set(u"LimitToList", limited);
        const Rows rows = program.rows();
        EXPECT_FALSE(contains(rows, checkRow));
        EXPECT_FALSE(contains(rows, ruleRow));
    }
}

TEST(ControlRows, PropertiesWithoutAWordAreToldAsUnknown) {
    expectChange(
        {103, false, "PictureType", number(2), shortForm, {pictureRow}, {"書式|ﾋﾟｸﾁｬ・ﾀｲﾌﾟ|a.bmp・?"}});
    expectChange({103, false, "SizeMode", number(2), fullReport, {sizeRow}, {"書式|OLEｻｲｽﾞ・配置|?・2"}});
    expectChange({101, false, "BorderStyle", number(9), fullForm, {lineRow}, {"書式|線種・線幅|?・1"}});
    expectChange(
        {110, false, "RowSourceType", text(u"MyFunction"), fullForm, {sourceTypeRow}, {"ﾃﾞｰﾀ|値集合ﾀｲﾌﾟ|?"}});
    expectChange(
        {109, false, "IMEHold", number(0), fullForm, {imeRow}, {"その他|IMEﾓｰﾄﾞ・保持|ひらがな・?"}});
}

TEST(ControlRows, EmptySecondHalvesLeaveTheirMarksStanding) {
    expectChange({109, false, "InputMask", empty, fullForm, {formatRow}, {"書式|書式・定型入力|0.0・"}});
    expectChange(
        {109, false, "DefaultValue", empty, fullForm, {defaultRow}, {"ﾃﾞｰﾀ|規定値・編集ﾛｯｸ|・いいえ"}});
    expectChange({109, false, "ValidationText", empty, fullForm, {ruleRow}, {"ﾃﾞｰﾀ|入力規則(ﾒｯｾｰｼﾞ)|>0()"}});
    expectChange({114, false, "OLEClass", empty, fullForm, {oleRow}, {"書式|OLEｻｲｽﾞ・OLEｸﾗｽ|ｽﾞｰﾑ・"}});
    expectChange({109, false, "InputMask", null, fullForm, {formatRow}, {"書式|書式・定型入力|0.0・"}});
}

TEST(ControlRows, NumbersAndBooleansAreNotEmpty) {
    expectChange({109, false, "Format", number(0), fullForm, {formatRow}, {"書式|書式・定型入力|0・00"}});
    expectChange({110, false, "StatusBarText", false, fullForm, {statusRow}, {"ﾃﾞｰﾀ|ｽﾃｰﾀｽﾊﾞｰ|False"}});
}

TEST(ControlRows, LabelWithoutACaptionHasItsRowAllTheSame) {
    for (const int type : {100, 124}) {
        for (const List list : lists) {
            expectChange({type, false, "Caption", empty, list, {captionRow}, {"書式|標題|"}});
        }
    }
}

// ---- Members of option groups

TEST(ControlRows, FullFormListLooksForMembersAtOneAndTheOthersAtThree) {
    for (const int type : {106, 105}) {
        for (const List list : lists) {
            for (const int position : {1, 3}) {
                ListProgram program(list);
                FakeControl& control = program.add(caseOf(type, false));
                control.set(u"OptionValue", number(5)).put(position, u"OptionValue", number(5));
                const bool isMember = position == (list == fullForm ? 1 : 3);
                EXPECT_EQ(contains(program.rows(), sourceRow), !isMember) << listNames[list] << position;
            }
        }
    }
}

TEST(ControlRows, ToggleButtonIsAMemberByItsSeventhPositionInEveryList) {
    for (const List list : lists) {
        for (const int position : {1, 3, 7}) {
            ListProgram program(list);
            FakeControl& control = program.add(caseOf(122, false));
            control.set(u"OptionValue", number(5)).put(position, u"OptionValue", number(5));
            EXPECT_EQ(contains(program.rows(), sourceRow), position != 7) << listNames[list] << position;
        }
    }
}

TEST(ControlRows, CommandButtonIsAskedAtThePositionOfTheControlBefore) {
    struct Case {
        std::vector<int> before; // types
        int position;            // where the command button is asked
    };
    // A control that is never asked leaves the position as it is; without any it is the first.
    for (const auto& [before, position] : {Case{{}, 0}, Case{{100}, 0}, Case{{106}, 3}, Case{{122}, 7},
                                           Case{{122, 106, 100}, 3}, Case{{106, 122, 104}, 7}}) {
        for (int mark = 0; mark <= 8; ++mark) {
            ListProgram program(shortForm);
            for (const int type : before) {
                program.add(caseOf(type, false), u"before");
            }
            program.add(caseOf(104, false)).set(u"Locked", true).put(mark, u"OptionValue", number(1));
            const auto& items = program.items();
            const bool isMember = std::ranges::none_of(
                items, [](const FakeRow& row) { return valueOf(row, u"Name") == text(u"c"); });
            EXPECT_EQ(isMember, mark == position) << "mark at " << mark << " behind " << before.size();
        }
    }
}

TEST(ControlRows, EachAnalysisAsksItsFirstCommandButtonAtTheFirstPosition) {
    ListProgram program(shortForm);
    program.add(caseOf(122, false), u"toggle");
    FakeForm& second = program.addForm(u"G");
    second.add(u"button", commandButtonType).set(u"Caption", text(u"押す")).put(7, u"OptionValue", number(1));
    EXPECT_TRUE(contains(program.rows(), "書式|標題|押す"));
}

TEST(ControlRows, MemberOfAGroupIsToldByTheExactName) {
    ListProgram program(fullForm);
    program.add(caseOf(106, false)).put(1, u"optionvalue", number(1));
    EXPECT_TRUE(contains(program.rows(), sourceRow));
}

TEST(ControlRows, CheckBoxInAnOptionGroupHasNoEventsAndNoSource) {
    ListProgram program(fullForm);
    FakeControl& control = program.add(caseOf(106, true));
    control.set(u"ControlSource", text(u"項目"));
    for (int position = 20; position < 60; ++position) {
        control.put(position, u"OnClick", text(u"マクロ"));
    }
    EXPECT_EQ(program.rows(), (Rows{optionLockRow, tipRow}));
}

// ---- Events

struct EventCase {
    int type;
    int count; // of the control's properties
    int first, last;
};

// Both sides of every limit.
// clang-format off
const EventCase eventCases[] = {
    {104, 0, 38, 49}, {104, 50, 38, 49}, {104, 90, 38, 49},
    {122, 55, 41, 54}, {122, 53, 41, 54}, {122, 52, 38, 51}, {122, 42, 38, 51}, {122, 41, 32, 39}, {122, 40, 32, 39},
    {106, 48, 34, 47}, {106, 46, 34, 47}, {106, 45, 31, 44}, {106, 34, 31, 44}, {106, 33, 25, 32}, {106, 0, 25, 32},
    {105, 48, 34, 47}, {105, 46, 34, 47}, {105, 45, 31, 44}, {105, 34, 31, 44}, {105, 33, 25, 32}, {105, 0, 25, 32},
    {111, 82, 66, 81}, {111, 80, 66, 81}, {111, 79, 63, 78}, {111, 0, 63, 78},
    {110, 67, 53, 66}, {110, 65, 53, 66}, {110, 64, 50, 63}, {110, 0, 50, 63},
    {109, 78, 63, 77}, {109, 76, 63, 77}, {109, 75, 60, 74}, {109, 0, 60, 74},
    {107, 44, 35, 43}, {107, 42, 35, 43}, {107, 41, 32, 40}, {107, 0, 32, 40},
    {108, 61, 46, 60}, {108, 59, 46, 60}, {108, 58, 43, 57}, {108, 0, 43, 57},
    {112, 0, 28, 29}, {112, 99, 28, 29},
    {103, 0, 29, 33}, {103, 99, 29, 33},
    {100, 50, 0, -1}, {101, 50, 0, -1}, {102, 50, 0, -1}, {114, 50, 0, -1}, {118, 50, 0, -1}, {119, 50, 0, -1},
    {123, 50, 0, -1}, {124, 50, 0, -1}, {113, 50, 0, -1},
};
// clang-format on

FakeControl& addWithEvents(ListProgram& program, const EventCase& events) {
    FakeControl& control = program.add(caseOf(events.type, false));
    for (int position = 8; position < 110; ++position) {
        control.put(position, u"OnClick", toText(static_cast<long long>(position)));
    }
    control.properties.setCount(events.count);
    return control;
}

TEST(ControlRows, FullFormListHasTheEventsOfTheRangeForTheNumberOfProperties) {
    for (const EventCase& events : eventCases) {
        ListProgram program(fullForm);
        addWithEvents(program, events);
        Rows expected = caseOf(events.type, false).rows[fullForm];
        for (int position = events.first; position <= events.last; ++position) {
            expected.push_back("ｲﾍﾞﾝﾄ|ｸﾘｯｸ時|" + std::to_string(position));
        }
        EXPECT_EQ(program.rows(), expected)
            << "type " << events.type << ", " << events.count << " properties";
    }
}

TEST(ControlRows, OtherListsHaveNoEvents) {
    for (const EventCase& events : eventCases) {
        for (const List list : {shortForm, fullReport, shortReport}) {
            ListProgram program(list);
            addWithEvents(program, events);
            EXPECT_EQ(program.rows(), caseOf(events.type, false).rows[list]) << events.type;
        }
    }
}

TEST(ControlRows, EventRowsAreThoseWithAValueAndNumberOn) {
    ListProgram program(fullForm);
    FakeControl& control = program.add(caseOf(104, false));
    control.put(38, u"OnEnter", empty)
        .put(39, u"OnExit", null)
        .put(40, u"OnGotFocus", text(u"=Focus()"))
        .put(41, u"OnUpdated", text(u"[Event Procedure]"))
        .put(42, u"KeyPreview", false);
    const auto& items = program.items();
    ASSERT_EQ(items.size(), 7u);
    const std::pair<Text, Text> expected[] = {
        {u"ﾌｫｰｶｽ取得後", u"=Focus()"}, {u"?", u"[Event Procedure]"}, {u"?", u"False"}};
    for (std::size_t i = 0; i < std::size(expected); ++i) {
        EXPECT_EQ(valueOf(items[4 + i], u"PropertyNo"), number(static_cast<int>(5 + i)));
        EXPECT_EQ(valueOf(items[4 + i], u"Bunrui"), text(u"ｲﾍﾞﾝﾄ"));
        EXPECT_EQ(valueOf(items[4 + i], u"PropertyName"), text(expected[i].first));
        EXPECT_EQ(valueOf(items[4 + i], u"PropertyValue"), text(expected[i].second));
    }
}

// ---- The head of a control

TEST(ControlRows, RowHasItsFieldsInOrder) {
    ListProgram program(shortForm);
    program.add(u"ラベル 1  ", labelType)
        .set(u"Caption", text(u"見出し"))
        .set(u"Visible", false)
        .set(u"Top", number(1000))
        .set(u"Left", number(567))
        .set(u"Width", number(0))
        .set(u"Height", number(284));
    const FakeRow expected = {{u"objectNo", number(1)},
                              {u"ControlNo", number(1)},
                              {u"PropertyNo", number(1)},
                              {u"Name", text(u"ラベル 1")},
                              {u"ControlType", text(u"ﾗﾍﾞﾙ")},
                              {u"cntlVisible", text(u"False")},
                              {u"TLWH", text(u"1.764cm・1cm・0cm・0.501cm")},
                              {u"Bunrui", text(u"書式")},
                              {u"PropertyName", text(u"標題")},
                              {u"PropertyValue", text(u"見出し")}};
    EXPECT_EQ(program.items().at(0), expected);
}

TEST(ControlRows, NamesAreCutAt150CharactersAndThenTrimmed) {
    ListProgram program(shortForm);
    program.add(Text(149, u'あ') + u"  x", customControlType);
    EXPECT_EQ(valueOf(program.items().at(0), u"Name"), text(Text(149, u'あ')));
}

TEST(ControlRows, PageBreakHasTwoMeasuresAndARectangleFour) {
    for (const List list : lists) {
        ListProgram program(list);
        FakeControl& pageBreak = program.add(caseOf(118, false));
        pageBreak.set(u"Top", number(1000)).set(u"Left", number(57));
        pageBreak.fail(u"Width", 438).fail(u"Height", 438);
        program.add(caseOf(101, false)).set(u"Top", number(1000));
        EXPECT_EQ(valueOf(program.items().at(0), u"TLWH"), text(u"1.764cm・0.101cm"));
        EXPECT_EQ(valueOf(program.items().at(1), u"TLWH"), text(u"1.764cm・0cm・0cm・0cm"));
    }
}

TEST(ControlRows, CustomControlHasOneRowThatIsEmpty) {
    for (const List list : lists) {
        ListProgram program(list);
        program.add(caseOf(119, false));
        const auto& items = program.items();
        ASSERT_EQ(items.size(), 1u);
        for (const TextView field : {u"Bunrui", u"PropertyName", u"PropertyValue"}) {
            EXPECT_EQ(valueOf(items[0], field), text(u"")) << "empty, and not Null";
        }
    }
}

TEST(ControlRows, ControlWithoutRowsIsCountedOnAndTheWalkGoesOn) {
    ListProgram program(shortForm);
    program.add(u"unknown", 113);
    program.add(u"locked", toggleButtonType).set(u"ControlSource", empty).set(u"Locked", true);
    program.add(u"last", customControlType);
    const auto& items = program.items();
    ASSERT_EQ(items.size(), 1u);
    EXPECT_EQ(valueOf(items[0], u"ControlNo"), number(3));
}

TEST(ControlRows, RowsAfterARowWithoutTextsStandEmpty) {
    ListProgram program(shortForm);
    program.add(caseOf(100, false));
    program.add(caseOf(119, false));
    program.items();
    EXPECT_TRUE(program.context().CurControl.PropertyGroup.empty());
    EXPECT_EQ(program.rows(), (Rows{captionRow, emptyRow}));
}

TEST(ControlRows, AddControlPropertyWritesTheCurrentControlAndEmptiesTheTexts) {
    ListProgram program(shortForm);
    program.items();
    AnalysisContext& context = program.context();
    context.WorkRs2 = std::make_unique<FakeRecordset>(program.store, u"T");
    context.ObjectNo = 7;
    context.CurControl = {12, 3, u"名前", u"Subform", u"True", u"1cm・2cm", u"ﾃﾞｰﾀ", u"属性", u"値"};
    AddControlProperty(context);
    AddControlProperty(context);
    const FakeRow first = {{u"objectNo", number(7)},
                           {u"ControlNo", number(12)},
                           {u"PropertyNo", number(3)},
                           {u"Name", text(u"名前")},
                           {u"ControlType", text(u"ｻﾌﾞﾌｫｰﾑ/ｻﾌﾞﾚﾎﾟｰﾄ")},
                           {u"cntlVisible", text(u"True")},
                           {u"TLWH", text(u"1cm・2cm")},
                           {u"Bunrui", text(u"ﾃﾞｰﾀ")},
                           {u"PropertyName", text(u"属性")},
                           {u"PropertyValue", text(u"値")}};
    EXPECT_EQ(program.store.rows(u"T").at(0), first);
    for (const TextView field : {u"Bunrui", u"PropertyName", u"PropertyValue"}) {
        EXPECT_EQ(valueOf(program.store.rows(u"T").at(1), field), text(u""));
    }
    EXPECT_EQ(valueOf(program.store.rows(u"T").at(1), u"PropertyNo"), number(3)) << "the caller counts";
}

} // namespace
} // namespace relvane
