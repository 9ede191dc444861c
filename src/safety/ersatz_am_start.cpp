// A start that finds a redo copy: the work of an interrupted replacement is finished.
#include <algorithm>
#include <new>

#include "files/ordner.h"
#include "files/versionsname.h"
#include "files/zweite_lesung.h"
#include "safety/ersatzmeldung.h"
#include "safety/monatsrettung.h"
#include "safety/ordnerersatz.h"

namespace kalvora {

namespace {

constexpr int ANLÄUFE = 3;

} // namespace

bool Ordnerersatz::Begonnenes_abschließen() {
    return als_Prozedur(ERSATZMODUL, [&] {
        for (int anlauf = 1; anlauf <= ANLÄUFE; ++anlauf) {
            if (!Auftrag_steht() || !Amt_am_Start()) return false;
            const Abschluss ergebnis = amt_.ausüben([&] { return als_Inhaber_abschließen(); });
            if (ergebnis != Abschluss::abgelöst) return ergebnis == Abschluss::fertig;
        }
        throw nicht_fertig(u"Sie wird von einem anderen Arbeitsplatz ausgeführt.",
                           u"Starten Sie das Programm in einigen Minuten neu.");
    });
}

// Who may not enter the folder cannot know whether half a state stands there.
bool Ordnerersatz::Auftrag_steht() const {
    const auto info = kanal_.fs().info(Kopie());
    const int f = info.nummer();
    if (f == FEHLER_NICHT_GEFUNDEN || f == FEHLER_ORDNER || (info && info->folder)) return false;
    if (f == FEHLER_NETZ) throw Zugriffsfehler(f, Kopie());
    if (!info) throw kein_Zutritt(f, platz_.Backuppfad);
    return true;
}

// False: another workstation has finished the work meanwhile.
bool Ordnerersatz::Amt_am_Start() {
    Schreibrecht_prüfen();
    try {
        const auto antritt = amt_.antreten(true, [&] { return steht_aus(); });
        if (antritt != Ersatzamt::Antritt::vergeben) return antritt == Ersatzamt::Antritt::angetreten;
    } catch (const Laufzeitfehler& fehler) {
        if (fehler.nummer == FEHLER_NETZ) throw;
        throw kein_Recht(fehler.nummer, platz_.Backuppfad);
    }
    throw nicht_fertig(u"Sie wird gerade von einem anderen Arbeitsplatz ausgeführt (" + amt_.Inhaber() +
                           u").",
                       u"Starten Sie das Programm in einigen Minuten neu.");
}

// A copy that could not be removed would be applied at every start.
void Ordnerersatz::Schreibrecht_prüfen() const {
    const auto probe = Probe();
    if (probe) return;
    if (probe.nummer() == FEHLER_NETZ) throw Zugriffsfehler(probe.nummer(), platz_.Backuppfad);
    throw kein_Recht(probe.nummer(), platz_.Backuppfad);
}

Ordnerersatz::Abschluss Ordnerersatz::als_Inhaber_abschließen() {
    const auto container = Kopie_lesen();
    if (!container) return Abschluss::nichts;
    if (const auto Ordner = Ordner_im_Weg(*container))
        throw nicht_fertig(*Ordner, u"Benennen Sie diesen Ordner um.");
    const Davor davor = Stand_davor();
    auto bestand = Umschau(*container, davor);
    const bool gemacht = !bestand;
    if (gemacht) bestand = gesichert_oder_Abbruch();
    const Text neue = gemacht ? backups_.Backupname() : Text();
    const Text alte = davor.bekannt || !gemacht ? davor.name : neue;
    if (!anwenden(*container, *std::move(bestand), Herkunft(*container, alte), true))
        return Abschluss::abgelöst;
    Text text = u"Eine unterbrochene Wiederherstellung des Datenordners wurde abgeschlossen.";
    if (!alte.empty())
        text += u" Der Stand davor ist aufbewahrt in der Sicherung vom " + Sicherungszeit_von(alte) + u".";
    if (gemacht && neue != alte)
        text += u" Was seit der Unterbrechung geändert wurde, enthält die Sicherung vom " +
                Sicherungszeit_von(neue) + u".";
    kanal_.app().Hinweis(text);
    return Abschluss::fertig;
}

// Nothing: it has gone, or was put aside. What one look finds may be a moment's: only bytes that were read
// twice and are no container are none. A copy that merely cannot be read is still wanted.
std::optional<Ordnerersatz::Gelesen> Ordnerersatz::Kopie_lesen() {
    constexpr int BLICKE = 3;
    int fremd = 0;
    std::optional<Laufzeitfehler> hindernis;
    for (int blick = 1; blick <= BLICKE && fremd < 2; ++blick) {
        if (blick > 1) kanal_.app().Pause(KURZ_WARTEN);
        try {
            if (auto container = wiederherstellung_.lesen(Kopie())) {
                kopie_ = container->inhalt.info;
                const Text mangel = Prüfung(*container);
                if (mangel.empty()) return container;
                Unbrauchbares_weglegen(mangel);
                return std::nullopt;
            }
            ++fremd;
        } catch (const Laufzeitfehler& fehler) {
            hindernis = fehler;
        } catch (const std::bad_alloc&) {
            hindernis = Laufzeitfehler(FEHLER_SPEICHER, u"Nicht genügend Arbeitsspeicher");
        }
    }
    if (fremd < 2 && hindernis) {
        if (hindernis->nummer == FEHLER_NICHT_GEFUNDEN) return std::nullopt;
        if (hindernis->nummer == FEHLER_NETZ) throw Laufzeitfehler(*hindernis);
        throw nicht_fertig(*hindernis);
    }
    if (const auto info = kanal_.werk().stand(Kopie())) kopie_ = *info;
    Unbrauchbares_weglegen(u"Die Datei " + Pfad_kürzen(Kopie(), 100) + u" ist beschädigt.");
    return std::nullopt;
}

// Somebody else wrote it, or it has been damaged since: half a state may stand in the data folder, and the
// backup made before leads back.
void Ordnerersatz::Unbrauchbares_weglegen(const Text& mangel) {
    const Text beiseite = platz_.Backuppfad + u"." + Text(REDOKOPIE) + u".unlesbar";
    if (kanal_.fs().rename(Kopie(), beiseite) != 0) {
        const int f = kanal_.fs().info(Kopie()).nummer();
        if (f == FEHLER_NICHT_GEFUNDEN) return;
        throw nicht_fertig(mangel, u"Benennen Sie die Datei " + Pfad_kürzen(Kopie(), 100) + u" um.");
    }
    const Text sicherung = Stand_davor().name;
    const Text text = u"Eine unterbrochene Wiederherstellung des Datenordners konnte nicht abgeschlossen "
                      u"werden: " +
                      mangel + u" Ihre Daten wurden aufbewahrt als " + Pfad_kürzen(beiseite, 100) +
                      u". Möglicherweise besteht ein inkonsistenter Zustand.";
    log_.Logbuch_ergänzen(2, text);
    kanal_.app().Hinweis(
        text + (sicherung.empty() ? Text()
                                  : u"\n\nDer Stand davor kann über 'Datei - Datenordner wiederherstellen' "
                                    u"zurückgeholt werden: Sicherung vom " +
                                        Sicherungszeit_von(sicherung)));
}

// As the window of restore points lists it.
Text Ordnerersatz::Sicherungszeit_von(const Text& name) const {
    return Sicherungszeit(platz_, Sicherungsschlüssel(kanal_, platz_, name, false));
}

// While the copy stands only whoever replaces the folder makes backups: the first one made since holds the
// state that was left. Both stamps come from the same server.
Ordnerersatz::Davor Ordnerersatz::Stand_davor() const {
    Davor beste;
    try {
        for (const Text& name : wiederherstellung_.Sicherungen()) {
            if (klein(name[14]) != u't') continue;
            const auto info = kanal_.fs().info(platz_.Backuppfad + name);
            if (!info) continue;
            const bool seitdem = info->time >= kopie_.time;
            if (seitdem || beste.name.empty()) beste = {name, seitdem, std::nullopt};
            if (!seitdem) break;
        }
        if (!beste.name.empty()) beste.inhalt = wiederherstellung_.lesen(platz_.Backuppfad + beste.name);
    } catch (const Laufzeitfehler& fehler) {
        if (fehler.nummer == FEHLER_NETZ) throw;
    }
    return beste;
}

// What may be touched, without another backup: every file is what the container says, or stands in the backup
// made before. Nothing: others have worked on since the stop.
std::optional<Bestand> Ordnerersatz::Umschau(const Gelesen& container, const Davor& davor) {
    Bestand alle;
    for (const Text& pfad : Sicherungsgut(kanal_.fs(), platz_)) {
        const auto inhalt = kanal_.werk().lesen(pfad);
        if (inhalt.nummer() == FEHLER_NICHT_GEFUNDEN) continue;
        if (!inhalt) return std::nullopt; // the backup will name it
        const auto enthält = [&](const Gelesen& wo) {
            const Containermitglied* m = wo.finden(Dateiname_aus_Pfad(pfad));
            return m && m->bytes == inhalt->sicht();
        };
        if (!enthält(container) && !(davor.inhalt && enthält(*davor.inhalt))) return std::nullopt;
        alle[pfad] = gesehen(*inhalt);
        amt_.Lebenszeichen();
    }
    return alle;
}

namespace {

// The copy is its backup, but for the months' heads.
bool gleicher_Stand(const Wiederherstellung::Gelesen& a, const Wiederherstellung::Gelesen& b) {
    return std::equal(a.mitglieder.begin(), a.mitglieder.end(), b.mitglieder.begin(), b.mitglieder.end(),
                      [](const Containermitglied& m, const Containermitglied& n) {
                          if (m.name != n.name || m.bytes.size() != n.bytes.size()) return false;
                          return ist_Versionsname(m.name) ? hinter_Kopf(m.bytes) == hinter_Kopf(n.bytes)
                                                          : m.bytes == n.bytes;
                      });
}

} // namespace

// Of which backup the copy was is known by its content alone.
Text Ordnerersatz::Herkunft(const Gelesen& container, const Text& davor) const {
    const Text anfang = u"Datenordner wiederhergestellt";
    const auto größe = container.inhalt.größe;
    try {
        for (const Text& name : wiederherstellung_.Sicherungen()) {
            const auto info = kanal_.fs().info(platz_.Backuppfad + name);
            if (!info || info->size != größe) continue;
            const auto sicherung = wiederherstellung_.lesen(platz_.Backuppfad + name);
            if (sicherung && gleicher_Stand(*sicherung, container))
                return anfang + u" mit Sicherung vom " + Sicherungszeit_von(name);
        }
    } catch (
        const Laufzeitfehler&) { // NOLINT(bugprone-empty-catch): the work is done, only its name is not known
    }
    return anfang + u" (unterbrochene Wiederherstellung abgeschlossen)" +
           (davor.empty() ? Text() : u", Stand davor: '" + davor + u"'");
}

} // namespace kalvora
