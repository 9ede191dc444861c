// A clock that stands until the test moves it. Days of file stamps are UTC days.
#pragma once

#include <cmath>

#include "platform/clock.h"

namespace kalvora {

class TestUhr : public Clock {
public:
    explicit TestUhr(Zeitpunkt z = {{2026, 11, 16}, 12, 0, 0}) { stelle(z); }

    void stelle(Zeitpunkt z) {
        tag_ = Datum_aus(z.tag.jahr, z.tag.monat, z.tag.tag);
        sekunden_ = z.stunde * 3600.0 + z.minute * 60.0 + z.sekunde;
    }
    // Time goes by.
    void weiter(double sekunden) {
        stetig_ += sekunden;
        sekunden_ += sekunden;
        const double tage = std::floor(sekunden_ / 86400.0);
        tag_ += static_cast<Datum>(tage);
        sekunden_ -= tage * 86400.0;
    }

    Zeitpunkt now() override {
        const int s = static_cast<int>(sekunden_);
        return {Kalendertag_aus(tag_), s / 3600, s / 60 % 60, s % 60};
    }
    double steady() override { return stetig_; }
    Datum day_of(Zeitstempel z) override {
        constexpr Zeitstempel TAG = 86'400'000'000'000;
        return Datum_aus(1970, 1, 1) + static_cast<Datum>((z - (z % TAG + TAG) % TAG) / TAG);
    }
    Zeitpunkt time_of(Zeitstempel z) override {
        const auto s = static_cast<int>((z / 1'000'000'000 % 86400 + 86400) % 86400);
        return {Kalendertag_aus(day_of(z)), s / 3600, s / 60 % 60, s % 60};
    }
    // The stamp that a file written now would bear.
    Zeitstempel stempel() const {
        return (static_cast<Zeitstempel>(tag_ - Datum_aus(1970, 1, 1)) * 86400 +
                static_cast<Zeitstempel>(sekunden_)) *
               1'000'000'000;
    }

private:
    Datum tag_ = 0;
    double sekunden_ = 0, stetig_ = 1000;
};

} // namespace kalvora
