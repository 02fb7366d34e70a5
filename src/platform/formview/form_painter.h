// The drawing of forms as an application takes it.
#pragma once

#include "access/form_painter.h"

namespace relvane::formview {

// Draws the forms of the database with a FormView. Make it when there is a QGuiApplication.
std::unique_ptr<access::FormPainter> newFormPainter(dao::Database& target);

} // namespace relvane::formview
