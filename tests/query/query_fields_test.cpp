#include "jet/query_fields.h"

#include <gtest/gtest.h>

#include <map>

#include "jet/query_names.h"
#include "platform/runtime_error.h"
#include "query_builder.h"

namespace relvane::jet {
namespace {

class FakeSources : public QuerySources {
public:
    FakeSources() {
        table(u"Orders", {{u"OrderID", 4}, {u"CustomerID", 10}, {u"OrderDate", 8}, {u"Freight", 5}});
        table(u"Customers", {{u"CustomerID", 10}, {u"Name", 10}});
    }
    void table(TextView name, const std::vector<std::pair<Text, int>>& fields) {
        for (const auto& [field, type] : fields) {
            FieldOrigin origin;
            origin.type = type;
            origin.size = type == 10 ? 40 : 8;
            origin.allowZeroLength = field == u"Name";
            origin.defaultValue = type == 5 ? u"0" : u"";
            origin.sourceField = field;
            origin.sourceTable = name;
            tables_[nameKey(name)].push_back({field, std::make_shared<const FieldOrigin>(std::move(origin))});
        }
    }
    void query(TextView name, const QueryBuilder& rows, int flags = 0) {
        queries_[nameKey(name)] = {rows.rows(), flags};
    }

    std::optional<std::vector<QueryField>> fieldsOfTable(TextView name) override {
        ++lookups;
        if (name == u"Broken") {
            throw RunTimeError(ErrorNumber::DatabasePathInvalid);
        }
        const auto found = tables_.find(nameKey(name));
        return found == tables_.end() ? std::nullopt : std::optional(found->second);
    }
    std::optional<SavedQuery> query(TextView name) override {
        ++lookups;
        const auto found = queries_.find(nameKey(name));
        return found == queries_.end() ? std::nullopt : std::optional(found->second);
    }

    int lookups = 0;

private:
    std::map<Text, std::vector<QueryField>> tables_;
    std::map<Text, SavedQuery> queries_;
};

class QueryFields : public testing::Test {
protected:
    // "name type size source.field" of each field, one line each.
    std::string resolved(const QueryBuilder& query, int flags = 0) {
        sources.query(u"Q", query, flags);
        return lines(u"Q");
    }
    std::string lines(TextView name) {
        QueryFieldResolver resolver(sources);
        std::string text;
        for (const QueryField& field : resolver.fields(name)) {
            const FieldOrigin& origin = *field.origin;
            text +=
                toUtf8(field.name) + " " + std::to_string(origin.type) + " " + std::to_string(origin.size);
            text += origin.sourceField.empty() ? " " + toUtf8(origin.expression)
                                               : " " + toUtf8(origin.sourceTable + u"." + origin.sourceField);
            text += "\n";
        }
        return text;
    }
    int errorOf(TextView name) {
        QueryFieldResolver resolver(sources);
        try {
            resolver.fields(name);
            return 0;
        } catch (const RunTimeError& error) {
            return error.number();
        }
    }
    static QueryBuilder select() { return QueryBuilder().kind(QueryKind::Select); }

