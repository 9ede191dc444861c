// First-run initialisation: brings a data folder to life. Every shared file that is missing is written with
// its standard content; one that is there is never replaced, whoever was faster. It is also what a repair
// calls once the damaged file is gone.
#pragma once

#include "files/feiertagsdatei.h"
#include "files/logbuch.h"

namespace kalvora {

class Setup {
public:
    Setup(Dateikanal& kanal, Arbeitsplatz& platz, const Konfigdaten& konfig, Logbuch& log)
        : kanal_(kanal), platz_(platz), konfig_(konfig), log_(log) {}

    // Settles Startjahr too. Damaged shared files are a Dateischaden, a missing or damaged KalvoraSetup.dat
    // or KalvoraFtg.dat ends the program. Where months are there already, a missing base file is damage too:
    // a first run writes the months last.
    void Erstinitialisierung();
    // Behind a repair: the standard of this base file, if it is still missing. Of other files nothing is
    // made: each is asked for and brought back in a repair of its own.
    void Standard_ergänzen(const Text& name);

    // A sound copy of a delivered file in Systempfad; a damaged one gives way. False: there is none anywhere.
    bool Vorlage_bereitlegen(const Text& name) const;
    bool Vorlage_vorhanden(const Text& name) const; // whether it could be

    Text Ländercode_ermitteln() const; // three digits, such as "049"
    void KalvoraSetupDat_lesen();
    void Inst_Konfigdaten_schreiben();
    void Inst_Konfigdaten_modifizieren(); // only the version line, and only when it is another one
    void Inst_Mitarbeiterdaten_schreiben();
    void Inst_Feiertage_schreiben();
    void Inst_Erfassungsdateien_anlegen(); // for each month of the three years without one

private:
    bool Vorlage_brauchbar(const Text& ordner, const Text& name) const;
    void Verlorenes_erkennen() const;
    bool fehlt(TextView name) const;
    int Startjahr_der_Monate() const;
    void Startjahr_festlegen();
    void neue_Datei(const Text& name, const std::vector<Text>& zeilen);
    void SetupDat_löschen();
    Dateikanal& kanal_;
    Arbeitsplatz& platz_;
    const Konfigdaten& konfig_;
    Logbuch& log_;
    Text firma_, firmenzusatz_, zeile_9_ = u"::";
    Text reserve_; // of Konfigdaten.dat; new files take it over
    Text Land_;    // country code
};

} // namespace kalvora
