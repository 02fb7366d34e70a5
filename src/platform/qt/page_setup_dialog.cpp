#include "qt/page_setup_dialog.h"

#include <QDialogButtonBox>
#include <QDoubleSpinBox>
#include <QFormLayout>
#include <QGroupBox>
#include <QPushButton>
#include <cmath>

namespace relvane::qt {
namespace {

constexpr double hundredthsPerMillimetre = 100, largest = 500; // millimetres

struct Side {
    const char* name;
    const char16_t* caption;
    std::int32_t PageMargins::*margin;
};
constexpr std::array<Side, 4> sides{{{"left", u"左：", &PageMargins::left},
                                     {"top", u"上：", &PageMargins::top},
                                     {"right", u"右：", &PageMargins::right},
                                     {"bottom", u"下：", &PageMargins::bottom}}};

} // namespace

PageSetupDialog::PageSetupDialog(const PageMargins& margins, const PageMargins& least, QWidget* parent)
    : QDialog(parent) {
    setWindowTitle(tr("ページ設定"));
    auto* const frame = new QGroupBox(tr("余白"));
    auto* const form = new QFormLayout(frame);
    for (std::size_t i = 0; i < sides.size(); ++i) {
        auto* const box = new QDoubleSpinBox;
        box->setObjectName(QLatin1String(sides[i].name));
        box->setSuffix(tr(" mm"));
        box->setRange(least.*sides[i].margin / hundredthsPerMillimetre, largest);
        box->setValue(margins.*sides[i].margin / hundredthsPerMillimetre);
        box->setMinimumWidth(box->sizeHint().width() + 24);
        form->addRow(QString::fromUtf16(sides[i].caption), box);
        boxes_[i] = box;
    }
    auto* const buttons = new QDialogButtonBox(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    buttons->button(QDialogButtonBox::Ok)->setText(tr("OK"));
    buttons->button(QDialogButtonBox::Cancel)->setText(tr("キャンセル"));
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* const whole = new QVBoxLayout(this);
    whole->addWidget(frame);
    whole->addWidget(buttons);
    whole->setSizeConstraint(QLayout::SetFixedSize);
}

PageMargins PageSetupDialog::margins() const {
    PageMargins chosen;
    for (std::size_t i = 0; i < sides.size(); ++i) {
        chosen.*sides[i].margin =
            static_cast<std::int32_t>(std::lround(boxes_[i]->value() * hundredthsPerMillimetre));
    }
    return chosen;
}

} // namespace relvane::qt
