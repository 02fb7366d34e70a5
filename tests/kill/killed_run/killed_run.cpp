// One session at the desk, as a person has it: selects a target, makes its object list, the cover and the line of
// the file's name. Dies by SIGKILL right after a given write to the work database or its journal.
//
//     killed_run PROGRAM_FOLDER TARGET WRITE       (WRITE 0: lives to the end and prints the number of writes)
#include <QGuiApplication>
#include <csignal>
#include <cstdlib>
#include <iostream>

#include "press_steps.h"
#include "session.h"
#include "sqlite/watched_writes.h"

namespace {

constexpr const char* steps[] = {"cmdObject",   "cmdHyousi(1)", "m8",          "frmSetUp.cmdOK",
                                 "optObject=1", "cmdObject",    "cmdHyousi(2)"};

int run(const std::string& programFolder, const std::string& target, int fatalWrite) {
    using namespace relvane;
    const test::WatchedWrites writes("Relvane.mdb", {.after = [fatalWrite](int number) {
                                         if (number == fatalWrite) {
                                             raise(SIGKILL);
                                         }
                                     }});
    {
        cli::Session session(programFolder, {}, false, false);
        if (!session.select(target)) {
            return EXIT_FAILURE;
        }
        for (const char* step : steps) {
            if (!cli::carryOut(session.desk, cli::parseStep(step))) {
                return EXIT_FAILURE;
            }
        }
        if (session.hasFailed()) {
            return EXIT_FAILURE;
        }
    }
    std::cout << writes.count() << '\n';
    return EXIT_SUCCESS;
}

} // namespace

int main(int count, char** arguments) {
    const QGuiApplication application(count, arguments);
    if (count != 4) {
        std::cerr << "usage: killed_run PROGRAM_FOLDER TARGET WRITE\n";
        return 2;
    }
    try {
        return run(arguments[1], arguments[2], std::atoi(arguments[3]));
    } catch (const std::exception& error) {
        std::cerr << "killed_run: " << error.what() << '\n';
        return EXIT_FAILURE;
    }
}
