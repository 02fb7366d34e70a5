#include "arguments.h"

#include <gtest/gtest.h>

#include "press_steps.h"

namespace relvane::cli {
namespace {

constexpr Option known[] = {{"--out", "DIR", ""}, {"--quiet", "", ""}, {"--map", "PREFIX=DIR", "", true}};

Arguments read(std::vector<std::string> words) {
    return Arguments(words, known);
}

TEST(Arguments, OptionsStandAnywhere) {
    const Arguments arguments = read({"--quiet", "a.mdb", "--out", "x", "b"});
    EXPECT_EQ(arguments.positional(), (std::vector<std::string>{"a.mdb", "b"}));
    EXPECT_EQ(arguments.value("--out"), "x");
    EXPECT_TRUE(arguments.has("--quiet"));
}

TEST(Arguments, ValuesMayBeJoined) {
    EXPECT_EQ(read({"--out=a=b"}).value("--out"), "a=b");
}

TEST(Arguments, WordsBehindTheDoubleHyphenAreNoOptions) {
    EXPECT_EQ(read({"--", "--out"}).positional(), (std::vector<std::string>{"--out"}));
}

TEST(Arguments, ARepeatableOptionKeepsAllItsValuesInOrder) {
    const Arguments arguments = read({"--map", "C:=a", "--out", "x", "--map=D:=b"});
    EXPECT_EQ(arguments.values("--map"), (std::vector<std::string>{"C:=a", "D:=b"}));
    EXPECT_EQ(arguments.values("--out"), std::vector<std::string>{"x"});
    EXPECT_TRUE(read({}).values("--map").empty());
}

TEST(Arguments, WrongUsageIsSaid) {
    EXPECT_THROW(read({"--nope"}), UsageError);
    EXPECT_THROW(read({"--out"}), UsageError);
    EXPECT_THROW(read({"--quiet=1"}), UsageError);
    EXPECT_THROW(read({"--out", "a", "--out", "b"}), UsageError);
}

TEST(Step, NamesWindowControlIndexAndValue) {
    const Step step = parseStep("frmSetUp.txtNini=a.b=c");
    EXPECT_EQ(step.window, "frmSetUp");
    EXPECT_EQ(step.control, "txtNini");
    EXPECT_EQ(step.value, "a.b=c");
    EXPECT_TRUE(step.hasValue);
    EXPECT_EQ(parseStep("cmdHyousi(2)").control, "cmdHyousi_2");
    EXPECT_FALSE(parseStep("cmdObject").hasValue);
    EXPECT_THROW(parseStep("=1"), UsageError);
}

TEST(Step, AnswersAreButtons) {
    EXPECT_EQ(parseAnswer("Yes"), boxYes);
    EXPECT_EQ(parseAnswer("いいえ"), boxNo);
    EXPECT_THROW(parseAnswer("perhaps"), UsageError);
}

} // namespace
} // namespace relvane::cli
