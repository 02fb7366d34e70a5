#include "sample_builder/description_module.h"

#include <algorithm>

#include "sample_builder/description_value.h"

namespace relvane::samples {

namespace {

struct DamageWord {
    TextView name;
    ModuleDamage damage;
};

constexpr DamageWord damageWords[] = {{u"not-stored", ModuleDamage::NotStored},
                                      {u"not-in-project", ModuleDamage::NotInProject},
                                      {u"cut-off", ModuleDamage::CutOff}};

} // namespace

bool ModuleInProgress::read(TextView keyword, DescriptionLine& line) {
    if (document_ == nullptr) {
        return false;
    }
    const auto* damage = std::ranges::find(damageWords, keyword, &DamageWord::name);
    if (keyword == u"code") {
        module();
    } else if (keyword == u"class") {
        module().isClass = true;
    } else if (keyword == u"empty") {
        module().source.clear();
    } else if (keyword == u"compiled") {
        module().compiledCode = std::get<Bytes>(takeValue(line, ColumnType::Binary));
    } else if (keyword == u"no-offset") {
        module().directoryKnowsOffset = false;
    } else if (damage != std::end(damageWords)) {
        module().damage = damage->damage;
    } else {
        return false;
    }
    return true;
}

bool ModuleInProgress::readSource(TextView line) {
    if (document_ == nullptr) {
        return false;
    }
    if (!sourceBegun_) {
        module().source.clear();
        sourceBegun_ = true;
    }
    module().source.append(line).append(u"\r\n");
    return true;
}

ModuleSpec& ModuleInProgress::module() {
    return document_->module ? *document_->module : document_->module.emplace();
}

} // namespace relvane::samples
