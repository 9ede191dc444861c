#include "safety/wiederherstellung.h"

#include <algorithm>

#include "files/ordner.h"

namespace kalvora {

bool Backupname_zulässig(TextView name) {
    constexpr std::size_t LÄNGE = 19;
    return name.size() == LÄNGE && nur_Ziffern(name.substr(0, 6)) && name[6] == u' ' &&
           nur_Ziffern(name.substr(7, 6)) && name[13] == u' ' && klein(name[14]) >= u'a' &&
           klein(name[14]) <= u'z' && gleich_ohne_Fall(name.substr(15), u".dat");
}

std::vector<Text> Wiederherstellung::Sicherungen() const {
    std::vector<std::pair<Zeitstempel, Text>> gefunden;
    for (const Text& name : Dateien(kanal_.fs(), platz_.Backuppfad, u"*.dat", true)) {
        const auto info = kanal_.fs().info(platz_.Backuppfad + name);
        const char16_t art = Backupname_zulässig(name) ? klein(name[14]) : u'\0';
        if (info && !info->folder && art != 0 && art != u'f' && art != u'i')
            gefunden.emplace_back(info->time, name);
    }
    std::sort(gefunden.rbegin(), gefunden.rend());
    std::vector<Text> namen;
    for (auto& [zeit, name] : gefunden)
        namen.push_back(std::move(name));
    return namen;
}

std::optional<Wiederherstellung::Gelesen> Wiederherstellung::lesen(const Text& pfad) const {
    auto inhalt = kanal_.werk().lesen(pfad);
    if (!inhalt)
        throw Laufzeitfehler(inhalt.nummer(), u"Fehler beim Dateizugriff auf " + Pfad_kürzen(pfad, 100),
                             pfad);
    auto mitglieder = Container_lesen(inhalt->sicht());
    if (!mitglieder) return std::nullopt;
    return Gelesen{std::move(*inhalt), std::move(*mitglieder)}; // the bytes stay where they are
}

void Wiederherstellung::kein_Container_melden() const {
    kanal_.app().Hinweis(u"Bei der Backupdatei handelt es sich um keine Sicherungsdatei des Kalvora");
}

// The canonical spelling is written; the same name in another case would be a second file.
void Wiederherstellung::schreiben(const Containermitglied& m) {
    const Text ordner = Zielordner(m);
    const Text ziel = ordner + m.name, andere = Datei_finden(kanal_.fs(), ordner, m.name);
    const auto ergebnis = kanal_.werk().ersetzen(ziel, m.bytes);
    if (const int f = ergebnis.nummer())
        throw Laufzeitfehler(f, u"Fehler beim Dateizugriff auf " + Pfad_kürzen(ziel, 100), ziel);
    if (andere != ziel) kanal_.fs().remove(andere);
    kanal_.Daten_geändert = true;
}

bool Wiederherstellung::Restore_aus_Backupdatei(const Text& datei, const Text& filter) {
    return als_Prozedur(u"modKalvora - Restore_aus_Backupdatei", [&] {
        Text pfad = datei;
        if (pfad.empty()) {
            const auto alle = Sicherungen();
            if (alle.empty()) return false;
            pfad = platz_.Backuppfad + alle.front();
        }
        const auto container = lesen(pfad);
        if (!container) {
            kein_Container_melden();
            return false;
        }
        const bool ohne_Logs = filter == u"NoLogs";
        for (const Containermitglied& m : container->mitglieder)
            if ((filter.empty() || ohne_Logs || m.name == filter) && !(ohne_Logs && m.Log())) schreiben(m);
        return true;
    });
}

bool Wiederherstellung::Datei_zurückholen(const Text& name,
                                          const std::function<bool(std::string_view)>& heil) {
    return als_Prozedur(u"modKalvora - Restore_aus_Backupdatei", [&] {
        for (const Text& sicherung : Sicherungen()) {
            std::optional<Gelesen> container;
            try {
                container = lesen(platz_.Backuppfad + sicherung);
            } catch (const Laufzeitfehler&) { // NOLINT(bugprone-empty-catch): an older one may be readable
            }
            if (!container) continue;
            for (const Containermitglied& m : container->mitglieder) {
                if (!gleich_ohne_Fall(m.name, name) || !heil(m.bytes)) continue;
                schreiben(m);
                return true;
            }
        }
        return false;
    });
}

// The new state first, then what it does not hold.
void Wiederherstellung::anwenden(const Gelesen& container) {
    for (const Containermitglied& m : container.mitglieder)
        schreiben(m);
    if (!Übriges_löschen(container))
        kanal_.app().Hinweis(u"Warnung: Es konnten nicht alle nicht mehr benötigten Dateien im Ordner " +
                             Pfad_kürzen(platz_.Datenpfad, 100) +
                             u" gelöscht werden. Möglicherweise besteht ein inkonsistenter Zustand.");
    Datei_löschen(kanal_.fs(), Kopie());
}

bool Wiederherstellung::Übriges_löschen(const Gelesen& container) {
    FileSystem& fs = kanal_.fs();
    bool alle = true;
    const auto löschen = [&](const Text& ordner, TextView maske) {
        for (const Text& name : Dateien(fs, ordner, maske, true)) {
            const auto gleich = [&](const Containermitglied& m) { return gleich_ohne_Fall(m.name, name); };
            if (std::any_of(container.mitglieder.begin(), container.mitglieder.end(), gleich)) continue;
            if (Ordner_vorhanden(fs, ordner + name)) continue;
            alle = fs.remove(ordner + name) == 0 && alle;
        }
    };
    löschen(platz_.Datenpfad, u"*.dat");
    löschen(platz_.Logpfad, u"*.log");
    return alle;
}

bool Wiederherstellung::Datenordner_ersetzen(const Text& datei) {
    return als_Prozedur(u"modKalvora - Restore_aus_Backupdatei", [&] {
        const auto container = lesen(datei);
        if (!container) {
            kein_Container_melden();
            return false;
        }
        Datei_löschen(kanal_.fs(), Kopie());
        if (kanal_.werk().neu_anlegen(Kopie(), container->inhalt.sicht()).nummer() != 0) {
            kanal_.app().Hinweis(u"Fehler beim Zwischenspeichern von Dateien im Ordner " +
                                 Pfad_kürzen(platz_.Backuppfad, 100) +
                                 u". Funktion kann nicht ausgeführt werden.");
            return false;
        }
        anwenden(*container);
        return true;
    });
}

// A copy that is no container was never written whole: nothing of it has been applied.
bool Wiederherstellung::Begonnenes_abschließen() {
    return als_Prozedur(u"modKalvora - Restore_aus_Backupdatei", [&] {
        if (!Datei_vorhanden(kanal_.fs(), Kopie())) return false;
        const auto container = lesen(Kopie());
        if (container)
            anwenden(*container);
        else
            Datei_löschen(kanal_.fs(), Kopie());
        return container.has_value();
    });
}

} // namespace kalvora
