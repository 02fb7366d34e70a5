// The tables of properties: their own order, and every row against the list of facts kept beside the real samples.

#include "access/design_properties.h"

#include <algorithm>
#include <fstream>
#include <map>
#include <sstream>

#include <gtest/gtest.h>

#include "access/design_types.h"
#include "access/property_numbers.h"
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
            EXPECT_EQ(++names[upperCase(fact.name)], 1);
            if (fact.id == noPlace) {
                EXPECT_TRUE(fact.since == 20 || fact.since == 21);
                EXPECT_TRUE(i == 0 || facts[i - 1].id != noPlace || facts[i - 1].number < fact.number);
            } else {
                EXPECT_TRUE(i == 0 || facts[i - 1].id < fact.id);
                EXPECT_EQ(design_format::classOf(static_cast<std::uint8_t>(fact.id)), classOf(fact.kind));
                EXPECT_EQ(findProperty(type, fact.id), &fact);
                EXPECT_TRUE(fact.since == 17 || fact.since == 19);
            }
            if (fact.number != PropertyNumber::Unstated) {
                EXPECT_EQ(findProperty(type, fact.number), &fact);
            }
            EXPECT_EQ(findProperty(type, fact.name), &fact);
            if (!fact.modelName.empty()) {
                EXPECT_EQ(findProperty(type, fact.modelName), &fact);
            }
            if (fact.builtIn.kind == BuiltIn::Kind::Boolean) {
                EXPECT_EQ(fact.kind, ValueKind::Flag);
            }
            EXPECT_NE(fact.kind, ValueKind::Untold);
            ++checked;
        }
    }
    EXPECT_GT(checked, 1000u); // shared tables are counted for each type
}

TEST(DesignProperties, AnUnknownTypeHasNone) {
    EXPECT_TRUE(propertiesOf(static_cast<DesignType>(200)).empty());
    EXPECT_EQ(findProperty(static_cast<DesignType>(200), u"Name"), nullptr);
    EXPECT_EQ(findProperty(DesignType::Label, PropertyId{0x1000}), nullptr);
    EXPECT_EQ(findProperty(DesignType::Label, noPlace), nullptr);
    EXPECT_EQ(findProperty(DesignType::Label, PropertyNumber::Unstated), nullptr);
    EXPECT_EQ(findProperty(PropertyNumber::Separator), nullptr);
    EXPECT_EQ(findProperty(PropertyNumber{0x1c1}), nullptr); // met, but without a name
}

TEST(DesignProperties, ANumberIsOnePropertyInAllTypes) {
    const auto numbered = numberedProperties();
    for (std::size_t i = 0; i < numbered.size(); ++i) {
        const NumberedProperty& property = numbered[i];
        SCOPED_TRACE(toUtf8(property.name));
        EXPECT_TRUE(i == 0 || numbered[i - 1].number <= property.number);
        const PropertyFact* known = findProperty(property.number);
        ASSERT_NE(known, nullptr);
        EXPECT_EQ(known->name, property.name);
        EXPECT_EQ(known->modelName, property.modelName);
        for (const DesignType type : knownTypes()) {
            if (const PropertyFact* fact = findProperty(type, property.number)) {
                EXPECT_EQ(fact->name, property.name);
            }
            EXPECT_TRUE(!property.laterTypes.contains(type) ||
                        findProperty(type, property.number) != nullptr);
        }
    }
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
    constexpr const char* names[] = {"flag", "byte", "word", "long",  "text", "binary",
                                     "date", "guid", "bool", "float", "macro"};
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
    std::map<DesignType, std::size_t> rows; // with a place in the compact grammar of Access 97's types
    std::size_t later = 0, numbers = 0;
    for (std::string line; std::getline(file, line);) {
        const std::vector<std::string> columns = split(line, '\t');
        constexpr std::size_t number = 0, slot = 1, type = 2, name = 3, modelName = 4, kind = 5, builtIn = 6,
                              confidence = 7;
        if (columns.size() <= confidence || line.starts_with("#") || columns[name] == "-" ||
            columns[name] == "export name") {
            continue; // a comment, the head, or a property without a name
        }
        SCOPED_TRACE(line);
        const bool hasNumber = columns[number] != "-";
        const auto code = PropertyNumber{
            static_cast<std::uint16_t>(hasNumber ? std::stoi(columns[number], nullptr, 16) : 0xFFFF)};
        if (hasNumber) {
            ASSERT_NE(findProperty(code), nullptr);
            EXPECT_EQ(toUtf8(findProperty(code)->name), columns[name]);
            ++numbers;
        }
        for (const std::string& typeName : split(columns[type], '|')) {
            if (!types.contains(typeName)) {
                EXPECT_EQ(typeName, "*"); // any type
                continue;
            }
            const DesignType known = types.at(typeName);
            const PropertyFact* fact = hasNumber ? findProperty(known, code) : nullptr;
            const bool isPlaced = columns[slot].size() == 2 && !propertiesOf(known).empty() &&
                                  propertiesOf(known).front().id != noPlace;
            if (isPlaced) {
                ++rows[known];
                fact = findProperty(known, static_cast<PropertyId>(std::stoi(columns[slot], nullptr, 16)));
                ASSERT_NE(fact, nullptr);
                EXPECT_EQ(fact->number, code);
                EXPECT_EQ(kindName(fact->kind), columns[kind]);
                // That a section may store no height was not met before.
                const bool isHeightOfSection = isSection(known) && columns[name] == "Height";
                EXPECT_EQ(builtInName(fact->builtIn), isHeightOfSection ? "1440" : columns[builtIn]);
                EXPECT_EQ(confidenceName(fact->confidence), columns[confidence]);
            }
            ASSERT_NE(fact, nullptr);
            EXPECT_EQ(toUtf8(fact->name), columns[name]);
            EXPECT_EQ(fact->modelName.empty() ? "-" : toUtf8(fact->modelName), columns[modelName]);
            if (fact->id == noPlace) {
                // A property of several types has one kind and one confidence for all of them.
                const bool isYesNo = fact->kind == ValueKind::Flag || fact->kind == ValueKind::Boolean;
                EXPECT_TRUE(kindName(fact->kind) == columns[kind] || columns[kind] == "-" ||
                            (isYesNo && columns[kind] == "bool"));
                EXPECT_TRUE(builtInName(fact->builtIn) == columns[builtIn] || columns[builtIn] == "-");
                ++later;
            }
        }
    }
    for (const auto& [type, count] : rows) {
        EXPECT_EQ(static_cast<std::size_t>(std::ranges::count_if(
                      propertiesOf(type), [](const PropertyFact& fact) { return fact.id != noPlace; })),
                  count)
            << toUtf8(nameOf(type));
    }
    EXPECT_EQ(rows.size(), 30u);
    EXPECT_GT(later, 900u);
    EXPECT_GT(numbers, 1700u);
}

} // namespace
} // namespace relvane::access
