// A target in memory, built by a test object by object.
#pragma once

#include <optional>
#include <utility>

#include "platform/dao.h"
#include "support/fakes_store.h"

namespace relvane::test {

inline dao::Properties properties(std::vector<std::pair<Text, Value>> values) {
    std::vector<dao::Property> all;
    for (auto& [name, value] : values) {
        dao::Property property;
        property.Name = std::move(name);
        property.value = std::move(value);
        all.push_back(std::move(property));
    }
    return dao::Properties(std::move(all));
}

// The members are named as DAO names them; a test sets what it speaks of.
class FakeField : public dao::Field {
public:
    FakeField(Text name, int type, std::int32_t size) : name(std::move(name)), type(type), size(size) {}
    Text name;
    int type;
    std::int32_t size;
    std::int32_t attributes = 2;
    bool allowZeroLength = false, required = false;
    Text defaultValue, validationRule, validationText, sourceField, sourceTable, expression;
    dao::Properties stored;

    Text Name() const override { return name; }
    int Type() const override { return type; }
    std::int32_t Size() const override { return size; }
    std::int32_t Attributes() const override { return attributes; }
    bool AllowZeroLength() const override { return allowZeroLength; }
    bool Required() const override { return required; }
    Text DefaultValue() const override { return defaultValue; }
    Text ValidationRule() const override { return validationRule; }
    Text ValidationText() const override { return validationText; }
    int OrdinalPosition() const override { return 0; }
    Text SourceField() const override { return sourceField; }
    Text SourceTable() const override { return sourceTable; }
    Text Expression() const override { return expression; }
    dao::Properties& Properties() override { return stored; }
};

// Adds a field to the collection of a table or query.
inline FakeField& addField(Collection<dao::Field>& fields, Text name, int type, std::int32_t size) {
    std::vector<std::shared_ptr<dao::Field>> all(fields.begin(), fields.end());
    auto made = std::make_shared<FakeField>(std::move(name), type, size);
    all.push_back(made);
    fields = Collection<dao::Field>(std::move(all));
    return *made;
}

class FakeIndex : public dao::Index {
public:
    FakeIndex(Text name, const std::vector<Text>& fieldNames) : name(std::move(name)) {
        std::vector<std::shared_ptr<dao::IndexField>> all;
        for (const Text& field : fieldNames) {
            all.push_back(std::make_shared<dao::IndexField>(dao::IndexField{field}));
        }
        fields = Collection<dao::IndexField>(std::move(all));
    }
    Text name;
    bool primary = false, foreign = false, unique = false, ignoreNulls = false, required = false,
         clustered = false;
    Collection<dao::IndexField> fields;

    Text Name() const override { return name; }
    bool Primary() const override { return primary; }
    bool Foreign() const override { return foreign; }
    bool Unique() const override { return unique; }
    bool IgnoreNulls() const override { return ignoreNulls; }
    bool Required() const override { return required; }
    bool Clustered() const override { return clustered; }
    const Collection<dao::IndexField>& Fields() const override { return fields; }
};

class FakeTableDef : public dao::TableDef {
public:
    explicit FakeTableDef(Text name, Text connect = {})
        : name(std::move(name)), connect(std::move(connect)) {}
    Text name, connect;
    Value created = DateTime{1997, 1, 2, 3, 4, 5}, updated = DateTime{1998, 2, 3, 4, 5, 6};
    dao::Properties stored;
    Collection<dao::Field> fields;
    Collection<dao::Index> indexes;
    std::int32_t attributes = 0;
    std::optional<std::int32_t> recordCount; // without it that of an empty table or a link
    Text sourceTableName;
    bool updatable = true;
    int fieldsError = 0; // of reading the fields, 0 for none
    int fieldsReads = 0;

    // An index that follows those there are.
    FakeIndex& addIndex(Text indexName, const std::vector<Text>& fieldNames) {
        std::vector<std::shared_ptr<dao::Index>> all(indexes.begin(), indexes.end());
        auto made = std::make_shared<FakeIndex>(std::move(indexName), fieldNames);
        all.push_back(made);
        indexes = Collection<dao::Index>(std::move(all));
        return *made;
    }

    Text Name() const override { return name; }
    Value DateCreated() const override { return created; }
    Value LastUpdated() const override { return updated; }
    std::int32_t Attributes() const override { return attributes; }
    Text Connect() const override { return connect; }
    Text SourceTableName() const override { return sourceTableName; }
    std::int32_t RecordCount() const override { return recordCount.value_or(connect.empty() ? 0 : -1); }
    bool Updatable() const override { return updatable; }
    const Collection<dao::Field>& Fields() override {
        ++fieldsReads;
        if (fieldsError != 0) {
            throw RunTimeError(fieldsError, u"説明");
        }
        return fields;
    }
    const Collection<dao::Index>& Indexes() override { return indexes; }
    dao::Properties& Properties() override { return stored; }
};

class FakeQueryDef : public dao::QueryDef {
public:
    FakeQueryDef(Text name, int type) : name(std::move(name)), type(type) {}
    Text name;
    int type;
    Value created = DateTime{1997, 1, 2, 3, 4, 5}, updated = DateTime{1998, 2, 3, 4, 5, 6};
    dao::Properties stored;
    Collection<dao::Field> fields;
    Text sql = u"SELECT 1;", connect;
    int sqlError = 0, connectError = 0, fieldsError = 0; // of each reading, 0 for none
    int sqlReads = 0, connectReads = 0;
    int odbcTimeout = 60;
    std::int32_t maxRecords = 0, recordsAffected = 0;
    bool updatable = true;

