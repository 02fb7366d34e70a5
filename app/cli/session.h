// One desk on the command line: the platform of a machine without a display, and the desk that works on it.
#pragma once

#include <filesystem>
#include <functional>
#include <optional>
#include <string>

#include "access/target_opener.h"
#include "command_line_dialogs.h"
#include "desk/desk.h"
#include "held_picture.h"
#include "report_output.h"
#include "system/linux_files.h"
#include "system/linux_system.h"

namespace relvane::cli {

class Session {
public:
    // Works in `programFolder`. Opened reports go to `reports`. With `progress`, the gauge and its message are drawn
    // on standard error while an analysis runs. `links` says where linked files lie.
    Session(const std::filesystem::path& programFolder, ReportOutput reports, bool quiet, bool progress,
            std::set<Text>* saidBefore = nullptr, std::vector<LinkMapping> links = {});
    Session(const Session&) = delete;
    Session& operator=(const Session&) = delete;

    // Start-up, then the selection of the target as a person does it. False when the selection failed; the error has
    // been reported.
    bool select(const std::filesystem::path& target);

    // Whether an error was reported since the beginning, or the program ended by one.
    bool hasFailed() const { return dialogs.errorReported() || desk.failed(); }

    CommandLineDialogs dialogs;

private:
    LinuxFiles files_;
    access::TargetOpener opener_{dialogs, std::bind_front(&Files::resolveLink, &files_)};
    LinuxSystem system_;
    HeldPicture clipboard_;
    Platform platform_;
    void followGauge(ProgressGauge& gauge);
    void drawGauge(const ProgressGauge& gauge);
    void clearGauge();
    bool progress_;
    std::string drawn_;

public:
    Desk desk;
    ~Session();
};

} // namespace relvane::cli
