// What every control of a window has, as the program's logic sees it. Controls hold the state; a front end
// shows it and hands the user's actions in through the `user_...` members. Setting a property from the
// program fires no event. Lengths are twips (1/1440 inch).
#pragma once

#include <functional>

#include "base/text.h"

namespace kalvora {

class Form;

enum class ControlKind { Label, Button, ComboBox, TabStrip, Table, FloatingBox, MenuItem, Timer };

// What changed, so that a view need not repaint everything.
enum class Aspect { Content, State, Colours, Items, Selection, Layout, Cells, Scroll, Highlight };

struct Modifiers {
    bool shift = false, ctrl = false, alt = false;
    friend bool operator==(const Modifiers&, const Modifiers&) = default;
};

struct Key {
    Text code; // "F5", "Z", "Pos1", "Bild-ab", "Esc", "Eingabe"
    Modifiers mods;
};

class Control {
public:
    // `index` 0: the control stands alone; otherwise it is one of an array ("cmdAuswahl(8)").
    Control(Form& form, ControlKind kind, Text name, int index = 0);
    virtual ~Control() = default;
    Control(const Control&) = delete;
    Control& operator=(const Control&) = delete;

    Form& form() const { return form_; }
    ControlKind kind() const { return kind_; }
    const Text& name() const { return name_; }
    int index() const { return index_; }
    Text full_name() const;   // "cmdAuswahl(8)"
    Text object_name() const; // "cmdAuswahl_8", the name in a layout file

    bool visible() const { return visible_; }
    bool enabled() const { return enabled_; }
    void set_visible(bool visible) { assign(visible_, visible, Aspect::State); }
    void set_enabled(bool enabled) { assign(enabled_, enabled, Aspect::State); }
    bool reachable() const { return visible_ && enabled_; } // by a hand

protected:
    void changed(Aspect aspect);
    template <class T>
    void assign(T& member, T value, Aspect aspect) {
        if (member == value) return;
        member = std::move(value);
        changed(aspect);
    }
    // Runs a handler through the window's border; nothing reaches logic while the program is busy.
    bool fire(const std::function<void()>& handler);

private:
    Form& form_;
    ControlKind kind_;
    Text name_;
    int index_;
    bool visible_ = true;
    bool enabled_ = true;
};

} // namespace kalvora
