#include "qt/windows.h"

#include <QLayout>
#include <QPalette>
#include <QScreen>
#include <QStyle>

#include "qt/file_drop.h"
#include "qt/shortcuts.h"
#include "ui_frmRelvane.h"
#include "ui_frmSetUp.h"

namespace relvane::qt {
namespace {

// What tells of a run stays readable while the window is blocked by it.
void keepReadable(std::initializer_list<QWidget*> widgets) {
    for (QWidget* widget : widgets) {
        QPalette colours = widget->palette();
        for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::Highlight}) {
            colours.setColor(QPalette::Disabled, role, colours.color(QPalette::Active, role));
        }
        widget->setPalette(colours);
    }
}

} // namespace

RelvaneWindow::RelvaneWindow(FrmRelvane& form, EventQueue& events) {
    Ui::frmRelvane ui;
    ui.setupUi(this);
    keepReadable(
        {ui.lblDBName, ui.Label1, ui.txtMesege, ui.lblPer, ui.Label19, ui.Label20, ui.Label21, ui.linGuage});
    binder_ = std::make_unique<Binder>(*this, form, events);
    new Shortcuts(*this);
    new FileDrop(*this, form, events);
    // Until the window has its size, the panel reckons with the screen.
    const QMargins margins = ui.desk->layout()->contentsMargins();
    const int around = widthOfDecorations + margins.left() + margins.right() +
                       style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, ui.panelArea);
    ui.panel->setRoom(screen()->availableSize().width() - around);
}

RelvaneWindow::~RelvaneWindow() = default;

void RelvaneWindow::comeForward() {
    if (isMinimized()) {
        showNormal();
    }
    show();
    raise();
    activateWindow();
}

SetUpWindow::SetUpWindow(QWidget& above, FrmSetUp& form, EventQueue& events)
    : QWidget(&above,
              Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint) {
    Ui::frmSetUp ui;
    ui.setupUi(this);
    binder_ = std::make_unique<Binder>(*this, form, events);
}

SetUpWindow::~SetUpWindow() = default;

} // namespace relvane::qt
