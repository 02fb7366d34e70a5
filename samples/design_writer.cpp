#include "sample_builder/design_writer.h"

#include <algorithm>
#include <bit>
#include <limits>
#include <map>
#include <optional>
#include <stdexcept>

#include "access/design_properties.h"
#include "access/design_type_info.h"
#include "sample_builder/byte_writer.h"
#include "sample_builder/column_value.h"

namespace relvane::samples {

namespace {

using access::BuiltIn;
using access::findProperty;
using access::PropertyFact;
using access::PropertyId;
using access::ValueKind;
namespace format = access::design_format;

const format::Version& versionOf(TextCoding coding) {
    return coding.wide ? format::access2000 : format::access97;
}

[[noreturn]] void refuse(DesignType type, TextView property, const char* why) {
    throw std::invalid_argument(toUtf8(access::nameOf(type)) + "." + toUtf8(property) + ": " + why);
}

// The values of an object by their place, which puts them in the order of the stream.
using Values = std::map<PropertyId, Value>;

void set(Values& values, DesignType type, TextView name, const Value& value, int version) {
    const PropertyFact* fact = findProperty(type, name);
    if (fact == nullptr) {
        refuse(type, name, "no such property");
    }
    if (fact->since > version) {
        refuse(type, name, "a later version brought this property");
    }
    values[fact->id] = value;
}

// The letter after "&", in capitals; nothing for a caption without one. "&&" is the sign itself.
std::optional<std::int64_t> accessKey(const DesignObjectSpec& object) {
    const Value* caption = object.find(u"Caption");
    const Text text = caption == nullptr ? Text() : toText(*caption);
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] != u'&') {
            continue;
        }
        const char16_t letter = text[++i];
        if (letter != u'&') {
            return upperCase(Text(1, letter))[0];
        }
    }
    return std::nullopt;
}

std::optional<std::int64_t> ownOrLabelsAccessKey(const DesignObjectSpec& object) {
    if (const auto key = accessKey(object)) {
        return key;
    }
    const auto label = std::ranges::find(object.children, DesignType::Label, &DesignObjectSpec::type);
    return label == object.children.end() ? std::nullopt : accessKey(*label);
}

std::optional<std::int64_t> rowSourceTypeNumber(const DesignObjectSpec& object) {
    const Value* type = object.find(u"RowSourceType");
    if (type == nullptr) {
        return std::nullopt;
    }
    constexpr std::int64_t query = 0, valueList = 1, chartQuery = 2, fieldList = 10;
    const Text text = toText(*type);
    return text == u"Value List"              ? valueList
           : text == u"Field List"            ? fieldList
           : object.type == DesignType::Chart ? chartQuery
                                              : query;
}

Values valuesOf(const DesignObjectSpec& object, int version) {
    Values values;
    const auto derive = [&](TextView name, const auto& value) {
        if (value && findProperty(object.type, name) != nullptr) {
            set(values, object.type, name, *value, version);
        }
    };
    derive(u"AccessKey", ownOrLabelsAccessKey(object));
    derive(u"RowSourceTypeInt", rowSourceTypeNumber(object));
    const Text name = object.name(), prefix = procedurePrefix(name);
    derive(u"EventProcPrefix", prefix == name ? std::nullopt : std::optional(prefix));
    for (const DesignPropertySpec& property : object.properties) {
        set(values, object.type, property.name, property.value, version);
    }
    return values;
}

class StreamWriter {
public:
    explicit StreamWriter(TextCoding coding) : coding_(coding), version_(versionOf(coding)) {}

    Bytes write(const DesignSpec& design) {
        bytes_.u16(version_.version);
        bytes_.u16(version_.required);
        bytes_.u32(0);
        for (const DesignObjectSpec& child : design.root.children) {
            if (access::isControl(child.type)) {
                blocks_[child.type] = valuesOf(child, version_.version);
            }
        }
        write(design.root, 0);
        return std::move(bytes_.data());
    }

private:
    void write(const DesignObjectSpec& object, int level) {
        bytes_.u16(static_cast<std::uint16_t>(object.type));
        constexpr int levelOfBlocks = 1;
        const auto block = level > levelOfBlocks ? blocks_.find(object.type) : blocks_.end();
        for (const auto& [id, value] : valuesOf(object, version_.version)) {
            const PropertyFact& fact = *findProperty(object.type, id);
            const Value* inherited = nullptr;
            if (block != blocks_.end() && block->second.contains(id)) {
                inherited = &block->second.at(id);
            }
            if (isStored(fact, value, inherited)) {
                writeValue(object.type, fact, value);
            }
        }
        const std::size_t children = object.children.size();
        if (children == 0) {
            bytes_.u8(format::noChildren);
        } else if (children == 1) {
            bytes_.u8(format::oneChild);
        } else {
            if (children > 0xFFFF) {
                refuse(object.type, object.name(), "has more children than the format can count");
            }
            bytes_.u8(format::manyChildren);
            bytes_.u16(children);
        }
        for (const DesignObjectSpec& child : object.children) {
            write(child, level + 1);
        }
    }

