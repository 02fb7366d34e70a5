// The VBA modules of a database file: those of forms and reports, standard modules and class modules.
//
// The text of each is stored in full and compressed: in a file of Access 97 in the column Module of its row of
// MSysModules2, in a newer one in a stream of the store that Access keeps there (access_store.h). Nothing enciphers it: it
// is read whatever the permissions of the project are, locked ones included. The directory of the project lies beside;
// without it neither the code page nor the kind of a module is known.
//
// A file of Access 97 that a newer Access has opened has both. MSysModules2 is what holds then; the store helps where the
// project is missing or damaged there.
#pragma once

#include "access/access_store.h"
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
    // Does not fail: what is damaged shows when a text is asked for.
    explicit ModuleSource(std::shared_ptr<const jet::JetFile> file);

    // Forms with code, reports with code, modules; each in the order of its container.
    const std::vector<ModuleDocument>& modules() const { return modules_; }
    const ModuleDocument* find(ModuleOwner owner, TextView name) const; // without regard to case

    // Error 3049 with the object's name when its row, its source or the project is missing or damaged; 2046 when the file
    // is a compiled one (compiled_file.h).
    ModuleText text(const ModuleDocument& document) const;

private:
    void readProject();
    bool readProjectOfTable(); // false when it has none
    bool readProjectOfStore(StoreTable table);
    void addModules(ModuleOwner owner);
    bool hasModule(ModuleOwner owner, TextView name) const;

    ModuleText readText(const ModuleDocument& document) const;
    const VbaModule* findInProject(ModuleOwner owner, TextView name) const;
    Bytes streamOf(const ModuleDocument& document, const VbaModule& module) const;

    std::shared_ptr<const jet::JetFile> file_;
    bool isCompiled_ = false;
    ModuleTable table_;
    std::optional<AccessStore> store_; // when the project lies there
    VbaProject project_;
    std::optional<RunTimeError> projectProblem_;
    std::vector<ModuleDocument> modules_;
};

} // namespace relvane::access
