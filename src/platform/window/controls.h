// The kinds of controls, all but the table (table.h). Texts are plain text; "&" in a caption marks the
// mnemonic.
#pragma once

#include <vector>

#include "base/farbe.h"
#include "platform/window/control.h"

namespace kalvora {

class Label : public Control {
public:
    Label(Form& form, Text name, int index = 0) : Control(form, ControlKind::Label, std::move(name), index) {}
    const Text& text() const { return text_; }
    void set_text(Text text) { assign(text_, std::move(text), Aspect::Content); }

private:
    Text text_;
};

class Button : public Control {
public:
    Button(Form& form, Text name, int index = 0)
        : Control(form, ControlKind::Button, std::move(name), index) {}
    const Text& caption() const { return caption_; }
    void set_caption(Text caption) { assign(caption_, std::move(caption), Aspect::Content); }
    bool mnemonics() const { return mnemonics_; } // false: "&" in the caption is a plain character
    void set_mnemonics(bool on) { assign(mnemonics_, on, Aspect::Content); }
    bool coloured() const { return coloured_; }
    Farbe back() const { return back_; }
    Farbe fore() const { return fore_; }
    void set_colours(Farbe fore, Farbe back);
    // What Enter and Esc press in the window, wherever the focus is; a focused button keeps Enter for itself.
    bool is_default() const { return default_; }
    bool is_cancel() const { return cancel_; }
    void set_default(bool on) { assign(default_, on, Aspect::State); }
    void set_cancel(bool on) { cancel_ = on; }
    int width() const { return width_; } // 0: as the layout has it
    void set_width(int twips) { assign(width_, twips, Aspect::Layout); }

    std::function<void(Modifiers)> on_click;
    bool user_click(Modifiers = {}); // false: refused

private:
    Text caption_;
    bool mnemonics_ = true, coloured_ = false, default_ = false, cancel_ = false;
    Farbe back_ = 0, fore_ = 0;
    int width_ = 0;
};

class ComboBox : public Control {
public:
    ComboBox(Form& form, Text name, int index = 0)
        : Control(form, ControlKind::ComboBox, std::move(name), index) {}
    const std::vector<Text>& items() const { return items_; }
    void set_items(std::vector<Text> items);   // a choice beyond the last item becomes none
    int selected() const { return selected_; } // from 0; -1 none
    void set_selected(int item) { assign(selected_, item, Aspect::Selection); }

    std::function<void()> on_select;
    bool user_select(int item);

private:
    std::vector<Text> items_;
    int selected_ = -1;
};

class TabStrip : public Control {
public:
    TabStrip(Form& form, Text name, int index = 0)
        : Control(form, ControlKind::TabStrip, std::move(name), index) {}
    const std::vector<Text>& captions() const { return captions_; }
    void set_captions(std::vector<Text> captions);
    int selected() const { return selected_; } // from 0
    void set_selected(int tab) { assign(selected_, tab, Aspect::Selection); }
    bool tab_enabled(int tab) const;
    void set_tab_enabled(int tab, bool enabled);

    std::function<void(int before)> on_change;
    std::function<bool(int step)> on_arrow; // Left is -1, Right +1; false: the strip's own behaviour
    bool user_select(int tab);
    bool user_arrow(int step);

private:
    std::vector<Text> captions_;
    std::vector<bool> disabled_;
    int selected_ = 0;
};

// The floating box over a window: a label at a place, gone with the next mouse press. The label's text is the
// box's, and it is visible together with the box.
class FloatingBox : public Control {
public:
    FloatingBox(Form& form, Text name, Label& label);
    const Text& text() const { return label_.text(); }
    // Shown below a table's cell, kept inside the window by the view.
    void show(Text text, int row, int column);
    void hide();
    int row() const { return row_; }
    int column() const { return column_; }

private:
    Label& label_;
    int row_ = 0, column_ = 0;
};

class MenuItem : public Control {
public:
    // `parent` empty: a menu of the menu bar. A caption "-" is a separator.
    MenuItem(Form& form, Text name, Text parent, Text caption, Text shortcut = {});
    const Text& caption() const { return caption_; }
    void set_caption(Text caption) { assign(caption_, std::move(caption), Aspect::Content); }
    const Text& parent() const { return parent_; }
    const Text& shortcut() const { return shortcut_; } // shown only: "Strg+P"

    std::function<void()> on_click;
    bool user_click();

private:
    Text parent_, caption_, shortcut_;
};

class Timer : public Control {
public:
    Timer(Form& form, Text name, double seconds)
        : Control(form, ControlKind::Timer, std::move(name)), seconds_(seconds) {
        set_enabled(false);
    }
    double seconds() const { return seconds_; }

    std::function<void()> on_tick;
    bool tick() { return enabled() && fire(on_tick); }

private:
    double seconds_;
};

} // namespace kalvora
