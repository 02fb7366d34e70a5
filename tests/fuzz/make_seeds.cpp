// make_seeds FOLDER DATABASE: writes small databases into the folder, seeds for fuzz_open that reach every reader. In its
// folder "stores" seeds for fuzz_store: the stores of newer files, in databases and as a file by itself. In "designs",
// "macros" and "vba" the streams of DATABASE, which Access 2000 keeps in such a store.

#include <algorithm>
#include <fstream>
#include <iostream>

#include "access/access_store.h"
#include "sample_builder/database_writer.h"
#include "sample_builder/many_forms.h"
#include "support/encrypted_ace.h"
#include "support/newer_stores.h"
#include "support/wide_bytes.h"

namespace relvane::samples {
namespace {

DatabaseSpec everyKindOfColumn() {
    DatabaseSpec spec;
    TableSpec table{.name = u"全部"};
    table.columns = {
        {.name = u"番号", .type = ColumnType::Long, .autoNumber = true},
        {.name = u"可否", .type = ColumnType::Boolean},
        {.name = u"バイト", .type = ColumnType::Byte},
        {.name = u"整数", .type = ColumnType::Integer},
        {.name = u"通貨", .type = ColumnType::Currency},
        {.name = u"単精度", .type = ColumnType::Single},
        {.name = u"倍精度", .type = ColumnType::Double},
        {.name = u"日付", .type = ColumnType::Date},
        {.name = u"文字",
         .type = ColumnType::Text,
         .size = 255,
         .properties = {{u"Description", Text(u"説明")}}},
        {.name = u"メモ", .type = ColumnType::Memo},
        {.name = u"画像", .type = ColumnType::Ole},
        {.name = u"長い", .type = ColumnType::Memo, .longValues = LongValuePlace::Chain},
        {.name = u"識別", .type = ColumnType::Guid},
    };
    table.indexes = {{.name = u"PrimaryKey", .columns = {{u"番号"}}, .primary = true},
                     {.name = u"文字", .columns = {{u"文字", true}, {u"整数"}}}};
    const Text longText(600, u'長');
    const Text wide(120, u'幅');
    table.rows.push_back(RowSpec{std::int64_t{1}, true, std::int64_t{200}, std::int64_t{-5}, Currency{123400},
                                 1.5f, 2.25, DateTime{1997, 4, 1, 12, 30, 0}, wide, longText, Bytes(3000, 7),
                                 longText, Guid{}});
    table.rows.push_back(RowSpec{std::int64_t{2}}.asMoved());
    table.rows.push_back(RowSpec{std::int64_t{3}}.asDeleted());
    table.rows.push_back(RowSpec{std::int64_t{4}}.fromBefore(3));
    table.properties = {{u"Description", Text(u"全部の型")}, {u"OrderByOn", true}};
    spec.tables.push_back(std::move(table));
    return spec;
}

DatabaseSpec queriesAndLinks() {
    DatabaseSpec spec;
    spec.tables.push_back({.name = u"顧客",
                           .columns = {{.name = u"番号", .type = ColumnType::Long},
                                       {.name = u"氏名", .type = ColumnType::Text, .size = 20}},
                           .rows = {RowSpec{std::int64_t{1}, Text(u"山田")}},
                           .pageMap = PageMapKind::Pages});
    spec.links.push_back({.name = u"在庫", .database = u"C:\\業務\\zaiko.mdb", .sourceTable = u"在庫"});
    spec.links.push_back(
        {.name = u"会計", .kind = LinkKind::Odbc, .connect = u"DSN=会計;", .sourceTable = u"会計"});
    QuerySpec query;
    query.name = u"結合";
    query.rows = {
        {.attribute = 1, .flag = 1},
        {.attribute = 2, .name1 = u"Forms!F!x", .flag = 4},
        {.attribute = 3, .name1 = u"10", .flag = 0x1A},
        {.attribute = 5, .name1 = u"顧客"},
        {.attribute = 5, .name1 = u"顧客", .name2 = u"親"},
        {.attribute = 6, .name1 = u"別名", .expression = u"顧客.番号+1"},
        {.attribute = 6, .expression = u"親.*"},
        {.attribute = 7, .name1 = u"顧客", .name2 = u"親", .expression = u"顧客.番号 = 親.番号", .flag = 2},
        {.attribute = 8, .expression = u"顧客.番号 > 1"},
        {.attribute = 11, .name1 = u"D", .expression = u"顧客.番号"}};
    query.properties = {{u"Description", Text(u"結合のクエリー")}};
    spec.queries.push_back(std::move(query));
    return spec;
}

// Both places of designs, a report with a group level, every kind of module, and a macro.
DatabaseSpec designs() {
    DatabaseSpec spec = manyForms(3, 24);
    DocumentSpec& report = spec.reports.emplace_back(spec.forms[0]);
    report.name = u"報告";
    DesignObjectSpec& root = report.design->root;
    root.type = DesignType::Report;
    root.properties = {{u"RecordSource", Text(u"表")}, {u"OnNoData", Text(u"=無し()")}};
    root.children.insert(root.children.begin(),
                         DesignObjectSpec{.type = DesignType::BreakLevel,
                                          .properties = {{u"ControlSource", Text(u"項目２")}}});
    report.module.emplace().source = u"Sub 無し()\r\nEnd Sub\r\n";
    DocumentSpec& standard = spec.modules.emplace_back(DocumentSpec{.name = u"標準"});
    standard.module.emplace().source += u"\r\n' 合計\r\nFunction 合計() As Currency\r\nEnd Function\r\n";
    DocumentSpec& item = spec.modules.emplace_back(DocumentSpec{.name = u"品目"});
    item.module.emplace().source += u"Property Get 単価()\r\nEnd Property\r\n";
    item.module->isClass = true;
    DocumentSpec& macro = spec.macros.emplace_back(DocumentSpec{.name = u"印刷"});
    constexpr std::uint16_t openForm = 23;
    macro.macro.emplace().rows = {
        {.name = u"開く", .condition = u"[数量]>0", .action = openForm, .arguments = {u"画面"}}};
    return spec;
}

// A project, a wide form with a macro of its own, a report of Access 2000 with what a later version added to it, and a
// macro in UTF-16.
Streams storedObjects() {
    using access::DesignType;
    using Kind = access::design_format::WideKind;
    using test::WideBytes;
    Bytes sheet(36);
    std::fill(sheet.begin() + 4, sheet.begin() + 32, std::uint8_t{0xFF});
    Streams streams = test::projectStreams();
    streams.push_back(objectList(u"Forms", {{u"受注", 7}}));
    streams.emplace_back(u"Forms/7/Blob", WideBytes(21)
                                              .object(DesignType::Form)
                                              .text(0xdc, 0x09c, u"受注")
                                              .children(2)
                                              .object(DesignType::CommandButton)
                                              .word(0x67, 0x023, 9)
                                              .noChildren()
                                              .object(DesignType::Section)
                                              .oneChild()
                                              .object(DesignType::CommandButton)
                                              .flag(0x04, 0x094)
                                              .text(0xdc, 0x014, u"印刷")
                                              .value(0x120, 0x1ea, Kind::Macro, sheet)
                                              .boolean(0x181, 0x2e0, 1)
                                              .value(0x14e, 0x28e, Kind::Real, Bytes(4))
                                              .noChildren()
                                              .bytes());
    streams.push_back(objectList(u"Reports", {{u"一覧", 300}}));
    streams.emplace_back(u"Reports/300/Blob",
                         Bytes{0x13, 0, 0x13, 0, 0, 0, 0, 0, 0x97, 0, 0x63, 0x88, 0x2c, 0xfe, 0x98, 0, 0xfd});
    streams.emplace_back(u"Reports/300/BlobDelta", WideBytes()
                                                       .object(DesignType::Report)
                                                       .boolean(0x132, 0x1c5, 1)
                                                       .oneChild()
                                                       .object(DesignType::Section)
                                                       .word(0x116, 0x23b, 7)
                                                       .noChildren()
                                                       .bytes());
    streams.push_back(objectList(u"Scripts", {{u"印刷", 1}}));
    streams.emplace_back(u"Scripts/1/Blob", sheet);
    return streams;
}

DatabaseSpec databaseWithStore(TableSpec table) {
    DatabaseSpec spec = test::databaseWith({std::move(table)});
    spec.otherObjects.push_back({.name = u"印刷", .type = static_cast<int>(ObjectType::Macro)});
    return spec;
}

void writeBytes(const std::filesystem::path& path, const Bytes& bytes) {
    std::ofstream(path, std::ios::binary)
        .write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
}

// The pages of an Access 2000 file, encrypted as later versions do.
void writeEncrypted(const std::filesystem::path& folder) {
    using test::AceEncryption;
    const Bytes plain = databaseBytes(savedAs(queriesAndLinks(), FileFormat::Access2000));
    const auto write = [&](const char* name, test::AceEncryptionSpec spec) {
        writeBytes(folder / name, test::encryptedByAce(plain, std::move(spec)));
    };
    write("rc4.accdb", {.kind = AceEncryption::Rc4});
    write("rc4-40.accdb", {.kind = AceEncryption::Rc4, .keyBytes = 5});
    write("aes.accdb", {.kind = AceEncryption::Aes});
    write("agile.accdb", {.kind = AceEncryption::Agile, .rounds = "2"});
}

struct Seeds {
    TextView container;
    const char* folder;
};
constexpr Seeds seedsOfContainers[] = {
    {u"Forms/", "designs"}, {u"Reports/", "designs"}, {u"Scripts/", "macros"}, {u"VBA/", "vba"}};

// The streams below that path in the store.
void collect(const access::AccessStore& store, const Text& path, Streams& streams) {
    for (const access::AccessStore::Entry& entry : store.children(path)) {
        const Text inner = path.empty() ? entry.name : path + u'/' + entry.name;
        if (entry.isStorage) {
            collect(store, inner, streams);
        } else {
            streams.emplace_back(inner, store.stream(inner).value());
        }
    }
}

void writeStreams(const std::filesystem::path& database, const std::filesystem::path& folder) {
    const auto file = jet::openJetFile(database.native(), {});
    Streams streams;
    collect(access::AccessStore::open(*file, access::StoreTable::MSysAccessObjects).value(), {}, streams);
    for (const Seeds& seeds : seedsOfContainers) {
        std::filesystem::create_directories(folder / seeds.folder);
        for (const auto& [path, content] : streams) {
            if (path.starts_with(seeds.container)) {
                std::string name = toUtf8(path);
                std::ranges::replace(name, '/', '.');
                std::ranges::replace(name, '\3', '_'); // begins the names of some
                writeBytes(folder / seeds.folder / name, content);
            }
        }
    }
}

} // namespace
} // namespace relvane::samples

