// The shared data of one running workstation, module by module, and the check whether somebody else has
// changed the configuration or the staff list.
#pragma once

#include <utility>

#include "files/erfassungsdateien.h"
#include "files/feiertagsdatei.h"
#include "files/inidatei.h"
#include "plan/programmsperre.h"

namespace kalvora {

class Gemeinsame_Daten {
public:
    Gemeinsame_Daten(Application& anwendung, Dateikanal& dateikanal, Arbeitsplatz& arbeitsplatz);

    Application& app;
    Dateikanal& kanal;
    Arbeitsplatz& platz;
    Konfigdaten konfig;
    Mitarbeiterdaten personal;
    Logbuch log;
    Feiertagsdatei feiertage;
    Ferientagedatei ferien;
    Inidatei ini;
    Erfassungsdateien erfassung;
    Programmsperre sperre;

    // "F" (at most one a day) before a repair, "T" on demand, before a month is compacted and before a repair
    // lock goes. What stood in the way; empty when it was made.
    std::function<Text(TextView art)> Backup_erstellen;

    // Rows "<name>|<heading>:<heading>:" of this user's display groups; "NoGroups" alone: none.
    Feld<Text> Anzeigegruppen{u"NoGroups"};
    bool Anzeigegruppen_vorhanden() const { return Anzeigegruppen(1) != u"NoGroups"; }
    void Anzber_und_Anzgru_init();

    // Each returns true when the file had changed and was read again. For watching.
    bool CheckKonfigdaten();
    bool CheckMitarbeiterdaten();
    // Something was read again since this was asked last, whoever did it: menu and buttons must follow.
    bool Neu_gelesen_abholen() { return std::exchange(neu_gelesen_, false); }
    bool Neu_gelesen() const { return neu_gelesen_; }
    // The same before a write, without the limits of watching.
    bool Vor_dem_Schreiben_auffrischen();
    // Reads all shared files again, as behind the restore of another state of the folder.
    void Alles_neu_lesen();

    const Konfiguration& K() const { return konfig.werte(); }
    bool Eigene_Zeile(TextView BenId) const { return gleich_ohne_Fall(BenId, platz.Benutzername); }

private:
    void Konfiguration_neu_lesen();
    void Personal_neu_lesen();
    void Berechtigung_ableiten();
    void Anzeigeberechtigungen_ermitteln();
    bool neu_gelesen_ = false;
};

} // namespace kalvora
