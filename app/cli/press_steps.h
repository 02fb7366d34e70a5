// Steps that press a desk by hand: "optObject=7", "cmdObject", "frmSetUp.cmdOK".
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "desk/desk.h"
#include "platform/dialogs.h"

namespace relvane::cli {

// A control that a person could not use now: disabled, hidden, or in a window that is not open. Exit 1.
class CannotPress : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

struct Step {
    std::string window;  // "frmSetUp"; empty for the main window
    std::string control; // name, with its index for one of an array: "cmdHyousi_2" or "cmdHyousi(2)"
    std::string value;   // UTF-8
    bool hasValue = false;
};

Step parseStep(const std::string& word);

// Carries a step out through the desk's dispatcher, as a person would: an option group takes the option's value
// (index plus 1), a check box 1 or 0, a list or text box its text; a step without a value presses a button or a menu
// entry or chooses one option button. Names are looked up without regard to case. Throws UsageError for a name or
// value that does not exist, CannotPress for a control that cannot be used now. False when the program has ended.
bool carryOut(Desk& desk, const Step& step);

// Lets the waits pass that a step has begun: the person at the desk waits for what comes. False as above.
bool letTimePass(Desk& desk);

// "OK", "yes", "no", "retry", "cancel", "はい", "いいえ" ... as a BoxResult; UsageError for another word.
int parseAnswer(const std::string& word);

} // namespace relvane::cli
