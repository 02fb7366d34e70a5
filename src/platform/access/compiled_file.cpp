#include "access/compiled_file.h"

#include <algorithm>

namespace relvane::access {

bool isCompiledFile(const jet::JetFile& file) {
    bool isCompiled = false;
    skipErrors([&] { // a file whose properties are damaged does not say so
        const auto* database = file.catalogue().find(jet::ObjectType::Database, u"MSysDb");
        if (database == nullptr) {
            return;
        }
        const auto properties = file.catalogue().properties(*database);
        isCompiled = std::ranges::any_of(properties.ofObject, [](const jet::StoredProperty& property) {
            return equalsIgnoringCase(property.name, u"MDE") && property.value == Value(Text(u"T"));
        });
    });
    return isCompiled;
}

void failCompiled(TextView title) {
    constexpr int notAvailable = 2046;
    throw RunTimeError(notAvailable,
                       u"コンパイル済みのファイル (MDE、ACCDE) ですので、ソースがありません。 (" +
                           Text(title) + u")");
}

} // namespace relvane::access
