// Rows for the reports under test, and what other programs say of the PDF files that come out.
#pragma once

#include <filesystem>
#include <memory>
#include <string>

#include "memory_store.h"
#include "reports/report_document.h"

namespace relvane::test {

// A text as tests write it.
Text text(const std::string& utf8);

// The moment at which all test reports are printed.
inline constexpr DateTime printed{2026, 11, 20, 16, 5, 9};

// The definition as it is delivered.
Text deliveredDefinition(const std::string& reportName);

// A work database with the delivered definitions, one row of database properties, no objects and no cover.
std::shared_ptr<MemoryStore> emptyStore();

// Adds `count` objects; the kinds take turns in the order of the report, a sixth each when `midasi` is 7.
void addObjects(MemoryStore& store, int count, int midasi = 7);
void addObject(MemoryStore& store, const Text& kind, const Text& name, const Value& queryType,
               const Value& description, int midasi = 7);
// Names, paths and descriptions as long as they can be.
void addLongestObjects(MemoryStore& store);
void setCover(MemoryStore& store, const Text& title, const Text& system, const Text& company,
              const Text& department, const Text& author);
void setFileLine(MemoryStore& store, const Text& line);

// Writes the report to a file of that name in the build folder, where one may look at it, and gives its path.
std::filesystem::path printed_pdf(const reports::ReportDocument& document, const std::string& name);
std::filesystem::path pdfFolder();

// The output of a command.
std::string outputOf(const std::string& command);
// The text of a PDF, page breaks as form feeds; `options` as pdftotext has them.
std::string pdfText(const std::filesystem::path& pdf, const std::string& options = "-layout");
// The same without blanks, line and page breaks.
std::string squeezed(const std::string& text);

} // namespace relvane::test
