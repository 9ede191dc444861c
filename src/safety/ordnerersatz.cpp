#include "safety/ordnerersatz.h"

#include <algorithm>

#include "files/ordner.h"
#include "files/zweite_lesung.h"

namespace kalvora {

namespace {

constexpr TextView MODUL = u"modKalvora - Restore_aus_Backupdatei";
constexpr Zeitstempel FRISCH = 5 * 60 * Zeitstempel{1'000'000'000}; // its owner may still be at work
constexpr int RUNDEN = 4;

Programmabbruch nicht_fertig(const Text& ursache, const Text& rat) {
    const Text anfang = u"Die Wiederherstellung des Datenordners ist noch nicht abgeschlossen";
    return {Text(MODUL),
            anfang + u".\n\nUrsache: " + ursache + u"\n\n" + rat +
                u" Beim nächsten Programmstart wird die Wiederherstellung fortgesetzt",
            anfang + u": " + ursache};
}

Programmabbruch nicht_fertig(const Laufzeitfehler& fehler) {
    return nicht_fertig(fehler.text() + u" (Fehler Nr. " + ziffern(fehler.nummer) + u").",
                        u"Sorgen Sie dafür, dass im Datenordner genügend Speicherplatz frei ist und Sie dort "
                        u"alle Dateien ändern dürfen.");
}

Programmabbruch von_Hand_löschen(const Text& pfad) {
    return {Text(MODUL), u"Die Daten wurden wiederhergestellt, aber die Datei " + Pfad_kürzen(pfad, 100) +
                             u" konnte nicht gelöscht werden.\n\nLöschen Sie diese Datei von Hand, bevor der "
                             u"Kalvora wieder gestartet wird. Sonst werden die Daten noch einmal "
                             u"wiederhergestellt, und neuere Einträge gehen verloren"};
}

} // namespace

// ------------------------------------------------------------------ before

// A file that is made and removed beside the copy. Its stamp comes from the same clock as the copy's.
Ergebnis<FileInfo> Ordnerersatz::Probe() const {
    const Text pfad = platz_.Backuppfad + u"." + Text(REDOKOPIE) + u".probe";
    auto ergebnis = kanal_.werk().ersetzen(pfad, "\r\n");
    if (!ergebnis) return ergebnis;
    const Fehlercode f = kanal_.fs().remove(pfad);
    const bool weg = f == 0 || kanal_.fs().info(pfad).nummer() == FEHLER_NICHT_GEFUNDEN;
    return weg ? ergebnis : Ergebnis<FileInfo>::fehler(f);
}

bool Ordnerersatz::bereit() {
    const Text ordner = Pfad_kürzen(platz_.Backuppfad, 100);
    const auto probe = Probe(), kopie = kanal_.fs().info(Kopie());
    Text meldung;
    if (probe.nummer() == FEHLER_VOLL)
        meldung = u"Fehler beim Zwischenspeichern von Dateien im Ordner " + ordner +
                  u". Funktion kann nicht ausgeführt werden.";
    else if (!probe || (kopie && kopie->folder))
        meldung = u"Löschen alter Dateien im Ordner " + ordner +
                  u" nicht möglich. Vermutlich haben Sie keine ausreichenden Zugriffsberechtigungen für "
                  u"diesen Ordner. Funktion kann nicht ausgeführt werden.";
    else if (kopie && probe->time - kopie->time < FRISCH)
        meldung = u"Eine Wiederherstellung läuft gerade auf einem anderen Arbeitsplatz. Es wurde nichts "
                  u"verändert. Bitte versuchen Sie es in einigen Minuten noch einmal.";
    if (!meldung.empty()) kanal_.app().Hinweis(meldung);
    return meldung.empty();
}

std::optional<Text> Ordnerersatz::Ordner_im_Weg(const Gelesen& container) const {
    for (const Containermitglied& m : container.mitglieder) {
        const Text ziel = wiederherstellung_.Zielordner(m) + m.name;
        if (Ordner_vorhanden(kanal_.fs(), ziel))
            return u"An der Stelle der Datei " + Pfad_kürzen(ziel, 100) + u" steht ein Ordner.";
    }
    return std::nullopt;
}

// Where none stands only one of two workstations can make one. An older one is a job that nobody finishes
// any more: this one takes its place.
bool Ordnerersatz::Datenordner_ersetzen(const Gelesen& container) {
    return als_Prozedur(MODUL, [&] {
        const auto ablehnen = [&](const Text& grund) {
            kanal_.app().Hinweis(grund + u" Funktion kann nicht ausgeführt werden.");
            return false;
        };
        if (const auto Ordner = Ordner_im_Weg(container)) return ablehnen(*Ordner);
        const bool stand = steht_aus();
        const auto bytes = container.inhalt.sicht();
        const auto neu =
            stand ? kanal_.werk().ersetzen(Kopie(), bytes) : kanal_.werk().neu_anlegen(Kopie(), bytes);
        if (neu.nummer() == FEHLER_EXISTIERT)
            return ablehnen(u"Eine Wiederherstellung läuft gerade auf einem anderen Arbeitsplatz.");
        if (!neu) {
            if (!stand) (void)kanal_.fs().remove(Kopie()); // should it stand all the same
            return ablehnen(u"Fehler beim Zwischenspeichern von Dateien im Ordner " +
                            Pfad_kürzen(platz_.Backuppfad, 100) + u".");
        }
        const auto kopie = kanal_.werk().stand(Kopie()); // some servers set the stamp when a file is closed
        kopie_ = kopie ? *kopie : *neu;
        anwenden(container);
        return true;
    });
}

// ------------------------------------------------------------------ applying

// Is the copy still the one that is being applied? False: it has gone, and the work is done.
bool Ordnerersatz::Auftrag_gilt() const {
    const auto jetzt = kanal_.werk().stand(Kopie());
    if (jetzt && jetzt->size == kopie_.size && jetzt->time == kopie_.time) return true;
    if (jetzt)
        throw Programmabbruch(Text(MODUL),
                              u"Auf einem anderen Arbeitsplatz hat eine andere Wiederherstellung des "
                              u"Datenordners begonnen. Diese hier wurde abgebrochen.\n\nStarten Sie das "
                              u"Programm in einigen Minuten neu");
    if (jetzt.nummer() == FEHLER_NICHT_GEFUNDEN) return false;
    throw Zugriffsfehler(jetzt.nummer(), Kopie());
}

// What must not be written again: somebody may have gone on working with it since another workstation put it
// there.
bool Ordnerersatz::steht_genau(const Containermitglied& m) const {
    const Text ordner = wiederherstellung_.Zielordner(m);
    const auto info = kanal_.fs().info(ordner + m.name);
    if (!info || info->folder || info->size != m.bytes.size()) return false;
    const auto inhalt = kanal_.werk().lesen(ordner + m.name);
    return inhalt && inhalt->sicht() == m.bytes && !wiederherstellung_.ist_Verknüpfung(ordner, m.name);
}

// A while after it was written: rows may have been appended.
bool Ordnerersatz::steht_noch(const Containermitglied& m) const {
    const Text pfad = wiederherstellung_.Zielordner(m) + m.name;
    const auto info = kanal_.fs().info(pfad);
    if (!info || info->size <= m.bytes.size()) return info && info->size == m.bytes.size();
    const auto inhalt = kanal_.werk().lesen(pfad);
    return inhalt && inhalt->sicht().starts_with(m.bytes);
}

// Everything that a backup takes: paths.
std::set<Text> Ordnerersatz::Bestand() const {
    std::set<Text> alle;
    const auto anfügen = [&](const Text& ordner, TextView maske) {
        for (const Text& name : Dateien(kanal_.fs(), ordner, maske, true))
            if (Mitgliedsname_zulässig(name) && !Ordner_vorhanden(kanal_.fs(), ordner + name))
                alle.insert(ordner + name);
    };
    anfügen(platz_.Datenpfad, u"*.dat");
    anfügen(platz_.Logpfad, u"*.log");
    return alle;
}

// False: the work is done already. `vollständig`: nothing had to be written.
bool Ordnerersatz::alle_schreiben(const Gelesen& container, bool erstmals, bool& vollständig) {
    const int alle = static_cast<int>(container.mitglieder.size());
    int fertig = 0;
    for (const Containermitglied& m : container.mitglieder) {
        if (erstmals ? !steht_genau(m) : !steht_noch(m)) {
            if (!Auftrag_gilt()) return false;
            wiederherstellung_.schreiben(m);
            vollständig = false;
        }
        if (erstmals && Fortschritt) Fortschritt(++fertig, alle);
    }
    return true;
}

// The new state first, then what it does not hold goes, then a look at everything: a workstation whose save
// was on its way may have cleared away a restored month in favour of a version that has gone now.
bool Ordnerersatz::durchführen(const Gelesen& container) {
    geblieben_.clear();
    const std::set<Text> vorher = Bestand();
    if (!Ordner_vorhanden(kanal_.fs(), platz_.Logpfad)) (void)kanal_.fs().make_folder(platz_.Logpfad);
    for (int runde = 1; runde <= RUNDEN; ++runde) {
        bool vollständig = runde > 1;
        if (!alle_schreiben(container, runde == 1, vollständig)) return false;
        if (vollständig) return Auftrag_gilt();
        if (runde == 1 && !Übriges_entfernen(container, vorher)) return false;
    }
    throw nicht_fertig(u"Auf einem anderen Arbeitsplatz wird gerade gearbeitet.",
                       u"Stellen Sie sicher, dass momentan niemand den Kalvora in Benutzung hat.");
}

// False: another workstation has done the work meanwhile. A network that is gone is waited for at a start.
bool Ordnerersatz::anwenden(const Gelesen& container) {
    try {
        if (!durchführen(container) || !Kopie_löschen()) return false;
    } catch (const Laufzeitfehler& fehler) {
        if (fehler.nummer == FEHLER_NETZ && platz_.Startphase) throw;
        throw nicht_fertig(fehler);
    }
    const auto warnen = [&](const Text& ordner, TextView was, TextView folge) {
        if (std::find(geblieben_.begin(), geblieben_.end(), ordner) == geblieben_.end()) return;
        kanal_.app().Hinweis(u"Warnung: Es konnten nicht alle nicht mehr benötigten " + Text(was) +
                             u" im Ordner " + Pfad_kürzen(ordner, 100) + u" gelöscht werden. " + Text(folge));
    };
    warnen(platz_.Datenpfad, u"Dateien", u"Möglicherweise besteht ein inkonsistenter Zustand.");
    warnen(platz_.Logpfad, u"Logdateien", u"Möglicherweise ist die Logbuchanzeige inkonsistent.");
    return true;
}

// Only what stood there before, and so is in the backup made before. False: the work is done already.
bool Ordnerersatz::Übriges_entfernen(const Gelesen& container, const std::set<Text>& vorher) {
    for (const Text& pfad : vorher) {
        const Text name = Dateiname_aus_Pfad(pfad), ordner = ParentDir(pfad);
        const Containermitglied* m = container.finden(name);
        if (m && m->name == name) continue;
        if (!Auftrag_gilt()) return false;
        if (!weg_damit(ordner, name, container)) geblieben_.push_back(ordner);
    }
    return true;
}

// Of two spellings of a name the backup holds only one: the other is put aside. Where a folder does not tell
// them apart it is the restored file itself.
bool Ordnerersatz::weg_damit(const Text& ordner, const Text& name, const Gelesen& container) const {
    FileSystem& fs = kanal_.fs();
    Fehlercode f = 0;
    if (const Containermitglied* m = container.finden(name)) {
        if (beide_gelistet(fs, ordner, name, m->name))
            f = fs.rename(ordner + name, ordner + u"." + name + u".ersetzt");
    } else {
        f = fs.remove(ordner + name);
    }
    return f == 0 || fs.info(ordner + name).nummer() == FEHLER_NICHT_GEFUNDEN;
}

// A copy that stayed behind would be applied again, over newer entries. False: another workstation has
// deleted it.
bool Ordnerersatz::Kopie_löschen() {
    const auto weg = [&] { return kanal_.fs().info(Kopie()).nummer() == FEHLER_NICHT_GEFUNDEN; };
    if (kanal_.fs().remove(Kopie()) == 0 || weg()) return true;
    const Text beiseite = platz_.Backuppfad + u"." + Text(REDOKOPIE) + u".erledigt";
    if (kanal_.fs().rename(Kopie(), beiseite) == 0 || weg()) return true;
    throw von_Hand_löschen(Kopie());
}

// ------------------------------------------------------------------ at a start

std::optional<Text> Ordnerersatz::Begonnenes_abschließen() {
    return als_Prozedur(MODUL, [&]() -> std::optional<Text> {
        const auto info = kanal_.fs().info(Kopie());
        const int f = info.nummer();
        if (f == FEHLER_NICHT_GEFUNDEN || f == FEHLER_ORDNER || (info && info->folder)) return std::nullopt;
        if (!info) throw Zugriffsfehler(f, Kopie()); // half a state may stand there
        const auto container = Kopie_lesen();
        if (!container) return std::nullopt;
        Schreibrecht_prüfen();
        if (const auto Ordner = Ordner_im_Weg(*container))
            throw nicht_fertig(*Ordner, u"Benennen Sie diesen Ordner um.");
        kopie_ = container->inhalt.info;
        const Text davor = Stand_sichern(*container);
        if (!anwenden(*container)) return std::nullopt;
        kanal_.app().Hinweis(
            u"Eine unterbrochene Wiederherstellung des Datenordners wurde abgeschlossen." +
            (davor.empty()
                 ? Text()
                 : u" Der Stand davor ist aufbewahrt in der Sicherung vom " +
                       Sicherungszeit(platz_, Sicherungsschlüssel(kanal_, platz_, davor, true)) + u"."));
        return Herkunft(*container, davor);
    });
}

// Nothing: it has gone, or was put aside because it is no container. What one look finds may be a moment's.
std::optional<Ordnerersatz::Gelesen> Ordnerersatz::Kopie_lesen() {
    int f = 0;
    try {
        auto container = zweite_Lesung(
            kanal_.app(), [&] { return wiederherstellung_.lesen(Kopie()); },
            [](const auto& gelesen) { return gelesen.has_value(); });
        if (container) return container;
    } catch (const Laufzeitfehler& fehler) {
        f = fehler.nummer;
        if (f == FEHLER_NICHT_GEFUNDEN) return std::nullopt;
        if (f == FEHLER_NETZ) throw;
        if (f != FEHLER_GERÄT) throw nicht_fertig(fehler);
    }
    Unlesbares_weglegen();
    return std::nullopt;
}

// Somebody else wrote it, or it has been damaged since: half a state may stand in the data folder, and the
// backup made before leads back.
void Ordnerersatz::Unlesbares_weglegen() {
    const Text beiseite = platz_.Backuppfad + u"." + Text(REDOKOPIE) + u".unlesbar";
    if (kanal_.fs().rename(Kopie(), beiseite) != 0) {
        const int f = kanal_.fs().info(Kopie()).nummer();
        if (f == FEHLER_NICHT_GEFUNDEN) return;
        throw nicht_fertig(u"Die Datei " + Pfad_kürzen(Kopie(), 100) + u" ist beschädigt.",
                           u"Benennen Sie diese Datei um.");
    }
    Text sicherung;
    for (const Text& name : wiederherstellung_.Sicherungen())
        if (sicherung.empty() && klein(name[14]) == u't')
            sicherung = Sicherungszeit(platz_, Sicherungsschlüssel(kanal_, platz_, name, false));
    const Text text = u"Eine unterbrochene Wiederherstellung des Datenordners konnte nicht abgeschlossen "
                      u"werden: Die Datei " +
                      Pfad_kürzen(Kopie(), 100) + u" ist beschädigt und wurde aufbewahrt als " +
                      Pfad_kürzen(beiseite, 100) + u". Möglicherweise besteht ein inkonsistenter Zustand.";
    log_.Logbuch_ergänzen(2, text);
    kanal_.app().Hinweis(
        text + (sicherung.empty() ? Text()
                                  : u"\n\nDer Stand davor kann über 'Datei - Datenordner wiederherstellen' "
                                    u"zurückgeholt werden: Sicherung vom " +
                                        sicherung));
}

// A copy that could not be deleted would be applied at every start.
void Ordnerersatz::Schreibrecht_prüfen() const {
    const auto probe = Probe();
    if (probe) return;
    if (probe.nummer() == FEHLER_NETZ) throw Zugriffsfehler(probe.nummer(), platz_.Backuppfad);
    throw nicht_fertig(u"Im Ordner " + Pfad_kürzen(platz_.Backuppfad, 100) +
                           u" konnte keine Datei angelegt und gelöscht werden (Fehler Nr. " +
                           ziffern(probe.nummer()) + u").",
                       u"Das Programm muss zuerst von einem Benutzer gestartet werden, der in diesem Ordner "
                       u"alle Rechte hat, und der Datenträger darf nicht voll sein.");
}

// Others may have worked on since the stop. The backup's name; empty: all is as the copy says.
Text Ordnerersatz::Stand_sichern(const Gelesen& container) {
    const auto fremd = [&](const Text& pfad) {
        const Containermitglied* m = container.finden(Dateiname_aus_Pfad(pfad));
        return !m || !steht_genau(*m);
    };
    const std::set<Text> bestand = Bestand();
    if (std::none_of(bestand.begin(), bestand.end(), fremd)) return {};
    if (backups_.Backup_erstellen(u"T", {}, true)) return backups_.Backupname();
    throw nicht_fertig(
        u"Der jetzige Stand des Datenordners konnte nicht gesichert werden.",
        u"Sorgen Sie dafür, dass im Ordner " + Pfad_kürzen(platz_.Backuppfad, 100) +
            u" genügend Speicherplatz frei ist und alle Dateien des Datenordners lesbar sind.");
}

// Of which backup the copy was is known by its content alone.
Text Ordnerersatz::Herkunft(const Gelesen& container, const Text& davor) const {
    const Text anfang = u"Datenordner wiederhergestellt";
    const auto bytes = container.inhalt.sicht();
    try {
        for (const Text& name : wiederherstellung_.Sicherungen()) {
            const auto info = kanal_.fs().info(platz_.Backuppfad + name);
            if (!info || info->size != bytes.size()) continue;
            const auto inhalt = kanal_.werk().lesen(platz_.Backuppfad + name);
            if (inhalt && inhalt->sicht() == bytes)
                return anfang + u" mit Sicherung vom " +
                       Sicherungszeit(platz_, Sicherungsschlüssel(kanal_, platz_, name, false));
        }
    } catch (
        const Laufzeitfehler&) { // NOLINT(bugprone-empty-catch): the work is done, only its name is not known
    }
    return anfang + u" (unterbrochene Wiederherstellung abgeschlossen)" +
           (davor.empty() ? Text() : u", Stand davor: '" + davor + u"'");
}

} // namespace kalvora