    Text Name() const override { return name; }
    int Type() const override { return type; }
    Value DateCreated() const override { return created; }
    Value LastUpdated() const override { return updated; }
    Text SQL() override {
        ++sqlReads;
        return failing(sqlError), sql;
    }
    Text Connect() override {
        ++connectReads;
        return failing(connectError), connect;
    }
    int ODBCTimeout() const override { return odbcTimeout; }
    std::int32_t MaxRecords() const override { return maxRecords; }
    bool ReturnsRecords() const override { return true; }
    bool Updatable() const override { return updatable; }
    std::int32_t RecordsAffected() const override { return recordsAffected; }
    const Collection<dao::Field>& Fields() override { return failing(fieldsError), fields; }
    dao::Properties& Properties() override { return stored; }

private:
    static void failing(int error) {
        if (error != 0) {
            throw RunTimeError(error, u"説明");
        }
    }
};

class FakeDocument : public dao::Document {
public:
    explicit FakeDocument(Text name) : name(std::move(name)) {}
    Text name;
    Value created = DateTime{1997, 1, 2, 3, 4, 5}, updated = DateTime{1998, 2, 3, 4, 5, 6};
    dao::Properties stored;

    Text Name() const override { return name; }
    Value DateCreated() const override { return created; }
    Value LastUpdated() const override { return updated; }
    dao::Properties& Properties() override { return stored; }
};

class FakeContainer : public dao::Container {
public:
    explicit FakeContainer(Text name) : name(std::move(name)) {}
    Text name;
    std::vector<std::shared_ptr<dao::Document>> documents;
    Collection<dao::Document> collection;

    Text Name() const override { return name; }
    const Collection<dao::Document>& Documents() override { return collection; }
};

// Every collection is complete when the last `add` has returned.
class FakeDatabase : public dao::Database {
public:
    FakeDatabase() {
        std::vector<std::shared_ptr<dao::Container>> all;
        for (const TextView name : {u"Databases", u"Forms", u"Modules", u"Reports", u"Scripts", u"Tables"}) {
            all.push_back(std::make_shared<FakeContainer>(Text(name)));
        }
        containers = Collection<dao::Container>(std::move(all));
    }

    FakeTableDef& addTable(const Text& name, const Text& connect = {}) {
        return add<FakeTableDef>(tables_, tables, std::make_shared<FakeTableDef>(name, connect));
    }
    FakeQueryDef& addQuery(const Text& name, int type) {
        return add<FakeQueryDef>(queries_, queries, std::make_shared<FakeQueryDef>(name, type));
    }
    FakeDocument& addDocument(TextView container, const Text& name) {
        auto& in = dynamic_cast<FakeContainer&>(containers.Item(container));
        return add<FakeDocument>(in.documents, in.collection, std::make_shared<FakeDocument>(name));
    }

    Text path = u"C:\\App\\target.mdb";
    Collection<dao::TableDef> tables;
    Collection<dao::QueryDef> queries;
    Collection<dao::Container> containers;
    Collection<dao::Relation> relations;
    dao::Properties stored;
    FakeStoreFile storedRows; // of the tables that can be read

    Text Name() const override { return path; }
    Text Version() const override { return u"3.0"; }
    int QueryTimeout() const override { return 60; }
    bool Updatable() const override { return true; }
    const Collection<dao::TableDef>& TableDefs() override { return tables; }
    const Collection<dao::QueryDef>& QueryDefs() override { return queries; }
    const Collection<dao::Container>& Containers() override { return containers; }
    const Collection<dao::Relation>& Relations() override { return relations; }
    dao::Properties& Properties() override { return stored; }

    std::unique_ptr<Recordset> OpenRecordset(TextView name) override {
        if (!storedRows.tables.contains(Text(name))) {
            throw RunTimeError(ErrorNumber::TableNotFound, name);
        }
        return std::make_unique<FakeRecordset>(storedRows, Text(name));
    }
    std::unique_ptr<Recordset> OpenSorted(TextView name, std::span<const SortKey>, std::int64_t) override {
        throw RunTimeError(ErrorNumber::TableNotFound, name);
    }
    void Execute(TextView) override { throw RunTimeError(ErrorNumber::PermissionDenied); }
    void copyTo(const Text&) override { throw RunTimeError(ErrorNumber::PermissionDenied); }

private:
    template <class Fake, class Object>
    static Fake& add(std::vector<std::shared_ptr<Object>>& all, Collection<Object>& collection,
                     std::shared_ptr<Fake> made) {
        Fake& reference = *made;
        all.push_back(std::move(made));
        collection = Collection<Object>(all);
        return reference;
    }

    std::vector<std::shared_ptr<dao::TableDef>> tables_;
    std::vector<std::shared_ptr<dao::QueryDef>> queries_;
};

} // namespace relvane::test
