// Is a file's content sound? Asked of members of backups before they are written back: the newest backup may
// hold the damage already. The program's own readers judge, on a file that stands in memory alone; they show
// nothing and wait for nobody.
#pragma once

#include <optional>

#include "files/konfigdaten.h"

namespace kalvora {

class Dateiprobe {
public:
    enum class Urteil {
        heil,
        fehlerhafte_Zeilen, // a capture file whose head is sound: the other rows can be read
        ungeprüft,          // the installation's files that it takes are out of reach or damaged themselves
        beschädigt,
    };
    struct Befund {
        Urteil urteil = Urteil::heil;
        Text fehler; // what the reader says; empty when sound
    };
    Dateiprobe(Dateikanal& kanal, const Arbeitsplatz& platz) : kanal_(kanal), platz_(platz) {}

    // By the reader of that name; files without one need a line, and lines that can be decoded.
    Befund prüfen(const Text& name, std::string_view bytes) const;
    Text Fehler(const Text& name, std::string_view bytes) const { return prüfen(name, bytes).fehler; }
    // First of the years of a staff file; nothing when it is damaged.
    std::optional<int> Startjahr(std::string_view bytes) const;
    // What a Konfigdaten.dat says, the present user's role included; nothing when it is damaged.
    std::optional<Konfiguration> Konfig(std::string_view bytes) const;

private:
    Dateikanal& kanal_;
    const Arbeitsplatz& platz_;
};

} // namespace kalvora
