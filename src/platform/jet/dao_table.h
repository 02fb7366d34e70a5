// A table, local or linked, as DAO answers for it.
#pragma once

#include <functional>
#include <optional>

#include "jet/jet_file.h"
#include "jet/links.h"
#include "platform/dao.h"

namespace relvane::jet {

// Opens the back end of a link; the same file again for the same path.
using BackEndOpener = std::function<std::shared_ptr<const JetFile>(const Link&)>;

class TableDef : public dao::TableDef {
public:
    TableDef(std::shared_ptr<const JetFile> file, const CatalogueEntry& entry, BackEndOpener openBackEnd)
        : file_(std::move(file)), entry_(entry), openBackEnd_(std::move(openBackEnd)) {}

    Text Name() const override { return entry_.name; }
    Value DateCreated() const override { return entry_.created; }
    Value LastUpdated() const override { return entry_.updated; }
    std::int32_t Attributes() const override;
    Text Connect() const override { return link().connect; }
    Text SourceTableName() const override { return link().table; }
    std::int32_t RecordCount() const override;
    bool Updatable() const override { return !isLink(); }
    const Collection<dao::Field>& Fields() override;
    const Collection<dao::Index>& Indexes() override;
    dao::Properties& Properties() override;

    Text ValidationRule() const;
    Text ValidationText() const;
    bool isLink() const { return entry_.type != ObjectType::Table; }
    // Where the rows lie: this file and its table, or those of the back end, with the errors of opening it.
    struct Source {
        std::shared_ptr<const JetFile> file;
        const CatalogueEntry* entry;
        const Table* table;
    };
    Source source() const;

private:
    const Link& link() const; // empty for a local table
    const std::shared_ptr<const PropertyBlob>& stored() const;

    std::shared_ptr<const JetFile> file_;
    const CatalogueEntry& entry_;
    BackEndOpener openBackEnd_;
    mutable std::optional<Link> link_;
    mutable std::shared_ptr<const PropertyBlob> stored_;
    std::optional<Collection<dao::Field>> fields_;
    std::optional<Collection<dao::Index>> indexes_;
    std::optional<dao::Properties> properties_;
};

} // namespace relvane::jet
