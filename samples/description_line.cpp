#include "sample_builder/description_line.h"

#include <utility>

namespace relvane::samples {

namespace {

constexpr char16_t quote = u'"', lineEnd = u'↵';

bool isBlank(char16_t c) {
    return c == u' ' || c == u'\t';
}

// What a character of a quoted text stands for.
Text meantBy(char16_t c) {
    constexpr char16_t pictureOfNul = u'␀', pictureOfLastControl = u'␟';
    if (c == lineEnd) {
        return u"\r\n";
    }
    return Text(1,
                c >= pictureOfNul && c <= pictureOfLastControl ? static_cast<char16_t>(c - pictureOfNul) : c);
}

} // namespace

DescriptionLine::DescriptionLine(std::string_view utf8, int number) : number_(number) {
    const Text line = fromUtf8(utf8);
    std::size_t i = 0;
    const auto skipBlanks = [&] {
        while (i < line.size() && isBlank(line[i])) {
            ++i;
        }
    };
    for (skipBlanks(); i < line.size() && line[i] != u'#'; skipBlanks()) {
        Word word;
        if (line[i] != quote) {
            while (i < line.size() && !isBlank(line[i])) {
                word.text += line[i++];
            }
            words_.push_back(word);
            continue;
        }
        word.quoted = true;
        for (++i;; ++i) {
            if (i == line.size()) {
                fail("a quoted text has no end");
            }
            if (line[i] == quote && (i + 1 == line.size() || line[i + 1] != quote)) {
                break;
            }
            if (line[i] == quote) {
                ++i;
            }
            word.text += meantBy(line[i]);
        }
        ++i;
        if (i < line.size() && line[i] == u'*') {
            std::size_t times = 0;
            for (++i; i < line.size() && line[i] >= u'0' && line[i] <= u'9'; ++i) {
                times = times * 10 + static_cast<std::size_t>(line[i] - u'0');
            }
            const Text once = std::exchange(word.text, {});
            for (std::size_t time = 0; time < times; ++time) {
                word.text += once;
            }
        }
        if (i < line.size() && !isBlank(line[i])) {
            fail("a blank is missing behind a quoted text");
        }
        words_.push_back(word);
    }
}

const Word& DescriptionLine::take(const char* what) {
    if (atEnd()) {
        fail(std::string("missing: ") + what);
    }
    return words_[next_++];
}

bool DescriptionLine::takeIf(TextView keyword) {
    if (atEnd() || words_[next_].quoted || words_[next_].text != keyword) {
        return false;
    }
    ++next_;
    return true;
}

void DescriptionLine::finish() const {
    if (!atEnd()) {
        fail("not understood: " + toUtf8(words_[next_].text));
    }
}

} // namespace relvane::samples
