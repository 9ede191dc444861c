// The whole data folder replaced by a container's state, through a redo copy in Backups/: the copy is written
// whole, applied, and deleted. A start that finds it finishes the work, so that a stop at any moment leaves
// the old state or leads to the new one. Two workstations may apply the same copy at a time; each stops as
// soon as the copy is no longer the one that it works from.
#pragma once

#include <functional>
#include <set>

#include "safety/wiederherstellung.h"

namespace kalvora {

class Ordnerersatz {
public:
    using Gelesen = Wiederherstellung::Gelesen;
    Ordnerersatz(Dateikanal& kanal, const Arbeitsplatz& platz, Wiederherstellung& wiederherstellung,
                 Backups& backups, Logbuch& log)
        : kanal_(kanal), platz_(platz), wiederherstellung_(wiederherstellung), backups_(backups), log_(log) {}

    // A redo copy stands: nothing may be saved now.
    bool steht_aus() const { return Ersatz_steht_aus(kanal_.fs(), platz_.Backuppfad); }
    // Can a replacement be begun? False, with a message: no right to make and remove files in Backups/, or
    // another workstation is at it.
    bool bereit();
    // What the container does not hold goes in the end. False, with a message: a folder stands in a file's
    // place, or the redo copy could not be made; nothing has changed then. What goes wrong later is a
    // Programmabbruch and leaves the redo copy: the next start finishes the work.
    bool Datenordner_ersetzen(const Gelesen& container);
    // At the start, before anything is read. A backup of kind T holds what it finds, and the user is told.
    // The text for the administration log when a replacement was finished: to be written, and the
    // configuration to be saved in this version's form, once that has been read. Programmabbruch: nobody may
    // work before it is finished.
    std::optional<Text> Begonnenes_abschließen();

    std::function<void(int fertig, int alle)> Fortschritt; // called between members

private:
    Ergebnis<FileInfo> Probe() const;
    std::optional<Text> Ordner_im_Weg(const Gelesen& container) const;
    std::optional<Gelesen> Kopie_lesen();
    void Unlesbares_weglegen();
    void Schreibrecht_prüfen() const;
    Text Stand_sichern(const Gelesen& container);
    Text Herkunft(const Gelesen& container, const Text& davor) const;
    std::set<Text> Bestand() const;
    bool steht_genau(const Containermitglied& m) const;
    bool steht_noch(const Containermitglied& m) const;
    bool Auftrag_gilt() const;
    bool anwenden(const Gelesen& container);
    bool durchführen(const Gelesen& container);
    bool alle_schreiben(const Gelesen& container, bool erstmals, bool& vollständig);
    bool Übriges_entfernen(const Gelesen& container, const std::set<Text>& vorher);
    bool weg_damit(const Text& ordner, const Text& name, const Gelesen& container) const;
    bool Kopie_löschen();
    Text Kopie() const { return platz_.Backuppfad + Text(REDOKOPIE); }
    Dateikanal& kanal_;
    const Arbeitsplatz& platz_;
    Wiederherstellung& wiederherstellung_;
    Backups& backups_;
    Logbuch& log_;
    FileInfo kopie_;              // of the redo copy that is being applied
    std::vector<Text> geblieben_; // folders with files that could not be removed
};

} // namespace kalvora
