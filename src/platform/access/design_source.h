// Where a database file of Access 97 keeps the designs of its forms and reports.
//
// An object without code has its design in its own row of MSysObjects (column LvExtra, and the list of its names in
// Lv). One with code has these columns Null, and a row of MSysModules2 ("Form_" or "Report_" and its name) with the
// columns Form, TypeInfo and Module instead; that row exists exactly when the object has a class module.
#pragma once

#include "access/design_tree.h"
#include "access/design_type_info.h"
#include "access/module_table.h"

namespace relvane::access {

class ModuleSource;

enum class DesignKind { Form, Report };

// Where a design was found.
enum class DesignPlace { Catalogue, ModuleRow };

struct DesignDocument {
    DesignKind kind{};
    Text name;
    const jet::CatalogueEntry* entry = nullptr; // of the file's catalogue
    bool hasModule = false;

    Text title() const; // フォーム "name", as errors name it
};

struct DesignStreams {
    DesignPlace place{};
    Bytes design, typeInfo;
};

class DesignSource {
public:
    // Reads the names alone and does not fail: what is damaged shows when a design is asked for. A file newer than
    // Access 97 gives its documents too, but not their designs: these lie in another store.
    explicit DesignSource(std::shared_ptr<const jet::JetFile> file);

    bool canRead() const { return file_->header().isJet3(); }
    const std::vector<DesignDocument>& forms() const { return forms_; } // in the order of the container
    const std::vector<DesignDocument>& reports() const { return reports_; }
    const DesignDocument* find(DesignKind kind, TextView name) const; // without regard to case

    // Errors: 3049 with the object's name when its stream is missing, empty or lies in a damaged chain of pages, or
    // when the row of MSysModules2 that it needs is missing; 3343 for a file newer than Access 97.
    DesignStreams streams(const DesignDocument& document) const;
    // The errors of streams and of readDesignStream; 3049 too when a form holds the design of a report.
    std::shared_ptr<const Design> design(const DesignDocument& document) const;
    TypeInfo typeInfo(const DesignDocument& document) const;

private:
    std::vector<DesignDocument> documents(DesignKind kind) const;
    void markModules(const ModuleSource& sources);

    std::shared_ptr<const jet::JetFile> file_;
    ModuleTable modules_;
    std::vector<DesignDocument> forms_, reports_;
};

} // namespace relvane::access
