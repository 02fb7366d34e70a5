#include "platform/value.h"

#include <charconv>
#include <cmath>
#include <limits>

#include "platform/runtime_error.h"

namespace relvane {
namespace {

template <class... Handlers>
struct Visitor : Handlers... {
    using Handlers::operator()...;
};
template <class... Handlers>
Visitor(Handlers...) -> Visitor<Handlers...>;

// Shortest decimal form that reads back as the same number; plain digits, never an exponent.
template <class Number>
Text decimalText(Number number) {
    if (!std::isfinite(number)) {
        return std::isnan(number) ? u"NaN" : number > 0 ? u"INF" : u"-INF";
    }
    char digits[512];
    const auto end =
        std::to_chars(std::begin(digits), std::end(digits), number, std::chars_format::fixed).ptr;
    Text text(digits, end);
    return text == u"-0" ? u"0" : text;
}

Text currencyText(Currency currency) {
    const bool negative = currency.tenThousandths < 0;
    auto magnitude = static_cast<std::uint64_t>(currency.tenThousandths);
    magnitude = negative ? 0 - magnitude : magnitude;
    Text text = fromUtf8(std::to_string(magnitude / 10000));
    Text fraction = fromUtf8(std::to_string(10000 + magnitude % 10000)).substr(1);
    fraction.erase(fraction.find_last_not_of(u'0') + 1);
    if (!fraction.empty()) {
        text += u'.' + fraction;
    }
    return negative && text != u"0" ? u'-' + text : text;
}

Text guidText(const Guid& guid) {
    static constexpr int order[] = {3, 2, 1, 0, -1, 5, 4, -1, 7, 6, -1, 8, 9, -1, 10, 11, 12, 13, 14, 15};
    static constexpr char16_t digits[] = u"0123456789ABCDEF";
    Text text = u"{";
    for (const int place : order) {
        if (place < 0) {
            text += u'-';
            continue;
        }
        const std::uint8_t byte = guid.bytes[static_cast<std::size_t>(place)];
        text += digits[byte >> 4];
        text += digits[byte & 15];
    }
    return text + u'}';
}

Text digitsOf(int number, int width) {
    Text text = toText(static_cast<long long>(number));
    return Text(text.size() < static_cast<std::size_t>(width) ? static_cast<std::size_t>(width) - text.size()
                                                              : 0,
                u'0') +
           text;
}

// Days from 1970-01-01 to a date of the Gregorian calendar, and back.
constexpr long long daysFromDate(int year, int month, int day) {
    const long long y = month <= 2 ? year - 1 : year;
    const long long era = (y >= 0 ? y : y - 399) / 400;
    const long long ofEra = y - era * 400;
    const long long ofYear = (153 * (month + (month > 2 ? -3 : 9)) + 2) / 5 + day - 1;
    return era * 146097 + ofEra * 365 + ofEra / 4 - ofEra / 100 + ofYear - 719468;
}

void dateFromDays(long long days, DateTime& date) {
    days += 719468;
    const long long era = (days >= 0 ? days : days - 146096) / 146097;
    const long long ofEra = days - era * 146097;
    const long long yearOfEra = (ofEra - ofEra / 1460 + ofEra / 36524 - ofEra / 146096) / 365;
    const long long ofYear = ofEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const long long shifted = (5 * ofYear + 2) / 153;
    date.day = static_cast<int>(ofYear - (153 * shifted + 2) / 5 + 1);
    date.month = static_cast<int>(shifted < 10 ? shifted + 3 : shifted - 9);
    date.year = static_cast<int>(yearOfEra + era * 400 + (date.month <= 2 ? 1 : 0));
}

constexpr long long oleEpoch = daysFromDate(1899, 12, 30);
constexpr long long secondsOfDay = 86400;

std::optional<double> numberOf(TextView text) {
    const std::size_t first = text.find_first_not_of(u' ');
    if (first == TextView::npos) {
        return std::nullopt;
    }
    const std::string digits = toUtf8(text.substr(first, text.find_last_not_of(u' ') + 1 - first));
    const char* begin = digits.data() + (digits.size() > 1 && digits[0] == '+' ? 1 : 0);
    double number = 0;
    const auto [end, error] = std::from_chars(begin, digits.data() + digits.size(), number);
    if (error != std::errc() || end != digits.data() + digits.size() || !std::isfinite(number)) {
        return std::nullopt;
    }
    return number;
}

template <class Integer>
Integer roundedTo(const Value& value) {
    const double number = std::nearbyint(toDouble(value)); // ties to even, the conversion's own rounding
    if (number < static_cast<double>(std::numeric_limits<Integer>::min()) ||
        number > static_cast<double>(std::numeric_limits<Integer>::max())) {
        throw RunTimeError(ErrorNumber::Overflow);
    }
    return static_cast<Integer>(number);
}

} // namespace

std::optional<DateTime> DateTime::fromOleDate(double days) {
    if (!std::isfinite(days) || days <= -657435.0 || days >= 2958466.0) {
        return std::nullopt; // before the year 100 (its first day has times too) or after 9999
    }
    // The fraction is the time of day whatever the sign of the day.
    const double day = std::trunc(days);
    auto seconds =
        static_cast<long long>(std::llround(std::fabs(days - day) * static_cast<double>(secondsOfDay)));
    auto number = static_cast<long long>(day);
    if (seconds >= secondsOfDay) {
        seconds -= secondsOfDay;
        ++number;
    }
    DateTime date;
    dateFromDays(oleEpoch + number, date);
    if (date.year > 9999) {
        return std::nullopt;
    }
    date.hour = static_cast<int>(seconds / 3600);
    date.minute = static_cast<int>(seconds / 60 % 60);
    date.second = static_cast<int>(seconds % 60);
    return date;
}

double DateTime::toOleDate() const {
    const auto days = static_cast<double>(daysFromDate(year, month, day) - oleEpoch);
    const double time = (hour * 3600.0 + minute * 60.0 + second) / static_cast<double>(secondsOfDay);
    return days < 0 ? days - time : days + time;
}

Text DateTime::text() const {
    return digitsOf(year, 4) + u'-' + digitsOf(month, 2) + u'-' + digitsOf(day, 2) + u' ' +
           digitsOf(hour, 2) + u':' + digitsOf(minute, 2) + u':' + digitsOf(second, 2);
}

std::optional<DateTime> DateTime::fromText(TextView text) {
    static constexpr TextView shape = u"0000-00-00 00:00:00";
    if (text.size() != shape.size()) {
        return std::nullopt;
    }
    int parts[6] = {};
    std::size_t part = 0;
    for (std::size_t i = 0; i < shape.size(); ++i) {
        if (shape[i] != u'0') {
            if (text[i] != shape[i]) {
                return std::nullopt;
            }
            ++part;
        } else if (text[i] < u'0' || text[i] > u'9') {
            return std::nullopt;
        } else {
            parts[part] = parts[part] * 10 + (text[i] - u'0');
        }
    }
    const DateTime read{parts[0], parts[1], parts[2], parts[3], parts[4], parts[5]};
    // A date that does not exist comes back changed from the calendar.
    DateTime check = read;
    dateFromDays(daysFromDate(read.year, read.month, read.day), check);
    const bool valid = read.month >= 1 && read.month <= 12 && check == read && read.hour < 24 &&
                       read.minute < 60 && read.second < 60;
    return valid ? std::optional(read) : std::nullopt;
}

bool isEmptyText(const Value& value) {
    const Text* text = std::get_if<Text>(&value);
    return text != nullptr && text->empty();
}

bool isNotEmptyText(const Value& value) {
    return !std::holds_alternative<Null>(value) && !isEmptyText(value);
}

Text toText(const Value& value) {
    return std::visit(Visitor{
                          [](const Null&) { return Text(); },
                          [](bool boolean) { return Text(boolean ? u"True" : u"False"); },
                          [](std::int64_t number) { return toText(static_cast<long long>(number)); },
                          [](float number) { return decimalText(number); },
                          [](double number) { return decimalText(number); },
                          [](Currency currency) { return currencyText(currency); },
                          [](const Decimal& decimal) { return decimal.digits; },
                          [](const DateTime& date) { return date.text(); },
                          [](const Guid& guid) { return guidText(guid); },
                          [](const Text& text) { return text; },
                          [](const Bytes&) -> Text { throw RunTimeError(ErrorNumber::TypeMismatch); },
                      },
                      value);
}

double toDouble(const Value& value) {
    const auto mismatch = []() -> double { throw RunTimeError(ErrorNumber::TypeMismatch); };
    const auto ofText = [&](TextView text) { return numberOf(text) ? *numberOf(text) : mismatch(); };
    return std::visit(
        Visitor{
            [&](const Null&) { return mismatch(); },
            [](bool boolean) { return boolean ? -1.0 : 0.0; },
            [](std::int64_t number) { return static_cast<double>(number); },
            [](float number) { return static_cast<double>(number); },
            [](double number) { return number; },
            [](Currency currency) { return static_cast<double>(currency.tenThousandths) / 10000; },
            [&](const Decimal& decimal) { return ofText(decimal.digits); },
            [](const DateTime& date) { return date.toOleDate(); },
            [&](const Guid&) { return mismatch(); },
            [&](const Text& text) { return ofText(text); },
            [&](const Bytes&) { return mismatch(); },
        },
        value);
}

bool toBoolean(const Value& value) {
    if (const bool* boolean = std::get_if<bool>(&value)) {
        return *boolean;
    }
    if (const Text* text = std::get_if<Text>(&value)) {
        if (equalsIgnoringCase(*text, u"True")) {
            return true;
        }
        if (equalsIgnoringCase(*text, u"False")) {
            return false;
        }
    }
    return toDouble(value) != 0;
}

std::int16_t toInteger(const Value& value) {
    return roundedTo<std::int16_t>(value);
}
std::int32_t toLong(const Value& value) {
    return roundedTo<std::int32_t>(value);
}

} // namespace relvane
