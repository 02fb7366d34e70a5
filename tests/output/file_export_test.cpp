#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "output/csv_export.h"
#include "support/fakes_desk.h"

namespace relvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

MATCHER_P(endsWith, ending, "") {
    return arg.ends_with(ending);
}

const Text objectHeading = u"分類,ﾃｰﾌﾞﾙの種類,オブジェクト名,説明,更新日,作成日\r\n";

struct Outputs : testing::Test, test::FakeProgram {
    void SetUp() override {
        select();
        for (const auto flag :
             {&AnalysisContext::DoneObject, &AnalysisContext::DoneTable, &AnalysisContext::DoneQuery,
              &AnalysisContext::DoneForm, &AnalysisContext::DoneReport, &AnalysisContext::DoneMacro,
              &AnalysisContext::DoneModule}) {
            context().*flag = 1;
        }
        press(form().m9);
        dialogs.boxes.clear();
        dialogs.fileDialogs.clear();
        store.log.clear();
    }
    FrmOut& out() { return desk->frmOut; }
    // A row whose fields stand in this order.
    void add(const Text& table, const std::vector<Value>& values) {
        test::FakeRow row;
        for (const Value& value : values) {
            row.emplace_back(u"column", value);
        }
        store.tables[table].push_back(row);
    }
    void addQuery(const Value& name, const Value& type, const Value& sql) {
        store.tables[u"T_RvQeryInfo"].push_back(
            {{u"QueryName", name}, {u"QueryType", type}, {u"QuerySQL", sql}});
    }
    void addSourceLine(const Value& line) {
        store.tables[u"T_RvModule"].push_back({{u"ObjectName", Text(u"基本")}, {u"Procedure", line}});
    }
    bool save(CommandButton& button, const Text& path) {
        dialogs.files.push_back(path);
        return press(button);
    }
    // What is in the file of that path behind the export.
    Text saved(CommandButton& button, const Text& path) {
        save(button, path);
        return files.exists(path) ? files.text(path) : Text(u"(no file)");
    }
    bool isUsable() { return out().Enabled && out().Pointer == MousePointer::Normal; }
    std::vector<Text> boxTexts() {
        std::vector<Text> texts;
        for (const auto& box : dialogs.boxes) {
            texts.push_back(box.text);
        }
        return texts;
    }
    static Value text(TextView text) { return Text(text); }
    static Value number(std::int64_t number) { return number; }
};

TEST(OutputsMenu, WithoutATargetItAnswersAndTheFormStaysShut) {
    test::FakeProgram program;
    program.start();
    EXPECT_TRUE(program.form().m9.isShown());
    program.press(program.form().m9);
    EXPECT_EQ(program.dialogs.lastText(), u"データベースを選択して下さい。");
    EXPECT_FALSE(program.desk->frmOut.Visible);
}

TEST_F(Outputs, EachDoneFlagOpensItsButtons) {
    struct {
        std::int16_t AnalysisContext::*done;
        std::vector<CommandButton*> buttons;
    } const cases[] = {
        {&AnalysisContext::DoneObject, {&out().cmdOCSV, &out().cmdExObj}},
        {&AnalysisContext::DoneTable, {&out().cmdTCSV, &out().cmdExTbl}},
        {&AnalysisContext::DoneQuery, {&out().cmdQCSV, &out().cmdQText, &out().cmdExQry}},
        {&AnalysisContext::DoneForm, {&out().cmdFCSV}},
        {&AnalysisContext::DoneReport, {&out().cmdRCSV}},
        {&AnalysisContext::DoneMacro, {&out().cmdMCSV}},
        {&AnalysisContext::DoneModule, {&out().cmdMText}},
    };
    for (const auto& each : cases) {
        context().*each.done = 0;
    }
    for (const auto& opened : cases) {
        for (const std::int16_t done : {std::int16_t{2}, noSuchObject}) {
            context().*opened.done = done;
            out().QueryUnload();
            press(form().m9);
            for (const auto& each : cases) {
                for (const CommandButton* button : each.buttons) {
                    EXPECT_EQ(button->Enabled, each.done == opened.done) << button->name();
                }
            }
        }
        context().*opened.done = 0;
    }
}

