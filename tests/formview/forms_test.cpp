#include <gmock/gmock.h>

#include "drawn_target.h"
#include "platform/runtime_error.h"
#include "sample_builder/database_writer.h"
#include "sample_builder/many_forms.h"

namespace relvane::test {
namespace {

constexpr std::uint32_t face = 0xC0C0C0, shadow = 0x808080, white = 0xFFFFFF, black = 0, red = 0xFF0000;

// A form of 300 x 200 pixels without bars, whose ground is that of a button.
std::string formOf(std::string_view controls, std::string_view settings = {}, std::string_view more = {}) {
    std::string text = R"(database
  code-page 932
table 客
  column 番号 long
  column 名前 text 40
  column 有効 boolean
  column 区分 long
  index 主 primary 番号
  row 1 MMMM yes 2
  row 2 WWWW no 1
  row 3 HHHH yes 1
)";
    text += more;
    text += "form 画面\n  set DefaultView 0 Width 4500 RecordSelectors no NavigationButtons no ScrollBars 0 "
            "DividingLines no\n";
    text += settings;
    text += "\n  Section 詳細 Height 3000 BackColor -2147483633\n";
    text += controls;
    return text + "\n";
}

Picture drawn(std::string_view controls, std::string_view settings = {}, std::string_view more = {}) {
    return DrawnTarget(formOf(controls, settings, more)).use(u"画面");
}

int errorOf(DrawnTarget& target, TextView form) {
    return skipErrors([&] { target.use(form); });
}

TEST(FormViews, AFormIsAsBigAsItsSections) {
    const Picture picture = drawn("");
    EXPECT_EQ(picture.width, 300);
    EXPECT_EQ(picture.height, 200);
    EXPECT_EQ(countOf(picture, face), 300 * 200);
}

TEST(FormViews, TheWholeWindowHasATitleBarAndAnEdge) {
    DrawnTarget target(formOf("", "  set Caption \"受注\""));
    const Picture picture = target.view().draw(u"画面", {.wholeWindow = true});
    EXPECT_EQ(picture.width, 308);
    EXPECT_EQ(picture.height, 226);
    EXPECT_EQ(picture.at(4, 4), 0x000080U);                  // from where the colour runs to a lighter one
    EXPECT_GE(countOf(picture, white, {24, 4, 60, 18}), 10); // the letters
    DrawnTarget bare(formOf("", "  set BorderStyle 0"));
    EXPECT_EQ(bare.view().draw(u"画面", {.wholeWindow = true}).height, 200);
}

TEST(FormViews, RecordSelectorAndNavigationBarTakeTheirPlace) {
    const Picture picture = drawn("", "  set RecordSelectors yes NavigationButtons yes RecordSource 客");
    EXPECT_EQ(picture.width, 317);
    EXPECT_EQ(picture.height, 217);
    EXPECT_GT(inkIn(picture, {0, 0, 17, 30}), 8);     // the arrow of the record
    EXPECT_GT(inkIn(picture, {0, 200, 200, 17}), 60); // texts and buttons
}

TEST(FormViews, EachSpecialEffectStandsAtTheEdgeOfItsBox) {
    const Picture picture = drawn(R"(
  Rectangle 凸 at 300 300 size 900 450 SpecialEffect 1 BackStyle 0
  Rectangle 凹 at 1500 300 size 900 450 SpecialEffect 2 BackStyle 0
  Rectangle 溝 at 2700 300 size 900 450 SpecialEffect 3 BackStyle 0
  Rectangle 影 at 300 1500 size 900 450 SpecialEffect 4 BackStyle 0
  Rectangle 彫 at 1500 1500 size 900 450 SpecialEffect 5 BackStyle 0
  Rectangle 平 at 2700 1500 size 900 450 SpecialEffect 0 BackStyle 0 BorderColor 255 BorderWidth 3)");
    EXPECT_EQ(picture.at(21, 20), white);
    EXPECT_EQ(picture.at(79, 49), black);
    EXPECT_EQ(picture.at(100, 20), shadow);
    EXPECT_EQ(picture.at(101, 21), black);
    EXPECT_EQ(picture.at(159, 49), white);
    EXPECT_EQ(picture.at(180, 20), shadow);
    EXPECT_EQ(picture.at(181, 21), white);
    EXPECT_EQ(picture.at(82, 120), shadow);
    EXPECT_EQ(picture.at(130, 128), shadow);
    EXPECT_EQ(picture.at(130, 129), white);
    EXPECT_EQ(picture.at(130, 100), face);
    EXPECT_EQ(picture.at(178, 110), red); // half of it outside
    EXPECT_EQ(picture.at(181, 110), red);
    EXPECT_EQ(picture.at(182, 110), face);
}

TEST(FormViews, AnInvisibleControlIsLeftOutInUseAndShownByTheDesigner) {
    DrawnTarget target(formOf("  Rectangle 赤 at 300 300 size 900 450 BackColor 255 BackStyle 1 Visible no\n"
                              "  Label 紙 at 1500 300 size 900 450 BackColor 255 BackStyle 1 DisplayWhen 1"));
    EXPECT_EQ(countOf(target.use(u"画面"), red), 0);
    EXPECT_GT(countOf(target.design(u"画面"), red), 2000);
}

TEST(FormViews, BoundControlsShowTheFirstRecord) {
    constexpr std::string_view controls = R"(
  TextBox 名前 at 300 300 size 1500 300 ControlSource 名前
  CheckBox 有効 at 300 900 ControlSource 有効
  OptionGroup 区分 at 2400 300 size 1800 1200 ControlSource 区分
  > OptionButton 一 at 2550 450 OptionValue 1
  > OptionButton 二 at 2550 900 OptionValue 2)";
    const Picture bound = drawn(controls, "  set RecordSource 客"), unbound = drawn(controls);
    EXPECT_GT(inkIn(bound, {22, 22, 96, 16}), 40);
    EXPECT_GT(inkIn(bound, {22, 60, 12, 13}), inkIn(unbound, {22, 60, 12, 13}) + 10); // the tick
    EXPECT_GT(inkIn(bound, {171, 60, 12, 12}), inkIn(bound, {171, 30, 12, 12}) + 8);  // the second choice
}

