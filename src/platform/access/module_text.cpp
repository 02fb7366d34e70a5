#include "access/module_text.h"

namespace relvane::access {
namespace {

std::size_t endOfLine(TextView text, std::size_t at) {
    while (at < text.size() && text[at] != u'\r' && text[at] != u'\n') {
        ++at;
    }
    return at;
}

} // namespace

bool goesOn(TextView line) {
    const std::size_t last = line.find_last_not_of(u" \t");
    return last != TextView::npos && last > 0 && line[last] == u'_' &&
           (line[last - 1] == u' ' || line[last - 1] == u'\t');
}

// "Attribute" is a reserved word, so that only a line which goes on with a comment can begin with it otherwise.
ModuleText::ModuleText(ModuleKind kind, TextView stored) : kind_(kind) {
    bool continued = false;
    text_.reserve(stored.size() + 2); // the last line may lack its end
    for (std::size_t start = 0; start < stored.size();) {
        const std::size_t end = endOfLine(stored, start);
        const TextView line = stored.substr(start, end - start);
        if (continued || !line.starts_with(u"Attribute ")) {
            lines_.push_back({text_.size(), line.size()});
            text_ += line;
            text_ += u"\r\n";
            continued = goesOn(line);
        }
        start = end + (stored.substr(end).starts_with(u"\r\n") ? 2 : 1);
    }
}

TextView ModuleText::line(std::size_t number) const {
    return lines(number, 1);
}

TextView ModuleText::lines(std::size_t first, std::size_t count) const {
    if (first == 0 || first > lines_.size() || count == 0) {
        return {};
    }
    const Line& begin = lines_[first - 1];
    const Line& end = lines_[std::min(count, lines_.size() - first + 1) + first - 2];
    return TextView(text_).substr(begin.start, end.start + end.length - begin.start);
}

} // namespace relvane::access
