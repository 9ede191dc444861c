// The marked block of the plan, from not greater than to. Rows and columns as in the plan.
#pragma once

#include <algorithm>

#include "platform/window/table.h"

namespace kalvora {

struct Markierung {
    int Spalte_von = 0, Spalte_bis = 0, Zeile_von = 0, Zeile_bis = 0;

    static Markierung aus(const Selection& s) {
        return {std::min(s.col, s.col_sel), std::max(s.col, s.col_sel), std::min(s.row, s.row_sel),
                std::max(s.row, s.row_sel)};
    }
    Selection als_Auswahl() const { return {Zeile_von, Spalte_von, Zeile_bis, Spalte_bis}; }
};

} // namespace kalvora
