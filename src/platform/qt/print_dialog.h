// Asks where and what to print.
#pragma once

#include <QDialog>

#include "qt/printing.h"

class QComboBox;
class QPushButton;
class QRadioButton;
class QSpinBox;

namespace relvane::qt {

class PrintDialog : public QDialog {
    Q_OBJECT

public:
    // Without a printer it can only be cancelled.
    PrintDialog(const QStringList& printers, const QString& defaultPrinter, int pages, int pageInSight,
                QWidget* parent = nullptr);
    PrintJob job() const;
    void setAcceptCaption(const QString& caption); // else "印刷"

private:
    QComboBox* printer_;
    QPushButton* accept_;
    QRadioButton *all_, *current_, *range_;
    QSpinBox *from_, *to_, *copies_;
    int pageInSight_;
};

} // namespace relvane::qt
