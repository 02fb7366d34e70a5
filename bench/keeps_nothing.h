// A store whose tables of one analysis take rows and keep none of them, so that the analysis can be measured without the
// writing. All else is the store behind it.
#pragma once

#include <algorithm>
#include <memory>
#include <utility>
#include <vector>

#include "platform/recordset.h"
#include "platform/runtime_error.h"

namespace relvane::bench {

// Asked for a row it has none.
class RowsThrownAway final : public Recordset {
public:
    void AddNew() override {}
    void Collect(TextView, const Value&) override {}
    void Update() override {}
    bool EOF_() const override { return true; }
    void MoveFirst() override { throw RunTimeError(ErrorNumber::NoCurrentRecord); }
    void MoveNext() override { throw RunTimeError(ErrorNumber::NoCurrentRecord); }
    int FieldCount() const override { return 0; }
    Text FieldName(int) const override { throw RunTimeError(ErrorNumber::ItemNotInCollection); }
    Value Field(TextView) const override { throw RunTimeError(ErrorNumber::NoCurrentRecord); }
    Value Field(int) const override { throw RunTimeError(ErrorNumber::NoCurrentRecord); }
    void Close() override {}
};

class KeepsNothing final : public RowStore {
public:
    KeepsNothing(std::shared_ptr<RowStore> store, std::vector<Text> tables)
        : store_(std::move(store)), tables_(std::move(tables)) {}

    Text Name() const override { return store_->Name(); }
    std::unique_ptr<Recordset> OpenRecordset(TextView tableName) override {
        if (std::ranges::find(tables_, tableName) != tables_.end()) {
            return std::make_unique<RowsThrownAway>();
        }
        return store_->OpenRecordset(tableName);
    }
    std::unique_ptr<Recordset> OpenSorted(TextView tableName, std::span<const SortKey> keys,
                                          std::int64_t skip) override {
        return store_->OpenSorted(tableName, keys, skip);
    }
    void Execute(TextView sql) override { store_->Execute(sql); }
    void flush() override { store_->flush(); }
    void copyTo(const Text& path) override { store_->copyTo(path); }

private:
    std::shared_ptr<RowStore> store_;
    std::vector<Text> tables_;
};

} // namespace relvane::bench
