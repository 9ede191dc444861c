#include "frame/reparatur.h"

#include <algorithm>

#include "admin/erstinitialisierung.h"
#include "base/cp1252.h"
#include "files/aufbewahrung.h"
#include "files/kalvoradat.h"
#include "files/ordner.h"
#include "files/versionsname.h"

namespace kalvora {

namespace {

constexpr TextView MODUL = u"modKalvora - Startfehler";
constexpr TextView SPERRTEXT = u"Wegen Wartungsarbeiten Programmaufruf zurzeit nicht möglich";

} // namespace

bool Reparatur::ist_Kalvoradat(const Text& datei) const {
    const Text name = Dateiname_aus_Pfad(datei), ordner = ParentDir(datei);
    return gleich_ohne_Fall(name, u"Kalvora.dat") &&
           (ordner == platz_.Systempfad || ordner == platz_.Programmpfad);
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
    if (ist_Kalvoradat(datei) && !Datenordner_erkennen(datei)) kein_Datenordner(datei, text);
    const bool begonnen =
        d_.app.Frage(u"Es ist folgendes Problem aufgetreten:\n\n" + text +
                     u"\n\nDas Programm kann jetzt versuchen, eine Standardversion der Datei "
                     u"wiederherzustellen.\n\nMöchten Sie mit dem Wiederherstellen der Datei beginnen?") ==
        Antwort::Ja;
    if (!begonnen) throw Programmabbruch(Text(MODUL), {}, u"NoLog");
    d_.kanal.verwerfen();
    if (Ersatz_steht_aus(fs(), platz_.Backuppfad))
        throw Programmabbruch(
            Text(MODUL),
            u"Der Datenordner wird auf einen früheren Stand zurückgesetzt. Bitte starten Sie das "
            u"Programm in einigen Minuten neu",
            u"NoLog");
    if (ist_Kalvoradat(datei)) Kalvoradat_herstellen(datei, text);
    if (inzwischen_heil(schaden)) war_schneller(datei);
    Vorlagen_prüfen(); // before anything is touched
    Altes alt;
    const Text name = Dateiname_aus_Pfad(datei);
    if (!datei.empty()) {
        sichern(name);
        alt = aufbewahren(datei, text);
    }
    sperren(datei, schaden.monate);
    if (datei.empty()) {
        for (const Text& yymm : fehlende_Monate())
            Monat_zurückholen(yymm + u" " + platz_.Heute_S + u" Data.dat", {});
    } else if (ist_Versionsname(name)) {
        Monat_zurückholen(name, alt.bytes);
    } else {
        Datei_zurückholen(datei, alt, text);
    }
    Administratoren_lesen(gleich_ohne_Fall(name, u"Konfigdaten.dat"));
    beenden(text, alt.kopie);
}

// The same question may have been answered on another workstation while it stood here: what was restored
// there stays.
bool Reparatur::inzwischen_heil(const Dateischaden& schaden) const {
    if (schaden.nur_Verdacht) {
        const auto monat = wiederherstellung_.gekürzter_Monat();
        return !monat || monat->pfad != schaden.datei;
    }
    if (schaden.datei.empty()) return fehlende_Monate().empty();
    const auto jetzt = d_.kanal.werk().lesen(schaden.datei);
    if (!jetzt || jetzt->größe == 0) return false;
    const Text name = Dateiname_aus_Pfad(schaden.datei);
    const auto befund = Dateiprobe(d_.kanal, platz_).prüfen(name, jetzt->sicht());
    return befund.urteil < Dateiprobe::Urteil::ungeprüft &&
           (!gleich_ohne_Fall(name, u"Mitarbeiterdaten.dat") || Jahre_passen(jetzt->sicht()));
}

bool Reparatur::Jahre_passen(std::string_view Mitarbeiterdatei) const {
    return Startjahr_passt(fs(), platz_.Datenpfad, Dateiprobe(d_.kanal, platz_).Startjahr(Mitarbeiterdatei));
}

// Months of the three years without any version, as yymm. Those of next year nobody would ask for.
std::vector<Text> Reparatur::fehlende_Monate() const {
    std::vector<Text> aus;
    for (int monat = 0; monat < MONATE; ++monat) {
        const Text yymm = ziffern((platz_.Startjahr + monat / 12) % 100, 2) + ziffern(monat % 12 + 1, 2);
        if (d_.erfassung.Aktuelle_Erfassungsdatei(yymm).empty()) aus.push_back(yymm);
    }
    return aus;
}

void Reparatur::nicht_zu_löschen(const Text& datei, const Text& text, const Text& kopie) {
    throw Programmabbruch(
        Text(MODUL),
        u"Wiederherstellen nicht möglich. Die Datei " + Pfad_kürzen(datei, 100) +
            u" konnte nicht gelöscht werden. Löschen Sie die Datei manuell und starten Sie "
            u"das Programm neu" +
            (kopie.empty()
                 ? Text()
                 : u".\n\nEine Kopie der beschädigten Datei wurde aufbewahrt als " + Pfad_kürzen(kopie, 170)),
        text + u" - Löschen der Datei fehlgeschlagen");
}

void Reparatur::war_schneller(const Text& datei) {
    throw Programmabbruch(
        Text(MODUL),
        (datei.empty() ? Text(u"Die Monate wurden") : u"Die Datei " + Pfad_kürzen(datei, 100) + u" wurde") +
            u" inzwischen wiederhergestellt. Starten Sie das Programm jetzt neu",
        u"NoLog");
}

void Reparatur::Vorlagen_prüfen() const {
    const Setup setup(d_.kanal, platz_, d_.konfig, d_.log);
    for (const TextView name : {u"KalvoraSetup.dat", u"KalvoraFtg.dat"})
        if (!setup.Vorlage_vorhanden(Text(name))) Dateifehler(3, platz_.Systempfad + Text(name), {}, MODUL);
}

// One a day: what was saved before the first repair is the state that counts.
void Reparatur::sichern(const Text& name) {
    if (platz_.Backuppfad.empty()) return;
    if (!Ordner_vorhanden(fs(), platz_.Backuppfad)) Ordner_anlegen(fs(), platz_.Backuppfad);
    if (backups_.Fehlersicherung(name)) return;
    const Text& hindernis = backups_.Hindernis();
    throw Programmabbruch(
        Text(MODUL),
        u"Wiederherstellen nicht möglich. Backup vor Wiederherstellen konnte nicht angelegt werden" +
            (hindernis.empty() ? Text() : u".\n\nUrsache: " + hindernis));
}

// A file that cannot even be read is moved itself.
Reparatur::Altes Reparatur::aufbewahren(const Text& datei, const Text& text) const {
    const Dateiwerk& werk = d_.kanal.werk();
    const auto inhalt = werk.lesen(datei);
    if (inhalt.nummer() == FEHLER_NICHT_GEFUNDEN) return {};
    Altes alt;
    alt.lesbar = static_cast<bool>(inhalt);
    if (inhalt) alt.bytes = inhalt->sicht();
    auto kopie = alt.lesbar ? Kopie_aufbewahren(werk, datei, platz_.Heute_S, alt.bytes)
                            : Beiseite_legen(werk, datei, platz_.Heute_S,
                                             [&](const Text& name) { return fs().rename_new(datei, name); });
    const int f = kopie.nummer();
    if (f == FEHLER_VERWEIGERT || f == FEHLER_SCHREIBSCHUTZ) {
        // It is to be deleted by hand: what can still be read in it must not go with it.
        const auto gerettet = alt.lesbar
                                  ? Kopie_aufbewahren(werk, platz_.Backuppfad + Dateiname_aus_Pfad(datei),
                                                      platz_.Heute_S, alt.bytes)
                                  : Ergebnis<Text>::fehler(f);
        nicht_zu_löschen(datei, text, gerettet ? *gerettet : Text());
    }
    if (!kopie) throw Zugriffsfehler(f, datei); // a full disk is no reason to delete the only copy by hand
    alt.kopie = std::move(*kopie);
    return alt;
}

// The workstation's own file. Only with a data folder to name is the damaged one replaced: without it the
// next start would begin a new company.
void Reparatur::kein_Datenordner(const Text& datei, const Text& text) {
    throw Programmabbruch(Text(MODUL),
                          u"Es ist folgendes Problem aufgetreten:\n\n" + text +
                              u"\n\nWiederherstellen nicht möglich. In der Datei " + Pfad_kürzen(datei, 100) +
                              u" ist kein erreichbarer Datenordner zu erkennen. Starten Sie das Programm mit "
                              u"dem Aufrufparameter /setpath und dem Pfad des Datenordners",
                          u"NoLog");
}

void Reparatur::Kalvoradat_herstellen(const Text& datei, const Text& text) {
    if (ParentDir(datei) == platz_.Systempfad) aufbewahren(datei, text); // it is read before any other
    Kalvoradat_schreiben(d_.kanal, platz_);
    throw Programmabbruch(Text(MODUL), u"Wiederherstellen beendet. Starten Sie das Programm jetzt neu",
                          u"Startfehler: " + text);
}

// The folder that the damaged file still names; data must lie in it. Only a file that names none can mean
// this workstation's own folder.
bool Reparatur::Datenordner_erkennen(const Text& datei) const {
    Text daten, logs;
    if (auto inhalt = d_.kanal.werk().lesen(datei)) {
        Rohzeilen zeilen(inhalt->bytes.get(), inhalt->größe);
        while (const auto zeile = zeilen.nächste()) {
            if (zeile->länge == 0) continue;
            const Text roh = aus_cp1252({zeile->anfang, zeile->länge});
            const Text klar = aus_cp1252(Zeile_entschlüsseln(zeile->anfang, zeile->länge));
            for (const Text& text : {klar, roh}) {
                if (text.starts_with(u"data_pfad=")) daten = als_Ordner(Pfad_nativ(mitte(text, 11)));
                if (text.starts_with(u"log_pfad=")) logs = als_Ordner(Pfad_nativ(mitte(text, 10)));
            }
        }
    }
    if (daten.empty()) daten = platz_.Systempfad + u"Data/";
    if (!daten.starts_with(u'/') || !Datei_passend_vorhanden(fs(), daten, u"*Data.dat")) return false;
    platz_.Datenpfad = daten;
    platz_.Logpfad = Ordner_vorhanden(fs(), logs) ? logs : daten + u"Logs/";
    return true;
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

void Reparatur::Monat_zurückholen(const Text& name, std::string_view beschädigt) {
    if (wiederherstellung_.Monat_zurückholen(name.substr(0, 4), name, beschädigt, d_.K().Reservezeile))
        return;
    nicht_aus_Backup(platz_.Datenpfad + name);
    Standard_ = true;
}

// Without a sound backup the standard takes the damaged one's place, once that is gone.
void Reparatur::Datei_zurückholen(const Text& datei, const Altes& alt, const Text& text) {
    const auto jetzt = d_.kanal.werk().lesen(datei);
    if (jetzt && (!alt.lesbar || alt.kopie.empty() || jetzt->sicht() != alt.bytes)) war_schneller(datei);
    const Text name = Dateiname_aus_Pfad(datei);
    const auto gelesen = jetzt ? std::optional(gesehen(*jetzt).als_Vorgefunden()) : std::nullopt;
    try {
        if (wiederherstellung_.Datei_zurückholen(name, gelesen)) return;
    } catch (const Laufzeitfehler& fehler) { // it took a while to look through the backups
        if (fehler.nummer == FEHLER_EXISTIERT) war_schneller(datei);
        throw;
    }
    if (const auto noch = d_.kanal.werk().lesen(datei); noch && noch->sicht() != alt.bytes)
        war_schneller(datei);
    nicht_aus_Backup(datei);
    if (fs().remove(datei) != 0 && fs().info(datei).nummer() != FEHLER_NICHT_GEFUNDEN)
        nicht_zu_löschen(datei, text, alt.kopie);
    Standard_schreiben(name);
    Standard_ = true;
}

void Reparatur::nicht_aus_Backup(const Text& datei) {
    d_.log.Logbuch_ergänzen(2, u"Wiederherstellen der Datei " + Pfad_kürzen(datei, 100) +
                                   u" aus Backup fehlgeschlagen");
}

void Reparatur::Standard_schreiben(const Text& name) {
    Setup setup(d_.kanal, platz_, d_.konfig, d_.log);
    for (const TextView vorlage : {u"KalvoraFtg.dat", u"KalvoraSetup.dat"})
        if (!setup.Vorlage_bereitlegen(Text(vorlage)))
            Dateifehler(3, platz_.Systempfad + Text(vorlage), {}, MODUL);
    setup.Standard_ergänzen(name);
}

// Who may lift the lock. Damage of a second file must not hide that the first was repaired.
void Reparatur::Administratoren_lesen(bool neu) {
    if (!neu && d_.K().U() > 0) return;
    try {
        d_.konfig.Konfigdaten_lesen();
    } catch (const Fehler&) { // NOLINT(bugprone-empty-catch): the next start asks for that file
    }
}

// Where what stands now is from: later entries are to be made anew.
Text Reparatur::Herkunft() const {
    const Text quelle = wiederherstellung_.Quelle();
    return quelle.empty() ? Text() : u"\n\nGrundlage ist die Sicherung vom " + quelle + u".";
}

void Reparatur::beenden(const Text& text, const Text& kopie) const {
    const Konfiguration& k = d_.K();
    const Text aufbewahrt =
        kopie.empty() ? Text()
                      : u"\n\nDie beschädigte Datei wurde aufbewahrt als " + Pfad_kürzen(kopie, 170) + u".";
    const bool ausgesperrt = k.Administratoren(1) != u"NoAdmins" && k.Benutzerrolle != 2;
    const TextView ersatz = Standard_ ? u"\n\nIn keinem Backup war eine unbeschädigte Fassung enthalten. Es "
                                        u"wurde eine Standardversion angelegt."
                                      : u"";
    throw Programmabbruch(
        Text(MODUL),
        u"Wiederherstellen beendet." + Text(ersatz) + Herkunft() + aufbewahrt +
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
