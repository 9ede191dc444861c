// A month out of what is left of it: a sound version, and the rows that can still be read in the damaged one.
#pragma once

#include <optional>
#include <string>

#include "base/text.h"
#include "files/zeilen.h"

namespace kalvora {

// Whether rows of `basis` stand no longer in a file of the same life: only a cut takes rows away.
bool Sätze_fehlen(std::string_view basis, std::string_view datei);

// The stored lines of `basis`, and behind them those rows of `beschädigt` that say something else than it.
// What both hold is as old as it is there. Of a file that calls itself another month nothing is taken, unless
// most of its rows are those of `basis`.
std::string Monat_ergänzt(std::string_view basis, std::string_view beschädigt, const Text& yymm);

// `datei` and, behind it, the rows that `früher` (an earlier version of the month) holds of persons with an
// entry there who have no row at all in `datei`. For one whose end was torn off: elsewhere such a person may
// have no entry any more. Nothing: there are none.
std::optional<std::string> Personen_ergänzt(std::string_view früher, std::string_view datei);

// The stored lines behind the three of the head.
std::string_view hinter_Kopf(std::string_view bytes);

// Stores the head of a month's file with other keys, in the same place. From then on it is another version
// than the one whose bytes it was made of: what a reader knows of that one (it only grows) says nothing about
// it. Bytes without such a head stay as they are.
void neu_beginnen(char* bytes, std::size_t größe, Schlüsselquelle& schlüssel);

} // namespace kalvora
