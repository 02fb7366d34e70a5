// Windows as state: forms and controls without any toolkit. A form of the program is a class whose members are
// these controls; the logic reads and sets their members, tests and the command line press them, and a binder
// ties each to the widget of the same name. Member names are those of the window toolkit the texts speak of.
//
// Setting a member from code never fires an event; an event is fired by the methods that stand for what a person
// does (`press`, `choose`, `tick`, `typeText`, `fire`), or where the logic asks for it by calling them.
#pragma once

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/picture.h"
#include "platform/text.h"

namespace relvane {

class Control;
class Form;

enum class MousePointer { Normal = 0, Hourglass = 11 };

// A member of a control or form that tells the binder when it takes another value.
template <class T>
class Observed {
public:
    Observed(std::function<void()>& changed, T value) : changed_(&changed), value_(std::move(value)) {}
    Observed(const Observed&) = delete;
    Observed& operator=(const Observed& other) { return *this = other.value_; }
    Observed& operator=(T value) {
        if (value_ != value) {
            value_ = std::move(value);
            if (*changed_) {
                (*changed_)();
            }
        }
        return *this;
    }
    operator const T&() const { return value_; }
    const T& get() const { return value_; }

private:
    std::function<void()>* changed_;
    T value_;
};

// What all controls share. Controls of one name with different indexes form a control array ("cmdHyousi" 1, 2, 3).
class Control {
protected:
    std::function<void()> changed_; // before the observed members, which keep its address

public:
    static constexpr int noIndex = -1;

    // `parent` is the frame that holds the control; a disabled frame disables what it holds.
    Control(Form& form, std::string name, int index = noIndex, Control* parent = nullptr);
    virtual ~Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    const std::string& name() const { return name_; }
    int index() const { return index_; }
    std::string widgetName() const; // "cmdSave", "optTable_2"
    Form& form() const { return form_; }
    Control* parent() const { return parent_; }
    virtual bool takesFocus() const { return false; }

    // Enabled, with every frame around it and the form itself.
    bool isUsable() const;
    // Visible, with every frame around it.
    bool isShown() const;

    Observed<bool> Enabled{changed_, true};
    Observed<bool> Visible{changed_, true};

    void Refresh() const; // shows the present state at once, while an analysis runs
    void SetFocus();      // makes it the active control and fires GotFocus

    std::function<void()> GotFocus;
    std::function<void()> MouseMove;

    // For the binder: called when an observed member changed, at Refresh, and when code asks for the focus.
    void onChanged(std::function<void()> handler) { changed_ = std::move(handler); }
    std::function<void()> onRefresh;
    std::function<void()> onFocusWanted;

private:
    Form& form_;
    std::string name_;
    int index_;
    Control* parent_;
};

class Frame : public Control {
public:
    Frame(Form& form, std::string name, Text caption, Control* parent = nullptr)
        : Control(form, std::move(name), noIndex, parent), Caption(changed_, std::move(caption)) {}
    Observed<Text> Caption;
};

// A label with a Click is a link.
class Label : public Control {
public:
    Label(Form& form, std::string name, Text caption = {}, Control* parent = nullptr)
        : Control(form, std::move(name), noIndex, parent), Caption(changed_, std::move(caption)) {}
    Observed<Text> Caption;
    Observed<int> Left{changed_, 0}, Top{changed_, 0}; // pixels, from where the window has the label
    std::function<void()> MouseDown, MouseUp, Click;

    void mouseDown();          // fires MouseDown when usable
    void mouseUp(bool isOver); // behind mouseDown: fires MouseUp, and Click when the mouse is still over it
    void press();              // both of them

private:
    bool held_ = false; // by the mouse
};

class PictureBox : public Control {
public:
    using Control::Control;
    Observed<std::shared_ptr<const relvane::Picture>> Picture{changed_,
                                                              nullptr}; // what it shows, if anything
};

// A picture of several states.
class Image : public Control {
public:
    Image(Form& form, std::string name) : Control(form, std::move(name)) {}
    Observed<int> Picture{changed_, 0}; // the state shown, from 0
};

// A line of variable length inside a picture box: X2 is its right end in the units of the scale, 0 to 2400.
class Line : public Control {
public:
    Line(Form& form, std::string name, Control* parent)
        : Control(form, std::move(name), noIndex, parent), X2(changed_, 0) {}
    Observed<int> X2;
};

class TextBox : public Control {
public:
    TextBox(Form& form, std::string name, Control* parent = nullptr)
        : Control(form, std::move(name), noIndex, parent),
          Text(changed_, {}),
          SelStart(changed_, 0),
          SelLength(changed_, 0) {}
    bool takesFocus() const override { return true; }
    Observed<relvane::Text> Text;
    Observed<int> SelStart, SelLength; // UTF-16 units
    std::function<void()> Change;

