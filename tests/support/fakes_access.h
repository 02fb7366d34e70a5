// An Access application that writes down what it is told, and fails where a test wants it to; with forms and reports
// that a test puts together.
#pragma once

#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

#include "platform/access.h"
#include "platform/runtime_error.h"

namespace relvane::test {

// Properties by position: those that a test has put somewhere; the places between are empty.
class FakeProperties : public access::Properties {
public:
    void put(int position, const Text& name, const Value& value) { places_[position] = {name, value}; }
    void fail(int position, int number) { failing_[position] = number; }
    void setCount(int count) { count_ = count; } // otherwise up to the last place that is taken

    int Count() const override {
        return count_ >= 0 ? count_ : places_.empty() ? 0 : places_.rbegin()->first + 1;
    }
    access::Property Item(int position) const override {
        if (const auto failing = failing_.find(position); failing != failing_.end()) {
            throw RunTimeError(failing->second, u"説明");
        }
        const auto found = places_.find(position);
        return found == places_.end() ? access::Property{{}, Text()} : found->second;
    }

private:
    std::map<int, access::Property> places_;
    std::map<int, int> failing_;
    int count_ = -1;
};

// What every fake shares: values by name and by position, which know nothing of each other. `Base` is an interface of
// platform/access.h.
template <class Base>
class FakeObject : public Base {
public:
    FakeObject& set(TextView name, const Value& value) {
        values_[upperCase(name)] = value;
        return *this;
    }
    FakeObject& put(int position, const Text& name, const Value& value) {
        properties.put(position, name, value);
        return *this;
    }
    FakeObject& fail(TextView name, int number) {
        failing_[upperCase(name)] = number;
        return *this;
    }

    Value operator()(TextView name) const override {
        reads.push_back(Text(name));
        if (const auto failing = failing_.find(upperCase(name)); failing != failing_.end()) {
            throw RunTimeError(failing->second, u"説明");
        }
        const auto found = values_.find(upperCase(name));
        if (found == values_.end()) {
            throw RunTimeError(ErrorNumber::PropertyNotSupported, name);
        }
        return found->second;
    }
    const access::Properties& Properties() const override { return properties; }

    FakeProperties properties;
    mutable std::vector<Text> reads; // the names that were asked for, in order

private:
    std::map<Text, Value> values_; // by the name in capitals
    std::map<Text, int> failing_;
};

// A control that answers Visible, Left, Top, Width and Height (True and 0) unless a test says otherwise.
class FakeControl : public FakeObject<access::Control> {
public:
    FakeControl(Text name, int type) : name_(std::move(name)), type_(type) {
        set(u"Name", name_).set(u"ControlType", std::int64_t{type_}).set(u"Visible", true);
        for (const TextView measure : {u"Left", u"Top", u"Width", u"Height"}) {
            set(measure, std::int64_t{0});
        }
    }
    Text Name() const override { return name_; }
    int ControlType() const override { return type_; }

private:
    Text name_;
    int type_;
};

// Has only the properties that a test sets.
template <class Base>
class FakeDesigned : public FakeObject<Base> {
public:
    explicit FakeDesigned(Text name) : name_(std::move(name)) { this->set(u"Name", name_); }

    FakeControl& add(const Text& name, int type) {
        controls_.push_back(std::make_shared<FakeControl>(name, type));
        return *controls_.back();
    }

    Text Name() const override { return name_; }
    void setVisible(bool value) override { visible = value; }
    bool HasModule() const override { return module != nullptr; }
    const access::Module& Module() const override {
        if (!module) {
            throw RunTimeError(2467, name_);
        }
        return *module;
    }
    const Collection<access::Control>& Controls() const override {
        if (collection_.Count() != static_cast<int>(controls_.size())) {
            collection_ = Collection<access::Control>({controls_.begin(), controls_.end()});
        }
        return collection_;
    }

    bool visible = true;
    std::shared_ptr<access::Module> module;

private:
    Text name_;
    std::vector<std::shared_ptr<FakeControl>> controls_;
    mutable Collection<access::Control> collection_;
};

class FakeForm : public FakeDesigned<access::Form> {
public:
    using FakeDesigned::FakeDesigned;

    Picture picture(bool wholeWindow) const override {
        pictured.push_back(wholeWindow);
        return shown;
    }

    Picture shown{1, 1, {0x123456}};
    mutable std::vector<bool> pictured; // whether with the window around it, each time
};

using FakeLevel = FakeObject<access::Object>;

class FakeReport : public FakeDesigned<access::Report> {
public:
    using FakeDesigned::FakeDesigned;

    FakeLevel& addLevel() {
        levels_.push_back(std::make_unique<FakeLevel>());
        return *levels_.back();
    }
    const access::Object& GroupLevel(int level) const override {
        asked.push_back(level);
        if (level < 0 || static_cast<std::size_t>(level) >= levels_.size()) {
            throw RunTimeError(2464, u"グループ レベルがありません。");
        }
        return *levels_[static_cast<std::size_t>(level)];
    }

    mutable std::vector<int> asked;

private:
    std::vector<std::unique_ptr<FakeLevel>> levels_;
};

// The forms or the reports of a target: those that exist, and which of them are open.
template <class Fake>
class FakeDesigns {
public:
    Fake& add(const Text& name) {
        auto& design = all_[upperCase(name)];
        design = std::make_unique<Fake>(name);
        return *design;
    }
    bool isOpen(const Text& name) const { return open_.contains(upperCase(name)); }
    int countOpen() const { return static_cast<int>(open_.size()); }

