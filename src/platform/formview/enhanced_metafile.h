// Enhanced metafiles, drawn by the library that Debian has for them.
#pragma once

#include <optional>

#include <QImage>

#include "access/design_data.h"

namespace relvane::formview {

constexpr std::size_t longestMetafile = 16 * 1024 * 1024; // bytes

// The picture at that size, transparent where nothing is drawn. Nothing for bytes that the library cannot read.
std::optional<QImage> enhancedMetafileImage(access::ByteView metafile, QSize size);

} // namespace relvane::formview
