#include "objects/design_walk.h"

#include "objects/object_text.h"
#include "output/report_show.h"

namespace relvane {
namespace {

constexpr std::int16_t simpleList = 1; // option
constexpr std::int64_t nameLength = 150;

void openForm(AnalysisContext& context, const Text& name) {
    access::Application& application = need(context.TargetApp);
    application.DoCmd().OpenForm(name, access::acViewDesign);
    access::Form& form = application.Forms(name);
    form.setVisible(false);
    context.CurDesign = &form;
}

void openReport(AnalysisContext& context, const Text& name) {
    access::Application& application = need(context.TargetApp);
    application.DoCmd().OpenReport(name, access::acViewDesign);
    access::Report& report = application.Reports(name);
    report.setVisible(false);
    context.CurDesign = context.CurReport = &report;
}

// The context points to an object only while a walk reads it.
class Current {
public:
    explicit Current(AnalysisContext& context) : context_(context) {}
    Current(const Current&) = delete;
    Current& operator=(const Current&) = delete;
    ~Current() {
        context_.CurDesign = nullptr;
        context_.CurReport = nullptr;
    }

private:
    AnalysisContext& context_;
};

void readDesign(AnalysisContext& context, const DesignKind& kind, const Text& name, const Text& keptName,
                const std::function<void()>& read) {
    {
        const Current current(context);
        kind.open(context, name);
        context.CurDesignName = keptName;
        read();
    }
    need(context.TargetApp).DoCmd().Close(kind.type, name, access::acSaveNo);
}

// Only what was chosen is remembered by its name.
WalkEnd walk(AnalysisContext& context, const DesignAnalysis& analysis, const Panel& panel, std::int16_t scope,
             std::int16_t progress) {
    const auto analyze = [&] {
        (context.*panel.option == simpleList ? analysis.simple : analysis.detailed)(context);
    };
    if (scope == chosenObject) {
        withDesign(context, analysis.kind, (context.frmRelvane.*panel.scope->list).Text(), analyze);
        rememberName(context, panel);
    } else {
        const std::int32_t total = context.*analysis.kind.count;
        walkDesigns(context, analysis.kind, WalkProgress(context, progress, analysis.message, total),
                    analyze);
    }
    rememberScope(context, panel, scope);
    return WalkEnd::Complete;
}

} // namespace

const DesignKind formKind{u"Forms", u"Form", access::acForm, openForm, &AnalysisContext::FormCount};
const DesignKind reportKind{u"Reports", u"Report", access::acReport, openReport,
                            &AnalysisContext::ReportCount};

void withDesign(AnalysisContext& context, const DesignKind& kind, const Text& name,
                const std::function<void()>& read) {
    readDesign(context, kind, name, name, read);
}

void walkDesigns(AnalysisContext& context, const DesignKind& kind, const WalkProgress& progress,
                 const std::function<void()>& read) {
    context.CurContainer = &need(context.TargetDb).Containers().Item(kind.container);
    for (const auto& document : context.CurContainer->Documents()) {
        context.CurDocument = document.get();
        const Text name = document->Name();
        const Text keptName = cutText(name, nameLength);
        progress.begin(keptName);
        readDesign(context, kind, name, keptName, read);
        progress.end();
    }
}

AnalysisSpec specOf(AnalysisContext& context, const DesignAnalysis& analysis, std::int16_t scope) {
    const Panel& panel = panelOf(analysis.button);
    return {.tables = analysis.tables,
            .workingMessage = analysis.message,
            .walk = [&context, &analysis, &panel, scope](
                        std::int16_t progress) { return walk(context, analysis, panel, scope, progress); },
            .showReport = [&context,
                           &panel] { ShowReport(context, reportOf(context, panel.preview), previewMode); },
            .preview = &(context.frmRelvane.*panel.preview),
            .option = context.*panel.option,
            .done = &(context.*panel.done),
            .isDone = [&context, &panel] { return isRepeated(context, panel); },
            .emptied = analysis.emptied};
}

} // namespace relvane
