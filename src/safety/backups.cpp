#include "safety/backups.h"

#include <algorithm>
#include <new>
#include <set>
#include <stdexcept>
#include <utility>

#include "files/ordner.h"

namespace kalvora {

namespace {

constexpr double LEERE_DATEI_PAUSE = 1.5; // seconds; somebody is rewriting it
constexpr int LETZTE_SEKUNDE = 86399;     // of a day

struct Aufbewahrung {
    TextView maske;
    int anzahl;
};
constexpr Aufbewahrung AUFBEWAHRUNG[] = {
    {u"*T.dat", 7}, {u"*M.dat", 3}, {u"*A.dat", 5}, {u"*E.dat", 0}, {u"*F.dat", 1}};

// Network faults are the start's business, which waits for the folder and tries again.
template <class F>
void ohne_Meldung(F&& f) {
    try {
        f();
    } catch (const Laufzeitfehler& fehler) {
        if (fehler.nummer == FEHLER_NETZ) throw;
    }
}

} // namespace

bool Backupname_zulässig(TextView name) {
    constexpr std::size_t LÄNGE = 19;
    return name.size() == LÄNGE && nur_Ziffern(name.substr(0, 6)) && name[6] == u' ' &&
           nur_Ziffern(name.substr(7, 6)) && name[13] == u' ' && klein(name[14]) >= u'a' &&
           klein(name[14]) <= u'z' && gleich_ohne_Fall(name.substr(15), u".dat");
}

bool Backups::vorhanden(TextView tag, TextView art) const {
    return Datei_passend_vorhanden(kanal_.fs(), platz_.Backuppfad, Text(tag) + u"*" + Text(art) + u".dat");
}

// "yymmdd hhnnss <art>.dat", the time so many seconds from now, on this day: behind its last second they
// count backwards. The year change names the year that becomes the present one by it.
Text Backups::Zeitname(TextView art, int ausweichen) const {
    const Zeitpunkt jetzt = kanal_.werk().uhr().now();
    const int ab = jetzt.stunde * 3600 + jetzt.minute * 60 + jetzt.sekunde, rest = LETZTE_SEKUNDE - ab;
    const int s = ausweichen <= rest ? ab + ausweichen : ab - (ausweichen - rest);
    const Text jahr = art == u"J" ? ziffern((platz_.Startjahr + 2) % 100, 2) : platz_.Heute_S.substr(0, 2);
    return jahr + platz_.Heute_S.substr(2) + u" " + ziffern(s / 3600, 2) + ziffern(s / 60 % 60, 2) +
           ziffern(s % 60, 2) + u" " + Text(art) + u".dat";
}

void Backups::vermerken(const Text& hindernis) {
    hindernis_ = hindernis;
    log_.Logbuch_ergänzen(2, u"Backup konnte nicht erstellt werden - " + hindernis);
}

void Backups::Fehler_vermerken(int nummer, TextView wobei, const Text& datei) {
    const Text ursache(Fehlerursache(nummer));
    vermerken(u"Fehler Nr. " + ziffern(nummer) + u" beim " + Text(wobei) + u" von " +
              Pfad_kürzen(datei, 100) + (ursache.empty() ? Text() : u" - " + ursache));
}

// Plain files that a restore could write back, each name once ignoring case.
void Backups::Quellen_anfügen(std::vector<Quelle>& alle, const Text& ordner, TextView maske,
                              const Text& beschädigt) const {
    std::set<Text> namen;
    for (const Text& name : Dateien(kanal_.fs(), ordner, maske, true)) {
        const auto info = kanal_.fs().info(ordner + name);
        const bool Ordner = info && info->folder;
        if (Ordner || !Mitgliedsname_zulässig(name) || gleich_ohne_Fall(name, beschädigt)) continue;
        if (namen.insert(klein(name)).second) alle.push_back({ordner, name, info ? info->size : 0});
    }
}

// An empty file is looked at again, once a backup.
Ergebnis<Dateiinhalt> Backups::Mitglied_lesen(const Text& pfad, Dateiinhalt vorrat, bool& gewartet) {
    auto inhalt = kanal_.werk().lesen(pfad, std::move(vorrat));
    if (!inhalt || inhalt->größe > 0 || gewartet) return inhalt;
    gewartet = true;
    kanal_.app().Pause(LEERE_DATEI_PAUSE);
    return kanal_.werk().lesen(pfad);
}

// A file that has gone went behind a newer version: then the list is old. A link that leads nowhere is never
// there.
Backups::Sammlung Backups::Mitglieder_anfügen(Containerschreiber& container, const std::vector<Quelle>& alle,
                                              bool letzter_Versuch, bool& gewartet, Bestand* bestand) {
    std::uint64_t größe = 0;
    for (const Quelle& q : alle)
        größe += q.größe;
    container.reservieren(alle.size(), größe);
    Dateiinhalt speicher; // of one member after the other
    for (std::size_t n = 0; n < alle.size(); ++n) {
        const Text pfad = alle[n].ordner + alle[n].name;
        auto inhalt = Mitglied_lesen(pfad, std::exchange(speicher, {}), gewartet);
        if (inhalt) {
            container.anfügen(alle[n].name, inhalt->sicht());
            if (bestand) (*bestand)[pfad] = gesehen(*inhalt);
            speicher = std::move(*inhalt);
        } else if (inhalt.nummer() != FEHLER_NICHT_GEFUNDEN) {
            Fehler_vermerken(inhalt.nummer(), u"Lesen", pfad);
            return Sammlung::Gescheitert;
        } else if (!letzter_Versuch) {
            return Sammlung::Veraltet;
        }
        if (Fortschritt) Fortschritt(static_cast<int>(n) + 1, static_cast<int>(alle.size()));
    }
    return Sammlung::Fertig;
}

// The whole container in memory: a read that fails leaves nothing half on the disk.
std::optional<std::string> Backups::Container(const Text& beschädigt, Bestand* bestand) {
    constexpr int VERSUCHE = 3;
    bool gewartet = false;
    for (int versuch = 1;; ++versuch) {
        std::vector<Quelle> alle;
        Quellen_anfügen(alle, platz_.Datenpfad, u"*.dat", beschädigt);
        Quellen_anfügen(alle, platz_.Logpfad, u"*.log", beschädigt);
        Containerschreiber container(kanal_.schlüssel());
        if (bestand) bestand->clear();
        const Sammlung stand = Mitglieder_anfügen(container, alle, versuch == VERSUCHE, gewartet, bestand);
        if (stand == Sammlung::Fertig) return container.entnehmen();
        if (stand == Sammlung::Gescheitert) return std::nullopt;
    }
}

// Another workstation may make a backup in the same second: then this one is of another. `anlegen` says 58
// when the name is taken.
Fehlercode Backups::unter_freiem_Namen(TextView art,
                                       const std::function<Fehlercode(const Text& pfad)>& anlegen) {
    constexpr int AUSWEICHEN = 60; // seconds
    for (int s = 0; s < AUSWEICHEN; ++s) {
        const Text name = Zeitname(art, s), pfad = platz_.Backuppfad + name;
        if (kanal_.fs().info(pfad)) continue;
        const Fehlercode f = anlegen(pfad);
        if (f == FEHLER_EXISTIERT) continue;
        if (f == 0) name_ = name;
        return f;
    }
    return FEHLER_EXISTIERT;
}

bool Backups::schreiben(TextView art, const std::string& container) {
    const Fehlercode f = unter_freiem_Namen(
        art, [&](const Text& pfad) { return kanal_.werk().neu_anlegen(pfad, container).nummer(); });
    if (f != 0) Fehler_vermerken(f, u"Schreiben", platz_.Backuppfad + Zeitname(art, 0));
    return f == 0;
}

// Its first bytes are written anew as they are, so that its time is the present one: which backup is the
// newest, file times say.
bool Backups::verjüngen(const Text& pfad) const {
    FileSystem& fs = kanal_.fs();
    const auto da = ansehen(fs, pfad);
    const auto h =
        da ? fs.open(pfad, OpenMode::Overwrite) : Ergebnis<FileSystem::Handle>::fehler(da.nummer());
    if (!h) return false;
    const auto info = fs.info(*h);
    const bool dieselbe = info && info->size == da->info.size; // not one that the open has made
    const bool geschrieben = dieselbe && fs.write(*h, da->kopf) && fs.sync(*h) == 0;
    (void)fs.close(*h);
    if (info && info->size == 0) (void)fs.remove(pfad);
    return geschrieben;
}

// The window of restore points tells them apart by the second.
bool Backups::aufnehmen(const Text& pfad) {
    FileSystem& fs = kanal_.fs();
    const auto Sekunde = [&](const Text& datei) -> std::int64_t {
        const auto info = fs.info(datei);
        return info ? info->time / 1'000'000'000 : 0;
    };
    const std::int64_t davor = name_.empty() ? 0 : Sekunde(platz_.Backuppfad + name_);
    bool da = verjüngen(pfad);
    if (da && davor != 0 && davor == Sekunde(pfad)) {
        kanal_.app().Pause(1);
        da = verjüngen(pfad);
    }
    const auto umbenennen = [&](const Text& neu) -> Fehlercode {
        const Fehlercode f = fs.rename_new(pfad, neu);
        return f != 0 && fs.info(pfad).nummer() == FEHLER_NICHT_GEFUNDEN ? 0 : f; // the answer alone was lost
    };
    return da && unter_freiem_Namen(u"T", umbenennen) == 0;
}

std::optional<Bestand> Backups::Ersatzsicherung() {
    Bestand bestand;
    if (!erstellen(u"T", {}, &bestand)) return std::nullopt;
    return bestand;
}

// With `bestand` for whoever replaces the folder.
bool Backups::erstellen(TextView art, const Text& beschädigt, Bestand* bestand) {
    const auto halber_Stand = [&] {
        if (bestand || !Ersatz_steht_aus(kanal_.fs(), platz_.Backuppfad)) return false;
        hindernis_ = u"Der Datenordner wird auf einen früheren Stand zurückgesetzt";
        return true;
    };
    return als_Prozedur(u"modKalvora - Backup_erstellen", [&] {
        hindernis_.clear();
        if (platz_.Datenrückblick_aktiv) {
            hindernis_ = u"Frühere Daten werden angezeigt";
            return false;
        }
        if (!Ordner_vorhanden(kanal_.fs(), platz_.Backuppfad)) {
            vermerken(u"Der Ordner " + Pfad_kürzen(platz_.Backuppfad, 100) + u" ist nicht vorhanden");
            return false;
        }
        const Application::Sanduhrwache sanduhr(kanal_.app(), !platz_.Startphase);
        try {
            if (halber_Stand()) return false;
            const auto container = Container(beschädigt, bestand);
            return container && !halber_Stand() && schreiben(art, *container);
        } catch (const Laufzeitfehler& fehler) { // a folder that cannot be listed
            Fehler_vermerken(fehler.nummer, u"Lesen", fehler.datei);
        } catch (const std::bad_alloc&) {
            vermerken(u"zu wenig Speicher");
        } catch (const std::length_error&) {
            vermerken(u"zu wenig Speicher");
        }
        return false;
    });
}

bool Backups::Tagessicherung_fällig() const {
    return !vorhanden(platz_.Monat_heute(), u"M") ||
           (!vorhanden(platz_.Heute_S, u"M") && !vorhanden(platz_.Heute_S, u"T"));
}

// A failure is passed over: the next start tries again.
bool Backups::Tagessicherung() {
    bool gemacht = false;
    const auto sichern = [&](TextView art) {
        if (!Backup_erstellen(art)) return;
        log_.Logbuch_bereinigen(art);
        gemacht = true;
    };
    try {
        // A backup of nothing would pass for one.
        const auto namen = kanal_.fs().list(platz_.Datenpfad);
        const auto Daten = [](const Text& name) { return passt_auf_Maske(name, u"*.dat"); };
        if (namen && std::none_of(namen->begin(), namen->end(), Daten)) return false;
        if (!vorhanden(platz_.Monat_heute(), u"M")) sichern(u"M");
        if (!vorhanden(platz_.Heute_S, u"M") && !vorhanden(platz_.Heute_S, u"T")) sichern(u"T");
    } catch (const Laufzeitfehler& fehler) { // Backups/ cannot be listed
        if (fehler.nummer == FEHLER_NETZ) throw;
        Fehler_vermerken(fehler.nummer, u"Lesen", platz_.Backuppfad);
    }
    return gemacht;
}

int Backups::Logmonate() const {
    constexpr int EINSTELLUNG = 29;
    const char16_t c = zeichen(konfig_.werte().settings.werte(), EINSTELLUNG);
    return c == u'0' ? 24 + Kalendertag_aus(platz_.Heute).monat : HexDec(c) + 1;
}

void Backups::Aufräumen() {
    Alte_Dateien_löschen(platz_.Logpfad, u"*Kalvora.log", Logmonate());
    for (const Aufbewahrung& a : AUFBEWAHRUNG)
        Alte_Dateien_löschen(platz_.Backuppfad, a.maske, a.anzahl);
    ohne_Meldung([&] { Nebendateien_löschen(); });
    // Settings that a repair has made afresh say nothing about these files.
    if (!kanal_.Reparatursperre) Unbenutztes_löschen();
}

// A day after it was last written, so that a setting changed by mistake costs nothing.
void Backups::Unbenutztes_löschen() const {
    const Konfiguration& k = konfig_.werte();
    const auto löschen = [&](const Text& name) {
        const Text pfad = Datei_finden(kanal_.fs(), platz_.Datenpfad, name);
        const auto info = kanal_.fs().info(pfad);
        if (info && !info->folder && platz_.Heute - kanal_.werk().uhr().day_of(info->time) > 1)
            Datei_löschen(kanal_.fs(), pfad);
    };
    if (k.Setting(1) != 2) löschen(u"Mitarbeiteranzber.dat");
    if (k.Setting(17) == 1) löschen(u"Mitarbeiteranzgru.dat");
}

// What workstations that were ended in the middle of a backup or a restore have left is as great as a backup.
void Backups::Nebendateien_löschen() const {
    const auto namen = kanal_.fs().list(platz_.Backuppfad);
    if (!namen) return;
    const auto Rest = [](const Text& name) {
        constexpr TextView ENDUNGEN[] = {u".neu", u".probe", u".claim", u".inhaber", u".erledigt"};
        return name.starts_with(u'.') && std::any_of(std::begin(ENDUNGEN), std::end(ENDUNGEN),
                                                     [&](TextView e) { return name.ends_with(e); });
    };
    for (const Text& name : *namen) {
        if (!Rest(name)) continue;
        const auto info = kanal_.fs().info(platz_.Backuppfad + name);
        if (info && !info->folder && platz_.Heute - kanal_.werk().uhr().day_of(info->time) > 1)
            (void)kanal_.fs().remove(platz_.Backuppfad + name);
    }
}

// Of each stamp (the name up to its first blank) among the oldest, the first file that bears it goes.
void Backups::Alte_Dateien_löschen(const Text& ordner, TextView maske, int anzahl) const {
    std::vector<Text> namen;
    ohne_Meldung([&] { namen = Dateien(kanal_.fs(), ordner, maske, true); });
    std::erase_if(namen, [&](const Text& name) {
        const bool fremd = endet_ohne_Fall(name, u".dat") && !Backupname_zulässig(name);
        return fremd || Ordner_vorhanden(kanal_.fs(), ordner + name);
    });
    std::vector<Text> marken;
    marken.reserve(namen.size());
    for (const Text& name : namen)
        marken.emplace_back(links(name, position(name + u" ", u" ") - 1));
    std::sort(marken.begin(), marken.end());
    const long heute = Val(platz_.Heute_S);
    for (std::size_t n = 0; n + static_cast<std::size_t>(anzahl) < marken.size(); ++n) {
        const Text& marke = marken[n];
        const auto passt = [&](const Text& name) {
            return beginnt_ohne_Fall(name, marke) &&
                   passt_auf_Maske(TextView(name).substr(marke.size()), maske);
        };
        const auto name = std::find_if(namen.begin(), namen.end(), passt);
        if (name == namen.end() || (anzahl > 0 && heute <= Val(links(*name, 6)) + 6)) continue;
        Datei_löschen(kanal_.fs(), ordner + *name);
        namen.erase(name);
    }
}

} // namespace kalvora
