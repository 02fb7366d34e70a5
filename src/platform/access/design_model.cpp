#include "access/design_model.h"

#include "access/model_class.h"

namespace relvane::access {
namespace {

constexpr int groupLevelNotFound = 2464;

// An object of a design is its own list of properties.
template <class Base>
class ModelObject : public Base, private access::Properties {
public:
    explicit ModelObject(const DesignObject& object) : object_(&object), class_(&ModelClass::of(object)) {}

    Value operator()(TextView name) const override { return class_->value(*object_, name); }
    const access::Properties& Properties() const override { return *this; }

protected:
    const DesignObject& object() const { return *object_; }

private:
    int Count() const override { return class_->count(); }
    Property Item(int position) const override { return class_->at(*object_, position); }

    const DesignObject* object_;
    const ModelClass* class_;
};

using ModelLevel = ModelObject<Object>;

class ModelControl : public ModelObject<Control> {
public:
    using ModelObject::ModelObject;
    Text Name() const override { return object().name(); }
    int ControlType() const override { return controlTypeOf(object().type()); }
};

template <class Base>
class ModelDesign : public ModelObject<Base> {
public:
    ModelDesign(std::shared_ptr<const Design> design, Text name, ModuleLoader loadModule)
        : ModelObject<Base>(design->root()),
          design_(std::move(design)),
          name_(std::move(name)),
          loadModule_(std::move(loadModule)) {
        std::vector<std::shared_ptr<Control>> controls;
        controls.reserve(design_->controls().size());
        for (const DesignObject* control : design_->controls()) {
            controls.push_back(std::make_shared<ModelControl>(*control));
        }
        controls_ = Collection<Control>(std::move(controls));
    }

    Text Name() const override { return name_; }
    void setVisible(bool visible) override { visible_ = visible; }
    bool HasModule() const override { return loadModule_ != nullptr; }
    const access::Module& Module() const override {
        if (!loadModule_) {
            throw RunTimeError(ErrorNumber::NoCurrentDatabase, name_);
        }
        if (!module_) {
            module_ = loadModule_();
        }
        return *module_;
    }
    const Collection<Control>& Controls() const override { return controls_; }

    Value operator()(TextView name) const override {
        if (equalsIgnoringCase(name, u"Name")) {
            return name_;
        }
        if (equalsIgnoringCase(name, u"Visible")) {
            return visible_;
        }
        if (equalsIgnoringCase(name, u"HasModule")) {
            return HasModule();
        }
        if (equalsIgnoringCase(name, u"Count")) {
            return std::int64_t{controls_.Count()};
        }
        return ModelObject<Base>::operator()(name);
    }

protected:
    const Design& design() const { return *design_; }

private:
    std::shared_ptr<const Design> design_;
    Text name_;
    ModuleLoader loadModule_;
    mutable std::shared_ptr<const access::Module> module_; // from the first question on
    bool visible_ = true;
    Collection<Control> controls_;
};

class ModelForm : public ModelDesign<Form> {
public:
    ModelForm(std::shared_ptr<const Design> design, const Text& name, ModuleLoader loadModule,
              WindowPainter paint)
        : ModelDesign(std::move(design), name, std::move(loadModule)), paint_(std::move(paint)) {}

    Picture picture(bool wholeWindow) const override {
        return paint_ ? paint_(wholeWindow) : Form::picture(wholeWindow);
    }

private:
    WindowPainter paint_;
};

class ModelReport : public ModelDesign<Report> {
public:
    ModelReport(std::shared_ptr<const Design> design, const Text& name, ModuleLoader loadModule)
        : ModelDesign(std::move(design), name, std::move(loadModule)) {
        for (const DesignObject* level : this->design().groupLevels()) {
            levels_.push_back(std::make_unique<ModelLevel>(*level));
        }
    }

    const Object& GroupLevel(int level) const override {
        if (level < 0 || static_cast<std::size_t>(level) >= levels_.size()) {
            throw RunTimeError(groupLevelNotFound, u"グループ レベルが見つかりません。 (" +
                                                       toText(static_cast<long long>(level)) + u")");
        }
        return *levels_[static_cast<std::size_t>(level)];
    }

private:
    std::vector<std::unique_ptr<ModelLevel>> levels_;
};

} // namespace

std::shared_ptr<Form> openForm(std::shared_ptr<const Design> design, const Text& name,
                               ModuleLoader loadModule, WindowPainter paint) {
    return std::make_shared<ModelForm>(std::move(design), name, std::move(loadModule), std::move(paint));
}

std::shared_ptr<Report> openReport(std::shared_ptr<const Design> design, const Text& name,
                                   ModuleLoader loadModule) {
    return std::make_shared<ModelReport>(std::move(design), name, std::move(loadModule));
}

} // namespace relvane::access
