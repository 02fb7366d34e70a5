#include "sample_builder/database_writer.h"

#include <algorithm>
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

void writeHeader(std::span<std::uint8_t> page, const DatabaseSpec& spec) {
    using namespace jet::header;
    constexpr std::string_view engine = "Standard Jet DB";
    page[1] = 1;
    std::ranges::copy(engine, page.begin() + signature);
    putAt(page, globalMap, RowPlace{globalMapPage, 0}.pointer(), 4);
    putAt(page, globalMap2, RowPlace{globalMapPage, 1}.pointer(), 4);
    constexpr PageNumber definitions[] = {jet::objectsPage, jet::acesPage, jet::queriesPage,
                                          jet::relationshipsPage};
    for (std::size_t i = 0; i < std::size(definitions); ++i) {
        putAt(page, systemTables + 4 * i, definitions[i], 4);
    }
    putAt(page, sortOrder, static_cast<std::uint64_t>(spec.sortOrder), 2);
    putAt(page, codePage, static_cast<std::uint64_t>(spec.codePage), 2);
    putAt(page, databaseKey, spec.encodingKey, 4);
    const std::string secret = encodeText(spec.password, spec.codePage);
    constexpr std::size_t longestPassword = 14;
    if (secret.size() > longestPassword) {
        throw std::invalid_argument("a password has at most 14 bytes");
    }
    std::ranges::copy(secret, page.begin() + password);
    for (std::size_t i = 0; i < format.header.maskedLength; ++i) {
        page[masked + i] = static_cast<std::uint8_t>(page[masked + i] ^ mask[i]);
    }
    // A counter of transactions for each of the 256 users that can share the file.
    constexpr std::size_t counters = 0x600, users = 256;
    for (std::size_t user = 0; user < users; ++user) {
        putAt(page, counters + 2 * user, 1, 2);
    }
}

// The first global map has the free pages: those to which the file can grow. The second has none.
void writeGlobalMaps(PageFile& file) {
    constexpr PageNumber reach = static_cast<PageNumber>(format.pageMap.inlineBytes) * 8;
    const PageNumber first = file.count() < reach ? 0 : file.count() / 8 * 8;
    std::vector<PageNumber> freePages(first + reach - file.count());
    std::iota(freePages.begin(), freePages.end(), file.count());
    Bytes free = pageMapRow(file, freePages, PageMapKind::Bitmap);

    // The page was allocated first of all, so it is filled by hand.
    const auto page = file.page(globalMapPage);
    page[0] = static_cast<std::uint8_t>(jet::PageKind::Data);
    page[1] = 1;
    const std::size_t length = free.size();
    std::ranges::copy(free, page.end() - static_cast<std::ptrdiff_t>(length));
    putAt(page, format.dataPage.rowCount, 2, 2);
    putAt(page, format.dataPage.rowTable, pageSize - length, 2);
    putAt(page, format.dataPage.rowTable + 2, pageSize - 2 * length, 2);
    putAt(page, format.dataPage.freeBytes, pageSize - 2 * length - format.dataPage.rowTable - 4, 2);
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
    // All tables in the order of the catalogue; the rows of Jet's four and of Access's modules follow when the
    // catalogue is known.
    std::vector<TableSpec> ofEngine = {objectsTable({}), permissionsTable({}), queriesTable({}),
                                       relationshipsTable(spec.relations)};
    std::vector<TableSpec> ofAccess;
    if (spec.accessVersion) {
        ofAccess = accessTables(*spec.accessVersion, {});
    }
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
    ofEngine[2].rows = queriesTable(catalogue.queries).rows;
    if (!ofAccess.empty()) {
        ofAccess.back().rows = accessTables(*spec.accessVersion, catalogue.modules).back().rows;
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
    writeHeader(file.page(headerPage), spec);
}

} // namespace

Bytes databaseBytes(const DatabaseSpec& spec) {
    PageFile file;
    writePages(file, spec);
    Bytes bytes;
    bytes.reserve(file.count() * pageSize);
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
