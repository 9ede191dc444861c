// Saving one entry, synced, beside the least that puts the same bytes on the disk, and beside a database.
#include <fcntl.h>
#include <unistd.h>

#include <filesystem>
#include <stdexcept>

#include "files/ordner.h"
#include "messung/sqlite.h"
#include "messungen.h"

namespace kalvora::bench {

namespace {

constexpr int NACHLESEN_ALLE = 8; // saves; a running program looks again for what it saved, too

// Saves rows of one employee in turn with others, as the window does.
class Speicherer {
public:
    explicit Speicherer(Arbeitsstation& s) : s_(s), yymm_(s.platz.Monat_heute()) {
        for (const Mitarbeiter& m : s.daten.personal.MA())
            if (!m.Überschrift()) BenIds_.push_back(m.MA_BenId);
    }
    double speichern() {
        if (nr_++ % NACHLESEN_ALLE == 0) s_.daten.erfassung.Erfassungsdaten_lesen(yymm_);
        const Text zeile = u"A:" + BenIds_[nr_ % BenIds_.size()] + u":   11111  1" + Text(20, u' ');
        bool ok = false;
        const double zeit = Sekunden([&] { ok = s_.daten.erfassung.Datensatz_speichern(zeile); });
        if (!ok) throw std::runtime_error("the entry was refused");
        return zeit;
    }

private:
    Arbeitsstation& s_;
    Text yymm_;
    std::vector<Text> BenIds_;
    std::size_t nr_ = 0;
};

// A copy of the same file, the same number of bytes.
class Anhänger {
public:
    Anhänger(const std::string& pfad, std::size_t bytes) : pfad_(pfad), bytes_(bytes, 'x') {}
    double anhängen() {
        bool ok = false;
        const double zeit = Sekunden([&] {
            const int datei = ::open(pfad_.c_str(), O_WRONLY | O_APPEND | O_CLOEXEC);
            ok = datei >= 0 &&
                 ::write(datei, bytes_.data(), bytes_.size()) == static_cast<ssize_t>(bytes_.size()) &&
                 ::fdatasync(datei) == 0;
            ok = ::close(datei) == 0 && ok;
        });
        if (!ok) throw std::runtime_error("append failed");
        return zeit;
    }

private:
    std::string pfad_, bytes_;
};

std::string heutige_Datei(Arbeitsstation& s) {
    return zu_utf8(s.platz.Datenpfad + s.platz.Monat_heute() + u" " + s.platz.Heute_S + u" Data.dat");
}

void neben_Anhang(benchmark::State& lauf, Umfeld& umfeld) {
    Arbeitsstation& station = umfeld.stationen.mit(500);
    Speicherer speicherer(station);
    const std::string kopie = umfeld.lager.ordner().pfad() + "anhang.dat";
    std::filesystem::copy_file(heutige_Datei(station), kopie);
    constexpr std::size_t ZEILE = 1 + 2 + 10 + 1 + 31 + 2; // key byte, "A:", BenId, ":", days, line end
    Anhänger anhänger(kopie, ZEILE);
    abwechselnd(
        lauf, umfeld.tafel,
        {"einen Eintrag gesichert speichern", "öffnen, anhängen, fdatasync, schließen", 1.5},
        [&] { return speicherer.speichern(); }, [&] { return anhänger.anhängen(); });
    std::map<int, std::unique_ptr<Speicherer>> alle;
    for (const int n : {50, 500, 5000})
        alle[n] = std::make_unique<Speicherer>(umfeld.stationen.mit(n));
    Wachstum_messen(
        umfeld.tafel, "einen Eintrag gesichert speichern", {50, 500, 5000},
        [&](int n) { return alle[n]->speichern(); }, 41);
}

void neben_Datenbank(benchmark::State& lauf, Umfeld& umfeld) {
    Speicherer speicherer(umfeld.stationen.mit(500));
    Datenbank db(umfeld.lager.ordner().pfad() + "speichern.sqlite");
    db.ausführen("PRAGMA journal_mode=WAL; PRAGMA synchronous=FULL;"
                 "CREATE TABLE eintraege(benid TEXT, monat INTEGER, tage TEXT)");
    Anweisung neu(db, "INSERT INTO eintraege VALUES(?, ?, ?)");
    abwechselnd(
        lauf, umfeld.tafel,
        {"einen Eintrag gesichert speichern", "SQLite INSERT (WAL, synchronous=FULL)", 1, true},
        [&] { return speicherer.speichern(); },
        [&] {
            neu.binden(1, "mustermann");
            neu.binden(2, 23);
            neu.binden(3, "   11111  1                    ");
            return Sekunden([&] { neu.ausführen(); });
        });
}

} // namespace

void Speichern_messen(Umfeld& umfeld) {
    const auto messen = [&umfeld](const char* name, void (*was)(benchmark::State&, Umfeld&)) {
        benchmark::RegisterBenchmark(name, [=, &umfeld](benchmark::State& lauf) { was(lauf, umfeld); })
            ->UseManualTime()
            ->Iterations(201)
            ->Unit(benchmark::kMicrosecond);
    };
    messen("Speichern_neben_Anhang", neben_Anhang);
    messen("Speichern_neben_Datenbank", neben_Datenbank);
}

} // namespace kalvora::bench
