// The spreadsheet service as this build has it, and LibreOffice's own converter as a second reader of workbooks.
#pragma once

#include <filesystem>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <sys/types.h>
#include <vector>

#include "spreadsheet/service.h"
#include "support/samples.h"

namespace relvane::test {

// Skips the test, with the reason, in a build that found no LibreOffice.
#ifdef RELVANE_SPREADSHEET_MODULE
inline constexpr const char* spreadsheetModule = RELVANE_SPREADSHEET_MODULE;
inline constexpr const char* converter = RELVANE_SOFFICE;
inline constexpr const char* killedProgram = RELVANE_KILLED_PROGRAM;
#define NEEDS_OFFICE()
#else
inline constexpr const char* spreadsheetModule = "";
inline constexpr const char* converter = "";
inline constexpr const char* killedProgram = "";
#define NEEDS_OFFICE() GTEST_SKIP() << "this build has no spreadsheet service: libreoffice-dev was not found"
#endif

// The processes that have the folder in their command line: instances that work in it.
std::vector<pid_t> officesIn(const std::filesystem::path& folder);

using Cells = std::vector<std::vector<std::string>>; // rows of texts as a person sees them, UTF-8

// Every sheet of a workbook, read by LibreOffice's converter, which knows nothing of the service.
class Workbook {
public:
    explicit Workbook(const std::filesystem::path& file);

    Cells sheet(const std::string& name) const; // empty when there is none
    std::string flat() const;                   // the whole as flat XML

private:
    void convert(const std::string& format) const;

    std::filesystem::path file_;
    TemporaryFolder folder_;
};

} // namespace relvane::test
