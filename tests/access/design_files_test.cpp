// Designs in real files: every stream of every Access 97 file is understood to its last byte.

#include <fstream>
#include <map>
#include <sstream>

#include <gtest/gtest.h>

#include "access/design_data.h"
#include "access/design_source.h"
#include "support/samples.h"

namespace relvane::access {
namespace {

std::shared_ptr<const jet::JetFile> open(const std::filesystem::path& path) {
    return jet::openJetFile(path.native(), {});
}

std::vector<DesignDocument> allDocuments(const DesignSource& source) {
    std::vector<DesignDocument> documents = source.forms();
    documents.insert(documents.end(), source.reports().begin(), source.reports().end());
    return documents;
}

TEST(DesignFiles, EveryStreamOfEveryAccess97FileIsReadToItsLastByte) {
    const auto samples = test::realSamples();
    if (!samples) {
        return;
    }
    std::map<std::string, std::size_t> designs;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(*samples)) {
        const std::string folder = entry.path().parent_path().filename();
        const std::string name = entry.path().filename();
        if (entry.path().extension() != ".mdb" || (folder != "access97" && folder != "odd")) {
            continue;
        }
        std::shared_ptr<const jet::JetFile> file;
        if (skipErrors([&] { file = open(entry.path()); }) != 0) {
            continue; // no database, or one with a password
        }
        const DesignSource source(file);
        for (const DesignDocument& document : allDocuments(source)) {
            SCOPED_TRACE(name + " " + toUtf8(document.title()));
            std::shared_ptr<const Design> design;
            ASSERT_NO_THROW(design = source.design(document));
            EXPECT_EQ(design->version(), 17);
            EXPECT_EQ(source.streams(document).place,
                      document.hasModule ? DesignPlace::ModuleRow : DesignPlace::Catalogue);
            EXPECT_EQ(design->isReport(), document.kind == DesignKind::Report);
            EXPECT_NO_THROW(source.typeInfo(document));
            ++designs[name];
        }
    }
    const std::map<std::string, std::size_t> expected = {
        {"nwind.mdb", 34}, {"afr.mdb", 6}, {"CodBarra39Etiquetas.mdb", 2}, {"ListaArquivosDir.mdb", 1}};
    EXPECT_EQ(designs, expected);
}

TEST(DesignFiles, EveryTypeAndEveryPropertyOfTheRealFilesHasAName) {
    for (const char* name : {"nwind", "afr", "CodBarra39Etiquetas", "ListaArquivosDir"}) {
        const auto path = test::realSample(std::string("access97/") + name + ".mdb");
        if (!path) {
            return;
        }
        const DesignSource source(open(*path));
        for (const DesignDocument& document : allDocuments(source)) {
            const auto design = source.design(document);
            const auto look = [&](const auto& self, const DesignObject& object) -> void {
                SCOPED_TRACE(toUtf8(document.title()) + " at " + std::to_string(object.offset()));
                EXPECT_FALSE(object.typeName().empty());
                for (const StoredValue& value : object.storedValues()) {
                    EXPECT_NE(object.factOf(value), nullptr) << value.id;
                }
                for (const DesignObject* child : object.children()) {
                    self(self, *child);
                }
            };
            look(look, design->root());
        }
    }
}

TEST(DesignFiles, TheTreeAgreesWithTheListOfNames) {
    const auto path = test::realSample("access97/nwind.mdb");
    if (!path) {
        return;
    }
    const DesignSource source(open(*path));
    for (const DesignDocument& document : allDocuments(source)) {
        const TypeInfo list = source.typeInfo(document);
        EXPECT_TRUE(agrees(list, *source.design(document))) << toUtf8(document.title());
        EXPECT_FALSE(list.entries.empty());
    }
}

} // namespace
} // namespace relvane::access
