// Asks where and what to print.
#pragma once

#include <QDialog>

#include "qt/printing.h"

class QComboBox;
class QRadioButton;
class QSpinBox;

namespace relvane::qt {

class PrintDialog : public QDialog {
    Q_OBJECT

public:
    PrintDialog(const QStringList& printers, const QString& defaultPrinter, int pages, int pageInSight,
                QWidget* parent = nullptr);
    PrintJob job() const;

private:
    QComboBox* printer_;
    QRadioButton *all_, *current_, *range_;
    QSpinBox *from_, *to_, *copies_;
    int pageInSight_;
};

} // namespace relvane::qt
