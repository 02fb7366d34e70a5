#include "sample_builder/database_writer.h"

#include <algorithm>
#include <array>
#include <bit>
#include <fstream>
#include <numeric>
#include <stdexcept>

#include "sample_builder/byte_writer.h"
#include "sample_builder/catalogue.h"
#include "sample_builder/column_value.h"
#include "sample_builder/table_writer.h"

namespace relvane::samples {

namespace {

constexpr PageNumber headerPage = 0, globalMapPage = 1;

// In Jet 4 the whole field is masked with the days of the creation date, over and over.
void writePassword(std::span<std::uint8_t> page, const DatabaseSpec& spec, const WrittenFormat& format) {
    const std::string secret = encodeText(spec.password, textCoding(spec));
    const std::size_t longest = format.header.longestPassword;
    if (secret.size() > longest) {
        throw std::invalid_argument("a password has at most " + std::to_string(longest) + " bytes");
    }
    const auto field = page.subspan(jet::header::password, format.places.header.passwordLength);
    std::ranges::copy(secret, field.begin());
    if (format.header.creationDate != jet::absent) {
        const double created = spec.created.toOleDate();
        putAt(page, format.header.creationDate, std::bit_cast<std::uint64_t>(created), 8);
        const auto days = static_cast<std::uint32_t>(static_cast<std::int32_t>(created));
        for (std::size_t i = 0; i < field.size(); ++i) {
            field[i] = static_cast<std::uint8_t>(field[i] ^ days >> (8 * (i % 4)));
        }
    }
}

// Which engine made the file: a late one of Access 2000.
void writeEngine(std::span<std::uint8_t> page, const WrittenFormat& format) {
    if (format.header.engineBuild == jet::absent) {
        return;
    }
    constexpr std::uint32_t build = 4518, buildOfFormat = 1620;
    constexpr std::string_view name = "4.0";
    putAt(page, format.header.engineBuild, build, 4);
    putAt(page, format.header.engineName, buildOfFormat, 4);
    std::ranges::copy(name, page.subspan(format.header.engineName + 4).begin());
}

void writeHeader(std::span<std::uint8_t> page, const DatabaseSpec& spec, const WrittenFormat& format) {
    using namespace jet::header;
    constexpr std::string_view engine = "Standard Jet DB";
    page[1] = 1;
    std::ranges::copy(engine, page.begin() + signature);
    page[version] = format.header.version;
    putAt(page, globalMap, RowPlace{globalMapPage, 0}.pointer(), 4);
    putAt(page, globalMap2, RowPlace{globalMapPage, 1}.pointer(), 4);
    constexpr PageNumber definitions[] = {jet::objectsPage, jet::acesPage, jet::queriesPage,
                                          jet::relationshipsPage};
    for (std::size_t i = 0; i < std::size(definitions); ++i) {
        putAt(page, systemTables + 4 * i, definitions[i], 4);
    }
    putAt(page, format.header.sortOrder, static_cast<std::uint64_t>(spec.sortOrder), 2);
    putAt(page, codePage, static_cast<std::uint64_t>(spec.codePage), 2);
    putAt(page, databaseKey, spec.encodingKey, 4);
    writePassword(page, spec, format);
    writeEngine(page, format);
    for (std::size_t i = 0; i < format.places.header.maskedLength; ++i) {
        page[masked + i] = static_cast<std::uint8_t>(page[masked + i] ^ mask[i]);
    }
    constexpr std::size_t users = 256;
    for (std::size_t user = 0; user < users; ++user) {
        putAt(page, format.header.userCounters + 2 * user, 1, 2);
    }
}

// The first global map has the free pages: those to which the file can grow. The second has none.
void writeGlobalMaps(PageFile& file) {
    const auto& places = file.places().dataPage;
    const auto reach = static_cast<PageNumber>(file.places().pageMap.inlineBytes * 8);
    const PageNumber first = file.count() < reach ? 0 : file.count() / 8 * 8;
    std::vector<PageNumber> freePages(first + reach - file.count());
    std::iota(freePages.begin(), freePages.end(), file.count());
    Bytes free = pageMapRow(file, freePages, PageMapKind::Bitmap);

    // The page was allocated first of all, so it is filled by hand.
    const auto page = file.page(globalMapPage);
    page[0] = static_cast<std::uint8_t>(jet::PageKind::Data);
    page[1] = 1;
    putAt(page, places.owner, globalMapPage, 4);
    const std::size_t length = free.size(), end = file.pageSize();
    std::ranges::copy(free, page.end() - static_cast<std::ptrdiff_t>(length));
    putAt(page, places.rowCount, 2, 2);
    putAt(page, places.rowTable, end - length, 2);
    putAt(page, places.rowTable + 2, end - 2 * length, 2);
    putAt(page, places.freeBytes, end - 2 * length - places.rowTable - 4, 2);
}

// RC4 with the four bytes of the key.
void encodePage(std::span<std::uint8_t> page, std::uint32_t key) {
    std::array<std::uint8_t, 256> state;
    std::iota(state.begin(), state.end(), std::uint8_t{0});
    std::uint8_t j = 0;
    for (std::size_t i = 0; i < state.size(); ++i) {
        j = static_cast<std::uint8_t>(j + state[i] + (key >> (8 * (i % 4)) & 0xFF));
        std::swap(state[i], state[j]);
    }
    std::uint8_t i = 0;
    j = 0;
    for (std::uint8_t& byte : page) {
        ++i;
        j = static_cast<std::uint8_t>(j + state[i]);
        std::swap(state[i], state[j]);
        byte = static_cast<std::uint8_t>(byte ^ state[static_cast<std::uint8_t>(state[i] + state[j])]);
    }
}

void writePages(PageFile& file, const DatabaseSpec& spec) {
    while (file.count() <= jet::relationshipsPage) {
        file.allocate();
    }
    // All tables in the order of the catalogue; the rows of Jet's four and of Access's own follow when the catalogue is
    // known.
    std::vector<TableSpec> ofEngine = {objectsTable({}), permissionsTable({}), queriesTable(spec.format, {}),
                                       relationshipsTable(spec.relations)};
    std::vector<TableSpec> ofAccess = accessTables(spec, {});
    std::vector<std::pair<PageNumber, const TableSpec*>> tables;
    for (const TableSpec& table : ofEngine) {
        tables.emplace_back(jet::objectsPage + static_cast<PageNumber>(tables.size()), &table);
    }
    const auto allocate = [&](const std::vector<TableSpec>& more) {
        for (const TableSpec& table : more) {
            tables.emplace_back(file.allocate(), &table);
        }
    };
    allocate(ofAccess);
    allocate(spec.tables);
    const Catalogue catalogue = buildCatalogue(spec, tables);
    ofEngine[0].rows = objectsTable(catalogue.rows).rows;
    ofEngine[1].rows = permissionsTable(catalogue.rows).rows;
    ofEngine[2].rows = queriesTable(spec.format, catalogue.queries).rows;
    for (std::size_t i = 0; i < ofAccess.size(); ++i) {
        ofAccess[i].rows = catalogue.accessTables.at(i).rows;
    }

    std::vector<TablePlan> plans;
    for (const auto& [page, table] : tables) {
        plans.push_back({.table = table, .definition = page, .realIndexes = {}, .logicalIndexes = {}});
    }
    planIndexes(plans, spec.relations, spec.codePage);
    const TableSettings settings{textCoding(spec), spec.sortOrder,
                                 static_cast<std::size_t>(spec.indexPageEntries)};
    for (const TablePlan& plan : plans) {
        writeTable(file, plan, settings);
    }
    writeGlobalMaps(file);
    writeHeader(file.page(headerPage), spec, file.format());
}

} // namespace

DatabaseSpec savedAs(DatabaseSpec spec, FileFormat format) {
    spec.format = format;
    if (spec.accessVersion && format == FileFormat::Access2000) {
        spec.accessVersion = u"08.50";
    }
    return spec;
}

Bytes databaseBytes(const DatabaseSpec& spec) {
    PageFile file(writtenFormat(spec.format));
    writePages(file, spec);
    Bytes bytes;
    bytes.reserve(file.count() * file.pageSize());
    for (PageNumber number = 0; number < file.count(); ++number) {
        const auto page = file.page(number);
        if (number > headerPage && spec.encodingKey != 0) {
            encodePage(page, spec.encodingKey ^ number);
        }
        bytes.insert(bytes.end(), page.begin(), page.end());
    }
    return bytes;
}

void writeDatabase(const DatabaseSpec& spec, const std::filesystem::path& path) {
    const Bytes bytes = databaseBytes(spec);
    std::ofstream out(path, std::ios::binary | std::ios::trunc);
    out.write(reinterpret_cast<const char*>(bytes.data()), static_cast<std::streamsize>(bytes.size()));
    out.close();
    if (!out) {
        throw std::runtime_error("cannot write " + path.string());
    }
}

} // namespace relvane::samples
