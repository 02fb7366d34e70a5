#include "formview/form_target.h"

#include "jet/open_database.h"

namespace relvane::formview {

FormTarget::FormTarget(dao::Database& database) : designs_(jet::fileOf(database)), records_(database) {}

std::shared_ptr<const access::Design> FormTarget::design(const Text& form) {
    constexpr int formNotFound = 2102;
    const access::DesignDocument* document = designs_.find(access::DesignKind::Form, form);
    if (document == nullptr) {
        throw RunTimeError(formNotFound, u"フォームが見つかりません。 (" + form + u")");
    }
    std::shared_ptr<const access::Design>& design = read_[upperCase(form)];
    if (design == nullptr) {
        design = designs_.design(*document);
    }
    return design;
}

const Records* FormTarget::list(const Text& rowSource) {
    auto found = lists_.find(rowSource);
    if (found == lists_.end()) {
        found = lists_.emplace(rowSource, records_.records(rowSource, {.rows = mostRows})).first;
    }
    return found->second ? &*found->second : nullptr;
}

} // namespace relvane::formview
