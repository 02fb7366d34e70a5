// A row store in memory, read-only: tables of values that a test fills in.
#pragma once

#include <map>
#include <vector>

#include "platform/recordset.h"

namespace relvane::test {

struct MemoryTable {
    std::vector<Text> fields;
    std::vector<std::vector<Value>> rows;
};

// Also counts the cursors that are open and that were opened, and remembers the keys of the last sort.
class MemoryStore : public RowStore {
public:
    std::map<Text, MemoryTable> tables;
    int openCursors = 0, opened = 0;
    std::vector<SortKey> lastSort;

    Text Name() const override { return u"memory"; }
    std::unique_ptr<Recordset> OpenRecordset(TextView tableName) override;
    std::unique_ptr<Recordset> OpenSorted(TextView tableName, std::span<const SortKey> keys,
                                          std::int64_t skip) override;
    void Execute(TextView sql) override;
    void copyTo(const Text& path) override;
};

} // namespace relvane::test
