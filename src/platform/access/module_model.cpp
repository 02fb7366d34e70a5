#include "access/module_model.h"

#include "access/module_procedures.h"
#include "platform/runtime_error.h"

namespace relvane::access {
namespace {

class ModelModule : public Module {
public:
    explicit ModelModule(ModuleText text) : text_(std::move(text)), procedures_(text_) {}

    std::int32_t CountOfLines() const override { return toLine(text_.lineCount()); }
    std::int32_t CountOfDeclarationLines() const override { return toLine(procedures_.declarationLines()); }
    std::int32_t Type() const override { return static_cast<std::int32_t>(text_.kind()); }

    TextView Lines(std::int32_t line, std::int32_t count) const override {
        return line < 1 || count < 1
                   ? TextView()
                   : text_.lines(static_cast<std::size_t>(line), static_cast<std::size_t>(count));
    }
    TextView ProcOfLine(std::int32_t line, std::int32_t& kind) const override {
        const ModuleProcedure* procedure =
            line < 1 ? nullptr : procedures_.at(static_cast<std::size_t>(line));
        kind = procedure == nullptr ? 0 : static_cast<std::int32_t>(procedure->kind);
        return procedure == nullptr ? TextView() : procedure->name;
    }
    std::int32_t ProcStartLine(TextView name, std::int32_t kind) const override {
        return toLine(find(name, kind).start);
    }
    std::int32_t ProcBodyLine(TextView name, std::int32_t kind) const override {
        return toLine(find(name, kind).body);
    }
    std::int32_t ProcCountLines(TextView name, std::int32_t kind) const override {
        return name.empty() ? CountOfDeclarationLines() : toLine(find(name, kind).count);
    }

private:
    static std::int32_t toLine(std::size_t number) {
        return static_cast<std::int32_t>(number); // no text has more than 64 M characters
    }
    const ModuleProcedure& find(TextView name, std::int32_t kind) const {
        if (kind < 0 || kind > static_cast<std::int32_t>(ProcedureKind::PropertyGet)) {
            throw RunTimeError(ErrorNumber::InvalidProcedureCall);
        }
        return procedures_.find(name, static_cast<ProcedureKind>(kind));
    }

    ModuleText text_;
    ModuleProcedures procedures_;
};

} // namespace

std::shared_ptr<Module> openModule(ModuleText text) {
    return std::make_shared<ModelModule>(std::move(text));
}

} // namespace relvane::access
