#include "messung/messung.h"

#include <fcntl.h>
#include <malloc.h>
#include <unistd.h>

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <ctime>
#include <stdexcept>

namespace kalvora::bench {

namespace {

template <class... Werte>
std::string Text_aus(const char* form, Werte... werte) {
    char puffer[400];
    std::snprintf(puffer, sizeof puffer, form, werte...);
    return puffer;
}

std::string Tabellenzeile(const std::string& arbeit, const std::string& gemessen, const std::string& ziel,
                          bool erreicht) {
    return "| " + arbeit + " | " + gemessen + " | " + ziel + " | " + (erreicht ? "ja" : "NEIN") + " |";
}

} // namespace

double Sekunden(const std::function<void()>& arbeit) {
    const auto beginn = std::chrono::steady_clock::now();
    arbeit();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - beginn).count();
}

double Rechensekunden(const std::function<void()>& arbeit) {
    const auto jetzt = [] {
        timespec t{};
        clock_gettime(CLOCK_THREAD_CPUTIME_ID, &t);
        return static_cast<double>(t.tv_sec) + static_cast<double>(t.tv_nsec) * 1e-9;
    };
    const double beginn = jetzt();
    arbeit();
    return jetzt() - beginn;
}

void kopiert_und_gesichert(const std::filesystem::path& von, const std::filesystem::path& nach) {
    std::filesystem::copy_file(von, nach, std::filesystem::copy_options::overwrite_existing);
    const int datei = ::open(nach.c_str(), O_RDONLY | O_CLOEXEC);
    if (datei < 0 || ::fsync(datei) != 0 || ::close(datei) != 0) throw std::runtime_error("the copy failed");
}

double Median(std::vector<double> werte) {
    const auto mitte = werte.begin() + static_cast<std::ptrdiff_t>(werte.size() / 2);
    std::nth_element(werte.begin(), mitte, werte.end());
    return *mitte;
}

void Tafel::Verhältnis(const Ziel& ziel, double gemessen) {
    const bool erreicht = ziel.darunter ? gemessen < ziel.höchstens : gemessen <= ziel.höchstens;
    zeilen_.push_back(Tabellenzeile(ziel.Arbeit + " / " + ziel.daneben, Text_aus("%.2f×", gemessen),
                                    Text_aus(ziel.darunter ? "< %.3g×" : "≤ %.3g×", ziel.höchstens),
                                    erreicht));
}

void Tafel::Größe(const std::string& arbeit, double MB, double höchstens_MB) {
    zeilen_.push_back(Tabellenzeile(arbeit, Text_aus("%.1f MB", MB), Text_aus("< %.0f MB", höchstens_MB),
                                    MB < höchstens_MB));
}

void Tafel::Wachstum(const std::string& arbeit, const std::vector<int>& Mitarbeiter,
                     const std::vector<double>& werte) {
    std::string zeile = "| " + arbeit + " | ";
    for (std::size_t i = 0; i < werte.size(); ++i)
        zeile += Text_aus("%s%d: %.3g×", i > 0 ? ", " : "", Mitarbeiter[i], werte[i] / werte[0]);
    wachstum_.push_back(zeile + " |");
}

void Tafel::drucken() const {
    if (!zeilen_.empty()) std::puts("\n| Zeile | gemessen | Ziel | erreicht |\n|---|---|---|---|");
    for (const std::string& zeile : zeilen_)
        std::puts(zeile.c_str());
    if (!wachstum_.empty()) std::puts("\n| Zeile | Aufwand nach Mitarbeitern |\n|---|---|");
    for (const std::string& zeile : wachstum_)
        std::puts(zeile.c_str());
}

void abwechselnd(benchmark::State& lauf, Tafel& tafel, const Ziel& ziel, const Seite& eins,
                 const Seite& zwei) {
    std::vector<double> a, b, verhältnisse;
    eins();
    zwei();
    for ([[maybe_unused]] const auto _ : lauf) {
        double erste = 0, zweite = 0;
        if (a.size() % 2 == 0) {
            erste = eins();
            zweite = zwei();
        } else {
            zweite = zwei();
            erste = eins();
        }
        a.push_back(erste);
        b.push_back(zweite);
        verhältnisse.push_back(erste / zweite);
        lauf.SetIterationTime(erste);
    }
    const double verhältnis = Median(verhältnisse);
    lauf.counters["eins_us"] = Median(a) * 1e6;
    lauf.counters["daneben_us"] = Median(b) * 1e6;
    lauf.counters["mal"] = verhältnis;
    tafel.Verhältnis(ziel, verhältnis);
}

void Wachstum_messen(Tafel& tafel, const std::string& arbeit, const std::vector<int>& Mitarbeiter,
                     const std::function<double(int)>& eins, int runden) {
    std::vector<std::vector<double>> zeiten(Mitarbeiter.size());
    for (int runde = 0; runde <= runden; ++runde)
        for (std::size_t i = 0; i < Mitarbeiter.size(); ++i) {
            const double zeit = eins(Mitarbeiter[i]);
            if (runde > 0) zeiten[i].push_back(zeit);
        }
    std::vector<double> mediane;
    for (const auto& z : zeiten)
        mediane.push_back(Median(z));
    tafel.Wachstum(arbeit, Mitarbeiter, mediane);
}

int laufen(int argc, char** argv, const Tafel& tafel) {
#ifdef M_MMAP_THRESHOLD
    // As it stands when a program starts, and without learning from what was measured before: large memory
    // comes fresh from the system each time, on both sides.
    mallopt(M_MMAP_THRESHOLD, 128 * 1024);
#endif
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv)) return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    tafel.drucken();
    return 0;
}

} // namespace kalvora::bench
