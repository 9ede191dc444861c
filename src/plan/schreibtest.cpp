#include "plan/schreibtest.h"

#include "files/ordner.h"

namespace kalvora {

namespace {

bool weg(Dateikanal& kanal, const Text& pfad) {
    (void)kanal.fs().remove(pfad);
    return kanal.fs().info(pfad).nummer() == FEHLER_NICHT_GEFUNDEN;
}

bool angelegt(Dateikanal& kanal, const Text& pfad) {
    if (!kanal.Datei_öffnen(pfad, Dateimodus::Output, Fehlerweg::IgnoreErrors)) return false;
    kanal.Rohzeile_schreiben(u"Dummy");
    return kanal.Datei_schließen() == 0;
}

} // namespace

void CheckSchreibberechtigung(Dateikanal& kanal, const Text& ordner) {
    const Text pfad = Datei_finden(kanal.fs(), ordner, u"Lockfile.txt");
    const auto gescheitert = [&](TextView was) {
        kanal.app().Hinweis(u"Fehler: Testdatei im Ordner " + Pfad_kürzen(ordner, 100) + u" konnte nicht " +
                            Text(was) + u" werden");
    };
    if (!weg(kanal, pfad)) return gescheitert(u"gelöscht");
    if (!angelegt(kanal, pfad)) return gescheitert(u"angelegt");
    if (!weg(kanal, pfad)) return gescheitert(u"gelöscht");
    kanal.app().Hinweis(u"Test OK");
}

} // namespace kalvora
