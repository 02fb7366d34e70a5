#include "objects/control_rules.h"

#include "core/vocabulary.h"

namespace relvane {
namespace {

constexpr unsigned detailed = formDetailed | reportDetailed;
constexpr unsigned ofForms = formDetailed | formSimple;
constexpr unsigned ofReports = reportDetailed | reportSimple;
constexpr unsigned all = ofForms | ofReports;

constexpr auto any = GroupPlace::Any, member = GroupPlace::Member, noMember = GroupPlace::NoMember;

constexpr ControlTypes captions{{u"Label", u"Page"}};
constexpr ControlTypes bound{{u"ComboBox", u"ListBox", u"TextBox", u"OptionGroup", u"BoundObjectFrame"}};
constexpr ControlTypes edited{{u"ComboBox", u"TextBox"}};
constexpr ControlTypes lists{{u"ComboBox", u"ListBox"}};
constexpr ControlTypes checked{{u"ComboBox", u"ListBox", u"TextBox", u"OptionGroup"}};
constexpr ControlTypes listsAndTexts{{u"ComboBox", u"ListBox", u"TextBox"}};
constexpr ControlTypes combo{{u"ComboBox"}};
constexpr ControlTypes buttons{{u"CheckBox", u"OptionButton", u"CommandButton", u"ToggleButton"}};
constexpr ControlTypes boundButtons{{u"CheckBox", u"OptionButton", u"ToggleButton"}};
constexpr ControlTypes pushed{{u"CommandButton", u"ToggleButton"}};
constexpr ControlTypes command{{u"CommandButton"}};
constexpr ControlTypes subform{{u"Subform"}};
constexpr ControlTypes image{{u"Image"}};
constexpr ControlTypes lines{{u"Rectangle", u"Line"}};
constexpr ControlTypes objectFrame{{u"ObjectFrame"}};
constexpr ControlTypes tab{{u"TabCtl"}};
constexpr ControlTypes silent{{u"PageBreak", u"CustomControl"}};

constexpr TextView data = u"ﾃﾞｰﾀ", format = u"書式", other = u"その他", none = u"";
constexpr TextView dot = u"・";

constexpr RowCondition notEmpty(TextView property) {
    return {property, PropertyTest::NotEmpty};
}
constexpr RowCondition isTrue(TextView property) {
    return {property, PropertyTest::IsTrue};
}
constexpr RowCondition isFalse(TextView property) {
    return {property, PropertyTest::IsFalse};
}

constexpr RowText validation{{u"ValidationRule"}, u"(", {u"ValidationText"}, u")"};
constexpr RowText yesWithMessage{{u"", nullptr, u"はい"}, u"(", {u"ValidationText"}, u")"};
constexpr RowText tabPlace{{u"TabStop", GetYesNoName}, dot, {u"TabIndex"}};
constexpr RowText picture{{u"Picture"}, dot, {u"PictureType", GetOleTypeName}};

// clang-format off
constexpr RowRule rules[] = {
    {all, any, captions, format, u"標題", {{u"Caption"}}},

    // What holds data. A form says when such a control holds none.
    {ofForms, any, bound, data, u"ｺﾝﾄﾛｰﾙｿｰｽ", {{u"ControlSource", nullptr, u"なし"}}},
    {ofReports, any, bound, data, u"ｺﾝﾄﾛｰﾙｿｰｽ", {{u"ControlSource"}}, {notEmpty(u"ControlSource")}},
    {detailed, any, edited, format, u"書式・定型入力", {{u"Format"}, dot, {u"InputMask"}}, {notEmpty(u"Format")}},
    {formDetailed, any, edited, other, u"IMEﾓｰﾄﾞ・保持",
     {{u"IMEMode", GetImeModeName}, dot, {u"IMEHold", GetYesNoName}}},
    {detailed, any, lists, data, u"値集合ﾀｲﾌﾟ", {{u"RowSourceType", GetRowSourceTypeName}}, {notEmpty(u"RowSource")}},
    {detailed, any, lists, data, u"値集合ｿｰｽ", {{u"RowSource"}}, {notEmpty(u"RowSource")}},
    {detailed, any, lists, data, u"列数・連結列", {{u"ColumnCount"}, dot, {u"BoundColumn"}}, {notEmpty(u"RowSource")}},
    {formDetailed, any, checked, data, u"規定値・編集ﾛｯｸ",
     {{u"DefaultValue"}, dot, {u"Locked", GetYesNoName}}, {isFalse(u"Locked")}},
    {formDetailed, any, checked, data, u"入力規則(ﾒｯｾｰｼﾞ)", validation, {notEmpty(u"ValidationRule")}},
    {formDetailed, any, combo, data, u"入力ﾁｪｯｸ(ﾒｯｾｰｼﾞ)", yesWithMessage,
     {RowCondition{u"ValidationRule", PropertyTest::Empty}, isTrue(u"LimitToList")}},
    {formDetailed, any, listsAndTexts, data, u"ｽﾃｰﾀｽﾊﾞｰ", {{u"StatusBarText"}}, {notEmpty(u"StatusBarText")}},
    {formDetailed, any, bound, other, u"ﾀﾌﾞｽﾄｯﾌﾟ・移動順", tabPlace, {isTrue(u"TabStop")}},
    {formDetailed, any, bound, other, u"ﾋﾝﾄﾃｷｽﾄ", {{u"ControlTipText"}}, {notEmpty(u"ControlTipText")}},

    // Buttons that are members of an option group.
    {ofForms, member, buttons, data, u"ｵﾌﾟｼｮﾝ値・編集ﾛｯｸ",
     {{u"OptionValue"}, dot, {u"Locked", GetYesNoName}}, {isFalse(u"Locked")}},
    {ofReports, member, buttons, data, u"ｵﾌﾟｼｮﾝ値", {{u"OptionValue"}}, {isFalse(u"Locked")}},
    {formDetailed, member, buttons, other, u"ﾋﾝﾄﾃｷｽﾄ", {{u"ControlTipText"}}, {notEmpty(u"ControlTipText")}},

    // Buttons that are none.
    {all, noMember, boundButtons, data, u"ｺﾝﾄﾛｰﾙｿｰｽ", {{u"ControlSource"}}, {notEmpty(u"ControlSource")}},
    {formDetailed, noMember, boundButtons, data, u"規定値・編集ﾛｯｸ",
     {{u"DefaultValue"}, dot, {u"Locked", GetYesNoName}}, {isFalse(u"Locked")}},
    {formDetailed, noMember, boundButtons, data, u"入力規則(ﾒｯｾｰｼﾞ)", validation, {notEmpty(u"ValidationRule")}},
    {detailed, noMember, pushed, format, u"標題", {{u"Caption"}}, {notEmpty(u"Caption")}},
    {formSimple | reportSimple, noMember, command, format, u"標題", {{u"Caption"}}, {notEmpty(u"Caption")}},
    {detailed, noMember, pushed, format, u"ﾋﾟｸﾁｬ・ﾀｲﾌﾟ", picture, {notEmpty(u"Picture")}},
    {formDetailed, noMember, buttons, other, u"ﾀﾌﾞｽﾄｯﾌﾟ・移動順", tabPlace, {isTrue(u"TabStop")}},
    {formDetailed, noMember, buttons, other, u"ﾋﾝﾄﾃｷｽﾄ", {{u"ControlTipText"}}, {notEmpty(u"ControlTipText")}},

    {all, any, subform, data, u"ｿｰｽｵﾌﾞｼﾞｪｸﾄ", {{u"SourceObject"}}, {notEmpty(u"SourceObject")}},
    {detailed, any, subform, data, u"ﾘﾝｸ子ﾌｨｰﾙﾄﾞ", {{u"LinkChildFields"}}, {notEmpty(u"LinkChildFields")}},
    {detailed, any, subform, data, u"ﾘﾝｸ親ﾌｨｰﾙﾄﾞ", {{u"LinkMasterFields"}}, {notEmpty(u"LinkMasterFields")}},
    {formDetailed, any, subform, data, u"編集ﾛｯｸ", {{u"Locked", GetYesNoName}}, {isFalse(u"Locked")}},
    {formDetailed, any, subform, other, u"ﾀﾌﾞｽﾄｯﾌﾟ・移動順", tabPlace, {isTrue(u"TabStop")}},

    {all, any, image, format, u"ﾋﾟｸﾁｬ・ﾀｲﾌﾟ", picture, {notEmpty(u"Picture")}},
    {detailed, any, image, format, u"OLEｻｲｽﾞ・配置",
     {{u"SizeMode", GetSizeModeName}, dot, {u"PictureAlignment"}}, {notEmpty(u"Picture")}},

    {all, any, lines, format, u"線種・線幅", {{u"BorderStyle", GetLineStyleName}, dot, {u"BorderWidth"}}},
    {all, any, objectFrame, format, u"OLEｻｲｽﾞ・OLEｸﾗｽ", {{u"SizeMode", GetSizeModeName}, dot, {u"OLEClass"}}},
    {ofForms, any, tab, other, u"ﾀﾌﾞｽﾄｯﾌﾟ・移動順", tabPlace},
    {ofReports, any, tab, none, none, {}},
    {all, any, silent, none, none, {}},
};

// For a type the first row counts whose number of properties is exceeded. The sizes differ with the column of a data
// sheet, which a control of a form has, and with the values that a member of an option group leaves to its group.
struct EventRule {
    TextView type;
    int above; // number of properties
    EventRange range;
};

constexpr int otherwise = -1;

constexpr EventRule eventRules[] = {
    {u"CommandButton",    otherwise, {38, 49}},
    {u"ToggleButton",     52,        {41, 54}},
    {u"ToggleButton",     41,        {38, 51}},
    {u"ToggleButton",     otherwise, {32, 39}},
    {u"CheckBox",         45,        {34, 47}},
    {u"CheckBox",         33,        {31, 44}},
    {u"CheckBox",         otherwise, {25, 32}},
    {u"OptionButton",     45,        {34, 47}},
    {u"OptionButton",     33,        {31, 44}},
    {u"OptionButton",     otherwise, {25, 32}},
    {u"ComboBox",         79,        {66, 81}},
    {u"ComboBox",         otherwise, {63, 78}},
    {u"ListBox",          64,        {53, 66}},
    {u"ListBox",          otherwise, {50, 63}},
    {u"TextBox",          75,        {63, 77}},
    {u"TextBox",          otherwise, {60, 74}},
    {u"OptionGroup",      41,        {35, 43}},
    {u"OptionGroup",      otherwise, {32, 40}},
    {u"BoundObjectFrame", 58,        {46, 60}},
    {u"BoundObjectFrame", otherwise, {43, 57}},
    {u"Subform",          otherwise, {28, 29}},
    {u"Image",            otherwise, {29, 33}},
};

constexpr GroupTest groupTests[] = {
    {u"CheckBox",      1,                   3},
    {u"OptionButton",  1,                   3},
    {u"ToggleButton",  7,                   7},
    {u"CommandButton", GroupTest::asBefore, GroupTest::asBefore},
};
// clang-format on

} // namespace

std::span<const RowRule> rowRules() {
    return rules;
}

std::optional<EventRange> eventRange(TextView type, int propertyCount) {
    for (const EventRule& rule : eventRules) {
        if (rule.type == type && propertyCount > rule.above) {
            return rule.range;
        }
    }
    return std::nullopt;
}

const GroupTest* groupTest(TextView type) {
    for (const GroupTest& test : groupTests) {
        if (test.type == type) {
            return &test;
        }
    }
    return nullptr;
}

} // namespace relvane
