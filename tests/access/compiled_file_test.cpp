// Compiled files (.mde, .accde): the source is said to be not there, and all the rest is read. Files of the builder,
// which mark themselves as Access does; what Access leaves out of a real one is not told by any file at hand.
#include "access/compiled_file.h"

#include <gtest/gtest.h>

#include "access/design_source.h"
#include "access/macro_source.h"
#include "access/module_source.h"
#include "sample_builder/database_writer.h"
#include "support/samples.h"

namespace relvane::access {
namespace {

using namespace samples;

std::shared_ptr<const jet::JetFile> fileWith(std::vector<PropertySpec> properties) {
    DatabaseSpec spec;
    spec.properties = std::move(properties);
    spec.forms.push_back({.name = u"受注",
                          .design = DesignSpec{.root = {.type = DesignType::Form}},
                          .module = ModuleSpec{.source = u"Sub 頁()\r\nEnd Sub\r\n"}});
    spec.modules.push_back(
        {.name = u"basMain", .module = ModuleSpec{.source = u"Sub 締め()\r\nEnd Sub\r\n"}});
    spec.macros.push_back({.name = u"印刷", .macro = MacroSpec{}});
    return std::make_shared<const jet::JetFile>(jet::makeMemorySource(databaseBytes(spec)));
}

TEST(CompiledFile, IsToldByThePropertyOfItsDatabase) {
    EXPECT_TRUE(isCompiledFile(*fileWith({{u"MDE", Text(u"T")}})));
    EXPECT_TRUE(isCompiledFile(*fileWith({{u"mde", Text(u"T")}})));
    EXPECT_FALSE(isCompiledFile(*fileWith({{u"MDE", Text(u"F")}})));
    EXPECT_FALSE(isCompiledFile(*fileWith({{u"MDE", true}})));
    EXPECT_FALSE(isCompiledFile(*fileWith({})));
}

TEST(CompiledFile, NoRealFileAtHandIsOne) {
    for (const char* name :
         {"access97/nwind.mdb", "later/northwind-2000-ja.mdb", "later/formPropTest.accdb"}) {
        if (const auto path = test::realSample(name)) {
            EXPECT_FALSE(isCompiledFile(*jet::openJetFile(path->native(), {}))) << name;
        }
    }
}

TEST(CompiledFile, SaysThatItsSourceIsNotInIt) {
    const ModuleSource source(fileWith({{u"MDE", Text(u"T")}}));
    ASSERT_EQ(source.modules().size(), 2u);
    for (const ModuleDocument& module : source.modules()) {
        try {
            source.text(module);
            ADD_FAILURE() << toUtf8(module.name);
        } catch (const RunTimeError& error) {
            EXPECT_EQ(error.number(), 2046);
            EXPECT_NE(error.description().find(u"コンパイル済み"), Text::npos);
            EXPECT_NE(error.description().find(module.title()), Text::npos);
        }
    }
}

TEST(CompiledFile, GivesItsDesignsMacrosAndTablesLikeAnyOther) {
    const auto file = fileWith({{u"MDE", Text(u"T")}});
    const DesignSource designs(file);
    const DesignDocument* form = designs.find(DesignKind::Form, u"受注");
    ASSERT_NE(form, nullptr);
    EXPECT_TRUE(form->hasModule);
    EXPECT_NO_THROW(designs.design(*form));
    EXPECT_EQ(MacroSource(file).macros().size(), 1u);
    EXPECT_NO_THROW(file->relations());
}

} // namespace
} // namespace relvane::access
