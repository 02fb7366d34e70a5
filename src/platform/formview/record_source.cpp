#include "formview/record_source.h"

#include <algorithm>
#include <functional>
#include <map>
#include <numeric>
#include <set>

#include "jet/query_select.h"

namespace relvane::formview {
namespace {

constexpr int deepestQuery = 16, textType = 10, oleType = 11, memoType = 12;

// Long values are read for the rows that are shown alone: until then their place holds the number of the row in the
// table.
struct LongField {
    Text table, field; // of the database
};

struct Relation {
    std::vector<RecordField> fields;
    std::vector<std::optional<LongField>> longFields; // one for each field
    std::vector<std::vector<Value>> rows;
    bool isUpdatable = true;

    std::optional<std::size_t> find(const FieldName& name) const {
        for (std::size_t i = 0; i < fields.size(); ++i) {
            if (equalsIgnoringCase(fields[i].name, name.field) &&
                (name.table.empty() || equalsIgnoringCase(fields[i].table, name.table))) {
                return i;
            }
        }
        return std::nullopt;
    }
};

// A wide relation has fewer rows, so that its values fit into memory.
std::size_t mostRowsOf(const Relation& relation) {
    constexpr std::size_t mostValues = 5'000'000;
    return std::min(mostRows, mostValues / std::max<std::size_t>(relation.fields.size(), 1));
}

using Row = std::vector<Value>;
using Group = std::vector<const Row*>;

struct ValueOrder {
    bool operator()(const Value& left, const Value& right) const { return compareValues(left, right) < 0; }
};
struct RowOrder {
    bool operator()(const Row& left, const Row& right) const {
        return std::ranges::lexicographical_compare(left, right, ValueOrder());
    }
};

// A row of the relation, and those of which totals are made.
Scope scopeOf(const Relation& relation, const Row& row, const Group* group = nullptr) {
    Scope scope;
    scope.field = [&relation, &row](const FieldName& name) {
        const auto place = relation.find(name);
        return place && !relation.longFields[*place] ? row[*place] : Value(Null{});
    };
    if (group != nullptr) {
        scope.inAllRecords = [&relation, group](const Expression& operand) {
            std::vector<Value> values;
            for (const Row* each : *group) {
                values.push_back(valueOf(operand, scopeOf(relation, *each)));
            }
            return values;
        };
    }
    return scope;
}

Row keysOf(const std::vector<OrderKey>& order, const Scope& scope) {
    Row keys;
    for (const OrderKey& key : order) {
        keys.push_back(valueOf(key.value, scope));
    }
    return keys;
}

// Sorts what `keys` were made for.
template <class What>
void sortByKeys(std::vector<std::pair<Row, What>>& keyed, const std::vector<OrderKey>& order) {
    std::ranges::stable_sort(keyed, [&](const auto& left, const auto& right) {
        for (std::size_t i = 0; i < order.size(); ++i) {
            const int compared = compareValues(left.first[i], right.first[i]);
            if (compared != 0) {
                return order[i].descending ? compared > 0 : compared < 0;
            }
        }
        return false;
    });
}

class Reading {
public:
    Reading(dao::Database& database, std::optional<std::set<Text>> names)
        : database_(database), names_(std::move(names)) {}

    // Each step gives nothing when it is beyond what is understood; errors of the database pass through.
    std::optional<Relation> named(const Text& name, const Text& knownAs, int depth) {
        if (dao::TableDef* table = database_.TableDefs().find(name)) {
            return --sourcesLeft_ < 0 ? std::nullopt : tableRows(*table, knownAs);
        }
        dao::QueryDef* query = database_.QueryDefs().find(name);
        if (query == nullptr || depth > deepestQuery || --sourcesLeft_ < 0) {
            return std::nullopt;
        }
        auto relation = statement(query->SQL(), depth + 1);
        if (relation) {
            for (RecordField& field : relation->fields) {
                field.table = knownAs;
            }
        }
        return relation;
    }

    std::optional<Relation> statement(TextView sql, int depth) {
        const auto selection = parseSelection(sql);
        if (!selection) {
            return std::nullopt;
        }
        addNames(sql);
        auto relation = source(selection->source, depth);
        if (!relation || !knowsAll(*relation, *selection)) {
            return std::nullopt;
        }
        if (selection->where) {
            std::erase_if(relation->rows,
                          [&](const Row& row) { return !holds(*selection->where, scopeOf(*relation, row)); });
        }
        if (selection->isGrouped()) {
            relation = grouped(*relation, *selection);
        } else {
            sort(*relation, selection->order);
            relation = project(std::move(*relation), *selection);
        }
        if (selection->distinct || (selection->distinctRow && !drawsOnAll(*selection))) {
            removeDoubles(*relation, selection->distinct);
        }
        if (selection->top && *selection->top < relation->rows.size()) {
            relation->rows.resize(*selection->top);
        }
        return relation;
    }

