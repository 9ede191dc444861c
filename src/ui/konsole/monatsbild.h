// The month as a terminal shows it: names, day headings and the colours of the plan as 24-bit ANSI colours.
#pragma once

#include <string>

#include "platform/window/table.h"

namespace kalvora {

// In characters.
struct Terminalgröße {
    int breite = 80, höhe = 24;
};

// UTF-8, lines ended; no line is wider than the terminal. Columns that do not fit are left out at the right,
// rows at the end, with a line that says how many.
std::string Monatsbild(const Table& plan, const Terminalgröße& größe);

} // namespace kalvora
