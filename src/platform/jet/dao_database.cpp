#include "jet/dao_database.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>

#include "jet/dao_container.h"
#include "jet/dao_properties.h"
#include "jet/table_recordset.h"
#include "platform/native_path.h"

namespace relvane::jet {
namespace {

// What DAO's Version says, by the version byte of the header.
constexpr std::array<TextView, 7> versions = {u"3.0", u"4.0", u"12.0", u"14.0", u"15.0", u"16.0", u"16.0"};

} // namespace

Database::Database(std::shared_ptr<JetFile> file, Text name, bool updatable, BackEndFinder findBackEnd)
    : file_(std::move(file)),
      name_(std::move(name)),
      updatable_(updatable),
      findBackEnd_(std::move(findBackEnd)) {
    std::vector<std::shared_ptr<dao::TableDef>> tables;
    std::vector<std::shared_ptr<dao::QueryDef>> queries;
    std::vector<std::shared_ptr<dao::Container>> containers;
    for (const CatalogueEntry& entry : file_->catalogue().entries()) {
        if (entry.type == ObjectType::Container) {
            containers.push_back(makeContainer(file_, entry));
        } else if (entry.parentId != catalogue::tablesId) {
            continue;
        } else if (entry.isTable()) {
            auto table = std::make_shared<TableDef>(file_, entry,
                                                    [this](const Link& link) { return openBackEnd(link); });
            tablesByName_.emplace(upperCase(entry.name), table);
            tables.push_back(std::move(table));
        } else if (entry.type == ObjectType::Query) {
            queriesByName_.emplace(upperCase(entry.name), &entry);
            queries.push_back(std::make_shared<QueryDef>(file_, entry, fieldResolver_));
        }
    }
    tables_ = Collection<dao::TableDef>(std::move(tables));
    queries_ = Collection<dao::QueryDef>(std::move(queries));
    containers_ = Collection<dao::Container>(std::move(containers));
}

TableDef::Source Database::tableSource(TextView name) const {
    const auto found = tablesByName_.find(upperCase(name));
    if (found == tablesByName_.end()) {
        throw RunTimeError(ErrorNumber::TableNotFound, name);
    }
    return found->second->source();
}

std::unique_ptr<Recordset> Database::OpenRecordset(TextView tableName) {
    const auto source = tableSource(tableName);
    return openTableRecordset(source.file, *source.table);
}

std::unique_ptr<Recordset> Database::OpenSorted(TextView tableName, std::span<const SortKey> keys,
                                                std::int64_t skip) {
    const auto source = tableSource(tableName);
    return openSortedRecordset(source.file, *source.table, keys, skip);
}

void Database::Execute(TextView) {
    failReadOnly();
}

void Database::copyTo(const Text& path) {
    namespace fs = std::filesystem;
    const std::string target = nativePath(path);
    std::error_code ignored;
    if (fs::equivalent(target, nativePath(name_), ignored)) {
        throw RunTimeError(ErrorNumber::PermissionDenied, path); // the target itself is never written
    }
    std::ofstream copy(target, std::ios::binary | std::ios::trunc);
    Bytes block(1 << 20);
    const ByteSource& source = file_->pages().source();
    for (std::uint64_t at = 0; copy && at < source.size(); at += block.size()) {
        const std::span part =
            std::span(block).first(std::min<std::uint64_t>(block.size(), source.size() - at));
        source.read(at, part);
        copy.write(reinterpret_cast<const char*>(part.data()), static_cast<std::streamsize>(part.size()));
    }
    copy.close();
    if (!copy) {
        throw RunTimeError(ErrorNumber::PermissionDenied, path);
    }
}

Text Database::Version() const {
    return Text(versions.at(static_cast<std::size_t>(file_->header().version)));
}

// One relation for each name, in the order of the catalogue; a name that the catalogue lacks comes behind.
const Collection<dao::Relation>& Database::Relations() {
    if (relations_) {
        return *relations_;
    }
    std::vector<std::shared_ptr<dao::Relation>> relations;
    const auto relationOf = [&](const Text& name) -> std::shared_ptr<dao::Relation>& {
        const auto found = std::ranges::find_if(relations, [&](const auto& relation) {
            return equalsIgnoringCase(relation->RelationName, name);
        });
        if (found != relations.end()) {
            return *found;
        }
        relations.push_back(std::make_shared<dao::Relation>());
        relations.back()->RelationName = name;
        return relations.back();
    };
    for (const CatalogueEntry& entry : file_->catalogue().entries()) {
        if (entry.type == ObjectType::Relation) {
            relationOf(entry.name);
        }
    }
    std::vector<const RelationRow*> rows;
    for (const RelationRow& row : file_->relations()) {
        rows.push_back(&row);
    }
    std::ranges::stable_sort(rows, {}, &RelationRow::position);
    for (const RelationRow* row : rows) {
        dao::Relation& relation = *relationOf(row->name);
        if (relation.Fields.empty()) {
            relation.Table = row->table;
            relation.ForeignTable = row->foreignTable;
            relation.Attributes = row->attributes;
        }
        relation.Fields.push_back({.FieldName = row->field, .ForeignName = row->foreignField});
    }
    // An entry without rows says nothing about any table.
    std::erase_if(relations, [](const auto& relation) { return relation->Fields.empty(); });
    relations_.emplace(std::move(relations));
    return *relations_;
}

namespace {

constexpr BuiltIn<Database> builtIns[] = {
    {u"Name", 12, answerOf<&Database::Name>},
    {u"Connect", 12, [](Database&) { return Value(Text()); }},
    {u"Transactions", 1, [](Database&) { return Value(true); }},
    {u"Updatable", 1, answerOf<&Database::Updatable>},
    {u"CollatingOrder", 3, answerOf<&Database::CollatingOrder>},
    {u"QueryTimeout", 3, answerOf<&Database::QueryTimeout>},
    {u"Version", 12, answerOf<&Database::Version>},
    {u"RecordsAffected", 4, [](Database&) { return Value(std::int64_t{0}); }},
};

} // namespace

dao::Properties& Database::Properties() {
    if (!properties_) {
        if (const CatalogueEntry* entry = file_->catalogue().find(ObjectType::Database, u"MSysDb")) {
            stored_ = file_->catalogue().properties(*entry).ofObject;
        }
        properties_ = propertiesOf(*this, builtIns, &stored_);
    }
    return *properties_;
}

std::shared_ptr<const JetFile> Database::openBackEnd(const Link& link) {
    const std::string path = findBackEnd_(link);
    auto& backEnd = backEnds_[path];
    if (!backEnd) {
        backEnd = openJetFile(path, link.password);
    }
    return backEnd;
}

std::optional<std::vector<QueryField>> Database::Sources::fieldsOfTable(TextView name) {
    const auto table = database_.tablesByName_.find(upperCase(name));
    if (table == database_.tablesByName_.end()) {
        return std::nullopt;
    }
    std::vector<QueryField> fields;
    for (const auto& field : table->second->Fields()) {
        fields.push_back({field->Name(), std::make_shared<FieldOrigin>(FieldOrigin{
                                             .type = field->Type(),
                                             .size = field->Size(),
                                             .allowZeroLength = field->AllowZeroLength(),
                                             .defaultValue = field->DefaultValue(),
                                             .sourceField = field->Name(),
                                             .sourceTable = table->second->Name(),
                                             .expression = {},
                                         })});
    }
    return fields;
}

std::optional<SavedQuery> Database::Sources::query(TextView name) {
    const auto query = database_.queriesByName_.find(upperCase(name));
    if (query == database_.queriesByName_.end()) {
        return std::nullopt;
    }
    return SavedQuery{database_.file_->queryRows(*query->second), query->second->flags};
}

} // namespace relvane::jet
