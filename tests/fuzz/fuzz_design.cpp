// Drives everything that reads the stored design of a form or report with arbitrary bytes: as a design, whose tree is
// then asked for every value, directly and through the object model, as a design with a second one behind it that adds
// to it, as the list of names beside one, and as each kind of data inside a property.

#include <algorithm>

#include "access/design_type_info.h"
#include "fuzz/walk_design.h"
#include "platform/codepage.h"
#include "platform/runtime_error.h"

namespace {

using namespace relvane;
using namespace relvane::access;

void walk(StoredDesign stored, const TypeInfo& list) {
    const auto design = std::make_shared<const Design>(std::move(stored), japaneseCodePage);
    test::walkDesign(design);
    agrees(list, *design);
}

// The last two bytes say how long the first of two streams is.
void walkWithAdditions(std::span<const std::uint8_t> bytes) {
    if (bytes.size() < 2) {
        return;
    }
    const std::size_t end = bytes.size() - 2;
    const std::size_t length = std::min<std::size_t>(end, bytes[end] + 256U * bytes[end + 1]);
    StoredDesign design = readDesignStream(bytes.first(length), u"x");
    addLaterProperties(design, readDesignStream(bytes.subspan(length, end - length), u"x"));
    walk(std::move(design), {});
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const std::span bytes(data, size);
    test::lookInside(bytes);
    TypeInfo list;
    skipErrors([&] { list = readTypeInfo(bytes, japaneseCodePage, u"x"); });
    skipErrors([&] { walk(readDesignStream(bytes, u"x"), list); });
    skipErrors([&] { walkWithAdditions(bytes); });
    return 0;
}
