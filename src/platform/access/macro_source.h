// Where a database file keeps its macros: in a file of Access 97 each in its own row of MSysObjects, the sheet in the
// column LvExtra, in a newer one each in a storage of the store that Access keeps there (access_store.h). Nothing else is
// stored of a macro; it has no compiled form. The store of a file of Access 97 that a newer Access has opened has a copy,
// which helps where the row has lost the sheet.
#pragma once

#include <memory>

#include "access/macro_sheet.h"
#include "access/object_storage.h"
#include "jet/jet_file.h"

namespace relvane::access {

struct MacroDocument {
    Text name;
    const jet::CatalogueEntry* entry = nullptr; // of the file's catalogue

    bool isHidden() const { return (entry->flags & 8) != 0; } // in the database window
    Text title() const;                                       // マクロ "name", as errors name it
};

class MacroSource {
public:
    // Reads the names alone and does not fail.
    explicit MacroSource(std::shared_ptr<const jet::JetFile> file);

    const std::vector<MacroDocument>& macros() const { return macros_; } // in the order of the container
    const MacroDocument* find(TextView name) const;                      // without regard to case

    // Error 3049 with the macro's name when its sheet is missing, empty or lies in a damaged chain of pages or a damaged
    // store.
    Bytes stream(const MacroDocument& macro) const;
    // The errors of stream and of readMacroSheet.
    MacroSheet sheet(const MacroDocument& macro) const;

private:
    Bytes storedStream(const MacroDocument& macro) const;

    std::shared_ptr<const jet::JetFile> file_;
    ObjectStorage storage_;
    std::vector<MacroDocument> macros_;
};

} // namespace relvane::access
