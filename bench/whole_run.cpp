// Whole runs over big applications: does time grow in proportion to the number of objects, and what memory is needed?
//
//     bench_whole_run [N ...]
//
// For each N (250, 500, 1,000 and 2,000) a file of N tables and N queries is made and read by processes of their own:
// the reader alone (walk.h), and `relvane-cli document`, which selects the file and writes all its lists as PDF files,
// with its messages thrown away and with its gauge on a terminal. The last lines hold the time of one object in the
// biggest file against that in the smallest: 1 is growth in proportion.
#include <fcntl.h>
#include <spawn.h>

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "own_process.h"
#include "sample_builder/database_writer.h"
#include "sample_builder/many_tables.h"

extern char** environ;

namespace {

namespace fs = std::filesystem;
using namespace relvane::bench;
using Words = std::vector<std::string>;

// A terminal whose output somebody reads: without that its writer would wait.
class Terminal {
public:
    Terminal() : master_(posix_openpt(O_RDWR | O_NOCTTY)) {
        if (master_ < 0 || grantpt(master_) != 0 || unlockpt(master_) != 0) {
            throw std::runtime_error("no terminal to be had");
        }
        name_ = ptsname(master_);
        holder_ = open(name_.c_str(), O_RDWR | O_NOCTTY);
        reader_ = std::thread([this] {
            char block[4096];
            for (ssize_t count = 0; (count = read(master_, block, sizeof block)) > 0;) {
                shown_ += static_cast<std::size_t>(count);
            }
        });
    }
    // Bytes that were written to it.
    std::size_t close() {
        ::close(holder_); // the last end of the writers: reading ends
        reader_.join();
        ::close(master_);
        return shown_;
    }
    const std::string& name() const { return name_; }

private:
    int master_, holder_ = -1;
    std::string name_;
    std::size_t shown_ = 0;
    std::thread reader_;
};

Measured run(Words words, const std::string& errors) {
    std::vector<char*> arguments;
    for (std::string& word : words) {
        arguments.push_back(word.data());
    }
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    posix_spawn_file_actions_addopen(&actions, STDERR_FILENO, errors.c_str(), O_WRONLY | O_NOCTTY, 0);
    const auto begin = std::chrono::steady_clock::now();
    pid_t child = 0;
    const int failed = posix_spawn(&child, arguments[0], &actions, nullptr, arguments.data(), environ);
    posix_spawn_file_actions_destroy(&actions);
    int status = 0;
    rusage used{};
    if (failed != 0 || wait4(child, &status, 0, &used) != child || !WIFEXITED(status) ||
        WEXITSTATUS(status) != 0) {
        throw std::runtime_error(words[0] + " failed");
    }
    const std::chrono::duration<double> clock = std::chrono::steady_clock::now() - begin;
    return {clock.count(), seconds(used.ru_utime) + seconds(used.ru_stime), megabytes(used)};
}

void makeFile(int count, const fs::path& file) {
    inOwnProcess([&] {
        relvane::samples::writeDatabase(relvane::samples::manyTablesAndQueries(count), file);
        return Measured();
    });
}

struct Way {
    const char* name;
    Words (*words)(const std::string& file, const std::string& out);
    bool onTerminal;
};

Words reader(const std::string& file, const std::string&) {
    return {WALK_FILE, file};
}
Words document(const std::string& file, const std::string& out) {
    return {RELVANE_CLI, "document", file, "--out", out, "--quiet"};
}
Words documentWithGauge(const std::string& file, const std::string& out) {
    return {RELVANE_CLI, "document", file, "--out", out};
}
constexpr Way ways[] = {{"reader", reader, false},
                        {"document", document, false},
                        {"document, gauge on a terminal", documentWithGauge, true}};

Measured measure(const Way& way, const fs::path& file, const fs::path& out) {
    fs::create_directories(out);
    if (!way.onTerminal) {
        return run(way.words(file, out), "/dev/null");
    }
    Terminal terminal;
    const Measured measured = run(way.words(file, out), terminal.name());
    std::printf("    %zu bytes on the terminal\n", terminal.close());
    return measured;
}

} // namespace

int main(int argc, char** argv) {
    std::vector<int> counts;
    for (int i = 1; i < argc; ++i) {
        counts.push_back(std::atoi(argv[i]));
    }
    if (counts.empty()) {
        counts = {250, 500, 1000, 2000};
    }
    const fs::path folder = fs::temp_directory_path() / ("relvane-bench-" + std::to_string(getpid()));
    fs::create_directories(folder);
    std::vector<std::vector<double>> perObject(std::size(ways)); // ms of processor, for each count
    for (const int count : counts) {
        const fs::path file = folder / "many.mdb";
        makeFile(count, file);
        std::printf("%d tables and %d queries, %.1f MB\n", count, count,
                    static_cast<double>(fs::file_size(file)) / 1e6);
        for (std::size_t way = 0; way < std::size(ways); ++way) {
            const Measured measured = measure(ways[way], file, folder / "out");
            perObject[way].push_back(measured.processor * 1000 / (2 * count));
            std::printf("    %-30s clock %8.2f s, processor %8.2f s, memory %6.1f MB, %.3f ms an object\n",
                        ways[way].name, measured.clock, measured.processor, measured.megabytes,
                        perObject[way].back());
            std::fflush(stdout);
            fs::remove_all(folder / "out");
        }
    }
    for (std::size_t way = 0; way < std::size(ways); ++way) {
        std::printf("%-34s %d against %d: %.2f of the time an object\n", ways[way].name, counts.back(),
                    counts.front(), perObject[way].back() / perObject[way].front());
    }
    fs::remove_all(folder);
}
