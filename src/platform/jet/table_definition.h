// The definition of a table: its columns and indexes as the file describes them.
#pragma once

#include <vector>

#include "jet/page_file.h"

namespace relvane::jet {

struct Column {
    Text name;
    ColumnType type{};
    std::uint16_t number = 0; // its bit in a row's null mask; numbers of deleted columns stay unused
    std::uint16_t variableIndex = 0;
    std::uint16_t ordinal = 0;
    int codePage = 0;                        // Jet 3; 0 in newer files
    std::uint8_t precision = 0, scale = 0;   // Numeric
    std::uint32_t complexId = 0;             // Complex: which row of MSysComplexColumns tells its kind
    std::uint8_t flags = 0, secondFlags = 0; // columnFlag
    std::uint16_t fixedOffset = 0;           // behind a row's count of columns
    std::uint16_t length = 0;                // bytes; 0 for long values

    bool has(std::uint8_t flag) const { return (flags & flag) != 0; }
    bool isCalculated() const {
        return (secondFlags & columnSecondFlag::calculated) == columnSecondFlag::calculated;
    }
    bool isLongValue() const { return type == ColumnType::Memo || type == ColumnType::Ole; }
};

// A tree of keys on disk. Several logical indexes may share one.
struct RealIndex {
    struct Entry {
        std::uint16_t column = 0; // Column::number
        bool ascending = true;
    };
    std::vector<Entry> entries;
    std::uint32_t root = 0; // page
    std::uint8_t flags = 0; // realIndexFlag
    std::uint32_t distinctKeys = 0;
};

struct LogicalIndex {
    Text name;
    std::uint32_t number = 0;
    std::size_t realIndex = 0; // position in TableDefinition::realIndexes
    IndexSide side{};
    std::uint32_t otherIndex = 0,
                  otherTable = 0; // of a relation: index number and definition page over there
    IndexType type{};

    // The primary side's own indexes for relations, which DAO does not show.
    bool isInternal() const { return !name.empty() && name.front() == u'.'; }
};

struct TableDefinition {
    std::uint32_t page = 0; // where it begins, which is also the owner of the table's data pages
    std::uint32_t rowCount = 0, lastAutoNumber = 0;
    std::uint8_t kind = 0; // userTable, systemTable
    std::size_t variableColumns = 0;
    RowPointer pageMap;
    std::vector<Column> columns; // in stored order
    std::vector<RealIndex> realIndexes;
    std::vector<LogicalIndex> logicalIndexes; // in the name order of the file's sort order

    const Column* find(TextView name) const; // without regard to case; nullptr when there is none
    const Column* byNumber(std::uint16_t number) const;
    // By ordinal position and, among equal ones, by name: the order in which fields are shown.
    std::vector<const Column*> columnsInOrder() const;
};

// Error 3049 when the page is no definition or anything in it does not fit.
TableDefinition readTableDefinition(const PageFile& file, std::uint32_t page);

} // namespace relvane::jet
