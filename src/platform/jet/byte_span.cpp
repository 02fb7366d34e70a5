#include "jet/byte_span.h"

namespace relvane::jet {

void failDamaged(std::uint32_t page, TextView what) {
    Text detail = u"ページ " + toText(static_cast<long long>(page)) + u": ";
    detail += what;
    throw RunTimeError(ErrorNumber::DatabaseDamaged, detail);
}

} // namespace relvane::jet
