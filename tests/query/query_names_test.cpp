#include "jet/query_names.h"

#include <gtest/gtest.h>

namespace relvane::jet {
namespace {

TEST(QueryNames, StandBareWhenOneWordOfAnyScript) {
    for (const TextView name :
         {u"Orders", u"_ROCR_X", u"T1", u"顧客", u"ｶﾅ", u"カナー", u"Größe", u"受注1"}) {
        EXPECT_EQ(printedName(name), name);
    }
}

TEST(QueryNames, StandInBracketsWithBlanksSignsOrALeadingDigit) {
    EXPECT_EQ(printedName(u"Order Details"), u"[Order Details]");
    EXPECT_EQ(printedName(u"2000年"), u"[2000年]");
    for (const TextView sign : {u"-", u"#", u"/", u"(", u"%", u"$", u"°", u"　", u"・", u"（", u"－"}) {
        const Text name = u"A" + Text(sign) + u"B";
        EXPECT_EQ(printedName(name), u"[" + name + u"]");
    }
}

TEST(QueryNames, StandInBracketsWhenReservedAndAlone) {
    for (const TextView name :
         {u"Year", u"Month", u"Group", u"NOTE", u"Key", u"Action", u"Names", u"Number", u"Currency"}) {
        EXPECT_EQ(printedName(name), u"[" + Text(name) + u"]");
        EXPECT_EQ(printedName(name, NamePlace::PartOfPath), name);
    }
    EXPECT_EQ(printedName(u"Var"), u"Var");
    EXPECT_EQ(printedName(u"Description"), u"Description");
}

TEST(QueryNames, KeepBracketsThatTheyAlreadyHave) {
    EXPECT_EQ(printedName(u"[Order Details]"), u"[Order Details]");
    EXPECT_EQ(withoutBrackets(u"[Order Details]"), u"Order Details");
    EXPECT_EQ(nameKey(u"[Orders]"), nameKey(u"ORDERS"));
}

TEST(QueryNames, OfParametersAreBracketedPartByPart) {
    EXPECT_EQ(printedParameter(u"Forms!Sales by Year Dialog!BeginningDate"),
              u"Forms![Sales by Year Dialog]!BeginningDate");
    EXPECT_EQ(printedParameter(u"Beginning Date"), u"[Beginning Date]");
    EXPECT_EQ(printedParameter(u"Forms![a b]!c d"), u"Forms![a b]!c d");
    EXPECT_EQ(printedParameter(u"年"), u"年");
}

} // namespace
} // namespace relvane::jet
