#include "jet/dao_field.h"

#include <algorithm>
#include <optional>

namespace relvane::jet {
namespace {

namespace fieldAttribute {
constexpr std::int32_t fixed = 1, variable = 2, autoNumber = 16, system = 8192, hyperlink = 32768,
                       descending = 1;
}

// DAO's code and the size it reports, by column type. Sizes that depend on the column are -1.
struct TypeRow {
    ColumnType type;
    int dao;
    std::int32_t size;
};

constexpr std::int32_t ownLength = -1;
constexpr int unknownComplex = 18; // as the file has it

constexpr TypeRow types[] = {
    {ColumnType::Boolean, 1, 1},
    {ColumnType::Byte, 2, 1},
    {ColumnType::Integer, 3, 2},
    {ColumnType::Long, 4, 4},
    {ColumnType::Currency, 5, 8},
    {ColumnType::Single, 6, 4},
    {ColumnType::Double, 7, 8},
    {ColumnType::Date, 8, 8},
    {ColumnType::Binary, 9, ownLength},
    {ColumnType::Text, 10, ownLength},
    {ColumnType::Ole, 11, 0},
    {ColumnType::Memo, 12, 0},
    {ColumnType::Guid, 15, 16},
    {ColumnType::Numeric, 20, 16},
    {ColumnType::LongBinary, 9, ownLength},
    {ColumnType::Complex, unknownComplex, 4},
    {ColumnType::BigInt, dao::fieldType::bigInt, 8},
    {ColumnType::ExtendedDate, dao::fieldType::extendedDate, 42},
};

// What a complex column holds, by the table that stands for it.
struct ComplexTypeRow {
    TextView table;
    int dao;
};

constexpr ComplexTypeRow complexTypes[] = {
    {u"MSysComplexType_Attachment", dao::fieldType::attachment},
    {u"MSysComplexType_UnsignedByte", 102},
    {u"MSysComplexType_Short", 103},
    {u"MSysComplexType_Long", 104},
    {u"MSysComplexType_IEEESingle", 105},
    {u"MSysComplexType_IEEEDouble", 106},
    {u"MSysComplexType_GUID", 107},
    {u"MSysComplexType_Decimal", 108},
    {u"MSysComplexType_Text", 109},
};

const TypeRow* rowOf(ColumnType type) {
    for (const TypeRow& row : types) {
        if (row.type == type) {
            return &row;
        }
    }
    return nullptr;
}

struct FieldFacts {
    Text name, table;
    int type = 0;
    std::int32_t size = 0, attributes = 0, collatingOrder = 0;
    int ordinal = 0;
    bool required = false, allowZeroLength = false;
    bool isCalculated = false;
    Text defaultValue, validationRule, validationText, expression;
};

class TableField : public dao::Field {
public:
    TableField(FieldFacts facts, ColumnProperties stored)
        : facts_(std::move(facts)), stored_(std::move(stored)) {
        facts_.required = storedFlag(stored_.get(), u"Required", false);
        facts_.allowZeroLength = storedFlag(stored_.get(), u"AllowZeroLength", false);
        facts_.defaultValue = storedText(stored_.get(), u"DefaultValue");
        facts_.validationRule = storedText(stored_.get(), u"ValidationRule");
        facts_.validationText = storedText(stored_.get(), u"ValidationText");
        if (facts_.isCalculated) { // others may have a property of that name, too
            facts_.expression = storedText(stored_.get(), u"Expression");
        }
    }

