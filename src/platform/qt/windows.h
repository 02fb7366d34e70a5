// The windows of the program's forms, one class for each Designer file.
#pragma once

#include <QMainWindow>
#include <memory>

#include "capture/frm_capture.h"
#include "core/frm_relvane.h"
#include "output/frm_out.h"
#include "output/frm_set_up.h"
#include "persist/frm_batch.h"
#include "qt/binder.h"
#include "support/frm_about.h"
#include "support/frm_sien.h"

namespace relvane::qt {

// The main window.
class RelvaneWindow : public QMainWindow {
    Q_OBJECT

public:
    RelvaneWindow(FrmRelvane& form, EventQueue& events);
    ~RelvaneWindow() override;

    // Shows the window, which a command may have left hidden, and brings it to the front, also from the task bar.
    void comeForward();

private:
    FrmRelvane& form_;
    EventQueue& events_;
    std::unique_ptr<Binder> binder_;
};

// The print settings; stays above the main window.
class SetUpWindow : public QWidget {
    Q_OBJECT

public:
    SetUpWindow(QWidget& above, FrmSetUp& form, EventQueue& events);
    ~SetUpWindow() override;

private:
    std::unique_ptr<Binder> binder_;
};

// The developer support; stays above the main window.
class SienWindow : public QWidget {
    Q_OBJECT

public:
    SienWindow(QWidget& above, FrmSien& form, EventQueue& events);
    ~SienWindow() override;

private:
    std::unique_ptr<Binder> binder_;
};

// The batch; stays above the main window.
class BatchWindow : public QWidget {
    Q_OBJECT

public:
    BatchWindow(QWidget& above, FrmBatch& form, EventQueue& events);
    ~BatchWindow() override;

private:
    std::unique_ptr<Binder> binder_;
};

// The outputs; stays above the main window.
class OutWindow : public QWidget {
    Q_OBJECT

public:
    OutWindow(QWidget& above, FrmOut& form, EventQueue& events);
    ~OutWindow() override;

private:
    std::unique_ptr<Binder> binder_;
};

// The about box.
class AboutWindow : public QWidget {
    Q_OBJECT

public:
    AboutWindow(QWidget& above, FrmAbout& form, EventQueue& events);
    ~AboutWindow() override;

private:
    std::unique_ptr<Binder> binder_;
};

// The viewer of a captured form, as large as its picture; stays above the main window.
class CaptureWindow : public QMainWindow {
    Q_OBJECT

public:
    CaptureWindow(QWidget& above, FrmCapture& form, EventQueue& events);
    ~CaptureWindow() override;

private:
    std::unique_ptr<Binder> binder_;
};

} // namespace relvane::qt
