#include "jet/query_joins.h"

#include <algorithm>
#include <map>
#include <memory>
#include <set>
#include <utility>

#include "jet/query_names.h"

namespace relvane::jet {
namespace {

enum JoinKind { Inner = 1, Left = 2, Right = 3 };
constexpr TextView joinWords[] = {u"", u" INNER JOIN ", u" LEFT JOIN ", u" RIGHT JOIN "};

JoinKind joinKind(const QueryRow& row) {
    const int flag = flagOf(row);
    if (flag < Inner || flag > Right) {
        throwDamagedQuery(u"query join of an unknown kind");
    }
    return static_cast<JoinKind>(flag);
}

// A source, or two entries joined. There are at most `maximumSources` leaves, which bounds the depth.
struct Entry {
    Text source; // of a leaf
    Text key;
    JoinKind kind = Inner;
    std::unique_ptr<Entry> left, right;
    std::vector<TextView> conditions; // in the order of the rows

    bool isJoin() const { return left != nullptr; }
    bool contains(const Text& name) const {
        return isJoin() ? left->contains(name) || right->contains(name) : key == name;
    }
};
using Entries = std::vector<std::unique_ptr<Entry>>;

std::unique_ptr<Entry> leaf(Text printed, Text key) {
    auto entry = std::make_unique<Entry>();
    entry->source = std::move(printed);
    entry->key = std::move(key);
    return entry;
}

std::unique_ptr<Entry> leafOf(const QueryRow& row, SqlDialect dialect) {
    const TextView name = textOf(row.name1), alias = textOf(row.name2), subquery = textOf(row.expression);
    if (!name.empty()) {
        Text printed = printedName(name);
        if (!alias.empty()) {
            printed += u" AS " + printedName(alias);
        }
        return leaf(std::move(printed), nameKey(alias.empty() ? name : alias));
    }
    if (subquery.empty()) {
        return nullptr;
    }
    Text printed =
        dialect == SqlDialect::Jet3 ? u"[" + Text(subquery) + u"]. " : u"(" + Text(subquery) + u")  ";
    return leaf(printed + u"AS " + printedName(alias), nameKey(alias));
}

// The place of the entry that contains the name. A join row may name a source that has no row of its own.
std::size_t placeOf(TextView name, Entries& entries, std::size_t& sources) {
    const Text key = nameKey(name);
    const auto found = std::ranges::find_if(
        entries, [&key](const std::unique_ptr<Entry>& entry) { return entry->contains(key); });
    if (found == entries.end()) {
        if (++sources > maximumSources) {
            throwDamagedQuery(u"query with too many sources");
        }
        entries.push_back(leaf(printedName(name), key));
        return entries.size() - 1;
    }
    return static_cast<std::size_t>(found - entries.begin());
}

// The join that brought the two together.
Entry& joinBetween(Entry& entry, const Text& first, const Text& second) {
    if (!entry.isJoin()) {
        throwDamagedQuery(u"query source joined with itself");
    }
    for (Entry* side : {entry.left.get(), entry.right.get()}) {
        if (side->contains(first) && side->contains(second)) {
            return joinBetween(*side, first, second);
        }
    }
    return entry;
}

void addJoin(const QueryRow& row, Entries& entries, std::size_t& sources) {
    const std::size_t first = placeOf(textOf(row.name1), entries, sources);
    const std::size_t second = placeOf(textOf(row.name2), entries, sources);
    if (first == second) {
        joinBetween(*entries[first], nameKey(textOf(row.name1)), nameKey(textOf(row.name2)))
            .conditions.push_back(textOf(row.expression));
        return;
    }
    auto join = std::make_unique<Entry>();
    join->kind = joinKind(row);
    join->left = std::move(entries[first]);
    join->right = std::move(entries[second]);
    join->conditions.push_back(textOf(row.expression));
    std::erase(entries, nullptr);
    entries.push_back(std::move(join));
}

// One condition as it stands; several in parentheses, the newest first.
Text printedConditions(const std::vector<TextView>& conditions) {
    if (conditions.size() == 1) {
        return Text(conditions.front());
    }
    Text printed;
    for (auto condition = conditions.rbegin(); condition != conditions.rend(); ++condition) {
        printed += (printed.empty() ? u"(" : u" AND (") + Text(*condition) + u")";
    }
    return printed;
}

Text printed(const Entry& entry) {
    if (!entry.isJoin()) {
        return entry.source;
    }
    const auto side = [](const Entry& inner) {
        return inner.isJoin() ? u"(" + printed(inner) + u")" : printed(inner);
    };
    return side(*entry.left) + Text(joinWords[entry.kind]) + side(*entry.right) + u" ON " +
           printedConditions(entry.conditions);
}

} // namespace

Text printedSources(const QueryParts& parts, SqlDialect dialect) {
    const auto rows = parts.of(QueryPart::Source);
    std::size_t sources = rows.size();
    if (sources > maximumSources) {
        throwDamagedQuery(u"query with too many sources");
    }
    Entries entries;
    for (const QueryRow* row : rows) {
        if (auto entry = leafOf(*row, dialect)) {
            entries.push_back(std::move(entry));
        }
    }
    for (const QueryRow* row : parts.of(QueryPart::Join)) {
        addJoin(*row, entries, sources);
    }
    Text list;
    for (const auto& entry : entries) {
        list += (list.empty() ? u"" : u", ") + printed(*entry);
    }
    return list;
}

std::vector<Text> ambiguousSources(const QueryParts& parts) {
    struct Uses {
        int inner = 0, optional = 0;
    };
    std::map<Text, Uses> uses;
    std::set<std::pair<Text, Text>> counted; // outer joins: what is kept, what may be missing
    std::vector<Text> optional;              // in the order of the rows
    for (const QueryRow* row : parts.of(QueryPart::Join)) {
        Text kept = nameKey(textOf(row->name1)), missing = nameKey(textOf(row->name2));
        if (flagOf(*row) == Inner) {
            ++uses[kept].inner;
            ++uses[missing].inner;
            continue;
        }
        if (flagOf(*row) == Right) {
            std::swap(kept, missing);
        }
        if (counted.emplace(kept, missing).second) { // else a second condition of the same join
            ++uses[missing].optional;
            optional.push_back(missing);
        }
    }
    std::vector<Text> ambiguous;
    for (const Text& name : optional) {
        const Uses& use = uses[name];
        if ((use.inner > 0 || use.optional > 1) && std::ranges::find(ambiguous, name) == ambiguous.end()) {
            ambiguous.push_back(name);
        }
    }
    return ambiguous;
}

} // namespace relvane::jet
