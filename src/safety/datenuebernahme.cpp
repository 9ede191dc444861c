#include "safety/datenuebernahme.h"

#include "files/ordner.h"
#include "safety/ordnerprobe.h"

namespace kalvora {

bool Datenübernahme::Wiederherstellungspunkt(const Text& Backupname) {
    const Text schlüssel = Sicherungsschlüssel(kanal_, platz_, Backupname, false);
    return übernehmen(platz_.Backuppfad + Backupname, u"Datenordner wiederhergestellt mit Sicherung vom " +
                                                          Sicherungszeit(platz_, schlüssel));
}

bool Datenübernahme::übernehmen(const Text& datei, const Text& Logtext) {
    return als_Prozedur(u"modKalvora - Datenübernahme", [&] {
        auto container = lesen(datei);
        if (!container || !zulässig(*container)) return false;
        const bool Daten = Daten_vorhanden();
        if (Daten && !einverstanden()) return false;
        const Application::Sanduhrwache sanduhr(app_, true);
        container->Monate_neu_beginnen(kanal_.schlüssel());
        if (!ersatz_.Datenordner_ersetzen(*container, {Daten, Logtext})) return false;
        konfig_.Konfigdaten_lesen();
        konfig_.Konfigdaten_schreiben(); // in this version's form
        return true;
    });
}

// Read once: what was judged is what is put in place.
std::optional<Wiederherstellung::Gelesen> Datenübernahme::lesen(const Text& datei) {
    try {
        auto container = wiederherstellung_.lesen(datei);
        if (!container) wiederherstellung_.kein_Container_melden();
        return container;
    } catch (const Laufzeitfehler& fehler) {
        app_.Hinweis(u"Die Datei " + Pfad_kürzen(datei, 100) + u" konnte nicht gelesen werden (Fehler Nr. " +
                     ziffern(fehler.nummer) + u"). Es wurde nichts verändert.");
        return std::nullopt;
    }
}

bool Datenübernahme::zulässig(const Wiederherstellung::Gelesen& container) {
    const Text mangel = Mangel(probe_, platz_, container, true);
    if (mangel.empty()) return Check_ob_Admin(container.finden(u"Konfigdaten.dat")->bytes);
    app_.Hinweis(mangel + u" Es wurde nichts verändert. Bitte wählen Sie eine andere Sicherung.");
    return false;
}

// In a folder that cannot be listed there may be some.
bool Datenübernahme::Daten_vorhanden() const {
    try {
        return Datei_passend_vorhanden(kanal_.fs(), platz_.Datenpfad, u"*.dat");
    } catch (const Laufzeitfehler&) {
        return true;
    }
}

// Whoever is no administrator there would lock himself out.
bool Datenübernahme::Check_ob_Admin(std::string_view Konfigdatei) {
    const auto konfig = probe_.Konfig(Konfigdatei);
    if (!konfig || konfig->Benutzerrolle == 2) return konfig.has_value();
    Text namen;
    for (const Text& zeile : konfig->Administratoren)
        namen += (namen.empty() ? u"" : u", ") + Text(mitte(zeile, position(zeile, u":", 3) + 1));
    app_.Hinweis(u"Funktion nur möglich mit Windows-Benutzername(n): " + namen);
    return false;
}

bool Datenübernahme::einverstanden() {
    return app_.Frage(
               u"Stellen Sie sicher, dass momentan niemand anders den Kalvora in Benutzung "
               u"hat.\n\nAchtung! Alle derzeit vorhandenen An-/Abwesenheitsdaten, Mitarbeiterdaten und "
               u"Programmeinstellungen werden vollständig ersetzt.\n\nMöchten Sie fortsetzen?",
               {Fragesymbol::Warnung, false, Antwort::Nein}) == Antwort::Ja;
}

} // namespace kalvora