    FakeSources sources;
};

TEST_F(QueryFields, ComeFromTheFieldsOfTables) {
    EXPECT_EQ(resolved(select()
                           .source(u"Orders")
                           .column(u"Orders.OrderID")
                           .column(u"[FREIGHT]")
                           .column(u"Orders![OrderDate]", u"When")),
              "OrderID 4 8 Orders.OrderID\nFreight 5 8 Orders.Freight\nWhen 8 8 Orders.OrderDate\n");
    QueryFieldResolver resolver(sources);
    EXPECT_EQ(resolver.fields(u"q")[1].origin->defaultValue, u"0");
}

TEST_F(QueryFields, OfStarsComeInTheOrderOfTheSources) {
    EXPECT_EQ(resolved(select().source(u"Customers", u"C").column(u"C.*")),
              "CustomerID 10 40 Customers.CustomerID\nName 10 40 Customers.Name\n");
    EXPECT_EQ(resolved(select().source(u"Customers").options(queryOption::allFields).column(u"1", u"One")),
              "One 3 2 1\nCustomerID 10 40 Customers.CustomerID\nName 10 40 Customers.Name\n");
}

TEST_F(QueryFields, OfTheSameNameAreToldApartByTheirSources) {
    EXPECT_EQ(resolved(select()
                           .source(u"Customers", u"C")
                           .source(u"Orders")
                           .column(u"C.CustomerID")
                           .column(u"Orders.CustomerID")
                           .column(u"C.Name")),
              "C.CustomerID 10 40 Customers.CustomerID\nOrders.CustomerID 10 40 Orders.CustomerID\nName 10 "
              "40 Customers.Name\n");
    EXPECT_EQ(resolved(select()
                           .source(u"Customers", u"C")
                           .source(u"Orders")
                           .column(u"C.CustomerID")
                           .column(u"Orders.CustomerID", u"Buyer")),
              "CustomerID 10 40 Customers.CustomerID\nBuyer 10 40 Orders.CustomerID\n");
}

TEST_F(QueryFields, AreFollowedThroughQueriesOnQueries) {
    sources.query(
        u"Inner Q",
        select().source(u"Orders").column(u"Orders.OrderID", u"Number").column(u"Sum(Freight)", u"Total"));
    EXPECT_EQ(resolved(select()
                           .source(u"inner q", u"I")
                           .column(u"I.Number", u"N")
                           .column(u"[I].[Total]*2", u"Twice")
                           .column(u"I.Total")),
              "N 4 8 Orders.OrderID\nTwice 5 8 [I].[Total]*2\nTotal 5 8 Sum(Freight)\n");
}

TEST_F(QueryFields, OfExpressionsHaveTheTypeOfTheirValue) {
    EXPECT_EQ(resolved(select()
                           .source(u"Orders")
                           .parameter(u"From", 8)
                           .column(u"[From]", u"F")
                           .column(u"OrderID & \"\"", u"T")
                           .column(u"Count(*)")),
              "F 8 8 [From]\nT 10 255 OrderID & \"\"\nExpr1002 4 4 Count(*)\n");
}

TEST_F(QueryFields, ThatCannotBeTracedHaveTheSize9999) {
    EXPECT_EQ(resolved(select().source(u"Orders").column(u"Orders.Lost").column(u"Gone", u"G")),
              "Lost 10 9999 \nG 10 9999 \n");
    EXPECT_EQ(resolved(select().source(u"Orders").otherDatabase(u"C:\\x.mdb").column(u"Orders.OrderID")),
              "OrderID 10 9999 \n");
    sources.query(u"Inner", select().source(u"Orders").column(u"Orders.Lost", u"L"));
    EXPECT_EQ(resolved(select().source(u"Inner").column(u"Inner.L")), "L 10 9999 \n");
}

TEST_F(QueryFields, OverASourceThatIsNotThereAreAnError) {
    sources.query(u"OverMissing", select().source(u"Orders").source(u"Lost").column(u"Orders.OrderID"));
    EXPECT_EQ(errorOf(u"OverMissing"), 3078);
    sources.query(u"OverBroken", select().source(u"Broken").column(u"Broken.*"));
    EXPECT_EQ(errorOf(u"OverBroken"), 3044);
    sources.query(u"Further", select().source(u"OverBroken").column(u"OverBroken.*"));
    EXPECT_EQ(errorOf(u"Further"), 3044);
    sources.query(u"ByText", select().subquery(u"SELECT A FROM Lost", u"S").column(u"S.A"));
    EXPECT_EQ(errorOf(u"ByText"), 3078);
    sources.query(u"InExpression", select().source(u"Orders").column(u"(SELECT Max(A) FROM Lost)"));
    EXPECT_EQ(errorOf(u"InExpression"), 3078);
    sources.query(u"Half", QueryBuilder().kind(QueryKind::Union).subquery(u"TABLE Lost", u"X7YZ_____1"));
    EXPECT_EQ(errorOf(u"Half"), 3078);
    EXPECT_EQ(resolved(select().source(u"Orders").column(u"Orders.OrderID")), "OrderID 4 8 Orders.OrderID\n");
}

TEST_F(QueryFields, OfSubqueriesAreReadFromTheirText) {
    EXPECT_EQ(
        resolved(
            select()
                .subquery(u"SELECT O.OrderID AS N, C.Name FROM (Orders AS O INNER JOIN Customers AS C ON "
                          u"(O.CustomerID = C.CustomerID) AND Left(C.Name,1)='a') WHERE O.Freight > 1",
                          u"S")
                .column(u"S.*")),
        "N 4 8 Orders.OrderID\nName 10 40 Customers.Name\n");
    EXPECT_EQ(resolved(select().source(u"Customers").column(u"(SELECT Max(Freight) FROM Orders)", u"Most")),
              "Most 5 8 (SELECT Max(Freight) FROM Orders)\n");
    EXPECT_EQ(
        resolved(
            select().subquery(u"SELECT X.N FROM [SELECT OrderID AS N FROM Orders]. AS X", u"S").column(u"N")),
        "N 4 8 Orders.OrderID\n");
}

TEST_F(QueryFields, OfACrosstabAreRowHeadingsAndFixedColumns) {
    const QueryBuilder base = QueryBuilder()
                                  .kind(QueryKind::Crosstab)
                                  .source(u"Orders")
                                  .column(u"Orders.CustomerID", {}, crosstabRole::rowHeading)
                                  .column(u"Sum(Orders.Freight)", u"Total", crosstabRole::value);
    EXPECT_EQ(resolved(QueryBuilder(base).column(u"Month([OrderDate]) In (1,2,\"a \"\"b\"\"\")", {},
                                                 crosstabRole::columnHeading)),
              "CustomerID 10 40 Orders.CustomerID\n1 5 8 Sum(Orders.Freight)\n2 5 8 Sum(Orders.Freight)\n"
              "a \"b\" 5 8 Sum(Orders.Freight)\n");
    EXPECT_EQ(resolved(QueryBuilder(base).column(u"Month([OrderDate])", {}, crosstabRole::columnHeading)),
              "CustomerID 10 40 Orders.CustomerID\n");
}

TEST_F(QueryFields, OfAUnionAreThoseOfItsFirstHalf) {
    const auto halves = [](TextView first) {
        return QueryBuilder()
            .kind(QueryKind::Union)
            .subquery(u"SELECT 1 AS Other", u"X7YZ_____2")
            .subquery(first, u"X7YZ_____1");
    };
    EXPECT_EQ(resolved(halves(u"SELECT DISTINCT TOP 5 PERCENT OrderID, Freight AS [Cost], \"x, FROM\" AS T "
                              u"\r\nFROM Orders\r\n")),
              "OrderID 4 8 Orders.OrderID\nCost 5 8 Orders.Freight\nT 10 255 \"x, FROM\"\n");
    EXPECT_EQ(resolved(halves(u"TABLE Customers")),
              "CustomerID 10 40 Customers.CustomerID\nName 10 40 Customers.Name\n");
    EXPECT_EQ(
        resolved(halves(
            u"SELECT * FROM Customers c LEFT JOIN Orders ON c.CustomerID=Orders.CustomerID UNION SELECT 1")),
        "c.CustomerID 10 40 Customers.CustomerID\nName 10 40 Customers.Name\nOrderID 4 8 Orders.OrderID\n"
        "Orders.CustomerID 10 40 Orders.CustomerID\nOrderDate 8 8 Orders.OrderDate\nFreight 5 8 "
        "Orders.Freight\n");
    EXPECT_EQ(resolved(halves(u"SELECT 2 AS A")), "A 3 2 2\n");
    EXPECT_EQ(resolved(halves(u"Select T.A where T.A = 1")), "");
}

TEST_F(QueryFields, AreMissingFromActionAndPassThroughQueries) {
    for (const QueryKind kind : {QueryKind::MakeTable, QueryKind::Append, QueryKind::Update,
                                 QueryKind::Delete, QueryKind::DataDefinition, QueryKind::PassThrough}) {
        EXPECT_EQ(resolved(QueryBuilder().kind(kind, u"T").source(u"Orders").column(u"Orders.*")), "");
    }
    EXPECT_EQ(resolved(QueryBuilder().source(u"Orders").column(u"Orders.*"), 0x20), "");
}

TEST_F(QueryFields, OfAnUnknownQueryAreAnError) {
    EXPECT_EQ(errorOf(u"No such"), 3078);
}

TEST_F(QueryFields, OfQueriesThatDrawOnThemselvesAreAnError) {
    sources.query(u"A", select().source(u"B").column(u"B.*"));
    sources.query(u"B", select().source(u"a").column(u"a.*"));
    EXPECT_EQ(errorOf(u"A"), 3102);
    sources.query(u"Self", select().source(u"SELF").column(u"x"));
    EXPECT_EQ(errorOf(u"Self"), 3102);
}

// No file holds both, since the catalogue's index is unique; the query goes first and is not drawn on by itself.
TEST_F(QueryFields, OfAQueryNamedLikeATableAreNeverFollowedInACircle) {
    sources.query(u"Orders", select().source(u"Orders").column(u"Orders.*"));
    sources.query(u"Over", select().source(u"Orders").column(u"Orders.*"));
    EXPECT_EQ(errorOf(u"Orders"), 3102);
    EXPECT_EQ(errorOf(u"Over"), 3102);
}

TEST_F(QueryFields, OfQueriesNestedTooDeepAreDamageInAnyOrderOfAsking) {
    sources.query(u"Q0", select().source(u"Orders").column(u"Orders.*"));
    for (int level = 1; level <= 51; ++level) {
        sources.query(u"Q" + toText(level), select().source(u"Q" + toText(level - 1)).column(u"*"));
    }
    EXPECT_EQ(errorOf(u"Q49"), 0);
    EXPECT_EQ(errorOf(u"Q50"), 3049);
    QueryFieldResolver resolver(sources);
    EXPECT_EQ(resolver.fields(u"Q49").size(), 4u);
    EXPECT_THROW(resolver.fields(u"Q50"), RunTimeError);
    EXPECT_EQ(resolver.fields(u"Q3").size(), 4u); // the failure left nothing behind
}

TEST_F(QueryFields, OfMoreThan255AreAnError) {
    QueryBuilder wide = select().source(u"Orders");
    for (int column = 0; column < 64; ++column) {
        wide.column(u"Orders.*");
    }
    sources.query(u"Wide", wide);
    EXPECT_EQ(errorOf(u"Wide"), 3190);
}

// Each query takes the one below it 32 times: 32 to the power of 15 ways down, but each is asked for once.
TEST_F(QueryFields, AreFoundOnceHoweverManyQueriesDrawOnThem) {
    sources.query(u"Q0", select().source(u"Orders").column(u"Orders.OrderID"));
    for (int level = 1; level < 16; ++level) {
        QueryBuilder query = select();
        for (int times = 0; times < 32; ++times) {
            query.source(u"Q" + toText(level - 1), u"S" + toText(times));
        }
        sources.query(u"Q" + toText(level), query.column(u"S0.OrderID"));
    }
    EXPECT_EQ(lines(u"Q15"), "OrderID 4 8 Orders.OrderID\n");
    EXPECT_LT(sources.lookups, 40);
}

TEST_F(QueryFields, OfMalformedSubqueriesEnd) {
    for (const TextView text :
         {u"", u"SELECT", u"SELECT ,,,", u"SELECT A FROM", u"SELECT A FROM (", u"SELECT A FROM ((((B",
          u"SELECT A FROM B,", u"SELECT A FROM B ON (", u"FROM", u"(", u"SELECT A AS FROM B",
          u"SELECT [ FROM B", u"SELECT \" FROM B", u"SELECT A FROM [B]. AS",
          u"SELECT A FROM B JOIN JOIN ON ON", u"SELECT TOP", u"TABLE", u")"}) {
        sources.query(u"Odd", select().subquery(text, u"S").column(u"S.*"));
        const int error = errorOf(u"Odd");
        EXPECT_TRUE(error == 0 || error == 3078) << toUtf8(text) << ": " << error;
    }
    Text nested;
    for (int level = 0; level < 1000; ++level) {
        nested += u"SELECT * FROM (";
    }
    sources.query(u"Odd", select().subquery(nested, u"S").column(u"S.*"));
    EXPECT_EQ(errorOf(u"Odd"), 3049);
}

} // namespace
} // namespace relvane::jet
