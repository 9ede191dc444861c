#include "frame/reparatur.h"

#include "admin/erstinitialisierung.h"
#include "base/cp1252.h"
#include "files/kalvoradat.h"
#include "files/ordner.h"
#include "files/versionsname.h"

namespace kalvora {

namespace {

constexpr TextView MODUL = u"modKalvora - Startfehler";
constexpr TextView SPERRTEXT = u"Wegen Wartungsarbeiten Programmaufruf zurzeit nicht möglich";

// "mm.yyyy" as yymm.
Text yymm_aus(const Text& monat) {
    return Text(rechts(monat, 2)) + Text(links(monat, 2));
}

} // namespace

bool Reparatur::ist_Kalvoradat(const Text& datei) const {
    return gleich_ohne_Fall(datei, platz_.Systempfad + u"Kalvora.dat");
}

bool Reparatur::zuständig(const Dateischaden& schaden) const {
    if (platz_.Datenrückblick_aktiv) return false;
    if (schaden.datei.empty()) return !schaden.monate.empty();
    if (ist_Kalvoradat(schaden.datei)) return true;
    const Text name = Dateiname_aus_Pfad(schaden.datei);
    return ParentDir(schaden.datei) == platz_.Datenpfad && endet_ohne_Fall(name, u".dat") &&
           !gleich_ohne_Fall(name, u"Ferientage.dat");
}

void Reparatur::Startfehler(const Dateischaden& schaden) {
    const Text &datei = schaden.datei, &text = schaden.text();
    const auto gefragt = fs().info(datei);
    const bool begonnen =
        d_.app.Frage(u"Es ist folgendes Problem aufgetreten:\n\n" + text +
                     u"\n\nDas Programm kann jetzt versuchen, eine Standardversion der Datei "
                     u"wiederherzustellen.\n\nMöchten Sie mit dem Wiederherstellen der Datei beginnen?") ==
        Antwort::Ja;
    if (!begonnen) throw Programmabbruch(Text(MODUL), {}, u"NoLog");
    d_.kanal.verwerfen();
    if (ist_Kalvoradat(datei)) Kalvoradat_herstellen(datei, text);
    if (inzwischen_heil(datei, gefragt))
        throw Programmabbruch(Text(MODUL),
                              u"Die Datei " + Pfad_kürzen(datei, 100) +
                                  u" wurde inzwischen wiederhergestellt. Starten Sie das Programm jetzt neu",
                              u"NoLog");
    Vorlagen_prüfen(); // before anything is touched
    Text kopie;
    if (!datei.empty()) {
        sichern(Dateiname_aus_Pfad(datei));
        kopie = beiseitelegen(datei, text);
    }
    sperren(datei, schaden.monate);
    // First what is known of the file, then the standard of what is still missing: whoever stops in between
    // finds the file missing and is asked again.
    zurückholen(datei, kopie, schaden.monate);
    Standard_ergänzen(Dateiname_aus_Pfad(datei));
    Administratoren_lesen(gleich_ohne_Fall(Dateiname_aus_Pfad(datei), u"Konfigdaten.dat"));
    beenden(text, kopie);
}

// The same question may have been answered on another workstation while it stood here: what was restored
// there must not be moved aside.
bool Reparatur::inzwischen_heil(const Text& datei, const Ergebnis<FileInfo>& gefragt) const {
    if (datei.empty()) return false;
    const auto jetzt = d_.kanal.werk().lesen(datei);
    if (!jetzt || jetzt->größe == 0) return false;
    if (gefragt && gefragt->time == jetzt->info.time && gefragt->size == jetzt->info.size) return false;
    return Dateiprobe(d_.kanal, platz_).prüfen(Dateiname_aus_Pfad(datei), jetzt->sicht()).urteil !=
           Dateiprobe::Urteil::beschädigt;
}

void Reparatur::Vorlagen_prüfen() const {
    for (const TextView name : {u"KalvoraSetup.dat", u"KalvoraFtg.dat"})
        if (!Vorlage_vorhanden(fs(), platz_, Text(name)))
            Dateifehler(3, platz_.Systempfad + Text(name), {}, MODUL);
}

// One a day: what was saved before the first repair is the state that counts.
void Reparatur::sichern(const Text& name) {
    if (platz_.Backuppfad.empty()) return;
    if (!Ordner_vorhanden(fs(), platz_.Backuppfad)) Ordner_anlegen(fs(), platz_.Backuppfad);
    if (backups_.vorhanden(platz_.Heute_S, u"F") || backups_.Backup_erstellen(u"F", name)) return;
    throw Programmabbruch(
        Text(MODUL),
        u"Wiederherstellen nicht möglich. Backup vor Wiederherstellen konnte nicht angelegt werden");
}

// The copy's path; empty when there was no file. Its name ends in digits, which no mask matches.
Text Reparatur::beiseitelegen(const Text& datei, const Text& text) const {
    constexpr int VERSUCHE = 100;
    const Zeitpunkt jetzt = d_.kanal.werk().uhr().now();
    const Text stamm = datei + u" defekt " + platz_.Heute_S + u" " + ziffern(jetzt.stunde, 2) +
                       ziffern(jetzt.minute, 2) + ziffern(jetzt.sekunde, 2);
    for (int n = 1; n <= VERSUCHE; ++n) {
        const Text kopie = n == 1 ? stamm : stamm + u" " + ziffern(n);
        const Fehlercode f = fs().rename_new(datei, kopie);
        if (f == 0) return kopie;
        if (f == FEHLER_NICHT_GEFUNDEN && fs().info(datei).nummer() == FEHLER_NICHT_GEFUNDEN) return {};
        if (f != FEHLER_EXISTIERT) break;
    }
    throw Programmabbruch(Text(MODUL),
                          u"Wiederherstellen nicht möglich. Die Datei " + Pfad_kürzen(datei, 100) +
                              u" konnte nicht gelöscht werden. Löschen Sie die Datei manuell und starten Sie "
                              u"das Programm neu",
                          text + u" - Löschen der Datei fehlgeschlagen");
}

// The workstation's own file. Only with a data folder to name is the damaged one moved: without it the next
// start would begin a new company.
void Reparatur::Kalvoradat_herstellen(const Text& datei, const Text& text) {
    if (!Datenordner_erkennen(datei))
        throw Programmabbruch(Text(MODUL),
                              u"Wiederherstellen nicht möglich. In der Datei " + Pfad_kürzen(datei, 100) +
                                  u" ist kein Datenordner mehr zu erkennen. Starten Sie das Programm mit dem "
                                  u"Aufrufparameter /setpath und dem Pfad des Datenordners",
                              u"NoLog");
    const Text kopie = beiseitelegen(datei, text);
    Kalvoradat_schreiben(d_.kanal, platz_);
    throw Programmabbruch(Text(MODUL), u"Wiederherstellen beendet. Starten Sie das Programm jetzt neu",
                          u"Startfehler: " + text);
}

// The folder that the damaged file still names, or this workstation's own one; data must lie in it.
bool Reparatur::Datenordner_erkennen(const Text& datei) const {
    std::vector<Text> ordner;
    if (auto inhalt = d_.kanal.werk().lesen(datei)) {
        Rohzeilen zeilen(inhalt->bytes.get(), inhalt->größe);
        while (const auto zeile = zeilen.nächste()) {
            if (zeile->länge == 0) continue;
            const Text roh = aus_cp1252({zeile->anfang, zeile->länge});
            const Text klar = aus_cp1252(Zeile_entschlüsseln(zeile->anfang, zeile->länge));
            for (const Text& text : {klar, roh})
                if (const int n = position(text, u"data_pfad="); n > 0)
                    ordner.push_back(als_Ordner(Pfad_nativ(mitte(text, n + 10))));
        }
    }
    ordner.push_back(platz_.Systempfad + u"Data/");
    for (const Text& pfad : ordner) {
        if (!pfad.starts_with(u'/') || !Datei_passend_vorhanden(fs(), pfad, u"*Data.dat")) continue;
        platz_.Datenpfad = pfad;
        platz_.Logpfad = pfad + u"Logs/";
        return true;
    }
    return false;
}

// A lock that stands already stays; one that cannot be made is told and stops nothing.
void Reparatur::sperren(const Text& datei, const Text& monate) {
    const Zeitpunkt jetzt = d_.kanal.werk().uhr().now();
    d_.sperre.anlegen({Text(SPERRTEXT),
                       platz_.Benutzername,
                       {},
                       datei.empty() ? u"NoFile " + monate : datei,
                       platz_.datum().FormatDatumDA(platz_.Heute) + u"|" + ziffern(jetzt.stunde, 2) + u":" +
                           ziffern(jetzt.minute, 2)});
}

void Reparatur::zurückholen(const Text& datei, const Text& kopie, const Text& monate) {
    const auto gescheitert = [&](const Text& was) {
        d_.log.Logbuch_ergänzen(2, u"Wiederherstellen der Datei " + Pfad_kürzen(was, 100) +
                                       u" aus Backup fehlgeschlagen");
    };
    const Text name = Dateiname_aus_Pfad(datei);
    if (!datei.empty() && ist_Versionsname(name)) {
        const auto rest = kopie.empty() ? Ergebnis<Dateiinhalt>::fehler(FEHLER_NICHT_GEFUNDEN)
                                        : d_.kanal.werk().lesen(kopie);
        const std::string_view bytes = rest ? rest->sicht() : std::string_view();
        if (!wiederherstellung_.Monat_zurückholen(name.substr(0, 4), name, bytes, d_.K().Reservezeile))
            gescheitert(datei);
    } else if (!datei.empty()) {
        if (!wiederherstellung_.Datei_zurückholen(name)) gescheitert(datei);
    }
    for (Text monat : teilen(monate, u',')) {
        const Text yymm = yymm_aus(Text(trimmen(monat)));
        if (!d_.erfassung.Aktuelle_Erfassungsdatei(yymm).empty()) continue; // it has come back meanwhile
        const Text version = yymm + u" " + platz_.Heute_S + u" Data.dat";
        if (yymm.size() == 4 && !wiederherstellung_.Monat_zurückholen(yymm, version, {}, d_.K().Reservezeile))
            gescheitert(platz_.Datenpfad + version);
    }
}

void Reparatur::Standard_ergänzen(const Text& name) {
    for (const TextView name : {u"KalvoraFtg.dat", u"KalvoraSetup.dat"})
        if (!Vorlage_bereitlegen(d_.kanal.werk(), platz_, Text(name)))
            Dateifehler(3, platz_.Systempfad + Text(name), {}, MODUL);
    Setup(d_.kanal, platz_, d_.konfig, d_.log).Standard_ergänzen(name);
}

// Who may lift the lock. Damage of a second file must not hide that the first was repaired.
void Reparatur::Administratoren_lesen(bool neu) {
    if (!neu && d_.K().U() > 0) return;
    try {
        d_.konfig.Konfigdaten_lesen();
    } catch (const Fehler&) { // NOLINT(bugprone-empty-catch): the next start asks for that file
    }
}

void Reparatur::beenden(const Text& text, const Text& kopie) const {
    const Konfiguration& k = d_.K();
    const Text aufbewahrt =
        kopie.empty() ? Text()
                      : u"\n\nDie beschädigte Datei wurde aufbewahrt als " + Pfad_kürzen(kopie, 170) + u".";
    const bool ausgesperrt = k.Administratoren(1) != u"NoAdmins" && k.Benutzerrolle != 2;
    throw Programmabbruch(
        Text(MODUL),
        u"Wiederherstellen beendet." + aufbewahrt +
            (ausgesperrt
                 ? u"\n\nDer Programmaufruf wird jetzt gesperrt und kann nur von einem der folgenden "
                   u"Administratoren wieder freigegeben werden: " +
                       k.Administratorenliste()
                 : Text(u"\n\nMöglicherweise ist es notwendig über 'Datei - Datenordner "
                        u"wiederherstellen' oder 'Datei - Datenordner importieren' auf einen früheren "
                        u"Sicherungszeitpunkt zurückzusetzen")),
        u"Startfehler: " + text);
}

} // namespace kalvora
