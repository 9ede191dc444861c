// The top of the program: what lower floors throw becomes one message and one log record here.
#pragma once

#include <exception>

#include "plan/gemeinsame_daten.h"

namespace kalvora {

class Meldung {
public:
    // `daten` may be missing: the program may fail before it has any.
    Meldung(Application& app, const Arbeitsplatz& platz, Gemeinsame_Daten* daten)
        : app_(app), platz_(platz), d_(daten) {}
    // Reports an exception that ends the program. With `still` nothing is shown.
    void berichten(const std::exception_ptr& fehler, bool still);

private:
    void Programmabbruch_melden(const Programmabbruch& abbruch);
    void Startfehler(const Text& text, const Text& datei);
    void Fehlerbehandlung(const Laufzeitfehler& fehler);
    void zeigen(const Text& text) const;
    void protokollieren(const Text& text);
    Application& app_;
    const Arbeitsplatz& platz_;
    Gemeinsame_Daten* d_;
    bool still_ = false;
};

} // namespace kalvora
