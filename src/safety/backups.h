// Backups: all shared files of a moment in one container, in the folder Backups/. Named
// "yymmdd hhnnss <kind>.dat"; the kinds are M monthly, T daily, A before an administrative change, E export,
// F before a repair, J before the year change.
#pragma once

#include <functional>

#include "files/logbuch.h"
#include "plan/programmsperre.h"
#include "safety/bestand.h"
#include "safety/container.h"

namespace kalvora {

// Is it the name of a backup, "yymmdd hhnnss <kind>.dat"? The date may be none (kind J, redo copy).
bool Backupname_zulässig(TextView name);

class Backups {
public:
    Backups(Dateikanal& kanal, Arbeitsplatz& platz, const Konfigdaten& konfig, Logbuch& log)
        : kanal_(kanal), platz_(platz), konfig_(konfig), log_(log) {}

    // True when the container stands whole. False without the folder, in look-back mode, while the data
    // folder is being replaced, when a member cannot be read or the file cannot be made: `Hindernis`. Faults
    // of files are not thrown. `beschädigt`: the name of a member that is passed over.
    bool Backup_erstellen(TextView art, const Text& beschädigt = {}) {
        return erstellen(art, beschädigt, nullptr);
    }
    // One of kind T for whoever replaces the data folder, and so may make one meanwhile: what it holds, as it
    // stood. Nothing: it could not be made.
    std::optional<Bestand> Ersatzsicherung();
    // The container at `pfad` becomes one of kind T, the newest of all. False: it stays where it is.
    bool aufnehmen(const Text& pfad);
    bool Tagessicherung_fällig() const;
    // Why the latest backup was not made, as it stands in the log; empty when it was, or without a cause that
    // anybody could remove.
    const Text& Hindernis() const { return hindernis_; }
    // The one of kind F of this day: made now, or there already.
    bool Fehlersicherung(const Text& beschädigt = {}) {
        return vorhanden(platz_.Heute_S, u"F") || Backup_erstellen(u"F", beschädigt);
    }
    const Text& Backupname() const { return name_; } // of the latest one; without folder
    // One of this day (of this month: with `yymm`) stands in the folder, whoever made it.
    bool vorhanden(TextView tag, TextView art) const;

    // The backups of the month and of the day, by the first workstation that starts. True: one was made, and
    // the folders are to be tidied.
    bool Tagessicherung();
    // How many logs and backups of each kind stay; and the files of display permissions and groups go that
    // the settings have made unused. Nothing is reported; what cannot be deleted waits for the next time.
    void Aufräumen();
    // Deletes the oldest beyond `anzahl` whose date, read as a number, is more than 6 behind today's. With 0
    // all go.
    void Alte_Dateien_löschen(const Text& ordner, TextView maske, int anzahl) const;

    std::function<void(int fertig, int alle)> Fortschritt; // called between members

private:
    bool verjüngen(const Text& pfad) const;
    struct Quelle {
        Text ordner, name;
        std::uint64_t größe = 0;
    };
    enum class Sammlung { Fertig, Gescheitert, Veraltet };
    bool erstellen(TextView art, const Text& beschädigt, Bestand* bestand);
    std::optional<std::string> Container(const Text& beschädigt, Bestand* bestand);
    void Quellen_anfügen(std::vector<Quelle>& alle, const Text& ordner, TextView maske,
                         const Text& beschädigt) const;
    Sammlung Mitglieder_anfügen(Containerschreiber& container, const std::vector<Quelle>& alle,
                                bool letzter_Versuch, bool& gewartet, Bestand* bestand);
    Ergebnis<Dateiinhalt> Mitglied_lesen(const Text& pfad, Dateiinhalt vorrat, bool& gewartet);
    bool schreiben(TextView art, const std::string& container);
    Fehlercode unter_freiem_Namen(TextView art, const std::function<Fehlercode(const Text& pfad)>& anlegen);
    void vermerken(const Text& hindernis);
    void Fehler_vermerken(int nummer, TextView wobei, const Text& datei);
    Text Zeitname(TextView art, int ausweichen) const;
    int Logmonate() const;
    void Unbenutztes_löschen() const;
    void Nebendateien_löschen() const;
    Dateikanal& kanal_;
    Arbeitsplatz& platz_;
    const Konfigdaten& konfig_;
    Logbuch& log_;
    Text name_, hindernis_;
};

} // namespace kalvora
