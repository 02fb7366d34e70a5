#include "jet/dao_query.h"

#include "jet/dao_properties.h"
#include "jet/query_sql.h"
#include "jet/query_types.h"

namespace relvane::jet {
namespace {

constexpr int usualTimeout = 60; // seconds: the database's QueryTimeout

// Whether the name of a column's properties ("[Order Details].ProductID", "Total") means this field.
bool namesField(TextView stored, TextView field) {
    const std::size_t dot = stored.rfind(u'.');
    TextView last = stored.substr(dot == TextView::npos ? 0 : dot + 1);
    if (last.size() >= 2 && last.front() == u'[' && last.back() == u']') {
        last = last.substr(1, last.size() - 2);
    }
    return equalsIgnoringCase(last, field) || equalsIgnoringCase(stored, field);
}

class QueryDefField : public dao::Field {
public:
    QueryDefField(QueryField field, int position, const std::vector<StoredProperty>* stored)
        : name_(std::move(field.name)), origin_(std::move(field.origin)), position_(position) {
        properties_ = joinProperties(
            {
                builtIn(u"Attributes", 4, std::int64_t{Attributes()}),
                builtIn(u"Type", 3, std::int64_t{Type()}),
                builtIn(u"Name", 10, name_),
                builtIn(u"OrdinalPosition", 3, std::int64_t{position_}),
                builtIn(u"Size", 4, std::int64_t{Size()}),
                builtIn(u"SourceField", 10, SourceField()),
                builtIn(u"SourceTable", 10, SourceTable()),
                builtIn(u"DefaultValue", 12, DefaultValue()),
                builtIn(u"AllowZeroLength", 1, AllowZeroLength()),
            },
            stored);
    }

    Text Name() const override { return name_; }
    int Type() const override { return origin_->type; }
    std::int32_t Size() const override { return origin_->size; }
    std::int32_t Attributes() const override {
        const int type = origin_->type;
        const bool isVariable = type == fieldType::Binary || type == fieldType::Text ||
                                type == fieldType::Ole || type == fieldType::Memo;
        return isVariable ? 2 : 1;
    }
    bool AllowZeroLength() const override { return origin_->allowZeroLength; }
    bool Required() const override { return false; }
    Text DefaultValue() const override { return origin_->defaultValue; }
    Text ValidationRule() const override { return {}; }
    Text ValidationText() const override { return {}; }
    int OrdinalPosition() const override { return position_; }
    Text SourceField() const override { return origin_->sourceField; }
    Text SourceTable() const override { return origin_->sourceTable; }
    dao::Properties& Properties() override { return properties_; }

private:
    Text name_;
    std::shared_ptr<const FieldOrigin> origin_;
    int position_;
    dao::Properties properties_;
};

} // namespace

void QueryDef::refuseAmbiguousJoins() const {
    if (hasAmbiguousOuterJoins(rows())) {
        throw RunTimeError(ErrorNumber::AmbiguousOuterJoins, entry_.name);
    }
}

Text QueryDef::SQL() {
    refuseAmbiguousJoins();
    return querySql(rows(), entry_.flags, file_->header().isJet3() ? SqlDialect::Jet3 : SqlDialect::Jet4);
}

Text QueryDef::Connect() {
    refuseAmbiguousJoins();
    return queryConnect(rows(), entry_.flags);
}

const PropertyBlob& QueryDef::stored() const {
    if (!stored_) {
        stored_ = file_->catalogue().properties(entry_);
    }
    return *stored_;
}

int QueryDef::ODBCTimeout() const {
    return storedNumber(&stored().ofObject, u"ODBCTimeout", usualTimeout);
}
std::int32_t QueryDef::MaxRecords() const {
    return storedNumber(&stored().ofObject, u"MaxRecords", 0);
}
bool QueryDef::ReturnsRecords() const {
    return storedFlag(&stored().ofObject, u"ReturnsRecords", true);
}

const dao::Collection<dao::Field>& QueryDef::Fields() {
    if (!fields_) {
        // A query whose fields cannot be found out, since a source of it is not there or it makes no sense, has none.
        std::vector<QueryField> resolved;
        skipErrors([&] { resolved = resolver_.fields(entry_.name); });
        std::vector<std::shared_ptr<dao::Field>> fields;
        for (const QueryField& field : resolved) {
            const std::vector<StoredProperty>* properties = nullptr;
            for (const auto& column : stored().ofColumns) {
                if (properties == nullptr && namesField(column.column, field.name)) {
                    properties = &column.properties;
                }
            }
            fields.push_back(
                std::make_shared<QueryDefField>(field, static_cast<int>(fields.size()), properties));
        }
        fields_.emplace(std::move(fields));
    }
    return *fields_;
}

dao::Properties& QueryDef::Properties() {
    if (!properties_) {
        // A text that cannot be made must not hide the description.
        Value sql = Null{};
        Value connect = Null{};
        skipErrors([&] { sql = SQL(); });
        skipErrors([&] { connect = Connect(); });
        properties_ = joinProperties(
            {
                builtIn(u"Name", 10, Name()),
                builtIn(u"DateCreated", 8, DateCreated()),
                builtIn(u"LastUpdated", 8, LastUpdated()),
                builtIn(u"Type", 3, std::int64_t{Type()}),
                builtIn(u"SQL", 12, std::move(sql)),
                builtIn(u"Updatable", 1, Updatable()),
                builtIn(u"Connect", 12, std::move(connect)),
                builtIn(u"ReturnsRecords", 1, ReturnsRecords()),
                builtIn(u"ODBCTimeout", 3, std::int64_t{ODBCTimeout()}),
                builtIn(u"RecordsAffected", 4, std::int64_t{RecordsAffected()}),
                builtIn(u"MaxRecords", 4, std::int64_t{MaxRecords()}),
            },
            &stored().ofObject);
    }
    return *properties_;
}

} // namespace relvane::jet
