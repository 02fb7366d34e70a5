// Names behind a point or a blank, against the search for each of them.

#include "support/name_matcher.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <random>

#include "core/text_functions.h"

namespace relvane {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::size_t> oneByOne(const std::vector<Text>& names, TextView text) {
    std::vector<std::size_t> found;
    for (std::size_t i = 0; i < names.size(); ++i) {
        const std::int32_t position = names[i].empty() ? 0 : InStr(text, names[i]);
        if (position > 1) {
            const Text before = Mid(text, position - 1, 1);
            if (before == u"." || before == u" ") {
                found.push_back(i);
            }
        }
    }
    return found;
}

TEST(NameMatcher, NamesAreTakenBehindAPointOrABlankOnly) {
    const NameMatcher names({u"Alpha", u"Beta", u"Gamma", u"Delta", u"Eps"});
    EXPECT_THAT(names.mentioned(u"= Beta(1) + M.Alpha, (Gamma), \tDelta"), ElementsAre(0u, 1u));
    EXPECT_THAT(names.mentioned(u"Alpha"), IsEmpty()) << "nothing stands before it";
    EXPECT_THAT(names.mentioned(u"　Alpha"), IsEmpty()) << "a full-width blank";
    EXPECT_THAT(names.mentioned(u""), IsEmpty());
    EXPECT_THAT(names.mentioned(u" "), IsEmpty());
    EXPECT_THAT(names.mentioned(u"."), IsEmpty());
}

TEST(NameMatcher, OnlyTheFirstOccurrenceCounts) {
    const NameMatcher names({u"Alpha"});
    EXPECT_THAT(names.mentioned(u"= (Alpha) + Alpha"), IsEmpty());
    EXPECT_THAT(names.mentioned(u"= Alpha + (Alpha)"), ElementsAre(0u));
    EXPECT_THAT(names.mentioned(u"= xAlpha + Alpha"), IsEmpty());
}

TEST(NameMatcher, CapitalsAndSmallLettersDiffer) {
    EXPECT_THAT(NameMatcher({u"Alpha", u"ALPHA"}).mentioned(u"= ALPHA"), ElementsAre(1u));
}

TEST(NameMatcher, ANameThatBeginsAnotherIsMentionedWithIt) {
    const NameMatcher names({u"OpenForm", u"Open", u"Form", u"OpenFormNow", u"O", u"P"});
    EXPECT_THAT(names.mentioned(u"= OpenFormx"), ElementsAre(0u, 1u, 4u));
    EXPECT_THAT(names.mentioned(u"= OpenFormNow"), ElementsAre(0u, 1u, 3u, 4u));
}

TEST(NameMatcher, ANameThatStandsThereTwiceIsTwo) {
    EXPECT_THAT(NameMatcher({u"A", u"B", u"A"}).mentioned(u" B A"), ElementsAre(0u, 1u, 2u));
}

TEST(NameMatcher, AnEmptyNameIsNeverMentioned) {
    EXPECT_THAT(NameMatcher({u"", u"A", u""}).mentioned(u"  A "), ElementsAre(1u));
    EXPECT_THAT(NameMatcher({}).mentioned(u" A"), IsEmpty());
}

// Few letters, so that names begin, hold and repeat each other, and are met everywhere in the texts.
TEST(NameMatcher, RandomNamesInRandomTextsAreThoseFoundOneByOne) {
    std::mt19937 random(20261122);
    const auto number = [&](std::size_t from, std::size_t to) {
        return std::uniform_int_distribution<std::size_t>(from, to)(random);
    };
    const auto textOf = [&](TextView letters, std::size_t least, std::size_t most) {
        Text text(number(least, most), u' ');
        for (char16_t& letter : text) {
            letter = letters[number(0, letters.size() - 1)];
        }
        return text;
    };
    std::size_t mentioned = 0, several = 0;
    for (int round = 0; round < 400; ++round) {
        const TextView letters = round % 2 == 0 ? u"aB" : u"aAb計_";
        std::vector<Text> names(number(0, 40));
        for (Text& name : names) {
            name = textOf(letters, round % 10 == 0 ? 0 : 1, 6);
        }
        const NameMatcher matcher(names);
        EXPECT_EQ(matcher.names(), names);
        for (int text = 0; text < 50; ++text) {
            const Text searched = textOf(Text(letters) + u" .", 0, text % 5 == 0 ? 255 : 30);
            const auto found = matcher.mentioned(searched);
            ASSERT_EQ(found, oneByOne(names, searched)) << toUtf8(searched);
            mentioned += found.empty() ? 0 : 1;
            several += found.size() > 1 ? 1 : 0;
        }
    }
    // The texts were worth searching.
    EXPECT_GT(mentioned, 5000u);
    EXPECT_GT(several, 2000u);
}

} // namespace
} // namespace relvane
