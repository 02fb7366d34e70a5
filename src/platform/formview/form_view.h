// Forms of a target as pictures: what Access would have shown of them under Windows 98, drawn from their designs alone.
// A QGuiApplication must exist.
#pragma once

#include <memory>

#include "platform/dao.h"
#include "platform/picture.h"

namespace relvane::formview {

class FormTarget;

struct FormViewOptions {
    bool design = false;      // as the designer shows it; else in use, with its first record
    bool wholeWindow = false; // with frame and title bar; else the client area alone
};

// Draws the forms of one database. Designs are read when a form is drawn, those of subforms too.
//
// In use a form shows values where its record source is a table, or a selection of plain columns from tables and such
// selections that are joined by equal fields; what would need more of a query engine stays blank.
class FormView {
public:
    // `target` is what jet::openDatabase opened; the file must stay open as long as the view.
    explicit FormView(dao::Database& target);
    ~FormView();

    // What opening the form to use it would raise: 2102 there is no such form, 3049 its design is damaged, 3343 it
    // cannot be read, 2450 its record source refers to another form.
    void requireOpens(const Text& form);

    // The errors of requireOpens; in design view without 2450. A damaged subform, picture or table leaves its place
    // empty. No side is longer than `longestSide`.
    Picture draw(const Text& form, const FormViewOptions& options = {});

private:
    std::unique_ptr<FormTarget> target_;
};

constexpr int longestSide = 2400; // pixels; forms of Access end at 22 inches, 2112 pixels

} // namespace relvane::formview
