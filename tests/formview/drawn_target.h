// A small target written down as text (samples/description.h), and the pictures of its forms.
#pragma once

#include <string>

#include "formview/form_view.h"
#include "support/samples.h"

namespace relvane::test {

class DrawnTarget {
public:
    explicit DrawnTarget(const std::string& description); // of a database
    explicit DrawnTarget(const std::filesystem::path& file);

    dao::Database& database() { return *database_; }
    std::vector<Text> forms();
    formview::FormView& view() { return *view_; }
    Picture use(TextView form) { return view_->draw(Text(form)); }
    Picture design(TextView form) { return view_->draw(Text(form), {.design = true}); }

private:
    TemporaryFolder folder_;
    std::shared_ptr<dao::Database> database_;
    std::unique_ptr<formview::FormView> view_;
};

// How many pixels of the part have that colour; the part may go beyond the picture.
struct Part {
    int x = 0, y = 0, width = 0, height = 0;
};
int countOf(const Picture& picture, std::uint32_t colour, Part part);
int countOf(const Picture& picture, std::uint32_t colour);

// Of pixels that are much darker than their ground: letters are there.
int inkIn(const Picture& picture, Part part);

} // namespace relvane::test
