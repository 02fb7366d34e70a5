#include "sample_builder/table_writer.h"

#include <algorithm>
#include <stdexcept>

#include "sample_builder/byte_writer.h"
#include "sample_builder/column_value.h"
#include "sample_builder/definition_writer.h"
#include "sample_builder/index_key.h"
#include "sample_builder/index_tree.h"
#include "sample_builder/row_writer.h"

namespace relvane::samples {

namespace {

class TableWriter {
public:
    TableWriter(PageFile& file, const TablePlan& plan, const TableSettings& settings)
        : file_(file),
          plan_(plan),
          table_(*plan.table),
          settings_(settings),
          layout_(table_, file.format(), settings.coding),
          maps_(file),
          data_(file, plan.definition),
          longValues_(file) {}

    void write() {
        writeRows();
        for (const RealIndex& index : plan_.realIndexes) {
            contents_.indexes.push_back(writeIndex(index));
        }
        writeMaps();
        writeDefinition(file_, plan_, layout_, contents_, settings_);
    }

private:
    struct StoredRow {
        const RowSpec* row;
        RowPlace place; // of the row itself or of the pointer to it
    };

    void writeRows() {
        std::vector<std::pair<RowPlace, Bytes>> moved;
        for (const RowSpec& row : table_.rows) {
            if (row.deleted) {
                // What is left of a deleted row: an entry in the row table, without bytes.
                data_.append({}, jet::rowDeleted | jet::rowMoved);
                continue;
            }
            const Bytes bytes = rowBytes(layout_, row, longValues_);
            if (row.moved) {
                const Bytes pointer(4);
                const RowPlace place = data_.append(pointer, jet::rowMoved);
                moved.emplace_back(place, bytes);
                rows_.push_back({&row, place});
            } else {
                rows_.push_back({&row, data_.append(bytes)});
            }
        }
        if (!moved.empty()) {
            data_.turnPage();
        }
        for (const auto& [place, bytes] : moved) {
            Bytes pointer(4);
            putAt(pointer, 0, data_.append(bytes, jet::rowDeleted).pointer(), 4);
            data_.overwrite(place, pointer);
        }
        contents_.rowCount = table_.storedRowCount.value_or(static_cast<std::uint32_t>(rows_.size()));
        contents_.lastAutoNumber = table_.lastAutoNumber.value_or(largestAutoNumber());
    }

    std::uint32_t largestAutoNumber() const {
        std::int64_t largest = 0;
        for (const PlacedColumn& column : layout_.columns()) {
            if (!column.spec->autoNumber || column.spec->deleted) {
                continue;
            }
            for (const RowSpec& row : table_.rows) {
                if (const auto* number = std::get_if<std::int64_t>(&valueOf(row, column))) {
                    largest = std::max(largest, *number);
                }
            }
        }
        return static_cast<std::uint32_t>(largest);
    }

    TableContents::Index writeIndex(const RealIndex& index) {
        struct Entry {
            Bytes key;
            RowPlace place;
            bool hasNull;
        };
        std::vector<Entry> entries;
        for (const StoredRow& stored : rows_) {
            ByteWriter key;
            std::size_t nulls = 0;
            for (const IndexColumnSpec& indexed : index.columns) {
                const PlacedColumn& column = layout_.column(indexed.column);
                if (isLongValue(column.spec->type)) {
                    throw std::invalid_argument("an index on the long values of " +
                                                toUtf8(column.spec->name));
                }
                const Value& value = valueOf(*stored.row, column);
                nulls += std::holds_alternative<Null>(value) ? 1 : 0;
                appendKey(key, value, *column.spec, indexed.descending, settings_.coding.codePage);
            }
            if (nulls < index.columns.size() || (index.flags & jet::realIndexFlag::ignoreNulls) == 0) {
                entries.push_back({key.data(), stored.place, nulls > 0});
            }
        }
        std::ranges::sort(entries, [](const Entry& left, const Entry& right) {
            return left.key != right.key ? left.key < right.key
                                         : left.place.pointer() < right.place.pointer();
        });

        TableContents::Index result;
        std::vector<Bytes> bytes;
        for (std::size_t i = 0; i < entries.size(); ++i) {
            const bool repeated = i > 0 && entries[i].key == entries[i - 1].key;
            if (repeated && !entries[i].hasNull && (index.flags & jet::realIndexFlag::unique) != 0) {
                throw std::invalid_argument("a key stands twice in the unique index on " +
                                            toUtf8(index.columns.front().column));
            }
            result.distinctKeys += repeated ? 0 : 1;
            ByteWriter entry;
            entry.bytes(entries[i].key);
            for (const int shift : {16, 8, 0}) {
                entry.u8(entries[i].place.page >> shift & 0xFF);
            }
            entry.u8(entries[i].place.row);
            bytes.push_back(entry.data());
        }
        result.rows = static_cast<std::uint32_t>(rows_.size());
        const IndexTree tree = writeIndexTree(file_, plan_.definition, bytes, settings_.indexPageEntries);
        result.root = tree.root;
        result.map = maps_.add(tree.pages);
        return result;
    }

    void writeMaps() {
        contents_.pageMap = maps_.add(data_.pages(), table_.pageMap);
        contents_.roomMap = maps_.add(lastOf(data_.pages()));
        for (const PlacedColumn& column : layout_.columns()) {
            if (isLongValue(column.spec->type) && !column.spec->deleted) {
                const auto& pages = longValues_.pages(column);
                contents_.longValues.push_back({column.number, maps_.add(pages), maps_.add(lastOf(pages))});
            }
        }
    }

    // Pages are filled one after the other: the last has room.
    static std::vector<PageNumber> lastOf(const std::vector<PageNumber>& pages) {
        return pages.empty() ? pages : std::vector{pages.back()};
    }

    PageFile& file_;
    const TablePlan& plan_;
    const TableSpec& table_;
    TableSettings settings_;
    TableLayout layout_;
    PageMaps maps_;
    DataPages data_;
    LongValueStore longValues_;
    std::vector<StoredRow> rows_;
    TableContents contents_;
};

} // namespace

void writeTable(PageFile& file, const TablePlan& plan, const TableSettings& settings) {
    try {
        TableWriter(file, plan, settings).write();
    } catch (const std::invalid_argument& error) {
        throw std::invalid_argument("table " + toUtf8(plan.table->name) + ": " + error.what());
    }
}

} // namespace relvane::samples
