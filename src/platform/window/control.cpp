#include "platform/window/control.h"

#include "base/fehler.h"
#include "platform/window/application.h"

namespace kalvora {

Control::Control(Form& form, ControlKind kind, Text name, int index)
    : form_(form), kind_(kind), name_(std::move(name)), index_(index) {
    if (form.find(name_, index))
        throw Laufzeitfehler(457, u"Steuerelement doppelt: " + form.name() + u"." + full_name());
    form.controls_.push_back(this);
}

Text Control::full_name() const {
    return index_ == 0 ? name_ : name_ + u"(" + ziffern(index_) + u")";
}

Text Control::object_name() const {
    return index_ == 0 ? name_ : name_ + u"_" + ziffern(index_);
}

void Control::changed(Aspect aspect) {
    if (form_.view()) form_.view()->control_changed(*this, aspect);
}

bool Control::fire(const std::function<void()>& handler) {
    return form_.app().event(form_, handler);
}

} // namespace kalvora
