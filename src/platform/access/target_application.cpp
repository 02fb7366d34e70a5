#include "access/target_application.h"

#include <array>
#include <map>
#include <optional>
#include <utility>

#include "access/database_objects.h"
#include "access/design_model.h"
#include "access/module_model.h"
#include "jet/jet_file.h"
#include "jet/open_database.h"
#include "platform/native_path.h"

namespace relvane::access {
namespace {

constexpr int formNotFound = 2102, reportNotFound = 2103, objectNotOpen = 2489, actionCancelled = 2501,
              databaseAlreadyOpen = 7867;

// The menu command that converts a macro, by the arguments of DoMenuItem.
constexpr std::array conversionCommand{9, 0, 5, 0, 70};
// It asks first what to convert beside the actions (the error handling and the comments, both by default), and says
// at the end that it is done.
constexpr int conversionDialogs = 2;

// {ENTER} presses the default button of the dialog that is open; other keys press none.
int dialogsClosedBy(const Text& keys) {
    constexpr TextView enter = u"{ENTER}";
    int closed = 0;
    for (std::size_t at = keys.find(enter); at != Text::npos; at = keys.find(enter, at + enter.size())) {
        ++closed;
    }
    return closed;
}

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

// The application is its own DoCmd. What it does not have fails as in an application without any object.
class TargetApplication : public Application, public DoCmd {
public:
    TargetApplication(OpenTarget open, NewFormPainter newPainter)
        : open_(std::move(open)), newPainter_(std::move(newPainter)) {}

    void OpenCurrentDatabase(const Text& path, bool) override {
        if (database_) {
            throw RunTimeError(databaseAlreadyOpen, u"データベースは既に開いています。");
        }
        if (isOfAccess2(path)) {
            throw RunTimeError(ErrorNumber::OlderAccessVersion, path);
        }
        auto database = open_ ? open_(path) : jet::openDatabase(path);
        if (isOfAccess95(*database)) {
            throw RunTimeError(ErrorNumber::OlderAccessVersion, path);
        }
        database_ = std::move(database);
        objects_.emplace(jet::fileOf(*database_));
    }

    void CloseCurrentDatabase() override {
        requireDatabase();
        forms_.clear();
        formViews_.clear();
        painter_.reset();
        reports_.clear();
        modules_.clear();
        selectedMacro_ = nullptr;
        keys_.clear();
        objects_.reset();
        database_.reset();
    }

    access::DoCmd& DoCmd() override { return *this; }
    void setVisible(bool) override {} // it has no window

