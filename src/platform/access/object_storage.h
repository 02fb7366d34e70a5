// What the store of a newer file keeps of a form, report or macro, found by the object's name.
#pragma once

#include "access/access_store.h"

namespace relvane::access {

class ObjectStorage {
public:
    // Reads nothing yet. `file` must outlive this object.
    explicit ObjectStorage(const jet::JetFile& file) : file_(&file) {}

    struct Place {
        StoreTable table{};
        const AccessStore* store = nullptr; // lives as long as the ObjectStorage
        Text path;                          // of the object's storage

        // Empty when the object has no such stream; error 3049 when it is damaged.
        Bytes stream(TextView name) const;
    };
    // `container` is "Forms", "Reports" or "Scripts"; names are looked up without regard to case. In the first table that
    // has the object; nothing when none has. Error 3049 when a store or its list of objects is damaged.
    std::optional<Place> find(TextView container, TextView name) const;

private:
    struct Store {
        std::optional<AccessStore> tree; // none when the file does not have the table
        std::map<Text, std::vector<AccessStore::Object>> objects; // by container, from the first question on
    };
    Store& openStore(StoreTable table) const;
    static const std::vector<AccessStore::Object>& objectsOf(Store& store, TextView container);

    const jet::JetFile* file_;
    mutable std::map<StoreTable, Store> stores_; // those that were asked
};

} // namespace relvane::access
