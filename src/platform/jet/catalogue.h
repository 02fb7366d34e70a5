// The catalogue: the rows of MSysObjects, one for each object of the database.
#pragma once

#include <map>
#include <optional>
#include <vector>

#include "jet/property_blob.h"
#include "jet/table.h"

namespace relvane::jet {

struct CatalogueEntry {
    std::int32_t id = 0;       // of a local table: its definition page in the low 24 bits
    std::int32_t parentId = 0; // id of the container's row
    Text name;
    ObjectType type{};
    std::int32_t flags = 0;
    Value created = Null{}, updated = Null{};
    RowPointer row;

    bool isTable() const {
        return type == ObjectType::Table || type == ObjectType::Link || type == ObjectType::OdbcLink;
    }
    std::uint32_t definitionPage() const { return static_cast<std::uint32_t>(id) & 0xFFFFFF; }
};

class Catalogue {
public:
    // Reads every row but its long values. Errors: 3049, or 3161 when the pages do not decode with the file's key.
    explicit Catalogue(const PageFile& file);

    // In the order of the file's own index on parent and name, which is the order of DAO's collections.
    const std::vector<CatalogueEntry>& entries() const { return entries_; }
    std::vector<const CatalogueEntry*> children(std::int32_t parentId) const;
    const CatalogueEntry* find(ObjectType type, TextView name) const; // nullptr when there is none

    // Columns of an entry's row that are read only when asked for: "Lv", "Database", "Connect" and so on.
    NamedRow row(const CatalogueEntry& entry) const { return {table_, entry.row}; }
    PropertyBlob properties(const CatalogueEntry& entry,
                            PropertyScope scope = PropertyScope::Everything) const; // of the column LvProp

    const Table& table() const { return table_; }
    bool isOrderedByIndex() const { return orderedByIndex_; }
    // One sentence for each row that could not be read.
    const std::vector<Text>& problems() const { return problems_; }

private:
    std::optional<CatalogueEntry> readEntry(RowPointer pointer) const;
    void order();

    const PageFile& file_;
    Table table_;
    std::vector<CatalogueEntry> entries_;
    bool orderedByIndex_ = false;
    std::vector<Text> problems_;
    mutable std::map<RowPointer, std::size_t> blobSizes_; // of the property blobs that were read
    mutable std::uint64_t blobBytes_ = 0;                 // their sum
};

} // namespace relvane::jet
