#include "formview/form_painter.h"

#include "formview/form_view.h"

namespace relvane::formview {
namespace {

class ViewPainter : public access::FormPainter {
public:
    explicit ViewPainter(dao::Database& target) : view_(target) {}

    void requireOpens(const Text& form) override { view_.requireOpens(form); }
    Picture draw(const Text& form, access::View view, bool wholeWindow) override {
        return view_.draw(form, {.design = view == access::acViewDesign, .wholeWindow = wholeWindow});
    }

private:
    FormView view_;
};

} // namespace

std::unique_ptr<access::FormPainter> newFormPainter(dao::Database& target) {
    return std::make_unique<ViewPainter>(target);
}

} // namespace relvane::formview
