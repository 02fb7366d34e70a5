// What lies inside the binary properties of a design. Each reader gives nothing for bytes that are not what its
// property holds: such a value is shown as the bytes it is, and the design around it is not damaged by it.
#pragma once

#include <array>
#include <optional>
#include <span>
#include <vector>

#include "access/macro_sheet.h"
#include "platform/text.h"

namespace relvane::access {

using ByteView = std::span<const std::uint8_t>;

// PictureData. The parts point into the bytes that were given.
struct PictureData {
    enum class Format {
        Bitmap, // BITMAPINFOHEADER, colours, bits; no file header; on buttons further data may follow
        EnhancedMetafile, // its header and records
        Metafile,         // an old metafile, without the header of its files
    };
    Format format{};
    ByteView data;
    std::int32_t width = 0,
                 height = 0;       // pixels; of a metafile hundredths of a millimetre, as its head has them
    std::uint16_t bits = 0;        // per pixel
    std::uint32_t compression = 0; // of a bitmap; 0 is none
    std::int32_t mappingMode = 0;  // of an old metafile
};
std::optional<PictureData> readPictureData(ByteView bytes);

// PaintPalette and ObjectPalette.
struct PaletteColour {
    std::uint8_t red = 0, green = 0, blue = 0, flags = 0;
};
std::optional<std::vector<PaletteColour>> readPalette(ByteView bytes);

// PrtMip: the page as a report is laid out on it. Lengths in twips.
struct PrinterLayout {
    std::int32_t left = 0, top = 0, right = 0, bottom = 0; // margins
    bool dataOnly = false;
    std::int32_t itemWidth = 0, itemHeight = 0;
    bool defaultSize = false;
    std::int32_t itemsAcross = 0, columnSpacing = 0, rowSpacing = 0;
    std::int32_t itemLayout = 0; // 1953 across, then down; 1954 down, then across
    bool fastPrinting = false, datasheet = false;
};
std::optional<PrinterLayout> readPrinterLayout(ByteView bytes);

// PrtDevMode: the settings of the printer's driver, of which only the printer's name is read.
struct PrinterMode {
    Text deviceName;
    ByteView settings; // behind the name
};
std::optional<PrinterMode> readPrinterMode(ByteView bytes, int codePage);

// PrtDevNames.
struct PrinterNames {
    Text driver, device, port;
    bool isDefault = false;
};
std::optional<PrinterNames> readPrinterNames(ByteView bytes, int codePage);

// A macro that a form or report keeps for one of its events. Texts are UTF-16, or of the code page in older ones.
std::optional<MacroSheet> readEmbeddedMacro(ByteView bytes, int codePage);

// OleData: a compound file, and the picture that is shown without the object's program.
struct OleData {
    ByteView compoundFile, presentation;
};
std::optional<OleData> readOleData(ByteView bytes);

} // namespace relvane::access
