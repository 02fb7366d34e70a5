#include "qt/desktop_services.h"

#include <QDesktopServices>
#include <QUrl>

#include "core/frm_relvane.h"
#include "platform/runtime_error.h"
#include "qt/help_window.h"
#include "qt/qt_text.h"

namespace relvane::qt {

DesktopServices::DesktopServices(SystemServices& system, Dialogs& dialogs)
    : system_(system), dialogs_(dialogs) {}

DesktopServices::~DesktopServices() = default;

std::int32_t DesktopServices::setScreenSaverActive(bool active) {
    return screenSaver_.setActive(active) ? 1 : 0;
}

void DesktopServices::openScreenSaverSettings() {
    if (!qt::openScreenSaverSettings()) {
        dialogs_.MsgBox(u"このデスクトップの設定画面を開くプログラムが見つかりません。\r"
                        u"デスクトップの設定からスクリーンセーバーを設定して下さい。",
                        okOnly, Text(programTitle));
    }
}

void DesktopServices::openHelp(const Text& path) {
    const QString manual = manualAt(toQtPath(path));
    if (manual.isEmpty()) {
        dialogs_.MsgBox(u"ヘルプファイルが見つかりません。\r" + path, okOnly, Text(programTitle));
        return;
    }
    if (help_ == nullptr) {
        help_ = std::make_unique<HelpWindow>();
    }
    help_->showFile(manual);
    help_->show();
    help_->raise();
    help_->activateWindow();
}

void DesktopServices::openAddress(const Text& address) {
    if (!QDesktopServices::openUrl(QUrl(toQString(address)))) {
        throw RunTimeError(ErrorNumber::FileNotFound, address);
    }
}

} // namespace relvane::qt
