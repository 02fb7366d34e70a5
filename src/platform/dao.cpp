#include "platform/dao.h"

#include <algorithm>

namespace relvane::dao {
namespace {

class ListedProperties : public PropertySource {
public:
    explicit ListedProperties(std::vector<Property> properties) : properties_(std::move(properties)) {}
    int Count() const override { return static_cast<int>(properties_.size()); }
    TextView Name(int position) const override { return at(position).Name; }
    Property Item(int position) const override { return at(position); }

private:
    const Property& at(int position) const { return properties_[static_cast<std::size_t>(position)]; }

    std::vector<Property> properties_;
};

} // namespace

Properties::Properties(std::vector<Property> properties)
    : source_(std::make_shared<ListedProperties>(std::move(properties))) {}

TextView Properties::Name(int position) const {
    if (position < 0 || position >= Count()) {
        throw RunTimeError(ErrorNumber::ItemNotInCollection);
    }
    return source_->Name(position);
}

Property Properties::Item(int position) const {
    if (position < 0 || position >= Count()) {
        throw RunTimeError(ErrorNumber::ItemNotInCollection);
    }
    Property property = source_->Item(position);
    for (const auto& [place, value] : changed_) {
        if (place == position) {
            property.value = value;
        }
    }
    return property;
}

std::optional<int> Properties::placeOf(TextView name) const {
    for (int position = 0; position < Count(); ++position) {
        if (equalsIgnoringCase(source_->Name(position), name)) {
            return position;
        }
    }
    return std::nullopt;
}

std::optional<Property> Properties::find(TextView name) const {
    const auto place = placeOf(name);
    return place ? std::optional(Item(*place)) : std::nullopt;
}

Value Properties::operator()(TextView name) const {
    if (auto property = find(name)) {
        return std::move(property->value);
    }
    throw RunTimeError(ErrorNumber::PropertyNotFound, name);
}

void Properties::set(TextView name, Value value) {
    const auto place = placeOf(name);
    if (!place) {
        throw RunTimeError(ErrorNumber::PropertyNotFound, name);
    }
    const auto known = std::ranges::find(changed_, *place, &std::pair<int, Value>::first);
    if (known != changed_.end()) {
        known->second = std::move(value);
    } else {
        changed_.emplace_back(*place, std::move(value));
    }
}

} // namespace relvane::dao
