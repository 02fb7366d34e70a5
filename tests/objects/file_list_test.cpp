#include "objects/file_list.h"

#include <limits>

#include <gtest/gtest.h>

#include "support/fakes_desk.h"

namespace relvane {
namespace {

using test::FakeRow;
using test::targetPath;
using test::valueOf;

Value number(std::int64_t value) {
    return value;
}
Value text(const Text& value) {
    return value;
}

struct FileList : testing::Test, test::FakeProgram {
    enum Option { related = 1, linked = 2, all = 3 };

    void put(const Text& name, std::size_t size = 1024) { files.content[u"C:\\App\\" + name] = Bytes(size); }
    // A table linked to a file that lies where the link says.
    test::FakeTableDef& link(const Text& table, const Text& path) {
        files.content[path] = Bytes(1024);
        return target->addTable(table, u";DATABASE=" + path);
    }
    const std::vector<FakeRow>& run(Option option) {
        if (context().AnalysisMode == 0) {
            select();
        }
        form().optFile.choose(option - 1);
        press(form().cmdFile);
        return store.rows(u"T_RvFile");
    }
    std::vector<Text> names(Option option) {
        std::vector<Text> found;
        for (const FakeRow& row : run(option)) {
            found.push_back(toText(valueOf(row, u"FileName")));
        }
        return found;
    }
    // The reports that were opened.
    std::vector<Text> reports() const {
        std::vector<Text> opened;
        for (const Text& call : reportApps.calls) {
            if (call.starts_with(u"OpenReport ")) {
                opened.push_back(call);
            }
        }
        return opened;
    }
    using Names = std::vector<Text>;
};

TEST_F(FileList, ATargetAloneInItsFolderIsListedItself) {
    EXPECT_EQ(names(related), Names{u"target.mdb"});
    EXPECT_EQ(form().txtMesege.Caption.get(), u"印刷後、印刷ﾌﾟﾚﾋﾞｭｰを終了して下さい。");
}

TEST_F(FileList, ARowHasItsFieldsInOrder) {
    files.changed[targetPath] = {1998, 4, 20, 18, 2, 45};
    const FakeRow expected = {{u"FileNo", number(1)},
                              {u"FileName", text(u"target.mdb")},
                              {u"FileSize", 1.5},
                              {u"UpdateDate", DateTime{1998, 4, 20, 18, 2, 45}},
                              {u"FilePath", text(u"C:\\App\\")},
                              {u"ReadOnly", number(0)}};
    ASSERT_EQ(run(related).size(), 1u);
    EXPECT_EQ(run(related)[0], expected);
}

TEST_F(FileList, AFileWithTheReadOnlyAttributeHasReadOnly1) {
    files.readOnly.insert(targetPath);
    EXPECT_EQ(valueOf(run(related).at(0), u"ReadOnly"), number(1));
}

TEST_F(FileList, SizeIsAFractionOfKilobytesNotRounded) {
    files.content[targetPath] = Bytes(1);
    EXPECT_EQ(valueOf(run(related).at(0), u"FileSize"), Value(1.0 / 1024.0));
    files.content[targetPath] = Bytes(2049);
    context().DoneFile = 0;
    EXPECT_EQ(valueOf(run(related).at(0), u"FileSize"), Value(2049.0 / 1024.0));
}

TEST_F(FileList, RelatedFilesAreThoseWithAnExtensionThatBeginsWithM) {
    for (const TextView name : {u"a.MDB", u"b.mde", u"c.mdw", u"d.ldb", u"e.txt", u"readme", u"f.MA"}) {
        put(Text(name));
    }
    EXPECT_EQ(names(related), (Names{u"a.MDB", u"b.mde", u"c.mdw", u"f.MA", u"target.mdb"}));
}

TEST_F(FileList, AllFilesAreThoseWithoutAnExtensionToo) {
    for (const TextView name : {u"a.MDB", u"d.ldb", u"e.txt", u"readme"}) {
        put(Text(name));
    }
    files.content[u"C:\\App\\sub\\deeper.mdb"] = Bytes(1);
    EXPECT_EQ(names(all), (Names{u"a.MDB", u"d.ldb", u"e.txt", u"readme", u"target.mdb"}));
    EXPECT_EQ(valueOf(store.rows(u"T_RvFile").back(), u"FileNo"), number(5));
}

TEST_F(FileList, ALinkIsListedUnderThePathThatItHas) {
    link(u"得意先", u"C:\\a\\b.mdb");
    ASSERT_EQ(run(linked).size(), 1u);
    const FakeRow& row = run(linked)[0];
    EXPECT_EQ(valueOf(row, u"FileName"), text(u"b.mdb"));
    EXPECT_EQ(valueOf(row, u"FilePath"), text(u"C:\\a\\"));
}

TEST_F(FileList, SizeAndDateOfALinkAreThoseOfTheFileThatWasFound) {
    target->addTable(u"得意先", u";DATABASE=C:\\a\\b.mdb");
    files.links[u"C:\\a\\b.mdb"] = u"/srv/b.mdb";
    files.content[u"/srv/b.mdb"] = Bytes(512);
    files.changed[u"/srv/b.mdb"] = {1999, 1, 2, 3, 4, 5};
    files.readOnly.insert(u"/srv/b.mdb");
    const FakeRow expected = {{u"FileNo", number(1)},
                              {u"FileName", text(u"b.mdb")},
                              {u"FileSize", 0.5},
                              {u"UpdateDate", DateTime{1999, 1, 2, 3, 4, 5}},
                              {u"FilePath", text(u"C:\\a\\")},
                              {u"ReadOnly", number(1)}};
    ASSERT_EQ(run(linked).size(), 1u);
    EXPECT_EQ(run(linked)[0], expected);
}

TEST_F(FileList, TenTablesLinkedToOneFileAreTenRows) {
    for (int i = 0; i < 10; ++i) {
        link(u"T" + toText(static_cast<long long>(i)), u"C:\\a\\b.mdb");
    }
    EXPECT_EQ(run(linked).size(), 10u);
    EXPECT_EQ(valueOf(store.rows(u"T_RvFile").back(), u"FileNo"), number(10));
}

TEST_F(FileList, LocalAndSystemTablesAreNoLinks) {
    target->addTable(u"local");
    link(u"system 1", u"C:\\a\\1.mdb").attributes = std::numeric_limits<std::int32_t>::min();
    link(u"system 2", u"C:\\a\\2.mdb").attributes = 2;
    link(u"linked", u"C:\\a\\3.mdb").attributes = 0x40000000;
    // The whole number counts: more than the mark of a system table is listed.
    link(u"both", u"C:\\a\\4.mdb").attributes = std::numeric_limits<std::int32_t>::min() + 2;
    link(u"MSysName", u"C:\\a\\5.mdb").attributes = 0x40000002;
    EXPECT_EQ(names(linked), (Names{u"3.mdb", u"4.mdb", u"5.mdb"}));
}

TEST_F(FileList, ThePathIsWhatStandsBehindTheFirstEqualsSign) {
    target->addTable(u"a", u"MS Access;PWD=x;DATABASE=C:\\a\\b.mdb");
    files.content[u"x;DATABASE=C:\\a\\b.mdb"] = Bytes(1);
    target->addTable(u"b", u";DATABASE=  C:\\a\\c.mdb  ");
    files.content[u"C:\\a\\c.mdb"] = Bytes(1);
    target->addTable(u"c", u";DATABASE=" + Text(300, u'x'));
    files.content[Text(255, u'x')] = Bytes(1);
    ASSERT_EQ(run(linked).size(), 3u);
    const auto& rows = store.rows(u"T_RvFile");
    EXPECT_EQ(valueOf(rows[0], u"FilePath"), text(u"x;DATABASE=C:\\a\\"));
    EXPECT_EQ(valueOf(rows[1], u"FilePath"), text(u"C:\\a\\"));
    EXPECT_EQ(valueOf(rows[1], u"FileName"), text(u"c.mdb"));
    EXPECT_EQ(valueOf(rows[2], u"FileName"), text(Text(255, u'x')));
}

TEST_F(FileList, ATargetWithoutLinksHasAnEmptyListAndAReport) {
    target->addTable(u"local");
    EXPECT_TRUE(run(linked).empty());
    EXPECT_TRUE(dialogs.boxes.empty());
    EXPECT_EQ(context().DoneFile, 2);
    EXPECT_EQ(reports().size(), 1u);
}

TEST_F(FileList, ASourceThatIsGoneStopsTheListAndKeepsItsRows) {
    link(u"1", u"C:\\a\\1.mdb");
    target->addTable(u"2", u";DATABASE=C:\\a\\gone.mdb");
    link(u"3", u"C:\\a\\3.mdb");
    EXPECT_EQ(names(linked), Names{u"1.mdb"});
    EXPECT_EQ(dialogs.lastText(), u"場所:ファイル一覧ｴﾗｰNo:53\r"
                                  u"場所、ｴﾗｰNo、内容を控えメールをお願いします。\r"
                                  u"内容:ファイルが見つかりません。 (2: C:\\a\\gone.mdb)");
    EXPECT_EQ(context().DoneFile, 0);
    EXPECT_FALSE(form().cmdFlPre.Enabled);
    EXPECT_TRUE(form().Enabled);
    EXPECT_EQ(form().Pointer, MousePointer::Normal);
    EXPECT_FALSE(desk->ended());

    files.content[u"C:\\a\\gone.mdb"] = Bytes(1); // back again: the button runs anew
    EXPECT_EQ(names(linked), (Names{u"1.mdb", u"gone.mdb", u"3.mdb"}));
}

TEST_F(FileList, ALinkIntoOdbcFailsAsNoFileAndShowsNoPassword) {
    target->addTable(u"会計", u"ODBC;DSN=会計;UID=a;PWD=himitsu;").attributes = 0x20000000;
    EXPECT_TRUE(run(linked).empty());
    EXPECT_TRUE(dialogs.lastText().starts_with(u"場所:ファイル一覧ｴﾗｰNo:53\r")) << toUtf8(dialogs.lastText());
    EXPECT_NE(dialogs.lastText().find(u"会計"), Text::npos);
    EXPECT_EQ(dialogs.lastText().find(u"himitsu"), Text::npos);
}

TEST_F(FileList, AFolderThatCannotBeListedIsBoxB) {
    select();
    files.unreadableFolder = 70;
    EXPECT_TRUE(run(all).empty());
    EXPECT_TRUE(dialogs.lastText().starts_with(u"場所:ファイル一覧ｴﾗｰNo:70\r場所、ｴﾗｰNo、内容を控え"));
}

TEST_F(FileList, Error7866IsBoxCAndTheProgramGoesOn) {
    select();
    files.unreadableFolder = 7866;
    run(all);
    EXPECT_EQ(dialogs.lastText(),
              u"Access97以前のバージョンのファイルです。\rAccess97形式に変換して下さい。");
    EXPECT_TRUE(form().Enabled);
}

TEST_F(FileList, AnErrorOfAccessEndsTheProgram) {
    select();
    files.unreadableFolder = 2500;
    run(all);
    ASSERT_EQ(dialogs.boxes.size(), 2u);
    EXPECT_TRUE(dialogs.boxes[0].text.starts_with(
        u"場所:ファイル一覧ｴﾗｰNo:2500\rシステムが不安定です。\r詳細はヘルプを参照下さい。"));
    EXPECT_EQ(dialogs.boxes[1].text, u"終了します。");
    EXPECT_TRUE(desk->ended());
}

TEST_F(FileList, MoreFilesThanTheNumberHoldsAreError6AndTheRowsStay) {
    for (int i = 0; i < 40000; ++i) {
        put(u"f" + toText(static_cast<long long>(i)) + u".mdb", 0);
    }
    EXPECT_EQ(run(related).size(), 32767u);
    EXPECT_EQ(valueOf(store.rows(u"T_RvFile").back(), u"FileNo"), number(32767));
    EXPECT_TRUE(dialogs.lastText().starts_with(u"場所:ファイル一覧ｴﾗｰNo:6\r")) << toUtf8(dialogs.lastText());
    EXPECT_EQ(context().DoneFile, 0);
}

TEST_F(FileList, TheSameOptionAgainShowsTheListWithoutAWalk) {
    EXPECT_EQ(run(related).size(), 1u);
    put(u"new.mdb");
    EXPECT_EQ(run(related).size(), 1u) << "the list is that of the first press";
    EXPECT_EQ(reports().size(), 2u);
    EXPECT_EQ(run(all).size(), 2u) << "another option lists anew";
    EXPECT_EQ(run(related).size(), 2u);
    EXPECT_EQ(context().DoneFile, 1);
}

TEST_F(FileList, TheRunSaysWhatItDoesAndShowsItsReport) {
    std::vector<Text> messages;
    select();
    form().txtMesege.onRefresh = [&] { messages.push_back(form().txtMesege.Caption.get()); };
    run(related);
    ASSERT_FALSE(messages.empty());
    EXPECT_EQ(messages[0], u"ファイル 情報　取得中");
    EXPECT_EQ(reports(), Names{u"OpenReport R_RvFile 2"});
    EXPECT_TRUE(form().cmdFlPre.Enabled);
    EXPECT_EQ(form().Timer1.Interval, 5000);
    EXPECT_EQ(store.log, (Names{u"open T_RvTitle", u"delete * from T_RvTitle;", u"open T_RvFile",
                                u"delete * from T_RvFile;", u"close T_RvFile"}));
}

TEST_F(FileList, AsOneOfManyItFillsTheTableAndTheMainWindowShowsNothing) {
    link(u"1", u"C:\\a\\1.mdb");
    select();
    const Text before = form().txtMesege.Caption;
    context().OptFile = 2;
    EXPECT_EQ(fillTables(context(), fileAnalysis(context())), WalkEnd::Complete);
    EXPECT_EQ(store.rows(u"T_RvFile").size(), 1u);
    EXPECT_EQ(form().txtMesege.Caption.get(), before);
    EXPECT_TRUE(form().Enabled);
    EXPECT_TRUE(reports().empty());
}

} // namespace
} // namespace relvane
