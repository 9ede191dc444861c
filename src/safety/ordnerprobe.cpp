#include "safety/ordnerprobe.h"

#include <algorithm>

#include "files/monatsdaten.h"
#include "files/versionsname.h"

namespace kalvora {

namespace {

using Urteil = Dateiprobe::Urteil;

// Without these three no start would work.
Text Stammdateien_prüfen(const Dateiprobe& probe, const Wiederherstellung::Gelesen& container, bool streng) {
    for (const TextView name : {u"Konfigdaten.dat", u"Mitarbeiterdaten.dat", u"Feiertage.dat"}) {
        const Containermitglied* m = container.finden(name);
        const Text datei = u"Die Datei '" + Text(name) + u"' ";
        if (!m) return datei + u"fehlt in dieser Sicherung.";
        const Urteil urteil = probe.prüfen(Text(name), m->bytes).urteil;
        if (urteil != Urteil::heil && (streng || urteil != Urteil::ungeprüft))
            return datei + u"ist in dieser Sicherung beschädigt.";
    }
    return {};
}

// The version in force of each month.
std::map<Text, const Containermitglied*> Monate(const Wiederherstellung::Gelesen& container) {
    std::map<Text, const Containermitglied*> alle;
    for (const Containermitglied& m : container.mitglieder) {
        if (!ist_Versionsname(m.name)) continue;
        const Containermitglied*& bisher = alle[Text(links(m.name, 4))];
        if (!bisher || bisher->name < m.name) bisher = &m;
    }
    return alle;
}

} // namespace

// Next year's months nobody would ask for.
Text Mangel(const Dateiprobe& probe, const Arbeitsplatz& platz, const Wiederherstellung::Gelesen& container,
            bool streng) {
    if (Text mangel = Stammdateien_prüfen(probe, container, streng); !mangel.empty()) return mangel;
    const auto monate = Monate(container);
    const auto startjahr = probe.Startjahr(container.finden(u"Mitarbeiterdaten.dat")->bytes);
    Text fehlend, beschädigt;
    const auto nennen = [](Text& liste, const Text& was) { liste += (liste.empty() ? u"" : u", ") + was; };
    for (int n = 0; startjahr && n < MONATE && *startjahr + n / 12 <= Jahr(platz.Heute); ++n) {
        const Text monat = ziffern(n % 12 + 1, 2), jahr = ziffern(*startjahr + n / 12, 4);
        if (!monate.contains(jahr.substr(2) + monat))
            nennen(fehlend, monat + platz.datum().trennzeichen + jahr);
    }
    for (const auto& [yymm, m] : monate)
        if (probe.prüfen(m->name, m->bytes).urteil == Urteil::beschädigt)
            nennen(beschädigt, u"'" + m->name + u"'");
    if (!beschädigt.empty()) return u"In dieser Sicherung ist beschädigt: " + beschädigt + u".";
    if (!fehlend.empty())
        return u"In dieser Sicherung fehlen die An-/Abwesenheitsdaten der Monate: " + fehlend + u".";
    return {};
}

} // namespace kalvora
