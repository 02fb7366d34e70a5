// The tables of properties: their own order, and every row against the list of facts kept beside the real samples.

#include "access/design_properties.h"

#include <fstream>
#include <map>
#include <sstream>

#include <gtest/gtest.h>

#include "access/design_types.h"
#include "support/samples.h"

namespace relvane::access {
namespace {

using design_format::ValueClass;

ValueClass classOf(ValueKind kind) {
    switch (kind) {
    case ValueKind::Flag:
        return ValueClass::Flag;
    case ValueKind::Byte:
        return ValueClass::Byte;
    case ValueKind::Word:
        return ValueClass::Word;
    case ValueKind::Long:
        return ValueClass::Long;
    default:
        return ValueClass::Variable;
    }
}

TEST(DesignProperties, EveryTypeHasATableThatRisesAndFitsTheClassesOfIds) {
    std::size_t checked = 0;
    for (const DesignType type : knownTypes()) {
        const auto facts = propertiesOf(type);
        EXPECT_FALSE(facts.empty()) << toUtf8(nameOf(type));
        std::map<Text, int> names;
        for (std::size_t i = 0; i < facts.size(); ++i) {
            const PropertyFact& fact = facts[i];
            SCOPED_TRACE(toUtf8(nameOf(type)) + "." + toUtf8(fact.name));
            EXPECT_TRUE(i == 0 || facts[i - 1].id < fact.id);
            EXPECT_EQ(design_format::classOf(static_cast<std::uint8_t>(fact.id)), classOf(fact.kind));
            EXPECT_EQ(++names[upperCase(fact.name)], 1);
            EXPECT_EQ(findProperty(type, fact.id), &fact);
            EXPECT_EQ(findProperty(type, fact.name), &fact);
            if (!fact.modelName.empty()) {
                EXPECT_EQ(findProperty(type, fact.modelName), &fact);
            }
            if (fact.builtIn.kind == BuiltIn::Kind::Boolean) {
                EXPECT_EQ(fact.kind, ValueKind::Flag);
            }
            EXPECT_TRUE(fact.since == 17 || fact.since == 19);
            ++checked;
        }
    }
    EXPECT_GT(checked, 1000u); // shared tables are counted for each type
}

TEST(DesignProperties, AnUnknownTypeHasNone) {
    EXPECT_TRUE(propertiesOf(static_cast<DesignType>(200)).empty());
    EXPECT_EQ(findProperty(static_cast<DesignType>(200), u"Name"), nullptr);
    EXPECT_EQ(findProperty(DesignType::Label, PropertyId{0x1000}), nullptr);
}

std::vector<std::string> split(const std::string& line, char separator) {
    std::vector<std::string> parts;
    std::istringstream stream(line);
    for (std::string part; std::getline(stream, part, separator);) {
        parts.push_back(part);
    }
    return parts;
}

std::string kindName(ValueKind kind) {
    constexpr const char* names[] = {"flag", "byte", "word", "long", "text", "binary", "date", "guid"};
    return names[static_cast<std::size_t>(kind)];
}

std::string confidenceName(Confidence confidence) {
    constexpr const char* names[] = {"confirmed", "inferred", "guess"};
    return names[static_cast<std::size_t>(confidence)];
}

std::string builtInName(const BuiltIn& builtIn) {
    switch (builtIn.kind) {
    case BuiltIn::Kind::Unknown:
        return "-";
    case BuiltIn::Kind::None:
        return "none";
    case BuiltIn::Kind::Stored:
        return "stored";
    case BuiltIn::Kind::Text:
        return builtIn.text.empty() ? "\"\"" : toUtf8(builtIn.text);
    default:
        return toUtf8(toText(builtIn.value()));
    }
}

TEST(DesignProperties, EveryRowIsThatOfTheListOfFacts) {
    const auto samples = test::realSamples();
    if (!samples) {
        return;
    }
    std::ifstream file(samples->parent_path() / "formats" / "design-properties.tsv");
    if (!file) {
        std::cout << "No list of properties beside the real files: nothing to compare with.\n";
        return;
    }
    std::map<std::string, DesignType> types;
    for (const DesignType type : knownTypes()) {
        types.emplace(toUtf8(nameOf(type)), type);
    }
    std::map<DesignType, std::size_t> rows;
    for (std::string line; std::getline(file, line);) {
        const std::vector<std::string> columns = split(line, '\t');
        constexpr std::size_t slot = 1, type = 2, name = 3, modelName = 4, kind = 5, builtIn = 6,
                              confidence = 7;
        if (columns.size() <= confidence || columns[slot].size() != 2) {
            continue; // a comment, or a place in streams of later versions
        }
        const auto id = static_cast<PropertyId>(std::stoi(columns[slot], nullptr, 16));
        for (const std::string& typeName : split(columns[type], '|')) {
            if (!types.contains(typeName)) {
                continue; // a control of a later version
            }
            const DesignType known = types.at(typeName);
            SCOPED_TRACE(line);
            ++rows[known];
            const PropertyFact* fact = findProperty(known, id);
            ASSERT_NE(fact, nullptr);
            EXPECT_EQ(toUtf8(fact->name), columns[name]);
            EXPECT_EQ(fact->modelName.empty() ? "-" : toUtf8(fact->modelName), columns[modelName]);
            EXPECT_EQ(kindName(fact->kind), columns[kind]);
            EXPECT_EQ(builtInName(fact->builtIn), columns[builtIn]);
            EXPECT_EQ(confidenceName(fact->confidence), columns[confidence]);
        }
    }
    EXPECT_EQ(rows.size(), types.size());
    for (const auto& [type, count] : rows) {
        EXPECT_EQ(propertiesOf(type).size(), count) << toUtf8(nameOf(type));
    }
}

} // namespace
} // namespace relvane::access