TEST_F(Outputs, FlagsAreReadWhenTheWindowIsOpenedAndNotWhileItIsOpen) {
    EXPECT_TRUE(out().Visible);
    context().DoneObject = 0;
    press(form().m9);
    EXPECT_TRUE(out().cmdOCSV.Enabled) << "it was open";
    out().QueryUnload();
    EXPECT_FALSE(out().Visible);
    press(form().m9);
    EXPECT_TRUE(out().Visible);
    EXPECT_FALSE(out().cmdOCSV.Enabled);
}

TEST_F(Outputs, CancelWritesNoFileAndShowsNothing) {
    const auto before = files.content;
    for (CommandButton* button : {&out().cmdOCSV, &out().cmdMText}) {
        press(*button);
        EXPECT_THAT(dialogs.boxes, IsEmpty());
        EXPECT_EQ(files.content, before);
        EXPECT_THAT(store.log, IsEmpty());
        EXPECT_TRUE(isUsable());
    }
    EXPECT_EQ(dialogs.fileDialogs.size(), 2u);
}

TEST_F(Outputs, DialogsAskForTheirKindOfFileInTheCurrentFolder) {
    const Text nul(1, u'\0');
    press(out().cmdTCSV);
    press(out().cmdQText);
    ASSERT_EQ(dialogs.fileDialogs.size(), 2u);
    EXPECT_EQ(dialogs.fileDialogs[0].filter, u"ＣＳＶファイル(*.CSV)" + nul + u"*.csv" + nul);
    EXPECT_EQ(dialogs.fileDialogs[0].title, u"ＣＳＶファイルへ保存");
    EXPECT_EQ(dialogs.fileDialogs[1].filter, u"テキストファイル(*.txt)" + nul + u"*.txt" + nul);
    EXPECT_EQ(dialogs.fileDialogs[1].title, u"テキストファイルへ保存");
    for (const auto& dialog : dialogs.fileDialogs) {
        EXPECT_EQ(dialog.initialFolder, files.folder);
    }
}

TEST_F(Outputs, EachListHasItsQueryAndItsHeading) {
    struct {
        CommandButton& button;
        Text source;
        int columns;
        TextView heading;
    } const cases[] = {
        {out().cmdOCSV, u"QE_RvObject", 6, u"分類,ﾃｰﾌﾞﾙの種類,オブジェクト名,説明,更新日,作成日"},
        {out().cmdTCSV, u"QE_RvTable", 6, u"テーブル名,フィールド名,主キー,属性,サイズ,説明"},
        {out().cmdQCSV, u"QE_RvQuery", 6, u"クエリー名,ｸｴﾘｰの種類,フィールド名,属性,サイズ,説明"},
        {out().cmdFCSV, u"QE_RvForm", 6, u"フォーム名,コントロール名,ｺﾝﾄﾛｰﾙの種類,分類,属性,属性値"},
        {out().cmdRCSV, u"QE_RvReport", 6, u"レポート名,コントロール名,ｺﾝﾄﾛｰﾙの種類,分類,属性,属性値"},
        {out().cmdMCSV, u"QE_RvMacro", 5, u"オブジェクト名,マクロ名,条件式,アクション,説明"},
    };
    for (const auto& each : cases) {
        SCOPED_TRACE(each.button.name());
        std::vector<Value> values;
        Text line;
        for (int column = 0; column < each.columns; ++column) {
            values.push_back(number(column));
            line += (column == 0 ? u"" : u",") + toText(static_cast<long long>(column));
        }
        values.push_back(text(u"not asked for"));
        add(each.source, values);
        EXPECT_EQ(saved(each.button, u"C:\\a.csv"), Text(each.heading) + u"\r\n" + line + u"\r\n");
        EXPECT_EQ(dialogs.boxes.back(),
                  (test::FakeDialogs::Box{u"ＣＳＶファイル出力を終了しました", 0, u"Relvane97 Ver 2.0"}));
        EXPECT_EQ(files.closed.back(), u"C:\\a.csv");
        EXPECT_THAT(store.log, ElementsAre(u"open " + each.source, u"close " + each.source));
        store.log.clear();
        EXPECT_TRUE(isUsable());
    }
}

