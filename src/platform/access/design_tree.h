// A form or report as its design has it: the objects in stored order, who belongs to whom, and the value of every
// property, whether the object stores it, its form's default block for the type, or neither.
//
// All lengths and places are in twips (1440 to the inch); places of controls are relative to their section, never
// to the control around them. Colours are red + 256 green + 65536 blue; a negative one is a colour of the system,
// whose number stands in the low byte. Events are the text of the property sheet: "[Event Procedure]", the name of
// a macro, or an expression behind "=".
#pragma once

#include <deque>
#include <map>
#include <memory>
#include <optional>

#include "access/design_properties.h"
#include "access/design_stream.h"

namespace relvane::access {

class Design;

// One object of a design: the root, a default block, a group level, a section or a control. It lives as long as its
// Design.
class DesignObject {
public:
    DesignType type() const { return stored_->type; }
    TextView typeName() const { return nameOf(type()); } // empty when the type is unknown
    std::size_t offset() const { return stored_->offset; }
    const Text& name() const { return name_; } // of sections and controls; empty for the others

    const Design& design() const { return *design_; }
    const DesignObject* parent() const { return parent_; }                         // nullptr for the root
    const std::vector<const DesignObject*>& children() const { return children_; } // in stored order
    // Of a control the section around it, of a section itself, of all others nullptr.
    const DesignObject* section() const;
    // A control right below the root is no control but the values that new ones of its type begin with.
    bool isDefaultBlock() const { return isControl(type()) && parent_->parent_ == nullptr; }
    // A choice of an option group: an option button, check box or toggle button right inside one.
    bool isInOptionGroup() const;
    const DesignObject* attachedLabel() const; // nullptr when it has none

    // Section(n) of the object model: 0 detail, 1 and 2 header and footer of the form or report, 3 and 4 those of
    // the page, then 5 and 6 of group level 0, 7 and 8 of level 1 and so on. Only for sections.
    int sectionIndex() const;

    // What the object itself stores, in stored order. A value of a property that nobody has named is a number, or Bytes
    // when it may be anything, or True for a flag; so is a flag whose built-in value is unknown.
    const std::vector<StoredValue>& storedValues() const { return stored_->values; }
    // By the number that stands beside the value, or else by its place; nullptr when nobody has named the property.
    const PropertyFact* factOf(const StoredValue& value) const;
    Value decoded(const StoredValue& value) const;

    // The value of a property by either of its names (findProperty); nothing when the type has no such property in the
    // design's version and the object stores none of that name either.
    // From the object, or else the default block of its type, or else what is built in. Null means that nothing is
    // stored and the built-in value is unknown, or that there is none.
    // RowSourceType is always a text, also where only its number is stored. An event that runs a macro kept in the
    // design itself is "[Embedded Macro]"; the macro stands beside it, under the event's name and "EmMacro".
    std::optional<Value> value(TextView name) const;
    Value value(const PropertyFact& fact) const;
    // The same, for a property that the type surely has: error 438 when it has not.
    Value operator[](TextView name) const;

    // The bytes of a property that holds data (PictureData, OleData, PrtMip ...), from the object or its default
    // block; empty when there are none.
    std::span<const std::uint8_t> bytes(TextView name) const;

private:
    friend class Design;
    DesignObject(const Design& design, const StoredObject& stored, const DesignObject* parent);

    const DesignObject* inheritsFrom() const;                // the default block of a control
    const StoredValue* find(const PropertyFact& fact) const; // what the object itself stores
    bool flag(const PropertyFact& fact) const;
    bool hasEmbeddedMacro(const PropertyFact& event) const;
    std::optional<Value> rowSourceType(const PropertyFact& fact) const;

    const Design* design_;
    const StoredObject* stored_;
    const DesignObject* parent_;
    Text name_;
    std::vector<const DesignObject*> children_;
    std::vector<std::pair<const PropertyFact*, const StoredValue*>> named_; // stored values, rising by fact
};

class Design {
public:
    // `codePage` is the database's: texts of a stream of Access 97 are in it.
    Design(StoredDesign stored, int codePage);
    Design(const Design&) = delete;
    Design& operator=(const Design&) = delete;

    int version() const { return stored_.version.version; }
    // Whose properties the design can have: that of its stream, or of the stream with its later properties.
    int modelVersion() const;
    bool isReport() const { return root().type() == DesignType::Report; }

    const DesignObject& root() const { return objects_.front(); }
    const DesignObject* defaultBlock(DesignType type) const; // nullptr when the design has none
    const std::vector<const DesignObject*>& defaultBlocks() const { return defaultBlocks_; }
    const std::vector<const DesignObject*>& groupLevels() const { return groupLevels_; } // level 0 first
    const std::vector<const DesignObject*>& sections() const { return sections_; }       // as on the screen
    // Objects right below the root whose type nobody has named and that cannot be controls.
    const std::vector<const DesignObject*>& others() const { return others_; }
    const DesignObject* section(int index) const; // by DesignObject::sectionIndex; nullptr when there is none
    // Section after section in stored order, each control before its children: labels, option buttons, pages.
    const std::vector<const DesignObject*>& controls() const { return controls_; }
    const DesignObject*
    findControl(TextView name) const; // without regard to case; nullptr when there is none

    int codePage() const { return codePage_; }
    // Text of bytes of this design.
    Text text(std::span<const std::uint8_t> bytes) const;

private:
    DesignObject& add(const StoredObject& stored, const DesignObject* parent);

    StoredDesign stored_;
    int codePage_;
    std::deque<DesignObject> objects_; // in stored order, the root first
    std::map<DesignType, const DesignObject*> blockOfType_;
    std::vector<const DesignObject*> defaultBlocks_, groupLevels_, sections_, others_, controls_;
};

} // namespace relvane::access
