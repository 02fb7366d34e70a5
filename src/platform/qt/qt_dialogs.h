// Message boxes and file dialogs as windows.
#pragma once

#include <QStringList>

#include "platform/dialogs.h"

class QMessageBox;
class QWidget;

namespace relvane::qt {

class QtDialogs final : public Dialogs {
public:
    int MsgBox(const Text& text, int style, const Text& title) override;
    Text openFile(const Text& filter, const Text& initialFolder, const Text& title) override;
    Text saveFile(const Text& filter, const Text& initialFolder, const Text& title) override;
    bool PageSetupDlg(PageMargins& margins, const PageMargins& least) override;
    bool PrintDlg() override;
    std::optional<Text> askPassword(const Text& file) override;
};

// Dresses a box: plain text, the icon and the buttons of the style, Japanese on the buttons.
void dressBox(QMessageBox& box, const Text& text, int style, const Text& title);

// The name filters of Qt for "display name NUL pattern NUL ...".
QStringList nameFilters(const Text& filter);

// A box that only tells, and does not stop what runs; belongs to `parent` and goes with it.
void tell(QWidget& parent, const QString& text);

} // namespace relvane::qt