    static bool link(Relation& relation, const Links& links) {
        for (const auto& [field, value] : links) {
            const auto place = relation.find(field);
            if (!place || relation.longFields[*place]) {
                return false;
            }
            std::erase_if(relation.rows, [&, wanted = &value](const Row& row) {
                return isNull(row[*place]) || compareValues(row[*place], *wanted) != 0;
            });
        }
        return true;
    }

    static bool sort(Relation& relation, const std::vector<OrderKey>& order) {
        std::vector<std::pair<Row, Row>> keyed;
        for (const OrderKey& key : order) {
            if (!knows(relation, key.value)) {
                return false;
            }
        }
        if (order.empty()) {
            return true;
        }
        for (Row& row : relation.rows) {
            Row keys = keysOf(order, scopeOf(relation, row));
            keyed.emplace_back(std::move(keys), std::move(row));
        }
        sortByKeys(keyed, order);
        std::ranges::transform(keyed, relation.rows.begin(),
                               [](auto& pair) { return std::move(pair.second); });
        return true;
    }

    void addNames(TextView text) {
        for (const jet::Token& token : jet::sqlTokens(text)) {
            if (names_ && token.isName()) {
                names_->insert(upperCase(token.text));
            }
        }
    }

    // Puts the long values of the rows that are left into their places.
    void readLongValues(Relation& relation) {
        for (std::size_t i = 0; i < relation.fields.size(); ++i) {
            if (!relation.longFields[i]) {
                continue;
            }
            std::map<std::int64_t, Value> values; // by the number of the row
            for (const auto& row : relation.rows) {
                if (const auto* number = std::get_if<std::int64_t>(&row[i])) {
                    values.emplace(*number, Null{});
                }
            }
            const auto cursor = database_.OpenRecordset(relation.longFields[i]->table);
            std::int64_t at = 0;
            for (auto& [number, value] : values) {
                for (; at < number && !cursor->EOF_(); ++at) {
                    cursor->MoveNext();
                }
                if (cursor->EOF_()) {
                    break;
                }
                value = cursor->Field(relation.longFields[i]->field);
            }
            for (auto& row : relation.rows) {
                if (const auto* number = std::get_if<std::int64_t>(&row[i])) {
                    row[i] = Value(values[*number]);
                }
            }
        }
    }

private:
    // What the rows depend on must be there; a column of something else just stays blank.
    static bool knows(const Relation& relation, const Expression& expression) {
        return std::ranges::all_of(expression.fields(), [&](const FieldName& name) {
            const auto place = name.inSubform ? std::nullopt : relation.find(name);
            return place && !relation.longFields[*place];
        });
    }

    static bool knowsAll(const Relation& relation, const Selection& selection) {
        const auto isKnown = [&](const Expression& expression) { return knows(relation, expression); };
        return (!selection.where || isKnown(*selection.where)) &&
               (!selection.having || isKnown(*selection.having)) &&
               std::ranges::all_of(selection.groups, isKnown) &&
               std::ranges::all_of(selection.order,
                                   [&](const OrderKey& key) { return isKnown(key.value); }) &&
               (!selection.crosstab ||
                (isKnown(selection.crosstab->cell) && isKnown(selection.crosstab->pivot)));
    }

    std::optional<Relation> tableRows(dao::TableDef& table, const Text& knownAs) {
        Relation relation;
        std::vector<std::optional<int>> positions; // in the table; none for what nobody asks for
        for (const auto& field : table.Fields()) {
            addNames(field->Expression());
        }
        int position = 0;
        for (const auto& field : table.Fields()) {
            const Text name = field->Name();
            const bool isLong = field->Type() == oleType || field->Type() == memoType;
            relation.fields.push_back({knownAs, name, field->Type()});
            relation.longFields.push_back(isLong ? std::optional(LongField{table.Name(), name})
                                                 : std::nullopt);
            const bool isAsked = !names_ || names_->contains(upperCase(name));
            positions.push_back(isAsked ? std::optional(position) : std::nullopt);
            ++position;
        }
        const auto cursor = database_.OpenRecordset(table.Name());
        for (std::int64_t number = 0; !cursor->EOF_() && relation.rows.size() < mostRowsOf(relation);
             ++number) {
            std::vector<Value>& row = relation.rows.emplace_back(relation.fields.size());
            for (std::size_t i = 0; i < row.size(); ++i) {
                if (!positions[i]) {
                    continue;
                }
                row[i] = relation.longFields[i] ? Value(number) : cursor->Field(*positions[i]);
            }
            cursor->MoveNext();
        }
        calculate(relation, table);
        sortByKey(relation, table);
        return relation;
    }

