// Decoding and encoding a file of 20 MB beside moving the same bytes.
#include <filesystem>
#include <stdexcept>

#include "base/cp1252.h"
#include "messungen.h"

namespace kalvora::bench {

namespace {

constexpr std::size_t GRÖSSE = 20'000'000;

// The rows of the largest company's months, over and over.
class Zeilendatei {
public:
    explicit Zeilendatei(Umfeld& umfeld)
        : station_(umfeld.stationen.mit(500)), pfad_(umfeld.lager.ordner().text() + u"2611 261116 Data.dat"),
          neu_(umfeld.lager.ordner().text() + u"neu.dat"), roh_(umfeld.lager.ordner().text() + u"roh.dat") {
        const auto vorlage = umfeld.lager.Datenpfad(500);
        std::vector<std::string> monat;
        station_.kanal.Datei_öffnen(vorlage + u"2605 " + version(vorlage), Dateimodus::Input);
        while (const auto zeile = station_.kanal.nächste_Klarzeile())
            monat.emplace_back(zeile->bytes);
        station_.kanal.Datei_schließen();
        for (std::size_t bytes = 0; bytes < GRÖSSE;)
            for (const std::string& zeile : monat) {
                zeilen_.push_back(zeile);
                texte_.push_back(aus_cp1252(zeile));
                bytes += zeile.size() + 3;
            }
        schreiben(pfad_);
    }

    double lesen() {
        return Rechensekunden([&] { benchmark::DoNotOptimize(station_.werk.lesen(pfad_)->bytes.get()); });
    }
    double entschlüsseln() {
        return Rechensekunden([&] {
            std::size_t zeichen = 0;
            station_.kanal.Datei_öffnen(pfad_, Dateimodus::Input);
            while (const auto zeile = station_.kanal.nächste_Klarzeile())
                zeichen += zeile->bytes.size();
            station_.kanal.Datei_schließen();
            benchmark::DoNotOptimize(zeichen);
        });
    }
    double als_Text() {
        return Rechensekunden([&] {
            std::size_t zeichen = 0;
            station_.kanal.Datei_öffnen(pfad_, Dateimodus::Input);
            while (!station_.kanal.Dateiende())
                zeichen += station_.kanal.LineIn().size();
            station_.kanal.Datei_schließen();
            benchmark::DoNotOptimize(zeichen);
        });
    }
    double verschlüsseln() {
        return Sekunden([&] { schreiben(neu_); });
    }
    double aus_Text() {
        return Sekunden([&] {
            station_.kanal.Datei_öffnen(neu_, Dateimodus::Output);
            for (const Text& zeile : texte_)
                station_.kanal.LineOut(zeile);
            station_.kanal.Datei_schließen();
        });
    }
    double schreiben_roh() {
        const auto inhalt = station_.werk.lesen(pfad_);
        bool ok = false;
        const double zeit = Sekunden([&] { ok = bool(station_.werk.ersetzen(roh_, inhalt->sicht())); });
        if (!ok) throw std::runtime_error("the copy was not written");
        return zeit;
    }

private:
    void schreiben(const Text& pfad) {
        station_.kanal.Datei_öffnen(pfad, Dateimodus::Output);
        for (const std::string& zeile : zeilen_)
            station_.kanal.Klarzeile_schreiben(zeile);
        station_.kanal.Datei_schließen();
    }
    // The version's part of the file name of May.
    Text version(const Text& ordner) {
        const auto namen = station_.fs.list(ordner);
        for (const Text& name : *namen)
            if (name.starts_with(u"2605 ")) return name.substr(5);
        return {};
    }

    Arbeitsstation& station_;
    Text pfad_, neu_, roh_;
    std::vector<std::string> zeilen_;
    std::vector<Text> texte_;
};

} // namespace

void Zeilendatei_messen(Umfeld& umfeld) {
    const auto messen = [&umfeld](const char* name, double ziel, const char* arbeit, const char* daneben,
                                  double (Zeilendatei::*eins)(), double (Zeilendatei::*zwei)()) {
        benchmark::RegisterBenchmark(name,
                                     [=, &umfeld](benchmark::State& lauf) {
                                         Zeilendatei datei(umfeld);
                                         abwechselnd(
                                             lauf, umfeld.tafel, {arbeit, daneben, ziel},
                                             [&] { return (datei.*eins)(); },
                                             [&] { return (datei.*zwei)(); });
                                     })
            ->UseManualTime()
            ->Iterations(25)
            ->Unit(benchmark::kMillisecond);
    };
    messen("Zeilen_entschlüsseln", 3, "20 MB Zeilen entschlüsseln", "dieselben Bytes lesen",
           &Zeilendatei::entschlüsseln, &Zeilendatei::lesen);
    messen("Zeilen_verschlüsseln", 3, "20 MB Zeilen verschlüsseln", "dieselben Bytes schreiben",
           &Zeilendatei::verschlüsseln, &Zeilendatei::schreiben_roh);
    messen("LineIn", 3, "20 MB durch LineIn als Text", "dieselben Bytes lesen", &Zeilendatei::als_Text,
           &Zeilendatei::lesen);
    messen("LineOut", 3, "20 MB Text durch LineOut", "dieselben Bytes schreiben", &Zeilendatei::aus_Text,
           &Zeilendatei::schreiben_roh);
}

} // namespace kalvora::bench
