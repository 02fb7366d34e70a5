#include "fuzz/walk_design.h"

#include "access/design_data.h"
#include "access/design_model.h"
#include "access/design_source.h"
#include "jet/open_database.h"
#include "platform/codepage.h"
#include "platform/runtime_error.h"

namespace relvane::test {
namespace {

using namespace access;

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
        ask(*openForm(design, u"x", {}));
        return;
    }
    const auto report = openReport(design, u"x", {});
    ask(*report);
    skipErrors([&] {
        for (int level = 0;; ++level) { // ends with the error behind the last
            askByPosition(report->GroupLevel(level));
        }
    });
}

} // namespace

void lookInside(std::span<const std::uint8_t> bytes) {
    readPictureData(bytes);
    readPalette(bytes);
    readPrinterLayout(bytes);
    readPrinterMode(bytes, japaneseCodePage);
    readPrinterNames(bytes, japaneseCodePage);
    readOleData(bytes);
    readEmbeddedMacro(bytes, japaneseCodePage);
}

void walkDesign(const std::shared_ptr<const Design>& design) {
    askForEverything(design->root());
    for (int index = 0; index < 10; ++index) {
        design->section(index);
    }
    design->findControl(u"x");
    askTheModel(design);
}

int walkDesigns(const dao::Database& database) {
    return walkDesigns(DesignSource(jet::fileOf(database)));
}

int walkDesigns(const DesignSource& source) {
    int read = 0;
    for (const auto* documents : {&source.forms(), &source.reports()}) {
        for (const DesignDocument& document : *documents) {
            const int error = skipErrors([&] {
                const auto design = source.design(document);
                walkDesign(design);
                agrees(source.typeInfo(document), *design);
            });
            read += error == 0 ? 1 : 0;
        }
    }
    return read;
}

} // namespace relvane::test
