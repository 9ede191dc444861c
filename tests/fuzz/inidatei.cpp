// The ini file: damage costs the personal choices and nothing more. A damaged file goes and is logged.
#include "fuzz/fuzzplatz.h"

namespace kalvora::fuzz {

void prüfe(const Eingabe& eingabe) {
    Prüfplatz p;
    p.konfig.ändern() = Konfiguration_Standard(p.platz.Benutzername);
    p.konfig.ableiten();
    p.fs.schreibe(p.platz.Inipfad + u"Kalvora_Anderer.ini", "x");
    const Text pfad = p.platz.Inipfad + p.platz.Inidateiname;
    p.fs.schreibe(pfad, std::string(eingabe.rest)); // a plain file
    Inidatei ini(p.kanal, p.platz, p.konfig, p.log);
    // Both the ini file and the log go by; the rest of the disk stands.
    const Abbild vorher = abbild(p, pfad);
    fordere(lesen(
                p, [&] { ini.Inidatei_lesen(3); }, p.platz.Datenpfad),
            "no fault in it stops anybody");
    Abbild nachher = abbild(p, pfad);
    std::erase_if(nachher, [&](const auto& d) { return d.first.starts_with(p.platz.Logpfad); });
    fordere(nachher == vorher, "another file was touched");
    const Anzeigewahl wahl = ini.wahl();
    fordere(wahl.Gruppenauswahl >= 0 && wahl.Gruppenauswahl < 3, "a group that is there");
    fordere(wahl.TaSum.size() == 24, "24 day sums");

    ini.wahl().Fensterdaten_(fenster::ZUSTAND) = 0;
    ini.wahl().Fensterdaten_(fenster::LINKS) += 15;
    const Anzeigewahl geändert = ini.wahl();
    ini.Inidatei_schreiben();
    Inidatei wieder(p.kanal, p.platz, p.konfig, p.log);
    wieder.Inidatei_lesen(3);
    fordere(p.fs.gibt_es(pfad), "a file written here is taken here");
    fordere(wieder.wahl().TaSum == geändert.TaSum && wieder.wahl().Ordner == geändert.Ordner,
            "choices that do not come back");
}

} // namespace kalvora::fuzz
