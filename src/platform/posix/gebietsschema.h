// Names of locales ("de_AT.UTF-8@euro") and what they mean for dates and numbers. The process keeps its C
// locale: an installed locale is asked beside it, for all others there is a table of the common ones.
#pragma once

#include <string>

#include "platform/environment.h"

namespace kalvora {

struct Gebietsname {
    std::string sprache; // "de"; empty for C, POSIX and none
    std::string gebiet;  // "AT"; that of the language when the name has none
};
Gebietsname Gebietsname_aus(const std::string& name);

// From the table alone; unknown names give the German values.
Locale Gebietsschema_aus_Tabelle(const Gebietsname& datum, const Gebietsname& zahl);

// Date order, month names and country come from the first name, separators of numbers from the second.
Locale Gebietsschema(const std::string& datum, const std::string& zahl);

// Order and separator of a strftime pattern such as "%d.%m.%Y".
Datumsformat Datumsformat_aus_Muster(const std::string& muster);

} // namespace kalvora
