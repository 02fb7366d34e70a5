#include "access/model_class.h"

#include <algorithm>
#include <map>
#include <memory>

namespace relvane::access {
namespace {

// What follows from an object without being stored under its name.

constexpr std::int64_t bold = 700; // FontWeight

Value nameOfObject(const DesignObject& object) {
    return object.name();
}

Value controlType(const DesignObject& object) {
    return std::int64_t{controlTypeOf(object.type())};
}

Value sectionNumber(const DesignObject& object) {
    const DesignObject* section = object.section();
    return std::int64_t{section == nullptr ? 0 : section->sectionIndex()};
}

// Stored only where it is not the name itself.
Value eventProcPrefix(const DesignObject& object) {
    const auto stored = object.value(u"EventProcPrefix");
    return stored && isNotEmptyText(*stored) ? *stored : Value(object.name());
}

Value fontBold(const DesignObject& object) {
    const Value weight = object[u"FontWeight"];
    const auto* number = std::get_if<std::int64_t>(&weight);
    return number != nullptr && *number >= bold;
}

// A page without a caption shows its name on the tab.
Value captionOfPage(const DesignObject& object) {
    const Value caption = object[u"Caption"];
    return isNotEmptyText(caption) ? caption : Value(object.name());
}

// 0 none, 1 only to minimise, 2 only to maximise, 3 both.
Value minMaxButtons(const DesignObject& object) {
    return std::int64_t{toBoolean(object[u"MinButton"]) ? 1 : 0} + (toBoolean(object[u"MaxButton"]) ? 2 : 0);
}

Value rowSource(const DesignObject& object) {
    return toText(object[u"RowSource"]);
}

Value alwaysTrue(const DesignObject&) {
    return true;
}

Value alwaysFalse(const DesignObject&) {
    return false;
}

template <const char16_t* name>
Value storedOrZero(const DesignObject& object) {
    return object.value(name).value_or(std::int64_t{0});
}

// Numbers that analyses compute with, where the object stores none and the built-in value is not known: a choice without
// a value is 0, and a place or size that nothing tells is taken as 0 rather than as Null, which cannot be measured.
constexpr TextView zeroWhenUnknown[] = {u"OptionValue", u"Left", u"Top", u"Width", u"Height"};

struct Computed {
    TextView name;
    Value (*compute)(const DesignObject&);
};

constexpr Computed ofRoots[] = {{u"MinMaxButtons", minMaxButtons}};
constexpr Computed ofSections[] = {{u"EventProcPrefix", eventProcPrefix}};
constexpr Computed ofControls[] = {{u"EventProcPrefix", eventProcPrefix},
                                   {u"Name", nameOfObject},
                                   {u"ControlType", controlType},
                                   {u"Section", sectionNumber},
                                   {u"InSelection", alwaysFalse}};
// Where a type keeps none of its own: page breaks cannot be hidden in Access 97.
constexpr Computed unlessStored[] = {{u"Visible", alwaysTrue}};
// Where a list takes its rows from, under the name that a subform has for its source: who asks every control that shows
// other objects for its source needs not know which of them it is.
constexpr Computed ofLists[] = {{u"SourceObject", rowSource}};
// Nothing is known of a control of an unknown type, but that it has these. What it stores is found by its number.
constexpr char16_t left[] = u"Left", top[] = u"Top", width[] = u"Width", height[] = u"Height";
constexpr Computed ofUnknownControls[] = {{left, storedOrZero<left>},
                                          {top, storedOrZero<top>},
                                          {width, storedOrZero<width>},
                                          {height, storedOrZero<height>}};

Value whenUnknown(const PropertyFact& fact) {
    if (fact.kind == ValueKind::Text) {
        return Text();
    }
    return std::ranges::find(zeroWhenUnknown, fact.modelName) != std::end(zeroWhenUnknown)
               ? Value(std::int64_t{0})
               : Null{};
}

} // namespace

// All classes there are. They are made together, on the first question.
class ModelClasses {
public:
    ModelClasses() {
        for (const auto& version : design_format::versions) {
            for (const auto arrangement :
                 {Arrangement::WithColumns, Arrangement::WithoutColumns, Arrangement::InOptionGroup}) {
                for (const DesignType type : knownTypes()) {
                    add({type, arrangement, version.version});
                }
                add({unknownControl, arrangement, version.version});
            }
        }
    }
    const ModelClass& of(const DesignObject& object) const {
        return *classes_.at({isKnown(object.type()) ? object.type() : unknownControl, arrangementOf(object),
                             object.design().modelVersion()});
    }

private:
    static constexpr DesignType unknownControl{0}; // stands for all of them: none has properties of its own

