// What a day of a month is: holiday, non-working day, calendar week; and how often a reason stands between
// two days. Days and months count from 1; the month index runs from 1 to 36, from January of `Startjahr` on.
#pragma once

#include <array>
#include <functional>

#include "base/datum.h"
#include "base/feld.h"

namespace kalvora {

// The values that decide on the days of one month.
struct Tagesregeln {
    Text Anzeigemonat;                 // yymm
    Text Ausnahmedaten = u"NoEx:NoEx"; // the month's exception line, weekend part before the colon
    Text Wochenendtage;                // "SaSo"
    Text Feiertagsschlüssel;           // "yymmdd|yymmdd|"
};

// The two are independent: a day can be both. A line without its colon is a weekend part alone.
bool CheckFeiertag(const Tagesregeln& regeln, int tag);
bool CheckWochenende(const Tagesregeln& regeln, int tag);

// The same for all days of a month, found once. Days outside 1 to 31 are neither.
class Monatsklassen {
public:
    Monatsklassen() = default;
    explicit Monatsklassen(const Tagesregeln& regeln);
    bool feiertag(int tag) const {
        return tag >= 1 && tag <= 31 && klassen_[static_cast<size_t>(tag)].feiertag;
    }
    bool wochenende(int tag) const {
        return tag >= 1 && tag <= 31 && klassen_[static_cast<size_t>(tag)].wochenende;
    }

private:
    struct Klasse {
        bool feiertag = false, wochenende = false;
    };
    std::array<Klasse, 32> klassen_; // by day; 0 unused
};

// Labels "46. KW" for the columns 1 to 32 of the week row, a blank where none belongs: stumps of a week at
// the ends have no room for it, and behind the month's last day the label goes on when that day's week is
// short.
Feld<Text> Kalenderwochenzeile(TextView yymm);

// 1 to 36; a year outside the three held counts as `Startjahr`.
int Monatsindex(Datum d, int Startjahr);

// Days of one employee in the month of that index, one character a day.
using Monatszeile = std::function<TextView(int monatsindex)>;

// How often the reason's code stands from `von` to `bis`, both included; 0 for reason 0. U is the number of
// reason records. The dates are not put in order: with `bis` in an earlier month the end of the first and the
// beginning of the second month count.
int AnAbwesenheitstage(int Grund, int U, Datum von, Datum bis, int Startjahr, const Monatszeile& zeile);

} // namespace kalvora
