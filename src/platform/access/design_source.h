// Where a database file keeps the designs of its forms and reports.
//
// In a file of Access 97 an object without code has its design in its own row of MSysObjects (column LvExtra, and the
// list of its names in Lv). One with code has these columns Null, and a row of MSysModules2 ("Form_" or "Report_" and its
// name) with the columns Form, TypeInfo and Module instead; that row exists exactly when the object has a class module.
//
// In a newer file each object has a storage in the store that Access keeps there (access_store.h), with the streams Blob,
// BlobDelta and TypeInfo, and none of the others. A file of Access 97 that a newer Access has opened has a copy there,
// which helps where the first two places have lost the design.
#pragma once

#include "access/design_tree.h"
#include "access/design_type_info.h"
#include "access/module_table.h"
#include "access/object_storage.h"

namespace relvane::access {

class ModuleSource;

enum class DesignKind { Form, Report };

// Where a design was found.
enum class DesignPlace { Catalogue, ModuleRow, Store };

struct DesignDocument {
    DesignKind kind{};
    Text name;
    const jet::CatalogueEntry* entry = nullptr; // of the file's catalogue
    bool hasModule = false;

    Text title() const; // フォーム "name", as errors name it
};

struct DesignStreams {
    DesignPlace place{};
    Text path; // where in the store: "MSysAccessStorage: Forms/3"
    Bytes design, typeInfo;
    Bytes additions; // the properties of later versions that the design has no room for; mostly empty
};

class DesignSource {
public:
    // Reads the names alone and does not fail: what is damaged shows when a design is asked for.
    explicit DesignSource(std::shared_ptr<const jet::JetFile> file);

    const std::vector<DesignDocument>& forms() const { return forms_; } // in the order of the container
    const std::vector<DesignDocument>& reports() const { return reports_; }
    const DesignDocument* find(DesignKind kind, TextView name) const; // without regard to case

    // From the first place that has a design. Error 3049 with the object's name when none has, or when a place that is
    // asked is damaged.
    DesignStreams streams(const DesignDocument& document) const;
    // The errors of streams and of readDesignStream; 3049 too when a form holds the design of a report.
    std::shared_ptr<const Design> design(const DesignDocument& document) const;
    // Empty where a newer Access left none.
    TypeInfo typeInfo(const DesignDocument& document) const;

private:
    std::vector<DesignDocument> documents(DesignKind kind) const;
    void markModules(const ModuleSource& sources);
    DesignStreams firstStreams(const DesignDocument& document) const;

    std::shared_ptr<const jet::JetFile> file_;
    ModuleTable modules_;
    ObjectStorage storage_;
    std::vector<DesignDocument> forms_, reports_;
};

} // namespace relvane::access
