// Pages, rows that moved, page maps, long values, index trees: records of a few bytes, whole and damaged.

#include <gtest/gtest.h>

#include "file_builder.h"
#include "jet/ciphers.h"
#include "jet/data_page.h"
#include "jet/index_walk.h"
#include "jet/long_value.h"
#include "jet/page_map.h"

namespace relvane::jet {
namespace {

TEST(Rc4, GivesThePublishedKeyStream) {
    const std::string key = "Key";
    Bytes data;
    for (const char c : std::string("Plaintext")) {
        data.push_back(static_cast<std::uint8_t>(c));
    }
    applyRc4(std::span(reinterpret_cast<const std::uint8_t*>(key.data()), key.size()), data);
    EXPECT_EQ(data, (Bytes{0xBB, 0xF3, 0x16, 0xE8, 0xD9, 0x40, 0xAF, 0x0A, 0xD3}));
}

TEST(Rc4, MakesTheMaskOfTheHeader) {
    const Bytes key = {0xC7, 0xDA, 0x39, 0x6B};
    Bytes stream(header::mask.size());
    applyRc4(key, stream);
    EXPECT_TRUE(std::ranges::equal(stream, header::mask));
}

TEST(PageFile, AShortLastPageDoesNotCount) {
    BareFile bare(3);
    const auto file = bare.open();
    EXPECT_EQ(file->pageCount(), 3u);
    EXPECT_EQ(errorOf([&] { file->page(3); }), 3049);
    EXPECT_EQ(errorOf([&] { file->page(0); }), 3049);
    EXPECT_EQ(errorOf([&] { file->page(0xFFFFFFFF); }), 3049);
}

TEST(PageFile, TheErrorNamesThePage) {
    BareFile bare(5);
    const auto file = bare.open();
    try {
        file->page(4, PageKind::Data);
        FAIL();
    } catch (const RunTimeError& error) {
        EXPECT_NE(error.description().find(u"ページ 4"), Text::npos) << toUtf8(error.description());
    }
}

TEST(DataPage, RowsStandFromTheEnd) {
    BareFile bare;
    bare.putRows(1, 9, {{1, 2}, {3}, {4, 5, 6}}, {0, rowDeleted});
    const auto file = bare.open();
    const DataPage page(*file, 1);
    EXPECT_EQ(page.owner(), 9u);
    EXPECT_EQ(page.rowCount(), 3u);
    EXPECT_EQ(page.row(0).copy(), (Bytes{1, 2}));
    EXPECT_TRUE(page.isDeleted(1));
    EXPECT_EQ(page.row(2).copy(), (Bytes{4, 5, 6}));
    EXPECT_EQ(errorOf([&] { page.row(3); }), 3049);
}

TEST(DataPage, CountsAndPlacesThatDoNotFitAre3049) {
    BareFile bare;
    bare.putRows(1, 9, {{1, 2}, {3}});
    bare.put16(1, jet3.dataPage.rowTable + 2, 2047); // row 1 would begin behind the start of row 0
    {
        const auto file = bare.open();
        const DataPage page(*file, 1);
        EXPECT_EQ(errorOf([&] { page.row(1); }), 3049);
    }
    bare.put16(1, jet3.dataPage.rowTable, 3); // inside the header
    {
        const auto file = bare.open();
        const DataPage page(*file, 1);
        EXPECT_EQ(errorOf([&] { page.row(0); }), 3049);
    }
    bare.put16(1, jet3.dataPage.rowCount, 0xFFFF);
    const auto file = bare.open();
    EXPECT_EQ(errorOf([&] { DataPage(*file, 1); }), 3049);
}

TEST(DataPage, AMovedRowIsFollowedAndACycleEnds) {
    BareFile bare(4);
    bare.putRows(1, 9, {{0, 2, 0, 0}}, {rowMoved});
    bare.putRows(2, 9, {{7, 7}}, {rowDeleted});
    auto file = bare.open();
    EXPECT_EQ(followRow(*file, {1, 0}).bytes.copy(), (Bytes{7, 7}));
    bare.putRows(2, 9, {{0, 1, 0, 0}}, {rowMoved});
    file = bare.open();
    EXPECT_EQ(errorOf([&] { followRow(*file, {1, 0}); }), 3049);
    bare.putRows(1, 9, {{0, 2}}, {rowMoved}); // half a pointer
    file = bare.open();
    EXPECT_EQ(errorOf([&] { followRow(*file, {1, 0}); }), 3049);
}

TEST(PageMap, ABitmapInARowCountsFromItsFirstPage) {
    BareFile bare(20);
    Bytes map(5 + jet3.pageMap.inlineBytes);
    map[1] = 2;      // first page
    map[5] = 0x81;   // pages 2 and 9
    map[6] = 0x01;   // page 10
    map[132] = 0xFF; // pages that the file does not have, of which the first is named
    bare.putRows(1, 0, {map});
    const auto file = bare.open();
    EXPECT_EQ(readPageMap(*file, {1, 0}), (std::vector<std::uint32_t>{2, 9, 10, 1018}));
}

TEST(PageMap, MapPagesCoverAStretchEach) {
    BareFile bare(20);
    bare.putRows(1, 0, {{1, 0, 0, 0, 0, 3, 0, 0, 0}, {1, 3, 0, 0, 0, 3, 0, 0, 0}, {1, 3, 0, 0, 0}, {2}});
    bare.at(3, 0) = 5;
    bare.at(3, 4) = 0x30;
    const auto file = bare.open();
    // Its stretch lies behind the file: the first page that is missing is named.
    EXPECT_EQ(readPageMap(*file, {1, 0}), (std::vector<std::uint32_t>{16356}));
    EXPECT_EQ(readPageMap(*file, {1, 2}), (std::vector<std::uint32_t>{4, 5}));
    EXPECT_EQ(errorOf([&] { readPageMap(*file, {1, 1}); }), 3049); // the same page twice
    EXPECT_EQ(errorOf([&] { readPageMap(*file, {1, 3}); }), 3049); // an unknown kind
}

Bytes head(std::uint32_t word, RowPointer pointer) {
    return {static_cast<std::uint8_t>(word),
            static_cast<std::uint8_t>(word >> 8),
            static_cast<std::uint8_t>(word >> 16),
            static_cast<std::uint8_t>(word >> 24),
            pointer.row,
            static_cast<std::uint8_t>(pointer.page),
            0,
            0,
            0,
            0,
            0,
            0};
}

class LongValues : public testing::Test {
protected:
    Bytes read(const Bytes& cell) {
        const auto file = bare_.open();
        return readLongValue(*file, ByteSpan(cell, 1));
    }
    BareFile bare_{6};
};

TEST_F(LongValues, StandInTheRowOnAPageOrInAChain) {
    Bytes cell = head(longValueInline | 3, {});
    cell.insert(cell.end(), {1, 2, 3, 9});
    EXPECT_EQ(read(cell), (Bytes{1, 2, 3}));

    bare_.putRows(2, longValueOwner, {{9}, {4, 5, 6, 7}});
    EXPECT_EQ(read(head(longValueSingle | 3, {2, 1})), (Bytes{4, 5, 6}));

    bare_.putRows(3, longValueOwner, {{1, 4, 0, 0, 'a', 'b'}}); // goes on in row 1 of page 4
    bare_.putRows(4, longValueOwner, {{9}, {0, 0, 0, 0, 'c', 'd'}}, {0, rowDeleted});
    EXPECT_EQ(read(head(4, {3, 0})), (Bytes{'a', 'b', 'c', 'd'}));
    EXPECT_EQ(read(head(3, {3, 0})), (Bytes{'a', 'b', 'c'}));
    EXPECT_EQ(read(head(0, {})), Bytes());
}

TEST_F(LongValues, LiesAboutLengthPlaceAndChainAre3049) {
    bare_.putRows(3, longValueOwner, {{0, 4, 0, 0, 'a'}});
    bare_.putRows(4, longValueOwner, {{0, 3, 0, 0, 'b'}});
    bare_.putRows(5, 9, {{1, 2, 3, 4, 5}});
    EXPECT_EQ(errorOf([&] { read({1, 2, 3}); }), 3049);                            // no head
    EXPECT_EQ(errorOf([&] { read(head(longValueInline | 1, {})); }), 3049);        // nothing behind the head
    EXPECT_EQ(errorOf([&] { read(head(0x3FFFFFFF, {3, 0})); }), 3049);             // longer than the file
    EXPECT_EQ(errorOf([&] { read(head(longValueSingle | 6, {3, 0})); }), 3049);    // longer than its row
    EXPECT_EQ(errorOf([&] { read(head(100, {3, 0})); }), 3049);                    // a circle
    EXPECT_EQ(errorOf([&] { read(head(longValueSingle | 2, {5, 0})); }), 3049);    // not a long-value page
    EXPECT_EQ(errorOf([&] { read(head(longValueSingle | 2, {0xFF, 0})); }), 3049); // no page
}

TEST(IndexWalk, GoesDownToTheFirstLeafAndAlongTheLevel) {
    BareFile bare(6);
    const auto& at = jet3.indexPage;
    // Entries end with a row pointer, its page with the high byte first; inner ones with a child page behind it.
    const auto put = [&](std::uint32_t page, PageKind kind, std::uint32_t next, std::uint8_t prefix,
                         const std::vector<Bytes>& entries) {
        bare.at(page, 0) = static_cast<std::uint8_t>(kind);
        bare.put32(page, at.next, next);
        bare.at(page, at.prefixLength) = prefix;
        bare.at(page, at.prefixLength + 1) = kind == PageKind::InnerIndex ? 1 : 0; // level
        std::size_t place = 0;
        for (const Bytes& entry : entries) {
            std::ranges::copy(entry, &bare.at(page, at.firstEntry + place));
            place += entry.size();
            bare.at(page, at.mask + place / 8) |= static_cast<std::uint8_t>(1u << place % 8);
        }
    };
    put(1, PageKind::InnerIndex, 0, 0, {{'k', 0, 0, 9, 1, 0, 0, 0, 2}, {'m', 0, 0, 9, 2, 0, 0, 0, 3}});
    put(2, PageKind::LeafIndex, 3, 1, {{'k', 0, 0, 9, 0}, {0, 0, 9, 1}});
    put(3, PageKind::LeafIndex, 0, 0, {{'m', 0, 1, 9, 2}});
    auto file = bare.open();
    EXPECT_EQ(walkIndex(*file, 1), (std::vector<RowPointer>{{9, 0}, {9, 1}, {0x109, 2}}));

    bare.put32(3, at.next, 2);
    file = bare.open();
    EXPECT_EQ(errorOf([&] { walkIndex(*file, 1); }), 3049); // the leaves go round
    put(2, PageKind::InnerIndex, 0, 0, {});
    bare.put32(2, at.tail, 1);
    bare.at(2, at.mask) = 0;
    file = bare.open();
    EXPECT_EQ(errorOf([&] { walkIndex(*file, 1); }), 3049); // the tree has no floor
}

} // namespace
} // namespace relvane::jet
