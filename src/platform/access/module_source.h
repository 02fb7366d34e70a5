// The VBA modules of a database file of Access 97: those of forms and reports, standard modules and class modules.
//
// The text of each lies in the column Module of its row of MSysModules2, in full and compressed. Nothing in a file of
// Access 97 enciphers it: it is read whatever the permissions of the project are. The row of the project has the
// directory, without which neither the code page nor the kind of a module is known.
#pragma once

#include "access/module_table.h"
#include "access/module_text.h"
#include "access/vba_project.h"

namespace relvane::access {

enum class ModuleOwner { Form, Report, Module };

struct ModuleDocument {
    ModuleOwner owner{};
    Text name; // of the form, report or module

    Text title() const; // フォーム "name", as errors name it
};

class ModuleSource {
public:
    // Does not fail: what is damaged shows when a text is asked for. A file newer than Access 97 gives its modules, but
    // not those of its forms and reports, and no texts: they lie in another store.
    explicit ModuleSource(std::shared_ptr<const jet::JetFile> file);

    bool canRead() const { return file_->header().isJet3(); }
    // Forms with code, reports with code, modules; each in the order of its container.
    const std::vector<ModuleDocument>& modules() const { return modules_; }
    const ModuleDocument* find(ModuleOwner owner, TextView name) const; // without regard to case

    // Errors, all with the object's name: 3049 when its row, its source or the project is missing or damaged; 3343 for
    // a file newer than Access 97.
    ModuleText text(const ModuleDocument& document) const;

private:
    void addModules(ModuleOwner owner);
    void readProject();
    ModuleText readText(const ModuleDocument& document) const;
    const VbaModule* findInProject(TextView rowName) const;

    std::shared_ptr<const jet::JetFile> file_;
    ModuleTable table_;
    std::vector<ModuleDocument> modules_;
    VbaProject project_;
    std::optional<RunTimeError> projectProblem_;
};

} // namespace relvane::access
