// One line of a description, taken apart into words. See description.h for the format.
#pragma once

#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "platform/text.h"

namespace relvane::samples {

// What is wrong with a description: "line 12: ...".
class DescriptionError : public std::invalid_argument {
public:
    DescriptionError(int line, const std::string& what)
        : std::invalid_argument("line " + std::to_string(line) + ": " + what) {}
};

struct Word {
    Text text{};
    bool quoted = false; // stood in double quotes, so it is a text whatever it looks like
};

// The words of a line, taken one after the other.
class DescriptionLine {
public:
    // Cuts the line into words; none for a blank line and a comment.
    DescriptionLine(std::string_view utf8, int number);

    int number() const { return number_; }
    bool atEnd() const { return next_ == words_.size(); }
    // The next word; DescriptionError when there is none. `what` names it in the message.
    const Word& take(const char* what);
    Text takeText(const char* what) { return take(what).text; }
    // Takes the next word if it is this one, unquoted.
    bool takeIf(TextView keyword);
    // DescriptionError when words are left.
    void finish() const;
    [[noreturn]] void fail(const std::string& what) const { throw DescriptionError(number_, what); }

private:
    std::vector<Word> words_;
    std::size_t next_ = 0;
    int number_;
};

} // namespace relvane::samples
