#include "jet/table.h"

#include <algorithm>
#include <limits>

#include "jet/index_walk.h"
#include "jet/page_map.h"

namespace relvane::jet {

Table::Table(const PageFile& file, std::uint32_t definitionPage)
    : file_(file), definition_(readTableDefinition(file, definitionPage)) {}

Row Table::row(RowPointer pointer) const {
    return {file_.format(), definition_, followRow(file_, pointer)};
}

std::vector<RowPointer> Table::rowsByIndex(TextView indexName) const {
    const auto index = std::ranges::find_if(definition_.logicalIndexes, [&](const LogicalIndex& candidate) {
        return equalsIgnoringCase(candidate.name, indexName);
    });
    if (index == definition_.logicalIndexes.end()) {
        return {};
    }
    try {
        return walkIndex(file_, definition_.realIndexes[index->realIndex].root);
    } catch (const RunTimeError&) {
        return {}; // the order of an index is a help, not a part of the data
    }
}

RowCursor::RowCursor(const Table& table)
    : table_(table), pages_(readPageMap(table.file(), table.definition().pageMap)) {}

std::optional<RowPointer> RowCursor::next() {
    for (;;) {
        if (!current_) {
            if (page_ == pages_.size()) {
                return std::nullopt;
            }
            // A page that now serves something else may still stand in the map.
            const Page page = table_.file().page(pages_[page_]);
            if (page.is(PageKind::Data)) {
                current_.emplace(table_.file(), pages_[page_]);
            }
            if (!current_ || current_->owner() != table_.definition().page) {
                current_.reset();
                ++page_;
                continue;
            }
            row_ = 0;
        }
        while (row_ < current_->rowCount() && row_ <= std::numeric_limits<std::uint8_t>::max()) {
            const std::size_t row = row_++;
            if (!current_->isDeleted(row)) {
                return RowPointer{pages_[page_], static_cast<std::uint8_t>(row)};
            }
        }
        current_.reset();
        ++page_;
    }
}

Value NamedRow::operator()(TextView column) const {
    const Column* found = table_.definition().find(column);
    return found == nullptr ? Value(Null{}) : table_.value(row_, *found);
}

std::optional<std::int32_t> NamedRow::number(TextView column) const {
    const Value value = (*this)(column);
    const auto* number = std::get_if<std::int64_t>(&value);
    return number == nullptr ? std::nullopt : std::optional(static_cast<std::int32_t>(*number));
}

std::optional<Text> NamedRow::text(TextView column) const {
    Value value = (*this)(column);
    Text* text = std::get_if<Text>(&value);
    return text == nullptr ? std::nullopt : std::optional(std::move(*text));
}

Bytes NamedRow::bytes(TextView column) const {
    Value value = (*this)(column);
    Bytes* bytes = std::get_if<Bytes>(&value);
    return bytes == nullptr ? Bytes() : std::move(*bytes);
}

} // namespace relvane::jet
