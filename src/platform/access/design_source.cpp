#include "access/design_source.h"

#include <algorithm>

#include "access/design_bytes.h"
#include "access/module_source.h"

namespace relvane::access {
namespace {

struct KindFacts {
    jet::ObjectType objectType;
    ModuleRow row;
    TextView container; // in the store
    TextView title;
    DesignType root;
};

const KindFacts& factsOf(DesignKind kind) {
    static constexpr KindFacts form{jet::ObjectType::Form, ModuleRow::Form, u"Forms", u"フォーム",
                                    DesignType::Form};
    static constexpr KindFacts report{jet::ObjectType::Report, ModuleRow::Report, u"Reports", u"レポート",
                                      DesignType::Report};
    return kind == DesignKind::Form ? form : report;
}

[[noreturn]] void failMissing(const DesignDocument& document, TextView reason, TextView cause) {
    Text detail = document.title();
    detail += u": ";
    detail += reason;
    if (!cause.empty()) {
        detail += u" (";
        detail += cause;
        detail += u')';
    }
    throw RunTimeError(ErrorNumber::DatabaseDamaged, detail);
}

} // namespace

Text DesignDocument::title() const {
    Text text(factsOf(kind).title);
    text += u" \"";
    text += name;
    text += u'"';
    return text;
}

DesignSource::DesignSource(std::shared_ptr<const jet::JetFile> file)
    : file_(std::move(file)), modules_(*file_), storage_(*file_) {
    forms_ = documents(DesignKind::Form);
    reports_ = documents(DesignKind::Report);
    if (!file_->header().isJet3()) {
        markModules(ModuleSource(file_));
    }
}

// In newer files the project tells it.
void DesignSource::markModules(const ModuleSource& sources) {
    for (DesignDocument& form : forms_) {
        form.hasModule = sources.find(ModuleOwner::Form, form.name) != nullptr;
    }
    for (DesignDocument& report : reports_) {
        report.hasModule = sources.find(ModuleOwner::Report, report.name) != nullptr;
    }
}

// The catalogue is in the order of parents and names, which within one container is the order of its documents.
std::vector<DesignDocument> DesignSource::documents(DesignKind kind) const {
    std::vector<DesignDocument> found;
    for (const jet::CatalogueEntry& entry : file_->catalogue().entries()) {
        if (entry.type == factsOf(kind).objectType) {
            found.push_back({kind, entry.name, &entry, modules_.contains(factsOf(kind).row, entry.name)});
        }
    }
    return found;
}

const DesignDocument* DesignSource::find(DesignKind kind, TextView name) const {
    const auto& list = kind == DesignKind::Form ? forms_ : reports_;
    const auto found = std::ranges::find_if(
        list, [&](const DesignDocument& document) { return equalsIgnoringCase(document.name, name); });
    return found == list.end() ? nullptr : &*found;
}

DesignStreams DesignSource::streams(const DesignDocument& document) const {
    DesignStreams streams;
    try {
        streams = firstStreams(document);
    } catch (const RunTimeError& error) {
        throw RunTimeError(error.number(), error.description() + u" (" + document.title() + u")");
    }
    if (streams.design.empty()) {
        const bool isWithoutRow = file_->header().isJet3() && !document.hasModule;
        failMissing(document,
                    isWithoutRow ? u"デザインも、モジュールの行もありません" : u"デザインがありません",
                    modules_.problem());
    }
    return streams;
}

DesignStreams DesignSource::firstStreams(const DesignDocument& document) const {
    const KindFacts& kind = factsOf(document.kind);
    const jet::NamedRow row = file_->catalogue().row(*document.entry);
    if (Bytes design = row.bytes(u"LvExtra"); !design.empty()) {
        return {DesignPlace::Catalogue, {}, std::move(design), row.bytes(u"Lv"), {}};
    }
    if (const auto module = modules_.row(kind.row, document.name)) {
        if (Bytes design = module->bytes(u"Form"); !design.empty()) {
            return {DesignPlace::ModuleRow, {}, std::move(design), module->bytes(u"TypeInfo"), {}};
        }
    }
    if (const auto place = storage_.find(kind.container, document.name)) {
        return {DesignPlace::Store, Text(nameOf(place->table)) + u": " + place->path, place->stream(u"Blob"),
                place->stream(u"TypeInfo"), place->stream(u"BlobDelta")};
    }
    return {};
}

std::shared_ptr<const Design> DesignSource::design(const DesignDocument& document) const {
    const Text title = document.title();
    const DesignStreams stored = streams(document);
    StoredDesign design = readDesignStream(stored.design, title);
    if (design.root.type != factsOf(document.kind).root) {
        failDamagedDesign(title, u"デザイン", design.root.offset, u"種類が違います");
    }
    const bool mayHaveAdditions = design.version.version == design_format::access2000.version;
    if (mayHaveAdditions && !stored.additions.empty()) {
        addLaterProperties(design, readDesignStream(stored.additions, title, u"追加のデザイン"));
    }
    return std::make_shared<const Design>(std::move(design), file_->header().codePage);
}

TypeInfo DesignSource::typeInfo(const DesignDocument& document) const {
    const DesignStreams stored = streams(document);
    if (stored.typeInfo.empty() && stored.place == DesignPlace::Store) {
        return {document.kind == DesignKind::Report, {}};
    }
    return readTypeInfo(stored.typeInfo, file_->header().codePage, document.title());
}

} // namespace relvane::access
