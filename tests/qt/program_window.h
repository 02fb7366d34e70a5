// The program as app/relvane.cpp puts it together, in a folder of its own, with the sample database to select.
#pragma once

#include <QAction>
#include <filesystem>

#include "access/target_application.h"
#include "desk/desk.h"
#include "jet/open_database.h"
#include "qt/preview_application.h"
#include "qt/preview_window.h"
#include "qt/qt_text.h"
#include "qt/windows.h"
#include "sqlite/work_store.h"
#include "support/samples.h"
#include "system/linux_files.h"
#include "system/linux_system.h"
#include "system/shell_copy.h"
#include "window_test.h"

namespace relvane::qt {

// A person who chooses files and answers boxes by what was prepared.
class PreparedPerson : public Dialogs {
public:
    Text file;
    std::vector<Text> boxes;
    int MsgBox(const Text& text, int style, const Text&) override {
        boxes.push_back(text);
        return (style & 7) == yesNo ? boxYes : boxOk;
    }
    Text openFile(const Text&, const Text&, const Text&) override { return file; }
    Text saveFile(const Text&, const Text&, const Text&) override { return file; }
};

struct Program {
    test::TemporaryFolder folder;
    PreparedPerson person;
    LinuxFiles files;
    LinuxSystem system{false};
    Platform platform;
    std::unique_ptr<Desk> desk;
    std::unique_ptr<EventQueue> events;
    std::unique_ptr<RelvaneWindow> window;
    std::unique_ptr<SetUpWindow> setUp;
    std::unique_ptr<SienWindow> sien;
    std::unique_ptr<BatchWindow> batch;
    std::unique_ptr<OutWindow> out;
    std::unique_ptr<AboutWindow> about;

    // `settings`: the settings file of an earlier run, to begin with.
    explicit Program(const std::filesystem::path& settings = {}) {
        for (const char* original : {"Relvane.mdb", "Relvane.dat"}) {
            std::filesystem::copy_file(test::buildFolder() / "share/relvane" / original, folder / original);
        }
        if (!settings.empty()) {
            std::filesystem::copy_file(settings, folder / "Relvane.ini");
        }
        person.file = fromQtPath(QString::fromStdString(test::ownSample("juchu.mdb").string()));
        platform.dialogs = &person;
        platform.files = &files;
        platform.system = &system;
        platform.openTarget = [this](const Text& path) {
            return jet::openDatabase(path, {.resolveLink = std::bind_front(&Files::resolveLink, &files)});
        };
        platform.openWorkStore = openWorkStore;
        platform.copyFile =
            shellCopy(person, [](const Text& from, const Text& to) { openWorkStore(from)->copyTo(to); });
        platform.newTargetApplication = [] { return access::newTargetApplication(); };
        platform.newReportApplication = [this] {
            return std::make_shared<PreviewApplication>(
                PreviewServices{.openWorkStore = openWorkStore, .now = [this] { return system.now(); }});
        };
        const Text path = fromQtPath(QString::fromStdString(folder.path().string()));
        desk = std::make_unique<Desk>(platform, ProgramOptions{.appPath = path});
        events = std::make_unique<EventQueue>(
            [this](const std::function<void()>& event) { return desk->dispatch(event); });
        window = std::make_unique<RelvaneWindow>(desk->frmRelvane, *events);
        setUp = std::make_unique<SetUpWindow>(*window, desk->frmSetUp, *events);
        sien = std::make_unique<SienWindow>(*window, desk->frmSien, *events);
        batch = std::make_unique<BatchWindow>(*window, desk->frmBatch, *events);
        out = std::make_unique<OutWindow>(*window, desk->frmOut, *events);
        about = std::make_unique<AboutWindow>(*window, desk->frmAbout, *events);
        events->fire([this] { desk->start({}); });
    }
    ~Program() {
        about.reset();
        out.reset();
        batch.reset();
        sien.reset();
        setUp.reset();
        window.reset();
        desk.reset();
    }

    // Menus are windows of their own, and belong to the one that opens them.
    static const QWidget* windowOf(const QWidget* widget) {
        while (widget->windowType() == Qt::Popup && widget->parentWidget() != nullptr) {
            widget = widget->parentWidget();
        }
        return widget->window();
    }

    // Of the main window itself: the windows above it are its children, and have controls of the same names.
    template <class Type>
    Type* get(const char* name) {
        for (Type* found : window->findChildren<Type*>(QLatin1String(name))) {
            if constexpr (std::is_base_of_v<QWidget, Type>) {
                if (windowOf(found) != window.get()) {
                    continue;
                }
            }
            return found;
        }
        return nullptr;
    }
    PreviewWindow* preview() {
        const auto shown = std::dynamic_pointer_cast<PreviewApplication>(desk->context.ReportApp);
        return shown == nullptr ? nullptr : shown->window();
    }
    // The sample has an AutoExec macro, of which a box warns.
    bool select() {
        get<QAction>("m1a")->trigger();
        if (person.boxes != std::vector<Text>{u"AutoExecマクロの名前を変更してから解析して下さい。"}) {
            return false;
        }
        person.boxes.clear();
        return get<QPushButton>("cmdObject")->isEnabled();
    }
};

} // namespace relvane::qt
