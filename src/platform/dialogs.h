// What the program asks a person: message boxes and file dialogs. Realised with windows, on the command line,
// and scripted in tests.
#pragma once

#include <cstdint>
#include <optional>

#include "platform/text.h"

namespace relvane {

// The value of a message box is the sum of buttons, icon and default button, as the original texts give it (52,
// 64, 0).
enum BoxStyle { okOnly = 0, yesNo = 4, retryCancel = 5, exclamationIcon = 48, informationIcon = 64 };
enum BoxResult { boxOk = 1, boxCancel = 2, boxRetry = 4, boxYes = 6, boxNo = 7 };

// In hundredths of a millimetre.
struct PageMargins {
    std::int32_t left = 0, top = 0, right = 0, bottom = 0;
};

class Dialogs {
public:
    virtual ~Dialogs() = default;

    // `text` may hold CR, LF or CR LF as line breaks. Returns a BoxResult.
    virtual int MsgBox(const Text& text, int style, const Text& title) = 0;

    // `filter` is display name, NUL, pattern, NUL (repeated for more entries). An empty result means cancelled.
    // The open dialog accepts existing files only. The save dialog never asks about an existing file.
    virtual Text openFile(const Text& filter, const Text& initialFolder, const Text& title) = 0;
    virtual Text saveFile(const Text& filter, const Text& initialFolder, const Text& title) = 0;

    // The dialogs below are cancelled where nobody can answer them, which is the default.

    // The margins of a page, none below `least`; paper, orientation and printer stay as they are. False: cancelled.
    virtual bool PageSetupDlg(PageMargins& margins, const PageMargins& least);
    virtual bool PrintDlg(); // the choice of a printer; false: cancelled
    // The password of a file, typed unseen. Nothing: cancelled.
    virtual std::optional<Text> askPassword(const Text& file);
};

} // namespace relvane
