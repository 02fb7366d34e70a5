// Where a database file of Access 97 keeps its macros: each in its own row of MSysObjects, the sheet in the column
// LvExtra. Nothing else is stored of a macro; it has no compiled form.
#pragma once

#include <memory>

#include "access/macro_sheet.h"
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
    // Reads the names alone and does not fail. A file newer than Access 97 gives its macros too, but not their
    // sheets: these lie in another store.
    explicit MacroSource(std::shared_ptr<const jet::JetFile> file);

    bool canRead() const { return file_->header().isJet3(); }
    const std::vector<MacroDocument>& macros() const { return macros_; } // in the order of the container
    const MacroDocument* find(TextView name) const;                      // without regard to case

    // Errors: 3049 with the macro's name when its sheet is missing, empty or lies in a damaged chain of pages; 3343
    // for a file newer than Access 97.
    Bytes stream(const MacroDocument& macro) const;
    // The errors of stream and of readMacroSheet.
    MacroSheet sheet(const MacroDocument& macro) const;

private:
    std::shared_ptr<const jet::JetFile> file_;
    std::vector<MacroDocument> macros_;
};

} // namespace relvane::access
