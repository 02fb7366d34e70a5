#include "access/module_source.h"

#include <algorithm>

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

constexpr TextView projectTitle = u"VBA", sourcePart = u"ソース";

[[noreturn]] void fail(TextView title, TextView cause) {
    Text detail(title);
    detail += u": ";
    detail += cause;
    throw RunTimeError(ErrorNumber::DatabaseDamaged, detail);
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
    : file_(std::move(file)), table_(*file_) {
    addModules(ModuleOwner::Form);
    addModules(ModuleOwner::Report);
    addModules(ModuleOwner::Module);
    if (canRead()) {
        readProject();
    }
}

// Only the row tells whether a form or report has code; a module that has lost its row is one all the same.
void ModuleSource::addModules(ModuleOwner owner) {
    const OwnerFacts& facts = factsOf(owner);
    for (const jet::CatalogueEntry& entry : file_->catalogue().entries()) {
        if (entry.type == facts.objectType &&
            (owner == ModuleOwner::Module || table_.contains(facts.row, entry.name))) {
            modules_.push_back({owner, entry.name});
        }
    }
}

void ModuleSource::readProject() {
    try {
        const auto row = table_.row(ModuleRow::Project);
        if (!row) {
            fail(projectTitle, table_.problem().empty() ? TextView(u"プロジェクトがありません")
                                                        : TextView(table_.problem()));
        }
        const Bytes container = row->bytes(u"Module");
        const auto directory = vbaStream(container, u"dir", projectTitle);
        project_ = readVbaProject(decompressVba(directory, projectTitle, u"プロジェクト"), projectTitle);
    } catch (const RunTimeError& error) {
        projectProblem_ = error;
    }
}

const ModuleDocument* ModuleSource::find(ModuleOwner owner, TextView name) const {
    const auto found = std::ranges::find_if(modules_, [&](const ModuleDocument& document) {
        return document.owner == owner && equalsIgnoringCase(document.name, name);
    });
    return found == modules_.end() ? nullptr : &*found;
}

const VbaModule* ModuleSource::findInProject(TextView rowName) const {
    const auto find = [&](const auto& nameOf) -> const VbaModule* {
        const auto found = std::ranges::find_if(project_.modules, [&](const VbaModule& module) {
            return equalsIgnoringCase(nameOf(module), rowName);
        });
        return found == project_.modules.end() ? nullptr : &*found;
    };
    const int rowCodePage = file_->header().codePage;
    const VbaModule* module = find([](const VbaModule& each) -> TextView { return each.name; });
    if (module == nullptr && project_.codePage != rowCodePage) {
        module = find([&](const VbaModule& each) { return decode(each.storedName, rowCodePage); });
    }
    return module;
}

ModuleText ModuleSource::text(const ModuleDocument& document) const {
    const Text title = document.title();
    if (!canRead()) {
        throw RunTimeError(ErrorNumber::UnrecognizedFormat, title);
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
    const ModuleRow type = factsOf(document.owner).row;
    const auto row = table_.row(type, document.name);
    if (!row) {
        fail(title,
             table_.problem().empty() ? TextView(u"モジュールの行がありません") : TextView(table_.problem()));
    }
    if (projectProblem_) {
        throw RunTimeError(*projectProblem_);
    }
    const VbaModule* module = findInProject(ModuleTable::rowName(type, document.name));
    if (module == nullptr) {
        fail(title, u"プロジェクトにありません");
    }
    const Bytes container = row->bytes(u"Module");
    if (container.empty()) {
        fail(title, u"ソースがありません");
    }
    const auto stream = vbaStream(container, u"_VBA_MODULE", title);
    const auto place = findVbaText(stream, module->textOffset);
    if (!place) {
        fail(title, u"ソースが見つかりません");
    }
    const Bytes stored = withoutFilling(decompressVba(stream.subspan(*place), title, sourcePart));
    const int codePage = isKnownCodePage(project_.codePage) ? project_.codePage : file_->header().codePage;
    return {module->isClass ? ModuleKind::Class : ModuleKind::Standard, decode(stored, codePage)};
}

} // namespace relvane::access