TEST(FormViews, AFieldThatIsNotThereIsNamedSo) {
    const Picture picture =
        drawn("  TextBox 欄 at 300 300 size 1500 300 ControlSource 無い欄", "  set RecordSource 客");
    EXPECT_GT(inkIn(picture, {22, 22, 96, 16}), 40); // #Name?
}

TEST(FormViews, ControlsAreComputedFromFieldsAndFromEachOther) {
    const auto ink = [](std::string_view source) {
        const Picture picture =
            drawn("  TextBox 欄 at 300 300 size 1800 300 ControlSource \"" + std::string(source) +
                      "\"\n  TextBox 二倍 at 300 900 size 1800 300 ControlSource \"=[番号]*2\"",
                  "  set RecordSource 客");
        return inkIn(picture, {22, 22, 116, 16});
    };
    const int one = ink("='2'"), none = ink("=無い関数(1)");
    EXPECT_EQ(none, 0);
    EXPECT_GT(one, 3);
    EXPECT_EQ(ink("=[二倍] & ''"), one);
    EXPECT_EQ(ink("=IIf(IsNull([名前]),'','2')"), one);
    EXPECT_EQ(ink("=[欄]"), 0);
    EXPECT_EQ(ink("=1/0"), 0);
}

TEST(FormViews, ControlsThatNameEachOtherInACircleAreBlank) {
    const Picture picture = drawn("  TextBox 甲 at 300 300 size 1500 300 ControlSource \"=[乙]+1\"\n"
                                  "  TextBox 乙 at 300 900 size 1500 300 ControlSource \"=[甲]+1\"",
                                  "  set RecordSource 客");
    EXPECT_EQ(inkIn(picture, {22, 22, 96, 16}), 0);
}

// Each step of the way round would be ten ways.
TEST(FormViews, ControlsThatNameEachOtherManyTimesOverComeToAnEnd) {
    const auto sumOf = [](const std::string& name) {
        std::string sum = "=[" + name + "]";
        for (int i = 0; i < 9; ++i) {
            sum += "+[" + name + "]";
        }
        return sum;
    };
    const Picture picture =
        drawn("  TextBox 甲 at 300 300 size 1500 300 ControlSource \"" + sumOf("乙") +
                  "\"\n  TextBox 乙 at 300 900 size 1500 300 ControlSource \"" + sumOf("甲") + "\"",
              "  set RecordSource 客");
    EXPECT_EQ(inkIn(picture, {22, 22, 96, 16}), 0);
}

