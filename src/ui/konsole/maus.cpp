#include "ui/konsole/maus.h"

#include <algorithm>

#include "ui/konsole/bedienung.h"
#include "ui/konsole/kommandofehler.h"

namespace kalvora {

namespace {

// The number of a word; nothing when it is quoted or holds anything but up to six digits.
std::optional<int> Zahl(const Wort& wort) {
    if (wort.zitiert || wort.text.size() > 6 || !nur_Ziffern(wort.text)) return std::nullopt;
    return static_cast<int>(Val(wort.text));
}

int Zeile_mit_Text(const Table& table, const Wort& wort) {
    int gefunden = -1;
    for (int row = 0; row < table.rows(); ++row) {
        if (table.row_height(row) == 0 || trimmen(table.cell(row, 0).text) != trimmen(wort.text)) continue;
        if (gefunden >= 0)
            throw Kommandofehler(zitiert(wort.text) + u" steht in mehreren Zeilen von " + table.full_name());
        gefunden = row;
    }
    if (gefunden < 0)
        throw Kommandofehler(u"Keine Zeile " + zitiert(wort.text) + u" in " + table.full_name());
    return gefunden;
}

void Sichtbarkeit_verlangen(const Table& table, const Tabellenzelle& zelle) {
    if (table.row_height(zelle.row) == 0)
        throw Kommandofehler(u"Die Zeile " + ziffern(zelle.row) + u" von " + table.full_name() +
                             u" ist ausgeblendet");
    if (table.col_width(zelle.col) == 0)
        throw Kommandofehler(u"Die Spalte " + ziffern(zelle.col) + u" von " + table.full_name() +
                             u" ist ausgeblendet");
}

bool im_Rumpf(const Table& table, const Tabellenzelle& zelle) {
    return zelle.row >= table.fixed_rows() && zelle.col >= table.fixed_cols();
}

// The drag: a press sets the anchor, with Shift it extends the marking that is there.
void markieren(Table& table, const Mausbefehl& befehl) {
    const Tabellenzelle& von = befehl.von;
    if (!im_Rumpf(table, von)) return;
    Selection auswahl{von.row, von.col, von.row, von.col};
    const Selection& bisher = table.selection();
    if (befehl.mods.shift && table.HighLight() && im_Rumpf(table, {bisher.row, bisher.col})) {
        auswahl.row = bisher.row;
        auswahl.col = bisher.col;
    }
    table.user_select(auswahl, von.row);
    if (befehl.bis.row == von.row && befehl.bis.col == von.col) return;
    auswahl.row_sel = std::max(befehl.bis.row, table.fixed_rows()); // a drag stops below the heading
    auswahl.col_sel = befehl.bis.col;
    table.user_select(auswahl, auswahl.row_sel);
}

} // namespace

Tabellenzelle Zelle_aus(const Table& table, const Wort& row, const Wort& col) {
    const auto zeilennummer = Zahl(row);
    const Tabellenzelle zelle{zeilennummer ? *zeilennummer : Zeile_mit_Text(table, row),
                              Zahl(col).value_or(-1)};
    if (zelle.row >= table.rows())
        throw Kommandofehler(table.full_name() + u" hat keine Zeile " + maskiert(row.text));
    if (zelle.col < 0 || zelle.col >= table.cols())
        throw Kommandofehler(table.full_name() + u" hat keine Spalte " + zitiert(col.text));
    return zelle;
}

void Maus_bedienen(KonsolenFenstersystem& system, Table& table, const Mausbefehl& befehl) {
    Sichtbarkeit_verlangen(table, befehl.von);
    Sichtbarkeit_verlangen(table, befehl.bis);
    Form& form = table.form();
    system.sicht(form).focus(table);
    const MouseButton taste = befehl.art == Mausart::Rechts ? MouseButton::Right : MouseButton::Left;
    const int schleifen = system.Schleifenzahl();
    // A window that the press opened, or the end of this one, takes the rest of the movement.
    const auto weiter = [&] { return system.Schleifenzahl() == schleifen && !system.beendet(form); };

    Annahme_verlangen(table, table.user_mouse_down({taste, befehl.mods, befehl.von.row, befehl.von.col}));
    if (weiter() && taste == MouseButton::Left) markieren(table, befehl);
    const Table::Mouse los{taste, befehl.mods, befehl.bis.row, befehl.bis.col};
    if (weiter()) table.user_mouse_up(los);
    if (!weiter() || befehl.art != Mausart::Doppel) return;
    table.user_double_click(befehl.von.row, befehl.von.col);
    if (weiter()) table.user_mouse_up(los);
}

} // namespace kalvora
