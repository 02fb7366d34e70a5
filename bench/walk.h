// The walk over everything that DAO tells about a database: definitions, properties, queries with their texts and
// fields, documents, relations. Also for profiling the reader.
#pragma once

#include <string>

#include "jet/open_database.h"
#include "platform/native_path.h"

namespace relvane::bench {

class Walk {
public:
    // The number of values that were read.
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
    void fields(const dao::Collection<dao::Field>& all) {
        for (const auto& field : all) {
            read(field->Name(), field->Type(), field->Size(), field->Attributes(), field->AllowZeroLength(),
                 field->Required(), field->DefaultValue(), field->ValidationRule(), field->ValidationText(),
                 field->OrdinalPosition(), field->SourceField(), field->SourceTable());
            properties(field->Properties());
        }
    }

    std::size_t values_ = 0;
};

inline std::size_t walk(const std::string& path) {
    const auto database = jet::openDatabase(textOfNativePath(path));
    return Walk().run(*database);
}

} // namespace relvane::bench
