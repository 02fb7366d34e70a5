// Drives everything that reads the stored design of a form or report with arbitrary bytes: as a design, whose tree is
// then asked for every value, directly and through the object model, as the list of names beside one, and as each kind
// of data inside a property.

#include "access/design_data.h"
#include "access/design_model.h"
#include "access/design_tree.h"
#include "access/design_type_info.h"
#include "platform/codepage.h"
#include "platform/runtime_error.h"

namespace {

using namespace relvane;
using namespace relvane::access;

void lookInside(ByteView bytes) {
    readPictureData(bytes);
    readPalette(bytes);
    readPrinterLayout(bytes);
    readPrinterMode(bytes, japaneseCodePage);
    readPrinterNames(bytes, japaneseCodePage);
    readOleData(bytes);
}

void askForEverything(const DesignObject& object) {
    for (const StoredValue& value : object.storedValues()) {
        object.decoded(value);
        lookInside(value.bytes);
    }
    for (const PropertyFact& fact : propertiesOf(object.type())) {
        object.value(fact);
        object.value(fact.name);
    }
    object.name();
    object.section();
    object.attachedLabel();
    if (isSection(object.type())) {
        object.sectionIndex();
    }
    for (const DesignObject* child : object.children()) {
        askForEverything(*child);
    }
}

void askByPosition(const Object& object) {
    for (int position = 0; position <= object.Properties().Count(); ++position) {
        const Property property = object.Properties().Item(position);
        if (!property.Name.empty()) {
            object(property.Name);
        }
    }
}

void askTheModel(const std::shared_ptr<const Design>& design) {
    const auto ask = [](const Designed& open) {
        askByPosition(open);
        for (const auto& control : open.Controls()) {
            askByPosition(*control);
        }
    };
    if (!design->isReport()) {
        ask(*openForm(design, u"x", false));
        return;
    }
    const auto report = openReport(design, u"x", false);
    ask(*report);
    skipErrors([&] {
        for (int level = 0;; ++level) { // ends with the error behind the last
            askByPosition(report->GroupLevel(level));
        }
    });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    const ByteView bytes(data, size);
    lookInside(bytes);
    TypeInfo list;
    skipErrors([&] { list = readTypeInfo(bytes, japaneseCodePage, u"x"); });
    skipErrors([&] {
        const auto design = std::make_shared<const Design>(readDesignStream(bytes, u"x"), japaneseCodePage);
        askForEverything(design->root());
        for (int index = 0; index < 10; ++index) {
            design->section(index);
        }
        design->findControl(u"x");
        agrees(list, *design);
        askTheModel(design);
    });
    return 0;
}
