#include "command_line_dialogs.h"

#include <algorithm>
#include <iostream>
#include <span>
#include <utility>

namespace relvane::cli {
namespace {

// How the boxes begin that report an error; all others are questions and notices.
constexpr TextView errorBeginnings[] = {u"場所:", u"Access97以前のバージョンのファイルです。",
                                        u"実行時エラー ", u"エラーNO:", u"シート名が不正です。"};

bool reportsError(const Text& text) {
    return std::ranges::any_of(errorBeginnings,
                               [&](TextView beginning) { return text.starts_with(beginning); });
}

// The buttons of a box, the one first that is taken without a script. That is the default button, but for a box that
// offers to try again: where nobody waits, nothing changes in between.
std::span<const int> buttonsOf(int style) {
    static constexpr int ok[] = {boxOk}, question[] = {boxYes, boxNo}, again[] = {boxCancel, boxRetry};
    switch (style & 7) {
    case yesNo:
        return question;
    case retryCancel:
        return again;
    default:
        return ok;
    }
}

Text withLineFeeds(const Text& text) {
    Text lines;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != u'\r') {
            lines += text[i];
        } else if (i + 1 == text.size() || text[i + 1] != u'\n') {
            lines += u'\n';
        }
    }
    return lines;
}

} // namespace

int CommandLineDialogs::MsgBox(const Text& text, int style, const Text& title) {
    const bool error = reportsError(text);
    errorReported_ = errorReported_ || error;
    const bool news = saidBefore_ == nullptr || saidBefore_->insert(text).second;
    if (error || (news && !quiet_)) {
        if (beforeWriting) {
            beforeWriting();
        }
        std::cerr << "[" << toUtf8(title) << "] " << toUtf8(withLineFeeds(text)) << std::endl;
    }
    const std::span<const int> buttons = buttonsOf(style);
    if (!boxAnswers.empty() && std::ranges::find(buttons, boxAnswers.front()) != buttons.end()) {
        const int scripted = boxAnswers.front();
        boxAnswers.pop_front();
        return scripted;
    }
    return buttons.front();
}

Text CommandLineDialogs::openFile(const Text&, const Text&, const Text&) {
    return nextFile();
}

Text CommandLineDialogs::saveFile(const Text&, const Text&, const Text&) {
    return nextFile();
}

// A password that was wrong is not given again.
std::optional<Text> CommandLineDialogs::askPassword(const Text&) {
    return std::exchange(passwordGiven_, true) ? std::nullopt : password;
}

Text CommandLineDialogs::nextFile() {
    passwordGiven_ = false;
    if (files.empty()) {
        return {};
    }
    Text file = std::move(files.front());
    files.pop_front();
    return file;
}

} // namespace relvane::cli
