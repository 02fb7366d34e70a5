#include "objects/round_half_up.h"

#include <gtest/gtest.h>

#include <limits>

#include "platform/runtime_error.h"

namespace relvane {
namespace {

std::string rounded(std::int64_t tenThousandths, int digits) {
    return toUtf8(toText(Value(RoundHalfUp(Currency{tenThousandths}, digits))));
}

TEST(RoundHalfUpTest, HalvesOfTheWantedPlaceRise) {
    EXPECT_EQ(rounded(17634, 3), "1.763");
    EXPECT_EQ(rounded(17635, 3), "1.764");
    EXPECT_EQ(rounded(17649, 2), "1.76");
    EXPECT_EQ(rounded(17650, 2), "1.77");
    EXPECT_EQ(rounded(17499, 1), "1.7");
    EXPECT_EQ(rounded(17500, 1), "1.8");
    EXPECT_EQ(rounded(0, 3), "0");
}

TEST(RoundHalfUpTest, CutsDownwardsBelowZero) {
    EXPECT_EQ(rounded(-17635, 3), "-1.763") << "-1763.5 and a half is -1763";
    EXPECT_EQ(rounded(-17637, 3), "-1.764");
    EXPECT_EQ(rounded(-17634, 3), "-1.763");
    EXPECT_EQ(rounded(-5, 3), "0");
    EXPECT_EQ(rounded(-6, 3), "-0.001");
}

TEST(RoundHalfUpTest, FourDigitsAndMoreChangeNothing) {
    EXPECT_EQ(rounded(17635, 4), "1.7635");
    EXPECT_EQ(rounded(17635, 5), "1.7635");
    EXPECT_EQ(rounded(17635, 300), "1.7635");
}

TEST(RoundHalfUpTest, ZeroAndFewerDigitsRoundWholeNumbers) {
    EXPECT_EQ(rounded(14999, 0), "1");
    EXPECT_EQ(rounded(15000, 0), "2");
    EXPECT_EQ(rounded(-15000, 0), "-1");
    EXPECT_EQ(rounded(149999, -1), "10");
    EXPECT_EQ(rounded(150000, -1), "20");
    EXPECT_EQ(rounded(1499999, -2), "100");
    EXPECT_EQ(rounded(1500000, -2), "200");
}

TEST(RoundHalfUpTest, PlacesBeyondTheValueLeaveNothing) {
    constexpr std::int64_t most = std::numeric_limits<std::int64_t>::max();
    EXPECT_EQ(rounded(most, -15), "0");
    EXPECT_EQ(rounded(most, -400), "0");
    EXPECT_EQ(rounded(std::numeric_limits<std::int64_t>::min(), -15), "0");
}

TEST(RoundHalfUpTest, ResultThatDoesNotFitIsAnOverflow) {
    try {
        RoundHalfUp(Currency{std::numeric_limits<std::int64_t>::max()}, 3);
        FAIL() << "it fitted";
    } catch (const RunTimeError& error) {
        EXPECT_TRUE(error.is(ErrorNumber::Overflow));
    }
}

TEST(ToCurrency, KeepsFourDecimalsWithHalvesToTheEvenOne) {
    EXPECT_EQ(toCurrency(1.76366).tenThousandths, 17637);
    EXPECT_EQ(toCurrency(0.03125).tenThousandths, 312);
    EXPECT_EQ(toCurrency(0.09375).tenThousandths, 938);
    EXPECT_EQ(toCurrency(-0.09375).tenThousandths, -938);
    EXPECT_THROW(toCurrency(1e15), RunTimeError);
    EXPECT_THROW(toCurrency(std::numeric_limits<double>::quiet_NaN()), RunTimeError);
}

TEST(Centimetres, AreTheShortestTextOfThreeDigits) {
    const auto of = [](std::int64_t twips) { return toUtf8(centimetres(Value(twips))); };
    EXPECT_EQ(of(1000), "1.764");
    EXPECT_EQ(of(0), "0");
    EXPECT_EQ(of(567), "1");
    EXPECT_EQ(of(5670), "10");
    EXPECT_EQ(of(284), "0.501");
    EXPECT_EQ(of(1), "0.002");
    EXPECT_EQ(of(-1000), "-1.764") << "-1763.7 and a half is cut to -1764";
    EXPECT_EQ(toUtf8(centimetres(Value(283.5))), "0.5");
}

// Two roundings follow each other: what the first lifts to a half, the second lifts to the next place.
TEST(Centimetres, AreRoundedToFourPlacesFirst) {
    for (std::int64_t twips = 0; twips <= 31680; ++twips) {
        const std::int64_t fourPlaces = (twips * 10000 * 2 + 567) / (567 * 2); // no length is an exact half
        const std::int64_t threePlaces = (fourPlaces + 5) / 10;
        const double expected = static_cast<double>(threePlaces) / 1000;
        ASSERT_EQ(centimetres(Value(twips)), toText(Value(expected))) << twips;
    }
    EXPECT_EQ(toUtf8(centimetres(Value(std::int64_t{155}))), "0.273");  // 0.27337
    EXPECT_EQ(toUtf8(centimetres(Value(std::int64_t{2226}))), "3.926"); // 3.92593
}

} // namespace
} // namespace relvane