    // Fields that are calculated from others of the table.
    static void calculate(Relation& relation, dao::TableDef& table) {
        std::size_t place = 0;
        for (const auto& field : table.Fields()) {
            const Text formula = field->Expression();
            if (const auto expression = formula.empty() ? std::nullopt : parseExpression(formula)) {
                relation.longFields[place].reset();
                for (Row& row : relation.rows) {
                    row[place] = valueOf(*expression, scopeOf(relation, row));
                }
            }
            ++place;
        }
    }

    // Rows come in the order of the primary key.
    static void sortByKey(Relation& relation, dao::TableDef& table) {
        for (const auto& index : table.Indexes()) {
            if (!index->Primary()) {
                continue;
            }
            std::vector<OrderKey> order;
            for (const auto& field : index->Fields()) {
                order.push_back(
                    {Expression{.field = FieldName{{}, field->FieldName}}, (field->Attributes & 1) != 0});
            }
            sort(relation, order);
            return;
        }
    }

    std::optional<Relation> source(const Source& source, int depth) {
        if (!source.join) {
            return named(source.name, source.knownAs(), depth);
        }
        const Join& join = *source.join;
        auto left = this->source(join.left, depth), right = this->source(join.right, depth);
        if (!left || !right) {
            return std::nullopt;
        }
        const bool keepsRight = join.kind == Join::Kind::Right;
        Relation& outer = keepsRight ? *right : *left;
        Relation& inner = keepsRight ? *left : *right;
        std::vector<std::pair<std::size_t, std::size_t>> places; // in outer and inner
        for (const auto& [one, other] : join.equal) {
            auto inOuter = outer.find(one), inInner = inner.find(other);
            if (!inOuter || !inInner) {
                inOuter = outer.find(other);
                inInner = inner.find(one);
            }
            if (!inOuter || !inInner || outer.longFields[*inOuter] || inner.longFields[*inInner]) {
                return std::nullopt;
            }
            places.emplace_back(*inOuter, *inInner);
        }
        return joined(outer, inner, places, join.kind != Join::Kind::Inner);
    }

    static Relation joined(const Relation& outer, const Relation& inner,
                           const std::vector<std::pair<std::size_t, std::size_t>>& places, bool keepsOuter) {
        const auto keyOf = [&](const Row& row, auto side) {
            Row key;
            for (const auto& pair : places) {
                key.push_back(row[pair.*side]);
            }
            return key;
        };
        using Pair = std::pair<std::size_t, std::size_t>;
        std::multimap<Row, std::size_t, RowOrder> byKey; // rows of inner
        for (std::size_t i = 0; i < inner.rows.size(); ++i) {
            byKey.emplace(keyOf(inner.rows[i], &Pair::second), i);
        }
        Relation result;
        result.fields = outer.fields;
        result.fields.insert(result.fields.end(), inner.fields.begin(), inner.fields.end());
        result.longFields = outer.longFields;
        result.longFields.insert(result.longFields.end(), inner.longFields.begin(), inner.longFields.end());
        const std::size_t most = mostRowsOf(result);
        for (const auto& row : outer.rows) {
            const Row key = keyOf(row, &Pair::first);
            const bool canMatch = std::ranges::none_of(key, isNull);
            const auto [from, to] = canMatch ? byKey.equal_range(key) : std::pair(byKey.end(), byKey.end());
            for (auto match = from; match != to && result.rows.size() < most; ++match) {
                const auto& other = inner.rows[match->second];
                auto& both = result.rows.emplace_back(row);
                both.insert(both.end(), other.begin(), other.end());
            }
            if (from == to && keepsOuter && result.rows.size() < most) {
                result.rows.emplace_back(row).resize(result.fields.size());
            }
        }
        return result;
    }

