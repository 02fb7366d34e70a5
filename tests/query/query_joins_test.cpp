#include "jet/query_joins.h"

#include <gtest/gtest.h>

#include "jet/query_sql.h"
#include "platform/runtime_error.h"
#include "query_builder.h"

namespace relvane::jet {
namespace {

std::string sources(const QueryBuilder& query) {
    return toUtf8(printedSources(QueryParts(query.rows()), SqlDialect::Jet3));
}

TEST(Joins, NestAsAccessWritesThem) {
    EXPECT_EQ(
        sources(QueryBuilder()
                    .source(u"Orders")
                    .source(u"Order Details")
                    .source(u"Customers")
                    .source(u"Employees")
                    .source(u"Products")
                    .source(u"Shippers")
                    .join(u"Customers", u"Orders", u"Customers.CustomerID = Orders.CustomerID")
                    .join(u"Employees", u"Orders", u"Employees.EmployeeID = Orders.EmployeeID")
                    .join(u"Orders", u"Order Details", u"Orders.OrderID = [Order Details].OrderID")
                    .join(u"Products", u"Order Details", u"Products.ProductID = [Order Details].ProductID")
                    .join(u"Shippers", u"Orders", u"Shippers.ShipperID = Orders.ShipVia")),
        "Shippers INNER JOIN (Products INNER JOIN ((Employees INNER JOIN (Customers INNER JOIN Orders ON "
        "Customers.CustomerID = Orders.CustomerID) ON Employees.EmployeeID = Orders.EmployeeID) INNER JOIN "
        "[Order Details] ON Orders.OrderID = [Order Details].OrderID) ON Products.ProductID = [Order "
        "Details].ProductID) ON Shippers.ShipperID = Orders.ShipVia");
}

TEST(Joins, OfTheSamePairShareOneConditionTheNewestFirst) {
    EXPECT_EQ(sources(QueryBuilder()
                          .source(u"A")
                          .source(u"B")
                          .join(u"A", u"B", u"A.x = B.x", 2)
                          .join(u"a", u"b", u"A.y = B.y", 2)
                          .join(u"A", u"B", u"A.z = B.z", 2)),
              "A LEFT JOIN B ON (A.z = B.z) AND (A.y = B.y) AND (A.x = B.x)");
}

TEST(Joins, WithinACompositeAddToTheJoinThatBroughtThePairTogether) {
    EXPECT_EQ(sources(QueryBuilder()
                          .source(u"A")
                          .source(u"B")
                          .source(u"C")
                          .join(u"A", u"B", u"1")
                          .join(u"B", u"C", u"2")
                          .join(u"A", u"B", u"3")
                          .join(u"A", u"C", u"4")),
              "(A INNER JOIN B ON (3) AND (1)) INNER JOIN C ON (4) AND (2)");
}

TEST(Joins, LeaveOtherSourcesBeforeThem) {
    EXPECT_EQ(sources(QueryBuilder().source(u"A").source(u"B").source(u"C").join(u"C", u"A", u"c", 3)),
              "B, C RIGHT JOIN A ON c");
}

TEST(Joins, MeetSourcesByTheirAliases) {
    EXPECT_EQ(sources(QueryBuilder().source(u"T").source(u"T", u"T_1").join(u"T", u"T_1", u"T.A = T_1.B")),
              "T INNER JOIN T AS T_1 ON T.A = T_1.B");
}

TEST(Joins, MakeASourceForANameThatHasNone) {
    EXPECT_EQ(sources(QueryBuilder().source(u"A").join(u"A", u"Lost One", u"c")),
              "A INNER JOIN [Lost One] ON c");
}

void expectDamaged(const QueryBuilder& query) {
    try {
        querySql(query.rows(), 0, SqlDialect::Jet3);
        FAIL() << "no error";
    } catch (const RunTimeError& error) {
        EXPECT_TRUE(error.is(ErrorNumber::DatabaseDamaged)) << error.what();
    }
}

TEST(Joins, ThatMakeNoSenseAreDamage) {
    expectDamaged(QueryBuilder().source(u"A").source(u"B").join(u"A", u"B", u"c", 4));
    expectDamaged(QueryBuilder().source(u"A").join(u"A", u"A", u"c"));
    expectDamaged(QueryBuilder().join(u"", u"", u""));
    QueryBuilder wide, implied;
    for (int number = 0; number <= 32; ++number) {
        wide.source(u"T" + toText(number));
        implied.join(u"A", u"T" + toText(number), u"c");
    }
    expectDamaged(wide);
    expectDamaged(implied);
}

TEST(Joins, OfThirtyTwoSourcesArePrinted) {
    QueryBuilder query;
    for (int number = 1; number < 32; ++number) {
        query.join(u"T0", u"T" + toText(number), u"c");
    }
    EXPECT_EQ(sources(query).substr(0, 40), std::string(30, '(') + "T0 INNER J");
}

// ---- Ambiguous outer joins

bool ambiguous(const QueryBuilder& query) {
    return hasAmbiguousOuterJoins(query.rows());
}

TEST(AmbiguousOuterJoins, HaveAnOptionalSourceInAnInnerJoin) {
    EXPECT_TRUE(ambiguous(QueryBuilder().join(u"A", u"B", u"c", 2).join(u"B", u"C", u"c", 1)));
    EXPECT_TRUE(ambiguous(QueryBuilder().join(u"A", u"B", u"c", 1).join(u"b", u"C", u"c", 3)));
    EXPECT_FALSE(ambiguous(QueryBuilder().join(u"A", u"B", u"c", 2).join(u"A", u"C", u"c", 1)));
}

TEST(AmbiguousOuterJoins, HaveASourceThatTwoJoinsMayLeaveOut) {
    EXPECT_TRUE(ambiguous(QueryBuilder().join(u"A", u"B", u"c", 2).join(u"C", u"B", u"c", 2)));
    EXPECT_TRUE(ambiguous(QueryBuilder().join(u"A", u"B", u"c", 2).join(u"B", u"C", u"c", 3)));
    EXPECT_FALSE(ambiguous(QueryBuilder().join(u"A", u"B", u"c", 2).join(u"B", u"C", u"c", 2)));
}

TEST(AmbiguousOuterJoins, CountTheConditionsOfOneJoinOnce) {
    EXPECT_FALSE(ambiguous(QueryBuilder().join(u"A", u"B", u"c", 2).join(u"A", u"B", u"d", 2)));
    EXPECT_FALSE(ambiguous(QueryBuilder().join(u"A", u"B", u"c", 2).join(u"B", u"A", u"d", 3)))
        << "the same arrow, written from its other end";
}

// The arrows of a design as Access draws them: "A>B" an arrow from A to B (B may be missing), "A-B" an inner join.
QueryBuilder drawn(TextView arrows) {
    QueryBuilder query;
    for (std::size_t at = 0; at + 2 < arrows.size(); at += 4) {
        query.join(arrows.substr(at, 1), arrows.substr(at + 2, 1), u"c", arrows[at + 1] == u'>' ? 2 : 1);
    }
    return query;
}

TEST(AmbiguousOuterJoins, AreNotChainsOfArrowsThatPointAway) {
    for (const TextView design :
         {u"A>B", u"A>B B>C", u"A>B B>C C>D", u"A>B A>C", u"A>B A>C A>D C>E", u"B>A B>C"}) {
        EXPECT_FALSE(ambiguous(drawn(design))) << toUtf8(design);
    }
}

TEST(AmbiguousOuterJoins, AreNotArrowsThatLeaveInnerJoins) {
    for (const TextView design : {u"A-B", u"A-B B-C", u"A-B B>C", u"A-B A>C B>D", u"A-B B-C C>D D>E"}) {
        EXPECT_FALSE(ambiguous(drawn(design))) << toUtf8(design);
    }
}

TEST(AmbiguousOuterJoins, AreArrowsIntoInnerJoinsWhereverTheyStand) {
    for (const TextView design :
         {u"A>B B-C", u"A>B C-B", u"A>B B>C C-D", u"A-B C>B", u"A>B A-C B-C", u"X-Y A>B B-C", u"A>B A-B"}) {
        EXPECT_TRUE(ambiguous(drawn(design))) << toUtf8(design);
    }
}

TEST(AmbiguousOuterJoins, AreTwoArrowsIntoOneSource) {
    for (const TextView design : {u"A>C B>C", u"A>B B>C D>C", u"A>C A>B B>C", u"A-B A>C B>C"}) {
        EXPECT_TRUE(ambiguous(drawn(design))) << toUtf8(design);
    }
}

TEST(AmbiguousOuterJoins, DoNotDependOnTheOrderOfTheJoins) {
    for (const auto& [one, other] : {std::pair<TextView, TextView>(u"A>B B-C", u"B-C A>B"),
                                     std::pair<TextView, TextView>(u"A>C B>C", u"B>C A>C"),
                                     std::pair<TextView, TextView>(u"A-B B>C", u"B>C A-B"),
                                     std::pair<TextView, TextView>(u"A>B B>C C-D", u"C-D B>C A>B")}) {
        EXPECT_EQ(ambiguous(drawn(one)), ambiguous(drawn(other))) << toUtf8(one);
    }
}

TEST(AmbiguousOuterJoins, DoNotComeFromSourcesWithoutJoins) {
    EXPECT_FALSE(ambiguous(QueryBuilder().source(u"X").source(u"A").source(u"B").join(u"A", u"B", u"c", 2)));
    EXPECT_FALSE(ambiguous(drawn(u"A>B C>D"))) << "two parts, each with its arrow, multiplied";
    EXPECT_FALSE(ambiguous(drawn(u"A>B C-D")));
    EXPECT_TRUE(ambiguous(drawn(u"A>B C>D D-E"))) << "one part is enough";
}

TEST(AmbiguousOuterJoins, AreFoundInActionQueriesToo) {
    EXPECT_TRUE(hasAmbiguousOuterJoins(
        QueryBuilder().kind(QueryKind::Update).join(u"A", u"B", u"c", 2).join(u"B", u"C", u"c").rows()));
}

TEST(AmbiguousOuterJoins, ComparesAliasesAndNotTables) {
    EXPECT_FALSE(ambiguous(QueryBuilder()
                               .source(u"A")
                               .source(u"B")
                               .source(u"B", u"B_1")
                               .join(u"A", u"B", u"c", 2)
                               .join(u"A", u"B_1", u"c", 1)));
}

TEST(AmbiguousOuterJoins, AreStillPrinted) {
    EXPECT_EQ(sources(QueryBuilder().join(u"A", u"B", u"c", 2).join(u"B", u"C", u"d", 1)),
              "(A LEFT JOIN B ON c) INNER JOIN C ON d");
}

} // namespace
} // namespace relvane::jet
