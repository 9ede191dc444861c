// kalvora_prozessbench: whole processes. What was not built is left out. This program itself stays small: a
// started program's peak memory counts what its starter held at that moment.
#include <cmath>
#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "messung/grosser_ordner.h"
#include "messung/messung.h"
#include "messung/prozess.h"

namespace {

using namespace kalvora::bench;

const std::string BIN = KALVORA_BIN_DIR "/";

bool gebaut(const std::string& name) {
    return std::filesystem::exists(BIN + name);
}

struct Umfeld {
    Tafel tafel;
    Firmenlager lager;

    // A start of the program on a company of that size, as it goes every time but the first one of a day.
    Aufrufe Start(const std::string& programm, int Mitarbeiter) {
        const std::string daten = kalvora::zu_utf8(lager.Datenpfad(Mitarbeiter));
        const std::string platz = lager.ordner().pfad() + "platz-" + std::to_string(Mitarbeiter);
        std::filesystem::create_directories(platz + "/temp");
        return {{BIN + programm, "/path", daten, "/d:161126", "/nowelcomescreen"},
                {"KALVORA_SYSTEMPFAD=" + platz, "TEMP=" + platz + "/temp", "USERNAME=messung",
                 "QT_QPA_PLATFORM=offscreen"},
                {}};
    }
    // A script of console commands as a file.
    std::string Skript(const std::string& text) const {
        const std::string pfad = lager.ordner().pfad() + "skript.txt";
        std::ofstream(pfad) << text;
        return pfad;
    }
};

double gelungen(const Lauf& lauf) {
    if (lauf.Status != 0) throw std::runtime_error("the program ended with " + std::to_string(lauf.Status));
    return lauf.Sekunden;
}

void Konsole(benchmark::State& lauf, Umfeld& umfeld) {
    const auto bis_Ende = [&](int n) { return gelungen(bis_zum_Ende(umfeld.Start("kalvora-konsole", n))); };
    abwechselnd(
        lauf, umfeld.tafel,
        {"Konsole, Start bis erster Monat und Ende, 50 Mitarbeiter", "dasselbe Programm mit --version", 3},
        [&] { return bis_Ende(50); },
        [&] {
            return gelungen(bis_zum_Ende({{BIN + "kalvora-konsole", "--version"}, {}, {}}));
        });
    Wachstum_messen(umfeld.tafel, "Konsole, Start bis Ende", {50, 500, 5000}, bis_Ende);
}

// The files of the folder and of its folders one by one, each brought to the disk.
double Kopie_mit_fsync(const std::string& von, const std::string& nach) {
    namespace fs = std::filesystem;
    fs::remove_all(nach);
    return Sekunden([&] {
        fs::create_directories(nach);
        for (const auto& eintrag : fs::recursive_directory_iterator(von)) {
            const fs::path ziel = fs::path(nach) / fs::relative(eintrag.path(), von);
            if (eintrag.is_directory())
                fs::create_directories(ziel);
            else
                kopiert_und_gesichert(eintrag.path(), ziel);
        }
    });
}

// The first start of a day makes a backup, tidies the log and cleans up; it stands beside a later start of
// that day and the plain copy of the folder.
void Erster_Start_des_Tages(benchmark::State& lauf, Umfeld& umfeld) {
    constexpr int MITARBEITER = 50;
    const std::string daten = kalvora::zu_utf8(umfeld.lager.Datenpfad(MITARBEITER));
    const auto start = [&] { return gelungen(bis_zum_Ende(umfeld.Start("kalvora-konsole", MITARBEITER))); };
    abwechselnd(
        lauf, umfeld.tafel,
        {"erster Start des Tages, 50 Mitarbeiter", "ein späterer Start und die Kopie des Ordners mit fsync",
         2},
        [&] {
            std::filesystem::remove_all(daten + "Backups");
            std::filesystem::create_directories(daten + "Backups");
            const double zeit = start();
            if (std::filesystem::is_empty(daten + "Backups")) throw std::runtime_error("no backup was made");
            return zeit;
        },
        [&] { return start() + Kopie_mit_fsync(daten, umfeld.lager.ordner().pfad() + "kopie"); });
}

// Start and a look at every month of the year.
Aufrufe langer_Lauf(Umfeld& umfeld, int Mitarbeiter) {
    std::string skript;
    for (int monat = 0; monat < 12; ++monat)
        skript += "wähle tabMonate #" + std::to_string(monat) + "\n";
    Aufrufe a = umfeld.Start("kalvora-konsole", Mitarbeiter);
    a.Argumente.insert(a.Argumente.end(), {"--skript", umfeld.Skript(skript)});
    return a;
}

void Speicher(benchmark::State& lauf, Umfeld& umfeld) {
    const std::vector<int> größen{50, 500, 5000};
    std::vector<double> MB;
    for ([[maybe_unused]] const auto _ : lauf)
        for (const int n : größen) {
            bis_zum_Ende(langer_Lauf(umfeld, n)); // the first start of a day makes a backup
            const Lauf l = bis_zum_Ende(langer_Lauf(umfeld, n));
            gelungen(l);
            MB.push_back(l.Speicher_MB);
        }
    lauf.counters["MB"] = MB.back();
    umfeld.tafel.Größe("Konsole, größter Speicher mit 5.000 Mitarbeitern", MB.back(), 150);
    umfeld.tafel.Wachstum("Konsole, größter Speicher", größen, MB);
}

void Fenster(benchmark::State& lauf, Umfeld& umfeld) {
    const auto bis_Monat = [&](int n) {
        return gelungen(bis_zum_Zeichen(umfeld.Start("kalvora-bench-fensterstart", n)));
    };
    const Aufrufe leer{{BIN + "kalvora-bench-leeres-fenster"}, {"QT_QPA_PLATFORM=offscreen"}, {}};
    abwechselnd(
        lauf, umfeld.tafel,
        {"Fenster, Start bis erster Monat zu sehen, 50 Mitarbeiter", "leeres Fenster mit leerer Tabelle", 2},
        [&] { return bis_Monat(50); }, [&] { return gelungen(bis_zum_Zeichen(leer)); });
    Wachstum_messen(umfeld.tafel, "Fenster, Start bis erster Monat", {50, 500, 5000}, bis_Monat);
}

// Beside the size of the container that it made.
void Backup_Speicher(benchmark::State& lauf, Umfeld& umfeld) {
    namespace fs = std::filesystem;
    const std::string ordner = großer_Ordner(umfeld.lager);
    double MB = 0, Container_MB = 0;
    for ([[maybe_unused]] const auto _ : lauf) {
        fs::remove_all(ordner + "Backups");
        fs::create_directories(ordner + "Backups");
        const Lauf l = bis_zum_Ende({{BIN + "kalvora-bench-sicherung", ordner}, {}, {}});
        gelungen(l);
        MB = l.Speicher_MB;
        for (const auto& datei : fs::directory_iterator(ordner + "Backups"))
            Container_MB = static_cast<double>(datei.file_size()) / 1e6;
    }
    umfeld.tafel.Größe("Backup von " + std::to_string(std::lround(Container_MB)) + " MB, größter Speicher",
                       MB, 3 * Container_MB);
}

} // namespace

int main(int argc, char** argv) {
    Umfeld umfeld;
    const auto messen = [&](const char* name, void (*was)(benchmark::State&, Umfeld&), int runden) {
        benchmark::RegisterBenchmark(name, [=, &umfeld](benchmark::State& lauf) { was(lauf, umfeld); })
            ->UseManualTime()
            ->Iterations(runden)
            ->Unit(benchmark::kMillisecond);
    };
    if (gebaut("kalvora-konsole")) {
        messen("Konsole_Start", Konsole, 51);
        messen("Erster_Start_des_Tages", Erster_Start_des_Tages, 31);
        benchmark::RegisterBenchmark("Konsole_Speicher", [&](benchmark::State& l) {
            Speicher(l, umfeld);
        })->Iterations(1);
    }
    benchmark::RegisterBenchmark("Backup_Speicher", [&](benchmark::State& l) {
        Backup_Speicher(l, umfeld);
    })->Iterations(1);
    if (gebaut("kalvora-bench-fensterstart")) messen("Fenster_Start", Fenster, 31);
    return laufen(argc, argv, umfeld.tafel);
}
