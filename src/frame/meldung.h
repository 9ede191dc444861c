// The top of the program: what lower floors throw becomes one message and one log record here.
#pragma once

#include <exception>

#include "plan/gemeinsame_daten.h"

namespace kalvora {

class Meldung {
public:
    explicit Meldung(Gemeinsame_Daten& daten) : d_(daten) {}
    // Reports an exception that ends the program. With `still` nothing is shown.
    void berichten(const std::exception_ptr& fehler, bool still);

private:
    void Programmabbruch_melden(const Programmabbruch& abbruch);
    void Startfehler(const Text& text, const Text& datei);
    void Fehlerbehandlung(const Laufzeitfehler& fehler);
    void zeigen(const Text& text) const;
    void protokollieren(const Text& text);
    Gemeinsame_Daten& d_;
    bool still_ = false;
};

} // namespace kalvora
