// A VBA project as newer versions of Access keep it, in the tables of a database that the builder makes.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "sample_builder/access_store_writer.h"
#include "sample_builder/vba_project_writer.h"

namespace relvane::test {

using samples::ColumnType;
using samples::ProjectModule;
using samples::RowSpec;
using samples::Streams;
using samples::TableSpec;

// One of each kind, and a class that is called like the module of a form.
inline const std::vector<ProjectModule> fewModules = {
    {u"標準", {.source = u"Option Explicit\r\nSub Go()\r\nEnd Sub\r\n"}},
    {u"型", {.source = u"Option Explicit\r\n", .isClass = true}},
    {u"Form_受注", {.source = u"Sub 閉じる_Click()\r\nEnd Sub\r\n", .isClass = true}, true},
    {u"Report_一覧", {.source = u"' 一覧\r\n", .isClass = true}, true},
    {u"Form_名前だけ", {.source = u"' no form's\r\n", .isClass = true}}};

inline const Text projectTextPath = u"VBA/VBAProject/PROJECT";

inline Bytes* find(Streams& streams, TextView path) {
    const auto found = std::ranges::find(streams, path, &std::pair<Text, Bytes>::first);
    return found == streams.end() ? nullptr : &found->second;
}

inline Text streamPath(TextView module) {
    return Text(samples::moduleFolder) + samples::moduleStreamName(module);
}

// Locked for viewing, with a password; what stands behind the modules is none of them.
inline void lock(Bytes& projectText) {
    std::string text(projectText.begin(), projectText.end());
    const auto insertBehind = [&](std::string_view line, const std::string& more) {
        text.insert(text.find(line) + line.size(), more);
    };
    insertBehind("VersionCompatible32=\"393222000\"\r\n",
                 "CMG=\"4B49AD64FC68FC68FC68FC68\"\r\nDPB=\"96947031F0373A383A383A\"\r\n");
    insertBehind("[Host Extender Info]\r\n", "Class=" + encode(u"Form_受注", japaneseCodePage) + "\r\n");
    projectText.assign(text.begin(), text.end());
}

inline Streams projectStreams(const std::vector<ProjectModule>& modules = fewModules) {
    Streams streams = samples::projectStreams(modules, japaneseCodePage, 0x0411);
    lock(*find(streams, projectTextPath));
    return streams;
}

// A row for each storage and stream.
inline TableSpec storageTable(const Streams& streams) {
    TableSpec table{.name = u"MSysAccessStorage", .flags = samples::systemFlag};
    table.columns = {{.name = u"Id", .type = ColumnType::Long},
                     {.name = u"ParentId", .type = ColumnType::Long},
                     {.name = u"Name", .size = 128},
                     {.name = u"Type", .type = ColumnType::Long},
                     {.name = u"Lv", .type = ColumnType::Ole}};
    std::int64_t last = 2;
    table.rows = {
        RowSpec{std::int64_t{1}, std::int64_t{1}, Text(u"MSysAccessStorage_ROOT"), std::int64_t{1}},
        RowSpec{std::int64_t{2}, std::int64_t{2}, Text(u"MSysAccessStorage_SCRATCH"), std::int64_t{1}}};
    std::map<Text, std::int64_t> storages{{Text(), 1}};
    for (const auto& [path, content] : streams) {
        std::int64_t storage = 1;
        std::size_t start = 0;
        for (std::size_t end = path.find(u'/'); end != Text::npos; end = path.find(u'/', start)) {
            const auto [place, isNew] = storages.try_emplace(path.substr(0, end), last + 1);
            if (isNew) {
                table.rows.push_back(
                    RowSpec{++last, storage, path.substr(start, end - start), std::int64_t{1}});
            }
            storage = place->second;
            start = end + 1;
        }
        if (start < path.size()) {
            table.rows.push_back(RowSpec{++last, storage, path.substr(start), std::int64_t{2}, content});
        }
    }
    return table;
}

inline Bytes compoundFile(const Streams& streams) {
    return samples::CompoundFileWriter().streams(streams).bytes();
}

// As a newer Access leaves it in a file of Access 97.
inline TableSpec objectsTable(const Bytes& file) {
    return samples::storeTable(file, samples::FileFormat::Access97);
}

// The objects of fewModules in the catalogue, without anything of Access 97 beside.
inline samples::DatabaseSpec databaseWith(std::vector<TableSpec> tables) {
    samples::DatabaseSpec spec;
    spec.tables = std::move(tables);
    spec.forms = {{.name = u"受注"}, {.name = u"名前だけ"}, {.name = u"空"}};
    spec.reports = {{.name = u"一覧"}};
    for (const TextView name : {u"標準", u"型"}) {
        spec.otherObjects.push_back(
            {.name = Text(name), .type = static_cast<int>(samples::ObjectType::Module)});
    }
    return spec;
}

} // namespace relvane::test
