#include "sample_builder/description_value.h"

#include <charconv>
#include <cmath>

namespace relvane::samples {

namespace {

struct TypeName {
    const char16_t* name;
    ColumnType type;
};

constexpr TypeName typeNames[] = {
    {u"boolean", ColumnType::Boolean}, {u"byte", ColumnType::Byte},         {u"integer", ColumnType::Integer},
    {u"long", ColumnType::Long},       {u"currency", ColumnType::Currency}, {u"single", ColumnType::Single},
    {u"double", ColumnType::Double},   {u"date", ColumnType::Date},         {u"binary", ColumnType::Binary},
    {u"text", ColumnType::Text},       {u"ole", ColumnType::Ole},           {u"memo", ColumnType::Memo},
    {u"guid", ColumnType::Guid},
};

template <class Number>
std::optional<Number> parse(TextView text, int base = 10) {
    const std::string digits = toUtf8(text);
    Number number{};
    std::from_chars_result result{};
    if constexpr (std::is_floating_point_v<Number>) {
        result = std::from_chars(digits.data(), digits.data() + digits.size(), number);
    } else {
        result = std::from_chars(digits.data(), digits.data() + digits.size(), number, base);
    }
    const bool whole = result.ec == std::errc{} && result.ptr == digits.data() + digits.size();
    return whole ? std::optional(number) : std::nullopt;
}

// Hexadecimal digits, two for a byte; "A0FF*100" repeats the bytes a hundred times.
std::optional<Bytes> parseBytes(TextView text) {
    std::size_t times = 1;
    if (const auto star = text.find(u'*'); star != TextView::npos) {
        times = parse<std::size_t>(text.substr(star + 1)).value_or(0);
        text = text.substr(0, star);
    }
    Bytes once, bytes;
    for (std::size_t i = 0; i + 1 < text.size(); i += 2) {
        const auto byte = parse<std::uint8_t>(text.substr(i, 2), 16);
        if (!byte) {
            return std::nullopt;
        }
        once.push_back(*byte);
    }
    for (std::size_t time = 0; time < times; ++time) {
        bytes.insert(bytes.end(), once.begin(), once.end());
    }
    return text.size() % 2 == 0 ? std::optional(bytes) : std::nullopt;
}

// "{00112233-4455-6677-8899-AABBCCDDEEFF}"
std::optional<Guid> parseGuid(TextView text) {
    Text digits;
    for (const char16_t c : text) {
        if (c != u'{' && c != u'}' && c != u'-') {
            digits += c;
        }
    }
    const auto bytes = parseBytes(digits);
    if (!bytes || bytes->size() != 16) {
        return std::nullopt;
    }
    constexpr std::array<std::size_t, 16> stored = {3, 2, 1, 0, 5, 4, 7, 6, 8, 9, 10, 11, 12, 13, 14, 15};
    Guid guid;
    for (std::size_t i = 0; i < stored.size(); ++i) {
        guid.bytes[i] = (*bytes)[stored[i]];
    }
    return guid;
}

std::optional<DateTime> parseDate(TextView text) {
    if (const auto separator = text.find(u'T'); separator != TextView::npos) {
        return DateTime::fromText(Text(text.substr(0, separator)) + u" " + Text(text.substr(separator + 1)));
    }
    return DateTime::fromText(Text(text) + u" 00:00:00");
}

std::optional<Currency> parseCurrency(TextView text) {
    const auto amount = parse<double>(text);
    return amount ? std::optional(Currency{std::llround(*amount * 10'000)}) : std::nullopt;
}

std::optional<bool> parseBoolean(TextView text) {
    return text == u"yes" ? std::optional(true) : text == u"no" ? std::optional(false) : std::nullopt;
}

} // namespace

ColumnType takeType(DescriptionLine& line) {
    const Text name = line.takeText("a type");
    for (const TypeName& known : typeNames) {
        if (name == known.name) {
            return known.type;
        }
    }
    line.fail("no type: " + toUtf8(name));
}

Value takeValue(DescriptionLine& line, ColumnType type) {
    if (line.takeIf(u"-")) {
        return Null{};
    }
    const Text text = line.takeText("a value");
    const auto must = [&](const auto& value) -> Value {
        if (!value) {
            line.fail("no value of this column's type: " + toUtf8(text));
        }
        return *value;
    };
    switch (type) {
    case ColumnType::Boolean:
        return must(parseBoolean(text));
    case ColumnType::Currency:
        return must(parseCurrency(text));
    case ColumnType::Single:
        return must(parse<float>(text));
    case ColumnType::Double:
        return must(parse<double>(text));
    case ColumnType::Date:
        return must(parseDate(text));
    case ColumnType::Binary:
    case ColumnType::Ole:
        return must(parseBytes(text));
    case ColumnType::Guid:
        return must(parseGuid(text));
    case ColumnType::Text:
    case ColumnType::Memo:
        return text;
    default:
        return must(parse<std::int64_t>(text));
    }
}

PropertySpec takeProperty(DescriptionLine& line) {
    PropertySpec property;
    property.name = line.takeText("a name");
    const ColumnType type = takeType(line);
    property.type = static_cast<int>(type);
    property.value = takeValue(line, type);
    return property;
}

int takeNumber(DescriptionLine& line, const char* what) {
    const Text text = line.takeText(what);
    const auto number = text.starts_with(u"0x") ? parse<int>(TextView(text).substr(2), 16) : parse<int>(text);
    if (!number) {
        line.fail(std::string("no number for ") + what + ": " + toUtf8(text));
    }
    return *number;
}

DateTime takeDate(DescriptionLine& line) {
    const Text text = line.takeText("a date");
    const auto date = parseDate(text);
    if (!date) {
        line.fail("no date: " + toUtf8(text));
    }
    return *date;
}

} // namespace relvane::samples
