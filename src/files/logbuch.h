// The monthly logs in Logpfad. A record that cannot be written is lost by design: a log failure never stops
// the user. One that was written and then overwritten by another workstation's append, as shares allow, is
// missed at the next look and written again. While an action collects (`Sammeln`), records wait in the buffer
// for one flush.
#pragma once

#include <vector>

#include "files/arbeitsplatz.h"
#include "files/dateikanal.h"
#include "files/konfigdaten.h"

namespace kalvora {

class Logbuch {
public:
    Logbuch(Dateikanal& kanal, Arbeitsplatz& platz, const Konfigdaten& konfig)
        : kanal_(kanal), platz_(platz), konfig_(konfig) {}

    // `art` 1 user log, 2 administration log. An empty text while collecting flushes the buffer; an empty
    // buffer writes nothing.
    void Logbuch_ergänzen(int art, TextView text);
    void Logbuch_ÜStd_ergänzen(int art, TextView text);
    // Takes pairs of a record and its ":Storno" out of this month's ("T") or last month's ("M") log.
    void Logbuch_bereinigen(TextView art);
    // Looks for own records that no look has seen yet. One just written is left for the next look: an append
    // that began before it may still take its place. `alle`: at the end there is none.
    void nachsehen(bool alle = false);

    void Sammeln(bool an) { sammeln_ = an; }
    const std::vector<Text>& Logpuffer() const { return puffer_; }
    void Logpuffer_leeren() { puffer_.clear(); }

private:
    struct Ungesehenes {
        Text pfad;
        Dateiwerk::Anhang wo;
        std::string zeilen; // as stored
        double zeit = 0;    // steady seconds
        int versuch = 1;
    };
    std::vector<Ungesehenes> reife(bool alle);
    void anfügen(TextView name, const std::vector<Text>& zeilen);
    bool in_Datei(const Text& pfad, const std::vector<Text>& zeilen);
    Dateikanal& kanal_;
    Arbeitsplatz& platz_;
    const Konfigdaten& konfig_;
    bool sammeln_ = false;
    std::vector<Text> puffer_;
    std::vector<Ungesehenes> ungesehen_;
};

} // namespace kalvora
