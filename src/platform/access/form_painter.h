// Who draws the forms that are open in an application. This library reads designs; it knows nothing to draw with.
#pragma once

#include <functional>
#include <memory>

#include "platform/access.h"
#include "platform/dao.h"

namespace relvane::access {

// Draws the forms of one database.
class FormPainter {
public:
    virtual ~FormPainter() = default;

    // The errors of opening the form to use it: those of OpenForm.
    virtual void requireOpens(const Text& form) = 0;
    // The form as it stands in a window: in design view, or in use with its first record.
    virtual Picture draw(const Text& form, View view, bool wholeWindow) = 0;
};

// The painter of a database, which stays open as long as the painter lives.
using NewFormPainter = std::function<std::unique_ptr<FormPainter>(dao::Database& target)>;

} // namespace relvane::access
