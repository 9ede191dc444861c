// Which workstation replaces the data folder: one at a time. It holds an office, a dot-named file in Backups/
// that says who it is and grows while its holder lives. Nobody takes a holder's file away: whoever has
// watched one for a while without a sign of life makes the file of the next number, which only one can do,
// and the former holder finds himself relieved.
#pragma once

#include <exception>
#include <functional>
#include <optional>

#include "files/arbeitsplatz.h"
#include "files/dateikanal.h"

namespace kalvora {

class Ersatzamt {
public:
    Ersatzamt(Dateikanal& kanal, const Arbeitsplatz& platz) : kanal_(kanal), platz_(platz) {}

    enum class Antritt {
        angetreten,
        erledigt, // what it was wanted for has been done by its holder
        vergeben, // its holder lives
    };
    // Waits beside a holder who shows no sign of life, and takes over when he is dead; while `nötig` says so.
    // With `geduldig` also beside one who lives, for some minutes. A fault is thrown.
    Antritt antreten(bool geduldig, const std::function<bool()>& nötig);
    Text Inhaber() const { return wer_; } // of the holder met last: for messages
    bool gilt() const;                    // still this one; a fault is thrown
    void Lebenszeichen();                 // to be called while the work goes on
    void niederlegen();
    // Leaves the office on every way out but the process's own end.
    template <class F>
    auto ausüben(F&& arbeit) {
        try {
            auto ergebnis = arbeit();
            niederlegen();
            return ergebnis;
        } catch (const std::exception&) {
            niederlegen();
            throw;
        }
    }

private:
    struct Träger {
        int nummer = 0;
        FileInfo info;
        Text inhalt;
    };
    Text Pfad(int nummer) const;
    std::vector<int> Nummern() const;
    std::optional<Träger> höchster() const;
    bool eigener_Vorgänger(const Text& inhalt) const;
    bool eintragen(int nummer);
    Dateikanal& kanal_;
    const Arbeitsplatz& platz_;
    int nummer_ = 0; // 0: not held
    std::string eintrag_;
    Text wer_;
    double zeichen_ = 0; // steady seconds: of the last sign
};

} // namespace kalvora
