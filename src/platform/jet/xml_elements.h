// The elements of a small XML text with their attributes. No document types, entities or nesting: what such a text
// needs beyond that is not read, and what is no XML gives no elements.
#pragma once

#include <string_view>
#include <utility>
#include <vector>

namespace relvane::jet {

// Views into the text.
struct XmlElement {
    std::string_view name; // without its prefix
    std::vector<std::pair<std::string_view, std::string_view>> attributes;

    std::string_view attribute(std::string_view wanted) const; // empty when there is none
};

std::vector<XmlElement> readXmlElements(std::string_view text);

} // namespace relvane::jet
