// The builder's own choice of what no reader needs, held against real files: the tables of the engine, the marks of
// definitions, the header.

#include <gtest/gtest.h>

#include "jet/jet_file.h"
#include "support/file_formats.h"
#include "support/samples.h"

namespace relvane::samples {
namespace {

struct RealFile {
    FileFormat format;
    const char* name;
};

constexpr RealFile realFiles[] = {{FileFormat::Access97, "access97/nwind.mdb"},
                                  {FileFormat::Access97, "access97/delTestV1997.mdb"},
                                  {FileFormat::Access2000, "later/northwind-2000-ja.mdb"},
                                  {FileFormat::Access2000, "later/queryTestV2000.mdb"},
                                  {FileFormat::Access2000, "later/vbaV2003.mdb"}};

constexpr std::uint32_t enginePages[] = {jet::objectsPage, jet::acesPage, jet::queriesPage,
                                         jet::relationshipsPage};

// Calls `use` with each real file that is there and with one of its format that the builder wrote.
template <class Use>
void forEachRealFile(Use use) {
    for (const RealFile& file : realFiles) {
        if (const auto path = test::realSample(file.name)) {
            SCOPED_TRACE(file.name);
            const auto real = jet::openJetFile(path->string(), {});
            const jet::JetFile built(jet::makeMemorySource(databaseBytes(savedAs({}, file.format))), {});
            use(*real, built);
        }
    }
}

void compareColumns(const jet::TableDefinition& real, const jet::TableDefinition& built) {
    // Real files mask the names of users, and say so with this flag.
    constexpr std::uint8_t maskedName = 0x20;
    ASSERT_EQ(built.columns.size(), real.columns.size());
    for (std::size_t i = 0; i < real.columns.size(); ++i) {
        const jet::Column &expected = real.columns[i], &column = built.columns[i];
        SCOPED_TRACE(toUtf8(expected.name));
        EXPECT_EQ(column.name, expected.name);
        EXPECT_EQ(column.type, expected.type);
        EXPECT_EQ(column.number, expected.number);
        EXPECT_EQ(column.variableIndex, expected.variableIndex);
        EXPECT_EQ(column.ordinal, expected.ordinal);
        EXPECT_EQ(column.flags, expected.flags & ~maskedName);
        EXPECT_EQ(column.secondFlags, expected.secondFlags);
        EXPECT_EQ(column.length, expected.length);
        if (column.has(jet::columnFlag::fixed)) {
            EXPECT_EQ(column.fixedOffset, expected.fixedOffset);
        }
    }
}

void compareIndexes(const jet::TableDefinition& real, const jet::TableDefinition& built) {
    ASSERT_EQ(built.realIndexes.size(), real.realIndexes.size());
    for (std::size_t i = 0; i < real.realIndexes.size(); ++i) {
        const jet::RealIndex &expected = real.realIndexes[i], &index = built.realIndexes[i];
        EXPECT_EQ(index.flags, expected.flags);
        ASSERT_EQ(index.entries.size(), expected.entries.size());
        for (std::size_t j = 0; j < index.entries.size(); ++j) {
            EXPECT_EQ(index.entries[j].column, expected.entries[j].column);
            EXPECT_EQ(index.entries[j].ascending, expected.entries[j].ascending);
        }
    }
    ASSERT_EQ(built.logicalIndexes.size(), real.logicalIndexes.size());
    for (std::size_t i = 0; i < real.logicalIndexes.size(); ++i) {
        EXPECT_EQ(built.logicalIndexes[i].name, real.logicalIndexes[i].name);
        EXPECT_EQ(built.logicalIndexes[i].realIndex, real.logicalIndexes[i].realIndex);
    }
}

TEST(SystemTables, HaveTheColumnsAndIndexesOfRealFiles) {
    forEachRealFile([](const jet::JetFile& real, const jet::JetFile& built) {
        for (const std::uint32_t page : enginePages) {
            SCOPED_TRACE(page);
            const auto expected = jet::readTableDefinition(real.pages(), page);
            const auto definition = jet::readTableDefinition(built.pages(), page);
            EXPECT_EQ(definition.kind, expected.kind);
            EXPECT_EQ(definition.variableColumns, expected.variableColumns);
            compareColumns(expected, definition);
            compareIndexes(expected, definition);
        }
    });
}

// Of the definitions of the engine's tables: the page's head, the length, and the numbers that nobody reads.
TEST(SystemTables, HaveTheMarksOfRealFiles) {
    forEachRealFile([](const jet::JetFile& real, const jet::JetFile& built) {
        const auto& places = built.pages().format();
        const bool isJet3 = built.header().isJet3();
        for (const std::uint32_t page : enginePages) {
            const jet::Page realPage = real.pages().page(page), builtPage = built.pages().page(page);
            const jet::ByteSpan expected = realPage.span(), found = builtPage.span();
            const std::size_t columns = places.definition.end + places.definition.indexStatistics *
                                                                    found.u32(places.definition.realIndexes);
            for (const std::size_t place : {std::size_t{0}, std::size_t{4}, places.definition.length}) {
                EXPECT_EQ(found.u32(place), expected.u32(place)) << place;
            }
            if (!isJet3) {
                for (const std::size_t place : {std::size_t{12}, std::size_t{24}, columns + 1}) {
                    EXPECT_EQ(found.u32(place), expected.u32(place)) << place;
                }
            }
        }
    });
}

Bytes headerOf(const jet::JetFile& file) {
    Bytes page(file.pages().format().pageSize);
    file.pages().source().read(0, page);
    return page;
}

// What is masked by nothing: signature and version, and behind the masked area which engine it is.
TEST(SystemTables, AreFoundFromAHeaderLikeThatOfRealFiles) {
    forEachRealFile([](const jet::JetFile& real, const jet::JetFile& built) {
        const Bytes expected = headerOf(real), found = headerOf(built);
        const auto& places = built.pages().format();
        for (std::size_t place = 0; place < 0xA0; ++place) {
            const bool isMasked =
                place >= jet::header::masked && place < jet::header::masked + places.header.maskedLength;
            if (!isMasked) {
                EXPECT_EQ(found[place], expected[place]) << place;
            }
        }
        const jet::Page realMaps = real.pages().page(1), builtMaps = built.pages().page(1);
        const std::size_t owner = places.dataPage.owner, count = places.dataPage.rowCount;
        EXPECT_EQ(builtMaps.span().u32(owner), realMaps.span().u32(owner));
        EXPECT_EQ(builtMaps.span().u16(count), realMaps.span().u16(count));
    });
}

} // namespace
} // namespace relvane::samples
