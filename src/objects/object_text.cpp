#include "objects/object_text.h"

#include "core/text_functions.h"

namespace relvane {

Text cutText(TextView text, std::int64_t length) {
    return RTrim(Left(text, length));
}

std::optional<dao::Property> lastProperty(dao::Properties& properties, TextView name) {
    for (int i = properties.Count() - 1; i >= 0; --i) {
        if (properties.Name(i) == name) {
            return properties.Item(i);
        }
    }
    return std::nullopt;
}

void writeDescription(Recordset& row, dao::Properties& properties) {
    if (const auto description = lastProperty(properties, u"Description")) {
        row.Collect(u"Description", description->value);
    }
}

Text linkType(TextView connect) {
    if (InStr(connect, u";") == 1) {
        return u"Link(Access)";
    }
    return InStr(connect, u"ODBC;") > 0 ? u"Link(ODBC)" : u"Link(その他)";
}

} // namespace relvane
