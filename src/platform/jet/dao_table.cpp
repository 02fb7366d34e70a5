#include "jet/dao_table.h"

#include "jet/dao_field.h"
#include "jet/dao_properties.h"

namespace relvane::jet {
namespace {

constexpr std::int32_t hiddenObject = 8, attachExclusive = 0x10000, attachSavePassword = 0x20000,
                       attachedOdbc = 0x20000000, attachedTable = 0x40000000;

} // namespace

std::int32_t TableDef::Attributes() const {
    const std::int32_t kept = entry_.flags & (attachExclusive | attachSavePassword | hiddenObject);
    switch (entry_.type) {
    case ObjectType::Link:
        return attachedTable | kept;
    case ObjectType::OdbcLink:
        return attachedOdbc | kept;
    default:
        return entry_.flags;
    }
}

const Link& TableDef::link() const {
    if (!link_) {
        link_ = isLink() ? readLink(file_->catalogue(), entry_) : Link();
    }
    return *link_;
}

const std::shared_ptr<const PropertyBlob>& TableDef::stored() const {
    if (!stored_) {
        stored_ = std::make_shared<const PropertyBlob>(file_->catalogue().properties(entry_));
    }
    return stored_;
}

TableDef::Source TableDef::source() const {
    if (!isLink()) {
        return {file_, &entry_, &file_->table(entry_)};
    }
    auto backEnd = openBackEnd_(link());
    const CatalogueEntry* entry = backEnd->catalogue().find(ObjectType::Table, link().table);
    if (entry == nullptr) {
        throw RunTimeError(ErrorNumber::ObjectNotFoundInBackEnd, link().table);
    }
    const Table& table = backEnd->table(*entry);
    return {std::move(backEnd), entry, &table};
}

// The count of the definition, which may be stale: DAO reports it so.
std::int32_t TableDef::RecordCount() const {
    return isLink() ? -1 : static_cast<std::int32_t>(file_->table(entry_).definition().rowCount);
}

const Collection<dao::Field>& TableDef::Fields() {
    if (!fields_) {
        const Source from = source();
        // What was stored about a link's fields here goes before what the back end stores about its own.
        const auto& own = stored();
        const auto theirs =
            isLink() ? std::make_shared<const PropertyBlob>(from.file->catalogue().properties(*from.entry))
                     : own;
        std::vector<std::shared_ptr<dao::Field>> fields;
        for (const Column* column : from.table->definition().columnsInOrder()) {
            ColumnProperties properties = columnProperties(own, column->name);
            if (!properties) {
                properties = columnProperties(theirs, column->name);
            }
            fields.push_back(makeTableField(*column, *from.file, entry_.name, std::move(properties)));
        }
        fields_.emplace(std::move(fields));
    }
    return *fields_;
}

const Collection<dao::Index>& TableDef::Indexes() {
    if (!indexes_) {
        const Source from = source();
        std::vector<std::shared_ptr<dao::Index>> indexes;
        for (const LogicalIndex& index : from.table->definition().logicalIndexes) {
            if (auto shown = makeIndex(from.table->definition(), index)) {
                indexes.push_back(std::move(shown));
            }
        }
        indexes_.emplace(std::move(indexes));
    }
    return *indexes_;
}

namespace {

Value recordCountOf(TableDef& table) {
    std::int32_t count = -1;
    skipErrors([&] { count = table.RecordCount(); }); // a damaged definition must not hide the description
    return std::int64_t{count};
}

constexpr BuiltIn<TableDef> builtIns[] = {
    {u"Name", 10, answerOf<&TableDef::Name>},
    {u"Updatable", 1, answerOf<&TableDef::Updatable>},
    {u"DateCreated", 8, answerOf<&TableDef::DateCreated>},
    {u"LastUpdated", 8, answerOf<&TableDef::LastUpdated>},
    {u"Connect", 12, answerOf<&TableDef::Connect>},
    {u"Attributes", 4, answerOf<&TableDef::Attributes>},
    {u"SourceTableName", 10, answerOf<&TableDef::SourceTableName>},
    {u"RecordCount", 4, recordCountOf},
    {u"ValidationRule", 12, answerOf<&TableDef::ValidationRule>},
    {u"ValidationText", 12, answerOf<&TableDef::ValidationText>},
};

} // namespace

Text TableDef::ValidationRule() const {
    return storedText(&stored()->ofObject, u"ValidationRule");
}
Text TableDef::ValidationText() const {
    return storedText(&stored()->ofObject, u"ValidationText");
}

dao::Properties& TableDef::Properties() {
    if (!properties_) {
        properties_ = propertiesOf(*this, builtIns, &stored()->ofObject);
    }
    return *properties_;
}

} // namespace relvane::jet
