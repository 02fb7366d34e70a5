#include "access/design_bytes.h"

#include <algorithm>

namespace relvane::access {

void failDamagedDesign(TextView owner, TextView part, std::size_t offset, TextView reason) {
    Text detail(owner);
    detail += u" の";
    detail += part;
    detail += u"の ";
    detail += toText(static_cast<long long>(offset));
    detail += u" バイト目: ";
    detail += reason;
    throw RunTimeError(ErrorNumber::DatabaseDamaged, detail);
}

Text textOfUtf16(std::span<const std::uint8_t> bytes) {
    const jet::ByteSpan units(bytes, 0);
    Text text;
    text.reserve(bytes.size() / 2);
    for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
        text += static_cast<char16_t>(units.u16(at));
    }
    return text;
}

std::span<const std::uint8_t> DesignBytes::zeroTerminated() {
    const auto rest = bytes_.from(at_).bytes();
    const auto length = static_cast<std::size_t>(std::ranges::find(rest, 0) - rest.begin());
    const auto found = take(length);
    advance(1);
    return found;
}

std::span<const std::uint8_t> DesignBytes::zeroTerminatedUtf16() {
    const jet::ByteSpan rest = bytes_.from(at_);
    std::size_t length = 0;
    while (length + 1 < rest.size() && rest.u16(length) != 0) {
        length += 2;
    }
    const auto found = take(length);
    advance(2);
    return found;
}

} // namespace relvane::access
