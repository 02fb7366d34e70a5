#include "access/module_table.h"

namespace relvane::access {

ModuleTable::ModuleTable(const jet::JetFile& file) {
    if (!file.header().isJet3()) {
        return;
    }
    try {
        table_ = file.findTable(u"MSysModules2");
        if (table_ == nullptr) {
            return;
        }
        jet::RowCursor cursor(*table_);
        while (const auto pointer = cursor.next()) {
            skipErrors([&] { readRow(*pointer); });
        }
    } catch (const RunTimeError& error) {
        problem_ = error.description();
    }
}

// The row of a project can be there twice: the later version holds.
void ModuleTable::readRow(jet::RowPointer pointer) {
    const jet::NamedRow row(*table_, pointer);
    const auto name = row.text(u"Name");
    const auto type = row.number(u"Type");
    if (!name || !type) {
        return;
    }
    const std::int32_t version = row.number(u"Version").value_or(0);
    const auto [place, isNew] =
        rows_.try_emplace({static_cast<ModuleRow>(*type), upperCase(*name)}, Place{pointer, version});
    if (!isNew && version > place->second.version) {
        place->second = {pointer, version};
    }
}

std::optional<jet::NamedRow> ModuleTable::row(ModuleRow type, TextView name) const {
    const auto found = rows_.find(key(type, name));
    if (found == rows_.end()) {
        return std::nullopt;
    }
    return jet::NamedRow(*table_, found->second.row);
}

Text ModuleTable::rowName(ModuleRow type, TextView name) {
    switch (type) {
    case ModuleRow::Project:
        return u"MSysDb";
    case ModuleRow::Form:
        return Text(u"Form_").append(name);
    case ModuleRow::Report:
        return Text(u"Report_").append(name);
    case ModuleRow::Module:
        break;
    }
    return Text(name);
}

} // namespace relvane::access
