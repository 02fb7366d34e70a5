// The whole program without a screen: the forms, their shared state and the handlers of their controls. The window
// program and the command line make one Desk, hand it the platform, and pass every event through `dispatch`; tests
// do the same.
//
//     Desk desk(platform, {.appPath = folder});
//     desk.start(commandLine);                                    // Form_Load of the main window
//     desk.dispatch([&] { desk.frmRelvane.m1a.press(); });        // any event
//     if (desk.ended()) ...                                       // leave the message loop
//
// The platform's parts outlive the desk.
#pragma once

#include <functional>
#include <vector>

#include "capture/frm_capture.h"
#include "core/analysis_context.h"
#include "core/frm_relvane.h"
#include "output/frm_out.h"
#include "output/frm_set_up.h"
#include "persist/frm_batch.h"
#include "support/frm_about.h"
#include "support/frm_sien.h"

namespace relvane {

struct ProgramOptions {
    Text appPath; // the program's folder, absolute, with or without a separator at its end
    Addresses addresses = builtInAddresses();
};

class Desk {
    Platform& platform_;
    ProgramOptions options_;
    bool ended_ = false;
    bool failed_ = false;

public:
    Desk(Platform& platform, ProgramOptions options);
    Desk(const Desk&) = delete;
    Desk& operator=(const Desk&) = delete;

    // The windows, in the order in which a message loop would destroy them.
    FrmRelvane frmRelvane;
    AnalysisContext context;
    FrmSetUp frmSetUp;
    FrmSien frmSien;
    FrmAbout frmAbout;
    FrmBatch frmBatch;
    FrmOut frmOut;
    FrmCapture frmCapture;

    // Every form of the program, for the binder and for finding controls by name.
    std::vector<Form*> forms() {
        return {&frmRelvane, &frmSetUp, &frmSien, &frmAbout, &frmBatch, &frmOut, &frmCapture};
    }

    // Start-up with the command line behind the program's name: empty, or the quoted path of an analysis file, or of a
    // database, which is then selected. Shows the main window. Returns false when the program ended, as dispatch does.
    bool start(const Text& commandLine);

    // Runs an event: the boundary at which an end of the program arrives. A run-time error that no command handled
    // is shown in one box with its number and description and ends the program without the exit steps. Returns
    // whether the program goes on; once it has ended, nothing runs any more.
    bool dispatch(const std::function<void()>& event);

    bool ended() const { return ended_; }
    bool failed() const { return failed_; } // ended by an unhandled error

private:
    void wire();
    void endUnhandled(const RunTimeError& error);
};

} // namespace relvane
