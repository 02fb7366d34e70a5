// The pattern of a batch as a file: what is written, what of it is read, and how the window follows.
#include "persist/pattern_file.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "batch_program.h"

namespace relvane {
namespace {

MATCHER_P(beginsWith, beginning, "") {
    return arg.starts_with(beginning);
}

using namespace test;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;

struct Pattern : testing::Test, BatchProgram {
    void SetUp() override {
        addOneOfEach();
        open();
    }
    std::vector<Text> boxTexts() {
        std::vector<Text> texts;
        for (const FakeDialogs::Box& box : dialogs.boxes) {
            texts.push_back(box.text);
        }
        return texts;
    }
};

TEST_F(Pattern, FileHasAKeyAndADigitOnEachOfItsLinesInTheirOrder) {
    context().BatchForm = 1;
    context().BatchMacro = 9;
    EXPECT_EQ(save(), u"OBJECT=0\r\nTABLE=0\r\nQUERY=0\r\nFORM=1\r\nREPORT=0\r\nMACRO=9\r\nPROC=0\r\n"
                      u"MODULE=0\r\nMODSTEP=0\r\nCONTROL=0\r\nFILE=0\r\nCOMMENT=0\r\n"
                      u"mtable=2\r\nmquery=3\r\nmform=1\r\nmreport=1\r\nmmacro=2\r\nmproc=2\r\n"
                      u"mmodule=3\r\nmmodstep=4\r\nmcontrol=1\r\nmfile=1\r\n");
    EXPECT_EQ(dialogs.boxes, (std::vector<FakeDialogs::Box>{
                                 {u"解析パターン登録が完了しました。", 0, u"Relvane97 Ver 2.0"}}));
}

TEST_F(Pattern, DialogsAskInTheCurrentFolder) {
    files.folder = u"C:\\Patterns";
    save(u"");
    press(batch().cmdRead);
    ASSERT_EQ(dialogs.fileDialogs.size(), 3u);
    const Text filter = Text(u"解析ﾊﾟﾀｰﾝ(*.apt)") + u'\0' + u"*.apt" + u'\0';
    EXPECT_EQ(dialogs.fileDialogs[1].title, u"解析用パターンの保存");
    EXPECT_EQ(dialogs.fileDialogs[2].title, u"解析用パターンの選択");
    for (const int index : {1, 2}) {
        EXPECT_EQ(dialogs.fileDialogs[static_cast<std::size_t>(index)].filter, filter);
        EXPECT_EQ(dialogs.fileDialogs[static_cast<std::size_t>(index)].initialFolder, u"C:\\Patterns");
    }
    EXPECT_THAT(dialogs.boxes, IsEmpty()) << "both were cancelled";
}

TEST_F(Pattern, NameGetsItsExtensionOnceInWhateverCase) {
    for (const TextView chosen : {u"C:\\Work\\mine", u"C:\\Work\\mine.APT", u"C:\\Work\\mine.apt"}) {
        files.content.erase(patternPath);
        EXPECT_FALSE(save(Text(chosen)).empty());
    }
    save(u"C:\\Work\\mine.old");
    EXPECT_TRUE(files.exists(u"C:\\Work\\mine.old.apt"));
    save(u"C:\\Work\\myapt");
    EXPECT_TRUE(files.exists(u"C:\\Work\\m.apt")) << "four characters go, with or without a dot";
}

TEST_F(Pattern, NothingButTheExtensionSavesNothing) {
    const auto before = files.content;
    save(u".apt");
    EXPECT_EQ(files.content, before);
    EXPECT_THAT(dialogs.boxes, IsEmpty());
    save(u"apt");
    EXPECT_THAT(boxTexts(), ElementsAre(beginsWith(u"場所:一括処理ｴﾗｰNo:5\r")));
}

TEST_F(Pattern, FailedSaveIsReportedAndTheWindowStaysOpen) {
    files.writable = false;
    save();
    EXPECT_EQ(dialogs.lastText().substr(0, dialogs.lastText().find(u"内容:")),
              u"場所:一括処理ｴﾗｰNo:70\r場所、ｴﾗｰNo、内容を控えメールをお願いします。\r");
    EXPECT_TRUE(batch().Enabled);
    EXPECT_FALSE(desk->ended());
}

TEST_F(Pattern, TargetIsNeverReplaced) {
    const Text path = u"C:\\App\\target.apt";
    files.content[path] = Bytes(1536);
    select(path);
    save(path);
    EXPECT_THAT(dialogs.lastText(), beginsWith(u"場所:一括処理ｴﾗｰNo:70\r"));
    EXPECT_EQ(files.content[path], Bytes(1536));
}

TEST_F(Pattern, SavedPatternComesBackInAnotherRun) {
    for (CheckBox* box : boxes()) {
        desk->dispatch([&] { box->tick(true); });
    }
    for (OptionGroup* group : groups()) {
        desk->dispatch([&] { group->choose(0); });
    }
    const Text saved = save();
    newDesk();
    start();
    select();
    press(form().m6);
    read(saved);
    EXPECT_EQ(dialogs.lastText(), u"解析パターンを読み込みました。");
    for (const CheckBox* box : boxes()) {
        EXPECT_EQ(box->Value, 1) << box->name();
    }
    for (OptionGroup* group : groups()) {
        EXPECT_EQ(group->chosen(), 0) << (*group)(0).name();
        EXPECT_TRUE((*group)(0).Enabled);
    }
    EXPECT_EQ(save(), saved);
}

TEST_F(Pattern, CapitalKeySetsTheBoxAndTheSmallOneItsOption) {
    read(u"FORM=1\r\nmform=2\r\n");
    EXPECT_EQ(context().BatchForm, 1);
    EXPECT_EQ(context().OptForm, 2);
    EXPECT_EQ(batch().chkForm.Value, 1);
    EXPECT_EQ(batch().optForm.chosen(), 1);
    EXPECT_TRUE(batch().optForm(0).Enabled);
    EXPECT_TRUE(batch().optForm(1).Enabled);
}

TEST_F(Pattern, FirstKeyOfTheOrderCountsWhereverItStands) {
    ReadPattern(context(),
                (files.put(patternPath, u"my COMMENT=3 and FORM=5\r\n  mfile=4 FILE=7"), patternPath));
    EXPECT_EQ(context().BatchForm, 5) << "FORM is asked for before COMMENT";
    EXPECT_EQ(context().BatchComment, 0);
    EXPECT_EQ(context().BatchFile, 7);
    EXPECT_EQ(context().OptFile, 1) << "a line counts once";
}

TEST_F(Pattern, DigitStandsBehindOneCharacterWhateverThatIs) {
    ReadPattern(context(), (files.put(patternPath, u"TABLE:1\r\nQUERY=12\r\n"), patternPath));
    EXPECT_EQ(context().BatchTable, 1);
    EXPECT_EQ(context().BatchQuery, 1) << "one character alone";
}

TEST_F(Pattern, LinesEndAsTheyLike) {
    for (const TextView lines :
         {u"FORM=1\nREPORT=1", u"FORM=1\rREPORT=1", u"\n\nFORM=1\r\n\r\nREPORT=1\r\n"}) {
        context().BatchForm = context().BatchReport = 0;
        files.put(patternPath, lines);
        ReadPattern(context(), patternPath);
        EXPECT_EQ(context().BatchForm, 1);
        EXPECT_EQ(context().BatchReport, 1);
    }
}

TEST_F(Pattern, WhatIsNoPatternChangesNothing) {
    ReadPattern(context(), (files.put(patternPath, u"form=1\r\n一覧\r\n=\r\n"), patternPath));
    ReadPattern(context(), (files.put(patternPath, u""), patternPath));
    files.content[patternPath] = Bytes{0, 0xff, 0x1a, '\r', 0, 0x81};
    ReadPattern(context(), patternPath);
    EXPECT_EQ(context().BatchForm, 0);
    EXPECT_EQ(context().OptForm, 1);
}

TEST_F(Pattern, WhatIsNoDigitIsATypeMismatchBehindTheLinesBefore) {
    for (const TextView line : {u"FORM=x", u"FORM=", u"FORM", u"FORM= 1", u"FORM=-1", u"FORM=１"}) {
        context().BatchTable = 0;
        dialogs.boxes.clear();
        read(u"TABLE=1\r\n" + Text(line) + u"\r\nREPORT=1\r\n");
        EXPECT_THAT(boxTexts(), ElementsAre(beginsWith(u"場所:一括処理ｴﾗｰNo:13\r"))) << toUtf8(line);
        EXPECT_EQ(context().BatchTable, 1);
        EXPECT_EQ(context().BatchReport, 0);
        EXPECT_EQ(batch().chkTbl.Value, 0) << "the window is left as it was";
        EXPECT_FALSE(desk->ended());
    }
}

TEST_F(Pattern, FileThatIsNotThereIsReported) {
    dialogs.files.push_back(u"C:\\Work\\none.apt");
    press(batch().cmdRead);
    EXPECT_THAT(dialogs.lastText(), beginsWith(u"場所:一括処理ｴﾗｰNo:53\r"));
}

TEST_F(Pattern, ObjectListThatIsOffLosesItsOptionUntilTheBoxIsTickedByHand) {
    read(u"OBJECT=0\r\n");
    EXPECT_EQ(context().OptObject, 0);
    EXPECT_EQ(batch().chkObj.Value, 0);
    batch().chkObj.tick(true);
    EXPECT_EQ(context().OptObject, 7);
    EXPECT_EQ(context().BatchObject, 1);
    batch().chkObj.tick(false);
    EXPECT_EQ(context().OptObject, 7);
    read(u"OBJECT=1\r\n");
    EXPECT_EQ(context().OptObject, 7);
    EXPECT_EQ(batch().chkObj.Value, 1);
}

// Its option 0 is then that of a list that never ran, so the panel's button takes the rows for its own.
TEST_F(Pattern, ObjectListThatIsOffCountsAsDoneOnItsPanel) {
    read(u"OBJECT=0\r\n");
    store.log.clear();
    press(form().cmdObject);
    EXPECT_THAT(store.log, testing::Not(testing::Contains(u"delete * from T_RvObject;")));
}

TEST_F(Pattern, NineReadsBackAsAnEmptyBox) {
    batch().chkForm.tick(true);
    read(u"OBJECT=9\r\nFORM=9\r\nCOMMENT=9\r\nCONTROL=9\r\n");
    for (const CheckBox* box : {&batch().chkObj, &batch().chkForm, &batch().chkComent, &batch().chkControl}) {
        EXPECT_EQ(box->Value, 0);
    }
    EXPECT_FALSE(batch().optForm(0).Enabled);
    EXPECT_EQ(context().BatchForm, 0);
    EXPECT_EQ(context().BatchObject, 0);
    EXPECT_EQ(context().BatchComment, 0);
    EXPECT_EQ(context().BatchControl, 0);
}

TEST_F(Pattern, ReadBoxIsAskedWhetherTheTargetHasTheKindTickedOrNot) {
    context().DoneForm = context().DoneModule = noSuchObject;
    read(u"FORM=1\r\nPROC=0\r\n");
    EXPECT_EQ(batch().chkForm.Value, 1);
    EXPECT_EQ(context().BatchForm, 9);
    EXPECT_EQ(context().BatchProc, 9);
    EXPECT_EQ(context().BatchModule, 9);
    EXPECT_EQ(context().BatchModStep, 9);
    EXPECT_EQ(context().BatchReport, 0);
}

TEST_F(Pattern, OptionThatThePanelDoesNotHaveEndsTheReading) {
    for (const TextView option : {u"0", u"4"}) {
        dialogs.boxes.clear();
        context().BatchReport = 0;
        read(u"TABLE=1\r\nFORM=1\r\nmform=" + Text(option) + u"\r\nREPORT=1\r\n");
        EXPECT_THAT(boxTexts(), ElementsAre(beginsWith(u"場所:一括処理ｴﾗｰNo:340\r")));
        EXPECT_EQ(batch().chkTbl.Value, 1);
        EXPECT_EQ(batch().chkForm.Value, 1);
        EXPECT_EQ(batch().chkRep.Value, 0) << "the kinds behind it are not shown";
        EXPECT_TRUE(batch().Enabled);
    }
}

TEST_F(Pattern, BoxWithoutATickLeavesItsOptionUnseen) {
    read(u"FORM=0\r\nmform=2\r\n");
    EXPECT_EQ(context().OptForm, 2);
    EXPECT_EQ(batch().optForm.chosen(), 0);
    EXPECT_FALSE(batch().optForm(1).Enabled);
}

} // namespace
} // namespace relvane