TEST_F(Outputs, LinesAreInCodePage932ByteForByte) {
    add(u"QE_RvObject",
        {text(u"Table"), text(u"Link(Access)"), text(u"得意先ﾏｽﾀ"), text(u"C:\\顧客,\"表\".mdb"),
         DateTime{1997, 9, 12, 18, 5, 0}, DateTime{1997, 1, 2, 0, 0, 0}});
    add(u"QE_RvObject",
        {text(u"Form"), Null{}, text(u"①～10\u301C20\u22121"), text(u""), DateTime{}, Null{}});
    save(out().cmdOCSV, u"a.csv");
    const std::string expected =
        "\x95\xAA\x97\xDE,\xC3\xB0\xCC\xDE\xD9\x82\xCC\x8E\xED\x97\xDE,"
        "\x83\x49\x83\x75\x83\x57\x83\x46\x83\x4E"
        "\x83\x67\x96\xBC,\x90\xE0\x96\xBE,\x8D\x58\x90\x56\x93\xFA,\x8D\xEC\x90\xAC\x93\xFA\r\n"
        "\"Table\",\"Link(Access)\",\"\x93\xBE\x88\xD3\x90\xE6\xCF\xBD\xC0\",\"C:\\\x8C\xDA\x8B\x71,"
        "\"\x95\x5C\""
        ".mdb\",#1997-09-12 18:05:00#,#1997-01-02#\r\n"
        "\"Form\",#NULL#,\"\x87\x40\x81\x60"
        "10\x81\x60"
        "20\x81\x7C"
        "1\",\"\",#1899-12-30#,#NULL#\r\n";
    const Bytes& written = files.content[u"a.csv"];
    EXPECT_EQ(std::string(written.begin(), written.end()), expected);
}

TEST_F(Outputs, CharactersOutsideTheCodePageBecomeQuestionMarks) {
    add(u"QE_RvObject", {text(u"한"), text(u"\U0001F600"), text(u"caf\u00E9"), Null{}, Null{}, Null{}});
    EXPECT_EQ(saved(out().cmdOCSV, u"a.csv"),
              objectHeading + u"\"?\",\"??\",\"caf?\",#NULL#,#NULL#,#NULL#\r\n");
}

TEST_F(Outputs, ValuesAreWrittenAsTheirKindHasIt) {
    EXPECT_EQ(writtenValue(std::nullopt), u"");
    EXPECT_EQ(writtenValue(text(u"")), u"\"\"");
    EXPECT_EQ(writtenValue(text(u"a \"b\", c")), u"\"a \"b\", c\"") << "quotes inside are not doubled";
    EXPECT_EQ(writtenValue(text(u"a\r\nb")), u"\"a\r\nb\"") << "a line break inside stays";
    EXPECT_EQ(writtenValue(true), u"#TRUE#");
    EXPECT_EQ(writtenValue(false), u"#FALSE#");
    EXPECT_EQ(writtenValue(Null{}), u"#NULL#");
    EXPECT_EQ(writtenValue(number(-32768)), u"-32768");
    EXPECT_EQ(writtenValue(0.5), u"0.5");
    EXPECT_EQ(writtenValue(-0.25f), u"-0.25");
    EXPECT_EQ(writtenValue(1e20), u"100000000000000000000") << "plain digits";
    EXPECT_EQ(writtenValue(Currency{12500}), u"1.25");
    EXPECT_EQ(writtenValue(DateTime{1998, 12, 31, 0, 0, 1}), u"#1998-12-31 00:00:01#");
    EXPECT_EQ(writtenValue(DateTime{1998, 12, 31, 0, 0, 0}), u"#1998-12-31#");
}

TEST_F(Outputs, ATextWithACommaStaysInOneField) {
    add(u"QE_RvMacro", {text(u"a,b"), text(u""), text(u""), text(u""), text(u"")});
    EXPECT_THAT(saved(out().cmdMCSV, u"a.csv"), endsWith(Text(u"説明\r\n\"a,b\",\"\",\"\",\"\",\"\"\r\n")));
}

TEST_F(Outputs, ASourceWithoutRowsGivesTheHeadingAloneAndAnEmptyTextFile) {
    EXPECT_EQ(saved(out().cmdOCSV, u"a.csv"), objectHeading);
    EXPECT_EQ(saved(out().cmdQText, u"a.txt"), u"");
    EXPECT_EQ(saved(out().cmdMText, u"b.txt"), u"");
    EXPECT_THAT(boxTexts(), ElementsAre(u"ＣＳＶファイル出力を終了しました", u"テキスト出力を終了しました",
                                        u"テキスト出力を終了しました"));
}