    Text Name() const override { return facts_.name; }
    int Type() const override { return facts_.type; }
    std::int32_t Size() const override { return facts_.size; }
    std::int32_t Attributes() const override { return facts_.attributes; }
    bool AllowZeroLength() const override { return facts_.allowZeroLength; }
    bool Required() const override { return facts_.required; }
    Text DefaultValue() const override { return facts_.defaultValue; }
    Text ValidationRule() const override { return facts_.validationRule; }
    Text ValidationText() const override { return facts_.validationText; }
    int OrdinalPosition() const override { return facts_.ordinal; }
    Text SourceField() const override { return facts_.name; }
    Text SourceTable() const override { return facts_.table; }
    Text Expression() const override { return facts_.expression; }
    std::int32_t CollatingOrder() const { return facts_.collatingOrder; }
    dao::Properties& Properties() override;

private:
    FieldFacts facts_;
    ColumnProperties stored_;
    std::optional<dao::Properties> properties_; // made when asked for: most walks never do
};

constexpr BuiltIn<TableField> builtIns[] = {
    {u"Attributes", 4, answerOf<&TableField::Attributes>},
    {u"CollatingOrder", 4, answerOf<&TableField::CollatingOrder>},
    {u"Type", 3, answerOf<&TableField::Type>},
    {u"Name", 10, answerOf<&TableField::Name>},
    {u"OrdinalPosition", 3, answerOf<&TableField::OrdinalPosition>},
    {u"Size", 4, answerOf<&TableField::Size>},
    {u"SourceField", 10, answerOf<&TableField::SourceField>},
    {u"SourceTable", 10, answerOf<&TableField::SourceTable>},
    {u"ValidateOnSet", 1, [](TableField&) { return Value(false); }},
    {u"DataUpdatable", 1, [](TableField&) { return Value(true); }},
    {u"DefaultValue", 12, answerOf<&TableField::DefaultValue>},
    {u"ValidationRule", 12, answerOf<&TableField::ValidationRule>},
    {u"ValidationText", 12, answerOf<&TableField::ValidationText>},
    {u"Required", 1, answerOf<&TableField::Required>},
    {u"AllowZeroLength", 1, answerOf<&TableField::AllowZeroLength>},
};

dao::Properties& TableField::Properties() {
    if (!properties_) {
        properties_ = propertiesOf(*this, builtIns, stored_.get());
    }
    return *properties_;
}

class TableIndex : public dao::Index {
public:
    TableIndex(const TableDefinition& table, const LogicalIndex& index)
        : name_(index.name), type_(index.type), flags_(table.realIndexes[index.realIndex].flags) {
        std::vector<std::shared_ptr<dao::IndexField>> fields;
        for (const RealIndex::Entry& entry : table.realIndexes[index.realIndex].entries) {
            fields.push_back(std::make_shared<dao::IndexField>(
                dao::IndexField{.FieldName = table.byNumber(entry.column)->name,
                                .Attributes = entry.ascending ? 0 : fieldAttribute::descending}));
        }
        fields_ = Collection<dao::IndexField>(std::move(fields));
    }

    Text Name() const override { return name_; }
    bool Primary() const override { return type_ == IndexType::PrimaryKey; }
    bool Foreign() const override { return type_ == IndexType::Foreign; }
    bool Unique() const override { return (flags_ & realIndexFlag::unique) != 0; }
    bool IgnoreNulls() const override { return (flags_ & realIndexFlag::ignoreNulls) != 0; }
    bool Required() const override { return (flags_ & realIndexFlag::required) != 0; }
    bool Clustered() const override { return false; }
    const Collection<dao::IndexField>& Fields() const override { return fields_; }

private:
    Text name_;
    IndexType type_;
    std::uint8_t flags_;
    Collection<dao::IndexField> fields_;
};

int daoType(const Column& column, const JetFile& file) {
    if (column.type == ColumnType::Complex) {
        const auto found =
            std::ranges::find(complexTypes, file.complexType(column.complexId), &ComplexTypeRow::table);
        return found == std::end(complexTypes) ? unknownComplex : found->dao;
    }
    const TypeRow* row = rowOf(column.type);
    return row == nullptr ? static_cast<int>(column.type) : row->dao;
}

std::int32_t daoSize(const Column& column, const JetFormat& format) {
    const TypeRow* row = rowOf(column.type);
    if (column.type == ColumnType::Text) {
        return static_cast<std::int32_t>(column.length / format.textUnit);
    }
    return row == nullptr || row->size == ownLength ? column.length : row->size;
}

std::int32_t daoAttributes(const Column& column) {
    std::int32_t attributes =
        column.has(columnFlag::fixed) ? fieldAttribute::fixed : fieldAttribute::variable;
    if (column.has(columnFlag::autoNumber)) { // not of GUIDs: their default value is what makes them
        attributes |= fieldAttribute::autoNumber;
    }
    if (column.has(columnFlag::system)) {
        attributes |= fieldAttribute::system;
    }
    if (column.type == ColumnType::Memo && column.has(columnFlag::hyperlink)) {
        attributes |= fieldAttribute::hyperlink;
    }
    return attributes;
}

} // namespace

ColumnProperties columnProperties(const std::shared_ptr<const PropertyBlob>& blob, TextView column) {
    const auto* properties = blob->column(column);
    return properties == nullptr ? nullptr : ColumnProperties(blob, properties);
}

std::shared_ptr<dao::Field> makeTableField(const Column& column, const JetFile& file, Text table,
                                           ColumnProperties stored) {
    FieldFacts facts;
    facts.name = column.name;
    facts.table = std::move(table);
    facts.type = daoType(column, file);
    facts.size = daoSize(column, *file.header().format);
    facts.attributes = daoAttributes(column);
    facts.collatingOrder = file.header().sortOrder;
    facts.ordinal = column.ordinal;
    facts.isCalculated = column.isCalculated();
    return std::make_shared<TableField>(std::move(facts), std::move(stored));
}

std::shared_ptr<dao::Index> makeIndex(const TableDefinition& table, const LogicalIndex& index) {
    return index.isInternal() ? nullptr : std::make_shared<TableIndex>(table, index);
}

} // namespace relvane::jet
