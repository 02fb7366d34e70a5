#include "access/design_stream.h"

#include <algorithm>
#include <iterator>
#include <limits>

#include "access/design_bytes.h"

namespace relvane::access {
namespace {

using namespace design_format;

// The lengths in which a kind of the wide grammar comes, and how the value is kept then.
struct WideForm {
    WideKind kind;
    std::size_t length;
    ValueKind value;
};
constexpr std::size_t anyLength = std::numeric_limits<std::size_t>::max();
constexpr WideForm wideForms[] = {
    {WideKind::Flag, 0, ValueKind::Flag},
    {WideKind::Flag, 1, ValueKind::Boolean},
    {WideKind::Flag, 4, ValueKind::Boolean},
    {WideKind::Byte, 1, ValueKind::Byte},
    {WideKind::Word, 2, ValueKind::Word},
    {WideKind::Word, 4, ValueKind::Long},
    {WideKind::Long, 4, ValueKind::Long},
    {WideKind::Real, 4, ValueKind::Real},
    {WideKind::Date, 8, ValueKind::Date},
    {WideKind::Guid, 16, ValueKind::Guid},
    {WideKind::Text, anyLength, ValueKind::Text},
    {WideKind::Binary, anyLength, ValueKind::Binary},
    {WideKind::LongText, anyLength, ValueKind::Text},
    {WideKind::Macro, anyLength, ValueKind::Macro},
};

bool isTail(std::uint32_t slot) {
    return slot >= noChildren && slot <= manyChildren;
}

class StreamReader {
public:
    StreamReader(std::span<const std::uint8_t> stream, TextView owner, TextView part)
        : bytes_(stream, owner, part) {}

    StoredDesign read() {
        StoredDesign design{readVersion(), {}};
        isWide_ = design.version.grammar == Grammar::Wide;
        readObject(design.root, 1);
        if (!isRoot(design.root.type)) {
            bytes_.fail(design.root.offset, u"フォームでもレポートでもありません");
        }
        if (!bytes_.atEnd()) {
            bytes_.fail(bytes_.offset(), u"終わりの後にデータがあります");
        }
        return design;
    }

private:
    Version readVersion() {
        const std::uint16_t version = bytes_.u16();
        const std::uint16_t required = bytes_.u16();
        const std::uint32_t zero = bytes_.u32();
        const auto* known = std::ranges::find(versions, version, &Version::version);
        if (known == std::end(versions)) {
            Text detail = Text(bytes_.owner()) + u" のデザインのバージョン ";
            detail += toText(static_cast<long long>(version));
            throw RunTimeError(ErrorNumber::UnrecognizedFormat, detail);
        }
        if (required != known->required || zero != 0) {
            bytes_.fail(0, u"見出しが正しくありません");
        }
        return *known;
    }

    void readObject(StoredObject& object, std::size_t level) {
        object.offset = bytes_.offset();
        if (level > deepestLevel) {
            bytes_.fail(object.offset, u"入れ子が深すぎます");
        }
        object.type = static_cast<DesignType>(bytes_.u16());
        for (;;) {
            const std::size_t at = bytes_.offset();
            const std::uint32_t slot = isWide_ ? bytes_.u32() : bytes_.u8();
            if (isTail(slot)) {
                readChildren(object, slot, level);
                return;
            }
            if (slot > std::numeric_limits<PropertyId>::max()) {
                bytes_.fail(at, u"プロパティの位置が正しくありません");
            }
            if (!isWide_ && !object.values.empty() && object.values.back().id >= slot) {
                bytes_.fail(at, u"プロパティの順序が正しくありません");
            }
            StoredValue& value = object.values.emplace_back();
            value.id = static_cast<PropertyId>(slot);
            if (isWide_) {
                readWideValue(value, at);
            } else {
                readCompactValue(value);
            }
        }
    }