    static bool isStored(const PropertyFact& fact, const Value& value, const Value* inherited) {
        // Of these two Access keeps the text whatever it is.
        const bool alwaysKept = fact.name == u"RowSourceType";
        const Value standing = inherited != nullptr ? *inherited : fact.builtIn.value();
        return alwaysKept || value != standing;
    }

    void writeValue(DesignType type, const PropertyFact& fact, const Value& value) {
        bytes_.u8(fact.id);
        switch (fact.kind) {
        case ValueKind::Flag:
            // One whose built-in value nobody knows can only be written as the presence that it is.
            if (!std::holds_alternative<bool>(value) ||
                (fact.builtIn.kind != BuiltIn::Kind::Boolean && !std::get<bool>(value))) {
                refuse(type, fact.name, "yes or no is needed");
            }
            return;
        case ValueKind::Byte:
            return writeNumber(type, fact, value, 1, 0, 0xFF);
        case ValueKind::Word:
            return writeNumber(type, fact, value, 2, -0x8000, 0x7FFF);
        case ValueKind::Long:
            return writeNumber(type, fact, value, 4, std::numeric_limits<std::int32_t>::min(),
                               std::numeric_limits<std::int32_t>::max());
        case ValueKind::Text: {
            const std::string text = encodeText(toText(value), coding_);
            return writeVariable({reinterpret_cast<const std::uint8_t*>(text.data()), text.size()});
        }
        case ValueKind::Date: {
            ByteWriter days;
            days.u64(std::bit_cast<std::uint64_t>(numberOf(value)));
            return writeVariable(days.data());
        }
        case ValueKind::Guid:
        case ValueKind::Binary:
            if (!std::holds_alternative<Bytes>(value)) {
                refuse(type, fact.name, "bytes are needed");
            }
            return writeVariable(std::get<Bytes>(value));
        default:
            refuse(type, fact.name, "only later versions keep such a value");
        }
    }

    void writeNumber(DesignType type, const PropertyFact& fact, const Value& value, std::size_t size,
                     std::int64_t smallest, std::int64_t largest) {
        const std::int64_t* number = std::get_if<std::int64_t>(&value);
        if (number == nullptr || *number < smallest || *number > largest) {
            refuse(type, fact.name, "a number that fits is needed");
        }
        const auto bits = static_cast<std::uint64_t>(*number);
        size == 1 ? bytes_.u8(bits) : size == 2 ? bytes_.u16(bits) : bytes_.u32(bits);
    }

    void writeVariable(std::span<const std::uint8_t> value) {
        if (value.size() < format::longLength) {
            bytes_.u8(value.size());
        } else {
            bytes_.u8(format::longLength);
            if (value.size() < format::veryLongLength) {
                bytes_.u16(value.size());
            } else {
                bytes_.u16(format::veryLongLength);
                bytes_.u32(value.size());
            }
        }
        bytes_.bytes(value);
    }

    TextCoding coding_;
    format::Version version_;
    ByteWriter bytes_;
    std::map<DesignType, Values> blocks_;
};

// ---- The list of names

struct MemberClass {
    DesignType type;
    std::uint8_t inGroupOrAttached, otherwise;
};

// The class of each member of a form, as files of Access have it; 08, 0a and 04 were not met and stand by the order of
// the others.
constexpr MemberClass memberClasses[] = {
    {DesignType::BoundObjectFrame, 0x02, 0x02},
    {DesignType::UnboundObjectFrame, 0x03, 0x03},
    {DesignType::Chart, 0x03, 0x03},
    {DesignType::CustomControl, 0x04, 0x04},
    {DesignType::CheckBox, 0x05, 0x06},
    {DesignType::OptionButton, 0x07, 0x08},
    {DesignType::ToggleButton, 0x09, 0x0A},
    {DesignType::CommandButton, 0x0B, 0x0B},
    {DesignType::Label, 0x0C, 0x0D},
    {DesignType::Rectangle, 0x0E, 0x0E},
    {DesignType::Image, 0x0F, 0x0F},
    {DesignType::ListBox, 0x10, 0x10},
    {DesignType::OptionGroup, 0x11, 0x11},
    {DesignType::TextBox, 0x12, 0x12},
    {DesignType::ComboBox, 0x13, 0x13},
    {DesignType::Subform, 0x14, 0x14},
    {DesignType::Line, 0x16, 0x16},
    {DesignType::PageBreak, 0x17, 0x17},
    {DesignType::Tab, 0x20, 0x20},
    {DesignType::Page, 0x21, 0x21},
};
constexpr std::uint8_t formSection = 0x18, reportSection = 0x19, reportControl = 0x1B, fieldClass = 0x1E,
                       reportPageSection = 0x1F, fieldType = 0xFF;

