#include "sample_builder/property_blob.h"

#include <algorithm>

#include "sample_builder/byte_writer.h"
#include "sample_builder/column_value.h"

namespace relvane::samples {

namespace {

constexpr int textType = 10, memoType = 12;

// Texts that Access keeps as Memo.
constexpr TextView memoProperties[] = {u"Caption", u"DefaultValue", u"Filter",
                                       u"OrderBy", u"RowSource",    u"ValidationRule"};

int typeOf(const PropertySpec& property) {
    if (property.type != 0) {
        return property.type;
    }
    if (std::holds_alternative<Text>(property.value)) {
        return std::ranges::find(memoProperties, property.name) != std::end(memoProperties) ? memoType
                                                                                            : textType;
    }
    constexpr int byAlternative[] = {textType, 1, 4, 6, 7, 5, 0, 8, 15, textType, 9};
    return byAlternative[property.value.index()];
}

Bytes valueBytes(const PropertySpec& property, TextCoding coding) {
    if (std::holds_alternative<Null>(property.value)) {
        return {};
    }
    if (const auto* truth = std::get_if<bool>(&property.value)) {
        return {static_cast<std::uint8_t>(*truth ? 1 : 0)};
    }
    const ColumnSpec column{
        .name = property.name, .type = static_cast<ColumnType>(typeOf(property)), .size = 0xFFFF};
    return storedBytes(property.value, column, coding);
}

class BlobWriter {
public:
    explicit BlobWriter(TextCoding coding) : coding_(coding) {}

    void chunk(std::uint16_t kind, TextView owner, const std::vector<PropertySpec>& properties) {
        ByteWriter body;
        const std::string name = encodeText(owner, coding_);
        body.u32(4 + 2 + name.size()); // the header counts itself
        body.u16(name.size());
        body.text(name);
        for (const PropertySpec& property : properties) {
            const Bytes data = valueBytes(property, coding_);
            body.u16(8 + data.size());
            body.u8(property.needsDesignPermission ? 1 : 0);
            body.u8(static_cast<unsigned>(typeOf(property)));
            body.u16(nameIndex(property.name));
            body.u16(data.size());
            body.bytes(data);
        }
        append(chunks_, kind, body);
    }

    Bytes finish() const {
        ByteWriter names, blob;
        for (const Text& name : names_) {
            const std::string bytes = encodeText(name, coding_);
            names.u16(bytes.size());
            names.text(bytes);
        }
        blob.u32((coding_.wide ? jet::jet4 : jet::jet3).propertyMagic);
        append(blob, jet::propertyChunk::names, names);
        blob.bytes(chunks_.data());
        return blob.data();
    }

private:
    static void append(ByteWriter& out, std::uint16_t kind, const ByteWriter& body) {
        out.u32(6 + body.size());
        out.u16(kind);
        out.bytes(body.data());
    }

    std::size_t nameIndex(const Text& name) {
        const auto found = std::ranges::find(names_, name);
        if (found == names_.end()) {
            names_.push_back(name);
            return names_.size() - 1;
        }
        return static_cast<std::size_t>(found - names_.begin());
    }

    TextCoding coding_;
    std::vector<Text> names_;
    ByteWriter chunks_;
};

} // namespace

std::optional<Bytes> propertyBlob(const std::vector<PropertySpec>& ofObject,
                                  const std::vector<NamedProperties>& ofColumns, TextCoding coding) {
    const auto has = [](const NamedProperties& column) { return !column.second->empty(); };
    if (ofObject.empty() && std::ranges::none_of(ofColumns, has)) {
        return std::nullopt;
    }
    BlobWriter writer(coding);
    writer.chunk(jet::propertyChunk::ofObject, {}, ofObject);
    for (const NamedProperties& column : ofColumns) {
        if (has(column)) {
            writer.chunk(jet::propertyChunk::ofColumn, column.first, *column.second);
        }
    }
    return writer.finish();
}

} // namespace relvane::samples
