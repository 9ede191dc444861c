// Would the program run on the state that a container holds?
#pragma once

#include "safety/wiederherstellung.h"

namespace kalvora {

// What is missing in it or damaged, for the user; empty: it would. Faulty lines of a month are no matter:
// they are found and told when it is read. `streng`: a file that cannot be judged here and now counts as
// damaged.
Text Mangel(const Dateiprobe& probe, const Arbeitsplatz& platz, const Wiederherstellung::Gelesen& container,
            bool streng);

} // namespace kalvora