TEST(FormViews, TotalsAreMadeOfAllRecordsAlsoOfASingleForm) {
    const auto ink = [](std::string_view source) {
        return inkIn(drawn("  TextBox 欄 at 300 300 size 1800 300 TextAlign 1 ControlSource \"" +
                               std::string(source) + "\"",
                           "  set RecordSource 客"),
                     {22, 22, 116, 16});
    };
    EXPECT_EQ(ink("=Sum([番号])"), ink("=6")); // 1 + 2 + 3
    EXPECT_EQ(ink("=Count(*) & ''"), ink("=3 & ''"));
}

TEST(FormViews, AComboBoxShowsTheColumnThatIsNotHidden) {
    constexpr auto combo =
        "  ComboBox 得意先 at 300 300 size 2100 300 ControlSource 番号 RowSource \"SELECT 番号, 名前 "
        "FROM 客\" ColumnCount 2 ColumnWidths ";
    const Picture name = drawn(combo + std::string("\"0;1500\""), "  set RecordSource 客");
    const Picture number = drawn(combo + std::string("\"500;1500\""), "  set RecordSource 客");
    EXPECT_GT(inkIn(name, {22, 22, 110, 16}), inkIn(number, {22, 22, 110, 16}) + 40);
}

TEST(FormViews, AListBoxShowsItsRowsAndAScrollBarWhenTheyAreMore) {
    const auto list = [](std::string_view items) {
        return drawn("  ListBox 一覧 at 300 300 size 1500 900 RowSourceType \"Value List\" RowSource \"" +
                     std::string(items) + "\"");
    };
    EXPECT_GT(inkIn(list("MMM;WWW"), {22, 22, 60, 30}), 60);
    EXPECT_LT(countOf(list("MMM;WWW"), face, {104, 22, 14, 56}), 10);
    EXPECT_GT(countOf(list("a;b;c;d;e;f;g;h;i"), face, {104, 22, 14, 56}), 200);
}

TEST(FormViews, AListOfMarkedRowsMarksTheValueOfTheRecord) {
    const Picture picture =
        drawn("  ListBox 一覧 at 300 300 size 1500 900 ControlSource 番号 RowSource \"SELECT 番号 FROM 客\"",
              "  set RecordSource 客");
    EXPECT_GT(countOf(picture, 0x000080, {20, 20, 100, 20}), 200);
}

TEST(FormViews, ATabControlShowsItsFirstVisiblePage) {
    const auto tab = [](std::string_view first) {
        return drawn("  Tab 札 at 300 300 size 3000 2100\n"
                     "  > Page 一 at 400 700 size 2800 1600 " +
                     std::string(first) +
                     "\n"
                     "  >> Rectangle 赤 at 600 900 size 900 450 BackColor 255 BackStyle 1\n"
                     "  > Page 二 at 400 700 size 2800 1600 Caption 二\n"
                     "  >> Rectangle 青 at 600 900 size 900 450 BackColor 16711680 BackStyle 1");
    };
    const Picture first = tab("Caption \"一(&1)\""), second = tab("Visible no");
    EXPECT_GT(countOf(first, red), 1500);
    EXPECT_EQ(countOf(first, 0x0000FF), 0);
    EXPECT_EQ(countOf(second, red), 0);
    EXPECT_GT(countOf(second, 0x0000FF), 1500);
}

TEST(FormViews, LinesRunAsTheySlant) {
    const Picture picture = drawn(R"(
  Line 下り at 300 300 size 1500 1500
  Line 上り at 2400 300 size 1500 1500 LineSlant yes
  Line 横 at 300 2400 size 1500 0 BorderColor 255 BorderWidth 2)");
    EXPECT_GT(inkIn(picture, {20, 20, 20, 20}), 10);
    EXPECT_EQ(inkIn(picture, {100, 20, 20, 20}), 0);
    EXPECT_GT(inkIn(picture, {240, 20, 20, 20}), 10);
    EXPECT_EQ(inkIn(picture, {160, 20, 20, 20}), 0);
    EXPECT_EQ(countOf(picture, red, {20, 158, 100, 6}), 100 * 3);
}

