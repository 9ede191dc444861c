// The logs of the made-up company's last three months, through the program's own log.
#pragma once

#include "files/logbuch.h"
#include "firma/abwesenheiten.h"
#include "platform/clock.h"

namespace kalvora::firma {

// A clock whose time of day is set from record to record.
class Schreibuhr : public Clock {
public:
    explicit Schreibuhr(Clock& uhr) : uhr_(uhr) {}
    void stellen(Zeitpunkt z) { jetzt_ = z; }
    Zeitpunkt now() override { return jetzt_; }
    double steady() override { return uhr_.steady(); }
    Datum day_of(Zeitstempel z) override { return uhr_.day_of(z); }
    Zeitpunkt time_of(Zeitstempel z) override { return uhr_.time_of(z); }

private:
    Clock& uhr_;
    Zeitpunkt jetzt_;
};

// Sets day and user of `platz` from record to record and puts them back. Returns the number of records.
int Logbücher_schreiben(Dateikanal& kanal, Arbeitsplatz& platz, const Konfigdaten& konfig, Schreibuhr& uhr,
                        const Belegschaft& leute, const std::vector<Abwesenheiten>& alle,
                        const Firmenwunsch& wunsch);

} // namespace kalvora::firma
