// A compound file: a file of storages and streams within bytes, as OLE keeps documents. Access 2000 keeps the designs and
// the VBA project of a database in one.
#pragma once

#include <span>
#include <vector>

#include "platform/text.h"
#include "platform/value.h"

namespace relvane::access {

struct CompoundEntry {
    Text name;
    std::uint32_t id = 0, storage = 0; // its own number, and that of the storage in which it lies
    bool isStorage = false;            // or a stream
};

class CompoundFile {
public:
    static constexpr std::uint32_t root = 0; // the storage that has all others

    // Reads the directory. Error 3049 with the owner and the offset when the bytes are no compound file, or when the
    // header, the directory or a table that it needs does not fit.
    CompoundFile(Bytes bytes, TextView owner);

    // All storages and streams but the root, in no order. Names compare without regard to case.
    const std::vector<CompoundEntry>& entries() const { return entries_; }
    // The bytes of the stream of that number; error 3049 when its chain of sectors is damaged.
    Bytes stream(std::uint32_t id) const;

private:
    // Bytes cut into sectors of one size, and which sector follows which.
    struct Sectors {
        Text owner;
        Bytes bytes;
        std::size_t start = 0, size = 0; // where the first begins; of each, in bytes
        std::vector<std::uint32_t> next;

        std::size_t count() const { return size == 0 ? 0 : (bytes.size() - start) / size; }
        std::span<const std::uint8_t> sector(std::uint32_t number) const;
        // The sectors of a chain, the last one where it says so, or after `most` of them.
        std::vector<std::uint32_t> chain(std::uint32_t first, std::size_t most) const;
        Bytes join(const std::vector<std::uint32_t>& numbers) const;
        Bytes read(std::uint32_t first, std::uint64_t length) const;
        Bytes readWhole(std::uint32_t first) const;
        [[noreturn]] void fail(std::uint32_t sector, TextView reason) const;
    };
    struct Extent {
        std::uint32_t first = 0; // sector
        std::uint64_t length = 0;
    };

    void readSectorTable();
    void addToSectorTable(std::uint32_t sector);
    void readDirectory();

    Sectors sectors_, miniSectors_; // the latter cut the stream of the root, for short streams
    std::uint64_t shortestInSectors_ = 0;
    std::vector<Extent> extents_; // by id
    std::vector<CompoundEntry> entries_;
};

} // namespace relvane::access
