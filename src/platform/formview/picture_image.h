// Between the pictures of the program and the images that Qt draws on.
#pragma once

#include <QImage>

#include "platform/picture.h"

namespace relvane::formview {

QImage imageOf(const Picture& picture);
Picture pictureOf(const QImage& image);

} // namespace relvane::formview
