#include "sample_builder/description_design.h"

#include <algorithm>

#include "access/design_properties.h"
#include "sample_builder/description_value.h"
#include "sample_builder/design_data_writer.h"

namespace relvane::samples {

namespace {

using access::BuiltIn;
using access::PropertyFact;
using access::ValueKind;

// The levels of a design: what stands below the root, and what stands in a section.
constexpr std::size_t belowRoot = 1, inSection = 2;

std::optional<DesignType> typeNamed(TextView name) {
    for (const DesignType type : access::knownTypes()) {
        if (!access::isRoot(type) && access::nameOf(type) == name) {
            return type;
        }
    }
    return std::nullopt;
}

// "bitmap:32x32x4", "ground:24x24x8", "metafile:3000x2000", "palette:16", "object:400", or else the bytes themselves.
Value takeData(DescriptionLine& line) {
    struct Maker {
        TextView name;
        std::size_t numbers;
        Bytes (*make)(const std::vector<int>& numbers);
    };
    static constexpr Maker makers[] = {
        {u"bitmap", 3, [](const std::vector<int>& n) { return bitmapPicture(n[0], n[1], n[2]); }},
        {u"ground", 3, [](const std::vector<int>& n) { return groundPicture(n[0], n[1], n[2]); }},
        {u"metafile", 2, [](const std::vector<int>& n) { return metafilePicture(n[0], n[1]); }},
        {u"palette", 1, [](const std::vector<int>& n) { return paletteOf(n[0]); }},
        {u"object", 1,
         [](const std::vector<int>& n) { return embeddedObject(static_cast<std::size_t>(n[0])); }},
    };
    const Text text = line.takeText("data");
    const auto colon = text.find(u':');
    for (const Maker& maker : makers) {
        if (colon == Text::npos || TextView(text).substr(0, colon) != maker.name) {
            continue;
        }
        std::vector<int> numbers{0};
        for (const char16_t c : TextView(text).substr(colon + 1)) {
            if (c == u'x') {
                numbers.push_back(0);
            } else if (c >= u'0' && c <= u'9' && numbers.back() < 1'000'000) {
                numbers.back() = numbers.back() * 10 + (c - u'0');
            } else {
                line.fail("no sizes of data: " + toUtf8(text));
            }
        }
        if (numbers.size() != maker.numbers) {
            line.fail("another number of sizes is needed: " + toUtf8(text));
        }
        return maker.make(numbers);
    }
    DescriptionLine bytes(toUtf8(text), line.number());
    return takeValue(bytes, ColumnType::Ole);
}

Value takePropertyValue(const PropertyFact& fact, DescriptionLine& line) {
    switch (fact.kind) {
    case ValueKind::Flag:
        return takeValue(line, ColumnType::Boolean);
    case ValueKind::Byte:
    case ValueKind::Word:
    case ValueKind::Long:
        return std::int64_t{takeNumber(line, "a property")};
    case ValueKind::Text:
        return line.takeText("a text");
    case ValueKind::Date:
        return takeDate(line);
    case ValueKind::Guid:
        return takeValue(line, ColumnType::Guid);
    default:
        return takeData(line);
    }
}

void takePair(DesignObjectSpec& object, TextView first, TextView second, DescriptionLine& line) {
    for (const TextView name : {first, second}) {
        object.properties.push_back({Text(name), std::int64_t{takeNumber(line, "a length")}});
    }
}

// PROPERTY VALUE ..., "at LEFT TOP" and "size WIDTH HEIGHT" to the end of the line.
void takeProperties(DesignObjectSpec& object, DescriptionLine& line) {
    while (!line.atEnd()) {
        if (line.takeIf(u"at")) {
            takePair(object, u"Left", u"Top", line);
        } else if (line.takeIf(u"size")) {
            takePair(object, u"Width", u"Height", line);
        } else {
            const Text name = line.takeText("a property");
            const PropertyFact* fact = access::findProperty(object.type, name);
            if (fact == nullptr) {
                line.fail("no property of " + toUtf8(access::nameOf(object.type)) + ": " + toUtf8(name));
            }
            object.properties.push_back({name, takePropertyValue(*fact, line)});
        }
    }
}

} // namespace

bool DesignInProgress::read(TextView keyword, DescriptionLine& line, int codePage) {
    if (document_ == nullptr) {
        return false;
    }
    const auto deeper = static_cast<std::size_t>(std::ranges::count(keyword, u'>'));
    if (!keyword.empty() && deeper == keyword.size()) {
        const Text word = line.takeText("a kind of control");
        const auto type = typeNamed(word);
        if (!type) {
            line.fail("no kind of control: " + toUtf8(word));
        }
        addObject(inSection + deeper, *type, line);
    } else if (const auto type = typeNamed(keyword)) {
        addObject(access::isControl(*type) ? inSection : belowRoot, *type, line);
    } else if (keyword == u"set") {
        takeProperties(design().root, line);
    } else if (keyword == u"default") {
        const Text word = line.takeText("a kind of control");
        const auto blockType = typeNamed(word);
        if (!blockType || !access::isControl(*blockType)) {
            line.fail("no kind of control: " + toUtf8(word));
        }
        design();
        takeProperties(add(belowRoot, *blockType, line), line);
    } else if (keyword == u"with" && !open_.empty()) {
        takeProperties(*open_.back(), line);
    } else if (keyword == u"label") {
        addAttachedLabel(line);
    } else if (keyword == u"printer") {
        setPrinter(line, codePage);
    } else {
        return false;
    }
    return true;
}

DesignSpec& DesignInProgress::design() {
    if (!document_->design) {
        document_->design.emplace().root.type = root_;
        open_ = {&document_->design->root};
    }
    return *document_->design;
}

DesignObjectSpec& DesignInProgress::add(std::size_t level, DesignType type, DescriptionLine& line) {
    design();
    if (open_.size() < level) {
        line.fail("there is nothing that this could stand in");
    }
    open_.resize(level);
    auto& siblings = open_.back()->children;
    open_.push_back(&siblings.emplace_back(DesignObjectSpec{.type = type}));
    return siblings.back();
}

void DesignInProgress::addObject(std::size_t level, DesignType type, DescriptionLine& line) {
    DesignObjectSpec& object = add(level, type, line);
    const TextView first = type == DesignType::BreakLevel ? u"ControlSource" : u"Name";
    object.properties.push_back({Text(first), line.takeText("a name")});
    takeProperties(object, line);
}

// It takes the name of the control it belongs to, which stays the one that "with" means.
void DesignInProgress::addAttachedLabel(DescriptionLine& line) {
    if (open_.size() <= inSection) {
        line.fail("a label belongs to a control");
    }
    DesignObjectSpec& control = *open_.back();
    DesignObjectSpec& label = control.children.emplace_back(DesignObjectSpec{.type = DesignType::Label});
    label.properties = {{u"Name", control.name() + u"_ﾗﾍﾞﾙ"}, {u"Caption", line.takeText("a caption")}};
    takeProperties(label, line);
}

void DesignInProgress::setPrinter(DescriptionLine& line, int codePage) {
    const Text printer = line.takeText("a printer"), driver = line.takeText("a driver"),
               port = line.takeText("a port");
    const bool landscape = line.takeIf(u"landscape");
    PageSettings page;
    if (line.takeIf(u"margins")) {
        for (int* margin : {&page.left, &page.top, &page.right, &page.bottom}) {
            *margin = takeNumber(line, "a margin");
        }
    }
    if (line.takeIf(u"columns")) {
        page.itemsAcross = takeNumber(line, "a number of columns");
        page.itemWidth = takeNumber(line, "a width");
        page.itemHeight = takeNumber(line, "a height");
        page.downFirst = line.takeIf(u"down");
    }
    auto& properties = design().root.properties;
    properties.push_back({u"PrtMip", printerLayout(page)});
    properties.push_back({u"PrtDevMode", printerMode(printer, landscape, codePage)});
    properties.push_back({u"PrtDevNames", printerNames(driver, printer, port, codePage)});
}

} // namespace relvane::samples
