// Compound files: storages and streams by their paths, in sectors as OLE keeps documents. The same calls give the same
// bytes.
#pragma once

#include <map>
#include <utility>
#include <vector>

#include "platform/text.h"
#include "platform/value.h"

namespace relvane::samples {

// Streams by their paths, with "/" between the names. A path that ends in "/" is that of a storage with nothing in it.
using Streams = std::vector<std::pair<Text, Bytes>>;

class CompoundFileWriter {
public:
    static constexpr std::uint32_t none = 0xFFFFFFFF, endOfChain = 0xFFFFFFFE;
    static constexpr std::size_t miniSectorSize = 64, shortestInSectors = 4096, entrySize = 128;

    // 9 for version 3 of the format, 12 for version 4.
    explicit CompoundFileWriter(unsigned sectorShift = 9);

    // "VBA/VBAProject": the storages on the way come into being. Entries are numbered as they come, from 1.
    // std::invalid_argument for a name that is empty or longer than 31 characters, and for a stream in a stream.
    CompoundFileWriter& storage(TextView path);
    CompoundFileWriter& stream(TextView path, Bytes content);
    CompoundFileWriter& streams(const Streams& streams);

    // First the sectors of the table, with those of its list where it has one, then the directory, then the streams.
    Bytes bytes();

    // Of the last bytes(), for whoever damages them: where an entry of the directory stands, where the number that
    // follows a sector in the table, and the directory's first sector.
    std::size_t entryPlace(std::size_t id) const { return place(directory_) + entrySize * id; }
    std::size_t nextPlace(std::size_t sector) const { return place(0) + 4 * sector; }
    std::uint32_t directorySector() const { return directory_; }
    std::size_t sectorSize() const { return std::size_t{1} << shift_; }
    // The bytes that no stream fills: from the end of each to that of its last sector.
    const std::vector<std::pair<std::size_t, std::size_t>>& unused() const { return unused_; } // begin, end

private:
    struct Item {
        Text name{};
        bool isStorage = false;
        Bytes content{};
        std::vector<std::uint32_t> children{}; // by number
        std::uint32_t left = none, right = none, child = none, first = endOfChain;
        bool isRed = false;
    };
    // Sectors of one size, one after the other, and which one follows which.
    struct Sectors {
        std::size_t size;
        Bytes bytes{};
        std::vector<std::uint32_t> next{};

        std::uint32_t append(const Bytes& content); // the first sector
    };

    std::size_t place(std::uint32_t sector) const { return sectorSize() * (sector + std::size_t{1}); }
    std::size_t perSector() const { return sectorSize() / 4; }
    std::size_t sectorsFor(std::size_t length) const { return (length + sectorSize() - 1) / sectorSize(); }
    std::uint32_t add(TextView path, bool isStorage);
    std::uint32_t addTo(std::uint32_t storage, TextView name, bool isStorage);
    void plantTrees();
    std::uint32_t plant(const std::vector<std::uint32_t>& sorted, std::size_t begin, std::size_t end,
                        std::size_t level, std::size_t redLevel);
    void countTables(std::size_t others);
    Bytes directoryBytes(std::size_t miniStreamSize) const;
    void writeTable(Sectors& sectors) const;
    void writeLists(Sectors& sectors) const;
    Bytes header() const;

    unsigned shift_;
    std::vector<Item> items_;
    std::map<std::pair<std::uint32_t, Text>, std::uint32_t>
        numbers_;                                         // by the storage and the name in capitals
    std::size_t tables_ = 0, lists_ = 0, miniTables_ = 0; // sectors
    std::uint32_t directory_ = 0, miniTable_ = 0;
    std::vector<std::pair<std::size_t, std::size_t>> unused_;
};

} // namespace relvane::samples
