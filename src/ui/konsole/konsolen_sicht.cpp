#include "ui/konsole/konsolen_sicht.h"

namespace kalvora {

namespace {

// The screen that a terminal does not have: 1920 x 1080 pixels of 15 twips.
constexpr int BILDSCHIRMBREITE = 1920 * 15;
constexpr int BILDSCHIRMHÖHE = 1080 * 15;

} // namespace

KonsolenSicht::KonsolenSicht(Form& form, Protokoll& protokoll, Zeitgeber& zeitgeber, Skriptuhr& uhr)
    : form_(form), protokoll_(protokoll), zeitgeber_(zeitgeber), uhr_(uhr) {
    if (form_.start_geometry) set_geometry(*form_.start_geometry);
    zustand_ = form_.start_state;
    form_.set_view(this);
    zeitgeber_.beachten(form_, uhr_.steady());
}

void KonsolenSicht::lösen() {
    zeitgeber_.vergessen(form_);
    form_.set_view(nullptr);
}

void KonsolenSicht::control_changed(Control& control, Aspect aspect) {
    if (aspect != Aspect::State && aspect != Aspect::Content) return;
    if (auto* timer = dynamic_cast<Timer*>(&control)) zeitgeber_.beachten(*timer, uhr_.steady());
    if (const auto* box = dynamic_cast<const FloatingBox*>(&control)) Kommentar_melden(*box);
}

void KonsolenSicht::Kommentar_melden(const FloatingBox& box) {
    const Text stand = ziffern(box.row()) + u":" + ziffern(box.column()) + u":" + box.text();
    if (box.visible() && stand != gemeldet_) protokoll_.zeile(u"KOMMENTAR " + zitiert(box.text()));
    gemeldet_ = box.visible() ? stand : Text();
}

bool KonsolenSicht::row_visible(const Table& table, int row) {
    if (row < 0 || row >= table.rows() || table.row_height(row) == 0) return false;
    return row < table.fixed_rows() || row >= table.TopRow();
}

void KonsolenSicht::show_cell(Table& table, int row, int) {
    if (row < table.TopRow()) table.user_scroll(row);
}

void KonsolenSicht::set_geometry(const Geometry& lage) {
    const bool im_Bild =
        lage.left >= 0 && lage.top >= 0 && lage.left < BILDSCHIRMBREITE && lage.top < BILDSCHIRMHÖHE;
    if (im_Bild && lage.width > 0 && lage.height > 0) lage_ = lage;
}

} // namespace kalvora
