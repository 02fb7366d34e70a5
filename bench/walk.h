// Two ways to read all that a database file says of itself. Also for profiling.
//
// readWhole: the file's own records, each once: the catalogue, the definition of every table, every stored property,
// the rows of queries and relations.
// walk: the same through the object model that the analyses use, which adds the built-in properties of each object,
// the texts and fields of queries, and documents.
#pragma once

#include <memory>
#include <string>

#include "jet/jet_file.h"
#include "jet/open_database.h"
#include "platform/native_path.h"

namespace relvane::bench {

class Walk {
public:
    std::size_t run(dao::Database& database) {
        properties(database.Properties());
        for (const auto& table : database.TableDefs()) {
            read(table->Name(), table->Attributes(), table->DateCreated(), table->LastUpdated(),
                 table->Connect(), table->SourceTableName(), table->RecordCount(), table->Updatable());
            properties(table->Properties());
            fields(table->Fields());
            for (const auto& index : table->Indexes()) {
                read(index->Name(), index->Primary(), index->Foreign(), index->Unique(), index->IgnoreNulls(),
                     index->Required(), index->Fields().Count());
            }
        }
        for (const auto& query : database.QueryDefs()) {
            read(query->Name(), query->Type(), query->DateCreated(), query->LastUpdated(), query->SQL(),
                 query->Connect(), query->ODBCTimeout(), query->MaxRecords());
            properties(query->Properties());
            fields(query->Fields());
        }
        for (const auto& container : database.Containers()) {
            for (const auto& document : container->Documents()) {
                read(document->Name(), document->DateCreated(), document->LastUpdated());
                properties(document->Properties());
            }
        }
        for (const auto& relation : database.Relations()) {
            read(relation->Name(), relation->Table, relation->ForeignTable, relation->Fields.size());
        }
        return values_;
    }

private:
    template <class... Values>
    void read(const Values&...) {
        values_ += sizeof...(Values);
    }
    void properties(dao::Properties& all) {
        for (int place = 0; place < all.Count(); ++place) {
            read(all.Item(place).Name, all.Item(place).value);
        }
    }
    void fields(const Collection<dao::Field>& all) {
        for (const auto& field : all) {
            read(field->Name(), field->Type(), field->Size(), field->Attributes(), field->AllowZeroLength(),
                 field->Required(), field->DefaultValue(), field->ValidationRule(), field->ValidationText(),
                 field->OrdinalPosition(), field->SourceField(), field->SourceTable());
            properties(field->Properties());
        }
    }

    std::size_t values_ = 0;
};

// Both give the number of values that were read.

inline std::size_t walk(const std::string& path) {
    const auto database = jet::openDatabase(textOfNativePath(path));
    return Walk().run(*database);
}

inline std::size_t readWhole(const std::string& path) {
    const jet::JetFile file(jet::openByteFile(path));
    std::size_t values = file.relations().size();
    for (const jet::CatalogueEntry& entry : file.catalogue().entries()) {
        const jet::PropertyBlob properties = file.catalogue().properties(entry);
        values += properties.ofObject.size();
        for (const auto& column : properties.ofColumns) {
            values += column.properties.size();
        }
        if (entry.type == jet::ObjectType::Table) {
            const jet::TableDefinition& definition = file.table(entry).definition();
            values += definition.columns.size() + definition.logicalIndexes.size();
        } else if (entry.type == jet::ObjectType::Query) {
            values += file.queryRows(entry).size();
        }
    }
    return values;
}

} // namespace relvane::bench
