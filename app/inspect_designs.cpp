#include "inspect_designs.h"

#include "access/design_data.h"
#include "access/model_class.h"
#include "inspect_macros.h"

namespace relvane {
namespace {

using namespace access;

// What an analysis asks of an object whether it is stored or not. A type that lacks one leaves it out.
// clang-format off
constexpr TextView effectiveProperties[] = {
    u"RecordSource", u"Filter", u"OrderBy", u"Caption", u"DefaultView", u"RecordsetType", u"RecordLocks",
    u"AllowEdits", u"AllowDeletions", u"AllowAdditions", u"DataEntry", u"PopUp", u"Modal", u"KeyPreview",
    u"Left", u"Top", u"Width", u"Height", u"Visible", u"Enabled", u"Locked", u"TabStop", u"TabIndex",
    u"BorderStyle", u"BorderWidth", u"ControlSource", u"OptionValue", u"Format", u"InputMask",
    u"DefaultValue", u"ValidationRule", u"ValidationText", u"StatusBarText", u"ControlTipText", u"IMEMode",
    u"IMEHold", u"RowSourceType", u"RowSource", u"ColumnCount", u"BoundColumn", u"LimitToList",
    u"SourceObject", u"LinkChildFields", u"LinkMasterFields", u"SizeMode", u"PictureAlignment",
    u"PictureType", u"SortOrder", u"GroupHeader", u"GroupFooter", u"GroupOn", u"GroupInterval",
    u"KeepTogether",
};
// clang-format on

class DesignWriter {
public:
    DesignWriter(JsonWriter& json, const Design& design) : json_(json), design_(design) {}

    void write(const DesignStreams& streams) {
        json_.beginObject();
        text("place", placeOf(streams));
        number("version", design_.version());
        number("bytes", static_cast<std::int64_t>(streams.design.size()));
        number("addedBytes", static_cast<std::int64_t>(streams.additions.size()));
        writeValues(design_.root());
        writeByPosition(design_.root());
        json_.key("defaultControls");
        json_.beginObject();
        for (const DesignObject* block : design_.defaultBlocks()) {
            json_.key(toUtf8(typeName(*block)));
            json_.beginObject();
            writeStored(*block);
            json_.endObject();
        }
        json_.endObject();
        list("groupLevels", design_.groupLevels(), [&](const DesignObject& level) { writeValues(level); });
        list("sections", design_.sections(), [&](const DesignObject& section) {
            writeHead(section);
            number("sectionIndex", section.sectionIndex());
            writeValues(section);
            writeChildren("controls", section);
        });
        list("others", design_.others(), [&](const DesignObject& object) { writeControl(object); });
        json_.key("unknown");
        json_.beginArray();
        for (const Text& place : unknown_) {
            json_.text(place);
        }
        json_.endArray();
        json_.endObject();
    }

private:
    static TextView placeOf(const DesignStreams& streams) {
        switch (streams.place) {
        case DesignPlace::Catalogue:
            return u"MSysObjects.LvExtra";
        case DesignPlace::ModuleRow:
            return u"MSysModules2.Form";
        case DesignPlace::Store:
            return streams.path;
        }
        return {};
    }

    void writeHead(const DesignObject& object) {
        if (!isKnown(object.type())) {
            unknown_.push_back(typeName(object));
        }
        text("type", typeName(object));
        number("typeCode", static_cast<int>(object.type()));
        text("name", object.name());
    }

    void writeControl(const DesignObject& control) {
        writeHead(control);
        number("controlType", controlTypeOf(control.type()));
        json_.key("isInOptionGroup");
        json_.boolean(control.isInOptionGroup());
        writeValues(control);
        writeByPosition(control);
        writeChildren("children", control);
    }

    void writeChildren(const char* name, const DesignObject& object) {
        list(name, object.children(), [&](const DesignObject& child) { writeControl(child); });
    }

    void writeValues(const DesignObject& object) {
        writeStored(object);
        json_.key("effective");
        json_.beginObject();
        for (const TextView name : effectiveProperties) {
            if (const auto value = object.value(name)) {
                json_.key(toUtf8(name));
                json_.value(*value);
            }
        }
        json_.endObject();
    }

    // Place after place, as the analyses find them, and behind them what later versions added.
    void writeByPosition(const DesignObject& object) {
        const ModelClass& model = ModelClass::of(object);
        json_.key("byPosition");
        json_.beginArray();
        for (int position = 0; position < model.countWithLater(); ++position) {
            const Property property = model.at(object, position);
            json_.beginObject();
            text("name", property.Name);
            json_.key("value");
            json_.value(property.Value);
            json_.endObject();
        }
        json_.endArray();
    }

