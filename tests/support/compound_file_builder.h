// Compound files for tests: storages and streams by their paths, put together as the format has it. The same calls give
// the same bytes.
#pragma once

#include <algorithm>
#include <vector>

#include "platform/text.h"
#include "platform/value.h"

namespace relvane::test {

class CompoundFileBuilder {
public:
    static constexpr std::uint32_t none = 0xFFFFFFFF, endOfChain = 0xFFFFFFFE;
    static constexpr std::size_t miniSectorSize = 64, shortestInSectors = 4096, entrySize = 128;

    // 9 for version 3 of the format, 12 for version 4.
    explicit CompoundFileBuilder(unsigned sectorShift = 9) : shift_(sectorShift) {
        items_.push_back({.name = u"Root Entry", .isStorage = true});
    }

    // "VBA/VBAProject": the storages on the way come into being. Entries are numbered as they come, from 1.
    CompoundFileBuilder& storage(TextView path) {
        add(path, true);
        return *this;
    }
    CompoundFileBuilder& stream(TextView path, Bytes content) {
        items_[add(path, false)].content = std::move(content);
        return *this;
    }

    // First the sectors of the table, with that of its list where it has one, then the directory.
    Bytes bytes() {
        const Bytes body = layOut();
        Bytes all(sectorSize());
        writeHeader(all);
        all.insert(all.end(), body.begin(), body.end());
        return all;
    }
    std::size_t sectorSize() const { return std::size_t{1} << shift_; }
    // Where an entry of the directory and the number behind a sector in the table stand; of the last bytes().
    std::size_t entryPlace(std::size_t id) const { return place(directory_) + entrySize * id; }
    std::size_t nextPlace(std::size_t sector) const { return place(0) + 4 * sector; }
    std::uint32_t directorySector() const { return directory_; }

private:
    struct Item {
        Text name{};
        bool isStorage = false;
        Bytes content{};
        std::uint32_t left = none, right = none, child = none, first = endOfChain;
    };

    std::size_t perSector() const { return sectorSize() / 4; }
    std::size_t place(std::uint32_t sector) const { return sectorSize() * (sector + std::size_t{1}); }

