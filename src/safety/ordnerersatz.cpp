#include "safety/ordnerersatz.h"

#include <algorithm>

#include "files/ordner.h"
#include "files/zweite_lesung.h"
#include "safety/ersatzmeldung.h"
#include "safety/ordnerprobe.h"

namespace kalvora {

namespace {

constexpr int RUNDEN = 4;

Text Ursache(const Text& hindernis) {
    return hindernis.empty() ? Text() : u" Ursache: " + hindernis + u".";
}

} // namespace

Ordnerersatz::Ordnerersatz(Dateikanal& kanal, const Arbeitsplatz& platz, Wiederherstellung& wiederherstellung,
                           Backups& backups, Logbuch& log)
    : kanal_(kanal), platz_(platz), wiederherstellung_(wiederherstellung), backups_(backups), log_(log),
      amt_(kanal, platz), anwendung_(kanal, platz, wiederherstellung, log) {
    Prüfung = [this](const Gelesen& container) {
        return Mangel(Dateiprobe(kanal_, platz_), platz_, container, false);
    };
    anwendung_.Auftrag_gilt = [this] { return Auftrag_gilt(); };
    anwendung_.Fortschritt = [this](int fertig, int alle) {
        amt_.Lebenszeichen();
        if (Fortschritt) Fortschritt(fertig, alle);
    };
}

// ------------------------------------------------------------------ begun here

bool Ordnerersatz::ablehnen(const Text& grund) const {
    kanal_.app().Hinweis(grund + u" Funktion kann nicht ausgeführt werden.");
    return false;
}

// A file that is made and removed beside the copy.
Ergebnis<FileInfo> Ordnerersatz::Probe() const {
    const Text pfad = platz_.Backuppfad + u"." + Text(REDOKOPIE) + u".probe";
    auto ergebnis = kanal_.werk().ersetzen(pfad, "\r\n");
    if (!ergebnis) return ergebnis;
    const Fehlercode f = kanal_.fs().remove(pfad);
    const bool weg = f == 0 || kanal_.fs().info(pfad).nummer() == FEHLER_NICHT_GEFUNDEN;
    return weg ? ergebnis : Ergebnis<FileInfo>::fehler(f);
}

// A link in the copy's place that leads nowhere is no order, and nobody could ever give one. True: the place
// is free or holds a file.
bool Ordnerersatz::bereit() {
    FileSystem& fs = kanal_.fs();
    const Text ordner = Pfad_kürzen(platz_.Backuppfad, 100);
    const auto probe = Probe();
    if (probe.nummer() == FEHLER_VOLL)
        return ablehnen(u"Fehler beim Zwischenspeichern von Dateien im Ordner " + ordner + u"." +
                        Ursache(Text(Fehlerursache(FEHLER_VOLL))));
    const auto tote_Verknüpfung = [&] {
        return !fs.info(Kopie()) && wiederherstellung_.ist_Verknüpfung(platz_.Backuppfad, Text(REDOKOPIE));
    };
    if (probe && tote_Verknüpfung()) (void)fs.remove(Kopie());
    if (probe && !Ordner_vorhanden(fs, Kopie()) && !tote_Verknüpfung()) return true;
    return ablehnen(u"Löschen alter Dateien im Ordner " + ordner +
                    u" nicht möglich. Vermutlich haben Sie keine ausreichenden Zugriffsberechtigungen für "
                    u"diesen Ordner.");
}

bool Ordnerersatz::Antritt_gelungen() {
    try {
        if (amt_.antreten(false, [] { return true; }) == Ersatzamt::Antritt::angetreten) return true;
    } catch (const Laufzeitfehler& fehler) {
        return ablehnen(fehler.text() + u" (Fehler Nr. " + ziffern(fehler.nummer) + u").");
    }
    kanal_.app().Hinweis(
        u"Eine Wiederherstellung läuft gerade auf einem anderen Arbeitsplatz (" + amt_.Inhaber() +
        u"). Es wurde nichts verändert. Bitte versuchen Sie es in einigen Minuten noch einmal.");
    return false;
}

std::optional<Text> Ordnerersatz::Ordner_im_Weg(const Gelesen& container) const {
    for (const Containermitglied& m : container.mitglieder) {
        const Text ziel = wiederherstellung_.Zielordner(m) + m.name;
        if (Ordner_vorhanden(kanal_.fs(), ziel))
            return u"An der Stelle der Datei " + Pfad_kürzen(ziel, 100) + u" steht ein Ordner.";
    }
    return std::nullopt;
}

bool Ordnerersatz::Datenordner_ersetzen(const Gelesen& container, const Auftrag& auftrag) {
    return als_Prozedur(ERSATZMODUL, [&] {
        if (const auto Ordner = Ordner_im_Weg(container)) return ablehnen(*Ordner);
        if (!bereit() || !Antritt_gelungen()) return false;
        return amt_.ausüben([&] {
            Bestand bestand;
            if (!Kopie_anlegen(container, auftrag.sichern, bestand)) return false;
            auto darf_weg = auftrag.sichern ? std::optional(std::move(bestand)) : std::nullopt;
            return anwenden(container, std::move(darf_weg), auftrag.Logtext, auftrag.sichern) ||
                   Abgelöst_melden(container);
        });
    });
}

// The copy first: from then on nobody saves, so that the backup holds every row. A save that was on its way
// when it appeared is given a moment; what comes later still is noticed when its file is to go. A copy that
// stands is a job that nobody finishes any more, and nobody saves beside it either: it stays until the backup
// is made.
bool Ordnerersatz::Kopie_anlegen(const Gelesen& container, bool sichern, Bestand& bestand) {
    const auto bytes = container.inhalt.sicht();
    const auto alte = ansehen(kanal_.fs(), Kopie());
    if (alte && sichern && !vorher_sichern(bestand)) return false;
    const auto vorgefunden = alte ? alte->als_Vorgefunden() : Dateiwerk::Vorgefunden{};
    const auto neu = alte ? kanal_.werk().ersetzen(Kopie(), bytes, &vorgefunden)
                          : kanal_.werk().neu_anlegen(Kopie(), bytes);
    if (neu.nummer() == FEHLER_EXISTIERT || (alte && neu.nummer() == FEHLER_NICHT_GEFUNDEN))
        return ablehnen(u"Eine Wiederherstellung läuft gerade auf einem anderen Arbeitsplatz.");
    if (!neu) {
        if (!alte) (void)kanal_.fs().remove(Kopie()); // should it stand all the same
        return ablehnen(u"Fehler beim Zwischenspeichern von Dateien im Ordner " +
                        Pfad_kürzen(platz_.Backuppfad, 100) + u"." +
                        Ursache(Text(Fehlerursache(neu.nummer()))));
    }
    const auto kopie = kanal_.werk().stand(Kopie()); // some servers set the stamp when a file is closed
    kopie_ = kopie ? *kopie : *neu;
    if (alte || !sichern) return true;
    kanal_.app().Pause(KURZ_WARTEN);
    if (vorher_sichern(bestand)) return true;
    zurückziehen();
    return false;
}

bool Ordnerersatz::vorher_sichern(Bestand& bestand) {
    if (auto alles = gesichert()) {
        bestand = std::move(*alles);
        return true;
    }
    return ablehnen(u"Fehler beim Zwischenspeichern von Dateien im Ordner " +
                    Pfad_kürzen(platz_.Backuppfad, 100) + u"." + Ursache(backups_.Hindernis()));
}

bool Ordnerersatz::Kopie_entfernt() const {
    const auto weg = [&] { return kanal_.fs().info(Kopie()).nummer() == FEHLER_NICHT_GEFUNDEN; };
    const Text beiseite = platz_.Backuppfad + u"." + Text(REDOKOPIE) + u".erledigt";
    return kanal_.fs().remove(Kopie()) == 0 || weg() || kanal_.fs().rename(Kopie(), beiseite) == 0 || weg();
}

void Ordnerersatz::zurückziehen() const {
    if (!Kopie_entfernt()) throw von_Hand_löschen(Kopie(), false);
}

// True: another workstation has finished what was begun here.
bool Ordnerersatz::Abgelöst_melden(const Gelesen& container) const {
    const auto jetzt = kanal_.werk().stand(Kopie());
    const bool weg = jetzt.nummer() == FEHLER_NICHT_GEFUNDEN;
    if (weg && anwendung_.steht_alles(container)) return true;
    const bool dieselbe = jetzt && jetzt->size == kopie_.size && jetzt->time == kopie_.time;
    const Text text =
        weg ? u"Diese Wiederherstellung wurde von einem anderen Arbeitsplatz zu Ende geführt oder ersetzt, "
              u"und "
              u"der Datenordner wurde seitdem geändert. Dort steht jetzt ein anderer Stand als der von Ihnen "
              u"gewählte.\n\nStarten Sie das Programm neu und prüfen Sie die Daten"
        : dieselbe
            ? u"Diese Wiederherstellung wird von einem anderen Arbeitsplatz zu Ende geführt, weil dieser "
              u"hier zu lange nicht geantwortet hat.\n\nStarten Sie das Programm in einigen Minuten neu"
            : u"Auf einem anderen Arbeitsplatz hat eine andere Wiederherstellung des Datenordners "
              u"begonnen. Diese hier wurde abgebrochen.\n\nStarten Sie das Programm in einigen Minuten neu";
    throw Programmabbruch(Text(ERSATZMODUL), text);
}

// ------------------------------------------------------------------ applying

// Is this the workstation that applies, and the copy still the one that it applies?
bool Ordnerersatz::Auftrag_gilt() {
    if (!amt_.gilt()) return false;
    const auto jetzt = kanal_.werk().stand(Kopie());
    if (!jetzt && jetzt.nummer() != FEHLER_NICHT_GEFUNDEN) throw Zugriffsfehler(jetzt.nummer(), Kopie());
    if (!jetzt || jetzt->size != kopie_.size || jetzt->time != kopie_.time) return false;
    amt_.Lebenszeichen();
    return true;
}

// A backup of what stands now, which is what may be touched.
std::optional<Bestand> Ordnerersatz::gesichert() {
    struct Mit_Lebenszeichen {
        Backups& backups;
        std::function<void(int, int)> vorher = backups.Fortschritt;
        ~Mit_Lebenszeichen() { backups.Fortschritt = vorher; }
    } const rahmen{backups_};
    backups_.Fortschritt = [&](int fertig, int alle) {
        amt_.Lebenszeichen();
        if (rahmen.vorher) rahmen.vorher(fertig, alle);
    };
    return backups_.Ersatzsicherung();
}

Bestand Ordnerersatz::gesichert_oder_Abbruch() {
    if (auto alles = gesichert()) return *std::move(alles);
    const Text& hindernis = backups_.Hindernis();
    throw nicht_fertig(
        u"Der jetzige Stand des Datenordners konnte nicht gesichert werden" +
            (hindernis.empty() ? Text(u".") : u" (" + hindernis + u")."),
        u"Sorgen Sie dafür, dass im Ordner " + Pfad_kürzen(platz_.Backuppfad, 100) +
            u" genügend Speicherplatz frei ist und alle Dateien des Datenordners lesbar sind.");
}

// Where the caller keeps nothing, everything that stands may go.
Bestand Ordnerersatz::ohne_Sicherung() const {
    Bestand alle;
    for (const Text& pfad : Sicherungsgut(kanal_.fs(), platz_)) {
        auto da = ansehen(kanal_.fs(), pfad);
        if (da)
            alle[pfad] = std::move(*da);
        else if (da.nummer() != FEHLER_NICHT_GEFUNDEN &&
                 !wiederherstellung_.ist_Verknüpfung(ParentDir(pfad), Dateiname_aus_Pfad(pfad)))
            throw Zugriffsfehler(da.nummer(), pfad);
    }
    return alle;
}

bool Ordnerersatz::durchführen(const Gelesen& container, Bestand bestand) {
    for (int runde = 1; runde <= RUNDEN; ++runde) {
        switch (anwendung_.durchführen(container, bestand)) {
        case Ordneranwendung::Ausgang::fertig: return Auftrag_gilt();
        case Ordneranwendung::Ausgang::abgelöst: return false;
        case Ordneranwendung::Ausgang::verändert: bestand = gesichert_oder_Abbruch();
        }
    }
    throw nicht_fertig(u"Auf einem anderen Arbeitsplatz wird gerade gearbeitet.",
                       u"Stellen Sie sicher, dass momentan niemand den Kalvora in Benutzung hat.");
}

// False: this workstation no longer has the order. A network that is gone is waited for at a start. The log
// comes before the copy goes: what is written twice by a stop in between tells no lie.
bool Ordnerersatz::anwenden(const Gelesen& container, std::optional<Bestand> bestand, const Text& Logtext,
                            bool als_Sicherung) {
    try {
        if (!bestand) bestand = ohne_Sicherung();
        if (!durchführen(container, *std::move(bestand))) return false;
    } catch (const Laufzeitfehler& fehler) {
        if (fehler.nummer == FEHLER_NETZ && platz_.Startphase) throw;
        throw nicht_fertig(fehler);
    }
    vermerken(Logtext);
    if (!(als_Sicherung && backups_.aufnehmen(Kopie()))) {
        if (!Kopie_entfernt()) throw von_Hand_löschen(Kopie(), true);
        // The newest backup must not be the state that was left: months would seem cut beside it.
        if (als_Sicherung) (void)backups_.Backup_erstellen(u"T");
    }
    Gebliebenes_melden();
    return true;
}

void Ordnerersatz::Gebliebenes_melden() const {
    const auto& geblieben = anwendung_.geblieben();
    const auto warnen = [&](const Text& ordner, TextView was, TextView folge) {
        if (std::find(geblieben.begin(), geblieben.end(), ordner) == geblieben.end()) return;
        kanal_.app().Hinweis(u"Warnung: Es konnten nicht alle nicht mehr benötigten " + Text(was) +
                             u" im Ordner " + Pfad_kürzen(ordner, 100) + u" gelöscht werden. " + Text(folge));
    };
    warnen(platz_.Datenpfad, u"Dateien", u"Möglicherweise besteht ein inkonsistenter Zustand.");
    warnen(platz_.Logpfad, u"Logdateien", u"Möglicherweise ist die Logbuchanzeige inkonsistent.");
}

void Ordnerersatz::vermerken(const Text& Logtext) {
    if (Logtext.empty()) return;
    log_.Logbuch_ergänzen(2, Logtext);
    try {
        if (Datei_passend_vorhanden(kanal_.fs(), platz_.Datenpfad, u"ÜStunden *.dat"))
            log_.Logbuch_ÜStd_ergänzen(2, Logtext);
    } catch (const Laufzeitfehler&) { // NOLINT(bugprone-empty-catch): the restore itself is done
    }
}

} // namespace kalvora
