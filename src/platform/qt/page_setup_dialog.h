// Asks for the margins of a page.
#pragma once

#include <QDialog>
#include <array>

#include "platform/dialogs.h"

class QDoubleSpinBox;

namespace relvane::qt {

class PageSetupDialog : public QDialog {
    Q_OBJECT

public:
    PageSetupDialog(const PageMargins& margins, const PageMargins& least, QWidget* parent = nullptr);
    PageMargins margins() const;

private:
    std::array<QDoubleSpinBox*, 4> boxes_{}; // millimetres, in the order of the table of the sides
};

} // namespace relvane::qt