TEST(FormViews, APageBreakEndsTheFirstPageInUseAlone) {
    DrawnTarget target(formOf("  PageBreak 改 at 0 1500"));
    EXPECT_EQ(target.use(u"画面").height, 100);
    EXPECT_GT(target.design(u"画面").height, 200);
}

TEST(FormViews, AButtonIsRaisedAndATransparentOneIsNotSeen) {
    const Picture picture = drawn("  CommandButton 押 at 300 300 size 1500 450 Caption \"MM&M\"\n"
                                  "  CommandButton 透 at 300 1500 size 1500 450 Transparent yes Caption MMM");
    EXPECT_EQ(picture.at(20, 20), white);
    EXPECT_EQ(picture.at(119, 49), black);
    EXPECT_GT(inkIn(picture, {30, 24, 80, 22}), 30);
    EXPECT_EQ(inkIn(picture, {20, 100, 100, 30}), 0);
}

TEST(FormViews, PicturesOfControlsAppearInTheirSizeModes) {
    constexpr auto image =
        "  Image 絵 at 300 300 size 1500 1500 PictureAlignment 0 BorderStyle 0 BackStyle 0 "
        "PictureData bitmap:16x16x24 SizeMode ";
    const auto coloured = [&](const char* mode, Part part) {
        const Picture picture = drawn(image + std::string(mode));
        return part.width * part.height - countOf(picture, face, part);
    };
    EXPECT_GT(coloured("0", {20, 20, 16, 16}), 200);
    EXPECT_EQ(coloured("0", {40, 40, 80, 80}), 0);
    EXPECT_GT(coloured("1", {40, 40, 80, 80}), 6000);
    EXPECT_GT(coloured("3", {40, 40, 80, 80}), 6000);
}

TEST(FormViews, ATiledPictureFillsTheGroundOfTheForm) {
    const Picture tiled = drawn("", "  set PictureData bitmap:16x16x24 PictureTiling yes");
    const Picture single = drawn("", "  set PictureData bitmap:16x16x24 PictureAlignment 0");
    EXPECT_LT(countOf(tiled, face), 3000);
    EXPECT_GE(countOf(single, face), 300 * 200 - 256);
}

TEST(FormViews, AMetafileIsDrawn) {
    const Picture picture =
        drawn("  Image 絵 at 300 300 size 1500 1500 BorderStyle 0 BackStyle 0 SizeMode 1 PictureData "
              "metafile:100x100");
    EXPECT_GT(100 * 100 - countOf(picture, face, {20, 20, 100, 100}), 100);
}

constexpr std::string_view continuous =
    "  set DefaultView 1 RecordSource 客 RecordSelectors yes ScrollBars 2";

TEST(FormViews, AContinuousFormRepeatsItsDetailAndEndsWithTheNewRecord) {
    std::string text = formOf("  TextBox 名前 at 300 75 size 1500 300 ControlSource 名前", continuous);
    text.replace(text.find("Height 3000"), 11, "Height 450");
    DrawnTarget target(text);
    const Picture picture = target.use(u"画面");
    EXPECT_EQ(picture.height, 4 * 30);
    for (const int row : {0, 1, 2}) {
        EXPECT_GT(inkIn(picture, {39, row * 30 + 7, 90, 16}), 30) << row;
    }
    EXPECT_EQ(inkIn(picture, {41, 3 * 30 + 8, 90, 13}), 0);
    EXPECT_GT(inkIn(picture, {0, 3 * 30, 17, 20}), 8); // the asterisk
}

TEST(FormViews, ADatasheetHasAHeadingAndARowForEachRecord) {
    const Picture picture =
        drawn("  TextBox 名前 at 300 300 size 1500 300 ControlSource 名前 ColumnWidth 1500\n"
              "  label 氏名\n"
              "  TextBox 番号 at 300 900 size 1500 300 ControlSource 番号 ColumnHidden yes",
              "  set DefaultView 2 RecordSource 客 RecordSelectors yes");
    EXPECT_LT(picture.width, 160);
    EXPECT_GT(inkIn(picture, {20, 0, 96, 18}), 20);
    EXPECT_GT(inkIn(picture, {20, 20, 96, 54}), 100);
}

