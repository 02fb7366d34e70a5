#include "command_line_dialogs.h"

#include <algorithm>
#include <iostream>

namespace relvane::cli {
namespace {

// How the boxes begin that report an error; all others are questions and notices.
constexpr TextView errorBeginnings[] = {u"場所:", u"Access97以前のバージョンのファイルです。",
                                        u"実行時エラー "};

bool reportsError(const Text& text) {
    return std::ranges::any_of(errorBeginnings,
                               [&](TextView beginning) { return text.starts_with(beginning); });
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
    const bool asks = (style & yesNo) != 0;
    int answer = asks ? boxYes : boxOk; // the default button
    if (!boxAnswers.empty()) {
        const int scripted = boxAnswers.front();
        if (asks ? scripted == boxYes || scripted == boxNo : scripted == boxOk) {
            answer = scripted;
            boxAnswers.pop_front();
        }
    }
    return answer;
}

Text CommandLineDialogs::openFile(const Text&, const Text&, const Text&) {
    return nextFile();
}

Text CommandLineDialogs::saveFile(const Text&, const Text&, const Text&) {
    return nextFile();
}

Text CommandLineDialogs::nextFile() {
    if (files.empty()) {
        return {};
    }
    Text file = std::move(files.front());
    files.pop_front();
    return file;
}

} // namespace relvane::cli
