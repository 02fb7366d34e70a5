// A store whose tables are lists of rows that a test writes down, for reading.
#pragma once

#include <map>
#include <memory>
#include <vector>

#include "platform/recordset.h"
#include "platform/runtime_error.h"

namespace relvane::test {

struct ListedTable {
    std::vector<Text> fields;
    std::vector<std::vector<Value>> rows;
    int closed = 0; // how many cursors on it were closed
};

class ListedRows : public Recordset {
public:
    explicit ListedRows(ListedTable& table) : table_(table) {}
    void AddNew() override { refuse(); }
    void Collect(TextView, const Value&) override { refuse(); }
    void Update() override { refuse(); }
    bool EOF_() const override { return at_ >= table_.rows.size(); }
    void MoveFirst() override { at_ = 0; }
    void MoveNext() override { ++at_; }
    int FieldCount() const override { return static_cast<int>(table_.fields.size()); }
    Text FieldName(int position) const override {
        return table_.fields.at(static_cast<std::size_t>(position));
    }
    Value Field(TextView) const override { throw RunTimeError(ErrorNumber::ItemNotInCollection); }
    Value Field(int position) const override {
        return table_.rows.at(at_).at(static_cast<std::size_t>(position));
    }
    void Close() override { ++table_.closed; }

private:
    static void refuse() { throw RunTimeError(ErrorNumber::DatabaseReadOnly); }

    ListedTable& table_;
    std::size_t at_ = 0;
};

class ListedStore : public RowStore {
public:
    explicit ListedStore(std::map<Text, ListedTable>& tables) : tables_(tables) {}
    Text Name() const override { return u"Relvane.mdb"; }
    std::unique_ptr<Recordset> OpenRecordset(TextView name) override {
        const auto found = tables_.find(Text(name));
        if (found == tables_.end()) {
            throw RunTimeError(ErrorNumber::TableNotFound, name);
        }
        return std::make_unique<ListedRows>(found->second);
    }
    std::unique_ptr<Recordset> OpenSorted(TextView name, std::span<const SortKey>, std::int64_t) override {
        return OpenRecordset(name);
    }
    void Execute(TextView) override { throw RunTimeError(ErrorNumber::DatabaseReadOnly); }
    void copyTo(const Text&) override { throw RunTimeError(ErrorNumber::DatabaseReadOnly); }

private:
    std::map<Text, ListedTable>& tables_;
};

} // namespace relvane::test
