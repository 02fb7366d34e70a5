// The definitions as they are delivered, as pages.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "report_samples.h"

namespace relvane::test {
namespace {

using testing::HasSubstr;

TEST(ObjectList, ThreeObjects) {
    auto store = emptyStore();
    addObjects(*store, 3);
    setFileLine(*store, text("C:\\業務\\受注管理\\受注管理システム.mdb"));
    const auto document = reports::open(store, u"R_RvObjectAll", printed);
    printed_pdf(document, "objects-3");
    EXPECT_EQ(document.pageCount(), 1);
}

TEST(ObjectList, ThreeThousandObjects) {
    auto store = emptyStore();
    addObjects(*store, 3000);
    const auto document = reports::open(store, u"R_RvObjectAll", printed);
    printed_pdf(document, "objects-3000");
}

TEST(ObjectList, LongestNames) {
    auto store = emptyStore();
    addLongestObjects(*store);
    const auto document = reports::open(store, u"R_RvObjectAll", printed);
    printed_pdf(document, "objects-longest");
}

TEST(ObjectList, NoObjects) {
    auto store = emptyStore();
    const auto document = reports::open(store, u"R_RvObjectAll", printed);
    printed_pdf(document, "objects-none");
}

TEST(Cover, AllThree) {
    auto store = emptyStore();
    setCover(*store, text("受注管理システム 2000"), text("システム設計書 (第3版)"),
             text("株式会社さくら商事"), text("情報システム部 開発第一課"), text("山田 太郎"));
    for (const char* name : {"R_RvHyousi", "R_RvHyousiH", "R_RvHyousiW"}) {
        const auto document = reports::open(store, text(name), printed);
        printed_pdf(document, name);
    }
}

} // namespace
} // namespace relvane::test
