// The properties that the object model shows of one kind of object: by name, and by position. Some are stored in the
// design, some follow from the object, and a few have a name but no value that a design could tell.
#pragma once

#include "access/name_table.h"
#include "access/property_positions.h"
#include "platform/access.h"

namespace relvane::access {

class ModelClass {
public:
    // The class of a form, report, section, group level or control; it lives as long as the program.
    static const ModelClass& of(const DesignObject& object);

    // The value of a property of an object of this class. Error 438 when the class has no such property.
    // Texts are never Null, a place or a size neither; Null is a picture or other data that is not there, and a number
    // whose built-in value is not known. Data comes as Bytes.
    Value value(const DesignObject& object, TextView name) const;

    // As in Access 97, whatever the version: analyses tell by it where a control stands, and so where its events are.
    int count() const { return count_; }
    // With the properties of later versions, which stand behind those.
    int countWithLater() const { return static_cast<int>(places_.size()); }
    // As Properties::Item. Data is an empty text here: who lists values by position prints them.
    Property at(const DesignObject& object, int position) const;

private:
    struct Member {
        TextView name;
        const PropertyFact* stored = nullptr;
        Value (*computed)(const DesignObject&) = nullptr; // goes before what is stored
        Value whenUnknown{};                              // neither stored nor built in
        bool isLater() const;                             // than Access 97
        Value valueIn(const DesignObject& object) const;
    };
    struct Place {
        TextView name;                  // empty when it is not certain
        const Member* member = nullptr; // nullptr: an empty text
    };

    // Of all objects of a type that are arranged alike, in designs of one version.
    struct Key {
        DesignType type;
        Arrangement arrangement;
        int version;
        auto operator<=>(const Key&) const = default;
    };
    explicit ModelClass(const Key& key);
    ModelClass(const ModelClass&) = delete;
    void addComputed(DesignType type);
    void addComputed(TextView name, Value (*compute)(const DesignObject&));
    void addStored(const Key& key);
    void addPlaces(std::span<const PropertyPlace> places); // of the members there are
    bool isFirstOfName(const Member& member) const;
    const Member* find(TextView name) const;

    std::vector<Member> members_;
    NameTable names_; // of members_
    std::vector<Place> places_;
    int count_ = 0; // of the first places

    friend class ModelClasses;
};

} // namespace relvane::access
