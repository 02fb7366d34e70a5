#include "jet/query_parts.h"

#include <algorithm>

#include "platform/runtime_error.h"

namespace relvane::jet {
namespace {

// Bit of the catalogue flags that hides the object in the database window; it says nothing of the kind.
constexpr int hiddenObject = 8;

struct KindOfFlags {
    int flags;
    QueryKind kind;
};
// Queries embedded in forms and reports have the flags 3 and are selections like those of 0.
constexpr KindOfFlags kindsOfFlags[] = {
    {0x10, QueryKind::Crosstab},    {0x20, QueryKind::Delete},    {0x30, QueryKind::Update},
    {0x40, QueryKind::Append},      {0x50, QueryKind::MakeTable}, {0x60, QueryKind::DataDefinition},
    {0x70, QueryKind::PassThrough}, {0x80, QueryKind::Union},
};

bool comesFirst(const QueryRow* left, const QueryRow* right) {
    return left->attribute != right->attribute ? left->attribute < right->attribute
                                               : left->order < right->order;
}

} // namespace

void throwDamagedQuery(TextView reason) {
    throw RunTimeError(ErrorNumber::DatabaseDamaged, reason);
}

QueryParts::QueryParts(std::span<const QueryRow> rows) {
    rows_.reserve(rows.size());
    for (const QueryRow& row : rows) {
        rows_.push_back(&row);
    }
    std::stable_sort(rows_.begin(), rows_.end(), comesFirst);
}

std::span<const QueryRow* const> QueryParts::of(QueryPart part) const {
    const auto attribute = [](const QueryRow* row) { return row->attribute; };
    const auto begin = std::ranges::lower_bound(rows_, static_cast<int>(part), {}, attribute);
    const auto end = std::ranges::upper_bound(rows_, static_cast<int>(part), {}, attribute);
    return {begin, end};
}

const QueryRow* QueryParts::first(QueryPart part) const {
    const auto rows = of(part);
    return rows.empty() ? nullptr : rows.front();
}

int QueryParts::options() const {
    const QueryRow* row = first(QueryPart::Options);
    return row == nullptr ? 0 : flagOf(*row);
}

QueryKind QueryParts::kind(int catalogueFlags) const {
    if (const QueryRow* row = first(QueryPart::Kind); row != nullptr && row->flag) {
        if (*row->flag < static_cast<int>(QueryKind::Select) ||
            *row->flag > static_cast<int>(QueryKind::Union)) {
            throwDamagedQuery(u"query of an unknown kind");
        }
        return static_cast<QueryKind>(*row->flag);
    }
    const int flags = catalogueFlags & 0xFF & ~hiddenObject;
    const auto* found = std::ranges::find(kindsOfFlags, flags, &KindOfFlags::flags);
    return found == std::end(kindsOfFlags) ? QueryKind::Select : found->kind;
}

TextView textOf(const std::optional<Text>& stored) {
    return stored ? TextView(*stored) : TextView();
}

int flagOf(const QueryRow& row) {
    return row.flag.value_or(0);
}

} // namespace relvane::jet
