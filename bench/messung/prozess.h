// Starting a program, waiting for its end or for its first sign, and what it took.
#pragma once

#include <string>
#include <vector>

namespace kalvora::bench {

struct Lauf {
    double Sekunden = 0; // until the end, or until the first byte of its output
    int Status = -1;
    double Speicher_MB = 0; // the most it held at once
};

struct Aufrufe {
    std::vector<std::string> Argumente; // the program's path first
    std::vector<std::string> Umgebung;  // "NAME=value", added to this process's
    std::string Eingabe;                // file; empty: no input
};

Lauf bis_zum_Ende(const Aufrufe& a);
// The time until the program writes something; it is expected to end by itself then.
Lauf bis_zum_Zeichen(const Aufrufe& a);

} // namespace kalvora::bench
