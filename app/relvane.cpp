// relvane: the program with windows. Puts the platform of a desktop together, hands it to the desk, and runs the
// message loop until the desk has ended.
#include <QApplication>
#include <QCommandLineParser>
#include <QDir>
#include <QFileInfo>
#include <functional>
#include <iostream>
#include <optional>

#include "access/target_application.h"
#include "desk/desk.h"
#include "formview/form_painter.h"
#include "jet/open_database.h"
#include "platform/native_path.h"
#include "platform/runtime_error.h"
#include "qt/appearance.h"
#include "qt/desktop_services.h"
#include "qt/japanese_texts.h"
#include "qt/preview_application.h"
#include "qt/qt_clipboard.h"
#include "qt/qt_dialogs.h"
#include "qt/qt_text.h"
#include "qt/single_instance.h"
#include "qt/windows.h"
#include "spreadsheet/service.h"
#include "sqlite/work_store.h"
#include "system/link_map_file.h"
#include "system/linux_files.h"
#include "system/linux_system.h"
#include "system/program_folder.h"
#include "system/shell_copy.h"

namespace {

using namespace relvane;

constexpr int exitDone = 0, exitFailed = 1, exitWrongUsage = 2;

struct CommandLine {
    std::optional<std::filesystem::path> programFolder;
    std::vector<LinkMapping> links;
    Text file; // as the logic reads it: empty, or an absolute path in double quotes
};

Text sentence(const MappingFault& fault) {
    const Text text = fromUtf8(fault.text);
    switch (fault.kind) {
    case MappingFault::Kind::NoMapping:
        return u"「元のパス=フォルダ」の形ではありません。 (" + text + u")";
    case MappingFault::Kind::NoUtf8:
        return u"UTF-8 で書かれていません。";
    case MappingFault::Kind::FolderMissing:
        return u"フォルダが見つかりません。 (" + text + u")";
    case MappingFault::Kind::Unreadable:
        return text;
    }
    return text;
}

// Keeps the mappings of the command line in the program's folder, and gives all that count: those of the command line
// go before those of the file. What in the file cannot be read is told in one box; the rest counts.
std::vector<LinkMapping> linkMappings(const CommandLine& line, const std::filesystem::path& folder,
                                      Dialogs& dialogs) {
    Text faults;
    try {
        keepLinkMappings(folder, line.links);
    } catch (const RunTimeError& error) {
        faults += u"\r" + error.description();
    }
    LinkMap kept = readLinkMap(folder);
    for (const MappingFault& fault : kept.faults) {
        faults += u"\r" +
                  (fault.line == 0 ? Text() : toText(static_cast<long long>(fault.line)) + u"行目: ") +
                  sentence(fault);
    }
    if (!faults.empty()) {
        dialogs.MsgBox(u"リンク先の対応 (" + fromUtf8(linkMapFile) + u") に使用出来ないものがあります。" +
                           faults,
                       okOnly, Text(programTitle));
    }
    std::vector<LinkMapping> links = line.links;
    links.insert(links.end(), kept.mappings.begin(), kept.mappings.end());
    return links;
}

// Nothing for wrong usage, which has been told on standard error.
std::optional<CommandLine> readCommandLine(const QApplication& application) {
    QCommandLineParser parser;
    const QCommandLineOption folder(QStringLiteral("program-folder"),
                                    QStringLiteral("work in this folder (work database, settings)"),
                                    QStringLiteral("DIR"));
    parser.setApplicationDescription(QStringLiteral("Documents Microsoft Access databases without Access."));
    const QCommandLineOption map(
        QStringLiteral("map"),
        QStringLiteral(
            "linked files under PREFIX (C:\\data) lie in DIR; may be repeated, is kept in Relvane.map"),
        QStringLiteral("PREFIX=DIR"));
    parser.addOption(folder);
    parser.addOption(map);
    parser.addHelpOption();
    parser.addVersionOption();
    parser.addPositionalArgument(QStringLiteral("file"),
                                 QStringLiteral("a database or a saved analysis file"),
                                 QStringLiteral("[FILE]"));
    parser.process(application);
    if (parser.positionalArguments().size() > 1) {
        std::cerr << "relvane: one file at most\n";
        return std::nullopt;
    }
    CommandLine line;
    for (const QString& word : parser.values(map)) {
        auto read = parseLinkMapping(word.toStdString(), std::filesystem::current_path());
        if (const auto* fault = std::get_if<MappingFault>(&read)) {
            std::cerr << "relvane: --map: " << toUtf8(sentence(*fault)) << '\n';
            return std::nullopt;
        }
        line.links.push_back(std::get<LinkMapping>(std::move(read)));
    }
    if (parser.isSet(folder)) {
        const QString path = QFileInfo(parser.value(folder)).absoluteFilePath();
        line.programFolder = QFile::encodeName(path).toStdString();
    }
    if (!parser.positionalArguments().isEmpty()) {
        const QFileInfo file(parser.positionalArguments().constFirst());
        line.file = u"\"" + qt::fromQtPath(file.absoluteFilePath()) + u"\"";
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

    // A second program only shows the first, and leaves the file to it.
    LinuxFiles files(lock.isHeld() ? linkMappings(line, folder, dialogs) : std::vector<LinkMapping>());
    LinuxSystem system(!lock.isHeld());
    qt::DesktopServices services(system, dialogs);
    qt::QtClipboard clipboard;
    Platform platform;
    platform.dialogs = &dialogs;
    platform.clipboard = &clipboard;
    platform.files = &files;
    platform.system = &services;
    access::TargetOpener opener(dialogs, std::bind_front(&Files::resolveLink, &files));
    platform.openTarget = [&opener](const Text& path) { return opener.open(path); };
    platform.openWorkStore = openWorkStore;
    platform.copyFile =
        shellCopy(dialogs, [](const Text& from, const Text& to) { openWorkStore(from)->copyTo(to); });
    platform.newTargetApplication = [&opener] {
        return access::newTargetApplication(opener.newSelection(), formview::newFormPainter);
    };
    platform.newSpreadsheet = [folder] {
        return spreadsheet::newSpreadsheet({.folder = folder, .windows = true});
    };
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
    const qt::SienWindow sien(window, desk.frmSien, events);
    const qt::BatchWindow batch(window, desk.frmBatch, events);
    const qt::OutWindow out(window, desk.frmOut, events);
    const qt::AboutWindow about(window, desk.frmAbout, events);
    const qt::CaptureWindow capture(window, desk.frmCapture, events);
    if (lock.isHeld()) {
        instance.listen([&window] { window.comeForward(); });
    }
    events.fire([&] { desk.start(line.file); });
    if (!lock.isHeld()) {
        instance.askFirstToShow(); // behind the box that tells of it
    }
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
        return exitWrongUsage;
    }
    try {
        return run(application, *line);
    } catch (const std::exception& error) { // a window that does not fit its form
        std::cerr << "relvane: " << error.what() << '\n';
        return exitFailed;
    }
}