    void OpenForm(const Text& name, View view) override {
        requireDatabase();
        const DesignDocument& document =
            find(DesignKind::Form, name,
                 RunTimeError(formNotFound, u"フォームが見つかりません。 (" + name + u")"));
        if (view == acViewNormal) {
            if (FormPainter* const forms = painter()) {
                forms->requireOpens(name);
            }
        } else {
            requireDesignView(document, view);
        }
        open(forms_, document, [this](auto design, const Text& ofDocument, ModuleLoader loadModule) {
            return openForm(std::move(design), ofDocument, std::move(loadModule), windowOf(ofDocument));
        });
        formViews_[upperCase(document.name)] = view;
    }
    void OpenReport(const Text& name, View view) override {
        requireDatabase();
        const DesignDocument& document =
            find(DesignKind::Report, name,
                 RunTimeError(reportNotFound, u"レポートが見つかりません。 (" + name + u")"));
        requireDesignView(document, view);
        open(reports_, document, openReport);
    }
    void Close(ObjectType type, const Text& name, CloseSave) override {
        requireDatabase();
        switch (type) {
        case acForm:
            forms_.erase(upperCase(name));
            formViews_.erase(upperCase(name));
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
    void RepaintObject(ObjectType type,
                       const Text& name) override { // pictures are drawn when they are asked for
        requireDatabase();
        requireOpen(type, name);
    }
    void Maximize() override { requireDatabase(); }
    void Minimize() override { requireDatabase(); }

    void OpenModule(const Text& name) override {
        requireDatabase();
        const Text key = upperCase(name);
        if (!modules_.contains(key)) {
            auto text = objects_->moduleText(name);
            if (!text) {
                return access::DoCmd::OpenModule(name); // 2516
            }
            modules_.emplace(key, openModule(std::move(*text)));
        }
        selectedMacro_ = nullptr;
    }
    void SelectObject(ObjectType type, const Text& name, bool inDatabaseWindow) override {
        requireDatabase();
        if (!objects_->isOfFile(type, name) && !objects_->isConverted(type, name)) {
            return access::DoCmd::SelectObject(type, name, inDatabaseWindow); // 2544
        }
        if (!inDatabaseWindow) {
            requireOpen(type, name);
        }
        selectedMacro_ = type == acMacro && inDatabaseWindow ? objects_->macros().find(name) : nullptr;
    }
    void DoMenuItem(int menuBar, int menuName, int command, int subcommand, int version) override {
        const Text keys = std::exchange(keys_, {}); // they wait for no later command
        if (std::array{menuBar, menuName, command, subcommand, version} != conversionCommand ||
            selectedMacro_ == nullptr) {
            return access::DoCmd::DoMenuItem(menuBar, menuName, command, subcommand, version); // 2046
        }
        if (dialogsClosedBy(keys) < conversionDialogs) {
            throw RunTimeError(actionCancelled, u"アクションの実行は取り消されました。");
        }
        modules_.erase(upperCase(objects_->convert(*selectedMacro_))); // of a conversion before
        selectedMacro_ = nullptr;
    }
    void DeleteObject(ObjectType type, const Text& name) override {
        requireDatabase();
        if (objects_->deleteConverted(type, name)) {
            modules_.erase(upperCase(name));
        } else if (objects_->isOfFile(type, name)) {
            throw RunTimeError(ErrorNumber::DatabaseReadOnly, name);
        } else {
            access::DoCmd::DeleteObject(type, name); // 7874
        }
    }
    void SendKeys(const Text& keys) override { keys_ += keys; }

    Form& Forms(const Text& name) override {
        const auto found = forms_.find(upperCase(name));
        return found == forms_.end() ? Application::Forms(name) : *found->second;
    }
    Report& Reports(const Text& name) override {
        const auto found = reports_.find(upperCase(name));
        return found == reports_.end() ? Application::Reports(name) : *found->second;
    }
    Module& Modules(const Text& name) override {
        const auto found = modules_.find(upperCase(name));
        return found == modules_.end() ? Application::Modules(name) : *found->second;
    }

private:
    template <class T>
    using OpenObjects = std::map<Text, std::shared_ptr<T>>; // by the name in capitals

    const DesignDocument& find(DesignKind kind, const Text& name, const RunTimeError& notFound) {
        const DesignDocument* const document = objects_->designs().find(kind, name);
        if (document == nullptr) {
            throw notFound;
        }
        return *document;
    }
    static void requireDesignView(const DesignDocument& document, View view) {
        if (view != acViewDesign) {
            throw RunTimeError(ErrorNumber::InvalidProcedureCall,
                               document.title() + u": デザイン ビューだけで開けます");
        }
    }
    void requireOpen(ObjectType type, const Text& name) const {
        if (type == acForm && !forms_.contains(upperCase(name))) {
            throw RunTimeError(objectNotOpen, u"フォームは開かれていません。 (" + name + u")");
        }
    }
    // What is open already stays as it is.
    template <class T, class Open>
    void open(OpenObjects<T>& openDesigns, const DesignDocument& document, Open openDesign) {
        const Text key = upperCase(document.name);
        if (!openDesigns.contains(key)) {
            openDesigns.emplace(
                key, openDesign(objects_->designs().design(document), document.name, moduleOf(document)));
        }
        selectedMacro_ = nullptr;
    }
    // Nobody when forms are not drawn.
    FormPainter* painter() {
        if (!painter_ && newPainter_) {
            painter_ = newPainter_(*database_);
        }
        return painter_.get();
    }
    WindowPainter windowOf(const Text& form) {
        if (!newPainter_) {
            return {};
        }
        return [this, form](bool wholeWindow) {
            return painter()->draw(form, formViews_.at(upperCase(form)), wholeWindow);
        };
    }
    ModuleLoader moduleOf(const DesignDocument& document) {
        if (!document.hasModule) {
            return {};
        }
        const auto owner = document.kind == DesignKind::Form ? ModuleOwner::Form : ModuleOwner::Report;
        return [this, owner, name = document.name] {
            const ModuleSource& sources = objects_->sources();
            const ModuleDocument* source = sources.find(owner, name);
            if (source == nullptr) {
                throw RunTimeError(ErrorNumber::DatabaseDamaged, ModuleDocument{owner, name}.title());
            }
            return openModule(sources.text(*source));
        };
    }
    void requireDatabase() const {
        if (!database_) {
            throw RunTimeError(ErrorNumber::NoCurrentDatabase);
        }
    }

    OpenTarget open_;
    NewFormPainter newPainter_;
    std::shared_ptr<dao::Database> database_;
    std::unique_ptr<FormPainter> painter_;   // of the database
    std::optional<DatabaseObjects> objects_; // of the database
    // In the database window, as long as that has the focus.
    const MacroDocument* selectedMacro_ = nullptr;
    Text keys_; // for the dialogs of the next menu command
    OpenObjects<Form> forms_;
    std::map<Text, View> formViews_; // of the forms that are open
    OpenObjects<Report> reports_;
    OpenObjects<Module> modules_;
};

} // namespace

std::shared_ptr<Application> newTargetApplication(OpenTarget open, NewFormPainter newPainter) {
    return std::make_shared<TargetApplication>(std::move(open), std::move(newPainter));
}

} // namespace relvane::access
