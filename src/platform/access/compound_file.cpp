#include "access/compound_file.h"

#include <algorithm>
#include <array>

#include "access/design_bytes.h"

namespace relvane::access {
namespace {

constexpr TextView part = u"複合ファイル";

namespace header {
constexpr std::size_t size = 512, sectorShift = 0x1E, miniSectorShift = 0x20, directory = 0x30,
                      shortestInSectors = 0x38, miniTable = 0x3C, tableList = 0x44, tableSectors = 0x4C,
                      tableSectorCount = 109;
constexpr std::array<std::uint8_t, 8> signature = {0xD0, 0xCF, 0x11, 0xE0, 0xA1, 0xB1, 0x1A, 0xE1};
} // namespace header

// The sector sizes of versions 3 and 4 of the format, and that of short streams, as powers of two.
constexpr unsigned shortShift = 9, longShift = 12, miniShift = 6;

constexpr std::uint32_t endOfChain = 0xFFFFFFFE, noSector = 0xFFFFFFFF;

namespace entry {
constexpr std::size_t size = 128, nameUnits = 32, kind = 0x42, left = 0x44, right = 0x48, child = 0x4C,
                      first = 0x74, length = 0x78;
constexpr std::uint32_t none = 0xFFFFFFFF;
} // namespace entry

enum class EntryKind : std::uint8_t { Storage = 1, Stream = 2 };

Text nameOf(const jet::ByteSpan& bytes) {
    Text name;
    for (std::size_t unit = 0; unit < entry::nameUnits && bytes.u16(2 * unit) != 0; ++unit) {
        name += static_cast<char16_t>(bytes.u16(2 * unit));
    }
    return name;
}

} // namespace

void CompoundFile::Sectors::fail(std::uint32_t sector, TextView reason) const {
    failDamagedDesign(owner, part, start + size * sector, reason);
}

std::span<const std::uint8_t> CompoundFile::Sectors::sector(std::uint32_t number) const {
    if (number >= count()) {
        fail(number, u"セクターがありません");
    }
    return jet::ByteSpan(bytes, 0).part(start + size * number, size).bytes();
}

std::vector<std::uint32_t> CompoundFile::Sectors::chain(std::uint32_t first, std::size_t most) const {
    std::vector<std::uint32_t> found;
    std::vector<bool> seen(next.size());
    for (std::uint32_t at = first; at != endOfChain && found.size() < most; at = next[at]) {
        if (at >= next.size()) {
            fail(at, u"セクターの連鎖が途切れています");
        }
        if (seen[at]) {
            fail(at, u"セクターの連鎖が循環しています");
        }
        seen[at] = true;
        found.push_back(at);
    }
    return found;
}

Bytes CompoundFile::Sectors::join(const std::vector<std::uint32_t>& numbers) const {
    Bytes joined;
    for (const std::uint32_t number : numbers) {
        const auto content = sector(number);
        joined.insert(joined.end(), content.begin(), content.end());
    }
    return joined;
}

Bytes CompoundFile::Sectors::read(std::uint32_t first, std::uint64_t length) const {
    if (length > bytes.size()) {
        fail(first, u"ストリームがファイルより長くなっています");
    }
    const auto needed = static_cast<std::size_t>(length);
    Bytes read = join(chain(first, (needed + size - 1) / size));
    if (read.size() < needed) {
        fail(first, u"ストリームが途切れています");
    }
    read.resize(needed);
    return read;
}

Bytes CompoundFile::Sectors::readWhole(std::uint32_t first) const {
    return first == noSector ? Bytes() : join(chain(first, next.size()));
}

CompoundFile::CompoundFile(Bytes bytes, TextView owner) {
    sectors_.owner = miniSectors_.owner = owner;
    sectors_.bytes = std::move(bytes);
    const jet::ByteSpan all(sectors_.bytes, 0);
    if (all.size() < header::size ||
        !std::ranges::equal(all.part(0, header::signature.size()).bytes(), header::signature)) {
        failDamagedDesign(owner, part, 0, u"見出しが正しくありません");
    }
    const unsigned shift = all.u16(header::sectorShift);
    if ((shift != shortShift && shift != longShift) || all.u16(header::miniSectorShift) != miniShift) {
        failDamagedDesign(owner, part, header::sectorShift, u"セクターの大きさが正しくありません");
    }
    sectors_.size = std::size_t{1} << shift;
    sectors_.start = std::min(sectors_.size, all.size()); // the header fills one sector
    miniSectors_.size = std::size_t{1} << miniShift;
    shortestInSectors_ = all.u32(header::shortestInSectors);
    readSectorTable();
    readDirectory();

    const Bytes table = sectors_.readWhole(all.u32(header::miniTable));
    const jet::ByteSpan numbers(table, 0);
    for (std::size_t at = 0; at < numbers.size(); at += 4) {
        miniSectors_.next.push_back(numbers.u32(at));
    }
    miniSectors_.bytes = sectors_.readWhole(extents_[root].length == 0 ? noSector : extents_[root].first);
}

// The header lists the sectors of the table; those of a large file that it has no room for stand in a chain of sectors,
// the last number of each being the next one of the chain.
void CompoundFile::readSectorTable() {
    const jet::ByteSpan all(sectors_.bytes, 0);
    for (std::size_t i = 0; i < header::tableSectorCount; ++i) {
        addToSectorTable(all.u32(header::tableSectors + 4 * i));
    }
    std::uint32_t list = all.u32(header::tableList);
    for (std::size_t read = 0; list != endOfChain && list != noSector; ++read) {
        if (read == sectors_.count()) {
            sectors_.fail(list, u"セクターの連鎖が循環しています");
        }
        const jet::ByteSpan numbers(sectors_.sector(list), 0);
        const std::size_t last = sectors_.size - 4;
        for (std::size_t at = 0; at < last; at += 4) {
            addToSectorTable(numbers.u32(at));
        }
        list = numbers.u32(last);
    }
}

// A table is never longer than the file has sectors, however often it is listed.
void CompoundFile::addToSectorTable(std::uint32_t sector) {
    if (sector == noSector) {
        return;
    }
    const jet::ByteSpan numbers(sectors_.sector(sector), 0);
    for (std::size_t at = 0; at < numbers.size() && sectors_.next.size() < sectors_.count(); at += 4) {
        sectors_.next.push_back(numbers.u32(at));
    }
}

// The entries of a storage are a binary tree: it has one of them as its child, which has others to its left and right.
void CompoundFile::readDirectory() {
    const Bytes directory = sectors_.readWhole(jet::ByteSpan(sectors_.bytes, 0).u32(header::directory));
    const jet::ByteSpan all(directory, 0);
    const auto fail = [&](std::size_t id, TextView reason) {
        failDamagedDesign(sectors_.owner, u"ディレクトリ", id * entry::size, reason);
    };
    const std::size_t count = all.size() / entry::size;
    if (count == 0) {
        fail(root, u"ディレクトリがありません");
    }
    const auto bytesOf = [&](std::size_t id) { return all.part(id * entry::size, entry::size); };
    for (std::size_t id = 0; id < count; ++id) {
        const jet::ByteSpan bytes = bytesOf(id);
        // Version 3 leaves anything in the upper half of the length.
        const bool isLong = sectors_.size == std::size_t{1} << longShift;
        extents_.push_back(
            {bytes.u32(entry::first), isLong ? bytes.u64(entry::length) : bytes.u32(entry::length)});
    }

    struct Link {
        std::uint32_t id, storage;
    };
    std::vector<bool> seen(count);
    seen[root] = true;
    std::vector<Link> open{{bytesOf(root).u32(entry::child), root}};
    while (!open.empty()) {
        const Link link = open.back();
        open.pop_back();
        if (link.id == entry::none) {
            continue;
        }
        if (link.id >= count) {
            fail(link.storage, u"ディレクトリの項目がありません");
        }
        if (seen[link.id]) {
            fail(link.id, u"ディレクトリが循環しています");
        }
        seen[link.id] = true;
        const jet::ByteSpan bytes = bytesOf(link.id);
        const EntryKind kind{bytes.u8(entry::kind)};
        if (kind != EntryKind::Storage && kind != EntryKind::Stream) {
            fail(link.id, u"ディレクトリの項目の種類が違います");
        }
        const bool isStorage = kind == EntryKind::Storage;
        entries_.push_back({nameOf(bytes), link.id, link.storage, isStorage});
        open.push_back({bytes.u32(entry::left), link.storage});
        open.push_back({bytes.u32(entry::right), link.storage});
        if (isStorage) {
            open.push_back({bytes.u32(entry::child), link.id});
        }
    }
}

Bytes CompoundFile::stream(std::uint32_t id) const {
    const Extent extent = id < extents_.size() ? extents_[id] : Extent{};
    if (extent.length == 0) {
        return {};
    }
    return (extent.length < shortestInSectors_ ? miniSectors_ : sectors_).read(extent.first, extent.length);
}

} // namespace relvane::access
