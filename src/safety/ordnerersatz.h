// The whole data folder replaced by a container's state, through a redo copy in Backups/: the copy is written
// whole, applied, and becomes a backup of the new state. A start that finds it finishes the work, so that a
// stop at any moment leaves the old state or leads to the new one. One workstation at a time does it, see
// Ersatzamt; whoever was taken for dead and goes on all the same changes nothing any more, see
// Ordneranwendung.
#pragma once

#include "safety/ersatzamt.h"
#include "safety/ordneranwendung.h"

namespace kalvora {

class Ordnerersatz {
public:
    using Gelesen = Wiederherstellung::Gelesen;
    Ordnerersatz(Dateikanal& kanal, const Arbeitsplatz& platz, Wiederherstellung& wiederherstellung,
                 Backups& backups, Logbuch& log);

    // A redo copy stands: nothing may be saved now.
    bool steht_aus() const { return Ersatz_steht_aus(kanal_.fs(), platz_.Backuppfad); }
    struct Auftrag {
        bool sichern = false; // a backup of kind T is made first, and one of the new state in the end
        Text Logtext = {};    // for the logs of whatever the new state has; empty: none
    };
    // What the container does not hold goes in the end. False, with a message: no right to make and remove
    // files in Backups/, another workstation is at it, a folder stands in a file's place, or the redo copy or
    // the backup could not be made; nothing has changed then. What goes wrong later is a Programmabbruch and
    // leaves the redo copy: the next start finishes the work.
    bool Datenordner_ersetzen(const Gelesen& container, const Auftrag& auftrag);
    bool Datenordner_ersetzen(const Gelesen& container) { return Datenordner_ersetzen(container, {}); }
    // At the start, before anything is read; waits for another workstation that is at it. A backup of kind T
    // holds what it finds, and the user is told. True: it was finished here, and the configuration is to be
    // written in this version's form. Programmabbruch: nobody may work before it is finished.
    bool Begonnenes_abschließen();

    std::function<void(int fertig, int alle)> Fortschritt; // called between members
    // Why a state must not be put in place at a start; empty: it may.
    std::function<Text(const Gelesen& container)> Prüfung;

private:
    struct Davor { // the backup of the state that was left
        Text name;
        bool bekannt = false; // it is that one; otherwise the newest before the replacement began
        std::optional<Gelesen> inhalt;
    };
    enum class Abschluss { nichts, fertig, abgelöst };
    bool ablehnen(const Text& grund) const;
    bool bereit();
    bool Antritt_gelungen();
    Ergebnis<FileInfo> Probe() const;
    std::optional<Text> Ordner_im_Weg(const Gelesen& container) const;
    bool Kopie_anlegen(const Gelesen& container, bool sichern, Bestand& bestand);
    bool vorher_sichern(Bestand& bestand);
    void zurückziehen() const;
    bool Abgelöst_melden(const Gelesen& container) const;

    bool Auftrag_gilt();
    std::optional<Bestand> gesichert();
    Bestand gesichert_oder_Abbruch();
    Bestand ohne_Sicherung() const;
    // Without `bestand` everything that stands may go.
    bool anwenden(const Gelesen& container, std::optional<Bestand> bestand, const Text& Logtext,
                  bool als_Sicherung);
    bool durchführen(const Gelesen& container, Bestand bestand);
    void Gebliebenes_melden() const;
    void vermerken(const Text& Logtext);
    bool Kopie_entfernt() const;

    bool Auftrag_steht() const;
    bool Amt_am_Start();
    Abschluss als_Inhaber_abschließen();
    std::optional<Gelesen> Kopie_lesen();
    void Unbrauchbares_weglegen(const Text& mangel);
    void Schreibrecht_prüfen() const;
    Davor Stand_davor() const;
    std::optional<Bestand> Umschau(const Gelesen& container, const Davor& davor);
    Text Sicherungszeit_von(const Text& name) const;
    Text Herkunft(const Gelesen& container, const Text& davor) const;
    Text Kopie() const { return platz_.Backuppfad + Text(REDOKOPIE); }
    Dateikanal& kanal_;
    const Arbeitsplatz& platz_;
    Wiederherstellung& wiederherstellung_;
    Backups& backups_;
    Logbuch& log_;
    Ersatzamt amt_;
    Ordneranwendung anwendung_;
    FileInfo kopie_; // of the redo copy that is being applied
};

} // namespace kalvora
