#include "code/line_rules.h"

#include "core/text_functions.h"

namespace relvane {

bool isBlankLine(TextView line) {
    return TrimView(line).empty();
}

bool isCommentLine(TextView line) {
    const TextView text = LTrimView(line);
    return text.starts_with(u'\'') || UCase(Left(text, 4)) == u"REM ";
}

bool isOptionLine(TextView line) {
    return UCase(Left(TrimView(line), 7)) == u"OPTION ";
}

} // namespace relvane
