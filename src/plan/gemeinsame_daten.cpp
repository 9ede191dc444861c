#include "plan/gemeinsame_daten.h"

namespace kalvora {

Gemeinsame_Daten::Gemeinsame_Daten(Application& anwendung, Dateikanal& dateikanal, Arbeitsplatz& arbeitsplatz)
    : app(anwendung), kanal(dateikanal), platz(arbeitsplatz), konfig(kanal, platz),
      personal(kanal, platz, konfig), log(kanal, platz, konfig), feiertage(kanal, platz),
      ferien(kanal, platz), ini(kanal, platz, konfig, log), erfassung(kanal, platz, konfig, personal, log) {
    erfassung.vor_dem_Schreiben = [this] {
        const Feld<Schaltfläche> vorher = K().SF;
        Vor_dem_Schreiben_auffrischen();
        return K().SF == vorher;
    };
}

// Which headings this user may see. Until the permission rows are read, a user whom permissions bind sees the
// group that he stands in, which is what the rows start from.
void Gemeinsame_Daten::Anzber_und_Anzgru_init() {
    platz.Erlaubte_Überschriften = u"AllGroups";
    Anzeigegruppen = Feld<Text>{u"NoGroups"};
    ini.wahl().Gruppenauswahl = 0;
    if (K().Setting(1) != 2 || K().Benutzerrolle == 2) return;
    Text überschrift;
    for (const Mitarbeiter& m : personal.MA()) {
        if (m.Überschrift() && !m.MA_Name.empty()) überschrift = m.MA_Name;
        if (!m.Überschrift() && Eigene_Zeile(m.MA_BenId)) break;
    }
    platz.Erlaubte_Überschriften = überschrift + u":";
}

// This user's own display choices are written first, so that they survive the reading.
void Gemeinsame_Daten::Konfiguration_neu_lesen() {
    ini.Inidatei_schreiben();
    konfig.Konfigdaten_lesen();
    feiertage.Feiertage_lesen();
    Anzber_und_Anzgru_init();
    ini.Inidatei_lesen(Anzeigegruppen_vorhanden() ? Anzeigegruppen.anzahl() : 0);
}

bool Gemeinsame_Daten::CheckKonfigdaten() {
    if (!konfig.Datei_geändert(true)) return false;
    Konfiguration_neu_lesen();
    return true;
}

bool Gemeinsame_Daten::CheckMitarbeiterdaten() {
    if (!personal.Datei_geändert(true)) return false;
    personal.Mitarbeiterdaten_lesen();
    return true;
}

bool Gemeinsame_Daten::Vor_dem_Schreiben_auffrischen() {
    const bool konfig_neu = konfig.Datei_geändert(false);
    if (konfig_neu) Konfiguration_neu_lesen();
    const bool personal_neu = personal.Datei_geändert(false);
    if (personal_neu) personal.Mitarbeiterdaten_lesen();
    return konfig_neu || personal_neu;
}

} // namespace kalvora
