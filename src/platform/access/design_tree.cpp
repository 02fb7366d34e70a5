#include "access/design_tree.h"

#include <algorithm>

#include "jet/byte_span.h"
#include "platform/codepage.h"

namespace relvane::access {
namespace {

constexpr TextView rowSourceTypeName = u"RowSourceType", rowSourceTypeNumber = u"RowSourceTypeInt";

// The number beside the text; both are always in English.
TextView rowSourceTypeText(std::int32_t number) {
    switch (number) {
    case 0: // a table, a query or an SQL statement
    case 2: // the same, of a chart
        return u"Table/Query";
    case 1:
        return u"Value List";
    case 10:
        return u"Field List";
    default:
        return {};
    }
}

// A flag whose built-in value nobody knows says no more than that it is there.
bool hasKnownFlag(const PropertyFact* fact) {
    return fact != nullptr && fact->builtIn.kind == BuiltIn::Kind::Boolean;
}

constexpr std::size_t dateSize = 8;

} // namespace

DesignObject::DesignObject(const Design& design, const StoredObject& stored, const DesignObject* parent)
    : design_(&design), stored_(&stored), parent_(parent) {
    const PropertyFact* fact = findProperty(type(), u"Name");
    const StoredValue* name = fact == nullptr ? nullptr : stored.find(fact->id);
    if (name != nullptr) {
        name_ = design.text(name->bytes);
    }
}

const DesignObject* DesignObject::section() const {
    const DesignObject* object = this;
    while (object != nullptr && !isSection(object->type())) {
        object = object->parent_;
    }
    return object;
}

bool DesignObject::isInOptionGroup() const {
    const bool isChoice = type() == DesignType::OptionButton || type() == DesignType::CheckBox ||
                          type() == DesignType::ToggleButton;
    return isChoice && parent_->type() == DesignType::OptionGroup;
}

const DesignObject* DesignObject::attachedLabel() const {
    const auto label = std::ranges::find(children_, DesignType::Label, &DesignObject::type);
    return label == children_.end() ? nullptr : *label;
}

int DesignObject::sectionIndex() const {
    const auto ofLevel = [&](int first) {
        return first + 2 * static_cast<int>(toInteger((*this)[u"BreakLevel"]));
    };
    switch (type()) {
    case DesignType::BreakHeader:
        return ofLevel(5);
    case DesignType::BreakFooter:
        return ofLevel(6);
    default:
        return static_cast<int>(type()) - static_cast<int>(DesignType::Section);
    }
}

const DesignObject* DesignObject::inheritsFrom() const {
    return isControl(type()) && !isDefaultBlock() ? design_->defaultBlock(type()) : nullptr;
}

Value DesignObject::decoded(const StoredValue& value) const {
    const PropertyFact* fact = factOf(value);
    switch (design_format::classOf(static_cast<std::uint8_t>(value.id))) {
    case design_format::ValueClass::Flag:
        return hasKnownFlag(fact) ? this->value(*fact) : Value(true);
    case design_format::ValueClass::Variable:
        break;
    default:
        return std::int64_t{value.number};
    }
    const jet::ByteSpan bytes(value.bytes, 0);
    if (fact == nullptr) {
        return value.bytes;
    }
    if (fact->kind == ValueKind::Text) {
        return design_->text(value.bytes);
    }
    if (fact->kind == ValueKind::Date && bytes.size() == dateSize) {
        if (const auto date = DateTime::fromOleDate(bytes.f64(0))) {
            return *date;
        }
    }
    if (Guid guid; fact->kind == ValueKind::Guid && bytes.size() == guid.bytes.size()) {
        std::ranges::copy(value.bytes, guid.bytes.begin());
        return guid;
    }
    return value.bytes;
}

Value DesignObject::value(const PropertyFact& fact) const {
    if (fact.name == rowSourceTypeName) {
        if (const auto type = rowSourceType(fact)) {
            return *type;
        }
    }
    const DesignObject* block = inheritsFrom();
    const StoredValue* own = stored_->find(fact.id);
    const StoredValue* inherited = block == nullptr ? nullptr : block->stored_->find(fact.id);
    if (hasKnownFlag(&fact)) {
        const bool turned = (own != nullptr) != (inherited != nullptr);
        return (fact.builtIn.number != 0) != turned;
    }
    if (own != nullptr) {
        return decoded(*own);
    }
    return inherited != nullptr ? block->decoded(*inherited) : fact.builtIn.value();
}

// The nearest of text and number; a number without a known meaning says nothing.
std::optional<Value> DesignObject::rowSourceType(const PropertyFact& fact) const {
    const PropertyFact* number = findProperty(type(), rowSourceTypeNumber);
    for (const DesignObject* object : {this, inheritsFrom()}) {
        if (object == nullptr) {
            continue;
        }
        if (const StoredValue* text = object->stored_->find(fact.id)) {
            return object->decoded(*text);
        }
        const StoredValue* stored = number == nullptr ? nullptr : object->stored_->find(number->id);
        if (stored != nullptr && !rowSourceTypeText(stored->number).empty()) {
            return Text(rowSourceTypeText(stored->number));
        }
    }
    return std::nullopt;
}

std::optional<Value> DesignObject::value(TextView name) const {
    const PropertyFact* fact = findProperty(type(), name);
    return fact == nullptr ? std::nullopt : std::optional(value(*fact));
}

Value DesignObject::operator[](TextView name) const {
    auto found = value(name);
    if (!found) {
        throw RunTimeError(ErrorNumber::PropertyNotSupported, name);
    }
    return std::move(*found);
}

std::span<const std::uint8_t> DesignObject::bytes(TextView name) const {
    const PropertyFact* fact = findProperty(type(), name);
    for (const DesignObject* object : {this, inheritsFrom()}) {
        const StoredValue* stored =
            fact == nullptr || object == nullptr ? nullptr : object->stored_->find(fact->id);
        if (stored != nullptr) {
            return stored->bytes;
        }
    }
    return {};
}

Design::Design(StoredDesign stored, int codePage) : stored_(std::move(stored)), codePage_(codePage) {
    const DesignObject& root = add(stored_.root, nullptr);
    for (const DesignObject* child : root.children()) {
        if (isSection(child->type())) {
            sections_.push_back(child);
        } else if (child->type() == DesignType::BreakLevel) {
            groupLevels_.push_back(child);
        } else if (isControl(child->type())) {
            defaultBlocks_.push_back(child);
            blockOfType_.emplace(child->type(), child);
        } else {
            others_.push_back(child);
        }
    }
    for (const DesignObject& object : objects_) {
        if (isControl(object.type()) && object.section() != nullptr) {
            controls_.push_back(&object);
        }
    }
}

DesignObject& Design::add(const StoredObject& stored, const DesignObject* parent) {
    DesignObject& object = objects_.emplace_back(DesignObject(*this, stored, parent));
    object.children_.reserve(stored.children.size());
    for (const StoredObject& child : stored.children) {
        object.children_.push_back(&add(child, &object));
    }
    return object;
}

const DesignObject* Design::defaultBlock(DesignType type) const {
    const auto found = blockOfType_.find(type);
    return found == blockOfType_.end() ? nullptr : found->second;
}

const DesignObject* Design::section(int index) const {
    const auto found = std::ranges::find(sections_, index, &DesignObject::sectionIndex);
    return found == sections_.end() ? nullptr : *found;
}

const DesignObject* Design::findControl(TextView name) const {
    const auto found = std::ranges::find_if(
        controls_, [&](const DesignObject* control) { return equalsIgnoringCase(control->name(), name); });
    return found == controls_.end() ? nullptr : *found;
}

Text Design::text(std::span<const std::uint8_t> bytes) const {
    if (stored_.version.text == design_format::TextForm::CodePage) {
        return decode(bytes, codePage_);
    }
    const jet::ByteSpan span(bytes, 0);
    Text text;
    for (std::size_t i = 0; i + 1 < bytes.size(); i += 2) {
        text += static_cast<char16_t>(span.u16(i));
    }
    return text;
}

} // namespace relvane::access
