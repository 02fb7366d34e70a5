#include "access/design_tree.h"

#include <algorithm>

#include "access/design_bytes.h"
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

// Of these the compact grammar does not tell one from the other.
bool isData(ValueKind kind) {
    return kind == ValueKind::Text || kind == ValueKind::Binary || kind == ValueKind::Date ||
           kind == ValueKind::Guid;
}

constexpr std::size_t dateSize = 8;

constexpr TextView embeddedMacro = u"[Embedded Macro]", embeddedMacroEnding = u"EmMacro";

} // namespace

// Of a property that stands twice the compact grammar's value counts, or else the last one.
DesignObject::DesignObject(const Design& design, const StoredObject& stored, const DesignObject* parent)
    : design_(&design), stored_(&stored), parent_(parent) {
    for (const StoredValue& value : stored.values) {
        const PropertyFact* fact = factOf(value);
        if (fact == nullptr) {
            continue;
        }
        const auto place = std::ranges::lower_bound(named_, fact, {}, &decltype(named_)::value_type::first);
        if (place == named_.end() || place->first != fact) {
            named_.emplace(place, fact, &value);
        } else if (place->second->property != PropertyNumber::Unstated) {
            place->second = &value;
        }
    }
    if (const auto name = value(u"Name"); name && std::holds_alternative<Text>(*name)) {
        name_ = std::get<Text>(*name);
    }
}

const PropertyFact* DesignObject::factOf(const StoredValue& value) const {
    const PropertyFact* ofPlace = findProperty(type(), value.id);
    if (value.property == PropertyNumber::Unstated) {
        return ofPlace;
    }
    if (const PropertyFact* ofNumber = findProperty(type(), value.property)) {
        return ofNumber;
    }
    if (const PropertyFact* ofNumber = findProperty(value.property)) {
        return ofNumber;
    }
    const bool isFree = ofPlace != nullptr && ofPlace->number == PropertyNumber::Unstated;
    return isFree ? ofPlace : nullptr;
}

const StoredValue* DesignObject::find(const PropertyFact& fact) const {
    const auto place = std::ranges::lower_bound(named_, &fact, {}, &decltype(named_)::value_type::first);
    return place == named_.end() || place->first != &fact ? nullptr : place->second;
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
    const jet::ByteSpan bytes(value.bytes, 0);
    const bool isToldByProperty = value.kind == ValueKind::Untold && fact != nullptr && isData(fact->kind);
    switch (isToldByProperty ? fact->kind : value.kind) {
    case ValueKind::Flag:
        return hasKnownFlag(fact) ? flag(*fact) : true;
    case ValueKind::Boolean:
        return value.number != 0;
    case ValueKind::Byte:
    case ValueKind::Word:
    case ValueKind::Long:
        return std::int64_t{value.number};
    case ValueKind::Real:
        return bytes.f32(0);
    case ValueKind::Text:
        return design_->text(value.bytes);
    case ValueKind::Date:
        if (bytes.size() == dateSize) {
            if (const auto date = DateTime::fromOleDate(bytes.f64(0))) {
                return *date;
            }
        }
        break;
    case ValueKind::Guid:
        if (Guid guid; bytes.size() == guid.bytes.size()) {
            std::ranges::copy(value.bytes, guid.bytes.begin());
            return guid;
        }
        break;
    case ValueKind::Binary:
    case ValueKind::Macro:
    case ValueKind::Untold:
        break;
    }
    return value.bytes;
}

// The block turns what is built in, the control what the block makes of it; a Boolean says it outright.
bool DesignObject::flag(const PropertyFact& fact) const {
    bool value = fact.builtIn.number != 0;
    for (const DesignObject* object : {inheritsFrom(), this}) {
        if (const StoredValue* stored = object == nullptr ? nullptr : object->find(fact)) {
            value = stored->kind == ValueKind::Flag ? !value : stored->number != 0;
        }
    }
    return value;
}

bool DesignObject::hasEmbeddedMacro(const PropertyFact& event) const {
    return std::ranges::any_of(named_, [&](const auto& named) {
        const TextView name = named.first->name;
        return named.first->kind == ValueKind::Macro && name.starts_with(event.name) &&
               name.substr(event.name.size()) == embeddedMacroEnding;
    });
}

Value DesignObject::value(const PropertyFact& fact) const {
    if (fact.name == rowSourceTypeName) {
        if (const auto type = rowSourceType(fact)) {
            return *type;
        }
    }
    if (hasKnownFlag(&fact)) {
        return flag(fact);
    }
    if (const StoredValue* own = find(fact)) {
        return decoded(*own);
    }
    if (fact.kind == ValueKind::Text && hasEmbeddedMacro(fact)) {
        return Text(embeddedMacro);
    }
    const DesignObject* block = inheritsFrom();
    const StoredValue* inherited = block == nullptr ? nullptr : block->find(fact);
    return inherited != nullptr ? block->decoded(*inherited) : fact.builtIn.value();
}

// The nearest of text and number; a number without a known meaning says nothing.
std::optional<Value> DesignObject::rowSourceType(const PropertyFact& fact) const {
    const PropertyFact* number = findProperty(type(), rowSourceTypeNumber);
    for (const DesignObject* object : {this, inheritsFrom()}) {
        if (object == nullptr) {
            continue;
        }
        if (const StoredValue* text = object->find(fact)) {
            return object->decoded(*text);
        }
        const StoredValue* stored = number == nullptr ? nullptr : object->find(*number);
        if (stored != nullptr && !rowSourceTypeText(stored->number).empty()) {
            return Text(rowSourceTypeText(stored->number));
        }
    }
    return std::nullopt;
}

std::optional<Value> DesignObject::value(TextView name) const {
    const PropertyFact* fact = findProperty(type(), name);
    if (fact != nullptr && (fact->id != noPlace || fact->since <= design_->modelVersion())) {
        return value(*fact);
    }
    fact = findProperty(name); // of another type, but this object may have it all the same
    const StoredValue* own = fact == nullptr ? nullptr : find(*fact);
    return own == nullptr ? std::nullopt : std::optional(decoded(*own));
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
        const StoredValue* stored = fact == nullptr || object == nullptr ? nullptr : object->find(*fact);
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

int Design::modelVersion() const {
    return std::max(
        {int{design_format::access97.version}, int{stored_.version.version}, stored_.addedVersion});
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
    return stored_.version.text == design_format::TextForm::CodePage ? decode(bytes, codePage_)
                                                                     : textOfUtf16(bytes);
}

} // namespace relvane::access