    void add(const ModelClass::Key& key) {
        classes_.emplace(key, std::unique_ptr<ModelClass>(new ModelClass(key)));
    }

    std::map<ModelClass::Key, std::unique_ptr<ModelClass>> classes_;
};

const ModelClass& ModelClass::of(const DesignObject& object) {
    static const ModelClasses classes;
    return classes.of(object);
}

ModelClass::ModelClass(const Key& key) {
    const auto places = propertyPlaces(key.type, key.arrangement);
    addComputed(key.type);
    addStored(key);
    for (const PropertyPlace& place : places) {
        if (!place.isSupposed && !place.name.empty()) {
            members_.emplace_back().name = place.name; // for those of which no more is known
        }
    }
    std::vector<TextView> names;
    for (const Member& member : members_) {
        names.push_back(member.name);
    }
    names_ = NameTable(names);
    addPlaces(places);
}

// Its parts one by one: GCC 12 warns, without a reason, where a whole member is moved in.
void ModelClass::addComputed(TextView name, Value (*compute)(const DesignObject&)) {
    Member& member = members_.emplace_back();
    member.name = name;
    member.computed = compute;
}

void ModelClass::addComputed(DesignType type) {
    const auto compute = [&](std::span<const Computed> list) {
        for (const Computed& computed : list) {
            addComputed(computed.name, computed.compute);
        }
    };
    const auto stores = [&](TextView name) { return findProperty(type, name) != nullptr; };
    if (isRoot(type)) {
        compute(ofRoots);
    } else if (isSection(type)) {
        compute(ofSections);
    } else if (isControl(type)) {
        compute(ofControls);
        if (type == DesignType::Page) {
            addComputed(u"Caption", captionOfPage);
        }
        if (type == DesignType::ComboBox || type == DesignType::ListBox) {
            compute(ofLists);
        }
        if (stores(u"FontWeight")) {
            addComputed(u"FontBold", fontBold);
        }
        if (!stores(u"Visible")) {
            compute(unlessStored);
        }
        if (!isKnown(type)) {
            compute(ofUnknownControls);
        }
    }
}

void ModelClass::addStored(const Key& key) {
    for (const auto member : {&PropertyFact::modelName, &PropertyFact::name}) {
        for (const PropertyFact& fact : propertiesOf(key.type)) {
            if (!fact.modelName.empty() && fact.since <= key.version) {
                members_.push_back({fact.*member, &fact, nullptr, whenUnknown(fact)});
            }
        }
    }
}

void ModelClass::addPlaces(std::span<const PropertyPlace> places) {
    for (const PropertyPlace& place : places) {
        places_.push_back(
            {place.isSupposed ? TextView() : place.name, place.showsValue ? find(place.name) : nullptr});
    }
    const auto addMembers = [&](bool later) {
        for (const Member& member : members_) {
            if (member.isLater() == later && isFirstOfName(member)) {
                places_.push_back({member.name, &member});
            }
        }
    };
    if (places.empty()) {
        // The order of this type is not known. Each property has a place all the same: what follows from the object
        // first, the others as they are stored.
        addMembers(false);
    }
    count_ = static_cast<int>(places_.size());
    addMembers(true);
}

bool ModelClass::isFirstOfName(const Member& member) const {
    return find(member.name) == &member;
}

bool ModelClass::Member::isLater() const {
    return stored != nullptr && stored->since > design_format::access97.version;
}

const ModelClass::Member* ModelClass::find(TextView name) const {
    const auto place = names_.find(name);
    return place ? &members_[*place] : nullptr;
}

Value ModelClass::Member::valueIn(const DesignObject& object) const {
    if (computed != nullptr) {
        return computed(object);
    }
    if (stored == nullptr) {
        return Text();
    }
    Value value = object.value(*stored);
    return std::holds_alternative<Null>(value) ? whenUnknown : value;
}

Value ModelClass::value(const DesignObject& object, TextView name) const {
    const Member* member = find(name);
    if (member == nullptr) {
        throw RunTimeError(ErrorNumber::PropertyNotSupported, name);
    }
    return member->valueIn(object);
}

Property ModelClass::at(const DesignObject& object, int position) const {
    if (position < 0 || position >= countWithLater()) {
        return {{}, Text()};
    }
    const Place& place = places_[static_cast<std::size_t>(position)];
    Value value = place.member == nullptr ? Text() : place.member->valueIn(object);
    if (std::holds_alternative<Bytes>(value)) {
        value = Text();
    }
    return {Text(place.name), std::move(value)};
}

} // namespace relvane::access
