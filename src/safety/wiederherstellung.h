// Writes members of backup containers back. For the whole data folder see Ordnerersatz.
#pragma once

#include <functional>

#include "safety/backups.h"
#include "safety/dateiprobe.h"

namespace kalvora {

class Wiederherstellung {
public:
    Wiederherstellung(Dateikanal& kanal, const Arbeitsplatz& platz)
        : kanal_(kanal), platz_(platz), probe_(kanal, platz) {}

    // `datei`: a path; empty is the newest backup. `filter`: empty all members, "NoLogs" all but logs, else
    // the one of that name. False: there is none, or (with a message) it is no container; then nothing was
    // written. Faults in writing are thrown.
    bool Restore_aus_Backupdatei(const Text& datei, const Text& filter);
    // Takes the file from the newest backup whose member of that name is sound; a staff file only with years
    // that fit the months in the data folder. False: there is none. With `gelesen` it is written only while
    // that still stands there; 58 is thrown otherwise.
    bool Datei_zurückholen(const Text& name,
                           const std::optional<Dateiwerk::Vorgefunden>& gelesen = std::nullopt);
    // Writes the month's file `zielname` (in the data folder): the newest sound version of the month in the
    // backups, or a greater one that still stands in the folder, or else an empty month; and behind it the
    // rows that can still be read in the damaged one. False: nothing but the empty month.
    bool Monat_zurückholen(const Text& yymm, const Text& zielname, std::string_view beschädigt,
                           const Text& Reservezeile = {});

    // Of a month's file that is damaged: its bytes with the rows that the newest backup of this version, or
    // else of an earlier one, holds beyond them. Nothing: none are missing.
    std::optional<std::string> Monat_vervollständigt(const Text& name, std::string_view bytes) const;
    // The first month in force that lacks rows of the newest readable backup, and the time of that; or
    // nothing.
    struct Gekürzt {
        Text pfad, Sicherungszeit;
    };
    std::optional<Gekürzt> gekürzter_Monat() const;
    // Of the backup that the file or month taken last is from; empty: it is from none.
    Text Quelle() const;

    // Names of the restore points, from the newest to the oldest by file time; without F, I and foreign
    // names.
    std::vector<Text> Sicherungen() const;

    // A container in memory. Nothing: it is none. A fault of the file is thrown.
    struct Gelesen {
        Dateiinhalt inhalt;
        std::vector<Containermitglied> mitglieder; // views into `inhalt`
        const Containermitglied* finden(TextView name) const;
        // Makes the months versions of their own, see `neu_beginnen`: before they take the place of what
        // stands there, which other workstations and older backups know.
        void Monate_neu_beginnen(Schlüsselquelle& schlüssel);
    };
    std::optional<Gelesen> lesen(const Text& pfad) const;
    void kein_Container_melden() const;
    // Puts a member in its place, in the spelling that it has; faults are thrown.
    void schreiben(const Containermitglied& m) { schreiben(Zielordner(m), m.name, m.bytes); }
    Text Zielordner(const Containermitglied& m) const { return m.Log() ? platz_.Logpfad : platz_.Datenpfad; }
    bool ist_Verknüpfung(const Text& ordner, const Text& name) const;

private:
    std::vector<Text> Sicherungen(bool& vollständig) const;
    struct Version {
        Text stamm; // empty: none found
        std::string bytes;
        Dateiprobe::Urteil urteil = Dateiprobe::Urteil::beschädigt;
        Text quelle; // name of its backup
    };
    // From the newest backup on, until `fertig`.
    using Blick = std::function<bool(const Gelesen&, const Text& Backupname)>;
    void Sicherungen_durchgehen(const Blick& fertig) const;
    Dateiprobe::Urteil Version_prüfen(const Text& name, std::string_view bytes, Version& beste,
                                      const Text& Backupname) const;
    Version aus_Sicherungen(const Text& yymm) const;
    std::vector<const Containermitglied*> Versionen(const Gelesen& container, const Text& yymm) const;
    std::optional<Gekürzt> gekürzt(const Gelesen& container, const Text& Backupname) const;
    bool fehlen_Sätze(const Text& pfad, std::string_view gesichert) const;
    std::string Monat_einsetzen(std::string_view basis, const Text& yymm, const Text& zielname,
                                std::string_view beschädigt);
    void aus_Ordner(const Text& yymm, const Text& außer, Version& beste) const;
    bool passt(const Text& name, std::string_view bytes) const;
    void schreiben(const Text& ordner, const Text& name, std::string_view bytes,
                   const std::optional<Dateiwerk::Vorgefunden>& gelesen = std::nullopt);
    Dateikanal& kanal_;
    const Arbeitsplatz& platz_;
    Dateiprobe probe_;
    Text quelle_;
};

// "yymmddhhnnss" of a backup: by its file time, or by its name; empty without the file.
Text Sicherungsschlüssel(const Dateikanal& kanal, const Arbeitsplatz& platz, const Text& name,
                         bool aus_Namen);
Text Sicherungszeit(const Arbeitsplatz& platz, TextView schlüssel); // "16.11.26, 12:00:00 Uhr"

} // namespace kalvora
