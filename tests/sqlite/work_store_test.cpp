// The operations of the work database.
#include <fcntl.h>
#include <fstream>

#include <gtest/gtest.h>
#include <sqlite3.h>
#include <sys/wait.h>
#include <unistd.h>

#include "sqlite/store_files.h"
#include "sqlite/work_store.h"
#include "support/integrity.h"

namespace relvane::test {
namespace {

namespace fs = std::filesystem;

Value text(TextView text) {
    return Text(text);
}
Value number(std::int64_t number) {
    return number;
}

int countOf(RowStore& store, TextView table) {
    int count = 0;
    for (const auto rows = store.OpenRecordset(table); !rows->EOF_(); rows->MoveNext()) {
        ++count;
    }
    return count;
}

int countIn(const fs::path& path, TextView table) {
    return countOf(*openWorkStore(fromUtf8(path.string())), table);
}

// What another program sees: a connection that the store knows nothing of.
int countSeenFromOutside(const fs::path& path, const std::string& table) {
    sqlite3* handle = nullptr;
    sqlite3_open(path.c_str(), &handle);
    int count = -1;
    sqlite3_exec(
        handle, ("SELECT count(*) FROM " + table).c_str(),
        [](void* result, int, char** values, char**) {
            *static_cast<int*>(result) = std::stoi(values[0]);
            return 0;
        },
        &count, nullptr);
    sqlite3_close(handle);
    return count;
}

long filesIn(const fs::path& folder) {
    return std::distance(fs::directory_iterator(folder), fs::directory_iterator());
}

void addComment(Recordset& rows, std::int64_t objectNo, TextView comment) {
    rows.AddNew();
    rows.Collect(u"objectNo", number(objectNo));
    rows.Collect(u"Comment", text(comment));
    rows.Update();
}

class WorkStoreTest : public testing::Test {
protected:
    StoreFile file;
    std::shared_ptr<RowStore> store = openWorkStore(file.text());
};

TEST_F(WorkStoreTest, TellsItsFullPath) {
    EXPECT_EQ(store->Name(), file.text());
}

TEST_F(WorkStoreTest, TablesAndFieldsAreFoundWithoutRegardToCase) {
    const auto rows = store->OpenRecordset(u"t_rvCOMMENT");
    rows->AddNew();
    rows->Collect(u"OBJECTNO", number(1));
    rows->Collect(u"comment", text(u"あ"));
    rows->Update();
    EXPECT_EQ(rows->Field(u"ObjectNo"), number(1));
    EXPECT_EQ(rows->Field(u"COMMENT"), text(u"あ"));
    EXPECT_EQ(rows->FieldName(3), u"Comment");
}

TEST_F(WorkStoreTest, AnUnknownTableIs3078) {
    EXPECT_EQ(errorNumberOf([&] { store->OpenRecordset(u"T_RvNothing"); }), 3078);
    EXPECT_EQ(errorNumberOf([&] { store->OpenRecordset(u""); }), 3078);
    EXPECT_EQ(errorNumberOf([&] { store->OpenRecordset(u"sqlite_schema"); }), 3078);
    EXPECT_EQ(errorNumberOf([&] { store->OpenRecordset(u"T_RvTitle\" --"); }), 3078);
    EXPECT_EQ(errorNumberOf([&] { store->OpenSorted(u"T_RvNothing", {}); }), 3078);
}

TEST_F(WorkStoreTest, AnUnknownFieldIs3265) {
    const auto rows = store->OpenRecordset(u"T_RvComment");
    rows->AddNew();
    EXPECT_EQ(errorNumberOf([&] { rows->Collect(u"Coment", text(u"a")); }), 3265);
    rows->Update();
    EXPECT_EQ(errorNumberOf([&] { rows->Field(u"Coment"); }), 3265);
    EXPECT_EQ(errorNumberOf([&] { rows->Field(-1); }), 3265);
    EXPECT_EQ(errorNumberOf([&] { rows->Field(6); }), 3265);
    EXPECT_EQ(errorNumberOf([&] { rows->FieldName(6); }), 3265);
    const SortKey key{u"Coment"};
    EXPECT_EQ(errorNumberOf([&] { store->OpenSorted(u"T_RvComment", {&key, 1}); }), 3265);
}

TEST_F(WorkStoreTest, ARowIsWhatWasCollectedSinceAddNew) {
    const auto rows = store->OpenRecordset(u"T_RvComment");
    rows->AddNew();
    rows->Collect(u"Comment", text(u"dropped"));
    rows->AddNew(); // drops the row begun before
    rows->Collect(u"objectNo", number(1));
    rows->Collect(u"objectNo", number(2)); // the later write stands
    EXPECT_EQ(rows->Field(u"Comment"), Value(Null{}));
    EXPECT_EQ(rows->Field(u"objectNo"), number(2));
    rows->Update();
    rows->AddNew();
    rows->Close(); // drops it too
    EXPECT_EQ(countOf(*store, u"T_RvComment"), 1);
    EXPECT_EQ(store->OpenRecordset(u"T_RvComment")->Field(u"objectNo"), number(2));
}

TEST_F(WorkStoreTest, WritingWithoutAddNewIs3020) {
    const auto rows = store->OpenRecordset(u"T_RvComment");
    EXPECT_EQ(errorNumberOf([&] { rows->Collect(u"objectNo", number(1)); }), 3020);
    EXPECT_EQ(errorNumberOf([&] { rows->Update(); }), 3020);
}

TEST_F(WorkStoreTest, ReadingWhereNoRowIsIs3021) {
    const auto rows = store->OpenRecordset(u"T_RvComment");
    EXPECT_TRUE(rows->EOF_());
    EXPECT_EQ(errorNumberOf([&] { rows->Field(u"Comment"); }), 3021);
    EXPECT_EQ(errorNumberOf([&] { rows->MoveNext(); }), 3021);
    EXPECT_EQ(errorNumberOf([&] { rows->MoveFirst(); }), 3021);
}

TEST_F(WorkStoreTest, AClosedCursorIs3420ButCanBeClosedAgain) {
    const auto rows = store->OpenRecordset(u"T_RvComment");
    rows->Close();
    rows->Close();
    EXPECT_EQ(errorNumberOf([&] { rows->AddNew(); }), 3420);
    EXPECT_EQ(errorNumberOf([&] { rows->Collect(u"Comment", text(u"a")); }), 3420);
    EXPECT_EQ(errorNumberOf([&] { rows->Update(); }), 3420);
    EXPECT_EQ(errorNumberOf([&] { rows->EOF_(); }), 3420);
    EXPECT_EQ(errorNumberOf([&] { rows->MoveFirst(); }), 3420);
    EXPECT_EQ(errorNumberOf([&] { rows->MoveNext(); }), 3420);
    EXPECT_EQ(errorNumberOf([&] { rows->Field(0); }), 3420);
    EXPECT_EQ(errorNumberOf([&] { rows->FieldCount(); }), 3420);
}

TEST_F(WorkStoreTest, ManyRowsAreReadInTheOrderWritten) {
    auto rows = store->OpenRecordset(u"T_RvComment");
    constexpr int many = 1000;
    for (int i = 0; i < many; ++i) {
        addComment(*rows, i, u"x");
    }
    for (int pass = 0; pass < 2; ++pass) {
        rows->MoveFirst();
        for (int i = 0; i < many; ++i, rows->MoveNext()) {
            ASSERT_FALSE(rows->EOF_());
            ASSERT_EQ(rows->Field(u"objectNo"), number(i));
        }
        EXPECT_TRUE(rows->EOF_());
    }
}

TEST_F(WorkStoreTest, EmptyTextIsNotNull) {
    const auto rows = store->OpenRecordset(u"T_RvComment");
    rows->AddNew();
    rows->Collect(u"Object", Text());
    rows->Collect(u"ObjectName", Null{});
    rows->Update();
    rows->MoveFirst();
    EXPECT_EQ(rows->Field(u"Object"), text(u""));
    EXPECT_EQ(rows->Field(u"ObjectName"), Value(Null{}));
    EXPECT_EQ(rows->Field(u"Comment"), Value(Null{}));
}

TEST_F(WorkStoreTest, TextsComeBackUnitForUnit) {
    Text odd = u"a";
    odd += char16_t{0};      // a zero in the middle
    odd += char16_t{0xD842}; // half of a pair
    odd += u"𠮷ｶﾞ\uE000\uFFFE";
    odd += char16_t{0xDC00};
    const Text wide(100000, u'漢');
    const auto rows = store->OpenRecordset(u"T_RvModule");
    rows->AddNew();
    rows->Collect(u"Procedure", odd);
    rows->Collect(u"ObjectName", wide);
    rows->Update();
    rows->Close();
    const auto reader = openWorkStore(file.text())->OpenRecordset(u"T_RvModule");
    EXPECT_EQ(reader->Field(u"Procedure"), Value(odd));
    EXPECT_EQ(reader->Field(u"ObjectName"), Value(wide));
}

TEST_F(WorkStoreTest, ValuesBecomeWhatTheFieldKeeps) {
    const auto object = store->OpenRecordset(u"T_RvObject");
    object->AddNew();
    const auto kept = [&](TextView field, const Value& value) {
        object->Collect(field, value);
        return object->Field(field);
    };
    EXPECT_EQ(kept(u"objectNo", true), number(-1));
    EXPECT_EQ(kept(u"objectNo", text(u" 12 ")), number(12));
    EXPECT_EQ(kept(u"objectNo", 2.5), number(2));
    EXPECT_EQ(kept(u"objectNo", Currency{35000}), number(4));
    EXPECT_EQ(kept(u"ObjectName", number(5)), text(u"5"));
    EXPECT_EQ(kept(u"ObjectName", false), text(u"False"));
    EXPECT_EQ(kept(u"ObjectName", 0.5), text(u"0.5"));
    EXPECT_EQ(kept(u"DateCreate", 36526.5), Value(DateTime{2000, 1, 1, 12, 0, 0}));
    object->Update();

    const auto table = store->OpenRecordset(u"T_RvTblInfo");
    table->AddNew();
    for (const auto& [value, expected] : std::vector<std::pair<Value, bool>>{{number(-1), true},
                                                                             {number(0), false},
                                                                             {text(u"true"), true},
                                                                             {text(u"0"), false},
                                                                             {Null{}, false}}) {
        table->Collect(u"Updatable", value);
        EXPECT_EQ(table->Field(u"Updatable"), Value(expected));
    }
}

TEST_F(WorkStoreTest, AValueWithoutMeaningForTheFieldIs13AndLeavesTheOldOne) {
    const auto rows = store->OpenRecordset(u"T_RvObject");
    rows->AddNew();
    rows->Collect(u"objectNo", number(7));
    EXPECT_EQ(errorNumberOf([&] { rows->Collect(u"objectNo", text(u"seven")); }), 13);
    EXPECT_EQ(errorNumberOf([&] { rows->Collect(u"objectNo", text(u"")); }), 13);
    EXPECT_EQ(rows->Field(u"objectNo"), number(7));
    EXPECT_EQ(errorNumberOf([&] { rows->Collect(u"DateCreate", text(u"1997-01-01 00:00:00")); }), 13);
    EXPECT_EQ(errorNumberOf([&] { rows->Collect(u"DateCreate", 1e10); }), 13);
    EXPECT_EQ(errorNumberOf([&] { rows->Collect(u"ObjectName", Bytes{1, 2}); }), 13);
    EXPECT_EQ(rows->Field(u"DateCreate"), Value(Null{}));
}

TEST_F(WorkStoreTest, ANumberOver32BitsIs6) {
    const auto rows = store->OpenRecordset(u"T_RvObject");
    rows->AddNew();
    EXPECT_EQ(errorNumberOf([&] { rows->Collect(u"objectNo", number(2147483648)); }), 6);
    rows->Collect(u"objectNo", number(-2147483648LL));
    rows->Update();
    EXPECT_EQ(rows->Field(u"objectNo"), number(-2147483648LL));
}

TEST_F(WorkStoreTest, AnEmptyTitleIs3315AndTheRowCanBeMended) {
    const auto rows = store->OpenRecordset(u"T_RvTitle");
    rows->AddNew();
    rows->Collect(u"FileName", Text());
    EXPECT_EQ(errorNumberOf([&] { rows->Update(); }), 3315);
    rows->Collect(u"FileName", text(u"受注.mdb"));
    rows->Update();
    EXPECT_EQ(countOf(*store, u"T_RvTitle"), 1);
}

TEST_F(WorkStoreTest, ExecuteTakesTheOneStatementAlone) {
    const auto rows = store->OpenRecordset(u"T_RvComment");
    addComment(*rows, 1, u"x");
    for (const TextView refused :
         {u"", u"delete * from ;", u"delete * from T_RvComment", u"Delete * from T_RvComment;",
          u"delete from T_RvComment;", u"delete * from T_RvComment; ", u" delete * from T_RvComment;",
          u"delete * from RvReports;", u"delete * from QE_RvObject;", u"select * from T_RvComment;",
          u"DELETE * FROM T_RvComment;", u"drop table T_RvComment;"}) {
        EXPECT_EQ(errorNumberOf([&] { store->Execute(refused); }), 3075) << toUtf8(refused);
    }
    EXPECT_EQ(errorNumberOf([&] { store->Execute(u"delete * from T_RvNothing;"); }), 3078);
    EXPECT_EQ(errorNumberOf([&] { store->Execute(u"delete * from T_RvComment; delete * from T_RvFile;"); }),
              3078);
    EXPECT_EQ(countOf(*store, u"T_RvComment"), 1);
    store->Execute(u"delete * from t_rvcomment;");
    EXPECT_EQ(countOf(*store, u"T_RvComment"), 0);
}

TEST_F(WorkStoreTest, ACursorOpenedBeforeTheTableIsEmptiedSeesTheNewRowsAlone) {
    addComment(*store->OpenRecordset(u"T_RvComment"), 1, u"old");
    const auto rows = store->OpenRecordset(u"T_RvComment");
    store->Execute(u"delete * from T_RvComment;");
    addComment(*rows, 2, u"new");
    EXPECT_EQ(rows->Field(u"Comment"), text(u"new"));
}

TEST_F(WorkStoreTest, AStoredQueryCannotBeWritten) {
    const auto rows = store->OpenRecordset(u"QE_RvObject");
    EXPECT_EQ(errorNumberOf([&] { rows->AddNew(); }), 3027);
    const auto sorted = store->OpenSorted(u"T_RvComment", {});
    EXPECT_EQ(errorNumberOf([&] { sorted->AddNew(); }), 3027);
}

// Sorting.

class SortTest : public WorkStoreTest {
protected:
    std::vector<std::string> sorted(const std::vector<TextView>& comments, std::vector<SortKey> keys,
                                    std::int64_t skip = 0) {
        store->Execute(u"delete * from T_RvComment;");
        {
            const auto rows = store->OpenRecordset(u"T_RvComment");
            std::int64_t objectNo = 0;
            for (const TextView comment : comments) {
                addComment(*rows, ++objectNo % 2, comment);
            }
        }
        std::vector<std::string> result;
        for (const auto rows = store->OpenSorted(u"T_RvComment", keys, skip); !rows->EOF_();
             rows->MoveNext()) {
            result.push_back(toUtf8(std::get<Text>(rows->Field(u"Comment"))));
        }
        return result;
    }
    using Texts = std::vector<std::string>;
    const SortKey kana{u"Comment", false, Collation::Kana};
};

TEST_F(SortTest, KanaOrderKnowsNoWidthAndNoHiragana) {
    EXPECT_EQ(sorted({u"漢字", u"ｳ", u"い", u"ア", u"ﾜ", u"か", u"Ｂ", u"a", u"2"}, {kana}),
              (Texts{"2", "a", "Ｂ", "ア", "い", "ｳ", "か", "ﾜ", "漢字"}));
}

TEST_F(SortTest, AVoicedSoundFollowsThePlainOneHoweverItIsWritten) {
    EXPECT_EQ(sorted({u"ｶﾞ", u"キ", u"ガ", u"か", u"が"}, {kana}), (Texts{"か", "が", "ガ", "ｶﾞ", "キ"}));
}

TEST_F(SortTest, OneLetterInOtherFormsIsOrderedByItsCodeUnits) {
    EXPECT_EQ(sorted({u"ｱ", u"ア", u"あ"}, {kana}), (Texts{"あ", "ア", "ｱ"}));
}

TEST_F(SortTest, ALongVowelStandsWhereItsVowelWould) {
    EXPECT_EQ(sorted({u"カイ", u"カー", u"カア", u"かあ", u"カン", u"ｶｰﾄﾞ", u"カアテン", u"カーテン", u"キ"},
                     {kana}),
              (Texts{"カー", "かあ", "カア", "カーテン", "カアテン", "ｶｰﾄﾞ", "カイ", "カン", "キ"}));
    EXPECT_EQ(
        sorted({u"ｶﾞｰﾈｯﾄ", u"ガアデン", u"ガイド", u"ガーデン", u"キャーン", u"ｷｬｱﾒ", u"きゃあま"}, {kana}),
        (Texts{"ガーデン", "ガアデン", "ｶﾞｰﾈｯﾄ", "ガイド", "きゃあま", "ｷｬｱﾒ", "キャーン"}));
}

TEST_F(SortTest, HalfWidthIsFullWidthInLongTextsToo) {
    Text full, half;
    for (int i = 0; i < 100; ++i) {
        full += u"ガー";
        half += u"ｶﾞｰ";
    }
    EXPECT_EQ(sorted({half + u"ん", full + u"ア", half, full + u"ﾝ", half + u"あ", full}, {kana}),
              (Texts{toUtf8(full), toUtf8(half), toUtf8(half + u"あ"), toUtf8(full + u"ア"),
                     toUtf8(half + u"ん"), toUtf8(full + u"ﾝ")}));
}

TEST_F(SortTest, ASmallKanaIsTheLargeOneAndStandsBeforeItInTextsOtherwiseAlike) {
    EXPECT_EQ(
        sorted({u"まつて", u"マッチ", u"まつち", u"ﾏｯﾁ", u"まっち", u"マッサ", u"キヤ", u"きゃ"}, {kana}),
        (Texts{"きゃ", "キヤ", "マッサ", "まっち", "マッチ", "ﾏｯﾁ", "まつち", "まつて"}));
}

TEST_F(SortTest, VoicedMarksCountOnlyInTextsOtherwiseAlike) {
    EXPECT_EQ(
        sorted({u"パン", u"ﾊﾟﾝ", u"バン", u"はん", u"ﾊﾞﾝ", u"ハンコ", u"ばし", u"はす", u"ぱさ"}, {kana}),
        (Texts{"ぱさ", "ばし", "はす", "はん", "バン", "ﾊﾞﾝ", "パン", "ﾊﾟﾝ", "ハンコ"}));
}

TEST_F(SortTest, LatinLettersAndDigitsKnowNeitherCaseNorWidth) {
    EXPECT_EQ(sorted({u"Ｂ１", u"b2", u"B0", u"ａ", u"A", u"a", u"Ab", u"２", u"1", u"１０", u"_x"}, {kana}),
              (Texts{"_x", "1", "１０", "２", "a", "ａ", "A", "Ab", "B0", "Ｂ１", "b2"}));
}

TEST_F(SortTest, EqualRowsKeepTheirOrder) {
    store->Execute(u"delete * from T_RvComment;");
    const auto rows = store->OpenRecordset(u"T_RvComment");
    for (const int objectNo : {3, 1, 2}) {
        addComment(*rows, objectNo, u"同じ");
    }
    const auto ordered = store->OpenSorted(u"T_RvComment", {&kana, 1});
    for (const int objectNo : {3, 1, 2}) {
        EXPECT_EQ(ordered->Field(u"objectNo"), number(objectNo));
        ordered->MoveNext();
    }
}

TEST_F(SortTest, CodeUnitOrderIsThatOfUtf16) {
    // A character outside the first plane begins with U+D842 and so stands before U+FF71.
    EXPECT_EQ(sorted({u"ｱ", u"𠮷", u"b", u"B", u"あ"}, {{u"Comment"}}), (Texts{"B", "b", "あ", "𠮷", "ｱ"}));
    EXPECT_EQ(sorted({u"b", u"B"}, {{u"comment", true}}), (Texts{"b", "B"}));
}

TEST_F(SortTest, TheFirstKeyLeadsAndRowsCanBeSkipped) {
    const std::vector<TextView> comments{u"d", u"c", u"b", u"a"}; // objectNo 1, 0, 1, 0
    const std::vector<SortKey> keys{{u"objectNo", true}, kana};
    EXPECT_EQ(sorted(comments, keys), (Texts{"b", "d", "a", "c"}));
    EXPECT_EQ(sorted(comments, keys, 1), (Texts{"d", "a", "c"}));
    EXPECT_EQ(sorted(comments, keys, 4), Texts{});
    EXPECT_EQ(sorted(comments, keys, 99), Texts{});
    EXPECT_EQ(sorted(comments, {}, 3), (Texts{"a"}));
}

TEST_F(SortTest, NullComesFirst) {
    const auto rows = store->OpenRecordset(u"T_RvComment");
    addComment(*rows, 1, u"");
    rows->AddNew();
    rows->Update();
    const auto ordered = store->OpenSorted(u"T_RvComment", {&kana, 1});
    EXPECT_EQ(ordered->Field(u"Comment"), Value(Null{}));
}

TEST_F(SortTest, AStoredQueryIsSortedToo) {
    const auto rows = store->OpenRecordset(u"T_RvObject");
    int objectNo = 0;
    for (const TextView name : {u"う", u"ｱ", u"い"}) {
        rows->AddNew();
        rows->Collect(u"objectNo", number(++objectNo));
        rows->Collect(u"ObjectName", text(name));
        rows->Collect(u"DateUpdate", DateTime{2000, 1, objectNo, 0, 0, 0});
        rows->Update();
    }
    const SortKey key{u"オブジェクト名", false, Collation::Kana};
    const auto ordered = store->OpenSorted(u"QE_RvObject", {&key, 1});
    EXPECT_EQ(ordered->Field(u"オブジェクト名"), text(u"ｱ"));
    EXPECT_EQ(ordered->Field(u"更新日"), Value(DateTime{2000, 1, 2, 0, 0, 0}));
    ordered->MoveNext();
    EXPECT_EQ(ordered->Field(u"オブジェクト名"), text(u"い"));
}

// The transaction of an analysis, and who sees what when.

TEST_F(WorkStoreTest, RowsReachTheFileWhenACursorIsClosed) {
    const auto rows = store->OpenRecordset(u"T_RvComment");
    addComment(*rows, 1, u"x");
    EXPECT_EQ(countSeenFromOutside(file.path, "T_RvComment"), 0);
    rows->Close();
    EXPECT_EQ(countSeenFromOutside(file.path, "T_RvComment"), 1);
}

TEST_F(WorkStoreTest, RowsReachTheFileWhenTheStoreIsFlushedWhileItsCursorsStayOpen) {
    const auto rows = store->OpenRecordset(u"T_RvComment");
    addComment(*rows, 1, u"x");
    rows->AddNew();
    store->flush();
    EXPECT_EQ(countSeenFromOutside(file.path, "T_RvComment"), 1);
    rows->Update();
    store->flush();
    EXPECT_EQ(countSeenFromOutside(file.path, "T_RvComment"), 2);
}

TEST_F(WorkStoreTest, RowsReachTheFileWhenTheSameFileIsOpenedAgain) {
    const auto rows = store->OpenRecordset(u"T_RvComment");
    addComment(*rows, 1, u"x");
    EXPECT_EQ(countIn(file.path, u"T_RvComment"), 1);
    EXPECT_EQ(countSeenFromOutside(file.path, "T_RvComment"), 1);
}

TEST_F(WorkStoreTest, RowsReachTheFileWhenCursorsAndStoreAreLetGo) {
    auto rows = store->OpenRecordset(u"T_RvComment");
    addComment(*rows, 1, u"x");
    store.reset();
    EXPECT_EQ(countSeenFromOutside(file.path, "T_RvComment"), 1);
    addComment(*rows, 2, u"y"); // the cursor keeps the file open
    rows.reset();
    EXPECT_EQ(countSeenFromOutside(file.path, "T_RvComment"), 2);
}

TEST_F(WorkStoreTest, RowsWrittenBeforeAFailureStay) {
    try {
        const auto rows = openWorkStore(file.text())->OpenRecordset(u"T_RvComment");
        addComment(*rows, 1, u"x");
        rows->AddNew();
        rows->Collect(u"objectNo", text(u"no number"));
    } catch (const RunTimeError&) {
    }
    EXPECT_EQ(countSeenFromOutside(file.path, "T_RvComment"), 1);
}

// A handler closes nothing: the next analysis replaces the store and the cursors of the failed one, one after the
// other, and must not be kept from writing by what they left.
TEST_F(WorkStoreTest, TheNextAnalysisReplacesWhatAFailedOneLeftOpen) {
    auto first = store->OpenRecordset(u"T_RvComment");
    auto second = store->OpenRecordset(u"T_RvModule");
    addComment(*first, 1, u"x");
    second->AddNew();
    second->Update();
    second->MoveFirst(); // a reader in the middle of its rows

    store = openWorkStore(file.text());
    auto third = store->OpenRecordset(u"T_RvComment");
    store->Execute(u"delete * from T_RvComment;");
    addComment(*third, 1, u"y");
    addComment(*third, 2, u"z");
    third->Close();
    EXPECT_EQ(countSeenFromOutside(file.path, "T_RvComment"), 2);
    EXPECT_EQ(countSeenFromOutside(file.path, "T_RvModule"), 1);
}

TEST_F(WorkStoreTest, AReaderInTheMiddleOfItsRowsKeepsNobodyFromWriting) {
    const auto writer = store->OpenRecordset(u"T_RvComment");
    for (int i = 0; i < 300; ++i) {
        addComment(*writer, i, u"x");
    }
    const auto otherStore = openWorkStore(file.text());
    const auto reader = otherStore->OpenRecordset(u"T_RvComment");
    const SortKey key{u"Comment", false, Collation::Kana};
    const auto sorted = otherStore->OpenSorted(u"T_RvComment", {&key, 1});
    const auto query = otherStore->OpenRecordset(u"QE_RvObject");
    EXPECT_EQ(reader->Field(u"objectNo"), number(0));
    EXPECT_EQ(sorted->Field(u"objectNo"), number(0));
    addComment(*writer, 300, u"x");
    writer->Close();
    EXPECT_EQ(countSeenFromOutside(file.path, "T_RvComment"), 301);
}

TEST_F(WorkStoreTest, WhatAnotherProgramHoldsIs3045AfterAWhileAndTheRowsAreNotLost) {
    const auto rows = store->OpenRecordset(u"T_RvComment");
    addComment(*rows, 1, u"x");
    sqlite3* other = nullptr;
    ASSERT_EQ(sqlite3_open(file.path.c_str(), &other), SQLITE_OK);
    sqlite3_exec(other, "BEGIN; SELECT count(*) FROM T_RvComment", nullptr, nullptr, nullptr);
    EXPECT_EQ(errorNumberOf([&] { store->flush(); }), 3045);
    sqlite3_exec(other, "COMMIT", nullptr, nullptr, nullptr);
    store->flush();
    EXPECT_EQ(countSeenFromOutside(file.path, "T_RvComment"), 1);

    sqlite3_exec(other, "BEGIN IMMEDIATE", nullptr, nullptr, nullptr);
    EXPECT_EQ(errorNumberOf([&] { addComment(*rows, 2, u"x"); }), 3045);
    sqlite3_close(other);
    rows->Update(); // the row in hand is still there
    rows->Close();
    EXPECT_EQ(countSeenFromOutside(file.path, "T_RvComment"), 2);
}

TEST_F(WorkStoreTest, NothingButTheFileLiesInTheFolderAtRest) {
    const auto rows = store->OpenRecordset(u"T_RvComment");
    addComment(*rows, 1, u"x");
    rows->Close();
    EXPECT_EQ(filesIn(file.folder.path()), 1);
}

// Copies.

TEST_F(WorkStoreTest, ACopyHoldsWhatWasWrittenSoFarAndReplacesAFile) {
    const auto rows = store->OpenRecordset(u"T_RvComment");
    addComment(*rows, 1, u"x");
    const fs::path copy = file.folder / "控え.adb";
    std::ofstream(copy) << "not a database";
    store->copyTo(fromUtf8(copy.string()));
    addComment(*rows, 2, u"y");
    rows->Close();
    EXPECT_EQ(countIn(copy, u"T_RvComment"), 1);
    EXPECT_EQ(countIn(file.path, u"T_RvComment"), 2);
    EXPECT_EQ(filesIn(file.folder.path()), 2);
}

TEST_F(WorkStoreTest, ACopyIsWholeWhileOthersReadAndWrite) {
    const auto rows = store->OpenRecordset(u"T_RvComment");
    for (int i = 0; i < 1000; ++i) {
        addComment(*rows, i, Text(100, u'あ'));
    }
    rows->Close();
    sqlite3* reader = nullptr; // in the middle of its rows
    sqlite3* writer = nullptr; // in the middle of a transaction
    sqlite3_open(file.path.c_str(), &reader);
    sqlite3_open(file.path.c_str(), &writer);
    sqlite3_stmt* reading = nullptr;
    sqlite3_prepare_v2(reader, "SELECT * FROM T_RvComment", -1, &reading, nullptr);
    ASSERT_EQ(sqlite3_step(reading), SQLITE_ROW);
    ASSERT_EQ(sqlite3_exec(writer, "BEGIN IMMEDIATE; DELETE FROM T_RvComment WHERE objectNo < 500", nullptr,
                           nullptr, nullptr),
              SQLITE_OK);
    const fs::path copy = file.folder / "copy.adb";
    store->copyTo(fromUtf8(copy.string()));
    EXPECT_EQ(countIn(copy, u"T_RvComment"), 1000);
    sqlite3_finalize(reading);
    sqlite3_close(reader);
    ASSERT_EQ(sqlite3_exec(writer, "COMMIT", nullptr, nullptr, nullptr), SQLITE_OK);
    sqlite3_close(writer);
    EXPECT_EQ(countOf(*store, u"T_RvComment"), 500);
}

TEST_F(WorkStoreTest, ACopyIsTheFileByteForByte) {
    const auto bytesOf = [](const fs::path& path) {
        std::ifstream bytes(path, std::ios::binary);
        return std::string(std::istreambuf_iterator<char>(bytes), {});
    };
    const fs::path copy = file.folder / "copy.adb";
    store->copyTo(fromUtf8(copy.string()));
    EXPECT_EQ(bytesOf(copy), bytesOf(file.path));
    const auto rows = store->OpenRecordset(u"T_RvComment");
    for (int i = 0; i < 6000; ++i) { // more than is copied at once
        addComment(*rows, i, Text(100, u'あ'));
    }
    store->copyTo(fromUtf8(copy.string()));
    ASSERT_GT(fs::file_size(copy), 1u << 20);
    EXPECT_TRUE(bytesOf(copy) == bytesOf(file.path));
    EXPECT_EQ(integrityOf(copy), "ok");
}

// Whether somebody else holds a lock for reading on the file, as another process sees it.
bool isLockedForOthers(const fs::path& path) {
    const pid_t child = fork();
    if (child == 0) {
        const int descriptor = ::open(path.c_str(), O_RDWR);
        struct flock lock {};
        lock.l_type = F_WRLCK;
        lock.l_start = 0x40000002; // where SQLite keeps the locks of readers
        lock.l_len = 510;
        const bool asked = ::fcntl(descriptor, F_GETLK, &lock) == 0;
        _exit(asked && lock.l_type != F_UNLCK ? 1 : 0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 1;
}

TEST_F(WorkStoreTest, ACopyKeepsTheLocksThatThisProgramHolds) {
    const auto rows = store->OpenRecordset(u"T_RvComment");
    addComment(*rows, 1, u"x");
    rows->Close();
    EXPECT_FALSE(isLockedForOthers(file.path));
    sqlite3* reader = nullptr;
    sqlite3_open(file.path.c_str(), &reader);
    sqlite3_stmt* reading = nullptr;
    sqlite3_prepare_v2(reader, "SELECT * FROM T_RvComment", -1, &reading, nullptr);
    ASSERT_EQ(sqlite3_step(reading), SQLITE_ROW);
    ASSERT_TRUE(isLockedForOthers(file.path));
    store->copyTo(fromUtf8((file.folder / "copy.adb").string()));
    EXPECT_TRUE(isLockedForOthers(file.path));
    sqlite3_finalize(reading);
    sqlite3_close(reader);
    EXPECT_FALSE(isLockedForOthers(file.path)) << "and keeps none of its own";
}

TEST_F(WorkStoreTest, ACopyThatCannotBeMadeLeavesTheOldFile) {
    EXPECT_EQ(errorNumberOf([&] { store->copyTo(fromUtf8((file.folder / "no" / "copy.adb").string())); }),
              76);
    const fs::path folder = file.folder / "folder.adb";
    fs::create_directory(folder);
    std::ofstream(folder / "kept") << "x";
    EXPECT_EQ(errorNumberOf([&] { store->copyTo(fromUtf8(folder.string())); }), 70);
    EXPECT_TRUE(fs::exists(folder / "kept"));
    EXPECT_EQ(filesIn(file.folder.path()), 2);
}

} // namespace
} // namespace relvane::test
