#include "files/kalvoradat.h"

#include <algorithm>

#include "base/cp1252.h"
#include "files/ordner.h"

namespace kalvora {

namespace {

constexpr TextView KOPF = u"[Kalvora]";
constexpr TextView DATEN = u"data_pfad=", LOG = u"log_pfad=", DATEN_ALT = u"data_pfad_alt=";

struct Pfade {
    Text daten, log, alt;
};

// Lines of the file, scrambled or, in the older form, as they stand. The scrambled form is only ever written
// whole; the older one may have been typed and lack its last line end.
std::vector<Text> alle_Zeilen(Dateikanal& kanal, const Text& pfad, bool verschlüsselt) {
    kanal.Datei_öffnen(pfad, Dateimodus::Input);
    const bool abgeschnitten = verschlüsselt && kanal.letzte_Zeile_offen();
    std::vector<Text> zeilen;
    try {
        while (!kanal.Dateiende())
            zeilen.push_back(verschlüsselt ? kanal.LineIn() : kanal.Rohzeile());
    } catch (const Laufzeitfehler&) { // an empty raw line: not the scrambled form, or no more of it
    }
    kanal.Datei_schließen();
    if (abgeschnitten && !zeilen.empty() && zeilen.front() == KOPF)
        throw Dateischaden(u"Die Datei " + Pfad_kürzen(pfad, 100) + u" ist unvollständig.", pfad);
    return zeilen;
}

Text wert(const std::vector<Text>& zeilen, size_t n, TextView name, const Text& pfad) {
    if (n >= zeilen.size() || !zeilen[n].starts_with(name))
        throw Dateischaden(u"Variable '" + Text(name.substr(0, name.size() - 1)) +
                               u"' in 'Kalvora.dat' konnte nicht ausgewertet werden.",
                           pfad);
    return als_Ordner(Pfad_nativ(TextView(zeilen[n]).substr(name.size())));
}

Pfade auswerten(Dateikanal& kanal, const Text& pfad) {
    auto zeilen = alle_Zeilen(kanal, pfad, true);
    if (zeilen.empty() || zeilen.front() != KOPF) {
        zeilen = alle_Zeilen(kanal, pfad, false);
        if (zeilen.empty() || zeilen.front() != KOPF) Dateifehler(2, pfad, u"Kalvora");
    }
    Pfade pfade{wert(zeilen, 1, DATEN, pfad), wert(zeilen, 2, LOG, pfad), {}};
    if (zeilen.size() > 3 && !zeilen[3].empty()) pfade.alt = wert(zeilen, 3, DATEN_ALT, pfad);
    return pfade;
}

// The last change of folder was not completed: back to the former one when its data are still there.
void früheren_Ordner_versuchen(Dateikanal& kanal, Arbeitsplatz& platz, bool still) {
    const Text& alt = platz.Datenpfad_alt;
    if (Datei_passend_vorhanden(kanal.fs(), alt, u"*Data.dat") &&
        Datei_passend_vorhanden(kanal.fs(), alt + u"Logs/", u"*.log")) {
        platz.Datenpfad = alt;
        platz.Logpfad = alt + u"Logs/";
        platz.Datenpfad_alt.clear();
        Kalvoradat_schreiben(kanal, platz);
        return;
    }
    if (still) return;
    kanal.app().Hinweis(u"Hinweis: Keine Daten im Ordner " + Pfad_kürzen(alt, 100) +
                        u" gefunden. Sie können den Ordner mit den Daten auswählen über den Menüpunkt "
                        u"'Datei - Datenordner ändern'");
}

} // namespace

void Kalvoradat_lesen(Dateikanal& kanal, Arbeitsplatz& platz, bool still) {
    als_Prozedur(u"modKalvora - Kalvoradat_lesen", [&] {
        for (const Text& ordner : {platz.Systempfad, platz.Programmpfad}) {
            const Text pfad = Datei_finden(kanal.fs(), ordner, u"Kalvora.dat");
            // Only a file that is not there means a new installation; any other fault the open will tell.
            const int fehlt = kanal.fs().info(pfad).nummer();
            if (fehlt == FEHLER_NICHT_GEFUNDEN || fehlt == FEHLER_ORDNER) continue;
            Pfade gelesen = auswerten(kanal, pfad);
            platz.Datenpfad = std::move(gelesen.daten);
            platz.Logpfad = std::move(gelesen.log);
            platz.Datenpfad_alt = std::move(gelesen.alt);
            if (platz.Datenpfad.empty() && platz.Logpfad.empty() && !platz.Datenpfad_alt.empty())
                früheren_Ordner_versuchen(kanal, platz, still);
            return;
        }
    });
}

void Kalvoradat_schreiben(Dateikanal& kanal, const Arbeitsplatz& platz) {
    const Text pfad = platz.Systempfad + u"Kalvora.dat";
    // A path with a character that the code page lacks, or with a control character, which no line can hold,
    // would come back as another path.
    const Text pfade = platz.Datenpfad + platz.Logpfad + platz.Datenpfad_alt;
    const bool darstellbar = cp1252_darstellbar(pfade) &&
                             std::none_of(pfade.begin(), pfade.end(), [](char16_t c) { return c < u' '; });
    bool gelungen = darstellbar && kanal.Datei_öffnen(pfad, Dateimodus::Output, Fehlerweg::IgnoreErrors);
    if (gelungen) {
        kanal.LineOut(KOPF);
        kanal.LineOut(Text(DATEN) + Pfad_gespeichert(platz.Datenpfad));
        kanal.LineOut(Text(LOG) + Pfad_gespeichert(platz.Logpfad));
        if (!platz.Datenpfad_alt.empty())
            kanal.LineOut(Text(DATEN_ALT) + Pfad_gespeichert(platz.Datenpfad_alt));
        gelungen = kanal.Datei_schließen() == 0;
    }
    if (gelungen) return;
    throw Programmabbruch(
        u"modKalvora - Kalvoradat_schreiben",
        u"Der Datenordner kann nicht in " + Pfad_kürzen(pfad, 100) + u" gespeichert werden.\n" +
            (darstellbar ? u"Vermutlich haben Sie keine ausreichenden "
                           u"Zugriffsberechtigungen. Bitten Sie einen Administrator, diese "
                           u"Funktion für Sie durchzuführen"
                         : u"Sein Name enthält Zeichen, die nicht gespeichert werden können"));
}

} // namespace kalvora
