#include "access/design_source.h"

#include <algorithm>

#include "access/design_bytes.h"

namespace relvane::access {
namespace {

struct KindFacts {
    jet::ObjectType objectType;
    TextView rowPrefix; // of the names in MSysModules2
    TextView title;
    DesignType root;
};

const KindFacts& factsOf(DesignKind kind) {
    static constexpr KindFacts form{jet::ObjectType::Form, u"Form_", u"フォーム", DesignType::Form};
    static constexpr KindFacts report{jet::ObjectType::Report, u"Report_", u"レポート", DesignType::Report};
    return kind == DesignKind::Form ? form : report;
}

// MSysModules2.Type of a module of its own, whose name may begin like that of a form's.
constexpr std::int32_t standardModule = 32775;

Text rowName(DesignKind kind, TextView name) {
    Text full(factsOf(kind).rowPrefix);
    full += name;
    return upperCase(full);
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

DesignSource::DesignSource(std::shared_ptr<const jet::JetFile> file) : file_(std::move(file)) {
    if (canRead()) {
        readModuleRows();
    }
    forms_ = documents(DesignKind::Form);
    reports_ = documents(DesignKind::Report);
}

// A row that cannot be read counts as missing: the object that needs it says so.
void DesignSource::readModuleRows() {
    try {
        modules_ = file_->findTable(u"MSysModules2");
        if (modules_ == nullptr) {
            return;
        }
        jet::RowCursor cursor(*modules_);
        while (const auto pointer = cursor.next()) {
            skipErrors([&] {
                const jet::NamedRow row(*modules_, *pointer);
                const auto name = row.text(u"Name");
                if (name && row.number(u"Type") != standardModule) {
                    moduleRows_.emplace(upperCase(*name), *pointer);
                }
            });
        }
    } catch (const RunTimeError& error) {
        moduleTableProblem_ = error.description();
    }
}

// The catalogue is in the order of parents and names, which within one container is the order of its documents.
std::vector<DesignDocument> DesignSource::documents(DesignKind kind) const {
    std::vector<DesignDocument> found;
    for (const jet::CatalogueEntry& entry : file_->catalogue().entries()) {
        if (entry.type == factsOf(kind).objectType) {
            found.push_back({kind, entry.name, &entry, moduleRows_.contains(rowName(kind, entry.name))});
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
        if (streams.design.empty() && document.hasModule) {
            const jet::NamedRow module(*modules_, moduleRows_.at(rowName(document.kind, document.name)));
            streams = {DesignPlace::ModuleRow, module.bytes(u"Form"), module.bytes(u"TypeInfo")};
        }
    } catch (const RunTimeError& error) {
        throw RunTimeError(error.number(), error.description() + u" (" + document.title() + u")");
    }
    if (streams.design.empty()) {
        failMissing(document, moduleTableProblem_);
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