    void open(const Text& name, int notFound) {
        if (!all_.contains(upperCase(name))) {
            throw RunTimeError(notFound, name);
        }
        open_.insert(upperCase(name));
    }
    Fake& item(const Text& name, int notOpen) const {
        if (!isOpen(name)) {
            throw RunTimeError(notOpen, name);
        }
        return *all_.at(upperCase(name));
    }
    void close(const Text& name) { open_.erase(upperCase(name)); }
    void closeAll() { open_.clear(); }

private:
    std::map<Text, std::unique_ptr<Fake>> all_; // by the name in capitals
    std::set<Text> open_;
};

// Shared by all applications of one kind: "New", "Open PATH", "Close", "OpenForm NAME 1", "OpenReport NAME 2",
// "OpenModule NAME", "CloseObject 2 NAME 2", "SelectObject 4 NAME 1", "SendKeys KEYS", "DoMenuItem 9 0 5 0 70", "DeleteObject 5
// NAME", "RepaintObject 2 NAME", "Maximize", "Minimize", "Visible 1", "Release", in order; and what their database holds.
struct ApplicationLog {
    std::vector<Text> calls;
    std::map<Text, int> failing; // first word of a call -> error number it ends with, each time
    int alive = 0;
    FakeDesigns<FakeForm> forms;
    FakeDesigns<FakeReport> reports;
    std::map<Text, std::shared_ptr<access::Module>> modules; // those of the Modules container, by name
    std::map<Text, std::shared_ptr<access::Module>>
        conversions; // what the conversion of a macro makes, by macro

    void call(const Text& what) {
        calls.push_back(what);
        if (const auto found = failing.find(what.substr(0, what.find(u' '))); found != failing.end()) {
            throw RunTimeError(found->second, u"説明");
        }
    }
};

class FakeApplication : public access::Application, public access::DoCmd {
public:
    explicit FakeApplication(ApplicationLog& log) : log_(log) {
        log_.call(u"New");
        ++log_.alive;
    }
    ~FakeApplication() override {
        log_.calls.push_back(u"Release");
        --log_.alive;
        closeAll();
    }
    void OpenCurrentDatabase(const Text& path, bool exclusive) override {
        log_.call(u"Open " + path + (exclusive ? u" exclusive" : u""));
    }
    void CloseCurrentDatabase() override {
        log_.call(u"Close");
        closeAll();
    }
    access::DoCmd& DoCmd() override { return *this; }
    void setVisible(bool visible) override { log_.call(visible ? u"Visible 1" : u"Visible 0"); }
    access::Form& Forms(const Text& name) override { return log_.forms.item(name, 2450); }
    access::Report& Reports(const Text& name) override { return log_.reports.item(name, 2451); }

    void OpenForm(const Text& name, access::View view) override {
        log_.call(u"OpenForm " + name + u" " + toText(static_cast<long long>(view)));
        log_.forms.open(name, 2102);
    }
    // Shown or printed, a report needs not be one of those that a test has made.
    void OpenReport(const Text& name, access::View view) override {
        log_.call(u"OpenReport " + name + u" " + toText(static_cast<long long>(view)));
        if (view == access::acViewDesign) {
            log_.reports.open(name, 2103);
        }
    }
    void Close(access::ObjectType type, const Text& name, access::CloseSave save) override {
        log_.call(u"CloseObject " + toText(static_cast<long long>(type)) + u" " + name + u" " +
                  toText(static_cast<long long>(save)));
        if (type == access::acModule) {
            openModules_.erase(name);
        } else {
            type == access::acForm ? log_.forms.close(name) : log_.reports.close(name);
        }
    }
    void RepaintObject(access::ObjectType type, const Text& name) override {
        log_.call(u"RepaintObject " + toText(static_cast<long long>(type)) + u" " + name);
    }
    void Maximize() override { log_.call(u"Maximize"); }
    void Minimize() override { log_.call(u"Minimize"); }

    void OpenModule(const Text& name) override {
        log_.call(u"OpenModule " + name);
        if (!log_.modules.contains(name)) {
            throw RunTimeError(2516, name);
        }
        openModules_.insert(name);
    }
    access::Module& Modules(const Text& name) override {
        if (!openModules_.contains(name)) {
            throw RunTimeError(7961, name);
        }
        return *log_.modules.at(name);
    }
    void SelectObject(access::ObjectType type, const Text& name, bool inDatabaseWindow) override {
        log_.call(u"SelectObject " + toText(static_cast<long long>(type)) + u" " + name +
                  (inDatabaseWindow ? u" 1" : u" 0"));
        selected_ = name;
    }
    void SendKeys(const Text& keys) override { log_.call(u"SendKeys " + keys); }
    void DoMenuItem(int menuBar, int menuName, int command, int subcommand, int version) override {
        Text call = u"DoMenuItem";
        for (const int number : {menuBar, menuName, command, subcommand, version}) {
            call += u" " + toText(static_cast<long long>(number));
        }
        log_.call(call);
        if (const auto found = log_.conversions.find(selected_); found != log_.conversions.end()) {
            log_.modules[u"変換するﾏｸﾛ : " + selected_] = found->second;
        }
    }
    void DeleteObject(access::ObjectType type, const Text& name) override {
        log_.call(u"DeleteObject " + toText(static_cast<long long>(type)) + u" " + name);
        log_.modules.erase(name);
        openModules_.erase(name);
    }

private:
    void closeAll() {
        log_.forms.closeAll();
        log_.reports.closeAll();
    }

    ApplicationLog& log_;
    std::set<Text> openModules_;
    Text selected_;
};

} // namespace relvane::test
