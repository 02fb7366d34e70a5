// Drives everything that reads the stored design of a form or report with arbitrary bytes: as a design, whose tree is
// then asked for every value, directly and through the object model, as the list of names beside one, and as each kind
// of data inside a property.

#include "access/design_type_info.h"
#include "fuzz/walk_design.h"
#include "platform/codepage.h"
#include "platform/runtime_error.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    using namespace relvane;
    using namespace relvane::access;
    const std::span bytes(data, size);
    test::lookInside(bytes);
    TypeInfo list;
    skipErrors([&] { list = readTypeInfo(bytes, japaneseCodePage, u"x"); });
    skipErrors([&] {
        const auto design = std::make_shared<const Design>(readDesignStream(bytes, u"x"), japaneseCodePage);
        test::walkDesign(design);
        agrees(list, *design);
    });
    return 0;
}
