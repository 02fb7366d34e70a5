// Where things stand in a Jet database file: the one table of the format's numbers. Offsets are bytes, counted
// from the start of the page or record named; integers are little-endian. Jet 3 is Access 97; Jet 4 is Access
// 2000 and, with the same pages, the ACE files of 2007 and later. docs/formats.md shows the records whole.
#pragma once

// The tables are easier to read in columns.
// clang-format off

#include <array>
#include <cstddef>
#include <cstdint>

namespace relvane::jet {

// ---- Page 0, the header. The same in both versions but for the lengths in JetFormat::Header.

namespace header {
constexpr std::size_t signature = 0x04; // 16 bytes: "Standard Jet DB" or "Standard ACE DB", NUL
constexpr std::size_t version = 0x14;   // u8: 0 Jet 3, 1 Jet 4, 2 and up ACE
constexpr std::size_t masked = 0x18;    // from here on XORed with `mask`
constexpr std::size_t globalMap = 0x18; // row pointers of two page maps: free pages, and a second one
constexpr std::size_t globalMap2 = 0x1C;
constexpr std::size_t systemTables = 0x20; // u32 each: pages of MSysObjects, MSysACEs, MSysQueries, MSysRelationships
constexpr std::size_t sortOrder = 0x3A;    // u16: locale of the sort order (Jet 3)
constexpr std::size_t codePage = 0x3C;     // u16
constexpr std::size_t databaseKey = 0x3E;  // u32: 0 when the pages are plain
constexpr std::size_t password = 0x42;
constexpr std::size_t jet4SortOrder = 0x6E; // u16 locale, then a version in the fourth byte (Jet 4)
constexpr std::size_t creationDate = 0x72; // OLE date (Jet 4); also masks the password there
constexpr std::size_t encryptionLength = 0x299, encryption = 0x29B; // u16, and so many bytes (encrypted ACE files)

// The key stream of the four key bytes C7 DA 39 6B.
constexpr std::array<std::uint8_t, 128> mask = {
    0xb5, 0x6f, 0x03, 0x62, 0x61, 0x08, 0xc2, 0x55, 0xeb, 0xa9, 0x67, 0x72, 0x43, 0x3f, 0x00, 0x9c,
    0x7a, 0x9f, 0x90, 0xff, 0x80, 0x9a, 0x31, 0xc5, 0x79, 0xba, 0xed, 0x30, 0xbc, 0xdf, 0xcc, 0x9d,
    0x63, 0xd9, 0xe4, 0xc3, 0x7b, 0x42, 0xfb, 0x8a, 0xbc, 0x4e, 0x86, 0xfb, 0xec, 0x37, 0x5d, 0x44,
    0x9c, 0xfa, 0xc6, 0x5e, 0x28, 0xe6, 0x13, 0xb6, 0x8a, 0x60, 0x54, 0x94, 0x7b, 0x36, 0xf5, 0x72,
    0xdf, 0xb1, 0x77, 0xf4, 0x13, 0x43, 0xcf, 0xaf, 0xb1, 0x33, 0x34, 0x61, 0x79, 0x5b, 0x92, 0xb5,
    0x7c, 0x2a, 0x05, 0xf1, 0x7c, 0x99, 0x01, 0x1b, 0x98, 0xfd, 0x12, 0x4f, 0x4a, 0x94, 0x6c, 0x3e,
    0x60, 0x26, 0x5f, 0x95, 0xf8, 0xd0, 0x89, 0x24, 0x85, 0x67, 0xc6, 0x1f, 0x27, 0x44, 0xd2, 0xee,
    0xcf, 0x65, 0xed, 0xff, 0x07, 0xc7, 0x46, 0xa1, 0x78, 0x16, 0x0c, 0xed, 0xe9, 0x2d, 0x62, 0xd4};
} // namespace header

// ---- Pages

enum class PageKind : std::uint8_t { Data = 1, Definition = 2, InnerIndex = 3, LeafIndex = 4, Map = 5 };

// The definition pages of the system tables, which every file has in these places.
constexpr std::uint32_t objectsPage = 2, acesPage = 3, queriesPage = 4, relationshipsPage = 5;

// Owner of a page that holds long values: the letters "LVAL".
constexpr std::uint32_t longValueOwner = 0x4C41564C;

// An entry of the row table of a data page.
constexpr std::uint16_t rowPlace = 0x1FFF, rowDeleted = 0x8000, rowMoved = 0x4000;

// ---- Columns

enum class ColumnType : std::uint8_t {
    Boolean = 1, Byte = 2, Integer = 3, Long = 4, Currency = 5, Single = 6, Double = 7, Date = 8,
    Binary = 9, Text = 10, Ole = 11, Memo = 12, Guid = 15, Numeric = 16,
    LongBinary = 17, // as Binary, in tables of newer copies of Access
    Complex = 18, BigInt = 19,
    ExtendedDate = 20,
};

namespace columnFlag {
constexpr std::uint8_t fixed = 0x01, updatable = 0x02, autoNumber = 0x04, system = 0x10, autoGuid = 0x40,
                       hyperlink = 0x80;
}
namespace columnSecondFlag {
constexpr std::uint8_t calculated = 0xC0; // both bits
}
namespace realIndexFlag {
constexpr std::uint8_t unique = 0x01, ignoreNulls = 0x02, required = 0x08;
}
enum class IndexType : std::uint8_t { Plain = 0, PrimaryKey = 1, Foreign = 2 };
// The kind of relation a logical index serves.
enum class IndexSide : std::uint8_t { None = 0, Primary = 1, Foreign = 2 };

constexpr std::uint16_t noColumn = 0xFFFF;
constexpr std::size_t columnsPerIndex = 10; // slots of a real index: column number u16, direction u8 (1 ascending)

constexpr std::uint8_t userTable = 0x4E, systemTable = 0x53;

// A long value's word: the length in the low 30 bits, the place of the data in the two others.
constexpr std::uint32_t longValueLength = 0x3FFFFFFF, longValueInline = 0x80000000, longValueSingle = 0x40000000;
constexpr std::size_t longValueHead = 12; // u32 word, row pointer, 4 unused bytes

// ---- What differs from version to version

struct JetFormat {
    std::size_t pageSize;
    std::size_t textUnit;  // bytes of one unit of a stored text: 1 code page, 2 UTF-16
    std::size_t countSize; // bytes of a row's counts and of an entry of its offset table