constexpr std::string_view lines = R"(table 明細
  column 客番号 long
  column 品 text 20
  row 2 MMMMMMMM
  row 1 iiii
form 明細画面
  set DefaultView 1 Width 2000 RecordSource 明細 RecordSelectors no NavigationButtons no ScrollBars 0 AllowAdditions no
  Section 詳細 Height 300
  TextBox 品 at 0 0 size 1800 270 ControlSource 品 BorderStyle 0
)";

TEST(FormViews, ASubformShowsTheRecordsThatBelongToTheMainOne) {
    constexpr auto subform = "  Subform 明細 at 300 300 size 2400 1500 SourceObject \"Form.明細画面\" "
                             "LinkChildFields 客番号 LinkMasterFields 番号";
    const Picture linked = drawn(subform, "  set RecordSource 客", lines);
    EXPECT_GT(inkIn(linked, {21, 21, 120, 18}), 5);
    EXPECT_LT(inkIn(linked, {21, 21, 120, 18}), 60);
    EXPECT_EQ(inkIn(linked, {21, 42, 120, 50}), 0);
    const Picture free =
        drawn("  Subform 明細 at 300 300 size 2400 1500 SourceObject \"Form.明細画面\"", "", lines);
    EXPECT_GT(inkIn(free, {21, 21, 120, 40}), 60);
}

TEST(FormViews, MoneyWithoutAFormatHasThatOfTheSystem) {
    const auto ink = [](std::string_view source, std::string_view more = {}) {
        return inkIn(drawn("  TextBox 欄 at 300 300 size 1800 300 TextAlign 1 ControlSource \"" +
                               std::string(source) + "\" " + std::string(more),
                           "  set RecordSource 客"),
                     {22, 22, 116, 16});
    };
    EXPECT_EQ(ink("=CCur(1234)"), ink("=1234", "Format Currency"));
    EXPECT_EQ(ink("=CCur(1234)", "DecimalPlaces 2"), ink("=1234", "Format Currency DecimalPlaces 2"));
    EXPECT_EQ(ink("=CCur(1234)", "Format \"0\""), ink("='1234'"));
    EXPECT_GT(ink("=CCur(1234)"), ink("='1234'"));
}

TEST(FormViews, AControlMayNameOneInASubform) {
    const auto ink = [](std::string_view source) {
        const Picture picture = drawn(
            "  Subform 明細 at 300 1200 size 2400 1500 SourceObject \"Form.明細画面\" LinkChildFields 客番号 "
            "LinkMasterFields 番号\n  TextBox 欄 at 300 300 size 1800 300 ControlSource \"" +
                std::string(source) + "\"",
            "  set RecordSource 客", lines);
        return inkIn(picture, {22, 22, 116, 16});
    };
    EXPECT_GT(ink("='iiii'"), 3);
    EXPECT_EQ(ink("=[明細].[Form]![品]"), ink("='iiii'"));
    EXPECT_EQ(ink("=明細.Form!無い"), 0);
}

// The second subform goes by the record of the first, and that by the main form.
TEST(FormViews, ASubformMayGoByTheRecordOfAnother) {
    const Picture picture =
        drawn("  Subform 先 at 300 150 size 2400 600 SourceObject \"Form.明細画面\" LinkChildFields 客番号 "
              "LinkMasterFields 番号\n"
              "  Subform 後 at 300 1200 size 2400 600 SourceObject \"Form.明細画面\" LinkChildFields 品 "
              "LinkMasterFields \"[先].[Form]![品]\"",
              "  set RecordSource 客", lines);
    EXPECT_GT(inkIn(picture, {21, 11, 120, 18}), 5);
    EXPECT_EQ(inkIn(picture, {21, 81, 120, 18}), inkIn(picture, {21, 11, 120, 18}));
}

