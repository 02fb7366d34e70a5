// A few forms held against pictures that a person has looked at. A wanted change: look at the picture that the test
// leaves behind, and put it in the place of the reference.
#include <algorithm>
#include <fstream>
#include <iterator>

#include <QImage>
#include <gtest/gtest.h>

#include "drawn_target.h"
#include "formview/picture_files.h"
#include "formview/picture_image.h"

namespace relvane::test {
namespace {

namespace fs = std::filesystem;

std::string description() {
    std::ifstream file(sourceFolder() / "tests/formview/references/forms.txt");
    return {std::istreambuf_iterator<char>(file), {}};
}

// The part of the pixels that clearly differ in the worst square of the picture: letters may be set a little otherwise
// by another version of a font, but an edge stays where it is. 1 when the sizes differ.
double difference(const Picture& one, const Picture& other) {
    if (one.width != other.width || one.height != other.height) {
        return 1;
    }
    constexpr int side = 16, clearly = 40;
    const auto differs = [&](int x, int y) {
        for (const int shift : {0, 8, 16}) {
            const int first = static_cast<int>(one.at(x, y) >> shift & 0xFF);
            const int second = static_cast<int>(other.at(x, y) >> shift & 0xFF);
            if (std::abs(first - second) > clearly) {
                return true;
            }
        }
        return false;
    };
    int worst = 0;
    for (int top = 0; top < one.height; top += side) {
        for (int left = 0; left < one.width; left += side) {
            int count = 0;
            for (int y = top; y < std::min(one.height, top + side); ++y) {
                for (int x = left; x < std::min(one.width, left + side); ++x) {
                    count += differs(x, y) ? 1 : 0;
                }
            }
            worst = std::max(worst, count);
        }
    }
    return static_cast<double>(worst) / (side * side);
}

constexpr double tolerance = 0.15;

class References : public testing::TestWithParam<const char*> {};

TEST_P(References, FormsLookAsTheyWereApproved) {
    DrawnTarget target(description());
    const std::string name = GetParam();
    for (const bool design : {false, true}) {
        const Picture picture = target.view().draw(fromUtf8(name), {.design = design, .wholeWindow = true});
        const std::string file = name + (design ? "-design.png" : ".png");
        const fs::path reference = sourceFolder() / "tests/formview/references" / file;
        const Picture approved = formview::pictureOf(QImage(QString::fromStdString(reference.string())));
        const double found = difference(picture, approved);
        if (found > tolerance) {
            const Bytes bytes = formview::pngFile(picture);
            const fs::path seen = buildFolder() / file;
            std::ofstream(seen, std::ios::binary)
                .write(reinterpret_cast<const char*>(bytes.data()),
                       static_cast<std::streamsize>(bytes.size()));
            ADD_FAILURE() << file << " differs by " << found << "; what was drawn: " << seen;
        }
    }
}

INSTANTIATE_TEST_SUITE_P(Forms, References, testing::Values("controls", "list", "sheet"));

TEST(ReferencePictures, AControlThatMovedByFourPixelsIsNoticed) {
    const std::string text = description();
    const Picture still = DrawnTarget(text).use(u"controls");
    for (const std::string control : {"TextBox name at 1500 300", "CommandButton save at 300 2700",
                                      "CheckBox active at 1500 1200", "Label title at 300 300"}) {
        std::string moved = text;
        const std::size_t at = moved.find(control);
        ASSERT_NE(at, std::string::npos) << control;
        const std::size_t top = at + control.rfind(' ') + 1;
        const std::size_t length = control.size() - control.rfind(' ') - 1;
        moved.replace(top, length, std::to_string(std::stoi(control.substr(control.rfind(' '))) + 60));
        EXPECT_GT(difference(DrawnTarget(moved).use(u"controls"), still), tolerance) << control;
    }
    EXPECT_EQ(difference(DrawnTarget(text).use(u"controls"), still), 0);
}

} // namespace
} // namespace relvane::test
