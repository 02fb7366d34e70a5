#include "memory_store.h"

#include <algorithm>
#include <numeric>

#include "platform/runtime_error.h"

namespace relvane::test {
namespace {

class MemoryRecordset : public Recordset {
public:
    MemoryRecordset(MemoryStore& store, const MemoryTable& table, std::vector<std::size_t> order,
                    std::size_t position)
        : store_(store), table_(table), order_(std::move(order)), position_(position) {
        ++store_.openCursors;
        ++store_.opened;
    }
    ~MemoryRecordset() override { Close(); }

    void AddNew() override { refuse(); }
    void Collect(TextView, const Value&) override { refuse(); }
    void Update() override { refuse(); }
    bool EOF_() const override { return position_ >= order_.size(); }
    void MoveFirst() override { position_ = 0; }
    void MoveNext() override { ++position_; }
    int FieldCount() const override { return static_cast<int>(table_.fields.size()); }
    Text FieldName(int position) const override {
        return table_.fields.at(static_cast<std::size_t>(position));
    }
    Value Field(TextView name) const override {
        for (int i = 0; i < FieldCount(); ++i) {
            if (equalsIgnoringCase(FieldName(i), name)) {
                return Field(i);
            }
        }
        throw RunTimeError(ErrorNumber::ItemNotInCollection, name);
    }
    Value Field(int position) const override {
        return table_.rows[order_.at(position_)].at(static_cast<std::size_t>(position));
    }
    void Close() override {
        store_.openCursors -= open_ ? 1 : 0;
        open_ = false;
    }

private:
    [[noreturn]] static void refuse() { throw RunTimeError(ErrorNumber::ObjectInvalid); }

    MemoryStore& store_;
    bool open_ = true;
    const MemoryTable& table_;
    std::vector<std::size_t> order_;
    std::size_t position_;
};

} // namespace

std::unique_ptr<Recordset> MemoryStore::OpenRecordset(TextView tableName) {
    return OpenSorted(tableName, {}, 0);
}

std::unique_ptr<Recordset> MemoryStore::OpenSorted(TextView tableName, std::span<const SortKey> keys,
                                                   std::int64_t skip) {
    lastSort.assign(keys.begin(), keys.end());
    const auto found = std::find_if(tables.begin(), tables.end(), [&](const auto& entry) {
        return equalsIgnoringCase(entry.first, tableName);
    });
    if (found == tables.end()) {
        throw RunTimeError(ErrorNumber::TableNotFound, tableName);
    }
    const MemoryTable& table = found->second;
    std::vector<std::size_t> order(table.rows.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    for (std::size_t k = keys.size(); k-- > 0;) {
        const auto field = std::find_if(table.fields.begin(), table.fields.end(), [&](const Text& name) {
            return equalsIgnoringCase(name, keys[k].field);
        });
        if (field == table.fields.end()) {
            throw RunTimeError(ErrorNumber::ItemNotInCollection, keys[k].field);
        }
        const auto index = static_cast<std::size_t>(field - table.fields.begin());
        const bool descending = keys[k].descending;
        std::stable_sort(order.begin(), order.end(), [&](std::size_t left, std::size_t right) {
            const Value& a = table.rows[left][index];
            const Value& b = table.rows[right][index];
            return descending ? b < a : a < b;
        });
    }
    return std::make_unique<MemoryRecordset>(*this, table, std::move(order), static_cast<std::size_t>(skip));
}

void MemoryStore::Execute(TextView) {
    throw RunTimeError(ErrorNumber::ObjectInvalid);
}

void MemoryStore::copyTo(const Text&) {
    throw RunTimeError(ErrorNumber::ObjectInvalid);
}

} // namespace relvane::test
