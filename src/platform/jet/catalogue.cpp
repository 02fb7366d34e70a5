#include "jet/catalogue.h"

#include <algorithm>

namespace relvane::jet {
namespace {

Table openObjectsTable(const PageFile& file) {
    if (file.header().pageKey != 0 && file.exists(objectsPage) &&
        !file.page(objectsPage).is(PageKind::Definition)) {
        throw RunTimeError(ErrorNumber::DecryptionFailed);
    }
    return {file, objectsPage};
}

} // namespace

Catalogue::Catalogue(const PageFile& file) : file_(file), table_(openObjectsTable(file)) {
    for (const TextView needed : {u"Id", u"ParentId", u"Name", u"Type"}) {
        if (table_.definition().find(needed) == nullptr) {
            failDamaged(objectsPage, u"オブジェクト一覧のフィールドがありません");
        }
    }
    RowCursor cursor(table_);
    while (const auto pointer = cursor.next()) {
        try {
            if (auto entry = readEntry(*pointer)) {
                entries_.push_back(std::move(*entry));
            }
        } catch (const RunTimeError& error) {
            problems_.push_back(error.description()); // the other objects can still be shown
        }
    }
    order();
}

std::optional<CatalogueEntry> Catalogue::readEntry(RowPointer pointer) const {
    const NamedRow row(table_, pointer);
    const auto id = row.number(u"Id");
    const auto parentId = row.number(u"ParentId");
    const auto type = row.number(u"Type");
    auto name = row.text(u"Name");
    if (!id || !parentId || !type || !name) {
        failDamaged(pointer.page, u"オブジェクト一覧の行が不完全です");
    }
    CatalogueEntry entry;
    entry.id = *id;
    entry.parentId = *parentId;
    entry.name = std::move(*name);
    entry.type = static_cast<ObjectType>(*type);
    entry.flags = row.number(u"Flags").value_or(0);
    const auto date = [&](TextView column) {
        Value value = row(column);
        return std::holds_alternative<DateTime>(value) ? value : Value(Null{});
    };
    entry.created = date(u"DateCreate");
    entry.updated = date(u"DateUpdate");
    entry.row = pointer;
    return entry;
}

// The index knows the file's sort order, so no code here has to. Without it, by capitals.
void Catalogue::order() {
    const std::vector<RowPointer> rows = table_.rowsByIndex(u"ParentIdName");
    std::map<RowPointer, std::size_t> places;
    for (std::size_t i = 0; i < rows.size(); ++i) {
        places.emplace(rows[i], i);
    }
    orderedByIndex_ = places.size() == rows.size() && rows.size() == entries_.size() &&
                      std::ranges::all_of(
                          entries_, [&](const CatalogueEntry& entry) { return places.contains(entry.row); });
    std::ranges::stable_sort(entries_, [&](const CatalogueEntry& left, const CatalogueEntry& right) {
        if (orderedByIndex_) {
            return places.at(left.row) < places.at(right.row);
        }
        return left.parentId != right.parentId ? left.parentId < right.parentId
                                               : upperCase(left.name) < upperCase(right.name);
    });
}

std::vector<const CatalogueEntry*> Catalogue::children(std::int32_t parentId) const {
    std::vector<const CatalogueEntry*> found;
    for (const CatalogueEntry& entry : entries_) {
        if (entry.parentId == parentId) {
            found.push_back(&entry);
        }
    }
    return found;
}

const CatalogueEntry* Catalogue::find(ObjectType type, TextView name) const {
    const auto found = std::ranges::find_if(entries_, [&](const CatalogueEntry& entry) {
        return entry.type == type && equalsIgnoringCase(entry.name, name);
    });
    return found == entries_.end() ? nullptr : &*found;
}

PropertyBlob Catalogue::properties(const CatalogueEntry& entry, PropertyScope scope) const {
    const Bytes blob = row(entry).bytes(u"LvProp");
    // Each blob has its own place in the file, unless a hostile one gives many objects the same.
    if (blobSizes_.emplace(entry.row, blob.size()).second) {
        blobBytes_ += blob.size();
    }
    if (blobBytes_ > file_.size()) {
        failDamaged(entry.row.page, u"プロパティが長すぎます");
    }
    return readPropertyBlob(file_, ByteSpan(blob, entry.row.page), scope);
}

} // namespace relvane::jet
