#include "core/date_text.h"

namespace relvane {
namespace {

struct Era {
    TextView letter, name;
    int firstYear;
};

constexpr Era eras[] = {
    {u"M", u"明治", 1868}, {u"T", u"大正", 1912}, {u"S", u"昭和", 1926},
    {u"H", u"平成", 1989}, {u"R", u"令和", 2019},
};

Text folded(TextView text) {
    Text result;
    for (char16_t c : text) {
        if (c >= 0xFF01 && c <= 0xFF5E) {
            c = static_cast<char16_t>(c - 0xFEE0);
        } else if (c == 0x3000) {
            c = u' ';
        }
        result.push_back(upperCase(c));
    }
    return result;
}

// Reads a text from left to right; each step either takes something or leaves the place as it was.
class Scanner {
public:
    explicit Scanner(TextView text) : rest_(text) {}

    void skipBlanks() { rest_.remove_prefix(std::min(rest_.find_first_not_of(u' '), rest_.size())); }
    bool atEnd() {
        skipBlanks();
        return rest_.empty();
    }
    bool take(TextView word) {
        skipBlanks();
        if (!rest_.starts_with(word)) {
            return false;
        }
        rest_.remove_prefix(word.size());
        return true;
    }
    bool takeAny(TextView characters) {
        skipBlanks();
        if (rest_.empty() || characters.find(rest_.front()) == TextView::npos) {
            return false;
        }
        rest_.remove_prefix(1);
        return true;
    }
    std::optional<int> number() { // of one to four digits
        skipBlanks();
        int value = 0;
        std::size_t digits = 0;
        while (digits < rest_.size() && rest_[digits] >= u'0' && rest_[digits] <= u'9') {
            value = digits < 5 ? value * 10 + (rest_[digits] - u'0') : value;
            ++digits;
        }
        if (digits == 0 || digits > 4) {
            return std::nullopt;
        }
        rest_.remove_prefix(digits);
        return value;
    }

private:
    TextView rest_;
};

constexpr TextView dateSeparators = u"/-.";

int fullYear(int year) {
    return year >= 100 ? year : year + (year < 30 ? 2000 : 1900);
}

std::optional<DateTime> checked(const DateTime& date) {
    return date.year < 100 || date.year > 9999 || date.month < 1 || date.month > 12 || date.day < 1 ||
                   date.day > 31
               ? std::nullopt
               : DateTime::fromText(date.text());
}

std::optional<DateTime> day(int year, int month, int dayOfMonth) {
    return checked({year, month, dayOfMonth});
}

// "年b月c日" or "/b/c" behind a year.
std::optional<DateTime> monthAndDay(Scanner& in, int year) {
    if (in.take(u"年")) {
        const auto month = in.number();
        if (!month || !in.take(u"月")) {
            return std::nullopt;
        }
        const auto dayOfMonth = in.number();
        return dayOfMonth && !in.take(u"日") ? std::nullopt : day(year, *month, dayOfMonth.value_or(1));
    }
    if (!in.takeAny(dateSeparators)) {
        return std::nullopt;
    }
    const auto month = in.number();
    if (!month || !in.takeAny(dateSeparators)) {
        return std::nullopt;
    }
    const auto dayOfMonth = in.number();
    return dayOfMonth ? day(year, *month, *dayOfMonth) : std::nullopt;
}

std::optional<DateTime> dateOfEra(Scanner& in) {
    for (const Era& era : eras) {
        if (in.take(era.name) || in.take(era.letter)) {
            const auto year = in.take(u"元") ? 1 : in.number();
            return year && *year >= 1 ? monthAndDay(in, era.firstYear - 1 + *year) : std::nullopt;
        }
    }
    return std::nullopt;
}

// Two numbers: month and day of this year, or a year and a month in either order.
std::optional<DateTime> ofTwo(int first, int second, const DateTime& today) {
    if (const auto date = day(today.year, first, second)) {
        return date;
    }
    if (const auto date = day(fullYear(first), second, 1)) {
        return date;
    }
    return day(fullYear(second), first, 1);
}

// Three numbers: the year stands first, or last where it cannot be a day.
std::optional<DateTime> ofThree(int first, int second, int third) {
    if (third <= 31) {
        return day(fullYear(first), second, third);
    }
    const auto date = day(fullYear(third), first, second);
    return date ? date : day(fullYear(third), second, first);
}

std::optional<DateTime> datePart(Scanner& in, const DateTime& today) {
    Scanner attempt = in;
    if (const auto date = dateOfEra(attempt)) {
        in = attempt;
        return date;
    }
    attempt = in;
    const auto first = attempt.number();
    if (!first) {
        return std::nullopt;
    }
    std::optional<DateTime> date;
    if (Scanner withYear = attempt; withYear.take(u"年")) {
        date = monthAndDay(attempt, fullYear(*first));
    } else if (attempt.take(u"月")) {
        const auto dayOfMonth = attempt.number();
        date = dayOfMonth && attempt.take(u"日") ? day(today.year, *first, *dayOfMonth) : std::nullopt;
    } else if (attempt.takeAny(dateSeparators)) {
        const auto second = attempt.number();
        if (!second) {
            return std::nullopt;
        }
        if (attempt.takeAny(dateSeparators)) {
            const auto third = attempt.number();
            date = third ? ofThree(*first, *second, *third) : std::nullopt;
        } else {
            date = ofTwo(*first, *second, today);
        }
    }
    if (date) {
        in = attempt;
    }
    return date;
}

enum class Half { None, Morning, Afternoon };

Half halfOfDay(Scanner& in) {
    if (in.take(u"AM") || in.take(u"午前")) {
        return Half::Morning;
    }
    return in.take(u"PM") || in.take(u"午後") ? Half::Afternoon : Half::None;
}

// Sets the time of `date`; false when none that is valid follows.
bool timePart(Scanner& in, DateTime& date) {
    Half half = halfOfDay(in);
    const auto hour = in.number();
    if (!hour) {
        return false;
    }
    int minute = 0, second = 0;
    bool isTime = false;
    if (in.take(u":")) {
        const auto read = in.number();
        if (!read) {
            return false;
        }
        minute = *read;
        isTime = true;
        if (in.take(u":")) {
            const auto seconds = in.number();
            if (!seconds) {
                return false;
            }
            second = *seconds;
        }
    } else if (in.take(u"時")) {
        isTime = true;
        if (const auto read = in.number()) {
            if (!in.take(u"分")) {
                return false;
            }
            minute = *read;
        }
        if (const auto read = in.number()) {
            if (!in.take(u"秒")) {
                return false;
            }
            second = *read;
        }
    }
    if (half == Half::None) {
        half = halfOfDay(in);
    }
    const bool halved = half != Half::None;
    if ((!isTime && !halved) || *hour > (halved ? 12 : 23) || minute > 59 || second > 59) {
        return false;
    }
    date.hour = halved ? *hour % 12 + (half == Half::Afternoon ? 12 : 0) : *hour;
    date.minute = minute;
    date.second = second;
    return true;
}

} // namespace

std::optional<DateTime> dateOf(TextView text, const DateTime& today) {
    const Text narrow = folded(text);
    Scanner in(narrow);
    if (in.atEnd()) {
        return std::nullopt;
    }
    auto date = datePart(in, today);
    if (date && in.atEnd()) {
        return date;
    }
    DateTime result = date.value_or(DateTime());
    return timePart(in, result) && in.atEnd() ? std::optional(result) : std::nullopt;
}

} // namespace relvane
