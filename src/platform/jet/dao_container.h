// Containers and their documents as DAO answers for them.
#pragma once

#include "jet/jet_file.h"
#include "platform/dao.h"

namespace relvane::jet {

// A container of the catalogue with the documents that name it as their parent.
std::shared_ptr<dao::Container> makeContainer(std::shared_ptr<const JetFile> file,
                                              const CatalogueEntry& entry);

} // namespace relvane::jet
