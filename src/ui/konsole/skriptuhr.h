// The clock of a script: waits take no time but move the clock, so that a script runs at full speed and the
// program still sees hours go by. In real time it is the clock beneath, unchanged.
#pragma once

#include "platform/clock.h"

namespace kalvora {

enum class Zeitlauf { Simuliert, Echtzeit };

class Skriptuhr : public Clock {
public:
    explicit Skriptuhr(Clock& uhr, Zeitlauf lauf = Zeitlauf::Simuliert)
        : uhr_(uhr), lauf_(lauf), beginn_(uhr.now()) {}
    // Simulated from a given start, for tests.
    Skriptuhr(Clock& uhr, const Zeitpunkt& beginn) : uhr_(uhr), lauf_(Zeitlauf::Simuliert), beginn_(beginn) {}

    // Simulated: the start and the seconds that went by since then; a change to summer time is not followed.
    Zeitpunkt now() override;
    double steady() override { return echt() ? uhr_.steady() : vergangen_; }
    Datum day_of(Zeitstempel stempel) override { return uhr_.day_of(stempel); }
    Zeitpunkt time_of(Zeitstempel stempel) override { return uhr_.time_of(stempel); }

    void warten_bis(double zeitpunkt); // of the steady clock
    bool echt() const { return lauf_ == Zeitlauf::Echtzeit; }

private:
    Clock& uhr_;
    Zeitlauf lauf_;
    Zeitpunkt beginn_;
    double vergangen_ = 0;
};

} // namespace kalvora
