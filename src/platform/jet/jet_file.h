// An open database file below any object model: its pages, its catalogue, and the rows of its tables. What DAO
// answers (open_database.h) and what Access keeps in the file beside it are both read through this class.
#pragma once

#include <memory>
#include <unordered_map>

#include "jet/catalogue.h"
#include "jet/query_rows.h"

namespace relvane::jet {

// One row of MSysRelationships: a pair of fields of a relation.
struct RelationRow {
    Text name;         // of the relation
    Text table, field; // primary side
    Text foreignTable, foreignField;
    std::int32_t position = 0, attributes = 0;
};

class JetFile {
public:
    // Errors: 3343 no Jet database; 3031 the file has another password; 3161 its pages do not decode; 3049.
    explicit JetFile(std::unique_ptr<ByteSource> source, TextView password = {});
    JetFile(const JetFile&) = delete;
    JetFile& operator=(const JetFile&) = delete;

    const PageFile& pages() const { return pages_; }
    const FileHeader& header() const { return pages_.header(); }
    const Catalogue& catalogue() const { return *catalogue_; }

    // A local table, read at the first call. Error 3049 when its definition is damaged.
    const Table& table(const CatalogueEntry& entry) const;
    // Nullptr when the file has no local table of that name.
    const Table* findTable(TextView name) const;

    // The rows of a saved query in their order; empty when there are none.
    const std::vector<QueryRow>& queryRows(const CatalogueEntry& query) const;
    const std::vector<RelationRow>& relations() const; // in stored order

    // The table that stands for the kind of a complex column's values ("MSysComplexType_Attachment"), by
    // Column::complexId; empty when the file does not tell.
    Text complexType(std::uint32_t complexId) const;

private:
    const Table& tableAt(std::uint32_t page) const;
    using Queries = std::unordered_map<std::int32_t, std::vector<QueryRow>>; // by object
    Queries readQueries() const;

    PageFile pages_;
    std::unique_ptr<Catalogue> catalogue_;
    mutable std::unordered_map<std::uint32_t, std::unique_ptr<Table>> tables_; // by definition page
    mutable std::optional<Queries> queries_;
    mutable std::optional<RunTimeError>
        queriesFault_; // of a damaged table, which is not read again for each query
    mutable std::optional<std::vector<RelationRow>> relations_;
    mutable std::optional<std::unordered_map<std::uint32_t, Text>> complexTypes_;
};

// Opens a file by the system's own path; the errors of openByteFile too.
std::shared_ptr<JetFile> openJetFile(const std::string& path, TextView password);

} // namespace relvane::jet
