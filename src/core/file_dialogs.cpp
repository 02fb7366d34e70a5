#include "core/file_dialogs.h"

namespace relvane {
namespace {

Text cutAtNul(const Text& text) {
    return text.substr(0, text.find(u'\0'));
}

} // namespace

Text fileFilter(TextView name, TextView pattern) {
    return Text(name) + u'\0' + Text(pattern) + u'\0';
}

Text ShowOpenDialog(AnalysisContext& context, const Text& filter, const Text& initialFolder,
                    const Text& title, const Text& further) {
    context.FileFilter = filter;
    context.ChosenFile = cutAtNul(context.platform.dialogs->openFile(filter + further, initialFolder, title));
    return context.ChosenFile;
}

Text ShowSaveDialog(AnalysisContext& context, const Text& filter, const Text& initialFolder,
                    const Text& title) {
    context.FileFilter = filter;
    context.ChosenFile = cutAtNul(context.platform.dialogs->saveFile(filter, initialFolder, title));
    return context.ChosenFile;
}

} // namespace relvane
