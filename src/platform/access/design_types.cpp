#include "access/design_types.h"

#include <algorithm>
#include <array>

namespace relvane::access {
namespace {

struct NamedType {
    DesignType type;
    TextView name;
};

constexpr NamedType named[] = {
    {DesignType::Label, u"Label"},
    {DesignType::Rectangle, u"Rectangle"},
    {DesignType::Line, u"Line"},
    {DesignType::Image, u"Image"},
    {DesignType::CommandButton, u"CommandButton"},
    {DesignType::OptionButton, u"OptionButton"},
    {DesignType::CheckBox, u"CheckBox"},
    {DesignType::OptionGroup, u"OptionGroup"},
    {DesignType::BoundObjectFrame, u"BoundObjectFrame"},
    {DesignType::TextBox, u"TextBox"},
    {DesignType::ListBox, u"ListBox"},
    {DesignType::ComboBox, u"ComboBox"},
    {DesignType::Subform, u"Subform"},
    {DesignType::Chart, u"Chart"},
    {DesignType::UnboundObjectFrame, u"UnboundObjectFrame"},
    {DesignType::PageBreak, u"PageBreak"},
    {DesignType::CustomControl, u"CustomControl"},
    {DesignType::PaletteButton, u"PaletteButton"},
    {DesignType::ToggleButton, u"ToggleButton"},
    {DesignType::Tab, u"Tab"},
    {DesignType::Page, u"Page"},
    {DesignType::Attachment, u"Attachment"},
    {DesignType::EmptyCell, u"EmptyCell"},
    {DesignType::WebBrowser, u"WebBrowser"},
    {DesignType::NavigationControl, u"NavigationControl"},
    {DesignType::NavigationButton, u"NavigationButton"},
    {DesignType::ModernChart, u"ModernChart"},
    {DesignType::Edge, u"Edge"},
    {DesignType::Form, u"Form"},
    {DesignType::Report, u"Report"},
    {DesignType::Section, u"Section"},
    {DesignType::FormHeader, u"FormHeader"},
    {DesignType::FormFooter, u"FormFooter"},
    {DesignType::PageHeader, u"PageHeader"},
    {DesignType::PageFooter, u"PageFooter"},
    {DesignType::BreakHeader, u"BreakHeader"},
    {DesignType::BreakFooter, u"BreakFooter"},
    {DesignType::BreakLevel, u"BreakLevel"},
};

constexpr auto types = [] {
    std::array<DesignType, std::size(named)> all{};
    std::ranges::transform(named, all.begin(), &NamedType::type);
    return all;
}();

} // namespace

TextView nameOf(DesignType type) {
    const auto* found = std::ranges::find(named, type, &NamedType::type);
    return found == std::end(named) ? TextView() : found->name;
}

bool isKnown(DesignType type) {
    return !nameOf(type).empty();
}

std::span<const DesignType> knownTypes() {
    return types;
}

} // namespace relvane::access
