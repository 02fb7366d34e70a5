// The dialogs of a program without windows: a box goes to standard error with its title, and a scripted or the
// default button is taken; a file dialog takes the next scripted path.
#pragma once

#include <deque>
#include <functional>
#include <set>
#include <string>

#include "platform/dialogs.h"

namespace relvane::cli {

class CommandLineDialogs final : public Dialogs {
public:
    // `quiet`: only boxes that report an error are written. With `saidBefore`, shared by the desks of one command, a
    // box that tells no error is written once only.
    explicit CommandLineDialogs(bool quiet, std::set<Text>* saidBefore = nullptr)
        : quiet_(quiet), saidBefore_(saidBefore) {}

    int MsgBox(const Text& text, int style, const Text& title) override;
    Text openFile(const Text& filter, const Text& initialFolder, const Text& title) override;
    Text saveFile(const Text& filter, const Text& initialFolder, const Text& title) override;
    std::optional<Text> askPassword(const Text& file) override;

    std::deque<Text> files;       // answers of the coming file dialogs; without one a dialog is cancelled
    std::optional<Text> password; // the answer to the first question for one behind a file dialog
    std::deque<int> boxAnswers;   // BoxResult values of the coming boxes; without one the default button
    std::function<void()> beforeWriting; // takes a gauge off the line before a box is written
    bool errorReported() const { return errorReported_; }

private:
    Text nextFile();
    bool quiet_;
    std::set<Text>* saidBefore_;
    bool errorReported_ = false;
    bool passwordGiven_ = false;
};

} // namespace relvane::cli