    struct Header {
        std::size_t maskedLength, passwordLength;
    } header;
    struct DataPage {
        std::size_t freeBytes, owner, rowCount, rowTable;
    } dataPage;
    struct PageMap {
        std::size_t inlineBytes; // bitmap of a map row of kind 0
    } pageMap;
    struct Definition { // in the joined data of the definition's pages
        std::size_t length, rows, lastAutoNumber, kind, maxColumns, variableColumns, columns, logicalIndexes,
            realIndexes, pageMap, roomMap, end;
        std::size_t indexStatistics; // size of the block per real index behind `end`
        std::size_t distinctKeys;    // in that block
        std::size_t nameLength;      // bytes of the length before a name; it counts bytes
    } definition;
    struct Column {
        std::size_t type, number, variableIndex, ordinal, locale, codePage, precision, scale, complexId, flags,
            secondFlags, fixedOffset, length, size;
    } column;
    struct RealIndex {
        std::size_t columns, map, root, flags, size;
    } realIndex;
    struct LogicalIndex {
        std::size_t number, realIndex, side, otherIndex, otherTable, cascadeUpdates, cascadeDeletes, type, size;
    } logicalIndex;
    struct IndexPage { // the level (0 leaf) stands in the byte behind the prefix length
        std::size_t freeBytes, owner, previous, next, tail, prefixLength, prefixLengthSize, mask, maskEnd,
            firstEntry;
    } indexPage;
    std::uint32_t propertyMagic; // the first four bytes of a property blob
};

// Stands for a field that a version does not have.
constexpr std::size_t absent = static_cast<std::size_t>(-1);

constexpr JetFormat jet3 = {
    .pageSize = 2048,
    .textUnit = 1,
    .countSize = 1,
    .header = {.maskedLength = 126, .passwordLength = 20},
    .dataPage = {.freeBytes = 0x02, .owner = 0x04, .rowCount = 0x08, .rowTable = 0x0A},
    .pageMap = {.inlineBytes = 128},
    .definition = {.length = 8, .rows = 12, .lastAutoNumber = 16, .kind = 20, .maxColumns = 21,
                   .variableColumns = 23, .columns = 25, .logicalIndexes = 27, .realIndexes = 31, .pageMap = 35,
                   .roomMap = 39, .end = 43, .indexStatistics = 8, .distinctKeys = 4, .nameLength = 1},
    .column = {.type = 0, .number = 1, .variableIndex = 3, .ordinal = 5, .locale = 9, .codePage = 11,
               .precision = absent, .scale = absent, .complexId = absent, .flags = 13, .secondFlags = absent,
               .fixedOffset = 14, .length = 16, .size = 18},
    .realIndex = {.columns = 0, .map = 30, .root = 34, .flags = 38, .size = 39},
    .logicalIndex = {.number = 0, .realIndex = 4, .side = 8, .otherIndex = 9, .otherTable = 13,
                     .cascadeUpdates = 17, .cascadeDeletes = 18, .type = 19, .size = 20},
    .indexPage = {.freeBytes = 2, .owner = 4, .previous = 8, .next = 12, .tail = 16, .prefixLength = 20,
                  .prefixLengthSize = 1, .mask = 22, .maskEnd = 0xF8, .firstEntry = 0xF8},
    .propertyMagic = 0x00444B4B, // "KKD"
};

constexpr JetFormat jet4 = {
    .pageSize = 4096,
    .textUnit = 2,
    .countSize = 2,
    .header = {.maskedLength = 128, .passwordLength = 40},
    .dataPage = {.freeBytes = 0x02, .owner = 0x04, .rowCount = 0x0C, .rowTable = 0x0E},
    .pageMap = {.inlineBytes = 64},
    .definition = {.length = 8, .rows = 16, .lastAutoNumber = 20, .kind = 40, .maxColumns = 41,
                   .variableColumns = 43, .columns = 45, .logicalIndexes = 47, .realIndexes = 51, .pageMap = 55,
                   .roomMap = 59, .end = 63, .indexStatistics = 12, .distinctKeys = 4, .nameLength = 2},
    .column = {.type = 0, .number = 5, .variableIndex = 7, .ordinal = 9, .locale = 11, .codePage = absent,
               .precision = 11, .scale = 12, .complexId = 11, .flags = 15, .secondFlags = 16, .fixedOffset = 21,
               .length = 23, .size = 25},
    .realIndex = {.columns = 4, .map = 34, .root = 38, .flags = 46, .size = 52},
    .logicalIndex = {.number = 4, .realIndex = 8, .side = 12, .otherIndex = 13, .otherTable = 17,
                     .cascadeUpdates = 21, .cascadeDeletes = 22, .type = 23, .size = 28},
    .indexPage = {.freeBytes = 2, .owner = 4, .previous = 12, .next = 16, .tail = 20, .prefixLength = 24,
                  .prefixLengthSize = 2, .mask = 27, .maskEnd = 0x1E0, .firstEntry = 0x1E0},
    .propertyMagic = 0x0032524D, // "MR2"
};

// ---- The catalogue

namespace catalogue {
constexpr std::int32_t rootId = 0x0F000000, tablesId = 0x0F000001, databasesId = 0x0F000002,
                       relationshipsId = 0x0F000003;
} // namespace catalogue

enum class ObjectType : std::int16_t {
    Table = 1, Database = 2, Container = 3, OdbcLink = 4, Query = 5, Link = 6, Relation = 8,
    Form = -32768, Macro = -32766, Report = -32764, Module = -32761, UserLayout = -32758,
    DatabaseDocument = -32757, DataAccessPage = -32756,
};

// ---- Property blobs: a magic number, then chunks of length u32 (its six bytes counted), kind u16, body

namespace propertyChunk {
constexpr std::uint16_t ofObject = 0x00, ofColumn = 0x01, names = 0x80;
}

} // namespace relvane::jet
