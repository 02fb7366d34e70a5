#include "code/module_walk.h"

#include "core/progress_gauge.h"
#include "objects/object_text.h"

namespace relvane {
namespace {

constexpr std::int64_t nameLength = 150;

const SourceKind sourceKinds[] = {
    {1, u"Form", u"1", u"フォームモジュール情報　取得中", &formKind},
    {2, u"Report", u"2", u"レポートモジュール情報　取得中", &reportKind},
    {3, u"Module", u"3", u"モジュール情報　取得中", nullptr},
};

// The state points to a module only while a scanner reads it.
class CurrentModule {
public:
    CurrentModule(AnalysisContext& context, const access::Module& module) : context_(context) {
        context_.Scan.CurModule = &module;
    }
    CurrentModule(const CurrentModule&) = delete;
    CurrentModule& operator=(const CurrentModule&) = delete;
    ~CurrentModule() { context_.Scan.CurModule = nullptr; }

private:
    AnalysisContext& context_;
};

void scanDesigns(AnalysisContext& context, const SourceKind& kind, std::int32_t total,
                 const std::function<void(const access::Module&)>& scan) {
    walkDesigns(context, *kind.design, kind.message, total, [&] {
        const access::Designed& design = need(context.CurDesign);
        if (design.HasModule()) {
            scan(design.Module());
        }
    });
}

void scanModules(AnalysisContext& context, const SourceKind& kind, std::int32_t total,
                 const std::function<void(const access::Module&)>& scan) {
    ProgressGauge& gauge = context.frmRelvane.gauge;
    context.CurContainer = &need(context.TargetDb).Containers().Item(u"Modules");
    for (const auto& document : context.CurContainer->Documents()) {
        context.CurDocument = document.get();
        const Text name = document->Name();
        showMessage(gauge, Text(kind.message) + u"　(" + name + u")");
        access::Application& application = need(context.TargetApp);
        application.DoCmd().OpenModule(name);
        application.DoCmd().Minimize();
        scan(application.Modules(name));
        application.DoCmd().Close(access::acModule, name, access::acSaveNo);
        SetGauge(gauge, percentOf(context.ObjectNo, total));
    }
}

} // namespace

void scanModule(AnalysisContext& context, const access::Module& module, const std::function<void()>& scan) {
    const CurrentModule current(context, module);
    increment(context.ObjectNo);
    context.Scan.ModuleLineCount = module.CountOfLines();
    context.Scan.DeclLineCount = module.CountOfDeclarationLines();
    scan();
}

void walkSources(AnalysisContext& context, std::int16_t option,
                 const std::function<void(const SourceKind& kind)>& scan) {
    const std::int32_t total = context.FormCount + context.ReportCount + context.ModuleCount;
    for (const SourceKind& kind : sourceKinds) {
        if (option != kind.option && option != everyKind) {
            continue;
        }
        const auto scanOne = [&](const access::Module& module) {
            scanModule(context, module, [&] {
                context.Scan.CurObjectKind = Text(kind.word);
                scan(kind);
            });
        };
        if (kind.design != nullptr) {
            scanDesigns(context, kind, total, scanOne);
        } else {
            scanModules(context, kind, total, scanOne);
        }
    }
}

Text sourceObjectName(const AnalysisContext& context) {
    return cutText(need(context.CurDocument).Name(), nameLength);
}

} // namespace relvane
