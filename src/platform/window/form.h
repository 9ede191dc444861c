// A window: a name, a title and its controls, and what the program as a whole asks of the windowing system.
#pragma once

#include <exception>
#include <memory>
#include <optional>

#include "platform/window/controls.h"
#include "platform/window/table.h"

namespace kalvora {

class Application;

enum class WindowState { Normal = 0, Minimised = 1, Maximised = 2 };

struct Geometry {
    int left = 0, top = 0, width = 0, height = 0; // twips
    friend bool operator==(const Geometry&, const Geometry&) = default;
};

// The front end's side of one window.
class FormView {
public:
    virtual ~FormView() = default;
    virtual void control_changed(Control&, Aspect) = 0;
    virtual void title_changed() = 0;
    virtual void font_changed() {}
    virtual void arrange() = 0; // sizes of tables and buttons may have changed
    virtual void paint_now() = 0;
    virtual bool row_visible(const Table&, int row) = 0;
    virtual void show_cell(Table&, int row, int col) = 0; // scrolls it into view, as the user would
    virtual void focus(Control&) = 0;
    virtual Geometry geometry() = 0;
    virtual void set_geometry(const Geometry&) = 0; // places outside the screen are ignored
    virtual WindowState state() = 0;
    virtual void set_state(WindowState) = 0;
};

class Form {
public:
    Form(Application& app, Text name) : app_(app), name_(std::move(name)) {}
    virtual ~Form() = default;
    Form(const Form&) = delete;
    Form& operator=(const Form&) = delete;

    Application& app() const { return app_; }
    const Text& name() const { return name_; }
    const Text& title() const { return title_; }
    void set_title(Text title);
    // Family of the window's letters; empty, or one that the workstation does not have: its standard one.
    const Text& font() const { return font_; }
    void set_font(Text font);
    bool modal() const { return modal_; }
    void set_modal(bool modal) { modal_ = modal; }
    const Text& tag() const { return tag_; }
    void set_tag(Text tag) { tag_ = std::move(tag); }

    const std::vector<Control*>& controls() const { return controls_; }
    // By name and index, nullptr when there is none. Case counts.
    Control* find(TextView name, int index = 0) const;

    // The buttons that Enter and Esc press, nullptr for none.
    Button* default_button() const;
    Button* cancel_button() const;

    FormView* view() const { return view_; }
    void set_view(FormView* view) { view_ = view; }

    // Where and how the view opens the window, when the program has it from an earlier run.
    std::optional<Geometry> start_geometry;
    WindowState start_state = WindowState::Normal;

    // What the user does with the window as a whole. on_query_close may refuse.
    std::function<bool()> on_query_close;
    std::function<bool(const Key&)> on_key; // false: the key goes to the control
    std::function<void()> on_resize;
    bool user_key(const Key&);
    bool user_close();
    void user_resize();

private:
    friend class Control;
    Application& app_;
    Text name_, title_, tag_, font_;
    bool modal_ = false;
    std::vector<Control*> controls_;
    FormView* view_ = nullptr;
};

} // namespace kalvora
