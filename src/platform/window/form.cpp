#include "platform/window/form.h"

#include "platform/window/application.h"

namespace kalvora {

void Form::set_title(Text title) {
    if (title == title_) return;
    title_ = std::move(title);
    if (view_) view_->title_changed();
}

void Form::set_font(Text font) {
    if (font == font_) return;
    font_ = std::move(font);
    if (view_) view_->font_changed();
}

Control* Form::find(TextView name, int index) const {
    for (Control* control : controls_)
        if (control->index() == index && control->name() == name) return control;
    return nullptr;
}

namespace {

Button* first_button(const std::vector<Control*>& controls, bool (Button::*is)() const) {
    for (Control* control : controls)
        if (control->kind() == ControlKind::Button && (static_cast<Button*>(control)->*is)())
            return static_cast<Button*>(control);
    return nullptr;
}

} // namespace

Button* Form::default_button() const {
    return first_button(controls_, &Button::is_default);
}

Button* Form::cancel_button() const {
    return first_button(controls_, &Button::is_cancel);
}

bool Form::user_key(const Key& key) {
    bool handled = false;
    app_.event(*this, [&] { handled = on_key && on_key(key); });
    return handled;
}

bool Form::user_close() {
    bool closed = false;
    app_.event(*this, [&] { closed = !on_query_close || on_query_close(); });
    return closed;
}

void Form::user_resize() {
    app_.event(*this, [&] {
        if (on_resize) on_resize();
    });
}

} // namespace kalvora
