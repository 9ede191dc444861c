// How all measurements here work: two sides in turn, many times, and the median of their ratios. What the
// machine does meanwhile meets both sides alike; absolute times say little and are no target.
#pragma once

#include <benchmark/benchmark.h>

#include <filesystem>
#include <functional>
#include <string>
#include <vector>

namespace kalvora::bench {

// One run of a side, in seconds. What it must prepare or clean up it leaves out of the time.
using Seite = std::function<double()>;

double Sekunden(const std::function<void()>& arbeit);
// Of this thread's processor time: for work that waits for nothing, so that a busy machine disturbs less.
double Rechensekunden(const std::function<void()>& arbeit);
// Copies a file, over an earlier copy, and brings the copy to the disk.
void kopiert_und_gesichert(const std::filesystem::path& von, const std::filesystem::path& nach);
double Median(std::vector<double> werte);

struct Ziel {
    std::string Arbeit;
    std::string daneben;
    double höchstens = 0;  // ratio
    bool darunter = false; // the ratio must stay below, not only reach it
};

// Collects the rows of one program and prints them at its end.
class Tafel {
public:
    void Verhältnis(const Ziel& ziel, double gemessen);
    void Größe(const std::string& arbeit, double MB, double höchstens_MB);
    void Wachstum(const std::string& arbeit, const std::vector<int>& Mitarbeiter,
                  const std::vector<double>& werte);
    void drucken() const;

private:
    std::vector<std::string> zeilen_, wachstum_;
};

// The benchmark's iterations as pairs; which side begins changes from pair to pair. One pair before them is
// not counted. Counters: both medians in microseconds, and their ratio.
void abwechselnd(benchmark::State& lauf, Tafel& tafel, const Ziel& ziel, const Seite& eins,
                 const Seite& zwei);

// The same work at several sizes, in turn; the table states the cost relative to the smallest.
void Wachstum_messen(Tafel& tafel, const std::string& arbeit, const std::vector<int>& Mitarbeiter,
                     const std::function<double(int)>& eins, int runden = 15);

// Runs what is registered, then prints the table. `tafel` is filled by the registered functions.
int laufen(int argc, char** argv, const Tafel& tafel);

} // namespace kalvora::bench
