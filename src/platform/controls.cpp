#include "platform/controls.h"

#include <algorithm>
#include <cctype>

#include "platform/runtime_error.h"

namespace relvane {

Control::Control(Form& form, std::string name, int index, Control* parent)
    : form_(form), name_(std::move(name)), index_(index), parent_(parent) {
    form.controls_.push_back(this);
}

std::string Control::widgetName() const {
    return index_ == noIndex ? name_ : name_ + "_" + std::to_string(index_);
}

bool Control::isUsable() const {
    for (const Control* control = this; control != nullptr; control = control->parent_) {
        if (!control->Enabled) {
            return false;
        }
    }
    return form_.Enabled;
}

bool Control::isShown() const {
    for (const Control* control = this; control != nullptr; control = control->parent_) {
        if (!control->Visible) {
            return false;
        }
    }
    return true;
}

void Control::Refresh() const {
    if (onRefresh) {
        onRefresh();
    }
}

void Control::SetFocus() {
    form_.ActiveControl = this;
    if (onFocusWanted) {
        onFocusWanted(); // the binder fires GotFocus when the widget really gets it
    } else if (GotFocus) {
        GotFocus();
    }
}

void Label::mouseDown() {
    held_ = isUsable();
    if (held_ && MouseDown) {
        MouseDown();
    }
}

void Label::mouseUp(bool isOver) {
    if (!held_) {
        return;
    }
    held_ = false;
    if (MouseUp) {
        MouseUp();
    }
    if (isOver && Click) {
        Click();
    }
}

void Label::press() {
    mouseDown();
    mouseUp(true);
}

void TextBox::typeText(relvane::Text text) {
    Text = std::move(text);
    if (Change) {
        Change();
    }
}

void CommandButton::press() {
    if (isUsable() && Click) {
        Click();
    }
}

void CheckBox::tick(bool ticked) {
    const int value = ticked ? 1 : 0;
    if (Value == value) {
        return;
    }
    Value = value;
    if (Click) {
        Click();
    }
}

OptionGroup::OptionGroup(Form& form, const std::string& name, const std::vector<Text>& captions,
                         Control* parent)
    : name_(name) {
    for (const Text& caption : captions) {
        const int index = static_cast<int>(buttons_.size());
        buttons_.push_back(std::make_unique<OptionButton>(*this, form, name, index, caption, parent));
    }
}

OptionButton& OptionGroup::operator()(int index) {
    if (index < 0 || index >= count()) {
        throw RunTimeError(340, u"コントロール配列の要素がありません。");
    }
    return *buttons_[static_cast<std::size_t>(index)];
}

int OptionGroup::chosen() const {
    for (const auto& button : buttons_) {
        if (button->Value) {
            return button->index();
        }
    }
    return -1;
}

void OptionGroup::set(int index) {
    OptionButton& wanted = (*this)(index);
    for (const auto& button : buttons_) {
        if (button.get() != &wanted) {
            button->Value = false;
        }
    }
    wanted.Value = true;
}

void OptionGroup::choose(int index) {
    set(index);
    if (Click) {
        Click(index);
    }
}

void ComboBox::Clear() {
    items_.clear();
    ListIndex = -1;
    if (changed_) {
        changed_();
    }
}

void ComboBox::AddItem(relvane::Text item) {
    items_.push_back(std::move(item));
    if (changed_) {
        changed_();
    }
}

relvane::Text ComboBox::Text() const {
    const int chosen = ListIndex;
    return chosen < 0 || chosen >= ListCount() ? relvane::Text() : items_[static_cast<std::size_t>(chosen)];
}

void ComboBox::choose(int listIndex) {
    ListIndex = listIndex;
    if (Click) {
        Click();
    }
}

void Timer::fire() {
    if (Interval != 0 && TimerEvent) {
        TimerEvent();
    }
}

void MenuItem::press() {
    if (isUsable() && isShown() && Click) {
        Click();
    }
}

Form::Form(std::string name, Text caption) : Caption(changed_, std::move(caption)), name_(std::move(name)) {}

Control* Form::find(std::string_view widgetName) const {
    const auto same = [](char left, char right) {
        return std::tolower(static_cast<unsigned char>(left)) ==
               std::tolower(static_cast<unsigned char>(right));
    };
    for (Control* control : controls_) {
        if (std::ranges::equal(control->widgetName(), widgetName, same)) {
            return control;
        }
    }
    return nullptr;
}

void Form::Show() {
    if (!loaded_) {
        loaded_ = true;
        if (Load) {
            Load();
        }
    }
    Visible = true;
}

void Form::Hide() {
    Visible = false;
}

void Form::Unload() {
    Hide();
    loaded_ = false;
}

void Form::sendTab() {
    if (onTab) {
        onTab();
        return;
    }
    std::vector<Control*> stops;
    std::ranges::copy_if(controls_, std::back_inserter(stops), [](Control* control) {
        return control->takesFocus() && control->isUsable() && control->isShown();
    });
    if (stops.empty()) {
        return;
    }
    const auto here = std::ranges::find(stops, ActiveControl);
    const bool wrap = here == stops.end() || here + 1 == stops.end();
    (wrap ? stops.front() : *(here + 1))->SetFocus();
}

} // namespace relvane
