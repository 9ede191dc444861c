#include "files/aufbewahrung.h"

#include "base/zahl.h"

namespace kalvora {

Ergebnis<Text> Beiseite_legen(const Dateiwerk& werk, const Text& pfad, const Text& Heute_S,
                              const std::function<Fehlercode(const Text& name)>& ablegen) {
    constexpr int VERSUCHE = 100;
    const Zeitpunkt jetzt = werk.uhr().now();
    const Text stamm = pfad + u" defekt " + Heute_S + u" " + ziffern(jetzt.stunde, 2) +
                       ziffern(jetzt.minute, 2) + ziffern(jetzt.sekunde, 2);
    Fehlercode f = FEHLER_EXISTIERT;
    for (int n = 1; n <= VERSUCHE && f == FEHLER_EXISTIERT; ++n) {
        const Text name = n == 1 ? stamm : stamm + u" " + ziffern(n);
        f = ablegen(name);
        if (f == 0) return name;
    }
    return Ergebnis<Text>::fehler(f);
}

Ergebnis<Text> Kopie_aufbewahren(const Dateiwerk& werk, const Text& pfad, const Text& Heute_S,
                                 std::string_view bytes) {
    return Beiseite_legen(werk, pfad, Heute_S,
                          [&](const Text& name) { return werk.neu_anlegen(name, bytes).nummer(); });
}

} // namespace kalvora
