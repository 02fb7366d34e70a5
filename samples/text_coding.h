// How a file keeps its texts: Access 97 in a code page, Access 2000 in UTF-16.
#pragma once

#include "platform/codepage.h"
#include "platform/value.h"

namespace relvane::samples {

struct TextCoding {
    // A code page alone is Access 97's way.
    constexpr TextCoding(int codePage, bool wide = false) : codePage(codePage), wide(wide) {}

    int codePage;
    bool wide; // UTF-16; the code page is that of the few texts that stay in one
};

// Bytes of a text; std::invalid_argument when it has a character that the code page lacks.
std::string encodeText(TextView text, TextCoding coding);

} // namespace relvane::samples
