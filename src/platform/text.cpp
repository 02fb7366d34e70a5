#include "platform/text.h"

#include <algorithm>
#include <charconv>

namespace relvane {
namespace {

constexpr char32_t replacement = 0xFFFD;

void appendUtf8(std::string& bytes, char32_t c) {
    const auto put = [&bytes](char32_t byte) { bytes.push_back(static_cast<char>(byte)); };
    if (c < 0x80) {
        put(c);
    } else if (c < 0x800) {
        put(0xC0 | (c >> 6));
        put(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        put(0xE0 | (c >> 12));
        put(0x80 | ((c >> 6) & 0x3F));
        put(0x80 | (c & 0x3F));
    } else {
        put(0xF0 | (c >> 18));
        put(0x80 | ((c >> 12) & 0x3F));
        put(0x80 | ((c >> 6) & 0x3F));
        put(0x80 | (c & 0x3F));
    }
}

void appendUtf16(Text& text, char32_t c) {
    if (c < 0x10000) {
        text.push_back(static_cast<char16_t>(c));
    } else {
        text.push_back(static_cast<char16_t>(0xD800 + ((c - 0x10000) >> 10)));
        text.push_back(static_cast<char16_t>(0xDC00 + ((c - 0x10000) & 0x3FF)));
    }
}

// The character that begins at `at`, which is moved behind it; a malformed byte is passed over alone.
char32_t nextOfUtf8(std::string_view bytes, std::size_t& at) {
    const auto byteAt = [&](std::size_t i) { return static_cast<unsigned char>(bytes[i]); };
    const unsigned char lead = byteAt(at++);
    if (lead < 0x80) {
        return lead;
    }
    const std::size_t more = lead >= 0xF0 && lead < 0xF5   ? 3
                             : lead >= 0xE0 && lead < 0xF0 ? 2
                             : lead >= 0xC2 && lead < 0xE0 ? 1
                                                           : 0;
    if (more == 0 || at + more > bytes.size()) {
        return replacement;
    }
    char32_t c = lead & (0x3Fu >> more);
    for (std::size_t i = 0; i < more; ++i) {
        if ((byteAt(at + i) & 0xC0) != 0x80) {
            return replacement;
        }
        c = (c << 6) | (byteAt(at + i) & 0x3Fu);
    }
    constexpr char32_t smallest[] = {0, 0x80, 0x800, 0x10000};
    if (c < smallest[more] || c > 0x10FFFF || (c >= 0xD800 && c < 0xE000)) {
        return replacement;
    }
    at += more;
    return c;
}

} // namespace

std::string toUtf8(TextView text) {
    std::string bytes;
    bytes.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t c = text[i];
        if (c >= 0xD800 && c < 0xDC00 && i + 1 < text.size() && text[i + 1] >= 0xDC00 &&
            text[i + 1] < 0xE000) {
            c = 0x10000 + ((c - 0xD800) << 10) + (text[++i] - 0xDC00u);
        } else if (c >= 0xD800 && c < 0xE000) {
            c = replacement;
        }
        appendUtf8(bytes, c);
    }
    return bytes;
}

Text fromUtf8(std::string_view bytes) {
    Text text;
    text.reserve(bytes.size());
    for (std::size_t at = 0; at < bytes.size();) {
        appendUtf16(text, nextOfUtf8(bytes, at));
    }
    return text;
}

namespace {

char16_t capitalOfOther(char16_t c) {
    // Blocks in which a small letter stands a fixed distance behind its capital.
    struct Block {
        char16_t first, last, distance;
    };
    static constexpr Block blocks[] = {
        {0x00E0, 0x00F6, 0x20}, {0x00F8, 0x00FE, 0x20}, // Latin-1
        {0x03B1, 0x03C1, 0x20}, {0x03C3, 0x03CB, 0x20}, // Greek
        {0x0430, 0x044F, 0x20}, {0x0450, 0x045F, 0x50}, // Cyrillic
        {0xFF41, 0xFF5A, 0x20},                         // full-width Latin
        {0x2170, 0x217F, 0x10}, {0x24D0, 0x24E9, 0x1A}, // Roman numerals, circled letters
    };
    for (const Block& block : blocks) {
        if (c >= block.first && c <= block.last) {
            return static_cast<char16_t>(c - block.distance);
        }
    }
    // Latin Extended-A: pairs, the capital on the even code up to 0137 and from 014A, on the odd one between.
    const bool evenPairs = (c >= 0x0100 && c <= 0x0137 && c != 0x0131) || (c >= 0x014A && c <= 0x0177);
    const bool oddPairs = (c >= 0x0139 && c <= 0x0148) || (c >= 0x0179 && c <= 0x017E);
    if ((evenPairs && c % 2 == 1) || (oddPairs && c % 2 == 0)) {
        return static_cast<char16_t>(c - 1);
    }
    switch (c) {
    case 0x00FF:
        return 0x0178;
    case 0x03AC:
        return 0x0386;
    case 0x03AD:
    case 0x03AE:
    case 0x03AF:
        return static_cast<char16_t>(c - 0x25);
    case 0x03C2:
        return 0x03A3;
    case 0x03CC:
        return 0x038C;
    case 0x03CD:
    case 0x03CE:
        return static_cast<char16_t>(c - 0x3F);
    default:
        return c;
    }
}

// Nearly all that is ever asked is ASCII or Japanese.
inline char16_t capitalOf(char16_t c) {
    if (c < 0x80) {
        return c >= u'a' && c <= u'z' ? static_cast<char16_t>(c - 0x20) : c;
    }
    return c >= 0x2500 && c < 0xFF41 ? c : capitalOfOther(c);
}

} // namespace

char16_t upperCase(char16_t character) {
    return capitalOf(character);
}

Text upperCase(TextView text) {
    Text result(text);
    std::ranges::transform(result, result.begin(), capitalOf);
    return result;
}

bool equalsIgnoringCase(TextView left, TextView right) {
    return std::ranges::equal(left, right,
                              [](char16_t a, char16_t b) { return a == b || capitalOf(a) == capitalOf(b); });
}

Text toText(long long number) {
    char digits[24];
    const auto end = std::to_chars(std::begin(digits), std::end(digits), number).ptr;
    return Text(digits, end);
}

} // namespace relvane