    // A count says nothing about memory: an object is made when its bytes are there.
    void readChildren(StoredObject& object, std::uint32_t tail, std::size_t level) {
        const std::size_t count = tail == noChildren ? 0 : tail == oneChild ? 1 : bytes_.u16();
        for (std::size_t i = 0; i < count; ++i) {
            if (bytes_.atEnd()) {
                bytes_.fail(bytes_.offset(), u"子の数が足りません");
            }
            readObject(object.children.emplace_back(), level + 1);
        }
    }

    void readCompactValue(StoredValue& value) {
        switch (classOf(static_cast<std::uint8_t>(value.id))) {
        case ValueClass::Byte:
            return readContent(value, ValueKind::Byte, 1);
        case ValueClass::Word:
            return readContent(value, ValueKind::Word, 2);
        case ValueClass::Long:
            return readContent(value, ValueKind::Long, 4);
        case ValueClass::Variable:
            return readContent(value, ValueKind::Untold, readLength());
        case ValueClass::Flag:
        case ValueClass::Tail:
            break;
        }
    }

    std::size_t readLength() {
        std::size_t length = bytes_.u8();
        if (length == longLength) {
            length = bytes_.u16();
            if (length == veryLongLength) {
                length = bytes_.u32();
            }
        }
        return length;
    }

    // A kind that nobody has met passes as bytes; a known one of another length does not.
    void readWideValue(StoredValue& value, std::size_t at) {
        value.property = static_cast<PropertyNumber>(bytes_.u16());
        const auto kind = static_cast<WideKind>(bytes_.u32());
        bytes_.u32(); // how much memory the value takes
        const std::size_t length = bytes_.u32();
        bool isKnown = false;
        for (const WideForm& form : wideForms) {
            if (form.kind == kind && (form.length == length || form.length == anyLength)) {
                return readContent(value, form.value, length);
            }
            isKnown = isKnown || form.kind == kind;
        }
        if (isKnown) {
            bytes_.fail(at, u"値の長さが正しくありません");
        }
        readContent(value, ValueKind::Untold, length);
    }

    void readContent(StoredValue& value, ValueKind kind, std::size_t length) {
        value.kind = kind;
        switch (kind) {
        case ValueKind::Flag:
            break;
        case ValueKind::Boolean:
            value.number = readNumber(length) == 0 ? 0 : 1;
            break;
        case ValueKind::Byte:
        case ValueKind::Word:
        case ValueKind::Long:
            value.number = readNumber(length);
            break;
        default:
            value.bytes = bytes_.copy(length);
        }
    }

    std::int32_t readNumber(std::size_t length) {
        switch (length) {
        case 1:
            return bytes_.u8();
        case 2:
            return static_cast<std::int16_t>(bytes_.u16());
        default:
            return static_cast<std::int32_t>(bytes_.u32());
        }
    }

    DesignBytes bytes_;
    bool isWide_ = false;
};

bool areAlike(const StoredObject& object, const StoredObject& other) {
    return object.type == other.type && std::ranges::equal(object.children, other.children, areAlike);
}

void appendValues(StoredObject& object, StoredObject& additions) {
    std::ranges::move(additions.values, std::back_inserter(object.values));
    for (std::size_t i = 0; i < object.children.size(); ++i) {
        appendValues(object.children[i], additions.children[i]);
    }
}

} // namespace

const StoredValue* StoredObject::find(PropertyId id) const {
    const auto found = std::ranges::find(values, id, &StoredValue::id);
    return found == values.end() ? nullptr : &*found;
}

StoredDesign readDesignStream(std::span<const std::uint8_t> stream, TextView owner, TextView part) {
    return StreamReader(stream, owner, part).read();
}

bool addLaterProperties(StoredDesign& design, StoredDesign additions) {
    if (!areAlike(design.root, additions.root)) {
        return false;
    }
    appendValues(design.root, additions.root);
    design.addedVersion = additions.version.version;
    return true;
}

} // namespace relvane::access
