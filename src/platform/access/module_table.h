// The table MSysModules2 of a file of Access 97: a row for each form and report with code, for each module, and one for
// the project.
#pragma once

#include <map>
#include <utility>

#include "jet/jet_file.h"

namespace relvane::access {

// MSysModules2.Type. Standard modules and class modules are of one type.
enum class ModuleRow : std::int32_t { Project = 2, Form = 32768, Report = 32772, Module = 32775 };

class ModuleTable {
public:
    // Reads names and types alone and does not fail: a row that cannot be read counts as missing, and the object that
    // needs it says so. Newer files do not have the table. `file` must outlive this object.
    explicit ModuleTable(const jet::JetFile& file);

    // `name` is the object's, without regard to case; the project has one row and needs none.
    bool contains(ModuleRow type, TextView name) const { return rows_.contains(key(type, name)); }
    // Nothing when there is no such row; error 3049 when it is damaged.
    std::optional<jet::NamedRow> row(ModuleRow type, TextView name = {}) const;
    // The name of a row as it is stored, without regard to case: "Form_" and the name for a form.
    static Text rowName(ModuleRow type, TextView name);

    const Text& problem() const { return problem_; } // why the rows could not be listed

private:
    using Key = std::pair<ModuleRow, Text>; // the row's name in capitals
    struct Place {
        jet::RowPointer row;
        std::int32_t version = 0;
    };
    static Key key(ModuleRow type, TextView name) { return {type, upperCase(rowName(type, name))}; }
    void readRow(jet::RowPointer pointer);

    const jet::Table* table_ = nullptr;
    std::map<Key, Place> rows_;
    Text problem_;
};

} // namespace relvane::access
