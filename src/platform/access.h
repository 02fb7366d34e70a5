// Access as the analyses drive it: an application with one current database, whose forms and reports can be opened in
// design view and read. One realisation reads the target's own designs from the file (the access library), others show
// the reports of the work database (a preview window, PDF files).
//
// Names are the object model's. A property is asked by name (without regard to case), or by its position in
// Properties, which is 0-based and differs with type and place of the control. Values: Boolean properties are
// Booleans, measures twips, texts never Null.
#pragma once

#include <cstdint>
#include <memory>

#include "platform/collection.h"
#include "platform/picture.h"
#include "platform/text.h"
#include "platform/value.h"

namespace relvane::access {

enum View { acViewNormal = 0, acViewDesign = 1, acViewPreview = 2 };
enum ObjectType { acForm = 2, acReport = 3, acMacro = 4, acModule = 5 };
enum CloseSave { acSaveNo = 2 };

struct Property {
    Text Name;
    relvane::Value Value;
};

// The properties of one object in the order of the object model.
class Properties {
public:
    virtual ~Properties() = default;
    virtual int Count() const = 0;
    // From Count on: what later versions added, then empty names with empty texts. An unknown place is empty too.
    virtual Property Item(int position) const = 0;
};

// What forms, reports, sections, group levels and controls share.
class Object {
public:
    virtual ~Object() = default;
    // The property of that name. Error 438 when objects of this class do not have it.
    virtual Value operator()(TextView name) const = 0;
    virtual const access::Properties& Properties() const = 0;
};

class Control : public Object {
public:
    virtual Text Name() const = 0;
    virtual int ControlType() const = 0; // 100 label, 101 rectangle ... 124 page
};

// The VBA source of one form, report or module. Lines count from 1; what is given back lives as long as the module.
// A kind of procedure is vbext_ProcKind: 0 Sub or Function, 1 Property Let, 2 Property Set, 3 Property Get.
class Module {
public:
    virtual ~Module() = default;
    virtual std::int32_t CountOfLines() const = 0;            // with the blank ones
    virtual std::int32_t CountOfDeclarationLines() const = 0; // ahead of the first procedure
    // `count` lines from `line` on, untrimmed, CR LF between them; empty for lines that are not there.
    virtual TextView Lines(std::int32_t line, std::int32_t count) const = 0;
    // The procedure that the line belongs to, and its kind; empty and 0 for the declarations.
    virtual TextView ProcOfLine(std::int32_t line, std::int32_t& kind) const = 0;
    // Names are looked up without regard to case. Kind 0 finds a property too: its first procedure. Error 35 for a
    // procedure that is not there.
    virtual std::int32_t ProcStartLine(TextView name,
                                       std::int32_t kind) const = 0; // with the remarks above it
    virtual std::int32_t ProcBodyLine(TextView name, std::int32_t kind) const = 0; // of its header
    virtual std::int32_t ProcCountLines(TextView name,
                                        std::int32_t kind) const = 0; // no name: the declarations
    virtual std::int32_t
    Type() const = 0; // 0 standard module, 1 class module, those of forms and reports too
};

// A form or report that is open.
class Designed : public Object {
public:
    virtual Text Name() const = 0;
    virtual void setVisible(bool visible) = 0;
    virtual bool HasModule() const = 0;
    virtual const access::Module& Module() const = 0; // error 2467 without one, 3049 for a damaged one
    virtual const Collection<Control>&
    Controls() const = 0; // section by section, a control before what it holds
};

class Form : public Designed {
public:
    // What its window shows, with the title bar around it or the client area alone. Error 438 where forms are not
    // drawn.
    virtual Picture picture(bool wholeWindow) const;
};

class Report : public Designed {
public:
    virtual const Object& GroupLevel(int level) const = 0; // error 2464 when the report has no such level
};

// The commands of an application.
class DoCmd {
public:
    virtual ~DoCmd() = default;

    // Opens a form in design view or, acViewNormal, with its data. Error 2102 for one that does not exist, 3049 for one
    // whose design is damaged, 2450 for one whose data depend on another form. An application that only shows
    // reports has none.
    virtual void OpenForm(const Text& name, View view);
    // acViewDesign opens for reading (2103, 3049 likewise), acViewPreview shows the report, acViewNormal sends it to
    // the printer (2202 without one).
    virtual void OpenReport(const Text& name, View view) = 0;
    virtual void Close(ObjectType type, const Text& name,
                       CloseSave save); // of what is not open: nothing happens
    virtual void RepaintObject(ObjectType type, const Text& name);
    virtual void Maximize() = 0;
    virtual void Minimize(); // the window that has the focus

    // Opens a module for reading, one that a conversion made too. Error 2516 for one that does not exist, 3049 for one
    // whose source is damaged.
    virtual void OpenModule(const Text& name);
    // Selects the object in the database window. Error 2544 for one that does not exist.
    virtual void SelectObject(ObjectType type, const Text& name, bool inDatabaseWindow);
    // A command of a menu by the numbers of Access. There is one, 9, 0, 5, 0, 70: it converts the selected macro to a
    // module named "変換するﾏｸﾛ : " and the macro's name, which lives in the application alone, until it is deleted. Its two
    // dialogs take the keys that SendKeys has queued. Error 2046 where the command is not at hand, 2501 when nothing
    // answers the dialogs, 3049 for a macro that is damaged.
    virtual void DoMenuItem(int menuBar, int menuName, int command, int subcommand, int version);
    // Of what a conversion made. Error 7874 for an object that does not exist, 3027 for one of the file: the target is
    // never changed.
    virtual void DeleteObject(ObjectType type, const Text& name);
};

// An instance. Releasing the last owner closes what it shows.
class Application {
public:
    virtual ~Application() = default;

    // 7866 for a file older than Access 97, and the numbers of opening a database (3024, 3031, 3343 ...).
    virtual void OpenCurrentDatabase(const Text& path, bool exclusive) = 0;
    virtual void CloseCurrentDatabase() = 0; // 2467 when there is none
    virtual access::DoCmd& DoCmd() = 0;
    virtual void setVisible(bool visible) = 0;

    // What is open. They live until they are closed. Errors 2450 and 2451 for a name that is not open.
    virtual Form& Forms(const Text& name);
    virtual Report& Reports(const Text& name);
    virtual Module& Modules(const Text& name); // error 7961

    // Queues keystrokes for the dialogs of the next menu command. "{ENTER}" closes one.
    virtual void SendKeys(const Text& keys);
};

} // namespace relvane::access
