#include "code/module_walk.h"

#include "code/line_rules.h"
#include "objects/object_text.h"

namespace relvane {
namespace {

constexpr std::int64_t nameLength = 150;

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

void scanDesigns(AnalysisContext& context, const SourceKind& kind, const WalkProgress& progress,
                 const std::function<void(const access::Module&)>& scan) {
    walkDesigns(context, *kind.design, progress, [&] {
        const access::Designed& design = need(context.CurDesign);
        if (design.HasModule()) {
            scan(design.Module());
        }
    });
}

void scanModules(AnalysisContext& context, const SourceKind& kind, const WalkProgress& progress,
                 const std::function<void(const access::Module&)>& scan) {
    context.CurContainer = &need(context.TargetDb).Containers().Item(kind.container());
    for (const auto& document : context.CurContainer->Documents()) {
        context.CurDocument = document.get();
        const Text name = document->Name();
        progress.begin(name);
        withModule(context, name, scan);
        progress.end();
    }
}

} // namespace

// clang-format off
const std::array<SourceKind, 3> sourceKinds{{
    {1, u"Form",   u"1", u"フォームモジュール情報　取得中", u"ﾌｫｰﾑﾓｼﾞｭｰﾙ情報　取得中",  &formKind},
    {2, u"Report", u"2", u"レポートモジュール情報　取得中", u"ﾚﾎﾟｰﾄﾓｼﾞｭｰﾙ情報　取得中", &reportKind},
    {3, u"Module", u"3", u"モジュール情報　取得中",         u"ﾓｼﾞｭｰﾙ情報　取得中",      nullptr},
}};
// clang-format on

void withModule(AnalysisContext& context, const Text& name,
                const std::function<void(const access::Module&)>& read) {
    access::Application& application = need(context.TargetApp);
    application.DoCmd().OpenModule(name);
    application.DoCmd().Minimize();
    read(application.Modules(name));
    application.DoCmd().Close(access::acModule, name, access::acSaveNo);
}

std::optional<RunTimeError> missingSource(const std::function<void()>& read) {
    constexpr int notAvailable = 2046;
    try {
        read();
        return std::nullopt;
    } catch (const RunTimeError& error) {
        if (error.number() != notAvailable) {
            throw;
        }
        return error;
    }
}

void scanModule(AnalysisContext& context, const access::Module& module, const std::function<void()>& scan) {
    increment(context.ObjectNo);
    readModule(context, module, scan);
}

void readModule(AnalysisContext& context, const access::Module& module, const std::function<void()>& scan) {
    const CurrentModule current(context, module);
    context.Scan.ModuleLineCount = module.CountOfLines();
    context.Scan.DeclLineCount = module.CountOfDeclarationLines();
    scan();
}

void walkSources(AnalysisContext& context, std::int16_t option, std::int16_t progress,
                 const std::function<void(const SourceKind& kind)>& scan) {
    const std::int32_t total = context.FormCount + context.ReportCount + context.ModuleCount;
    for (const SourceKind& kind : sourceKinds) {
        if (option != kind.option && option != everyKind) {
            continue;
        }
        context.CurrentKind = Text(kind.word);
        const WalkProgress shown(context, progress, kind.message, total);
        const auto scanOne = [&](const access::Module& module) {
            scanModule(context, module, [&] {
                context.Scan.CurObjectKind = Text(kind.word);
                scan(kind);
            });
        };
        if (kind.design != nullptr) {
            scanDesigns(context, kind, shown, scanOne);
        } else {
            scanModules(context, kind, shown, scanOne);
        }
    }
}

void forEachStatement(AnalysisContext& context, const std::function<void(TextView line)>& take) {
    ScanState& scan = context.Scan;
    const access::Module& module = need(scan.CurModule);
    const std::int32_t lines = module.CountOfLines();
    for (scan.LineIndex = 1; scan.LineIndex <= lines; ++scan.LineIndex) {
        const TextView procedure = module.ProcOfLine(scan.LineIndex, scan.CurProcKind);
        if (procedure != scan.CurProcName) {
            increment(scan.ProcNo);
            scan.CurProcName = procedure;
        }
        const TextView line = module.Lines(scan.LineIndex, 1);
        if (!isBlankLine(line) && !isOptionLine(line)) {
            take(line);
        }
    }
}

Text sourceObjectName(const AnalysisContext& context) {
    return cutText(need(context.CurDocument).Name(), nameLength);
}

} // namespace relvane
