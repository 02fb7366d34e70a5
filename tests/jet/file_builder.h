// Small byte arrays for the readers of single records, and databases of the builder with a damage at a known place.
#pragma once

#include <cstring>
#include <memory>

#include "jet/jet_file.h"
#include "jet/open_database.h"
#include "jet/query_fields.h"
#include "sample_builder/database_writer.h"

namespace relvane::jet {

// A Jet 3 file of `pages` empty pages with a valid header: the stage for a record that a test puts on page 1.
class BareFile {
public:
    explicit BareFile(std::size_t pages = 3, const JetFormat& format = jet3) : format_(format) {
        bytes_.resize(pages * format.pageSize);
        bytes_[1] = 1;
        std::memcpy(&bytes_[header::signature], "Standard Jet DB", 16);
        bytes_[header::version] = format.textUnit == 1 ? 0 : 1;
        std::copy_n(header::mask.begin(), format.header.maskedLength, bytes_.begin() + header::masked);
        at(0, header::codePage) ^= 0xE4; // 1252
        at(0, header::codePage + 1) ^= 0x04;
    }

    std::uint8_t& at(std::uint32_t page, std::size_t offset) {
        return bytes_[page * format_.pageSize + offset];
    }
    void put16(std::uint32_t page, std::size_t offset, std::uint16_t value) {
        at(page, offset) = static_cast<std::uint8_t>(value);
        at(page, offset + 1) = static_cast<std::uint8_t>(value >> 8);
    }
    void put32(std::uint32_t page, std::size_t offset, std::uint32_t value) {
        put16(page, offset, static_cast<std::uint16_t>(value));
        put16(page, offset + 2, static_cast<std::uint16_t>(value >> 16));
    }

    // Makes `page` a data page of `owner` with these rows; `flags[i]` is added to the place of row i.
    void putRows(std::uint32_t page, std::uint32_t owner, const std::vector<Bytes>& rows,
                 const std::vector<std::uint16_t>& flags = {}) {
        at(page, 0) = static_cast<std::uint8_t>(PageKind::Data);
        at(page, 1) = 1;
        put32(page, format_.dataPage.owner, owner);
        put16(page, format_.dataPage.rowCount, static_cast<std::uint16_t>(rows.size()));
        std::size_t place = format_.pageSize;
        for (std::size_t i = 0; i < rows.size(); ++i) {
            place -= rows[i].size();
            const std::uint16_t flag = i < flags.size() ? flags[i] : std::uint16_t{0};
            put16(page, format_.dataPage.rowTable + 2 * i, static_cast<std::uint16_t>(place | flag));
            std::copy(rows[i].begin(), rows[i].end(), &at(page, place));
        }
    }

    const Bytes& bytes() const { return bytes_; }
    std::unique_ptr<PageFile> open() const { return std::make_unique<PageFile>(makeMemorySource(bytes_)); }

private:
    const JetFormat& format_;
    Bytes bytes_;
};

// The number of the run-time error that the statement ends in, 0 for none.
template <class Statement>
int errorOf(Statement statement) {
    return skipErrors([&] { statement(); });
}

} // namespace relvane::jet
