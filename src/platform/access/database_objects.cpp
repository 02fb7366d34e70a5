#include "access/database_objects.h"

#include "access/macro_conversion.h"

namespace relvane::access {
namespace {

template <class Source>
const Source& readOnce(std::optional<Source>& source, const std::shared_ptr<const jet::JetFile>& file) {
    if (!source) {
        source.emplace(file);
    }
    return *source;
}

} // namespace

const DesignSource& DatabaseObjects::designs() {
    return readOnce(designs_, file_);
}

const ModuleSource& DatabaseObjects::sources() {
    return readOnce(sources_, file_);
}

const MacroSource& DatabaseObjects::macros() {
    return readOnce(macros_, file_);
}

bool DatabaseObjects::isOfFile(ObjectType type, TextView name) {
    switch (type) {
    case acForm:
        return designs().find(DesignKind::Form, name) != nullptr;
    case acReport:
        return designs().find(DesignKind::Report, name) != nullptr;
    case acMacro:
        return macros().find(name) != nullptr;
    case acModule:
        return sources().find(ModuleOwner::Module, name) != nullptr;
    }
    return false;
}

bool DatabaseObjects::isConverted(ObjectType type, TextView name) const {
    return type == acModule && converted_.contains(upperCase(name));
}

std::optional<ModuleText> DatabaseObjects::moduleText(TextView name) {
    if (const auto converted = converted_.find(upperCase(name)); converted != converted_.end()) {
        return converted->second;
    }
    const ModuleDocument* document = sources().find(ModuleOwner::Module, name);
    return document == nullptr ? std::nullopt : std::optional(sources().text(*document));
}

Text DatabaseObjects::convert(const MacroDocument& macro) {
    const MacroSheet sheet = macros().sheet(macro);
    Text name = convertedModuleName(macro.name);
    converted_.insert_or_assign(upperCase(name),
                                ModuleText(ModuleKind::Standard, convertMacro(macro.name, sheet)));
    return name;
}

bool DatabaseObjects::deleteConverted(ObjectType type, TextView name) {
    return type == acModule && converted_.erase(upperCase(name)) != 0;
}

} // namespace relvane::access
