#include "session.h"

#include <iostream>

#include "access/target_application.h"
#include "formview/form_painter.h"
#include "jet/open_database.h"
#include "platform/native_path.h"
#include "spreadsheet/service.h"
#include "sqlite/work_store.h"
#include "system/shell_copy.h"

namespace relvane::cli {

Session::Session(const std::filesystem::path& programFolder, ReportOutput reports, bool quiet, bool progress,
                 std::set<Text>* saidBefore, std::vector<LinkMapping> links)
    : dialogs(quiet, saidBefore),
      files_(std::move(links)),
      system_(false),
      progress_(progress),
      desk(platform_, {.appPath = textOfNativePath(programFolder.string())}) {
    platform_.dialogs = &dialogs;
    platform_.files = &files_;
    platform_.system = &system_;
    platform_.clipboard = &clipboard_;
    platform_.openTarget = [this](const Text& path) { return opener_.open(path); };
    platform_.openWorkStore = [](const Text& path) { return openWorkStore(path); };
    platform_.copyFile =
        shellCopy(dialogs, [](const Text& from, const Text& to) { openWorkStore(from)->copyTo(to); });
    platform_.newTargetApplication = [this] {
        return access::newTargetApplication(opener_.newSelection(), formview::newFormPainter);
    };
    platform_.newReportApplication = [reports = std::move(reports)] { return newReportApplication(reports); };
    platform_.newSpreadsheet = [programFolder] {
        return spreadsheet::newSpreadsheet({.folder = programFolder});
    };
    if (progress_) {
        dialogs.beforeWriting = [this] { clearGauge(); };
        followGauge(desk.frmRelvane.gauge);
        followGauge(desk.frmSien.gauge);
        followGauge(desk.frmBatch.gauge);
    }
}

Session::~Session() {
    clearGauge();
}

void Session::clearGauge() {
    if (!drawn_.empty()) {
        drawn_.clear();
        std::cerr << "\r\033[K" << std::flush;
    }
}

bool Session::select(const std::filesystem::path& target) {
    if (!desk.start(Text())) {
        return false;
    }
    dialogs.files.push_front(textOfNativePath(target.string()));
    return desk.dispatch([this] { desk.frmRelvane.m1a.press(); }) && !dialogs.errorReported();
}

void Session::followGauge(ProgressGauge& gauge) {
    gauge.linGuage.onRefresh = gauge.txtMesege.onRefresh = [this, &gauge] { drawGauge(gauge); };
}

void Session::drawGauge(const ProgressGauge& gauge) {
    constexpr int width = 30, fullGauge = 2400;
    const int filled = std::clamp<int>(gauge.linGuage.X2, 0, fullGauge) * width / fullGauge;
    std::string line = "[" + std::string(static_cast<std::size_t>(filled), '#') +
                       std::string(static_cast<std::size_t>(width - filled), ' ') + "] " +
                       toUtf8(gauge.txtMesege.Caption.get());
    if (line != drawn_) {
        drawn_ = std::move(line);
        std::cerr << "\r\033[K" << drawn_ << std::flush;
    }
}

} // namespace relvane::cli
