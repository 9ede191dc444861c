// Konfigdaten.dat: what is taken is sound, and comes back when it is written.
#include "fuzz/fuzzplatz.h"

namespace kalvora::fuzz {

void prüfe(const Eingabe& eingabe) {
    Prüfplatz p;
    const Text pfad = p.platz.Datenpfad + u"Konfigdaten.dat";
    p.fs.schreibe(pfad, eingabe.datei);
    const auto leser = [&] { p.konfig.Konfigdaten_lesen(); };
    if (!lesen(p, leser)) return;
    const Konfiguration& k = p.konfig.werte();
    fordere(k.U() >= 1 && k.U() <= HÖCHSTZAHL_SÄTZE, "number of reasons");
    fordere(k.SF(k.U()).SF_Kennbuchstabe == u' ', "the delete button is the last reason");
    fordere(k.Grundfarben.anzahl() == GRUNDFARBEN, "number of colours");
    for (const int sf : {k.SF_Krank, k.SF_Urlaub, k.SF_Halburlaub, k.SF_Urlaub2, k.SF_Halburlaub2})
        fordere(sf >= 0 && sf <= k.U(), "a reason that is there");
    for (int n = 1; n <= SETTINGS_LÄNGE; ++n)
        fordere(k.Setting(n) >= 0 && k.Setting(n) <= 9, "a setting is a digit");
    k.Administratorenliste(true);
    hin_und_zurück(p, pfad, leser, [&] { p.konfig.Konfigdaten_schreiben(); });
}

} // namespace kalvora::fuzz
