#include "access/design_source.h"

#include <algorithm>

#include "access/design_bytes.h"
#include "access/module_source.h"

namespace relvane::access {
namespace {

struct KindFacts {
    jet::ObjectType objectType;
    ModuleRow row;
    TextView title;
    DesignType root;
};

const KindFacts& factsOf(DesignKind kind) {
    static constexpr KindFacts form{jet::ObjectType::Form, ModuleRow::Form, u"フォーム", DesignType::Form};
    static constexpr KindFacts report{jet::ObjectType::Report, ModuleRow::Report, u"レポート",
                                      DesignType::Report};
    return kind == DesignKind::Form ? form : report;
}

[[noreturn]] void failMissing(const DesignDocument& document, TextView cause) {
    Text detail = document.title();
    detail += document.hasModule ? u": デザインがありません" : u": デザインも、モジュールの行もありません";
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
    : file_(std::move(file)), modules_(*file_) {
    forms_ = documents(DesignKind::Form);
    reports_ = documents(DesignKind::Report);
    if (!canRead()) {
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
    if (!canRead()) {
        throw RunTimeError(static_cast<int>(ErrorNumber::UnrecognizedFormat),
                           u"Access97より新しいバージョンのデザインはまだ読み込めません。 (" +
                               document.title() + u")");
    }
    DesignStreams streams;
    try {
        const jet::NamedRow row = file_->catalogue().row(*document.entry);
        streams = {DesignPlace::Catalogue, row.bytes(u"LvExtra"), row.bytes(u"Lv")};
        if (streams.design.empty()) {
            if (const auto module = modules_.row(factsOf(document.kind).row, document.name)) {
                streams = {DesignPlace::ModuleRow, module->bytes(u"Form"), module->bytes(u"TypeInfo")};
            }
        }
    } catch (const RunTimeError& error) {
        throw RunTimeError(error.number(), error.description() + u" (" + document.title() + u")");
    }
    if (streams.design.empty()) {
        failMissing(document, modules_.problem());
    }
    return streams;
}

std::shared_ptr<const Design> DesignSource::design(const DesignDocument& document) const {
    const Text title = document.title();
    StoredDesign stored = readDesignStream(streams(document).design, title);
    if (stored.root.type != factsOf(document.kind).root) {
        failDamagedDesign(title, u"デザイン", stored.root.offset, u"種類が違います");
    }
    return std::make_shared<const Design>(std::move(stored), file_->header().codePage);
}

TypeInfo DesignSource::typeInfo(const DesignDocument& document) const {
    return readTypeInfo(streams(document).typeInfo, file_->header().codePage, document.title());
}

} // namespace relvane::access
