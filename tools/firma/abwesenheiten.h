// What the people of the made-up company were away for: leave in blocks, illness, trips, half days, free days
// of part-time staff. Entries stand on working days within a person's employment alone.
#pragma once

#include <string>
#include <vector>

#include "calendar/feiertage.h"
#include "files/konfigdaten.h"
#include "firma/belegschaft.h"

namespace kalvora::firma {

// The days of the three years; `Tag` counts from 0, the first of January of Startjahr.
class Kalender {
public:
    Kalender(int Startjahr, const Feiertage& feiertage);
    int Startjahr() const { return Startjahr_; }
    Datum erster() const { return erster_; }
    int Tage() const { return static_cast<int>(arbeitstag_.size()); }
    bool enthält(Datum d) const { return d >= erster_ && d < erster_ + Tage(); }
    bool Arbeitstag(Datum d) const {
        return enthält(d) && arbeitstag_[static_cast<std::size_t>(d - erster_)] != 0;
    }

private:
    int Startjahr_;
    Datum erster_;
    std::vector<char> arbeitstag_;
};

// One entry as it was made, for the log.
struct Vorgang {
    int Grund = 0; // number of the reason record
    Datum von = 0, bis = 0;
    Datum gebucht = 0;
    Text Kommentar;
};

struct Abwesenheiten {
    std::u16string codes; // of the days from January of Startjahr
    std::vector<Vorgang> Vorgänge;
};

Abwesenheiten Abwesenheiten_bilden(Person& person, const Kalender& kalender, const Konfiguration& konfig,
                                   const Firmenwunsch& wunsch);

// Spans of school holidays of a year, made up but at the usual times.
std::vector<std::pair<Datum, Datum>> Schulferien(int jahr);

} // namespace kalvora::firma
