// The repair of a damaged or missing shared file: asks, saves the present state, moves the damaged file
// aside, takes the file from a backup or writes the standard one, locks the program for the staff, and ends
// it. Nothing is ever deleted.
#pragma once

#include "plan/gemeinsame_daten.h"
#include "safety/backups.h"
#include "safety/wiederherstellung.h"

namespace kalvora {

class Reparatur {
public:
    Reparatur(Gemeinsame_Daten& daten, Backups& backups, Wiederherstellung& wiederherstellung)
        : d_(daten), platz_(daten.platz), backups_(backups), wiederherstellung_(wiederherstellung) {}

    // It is for missing months, for "*.dat" directly in Datenpfad (but for the school holidays, which are
    // then not shown) and for Kalvora.dat.
    bool zuständig(const Dateischaden& schaden) const;
    // Ends in a Programmabbruch always; what the disk refuses meanwhile is thrown.
    [[noreturn]] void Startfehler(const Dateischaden& schaden);

private:
    bool ist_Kalvoradat(const Text& datei) const;
    bool inzwischen_heil(const Text& datei, const Ergebnis<FileInfo>& gefragt) const;
    void Vorlagen_prüfen() const;
    void sichern(const Text& name);
    Text beiseitelegen(const Text& datei, const Text& text) const;
    [[noreturn]] void Kalvoradat_herstellen(const Text& datei, const Text& text);
    bool Datenordner_erkennen(const Text& kopie) const;
    void sperren(const Text& datei, const Text& monate);
    void zurückholen(const Text& datei, const Text& kopie, const Text& monate);
    void Standard_ergänzen(const Text& name);
    void Administratoren_lesen(bool neu);
    [[noreturn]] void beenden(const Text& text, const Text& kopie) const;
    FileSystem& fs() const { return d_.kanal.fs(); }
    Gemeinsame_Daten& d_;
    Arbeitsplatz& platz_;
    Backups& backups_;
    Wiederherstellung& wiederherstellung_;
};

} // namespace kalvora
