// Faults for the in-memory disk: which call goes wrong, and how; and the diary of all calls.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "base/text.h"

namespace kalvora {

// Thrown where the program is to end in the middle of a call. No std::exception, so that only a handler for
// everything, and the test itself, catch it.
struct Programmende {};

enum class Wirkung {
    Fehler,          // the call does nothing and says `nummer`
    Fehler_dahinter, // the call does its work and says `nummer` all the same (a lost answer)
    Kurz, // a write takes only `bytes` bytes (and is no fault); every other call fails with `nummer`
    Kurz_und_Fehler, // a write puts `bytes` bytes on the disk and says `nummer`
    Ende,            // the program ends before the call
    Ende_mitten,     // a write puts `bytes` bytes on the disk, then the program ends
    Ende_dahinter,   // the program ends behind the call
};

struct Störung {
    std::string aufruf; // name of the call ("open", "write", "sync", ...); "" any, "*" any that changes
    Text maske = u"*";  // file name without folder, with * and ?
    int beim = 1;       // the n-th call that fits, counted from the moment of setting
    Wirkung wirkung = Wirkung::Fehler;
    int nummer = 57;
    std::size_t bytes = 0;
    bool dauernd = false; // also every later one
};

// One call of the diary. `pfad` is that of the file also where the call has a handle; `nummer` its fault.
struct Dateiaufruf {
    std::string name;
    Text pfad;
    int nummer = 0;
    std::size_t bytes = 0;
    friend bool operator==(const Dateiaufruf&, const Dateiaufruf&) = default;
};

class Störstellen {
public:
    void setzen(Störung s) { stellen_.push_back({std::move(s), 0}); }
    void aufheben() { stellen_.clear(); }

    // The fault that this call meets, nullptr for none.
    const Störung* treffer(const std::string& name, TextView pfad, bool ändert) {
        const Störung* gefunden = nullptr;
        for (auto& [s, zähler] : stellen_) {
            const bool art = s.aufruf.empty() || s.aufruf == name || (s.aufruf == "*" && ändert);
            if (!art || !passt_auf_Maske(dateiname(pfad), s.maske)) continue;
            ++zähler;
            if (!gefunden && (zähler == s.beim || (s.dauernd && zähler > s.beim))) gefunden = &s;
        }
        return gefunden;
    }

private:
    static TextView dateiname(TextView pfad) {
        while (pfad.size() > 1 && pfad.back() == u'/')
            pfad.remove_suffix(1);
        return pfad.substr(pfad.rfind(u'/') + 1);
    }
    std::vector<std::pair<Störung, int>> stellen_;
};

} // namespace kalvora
