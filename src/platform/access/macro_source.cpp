#include "access/macro_source.h"

#include <algorithm>

#include "platform/runtime_error.h"

namespace relvane::access {

Text MacroDocument::title() const {
    Text text(u"マクロ \"");
    text += name;
    text += u'"';
    return text;
}

// The catalogue is in the order of parents and names, which within one container is the order of its documents.
MacroSource::MacroSource(std::shared_ptr<const jet::JetFile> file)
    : file_(std::move(file)), storage_(*file_) {
    for (const jet::CatalogueEntry& entry : file_->catalogue().entries()) {
        if (entry.type == jet::ObjectType::Macro) {
            macros_.push_back({entry.name, &entry});
        }
    }
}

const MacroDocument* MacroSource::find(TextView name) const {
    const auto found = std::ranges::find_if(
        macros_, [&](const MacroDocument& macro) { return equalsIgnoringCase(macro.name, name); });
    return found == macros_.end() ? nullptr : &*found;
}

Bytes MacroSource::stream(const MacroDocument& macro) const {
    Bytes stream;
    try {
        stream = storedStream(macro);
    } catch (const RunTimeError& error) {
        throw RunTimeError(error.number(), error.description() + u" (" + macro.title() + u")");
    }
    if (stream.empty()) {
        throw RunTimeError(ErrorNumber::DatabaseDamaged, macro.title() + u": シートがありません");
    }
    return stream;
}

Bytes MacroSource::storedStream(const MacroDocument& macro) const {
    if (Bytes stream = file_->catalogue().row(*macro.entry).bytes(u"LvExtra"); !stream.empty()) {
        return stream;
    }
    const auto place = storage_.find(u"Scripts", macro.name);
    return place ? place->stream(u"Blob") : Bytes();
}

MacroSheet MacroSource::sheet(const MacroDocument& macro) const {
    return readMacroSheet(stream(macro), file_->header().codePage, macro.title());
}

} // namespace relvane::access
