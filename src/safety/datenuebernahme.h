// A whole data folder put in place of the present one, with everything that must be asked and made safe
// before: for a restore point, and for whatever else comes as a container.
#pragma once

#include "safety/ordnerersatz.h"

namespace kalvora {

class Datenübernahme {
public:
    Datenübernahme(Application& app, Dateikanal& kanal, const Arbeitsplatz& platz, Konfigdaten& konfig,
                   Wiederherstellung& wiederherstellung, Ordnerersatz& ersatz)
        : app_(app), kanal_(kanal), platz_(platz), konfig_(konfig), wiederherstellung_(wiederherstellung),
          ersatz_(ersatz), probe_(kanal, platz) {}

    // A backup of the folder Backups/, by its name. True: the data folder has its state, and the
    // configuration has been read anew; the caller reads the rest and shows it. False: nothing has changed,
    // and the user knows why.
    bool Wiederherstellungspunkt(const Text& Backupname);
    // The same of any container. `Logtext` is what the administration log will say.
    bool übernehmen(const Text& datei, const Text& Logtext);

private:
    std::optional<Wiederherstellung::Gelesen> lesen(const Text& datei);
    bool zulässig(const Wiederherstellung::Gelesen& container);
    bool Check_ob_Admin(std::string_view Konfigdatei);
    bool Daten_vorhanden() const;
    bool einverstanden();
    Application& app_;
    Dateikanal& kanal_;
    const Arbeitsplatz& platz_;
    Konfigdaten& konfig_;
    Wiederherstellung& wiederherstellung_;
    Ordnerersatz& ersatz_;
    Dateiprobe probe_;
};

} // namespace kalvora