    std::size_t add(TextView path, bool isStorage) {
        std::size_t storage = 0;
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

    // The entries of a storage are a binary tree, shorter names first.
    std::size_t addTo(std::size_t storage, TextView name, bool isStorage) {
        std::uint32_t* link = &items_[storage].child;
        const auto keyOf = [](TextView text) { return std::pair(text.size(), upperCase(text)); };
        while (*link != none) {
            Item& item = items_[*link];
            if (keyOf(name) == keyOf(item.name)) {
                return *link;
            }
            link = keyOf(name) < keyOf(item.name) ? &item.left : &item.right;
        }
        *link = static_cast<std::uint32_t>(items_.size());
        items_.push_back({.name = Text(name), .isStorage = isStorage});
        return items_.size() - 1;
    }

    static void put(Bytes& bytes, std::size_t at, std::uint64_t number, std::size_t count) {
        for (std::size_t i = 0; i < count; ++i) {
            bytes[at + i] = static_cast<std::uint8_t>(number >> (8 * i));
        }
    }
    static void putText(Bytes& bytes, std::size_t at, TextView text) {
        for (const char16_t unit : text) {
            put(bytes, at, unit, 2);
            at += 2;
        }
    }

    std::size_t sectorsFor(std::size_t length) const { return (length + sectorSize() - 1) / sectorSize(); }

    // Appends the content in whole sectors, which follow one another in `next`.
    static std::uint32_t append(Bytes& body, std::vector<std::uint32_t>& next, const Bytes& content,
                                std::size_t size) {
        if (content.empty()) {
            return endOfChain;
        }
        const auto first = static_cast<std::uint32_t>(next.size());
        body.insert(body.end(), content.begin(), content.end());
        body.resize((body.size() + size - 1) / size * size);
        while (next.size() < body.size() / size) {
            next.push_back(static_cast<std::uint32_t>(next.size() + 1));
        }
        next.back() = endOfChain;
        return first;
    }

    Bytes layOut() {
        Bytes miniStream, miniTable;
        std::vector<std::uint32_t> miniNext;
        std::size_t others = sectorsFor(items_.size() * entrySize);
        for (Item& item : items_) {
            if (item.content.size() < shortestInSectors) {
                item.first = append(miniStream, miniNext, item.content, miniSectorSize);
            } else {
                others += sectorsFor(item.content.size());
            }
        }
        miniTable.resize(4 * miniNext.size());
        for (std::size_t i = 0; i < miniNext.size(); ++i) {
            put(miniTable, 4 * i, miniNext[i], 4);
        }
        if (const std::size_t used = miniTable.size() % sectorSize(); used != 0) {
            miniTable.resize(miniTable.size() + sectorSize() - used, 0xFF);
        }
        others += sectorsFor(miniStream.size()) + sectorsFor(miniTable.size());

        tables_ = lists_ = 0;
        while (tables_ * perSector() < tables_ + lists_ + others) {
            ++tables_;
            lists_ = tables_ <= inHeader ? 0 : (tables_ - inHeader + perSector() - 2) / (perSector() - 1);
        }
        Bytes body((tables_ + lists_) * sectorSize());
        std::vector<std::uint32_t> next(tables_ + lists_);
        std::fill_n(next.begin(), tables_, 0xFFFFFFFD);
        std::fill(next.begin() + static_cast<std::ptrdiff_t>(tables_), next.end(), 0xFFFFFFFC);
        directory_ = append(body, next, Bytes(items_.size() * entrySize), sectorSize());
        miniTable_ = append(body, next, miniTable, sectorSize());
        items_[0].first = append(body, next, miniStream, sectorSize());
        for (Item& item : items_) {
            if (item.content.size() >= shortestInSectors) {
                item.first = append(body, next, item.content, sectorSize());
            }
        }
        writeDirectory(body, miniStream.size());
        writeLists(body);
        next.resize(tables_ * perSector(), none);
        for (std::size_t i = 0; i < next.size(); ++i) {
            put(body, 4 * i, next[i], 4);
        }
        return body;
    }

    void writeDirectory(Bytes& body, std::size_t miniStreamSize) {
        for (std::size_t id = 0; id < items_.size(); ++id) {
            const Item& item = items_[id];
            const std::size_t at = directory_ * sectorSize() + entrySize * id;
            putText(body, at, item.name);
            put(body, at + 0x40, 2 * item.name.size() + 2, 2);
            put(body, at + 0x42, id == 0 ? 5 : item.isStorage ? 1 : 2, 1);
            put(body, at + 0x44, item.left, 4);
            put(body, at + 0x48, item.right, 4);
            put(body, at + 0x4C, item.child, 4);
            put(body, at + 0x74, item.first, 4);
            put(body, at + 0x78, id == 0 ? miniStreamSize : item.content.size(), 4);
        }
    }

    void writeLists(Bytes& body) {
        std::size_t table = inHeader;
        for (std::size_t list = 0; list < lists_; ++list) {
            const std::size_t at = (tables_ + list) * sectorSize();
            for (std::size_t i = 0; i + 1 < perSector(); ++i, ++table) {
                put(body, at + 4 * i, table < tables_ ? table : none, 4);
            }
            put(body, at + sectorSize() - 4, list + 1 < lists_ ? tables_ + list + 1 : endOfChain, 4);
        }
    }

    void writeHeader(Bytes& all) const {
        constexpr std::uint8_t signature[] = {0xD0, 0xCF, 0x11, 0xE0, 0xA1, 0xB1, 0x1A, 0xE1};
        std::ranges::copy(signature, all.begin());
        put(all, 0x18, 0x3E, 2);
        put(all, 0x1A, shift_ == 9 ? 3 : 4, 2);
        put(all, 0x1C, 0xFFFE, 2);
        put(all, 0x1E, shift_, 2);
        put(all, 0x20, 6, 2);
        put(all, 0x2C, tables_, 4);
        put(all, 0x30, directory_, 4);
        put(all, 0x38, shortestInSectors, 4);
        put(all, 0x3C, miniTable_, 4);
        put(all, 0x44, lists_ == 0 ? endOfChain : tables_, 4);
        put(all, 0x48, lists_, 4);
        for (std::size_t i = 0; i < inHeader; ++i) {
            put(all, 0x4C + 4 * i, i < tables_ ? i : none, 4);
        }
    }

    static constexpr std::size_t inHeader = 109;

    unsigned shift_;
    std::vector<Item> items_;
    std::size_t tables_ = 0, lists_ = 0; // sectors
    std::uint32_t directory_ = 0, miniTable_ = 0;
};

} // namespace relvane::test
