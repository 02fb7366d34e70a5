#include "jet/query_types.h"

#include <gtest/gtest.h>

#include <map>

namespace relvane::jet {
namespace {

// Fields named for their types.
class NamedForTypes : public ExpressionScope {
public:
    std::optional<int> typeOfField(TextView table, TextView field) override {
        static const std::map<Text, int> fields = {{u"aByte", 2},     {u"anInteger", 3}, {u"aLong", 4},
                                                   {u"aCurrency", 5}, {u"aSingle", 6},   {u"aDouble", 7},
                                                   {u"aDate", 8},     {u"aText", 10},    {u"aMemo", 12},
                                                   {u"aDecimal", 20}, {u"aBoolean", 1}};
        const auto found = fields.find(Text(field));
        return found == fields.end() || (!table.empty() && table != u"T") ? std::nullopt
                                                                          : std::optional(found->second);
    }
    std::optional<int> typeOfParameter(TextView name) override {
        return name == u"Forms!F!When" ? std::optional(8) : std::nullopt;
    }
    std::optional<int> typeOfSubquery(TextView statement) override {
        return statement == u"SELECT Max(x) FROM T" ? std::optional(5) : std::nullopt;
    }
};

int typeOf(TextView expression) {
    NamedForTypes scope;
    return typeOfExpression(expression, scope);
}

TEST(ExpressionTypes, OfConstants) {
    EXPECT_EQ(typeOf(u"1"), 3);
    EXPECT_EQ(typeOf(u"32768"), 4);
    EXPECT_EQ(typeOf(u"2147483648"), 7);
    EXPECT_EQ(typeOf(u"1.5"), 7);
    EXPECT_EQ(typeOf(u"1E3"), 7);
    EXPECT_EQ(typeOf(u"&HFF"), 4);
    EXPECT_EQ(typeOf(u"\"a \"\"b\"\"\""), 10);
    EXPECT_EQ(typeOf(u"'a'"), 10);
    EXPECT_EQ(typeOf(u"#1/1/95#"), 8);
    EXPECT_EQ(typeOf(u"True"), 3);
    EXPECT_EQ(typeOf(u"Null"), 10);
    EXPECT_EQ(typeOf(u""), 10);
}

TEST(ExpressionTypes, OfArithmeticAreTheWiderOfBothSides) {
    EXPECT_EQ(typeOf(u"aByte+anInteger"), 3);
    EXPECT_EQ(typeOf(u"anInteger*aLong"), 4);
    EXPECT_EQ(typeOf(u"aLong*aSingle"), 7);
    EXPECT_EQ(typeOf(u"anInteger-aSingle"), 6);
    EXPECT_EQ(typeOf(u"aCurrency+aDouble"), 5);
    EXPECT_EQ(typeOf(u"aCurrency*aDouble"), 7);
    EXPECT_EQ(typeOf(u"aCurrency*anInteger"), 5);
    EXPECT_EQ(typeOf(u"aDecimal*aCurrency"), 20);
    EXPECT_EQ(typeOf(u"aBoolean+1"), 3);
    EXPECT_EQ(typeOf(u"-aLong"), 4);
    EXPECT_EQ(typeOf(u"anInteger/anInteger"), 7);
    EXPECT_EQ(typeOf(u"aDouble\\2"), 4);
    EXPECT_EQ(typeOf(u"aLong Mod 2"), 4);
    EXPECT_EQ(typeOf(u"2^3"), 7);
}

TEST(ExpressionTypes, OfDatesAndTexts) {
    EXPECT_EQ(typeOf(u"aDate+1"), 8);
    EXPECT_EQ(typeOf(u"aDate-aDate"), 7);
    EXPECT_EQ(typeOf(u"aText+aText"), 10);
    EXPECT_EQ(typeOf(u"aLong & aLong"), 10);
    EXPECT_EQ(typeOf(u"1+2 & 3"), 10);
}

TEST(ExpressionTypes, OfConditionsAreJetsIntegers) {
    for (const TextView condition :
         {u"aLong=1", u"aText Like \"a*\"", u"aLong Between 1 And 2", u"aLong Not Between 1 And 2",
          u"aText In (\"a\",\"b\")", u"aText Is Not Null", u"Not aBoolean",
          u"aLong=1 And aText=\"x\" Or True", u"Exists (SELECT x FROM T)"}) {
        EXPECT_EQ(typeOf(condition), 3) << toUtf8(condition);
    }
}

TEST(ExpressionTypes, OfFunctions) {
    EXPECT_EQ(typeOf(u"Count(*)"), 4);
    EXPECT_EQ(typeOf(u"Avg(aLong)"), 7);
    EXPECT_EQ(typeOf(u"Avg(aCurrency)"), 5);
    EXPECT_EQ(typeOf(u"Sum(aLong)"), 7);
    EXPECT_EQ(typeOf(u"Sum(aCurrency)"), 5);
    EXPECT_EQ(typeOf(u"Max([T].[aDate])"), 8);
    EXPECT_EQ(typeOf(u"CCur([T].[aLong]*[aSingle]*(1-[aSingle])/100)*100"), 5);
    EXPECT_EQ(typeOf(u"Year([aDate])"), 3);
    EXPECT_EQ(typeOf(u"DateDiff(\"d\",aDate,Now())"), 4);
    EXPECT_EQ(typeOf(u"DateAdd(\"m\",1,aDate)"), 8);
    EXPECT_EQ(typeOf(u"Format(aDate,\"yyyy\")"), 10);
    EXPECT_EQ(typeOf(u"Left$(aText,2)"), 10);
    EXPECT_EQ(typeOf(u"InStr(aText,\"x\")"), 4);
    EXPECT_EQ(typeOf(u"IIf(aLong>0,aCurrency,0)"), 5);
    EXPECT_EQ(typeOf(u"IIf(aLong>0,\"x\",0)"), 10);
    EXPECT_EQ(typeOf(u"IIf(IsNull(aLong),Null,aLong)"), 4);
    EXPECT_EQ(typeOf(u"Nz(aCurrency,0)"), 5);
    EXPECT_EQ(typeOf(u"Choose(aLong,1,2.5)"), 7);
    EXPECT_EQ(typeOf(u"Switch(aLong=1,#1/1/95#,True,aDate)"), 8);
    EXPECT_EQ(typeOf(u"OurOwnFunction(aLong)"), 10);
}

TEST(ExpressionTypes, OfParametersSubqueriesAndUnknownNames) {
    EXPECT_EQ(typeOf(u"[Forms]![F]![When]+1"), 8);
    EXPECT_EQ(typeOf(u"(SELECT Max(x) FROM T)*2"), 5);
    EXPECT_EQ(typeOf(u"[Enter a name]"), 10);
    EXPECT_EQ(typeOf(u"[U].[aLong]"), 10);
    EXPECT_EQ(typeOf(u"Forms!F.Value(3) & \"x\""), 10);
}

TEST(ExpressionTypes, EndOnMalformedText) {
    for (const TextView text :
         {u"(",   u")",           u"((((", u"Sum(", u"a+", u"+",     u"a b c", u",,,",  u"[", u"\"",     u"#",
          u"Not", u"x Between 1", u"In",   u"Is",   u"&",  u"1 2 3", u"f(,",   u"a..b", u"!", u"(SELECT"}) {
        EXPECT_GT(typeOf(text), 0) << toUtf8(text);
    }
    EXPECT_GT(typeOf(Text(60000, u'(')), 0);
    EXPECT_GT(typeOf(Text(60000, u'-') + u"1"), 0);
    Text nested;
    for (int level = 0; level < 20000; ++level) {
        nested += u"f(1,";
    }
    EXPECT_GT(typeOf(nested), 0);
}

TEST(ExpressionTypes, HaveSizes) {
    EXPECT_EQ(sizeOfType(10), 255);
    EXPECT_EQ(sizeOfType(4), 4);
    EXPECT_EQ(sizeOfType(12), 0);
}

} // namespace
} // namespace relvane::jet
