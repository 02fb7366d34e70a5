#include "platform/files.h"

namespace relvane {
namespace {

// Goes back to the last "*" only: an earlier one could take no more than that one can.
bool fits(TextView name, TextView pattern) {
    std::size_t n = 0, p = 0;
    std::size_t star = TextView::npos,
                taken = 0; // the last "*", and where the name goes on behind what it takes
    while (n < name.size()) {
        if (p < pattern.size() && pattern[p] == u'*') {
            star = p++;
            taken = n;
        } else if (p < pattern.size() &&
                   (pattern[p] == u'?' || upperCase(pattern[p]) == upperCase(name[n]))) {
            ++p;
            ++n;
        } else if (star != TextView::npos) {
            p = star + 1;
            n = ++taken;
        } else {
            return false;
        }
    }
    return pattern.find_first_not_of(u'*', p) == TextView::npos;
}

} // namespace

std::size_t lastSeparator(TextView path) {
    return path.find_last_of(u"\\/");
}

bool matchesPattern(TextView name, TextView pattern) {
    if (fits(name, pattern)) {
        return true;
    }
    const bool dotIsMeant = pattern.find(u'.') != TextView::npos && name.find(u'.') == TextView::npos;
    return dotIsMeant && fits(Text(name) + u'.', pattern);
}

} // namespace relvane
