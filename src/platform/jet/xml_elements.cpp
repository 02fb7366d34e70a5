#include "jet/xml_elements.h"

#include <algorithm>

namespace relvane::jet {
namespace {

constexpr std::string_view blanks = " \t\r\n";

void skipBlanks(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
}

std::string_view takeUntil(std::string_view& text, std::string_view stops) {
    const std::string_view taken = text.substr(0, text.find_first_of(stops));
    text.remove_prefix(taken.size());
    return taken;
}

std::string_view withoutPrefix(std::string_view name) {
    return name.substr(name.find(':') + 1); // npos + 1 is 0
}

// name="value" or name='value'; false at anything else.
bool takeAttribute(std::string_view& text, XmlElement& element) {
    skipBlanks(text);
    const std::string_view name = takeUntil(text, " \t\r\n=/<>\"'");
    skipBlanks(text);
    if (name.empty() || !text.starts_with('=')) {
        return false;
    }
    text.remove_prefix(1);
    skipBlanks(text);
    if (!text.starts_with('"') && !text.starts_with('\'')) {
        return false;
    }
    const std::string_view quote = text.substr(0, 1);
    text.remove_prefix(1);
    const std::string_view value = takeUntil(text, quote);
    if (text.empty()) { // it does not end: what is there is not the value
        return false;
    }
    text.remove_prefix(1);
    element.attributes.emplace_back(name, value);
    return true;
}

} // namespace

std::string_view XmlElement::attribute(std::string_view wanted) const {
    const auto found = std::ranges::find(attributes, wanted, [](const auto& pair) { return pair.first; });
    return found == attributes.end() ? std::string_view() : found->second;
}

std::vector<XmlElement> readXmlElements(std::string_view text) {
    std::vector<XmlElement> elements;
    for (std::size_t tag = text.find('<'); tag != std::string_view::npos; tag = text.find('<')) {
        text.remove_prefix(tag + 1);
        XmlElement element;
        element.name = withoutPrefix(takeUntil(text, " \t\r\n/<>")); // empty behind "</"
        while (takeAttribute(text, element)) {
        }
        elements.push_back(std::move(element));
    }
    return elements;
}

} // namespace relvane::jet
