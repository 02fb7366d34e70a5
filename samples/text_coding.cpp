#include "sample_builder/text_coding.h"

#include <stdexcept>

namespace relvane::samples {

std::string encodeText(TextView text, TextCoding coding) {
    if (coding.wide) {
        std::string bytes;
        for (const char16_t unit : text) {
            bytes += static_cast<char>(unit & 0xFF);
            bytes += static_cast<char>(unit >> 8);
        }
        return bytes;
    }
    if (!canEncode(text, coding.codePage)) {
        throw std::invalid_argument("code page " + std::to_string(coding.codePage) +
                                    " lacks a character of \"" + toUtf8(text) + "\"");
    }
    return encode(text, coding.codePage);
}

} // namespace relvane::samples
