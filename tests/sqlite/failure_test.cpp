// What goes wrong around the work database: files that are missing, foreign, damaged or protected, and disks that
// fail or are full. Each is an error with its number, and what was in the file stays.
#include <fstream>
#include <unistd.h>

#include <gtest/gtest.h>
#include <sqlite3.h>

#include "sqlite/store_files.h"
#include "sqlite/watched_writes.h"
#include "sqlite/work_store.h"
#include "support/integrity.h"

namespace relvane::test {
namespace {

namespace fs = std::filesystem;

int openNumber(const fs::path& path) {
    return errorNumberOf([&] { openWorkStore(fromUtf8(path.string())); });
}

void overwrite(const fs::path& path, std::streamoff offset, const std::string& bytes) {
    std::fstream file(path, std::ios::in | std::ios::out | std::ios::binary);
    file.seekp(offset);
    file << bytes;
}

void addRows(RowStore& store, int count) {
    const auto rows = store.OpenRecordset(u"T_RvModule");
    for (int i = 0; i < count; ++i) {
        rows->AddNew();
        rows->Collect(u"Line", std::int64_t{i});
        rows->Collect(u"Procedure", Text(500, u'行'));
        rows->Update();
    }
    rows->Close();
}

int rowsOf(RowStore& store) {
    int count = 0;
    for (const auto rows = store.OpenRecordset(u"T_RvModule"); !rows->EOF_(); rows->MoveNext()) {
        ++count;
    }
    return count;
}

// Takes the rights of the superuser away from this process, as far as it has them.
class OrdinaryUser {
public:
    explicit OrdinaryUser(const fs::path& readable) {
        if (geteuid() == 0) {
            fs::permissions(readable, fs::perms::all & ~(fs::perms::others_write | fs::perms::group_write));
            dropped_ = seteuid(65534) == 0;
        }
    }
    ~OrdinaryUser() {
        if (dropped_ && seteuid(0) != 0) {
            std::abort();
        }
    }
    OrdinaryUser(const OrdinaryUser&) = delete;
    OrdinaryUser& operator=(const OrdinaryUser&) = delete;

private:
    bool dropped_ = false;
};

TEST(WorkStoreFile, ThatIsMissingIs3024AndWithoutItsFolder3044) {
    const TemporaryFolder folder;
    EXPECT_EQ(openNumber(folder / "Relvane.mdb"), 3024);
    EXPECT_FALSE(fs::exists(folder / "Relvane.mdb"));
    EXPECT_EQ(openNumber(folder / "none/Relvane.mdb"), 3044);
}

TEST(WorkStoreFile, ThatIsAFolderIs3051) {
    const TemporaryFolder folder;
    EXPECT_EQ(openNumber(folder.path()), 3051);
}

TEST(WorkStoreFile, OfAnotherKindIs3343) {
    const TemporaryFolder folder;
    const fs::path path = folder / "Relvane.mdb";
    std::ofstream(path, std::ios::binary) << "";
    EXPECT_EQ(openNumber(path), 3343);
    std::ofstream(path, std::ios::binary) << "short";
    EXPECT_EQ(openNumber(path), 3343);
    std::ofstream(path, std::ios::binary)
        << std::string("\0\1\0\0Standard Jet DB\0", 20) << std::string(4096, '\0');
    EXPECT_EQ(openNumber(path), 3343);
    fs::remove(path);
    sqlite3* other = nullptr; // a SQLite file of another program
    ASSERT_EQ(sqlite3_open(path.c_str(), &other), SQLITE_OK);
    sqlite3_exec(other, "CREATE TABLE T_RvTitle (FileName)", nullptr, nullptr, nullptr);
    sqlite3_close(other);
    EXPECT_EQ(openNumber(path), 3343);
}

TEST(WorkStoreFile, OfAnotherVersionIs3343) {
    const StoreFile file;
    sqlite3* handle = nullptr;
    ASSERT_EQ(sqlite3_open(file.path.c_str(), &handle), SQLITE_OK);
    sqlite3_exec(handle, "PRAGMA user_version = 2", nullptr, nullptr, nullptr);
    sqlite3_close(handle);
    EXPECT_EQ(openNumber(file.path), 3343);
}

TEST(WorkStoreFile, CutShortIs3049) {
    const StoreFile file;
    fs::resize_file(file.path, fs::file_size(file.path) / 2);
    EXPECT_EQ(openNumber(file.path), 3049);
}

TEST(WorkStoreFile, WithADamagedCatalogueIs3049) {
    const StoreFile file;
    overwrite(file.path, 100, std::string(300, '\xff'));
    EXPECT_EQ(openNumber(file.path), 3049);
}

TEST(WorkStoreFile, WithADamagedPageIs3049WhereThePageIsRead) {
    const StoreFile file;
    addRows(*openWorkStore(file.text()), 2000);
    const auto size = static_cast<std::streamoff>(fs::file_size(file.path));
    overwrite(file.path, size - 200 * 4096, std::string(100 * 4096, '\xee'));
    const auto store = openWorkStore(file.text());
    EXPECT_EQ(errorNumberOf([&] { rowsOf(*store); }), 3049);
    const SortKey key{u"Procedure", false, Collation::Kana};
    EXPECT_EQ(errorNumberOf([&] { store->OpenSorted(u"T_RvModule", {&key, 1}); }), 3049);
}

// Any single damage ends in an error of the platform or goes unnoticed, but never in a crash or another exception.
TEST(WorkStoreFile, DamagedAnywhereNeverBringsTheProgramDown) {
    const StoreFile file;
    addRows(*openWorkStore(file.text()), 50);
    const fs::path copy = file.folder / "damaged.mdb";
    const auto size = static_cast<std::streamoff>(fs::file_size(file.path));
    int refused = 0;
    for (std::streamoff offset = 0; offset < size; offset += size / 60) {
        fs::copy_file(file.path, copy, fs::copy_options::overwrite_existing);
        overwrite(copy, offset, std::string(64, static_cast<char>(offset % 251)));
        refused += errorNumberOf([&] {
                       const auto store = openWorkStore(fromUtf8(copy.string()));
                       rowsOf(*store);
                       store->OpenRecordset(u"QE_RvTable")->EOF_();
                       store->Execute(u"delete * from T_RvModule;");
                       addRows(*store, 3);
                   }) != 0;
    }
    EXPECT_GT(refused, 0);
}

TEST(WorkStoreFile, ThatMayNotBeReadIs3051) {
    const StoreFile file;
    fs::permissions(file.path, fs::perms::none);
    const OrdinaryUser user(file.folder.path());
    EXPECT_EQ(openNumber(file.path), 3051);
}

TEST(WorkStoreFile, ThatMayNotBeWrittenCanBeReadAndIs3027ToWrite) {
    const StoreFile file;
    addRows(*openWorkStore(file.text()), 3);
    fs::permissions(file.path, fs::perms::owner_read | fs::perms::group_read | fs::perms::others_read);
    const OrdinaryUser user(file.folder.path());
    const auto store = openWorkStore(file.text());
    EXPECT_EQ(rowsOf(*store), 3);
    EXPECT_EQ(errorNumberOf([&] { addRows(*store, 1); }), 3027);
    EXPECT_EQ(errorNumberOf([&] { store->Execute(u"delete * from T_RvModule;"); }), 3027);
    EXPECT_EQ(rowsOf(*store), 3);
}

TEST(WorkStoreFile, InAFolderThatMayNotBeWrittenIs3027ToWrite) {
    const StoreFile file;
    addRows(*openWorkStore(file.text()), 3);
    fs::permissions(file.path, fs::perms::all);
    fs::permissions(file.folder.path(), fs::perms::owner_read | fs::perms::owner_exec);
    {
        const OrdinaryUser user(file.folder.path());
        const auto store = openWorkStore(file.text());
        EXPECT_EQ(rowsOf(*store), 3);
        EXPECT_EQ(errorNumberOf([&] {
                      store->Execute(u"delete * from T_RvModule;");
                      store->flush();
                  }),
                  3027);
        EXPECT_EQ(errorNumberOf([&] { store->copyTo(fromUtf8((file.folder / "copy.adb").string())); }), 70);
    }
    fs::permissions(file.folder.path(), fs::perms::owner_all);
    EXPECT_EQ(integrityOf(file.path), "ok");
    EXPECT_EQ(rowsOf(*openWorkStore(file.text())), 3);
}

// A disk that takes `allowed` writes and then fails each with `code`.
WatchedWrites::Hooks failingAfter(int allowed, int code) {
    return {.before = [=](int number) { return number > allowed ? code : SQLITE_OK; }};
}

struct Failing {
    int code;
    int number;
};

class FailingDisk : public testing::TestWithParam<Failing> {};

TEST_P(FailingDisk, IsAnErrorAndTheFileStaysWholeHoweverManyWritesItTook) {
    for (const int allowed : {0, 1, 2, 3, 5, 8, 13, 40, 200, 500}) {
        SCOPED_TRACE(allowed);
        const StoreFile file;
        addRows(*openWorkStore(file.text()), 20);
        {
            const WatchedWrites disk("Relvane.mdb", failingAfter(allowed, GetParam().code));
            const auto store = openWorkStore(file.text());
            EXPECT_EQ(errorNumberOf([&] {
                          store->Execute(u"delete * from T_RvModule;");
                          addRows(*store, 20000); // more than the cache holds
                      }),
                      GetParam().number);
        }
        EXPECT_EQ(integrityOf(file.path), "ok");
        const auto store = openWorkStore(file.text());
        EXPECT_TRUE(rowsOf(*store) == 20 || rowsOf(*store) == 0) << rowsOf(*store);
        store->Execute(u"delete * from T_RvModule;");
        addRows(*store, 5);
        EXPECT_EQ(rowsOf(*store), 5);
    }
}

INSTANTIATE_TEST_SUITE_P(Kinds, FailingDisk,
                         testing::Values(Failing{SQLITE_FULL, 61}, Failing{SQLITE_IOERR_WRITE, 57}),
                         [](const auto& kind) { return kind.param.number == 61 ? "Full" : "Broken"; });

TEST(WorkStoreFile, ACopyOntoAFullDiskIs61AndLeavesNothing) {
    const StoreFile file;
    addRows(*openWorkStore(file.text()), 100);
    const fs::path copy = file.folder / "copy.adb";
    const WatchedWrites disk("copy.adb.unfinished", failingAfter(2, SQLITE_FULL));
    const auto store = openWorkStore(file.text());
    EXPECT_EQ(errorNumberOf([&] { store->copyTo(fromUtf8(copy.string())); }), 61);
    EXPECT_EQ(disk.count(), 3) << "nothing is written behind the failure";
    EXPECT_FALSE(fs::exists(copy));
    EXPECT_EQ(std::distance(fs::directory_iterator(file.folder.path()), fs::directory_iterator()), 1);
}

TEST(WorkStoreFile, ACopyThatFailsLeavesTheFileThatItWasToReplace) {
    for (const auto& [code, number] : {std::pair{SQLITE_FULL, 61}, std::pair{SQLITE_IOERR_WRITE, 57}}) {
        const StoreFile file;
        addRows(*openWorkStore(file.text()), 3);
        const fs::path copy = file.folder / "copy.adb";
        openWorkStore(file.text())->copyTo(fromUtf8(copy.string()));
        addRows(*openWorkStore(file.text()), 4000);
        const WatchedWrites disk("copy.adb.unfinished", failingAfter(1, code));
        const auto store = openWorkStore(file.text());
        EXPECT_EQ(errorNumberOf([&] { store->copyTo(fromUtf8(copy.string())); }), number);
        EXPECT_EQ(rowsOf(*openWorkStore(fromUtf8(copy.string()))), 3);
        EXPECT_EQ(rowsOf(*store), 4003);
        EXPECT_FALSE(fs::exists(copy.string() + ".unfinished"));
    }
}

TEST(WorkStoreFile, AFolderThatVanishesUnderACopyIs76AndLosesNothing) {
    const StoreFile file;
    addRows(*openWorkStore(file.text()), 3);
    const fs::path folder = file.folder / "stick";
    fs::create_directory(folder);
    const WatchedWrites disk("copy.adb.unfinished", {.after = [&](int number) {
                                 if (number == 1) {
                                     fs::rename(folder, file.folder / "gone");
                                 }
                             }});
    const auto store = openWorkStore(file.text());
    EXPECT_EQ(errorNumberOf([&] { store->copyTo(fromUtf8((folder / "copy.adb").string())); }), 76);
    EXPECT_GT(disk.count(), 1);
    EXPECT_EQ(rowsOf(*store), 3);
    addRows(*store, 1);
    EXPECT_EQ(rowsOf(*store), 4);
}

} // namespace
} // namespace relvane::test
