#include "jet/dao_container.h"

#include <optional>

#include "jet/dao_properties.h"

namespace relvane::jet {
namespace {

class Document : public dao::Document {
public:
    Document(std::shared_ptr<const JetFile> file, const CatalogueEntry& entry,
             const CatalogueEntry& container)
        : file_(std::move(file)), entry_(entry), container_(container) {}

    Text Name() const override { return entry_.name; }
    Value DateCreated() const override { return entry_.created; }
    Value LastUpdated() const override { return entry_.updated; }
    Text Container() const { return container_.name; }
    dao::Properties& Properties() override;

private:
    std::shared_ptr<const JetFile> file_;
    const CatalogueEntry& entry_;
    const CatalogueEntry& container_;
    std::vector<StoredProperty> stored_; // read with the list of properties
    std::optional<dao::Properties> properties_;
};

constexpr BuiltIn<Document> builtIns[] = {
    {u"Name", 10, answerOf<&Document::Name>},
    {u"Container", 10, answerOf<&Document::Container>},
    {u"DateCreated", 8, answerOf<&Document::DateCreated>},
    {u"LastUpdated", 8, answerOf<&Document::LastUpdated>},
};

dao::Properties& Document::Properties() {
    if (!properties_) {
        stored_ = file_->catalogue().properties(entry_, PropertyScope::ObjectAlone).ofObject;
        properties_ = propertiesOf(*this, builtIns, &stored_);
    }
    return *properties_;
}

class Container : public dao::Container {
public:
    Container(std::shared_ptr<const JetFile> file, const CatalogueEntry& entry)
        : file_(std::move(file)), entry_(entry) {}

    Text Name() const override { return entry_.name; }
    const Collection<dao::Document>& Documents() override {
        if (!documents_) {
            std::vector<std::shared_ptr<dao::Document>> documents;
            for (const CatalogueEntry* child : file_->catalogue().children(entry_.id)) {
                documents.push_back(std::make_shared<Document>(file_, *child, entry_));
            }
            documents_.emplace(std::move(documents));
        }
        return *documents_;
    }

private:
    std::shared_ptr<const JetFile> file_;
    const CatalogueEntry& entry_;
    std::optional<Collection<dao::Document>> documents_;
};

} // namespace

std::shared_ptr<dao::Container> makeContainer(std::shared_ptr<const JetFile> file,
                                              const CatalogueEntry& entry) {
    return std::make_shared<Container>(std::move(file), entry);
}

} // namespace relvane::jet
