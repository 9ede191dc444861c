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
    // The employee who is next in staff order behind the last hit and alone has his key; 0 none.
    int erwartet() const { return nach_[static_cast<std::size_t>(zuletzt_)]; }
    // "A:<key>:" of an employee: how his rows begin.
    std::string_view Zeilenanfang(int i) const {
        const auto k = static_cast<std::size_t>(i);
        return std::string_view(anfänge_).substr(anfang_[k - 1], anfang_[k] - anfang_[k - 1]);
    }
    void gefunden(int i) { zuletzt_ = i; }
    int nächster_gleicher(int i) const { return gleich_[static_cast<std::size_t>(i)]; } // 0 none

private:
    static std::uint32_t streuwert(std::string_view s);
    static bool gleich(std::string_view a, std::string_view b);
    const std::vector<std::string>& schlüssel_;
    std::vector<int> tafel_;          // open addressing, staff row or 0
    std::vector<int> gleich_;         // index 1..N
    std::string anfänge_;             // how rows begin, one behind the other
    std::vector<std::size_t> anfang_; // index 0..N: where that of row i + 1 begins
    std::vector<int> nach_;           // of row 0..N the next one with a key that no other row has; 0 none
    int zuletzt_ = 0;
};

} // namespace kalvora
