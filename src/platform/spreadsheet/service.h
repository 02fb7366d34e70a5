// The spreadsheet program of this machine, LibreOffice Calc, as a module that is loaded when a workbook is wanted: the
// programs start without it, and say what is missing when somebody asks for a workbook.
#pragma once

#include <chrono>
#include <filesystem>
#include <memory>

#include "platform/spreadsheet.h"

namespace relvane::spreadsheet {

struct ServiceOptions {
    // A folder of the program's own: the settings of the instance lie in it, and programs with the same folder share
    // one instance, which GetObject finds.
    std::filesystem::path folder;
    // Otherwise nothing is ever shown, and the instance ends with the program that started it.
    bool windows = false;
    // For one answer, and for the instance to come up; then it counts as gone.
    std::chrono::milliseconds patience = std::chrono::minutes(1);
};

// Where the module lies beside the program that runs: "lib/relvane/spreadsheet.so" in the folder above its own.
std::filesystem::path installedModule();

// An application without an instance. Error 429 when the module or what it needs is not installed, with a sentence
// that says so.
std::shared_ptr<Application> newSpreadsheet(const ServiceOptions& options,
                                            const std::filesystem::path& module = installedModule());

} // namespace relvane::spreadsheet
