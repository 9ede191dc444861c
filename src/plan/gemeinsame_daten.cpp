#include "plan/gemeinsame_daten.h"

namespace kalvora {

Gemeinsame_Daten::Gemeinsame_Daten(Application& anwendung, Dateikanal& dateikanal, Arbeitsplatz& arbeitsplatz)
    : app(anwendung), kanal(dateikanal), platz(arbeitsplatz), konfig(kanal, platz),
      personal(kanal, platz, konfig), log(kanal, platz, konfig), feiertage(kanal, platz),
      ferien(kanal, platz), ini(kanal, platz, konfig, log), erfassung(kanal, platz, konfig, personal, log),
      sperre(kanal, platz) {
    Backup_erstellen = [](TextView) { return Text(u"Backups gibt es hier nicht"); };
    erfassung.sichern = [this](TextView art) { return Backup_erstellen(art).empty(); };
    sperre.davor_sichern = [this] { return Backup_erstellen(u"T"); };
    erfassung.vor_dem_Schreiben = [this] {
        sperre.Programmsperre_prüfen();
        if (Ersatz_steht_aus(kanal.fs(), platz.Backuppfad))
            throw Programmabbruch(
                u"modKalvora - Datensatz_speichern",
                u"Der Datenordner wird auf einen früheren Stand zurückgesetzt. Ihr Eintrag wurde "
                u"nicht gespeichert. Bitte starten Sie das Programm in einigen Minuten neu",
                u"NoLog");
        const Feld<Schaltfläche> vorher = K().SF;
        Vor_dem_Schreiben_auffrischen();
        return K().SF == vorher;
    };
}

void Gemeinsame_Daten::Anzber_und_Anzgru_init() {
    Berechtigung_ableiten();
    Anzeigegruppen = Feld<Text>{u"NoGroups"};
    ini.wahl().Gruppenauswahl = 0;
}

// Whether and what this user may see. It rests on the configuration and on the staff list, so it is settled
// anew whenever one of them was read: first what the list says, then the headings.
void Gemeinsame_Daten::Berechtigung_ableiten() {
    personal.ableiten();
    platz.Erlaubte_Überschriften = u"AllGroups";
    if (K().Setting(1) == 2) Anzeigeberechtigungen_ermitteln();
}

// Which headings this user may see: without permission rows the group that he stands in.
void Gemeinsame_Daten::Anzeigeberechtigungen_ermitteln() {
    if (K().Benutzerrolle == 2) return;
    Text überschrift;
    bool gefunden = false;
    for (const Mitarbeiter& m : personal.MA()) {
        if (m.Überschrift() && !m.MA_Name.empty()) überschrift = m.MA_Name;
        gefunden = !m.Überschrift() && Eigene_Zeile(m.MA_BenId);
        if (gefunden) break;
    }
    platz.Erlaubte_Überschriften = gefunden ? überschrift + u":" : Text();
    if (gefunden || !platz.Startmeldung.empty() || !platz.Startphase) return;
    const bool mitarbeiter = K().Benutzerrolle == 0;
    platz.Startmeldung =
        u"Ihrem Windows-Benutzernamen '" + platz.Benutzername +
        u"' wurden keine Anzeigeberechtigungen zugeordnet" +
        (mitarbeiter
             ? u" oder Sie sind nicht mit diesem Windows-Benutzernamen als Mitarbeiter im Kalvora eingetragen"
             : u"") +
        u".\n\nBitten Sie einen der folgenden Administratoren, Ihnen Anzeigeberechtigung zu erteilen" +
        (mitarbeiter ? u" oder Sie als Mitarbeiter einzutragen" : u"") + u": " + K().Administratorenliste();
}

// This user's own display choices are written first, so that they survive the reading.
void Gemeinsame_Daten::Konfiguration_neu_lesen() {
    ini.Inidatei_schreiben();
    konfig.Konfigdaten_lesen();
    feiertage.Feiertage_lesen();
    Anzber_und_Anzgru_init();
    ini.Inidatei_lesen(Anzeigegruppen_vorhanden() ? Anzeigegruppen.anzahl() : 0);
    neu_gelesen_ = true;
}

void Gemeinsame_Daten::Personal_neu_lesen() {
    const int Startjahr = platz.Startjahr;
    personal.Mitarbeiterdaten_lesen();
    Berechtigung_ableiten();
    if (platz.Startjahr != Startjahr) { // the years held have moved: a month that went with them is not lost
        feiertage.Feiertage_berechnen();
        erfassung.Monate_vergessen();
    }
    neu_gelesen_ = true;
}

void Gemeinsame_Daten::Alles_neu_lesen() {
    erfassung.Monate_vergessen();
    Konfiguration_neu_lesen();
    Personal_neu_lesen();
    ferien.Ferientage_lesen();
}

bool Gemeinsame_Daten::CheckKonfigdaten() {
    if (!konfig.Datei_geändert(true)) return false;
    Konfiguration_neu_lesen();
    return true;
}

bool Gemeinsame_Daten::CheckMitarbeiterdaten() {
    if (!personal.Datei_geändert(true)) return false;
    Personal_neu_lesen();
    return true;
}

bool Gemeinsame_Daten::Vor_dem_Schreiben_auffrischen() {
    const bool konfig_neu = konfig.Datei_geändert(false);
    if (konfig_neu) Konfiguration_neu_lesen();
    const bool personal_neu = personal.Datei_geändert(false);
    if (personal_neu) Personal_neu_lesen();
    return konfig_neu || personal_neu;
}

} // namespace kalvora
