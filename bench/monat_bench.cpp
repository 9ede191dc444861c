// Composing the shown month beside filling a flat array of as many cells.
#include <algorithm>

#include "messungen.h"
#include "plan/monatsansicht.h"

namespace kalvora::bench {

namespace {

// The month view over a form that nobody looks at.
struct Ansicht {
    explicit Ansicht(Arbeitsstation& s) : station(s), form(s.app), ansicht(form, s.daten) {
        ansicht.Anzeigemonat_setzen(s.platz.Monat_heute());
        ansicht.Tagessummen_initialisieren();
    }

    // Daten_anzeigen reads the month too; that is measured alone and taken off.
    double aufbauen() {
        const double lesen = Rechensekunden(
            [&] { station.daten.erfassung.Erfassungsdaten_lesen(station.platz.Monat_heute()); });
        return mit_Lesen() - lesen;
    }
    double mit_Lesen() {
        return Rechensekunden([&] { ansicht.Daten_anzeigen(true); });
    }

    Arbeitsstation& station;
    frmKalvora form;
    Monatsansicht ansicht;
};

// Cells with a text and two colours, row by row, into an array that is used again each time, as the plan is.
class Flaches_Feld {
public:
    explicit Flaches_Feld(const Table& vorbild) : zeilen_(vorbild.rows()), spalten_(vorbild.cols()) {}
    double füllen() {
        return Rechensekunden([&] {
            zellen_.resize(0);
            zellen_.resize(static_cast<std::size_t>(zeilen_) * static_cast<std::size_t>(spalten_));
            for (int z = 0; z < zeilen_; ++z)
                for (int s = 0; s < spalten_; ++s) {
                    Zelle& zelle = zellen_[static_cast<std::size_t>(z * spalten_ + s)];
                    zelle.text = s == 0 ? u"Mustermann Anna" : s % 7 == 0 ? u"U" : u"";
                    zelle.schrift = s % 7 == 0 ? 0x000000u : 0xFFFFFFu;
                    zelle.hintergrund = s % 7 == 0 ? 0x80FF80u : 0xFFFFFFu;
                }
            benchmark::DoNotOptimize(zellen_.data());
        });
    }

private:
    struct Zelle {
        Text text;
        Farbe schrift = 0, hintergrund = 0xFFFFFF;
    };
    int zeilen_, spalten_;
    std::vector<Zelle> zellen_;
};

void neben_Feld(benchmark::State& lauf, Umfeld& umfeld) {
    Ansicht ansicht(umfeld.stationen.mit(5000));
    ansicht.mit_Lesen();
    Flaches_Feld feld(ansicht.form.msgFlexGrid);
    abwechselnd(
        lauf, umfeld.tafel,
        {"Monat von 5.000 aufbauen (ohne Lesen)", "flaches Feld gleich vieler Zellen füllen", 5},
        [&] { return ansicht.aufbauen(); }, [&] { return feld.füllen(); });
    std::map<int, std::unique_ptr<Ansicht>> alle;
    for (const int n : {50, 500, 5000})
        alle[n] = std::make_unique<Ansicht>(umfeld.stationen.mit(n));
    Wachstum_messen(umfeld.tafel, "Monat lesen und aufbauen", {50, 500, 5000},
                    [&](int n) { return alle[n]->mit_Lesen(); });
}

} // namespace

void Monat_aufbauen_messen(Umfeld& umfeld) {
    benchmark::RegisterBenchmark("Monat_aufbauen",
                                 [&umfeld](benchmark::State& lauf) { neben_Feld(lauf, umfeld); })
        ->UseManualTime()
        ->Iterations(41)
        ->Unit(benchmark::kMillisecond);
}

} // namespace kalvora::bench
