// The console's side of one window: nothing is drawn, but timers run, the floating box is told, and place,
// state and focus are kept as a desktop would keep them.
#pragma once

#include "platform/window/form.h"
#include "ui/konsole/protokoll.h"
#include "ui/konsole/skriptuhr.h"
#include "ui/konsole/zeitgeber.h"

namespace kalvora {

class KonsolenSicht : public FormView {
public:
    KonsolenSicht(Form& form, Protokoll& protokoll, Zeitgeber& zeitgeber, Skriptuhr& uhr);
    KonsolenSicht(const KonsolenSicht&) = delete;
    KonsolenSicht& operator=(const KonsolenSicht&) = delete;

    void lösen(); // before the window goes; without it nothing is touched any more

    Form& form() const { return form_; }
    Control* fokus() const { return fokus_; } // nullptr: none yet

    void control_changed(Control& control, Aspect aspect) override;
    void title_changed() override {}
    void arrange() override {}
    void paint_now() override {}
    // Without a screen every row is in view that stands at or behind the top row and has a height.
    bool row_visible(const Table& table, int row) override;
    void show_cell(Table& table, int row, int col) override;
    void focus(Control& control) override { fokus_ = &control; }
    Geometry geometry() override { return lage_; }
    void set_geometry(const Geometry& lage) override;
    WindowState state() override { return zustand_; }
    void set_state(WindowState zustand) override { zustand_ = zustand; }

private:
    void Kommentar_melden(const FloatingBox& box);

    Form& form_;
    Protokoll& protokoll_;
    Zeitgeber& zeitgeber_;
    Skriptuhr& uhr_;
    Control* fokus_ = nullptr;
    Geometry lage_; // nothing until the user's own place is known: it is not the console's to choose
    WindowState zustand_ = WindowState::Normal;
    Text gemeldet_; // what the box showed last, with its place; empty while it is hidden
};

} // namespace kalvora
