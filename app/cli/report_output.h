// Where the reports go that a command opens: into a folder as PDF files, or nowhere.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include "platform/access.h"

namespace relvane::reports {
class ReportDocument;
}

namespace relvane::cli {

// With all folders above it. 76 or 70.
void makeFolder(const std::filesystem::path& folder);

// Reports of one name gathered in one file, until they are finished.
class ReportBinding {
public:
    ReportBinding();
    ~ReportBinding();

    Text chapter; // of the report that is opened next

    void add(const reports::ReportDocument& document, const std::filesystem::path& file);
    // Lets the files appear. Returns them in the order in which they were begun.
    std::vector<std::filesystem::path> finish();

private:
    struct Volume;
    std::vector<Volume> volumes_;
};

struct ReportOutput {
    // Each report opened becomes NAME.pdf in this folder; without a folder it is laid out and shown to nobody.
    std::optional<std::filesystem::path> folder;
    std::function<void(const std::filesystem::path&)>
        written; // called with each file, when there is someone to call
    // With a binding, reports of one name become one file, which appears when that is finished.
    std::shared_ptr<ReportBinding> binding{};
};

// The application that "shows" the reports of a work database: its preview writes them to `output`, its printing is
// error 2202, since a command has no printer.
std::shared_ptr<access::Application> newReportApplication(const ReportOutput& output);

// One report of the work database at `store` into a PDF file.
void writeReport(const Text& store, const Text& reportName, const std::filesystem::path& file);

} // namespace relvane::cli
