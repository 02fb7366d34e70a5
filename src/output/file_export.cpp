#include "output/file_export.h"

#include "core/file_dialogs.h"
#include "core/file_name_parts.h"
#include "platform/codepage.h"

namespace relvane {
namespace {

Text askForPath(AnalysisContext& context, const FileKind& kind) {
    const Text chosen = ShowSaveDialog(context, fileFilter(kind.filterName, kind.pattern),
                                       context.platform.files->currentFolder(), Text(kind.dialogTitle));
    return chosen.empty() ? chosen : withExtension(chosen, kind.extension);
}

// The system itself would let us write over what is being read.
void refuseWhatIsOpen(const AnalysisContext& context, const Text& path) {
    for (const Text& open : {context.frmRelvane.lblDBName.Caption.get(), context.WorkDbPath}) {
        if (context.platform.files->isSameFile(path, open)) {
            throw RunTimeError(ErrorNumber::PermissionDenied, path);
        }
    }
}

} // namespace

void exportToFile(FrmOut& window, const ErrorPlace& place, const FileKind& kind, TextView source,
                  const std::function<void(Recordset& rows, const LineWriter& writeLine)>& writeRows) {
    AnalysisContext& context = window.context;
    guarded(context, place, window, [&] {
        const Text path = askForPath(context, kind);
        if (path.empty()) {
            return;
        }
        window.Pointer = MousePointer::Hourglass;
        window.Enabled = false;
        const auto database = context.platform.openWorkStore(context.WorkDbPath);
        const auto rows = database->OpenRecordset(source);
        refuseWhatIsOpen(context, path);
        const auto file = context.platform.files->openOutput(path);
        writeRows(*rows, [&file](TextView line) {
            file->write(encode(line, japaneseCodePage));
            file->write("\r\n");
        });
        file->close();
        rows->Close();
        context.platform.dialogs->MsgBox(Text(kind.finished), okOnly, Text(programTitle));
        window.Pointer = MousePointer::Normal;
        window.Enabled = true;
    });
}

} // namespace relvane
