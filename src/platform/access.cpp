// An application that only shows reports: no form, macro or module exists in it, and nothing is open in design view.
#include "platform/access.h"

#include "platform/runtime_error.h"

namespace relvane::access {
namespace {

constexpr int notSupported = 438, commandNotAvailable = 2046, formNotFound = 2102, formNotOpen = 2450,
              reportNotOpen = 2451, moduleNotFound = 2516, objectNotFound = 2544, objectMissing = 7874,
              moduleNotOpen = 7961;

} // namespace

Picture Form::picture(bool) const {
    throw RunTimeError(notSupported, u"フォームを表示出来ません。 (" + Name() + u")");
}

void DoCmd::OpenForm(const Text& name, View) {
    throw RunTimeError(formNotFound, u"フォームが見つかりません。 (" + name + u")");
}

void DoCmd::Close(ObjectType, const Text&, CloseSave) {}

void DoCmd::RepaintObject(ObjectType, const Text&) {}

void DoCmd::Minimize() {}

void DoCmd::OpenModule(const Text& name) {
    throw RunTimeError(moduleNotFound, u"モジュールが見つかりません。 (" + name + u")");
}

void DoCmd::SelectObject(ObjectType, const Text& name, bool) {
    throw RunTimeError(objectNotFound, u"オブジェクトが見つかりません。 (" + name + u")");
}

void DoCmd::DoMenuItem(int, int, int, int, int) {
    throw RunTimeError(commandNotAvailable, u"コマンドまたはアクションは無効です。");
}

void DoCmd::DeleteObject(ObjectType, const Text& name) {
    throw RunTimeError(objectMissing, u"オブジェクトが見つかりません。 (" + name + u")");
}

Form& Application::Forms(const Text& name) {
    throw RunTimeError(formNotOpen, u"フォームは開かれていません。 (" + name + u")");
}

Report& Application::Reports(const Text& name) {
    throw RunTimeError(reportNotOpen, u"レポートは開かれていません。 (" + name + u")");
}

Module& Application::Modules(const Text& name) {
    throw RunTimeError(moduleNotOpen, u"モジュールは開かれていません。 (" + name + u")");
}

void Application::SendKeys(const Text&) {}

} // namespace relvane::access
