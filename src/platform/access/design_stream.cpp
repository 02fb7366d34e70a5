#include "access/design_stream.h"

#include <algorithm>

#include "access/design_bytes.h"

namespace relvane::access {
namespace {

using namespace design_format;

class StreamReader {
public:
    StreamReader(std::span<const std::uint8_t> stream, TextView owner) : bytes_(stream, owner) {}

    StoredDesign read() {
        StoredDesign design{readVersion(), {}};
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
            const std::uint8_t id = bytes_.u8();
            if (classOf(id) == ValueClass::Tail) {
                readChildren(object, id, level);
                return;
            }
            if (!object.values.empty() && object.values.back().id >= id) {
                bytes_.fail(at, u"プロパティの順序が正しくありません");
            }
            object.values.push_back(readValue(id));
        }
    }

    // A count says nothing about memory: an object is made when its bytes are there.
    void readChildren(StoredObject& object, std::uint8_t tail, std::size_t level) {
        const std::size_t count = tail == noChildren ? 0 : tail == oneChild ? 1 : bytes_.u16();
        for (std::size_t i = 0; i < count; ++i) {
            if (bytes_.atEnd()) {
                bytes_.fail(bytes_.offset(), u"子の数が足りません");
            }
            readObject(object.children.emplace_back(), level + 1);
        }
    }

    StoredValue readValue(std::uint8_t id) {
        StoredValue value{id, 0, {}};
        switch (classOf(id)) {
        case ValueClass::Byte:
            value.number = bytes_.u8();
            break;
        case ValueClass::Word:
            value.number = static_cast<std::int16_t>(bytes_.u16());
            break;
        case ValueClass::Long:
            value.number = static_cast<std::int32_t>(bytes_.u32());
            break;
        case ValueClass::Variable:
            value.bytes = bytes_.copy(readLength());
            break;
        case ValueClass::Flag:
        case ValueClass::Tail:
            break;
        }
        return value;
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

    DesignBytes bytes_;
};

} // namespace

const StoredValue* StoredObject::find(PropertyId id) const {
    const auto found = std::ranges::lower_bound(values, id, {}, &StoredValue::id);
    return found == values.end() || found->id != id ? nullptr : &*found;
}

StoredDesign readDesignStream(std::span<const std::uint8_t> stream, TextView owner) {
    return StreamReader(stream, owner).read();
}

} // namespace relvane::access
