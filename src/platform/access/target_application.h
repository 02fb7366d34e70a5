// Access opened on a target: the application whose current database is the file under analysis.
#pragma once

#include <memory>

#include "access/form_painter.h"
#include "access/target_opener.h"

namespace relvane::access {

// A new instance without a database; `open` opens the one it will have, by default without a password and with no
// link, and `newPainter` draws its forms: without it they have no picture (438), and no form tells of another that it
// needs.
//
// OpenCurrentDatabase refuses a file that an Access before 97 has written (7866), whatever DAO says to it, and
// a second database beside an open one (7867); else it opens what openDatabase opens, with the errors of that.
// CloseCurrentDatabase without a database is 2467.
//
// Forms open in design view or to use them, reports in design view alone (5 for another view). What is open already
// stays as it is, but for the view of a form, and stays open until it or the database is closed. Files of every version
// are read alike; a design or macro of a version that nobody knows is 3343.
//
// The command that converts a macro takes the macro that is selected in the database window; whatever opens another
// window, the command itself included, takes the selection away, as the database window loses the focus. It has two
// dialogs, so that two {ENTER} must have been queued; what is queued is gone when the command ends in an error too. A
// module that is converted again replaces the one from before, and hides a module of the file that has its name.
// Deleting one that is open closes it.
//
// A form that is not open cannot be selected in its window or repainted (2489).
std::shared_ptr<Application> newTargetApplication(OpenTarget open = {}, NewFormPainter newPainter = {});

} // namespace relvane::access
