// Linked tables: what the catalogue says about where their rows lie, and how DAO words it.
#pragma once

#include "jet/catalogue.h"
#include "jet/open_database.h"

namespace relvane::jet {

struct Link {
    bool isOdbc = false;
    Text source;  // the connect text before the path: empty or "MS Access;..." for a Jet file, else an ISAM's
    Text path;    // of the back end
    Text table;   // the name of the table there
    Text connect; // DAO's Connect
    Text password; // of the back end, when the connect text carries one

    // Whether the back end is a Jet file; else a driver that is not here would be needed.
    bool isJet() const;
};

Link readLink(const Catalogue& catalogue, const CatalogueEntry& entry);

// The file of the back end on this machine, for a database in `folder`. Errors: 3151 for ODBC, 3170 for an ISAM; 3044
// when the folder of the path does not exist, 3024 when the file does not.
std::string resolveLink(const Link& link, const LinkResolver& resolver, const Text& folder);

} // namespace relvane::jet
