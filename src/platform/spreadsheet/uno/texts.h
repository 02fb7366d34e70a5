// The program's texts and those of LibreOffice, which are both UTF-16.
#pragma once

#include <vector>

#include <rtl/ustring.hxx>

#include "platform/text.h"

namespace relvane::spreadsheet {

using rtl::OUString;

// The two kinds of unit differ in their type alone.
inline OUString officeText(TextView text) {
    const std::vector<sal_Unicode> units(text.begin(), text.end());
    return OUString(units.data(), static_cast<sal_Int32>(units.size()));
}

inline Text textOf(const OUString& text) {
    return Text(text.getStr(), text.getStr() + text.getLength());
}

} // namespace relvane::spreadsheet
