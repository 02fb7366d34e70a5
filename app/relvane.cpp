// relvane: the program with windows. Puts the platform of a desktop together, hands it to the desk, and runs the
// message loop until the desk has ended.
#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <iostream>
#include <optional>

#include "access/target_application.h"
#include "desk/desk.h"
#include "jet/open_database.h"
#include "platform/native_path.h"
#include "platform/runtime_error.h"
#include "qt/appearance.h"
#include "qt/desktop_services.h"
#include "qt/japanese_texts.h"
#include "qt/preview_application.h"
#include "qt/qt_dialogs.h"
#include "qt/qt_text.h"
#include "qt/single_instance.h"
#include "qt/windows.h"
#include "sqlite/work_store.h"
#include "system/linux_files.h"
#include "system/linux_system.h"
#include "system/program_folder.h"

namespace {

using namespace relvane;

constexpr int exitDone = 0, exitFailed = 1, exitWrongUsage = 2;

struct CommandLine {
    std::optional<std::filesystem::path> programFolder;
    Text analysisFile; // as the logic reads it: empty, or an absolute path in double quotes
};

std::optional<CommandLine> readCommandLine(const QApplication& application) {
    QCommandLineParser parser;
    const QCommandLineOption folder(QStringLiteral("program-folder"),
                                    QStringLiteral("work in this folder (work database, settings)"),
                                    QStringLiteral("DIR"));
    parser.setApplicationDescription(QStringLiteral("Documents Microsoft Access databases without Access."));
    parser.addOption(folder);
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("file"), QStringLiteral("a saved analysis file"),
                                 QStringLiteral("[FILE]"));
    parser.process(application);
    if (parser.positionalArguments().size() > 1) {
        return std::nullopt;
    }
    CommandLine line;
    if (parser.isSet(folder)) {
        const QString path = QFileInfo(parser.value(folder)).absoluteFilePath();
        line.programFolder = QFile::encodeName(path).toStdString();
    }
    if (!parser.positionalArguments().isEmpty()) {
        const QFileInfo file(parser.positionalArguments().constFirst());
        line.analysisFile = u"\"" + qt::fromQtPath(file.absoluteFilePath()) + u"\"";
    }
    return line;
}

int run(QApplication& application, const CommandLine& line) {
    qt::QtDialogs dialogs;
    std::filesystem::path folder;
    try {
        folder = openProgramFolder(line.programFolder);
    } catch (const RunTimeError& error) {
        dialogs.MsgBox(u"プログラムのフォルダを使用出来ません。\r" + error.description(), okOnly,
                       Text(programTitle));
        return exitFailed;
    }
    const ProgramFolderLock lock(folder);
    qt::SingleInstance instance(QFile::decodeName(QByteArray::fromStdString(folder.string())));
    if (!lock.isHeld()) {
        instance.askFirstToShow();
    }

    LinuxFiles files;
    LinuxSystem system(!lock.isHeld());
    qt::DesktopServices services(system, dialogs);
    Platform platform;
    platform.dialogs = &dialogs;
    platform.files = &files;
    platform.system = &services;
    platform.openTarget = [](const Text& path) { return jet::openDatabase(path); };
    platform.openWorkStore = openWorkStore;
    platform.newTargetApplication = [] { return access::newTargetApplication(); };
    platform.newReportApplication = [&system] {
        return std::make_shared<qt::PreviewApplication>(
            qt::PreviewServices{.openWorkStore = openWorkStore, .now = [&system] { return system.now(); }});
    };

    Desk desk(platform, {.appPath = textOfNativePath(folder.string())});
    qt::EventQueue events([&](const std::function<void()>& event) {
        const bool goesOn = desk.dispatch(event);
        if (!goesOn) {
            application.quit();
        }
        return goesOn;
    });
    qt::RelvaneWindow window(desk.frmRelvane, events);
    const qt::SetUpWindow setUp(window, desk.frmSetUp, events);
    if (lock.isHeld()) {
        instance.listen([&window] { window.comeForward(); });
    }
    events.fire([&] { desk.start(line.analysisFile); });
    if (!events.hasEnded()) {
        application.exec();
    }
    return desk.failed() ? exitFailed : exitDone;
}

} // namespace

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("relvane"));
    QApplication::setApplicationVersion(QStringLiteral(RELVANE_VERSION));
    QApplication::setDesktopFileName(QStringLiteral("relvane"));
    QApplication::setQuitOnLastWindowClosed(false); // the desk says when the program ends
    relvane::qt::setAppearance(application);
    relvane::qt::JapaneseTexts texts;
    QApplication::installTranslator(&texts);
    const auto line = readCommandLine(application);
    if (!line) {
        std::cerr << "relvane: one file at most\n";
        return exitWrongUsage;
    }
    try {
        return run(application, *line);
    } catch (const std::exception& error) { // a window that does not fit its form
        std::cerr << "relvane: " << error.what() << '\n';
        return exitFailed;
    }
}