TEST_F(Outputs, QueriesAreWrittenWithTheirNameAndTheirTextAsItStands) {
    addQuery(text(u"Q 受注"), text(u"選択クエリー"), text(u"SELECT *\r\nFROM 受注;\r\n"));
    addQuery(text(u"Q 合計"), text(u"?"), Null{});
    addQuery(text(u"Q 空"), text(u""), text(u""));
    EXPECT_EQ(saved(out().cmdQText, u"a.txt"), u"クエリー名：Q 受注(選択クエリー)\r\n"
                                               u"SELECT *\r\nFROM 受注;\r\n\r\n"
                                               u"クエリー名：Q 合計(?)\r\n"
                                               u"\r\n"
                                               u"クエリー名：Q 空()\r\n"
                                               u"\r\n");
}

TEST_F(Outputs, ModulesAreTheirSourceLinesAndNothingElse) {
    addSourceLine(text(u"Sub 開く()"));
    addSourceLine(text(u"    MsgBox \"ﾃｽﾄ\""));
    addSourceLine(text(u"End Sub"));
    EXPECT_EQ(saved(out().cmdMText, u"a.txt"), u"Sub 開く()\r\n    MsgBox \"ﾃｽﾄ\"\r\nEnd Sub\r\n");
}

TEST_F(Outputs, ExtensionIsInSmallLettersAndThereOnce) {
    const std::pair<Text, Text> csv[] = {
        {u"a.CSV", u"a.csv"},     {u"a.csv", u"a.csv"},         {u"a", u"a.csv"},
        {u"a.txt", u"a.txt.csv"}, {u"a.csv.csv", u"a.csv.csv"}, {u"mycsv", u"m.csv"}};
    for (const auto& [typed, written] : csv) {
        files.content.clear();
        save(out().cmdOCSV, typed);
        EXPECT_TRUE(files.exists(written)) << toUtf8(typed);
        EXPECT_EQ(files.content.size(), 1u);
    }
    const std::pair<Text, Text> text[] = {{u"mytxt", u"m.txt"},
                                          {u"data.txt.txt", u"data.txt.txt"},
                                          {u"a.TXT", u"a.txt"},
                                          {u"a.Txt", u"a.txt"},
                                          {u"a.csv", u"a.csv.txt"}};
    for (const auto& [typed, written] : text) {
        files.content.clear();
        save(out().cmdQText, typed);
        EXPECT_TRUE(files.exists(written)) << toUtf8(typed);
        EXPECT_EQ(files.content.size(), 1u);
    }
}

TEST_F(Outputs, ThreeLettersAloneAreAnError) {
    save(out().cmdMText, u"txt");
    EXPECT_EQ(dialogs.lastText(), u"場所:テキスト出力(モジュール)ｴﾗｰNo:5\r"
                                  u"場所、ｴﾗｰNo、内容を控えメールをお願いします。\r"
                                  u"内容:プロシージャの呼び出し、または引数が不正です。");
    EXPECT_TRUE(isUsable());
}

TEST_F(Outputs, AFileThatIsThereIsReplacedWithoutAQuestion) {
    files.put(u"a.csv", u"an earlier and much longer list than that of today, which has a heading alone");
    EXPECT_EQ(saved(out().cmdOCSV, u"a.csv"), objectHeading);
    EXPECT_EQ(dialogs.boxes.size(), 1u);
}

TEST_F(Outputs, WindowIsClosedWithTheHourglassUntilTheMessageIsAnswered) {
    bool enabled = true;
    MousePointer pointer = MousePointer::Normal;
    dialogs.whileBoxIsOpen = [&] {
        enabled = out().Enabled;
        pointer = out().Pointer;
    };
    save(out().cmdOCSV, u"a.csv");
    EXPECT_FALSE(enabled);
    EXPECT_EQ(pointer, MousePointer::Hourglass);
    EXPECT_TRUE(isUsable());
    EXPECT_TRUE(form().Enabled);
}

