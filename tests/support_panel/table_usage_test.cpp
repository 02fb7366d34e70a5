#include "support/table_usage.h"

#include "reference_program.h"

namespace relvane {
namespace {

using test::FakeControl;
using test::FakeForm;
using test::FakeReport;
using test::FakeRow;
using test::fieldNames;
using test::valueOf;

constexpr int ambiguous = 3258;

struct TableUsageRun : testing::Test, test::ReferenceProgram {
    // Whether the program goes on.
    bool find(const Text& table) {
        choose(sien().cboTable, table);
        return run(cmdLinkTable_Click);
    }
    std::vector<Text> rows() {
        return rowsOf(u"T_RvLinkObject",
                      {u"objectNo", u"Bunrui", u"ObjectName", u"ControlName", u"PropertyName", u"MotoName"});
    }
    std::vector<Text> usageOf(const Text& table) {
        EXPECT_TRUE(find(table));
        return rows();
    }
    // A query behind which errors are skipped, or reported.
    void addCleanQuery() { addQuery(u"Clean", u"SELECT 1;"); }
    void addAmbiguousQuery() { addQuery(u"Ambiguous", {}).sqlError = ambiguous; }
    // A list that does not answer for its SourceObject.
    static FakeControl& addSilentList(FakeForm& form) {
        FakeControl& list = form.add(u"L", test::listBoxNumber);
        list.set(u"RowSource", u"顧客");
        return list;
    }
};

TEST_F(TableUsageRun, EveryPlaceGivesARow) {
    addQuery(u"Q", u"SELECT * FROM 顧客;", 0);
    FakeForm& form = addForm(u"F", u"顧客");
    form.add(u"S", test::subformNumber).set(u"SourceObject", u"顧客サブ");
    addList(form, u"C", test::comboBoxNumber, u"SELECT 顧客.ID FROM 顧客;");
    FakeReport& report = addReport(u"R", u"SELECT * FROM 顧客;");
    report.add(u"S", test::subformNumber).set(u"SourceObject", u"レポート.顧客");
    addList(report, u"L", test::listBoxNumber, u"顧客");
    EXPECT_EQ(usageOf(u"顧客"),
              (std::vector<Text>{u"1|クエリ|Q|選択ｸｴﾘｰ||顧客", u"2|フォーム|F||ﾚｺｰﾄﾞｿｰｽ|顧客",
                                 u"2|フォーム|F|S|ｿｰｽｵﾌﾞｼﾞｪｸﾄ|顧客", u"2|フォーム|F|C|値集合ｿｰｽ|顧客",
                                 u"3|レポート|R||ﾚｺｰﾄﾞｿｰｽ|顧客", u"3|レポート|R|S|ｿｰｽｵﾌﾞｼﾞｪｸﾄ|顧客",
                                 u"3|レポート|R|L|値集合ｿｰｽ|顧客"}));
    EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(TableUsageRun, WritesNoOtherFieldsAndNoneThatIsEmpty) {
    addQuery(u"Q", u"顧客");
    addForm(u"F", u"顧客").add(u"S", test::subformNumber).set(u"SourceObject", u"顧客");
    usageOf(u"顧客");
    const auto& rows = store.rows(u"T_RvLinkObject");
    ASSERT_EQ(rows.size(), 3u);
    using Names = std::vector<Text>;
    EXPECT_EQ(fieldNames(rows[0]),
              (Names{u"objectNo", u"ObjectName", u"Bunrui", u"ControlName", u"MotoName"}));
    EXPECT_EQ(fieldNames(rows[1]),
              (Names{u"objectNo", u"ObjectName", u"Bunrui", u"PropertyName", u"MotoName"}));
    EXPECT_EQ(fieldNames(rows[2]),
              (Names{u"objectNo", u"ObjectName", u"Bunrui", u"ControlName", u"PropertyName", u"MotoName"}));
    EXPECT_EQ(valueOf(rows[2], u"objectNo"), Value(std::int64_t{2}));
}

TEST_F(TableUsageRun, AnEmptyTargetYieldsAnEmptyTableAndAReport) {
    EXPECT_TRUE(usageOf(u"顧客").empty());
    EXPECT_EQ(reportsShown(u"R_RvLinkTable"), 1);
}

TEST_F(TableUsageRun, EmptiesTheTableAtEveryRunAndClosesItAheadOfTheReport) {
    addQuery(u"Q", u"顧客");
    usageOf(u"顧客");
    store.log.clear();
    EXPECT_EQ(usageOf(u"顧客").size(), 1u);
    EXPECT_EQ(store.log, (std::vector<Text>{u"open T_RvLinkObject", u"delete * from T_RvLinkObject;",
                                            u"close T_RvLinkObject"}));
    EXPECT_EQ(reportsShown(u"R_RvLinkTable"), 2);
}

TEST_F(TableUsageRun, TellsItsProgressByTheMessagesAlone) {
    addQuery(u"Q", u"顧客");
    addForm(u"F");
    addReport(u"R");
    auto& shown = watch();
    store.onUpdate = [&](TextView) {
        EXPECT_FALSE(sien().Enabled);
        EXPECT_EQ(sien().Pointer.get(), MousePointer::Hourglass);
        EXPECT_TRUE(sien().linGuage.Visible);
    };
    find(u"顧客");
    EXPECT_EQ(shown, (std::vector<Text>{u"0%", u"テーブル参照情報(クエリ検索中...)",
                                        u"テーブル参照情報(フォーム検索中...)",
                                        u"テーブル参照情報(レポート検索中...)", u"終了しました"}));
    EXPECT_EQ(sien().lblPer.Caption.get(), u"100%");
    EXPECT_EQ(sien().linGuage.X2.get(), 2400);
    EXPECT_EQ(sien().Pointer.get(), MousePointer::Normal);
    EXPECT_TRUE(sien().Enabled);
}

TEST_F(TableUsageRun, HiddenAndSystemQueriesAreNotCountedAndDoNotAppear) {
    addQuery(u"~sq_fF", u"顧客");
    addQuery(u"Embedded", u"顧客", 3);
    addQuery(u"~SQ_G", u"顧客"); // only small letters are left out
    addQuery(u"~s", u"顧客");
    EXPECT_EQ(usageOf(u"顧客"),
              (std::vector<Text>{u"1|クエリ|~SQ_G|選択ｸｴﾘｰ||顧客", u"2|クエリ|~s|選択ｸｴﾘｰ||顧客"}));
}

TEST_F(TableUsageRun, ATableWhoseNameBeginsThatOfAnotherIsFoundInBoth) {
    addQuery(u"Q1", u"SELECT * FROM 顧客;");
    addQuery(u"Q2", u"SELECT * FROM 顧客2;");
    EXPECT_EQ(usageOf(u"顧客").size(), 2u);
    EXPECT_EQ(usageOf(u"顧客2"), (std::vector<Text>{u"2|クエリ|Q2|選択ｸｴﾘｰ||顧客2"}));
}

TEST_F(TableUsageRun, TheCaseOfTheNameCounts) {
    addQuery(u"Q1", u"SELECT * FROM Customers;");
    addQuery(u"Q2", u"SELECT * FROM CUSTOMERS;");
    EXPECT_EQ(usageOf(u"Customers"), (std::vector<Text>{u"1|クエリ|Q1|選択ｸｴﾘｰ||Customers"}));
}

TEST_F(TableUsageRun, AnEmptyNameIsInEveryTextThatIsNotEmpty) {
    addQuery(u"Q", u"SELECT 1;");
    addForm(u"F");
    addForm(u"G", u"T");
    EXPECT_EQ(usageOf(u""), (std::vector<Text>{u"1|クエリ|Q|選択ｸｴﾘｰ||", u"3|フォーム|G||ﾚｺｰﾄﾞｿｰｽ|"}));
}

TEST_F(TableUsageRun, AListOfValuesThatSpellsTheNameCounts) {
    FakeReport& report = addReport(u"R");
    addList(report, u"L", test::listBoxNumber, u"'顧客';'商品'", u"Value List");
    EXPECT_EQ(usageOf(u"顧客"), (std::vector<Text>{u"1|レポート|R|L|値集合ｿｰｽ|顧客"}));
}

TEST_F(TableUsageRun, ASubformOrListWithoutASourceGivesNoRow) {
    FakeForm& form = addForm(u"F", u"他");
    form.add(u"S", test::subformNumber).set(u"SourceObject", Text());
    addList(form, u"C", test::comboBoxNumber, u"");
    EXPECT_TRUE(usageOf(u"顧客").empty());
    EXPECT_EQ(usageOf(u"").size(), 1u);
}

TEST_F(TableUsageRun, OtherControlsAreNotAskedAtAll) {
    FakeForm& form = addForm(u"F");
    using namespace test;
    for (const int type :
         {labelNumber, pageNumber, rectangleNumber, lineNumber, imageNumber, objectFrameNumber, tabNumber,
          pageBreakNumber, customControlNumber, textBoxNumber, optionGroupNumber, boundObjectFrameNumber,
          commandButtonNumber, checkBoxNumber, toggleButtonNumber, optionButtonNumber, unknownNumber}) {
        form.add(u"K" + toText(static_cast<long long>(type)), type)
            .set(u"SourceObject", u"顧客")
            .set(u"RowSource", u"顧客")
            .set(u"ControlSource", u"顧客");
    }
    EXPECT_TRUE(usageOf(u"顧客").empty());
    for (const auto& control : form.Controls()) {
        EXPECT_TRUE(dynamic_cast<const FakeControl&>(*control).reads.empty());
    }
}

TEST_F(TableUsageRun, WhatIsNotUsedIsCountedAllTheSame) {
    addQuery(u"Q1", u"SELECT 1;");
    addForm(u"F1");
    addForm(u"F2", u"顧客");
    addReport(u"R1");
    addReport(u"R2", u"顧客");
    EXPECT_EQ(usageOf(u"顧客"),
              (std::vector<Text>{u"3|フォーム|F2||ﾚｺｰﾄﾞｿｰｽ|顧客", u"5|レポート|R2||ﾚｺｰﾄﾞｿｰｽ|顧客"}));
}

TEST_F(TableUsageRun, NamesOfFormsAndControlsAreCutThoseOfQueriesAreNot) {
    const Text name = Text(149, u'あ') + u" い";
    const Text cut = Text(149, u'あ');
    addQuery(name, u"顧客");
    addForm(name).add(name, test::subformNumber).set(u"SourceObject", u"顧客");
    EXPECT_EQ(usageOf(u"顧客"),
              (std::vector<Text>{u"1|クエリ|" + name + u"|選択ｸｴﾘｰ||顧客",
                                 u"2|フォーム|" + cut + u"|" + cut + u"|ｿｰｽｵﾌﾞｼﾞｪｸﾄ|顧客"}));
}

TEST_F(TableUsageRun, FormsAndReportsAreOpenedHiddenAndClosedUnsavedOneAtATime) {
    addForm(u"F");
    addReport(u"R");
    sien();
    targetApps.calls.clear();
    find(u"顧客");
    EXPECT_EQ(targetApps.calls, (std::vector<Text>{u"OpenForm F 1", u"CloseObject 2 F 2", u"OpenReport R 1",
                                                   u"CloseObject 3 R 2"}));
    EXPECT_EQ(context().CurDesign, nullptr);
}

// Errors. Ahead of the first query nobody takes care of them.

TEST_F(TableUsageRun, WithoutAQueryAnErrorEndsTheProgram) {
    addForm(u"F");
    sien();
    targetApps.failing[u"OpenForm"] = 2450;
    EXPECT_FALSE(find(u"顧客"));
    EXPECT_TRUE(desk->failed());
    EXPECT_EQ(reportsShown(u"R_RvLinkTable"), 0);
}

TEST_F(TableUsageRun, AQueryThatIsPassedOverDoesNotBeginToSkipErrors) {
    addQuery(u"~sq_fF", u"顧客");
    addForm(u"F").fail(u"RecordSource", 2450);
    EXPECT_FALSE(find(u"顧客"));
    EXPECT_TRUE(desk->failed());
}

TEST_F(TableUsageRun, AListOfAFormWithoutQueriesNeedsItsAnswerForTheSourceObject) {
    FakeForm& form = addForm(u"F");
    addList(form, u"C", test::comboBoxNumber, u"顧客");
    EXPECT_EQ(usageOf(u"顧客"), (std::vector<Text>{u"1|フォーム|F|C|値集合ｿｰｽ|顧客"}));
    addSilentList(addForm(u"G"));
    EXPECT_FALSE(find(u"顧客"));
}

// Behind a query that tells its SQL every error is skipped.

TEST_F(TableUsageRun, BehindACleanQueryAListThatDoesNotAnswerIsReadAllTheSame) {
    addCleanQuery();
    FakeForm& form = addForm(u"F");
    addSilentList(form);
    EXPECT_EQ(usageOf(u"顧客"), (std::vector<Text>{u"2|フォーム|F|L|値集合ｿｰｽ|顧客"}));
    EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(TableUsageRun, BehindACleanQueryWhatCannotBeOpenedIsCountedAndHasNoRows) {
    addCleanQuery();
    target->addDocument(u"Forms", u"Damaged"); // the application has no such form
    addForm(u"F", u"顧客");
    target->addDocument(u"Reports", u"Damaged");
    addReport(u"R", u"顧客");
    EXPECT_EQ(usageOf(u"顧客"),
              (std::vector<Text>{u"3|フォーム|F||ﾚｺｰﾄﾞｿｰｽ|顧客", u"5|レポート|R||ﾚｺｰﾄﾞｿｰｽ|顧客"}));
    EXPECT_TRUE(dialogs.boxes.empty());
    EXPECT_EQ(reportsShown(u"R_RvLinkTable"), 1);
}

TEST_F(TableUsageRun, AReadingThatFailsWhileErrorsAreSkippedLeavesTheTextBefore) {
    addQuery(u"Q1", u"顧客");
    addQuery(u"Q2", u"他").sqlError = 3061;
    addQuery(u"Q3", u"他");
    addForm(u"F").fail(u"RecordSource", 2450);
    EXPECT_EQ(usageOf(u"顧客"),
              (std::vector<Text>{u"1|クエリ|Q1|選択ｸｴﾘｰ||顧客", u"2|クエリ|Q2|選択ｸｴﾘｰ||顧客"}));
}

TEST_F(TableUsageRun, ARowThatCannotBeWrittenIsLeftOutWhileErrorsAreSkipped) {
    addCleanQuery();
    addForm(u"F", u"顧客").add(u"S", test::subformNumber).set(u"SourceObject", u"顧客");
    int rows = 0;
    store.onUpdate = [&](TextView) {
        if (++rows == 1) {
            throw RunTimeError(ErrorNumber::DiskFull);
        }
    };
    EXPECT_EQ(usageOf(u"顧客"), (std::vector<Text>{u"2|フォーム|F|S|ｿｰｽｵﾌﾞｼﾞｪｸﾄ|顧客"}));
}

// Behind a query with ambiguous outer joins errors are reported again.

TEST_F(TableUsageRun, AnAmbiguousQueryIsCountedAndPassedOver) {
    addAmbiguousQuery();
    addQuery(u"Q", u"顧客");
    addForm(u"F", u"顧客");
    EXPECT_EQ(usageOf(u"顧客"),
              (std::vector<Text>{u"2|クエリ|Q|選択ｸｴﾘｰ||顧客", u"3|フォーム|F||ﾚｺｰﾄﾞｿｰｽ|顧客"}));
    EXPECT_TRUE(dialogs.boxes.empty());
}

TEST_F(TableUsageRun, BehindAnAmbiguousQueryAnErrorIsReportedUnderTheNameOfTheReferences) {
    addQuery(u"Q", u"顧客");
    addAmbiguousQuery();
    addSilentList(addForm(u"F"));
    EXPECT_TRUE(find(u"顧客"));
    ASSERT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_EQ(
        dialogs.lastText(),
        u"場所:オブジェクト参照元情報(フォーム)ｴﾗｰNo:438\r場所とｴﾗｰNoを控えメールをお願いします。\r内容:" +
            RunTimeError(ErrorNumber::PropertyNotSupported, u"SourceObject").description());
    EXPECT_EQ(sien().Pointer.get(), MousePointer::Normal);
    EXPECT_TRUE(sien().Enabled);
    EXPECT_EQ(rows().size(), 1u); // what was found stays
    EXPECT_EQ(reportsShown(u"R_RvLinkTable"), 0);
    EXPECT_TRUE(targetApps.forms.isOpen(u"F"));
}

TEST_F(TableUsageRun, TheNextCleanQuerySkipsErrorsAgain) {
    addAmbiguousQuery();
    addCleanQuery();
    addSilentList(addForm(u"F"));
    EXPECT_EQ(usageOf(u"顧客").size(), 1u);
}

TEST_F(TableUsageRun, AQueryThatIsPassedOverLeavesErrorsReported) {
    addAmbiguousQuery();
    addQuery(u"~sq_fF", u"顧客");
    addForm(u"F").fail(u"RecordSource", 3000);
    EXPECT_TRUE(find(u"顧客"));
    EXPECT_EQ(dialogs.boxes.size(), 1u);
}

// The fatal band begins higher than that of the other analyses.
TEST_F(TableUsageRun, ReportedErrorsFrom2500To2999EndTheProgram) {
    const struct {
        int number;
        bool ends;
    } cases[] = {{2449, false}, {2499, false}, {2500, true}, {2999, true}, {3000, false}};
    for (const auto& [number, ends] : cases) {
        SCOPED_TRACE(number);
        test::ReferenceProgram program;
        program.addQuery(u"Ambiguous", {}).sqlError = ambiguous;
        program.addForm(u"F").fail(u"RecordSource", number);
        EXPECT_EQ(program.run(cmdLinkTable_Click), !ends);
        EXPECT_FALSE(program.desk->failed());
        ASSERT_GE(program.dialogs.boxes.size(), 1u);
        const Text head =
            u"場所:オブジェクト参照元情報(フォーム)ｴﾗｰNo:" + toText(static_cast<long long>(number));
        EXPECT_EQ(program.dialogs.boxes[0].text,
                  head + (ends ? u"\rシステムが不安定です。\r詳細はヘルプを参照下さい。\rシステムを終了します"
                                 u"。\r内容:説明"
                               : u"\r場所とｴﾗｰNoを控えメールをお願いします。\r内容:説明"));
        EXPECT_EQ(program.dialogs.boxes[0].title, u"Relvane97 Ver 2.0");
    }
}

} // namespace
} // namespace relvane