TEST(FormViews, FormsThatHoldEachOtherEnd) {
    const Picture picture =
        drawn("  Subform 中 at 300 300 size 3600 2400 SourceObject \"Form.画面\"\n"
              "  Rectangle 赤 at 0 0 size 300 300 BackColor 255 BackStyle 1 BorderStyle 0");
    EXPECT_EQ(countOf(picture, red), 3 * 20 * 20); // the form, in it the form, and in that once more
}

TEST(FormViews, ASubformThatIsNotThereIsEmpty) {
    const Picture picture = drawn("  Subform 中 at 300 300 size 1500 1500 SourceObject \"Form.無い\"");
    EXPECT_GT(countOf(picture, white, {21, 21, 98, 98}), 98 * 98 - 4);
}

TEST(FormViews, ARecordSourceThatNamesAnotherFormIsError2450InUseAlone) {
    DrawnTarget target(
        formOf("", "  set RecordSource \"SELECT * FROM 客 WHERE 番号=[Forms]![主画面]![番号]\""));
    EXPECT_EQ(errorOf(target, u"画面"), 2450);
    EXPECT_EQ(skipErrors([&] { target.view().requireOpens(u"画面"); }), 2450);
    EXPECT_GT(target.design(u"画面").width, 300);
}

TEST(FormViews, AReferenceBelowAQueryIsFoundAndOneToTheFormItselfIsNone) {
    DrawnTarget query(
        formOf("", "  set RecordSource 絞込",
               "query 絞込 select\n  from 客\n  field \"客.*\"\n  where \"客.番号=Forms!主画面!番号\"\n"));
    EXPECT_EQ(errorOf(query, u"画面"), 2450);
    DrawnTarget own(formOf("", "  set RecordSource \"SELECT * FROM 客 WHERE 番号=[Forms]![画面]![番号]\""));
    EXPECT_EQ(errorOf(own, u"画面"), 0);
}

TEST(FormViews, ASubformMayReferToItsMainForm) {
    std::string more(lines);
    more.replace(more.find("RecordSource 明細"), 19,
                 "RecordSource \"SELECT * FROM 明細 WHERE 客番号=Forms!画面!番号\"");
    DrawnTarget target(formOf("  Subform 明細 at 300 300 size 2400 1500 SourceObject \"Form.明細画面\"",
                              "  set RecordSource 客", more));
    EXPECT_EQ(errorOf(target, u"画面"), 0);
}

TEST(FormViews, AFormThatIsNotThereIsError2102) {
    DrawnTarget target(formOf(""));
    EXPECT_EQ(errorOf(target, u"無い"), 2102);
}

TEST(FormViews, ARecordSourceThatCannotBeReadLeavesItsControlsBlank) {
    const Picture picture = drawn("  TextBox 名前 at 300 300 size 1500 300 ControlSource 名前",
                                  "  set RecordSource \"SELECT 名前 FROM 客 UNION SELECT 名前 FROM 客\"");
    EXPECT_EQ(inkIn(picture, {22, 22, 96, 16}), 0);
}

TEST(FormViews, SizesBeyondAllMeasureAreCut) {
    const Picture picture = drawn("  Rectangle 大 at -30000 -30000 size 32767 32767\n"
                                  "  TextBox 逆 at 300 300 size -500 -500\n"
                                  "  TextBox 点 at 300 300 size 0 0",
                                  "  set Width 32767");
    EXPECT_EQ(picture.width, 2184);
    EXPECT_EQ(picture.height, 200);
    EXPECT_EQ(drawn("", "  set Width -5").width, 16);
}

TEST(FormViews, TheDesignerShowsSourcesAndUnboundOnesAsSuch) {
    DrawnTarget target(formOf("  TextBox 欄 at 300 300 size 1500 300 ControlSource MMMM\n"
                              "  TextBox 空 at 300 900 size 1500 300"));
    const Picture picture = target.design(u"画面");
    constexpr int left = 17, top = 17 + 16; // of the section
    EXPECT_GT(inkIn(picture, {left + 22, top + 22, 96, 16}), 30);
    EXPECT_GT(inkIn(picture, {left + 22, top + 62, 96, 16}), 20);
    EXPECT_GT(countOf(picture, shadow, {left + 200, top, 90, 190}), 90); // the grid
    EXPECT_EQ(picture.at(left + 300 + 5, top + 100), shadow);            // the empty ground beside the form
}

