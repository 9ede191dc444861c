// Writes members of backup containers back. A whole data folder goes through a redo copy, Backups/"000000
// 000000 I.dat": written whole, applied, deleted. A start that finds it finishes the work, so that a stop at
// any moment leaves the old state or leads to the new one.
#pragma once

#include <functional>

#include "files/arbeitsplatz.h"
#include "safety/container.h"

#include "files/dateikanal.h"

namespace kalvora {

class Wiederherstellung {
public:
    Wiederherstellung(Dateikanal& kanal, const Arbeitsplatz& platz) : kanal_(kanal), platz_(platz) {}

    // `datei`: a path; empty is the newest backup. `filter`: empty all members, "NoLogs" all but logs, else
    // the one of that name. False: there is none, or (with a message) it is no container; then nothing was
    // written. Faults in writing are thrown.
    bool Restore_aus_Backupdatei(const Text& datei, const Text& filter);
    // Takes the file from the newest backup whose member `heil` finds sound. False: there is none.
    bool Datei_zurückholen(const Text& name, const std::function<bool(std::string_view)>& heil);

    // Replaces the whole data folder by the container's state; what it does not hold goes in the end. False,
    // with a message: no container, or the redo copy could not be made; nothing has changed then.
    bool Datenordner_ersetzen(const Text& datei);
    // At the start, before anything is read. True: a replacement was finished.
    bool Begonnenes_abschließen();

    // Names of the restore points, from the newest to the oldest by file time; without F, I and foreign
    // names.
    std::vector<Text> Sicherungen() const;

private:
    struct Gelesen {
        Dateiinhalt inhalt;
        std::vector<Containermitglied> mitglieder; // views into `inhalt`
    };
    std::optional<Gelesen> lesen(const Text& pfad) const;
    Text Zielordner(const Containermitglied& m) const { return m.Log() ? platz_.Logpfad : platz_.Datenpfad; }
    void schreiben(const Containermitglied& m);
    void anwenden(const Gelesen& container);
    bool Übriges_löschen(const Gelesen& container);
    Text Kopie() const { return platz_.Backuppfad + u"000000 000000 I.dat"; }
    void kein_Container_melden() const;
    Dateikanal& kanal_;
    const Arbeitsplatz& platz_;
};

// Is it the name of a backup, "yymmdd hhnnss <kind>.dat"? The date may be none (kind J, redo copy).
bool Backupname_zulässig(TextView name);

} // namespace kalvora
