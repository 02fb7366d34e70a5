// The binary values of designs, made by rule: pictures, palettes, printer settings, an embedded object.
#pragma once

#include "platform/value.h"

namespace relvane::samples {

// PictureData of a bitmap: header, colours (of 1, 4 and 8 bits a pixel), and a picture of a frame, a disc and stripes
// in them. `bits` is 1, 4, 8 or 24.
Bytes bitmapPicture(int width, int height, int bits);

// The same of a pale weave, to be repeated as a ground.
Bytes groundPicture(int width, int height, int bits);

// PictureData of an enhanced metafile that draws a frame and an ellipse. The size is in hundredths of a millimetre.
Bytes metafilePicture(int width, int height);

// ObjectPalette and PaintPalette: the colours that bitmapPicture uses, 16 at most.
Bytes paletteOf(int colours);

// Lengths in twips.
struct PageSettings {
    int left = 567, top = 567, right = 567, bottom = 567; // margins
    int itemWidth = 0, itemHeight = 0;                    // 0: as the design has it
    int itemsAcross = 1, columnSpacing = 0, rowSpacing = 0;
    bool downFirst = false;
};
Bytes printerLayout(const PageSettings& page);                                      // PrtMip
Bytes printerMode(TextView printer, bool landscape, int codePage);                  // PrtDevMode
Bytes printerNames(TextView driver, TextView printer, TextView port, int codePage); // PrtDevNames

// OleData: a compound file without streams, and a cached picture of `presentation` bytes behind it.
Bytes embeddedObject(std::size_t presentation);

} // namespace relvane::samples
