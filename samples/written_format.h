// The two versions of the file as the builder writes them: the reader's table of places, and what real files hold in
// fields that no reader needs.
#pragma once

// The table is easier to read in columns.
// clang-format off

#include "sample_builder/database_spec.h"

namespace relvane::samples {

struct WrittenFormat {
    const jet::JetFormat& places;

    struct Header {
        std::uint8_t version;
        std::size_t sortOrder;       // place of the locale
        std::size_t creationDate;    // an OLE date, which masks the password
        std::size_t longestPassword; // in bytes
        std::size_t userCounters;    // a counter of transactions for each of the 256 users that can share the file
        std::size_t engineBuild, engineName; // which engine made the file: u32; u32 and a text
    } header;
    struct LongValue {
        std::size_t inlineLimit, longestRow; // what stands in the row by itself; a row of a page of long values
    } longValue;
    struct Definition {
        bool countsRoom;          // the word of a page's head is the free bytes of the page, not "VC"
        bool columnsAsShown;      // columns stand in the order in which they are shown, not of their numbers
        std::size_t mark;         // place of the number behind the length, which columns and logical indexes repeat
        std::size_t autoNumberStep;
        std::size_t columnMark, logicalIndexMark, realIndexMark; // places in their records
        std::uint8_t realIndexFlags;                             // set on every index
    } definition;
    std::size_t longestName; // of a column or an index, in bytes
};

inline constexpr WrittenFormat access97Format = {
    .places = jet::jet3,
    .header = {.version = 0, .sortOrder = jet::header::sortOrder, .creationDate = jet::absent,
               .longestPassword = 14, .userCounters = 0x600, .engineBuild = jet::absent,
               .engineName = jet::absent},
    .longValue = {.inlineLimit = 40, .longestRow = 2036},
    .definition = {.countsRoom = false, .columnsAsShown = false, .mark = jet::absent,
                   .autoNumberStep = jet::absent, .columnMark = jet::absent, .logicalIndexMark = jet::absent,
                   .realIndexMark = jet::absent, .realIndexFlags = 0},
    .longestName = 255,
};

inline constexpr WrittenFormat access2000Format = {
    .places = jet::jet4,
    .header = {.version = 1, .sortOrder = jet::header::jet4SortOrder, .creationDate = jet::header::creationDate,
               .longestPassword = 40, .userCounters = 0xE00, .engineBuild = 0x6A, .engineName = 0x98},
    .longValue = {.inlineLimit = 64, .longestRow = 4076},
    .definition = {.countsRoom = true, .columnsAsShown = true, .mark = 12, .autoNumberStep = 24,
                   .columnMark = 1, .logicalIndexMark = 0, .realIndexMark = 0, .realIndexFlags = 0x80},
    .longestName = 2 * 255,
};

constexpr std::uint32_t definitionMark = 1625, realIndexMark = 1923;

constexpr const WrittenFormat& writtenFormat(FileFormat format) {
    return format == FileFormat::Access97 ? access97Format : access2000Format;
}

} // namespace relvane::samples
