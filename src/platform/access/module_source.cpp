#include "access/module_source.h"

#include <algorithm>
#include <functional>

#include "access/compiled_file.h"
#include "access/design_bytes.h"
#include "access/vba_compression.h"
#include "platform/codepage.h"

namespace relvane::access {
namespace {

struct OwnerFacts {
    jet::ObjectType objectType;
    ModuleRow row;
    TextView title;
};

const OwnerFacts& factsOf(ModuleOwner owner) {
    static constexpr OwnerFacts facts[] = {{jet::ObjectType::Form, ModuleRow::Form, u"フォーム"},
                                           {jet::ObjectType::Report, ModuleRow::Report, u"レポート"},
                                           {jet::ObjectType::Module, ModuleRow::Module, u"モジュール"}};
    return facts[static_cast<std::size_t>(owner)];
}

constexpr TextView projectTitle = u"VBA", sourcePart = u"ソース", projectPart = u"プロジェクト";

// In the store.
constexpr TextView projectText = u"VBA/VBAProject/PROJECT", streamFolder = u"VBA/VBAProject/VBA/";

RunTimeError problem(TextView title, TextView cause) {
    Text detail(title);
    detail += u": ";
    detail += cause;
    return RunTimeError(ErrorNumber::DatabaseDamaged, detail);
}

VbaProject projectOf(std::span<const std::uint8_t> directory) {
    return readVbaProject(decompressVba(directory, projectTitle, projectPart), projectTitle);
}

// A chunk that is stored as it is has zeros behind the end of a text.
Bytes withoutFilling(Bytes text) {
    while (!text.empty() && text.back() == 0) {
        text.pop_back();
    }
    return text;
}

} // namespace

Text ModuleDocument::title() const {
    Text text(factsOf(owner).title);
    text += u" \"";
    text += name;
    text += u'"';
    return text;
}

ModuleSource::ModuleSource(std::shared_ptr<const jet::JetFile> file)
    : file_(std::move(file)), isCompiled_(isCompiledFile(*file_)), table_(*file_) {
    readProject();
    addModules(ModuleOwner::Form);
    addModules(ModuleOwner::Report);
    addModules(ModuleOwner::Module);
}

// From the first place that has it; where none does, what is wrong with the first is said.
void ModuleSource::readProject() {
    const std::function<bool()> places[] = {
        [&] { return readProjectOfTable(); },
        [&] { return readProjectOfStore(StoreTable::MSysAccessStorage); },
        [&] { return readProjectOfStore(StoreTable::MSysAccessObjects); }};
    for (const auto& isReadFrom : places) {
        try {
            if (isReadFrom()) {
                projectProblem_.reset();
                return;
            }
        } catch (const RunTimeError& error) {
            projectProblem_ = projectProblem_.value_or(error);
        }
    }
    projectProblem_ = projectProblem_.value_or(problem(projectTitle, u"プロジェクトがありません"));
}

bool ModuleSource::readProjectOfTable() {
    const auto row = table_.row(ModuleRow::Project);
    if (!row && !table_.problem().empty()) {
        throw problem(projectTitle, table_.problem());
    }
    if (row) {
        const Bytes container = row->bytes(u"Module");
        project_ = projectOf(vbaStream(container, u"dir", projectTitle));
    }
    return row.has_value();
}

bool ModuleSource::readProjectOfStore(StoreTable table) {
    auto store = AccessStore::open(*file_, table);
    const auto directory = store ? store->stream(Text(streamFolder) + u"dir") : std::nullopt;
    if (!directory) {
        return false;
    }
    project_ = projectOf(*directory);
    skipErrors([&] { // without it, any class that is named so is taken for a form's or report's
        markOrdinaryClasses(project_, store->stream(projectText).value_or(Bytes()));
    });
    store_ = std::move(store);
    return true;
}

// A module that has lost its source is one all the same.
void ModuleSource::addModules(ModuleOwner owner) {
    for (const jet::CatalogueEntry& entry : file_->catalogue().entries()) {
        if (entry.type == factsOf(owner).objectType &&
            (owner == ModuleOwner::Module || hasModule(owner, entry.name))) {
            modules_.push_back({owner, entry.name});
        }
    }
}

// In a file of Access 97 only the row tells whether a form or report has code.
bool ModuleSource::hasModule(ModuleOwner owner, TextView name) const {
    if (!store_) {
        return table_.contains(factsOf(owner).row, name);
    }
    const VbaModule* module = findInProject(owner, name);
    return module != nullptr && module->isClass && !module->isOrdinaryClass;
}

const ModuleDocument* ModuleSource::find(ModuleOwner owner, TextView name) const {
    const auto found = std::ranges::find_if(modules_, [&](const ModuleDocument& document) {
        return document.owner == owner && equalsIgnoringCase(document.name, name);
    });
    return found == modules_.end() ? nullptr : &*found;
}

const VbaModule* ModuleSource::findInProject(ModuleOwner owner, TextView name) const {
    const Text wanted = ModuleTable::rowName(factsOf(owner).row, name);
    const auto find = [&](const auto& nameOf) -> const VbaModule* {
        const auto found = std::ranges::find_if(project_.modules, [&](const VbaModule& module) {
            return equalsIgnoringCase(nameOf(module), wanted);
        });
        return found == project_.modules.end() ? nullptr : &*found;
    };
    const int rowCodePage = file_->header().codePage;
    const VbaModule* module = find([](const VbaModule& each) -> TextView { return each.name; });
    if (module == nullptr && !store_ && project_.codePage != rowCodePage) {
        module = find([&](const VbaModule& each) { return decode(each.storedName, rowCodePage); });
    }
    return module;
}

ModuleText ModuleSource::text(const ModuleDocument& document) const {
    const Text title = document.title();
    if (isCompiled_) {
        failCompiled(title);
    }
    try {
        return readText(document);
    } catch (const RunTimeError& error) {
        if (error.description().find(title) != Text::npos) {
            throw;
        }
        throw RunTimeError(error.number(), error.description() + u" (" + title + u")");
    }
}

ModuleText ModuleSource::readText(const ModuleDocument& document) const {
    const Text title = document.title();
    if (projectProblem_) {
        throw RunTimeError(*projectProblem_);
    }
    const VbaModule* module = findInProject(document.owner, document.name);
    if (module == nullptr) {
        throw problem(title, u"プロジェクトにありません");
    }
    const Bytes stream = streamOf(document, *module);
    const auto place = findVbaText(stream, module->textOffset);
    if (!place) {
        throw problem(title, u"読み取れるソースがファイルにありません");
    }
    const Bytes stored = withoutFilling(decompressVba(std::span(stream).subspan(*place), title, sourcePart));
    if (std::ranges::find(stored, 0) != stored.end()) { // a part that the file has lost reads as zeros
        throw problem(title, u"ソースの一部がファイルにありません");
    }
    const int codePage = isKnownCodePage(project_.codePage) ? project_.codePage : file_->header().codePage;
    return {module->isClass ? ModuleKind::Class : ModuleKind::Standard, decode(stored, codePage)};
}

// Empty when the file has none.
Bytes ModuleSource::streamOf(const ModuleDocument& document, const VbaModule& module) const {
    if (store_) {
        return store_->stream(Text(streamFolder) + module.streamName).value_or(Bytes());
    }
    const Text title = document.title();
    const auto row = table_.row(factsOf(document.owner).row, document.name);
    if (!row) {
        throw problem(title, u"モジュールの行がありません");
    }
    const Bytes container = row->bytes(u"Module");
    if (container.empty()) {
        return {};
    }
    const auto stream = vbaStream(container, u"_VBA_MODULE", title);
    return {stream.begin(), stream.end()};
}

} // namespace relvane::access
