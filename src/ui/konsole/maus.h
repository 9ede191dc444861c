// The mouse on a table, press by press, as the table of a desktop reports it.
#pragma once

#include "ui/konsole/konsolen_fenstersystem.h"

namespace kalvora {

struct Tabellenzelle {
    int row = 0, col = 0;
};

// ROW is a number from 0 or, when it is none or stands in quotes, the text of column 0 in a shown row; COL is
// a number from 0. Throws Kommandofehler when there is no such cell, or more than one.
Tabellenzelle Zelle_aus(const Table& table, const Wort& row, const Wort& col);

enum class Mausart { Links, Rechts, Doppel };

struct Mausbefehl {
    Mausart art = Mausart::Links;
    Modifiers mods;
    Tabellenzelle von, bis; // the same cell: no drag
};

// Throws Kommandofehler when the table refuses the press.
void Maus_bedienen(KonsolenFenstersystem& system, Table& table, const Mausbefehl& befehl);

} // namespace kalvora
