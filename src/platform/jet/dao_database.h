// A database file as DAO answers for it: the realisation behind open_database.h.
#pragma once

#include <functional>
#include <map>
#include <optional>

#include "jet/dao_query.h"
#include "jet/dao_table.h"
#include "jet/open_database.h"

namespace relvane::jet {

class Database : public dao::Database {
public:
    // The file of a link's back end, with the errors of resolveLink.
    using BackEndFinder = std::function<std::string(const Link&)>;

    Database(std::shared_ptr<JetFile> file, Text name, bool updatable, BackEndFinder findBackEnd);

    Text Name() const override { return name_; }
    std::unique_ptr<Recordset> OpenRecordset(TextView tableName) override;
    std::unique_ptr<Recordset> OpenSorted(TextView tableName, std::span<const SortKey> keys,
                                          std::int64_t skip) override;
    void Execute(TextView sql) override; // error 3027
    void copyTo(const Text& path) override;

    Text Version() const override;
    int QueryTimeout() const override { return 60; }
    bool Updatable() const override { return updatable_; }
    int CollatingOrder() const { return file_->header().sortOrder; }
    const Collection<dao::TableDef>& TableDefs() override { return tables_; }
    const Collection<dao::QueryDef>& QueryDefs() override { return queries_; }
    const Collection<dao::Container>& Containers() override { return containers_; }
    const Collection<dao::Relation>& Relations() override;
    dao::Properties& Properties() override;

    std::shared_ptr<const JetFile> file() const { return file_; }

private:
    // What the fields of queries are traced to.
    class Sources : public QuerySources {
    public:
        explicit Sources(Database& database) : database_(database) {}
        std::optional<std::vector<QueryField>> fieldsOfTable(TextView name) override;
        std::optional<SavedQuery> query(TextView name) override;

    private:
        Database& database_;
    };

    TableDef::Source tableSource(TextView name) const; // error 3078
    std::shared_ptr<const JetFile> openBackEnd(const Link& link);

    std::shared_ptr<JetFile> file_;
    Text name_;
    bool updatable_;
    BackEndFinder findBackEnd_;
    Sources sources_{*this};
    QueryFieldResolver fieldResolver_{sources_};
    std::map<Text, std::shared_ptr<TableDef>, std::less<>> tablesByName_; // by capitals
    std::map<Text, const CatalogueEntry*, std::less<>> queriesByName_;
    std::map<std::string, std::shared_ptr<const JetFile>> backEnds_; // by path
    Collection<dao::TableDef> tables_;
    Collection<dao::QueryDef> queries_;
    Collection<dao::Container> containers_;
    std::optional<Collection<dao::Relation>> relations_;
    std::vector<StoredProperty> stored_; // read with the list of properties
    std::optional<dao::Properties> properties_;
};

} // namespace relvane::jet
