// The program among others on the desktop: a second start, the manual, the fonts of other systems.
#include <QDBusConnection>
#include <QDesktopServices>
#include <QDir>
#include <QFile>
#include <QFontInfo>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTextBrowser>
#include <QThread>
#include <algorithm>
#include <atomic>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include "platform/runtime_error.h"
#include "qt/desktop_services.h"
#include "qt/help_window.h"
#include "qt/qt_text.h"
#include "qt/single_instance.h"
#include "window_test.h"

using namespace relvane;
using namespace relvane::qt;

namespace {

class StillSystem : public SystemServices {
public:
    SystemVersion version() override { return {.platform = 1, .major = 4, .minor = 90}; }
    bool previousInstance() override { return true; }
    DateTime now() override { return {2026, 11, 20, 9, 30, 0}; }
    std::int32_t setScreenSaverActive(bool) override { return 0; }
    void openScreenSaverSettings() override {}
    void openHelp(const Text&) override {}
    DiskSpace GetDiskFreeSpaceEx(const Text&) override { return {4096, 1024}; }
    Text commandProcessor() override { return u"processor"; }
    void Shell(const Text& command) override { started = command; }
    void openAddress(const Text&) override {}

    Text started;
};

// Stands for the desktop's programs: addresses of its scheme are handed to it.
class Opener : public QObject {
    Q_OBJECT

public:
    QStringList opened;

public slots:
    void open(const QUrl& address) { opened << address.toString(); }
};

class NotedBoxes : public Dialogs {
public:
    std::vector<Text> said;
    int MsgBox(const Text& text, int, const Text&) override {
        said.push_back(text);
        return boxOk;
    }
    Text openFile(const Text&, const Text&, const Text&) override { return {}; }
    Text saveFile(const Text&, const Text&, const Text&) override { return {}; }
};

// A desktop's screen saver service, in a thread of its own as the caller blocks.
class ServiceOfTheDesktop : public QObject {
    Q_OBJECT
    Q_CLASSINFO("D-Bus Interface", "org.freedesktop.ScreenSaver")

public:
    std::atomic<int> requests = 0;
    std::atomic<unsigned> released = 0;

public slots:
    Q_SCRIPTABLE unsigned Inhibit(const QString&, const QString&) {
        return 40 + static_cast<unsigned>(++requests);
    }
    Q_SCRIPTABLE void UnInhibit(unsigned cookie) { released = cookie; }
};

void write(const QString& path, const char* content) {
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(content);
}

} // namespace

class DesktopTest : public QObject {
    Q_OBJECT

    StillSystem system_;
    NotedBoxes boxes_;

private slots:
    void init() { boxes_.said.clear(); }

    void aSecondStartBringsTheFirstForward() {
        const QTemporaryDir folder;
        int asked = 0;
        SingleInstance first(folder.path());
        first.listen([&] { ++asked; });
        SingleInstance second(folder.path());
        QVERIFY(second.askFirstToShow());
        QTRY_COMPARE(asked, 1);
        const QTemporaryDir other;
        SingleInstance elsewhere(other.path());
        QVERIFY(!elsewhere.askFirstToShow());
        QTest::qWait(30);
        QCOMPARE(asked, 1);
    }

    void thePlaceOfADeadProgramIsTakenOver() {
        const QTemporaryDir folder;
        SingleInstance next(folder.path());
        // What a killed program leaves: a socket in the file system to which nobody listens.
        const QByteArray path = QFile::encodeName(QDir::temp().filePath(next.name()));
        sockaddr_un address{};
        address.sun_family = AF_UNIX;
        QVERIFY(static_cast<std::size_t>(path.size()) < sizeof address.sun_path);
        std::ranges::copy(path, address.sun_path);
        const int left = ::socket(AF_UNIX, SOCK_STREAM, 0);
        QCOMPARE(::bind(left, reinterpret_cast<const sockaddr*>(&address), sizeof address), 0);
        ::close(left);

        SingleInstance later(folder.path());
        QVERIFY(!later.askFirstToShow());
        int asked = 0;
        next.listen([&] { ++asked; });
        QVERIFY(later.askFirstToShow());
        QTRY_COMPARE(asked, 1);
    }

    void theSystemAnswersThroughTheDesktop() {
        DesktopServices services(system_, boxes_);
        QCOMPARE(services.version().minor, 90);
        QVERIFY(services.previousInstance());
        QCOMPARE(services.now().year, 2026);
    }

    void disksAndCommandsAreThoseOfTheSystem() {
        DesktopServices services(system_, boxes_);
        QCOMPARE(services.GetDiskFreeSpaceEx(u"/").total, 4096);
        QCOMPARE(services.commandProcessor(), Text(u"processor"));
        services.Shell(u"processor /C Start x");
        QCOMPARE(system_.started, Text(u"processor /C Start x"));
    }

    void addressesAreOpenedByTheDesktop() {
        Opener opener;
        for (const char* scheme : {"mailto", "https"}) {
            QDesktopServices::setUrlHandler(QLatin1String(scheme), &opener, "open");
        }
        DesktopServices services(system_, boxes_);
        services.openAddress(u"mailto:team@example.org");
        services.openAddress(u"https://example.org/relvane");
        QCOMPARE(opener.opened, (QStringList{QStringLiteral("mailto:team@example.org"),
                                             QStringLiteral("https://example.org/relvane")}));
        for (const char* scheme : {"mailto", "https"}) {
            QDesktopServices::unsetUrlHandler(QLatin1String(scheme));
        }
    }

