#include "objects/file_list.h"

#include "core/error_report.h"
#include "core/file_name_parts.h"
#include "objects/table_walk.h"
#include "output/report_show.h"

namespace relvane {
namespace {

// `path` is what the row tells, `file` where it lies on this machine.
void addFile(AnalysisContext& context, std::int16_t& fileNo, const Text& path, const Text& file) {
    Files& files = *context.platform.files;
    Recordset& row = need(context.WorkRs1);
    increment(fileNo);
    row.AddNew();
    row.Collect(u"FileNo", std::int64_t{fileNo});
    row.Collect(u"FileName", GetFileNamePart(path));
    row.Collect(u"FileSize", static_cast<double>(files.FileLen(file)) / 1024.0);
    row.Collect(u"UpdateDate", files.FileDateTime(file));
    row.Collect(u"FilePath", GetFolderPart(path));
    row.Collect(u"ReadOnly", std::int64_t{files.isReadOnly(file) ? 1 : 0});
    row.Update();
}

// The file of a link. Its error names the table as well; a source with settings behind its path, or in the place of
// one, is not shown, since a password may be among them.
Text fileOfLink(AnalysisContext& context, const dao::TableDef& table, const Text& path, const Text& folder) {
    try {
        return context.platform.files->resolveLink(path, folder);
    } catch (const RunTimeError& error) {
        const bool isPath = path.find(u';') == Text::npos;
        throw RunTimeError(static_cast<ErrorNumber>(error.number()),
                           table.Name() + (isPath ? u": " + path : Text()));
    }
}

// Files as Access 2007 began to name them.
bool isLaterKind(const AnalysisContext& context) {
    const Text name = GetFileNamePart(context.frmRelvane.lblDBName.Caption.get());
    const std::size_t dot = name.rfind(u'.');
    constexpr TextView beginning = u".acc";
    return dot != Text::npos && equalsIgnoringCase(TextView(name).substr(dot, beginning.size()), beginning);
}

void walkChosenFiles(AnalysisContext& context) {
    constexpr TextView related[] = {u"*.m*", u"*.acc*"}, all[] = {u"*.*"};
    switch (context.OptFile) {
    case 1:
        return AddFolderFiles(context, std::span(related).first(isLaterKind(context) ? 2 : 1));
    case 2:
        return AddLinkedFiles(context);
    case 3:
        return AddFolderFiles(context, all);
    }
}

} // namespace

void AddFolderFiles(AnalysisContext& context, std::span<const TextView> patterns) {
    const Text folder = GetFolderPart(context.frmRelvane.lblDBName.Caption.get());
    std::int16_t fileNo = 0;
    for (const TextView pattern : patterns) {
        for (const Text& name : context.platform.files->Dir(folder + Text(pattern))) {
            addFile(context, fileNo, folder + name, folder + name);
        }
    }
}

void AddLinkedFiles(AnalysisContext& context) {
    const Text folder = GetFolderPart(context.frmRelvane.lblDBName.Caption.get());
    std::int16_t fileNo = 0;
    for (const auto& table : need(context.TargetDb).TableDefs()) {
        context.CurTableDef = table.get();
        if (hasSystemAttributes(context, *table)) {
            continue;
        }
        const Text connect = table->Connect();
        if (connect.empty()) {
            continue;
        }
        const Text path = GetValuePart(connect);
        addFile(context, fileNo, path, fileOfLink(context, *table, path, folder));
    }
}

AnalysisSpec fileAnalysis(AnalysisContext& context) {
    return {.tables = {u"T_RvFile"},
            .workingMessage = u"ファイル 情報　取得中",
            .walk =
                [&context](std::int16_t) {
                    walkChosenFiles(context);
                    return WalkEnd::Complete;
                },
            .showReport =
                [&context] { ShowReport(context, reportOf(context, &FrmRelvane::cmdFlPre), previewMode); },
            .preview = &context.frmRelvane.cmdFlPre,
            .option = context.OptFile,
            .done = &context.DoneFile};
}

void cmdFile_Click(AnalysisContext& context) {
    guarded(context, places::fileList, [&context] { runAnalysis(context, fileAnalysis(context)); });
}

} // namespace relvane
