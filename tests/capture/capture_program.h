// The program on fakes with one form to take a picture of.
#pragma once

#include "support/fakes_desk.h"

namespace relvane::test {

struct CaptureProgram : FakeProgram {
    CaptureProgram() {
        target->addDocument(u"Forms", u"受注");
        targetForm.shown = {2, 1, {0xFF0000, 0x0000FF}};
        select();
        targetApps.calls.clear();
        dialogs.boxes.clear();
    }
    FrmCapture& viewer() { return desk->frmCapture; }

    bool capture() { return press(form().cmdFmImage); }
    bool wait() {
        return desk->dispatch([this] { form().Timer2.fire(); });
    }
    bool captureAndWait() { return capture() && wait(); }
    bool called(TextView call) const {
        return std::find(targetApps.calls.begin(), targetApps.calls.end(), call) != targetApps.calls.end();
    }
    FakeDialogs::Box lastBox() const {
        return dialogs.boxes.empty() ? FakeDialogs::Box() : dialogs.boxes.back();
    }

    FakeForm& targetForm = targetApps.forms.add(u"受注");
};

} // namespace relvane::test
