#include "platform/dialogs.h"

namespace relvane {

bool Dialogs::PageSetupDlg(PageMargins&, const PageMargins&) {
    return false;
}

bool Dialogs::PrintDlg() {
    return false;
}

std::optional<Text> Dialogs::askPassword(const Text&) {
    return std::nullopt;
}

} // namespace relvane
