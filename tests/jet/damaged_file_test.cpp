// Whole files with a damage anywhere: they give what can be read or the product's own error, and never more.

#include <gtest/gtest.h>

#include "file_builder.h"
#include "fuzz/walk_database.h"
#include "sample_builder/written_format.h"
#include "support/file_formats.h"

namespace relvane::jet {
namespace {

using namespace samples;

constexpr int rowLimit = 6;

// A row of each kind, long values in each of their places, an index, a query, a relation, properties.
DatabaseSpec smallDatabase(FileFormat format) {
    DatabaseSpec spec;
    spec.accessVersion.reset(); // what Access adds is the same again, and every byte costs a reading
    spec.tables.push_back(
        {.name = u"台帳",
         .columns = {{.name = u"番号", .type = ColumnType::Long, .autoNumber = true},
                     {.name = u"名", .properties = {{u"Description", Text(u"説明")}}},
                     {.name = u"旧", .deleted = true},
                     {.name = u"覚書", .type = ColumnType::Memo},
                     {.name = u"長い", .type = ColumnType::Memo, .longValues = LongValuePlace::Chain}},
         .indexes = {{.name = u"PrimaryKey", .columns = {{u"番号"}}, .primary = true},
                     {.name = u"名", .columns = {{u"名", true}, {u"番号"}}}},
         .rows = {{1, u"abc", Text(50, u'覚'), Text(10, u'長')},
                  RowSpec{2, u"漢字"}.asMoved(),
                  RowSpec{3}.asDeleted(),
                  RowSpec{4, u"前"}.fromBefore(2)},
         .properties = {{u"Description", Text(u"台帳")}}});
    spec.tables.push_back({.name = u"明細",
                           .columns = {{.name = u"台帳", .type = ColumnType::Long}},
                           .rows = {{1}},
                           .pageMap = PageMapKind::Pages});
    spec.relations.push_back(
        {.name = u"台帳明細", .table = u"台帳", .foreignTable = u"明細", .columns = {{u"番号", u"台帳"}}});
    QuerySpec query{.name = u"選択"};
    query.rows = {{.attribute = 5, .name1 = u"台帳"}, {.attribute = 6, .expression = u"台帳.*"}};
    spec.queries.push_back(std::move(query));
    return savedAs(std::move(spec), format);
}

class DamagedFile : public testing::TestWithParam<FileFormat> {
protected:
    struct Reading {
        int errorOfOpening = 0, errorsInside = 0;
    };

    // Reads all that can be read. Anything but the product's own error leaves the test.
    static Reading read(Bytes bytes) {
        Reading reading;
        reading.errorOfOpening = errorOf([&] {
            const auto database = openDatabase(makeMemorySource(std::move(bytes)), u"x.mdb");
            reading.errorsInside = test::walkDatabase(*database, rowLimit);
        });
        return reading;
    }

    const Bytes whole_ = databaseBytes(smallDatabase(GetParam()));
};

INSTANTIATE_TEST_SUITE_P(Formats, DamagedFile, test::everyFormat, test::formatName);

TEST_P(DamagedFile, IsReadWholeWithoutADamage) {
    const Reading reading = read(whole_);
    EXPECT_EQ(reading.errorOfOpening, 0);
    EXPECT_EQ(reading.errorsInside, 0);
}

TEST_P(DamagedFile, WithAnyByteChangedIsReadOrRefused) {
    const std::size_t pageSize = writtenFormat(GetParam()).places.pageSize;
    int refused = 0, number = 0;
    for (std::size_t at = 0; at < whole_.size(); ++at) {
        // Zeros fill up most of the pages: of these those of the heads are enough.
        constexpr std::size_t head = 32;
        if (whole_[at] == 0 && at % pageSize >= head) {
            continue;
        }
        Bytes changed = whole_;
        const std::uint8_t change = ++number % 2 == 0 ? 0xFF : 0x01;
        changed[at] ^= change;
        refused += read(std::move(changed)).errorOfOpening != 0 ? 1 : 0;
    }
    EXPECT_GT(refused, 50); // signature, definitions and catalogue are needed
    EXPECT_LT(refused, number / 2);
}

TEST_P(DamagedFile, CutOffAnywhereIsReadOrRefused) {
    const std::size_t pageSize = writtenFormat(GetParam()).places.pageSize;
    for (std::size_t length = 0; length < whole_.size(); length += length < pageSize ? 64 : pageSize / 2) {
        Bytes cut = whole_;
        cut.resize(length);
        const int error = read(std::move(cut)).errorOfOpening;
        if (length < pageSize) {
            EXPECT_EQ(error, 3343) << length;
        }
    }
}

} // namespace
} // namespace relvane::jet
