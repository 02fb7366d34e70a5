#include "formview/control_values.h"

#include <algorithm>

#include "formview/value_format.h"

namespace relvane::formview {
namespace {

using access::DesignObject;

constexpr TextView missingName = u"#Name?";

// The name of a field as ControlSource has it: with blanks and all, or in brackets.
std::optional<Expression> sourceOf(const DesignObject& control) {
    const Text source = text(control, u"ControlSource");
    if (source.empty()) {
        return std::nullopt;
    }
    if (source.front() == u'=') {
        return parseExpression(TextView(source).substr(1));
    }
    if (source.find_first_of(u"[.!") != Text::npos) {
        return parseExpression(source);
    }
    return Expression{.field = FieldName{{}, source}};
}

Value defaultValue(const DesignObject& control) {
    const Text stored = text(control, u"DefaultValue");
    TextView source = stored;
    if (!source.empty() && source.front() == u'=') {
        source.remove_prefix(1);
    }
    const auto expression = parseExpression(source);
    const bool standsAlone = expression && expression->fields().empty() && !expression->hasTotal();
    return standsAlone ? valueOf(*expression, {}) : Value(Null{});
}

bool mayCompute(const RecordInHand& record, std::size_t values) {
    if (record.valuesLeft == nullptr) {
        return true;
    }
    *record.valuesLeft -= static_cast<std::int64_t>(values);
    return *record.valuesLeft >= 0;
}

// A name is that of a field, or else of a control beside this one.
Value namedValue(const DesignObject& control, const RecordInHand& record, const FieldName& name) {
    constexpr int mostSteps = 16;     // controls may name each other in a circle
    constexpr std::size_t cost = 100; // the control is looked for, and its expression read
    if (!mayCompute(record, cost)) {
        return Null{};
    }
    if (name.inSubform) {
        return record.ofSubform ? record.ofSubform(name) : Value(Null{});
    }
    const bool isOwn = equalsIgnoringCase(name.table, u"Form") || equalsIgnoringCase(name.table, u"Me");
    const FieldName field{isOwn ? Text() : name.table, name.field};
    if (record.records != nullptr && record.records->find(field)) {
        return record.records->value(record.row, field);
    }
    const DesignObject* other = field.table.empty() ? control.design().findControl(field.field) : nullptr;
    if (other == nullptr || other == &control || record.steps >= mostSteps) {
        return Null{};
    }
    RecordInHand next = record;
    ++next.steps;
    return controlValue(*other, next);
}

Scope scopeOf(const DesignObject& control, const RecordInHand& record) {
    Scope scope;
    scope.field = [&](const FieldName& name) { return namedValue(control, record, name); };
    if (record.all != nullptr) {
        scope.inAllRecords = [&record](const Expression& operand) {
            std::vector<Value> values;
            if (!mayCompute(record, record.all->rows.size() * operand.size())) {
                return values;
            }
            Scope ofRow;
            std::size_t row = 0;
            ofRow.field = [&](const FieldName& name) { return record.all->value(row, name); };
            for (; row < record.all->rows.size(); ++row) {
                values.push_back(valueOf(operand, ofRow));
            }
            return values;
        };
    }
    return scope;
}

// Others than a text: general alignment puts them to the right.
bool goesRight(const Value& value) {
    return !std::holds_alternative<Null>(value) && !std::holds_alternative<Text>(value) &&
           !std::holds_alternative<Bytes>(value) && !std::holds_alternative<Guid>(value);
}

// Money without a format has that of the system.
ShownText shown(const Value& value, const DesignObject& control) {
    Text format = text(control, u"Format");
    if (format.empty() && std::holds_alternative<Currency>(value)) {
        format = u"Currency";
    }
    return {qText(formattedValue(value, format, number(control, u"DecimalPlaces", automaticDecimals))),
            goesRight(value)};
}

// Widths as stored, in twips with ";" between; an empty one is not said.
std::vector<int> columnWidths(const DesignObject& control, std::size_t columns) {
    std::vector<int> widths(columns, -1);
    const auto stored = listItems(text(control, u"ColumnWidths"));
    for (std::size_t i = 0; i < std::min(columns, stored.size()); ++i) {
        skipErrors([&] { widths[i] = stored[i].empty() ? -1 : static_cast<int>(toLong(stored[i])); });
    }
    return widths;
}

} // namespace

std::vector<Text> listItems(TextView list) {
    std::vector<Text> items(1);
    char16_t quote = 0;
    for (const char16_t c : list) {
        if (quote != 0) {
            if (c == quote) {
                quote = 0;
            } else {
                items.back() += c;
            }
        } else if (c == u'"' || c == u'\'') {
            quote = c;
        } else if (c == u';' || c == u',') {
            items.emplace_back();
        } else if (c != u' ' || !items.back().empty()) {
            items.back() += c;
        }
    }
    return items;
}

Value controlValue(const DesignObject& control, const RecordInHand& record) {
    const Text stored = text(control, u"ControlSource");
    if (stored.empty()) {
        return defaultValue(control);
    }
    const auto source = sourceOf(control);
    if (!source || (record.isBound && record.records == nullptr)) {
        return Null{};
    }
    if (record.isNew() && stored.front() != u'=') {
        return defaultValue(control);
    }
    return valueOf(*source, scopeOf(control, record));
}

Value valueOfName(const DesignObject& beside, const RecordInHand& record, const Text& name) {
    if (const DesignObject* control = beside.design().findControl(name)) {
        return controlValue(*control, record);
    }
    const auto expression = parseExpression(name);
    return valueOf(expression.value_or(Expression{.field = FieldName{{}, name}}), scopeOf(beside, record));
}

bool namesMissingField(const DesignObject& control, const RecordInHand& record) {
    const Text stored = text(control, u"ControlSource");
    if (stored.empty() || stored.front() == u'=' || (record.isBound && record.records == nullptr)) {
        return false;
    }
    const auto source = sourceOf(control);
    const bool isPlain = source && source->isField() && !source->field->inSubform;
    return isPlain && (record.records == nullptr || !record.records->find(*source->field));
}

ShownText shownText(const DesignObject& control, const RecordInHand& record) {
    return namesMissingField(control, record) ? ShownText{qText(missingName), false}
                                              : shown(controlValue(control, record), control);
}

std::optional<std::size_t> ListRows::firstShown() const {
    const auto found = std::ranges::find_if(widths, [](int width) { return width != 0; });
    return found == widths.end() ? std::nullopt
                                 : std::optional(static_cast<std::size_t>(found - widths.begin()));
}

ListRows listRows(const DesignObject& control, FormTarget& target) {
    constexpr int mostColumns = 255;
    ListRows list;
    const auto columns =
        static_cast<std::size_t>(std::clamp(number(control, u"ColumnCount", 1), 1, mostColumns));
    list.widths = columnWidths(control, columns);
    list.boundColumn = static_cast<std::size_t>(std::max(1, number(control, u"BoundColumn", 1)) - 1);
    list.hasHeads = flag(control, u"ColumnHeads");
    const Text type = text(control, u"RowSourceType"), source = text(control, u"RowSource");
    if (equalsIgnoringCase(type, u"Value List")) {
        const auto items = source.empty() ? std::vector<Text>() : listItems(source);
        for (std::size_t i = 0; i < items.size(); i += columns) {
            auto& row = list.rows.emplace_back();
            for (std::size_t j = i; j < std::min(items.size(), i + columns); ++j) {
                row.emplace_back(items[j]);
            }
        }
        return list;
    }
    const Records* records =
        equalsIgnoringCase(type, u"Table/Query") && !source.empty() ? target.list(source) : nullptr;
    if (records == nullptr) {
        list.hasHeads = false;
        return list;
    }
    if (list.hasHeads) {
        auto& heads = list.rows.emplace_back();
        for (const RecordField& field : records->fields) {
            heads.emplace_back(field.name);
        }
    }
    list.rows.insert(list.rows.end(), records->rows.begin(), records->rows.end());
    return list;
}

ShownText shownChoice(const DesignObject& control, const RecordInHand& record, FormTarget& target) {
    const Value value = controlValue(control, record);
    if (namesMissingField(control, record) || std::holds_alternative<Null>(value)) {
        return shownText(control, record);
    }
    const ListRows list = listRows(control, target);
    const auto column = list.firstShown();
    if (!column || *column == list.boundColumn) {
        return shown(value, control);
    }
    for (const auto& row : list.rows) {
        if (list.boundColumn < row.size() && *column < row.size() &&
            compareValues(row[list.boundColumn], value) == 0) {
            return shown(row[*column], control);
        }
    }
    return {};
}

} // namespace relvane::formview
