#include "qt/binder.h"

#include <QAction>
#include <QApplication>
#include <QElapsedTimer>
#include <QKeyEvent>
#include <QLayout>
#include <QMenu>
#include <QMouseEvent>
#include <QScreen>
#include <QStyle>
#include <QTimer>
#include <algorithm>
#include <climits>
#include <map>

#include "qt/qt_text.h"
#include "qt/ties.h"

namespace relvane::qt {
namespace {

constexpr QSize decorations(widthOfDecorations, 48);

constexpr const char* boundTypes[] = {
    "QPushButton",
    "QRadioButton",
    "QCheckBox",
    "QLabel",
    "QLineEdit",
    "QComboBox",
    "QGroupBox",
    "QMenu",
    "QAction",
    "relvane::qt::GaugeLine",
    "relvane::qt::LogoView",
    "relvane::qt::PictureView",
    "relvane::qt::FieldFrame",
};

bool needsControl(const QObject& object) {
    const QString name = object.objectName();
    if (name.isEmpty() || name.startsWith(QLatin1String("qt_")) ||
        name.startsWith(QLatin1String("caption_"))) {
        return false;
    }
    // Many containers of Qt are frames; only a plain one is a picture box.
    return qstrcmp(object.metaObject()->className(), "QFrame") == 0 ||
           std::ranges::any_of(boundTypes, [&object](const char* type) { return object.inherits(type); });
}

std::string nameOf(const QObject& object) {
    return object.objectName().toStdString();
}

// Lets the screen and the window manager be answered while an analysis runs, but no person: a click would start
// another handler within the running one.
void answerTheDesktop() {
    static QElapsedTimer last;
    constexpr int pause = 40; // milliseconds
    if (!last.isValid() || last.elapsed() >= pause) {
        QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
        last.start();
    }
}

} // namespace

Binder::Binder(QWidget& window, Form& form, EventQueue& events)
    : window_(window), form_(form), events_(events), moved_(new QTimer(this)) {
    moved_->setSingleShot(true);
    connect(moved_, &QTimer::timeout, this, [this] { rememberPlace(); });
    match();
    listen();
    setTabOrder();
    form_.onChanged([this] { showForm(); });
    form_.onTab = [this] { pressTab(); };
    showForm();
}

Binder::~Binder() {
    form_.onChanged({});
    form_.onTab = {};
    for (Control* control : form_.controls()) {
        control->onChanged({});
        control->onRefresh = {};
        control->onFocusWanted = {};
    }
    if (hourglass_) {
        QApplication::restoreOverrideCursor();
    }
}

void Binder::match() {
    std::map<std::string, QObject*> partners;
    for (QObject* object : window_.findChildren<QObject*>()) {
        if (needsControl(*object)) {
            partners[nameOf(*object)] = object;
        }
    }
    std::string faults;
    std::vector<std::pair<Control*, QObject*>> pairs;
    for (Control* control : form_.controls()) {
        const std::string name = control->widgetName();
        if (dynamic_cast<Timer*>(control) != nullptr) {
            auto* const clock = new QTimer(this);
            pairs.emplace_back(control, clock);
            continue;
        }
        const auto found = partners.find(name);
        if (found == partners.end()) {
            faults += "\n" + name + ": the window has no such " + widgetTypeOf(*control);
            continue;
        }
        if (!makeTie(*control, *found->second, events_)) {
            faults += "\n" + name + ": needs a " + widgetTypeOf(*control) + ", the window has a " +
                      found->second->metaObject()->className();
        }
        pairs.emplace_back(control, found->second);
        partners.erase(found);
    }
    for (const auto& [name, partner] : partners) {
        faults += "\n" + name + ": a " + partner->metaObject()->className() + " without a control";
    }
    if (!faults.empty()) {
        throw BindingError(form_.name() + " and its window do not fit:" + faults);
    }
    for (const auto& [control, partner] : pairs) {
        tie(*control, *partner);
    }
}

void Binder::tie(Control& control, QObject& partner) {
    Tie* const made = ties_.emplace_back(makeTie(control, partner, events_)).get();
    controls_[&partner] = &control;
    control.onChanged([made] { made->show(); });
    if (auto* const widget = qobject_cast<QWidget*>(&partner)) {
        control.onRefresh = [this, widget] { refresh(*widget); };
        control.onFocusWanted = [this, widget] { focusWanted(*widget); };
    }
    made->show();
}

void Binder::listen() {
    window_.installEventFilter(this);
    for (QWidget* widget : window_.findChildren<QWidget*>()) {
        if (!widget->isWindow()) {
            widget->setMouseTracking(true);
            widget->installEventFilter(this);
        }
    }
    window_.setMouseTracking(true);
}

void Binder::setTabOrder() {
    QWidget* before = nullptr;
    for (const Control* control : form_.controls()) {
        QWidget* const widget =
            control->takesFocus() ? window_.findChild<QWidget*>(QString::fromStdString(control->widgetName()))
                                  : nullptr;
        if (before != nullptr && widget != nullptr) {
            QWidget::setTabOrder(before, widget);
        }
        before = widget != nullptr ? widget : before;
    }
}

// --- what the logic changes -------------------------------------------------------------------------------------

void Binder::showForm() {
    window_.setWindowTitle(withLineBreaks(form_.Caption.get()));
    place();
    const bool hourglass = form_.Pointer == MousePointer::Hourglass;
    if (hourglass != hourglass_) {
        hourglass_ = hourglass;
        if (hourglass) {
            QApplication::setOverrideCursor(Qt::WaitCursor);
        } else {
            QApplication::restoreOverrideCursor();
        }
    }
    if (!form_.Enabled) {
        block();
    } else if (blocked_) {
        unblockSoon();
    }
    showVisible();
}

void Binder::showVisible() {
    if (form_.Visible == window_.isVisible()) {
        return;
    }
    if (!form_.Visible) {
        window_.hide();
        return;
    }
    if (!fitted_) { // later the size is the person's
        fitted_ = true;
        fitToContents();
    }
    if (isSecondary()) {
        const QRect above = window_.parentWidget()->frameGeometry();
        window_.move(above.center() - window_.rect().center());
        moveOnto(*window_.screen());
    } else {
        keepOnScreen();
    }
    window_.show();
    window_.raise();
    window_.activateWindow();
}

bool Binder::isSecondary() const {
    return window_.parentWidget() != nullptr;
}

// As large as its contents want, and the screen allows. (Qt's own adjustSize stops at two thirds of the screen.)
void Binder::fitToContents() {
    // What came and went before the first show told no layout.
    for (QWidget* widget : window_.findChildren<QWidget*>()) {
        widget->updateGeometry();
    }
    for (QLayout* layout : window_.findChildren<QLayout*>()) {
        layout->invalidate();
    }
    const QSize room = window_.screen()->availableSize() - decorations;
    const int scrollBar = window_.style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    const QSize contents = window_.sizeHint();
    const QSize bars(contents.height() > room.height() ? scrollBar : 0,
                     contents.width() > room.width() ? scrollBar : 0);
    const QSize wanted = contents + bars;
    window_.resize(wanted.boundedTo(room).expandedTo(window_.minimumSizeHint()));
}

// A position of an earlier run may lie on a screen that is gone, or has become smaller: as long as enough of the title
// bar can be seen to take hold of it the window stays, otherwise it comes whole onto the nearest screen.
void Binder::keepOnScreen() {
    constexpr QSize handle(120, 16);
    const QRect bar(window_.pos(), QSize(window_.width(), 24));
    const QScreen* nearest = QGuiApplication::primaryScreen();
    int least = INT_MAX;
    for (const QScreen* screen : QGuiApplication::screens()) {
        const QRect room = screen->availableGeometry();
        const QRect seen = room & bar;
        if (seen.width() >= handle.width() && seen.height() >= handle.height()) {
            return;
        }
        const int distance = (room.center() - bar.center()).manhattanLength();
        if (distance < least) {
            least = distance;
            nearest = screen;
        }
    }
    moveOnto(*nearest);
}

void Binder::moveOnto(const QScreen& screen) {
    const QRect room = screen.availableGeometry();
    const QSize size = window_.size() + decorations;
    const auto within = [](int wanted, int first, int space) {
        return std::clamp(wanted, first, std::max(first, first + space));
    };
    window_.move(within(window_.x(), room.x(), room.width() - size.width()),
                 within(window_.y(), room.y(), room.height() - size.height()));
}

void Binder::place() {
    const QPoint wanted(form_.Left, form_.Top);
    if (!isSecondary() && !placing_ && window_.pos() != wanted) {
        placing_ = true;
        window_.move(wanted);
        placing_ = false;
    }
}

// Some window managers move a window before they say that it is maximised; that place is not the person's.
void Binder::rememberPlaceSoon() {
    constexpr int settled = 150; // milliseconds
    if (!placing_) {
        moved_->start(settled);
    }
}

void Binder::rememberPlace() {
    moved_->stop();
    if (!isSecondary() && !placing_ && window_.isVisible() && !window_.isMinimized() &&
        !window_.isMaximized() && !window_.isFullScreen()) {
        placing_ = true;
        form_.Left = window_.x();
        form_.Top = window_.y();
        placing_ = false;
    }
}

void Binder::block() {
    if (!blocked_) {
        blocked_ = true;
        focusBefore_ = window_.focusWidget();
        window_.setEnabled(false);
    }
}

// Clicks and keys of the time in which the window was blocked still lie in the queue. They are let through to the
// blocked window, which drops them, before it is opened.
void Binder::unblockSoon() {
    events_.whenIdle([this] {
        QTimer::singleShot(0, this, [this] {
            if (events_.isBusy()) {
                unblockSoon();
                return;
            }
            QCoreApplication::processEvents();
            if (blocked_ && form_.Enabled) {
                unblock();
            }
        });
    });
}

void Binder::unblock() {
    window_.setEnabled(true);
    if (QWidget* const widget = wantedFocus_ != nullptr ? wantedFocus_ : focusBefore_) {
        widget->setFocus(Qt::OtherFocusReason); // still blocked: a focus that only comes back is no event
    }
    blocked_ = false;
}

void Binder::refresh(QWidget& widget) {
    widget.repaint();
    answerTheDesktop();
}

void Binder::focusWanted(QWidget& widget) {
    if (!widget.hasFocus()) {
        wantedFocus_ = &widget;
        widget.setFocus(Qt::OtherFocusReason);
    }
}

void Binder::pressTab() {
    tabbed_ = true;
    if (QWidget* const widget = window_.focusWidget()) {
        QKeyEvent tab(QEvent::KeyPress, Qt::Key_Tab, Qt::NoModifier, QStringLiteral("\t"));
        QApplication::sendEvent(widget, &tab);
    }
}

// --- what a person does -----------------------------------------------------------------------------------------

bool Binder::eventFilter(QObject* object, QEvent* event) {
    auto* const widget = qobject_cast<QWidget*>(object);
    switch (event->type()) {
    case QEvent::Close:
        if (object == &window_) {
            event->ignore();
            return close();
        }
        break;
    case QEvent::Move:
        if (object == &window_) {
            rememberPlaceSoon();
        }
        break;
    case QEvent::FocusIn:
        if (const auto found = controls_.find(object); found != controls_.end()) {
            focused(*found->second, static_cast<QFocusEvent*>(event)->reason());
        }
        break;
    case QEvent::KeyPress:
        return object == window_.focusWidget() && keyPressed(*static_cast<QKeyEvent*>(event));
    case QEvent::MouseMove:
        mouseMoved(*widget, *static_cast<QMouseEvent*>(event));
        break;
    default:
        break;
    }
    return false;
}

bool Binder::close() {
    if (blocked_) {
        return true;
    }
    rememberPlace();
    if (form_.QueryUnload) {
        events_.fire([this] { form_.QueryUnload(); });
    } else {
        form_.Hide();
    }
    return true; // the logic decides whether the window goes
}

void Binder::focused(Control& control, Qt::FocusReason reason) {
    form_.ActiveControl = &control;
    const bool wanted = wantedFocus_ != nullptr && controls_[wantedFocus_] == &control;
    if (wanted) {
        wantedFocus_ = nullptr;
    }
    // The window coming back to the front gives its active control nothing new.
    const bool returns = blocked_ || reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason;
    if (!control.GotFocus || (returns && !wanted)) {
        return;
    }
    const auto tell = [this, &control] {
        events_.fire([&control] {
            if (control.GotFocus) {
                control.GotFocus();
            }
        });
    };
    if (reason == Qt::MouseFocusReason) {
        QTimer::singleShot(0, this, tell); // behind the click, which would undo a selection made now
    } else {
        tell();
    }
}

bool Binder::keyPressed(const QKeyEvent& key) {
    const QString text = key.text();
    if (!form_.KeyPress || blocked_ || events_.isBusy() || text.isEmpty() || key.key() == Qt::Key_Tab ||
        key.key() == Qt::Key_Backtab) {
        return false;
    }
    int ascii = text.front().unicode();
    tabbed_ = false;
    events_.fire([this, &ascii] { form_.KeyPress(ascii); });
    return ascii == 0 || tabbed_;
}

void Binder::mouseMoved(QWidget& widget, const QMouseEvent& move) {
    if (blocked_ || widget.childAt(move.position().toPoint()) != nullptr) {
        return; // handed up by a child, which was asked already
    }
    for (QWidget* under = &widget; under != nullptr; under = under->parentWidget()) {
        const auto found = controls_.find(under);
        Control* const control = found == controls_.end() ? nullptr : found->second;
        if (under == &window_) {
            if (form_.MouseMove) {
                events_.fire([this] { form_.MouseMove(); });
            }
            return;
        }
        if (control != nullptr && control->isUsable()) {
            if (control->MouseMove) {
                events_.fire([control] { control->MouseMove(); });
                return;
            }
            if (control->takesFocus()) {
                return;
            }
        }
    }
}

} // namespace relvane::qt
