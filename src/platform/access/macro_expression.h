// An expression of a macro in the words of Visual Basic: names without the brackets that they do not need, members of
// the running form or report with a leading dot, the spacing of the Visual Basic editor. What Visual Basic has no word
// for (Is Null, Not Like, Between, In) is left to Eval as it was typed.
#pragma once

#include "platform/text.h"

namespace relvane::access {

struct VbaExpression {
    Text text;
    bool usesContext = false; // has a leading dot, so that it must stand in "With CodeContextObject"
};

// `typed` may begin with a "=", which is not part of the expression. Does not fail: what is no expression comes out
// part by part as it was typed. Takes time in proportion to the text.
VbaExpression toVbaExpression(TextView typed);

// In quotes, those within doubled.
Text quoted(TextView text);

} // namespace relvane::access
