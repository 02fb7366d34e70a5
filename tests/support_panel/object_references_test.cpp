#include "support/object_references.h"

#include "reference_program.h"
#include "support/code_program.h"

namespace relvane {
namespace {

using test::FakeControl;
using test::FakeForm;
using test::FakeReport;
using test::fieldNames;
using test::moduleOf;
using test::valueOf;

// Positions of a form.
constexpr int firstFormEvent = 76, onLoad = 85;

struct ObjectReferences : testing::Test, test::ReferenceProgram {
    bool listForms() { return run(cmdLinkForm_Click); }
    bool listReports() { return run(cmdLinkReport_Click); }

    std::vector<Text> rows(std::initializer_list<TextView> fields) {
        EXPECT_TRUE(dialogs.boxes.empty()) << toUtf8(dialogs.lastText());
        return rowsOf(u"T_RvLinkObject", fields);
    }
    // What each row says, after a run over the forms.
    std::vector<Text> found() {
        EXPECT_TRUE(listForms());
        return said();
    }
    std::vector<Text> said() {
        return rows({u"ControlName", u"Bunrui", u"PropertyName", u"PropertyValue", u"MotoName"});
    }
    // The values of the event rows of controls, after a run over the forms.
    std::vector<Text> events() {
        EXPECT_TRUE(listForms());
        EXPECT_TRUE(dialogs.boxes.empty()) << toUtf8(dialogs.lastText());
        std::vector<Text> values;
        for (const auto& row : store.rows(u"T_RvLinkObject")) {
            if (valueOf(row, u"Bunrui") == Value(Text(u"マクロ"))) {
                values.push_back(toText(valueOf(row, u"ControlName")) + u"." +
                                 toText(valueOf(row, u"PropertyValue")));
            }
        }
        return values;
    }
    // Every position of the control names a macro: "P" and the position. It has `count` properties.
    static FakeControl& everywhere(FakeControl& control, int count) {
        for (int position = 0; position < 90; ++position) {
            control.put(position, u"OnClick", u"P" + toText(static_cast<long long>(position)));
        }
        control.properties.setCount(count);
        return control;
    }
    // A choice of an option group.
    template <class Design>
    static FakeControl& addChoice(Design& design, const Text& name, int type = test::optionButtonNumber) {
        FakeControl& choice = everywhere(design.add(name, type), 33);
        choice.put(type == test::toggleButtonNumber ? 7 : 3, u"OptionValue", std::int64_t{1});
        return choice;
    }
};

// The record source.

TEST_F(ObjectReferences, ARecordSourceIsARow) {
    addForm(u"F", u"顧客");
    EXPECT_TRUE(listForms());
    const auto& rows = store.rows(u"T_RvLinkObject");
    ASSERT_EQ(rows.size(), 1u);
    EXPECT_EQ(
        fieldNames(rows[0]),
        (std::vector<Text>{u"objectNo", u"ObjectName", u"ControlNo", u"PropertyNo", u"Bunrui", u"ControlName",
                           u"ControlBunrui", u"PropertyName", u"PropertyValue", u"MotoName", u"Midasi"}));
    EXPECT_EQ(this->rows({u"objectNo", u"ObjectName", u"ControlNo", u"PropertyNo", u"Bunrui", u"ControlName",
                          u"ControlBunrui", u"PropertyName", u"PropertyValue", u"MotoName", u"Midasi"}),
              (std::vector<Text>{u"1|F|0|0|ﾃｰﾌﾞﾙ/ｸｴﾘｰ||?|ﾚｺｰﾄﾞｿｰｽ|顧客||1"}));
}

TEST_F(ObjectReferences, AStatementIsToldFromATableByItsFirstSevenCharacters) {
    const std::pair<Text, Text> cases[] = {
        {u"SELECT * FROM 顧客;", u"ＳＱＬ"},   {u"  select 1", u"ＳＱＬ"},
        {u"SELECT\tx", u"ﾃｰﾌﾞﾙ/ｸｴﾘｰ"},         {u"SELECTION", u"ﾃｰﾌﾞﾙ/ｸｴﾘｰ"},
        {u"TRANSFORM SELECT ", u"ﾃｰﾌﾞﾙ/ｸｴﾘｰ"}, {u"\tSELECT x", u"ﾃｰﾌﾞﾙ/ｸｴﾘｰ"},
        {u" SELECT ", u"ﾃｰﾌﾞﾙ/ｸｴﾘｰ"}, // trimmed it has six
    };
    std::vector<Text> expected;
    for (const auto& [source, word] : cases) {
        addForm(u"F" + source, source);
        expected.push_back(source + u"|" + word);
    }
    EXPECT_TRUE(listForms());
    EXPECT_EQ(rows({u"PropertyValue", u"Bunrui"}), expected); // the value as it stands
}

TEST_F(ObjectReferences, WithoutARecordSourceThereIsNoRow) {
    addForm(u"F");
    EXPECT_TRUE(found().empty());
    EXPECT_EQ(reportsShown(u"R_RvLinkObject"), 1);
}

// Events of the form itself.

TEST_F(ObjectReferences, EventsOfAFormStandFrom76To102) {
    FakeForm& form = addForm(u"F");
    for (int position = 0; position < 107; ++position) {
        form.put(position, u"OnOpen", u"P" + toText(static_cast<long long>(position)));
    }
    std::vector<Text> expected;
    for (int position = 76; position <= 102; ++position) {
        if (position != 101) {
            expected.push_back(u"フォーム.P" + toText(static_cast<long long>(position)));
        }
    }
    EXPECT_EQ(events(), expected);
    std::vector<Text> numbers;
    for (int number = 1; number <= 26; ++number) {
        numbers.push_back(toText(static_cast<long long>(number)) + u"|0|開く時|?");
    }
    EXPECT_EQ(rows({u"PropertyNo", u"ControlNo", u"PropertyName", u"ControlBunrui"}), numbers);
}

TEST_F(ObjectReferences, Position101OfAFormNeverGivesARow) {
    addForm(u"F").put(101, u"OnClick", u"Macro");
    EXPECT_TRUE(events().empty());
}

TEST_F(ObjectReferences, TheMacroGroupIsWhatStandsBeforeTheFirstDot) {
    FakeForm& form = addForm(u"F");
    form.put(onLoad, u"OnLoad", u"Group.Macro.More");
    form.put(onLoad + 1, u"OnResize", u"Macro");
    form.put(onLoad + 2, u"OnUnload", u"[イベント プロシージャ]");
    form.put(onLoad + 3, u"OnClose", u"=Check()");
    form.put(onLoad + 4, u"OnActivate", u".x");
    form.put(onLoad + 5, u"?", u"m");
    EXPECT_EQ(found(),
              (std::vector<Text>{
                  u"フォーム|マクロ|読込時|Group.Macro.More|Group", u"フォーム|マクロ|ｻｲｽﾞ変更時|Macro|Macro",
                  u"フォーム|マクロ|読込解放時|[イベント プロシージャ]|[イベント プロシージャ]",
                  u"フォーム|マクロ|閉じる時|=Check()|=Check()", u"フォーム|マクロ|ｱｸﾃｨﾌﾞ時|.x|",
                  u"フォーム|マクロ|?|m|m"}));
}

TEST_F(ObjectReferences, AnEventThatIsNullOrEmptyGivesNoRow) {
    FakeForm& form = addForm(u"F");
    form.put(onLoad, u"OnLoad", Null{});
    form.put(onLoad + 1, u"OnResize", Text());
    EXPECT_TRUE(events().empty());
}

TEST_F(ObjectReferences, WithoutProceduresInModulesControlsAreNotAskedForEvents) {
    FakeForm& form = addForm(u"F");
    form.put(onLoad, u"OnLoad", u"Own");
    everywhere(form.add(u"K", test::commandButtonNumber), 50);
    everywhere(addBound(form, u"T", test::textBoxNumber), 78);
    EXPECT_EQ(events(), (std::vector<Text>{u"フォーム.Own"}));
}

// Events of controls, by the number of their properties.

struct Positions {
    int type, count;
    int first, last; // first above last: none
};

const Positions positions[] = {
    {test::textBoxNumber, 76, 63, 77},          {test::textBoxNumber, 75, 60, 74},
    {test::boundObjectFrameNumber, 59, 46, 60}, {test::boundObjectFrameNumber, 58, 43, 57},
    {test::commandButtonNumber, 0, 38, 49},     {test::commandButtonNumber, 500, 38, 49},
    {test::optionGroupNumber, 44, 1, 0},        {test::optionGroupNumber, 43, 35, 43},
    {test::optionGroupNumber, 42, 35, 43},      {test::optionGroupNumber, 41, 32, 40},
    {test::toggleButtonNumber, 53, 41, 54},     {test::toggleButtonNumber, 52, 38, 51},
    {test::toggleButtonNumber, 42, 38, 51},     {test::toggleButtonNumber, 41, 32, 39},
    {test::checkBoxNumber, 46, 34, 47},         {test::checkBoxNumber, 45, 31, 44},
    {test::checkBoxNumber, 34, 31, 44},         {test::checkBoxNumber, 33, 25, 32},
    {test::optionButtonNumber, 46, 34, 47},     {test::optionButtonNumber, 45, 31, 44},
    {test::optionButtonNumber, 34, 31, 44},     {test::optionButtonNumber, 33, 25, 32},
};

std::vector<Text> namesOf(TextView control, const Positions& range) {
    std::vector<Text> names;
    for (int position = range.first; position <= range.last; ++position) {
        names.push_back(Text(control) + u".P" + toText(static_cast<long long>(position)));
    }
    return names;
}

TEST_F(ObjectReferences, EventsOfAControlStandWhereTheNumberOfItsPropertiesPutsThem) {
    for (const Positions& range : positions) {
        SCOPED_TRACE(range.type);
        SCOPED_TRACE(range.count);
        test::ReferenceProgram program;
        program.addProcedure(u"x");
        everywhere(addBound(program.addForm(u"F"), u"K", range.type), range.count);
        ASSERT_TRUE(program.run(cmdLinkForm_Click));
        std::vector<Text> found;
        for (const Text& value : program.rowsOf(u"T_RvLinkObject", {u"PropertyValue"})) {
            found.push_back(u"K." + value);
        }
        EXPECT_EQ(found, namesOf(u"K", range));
    }
}

// Combo and list boxes have a place in the same table, which only a choice behind them shows.
TEST_F(ObjectReferences, AChoiceBehindAListReadsThePositionsOfTheList) {
    const Positions lists[] = {
        {test::comboBoxNumber, 80, 66, 81},
        {test::comboBoxNumber, 79, 63, 78},
        {test::listBoxNumber, 65, 53, 66},
        {test::listBoxNumber, 64, 50, 63},
    };
    addProcedure(u"x");
    std::vector<Text> expected;
    for (const Positions& range : lists) {
        FakeForm& form = addForm(u"F" + toText(static_cast<long long>(range.count)));
        everywhere(addList(form, u"L", range.type, u""), range.count);
        addChoice(form, u"C");
        for (const Text& name : namesOf(u"C", range)) {
            expected.push_back(name);
        }
    }
    EXPECT_EQ(events(), expected);
}

TEST_F(ObjectReferences, EveryKindOfChoiceKeepsThePositionsOfTheControlBefore) {
    addProcedure(u"x");
    FakeForm& form = addForm(u"F");
    addBound(form, u"T", test::textBoxNumber).properties.setCount(78);
    addChoice(form, u"O", test::optionButtonNumber);
    addChoice(form, u"C", test::checkBoxNumber);
    form.add(u"Label", test::labelNumber);
    addChoice(form, u"B", test::toggleButtonNumber);
    std::vector<Text> expected;
    for (const TextView name : {u"O", u"C", u"B"}) {
        for (const Text& each : namesOf(name, {0, 0, 63, 77})) {
            expected.push_back(each);
        }
    }
    EXPECT_EQ(events(), expected);
}

TEST_F(ObjectReferences, ASubformOrALongOptionGroupLeavesNoPositions) {
    addProcedure(u"x");
    FakeForm& form = addForm(u"F");
    form.add(u"K", test::commandButtonNumber);
    addChoice(form, u"Before");
    form.add(u"S", test::subformNumber).set(u"SourceObject", Text());
    addChoice(form, u"BehindSubform");
    form.add(u"K2", test::commandButtonNumber);
    everywhere(addBound(form, u"G", test::optionGroupNumber), 44);
    addChoice(form, u"BehindGroup");
    EXPECT_EQ(events(), namesOf(u"Before", {0, 0, 38, 49}));
}

TEST_F(ObjectReferences, EachFormBeginsWithoutPositions) {
    addProcedure(u"x");
    addChoice(addForm(u"F1"), u"First");
    FakeForm& form = addForm(u"F2");
    form.add(u"K", test::commandButtonNumber);
    addChoice(addForm(u"F3"), u"Third");
    EXPECT_TRUE(events().empty());
}

TEST_F(ObjectReferences, TheMarkOfAChoiceIsLookedForAtOnePositionOnly) {
    addProcedure(u"x");
    FakeForm& form = addForm(u"F");
    addBound(form, u"O", test::optionButtonNumber).put(7, u"OptionValue", std::int64_t{1});
    addBound(form, u"B", test::toggleButtonNumber).put(3, u"OptionValue", std::int64_t{1});
    addBound(form, u"C", test::checkBoxNumber, u"=x()").put(3, u"optionvalue", std::int64_t{1});
    EXPECT_EQ(found(), (std::vector<Text>{u"C|ﾕｰｻﾞｰ関数|ｺﾝﾄﾛｰﾙｿｰｽ|x|M"}));
}

// Sources of controls.

TEST_F(ObjectReferences, SubformsAndListsTellTheirSources) {
    FakeForm& form = addForm(u"F");
    form.add(u"S", test::subformNumber).set(u"SourceObject", u"フォーム.明細");
    form.add(u"S2", test::subformNumber).set(u"SourceObject", Text());
    addList(form, u"C", test::comboBoxNumber, u"SELECT ID FROM 顧客;");
    addList(form, u"L", test::listBoxNumber, u"顧客");
    addList(form, u"E", test::listBoxNumber, u"");
    EXPECT_EQ(found(), (std::vector<Text>{u"S|ﾃｰﾌﾞﾙ/ｸｴﾘｰ|ｿｰｽｵﾌﾞｼﾞｪｸﾄ|フォーム.明細|",
                                          u"C|ＳＱＬ|値集合ｿｰｽ|SELECT ID FROM 顧客;|",
                                          u"L|ﾃｰﾌﾞﾙ/ｸｴﾘｰ|値集合ｿｰｽ|顧客|"}));
    EXPECT_EQ(rows({u"ControlNo", u"PropertyNo", u"ControlBunrui"}),
              (std::vector<Text>{u"1|1|ｻﾌﾞﾌｫｰﾑ/ｻﾌﾞﾚﾎﾟｰﾄ", u"3|1|ｺﾝﾎﾞﾎﾞｯｸｽ", u"4|1|ﾘｽﾄﾎﾞｯｸｽ"}));
}

TEST_F(ObjectReferences, AListOfValuesGivesNoSource) {
    addProcedure(u"x");
    FakeForm& form = addForm(u"F");
    addList(form, u"L", test::listBoxNumber, u"'顧客';'商品'", u"Value List").set(u"ControlSource", u"=x()");
    addList(form, u"C", test::comboBoxNumber, u"顧客", u"Field List");
    EXPECT_EQ(found(), (std::vector<Text>{u"L|ﾕｰｻﾞｰ関数|ｺﾝﾄﾛｰﾙｿｰｽ|x|M", u"C|ﾃｰﾌﾞﾙ/ｸｴﾘｰ|値集合ｿｰｽ|顧客|M"}));
}

// User functions.

TEST_F(ObjectReferences, APropertyGivesTheFirstProcedureOfTheListThatItHolds) {
    addProcedure(u"Net", u"M1");
    addProcedure(u"NetPrice", u"M2");
    addProcedure(u"Total", u"M3");
    FakeForm& form = addForm(u"F");
    addBound(form, u"T", test::textBoxNumber, u"=NetPrice([ID])+Total()");
    addBound(form, u"U", test::textBoxNumber, u"=Total()");
    addBound(form, u"V", test::textBoxNumber, u"=total()");
    EXPECT_EQ(found(),
              (std::vector<Text>{u"T|ﾕｰｻﾞｰ関数|ｺﾝﾄﾛｰﾙｿｰｽ|Net|M1", u"U|ﾕｰｻﾞｰ関数|ｺﾝﾄﾛｰﾙｿｰｽ|Total|M3"}));
}

TEST_F(ObjectReferences, WhichControlsOfAFormCallFunctionsWhere) {
    addProcedure(u"x");
    FakeForm& form = addForm(u"F");
    using namespace test;
    const std::pair<TextView, int> controls[] = {{u"T", textBoxNumber},      {u"F", boundObjectFrameNumber},
                                                 {u"G", optionGroupNumber},  {u"K", commandButtonNumber},
                                                 {u"C", checkBoxNumber},     {u"O", optionButtonNumber},
                                                 {u"B", toggleButtonNumber}, {u"L", labelNumber},
                                                 {u"P", pageBreakNumber},    {u"?", unknownNumber}};
    for (const auto& [name, type] : controls) {
        addBound(form, Text(name), type, u"=x(1)", u"=x(2)");
    }
    for (const int type : {optionButtonNumber, checkBoxNumber, toggleButtonNumber}) {
        addChoice(form, u"choice", type).set(u"ControlSource", u"=x()").set(u"DefaultValue", u"=x()");
    }
    addList(form, u"D", comboBoxNumber, u"").set(u"ControlSource", u"=x()").set(u"DefaultValue", u"=x()");
    EXPECT_TRUE(listForms());
    std::vector<Text> found;
    for (const Text& row : rows({u"Bunrui", u"ControlName", u"PropertyName"})) {
        if (row.starts_with(u"ﾕｰｻﾞｰ関数")) {
            found.push_back(row.substr(row.find(u'|') + 1));
        }
    }
    EXPECT_EQ(found,
              (std::vector<Text>{u"T|ｺﾝﾄﾛｰﾙｿｰｽ", u"F|ｺﾝﾄﾛｰﾙｿｰｽ", u"C|ｺﾝﾄﾛｰﾙｿｰｽ", u"C|規定値", u"O|ｺﾝﾄﾛｰﾙｿｰｽ",
                                 u"O|規定値", u"B|ｺﾝﾄﾛｰﾙｿｰｽ", u"B|規定値", u"D|ｺﾝﾄﾛｰﾙｿｰｽ"}));
}

TEST_F(ObjectReferences, ProceduresOfAnotherTargetAreStillLookedFor) {
    addProcedure(u"x"); // the target has no module
    addBound(addForm(u"F"), u"T", test::textBoxNumber, u"=x()");
    EXPECT_EQ(found().size(), 1u);
    EXPECT_EQ(context().ModuleCount, 0);
}

// Numbers and values that run on.

TEST_F(ObjectReferences, NumbersOfPropertiesBeginAnewOnlyAtSubformsAndLists) {
    addProcedure(u"x");
    FakeForm& form = addForm(u"F", u"顧客");
    form.put(firstFormEvent, u"OnCurrent", u"m");
    form.put(firstFormEvent + 1, u"BeforeInsert", u"m");
    FakeControl& text = addBound(form, u"T", test::textBoxNumber, u"=x()");
    text.put(60, u"OnClick", u"m");
    form.add(u"K", test::commandButtonNumber).put(38, u"OnEnter", u"m");
    addList(form, u"C", test::comboBoxNumber, u"顧客").set(u"ControlSource", u"=x()");
    form.add(u"K2", test::commandButtonNumber).put(38, u"OnEnter", u"m");
    addList(form, u"E", test::listBoxNumber, u"");
    form.add(u"K3", test::commandButtonNumber).put(38, u"OnEnter", u"m");
    form.add(u"S", test::subformNumber).set(u"SourceObject", u"G");
    form.add(u"K4", test::commandButtonNumber).put(38, u"OnEnter", u"m");
    EXPECT_TRUE(listForms());
    EXPECT_EQ(rows({u"ControlName", u"ControlNo", u"PropertyNo"}),
              (std::vector<Text>{u"|0|0", u"フォーム|0|1", u"フォーム|0|2", u"T|1|2", u"T|1|3", u"K|2|4",
                                 u"C|3|1", u"C|3|1", u"K2|4|2", u"K3|6|1", u"S|7|1", u"K4|8|2"}));
}

TEST_F(ObjectReferences, NumbersBeginAnewWithEachFormAndItsSourceBearsNoControl) {
    for (const TextView name : {u"F1", u"F2"}) {
        FakeForm& form = addForm(Text(name), u"顧客");
        form.put(onLoad, u"OnLoad", u"m");
        addList(form, u"C", test::comboBoxNumber, u"顧客");
    }
    EXPECT_TRUE(listForms());
    EXPECT_EQ(rows({u"objectNo", u"ObjectName", u"ControlNo", u"PropertyNo", u"ControlName"}),
              (std::vector<Text>{u"1|F1|0|0|", u"1|F1|0|1|フォーム", u"1|F1|1|1|C", u"2|F2|0|0|",
                                 u"2|F2|0|1|フォーム", u"2|F2|1|1|C"}));
}

TEST_F(ObjectReferences, WhatARowDoesNotSetIsThatOfTheRowBefore) {
    addReport(u"R", u"売上");
    FakeForm& first = addForm(u"F1", u"顧客");
    first.put(onLoad, u"OnLoad", u"Group.Macro");
    addList(first, u"C", test::comboBoxNumber, u"商品");
    first.add(u"X", test::labelNumber);
    FakeForm& second = addForm(u"F2", u"受注");
    second.put(onLoad, u"OnLoad", u"Other");
    addForm(u"F3", u"明細");
    EXPECT_TRUE(listForms());
    const std::vector<Text> once = rows({u"PropertyValue", u"MotoName", u"ControlBunrui"});
    EXPECT_EQ(once, (std::vector<Text>{u"顧客||?", u"Group.Macro|Group|?", u"商品|Group|ｺﾝﾎﾞﾎﾞｯｸｽ",
                                       u"受注|Group|ﾗﾍﾞﾙ", u"Other|Other|ﾗﾍﾞﾙ", u"明細|Other|ﾗﾍﾞﾙ"}));
    // Also from one run to the next, and from forms to reports.
    EXPECT_TRUE(listForms());
    EXPECT_EQ(rows({u"PropertyValue", u"MotoName", u"ControlBunrui"})[0], u"顧客|Other|ﾗﾍﾞﾙ");
    EXPECT_TRUE(listReports());
    EXPECT_EQ(rows({u"PropertyValue", u"MotoName", u"ControlBunrui"}),
              (std::vector<Text>{u"売上|Other|ﾗﾍﾞﾙ"}));
}

// Reports.

TEST_F(ObjectReferences, EventsOfAReportStandFrom41To47) {
    FakeReport& report = addReport(u"R", u"SELECT 1;");
    for (int position = 0; position < 110; ++position) {
        report.put(position, u"OnNoData", u"P" + toText(static_cast<long long>(position)));
    }
    EXPECT_TRUE(listReports());
    std::vector<Text> expected = {u"|ＳＱＬ|ﾚｺｰﾄﾞｿｰｽ|SELECT 1;|"};
    for (int position = 41; position <= 47; ++position) {
        const Text value = u"P" + toText(static_cast<long long>(position));
        expected.push_back(u"レポート|マクロ|空ﾃﾞｰﾀ時|" + value + u"|" + value);
    }
    EXPECT_EQ(said(), expected);
}

TEST_F(ObjectReferences, ReportsReadNoEventsOfControls) {
    addProcedure(u"x");
    FakeReport& report = addReport(u"R");
    everywhere(addBound(report, u"T", test::textBoxNumber), 75);
    everywhere(addBound(report, u"K", test::commandButtonNumber), 50);
    everywhere(addList(report, u"C", test::comboBoxNumber, u""), 79);
    addChoice(report, u"O");
    EXPECT_TRUE(listReports());
    EXPECT_TRUE(said().empty());
}

TEST_F(ObjectReferences, WhichControlsOfAReportDependOnWhat) {
    addProcedure(u"x");
    FakeReport& report = addReport(u"R");
    using namespace test;
    const std::pair<TextView, int> controls[] = {{u"T", textBoxNumber},      {u"F", boundObjectFrameNumber},
                                                 {u"G", optionGroupNumber},  {u"K", commandButtonNumber},
                                                 {u"C", checkBoxNumber},     {u"O", optionButtonNumber},
                                                 {u"B", toggleButtonNumber}, {u"L", labelNumber},
                                                 {u"I", imageNumber}};
    for (const auto& [name, type] : controls) {
        addBound(report, Text(name), type, u"=x(1)", u"=x(2)");
    }
    for (const int type : {optionButtonNumber, checkBoxNumber, toggleButtonNumber}) {
        addChoice(report, u"choice", type).set(u"ControlSource", u"=x()");
    }
    addList(report, u"V", listBoxNumber, u"a;b", u"Value List");
    addList(report, u"D", comboBoxNumber, u"顧客").set(u"ControlSource", u"=x()");
    report.add(u"S", subformNumber).set(u"SourceObject", u"レポート.明細");
    EXPECT_TRUE(listReports());
    const Text function = u"|ﾕｰｻﾞｰ関数|ｺﾝﾄﾛｰﾙｿｰｽ|x|M";
    EXPECT_EQ(said(), (std::vector<Text>{u"T" + function, u"F" + function, u"G" + function, u"C" + function,
                                         u"O" + function, u"B" + function, u"D|ﾃｰﾌﾞﾙ/ｸｴﾘｰ|値集合ｿｰｽ|顧客|M",
                                         u"D" + function, u"S|ﾃｰﾌﾞﾙ/ｸｴﾘｰ|ｿｰｽｵﾌﾞｼﾞｪｸﾄ|レポート.明細|M"}));
}

// The run.

TEST_F(ObjectReferences, OpensTheTargetAfreshAndEmptiesBothTables) {
    addForm(u"F", u"顧客");
    listForms();
    store.log.clear();
    targetApps.calls.clear();
    EXPECT_TRUE(listForms());
    EXPECT_EQ(store.log,
              (std::vector<Text>{u"open T_RvLinkObject", u"open T_RvLinkModule",
                                 u"delete * from T_RvLinkObject;", u"delete * from T_RvLinkModule;",
                                 u"close T_RvLinkObject", u"close T_RvLinkModule"}));
    EXPECT_EQ(targetApps.calls, (std::vector<Text>{u"Close", u"Open C:\\App\\target.mdb", u"OpenForm F 1",
                                                   u"CloseObject 2 F 2"}));
    EXPECT_EQ(store.rows(u"T_RvLinkObject").size(), 1u);
    EXPECT_EQ(reportsShown(u"R_RvLinkObject"), 2);
}

TEST_F(ObjectReferences, AClosedTargetIsNoError) {
    addForm(u"F", u"顧客");
    sien();
    targetApps.failing[u"Close"] = 2467;
    EXPECT_EQ(found().size(), 1u);
    EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(ObjectReferences, TheRunOverAllFormsTellsItsProgress) {
    addForm(u"F1");
    addForm(u"F2").module = moduleOf({u"Option Explicit"});
    addForm(u"F3");
    auto& shown = watch();
    listForms();
    EXPECT_EQ(shown, (std::vector<Text>{u"0%", u"ｵﾌﾞｼﾞｪｸﾄ参照元情報(ﾌｫｰﾑ)", u"F1(ｵﾌﾞｼﾞｪｸﾄ情報)　取得中",
                                        u"33%", u"F2(ｵﾌﾞｼﾞｪｸﾄ情報)　取得中", u"F2(ﾓｼﾞｭｰﾙ情報)　取得中",
                                        u"67%", u"F3(ｵﾌﾞｼﾞｪｸﾄ情報)　取得中", u"終了しました"}));
    EXPECT_EQ(sien().lblPer.Caption.get(), u"100%");
    EXPECT_EQ(sien().Pointer.get(), MousePointer::Normal);
    EXPECT_TRUE(sien().Enabled);
}

TEST_F(ObjectReferences, TheWindowIsClosedToThePersonDuringTheRun) {
    addForm(u"F", u"顧客");
    store.onUpdate = [&](TextView) {
        EXPECT_FALSE(sien().Enabled);
        EXPECT_EQ(sien().Pointer.get(), MousePointer::Hourglass);
        EXPECT_TRUE(sien().linGuage.Visible);
    };
    EXPECT_EQ(found().size(), 1u);
}

TEST_F(ObjectReferences, TheChosenFormAloneIsReadAndTheGaugeRests) {
    addForm(u"F1", u"顧客");
    const Text name = u"F2" + Text(200, u'い');
    FakeForm& chosen = addForm(name, u"商品");
    chosen.module = moduleOf({u"Option Explicit"});
    sien().state.SienSelForm = 2;
    choose(sien().cboForm, name);
    auto& shown = watch();
    EXPECT_TRUE(listForms());
    EXPECT_EQ(rows({u"objectNo", u"ObjectName", u"PropertyValue"}),
              (std::vector<Text>{u"1|" + name + u"|商品"})); // the name whole
    EXPECT_EQ(shown, (std::vector<Text>{u"0%", u"ｵﾌﾞｼﾞｪｸﾄ参照元情報(ﾌｫｰﾑ)", u"ﾌｫｰﾑｵﾌﾞｼﾞｪｸﾄ情報　取得中",
                                        u"ﾌｫｰﾑﾓｼﾞｭｰﾙ情報　取得中", u"終了しました"}));
    EXPECT_EQ(reportsShown(u"R_RvLinkObject"), 1);
}

TEST_F(ObjectReferences, TheChosenReportAloneIsRead) {
    addReport(u"R1", u"顧客");
    addReport(u"R2", u"商品").module = moduleOf({u"Option Explicit"});
    sien().state.SienSelReport = 2;
    choose(sien().cboReport, u"R2");
    auto& shown = watch();
    EXPECT_TRUE(listReports());
    EXPECT_EQ(rows({u"objectNo", u"ObjectName", u"PropertyValue"}), (std::vector<Text>{u"1|R2|商品"}));
    EXPECT_EQ(shown, (std::vector<Text>{u"0%", u"ｵﾌﾞｼﾞｪｸﾄ参照元情報(ﾚﾎﾟｰﾄ)", u"ﾚﾎﾟｰﾄｵﾌﾞｼﾞｪｸﾄ情報　取得中",
                                        u"ﾚﾎﾟｰﾄﾓｼﾞｭｰﾙ情報　取得中", u"終了しました"}));
}

TEST_F(ObjectReferences, LongNamesAreCutInTheRunOverAll) {
    const Text cut(149, u'う');
    addReport(cut + u" え", u"顧客").add(cut + u" え", test::subformNumber).set(u"SourceObject", u"x");
    auto& shown = watch();
    EXPECT_TRUE(listReports());
    EXPECT_EQ(rows({u"ObjectName", u"ControlName"}), (std::vector<Text>{cut + u"|", cut + u"|" + cut}));
    EXPECT_EQ(shown[2], cut + u"(ｵﾌﾞｼﾞｪｸﾄ情報)　取得中");
}

TEST_F(ObjectReferences, TheCodeOfTheObjectTellsWhichProceduresItCalls) {
    addProcedure(u"Net", u"基本");
    addForm(u"F1", u"顧客");
    addForm(u"F2").module =
        moduleOf({u"Option Explicit", u"Private Sub Form_Load()", u"  x = Net(1)", u"End Sub"});
    addReport(u"R1").module =
        moduleOf({u"Option Explicit", u"Private Sub Report_Open()", u"  Call Net(1)", u"End Sub"});
    EXPECT_TRUE(listForms());
    EXPECT_EQ(rowsOf(u"T_RvLinkModule",
                     {u"objectNo", u"Bunrui", u"ObjectName", u"Procedure", u"LinkProcedure", u"MotoName"}),
              (std::vector<Text>{u"2|ﾓｼﾞｭｰﾙ|F2|Form_Load|Net|基本"}));
    EXPECT_EQ(context().Scan.CurModule, nullptr);
    EXPECT_EQ(context().CurDesign, nullptr);
    EXPECT_TRUE(listReports());
    EXPECT_EQ(rowsOf(u"T_RvLinkModule", {u"objectNo", u"Bunrui", u"ObjectName", u"Procedure"}),
              (std::vector<Text>{u"1|ﾓｼﾞｭｰﾙ|R1|Report_Open"}));
}

TEST_F(ObjectReferences, AnEmptyTargetYieldsAnEmptyReport) {
    EXPECT_TRUE(listForms());
    EXPECT_TRUE(listReports());
    EXPECT_TRUE(said().empty());
    EXPECT_EQ(reportsShown(u"R_RvLinkObject"), 2);
}

// Failures.

TEST(ObjectReferencesFailures, ErrorsFrom2449To2999EndTheProgram) {
    const struct {
        int number;
        bool ends;
    } cases[] = {{2448, false}, {2449, true}, {2999, true}, {3000, false}};
    for (const bool ofForms : {true, false}) {
        for (const auto& [number, ends] : cases) {
            SCOPED_TRACE(number);
            test::ReferenceProgram program;
            program.addForm(u"F").fail(u"RecordSource", number);
            program.addReport(u"R").fail(u"RecordSource", number);
            EXPECT_EQ(program.run(ofForms ? cmdLinkForm_Click : cmdLinkReport_Click), !ends);
            EXPECT_FALSE(program.desk->failed());
            ASSERT_GE(program.dialogs.boxes.size(), 1u);
            EXPECT_EQ(program.dialogs.boxes[0].text,
                      Text(u"場所:オブジェクト参照元情報(") + (ofForms ? u"フォーム" : u"レポート") +
                          u")ｴﾗｰNo:" + toText(static_cast<long long>(number)) +
                          (ends ? u"\rシステムが不安定です。\r詳細はヘルプを参照下さい。\rシステムを終了しま"
                                  u"す。\r内容:説明"
                                : u"\r場所とｴﾗｰNoを控えメールをお願いします。\r内容:説明"));
        }
    }
}

TEST_F(ObjectReferences, BehindAnErrorTheWindowIsOpenAndTheFormToo) {
    addForm(u"F1", u"顧客");
    FakeForm& form = addForm(u"F2", u"商品");
    addBound(form, u"T", test::textBoxNumber).fail(u"ControlSource", 3000);
    EXPECT_TRUE(listForms());
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(sien().Pointer.get(), MousePointer::Normal);
    EXPECT_TRUE(sien().Enabled);
    EXPECT_EQ(store.rows(u"T_RvLinkObject").size(), 2u);
    EXPECT_EQ(reportsShown(u"R_RvLinkObject"), 0);
    EXPECT_TRUE(targetApps.forms.isOpen(u"F2"));
    EXPECT_EQ(context().CurDesign, nullptr);
    dialogs.boxes.clear();
    listReports(); // the target is opened afresh
    EXPECT_FALSE(targetApps.forms.isOpen(u"F2"));
}

} // namespace
} // namespace relvane
