// What `document` writes beside the paper: comma-separated files, text files, one workbook.
#pragma once

#include <filesystem>
#include <functional>
#include <memory>
#include <set>
#include <string>
#include <string_view>

#include "session.h"

namespace relvane::cli {

enum class Format { Pdf, Csv, Text, Xls };
using Formats = std::set<Format>;

// "pdf,csv,text,xls" in any order. UsageError for another word.
Formats parseFormats(const std::string& list);

// Whether one of the formats is written from what the panel of that name analyses (PanelDesk::name).
bool hasExports(std::string_view panel, const Formats& formats);

// The exports of one folder. The workbook stays open from the first list to the last.
class Exports {
public:
    Exports(Formats formats, std::filesystem::path folder,
            std::function<void(const std::filesystem::path&)> written);

    const Formats& formats() const { return formats_; }

    // Presses the outputs of the analyses that the desk has run. Whether all went without an error.
    bool write(Session& session);
    // Saves the workbook, if there is one, from any desk.
    bool finish(Session& session);

private:
    void pressOutputs(Session& session);
    void fillWorkbook(Session& session);

    Formats formats_;
    std::filesystem::path folder_, workbook_;
    std::function<void(const std::filesystem::path&)> written_;
    std::shared_ptr<spreadsheet::Application> excel_;
};

} // namespace relvane::cli
