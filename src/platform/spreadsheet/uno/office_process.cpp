#include "uno/office_process.h"

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <langinfo.h>
#include <string_view>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>
#include <vector>

#include "uno/file_url.h"

extern char** environ;

namespace relvane::spreadsheet {
namespace {

using namespace std::chrono_literals;

constexpr const char* program = RELVANE_OFFICE_FOLDER "/soffice.bin";
constexpr int wantsRestart[] = {79, 81}; // exit codes
constexpr std::chrono::milliseconds patience = 10s, pause = 10ms;

std::vector<std::string> wordsOf(const OfficeStart& start) {
    std::vector<std::string> words = {program,
                                      "--norestore",
                                      "--nologo",
                                      "--nodefault",
                                      "--accept=pipe,name=" + start.pipe + ";urp",
                                      "-env:UserInstallation=" + fileUrl(start.settings.string())};
    if (!start.windows) {
        words.emplace_back("--headless");
    }
    return words;
}

// File names are UTF-8, also where the locale says nothing of it.
std::vector<std::string> surroundings(bool windows) {
    std::vector<std::string> all;
    bool utf8 = false;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        const std::string_view text = *variable;
        const bool locale =
            text.starts_with("LC_ALL=") || text.starts_with("LC_CTYPE=") || text.starts_with("LANG=");
        utf8 = utf8 || (locale && (text.find("UTF-8") != text.npos || text.find("utf8") != text.npos));
        if (!text.starts_with("LC_ALL=")) {
            all.emplace_back(text);
        }
    }
    if (const char* chosen = std::getenv("LC_ALL"); windows && utf8 && chosen != nullptr) {
        all.emplace_back(std::string("LC_ALL=") + chosen);
    } else if (!windows || !utf8) {
        all.emplace_back("LC_ALL=C.UTF-8");
    }
    all.emplace_back("SAL_ENABLE_FILE_LOCKING=1");
    return all;
}

std::vector<char*> pointersTo(std::vector<std::string>& texts) {
    std::vector<char*> pointers;
    for (std::string& text : texts) {
        pointers.push_back(text.data());
    }
    pointers.push_back(nullptr);
    return pointers;
}

// In the child: nothing of ours stays open, and nobody waits for its output.
void standAlone(bool windows, pid_t parent) {
    ::setsid();
    if (!windows) {
        ::prctl(PR_SET_PDEATHSIG, SIGKILL);
        if (::getppid() != parent) {
            ::_exit(1);
        }
    }
    const int nothing = ::open("/dev/null", O_RDWR);
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO}) {
        ::dup2(nothing, stream);
    }
    ::close_range(STDERR_FILENO + 1, ~0U, 0);
}

} // namespace

OfficeProcess::OfficeProcess(OfficeStart start) : start_(std::move(start)) {
    this->start();
}

OfficeProcess::~OfficeProcess() {
    if (!released_) {
        kill();
    } else if (id_ != 0) {
        endOf(); // when the person has closed it already, nothing of it stays
    }
}

void OfficeProcess::start() {
    std::vector<std::string> words = wordsOf(start_), variables = surroundings(start_.windows);
    const std::vector<char*> arguments = pointersTo(words), environment = pointersTo(variables);
    const pid_t parent = ::getpid();
    const pid_t child = ::fork();
    if (child == 0) {
        standAlone(start_.windows, parent);
        ::execve(program, arguments.data(), environment.data());
        ::_exit(127);
    }
    id_ = child > 0 ? child : 0;
}

std::optional<int> OfficeProcess::endOf() {
    int status = 0;
    if (id_ != 0 && ::waitpid(id_, &status, WNOHANG) == 0) {
        return std::nullopt;
    }
    id_ = 0;
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

bool OfficeProcess::lives() {
    if (id_ == 0) {
        return false;
    }
    const std::optional<int> end = endOf();
    if (!end) {
        return true;
    }
    constexpr int mostRestarts = 2;
    if ((*end == wantsRestart[0] || *end == wantsRestart[1]) && restarts_++ < mostRestarts) {
        start();
    }
    return id_ != 0;
}

void OfficeProcess::waitForEnd() {
    const auto end = std::chrono::steady_clock::now() + patience;
    while (id_ != 0 && !endOf() && std::chrono::steady_clock::now() < end) {
        std::this_thread::sleep_for(pause);
    }
    kill();
}

void OfficeProcess::kill() {
    if (id_ != 0) {
        ::kill(-id_, SIGKILL); // its session, with whatever it has started
        ::kill(id_, SIGKILL);  // before it has one
        ::waitpid(id_, nullptr, 0);
        id_ = 0;
    }
}

} // namespace relvane::spreadsheet
