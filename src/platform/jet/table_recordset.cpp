#include "jet/table_recordset.h"

#include <algorithm>

namespace relvane::jet {
namespace {

constexpr int noCurrentRecord = 3021, cannotUpdate = 3027, notSupported = 3251;

// Where the places of the rows come from.
class RowPlaces {
public:
    virtual ~RowPlaces() = default;
    virtual std::optional<RowPointer> next() = 0;
    virtual void restart() = 0;
};

class StoredOrder : public RowPlaces {
public:
    explicit StoredOrder(const Table& table) : table_(table), cursor_(table) {}
    std::optional<RowPointer> next() override { return cursor_->next(); }
    void restart() override { cursor_.emplace(table_); }

private:
    const Table& table_;
    std::optional<RowCursor> cursor_;
};

class ListedOrder : public RowPlaces {
public:
    explicit ListedOrder(std::vector<RowPointer> rows) : rows_(std::move(rows)) {}
    std::optional<RowPointer> next() override {
        return at_ < rows_.size() ? std::optional(rows_[at_++]) : std::nullopt;
    }
    void restart() override { at_ = 0; }

private:
    std::vector<RowPointer> rows_;
    std::size_t at_ = 0;
};

class TableRecordset : public Recordset {
public:
    TableRecordset(std::shared_ptr<const JetFile> file, const Table& table, std::unique_ptr<RowPlaces> places)
        : file_(std::move(file)),
          table_(table),
          columns_(table.definition().columnsInOrder()),
          places_(std::move(places)) {
        step();
    }

    void AddNew() override { failReadOnly(); }
    void Collect(TextView, const Value&) override { failReadOnly(); }
    void Update() override { failReadOnly(); }

    bool EOF_() const override {
        requireOpen();
        return !place_;
    }
    void MoveFirst() override {
        requireOpen();
        places_->restart();
        step();
    }
    void MoveNext() override {
        requireCurrent();
        step();
    }

    int FieldCount() const override {
        requireOpen();
        return static_cast<int>(columns_.size());
    }
    Text FieldName(int position) const override {
        requireOpen();
        return columnAt(position).name;
    }
    Value Field(TextView name) const override {
        requireOpen();
        const Column* column = table_.definition().find(name);
        if (column == nullptr) {
            throw RunTimeError(ErrorNumber::ItemNotInCollection, name);
        }
        return valueOf(*column);
    }
    Value Field(int position) const override {
        requireOpen();
        return valueOf(columnAt(position));
    }

    void Close() override {
        places_.reset();
        place_.reset();
        row_.reset();
    }

private:
    void requireOpen() const {
        if (!places_) {
            throw RunTimeError(ErrorNumber::ObjectInvalid);
        }
    }
    void requireCurrent() const {
        requireOpen();
        if (!place_) {
            throw RunTimeError(noCurrentRecord, u"カレント レコードがありません。");
        }
    }
    void step() {
        place_ = places_->next();
        row_.reset();
    }
    const Column& columnAt(int position) const {
        if (position < 0 || position >= static_cast<int>(columns_.size())) {
            throw RunTimeError(ErrorNumber::ItemNotInCollection);
        }
        return *columns_[static_cast<std::size_t>(position)];
    }
    Value valueOf(const Column& column) const {
        requireCurrent();
        if (!row_) {
            row_.emplace(table_.row(*place_));
        }
        return table_.value(*row_, column);
    }

    std::shared_ptr<const JetFile> file_;
    const Table& table_;
    std::vector<const Column*> columns_;
    std::unique_ptr<RowPlaces> places_; // null when closed
    std::optional<RowPointer> place_;   // nothing at EOF
    mutable std::optional<Row> row_;    // the row at place_, once a field of it was read
};

// Null before everything; values of one column are of one kind, so the rest is the kind's own order.
bool isBefore(const Value& left, const Value& right) {
    return (left <=> right) == std::partial_ordering::less;
}

} // namespace

void failReadOnly() {
    throw RunTimeError(cannotUpdate, u"更新できません。データベースは読み取り専用です。");
}

std::unique_ptr<Recordset> openTableRecordset(std::shared_ptr<const JetFile> file, const Table& table) {
    return std::make_unique<TableRecordset>(std::move(file), table, std::make_unique<StoredOrder>(table));
}

std::unique_ptr<Recordset> openSortedRecordset(std::shared_ptr<const JetFile> file, const Table& table,
                                               std::span<const SortKey> keys, std::int64_t skip) {
    struct Entry {
        std::vector<Value> keys;
        RowPointer place;
    };
    std::vector<const Column*> columns;
    for (const SortKey& key : keys) {
        if (key.collation == Collation::Kana) {
            throw RunTimeError(notSupported, u"対象データベースでは五十音順の並べ替えはできません。");
        }
        columns.push_back(table.definition().find(key.field));
        if (columns.back() == nullptr) {
            throw RunTimeError(ErrorNumber::ItemNotInCollection, key.field);
        }
    }
    std::vector<Entry> entries;
    RowCursor cursor(table);
    while (const auto place = cursor.next()) {
        Entry& entry = entries.emplace_back(Entry{{}, *place});
        const Row row = table.row(*place);
        for (const Column* column : columns) {
            entry.keys.push_back(table.value(row, *column));
        }
    }
    std::ranges::stable_sort(entries, [&](const Entry& left, const Entry& right) {
        for (std::size_t i = 0; i < keys.size(); ++i) {
            const Value& first = keys[i].descending ? right.keys[i] : left.keys[i];
            const Value& second = keys[i].descending ? left.keys[i] : right.keys[i];
            if (isBefore(first, second)) {
                return true;
            }
            if (isBefore(second, first)) {
                return false;
            }
        }
        return false;
    });
    std::vector<RowPointer> places;
    for (std::size_t i = static_cast<std::size_t>(std::max<std::int64_t>(skip, 0)); i < entries.size(); ++i) {
        places.push_back(entries[i].place);
    }
    return std::make_unique<TableRecordset>(std::move(file), table,
                                            std::make_unique<ListedOrder>(std::move(places)));
}

} // namespace relvane::jet
