// The objects of one kind that an object of DAO or Access holds, by name and by position. Positions are 0-based; names
// are looked up without regard to case. A position or name that is not there is error 3265.
#pragma once

#include <memory>
#include <vector>

#include "platform/runtime_error.h"

namespace relvane {

template <class T>
class Collection {
public:
    Collection() = default;
    explicit Collection(std::vector<std::shared_ptr<T>> items) : items_(std::move(items)) {}

    int Count() const { return static_cast<int>(items_.size()); }
    T& Item(int position) const {
        if (position < 0 || position >= Count()) {
            throw RunTimeError(ErrorNumber::ItemNotInCollection);
        }
        return *items_[static_cast<std::size_t>(position)];
    }
    T* find(TextView name) const {
        for (const auto& item : items_) {
            if (equalsIgnoringCase(item->Name(), name)) {
                return item.get();
            }
        }
        return nullptr;
    }
    T& Item(TextView name) const {
        if (T* found = find(name)) {
            return *found;
        }
        throw RunTimeError(ErrorNumber::ItemNotInCollection, name);
    }
    auto begin() const { return items_.begin(); } // of shared_ptr<T>
    auto end() const { return items_.end(); }

private:
    std::vector<std::shared_ptr<T>> items_;
};

} // namespace relvane
