#include "press_steps.h"

#include <algorithm>
#include <charconv>

#include "arguments.h"

namespace relvane::cli {
namespace {

bool sameName(std::string_view left, std::string_view right) {
    return equalsIgnoringCase(fromUtf8(left), fromUtf8(right));
}

Form& windowOf(Desk& desk, const Step& step) {
    if (step.window.empty()) {
        return desk.frmRelvane;
    }
    for (Form* form : desk.forms()) {
        if (sameName(form->name(), step.window)) {
            return *form;
        }
    }
    throw UsageError("there is no window " + step.window);
}

std::string nameOf(const Step& step) {
    return step.window.empty() ? step.control : step.window + "." + step.control;
}

int numberOf(const Step& step) {
    int number = 0;
    const char* end = step.value.data() + step.value.size();
    if (const auto read = std::from_chars(step.value.data(), end, number);
        read.ec != std::errc() || read.ptr != end) {
        throw UsageError(nameOf(step) + " takes a number, not \"" + step.value + "\"");
    }
    return number;
}

void requireUsable(const Control& control, const Step& step) {
    if (!control.form().Visible || !control.isShown() || !control.isUsable()) {
        throw CannotPress(nameOf(step) + " cannot be used now");
    }
}

// What a step does to the control it names. Throws before anything has happened.
std::function<void()> actionOf(Control& control, const Step& step) {
    requireUsable(control, step);
    if (!step.hasValue) {
        if (auto* button = dynamic_cast<CommandButton*>(&control)) {
            return [button] { button->press(); };
        }
        if (auto* entry = dynamic_cast<MenuItem*>(&control)) {
            return [entry] { entry->press(); };
        }
        if (auto* option = dynamic_cast<OptionButton*>(&control)) {
            return [option] { option->group().choose(option->index()); };
        }
        if (auto* label = dynamic_cast<Label*>(&control); label != nullptr && label->Click) {
            return [label] { label->press(); };
        }
        throw UsageError(nameOf(step) + " needs a value: " + nameOf(step) + "=...");
    }
    if (auto* box = dynamic_cast<CheckBox*>(&control)) {
        const int value = numberOf(step);
        if (value != 0 && value != 1) {
            throw UsageError(nameOf(step) + " takes 1 or 0");
        }
        return [box, value] { box->tick(value == 1); };
    }
    if (auto* text = dynamic_cast<TextBox*>(&control)) {
        return [text, value = fromUtf8(step.value)] { text->typeText(value); };
    }
    if (auto* list = dynamic_cast<ComboBox*>(&control)) {
        const auto found = std::ranges::find(list->List(), fromUtf8(step.value));
        if (found == list->List().end()) {
            throw UsageError(nameOf(step) + " has no entry \"" + step.value + "\"");
        }
        return [list, index = static_cast<int>(found - list->List().begin())] { list->choose(index); };
    }
    throw UsageError(nameOf(step) + " takes no value");
}

} // namespace

Step parseStep(const std::string& word) {
    Step step;
    const std::size_t equals = word.find('=');
    step.hasValue = equals != std::string::npos;
    step.value = step.hasValue ? word.substr(equals + 1) : std::string();
    step.control = word.substr(0, equals);
    if (const std::size_t dot = step.control.find('.'); dot != std::string::npos) {
        step.window = step.control.substr(0, dot);
        step.control.erase(0, dot + 1);
    }
    if (step.control.ends_with(')')) {
        step.control.pop_back();
        if (const std::size_t opened = step.control.find('('); opened != std::string::npos) {
            step.control[opened] = '_';
        }
    }
    if (step.control.empty()) {
        throw UsageError("\"" + word + "\" names no control");
    }
    return step;
}

bool carryOut(Desk& desk, const Step& step) {
    Form& window = windowOf(desk, step);
    Control* control = window.find(step.control);
    // "optObject=7": the group as a whole, by its options' values.
    if (control == nullptr && step.hasValue) {
        if (auto* first = dynamic_cast<OptionButton*>(window.find(step.control + "_0"))) {
            const int value = numberOf(step);
            if (value < 1 || value > first->group().count()) {
                throw UsageError(nameOf(step) + " takes 1 to " + std::to_string(first->group().count()));
            }
            OptionButton& wanted = first->group()(value - 1);
            requireUsable(wanted, step);
            return desk.dispatch([&wanted] { wanted.group().choose(wanted.index()); });
        }
    }
    if (control == nullptr) {
        throw UsageError("there is no control " + nameOf(step));
    }
    return desk.dispatch(actionOf(*control, step));
}

bool letTimePass(Desk& desk) {
    for (Form* form : desk.forms()) {
        for (Control* control : form->controls()) {
            if (auto* timer = dynamic_cast<Timer*>(control); timer != nullptr && timer->Interval.get() > 0) {
                desk.dispatch([timer] { timer->fire(); });
            }
        }
    }
    return !desk.ended();
}

int parseAnswer(const std::string& word) {
    struct Answer {
        std::string_view word;
        int result;
    };
    static constexpr Answer answers[] = {
        {"ok", boxOk},         {"yes", boxYes},      {"no", boxNo},
        {"はい", boxYes},      {"いいえ", boxNo},    {"retry", boxRetry},
        {"cancel", boxCancel}, {"再試行", boxRetry}, {"キャンセル", boxCancel}};
    for (const Answer& answer : answers) {
        if (sameName(answer.word, word)) {
            return answer.result;
        }
    }
    throw UsageError("no box has a button \"" + word + "\": ok, yes, no, retry, cancel");
}

} // namespace relvane::cli