    void typeText(relvane::Text text); // replaces the whole text, fires Change
};

class CommandButton : public Control {
public:
    CommandButton(Form& form, std::string name, Text caption, Control* parent = nullptr, int index = noIndex)
        : Control(form, std::move(name), index, parent), Caption(changed_, std::move(caption)) {}
    bool takesFocus() const override { return true; }
    Observed<Text> Caption;
    std::function<void()> Click;

    void press(); // fires Click when usable
};

class CheckBox : public Control {
public:
    CheckBox(Form& form, std::string name, Text caption, Control* parent = nullptr)
        : Control(form, std::move(name), noIndex, parent),
          Caption(changed_, std::move(caption)),
          Value(changed_, 0) {}
    bool takesFocus() const override { return true; }
    Observed<Text> Caption;
    Observed<int> Value; // 1 ticked, 0 not
    std::function<void()> Click;

    void tick(bool ticked); // sets Value; fires Click when that changed it
};

class OptionGroup;

// One button of an option group.
class OptionButton : public Control {
public:
    OptionButton(OptionGroup& group, Form& form, std::string name, int index, Text caption, Control* parent)
        : Control(form, std::move(name), index, parent),
          Caption(changed_, std::move(caption)),
          Value(changed_, false),
          group_(group) {}
    bool takesFocus() const override { return true; }
    OptionGroup& group() const { return group_; }
    Observed<Text> Caption;
    Observed<bool> Value;

private:
    OptionGroup& group_;
};

// A control array of option buttons, indexes from 0, of which at most one is chosen.
class OptionGroup {
public:
    OptionGroup(Form& form, const std::string& name, const std::vector<Text>& captions, Control* parent);

    int count() const { return static_cast<int>(buttons_.size()); }
    OptionButton& operator()(int index); // error 340 stands for a missing element
    int chosen() const;                  // index, or -1

    void set(int index);    // chooses without an event
    void choose(int index); // chooses and fires Click(index)
    std::function<void(int index)> Click;

private:
    std::string name_;
    std::vector<std::unique_ptr<OptionButton>> buttons_;
};

// A drop-down list without free text.
class ComboBox : public Control {
public:
    ComboBox(Form& form, std::string name, Control* parent = nullptr)
        : Control(form, std::move(name), noIndex, parent), ListIndex(changed_, -1) {}
    bool takesFocus() const override { return true; }

    void Clear();
    void AddItem(relvane::Text item);
    int ListCount() const { return static_cast<int>(items_.size()); }
    const std::vector<relvane::Text>& List() const { return items_; }
    relvane::Text Text() const; // the chosen entry; empty without one

    Observed<int> ListIndex; // -1 without a choice
    std::function<void()> Click;

    void choose(int listIndex); // sets ListIndex, fires Click

private:
    std::vector<relvane::Text> items_;
};

// Fires Timer every Interval milliseconds; 0 stops it.
class Timer : public Control {
public:
    Timer(Form& form, std::string name) : Control(form, std::move(name)), Interval(changed_, 0) {}
    Observed<int> Interval;
    std::function<void()> TimerEvent;

    void fire(); // what the clock does; nothing while Interval is 0
};

// An entry of a menu bar; one with children is a menu. A separator has the caption "-".
class MenuItem : public Control {
public:
    MenuItem(Form& form, std::string name, Text caption, MenuItem* parent = nullptr, int index = noIndex)
        : Control(form, std::move(name), index, parent), Caption(changed_, std::move(caption)) {}
    Observed<Text> Caption;
    std::function<void()> Click;

    void press(); // fires Click when usable and shown
};

// A window. Controls register themselves in the order in which they are made, which is the tab order.
class Form {
    std::function<void()> changed_; // before the observed members

public:
    Form(std::string name, Text caption);
    virtual ~Form() = default;
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    const std::string& name() const { return name_; }
    const std::vector<Control*>& controls() const { return controls_; }
    // By widget name ("optTable_2") without regard to case; nullptr when there is none.
    Control* find(std::string_view widgetName) const;

    Observed<Text> Caption;
    Observed<bool> Enabled{changed_, true};
    Observed<bool> Visible{changed_, false};
    Observed<MousePointer> Pointer{changed_, MousePointer::Normal};
    Observed<int> Top{changed_, 0}, Left{changed_, 0}; // pixels

    Control* ActiveControl = nullptr;
    std::function<void()> Load;        // fired by the first Show, and by the first behind an Unload
    std::function<void()> QueryUnload; // the person closes the window
    std::function<void()> MouseMove;   // over the window itself
    std::function<void(int& keyAscii)> KeyPress;
    std::function<void(const Text& path)> FileDropped; // a file of the desktop, dropped onto the window

    void Show(); // loads the form when it is not loaded, and makes it visible
    void Hide();
    void Unload();  // hides the window, and the next Show loads the form again
    void sendTab(); // the Tab key: the next control that can take the focus becomes active

    void onChanged(std::function<void()> handler) { changed_ = std::move(handler); }
    std::function<void()> onTab; // for the binder, which knows the real focus

private:
    friend class Control;
    std::string name_;
    std::vector<Control*> controls_;
    bool loaded_ = false;
};

} // namespace relvane
