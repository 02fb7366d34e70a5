#include "access/object_storage.h"

#include <algorithm>

namespace relvane::access {

Bytes ObjectStorage::Place::stream(TextView name) const {
    return store->stream(path + u"/" + Text(name)).value_or(Bytes());
}

std::optional<ObjectStorage::Place> ObjectStorage::find(TextView container, TextView name) const {
    for (const StoreTable table : {StoreTable::MSysAccessStorage, StoreTable::MSysAccessObjects}) {
        Store& store = openStore(table);
        if (!store.tree) {
            continue;
        }
        const auto& objects = objectsOf(store, container);
        const auto found = std::ranges::find_if(objects, [&](const AccessStore::Object& object) {
            return equalsIgnoringCase(object.name, name);
        });
        if (found != objects.end()) {
            return Place{table, &*store.tree, found->path};
        }
    }
    return std::nullopt;
}

ObjectStorage::Store& ObjectStorage::openStore(StoreTable table) const {
    const auto known = stores_.find(table);
    if (known != stores_.end()) {
        return known->second;
    }
    return stores_.emplace(table, Store{AccessStore::open(*file_, table), {}}).first->second;
}

const std::vector<AccessStore::Object>& ObjectStorage::objectsOf(Store& store, TextView container) {
    const auto known = store.objects.find(Text(container));
    if (known != store.objects.end()) {
        return known->second;
    }
    return store.objects.emplace(container, store.tree->objects(container)).first->second;
}

} // namespace relvane::access
