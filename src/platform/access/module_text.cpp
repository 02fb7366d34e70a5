#include "access/module_text.h"

#include <algorithm>

namespace relvane::access {

bool goesOn(TextView line) {
    const std::size_t last = line.find_last_not_of(u" \t");
    return last != TextView::npos && last > 0 && line[last] == u'_' &&
           (line[last - 1] == u' ' || line[last - 1] == u'\t');
}

// "Attribute" is a reserved word, so that only a line which goes on with a comment can begin with it otherwise.
ModuleText::ModuleText(ModuleKind kind, TextView stored) : kind_(kind) {
    bool continued = false;
    for (std::size_t start = 0; start < stored.size();) {
        const std::size_t end = std::min(stored.find_first_of(u"\r\n", start), stored.size());
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
    if (number == 0 || number > lines_.size()) {
        return {};
    }
    const Line& found = lines_[number - 1];
    return TextView(text_).substr(found.start, found.length);
}

} // namespace relvane::access
