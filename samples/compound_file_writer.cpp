#include "sample_builder/compound_file_writer.h"

#include <algorithm>
#include <bit>
#include <stdexcept>

#include "sample_builder/byte_writer.h"

namespace relvane::samples {

namespace {

constexpr std::size_t longestName = 31, tablesInHeader = 109;
constexpr std::uint32_t sectorOfTable = 0xFFFFFFFD, sectorOfList = 0xFFFFFFFC;

enum EntryKind : std::uint8_t { Unused = 0, Storage = 1, Stream = 2, Root = 5 };

} // namespace

CompoundFileWriter::CompoundFileWriter(unsigned sectorShift) : shift_(sectorShift) {
    items_.push_back({.name = u"Root Entry", .isStorage = true});
}

CompoundFileWriter& CompoundFileWriter::storage(TextView path) {
    add(path, true);
    return *this;
}

CompoundFileWriter& CompoundFileWriter::stream(TextView path, Bytes content) {
    items_[add(path, false)].content = std::move(content);
    return *this;
}

CompoundFileWriter& CompoundFileWriter::streams(const Streams& streams) {
    for (const auto& [path, content] : streams) {
        if (path.ends_with(u'/')) {
            storage(TextView(path).substr(0, path.size() - 1));
        } else {
            stream(path, content);
        }
    }
    return *this;
}

std::uint32_t CompoundFileWriter::add(TextView path, bool isStorage) {
    std::uint32_t storage = 0;
    for (;;) {
        const std::size_t end = path.find(u'/');
        const bool isLast = end == TextView::npos;
        storage = addTo(storage, path.substr(0, end), isStorage || !isLast);
        if (isLast) {
            return storage;
        }
        path.remove_prefix(end + 1);
    }
}

std::uint32_t CompoundFileWriter::addTo(std::uint32_t storage, TextView name, bool isStorage) {
    if (name.empty() || name.size() > longestName) {
        throw std::invalid_argument("no name for a stream: \"" + toUtf8(name) + '"');
    }
    const auto number = static_cast<std::uint32_t>(items_.size());
    const auto [known, isNew] = numbers_.try_emplace({storage, upperCase(name)}, number);
    if (isNew) {
        items_.push_back({.name = Text(name), .isStorage = isStorage});
        items_[storage].children.push_back(number);
    } else if (items_[known->second].isStorage != isStorage) {
        throw std::invalid_argument(toUtf8(name) + ": a storage and a stream of one name");
    }
    return known->second;
}

std::uint32_t CompoundFileWriter::Sectors::append(const Bytes& content) {
    if (content.empty()) {
        return endOfChain;
    }
    const auto first = static_cast<std::uint32_t>(next.size());
    bytes.insert(bytes.end(), content.begin(), content.end());
    bytes.resize((bytes.size() + size - 1) / size * size);
    while (next.size() < bytes.size() / size) {
        next.push_back(static_cast<std::uint32_t>(next.size() + 1));
    }
    next.back() = endOfChain;
    return first;
}

// The entries of a storage are a red-black tree: shorter names first, then by their capitals.
void CompoundFileWriter::plantTrees() {
    for (Item& storage : items_) {
        std::vector<std::uint32_t> sorted = storage.children;
        std::ranges::sort(sorted, {}, [&](std::uint32_t number) {
            return std::pair(items_[number].name.size(), upperCase(items_[number].name));
        });
        // Halving fills every level but the last one. What stands there is red, so that all ways down have as many
        // black entries.
        storage.child = plant(sorted, 0, sorted.size(), 1, std::bit_width(sorted.size()));
    }
}

std::uint32_t CompoundFileWriter::plant(const std::vector<std::uint32_t>& sorted, std::size_t begin,
                                        std::size_t end, std::size_t level, std::size_t redLevel) {
    if (begin == end) {
        return none;
    }
    const std::size_t middle = begin + (end - begin) / 2;
    Item& item = items_[sorted[middle]];
    item.isRed = level == redLevel && level > 1;
    item.left = plant(sorted, begin, middle, level + 1, redLevel);
    item.right = plant(sorted, middle + 1, end, level + 1, redLevel);
    return sorted[middle];
}

Bytes CompoundFileWriter::bytes() {
    plantTrees();
    Sectors mini{.size = miniSectorSize};
    std::size_t others = sectorsFor(items_.size() * entrySize);
    for (Item& item : items_) {
        if (item.content.size() < shortestInSectors) {
            item.first = mini.append(item.content);
        } else {
            others += sectorsFor(item.content.size());
        }
    }
    ByteWriter miniTable;
    for (const std::uint32_t next : mini.next) {
        miniTable.u32(next);
    }
    while (miniTable.size() % sectorSize() != 0) {
        miniTable.u32(none);
    }
    miniTables_ = sectorsFor(miniTable.size());
    countTables(others + miniTables_ + sectorsFor(mini.bytes.size()));

    Sectors sectors{.size = sectorSize()};
    sectors.bytes.resize((tables_ + lists_) * sectorSize());
    sectors.next.resize(tables_, sectorOfTable);
    sectors.next.resize(tables_ + lists_, sectorOfList);
    directory_ = static_cast<std::uint32_t>(sectors.next.size());
    sectors.append(Bytes(sectorsFor(items_.size() * entrySize) * sectorSize()));
    miniTable_ = sectors.append(miniTable.data());
    items_[0].first = sectors.append(mini.bytes);
    unused_.clear();
    for (Item& item : items_) {
        if (item.content.size() >= shortestInSectors) {
            item.first = sectors.append(item.content);
            const std::size_t end = place(static_cast<std::uint32_t>(sectors.next.size()));
            unused_.emplace_back(place(item.first) + item.content.size(), end);
        }
    }
    std::ranges::copy(directoryBytes(mini.bytes.size()),
                      sectors.bytes.begin() + static_cast<std::ptrdiff_t>(directory_ * sectorSize()));
    writeTable(sectors);
    writeLists(sectors);
    Bytes all = header();
    all.insert(all.end(), sectors.bytes.begin(), sectors.bytes.end());
    return all;
}

// The table has a number for each sector, its own ones and those of its list among them.
void CompoundFileWriter::countTables(std::size_t others) {
    tables_ = lists_ = 0;
    while (tables_ * perSector() < tables_ + lists_ + others) {
        ++tables_;
        lists_ =
            tables_ <= tablesInHeader ? 0 : (tables_ - tablesInHeader + perSector() - 2) / (perSector() - 1);
    }
}

Bytes CompoundFileWriter::directoryBytes(std::size_t miniStreamSize) const {
    ByteWriter directory;
    for (std::size_t number = 0; number < items_.size(); ++number) {
        const Item& item = items_[number];
        const bool isRoot = number == 0;
        for (const char16_t unit : item.name) {
            directory.u16(unit);
        }
        directory.zeros(2 * (longestName + 1 - item.name.size()));
        directory.u16(2 * (item.name.size() + 1));
        directory.u8(isRoot ? Root : item.isStorage ? Storage : Stream);
        directory.u8(item.isRed ? 0 : 1);
        for (const std::uint32_t link : {item.left, item.right, item.child}) {
            directory.u32(link);
        }
        directory.zeros(16 + 4 + 8 + 8); // no class, no state, no times
        directory.u32(item.isStorage && !isRoot ? 0 : item.first);
        directory.u64(isRoot ? miniStreamSize : item.content.size());
    }
    while (directory.size() % sectorSize() != 0) {
        directory.zeros(0x44);
        for (int link = 0; link < 3; ++link) {
            directory.u32(none);
        }
        directory.zeros(entrySize - 0x44 - 12);
    }
    return std::move(directory.data());
}

void CompoundFileWriter::writeTable(Sectors& sectors) const {
    for (std::size_t sector = 0; sector < tables_ * perSector(); ++sector) {
        putAt(sectors.bytes, 4 * sector, sector < sectors.next.size() ? sectors.next[sector] : none, 4);
    }
}

// The sectors of the table for which the header has no room; the last number of each is the next one of the list.
void CompoundFileWriter::writeLists(Sectors& sectors) const {
    std::size_t table = tablesInHeader;
    for (std::size_t list = 0; list < lists_; ++list) {
        const std::size_t at = (tables_ + list) * sectorSize();
        for (std::size_t i = 0; i + 1 < perSector(); ++i, ++table) {
            putAt(sectors.bytes, at + 4 * i, table < tables_ ? table : none, 4);
        }
        const bool isLast = list + 1 == lists_;
        putAt(sectors.bytes, at + sectorSize() - 4, isLast ? endOfChain : tables_ + list + 1, 4);
    }
}

Bytes CompoundFileWriter::header() const {
    constexpr std::uint64_t signature = 0xE11AB1A1E011CFD0;
    constexpr unsigned smallShift = 9, miniShift = 6;
    const bool isSmall = shift_ == smallShift;
    ByteWriter bytes;
    bytes.u64(signature);
    bytes.zeros(16);
    bytes.u16(0x3E); // versions
    bytes.u16(isSmall ? 3 : 4);
    bytes.u16(0xFFFE); // little-endian
    bytes.u16(shift_);
    bytes.u16(miniShift);
    bytes.zeros(6);
    bytes.u32(isSmall ? 0 : sectorsFor(items_.size() * entrySize));
    bytes.u32(tables_);
    bytes.u32(directory_);
    bytes.u32(0);
    bytes.u32(shortestInSectors);
    bytes.u32(miniTable_);
    bytes.u32(miniTables_);
    bytes.u32(lists_ == 0 ? endOfChain : tables_);
    bytes.u32(lists_);
    for (std::size_t i = 0; i < tablesInHeader; ++i) {
        bytes.u32(i < tables_ ? i : none);
    }
    bytes.zeros(sectorSize() - bytes.size());
    return std::move(bytes.data());
}

} // namespace relvane::samples
