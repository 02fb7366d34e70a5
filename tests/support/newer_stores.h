// A VBA project as newer versions of Access keep it, in the tables of a database that the builder makes.
#pragma once

#include <map>
#include <string>
#include <utility>
#include <vector>

#include "platform/codepage.h"
#include "sample_builder/byte_writer.h"
#include "sample_builder/database_spec.h"
#include "sample_builder/vba_compressor.h"
#include "support/compound_file_builder.h"

namespace relvane::test {

using samples::ByteWriter;
using samples::ColumnPlace;
using samples::ColumnType;
using samples::compressVba;
using samples::putAt;
using samples::RowSpec;
using samples::TableSpec;

struct StoredModule {
    Text name;
    std::string word;   // in the stream PROJECT: Module, Class or DocClass
    std::string source; // in UTF-8
};

// One of each kind, and a class that is called like the module of a form.
inline const std::vector<StoredModule> fewModules = {
    {u"標準", "Module", "Option Explicit\r\nSub Go()\r\nEnd Sub\r\n"},
    {u"型", "Class", "Option Explicit\r\n"},
    {u"Form_受注", "DocClass", "Sub 閉じる_Click()\r\nEnd Sub\r\n"},
    {u"Report_一覧", "DocClass", "' 一覧\r\n"},
    {u"Form_名前だけ", "Class", "' no form's\r\n"}};

inline std::string stored(TextView text) {
    return encode(text, japaneseCodePage);
}

inline Text streamName(std::size_t index) {
    return Text(27, u'Q') + static_cast<char16_t>(u'A' + index);
}

inline void record(ByteWriter& out, unsigned id, std::string_view data) {
    out.u16(id);
    out.u32(data.size());
    out.text(data);
}

inline std::string utf16(TextView text) {
    std::string bytes;
    for (const char16_t unit : text) {
        bytes += static_cast<char>(unit & 0xFF);
        bytes += static_cast<char>(unit >> 8);
    }
    return bytes;
}

inline constexpr std::string_view compiledCode = "\x01\x16\x03 compiled code";

inline Bytes directoryOf(const std::vector<StoredModule>& modules) {
    ByteWriter out;
    record(out, 0x03, std::string("\xA4\x03", 2));
    for (std::size_t i = 0; i < modules.size(); ++i) {
        record(out, 0x19, stored(modules[i].name));
        record(out, 0x47, utf16(modules[i].name));
        record(out, 0x1A, toUtf8(streamName(i)));
        record(out, 0x32, utf16(streamName(i)));
        record(out, 0x31, std::string{static_cast<char>(compiledCode.size()), 0, 0, 0});
        record(out, modules[i].word == "Module" ? 0x21 : 0x22, {});
        record(out, 0x2B, {});
    }
    record(out, 0x10, {});
    return compressVba({reinterpret_cast<const char*>(out.data().data()), out.size()});
}

inline Bytes moduleStream(const StoredModule& module) {
    const Bytes text = compressVba("Attribute VB_Name = \"" + stored(module.name) + "\"\r\n" +
                                   stored(fromUtf8(module.source)));
    Bytes stream(compiledCode.begin(), compiledCode.end());
    stream.insert(stream.end(), text.begin(), text.end());
    return stream;
}

inline Bytes projectText(const std::vector<StoredModule>& modules) {
    std::string text = "ID=\"{00000000-0000-0000-0000-000000000000}\"\r\n";
    for (const StoredModule& module : modules) {
        text += module.word + '=' + stored(module.name) +
                (module.word == "DocClass" ? "/&H00000000\r\n" : "\r\n");
    }
    // Locked for viewing, with a password.
    text += "Name=\"P\"\r\nCMG=\"4B49AD64FC68FC68FC68FC68\"\r\nDPB=\"96947031F0373A383A383A\"\r\n\r\n"
            "[Host Extender Info]\r\nClass=" +
            stored(u"Form_受注") + "\r\n";
    return {text.begin(), text.end()};
}

using Streams = std::vector<std::pair<Text, Bytes>>; // by path

inline const Text streamFolder = u"VBA/VBAProject/VBA/";

inline Streams projectStreams(const std::vector<StoredModule>& modules = fewModules) {
    Streams streams{{streamFolder + u"dir", directoryOf(modules)},
                    {u"VBA/VBAProject/PROJECT", projectText(modules)}};
    for (std::size_t i = 0; i < modules.size(); ++i) {
        streams.emplace_back(streamFolder + streamName(i), moduleStream(modules[i]));
    }
    return streams;
}

// The list of a container's objects: each with the number that its storage has as a name.
inline std::pair<Text, Bytes> objectList(const Text& container,
                                         const std::vector<std::pair<Text, unsigned>>& objects) {
    ByteWriter list;
    list.u32(0);
    for (const auto& [name, number] : objects) {
        const std::string stored = utf16(name);
        list.u8(4);
        list.u8(stored.size() + 4);
        list.text(stored);
        list.u32(number);
    }
    return {container + u"/\u0003DirData", list.data()};
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
        for (std::size_t end = path.find(u'/'), start = 0; end != Text::npos; end = path.find(u'/', start)) {
            const auto [place, isNew] = storages.try_emplace(path.substr(0, end), last + 1);
            if (isNew) {
                table.rows.push_back(
                    RowSpec{++last, storage, path.substr(start, end - start), std::int64_t{1}});
            }
            storage = place->second;
            start = end + 1;
        }
        table.rows.push_back(
            RowSpec{++last, storage, path.substr(path.rfind(u'/') + 1), std::int64_t{2}, content});
    }
    return table;
}

inline constexpr std::size_t pieceSize = 241;

inline Bytes compoundFile(const Streams& streams) {
    CompoundFileBuilder builder;
    for (const auto& [path, content] : streams) {
        builder.stream(path, content);
    }
    return builder.bytes();
}

// A row for each piece of the file, and one for its length.
inline TableSpec objectsTable(const Bytes& file) {
    TableSpec table{.name = u"MSysAccessObjects", .flags = samples::systemFlag};
    table.columns = {
        {.name = u"Data", .type = ColumnType::Binary, .size = pieceSize, .place = ColumnPlace::Fixed},
        {.name = u"ID", .type = ColumnType::Long}};
    Bytes head(pieceSize);
    head[0] = 5;
    putAt(head, 4, file.size(), 4);
    table.rows.push_back(RowSpec{head, std::int64_t{0}});
    for (std::size_t at = 0; at < file.size(); at += pieceSize) {
        Bytes piece(file.begin() + static_cast<std::ptrdiff_t>(at),
                    file.begin() + static_cast<std::ptrdiff_t>(std::min(at + pieceSize, file.size())));
        piece.resize(pieceSize);
        table.rows.push_back(RowSpec{piece, static_cast<std::int64_t>(at / pieceSize + 1)});
    }
    return table;
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
