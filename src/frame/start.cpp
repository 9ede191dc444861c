// The steps of the start, in the order in which Main calls them.
#include <algorithm>

#include "admin/erstinitialisierung.h"
#include "base/cp1252.h"
#include "files/kalvoradat.h"
#include "files/ordner.h"
#include "files/versionsname.h"
#include "frame/programm.h"

namespace kalvora {

namespace {

constexpr int FRÜHESTES_JAHR = 2025, SPÄTESTES_JAHR = 2050;
constexpr int TEMP_LOGS_TAGE = 120;

// Elements "." and ".." and doubled separators taken out of an absolute path. Above a symbolic link stands
// the folder above its target, so ".." asks the disk; only what is not there yet is taken off the text.
Text aufgelöst(FileSystem& fs, const Text& pfad) {
    Text aus = u"/";
    for (const Text& teil : teilen(pfad, u'/')) {
        if (teil.empty() || teil == u".") continue;
        if (teil != u"..") {
            aus += teil + u"/";
            continue;
        }
        const auto wirklich = fs.real_folder(aus);
        const int fehler = wirklich.nummer();
        if (fehler != 0 && fehler != FEHLER_NICHT_GEFUNDEN && fehler != FEHLER_ORDNER)
            throw Laufzeitfehler(fehler, u"Der Ordner ist nicht zu erreichen", pfad);
        if (wirklich) aus = *wirklich;
        if (aus.size() > 1) aus = ParentDir(aus);
    }
    return aus;
}

// A user name with its domain ("FIRMA\\meier") is no path.
Text als_Dateiname(Text name) {
    for (char16_t& c : name)
        if (c == u'/' || c == u'\\') c = u'_';
    return name;
}

} // namespace

Text Programm::absoluter_Ordner(Text pfad) const {
    pfad = Pfad_nativ(pfad);
    if (!pfad.starts_with(u'/')) pfad = als_Ordner(startordner_) + pfad;
    return aufgelöst(plattform_.fs, pfad);
}

void Programm::Systempfad_bestimmen() {
    Environment& u = plattform_.umgebung;
    platz_.Benutzername = u.variable(u"USERNAME");
    if (platz_.Benutzername.empty()) platz_.Benutzername = u.login_name();
    if (platz_.Benutzername.empty()) platz_.Benutzername = u"NoName";
    platz_.Programmpfad = u.program_folder();
    const Text eigener = u.variable(u"KALVORA_SYSTEMPFAD");
    platz_.Systempfad = absoluter_Ordner(eigener.empty() ? u.user_data_folder() + u"kalvora" : eigener);
    if (!Ordner_vorhanden(plattform_.fs, platz_.Systempfad))
        Ordnerkette_anlegen(plattform_.fs, platz_.Systempfad);
}

void Programm::Instanz_prüfen() {
    const Text sperre = platz_.Systempfad + u".kalvora-" + als_Dateiname(platz_.Benutzername) + u".lock";
    bool frei = true;
    plattform_.fs.carry_out([&] { frei = plattform_.umgebung.lock_instance(sperre); });
    if (frei) return;
    app_.Hinweis(u"Programm ist bereits gestartet");
    throw Ende{2};
}

void Programm::Datum_und_Aufruf() {
    const Kalendertag heute = plattform_.uhr.now().tag;
    platz_.Heute = Datum_aus(heute.jahr, heute.monat, heute.tag);
    if (const auto d = aufruf_.Aufrufparameter(u"d")) {
        const Text s = Text(rechts(*d, 2)) + Text(mitte(*d, 3, 2)) + Text(mitte(*d, 1, 2));
        const bool Länge_passt = d->size() == 6 || d->size() == 8; // ttmmjj or ttmmjjjj
        if (!Länge_passt || !nur_Ziffern(*d) || FormatDatumDS(FormatDatumSD(s)) != s)
            throw Programmabbruch(u"modKalvora - Main",
                                  u"Der Wert '" + *d +
                                      u"' des Aufrufparameters /d ist kein Datum in der Form ttmmjj.",
                                  u"NoLog");
        platz_.Heute = FormatDatumSD(s);
    }
    platz_.Heute_S = FormatDatumDS(platz_.Heute);
    platz_.Startzeit = plattform_.uhr.steady();
}

void Programm::Startbild() {
    if (aufruf_.enthalten(u"nowelcomescreen") || aufruf_.enthalten(u"silent")) return;
    if (!start_) { // a wait may have shown it already
        start_ = std::make_unique<frmStart>(app_, PROGRAMMVERSION);
        app_.open(*start_);
    }
    if (start_->view()) start_->view()->paint_now();
}

void Programm::Gebietsschema_und_Datum_prüfen() {
    platz_.gebiet = plattform_.umgebung.locale();
    const int jahr = Jahr(platz_.Heute);
    if (jahr < FRÜHESTES_JAHR || jahr > SPÄTESTES_JAHR)
        throw Programmabbruch(u"modKalvora - Main",
                              u"Systemdatum " + platz_.datum().FormatDatumDA(platz_.Heute) +
                                  u" liegt außerhalb des zulässigen Bereichs",
                              u"NoLog");
    // All data files rest on a one-to-one mapping of bytes.
    if (!cp1252_umkehrbar())
        throw Programmabbruch(
            u"modKalvora - Gebietsschema_prüfen",
            u"Programm kann nicht gestartet werden.\n\nDas auf diesem Rechner eingestellte "
            u"Gebietsschema wird nicht unterstuetzt. Sie muessen zuerst eine westliche Sprache "
            u"einstellen (Einstellungen > Zeit und Sprache > Region > Zusaetzliche Datums-, Uhrzeit "
            u"und Laendereinstellungen > Region > Verwaltung > Gebietsschema aendern)",
            u"NoLog");
}

void Programm::Datenordner_bestimmen() {
    const Aufruf::Parameter* pfad = aufruf_.erster({u"path", u"setpath"});
    if (!pfad) return Kalvoradat_lesen(*kanal_, platz_, aufruf_.enthalten(u"silent"));
    if (pfad->wert.empty())
        throw Programmabbruch(u"modKalvora - Main",
                              u"Der Aufrufparameter /" + pfad->name + u" nennt keinen Ordner.", u"NoLog");
    Text ordner = absoluter_Ordner(pfad->wert);
    if (!gleich_ohne_Fall(Dateiname_aus_Pfad(ordner), u"data")) ordner += u"Data/";
    platz_.Datenpfad = ordner;
    platz_.Pfad_als_Parameter = true;
    if (!aufruf_.enthalten(u"setpath")) return;
    platz_.Logpfad = ordner + u"Logs/";
    Kalvoradat_schreiben(*kanal_, platz_);
}

// An installer asks whether the folder is in use already; then the setup file has done its work.
void Programm::Silent_beenden() {
    if (!aufruf_.enthalten(u"silent")) return;
    const bool in_Gebrauch =
        !platz_.Datenpfad.empty() && Datei_passend_vorhanden(plattform_.fs, platz_.Datenpfad, u"*Data.dat");
    if (in_Gebrauch && platz_.Systempfad != platz_.Programmpfad)
        Datei_löschen(plattform_.fs, Datei_finden(plattform_.fs, platz_.Systempfad, u"KalvoraSetup.dat"));
    throw Ende{0};
}

// A remembered folder that is not there is most likely a share that is not mounted: it is waited for, and a
// new data folder must not come to life in its place. What an interrupted restore has left is finished before
// anything is read.
void Programm::Datenordner_prüfen() {
    FileSystem& fs = plattform_.fs;
    if (platz_.Datenpfad.empty()) platz_.Datenpfad = platz_.Systempfad + u"Data/";
    if (platz_.Logpfad.empty()) platz_.Logpfad = platz_.Datenpfad + u"Logs/";
    platz_.Backuppfad = platz_.Datenpfad + u"Backups/";
    if (!neuer_Ordner_erlaubt()) Erreichbarkeit_prüfen();
    mit_Fortschritt([&] {
        if (ersatz_->Begonnenes_abschließen()) nachgeholt_ = true;
        return true;
    });
    if (neuer_Ordner_erlaubt() || Datei_passend_vorhanden(fs, platz_.Datenpfad, u"*Data.dat")) return;
    // Months that have gone are asked for; nothing else of this program's, and it is another folder.
    if (!ohne_Daten() || !wiederherstellung_->Sicherungen().empty()) return;
    throw Programmabbruch(
        u"modKalvora - Main",
        u"Die An-/Abwesenheitsdaten wurden nicht im Ordner " + Pfad_kürzen(platz_.Datenpfad, 100) +
            u" gefunden.\n\nStellen Sie sicher, dass der Ordner erreichbar ist, oder wählen Sie mit "
            u"dem Aufrufparameter /setpath einen anderen Datenordner.",
        u"NoLog");
}

// Only where somebody has asked for it, or in the workstation's own place, may a company begin.
bool Programm::neuer_Ordner_erlaubt() const {
    return platz_.Pfad_als_Parameter || gleich_ohne_Fall(platz_.Datenpfad, platz_.Systempfad + u"Data/");
}

void Programm::Erreichbarkeit_prüfen() const {
    const auto info = plattform_.fs.info(platz_.Datenpfad);
    const int f = info.nummer();
    if (info && info->folder) return;
    if (info || f == FEHLER_NICHT_GEFUNDEN || f == FEHLER_ORDNER || f == FEHLER_NETZ)
        throw Laufzeitfehler(FEHLER_NETZ, u"Der Datenordner ist nicht zu erreichen", platz_.Datenpfad);
    throw Zugriffsfehler(f, platz_.Datenpfad);
}

// None of the files that a first run makes. Holidays of schools may have been put there before it.
bool Programm::ohne_Daten() const {
    const auto namen = Dateien(plattform_.fs, platz_.Datenpfad, u"*.dat");
    return std::none_of(namen.begin(), namen.end(), [](const Text& name) {
        return ist_Versionsname(name) || gleich_ohne_Fall(name, u"Konfigdaten.dat") ||
               gleich_ohne_Fall(name, u"Mitarbeiterdaten.dat") || gleich_ohne_Fall(name, u"Feiertage.dat");
    });
}

void Programm::Ordner_einrichten() {
    FileSystem& fs = plattform_.fs;
    if (!neuer_Ordner_erlaubt()) Erreichbarkeit_prüfen(); // it may have gone since
    if (!Ordner_vorhanden(fs, platz_.Datenpfad)) {
        Ordner_anlegen(fs, platz_.Datenpfad);
        platz_.Ordner_neu = true;
    }
    Logordner_einrichten();
    const Text temp = plattform_.umgebung.variable(u"TEMP");
    platz_.Temppfad = temp.empty() ? plattform_.umgebung.private_temp_folder() : absoluter_Ordner(temp);
    Ordner_wechseln(fs, platz_.Temppfad); // the program holds no shared folder open
}

// Logs that lie elsewhere may be on a share that is not mounted.
void Programm::Logordner_einrichten() const {
    FileSystem& fs = plattform_.fs;
    if (Ordner_vorhanden(fs, platz_.Logpfad)) return;
    if (!platz_.Logpfad.starts_with(platz_.Datenpfad) && !Ordner_vorhanden(fs, ParentDir(platz_.Logpfad)))
        throw Laufzeitfehler(FEHLER_NETZ, u"Der Ordner für das Logbuch ist nicht zu erreichen",
                             platz_.Logpfad);
    Ordner_anlegen(fs, platz_.Logpfad);
}

void Programm::Programmsperre_prüfen() {
    daten_->sperre.Programmsperre_prüfen();
}

// A folder that has never had a backup is new, or its first run was interrupted. Where there are backups,
// whatever is missing was lost, and is asked for.
void Programm::Erster_Lauf() {
    FileSystem& fs = plattform_.fs;
    // Where the delivered files lie in Systempfad themselves, the setup file never goes.
    const bool Kopie = platz_.Systempfad != platz_.Programmpfad;
    const Text setup = Datei_finden(fs, platz_.Systempfad, u"KalvoraSetup.dat");
    const bool leer = ohne_Daten(), offen = leer || (Kopie && Datei_vorhanden(fs, setup));
    const bool neu = offen && wiederherstellung_->Sicherungen().empty();
    if (leer && !neu) Dateifehler(1, platz_.Datenpfad + u"Konfigdaten.dat");
    Setup erster(*kanal_, platz_, daten_->konfig, daten_->log);
    for (const TextView name : {u"KalvoraFtg.dat", u"KalvoraSetup.dat"})
        if (leer && !erster.Vorlage_bereitlegen(Text(name)))
            Dateifehler(3, platz_.Systempfad + Text(name), {}, u"modKalvora - Main");
    if (neu)
        erster.Erstinitialisierung();
    else if (Kopie)
        Datei_löschen(fs, setup); // it has done its work
    if (!platz_.Pfad_als_Parameter &&
        !Datei_vorhanden(fs, Datei_finden(fs, platz_.Systempfad, u"Kalvora.dat")))
        Kalvoradat_schreiben(*kanal_, platz_);
    if (!Ordner_vorhanden(fs, platz_.Backuppfad)) Ordner_anlegen(fs, platz_.Backuppfad);
    Ordner_wechseln(fs, platz_.Temppfad); // making a folder tries it by entering it
}

// The first workstation of a day has made the day's backup, and it alone cleans up.
void Programm::Aufräumen() {
    if (erster_Start_des_Tages_) backups_->Aufräumen();
    Temp_Logs_aufräumen();
}

void Programm::Inipfad_einrichten() {
    platz_.Inipfad = platz_.Datenpfad + u"IniFiles/";
    if (!Ordner_vorhanden(plattform_.fs, platz_.Inipfad)) Ordner_anlegen(plattform_.fs, platz_.Inipfad);
    Ordner_wechseln(plattform_.fs, platz_.Temppfad);
}

void Programm::Gemeinsame_Dateien_lesen() {
    const auto a = aufruf_.Aufrufparameter(u"a");
    daten_->konfig.Dienstlauf(a && gleich_ohne_Fall(*a, u"dienstlauf"));
    daten_->konfig.Konfigdaten_lesen();
    if (nachgeholt_) daten_->konfig.Konfigdaten_schreiben();
    nachgeholt_ = false;
    if (aufruf_.enthalten(u"setting")) Setting_setzen();
    daten_->personal.Mitarbeiterdaten_lesen();
    daten_->feiertage.Feiertage_lesen();
    daten_->ferien.Ferientage_lesen();
}

// "/setting n=v" sets one character, writes the file and ends the program; what is not of this form changes
// nothing.
void Programm::Setting_setzen() {
    const Text wert = *aufruf_.Aufrufparameter(u"setting");
    const int gleich = position(wert, u"=");
    const Text n_text(trimmen(links(wert, gleich - 1))), v_text(trimmen(mitte(wert, gleich + 1)));
    const bool lesbar = wert.size() >= 3 && gleich > 0 && nur_Ziffern(n_text) && nur_Ziffern(v_text);
    const long n = Val(n_text), v = Val(v_text);
    const auto länge = static_cast<long>(daten_->K().settings.werte().size());
    if (!lesbar || n < 1 || n > länge || v > 9) throw Ende{0};
    constexpr int VERSUCHE = 4; // somebody may be saving settings just now
    for (int versuch = 1; versuch <= VERSUCHE; ++versuch) {
        if (versuch > 1) daten_->konfig.Konfigdaten_lesen();
        daten_->konfig.Setting_setzen(static_cast<int>(n), static_cast<int>(v));
        if (daten_->konfig.Konfigdaten_schreiben()) throw Ende{0};
    }
    throw Programmabbruch(u"modKalvora - Main",
                          u"Die Programmeinstellungen werden gerade auf einem anderen Arbeitsplatz geändert. "
                          u"Bitte versuchen Sie es noch einmal.",
                          u"NoLog");
}

// Records the newer program's version. A user who may not write leaves that to others.
void Programm::Versionsnr_checken() {
    const auto sechsstellig = [](TextView version) {
        std::vector<Text> teile = teilen(version, u'.');
        teile.resize(3);
        Text aus;
        for (const Text& teil : teile)
            aus += ziffern(Val(teil) % 100, 2);
        return aus;
    };
    const Text datei = sechsstellig(daten_->K().Konfigversion), programm = sechsstellig(PROGRAMMVERSION);
    if (datei > programm)
        app_.Hinweis(u"Es ist eine neue Programmversion verfügbar. Bitte installieren Sie die neueste "
                     u"Programmversion.");
    if (datei >= programm || platz_.Datenrückblick_aktiv) return;
    try {
        daten_->konfig.Konfigdaten_schreiben(); // whoever has written it since has recorded his version
    } catch (const Laufzeitfehler& fehler) {
        if (!ist_Dateifehler(fehler.nummer)) throw;
    }
}

void Programm::Persönliches_lesen() {
    daten_->Anzber_und_Anzgru_init();
    platz_.Inidateiname = u"Kalvora_" + als_Dateiname(platz_.Benutzername) + u".ini";
    daten_->ini.Inidatei_lesen(daten_->Anzeigegruppen_vorhanden() ? daten_->Anzeigegruppen.anzahl() : 0);
    int& langsam = daten_->ini.wahl().Fensterdaten_(fenster::LANGSAM);
    if (platz_.Langsame_Anzeige) langsam = 1; // this start has noticed it already
    platz_.Langsame_Anzeige = langsam == 1;
}

void Programm::Erfassungsdateien_checken() {
    daten_->erfassung.Erfassungsdateien_checken();
}

void Programm::Temp_Logs_aufräumen() {
    FileSystem& fs = plattform_.fs;
    const auto namen = fs.list(platz_.Temppfad);
    if (!namen) return; // they wait for another start
    for (const Text& name : *namen) {
        if (!passt_auf_Maske(name, u"*Kalvora.log")) continue;
        const auto stand = fs.info(platz_.Temppfad + name);
        if (stand && platz_.Heute - plattform_.uhr.day_of(stand->time) > TEMP_LOGS_TAGE)
            Datei_löschen(fs, platz_.Temppfad + name);
    }
}

} // namespace kalvora
