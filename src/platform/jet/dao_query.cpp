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
        : name_(std::move(field.name)),
          origin_(std::move(field.origin)),
          position_(position),
          stored_(stored) {}

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
    dao::Properties& Properties() override;

private:
    Text name_;
    std::shared_ptr<const FieldOrigin> origin_;
    int position_;
    const std::vector<StoredProperty>* stored_; // of the query, which outlives its fields
    std::optional<dao::Properties> properties_;
};

constexpr BuiltIn<QueryDefField> builtInsOfField[] = {
    {u"Attributes", 4, answerOf<&QueryDefField::Attributes>},
    {u"Type", 3, answerOf<&QueryDefField::Type>},
    {u"Name", 10, answerOf<&QueryDefField::Name>},
    {u"OrdinalPosition", 3, answerOf<&QueryDefField::OrdinalPosition>},
    {u"Size", 4, answerOf<&QueryDefField::Size>},
    {u"SourceField", 10, answerOf<&QueryDefField::SourceField>},
    {u"SourceTable", 10, answerOf<&QueryDefField::SourceTable>},
    {u"DefaultValue", 12, answerOf<&QueryDefField::DefaultValue>},
    {u"AllowZeroLength", 1, answerOf<&QueryDefField::AllowZeroLength>},
};

dao::Properties& QueryDefField::Properties() {
    if (!properties_) {
        properties_ = propertiesOf(*this, builtInsOfField, stored_);
    }
    return *properties_;
}

// A text that cannot be made must not hide the description.
template <Text (QueryDef::*text)()>
Value textOrNull(QueryDef& query) {
    Value value = Null{};
    skipErrors([&] { value = (query.*text)(); });
    return value;
}

constexpr BuiltIn<QueryDef> builtIns[] = {
    {u"Name", 10, answerOf<&QueryDef::Name>},
    {u"DateCreated", 8, answerOf<&QueryDef::DateCreated>},
    {u"LastUpdated", 8, answerOf<&QueryDef::LastUpdated>},
    {u"Type", 3, answerOf<&QueryDef::Type>},
    {u"SQL", 12, textOrNull<&QueryDef::SQL>},
    {u"Updatable", 1, answerOf<&QueryDef::Updatable>},
    {u"Connect", 12, textOrNull<&QueryDef::Connect>},
    {u"ReturnsRecords", 1, answerOf<&QueryDef::ReturnsRecords>},
    {u"ODBCTimeout", 3, answerOf<&QueryDef::ODBCTimeout>},
    {u"RecordsAffected", 4, answerOf<&QueryDef::RecordsAffected>},
    {u"MaxRecords", 4, answerOf<&QueryDef::MaxRecords>},
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

const Collection<dao::Field>& QueryDef::Fields() {
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
        properties_ = propertiesOf(*this, builtIns, &stored().ofObject);
    }
    return *properties_;
}

} // namespace relvane::jet
