#include "formview/value_format.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdio>

#include "platform/runtime_error.h"

namespace relvane::formview {
namespace {

struct NamedFormat {
    TextView name, pattern;
};

// Those of numbers take DecimalPlaces.
constexpr NamedFormat numberFormats[] = {
    {u"Currency", u"¥#,##0;-¥#,##0"}, {u"Fixed", u"0.00"},          {u"Standard", u"#,##0.00"},
    {u"Percent", u"0.00%"},           {u"Scientific", u"0.00E+00"},
};
constexpr NamedFormat dateFormats[] = {
    {u"Long Date", u"yyyy年m月d日"}, {u"Medium Date", u"yy-mm-dd"},   {u"Short Date", u"yy/mm/dd"},
    {u"Long Time", u"h:nn:ss"},      {u"Medium Time", u"AMPM hh:nn"}, {u"Short Time", u"hh:nn"},
};
constexpr struct {
    TextView name, yes, no;
} truthFormats[] = {
    {u"Yes/No", u"Yes", u"No"}, {u"True/False", u"True", u"False"}, {u"On/Off", u"On", u"Off"}};

// The eras of Japan that a date of that time may fall into, latest first.
constexpr struct {
    int year, month, day;
    TextView letter, shortName, name;
} eras[] = {
    {1989, 1, 8, u"H", u"平", u"平成"},
    {1926, 12, 25, u"S", u"昭", u"昭和"},
    {1912, 7, 30, u"T", u"大", u"大正"},
    {1868, 9, 8, u"M", u"明", u"明治"},
};

template <class Table>
const NamedFormat* findFormat(const Table& formats, TextView name) {
    const auto* found = std::ranges::find_if(
        formats, [&](const NamedFormat& format) { return equalsIgnoringCase(format.name, name); });
    return found == std::end(formats) ? nullptr : found;
}

bool isNumber(const Value& value) {
    return std::holds_alternative<std::int64_t>(value) || std::holds_alternative<float>(value) ||
           std::holds_alternative<double>(value) || std::holds_alternative<Currency>(value) ||
           std::holds_alternative<Decimal>(value);
}

Text digits(int number, std::size_t width) {
    Text text = toText(static_cast<long long>(number));
    return text.size() < width ? Text(width - text.size(), u'0') + text : text;
}

Text ascii(const char* text) {
    return fromUtf8(text);
}

// ---- Numbers

// The sections of a pattern: positive, negative, zero, Null; a sign in quotes parts none.
std::vector<Text> sectionsOf(TextView pattern) {
    std::vector<Text> sections(1);
    bool quoted = false;
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        quoted = pattern[i] == u'"' ? !quoted : quoted;
        if (pattern[i] == u'\\' && i + 1 < pattern.size()) {
            sections.back() += pattern[i++];
        } else if (pattern[i] == u';' && !quoted) {
            sections.emplace_back();
            continue;
        }
        sections.back() += pattern[i];
    }
    return sections;
}

// One section: a literal before the digits, the digits, a literal behind them.
struct NumberPattern {
    Text before, after;
    std::size_t whole = 0, decimals = 0, optionalDecimals = 0; // digits that must be there; and that may be
    bool grouped = false, percent = false, scientific = false, hasDigits = false;

    explicit NumberPattern(TextView section) {
        bool behindPoint = false;
        for (std::size_t i = 0; i < section.size(); ++i) {
            const char16_t c = section[i];
            Text& literal = hasDigits ? after : before;
            if (c == u'0' || c == u'#') {
                hasDigits = true;
                if (scientific) {
                    continue;
                }
                std::size_t& place = !behindPoint ? whole : c == u'0' ? decimals : optionalDecimals;
                place += c == u'0' || behindPoint ? 1 : 0;
            } else if (c == u'.') {
                behindPoint = hasDigits = true;
            } else if (c == u',') {
                grouped = grouped || hasDigits;
            } else if (c == u'%') {
                percent = true;
                literal += c;
            } else if ((c == u'E' || c == u'e') && hasDigits && i + 1 < section.size() &&
                       (section[i + 1] == u'+' || section[i + 1] == u'-')) {
                scientific = true;
                ++i;
            } else if (c == u'\\' && i + 1 < section.size()) {
                literal += section[++i];
            } else if (c == u'"') {
                for (++i; i < section.size() && section[i] != u'"'; ++i) {
                    literal += section[i];
                }
            } else if (c == u'[') { // a colour
                i = std::min(section.find(u']', i), section.size());
            } else {
                literal += c;
            }
        }
    }

