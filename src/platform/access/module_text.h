// The lines of a VBA module as the object model shows them.
#pragma once

#include <vector>

#include "platform/text.h"

namespace relvane::access {

// Module.Type.
enum class ModuleKind { Standard = 0, Class = 1 };

// A blank and "_" at the end, blanks behind them allowed: the next line goes on with the statement, or the comment.
bool goesOn(TextView line);

class ModuleText {
public:
    ModuleText() = default;
    // `stored` is the whole text of the module. Its attribute lines are not shown; all else stays, blanks and empty
    // lines at the end included. A line ends in CR LF, or in one of them alone.
    ModuleText(ModuleKind kind, TextView stored);

    ModuleKind kind() const { return kind_; }
    std::size_t lineCount() const { return lines_.size(); } // a final line end begins no further line
    // Line `number`, from 1, without its end; empty for a line that is not there.
    TextView line(std::size_t number) const;
    // The lines from `first` on, as many as there are of `count`, CR LF between them.
    TextView lines(std::size_t first, std::size_t count) const;
    const Text& text() const { return text_; } // each line closed by CR LF

private:
    struct Line {
        std::size_t start, length;
    };

    ModuleKind kind_ = ModuleKind::Standard;
    Text text_;
    std::vector<Line> lines_;
};

} // namespace relvane::access