TEST_F(Outputs, EachCommandReportsErrorsUnderItsName) {
    const std::pair<CommandButton&, TextView> cases[] = {
        {out().cmdQText, u"テキスト出力(SQL)"},       {out().cmdMText, u"テキスト出力(モジュール)"},
        {out().cmdOCSV, u"ＣＳＶ出力(オブジェクト)"}, {out().cmdTCSV, u"ＣＳＶ出力(テーブル)"},
        {out().cmdQCSV, u"ＣＳＶ出力(クエリー)"},     {out().cmdFCSV, u"ＣＳＶ出力(フォーム)"},
        {out().cmdRCSV, u"ＣＳＶ出力(レポート)"},     {out().cmdMCSV, u"ＣＳＶ出力(マクロ)"},
    };
    files.outputError = 76;
    for (const auto& [button, place] : cases) {
        EXPECT_TRUE(save(button, u"D:\\none\\a"));
        EXPECT_TRUE(dialogs.lastText().starts_with(u"場所:" + Text(place) +
                                                   u"ｴﾗｰNo:76\r場所、ｴﾗｰNo、内容を控えメールをお願いします。"
                                                   u"\r内容:"))
            << toUtf8(dialogs.lastText());
        EXPECT_EQ(dialogs.boxes.back().title, u"Relvane97 Ver 2.0");
        EXPECT_TRUE(isUsable());
    }
    EXPECT_EQ(dialogs.boxes.size(), std::size(cases)) << "and nothing says that it is finished";
}

TEST_F(Outputs, ErrorsOfAccessEndTheProgramAndTheirNeighboursDoNot) {
    for (const auto& [number, ends] : {std::pair{2448, false}, {2449, true}, {2999, true}, {3000, false}}) {
        test::FakeProgram program;
        program.select();
        program.context().DoneObject = 1;
        program.press(program.form().m9);
        program.dialogs.boxes.clear();
        program.files.outputError = number;
        program.dialogs.files.push_back(u"a.csv");
        EXPECT_EQ(program.press(program.desk->frmOut.cmdOCSV), !ends) << number;
        EXPECT_EQ(program.dialogs.boxes.size(), ends ? 2u : 1u);
        EXPECT_EQ(program.dialogs.boxes[0].text.find(u"システムを終了します。") != Text::npos, ends);
        EXPECT_TRUE(program.dialogs.boxes[0].text.starts_with(u"場所:ＣＳＶ出力(オブジェクト)ｴﾗｰNo:"));
        if (ends) {
            EXPECT_EQ(program.dialogs.boxes[1].text, u"終了します。");
        }
    }
}

TEST_F(Outputs, FileStaysAsFarAsItWasWrittenWhenTheDiskIsFull) {
    add(u"QE_RvObject", std::vector<Value>(6, text(u"a")));
    files.outputRoom = 53; // bytes: the heading and its line end have 52
    save(out().cmdOCSV, u"a.csv");
    EXPECT_EQ(files.text(u"a.csv"), objectHeading + u"\"");
    EXPECT_TRUE(dialogs.lastText().starts_with(u"場所:ＣＳＶ出力(オブジェクト)ｴﾗｰNo:61\r"));
    EXPECT_EQ(dialogs.boxes.size(), 1u);
    EXPECT_TRUE(isUsable());
    files.outputRoom = SIZE_MAX;
    EXPECT_EQ(saved(out().cmdOCSV, u"a.csv"), objectHeading + u"\"a\",\"a\",\"a\",\"a\",\"a\",\"a\"\r\n");
}

TEST_F(Outputs, ASourceThatCannotBeReadLeavesAFileThatIsThereAlone) {
    files.put(u"a.txt", u"an earlier one");
    store.missingTables = {u"T_RvModule"};
    EXPECT_EQ(saved(out().cmdMText, u"a.txt"), u"an earlier one");
    EXPECT_TRUE(dialogs.lastText().starts_with(u"場所:テキスト出力(モジュール)ｴﾗｰNo:3078\r"));
}

TEST_F(Outputs, NeitherTheTargetNorTheWorkDatabaseIsWrittenOver) {
    files.put(u"C:\\target.csv", u"rows of the target");
    select(u"C:\\target.csv");
    context().DoneObject = 1;
    const Bytes before = files.content[u"C:\\target.csv"];
    save(out().cmdOCSV, u"C:\\target.CSV");
    EXPECT_EQ(files.content[u"C:\\target.csv"], before);
    EXPECT_TRUE(dialogs.lastText().starts_with(u"場所:ＣＳＶ出力(オブジェクト)ｴﾗｰNo:70\r"));
    EXPECT_TRUE(isUsable());
}

TEST_F(Outputs, EnterWalksTheButtonsThatAreOpen) {
    context().DoneTable = 0;
    out().QueryUnload();
    press(form().m9);
    out().cmdOCSV.SetFocus();
    int enter = 13;
    out().KeyPress(enter);
    EXPECT_EQ(enter, 0);
    EXPECT_EQ(out().ActiveControl, &out().cmdQCSV);
}

} // namespace
} // namespace relvane
