#include "sample_builder/index_key.h"

#include <bit>

#include "sample_builder/column_value.h"

namespace relvane::samples {

namespace {

constexpr char16_t fullBlank = 0x3000, voicedMark = 0xFF9E, semiVoicedMark = 0xFF9F;

// The full-width forms of U+FF61 to U+FF9F.
constexpr char16_t fullWidthKana[] = u"。「」、・ヲァィゥェォャュョッーアイウエオカキクケコサシスセソタチツテ"
                                     u"トナニヌネノハヒフヘホマミムメモヤユヨラリルレロワン゛゜";

// The letters of U+00C0 to U+00DF, and of U+00E0 to U+00FF, without their accents.
constexpr char16_t plainLatin[] = u"AAAAAAACEEEEIIIIDNOOOOO*OUUUUYTS";

bool takesVoicedMark(char16_t kana) {
    return (kana >= u'カ' && kana <= u'ト') || (kana >= u'ハ' && kana <= u'ホ') || kana == u'ウ';
}

Text fold(TextView text) {
    Text folded;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char16_t c = text[i];
        if (c >= 0xFF61 && c <= 0xFF9F) {
            c = fullWidthKana[c - 0xFF61];
            const char16_t mark = i + 1 < text.size() ? text[i + 1] : u'\0';
            if (mark == voicedMark && takesVoicedMark(c)) {
                c = c == u'ウ' ? u'ヴ' : static_cast<char16_t>(c + 1);
                ++i;
            } else if (mark == semiVoicedMark && c >= u'ハ' && c <= u'ホ') {
                c = static_cast<char16_t>(c + 2);
                ++i;
            }
        } else if (c >= 0xFF01 && c <= 0xFF5E) {
            c = static_cast<char16_t>(c - 0xFEE0);
        } else if (c == fullBlank) {
            c = u' ';
        } else if (c >= 0x3041 && c <= 0x3096) {
            c = static_cast<char16_t>(c + 0x60); // hiragana to katakana
        } else if (c >= 0x00C0 && c <= 0x00FF) {
            c = plainLatin[c & 0x1F];
        }
        folded += upperCase(c);
    }
    return folded;
}

// Punctuation goes below the digits, and everything keeps clear of 0, which ends the text.
std::uint8_t rank(unsigned char byte) {
    if (byte >= 0x80 || (byte >= '0' && byte <= '9') || (byte >= 'A' && byte <= 'Z')) {
        return byte;
    }
    constexpr std::string_view punctuation = " !\"#$%&'()*+,-./:;<=>?@[\\]^_`{|}~";
    const auto place = punctuation.find(static_cast<char>(byte));
    return static_cast<std::uint8_t>(place == std::string_view::npos ? 1 : 2 + place);
}

// A character in the code page or, behind a byte that begins none there, in UTF-16.
std::string bytesOf(char16_t character, int codePage) {
    const TextView text(&character, 1);
    if (canEncode(text, codePage)) {
        return encode(text, codePage);
    }
    return {'\xFF', static_cast<char>(character >> 8), static_cast<char>(character & 0xFF)};
}

void bigEndian(ByteWriter& key, std::uint64_t number, int count) {
    for (int i = count - 1; i >= 0; --i) {
        key.u8(number >> (8 * i) & 0xFF);
    }
}

void signedNumber(ByteWriter& key, std::int64_t number, int count) {
    bigEndian(key, static_cast<std::uint64_t>(number) ^ std::uint64_t{0x80} << (8 * (count - 1)), count);
}

// Positive numbers get their sign bit set, of negative ones all bits are turned.
template <class Bits>
void ieee(ByteWriter& key, Bits bits) {
    constexpr Bits sign = static_cast<Bits>(Bits{1} << (8 * sizeof(Bits) - 1));
    bigEndian(key, static_cast<Bits>((bits & sign) != 0 ? ~bits : bits | sign), sizeof(Bits));
}

// Stretches of eight bytes, zeros filled up, each followed by 9 or, the last, by the number of its bytes.
void stretches(ByteWriter& key, std::span<const std::uint8_t> bytes) {
    std::size_t start = 0;
    do {
        const std::size_t length = std::min<std::size_t>(8, bytes.size() - start);
        key.bytes(bytes.subspan(start, length));
        key.zeros(8 - length);
        start += length;
        key.u8(start < bytes.size() ? 9 : length);
    } while (start < bytes.size());
}

void appendValue(ByteWriter& key, const Value& value, const ColumnSpec& column, int codePage) {
    switch (column.type) {
    case ColumnType::Boolean:
        key.u8(std::get<bool>(value) ? 0x00 : 0xFF);
        break;
    case ColumnType::Byte:
        key.u8(static_cast<std::uint64_t>(std::get<std::int64_t>(value)));
        break;
    case ColumnType::Integer:
        signedNumber(key, std::get<std::int64_t>(value), 2);
        break;
    case ColumnType::Long:
        signedNumber(key, std::get<std::int64_t>(value), 4);
        break;
    case ColumnType::Currency:
        signedNumber(key, currencyOf(value).tenThousandths, 8);
        break;
    case ColumnType::Single:
        ieee(key, std::bit_cast<std::uint32_t>(static_cast<float>(numberOf(value))));
        break;
    case ColumnType::Double:
    case ColumnType::Date:
        ieee(key, std::bit_cast<std::uint64_t>(numberOf(value)));
        break;
    case ColumnType::Guid: {
        // The groups as they are read: the first three are stored little-endian.
        constexpr std::array<std::size_t, 16> order = {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};
        Bytes bytes;
        for (const std::size_t place : order) {
            bytes.push_back(std::get<Guid>(value).bytes[place]);
        }
        stretches(key, bytes);
        break;
    }
    case ColumnType::Binary:
        stretches(key, std::get<Bytes>(value));
        break;
    default: {
        const auto* text = std::get_if<Text>(&value);
        key.bytes(textKey(text ? *text : decode(std::get<Bytes>(value), codePage), codePage));
    }
    }
}

} // namespace

Bytes textKey(TextView text, int codePage) {
    ByteWriter key;
    for (const char16_t character : fold(text)) {
        const std::string bytes = bytesOf(character, codePage);
        if (bytes.size() == 1) {
            key.u8(rank(static_cast<unsigned char>(bytes[0])));
        } else {
            key.text(bytes);
        }
    }
    key.u8(0);
    for (const char16_t character : text) {
        key.text(bytesOf(character, codePage));
    }
    key.u8(0);
    return key.data();
}

void appendKey(ByteWriter& key, const Value& value, const ColumnSpec& column, bool descending, int codePage) {
    const std::size_t start = key.size();
    if (std::holds_alternative<Null>(value) && column.type != ColumnType::Boolean) {
        key.u8(0x00);
    } else {
        key.u8(0x7F);
        appendValue(key, std::holds_alternative<Null>(value) ? Value(false) : value, column, codePage);
    }
    if (descending) {
        for (std::size_t i = start; i < key.size(); ++i) {
            key.data()[i] = static_cast<std::uint8_t>(~key.data()[i]);
        }
    }
}

} // namespace relvane::samples
