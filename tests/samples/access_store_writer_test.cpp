// The streams that the builder puts into a store of Access 2000, byte by byte as files of Access have them, and the rows
// of the table with its pieces.

#include <algorithm>
#include <set>

#include <gtest/gtest.h>

#include "access/vba_compression.h"
#include "access/vba_project.h"
#include "sample_builder/access_store_writer.h"
#include "sample_builder/vba_project_writer.h"

namespace relvane::samples {
namespace {

// Hexadecimal digits, blanks between them.
Bytes hex(std::string_view digits) {
    Bytes bytes;
    for (std::size_t i = 0; i + 1 < digits.size(); i += digits[i] == ' ' ? 1 : 2) {
        if (digits[i] != ' ') {
            bytes.push_back(
                static_cast<std::uint8_t>(std::stoi(std::string(digits.substr(i, 2)), nullptr, 16)));
        }
    }
    return bytes;
}

Bytes streamOf(const Streams& streams, TextView path) {
    const auto found = std::ranges::find(streams, path, &std::pair<Text, Bytes>::first);
    return found == streams.end() ? throw std::out_of_range(toUtf8(path)) : found->second;
}

std::string textOf(const Bytes& bytes) {
    return {bytes.begin(), bytes.end()};
}

TEST(StoreContainers, ListNamesTheObjectsAndTheirStorages) {
    const Streams streams = containerStreams(u"Modules", {{.name = u"Module1"}, {.name = u"Class1"}});
    EXPECT_EQ(streamOf(streams, u"Modules/\u0003DirData"),
              hex("00 00 00 00 04 12 4d 00 6f 00 64 00 75 00 6c 00 65 00 31 00 00 00 00 00"
                  "            04 10 43 00 6c 00 61 00 73 00 73 00 31 00 01 00 00 00"));
}

TEST(StoreContainers, EachObjectHasItsStreamsAndItsProperties) {
    const Streams streams = containerStreams(
        u"Forms", {{.name = u"F", .hasModule = true, .streams = {{u"Blob", Bytes{1}}, {u"TypeInfo", {}}}},
                   {.name = u"G", .hidden = true, .hasModule = false}});
    EXPECT_EQ(streamOf(streams, u"Forms/0/Blob"), Bytes{1});
    EXPECT_EQ(streamOf(streams, u"Forms/0/TypeInfo"), Bytes());
    EXPECT_EQ(streamOf(streams, u"Forms/0/PropData"),
              hex("00 00 00 00 02 00 00 00 00 00 00 00 00 02 01 00 00 00 01 00 00 00"));
    EXPECT_EQ(streamOf(streams, u"Forms/1/PropData"),
              hex("00 00 00 00 02 00 00 00 00 08 00 00 00 02 01 00 00 00 00 00 00 00"));
}

TEST(StoreContainers, PropertiesOfTheContainerHaveEachStorage) {
    const Streams modules = containerStreams(u"Modules", {{.name = u"M"}, {.name = u"C", .isClass = true}});
    EXPECT_EQ(streamOf(modules, u"Modules/PropData"),
              hex("00 00 00 00 05 09 02 30 00 43 00 42 00 30 00 05 09 02 31 00 43 00 42 00 30 01"));
    EXPECT_EQ(streamOf(modules, u"Modules/1/PropData"), hex("00 00 00 00 02 00 00 00 00 00 01 00 00"));
    const Streams many = containerStreams(u"Forms", std::vector<StoredObject>(11, {.name = u"x"}));
    const Bytes properties = streamOf(many, u"Forms/PropData");
    EXPECT_EQ(Bytes(properties.end() - 13, properties.end()), hex("05 0b 04 31 00 30 00 43 00 42 00 30 00"));
}

TEST(StoreContainers, OneWithoutObjectsIsAnEmptyStorage) {
    EXPECT_EQ(containerStreams(u"Reports", {}), (Streams{{u"Reports/", {}}}));
}

TEST(StoreContainers, EveryStoreSaysItsCodePage) {
    EXPECT_EQ(streamOf(commonStreams(japaneseCodePage), u"PropData"),
              hex("00 00 00 00 02 69 00 00 00 03 00 00 00 02 6a 00 00 00 a4 03 00 00"));
}

// ---- The project

const std::vector<ProjectModule> project = {{u"標準", {.source = u"' a\r\n"}},
                                            {u"型", {.source = u"' b\r\n", .isClass = true}},
                                            {u"Form_受注", {.source = u"' c\r\n", .isClass = true}, true}};

TEST(StoreProject, EachModuleHasAStreamThatTheDirectoryNames) {
    const Streams streams = projectStreams(project, japaneseCodePage, 0x0411);
    const Bytes directory = streamOf(streams, Text(moduleFolder) + u"dir");
    const access::VbaProject read =
        access::readVbaProject(access::decompressVba(directory, u"P", u"P"), u"P");
    EXPECT_EQ(read.codePage, japaneseCodePage);
    ASSERT_EQ(read.modules.size(), 3u);
    std::set<Text> names;
    for (std::size_t i = 0; i < 3; ++i) {
        const access::VbaModule& module = read.modules[i];
        EXPECT_EQ(module.name, project[i].name);
        EXPECT_EQ(module.isClass, project[i].spec.isClass);
        EXPECT_EQ(module.streamName, moduleStreamName(project[i].name));
        EXPECT_EQ(module.streamName.size(), 28u);
        EXPECT_EQ(module.streamName.find_first_not_of(u"ABCDEFGHIJKLMNOPQRSTUVWXYZ_"), Text::npos);
        names.insert(module.streamName);
        const Bytes stream = streamOf(streams, Text(moduleFolder) + module.streamName);
        EXPECT_EQ(access::findVbaText(stream, module.textOffset), module.textOffset);
    }
    EXPECT_EQ(names.size(), 3u);
}

TEST(StoreProject, ClassesHaveTheAttributeThatAccess97LeavesOut) {
    const Streams streams = projectStreams(project, japaneseCodePage, 0x0411);
    const auto attributesOf = [&](TextView module) {
        const Bytes stream = streamOf(streams, Text(moduleFolder) + moduleStreamName(module));
        const auto place = access::findVbaText(stream, 0).value();
        return textOf(access::decompressVba(std::span(stream).subspan(place), u"M", u"S"));
    };
    EXPECT_EQ(attributesOf(u"標準").find("VB_GlobalNameSpace"), std::string::npos);
    EXPECT_NE(
        attributesOf(u"型").find("}\"\r\nAttribute VB_GlobalNameSpace = False\r\nAttribute VB_Creatable"),
        std::string::npos);
}

TEST(StoreProject, TextsBesideTheDirectoryNameTheModulesByKindAndInBothCodings) {
    const Streams streams = projectStreams(project, japaneseCodePage, 0x0411);
    const std::string text = textOf(streamOf(streams, u"VBA/VBAProject/PROJECT"));
    const auto stored = [](TextView name) { return encode(name, japaneseCodePage); };
    EXPECT_TRUE(text.starts_with("ID=\"{"));
    EXPECT_NE(text.find("}\"\r\nModule=" + stored(u"標準") + "\r\nClass=" + stored(u"型") +
                        "\r\nDocClass=" + stored(u"Form_受注") + "/&H00000000\r\nName=\"Project1\"\r\n"),
              std::string::npos);
    EXPECT_EQ(streamOf(projectStreams({}, japaneseCodePage, 0x0411), u"VBA/VBAProject/PROJECTwm"), Bytes(2));
    EXPECT_EQ(streamOf(projectStreams({{u"Ab", {}}}, 1252, 0x0409), u"VBA/VBAProject/PROJECTwm"),
              hex("41 62 00 41 00 62 00 00 00 00 00"));
    EXPECT_EQ(streamOf(streams, u"VBA/AcessVBAData"), hex("01 00 00 00 01 00 00 00 03 00 00 00"));
}

TEST(StoreProject, DamageOfAModuleIsInItsStreamOrInTheDirectory) {
    const auto streamsWith = [](ModuleDamage damage) {
        return projectStreams({{u"M", {.source = u"' text\r\n", .damage = damage}}}, japaneseCodePage,
                              0x0411);
    };
    const Text path = Text(moduleFolder) + moduleStreamName(u"M");
    EXPECT_THROW(streamOf(streamsWith(ModuleDamage::NotStored), path), std::out_of_range);
    const Bytes whole = streamOf(streamsWith(ModuleDamage::None), path);
    EXPECT_EQ(streamOf(streamsWith(ModuleDamage::CutOff), path).size(), whole.size() - 8);
    const Bytes directory = streamOf(streamsWith(ModuleDamage::NotInProject), Text(moduleFolder) + u"dir");
    EXPECT_TRUE(access::readVbaProject(access::decompressVba(directory, u"P", u"P"), u"P").modules.empty());
}

// ---- The table

const Bytes& bytesOf(const RowSpec& row) {
    return std::get<Bytes>(row.values.at(0));
}

TEST(StoreTable, FirstRowHasTheLengthAndEachOtherAPieceOfTheColumnsLength) {
    for (const auto& [format, size, type] :
         std::initializer_list<std::tuple<FileFormat, std::size_t, ColumnType>>{
             {FileFormat::Access97, 241, ColumnType::Binary},
             {FileFormat::Access2000, 3992, ColumnType::LongBinary}}) {
        const Bytes file(2 * size + 5, 7);
        const TableSpec table = storeTable(file, format);
        EXPECT_EQ(table.columns.at(0).size, static_cast<int>(size));
        EXPECT_EQ(table.columns.at(0).type, type);
        ASSERT_EQ(table.rows.size(), 4u);
        for (std::size_t number = 0; number < 4; ++number) {
            EXPECT_EQ(bytesOf(table.rows[number]).size(), size);
            EXPECT_EQ(table.rows[number].values.at(1), Value(static_cast<std::int64_t>(number)));
        }
        EXPECT_EQ(bytesOf(table.rows[0])[0], 5);
        EXPECT_EQ(bytesOf(table.rows[0])[4] | bytesOf(table.rows[0])[5] << 8, static_cast<int>(file.size()));
        EXPECT_EQ(bytesOf(table.rows[3])[4], 7);
        EXPECT_EQ(bytesOf(table.rows[3])[5], 0);
    }
}

TEST(StoreTable, APieceInWhichNoByteIsUsedIsNotWritten) {
    const std::size_t size = 241;
    const Bytes file(5 * size, 7);
    // All of piece 2; of the others too little.
    const TableSpec table =
        storeTable(file, FileFormat::Access97, {{size, 2 * size + 9}, {3 * size + 1, 4 * size}});
    std::vector<std::int64_t> numbers;
    for (const RowSpec& row : table.rows) {
        numbers.push_back(std::get<std::int64_t>(row.values.at(1)));
    }
    EXPECT_EQ(numbers, (std::vector<std::int64_t>{0, 1, 3, 4, 5}));
}

} // namespace
} // namespace relvane::samples