    static Relation project(Relation from, const Selection& selection) {
        Relation result;
        result.isUpdatable = from.isUpdatable && !selection.distinct;
        std::vector<std::function<Value(const Row&)>> makers;
        const auto add = [&](std::size_t place, Text name) {
            result.fields.push_back(from.fields[place]);
            if (!name.empty()) {
                result.fields.back().name = std::move(name);
            }
            result.longFields.push_back(from.longFields[place]);
            makers.emplace_back([place](const Row& row) { return row[place]; });
        };
        for (const SelectedColumn& column : selection.columns) {
            if (column.all) {
                for (std::size_t i = 0; i < from.fields.size(); ++i) {
                    if (column.table.empty() || equalsIgnoringCase(column.table, from.fields[i].table)) {
                        add(i, {});
                    }
                }
                continue;
            }
            const auto place =
                column.value && column.value->isField() ? from.find(*column.value->field) : std::nullopt;
            if (place) {
                add(*place, column.name);
                continue;
            }
            result.fields.push_back({{}, column.name, textType});
            result.longFields.emplace_back();
            makers.emplace_back([&column, &from](const Row& row) {
                return column.value ? valueOf(*column.value, scopeOf(from, row)) : Value(Null{});
            });
        }
        from.rows.resize(std::min(from.rows.size(), mostRowsOf(result)));
        result.rows.reserve(from.rows.size());
        for (const auto& row : from.rows) {
            auto& made = result.rows.emplace_back();
            for (const auto& make : makers) {
                made.push_back(make(row));
            }
        }
        return result;
    }

    // One row for the rows that are alike in the keys, or for all where there are none; in the order of the keys.
    static Relation grouped(const Relation& from, const Selection& selection) {
        std::map<Row, Group, RowOrder> groups;
        for (const Row& row : from.rows) {
            Row key;
            for (const Expression& each : selection.groups) {
                key.push_back(valueOf(each, scopeOf(from, row)));
            }
            groups[std::move(key)].push_back(&row);
        }
        const Row blank(from.fields.size());
        if (selection.groups.empty() && !selection.crosstab) {
            groups.try_emplace(Row());
        }
        const auto scopeOfGroup = [&](const Group& group) {
            return scopeOf(from, group.empty() ? blank : *group.front(), &group);
        };
        std::vector<std::pair<Row, const Group*>> ordered;
        for (const auto& [key, group] : groups) {
            const Scope scope = scopeOfGroup(group);
            if (!selection.having || holds(*selection.having, scope)) {
                ordered.emplace_back(keysOf(selection.order, scope), &group);
            }
        }
        sortByKeys(ordered, selection.order);

        Relation result;
        result.isUpdatable = false;
        for (const SelectedColumn& column : selection.columns) {
            const auto place =
                column.value && column.value->isField() ? from.find(*column.value->field) : std::nullopt;
            result.fields.push_back({{}, column.name, place ? from.fields[*place].type : textType});
        }
        const auto headings = headingsOf(from, selection.crosstab);
        for (const Value& heading : headings) {
            result.fields.push_back({{}, isNull(heading) ? Text(u"<>") : toText(heading), textType});
        }
        result.longFields.resize(result.fields.size());
        ordered.resize(std::min(ordered.size(), mostRowsOf(result)));
        for (const auto& [keys, group] : ordered) {
            Row& made = result.rows.emplace_back();
            for (const SelectedColumn& column : selection.columns) {
                made.push_back(column.value ? valueOf(*column.value, scopeOfGroup(*group)) : Value(Null{}));
            }
            std::map<Value, Group, ValueOrder> cells;
            for (const Row* row : headings.empty() ? Group() : *group) {
                cells[valueOf(selection.crosstab->pivot, scopeOf(from, *row))].push_back(row);
            }
            for (const Value& heading : headings) {
                const auto cell = cells.find(heading);
                made.push_back(cell == cells.end()
                                   ? Value(Null{})
                                   : valueOf(selection.crosstab->cell, scopeOfGroup(cell->second)));
            }
        }
        return result;
    }

    static std::vector<Value> headingsOf(const Relation& from, const std::optional<Crosstab>& crosstab) {
        constexpr std::size_t mostColumns = 255;
        if (!crosstab || !crosstab->headings.empty()) {
            return crosstab ? crosstab->headings : std::vector<Value>();
        }
        std::set<Value, ValueOrder> found;
        for (const Row& row : from.rows) {
            if (found.size() < mostColumns) {
                found.insert(valueOf(crosstab->pivot, scopeOf(from, row)));
            }
        }
        return {found.begin(), found.end()};
    }

    static void removeDoubles(Relation& relation, bool sorts) {
        std::set<std::vector<Value>> seen;
        std::erase_if(relation.rows, [&](const auto& row) { return !seen.insert(row).second; });
        if (sorts && relation.fields.size() == 1) { // distinct rows come sorted
            std::ranges::stable_sort(relation.rows, [](const auto& left, const auto& right) {
                return compareValues(left.front(), right.front()) < 0;
            });
        }
    }

    static void addSources(const Source& source, std::vector<Text>& names) {
        if (source.join) {
            addSources(source.join->left, names);
            addSources(source.join->right, names);
        } else {
            names.push_back(source.knownAs());
        }
    }

