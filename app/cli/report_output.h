// Where the reports go that a command opens: into a folder as PDF files, or nowhere.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>

#include "platform/access.h"

namespace relvane::cli {

struct ReportOutput {
    // Each report opened becomes NAME.pdf in this folder; without a folder it is laid out and shown to nobody.
    std::optional<std::filesystem::path> folder;
    std::function<void(const std::filesystem::path&)>
        written; // called with each file, when there is someone to call
};

// The application that "shows" the reports of a work database: its preview writes them to `output`, its printing is
// error 2202, since a command has no printer.
std::shared_ptr<access::Application> newReportApplication(const ReportOutput& output);

// One report of the work database at `store` into a PDF file.
void writeReport(const Text& store, const Text& reportName, const std::filesystem::path& file);

} // namespace relvane::cli
