#include "drawn_target.h"

#include <algorithm>
#include <array>

#include <QGuiApplication>
#include <gtest/gtest.h>

#include "access/design_source.h"
#include "jet/open_database.h"
#include "platform/native_path.h"
#include "sample_builder/database_writer.h"
#include "sample_builder/description.h"

namespace relvane::test {
namespace {

class Application : public testing::Environment {
public:
    void SetUp() override { application_ = std::make_unique<QGuiApplication>(count_, words_.data()); }
    void TearDown() override { application_.reset(); }

private:
    int count_ = 1;
    char name_[5] = "test";
    std::array<char*, 2> words_{name_, nullptr};
    std::unique_ptr<QGuiApplication> application_;
};

[[maybe_unused]] const auto* const application = testing::AddGlobalTestEnvironment(new Application);

} // namespace

DrawnTarget::DrawnTarget(const std::string& description) {
    const auto file = folder_ / "target.mdb";
    samples::writeDatabase(samples::parseDescription(description), file);
    database_ = jet::openDatabase(textOfNativePath(file.native()));
    view_ = std::make_unique<formview::FormView>(*database_);
}

DrawnTarget::DrawnTarget(const std::filesystem::path& file)
    : database_(jet::openDatabase(textOfNativePath(file.native()))),
      view_(std::make_unique<formview::FormView>(*database_)) {}

std::vector<Text> DrawnTarget::forms() {
    std::vector<Text> names;
    const access::DesignSource designs(jet::fileOf(*database_));
    for (const access::DesignDocument& form : designs.forms()) {
        names.push_back(form.name);
    }
    return names;
}

int countOf(const Picture& picture, std::uint32_t colour, Part part) {
    int count = 0;
    for (int y = std::max(0, part.y); y < std::min(picture.height, part.y + part.height); ++y) {
        for (int x = std::max(0, part.x); x < std::min(picture.width, part.x + part.width); ++x) {
            count += picture.at(x, y) == colour ? 1 : 0;
        }
    }
    return count;
}

int countOf(const Picture& picture, std::uint32_t colour) {
    return countOf(picture, colour, {0, 0, picture.width, picture.height});
}

int inkIn(const Picture& picture, Part part) {
    int count = 0;
    for (int y = std::max(0, part.y); y < std::min(picture.height, part.y + part.height); ++y) {
        for (int x = std::max(0, part.x); x < std::min(picture.width, part.x + part.width); ++x) {
            constexpr std::uint32_t dark = 0x60;
            const std::uint32_t pixel = picture.at(x, y);
            count +=
                (pixel & 0xFF) < dark && (pixel >> 8 & 0xFF) < dark && (pixel >> 16 & 0xFF) < dark ? 1 : 0;
        }
    }
    return count;
}

} // namespace relvane::test
