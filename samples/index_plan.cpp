#include "sample_builder/index_plan.h"

#include <algorithm>
#include <stdexcept>

#include "sample_builder/index_key.h"

namespace relvane::samples {

namespace {

using namespace jet::realIndexFlag;

bool sameColumns(const std::vector<IndexColumnSpec>& left, const std::vector<IndexColumnSpec>& right) {
    return std::ranges::equal(left, right, [](const auto& one, const auto& other) {
        return equalsIgnoringCase(one.column, other.column) && one.descending == other.descending;
    });
}

// The place of a real index that will do, or nothing.
std::optional<std::size_t> find(const TablePlan& plan, const std::vector<IndexColumnSpec>& columns,
                                const auto& flagsWillDo) {
    for (std::size_t i = 0; i < plan.realIndexes.size(); ++i) {
        if (sameColumns(plan.realIndexes[i].columns, columns) && flagsWillDo(plan.realIndexes[i].flags)) {
            return i;
        }
    }
    return std::nullopt;
}

std::size_t add(TablePlan& plan, std::vector<IndexColumnSpec> columns, std::uint8_t flags) {
    plan.realIndexes.push_back({std::move(columns), flags});
    return plan.realIndexes.size() - 1;
}

void planOwn(TablePlan& plan) {
    for (const IndexSpec& index : plan.table->indexes) {
        const auto flags = static_cast<std::uint8_t>((index.primary || index.unique ? unique : 0) |
                                                     (index.ignoreNulls ? ignoreNulls : 0) |
                                                     (index.primary || index.required ? required : 0));
        const auto shared = find(plan, index.columns, [&](std::uint8_t other) { return other == flags; });
        LogicalIndex logical;
        logical.name = index.name;
        logical.number = plan.logicalIndexes.size();
        logical.realIndex = shared ? *shared : add(plan, index.columns, flags);
        logical.type = index.primary ? jet::IndexType::PrimaryKey : jet::IndexType::Plain;
        plan.logicalIndexes.push_back(std::move(logical));
    }
}

// ".rA", ".rB" .. ".rZ", ".rAA" ..: the name of the index on the primary side, by its number.
Text hiddenName(std::size_t number) {
    Text letters(1, static_cast<char16_t>(u'A' + number % 26));
    return u".r" + (number < 26 ? letters : Text(1, static_cast<char16_t>(u'A' + number / 26 - 1)) + letters);
}

void planRelation(TablePlan& primary, TablePlan& foreign, const RelationSpec& relation) {
    std::vector<IndexColumnSpec> primaryColumns, foreignColumns;
    for (const auto& [ofPrimary, ofForeign] : relation.columns) {
        primaryColumns.push_back({ofPrimary});
        foreignColumns.push_back({ofForeign});
    }
    const auto key = find(primary, primaryColumns, [](std::uint8_t flags) { return (flags & unique) != 0; });
    if (!key) {
        throw std::invalid_argument("relation " + toUtf8(relation.name) + " needs a unique index on " +
                                    toUtf8(relation.table));
    }
    const auto reference = find(foreign, foreignColumns, [](std::uint8_t) { return true; });

    LogicalIndex ofPrimary;
    ofPrimary.number = primary.logicalIndexes.size();
    ofPrimary.name = hiddenName(ofPrimary.number);
    ofPrimary.realIndex = *key;
    ofPrimary.type = jet::IndexType::Foreign;
    ofPrimary.side = jet::IndexSide::Primary;
    ofPrimary.otherTable = foreign.definition;
    ofPrimary.cascadeUpdates = (relation.attributes & relationCascadeUpdates) != 0;
    ofPrimary.cascadeDeletes = (relation.attributes & relationCascadeDeletes) != 0;

    LogicalIndex ofForeign = ofPrimary;
    ofForeign.number = foreign.logicalIndexes.size() + (&primary == &foreign ? 1 : 0);
    ofForeign.name = relation.name;
    ofForeign.realIndex = reference ? *reference : add(foreign, foreignColumns, 0);
    ofForeign.side = jet::IndexSide::Foreign;
    ofForeign.otherTable = primary.definition;
    ofForeign.otherIndex = static_cast<std::uint32_t>(ofPrimary.number);
    ofPrimary.otherIndex = static_cast<std::uint32_t>(ofForeign.number);

    primary.logicalIndexes.push_back(std::move(ofPrimary));
    foreign.logicalIndexes.push_back(std::move(ofForeign));
}

} // namespace

void planIndexes(std::vector<TablePlan>& tables, const std::vector<RelationSpec>& relations, int codePage) {
    std::ranges::for_each(tables, planOwn);
    for (const RelationSpec& relation : relations) {
        const auto named = [&](const Text& name) {
            return std::ranges::find_if(
                tables, [&](const TablePlan& plan) { return equalsIgnoringCase(plan.table->name, name); });
        };
        const auto primary = named(relation.table), foreign = named(relation.foreignTable);
        if (primary != tables.end() && foreign != tables.end() &&
            (relation.attributes & relationNotEnforced) == 0) {
            planRelation(*primary, *foreign, relation);
        }
    }
    for (TablePlan& plan : tables) {
        std::ranges::sort(plan.logicalIndexes, {},
                          [&](const LogicalIndex& index) { return textKey(index.name, codePage); });
    }
}

} // namespace relvane::samples