int main(int count, char** arguments) {
    using namespace relvane::samples;
    if (count != 3) {
        std::cerr << "usage: make_seeds FOLDER DATABASE\n";
        return 2;
    }
    const std::filesystem::path folder = arguments[1];
    std::filesystem::create_directories(folder);
    namespace test = relvane::test;
    for (const FileFormat format : {FileFormat::Access97, FileFormat::Access2000}) {
        const auto write = [&](DatabaseSpec spec, const std::string& name) {
            const char* suffix = format == FileFormat::Access97 ? ".mdb" : "2000.mdb";
            writeDatabase(savedAs(std::move(spec), format), folder / (name + suffix));
        };
        write(everyKindOfColumn(), "columns");
        write(queriesAndLinks(), "queries");
        DatabaseSpec encoded = queriesAndLinks();
        encoded.encodingKey = 0x12345678;
        write(encoded, "encoded");
        DatabaseSpec locked = everyKindOfColumn();
        locked.password = test::AceEncryptionSpec().password;
        write(locked, "password");
    }
    writeDatabase(designs(), folder / "designs.mdb");
    writeEncrypted(folder);

    const std::filesystem::path stores = folder / "stores";
    std::filesystem::create_directories(stores);
    const Streams streams = storedObjects();
    const relvane::Bytes compound = test::compoundFile(streams);
    writeDatabase(databaseWithStore(test::storageTable(streams)), stores / "rows.mdb");
    writeDatabase(databaseWithStore(test::objectsTable(compound)), stores / "pieces.mdb");
    writeDatabase(savedAs(designs(), FileFormat::Access2000), stores / "designs2000.mdb");
    writeBytes(stores / "compound.bin", compound);
    writeStreams(arguments[2], folder);
    return 0;
}