TEST(FormViews, AFormOf700ControlsIsDrawn) {
    const TemporaryFolder folder;
    samples::writeDatabase(samples::manyForms(1, 700), folder / "many.mdb");
    DrawnTarget target(folder / "many.mdb");
    const Text form = target.forms().front();
    for (const bool design : {false, true}) {
        const Picture picture = target.view().draw(form, {.design = design});
        EXPECT_GT(inkIn(picture, {0, 0, picture.width, picture.height}), 700);
    }
}

// Every form of a file in both views: nothing is raised but 2450, and something is seen.
void drawAll(const std::filesystem::path& file, std::size_t forms) {
    DrawnTarget target(file);
    EXPECT_EQ(target.forms().size(), forms);
    for (const Text& form : target.forms()) {
        const Picture design = target.design(form);
        EXPECT_LT(countOf(design, design.at(design.width / 2, design.height / 2)),
                  design.width * design.height)
            << toUtf8(form);
        const int error = skipErrors([&] {
            const Picture picture = target.view().draw(form, {.wholeWindow = true});
            EXPECT_GE(picture.width, 100) << toUtf8(form);
            EXPECT_EQ(picture.pixels.size(),
                      static_cast<std::size_t>(picture.width) * static_cast<std::size_t>(picture.height));
        });
        EXPECT_TRUE(error == 0 || error == 2450) << toUtf8(form) << " " << error;
    }
}

TEST(FormViews, EveryFormOfTheSampleIsDrawn) {
    const auto file = ownSample("juchu.mdb");
    drawAll(file, DrawnTarget(file).forms().size());
}

TEST(FormViews, EveryFormOfARealApplicationIsDrawn) {
    if (const auto file = realSample("access97/nwind.mdb")) {
        drawAll(*file, 21);
        DrawnTarget target(*file);
        const Picture employees = target.use(u"Employees");
        const Part photo{345, 100, 200, 200};
        EXPECT_LT(countOf(employees, face, photo), 200 * 200 / 4); // the picture of the first employee
        const Picture customers = target.use(u"Customers");
        EXPECT_LT(countOf(customers, face),
                  customers.width * customers.height / 3); // the map behind the form
    }
    if (const auto file = realSample("access97/afr.mdb")) {
        drawAll(*file, 6);
    }
}

// Every text box of the order and of its lines is computed or read: fields, expressions of a query, a total of the
// subform, a sum of two controls.
TEST(FormViews, ALaterApplicationShowsWhatItComputes) {
    const auto file = realSample("later/northwind-2000-ja.mdb");
    if (!file) {
        return;
    }
    drawAll(*file, 22);
    DrawnTarget target(*file);
    const Picture order = target.use(u"受注"), quarters = target.use(u"四半期売上高");
    EXPECT_GT(inkIn(order, {490, 165, 70, 12}), 40);      // the price of the first line
    EXPECT_GT(inkIn(order, {475, 206, 90, 12}), 40);      // all lines
    EXPECT_GT(inkIn(order, {475, 246, 90, 12}), 40);      // with freight
    EXPECT_GT(inkIn(quarters, {150, 120, 330, 60}), 150); // a crosstab
}

// A form of Access 2010: its logo is a file of its own, and every second record has another ground.
TEST(FormViews, ALaterFormHasItsLogoAndTheGroundOfEverySecondRecord) {
    const auto file = realSample("later/formPropTest.accdb");
    if (!file) {
        return;
    }
    DrawnTarget target(*file);
    const Picture picture = target.use(u"F_Table1");
    constexpr std::uint32_t headerGround = 0xB8D4F0;
    const Part logo{17 + 20, 4, 46, 30};
    EXPECT_LT(countOf(picture, headerGround, logo), logo.width * logo.height * 3 / 4);
    constexpr int header = 36, record = 158;
    const auto ground = [&](int row) { return picture.at(22, header + row * record + 5); };
    EXPECT_EQ(ground(0), white);
    EXPECT_EQ(ground(1), 0xF2F2F2U);
    EXPECT_EQ(ground(2), white); // the new record
}

} // namespace
} // namespace relvane::test
