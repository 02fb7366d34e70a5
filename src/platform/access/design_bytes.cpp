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

std::span<const std::uint8_t> DesignBytes::zeroTerminated() {
    const auto rest = bytes_.from(at_).bytes();
    const auto length = static_cast<std::size_t>(std::ranges::find(rest, 0) - rest.begin());
    const auto found = take(length);
    advance(1);
    return found;
}

} // namespace relvane::access
