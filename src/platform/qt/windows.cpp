#include "qt/windows.h"

#include <QPalette>

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