    // Whether something is selected from each source: then the rows differ as the tables' do.
    static bool drawsOnAll(const Selection& selection) {
        std::vector<Text> sources;
        addSources(selection.source, sources);
        const auto selectsFrom = [](const SelectedColumn& column, const Text& source) {
            const auto isOfSource = [&](const Text& table) {
                return table.empty() || equalsIgnoringCase(table, source);
            };
            if (column.all || !column.value) {
                return isOfSource(column.table);
            }
            return std::ranges::any_of(column.value->fields(),
                                       [&](const FieldName& field) { return isOfSource(field.table); });
        };
        return std::ranges::all_of(sources, [&](const Text& source) {
            return std::ranges::any_of(
                selection.columns, [&](const SelectedColumn& column) { return selectsFrom(column, source); });
        });
    }

    // Queries may draw on each other twice over, level by level.
    int sourcesLeft_ = 100;
    dao::Database& database_;
    std::optional<std::set<Text>> names_; // of the fields that somebody asks for, in capitals; without it all
};

bool isStatement(TextView source) {
    const auto tokens = jet::sqlTokens(source);
    return tokens.front().isWord(u"SELECT") || tokens.front().isWord(u"PARAMETERS") ||
           tokens.front().isWord(u"TRANSFORM") || tokens.front().isWord(u"TABLE");
}

// A name may stand in brackets.
Text bareName(TextView source) {
    const auto tokens = jet::sqlTokens(source);
    return tokens.size() == 2 && tokens.front().kind == jet::TokenKind::Name ? Text(tokens.front().text)
                                                                             : Text(source);
}

// Of all fields that are needed to answer, in capitals.
std::optional<std::set<Text>> namesIn(const Wanted& wanted) {
    if (!wanted.fields) {
        return std::nullopt;
    }
    std::set<Text> names;
    for (const Text& field : *wanted.fields) {
        names.insert(upperCase(field));
    }
    for (const auto& link : wanted.links) {
        names.insert(upperCase(link.first.field));
    }
    for (const OrderKey& key : wanted.order) {
        for (const FieldName& field : key.value.fields()) {
            names.insert(upperCase(field.field));
        }
    }
    return names;
}

} // namespace

std::optional<std::size_t> Records::find(const FieldName& name) const {
    for (std::size_t i = 0; i < fields.size(); ++i) {
        if (equalsIgnoringCase(fields[i].name, name.field) &&
            (name.table.empty() || equalsIgnoringCase(fields[i].table, name.table))) {
            return i;
        }
    }
    return std::nullopt;
}

Value Records::value(std::size_t row, const FieldName& field) const {
    const auto place = row < rows.size() ? find(field) : std::nullopt;
    return place ? rows[row][*place] : Value(Null{});
}

std::optional<Records> RecordSource::records(TextView source, const Wanted& wanted) const {
    try {
        Reading reading(database_, namesIn(wanted));
        const Text name = bareName(source);
        auto relation = isStatement(source) ? reading.statement(source, 0) : reading.named(name, name, 0);
        if (!relation || !Reading::link(*relation, wanted.links)) {
            return std::nullopt;
        }
        Reading::sort(*relation, wanted.order);
        Records records;
        records.total = relation->rows.size();
        records.isUpdatable = relation->isUpdatable;
        relation->rows.resize(std::min(relation->rows.size(), wanted.rows));
        reading.readLongValues(*relation);
        records.fields = std::move(relation->fields);
        records.rows = std::move(relation->rows);
        return records;
    } catch (const RunTimeError&) { // a damaged table, a link that leads nowhere
        return std::nullopt;
    }
}

std::vector<Text> RecordSource::formsNamedBy(TextView source) const {
    std::vector<Text> forms;
    std::set<Text> visited;
    std::vector<Text> pending{Text(source)};
    while (!pending.empty()) {
        const Text text = std::move(pending.back());
        pending.pop_back();
        std::vector<Text> drawnOn;
        skipErrors([&] {
            if (isStatement(text)) {
                const auto named = formsNamedIn(text);
                forms.insert(forms.end(), named.begin(), named.end());
                for (const jet::SelectSource& below : jet::selectionOfText(text).sources) {
                    drawnOn.push_back(below.name);
                }
            } else {
                drawnOn.push_back(bareName(text));
            }
        });
        for (const Text& name : drawnOn) {
            dao::QueryDef* query = database_.QueryDefs().find(name);
            if (query != nullptr && visited.insert(upperCase(name)).second) {
                skipErrors([&] { pending.push_back(query->SQL()); });
            }
        }
    }
    return forms;
}

} // namespace relvane::formview
