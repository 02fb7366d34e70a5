#include "core/text_functions.h"

#include <algorithm>

#include "platform/runtime_error.h"

namespace relvane {
namespace {

void require(bool condition) {
    if (!condition) {
        throw RunTimeError(ErrorNumber::InvalidProcedureCall);
    }
}

std::size_t atMost(std::int64_t length, std::size_t size) {
    return static_cast<std::size_t>(std::min<std::int64_t>(length, static_cast<std::int64_t>(size)));
}

// The first place of `wanted` at or behind `start`. Most searches are for words that a line does not hold, so the places
// are passed over by the block, in a loop without a way out that the compiler makes a few vector instructions of.
std::size_t placeOf(TextView text, TextView wanted, std::size_t start) {
    constexpr std::size_t block = 16;
    if (wanted.size() < 2) {
        return text.find(wanted, start);
    }
    for (; start + block < text.size(); start += block) {
        const char16_t* at = text.data() + start;
        int beginnings = 0;
        for (std::size_t i = 0; i < block; ++i) {
            beginnings |= int{at[i] == wanted[0]} & int{at[i + 1] == wanted[1]};
        }
        if (beginnings != 0) {
            const std::size_t end = std::min(start + block + wanted.size() - 1, text.size());
            const std::size_t found = text.substr(0, end).find(wanted, start);
            if (found != TextView::npos) {
                return found;
            }
        }
    }
    return text.find(wanted, start);
}

} // namespace

Text Left(TextView text, std::int64_t length) {
    require(length >= 0);
    return Text(text.substr(0, atMost(length, text.size())));
}

Text Right(TextView text, std::int64_t length) {
    require(length >= 0);
    return Text(text.substr(text.size() - atMost(length, text.size())));
}

Text Mid(TextView text, std::int64_t position, std::int64_t length) {
    require(position >= 1 && length >= 0);
    const TextView rest = text.substr(atMost(position - 1, text.size()));
    return Text(rest.substr(0, atMost(length, rest.size())));
}

Text Mid(TextView text, std::int64_t position) {
    return Mid(text, position, static_cast<std::int64_t>(text.size()));
}

TextView LTrimView(TextView text) {
    return text.substr(std::min(text.find_first_not_of(u' '), text.size()));
}

TextView RTrimView(TextView text) {
    return text.substr(0, text.find_last_not_of(u' ') + 1);
}

TextView TrimView(TextView text) {
    return LTrimView(RTrimView(text));
}

Text LTrim(TextView text) {
    return Text(LTrimView(text));
}

Text RTrim(TextView text) {
    return Text(RTrimView(text));
}

Text Trim(TextView text) {
    return Text(TrimView(text));
}

Text UCase(TextView text) {
    return upperCase(text);
}

std::int32_t InStr(std::int64_t start, TextView text, TextView wanted) {
    require(start >= 1);
    if (start > static_cast<std::int64_t>(text.size())) {
        return 0;
    }
    const std::size_t found = placeOf(text, wanted, static_cast<std::size_t>(start - 1));
    return found == TextView::npos ? 0 : static_cast<std::int32_t>(found + 1);
}

std::int32_t InStr(TextView text, TextView wanted) {
    return InStr(1, text, wanted);
}

bool holds(TextView text, TextView wanted) {
    return placeOf(text, wanted, 0) != TextView::npos;
}

} // namespace relvane
