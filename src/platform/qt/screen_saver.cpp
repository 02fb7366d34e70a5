#include "qt/screen_saver.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QProcess>
#include <QStandardPaths>
#include <QStringList>

namespace relvane::qt {
namespace {

constexpr int patience = 1000; // milliseconds; a desktop that hangs must not hang the program

QDBusConnection busOf(const QString& name) {
    return name.isEmpty() ? QDBusConnection::sessionBus() : QDBusConnection(name);
}

QDBusMessage call(const QDBusConnection& bus, const char* method, const QVariantList& arguments) {
    const QString service = QStringLiteral("org.freedesktop.ScreenSaver");
    QDBusMessage message = QDBusMessage::createMethodCall(
        service, QStringLiteral("/org/freedesktop/ScreenSaver"), service, QLatin1String(method));
    message.setArguments(arguments);
    return bus.call(message, QDBus::Block, patience);
}

// The settings programs of the desktops, each with the page wanted.
constexpr const char* settingsPrograms[][2] = {
    {"gnome-control-center", "power"},
    {"systemsettings", "kcm_screenlocker"},
    {"systemsettings5", "kcm_screenlocker"},
    {"kcmshell5", "screenlocker"},
    {"xfce4-screensaver-preferences", ""},
    {"mate-screensaver-preferences", ""},
    {"cinnamon-settings", "screensaver"},
    {"xscreensaver-settings", ""},
    {"xscreensaver-demo", ""},
    {"lxqt-config", ""},
};

} // namespace

ScreenSaver::~ScreenSaver() {
    setActive(true);
}

bool ScreenSaver::setActive(bool active) {
    if (active == !inhibited_) {
        return true;
    }
    const QDBusConnection bus = busOf(connection_);
    if (!bus.isConnected()) {
        return false;
    }
    if (active) {
        inhibited_ = false;
        return call(bus, "UnInhibit", {cookie_}).type() == QDBusMessage::ReplyMessage;
    }
    const QDBusMessage answer =
        call(bus, "Inhibit", {QStringLiteral("Relvane"), QStringLiteral("データベースの解析")});
    if (answer.type() != QDBusMessage::ReplyMessage || answer.arguments().isEmpty()) {
        return false;
    }
    cookie_ = answer.arguments().constFirst().toUInt();
    inhibited_ = true;
    return true;
}

bool openScreenSaverSettings() {
    for (const auto& [name, page] : settingsPrograms) {
        const QString program = QStandardPaths::findExecutable(QLatin1String(name));
        if (program.isEmpty()) {
            continue;
        }
        const QStringList arguments = *page == '\0' ? QStringList() : QStringList(QLatin1String(page));
        if (QProcess::startDetached(program, arguments)) {
            return true;
        }
    }
    return false;
}

} // namespace relvane::qt
