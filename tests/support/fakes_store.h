// A work database in memory. Its rows outlive the stores and cursors that a program opens on it, as those of a file do.
#pragma once

#include <functional>
#include <map>
#include <set>
#include <utility>
#include <vector>

#include "platform/recordset.h"
#include "platform/runtime_error.h"

namespace relvane::test {

using FakeRow = std::vector<std::pair<Text, Value>>; // in the order in which the fields were written

// Of a field that was written twice the later value stands.
inline Value valueOf(const FakeRow& row, TextView field) {
    Value last = Null{};
    for (const auto& [name, value] : row) {
        if (name == field) {
            last = value;
        }
    }
    return last;
}

inline std::vector<Text> fieldNames(const FakeRow& row) {
    std::vector<Text> names;
    for (const auto& [name, value] : row) {
        names.push_back(name);
    }
    return names;
}

struct FakeStoreFile {
    std::map<Text, std::vector<FakeRow>> tables;
    std::vector<Text> log;                        // "open T", "delete * from T;", "close T"
    std::function<void(TextView table)> onUpdate; // may throw in the place of the write
    std::set<Text> missingFields;                 // asked for: error 3265
    std::set<Text> missingTables;                 // opened: error 3078
    std::size_t opened = 0;

    const std::vector<FakeRow>& rows(const Text& table) { return tables[table]; }
};

class FakeRecordset : public Recordset {
public:
    FakeRecordset(FakeStoreFile& file, Text table) : file_(file), table_(std::move(table)) {
        file_.log.push_back(u"open " + table_);
    }

    void AddNew() override {
        refuseClosed();
        row_.clear();
    }
    void Collect(TextView field, const Value& value) override {
        refuseClosed();
        row_.emplace_back(Text(field), value);
    }
    void Update() override {
        refuseClosed();
        if (table_ == u"T_RvTitle" && isEmptyText(valueOf(row_, u"FileName"))) {
            throw RunTimeError(ErrorNumber::ZeroLengthString);
        }
        if (file_.onUpdate) {
            file_.onUpdate(table_);
        }
        file_.tables[table_].push_back(row_);
    }
    bool EOF_() const override { return at_ >= file_.tables[table_].size(); }
    void MoveFirst() override { at_ = 0; }
    void MoveNext() override { ++at_; }
    int FieldCount() const override { return EOF_() ? 0 : static_cast<int>(currentRow().size()); }
    Text FieldName(int position) const override { return fieldAt(position).first; }
    Value Field(TextView name) const override {
        const FakeRow& row = currentRow();
        if (file_.missingFields.contains(Text(name))) {
            throw RunTimeError(ErrorNumber::ItemNotInCollection, name);
        }
        return valueOf(row, name);
    }
    // The fields of a row stand in the order in which it was written.
    Value Field(int position) const override { return fieldAt(position).second; }
    void Close() override {
        if (!closed_) {
            file_.log.push_back(u"close " + table_);
        }
        closed_ = true;
    }

private:
    void refuseClosed() const {
        if (closed_) {
            throw RunTimeError(ErrorNumber::ObjectInvalid);
        }
    }
    const FakeRow& currentRow() const {
        if (EOF_()) {
            throw RunTimeError(ErrorNumber::NoCurrentRecord);
        }
        return file_.tables[table_][at_];
    }
    const std::pair<Text, Value>& fieldAt(int position) const {
        const FakeRow& row = currentRow();
        if (position < 0 || static_cast<std::size_t>(position) >= row.size()) {
            throw RunTimeError(ErrorNumber::ItemNotInCollection);
        }
        return row[static_cast<std::size_t>(position)];
    }

    FakeStoreFile& file_;
    Text table_;
    FakeRow row_;
    std::size_t at_ = 0;
    bool closed_ = false;
};

class FakeStore : public RowStore {
public:
    explicit FakeStore(FakeStoreFile& file) : file_(file) { ++file_.opened; }
    Text Name() const override { return u"Relvane.mdb"; }
    std::unique_ptr<Recordset> OpenRecordset(TextView table) override {
        if (file_.missingTables.contains(Text(table))) {
            throw RunTimeError(ErrorNumber::TableNotFound, table);
        }
        return std::make_unique<FakeRecordset>(file_, Text(table));
    }
    std::unique_ptr<Recordset> OpenSorted(TextView table, std::span<const SortKey>, std::int64_t) override {
        return OpenRecordset(table);
    }
    void Execute(TextView sql) override {
        constexpr TextView before = u"delete * from ";
        if (!sql.starts_with(before) || !sql.ends_with(u";")) {
            throw RunTimeError(3075, Text(sql));
        }
        file_.log.push_back(Text(sql));
        file_.tables[Text(sql.substr(before.size(), sql.size() - before.size() - 1))].clear();
    }
    void copyTo(const Text&) override {}

private:
    FakeStoreFile& file_;
};

} // namespace relvane::test
