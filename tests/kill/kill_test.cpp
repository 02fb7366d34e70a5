// The program dies by SIGKILL in the middle of a session: the target is what it was to the byte, the work database
// opens and is sound, and the next session runs to its end.
//
// RELVANE_KILLS=200 in the environment makes it as many deaths instead of the few of a usual run: by hand, once.
#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <iterator>
#include <map>
#include <random>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>
#include <sqlite3.h>

#include "platform/runtime_error.h"
#include "sqlite/work_store.h"
#include "support/integrity.h"
#include "support/samples.h"

namespace relvane::test {
namespace {

namespace fs = std::filesystem;
using Clock = std::chrono::steady_clock;

int killsOr(int usual) {
    const char* wanted = std::getenv("RELVANE_KILLS");
    return wanted == nullptr ? usual : std::atoi(wanted);
}

std::string contentOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

pid_t start(const fs::path& programFolder, const fs::path& target, int fatalWrite, const fs::path& output) {
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, output.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                     0600);
    const std::string errors = output.string() + ".err";
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errors.c_str(), O_WRONLY | O_CREAT | O_TRUNC,
                                     0600);
    std::string words[] = {RELVANE_KILLED_RUN, programFolder.string(), target.string(),
                           std::to_string(fatalWrite)};
    char* arguments[] = {words[0].data(), words[1].data(), words[2].data(), words[3].data(), nullptr};
    pid_t child = -1;
    if (posix_spawn(&child, arguments[0], &actions, nullptr, arguments, environ) != 0) {
        throw std::runtime_error("cannot start " + words[0]);
    }
    posix_spawn_file_actions_destroy(&actions);
    return child;
}

// How a child ended: its exit code, or minus the signal.
int endOf(pid_t child) {
    int status = 0;
    waitpid(child, &status, 0);
    return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
}

class Killed : public testing::Test {
protected:
    TemporaryFolder folder;
    fs::path programFolder = folder / "program";
    fs::path target = folder / "受注.mdb";
    fs::path store = programFolder / "Relvane.mdb";
    fs::path output = folder / "output";
    std::string targetContent;
    std::map<std::string, int> rowsOfWholeRun;
    int writes = 0;

    void SetUp() override {
        setenv("QT_QPA_PLATFORM", "offscreen", 1);
        fs::copy(buildFolder() / "share" / "relvane", programFolder);
        fs::copy_file(ownSample("juchu.mdb"), target);
        targetContent = contentOf(target);
        ASSERT_EQ(wholeRun(), 0);
        ASSERT_EQ(wholeRun(), 0); // the second has rows to delete, as most runs have
        std::ifstream(output) >> writes;
        ASSERT_GT(writes, 20);
        rowsOfWholeRun = rows();
        ASSERT_GT(rowsOfWholeRun["T_RvObject"], 0);
        ASSERT_EQ(rowsOfWholeRun["T_RvHyousi"], 1);
        ASSERT_EQ(rowsOfWholeRun["T_RvTitle"], 1);
    }

    int wholeRun() {
        const int end = endOf(start(programFolder, target, 0, output));
        if (end != 0) {
            std::cout << contentOf(output.string() + ".err");
        }
        return end;
    }

    std::map<std::string, int> rows() {
        std::map<std::string, int> counts;
        const auto open = openWorkStore(fromUtf8(store.string()));
        for (const char* table : {"T_RvObject", "T_DataBase", "T_RvHyousi", "T_RvTitle"}) {
            int& count = counts[table];
            for (const auto cursor = open->OpenRecordset(fromUtf8(table)); !cursor->EOF_();
                 cursor->MoveNext()) {
                ++count;
            }
        }
        return counts;
    }

    void expectNothingLost() {
        EXPECT_TRUE(contentOf(target) == targetContent) << "the target was changed";
        EXPECT_EQ(test::integrityOf(store), "ok");
        rows(); // opens as the program opens it
        EXPECT_EQ(wholeRun(), 0);
        EXPECT_EQ(rows(), rowsOfWholeRun);
        EXPECT_TRUE(contentOf(target) == targetContent) << "the target was changed";
    }
};

TEST_F(Killed, AfterTheNthWriteNothingIsLost) {
    const int kills = std::min(killsOr(20), writes);
    for (int i = 0; i < kills; ++i) {
        const int fatalWrite = 1 + i * (writes - 1) / (kills - 1);
        SCOPED_TRACE(fatalWrite);
        ASSERT_EQ(endOf(start(programFolder, target, fatalWrite, output)), -SIGKILL);
        expectNothingLost();
    }
    std::cout << "killed after " << kills << " of the " << writes << " writes of a session\n";
}

TEST_F(Killed, AtRandomMomentsNothingIsLost) {
    const int moments = killsOr(3);
    const auto begin = Clock::now();
    ASSERT_EQ(wholeRun(), 0);
    const std::chrono::duration<double> duration = Clock::now() - begin;
    std::mt19937 random(std::random_device{}());
    std::uniform_real_distribution<> moment(0, duration.count());
    int killed = 0, journals = 0;
    for (int i = 0; i < moments; ++i) {
        const double seconds = moment(random);
        SCOPED_TRACE(seconds);
        const pid_t child = start(programFolder, target, 0, output);
        usleep(static_cast<useconds_t>(seconds * 1e6));
        kill(child, SIGKILL);
        const int end = endOf(child);
        ASSERT_TRUE(end == -SIGKILL || end == 0) << end;
        killed += end == -SIGKILL;
        journals += fs::exists(store.string() + "-journal");
        expectNothingLost();
    }
    std::cout << moments << " random moments within " << duration.count() << " s: " << killed
              << " sessions killed, " << journals << " of them inside a transaction\n";
}

} // namespace
} // namespace relvane::test
