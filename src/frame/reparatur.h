// The repair of a damaged or missing shared file: asks, saves the present state, keeps a copy of the damaged
// file, locks the program for the staff, takes the file from a backup or writes the standard one, and ends
// the program. The damaged file itself goes only once its copy stands.
#pragma once

#include <string>
#include <vector>

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
    // The damaged file as it was, and where it is kept.
    struct Altes {
        Text kopie; // empty: there was no file
        std::string bytes;
        bool lesbar = true; // no: the file itself was moved
    };
    bool ist_Kalvoradat(const Text& datei) const;
    bool inzwischen_heil(const Dateischaden& schaden) const;
    bool Jahre_passen(std::string_view Mitarbeiterdatei) const;
    std::vector<Text> fehlende_Monate() const;
    void Vorlagen_prüfen() const;
    void sichern(const Text& name);
    Altes aufbewahren(const Text& datei, const Text& text) const;
    [[noreturn]] static void nicht_zu_löschen(const Text& datei, const Text& text, const Text& kopie);
    [[noreturn]] static void war_schneller(const Text& datei);
    [[noreturn]] static void kein_Datenordner(const Text& datei, const Text& text);
    [[noreturn]] void Kalvoradat_herstellen(const Text& datei, const Text& text);
    bool Datenordner_erkennen(const Text& datei) const;
    void sperren(const Text& datei, const Text& monate);
    void Datei_zurückholen(const Text& datei, const Altes& alt, const Text& text);
    void Monat_zurückholen(const Text& name, std::string_view beschädigt);
    void nicht_aus_Backup(const Text& datei);
    void Standard_schreiben(const Text& name);
    void Administratoren_lesen(bool neu);
    Text Herkunft() const;
    [[noreturn]] void beenden(const Text& text, const Text& kopie) const;
    FileSystem& fs() const { return d_.kanal.fs(); }
    Gemeinsame_Daten& d_;
    Arbeitsplatz& platz_;
    Backups& backups_;
    Wiederherstellung& wiederherstellung_;
    bool Standard_ = false; // no backup held what was looked for
};

} // namespace kalvora
