#include "qt/windows.h"

#include <QLayout>
#include <QPalette>
#include <QScreen>
#include <QStyle>

#include "qt/file_drop.h"
#include "qt/picture_view.h"
#include "qt/shortcuts.h"
#include "ui_frmAbout.h"
#include "ui_frmBatch.h"
#include "ui_frmCapture.h"
#include "ui_frmOut.h"
#include "ui_frmRelvane.h"
#include "ui_frmSetUp.h"
#include "ui_frmSien.h"

namespace relvane::qt {
namespace {

// A window that stays above the main window.
constexpr Qt::WindowFlags aboveAnother =
    Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint | Qt::WindowCloseButtonHint;

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

RelvaneWindow::RelvaneWindow(FrmRelvane& form, EventQueue& events) : form_(form), events_(events) {
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
    events_.fire([this] { form_.Show(); });
    if (isMinimized()) {
        showNormal();
    }
    raise();
    activateWindow();
}

SetUpWindow::SetUpWindow(QWidget& above, FrmSetUp& form, EventQueue& events) : QWidget(&above, aboveAnother) {
    Ui::frmSetUp ui;
    ui.setupUi(this);
    binder_ = std::make_unique<Binder>(*this, form, events);
}

SetUpWindow::~SetUpWindow() = default;

SienWindow::SienWindow(QWidget& above, FrmSien& form, EventQueue& events) : QWidget(&above, aboveAnother) {
    Ui::frmSien ui;
    ui.setupUi(this);
    keepReadable({ui.txtMesege, ui.lblPer, ui.linGuage});
    binder_ = std::make_unique<Binder>(*this, form, events);
}

SienWindow::~SienWindow() = default;

BatchWindow::BatchWindow(QWidget& above, FrmBatch& form, EventQueue& events) : QWidget(&above, aboveAnother) {
    Ui::frmBatch ui;
    ui.setupUi(this);
    keepReadable({ui.txtMesege, ui.lblPer, ui.Label19, ui.Label20, ui.Label21, ui.linGuage});
    binder_ = std::make_unique<Binder>(*this, form, events);
}

BatchWindow::~BatchWindow() = default;

OutWindow::OutWindow(QWidget& above, FrmOut& form, EventQueue& events) : QWidget(&above, aboveAnother) {
    Ui::frmOut ui;
    ui.setupUi(this);
    binder_ = std::make_unique<Binder>(*this, form, events);
}

OutWindow::~OutWindow() = default;

AboutWindow::AboutWindow(QWidget& above, FrmAbout& form, EventQueue& events) : QWidget(&above, aboveAnother) {
    Ui::frmAbout ui;
    ui.setupUi(this);
    binder_ = std::make_unique<Binder>(*this, form, events);
}

AboutWindow::~AboutWindow() = default;

CaptureWindow::CaptureWindow(QWidget& above, FrmCapture& form, EventQueue& events)
    : QMainWindow(&above, aboveAnother | Qt::WindowMaximizeButtonHint) {
    Ui::frmCapture ui;
    ui.setupUi(this);
    binder_ = std::make_unique<Binder>(*this, form, events);
    connect(ui.picWk, &PictureView::pictureChanged, this, [this] { binder_->fitToContents(); });
}

CaptureWindow::~CaptureWindow() = default;

} // namespace relvane::qt
