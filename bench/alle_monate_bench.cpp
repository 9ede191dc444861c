// Reading the 36 months beside reading the bytes alone, and beside a database that holds the same table.
#include <algorithm>

#include "base/cp1252.h"
#include "files/ordner.h"
#include "messung/sqlite.h"
#include "messungen.h"

namespace kalvora::bench {

namespace {

constexpr int VIELE = 5000, WENIGE = 500;

std::vector<std::string> Schlüssel(Arbeitsstation& station) {
    std::vector<std::string> aus;
    for (const Mitarbeiter& m : station.daten.personal.MA())
        aus.push_back(zu_cp1252(m.MA_BenId));
    return aus;
}

double einlesen(Arbeitsstation& station) {
    return Rechensekunden([&] { station.daten.erfassung.Alle_Erfassungsdaten_einlesen(false); });
}

// The same files; in the end all of them are in memory, as all months are.
double Dateien_lesen(Arbeitsstation& station) {
    std::vector<Dateiinhalt> alle;
    return Rechensekunden([&] {
        for (const Text& name : Dateien(station.fs, station.platz.Datenpfad, u"*Data.dat"))
            alle.push_back(std::move(*station.werk.lesen(station.platz.Datenpfad + name)));
        benchmark::DoNotOptimize(alle.data());
    });
}

// A row of each employee and month, stored in the order in which it is read.
void Tabelle_anlegen(const std::string& pfad, Arbeitsstation& station) {
    einlesen(station);
    Datenbank db(pfad);
    db.ausführen(
        "PRAGMA journal_mode=WAL; CREATE TABLE monatsdaten(benid TEXT, monat INTEGER, tage TEXT); BEGIN");
    Anweisung neu(db, "INSERT INTO monatsdaten VALUES(?, ?, ?)");
    const auto schlüssel = Schlüssel(station);
    for (int monat = 1; monat <= MONATE; ++monat)
        for (int i = 1; i <= static_cast<int>(schlüssel.size()); ++i) {
            const std::string& wer = schlüssel[static_cast<std::size_t>(i - 1)];
            if (wer.empty()) continue;
            neu.binden(1, wer);
            neu.binden(2, monat);
            neu.binden(3, station.daten.erfassung.Daten().tage(monat, i));
            neu.ausführen();
        }
    db.ausführen("COMMIT; PRAGMA wal_checkpoint(TRUNCATE)");
}

// Into the same array, finding people in the same way.
double Tabelle_lesen(const std::string& pfad, Arbeitsstation& station) {
    return Rechensekunden([&] {
        Datenbank db(pfad);
        Anweisung alle(db, "SELECT benid, monat, tage FROM monatsdaten");
        const auto schlüssel = Schlüssel(station);
        Schlüsselverzeichnis wer(schlüssel);
        Monatsdaten daten;
        daten.setzen(static_cast<int>(schlüssel.size()));
        while (alle.Zeile()) {
            const int i = wer.finden(alle.Text_in(0));
            const std::string_view tage = alle.Text_in(2);
            if (i > 0 && tage.size() == TAGE) std::copy_n(tage.data(), TAGE, daten.zelle(alle.Zahl_in(1), i));
        }
        benchmark::DoNotOptimize(daten.zelle(1, 1));
    });
}

void neben_Dateien(benchmark::State& lauf, Umfeld& umfeld) {
    Arbeitsstation& station = umfeld.stationen.mit(VIELE);
    abwechselnd(
        lauf, umfeld.tafel,
        {"36 Monate × 5.000 in Monatsdaten lesen", "dieselben Dateien in den Speicher lesen", 4},
        [&] { return einlesen(station); }, [&] { return Dateien_lesen(station); });
}

void neben_Datenbank(benchmark::State& lauf, Umfeld& umfeld) {
    Arbeitsstation& station = umfeld.stationen.mit(VIELE);
    const std::string pfad = umfeld.lager.ordner().pfad() + "monatsdaten.sqlite";
    Tabelle_anlegen(pfad, station);
    abwechselnd(
        lauf, umfeld.tafel,
        {"36 Monate × 5.000 in Monatsdaten lesen", "SQLite liest dieselbe Tabelle", 1.0 / 3},
        [&] { return einlesen(station); }, [&] { return Tabelle_lesen(pfad, station); });
}

void Wachstum(benchmark::State& lauf, Umfeld& umfeld) {
    Arbeitsstation& viele = umfeld.stationen.mit(VIELE);
    Arbeitsstation& wenige = umfeld.stationen.mit(WENIGE);
    abwechselnd(
        lauf, umfeld.tafel, {"36 Monate × 5.000 lesen", "36 Monate × 500 lesen", 11},
        [&] { return einlesen(viele); }, [&] { return einlesen(wenige); });
    Wachstum_messen(umfeld.tafel, "36 Monate in Monatsdaten lesen", {50, 500, 5000},
                    [&](int n) { return einlesen(umfeld.stationen.mit(n)); });
}

} // namespace

void Alle_Monate_messen(Umfeld& umfeld) {
    const auto messen = [&umfeld](const char* name, void (*was)(benchmark::State&, Umfeld&)) {
        benchmark::RegisterBenchmark(name, [=, &umfeld](benchmark::State& lauf) { was(lauf, umfeld); })
            ->UseManualTime()
            ->Iterations(41)
            ->Unit(benchmark::kMillisecond);
    };
    messen("Alle_Monate_neben_Dateien", neben_Dateien);
    messen("Alle_Monate_neben_Datenbank", neben_Datenbank);
    messen("Alle_Monate_Wachstum", Wachstum);
}

} // namespace kalvora::bench
