#include "qt/ties.h"

#include <QAction>
#include <QButtonGroup>
#include <QCheckBox>
#include <QComboBox>
#include <QFrame>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QTimer>
#include <algorithm>
#include <type_traits>

#include "qt/gauge_line.h"
#include "qt/logo_view.h"
#include "qt/picture_view.h"
#include "qt/qt_text.h"

namespace relvane::qt {
namespace {

// What all visible controls share.
template <class ControlType, class WidgetType>
class TieOf : public Tie {
public:
    TieOf(ControlType& control, WidgetType& widget, EventQueue& events)
        : control_(control), widget_(widget), events_(events) {}

    void show() override {
        widget_.setEnabled(control_.Enabled);
        widget_.setVisible(control_.Visible);
    }

protected:
    ControlType& control_;
    WidgetType& widget_;
    EventQueue& events_;
};

class ButtonTie : public TieOf<CommandButton, QPushButton> {
public:
    ButtonTie(CommandButton& control, QPushButton& widget, EventQueue& events)
        : TieOf(control, widget, events) {
        connect(&widget, &QPushButton::clicked, this, [this] { events_.fire([this] { control_.press(); }); });
    }
    void show() override {
        TieOf::show();
        widget_.setText(asCaption(control_.Caption.get()));
    }
};

class CheckTie : public TieOf<CheckBox, QCheckBox> {
public:
    CheckTie(CheckBox& control, QCheckBox& widget, EventQueue& events) : TieOf(control, widget, events) {
        connect(&widget, &QCheckBox::clicked, this,
                [this](bool ticked) { events_.fire([this, ticked] { control_.tick(ticked); }); });
    }
    void show() override {
        TieOf::show();
        widget_.setText(asCaption(control_.Caption.get()));
        widget_.setChecked(control_.Value != 0);
    }
};

class OptionTie : public TieOf<OptionButton, QRadioButton> {
public:
    OptionTie(OptionButton& control, QRadioButton& widget, EventQueue& events)
        : TieOf(control, widget, events), group_(groupOf(control, *widget.parentWidget())) {
        group_.addButton(&widget);
        connect(&widget, &QRadioButton::clicked, this, [this] {
            if (!control_.Value) { // the chosen one is not chosen again
                events_.fire([this] { control_.group().choose(control_.index()); });
            }
        });
    }
    void show() override {
        TieOf::show();
        widget_.setText(asCaption(control_.Caption.get()));
        if (control_.Value) {
            widget_.setChecked(true); // Qt clears the others of the group, as the form has done
            takeTabStop();
        } else if (widget_.isChecked()) {
            group_.setExclusive(false); // else the last one of a group could not be cleared
            widget_.setChecked(false);
            group_.setExclusive(true);
        }
    }

private:
    // Named, since Qt takes the buttons of a frame and of the frames within it for one group otherwise.
    static QButtonGroup& groupOf(const OptionButton& control, QWidget& frame) {
        const QString name = QStringLiteral("qt_group_") + QString::fromStdString(control.name());
        auto* group = frame.findChild<QButtonGroup*>(name, Qt::FindDirectChildrenOnly);
        if (group == nullptr) {
            group = new QButtonGroup(&frame);
            group->setObjectName(name);
        }
        return *group;
    }
    // Tab stops at the chosen button of a group; the arrow keys go on from there.
    void takeTabStop() {
        for (QAbstractButton* button : group_.buttons()) {
            button->setFocusPolicy(button == &widget_ ? Qt::StrongFocus : Qt::ClickFocus);
        }
    }
    QButtonGroup& group_;
};

class LabelTie : public TieOf<Label, QLabel> {
public:
    LabelTie(Label& control, QLabel& widget, EventQueue& events) : TieOf(control, widget, events) {
        widget.setTextFormat(Qt::PlainText);
        widget.installEventFilter(this);
    }
    void show() override {
        TieOf::show();
        widget_.setText(withLineBreaks(control_.Caption.get()));
        if (control_.Click) {
            widget_.setCursor(Qt::PointingHandCursor);
        }
        // Its text moves within the widget, whose size and place are the layout's.
        if (const QPoint moved(control_.Left, control_.Top); moved != shownAt_) {
            shownAt_ = moved;
            widget_.setContentsMargins(moved.x(), moved.y(), -moved.x(), -moved.y());
        }
    }

protected:
    bool eventFilter(QObject*, QEvent* event) override {
        const bool down = event->type() == QEvent::MouseButtonPress;
        if (!control_.Click || (!down && event->type() != QEvent::MouseButtonRelease)) {
            return false;
        }
        const auto* const mouse = static_cast<QMouseEvent*>(event);
        if (mouse->button() != Qt::LeftButton) {
            return false;
        }
        if (down) {
            events_.fire([this] { control_.mouseDown(); });
        } else {
            const bool isOver = widget_.rect().contains(mouse->position().toPoint());
            events_.fire([this, isOver] { control_.mouseUp(isOver); });
        }
        return true;
    }

private:
    QPoint shownAt_;
};

class TextTie : public TieOf<TextBox, QLineEdit> {
public:
    TextTie(TextBox& control, QLineEdit& widget, EventQueue& events) : TieOf(control, widget, events) {
        connect(&widget, &QLineEdit::textEdited, this, [this](const QString& text) {
            events_.fire([this, text] { control_.typeText(fromQString(text)); });
        });
        connect(&widget, &QLineEdit::selectionChanged, this, [this] { readSelection(); });
        connect(&widget, &QLineEdit::cursorPositionChanged, this, [this] { readSelection(); });
    }
    void show() override {
        TieOf::show();
        const QString text = toQString(control_.Text.get());
        const bool keep = reading_;
        reading_ = true;
        if (widget_.text() != text) {
            widget_.setText(text);
            widget_.setCursorPosition(0); // a long text shows its beginning
        }
        if (!keep && (control_.SelStart != shownStart_ || control_.SelLength != shownLength_)) {
            shownStart_ = control_.SelStart;
            shownLength_ = control_.SelLength;
            const int end = static_cast<int>(text.size());
            const int start = std::clamp(shownStart_, 0, end);
            widget_.setSelection(start, std::clamp(shownLength_, 0, end - start));
        }
        reading_ = keep;
    }

private:
    // The person's selection is the control's, so that code that selects the same again is noticed.
    void readSelection() {
        if (reading_) {
            return;
        }
        reading_ = true;
        shownStart_ = widget_.hasSelectedText() ? widget_.selectionStart() : widget_.cursorPosition();
        shownLength_ = static_cast<int>(widget_.selectedText().size());
        control_.SelStart = shownStart_;
        control_.SelLength = shownLength_;
        reading_ = false;
    }
    bool reading_ = false;
    int shownStart_ = 0, shownLength_ = 0;
};

class ComboTie : public TieOf<ComboBox, QComboBox> {
public:
    ComboTie(ComboBox& control, QComboBox& widget, EventQueue& events) : TieOf(control, widget, events) {
        connect(&widget, &QComboBox::activated, this,
                [this](int index) { events_.fire([this, index] { control_.choose(index); }); });
    }
    void show() override {
        TieOf::show();
        const QSignalBlocker quiet(widget_);
        const auto& items = control_.List();
        if (items.empty()) {
            widget_.clear(); // a list changes by being cleared or by one more entry at its end
        }
        for (int i = widget_.count(); i < control_.ListCount(); ++i) {
            const QString item = toQString(items[static_cast<std::size_t>(i)]);
            widget_.addItem(item);
            widget_.setItemData(i, asToolTip(item), Qt::ToolTipRole);
        }
        widget_.setCurrentIndex(control_.ListIndex);
        widget_.setToolTip(asToolTip(widget_.currentText()));
    }
};

class FrameTie : public TieOf<Frame, QGroupBox> {
public:
    using TieOf::TieOf;
    void show() override {
        TieOf::show();
        widget_.setTitle(asCaption(control_.Caption.get()));
    }
};

// The frame of other widgets; one that shows a picture has a tie of its own.
class PictureBoxTie : public TieOf<PictureBox, QFrame> {
public:
    using TieOf::TieOf;
};

class PictureTie : public TieOf<PictureBox, PictureView> {
public:
    using TieOf::TieOf;
    void show() override {
        TieOf::show();
        if (control_.Picture.get() != shown_) {
            shown_ = control_.Picture;
            widget_.setPicture(shown_.get());
        }
    }

private:
    std::shared_ptr<const Picture> shown_;
};

class ImageTie : public TieOf<Image, LogoView> {
public:
    using TieOf::TieOf;
    void show() override {
        TieOf::show();
        widget_.setPicture(control_.Picture);
    }
};

class LineTie : public TieOf<Line, GaugeLine> {
public:
    using TieOf::TieOf;
    void show() override {
        TieOf::show();
        widget_.setX2(control_.X2);
    }
};

class EntryTie : public TieOf<MenuItem, QAction> {
public:
    EntryTie(MenuItem& control, QAction& action, EventQueue& events) : TieOf(control, action, events) {
        connect(&action, &QAction::triggered, this, [this] { events_.fire([this] { control_.press(); }); });
    }
    void show() override {
        TieOf::show();
        const bool separates = control_.Caption.get() == u"-";
        widget_.setSeparator(separates);
        widget_.setText(separates ? QString() : asCaption(control_.Caption.get()));
    }
};

class MenuTie : public Tie {
public:
    MenuTie(MenuItem& control, QMenu& menu, EventQueue&) : control_(control), menu_(menu) {}
    void show() override {
        menu_.menuAction()->setEnabled(control_.Enabled);
        menu_.menuAction()->setVisible(control_.Visible);
        menu_.setTitle(asCaption(control_.Caption.get()));
    }

private:
    MenuItem& control_;
    QMenu& menu_;
};

class TimerTie : public Tie {
public:
    TimerTie(Timer& control, QTimer& clock, EventQueue& events) : control_(control), clock_(clock) {
        connect(&clock, &QTimer::timeout, this, [this, &events] {
            if (!waiting_) { // ticks during a long handler count once
                waiting_ = true;
                events.fire([this] {
                    waiting_ = false;
                    control_.fire();
                });
            }
        });
    }
    void show() override {
        const int interval = control_.Interval;
        if (interval <= 0 || !control_.Enabled) {
            clock_.stop();
        } else if (!clock_.isActive() || clock_.interval() != interval) {
            clock_.start(interval);
        }
    }

private:
    Timer& control_;
    QTimer& clock_;
    bool waiting_ = false;
};

template <class TieType, class ControlType, class WidgetType>
bool tieAs(std::unique_ptr<Tie>& tie, Control& control, QObject& partner, EventQueue& events) {
    auto* const typed = dynamic_cast<ControlType*>(&control);
    auto* const widget = qobject_cast<WidgetType*>(&partner);
    if (typed != nullptr && widget != nullptr) {
        tie = std::make_unique<TieType>(*typed, *widget, events);
    }
    return tie != nullptr;
}

} // namespace

std::unique_ptr<Tie> makeTie(Control& control, QObject& partner, EventQueue& events) {
    std::unique_ptr<Tie> tie;
    (void)(tieAs<ButtonTie, CommandButton, QPushButton>(tie, control, partner, events) ||
           tieAs<CheckTie, CheckBox, QCheckBox>(tie, control, partner, events) ||
           tieAs<OptionTie, OptionButton, QRadioButton>(tie, control, partner, events) ||
           tieAs<LabelTie, Label, QLabel>(tie, control, partner, events) ||
           tieAs<TextTie, TextBox, QLineEdit>(tie, control, partner, events) ||
           tieAs<ComboTie, ComboBox, QComboBox>(tie, control, partner, events) ||
           tieAs<FrameTie, Frame, QGroupBox>(tie, control, partner, events) ||
           tieAs<PictureTie, PictureBox, PictureView>(tie, control, partner, events) ||
           tieAs<PictureBoxTie, PictureBox, QFrame>(tie, control, partner, events) ||
           tieAs<ImageTie, Image, LogoView>(tie, control, partner, events) ||
           tieAs<LineTie, Line, GaugeLine>(tie, control, partner, events) ||
           tieAs<MenuTie, MenuItem, QMenu>(tie, control, partner, events) ||
           tieAs<EntryTie, MenuItem, QAction>(tie, control, partner, events) ||
           tieAs<TimerTie, Timer, QTimer>(tie, control, partner, events));
    return tie;
}

const char* widgetTypeOf(const Control& control) {
    const auto is = [&control]<class ControlType>(std::type_identity<ControlType>) {
        return dynamic_cast<const ControlType*>(&control) != nullptr;
    };
    return is(std::type_identity<CommandButton>())  ? "QPushButton"
           : is(std::type_identity<CheckBox>())     ? "QCheckBox"
           : is(std::type_identity<OptionButton>()) ? "QRadioButton"
           : is(std::type_identity<Label>())        ? "QLabel"
           : is(std::type_identity<TextBox>())      ? "QLineEdit"
           : is(std::type_identity<ComboBox>())     ? "QComboBox"
           : is(std::type_identity<Frame>())        ? "QGroupBox"
           : is(std::type_identity<PictureBox>())   ? "QFrame"
           : is(std::type_identity<Image>())        ? "relvane::qt::LogoView"
           : is(std::type_identity<Line>())         ? "relvane::qt::GaugeLine"
           : is(std::type_identity<MenuItem>())     ? "QAction or QMenu"
                                                    : "QTimer";
}

} // namespace relvane::qt