std::uint8_t classOf(const DesignObjectSpec& object, const DesignObjectSpec& parent, bool ofReport) {
    if (access::isSection(object.type)) {
        const bool ofPage = object.type == DesignType::PageHeader || object.type == DesignType::PageFooter;
        return !ofReport ? formSection : ofPage ? reportPageSection : reportSection;
    }
    if (ofReport) {
        return reportControl;
    }
    const auto* found = std::ranges::find(memberClasses, object.type, &MemberClass::type);
    if (found == std::end(memberClasses)) {
        return 0;
    }
    const bool inside = object.type == DesignType::Label
                            ? !access::isSection(parent.type) && parent.type != DesignType::Page
                            : parent.type == DesignType::OptionGroup;
    return inside ? found->inGroupOrAttached : found->otherwise;
}

// Its names stay in the code page in every version.
class ListWriter {
public:
    explicit ListWriter(int codePage) : codePage_(codePage) {}

    Bytes write(const DesignSpec& design) {
        const bool ofReport = design.root.type == DesignType::Report;
        for (const DesignObjectSpec& child : design.root.children) {
            if (access::isSection(child.type)) {
                addWithChildren(child, design.root, ofReport);
            }
        }
        for (const Text& field : design.unusedFields) {
            add(fieldType, fieldClass, field);
        }
        constexpr std::uint32_t magic = 0xACCDEAF7, noParent = 0xFFFFFFFF;
        ByteWriter list;
        list.u32(magic);
        list.u8(static_cast<std::uint8_t>(design.root.type));
        list.u8(ofReport ? 1 : 0);
        list.u16(0);
        list.u32(noParent);
        list.u32(count_);
        list.bytes(interfaceId());
        list.bytes(members_.data());
        return std::move(list.data());
    }

private:
    void addWithChildren(const DesignObjectSpec& object, const DesignObjectSpec& parent, bool ofReport) {
        add(static_cast<std::uint8_t>(object.type), classOf(object, parent, ofReport), object.name());
        for (const DesignObjectSpec& child : object.children) {
            addWithChildren(child, object, ofReport);
        }
    }

    void add(std::uint8_t type, std::uint8_t memberClass, const Text& name) {
        const Text prefix = procedurePrefix(name);
        members_.u8(type);
        members_.u8(memberClass);
        members_.u16(0);
        members_.u32(count_++);
        members_.text(encodeText(prefix, codePage_));
        members_.u8(0);
        members_.text(prefix == name ? std::string() : encodeText(name, codePage_));
        members_.u8(0);
        if (type == static_cast<std::uint8_t>(DesignType::CustomControl)) {
            members_.bytes(Bytes(access::libraryReferenceSize)); // of no library
        }
    }

    // Any id will do, as long as no two lists have the same: it is made of the members.
    Bytes interfaceId() const {
        ByteWriter id;
        constexpr std::uint64_t offset = 0xCBF29CE484222325, prime = 0x100000001B3;
        for (std::uint64_t hash = offset; id.size() < 16;) {
            for (const std::uint8_t byte : members_.data()) {
                hash = (hash ^ byte) * prime;
            }
            hash = (hash ^ id.size()) * prime;
            id.u64(hash);
        }
        return id.data();
    }

    int codePage_;
    ByteWriter members_;
    std::uint32_t count_ = 0;
};

} // namespace

const Value* DesignObjectSpec::find(TextView name) const {
    const auto found = std::ranges::find_if(properties, [&](const DesignPropertySpec& property) {
        return equalsIgnoringCase(property.name, name);
    });
    return found == properties.end() ? nullptr : &found->value;
}

Text DesignObjectSpec::name() const {
    const Value* name = find(u"Name");
    return name == nullptr ? Text() : toText(*name);
}

Bytes designStream(const DesignSpec& design, TextCoding coding) {
    return StreamWriter(coding).write(design);
}

Bytes typeInfoStream(const DesignSpec& design, int codePage) {
    return ListWriter(codePage).write(design);
}

Text procedurePrefix(TextView name) {
    Text prefix(name);
    std::ranges::replace_if(
        prefix,
        [](char16_t c) {
            const bool isPlain = (c >= u'0' && c <= u'9') || (c >= u'A' && c <= u'Z') ||
                                 (c >= u'a' && c <= u'z') || c == u'_' || c > u'~';
            return !isPlain;
        },
        u'_');
    return prefix;
}

} // namespace relvane::samples