    void writeStored(const DesignObject& object) {
        json_.key("properties");
        json_.beginArray();
        for (const StoredValue& value : object.storedValues()) {
            const PropertyFact* fact = object.factOf(value);
            json_.beginObject();
            text("id", hex(value.id, 2));
            if (value.property != PropertyNumber::Unstated) {
                text("number", hex(static_cast<unsigned>(value.property), 3));
            }
            json_.key("name");
            if (fact == nullptr) {
                json_.null();
                if (value.property != PropertyNumber::Separator) {
                    unknown_.push_back(typeName(object) + u"." + hex(value.id, 2));
                }
            } else {
                json_.text(fact->name);
                text("modelName", fact->modelName);
                text("confidence", confidence(fact->confidence));
            }
            json_.key("value");
            json_.value(object.decoded(value));
            if (fact != nullptr && fact->name == u"PictureData") {
                writePicture(value.bytes);
            }
            if (value.kind == ValueKind::Macro) {
                writeEmbeddedMacro(value.bytes);
            }
            json_.endObject();
        }
        json_.endArray();
    }

    void writePicture(const Bytes& bytes) {
        json_.key("picture");
        const auto picture = readPictureData(bytes);
        if (!picture) {
            json_.null();
            return;
        }
        json_.beginObject();
        text("format", format(picture->format));
        number("width", picture->width);
        number("height", picture->height);
        if (picture->format == PictureData::Format::Bitmap) {
            number("bits", picture->bits);
            number("compression", picture->compression);
        }
        json_.endObject();
    }

    void writeEmbeddedMacro(const Bytes& bytes) {
        json_.key("macro");
        if (const auto sheet = readEmbeddedMacro(bytes, design_.codePage())) {
            writeMacroSheet(json_, *sheet, bytes.size());
        } else {
            json_.null();
        }
    }

    static TextView format(PictureData::Format format) {
        switch (format) {
        case PictureData::Format::Bitmap:
            return u"DIB";
        case PictureData::Format::EnhancedMetafile:
            return u"EMF";
        case PictureData::Format::Metafile:
            return u"WMF";
        }
        return {};
    }
    static TextView confidence(Confidence confidence) {
        switch (confidence) {
        case Confidence::Confirmed:
            return u"confirmed";
        case Confidence::Inferred:
            return u"inferred";
        case Confidence::Guess:
            return u"guess";
        }
        return {};
    }
    static Text hex(unsigned number, std::size_t digits) {
        constexpr TextView letters = u"0123456789abcdef";
        Text text;
        for (; number != 0 || text.size() < digits; number /= 16) {
            text.insert(text.begin(), letters[number % 16]);
        }
        return text;
    }
    // A type that nobody has named goes by its number.
    static Text typeName(const DesignObject& object) {
        return object.typeName().empty() ? toText(static_cast<long long>(object.type()))
                                         : Text(object.typeName());
    }

    void text(const char* name, TextView value) {
        json_.key(name);
        json_.text(value);
    }
    void number(const char* name, std::int64_t value) {
        json_.key(name);
        json_.number(value);
    }
    template <class Write>
    void list(const char* name, const std::vector<const DesignObject*>& objects, Write write) {
        json_.key(name);
        json_.beginArray();
        for (const DesignObject* object : objects) {
            json_.beginObject();
            write(*object);
            json_.endObject();
        }
        json_.endArray();
    }

    JsonWriter& json_;
    const Design& design_;
    std::vector<Text> unknown_; // types by number, properties by type and id, as met
};

} // namespace

void writeDesign(JsonWriter& json, const DesignSource& source, const DesignDocument& document) {
    const DesignStreams streams = source.streams(document);
    const auto design = source.design(document);
    DesignWriter(json, *design).write(streams);
}

void writeTypeInfo(JsonWriter& json, const DesignSource& source, const DesignDocument& document) {
    const TypeInfo list = source.typeInfo(document);
    bool agreesWithDesign = false;
    skipErrors([&] { agreesWithDesign = agrees(list, *source.design(document)); });
    json.beginObject();
    json.key("agrees");
    json.boolean(agreesWithDesign);
    json.key("entries");
    json.beginArray();
    for (const TypeInfoEntry& entry : list.entries) {
        json.beginObject();
        const auto number = [&](const char* name, std::int64_t value) {
            json.key(name);
            json.number(value);
        };
        number("type", entry.type);
        number("class", entry.classCode);
        number("index", entry.index);
        json.key("prefix");
        json.text(entry.prefix);
        json.key("name");
        json.text(entry.name);
        json.endObject();
    }
    json.endArray();
    json.endObject();
}

} // namespace relvane
