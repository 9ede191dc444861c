// A month out of what is left of it: a sound version, and the rows that can still be read in the damaged one.
#pragma once

#include <string>

#include "base/text.h"

namespace kalvora {

// Whether rows of `basis` stand no longer in a file of the same life: only a cut takes rows away.
bool Sätze_fehlen(std::string_view basis, std::string_view datei);

// The stored lines of `basis`, and behind them those rows of `beschädigt` that say something else than it.
// What both hold is as old as it is there. Of a file that calls itself another month nothing is taken, unless
// most of its rows are those of `basis`.
std::string Monat_ergänzt(std::string_view basis, std::string_view beschädigt, const Text& yymm);

} // namespace kalvora
