// Ties a form of the logic to a window drawn in the Designer: each control to the widget of its name and type.
//
// The names: a control "cmdTable" has the widget "cmdTable", the element 2 of the control array "optTable" the
// widget "optTable_2". The types: CommandButton QPushButton, OptionButton QRadioButton, CheckBox QCheckBox, Label
// QLabel, TextBox QLineEdit, ComboBox QComboBox, Frame QGroupBox, PictureBox PictureView or, as a mere frame, QFrame,
// Line GaugeLine, Image LogoView, MenuItem QMenu when it has children and QAction otherwise (a caption "-" makes it a
// separator). A Timer has no widget.
//
// Every named widget of these types needs its control, but for a QLabel whose name begins with "caption_": the
// lettering of the layout alone. A window whose file and form disagree is not opened.
#pragma once

#include <QObject>
#include <QPointer>
#include <QWidget>
#include <memory>
#include <stdexcept>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/controls.h"
#include "qt/event_queue.h"

class QKeyEvent;
class QMouseEvent;
class QScreen;
class QTimer;

namespace relvane::qt {

inline constexpr int widthOfDecorations =
    16; // reckoned for what a window manager adds at both sides of a window

// A control without its widget, a widget without its control, or a pair of different types; names all of them.
class BindingError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

// What the binder does for one control, by the type of the control.
class Tie : public QObject {
public:
    using QObject::QObject;
    virtual void show() = 0; // gives the widget the present state of the control
};

// Lives as long as window and form. The window follows the form's Visible; closing the window fires QueryUnload, or
// hides the form when it has no such handler.
class Binder : public QObject {
public:
    // Throws BindingError; the window is then as it was.
    Binder(QWidget& window, Form& form, EventQueue& events);
    ~Binder() override;

    // Makes the window as large as its contents want, and the screen allows. Before the first show the binder does it.
    void fitToContents();

    // True while the window takes no input because the form is not enabled.
    bool isBlocked() const { return blocked_; }

protected:
    bool eventFilter(QObject* object, QEvent* event) override;

private:
    void match();
    void tie(Control& control, QObject& partner);
    void listen();
    void setTabOrder();

    void showForm();
    void showVisible();
    bool isSecondary() const; // opens above its parent; a position of its own has the main window alone
    void keepOnScreen();
    void moveOnto(const QScreen& screen);
    void place();
    void rememberPlaceSoon();
    void rememberPlace();
    void block();
    void unblockSoon();
    void unblock();
    void refresh(QWidget& widget);

    bool close();
    void focusWanted(QWidget& widget);
    void focused(Control& control, Qt::FocusReason reason);
    bool keyPressed(const QKeyEvent& key);
    void mouseMoved(QWidget& widget, const QMouseEvent& move);
    void pressTab();

    QWidget& window_;
    Form& form_;
    EventQueue& events_;
    std::unordered_map<const QObject*, Control*> controls_; // by widget, menu or action
    std::vector<std::unique_ptr<Tie>> ties_;
    QPointer<QWidget> focusBefore_; // what had the focus when the window was blocked
    QPointer<QWidget> wantedFocus_; // what the logic gave the focus to, until it has it
    QTimer* moved_;                 // runs while a move may turn out to be the window being maximised
    bool blocked_ = false, hourglass_ = false, placing_ = false, tabbed_ = false, fitted_ = false;
};

} // namespace relvane::qt
