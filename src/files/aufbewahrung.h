// Damaged files are kept beside their place, under a name that ends in digits, which no mask matches:
// "<name> defekt yymmdd hhnnss".
#pragma once

#include <functional>

#include "files/whole_file.h"

namespace kalvora {

// Finds a free name for the file and lets `ablegen` put something there, whose fault is 0 or 58 when somebody
// was faster. The path taken, or the fault.
Ergebnis<Text> Beiseite_legen(const Dateiwerk& werk, const Text& pfad, const Text& Heute_S,
                              const std::function<Fehlercode(const Text& name)>& ablegen);
// The same with a copy of these bytes.
Ergebnis<Text> Kopie_aufbewahren(const Dateiwerk& werk, const Text& pfad, const Text& Heute_S,
                                 std::string_view bytes);

} // namespace kalvora
