#include "qt/print_dialog.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QSpinBox>
#include <algorithm>

namespace relvane::qt {

PrintDialog::PrintDialog(const QStringList& printers, const QString& defaultPrinter, int pages,
                         int pageInSight, QWidget* parent)
    : QDialog(parent), pageInSight_(pageInSight) {
    setWindowTitle(tr("印刷"));

    printer_ = new QComboBox;
    printer_->addItems(printers);
    printer_->setCurrentText(defaultPrinter);
    printer_->setEnabled(!printers.isEmpty());
    printer_->setPlaceholderText(tr("プリンタがありません"));

    all_ = new QRadioButton(tr("すべて (%1 頁)").arg(pages));
    current_ = new QRadioButton(tr("現在の頁 (%1 頁)").arg(pageInSight + 1));
    range_ = new QRadioButton(tr("頁指定"));
    all_->setChecked(true);
    from_ = new QSpinBox;
    to_ = new QSpinBox;
    for (QSpinBox* box : {from_, to_}) {
        box->setRange(1, pages);
        connect(box, &QSpinBox::valueChanged, range_, [this] { range_->setChecked(true); });
    }
    {
        const QSignalBlocker quiet(to_);
        to_->setValue(pages);
    }
    auto* const span = new QHBoxLayout;
    for (QWidget* part :
         std::initializer_list<QWidget*>{range_, from_, new QLabel(tr("～")), to_, new QLabel(tr("頁"))}) {
        span->addWidget(part);
    }
    span->addStretch();
    auto* const scope = new QGroupBox(tr("印刷範囲"));
    auto* const scopeLayout = new QVBoxLayout(scope);
    scopeLayout->addWidget(all_);
    scopeLayout->addWidget(current_);
    scopeLayout->addLayout(span);

    copies_ = new QSpinBox;
    copies_->setRange(1, 999);

    auto* const form = new QFormLayout;
    form->addRow(tr("プリンタ："), printer_);
    form->addRow(scope);
    form->addRow(tr("部数："), copies_);
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    accept_ = buttons->button(QDialogButtonBox::Ok);
    accept_->setText(tr("印刷"));
    accept_->setEnabled(!printers.isEmpty());
    buttons->button(QDialogButtonBox::Cancel)->setText(tr("キャンセル"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* const whole = new QVBoxLayout(this);
    whole->addLayout(form);
    whole->addWidget(buttons);
    whole->setSizeConstraint(QLayout::SetFixedSize);
}

void PrintDialog::setAcceptCaption(const QString& caption) {
    accept_->setText(caption);
}

PrintJob PrintDialog::job() const {
    PrintJob job;
    job.printer = printer_->currentText();
    job.copies = copies_->value();
    if (current_->isChecked()) {
        job.firstPage = job.lastPage = pageInSight_;
    } else if (range_->isChecked()) {
        job.firstPage = std::min(from_->value(), to_->value()) - 1;
        job.lastPage = std::max(from_->value(), to_->value()) - 1;
    }
    return job;
}

} // namespace relvane::qt
