// An application that has no designs: no form exists in it, and nothing is open in design view.
#include "platform/access.h"

#include "platform/runtime_error.h"

namespace relvane::access {
namespace {

constexpr int formNotFound = 2102, formNotOpen = 2450, reportNotOpen = 2451;

} // namespace

void DoCmd::OpenForm(const Text& name, View) {
    throw RunTimeError(formNotFound, u"フォームが見つかりません。 (" + name + u")");
}

void DoCmd::Close(ObjectType, const Text&, CloseSave) {}

Form& Application::Forms(const Text& name) {
    throw RunTimeError(formNotOpen, u"フォームは開かれていません。 (" + name + u")");
}

Report& Application::Reports(const Text& name) {
    throw RunTimeError(reportNotOpen, u"レポートは開かれていません。 (" + name + u")");
}

} // namespace relvane::access
