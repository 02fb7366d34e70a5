#include "exports.h"

#include <algorithm>

#include "arguments.h"
#include "core/panels.h"
#include "output/excel_export.h"
#include "panel_desks.h"
#include "platform/native_path.h"
#include "report_output.h"

namespace relvane::cli {
namespace {

namespace fs = std::filesystem;

struct FormatWord {
    std::string_view word;
    Format format;
};
constexpr FormatWord formatWords[] = {
    {"pdf", Format::Pdf}, {"csv", Format::Csv}, {"text", Format::Text}, {"xls", Format::Xls}};

struct FileExport {
    std::string_view panel;
    ContextNumber done;
    Format format;
    std::string_view button, file;
};
constexpr FileExport fileExports[] = {
    {"objects", &AnalysisContext::DoneObject, Format::Csv, "cmdOCSV", "RvObject.csv"},
    {"tables", &AnalysisContext::DoneTable, Format::Csv, "cmdTCSV", "RvTable.csv"},
    {"queries", &AnalysisContext::DoneQuery, Format::Csv, "cmdQCSV", "RvQuery.csv"},
    {"queries", &AnalysisContext::DoneQuery, Format::Text, "cmdQText", "RvQuerySql.txt"},
    {"forms", &AnalysisContext::DoneForm, Format::Csv, "cmdFCSV", "RvForm.csv"},
    {"reports", &AnalysisContext::DoneReport, Format::Csv, "cmdRCSV", "RvReport.csv"},
    {"modules", &AnalysisContext::DoneModule, Format::Text, "cmdMText", "RvModule.txt"},
    {"macros", &AnalysisContext::DoneMacro, Format::Csv, "cmdMCSV", "RvMacro.csv"},
};

struct SheetExport {
    std::string_view panel;
    ContextNumber done;
    const WorkbookList& list;
};
constexpr SheetExport sheetExports[] = {
    {"objects", &AnalysisContext::DoneObject, objectList},
    {"tables", &AnalysisContext::DoneTable, tableList},
    {"queries", &AnalysisContext::DoneQuery, queryList},
};

bool hasRun(const AnalysisContext& context, ContextNumber done) {
    return context.*done != 0 && context.*done != noSuchObject;
}

} // namespace

Formats parseFormats(const std::string& list) {
    Formats formats;
    for (std::size_t begin = 0; begin <= list.size();) {
        const std::size_t end = std::min(list.find(',', begin), list.size());
        const std::string word = list.substr(begin, end - begin);
        const auto found = std::ranges::find(formatWords, word, &FormatWord::word);
        if (found == std::end(formatWords)) {
            throw UsageError("\"" + word + "\" is no format: pdf, csv, text, xls");
        }
        formats.insert(found->format);
        begin = end + 1;
    }
    return formats;
}

bool hasExports(std::string_view panel, const Formats& formats) {
    const auto isFile = [&](const FileExport& one) {
        return one.panel == panel && formats.contains(one.format);
    };
    return std::ranges::any_of(fileExports, isFile) ||
           (formats.contains(Format::Xls) &&
            std::ranges::count(sheetExports, panel, &SheetExport::panel) > 0);
}

Exports::Exports(Formats formats, fs::path folder, std::function<void(const fs::path&)> written)
    : formats_(std::move(formats)), folder_(std::move(folder)), written_(std::move(written)) {}

bool Exports::write(Session& session) {
    pressOutputs(session);
    if (formats_.contains(Format::Xls)) {
        fillWorkbook(session);
    }
    return !session.hasFailed();
}

void Exports::pressOutputs(Session& session) {
    for (const FileExport& one : fileExports) {
        if (!formats_.contains(one.format) || !hasRun(session.desk.context, one.done)) {
            continue;
        }
        if (!session.desk.frmOut.Visible) {
            pressAll(session, {"m9"});
        }
        const fs::path file = folder_ / one.file;
        makeFolder(folder_);
        session.dialogs.files.push_back(textOfNativePath(file.string()));
        if (!pressAll(session, {"frmOut." + std::string(one.button)})) {
            return;
        }
        written_(file);
    }
}

// Every desk takes the same spreadsheet program, so that the second list finds the workbook open. A list without rows
// has no sheet.
void Exports::fillWorkbook(Session& session) {
    AnalysisContext& context = session.desk.context;
    for (const SheetExport& one : sheetExports) {
        if (session.hasFailed() || !hasRun(context, one.done)) {
            continue;
        }
        const Text path = workbookPath(context, textOfNativePath(folder_.string()));
        makeFolder(folder_);
        context.ExcelApp = excel_;
        session.desk.dispatch([&] {
            if (exportToWorkbook(context, one.list, path) == 1) {
                workbook_ = nativePath(path);
            }
        });
        excel_ = context.ExcelApp;
    }
}

bool Exports::finish(Session& session) {
    session.desk.context.ExcelApp = std::move(excel_);
    const bool saved = closeWorkbook(session.desk.context);
    if (saved && !workbook_.empty()) {
        written_(workbook_);
    }
    return saved;
}

} // namespace relvane::cli
