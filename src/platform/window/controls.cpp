#include "platform/window/controls.h"

#include "platform/window/form.h"

namespace kalvora {

void Button::set_colours(Farbe fore, Farbe back) {
    if (coloured_ && fore == fore_ && back == back_) return;
    coloured_ = true;
    fore_ = fore;
    back_ = back;
    changed(Aspect::Colours);
}

bool Button::user_click(Modifiers mods) {
    return reachable() && fire([&] {
               if (on_click) on_click(mods);
           });
}

void ComboBox::set_items(std::vector<Text> items) {
    if (selected_ >= static_cast<int>(items.size())) selected_ = -1;
    assign(items_, std::move(items), Aspect::Items);
}

bool ComboBox::user_select(int item) {
    if (!reachable() || item < 0 || item >= static_cast<int>(items_.size())) return false;
    return fire([&] {
        set_selected(item);
        if (on_select) on_select();
    });
}

void TabStrip::set_captions(std::vector<Text> captions) {
    disabled_.assign(captions.size(), false);
    assign(captions_, std::move(captions), Aspect::Items);
}

bool TabStrip::tab_enabled(int tab) const {
    return tab >= 0 && tab < static_cast<int>(disabled_.size()) && !disabled_[static_cast<size_t>(tab)];
}

void TabStrip::set_tab_enabled(int tab, bool enabled) {
    if (tab < 0 || tab >= static_cast<int>(disabled_.size())) return;
    disabled_[static_cast<size_t>(tab)] = !enabled;
    changed(Aspect::State);
}

bool TabStrip::user_select(int tab) {
    if (!reachable() || !tab_enabled(tab)) return false;
    return fire([&] {
        const int before = selected_;
        if (tab == before) return;
        set_selected(tab);
        if (on_change) on_change(before);
    });
}

bool TabStrip::user_arrow(int step) {
    if (!reachable()) return false;
    bool handled = false;
    const bool entered = fire([&] { handled = on_arrow && on_arrow(step); });
    if (!entered || handled) return entered;
    const int next = selected_ + step;
    return next < 0 || next >= static_cast<int>(captions_.size()) || user_select(next);
}

FloatingBox::FloatingBox(Form& form, Text name, Label& label)
    : Control(form, ControlKind::FloatingBox, std::move(name)), label_(label) {
    hide();
}

void FloatingBox::show(Text text, int row, int column) {
    label_.set_text(std::move(text));
    label_.set_visible(true);
    row_ = row;
    column_ = column;
    if (visible())
        changed(Aspect::Content);
    else
        set_visible(true);
}

void FloatingBox::hide() {
    label_.set_visible(false);
    set_visible(false);
}

MenuItem::MenuItem(Form& form, Text name, Text parent, Text caption, Text shortcut)
    : Control(form, ControlKind::MenuItem, std::move(name)), parent_(std::move(parent)),
      caption_(std::move(caption)), shortcut_(std::move(shortcut)) {}

bool MenuItem::user_click() {
    const auto* menu = dynamic_cast<const MenuItem*>(parent_.empty() ? nullptr : form().find(parent_));
    if (!reachable() || (menu && !menu->reachable())) return false;
    return fire([&] {
        if (on_click) on_click();
    });
}

} // namespace kalvora
