// A command of the command line: data plus one function. The help is made of the same data.
#pragma once

#include <span>
#include <string_view>

#include "arguments.h"

namespace relvane::cli {

// What a command ends with; part of the program's promise to scripts.
enum ExitCode { exitDone = 0, exitErrorReported = 1, exitWrongUsage = 2 };

struct Command {
    std::string_view name;      // "document"
    std::string_view arguments; // "TARGET [--out DIR]"
    std::string_view summary;   // one line
    std::span<const Option> options;
    int fewestArguments, mostArguments; // positional ones; -1: any number
    int (*run)(const Arguments& arguments);
};

// Options that every command knows.
extern const Option commonOptions[4];

int runDocument(const Arguments& arguments);
int runSave(const Arguments& arguments);
int runCompare(const Arguments& arguments);
int runImage(const Arguments& arguments);
int runPress(const Arguments& arguments);
int runInspect(const Arguments& arguments);
int runReport(const Arguments& arguments);

} // namespace relvane::cli
