// One running workstation: start, main window, end. Owns every module; several may live in one process, each
// with a windowing system of its own.
#pragma once

#include <memory>

#include "frame/aufruf.h"
#include "frame/frm_start.h"
#include "frame/meldung.h"
#include "plan/hauptfenster.h"
#include "safety/ordnerersatz.h"

namespace kalvora {

struct Plattform {
    FileSystem& fs;
    Clock& uhr;
    Environment& umgebung;
};

class Programm {
public:
    // `argumente` without the program's own name. Nothing is asked of the workstation yet: what fails there
    // fails in starten(), which reports it.
    Programm(const Plattform& plattform, WindowSystem& fenster, const std::vector<Text>& argumente);
    ~Programm();
    Programm(const Programm&) = delete;
    Programm& operator=(const Programm&) = delete;

    // The whole run: start, the window's loop, the end. 0 ended in the ordinary way, 2 the program stopped
    // itself. Nothing is thrown.
    int ausführen();

    // The same in steps, for drivers that have the loop themselves. starten: true when the main window
    // stands.
    bool starten();
    void schleife();
    int ende();

    Application& app() { return app_; }
    Gemeinsame_Daten& daten() { return *daten_; }
    Hauptfenster& hauptfenster() { return *haupt_; }
    Arbeitsplatz& platz() { return platz_; }

private:
    struct Ende { // an ordinary end before the window stands
        int status = 0;
    };
    void aufbauen();
    void Fortschritt_zeigen(TextView was, int fertig, int alle);
    bool mit_Fortschritt(const std::function<bool()>& arbeit);
    Text Backup_erstellen(TextView art);
    void Vorgang_zeigen(const Text& text);
    void Main();
    void Schritt(void (Programm::*schritt)());
    enum class Wartende { Erkannt, Erneut, Beenden };
    Wartende Warte_auf_Datenträger(const Text& fehlt);
    Wartende Wartezeit(frmStart& fenster, bool Logs);
    void Warte_und_wiederhole(int& erkannt, const std::exception_ptr& fehler, const Text& fehlt);
    void Instanz_prüfen();
    void Datum_und_Aufruf();
    void Startbild();
    void Gebietsschema_und_Datum_prüfen();
    void Systempfad_bestimmen();
    void Datenordner_bestimmen();
    void Silent_beenden();
    void Datenordner_prüfen();
    bool neuer_Ordner_erlaubt() const;
    void Erreichbarkeit_prüfen() const;
    bool ohne_Daten() const;
    void Ordner_einrichten();
    void Logordner_einrichten() const;
    void Programmsperre_prüfen();
    void Erster_Lauf();
    std::optional<Wiederherstellung::Gekürzt> gekürzter_Monat() const;
    void Tagessicherung();
    void Inipfad_einrichten();
    void Gemeinsame_Dateien_lesen();
    void Setting_setzen();
    void Versionsnr_checken();
    void Persönliches_lesen();
    void Aufräumen();
    void Temp_Logs_aufräumen();
    void Erfassungsdateien_checken();
    void Fenster_zeigen();
    bool Schließen();
    bool Datenordner_wiederherstellen();
    Text absoluter_Ordner(Text pfad) const;
    void Unbestätigtes_nennen();
    void scheitern(const std::exception_ptr& fehler);

    Plattform plattform_;
    Application app_;
    Aufruf aufruf_;
    Arbeitsplatz platz_;
    std::unique_ptr<Dateiwerk> werk_;
    std::unique_ptr<Dateikanal> kanal_;
    std::unique_ptr<Gemeinsame_Daten> daten_;
    std::unique_ptr<Backups> backups_;
    std::unique_ptr<Wiederherstellung> wiederherstellung_;
    std::unique_ptr<Ordnerersatz> ersatz_;
    std::unique_ptr<Reparatur> reparatur_;
    std::unique_ptr<Hauptfenster> haupt_;
    std::unique_ptr<frmStart> start_;
    bool nachgeholt_ = false; // this start has finished a restore: the configuration is to be written anew
    Text startordner_;        // relative paths of the call and the environment mean this one
    int status_ = 0;
    bool läuft_ = false;
    bool erster_Start_des_Tages_ = false; // this workstation has made the day's backup
    double vorgang_ab_ = 0;               // steady seconds: not shown before
    bool vorgang_steht_ = false;
};

} // namespace kalvora
