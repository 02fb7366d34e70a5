// Colours as designs store them, on a screen with the standard colours of Windows 98.
#pragma once

#include <cstdint>

#include <QColor>

namespace relvane::formview {

// The parts of the screen that have a colour, by the numbers of the system.
enum class ScreenPart : std::uint8_t {
    ScrollBar,
    Desktop,
    ActiveCaption,
    InactiveCaption,
    Menu,
    Window,
    WindowFrame,
    MenuText,
    WindowText,
    CaptionText,
    ActiveBorder,
    InactiveBorder,
    Workspace, // behind the windows of an application
    Highlight,
    HighlightText,
    ButtonFace,
    ButtonShadow,
    GrayText,
    ButtonText,
    InactiveCaptionText,
    ButtonHighlight,
    DarkShadow,
    Light,
    InfoText,
    InfoBack,
    Unused,
    HotLight,
    ActiveCaptionEnd, // to which the colour of a title bar runs
    InactiveCaptionEnd,
};

QColor colourOf(ScreenPart part);

// Red + 256 green + 65536 blue; a negative one is a part of the screen, whose number stands in the low byte. A number
// that no part has is black, as there.
QColor colourOf(std::int32_t stored);

} // namespace relvane::formview
