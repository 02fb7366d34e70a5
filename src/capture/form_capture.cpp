#include "capture/form_capture.h"

#include "core/error_report.h"

namespace relvane {
namespace {

constexpr int formMissing = 2450, actionCancelled = 2501;
constexpr std::int16_t clientArea = 0;

void capture(AnalysisContext& context, FrmCapture& viewer, const Text& name) {
    FrmRelvane& form = context.frmRelvane;
    form.Hide();
    access::Application& application = need(context.TargetApp);
    application.DoCmd().OpenForm(name, context.CaptureDesignView == 1 ? access::acViewDesign
                                                                      : access::acViewNormal);
    application.setVisible(true);
    context.CurDesign = &application.Forms(name);
    application.DoCmd().RepaintObject(access::acForm, name);
    if (viewer.Visible) {
        viewer.close(); // shows what the clipboard loses now
    }
    need(context.platform.clipboard).Clear();
    CaptureFormImage(context, name, clientArea);
    context.CurDesign = nullptr;
    application.DoCmd().Close(access::acForm, name, access::acSaveNo);
    context.CaptureMilliseconds = std::int32_t{toInteger(form.txtCapTime.Text.get())} * 1000;
    form.Timer2.Interval = context.CaptureMilliseconds;
}

// Design view runs no code of the form and reads no data.
void offerDesignView(AnalysisContext& context, const Text& name) {
    need(context.TargetApp).DoCmd().Close(access::acForm, name, access::acSaveNo);
    context.frmRelvane.Show();
    context.frmRelvane.chkCapKbn.tick(true);
}

} // namespace

void cmdFmImage_Click(AnalysisContext& context, FrmCapture& viewer) {
    const Text name = context.frmRelvane.cboFmImage.Text();
    const int failed = guarded(context, places::screenCapture, [&] { capture(context, viewer, name); });
    context.CurDesign = nullptr;
    if (failed == formMissing || failed == actionCancelled) {
        offerDesignView(context, name);
    }
}

void Timer2_Timer(AnalysisContext& context, FrmCapture& viewer) {
    need(context.TargetApp).setVisible(false);
    context.frmRelvane.Show();
    viewer.Show();
}

bool CaptureFormImage(AnalysisContext& context, const Text& formName, std::int16_t wholeWindow) {
    access::Application& application = need(context.TargetApp);
    if (skipErrors([&] { application.DoCmd().SelectObject(access::acForm, formName, false); }) != 0) {
        return false;
    }
    WindowToClipboard(context, application.Forms(formName), wholeWindow);
    return true;
}

bool WindowToClipboard(AnalysisContext& context, const access::Form& window, std::int16_t wholeWindow) {
    const Picture picture = window.picture(wholeWindow != 0);
    skipErrors([&] { need(context.platform.clipboard).SetData(picture); });
    return true;
}

} // namespace relvane