    Text text(double number) const {
        if (!hasDigits) {
            return before;
        }
        const int most = static_cast<int>(std::min<std::size_t>(decimals + optionalDecimals, 15));
        std::array<char, 400> written{};
        std::snprintf(written.data(), written.size(), scientific ? "%.*E" : "%.*f", most,
                      std::abs(number) * (percent ? 100 : 1));
        Text all = ascii(written.data());
        if (scientific) {
            return before + all + after;
        }
        const std::size_t point = std::min(all.find(u'.'), all.size());
        Text wholeDigits = all.substr(0, point),
             fraction = point < all.size() ? all.substr(point + 1) : Text();
        while (fraction.size() > decimals && fraction.back() == u'0') {
            fraction.pop_back();
        }
        if (wholeDigits == u"0" && whole == 0) {
            wholeDigits.clear();
        }
        if (wholeDigits.size() < whole) {
            wholeDigits.insert(0, whole - wholeDigits.size(), u'0');
        }
        if (grouped) {
            for (std::size_t at = wholeDigits.size(); at > 3; at -= 3) {
                wholeDigits.insert(at - 3, 1, u',');
            }
        }
        const bool hasPoint = !fraction.empty() || decimals > 0;
        return before + wholeDigits + (hasPoint ? Text(1, u'.') : Text()) + fraction + after;
    }
};

Text patternedNumber(double number, TextView pattern) {
    const auto sections = sectionsOf(pattern);
    const std::size_t wanted = number < 0 ? 1 : number == 0 ? 2 : 0;
    if (wanted < sections.size() && !sections[wanted].empty()) {
        return NumberPattern(sections[wanted]).text(number);
    }
    const Text text = NumberPattern(sections.front()).text(number);
    return number < 0 ? u'-' + text : text;
}

// The decimals of each section as DecimalPlaces wants them.
Text withDecimals(TextView pattern, int decimals) {
    Text changed;
    for (const Text& section : sectionsOf(pattern)) {
        const std::size_t last = section.find_last_of(u"0#"), point = section.find(u'.');
        Text made = section;
        if (last != Text::npos) {
            const std::size_t wholeEnd = point == Text::npos ? last + 1 : point;
            const Text fraction =
                decimals > 0 ? u'.' + Text(static_cast<std::size_t>(decimals), u'0') : Text();
            made = section.substr(0, wholeEnd) + fraction + section.substr(last + 1);
        }
        changed += changed.empty() ? made : u';' + made;
    }
    return changed;
}

// ---- Dates

bool isDayAlone(const DateTime& date) {
    return date.hour == 0 && date.minute == 0 && date.second == 0;
}

int weekday(const DateTime& date) {                                            // 0 Sunday
    const auto days = static_cast<std::int64_t>(std::floor(date.toOleDate())); // day 1 was a Sunday
    return static_cast<int>(((days - 1) % 7 + 7) % 7);
}

const auto* eraOf(const DateTime& date) {
    const auto* found = std::ranges::find_if(eras, [&](const auto& era) {
        return std::array{date.year, date.month, date.day} >= std::array{era.year, era.month, era.day};
    });
    return found == std::end(eras) ? nullptr : found;
}

// What `count` times the letter stands for; nothing for a letter that stands for itself.
std::optional<Text> datePart(const DateTime& date, char16_t letter, std::size_t count, bool isMinute,
                             bool halves) {
    constexpr TextView weekdays = u"日月火水木金土";
    constexpr TextView monthNames[] = {u"Jan", u"Feb", u"Mar", u"Apr", u"May", u"Jun",
                                       u"Jul", u"Aug", u"Sep", u"Oct", u"Nov", u"Dec"};
    constexpr TextView weekdayNames[] = {u"Sun", u"Mon", u"Tue", u"Wed", u"Thu", u"Fri", u"Sat"};
    const std::size_t width = count == 1 ? 1 : 2;
    const auto at = static_cast<std::size_t>(weekday(date));
    const int hour = halves ? (date.hour + 11) % 12 + 1 : date.hour;
    switch (letter) {
    case u'y':
        return count > 2 ? digits(date.year, 4) : digits(date.year % 100, 2);
    case u'm':
        if (isMinute) {
            return digits(date.minute, width);
        }
        return count > 2 ? Text(monthNames[static_cast<std::size_t>(std::clamp(date.month, 1, 12) - 1)])
                         : digits(date.month, width);
    case u'd':
        return count > 2 ? Text(weekdayNames[at]) : digits(date.day, width);
    case u'a':
        return count == 3   ? Text(1, weekdays[at])
               : count == 4 ? weekdays[at] + Text(u"曜日")
                            : std::optional<Text>();
    case u'h':
        return digits(hour, width);
    case u'n':
        return digits(date.minute, width);
    case u's':
        return digits(date.second, width);
    case u'e':
        return eraOf(date) == nullptr ? digits(date.year, 1)
                                      : digits(date.year - eraOf(date)->year + 1, width);
    case u'g':
        return eraOf(date) == nullptr ? Text()
               : count == 1           ? Text(eraOf(date)->letter)
               : count == 2           ? Text(eraOf(date)->shortName)
                                      : Text(eraOf(date)->name);
    default:
        return std::nullopt;
    }
}

Text patternedDate(const DateTime& date, TextView pattern) {
    constexpr struct {
        TextView sign, morning, afternoon;
    } halfDays[] = {{u"AM/PM", u"AM", u"PM"}, {u"am/pm", u"am", u"pm"}, {u"AMPM", u"午前", u"午後"}};
    const bool halves = std::ranges::any_of(
        halfDays, [&](const auto& half) { return pattern.find(half.sign) != TextView::npos; });
    Text text;
    bool behindHour = false;
    for (std::size_t i = 0; i < pattern.size();) {
        const TextView rest = pattern.substr(i);
        const auto* half =
            std::ranges::find_if(halfDays, [&](const auto& sign) { return rest.starts_with(sign.sign); });
        if (half != std::end(halfDays)) {
            text += date.hour < 12 ? half->morning : half->afternoon;
            i += half->sign.size();
            continue;
        }
        if (rest.front() == u'"') {
            const std::size_t end = std::min(pattern.find(u'"', i + 1), pattern.size());
            text += pattern.substr(i + 1, end - i - 1);
            i = end + 1;
            continue;
        }
        if (rest.front() == u'\\' && rest.size() > 1) {
            text += rest[1];
            i += 2;
            continue;
        }
        const char16_t letter = upperCase(rest.front());
        std::size_t count = 1;
        while (count < rest.size() && upperCase(rest[count]) == letter) {
            ++count;
        }
        const auto low = static_cast<char16_t>(letter >= u'A' && letter <= u'Z' ? letter + 32 : letter);
        const auto part = datePart(date, low, count, behindHour && low == u'm', halves);
        text += part ? *part : Text(rest.substr(0, count));
        behindHour = low == u'h' || (behindHour && !part);
        i += count;
    }
    return text;
}

Text generalDate(const DateTime& date) {
    const bool isTimeAlone = date.year == 1899 && date.month == 12 && date.day == 30;
    Text text = isTimeAlone ? Text() : patternedDate(date, u"yy/mm/dd");
    if (!isDayAlone(date) || isTimeAlone) {
        text += (text.empty() ? u"" : u" ") + patternedDate(date, u"h:nn:ss");
    }
    return text;
}

// ---- Texts

// "@" and "&" are places of letters, filled from the right: "@@@-@@@@".
Text patternedText(const Text& value, TextView pattern) {
    const auto section = sectionsOf(pattern).front();
    const auto isPlace = [](char16_t c) { return c == u'@' || c == u'&'; };
    Text cased = value;
    if (section.find(u'>') != Text::npos) {
        cased = upperCase(value);
    } else if (section.find(u'<') != Text::npos) {
        for (char16_t& c : cased) {
            c = static_cast<char16_t>(c >= u'A' && c <= u'Z' ? c + 32 : c);
        }
    }
    const auto places = static_cast<std::size_t>(std::ranges::count_if(section, isPlace));
    if (places < 2) {
        return cased;
    }
    Text text;
    std::size_t skipped = places > cased.size() ? places - cased.size() : 0;
    std::size_t next = 0;
    if (cased.size() > places) {
        next = cased.size() - places;
        text = cased.substr(0, next);
    }
    for (std::size_t i = 0; i < section.size(); ++i) {
        const char16_t c = section[i];
        if (!isPlace(c)) {
            const bool isSign = c == u'!' || c == u'<' || c == u'>' || c == u'"' || c == u'\\';
            text += isSign ? Text() : Text(1, c);
        } else if (skipped > 0) {
            --skipped;
            text += c == u'@' ? u" " : u"";
        } else {
            text += cased[next++];
        }
    }
    return text;
}

Text formattedNumber(const Value& value, TextView format, int decimals) {
    const double number = toDouble(value);
    if (const NamedFormat* named = findFormat(numberFormats, format)) {
        return patternedNumber(number, decimals == automaticDecimals
                                           ? Text(named->pattern)
                                           : withDecimals(named->pattern, std::clamp(decimals, 0, 15)));
    }
    for (const auto& truth : truthFormats) {
        if (equalsIgnoringCase(truth.name, format)) {
            return Text(number != 0 ? truth.yes : truth.no);
        }
    }
    if (findFormat(dateFormats, format) != nullptr || equalsIgnoringCase(format, u"General Date")) {
        const auto date = DateTime::fromOleDate(number);
        return date ? formattedValue(*date, format) : toText(value);
    }
    const bool hasDigits = format.find_first_of(u"0#;\"") != TextView::npos;
    return hasDigits ? patternedNumber(number, format) : toText(value);
}

Text formattedDate(const DateTime& date, TextView format) {
    if (const NamedFormat* named = findFormat(dateFormats, format)) {
        return patternedDate(date, named->pattern);
    }
    if (format.empty() || equalsIgnoringCase(format, u"General Date") ||
        format.find(u';') != TextView::npos || findFormat(numberFormats, format) != nullptr) {
        return generalDate(date);
    }
    return patternedDate(date, format);
}

} // namespace

Text formattedValue(const Value& value, TextView format, int decimals) {
    if (std::holds_alternative<Bytes>(value)) {
        return {};
    }
    if (std::holds_alternative<Null>(value)) {
        constexpr std::size_t ofNull = 3, ofNullText = 1;
        const auto sections = sectionsOf(format);
        const bool isText = format.find_first_of(u"@&") != TextView::npos;
        const std::size_t section = isText ? ofNullText : ofNull;
        return section < sections.size() ? NumberPattern(sections[section]).text(0) : Text();
    }
    if (const auto* date = std::get_if<DateTime>(&value)) {
        return formattedDate(*date, format);
    }
    if (const auto* truth = std::get_if<bool>(&value)) {
        return formattedNumber(std::int64_t{*truth ? -1 : 0}, format.empty() ? u"Yes/No" : format, decimals);
    }
    if (isNumber(value)) {
        return formattedNumber(value, format, decimals);
    }
    const Text text = toText(value);
    return format.find_first_of(u"@&<>!") != TextView::npos ? patternedText(text, format) : text;
}

} // namespace relvane::formview