    void anAddressThatNoProgramOpensIsAnError() {
        const QByteArray path = qgetenv("PATH");
        qputenv("PATH", "/nonexistent"); // no opener of a desktop
        DesktopServices services(system_, boxes_);
        bool failed = false;
        try {
            services.openAddress(u"https://example.org");
        } catch (const RunTimeError& error) {
            failed = error.is(ErrorNumber::FileNotFound);
        }
        qputenv("PATH", path);
        QVERIFY(failed);
    }

    void withoutADesktopTheScreenSaverIsLeftAlone() {
        qputenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent");
        DesktopServices services(system_, boxes_);
        QCOMPARE(services.setScreenSaverActive(false), 0);
        QCOMPARE(services.setScreenSaverActive(true), 1); // as it was
        QVERIFY(boxes_.said.empty());
    }

    void theScreenSaverIsKeptOffWhileATargetIsSelected() {
        const QString daemon = QStandardPaths::findExecutable(QStringLiteral("dbus-daemon"));
        QVERIFY2(!daemon.isEmpty(), "dbus-daemon is not installed");
        QProcess bus;
        bus.start(daemon, {QStringLiteral("--session"), QStringLiteral("--nofork"),
                           QStringLiteral("--print-address")});
        QVERIFY(bus.waitForReadyRead(5000));
        const QString address = QString::fromLatin1(bus.readLine().trimmed());
        QDBusConnection desktop = QDBusConnection::connectToBus(address, QStringLiteral("desktop"));
        QVERIFY(QDBusConnection::connectToBus(address, QStringLiteral("program")).isConnected());

        QThread thread;
        ServiceOfTheDesktop service;
        service.moveToThread(&thread);
        thread.start();
        QVERIFY(desktop.registerObject(QStringLiteral("/org/freedesktop/ScreenSaver"), &service,
                                       QDBusConnection::ExportScriptableSlots));
        QVERIFY(desktop.registerService(QStringLiteral("org.freedesktop.ScreenSaver")));
        {
            ScreenSaver screenSaver(QStringLiteral("program"));
            QVERIFY(screenSaver.setActive(false));
            QVERIFY(screenSaver.setActive(false)); // asked once
            QCOMPARE(service.requests.load(), 1);
            QVERIFY(screenSaver.setActive(true));
            QCOMPARE(service.released.load(), 41U);
            QVERIFY(screenSaver.setActive(false));
        }
        QCOMPARE(service.released.load(), 42U); // also when the program just ends
        thread.quit();
        thread.wait();
        QDBusConnection::disconnectFromBus(QStringLiteral("program"));
        QDBusConnection::disconnectFromBus(QStringLiteral("desktop"));
        bus.kill();
        bus.waitForFinished();
    }

    void aMissingManualIsSaid() {
        const QTemporaryDir folder;
        DesktopServices services(system_, boxes_);
        const Text path = fromQtPath(folder.filePath(QStringLiteral("Relvane.hlp")));
        services.openHelp(path);
        QCOMPARE(boxes_.said, std::vector<Text>{u"ヘルプファイルが見つかりません。\r" + path});
        QVERIFY(services.helpWindow() == nullptr);
    }

    void theManualOpensInAWindow() {
        const QTemporaryDir folder;
        write(folder.filePath(QStringLiteral("Relvane.html")),
              "<!DOCTYPE html><html><head><meta "
              "charset=\"utf-8\"></head><body><h1>操作の手引き</h1></body></html>");
        DesktopServices services(system_, boxes_);
        services.openHelp(fromQtPath(folder.filePath(QStringLiteral("Relvane.hlp"))));
        QVERIFY(boxes_.said.empty());
        QVERIFY(services.helpWindow() != nullptr);
        QVERIFY(services.helpWindow()->isVisible());
        const auto* const browser = services.helpWindow()->findChild<QTextBrowser*>();
        QVERIFY(browser->toPlainText().contains(QStringLiteral("操作の手引き")));
    }

    void aHelpFileOfAnotherSystemIsNoManual() {
        const QTemporaryDir folder;
        const QString path = folder.filePath(QStringLiteral("Relvane.hlp"));
        write(path, "?_\x03 binary");
        QCOMPARE(manualAt(path), QString());
    }

    void windowsFacesAreOurs() {
        for (const char16_t* name : {u"MS PGothic", u"ＭＳ Ｐゴシック", u"MS UI Gothic"}) {
            QCOMPARE(QFontInfo(QFont(QString::fromUtf16(name), 9)).family(),
                     QFontInfo(windowFont()).family());
        }
        QCOMPARE(QFontInfo(windowFont()).family(), QStringLiteral("Ume P Gothic"));
        QCOMPARE(QFontInfo(QFont(QString::fromUtf16(u"ＭＳ ゴシック"), 9)).family(),
                 QStringLiteral("Ume Gothic"));
    }
};

RELVANE_WINDOW_TEST(DesktopTest)
#include "desktop_test.moc"
