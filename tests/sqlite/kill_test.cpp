// A process that dies while it writes to the work database leaves a database that opens, holds the rows of the
// analysis before or of the whole one that died, and takes the next.
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>
#include <sqlite3.h>

#include "sqlite/store_files.h"
#include "sqlite/watched_writes.h"
#include "sqlite/work_store.h"
#include "support/integrity.h"

namespace relvane::test {
namespace {

constexpr int rowsBefore = 30;

void analyse(const Text& path, int rowCount) {
    const auto store = openWorkStore(path);
    const auto objects = store->OpenRecordset(u"T_RvObject");
    const auto database = store->OpenRecordset(u"T_DataBase");
    store->Execute(u"delete * from T_RvObject;");
    store->Execute(u"delete * from T_DataBase;");
    database->AddNew();
    database->Collect(u"DbName", Text(u"C:\\受注.mdb"));
    database->Update();
    for (int i = 1; i <= rowCount; ++i) {
        objects->AddNew();
        objects->Collect(u"objectNo", std::int64_t{i});
        objects->Collect(u"ObjectName", Text(200, u'名'));
        objects->Collect(u"Midasi", std::int64_t{rowCount});
        objects->Update();
    }
    objects->Close();
    database->Close();
}

// Runs the analysis in a process of its own, which dies after its write number `fatal`; 0 lets it live. Returns the
// number of writes, or nothing when it died.
std::optional<int> analyseInChild(const Text& path, int rowCount, int fatal) {
    int pipeEnds[2];
    if (pipe(pipeEnds) != 0) {
        throw std::runtime_error("no pipe");
    }
    const pid_t child = fork();
    if (child == 0) {
        const WatchedWrites writes("Relvane.mdb", {.after = [fatal](int number) {
                                       if (number == fatal) {
                                           raise(SIGKILL);
                                       }
                                   }});
        analyse(path, rowCount);
        const int count = writes.count();
        _exit(write(pipeEnds[1], &count, sizeof count) == sizeof count ? 0 : 1);
    }
    close(pipeEnds[1]);
    int count = 0;
    const bool counted = read(pipeEnds[0], &count, sizeof count) == sizeof count;
    close(pipeEnds[0]);
    int status = 0;
    waitpid(child, &status, 0);
    if (counted && WIFEXITED(status) && WEXITSTATUS(status) == 0) {
        return count;
    }
    EXPECT_TRUE(WIFSIGNALED(status) && WTERMSIG(status) == SIGKILL);
    return std::nullopt;
}

// The rows, after a check that all are of one analysis.
int rowsOfOneAnalysis(const Text& path) {
    const auto store = openWorkStore(path);
    int count = 0;
    Value midasi = Null{};
    for (const auto rows = store->OpenRecordset(u"T_RvObject"); !rows->EOF_(); rows->MoveNext()) {
        midasi = count++ == 0 ? rows->Field(u"Midasi") : midasi;
        EXPECT_EQ(rows->Field(u"Midasi"), midasi);
    }
    EXPECT_EQ(midasi, Value(std::int64_t{count}));
    return count;
}

bool isSound(const std::filesystem::path& path) {
    return integrityOf(path) == "ok";
}

void dieAtEachOf(int rowCount, int step) {
    const StoreFile file;
    analyse(file.text(), rowsBefore);
    const std::optional<int> writes = analyseInChild(file.text(), rowCount, 0);
    ASSERT_TRUE(writes.has_value());
    int before = 0, whole = 0;
    for (int fatal = 1; fatal <= *writes; fatal += step) {
        SCOPED_TRACE(fatal);
        analyse(file.text(), rowsBefore);
        ASSERT_FALSE(analyseInChild(file.text(), rowCount, fatal).has_value());
        EXPECT_TRUE(isSound(file.path));
        const int rows = rowsOfOneAnalysis(file.text());
        EXPECT_TRUE(rows == rowsBefore || rows == rowCount) << rows;
        ++(rows == rowsBefore ? before : whole);
        EXPECT_TRUE(analyseInChild(file.text(), rowCount, 0).has_value());
        EXPECT_EQ(rowsOfOneAnalysis(file.text()), rowCount);
    }
    std::cout << *writes << " writes; the rows of the run before were left " << before
              << " times, the whole new ones " << whole << " times\n";
    EXPECT_GT(before, 0);
}

TEST(Killed, AfterAnyWriteOfASmallAnalysis) {
    dieAtEachOf(60, 1);
}

TEST(Killed, AfterWritesOfAnAnalysisThatIsLargerThanTheCache) {
    dieAtEachOf(45000, 1700);
}

} // namespace
} // namespace relvane::test
