// Public holidays from rules: each row gives one date in each of the three years held.
// Rows count from 1: 1 to 16 are the country's named holidays ("1:NO0100:Ostermontag (Region)"), 17 to 32 the
// further ones ("dd.mm."). The list of the result counts from 1 and is not sorted.
#pragma once

#include <optional>

#include "base/datum.h"
#include "base/feld.h"

namespace kalvora {

inline constexpr int FEIERTAGSREGELN_LAND = 16;
inline constexpr int FEIERTAGSREGELN_HÖCHSTENS = 32;
inline constexpr TextView LEERE_FEIERTAGSREGEL = u"0:000000:";

// Easter Sunday. The rule of 1900 to 2099 without its two exceptions: 1954 and 2049 give 25 April, 1981 and
// 2076 give 26 April.
Datum Osterdatum(int jahr);

struct Feiertage {
    Feld<Text> Feiertagsliste{Text(u"000000")}; // "yymmdd:Name"; a further holiday is "yymmdd" alone
    Text Feiertagsschlüssel = u"000000|";       // "yymmdd|yymmdd|", in the order of the list
};

// Too few rows are filled up with empty rules, those beyond 32 ignored. An enabled rule that cannot be read
// is a fault 13 that carries the row's number in `zeile`; the caller keeps the holidays that it has.
Feiertage Feiertage_berechnen(int Startjahr, const Feld<Text>& Feiertagsregeln);

// Name of the first holiday of that day; empty for a further holiday, nothing when the day is none.
std::optional<Text> Feiertagsname(const Feiertage& feiertage, TextView yymmdd);

// Can row r be what the program writes? Dates that never come ("31.02.") count as readable.
bool Feiertagsregel_lesbar(TextView regel, int r);

} // namespace kalvora
