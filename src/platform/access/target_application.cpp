#include "access/target_application.h"

#include <map>
#include <optional>

#include "access/design_model.h"
#include "access/design_source.h"
#include "access/module_model.h"
#include "access/module_source.h"
#include "jet/jet_file.h"
#include "jet/open_database.h"
#include "platform/native_path.h"

namespace relvane::access {
namespace {

constexpr int formNotFound = 2102, reportNotFound = 2103, formNotOpen = 2450, reportNotOpen = 2451,
              moduleNotFound = 2516, databaseAlreadyOpen = 7867, moduleNotOpen = 7961;

// What Access 97 writes into the property AccessVersion; Access 95 wrote "06.68".
constexpr TextView access97 = u"07.53";

// Access 1.0 to 2.0 kept another format, of which the reader knows no more than how to tell it.
bool isOfAccess2(const Text& path) {
    bool isOlder = false;
    skipErrors([&] { // any other fault of the file is for openDatabase to name
        isOlder = jet::readFileHeader(*jet::openByteFile(nativePath(path))).isBeforeJet3;
    });
    return isOlder;
}

// A file without the property was made by DAO alone; Access 97 opens it.
bool isOfAccess95(dao::Database& database) {
    const auto version = database.Properties().find(u"AccessVersion");
    return jet::fileOf(database)->header().isJet3() && version && toText(version->value) < access97;
}

// The application is its own DoCmd.
class TargetApplication : public Application, public DoCmd {
public:
    explicit TargetApplication(jet::LinkResolver resolveLink) : resolveLink_(std::move(resolveLink)) {}

    void OpenCurrentDatabase(const Text& path, bool) override {
        if (database_) {
            throw RunTimeError(databaseAlreadyOpen, u"データベースは既に開いています。");
        }
        if (isOfAccess2(path)) {
            throw RunTimeError(ErrorNumber::OlderAccessVersion, path);
        }
        auto database = jet::openDatabase(path, {.resolveLink = resolveLink_});
        if (isOfAccess95(*database)) {
            throw RunTimeError(ErrorNumber::OlderAccessVersion, path);
        }
        database_ = std::move(database);
    }

    void CloseCurrentDatabase() override {
        requireDatabase();
        forms_.clear();
        reports_.clear();
        modules_.clear();
        designs_.reset();
        sources_.reset();
        database_.reset();
    }

    access::DoCmd& DoCmd() override { return *this; }
    void setVisible(bool) override {} // it has no window

    void OpenForm(const Text& name, View view) override {
        open(forms_, DesignKind::Form, name, view,
             RunTimeError(formNotFound, u"フォームが見つかりません。 (" + name + u")"), openForm);
    }
    void OpenReport(const Text& name, View view) override {
        open(reports_, DesignKind::Report, name, view,
             RunTimeError(reportNotFound, u"レポートが見つかりません。 (" + name + u")"), openReport);
    }
    void Close(ObjectType type, const Text& name, CloseSave) override {
        requireDatabase();
        switch (type) {
        case acForm:
            forms_.erase(upperCase(name));
            break;
        case acReport:
            reports_.erase(upperCase(name));
            break;
        case acModule:
            modules_.erase(upperCase(name));
            break;
        case acMacro: // is never open
            break;
        }
    }
    void Maximize() override { requireDatabase(); }

    void OpenModule(const Text& name) override {
        requireDatabase();
        const ModuleDocument* document = sources().find(ModuleOwner::Module, name);
        if (document == nullptr) {
            throw RunTimeError(moduleNotFound, u"モジュールが見つかりません。 (" + name + u")");
        }
        const Text key = upperCase(name);
        if (!modules_.contains(key)) {
            modules_.emplace(key, openModule(sources().text(*document)));
        }
    }

    Form& Forms(const Text& name) override {
        const auto found = forms_.find(upperCase(name));
        if (found == forms_.end()) {
            throw RunTimeError(formNotOpen, u"フォームは開かれていません。 (" + name + u")");
        }
        return *found->second;
    }
    Report& Reports(const Text& name) override {
        const auto found = reports_.find(upperCase(name));
        if (found == reports_.end()) {
            throw RunTimeError(reportNotOpen, u"レポートは開かれていません。 (" + name + u")");
        }
        return *found->second;
    }
    Module& Modules(const Text& name) override {
        const auto found = modules_.find(upperCase(name));
        if (found == modules_.end()) {
            throw RunTimeError(moduleNotOpen, u"モジュールは開かれていません。 (" + name + u")");
        }
        return *found->second;
    }

private:
    template <class T>
    using OpenObjects = std::map<Text, std::shared_ptr<T>>; // by the name in capitals

    // What is open already stays as it is.
    template <class T, class Open>
    void open(OpenObjects<T>& openDesigns, DesignKind kind, const Text& name, View view,
              const RunTimeError& notFound, Open openDesign) {
        requireDatabase();
        if (!designs_) {
            designs_.emplace(jet::fileOf(*database_));
        }
        const DesignDocument* document = designs_->find(kind, name);
        if (document == nullptr) {
            throw notFound;
        }
        if (view != acViewDesign) {
            throw RunTimeError(ErrorNumber::InvalidProcedureCall,
                               document->title() + u": デザイン ビューだけで開けます");
        }
        const Text key = upperCase(name);
        if (!openDesigns.contains(key)) {
            openDesigns.emplace(key,
                                openDesign(designs_->design(*document), document->name, moduleOf(*document)));
        }
    }
    ModuleLoader moduleOf(const DesignDocument& document) {
        if (!document.hasModule) {
            return {};
        }
        const auto owner = document.kind == DesignKind::Form ? ModuleOwner::Form : ModuleOwner::Report;
        return [this, owner, name = document.name] {
            const ModuleDocument* source = sources().find(owner, name);
            if (source == nullptr) {
                throw RunTimeError(ErrorNumber::DatabaseDamaged, ModuleDocument{owner, name}.title());
            }
            return openModule(sources().text(*source));
        };
    }
    const ModuleSource& sources() {
        if (!sources_) {
            sources_.emplace(jet::fileOf(*database_));
        }
        return *sources_;
    }
    void requireDatabase() const {
        if (!database_) {
            throw RunTimeError(ErrorNumber::NoCurrentDatabase);
        }
    }

    jet::LinkResolver resolveLink_;
    std::shared_ptr<dao::Database> database_;
    // Of the database, from the first object on that needs it.
    std::optional<DesignSource> designs_;
    std::optional<ModuleSource> sources_;
    OpenObjects<Form> forms_;
    OpenObjects<Report> reports_;
    OpenObjects<Module> modules_;
};

} // namespace

std::shared_ptr<Application> newTargetApplication(jet::LinkResolver resolveLink) {
    return std::make_shared<TargetApplication>(std::move(resolveLink));
}

} // namespace relvane::access
