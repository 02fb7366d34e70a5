#include "access/design_type_info.h"

#include <algorithm>

#include "access/design_bytes.h"
#include "access/design_tree.h"
#include "platform/codepage.h"

namespace relvane::access {
namespace {

constexpr std::uint32_t magic = 0xACCDEAF7;
constexpr std::uint32_t noParent = 0xFFFFFFFF;
constexpr std::size_t interfaceIdSize = 16;

} // namespace

TypeInfo readTypeInfo(std::span<const std::uint8_t> bytes, int codePage, TextView owner) {
    DesignBytes reader(bytes, owner, u"名前の一覧");
    const auto require = [&](bool holds, std::size_t offset) {
        if (!holds) {
            reader.fail(offset, u"見出しが正しくありません");
        }
    };
    require(reader.u32() == magic, 0);
    const auto type = static_cast<DesignType>(reader.u8());
    require(isRoot(type), 4);
    TypeInfo list;
    list.isReport = reader.u8() == 1;
    require(list.isReport == (type == DesignType::Report), 5);
    reader.u16(); // left over from memory
    require(reader.u32() == noParent, 8);
    const std::uint32_t count = reader.u32();
    reader.take(interfaceIdSize);
    for (std::uint32_t i = 0; i < count; ++i) {
        TypeInfoEntry& entry = list.entries.emplace_back();
        entry.type = reader.u8();
        entry.classCode = reader.u8();
        reader.u16(); // left over from memory
        entry.index = reader.u32();
        entry.prefix = decode(reader.zeroTerminated(), codePage);
        entry.name = decode(reader.zeroTerminated(), codePage);
        if (entry.name.empty()) {
            entry.name = entry.prefix;
        }
        if (entry.type == static_cast<std::uint8_t>(DesignType::CustomControl)) {
            reader.take(libraryReferenceSize);
        }
    }
    if (!reader.atEnd()) {
        reader.fail(reader.offset(), u"終わりの後にデータがあります");
    }
    return list;
}

bool agrees(const TypeInfo& list, const Design& design) {
    std::vector<const DesignObject*> members;
    const auto collect = [&](const auto& self, const DesignObject& object) -> void {
        for (const DesignObject* child : object.children()) {
            if (child->section() != nullptr) {
                members.push_back(child);
                self(self, *child);
            }
        }
    };
    collect(collect, design.root());

    std::vector<const TypeInfoEntry*> entries;
    for (const TypeInfoEntry& entry : list.entries) {
        if (!entry.isField()) {
            entries.push_back(&entry);
        }
    }
    const auto keyOfMember = [](const DesignObject* member) {
        return std::pair(static_cast<std::uint8_t>(member->type()), TextView(member->name()));
    };
    const auto keyOfEntry = [](const TypeInfoEntry* entry) {
        return std::pair(entry->type, TextView(entry->name));
    };
    std::ranges::sort(members, {}, keyOfMember);
    std::ranges::sort(entries, {}, keyOfEntry);
    const auto isOf = [&](const DesignObject* member, const TypeInfoEntry* entry) {
        const auto prefix = member->value(u"EventProcPrefix");
        return keyOfMember(member) == keyOfEntry(entry) &&
               (!prefix || !isNotEmptyText(*prefix) || toText(*prefix) == entry->prefix);
    };
    return std::ranges::equal(members, entries, isOf) && list.isReport == design.isReport();
}

} // namespace relvane::access
