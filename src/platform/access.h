// Access as the analyses drive it: an application with one current database, whose forms and reports can be opened in
// design view and read. One realisation reads the target's own designs from the file (the access library), others show
// the reports of the work database (a preview window, PDF files).
//
// Names are the object model's. A property is asked by name (without regard to case), or by its position in
// Properties, which is 0-based and differs with type and place of the control. Values: Boolean properties are
// Booleans, measures twips, texts never Null.
#pragma once

#include <memory>

#include "platform/collection.h"
#include "platform/text.h"
#include "platform/value.h"

namespace relvane::access {

enum View { acViewNormal = 0, acViewDesign = 1, acViewPreview = 2 };
enum ObjectType { acForm = 2, acReport = 3 };
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
    // Behind the last position: an empty name with an empty text. A place whose property is not known likewise.
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

// A form or report that is open.
class Designed : public Object {
public:
    virtual Text Name() const = 0;
    virtual void setVisible(bool visible) = 0;
    virtual bool HasModule() const = 0;
    virtual const Collection<Control>&
    Controls() const = 0; // section by section, a control before what it holds
};

class Form : public Designed {};

class Report : public Designed {
public:
    virtual const Object& GroupLevel(int level) const = 0; // error 2464 when the report has no such level
};

// The commands of an application.
class DoCmd {
public:
    virtual ~DoCmd() = default;

    // Opens a form in design view. Error 2102 for one that does not exist, 3049 for one whose design is damaged.
    // An application that only shows reports has none.
    virtual void OpenForm(const Text& name, View view);
    // acViewDesign opens for reading (2103, 3049 likewise), acViewPreview shows the report, acViewNormal sends it to
    // the printer (2202 without one).
    virtual void OpenReport(const Text& name, View view) = 0;
    virtual void Close(ObjectType type, const Text& name,
                       CloseSave save); // of what is not open: nothing happens
    virtual void Maximize() = 0;
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
};

} // namespace relvane::access
