// The 36 months from January of Startjahr, by employee: one code a day. Month index 1 to 36, staff row 1 to
// N.
#pragma once

#include <array>
#include <cstdint>
#include <string_view>
#include <vector>

#include "base/fehler.h"
#include "files/monatsdatei.h"

namespace kalvora {

inline constexpr int MONATE = 36;

class Monatsdaten {
public:
    void setzen(int N); // all blank
    void Monat_leeren(int monat);
    int Mitarbeiterzahl() const { return n_; }
    // 31 codes, blanks where nothing was entered.
    std::string_view tage(int monat, int i) const { return {zelle(monat, i), TAGE}; }
    char* zelle(int monat, int i) { return daten_.data() + stelle(monat, i); }
    const char* zelle(int monat, int i) const { return daten_.data() + stelle(monat, i); }
    bool Code_vorhanden(char code) const;
    bool belegt(int von, int bis) const; // any entry in the months from `von` to `bis`

private:
    std::size_t stelle(int monat, int i) const;
    int n_ = 0;
    std::vector<char> daten_;
};

// Finds the staff row of a key of the code page, compared without case. Keys come mostly in staff order, so
// the employee behind the last hit is tried first.
class Schlüsselverzeichnis {
public:
    explicit Schlüsselverzeichnis(const std::vector<std::string>& schlüssel); // index from 0 is row 1
    int finden(std::string_view schlüssel); // first row with the key; 0 none
    // The row of the employee who is next in staff order, if the key is exactly his; 0 otherwise.
    int nächste_Zeile(std::string_view schlüssel) {
        const int i = nach_[static_cast<std::size_t>(zuletzt_)];
        if (i == 0 || schlüssel_[static_cast<std::size_t>(i - 1)] != schlüssel) return 0;
        return zuletzt_ = i;
    }
    int nächster_gleicher(int i) const { return gleich_[static_cast<std::size_t>(i)]; } // 0 none

private:
    static std::uint32_t streuwert(std::string_view s);
    static bool gleich(std::string_view a, std::string_view b);
    const std::vector<std::string>& schlüssel_;
    std::vector<int> tafel_;  // open addressing, staff row or 0
    std::vector<int> gleich_; // index 1..N
    std::vector<int> nach_;   // of row 0..N the next one with a key that no other row has; 0 none
    int zuletzt_ = 0;
};

} // namespace kalvora
