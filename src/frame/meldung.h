// The top of the program: what lower floors throw becomes one message and one log record here, or the repair
// of a file.
#pragma once

#include <exception>

#include "frame/reparatur.h"

namespace kalvora {

// Of what is no error of this program's own: no memory (7) or an internal error (51).
Laufzeitfehler als_Laufzeitfehler(const std::exception& fehler);

class Meldung {
public:
    // `daten` and `reparatur` may be missing: the program may fail before it has any.
    Meldung(Application& app, const Arbeitsplatz& platz, Gemeinsame_Daten* daten, Reparatur* reparatur)
        : app_(app), platz_(platz), d_(daten), reparatur_(reparatur) {}
    // Reports an exception that ends the program. With `still` nothing is shown, asked or repaired.
    void berichten(const std::exception_ptr& fehler, bool still);
    // Reports a fault behind which the program goes on all the same.
    void berichten_und_weiter(const Laufzeitfehler& fehler);

private:
    void einordnen(const std::exception_ptr& fehler);
    void Programmabbruch_melden(const Programmabbruch& abbruch);
    void Startfehler(const Dateischaden& schaden);
    void Installation_melden(const Laufzeitfehler& fehler);
    void Fehlerbehandlung(const Laufzeitfehler& fehler);
    void aufräumen() const;
    void zeigen(const Text& text) const;
    void protokollieren(Text text);
    Application& app_;
    const Arbeitsplatz& platz_;
    Gemeinsame_Daten* d_;
    Reparatur* reparatur_;
    bool still_ = false, weiter_ = false;
};

} // namespace kalvora
