// A saved query as DAO answers for it.
#pragma once

#include <optional>

#include "jet/jet_file.h"
#include "jet/query_fields.h"
#include "platform/dao.h"

namespace relvane::jet {

class QueryDef : public dao::QueryDef {
public:
    // `resolver` belongs to the database and outlives the query.
    QueryDef(std::shared_ptr<const JetFile> file, const CatalogueEntry& entry, QueryFieldResolver& resolver)
        : file_(std::move(file)), entry_(entry), resolver_(resolver) {}

    Text Name() const override { return entry_.name; }
    int Type() const override { return entry_.flags & 0xFF; }
    Value DateCreated() const override { return entry_.created; }
    Value LastUpdated() const override { return entry_.updated; }
    Text SQL() override;
    Text Connect() override;
    int ODBCTimeout() const override;
    std::int32_t MaxRecords() const override;
    bool ReturnsRecords() const override;
    bool Updatable() const override { return true; } // speaks of the definition, not of the records
    std::int32_t RecordsAffected() const override { return 0; }
    const Collection<dao::Field>& Fields() override;
    dao::Properties& Properties() override;

private:
    const std::vector<QueryRow>& rows() const { return file_->queryRows(entry_); }
    void refuseAmbiguousJoins() const; // error 3258
    const PropertyBlob& stored() const;

    std::shared_ptr<const JetFile> file_;
    const CatalogueEntry& entry_;
    QueryFieldResolver& resolver_;
    mutable std::optional<PropertyBlob> stored_;
    std::optional<Collection<dao::Field>> fields_;
    std::optional<dao::Properties> properties_;
};

} // namespace relvane::jet
