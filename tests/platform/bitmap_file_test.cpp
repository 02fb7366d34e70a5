#include "platform/bitmap_file.h"

#include <gmock/gmock.h>

namespace relvane {
namespace {

std::uint32_t wordAt(const Bytes& bytes, std::size_t at) {
    return bytes[at] | std::uint32_t{bytes[at + 1]} << 8 | std::uint32_t{bytes[at + 2]} << 16 |
           std::uint32_t{bytes[at + 3]} << 24;
}

TEST(BitmapFile, IsABitmapOf24BitsAPixel) {
    const Bytes bytes = bitmapFile({3, 2, {1, 2, 3, 4, 5, 6}});
    ASSERT_EQ(bytes.size(), 14U + 40U + 2U * 12U);
    EXPECT_EQ(bytes[0], 'B');
    EXPECT_EQ(bytes[1], 'M');
    EXPECT_EQ(wordAt(bytes, 2), bytes.size());
    EXPECT_EQ(wordAt(bytes, 10), 54U); // the rows
    EXPECT_EQ(wordAt(bytes, 14), 40U);
    EXPECT_EQ(wordAt(bytes, 18), 3U);
    EXPECT_EQ(wordAt(bytes, 22), 2U);
    EXPECT_EQ(wordAt(bytes, 26), 1U | 24U << 16); // planes, bits
    EXPECT_EQ(wordAt(bytes, 30), 0U);             // not compressed
    EXPECT_EQ(wordAt(bytes, 34), 24U);
}

TEST(BitmapFile, RowsStandFromTheBottomInBlueGreenRedFilledToWords) {
    const Bytes bytes = bitmapFile({1, 2, {0x112233, 0xAABBCC}});
    EXPECT_THAT(Bytes(bytes.begin() + 54, bytes.end()),
                testing::ElementsAre(0xCC, 0xBB, 0xAA, 0, 0x33, 0x22, 0x11, 0));
}

TEST(BitmapFile, RowOfWholeWordsIsNotFilled) {
    EXPECT_EQ(bitmapFile({4, 3, std::vector<std::uint32_t>(12)}).size(), 54U + 3U * 12U);
}

} // namespace
} // namespace relvane
