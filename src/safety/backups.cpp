#include "safety/backups.h"

#include <algorithm>

#include "files/ordner.h"

namespace kalvora {

namespace {

constexpr double LEERE_DATEI_PAUSE = 1.5; // seconds; somebody is rewriting it
constexpr int SEKUNDEN_AM_TAG = 86400;

struct Aufbewahrung {
    TextView maske;
    int anzahl;
};
constexpr Aufbewahrung AUFBEWAHRUNG[] = {
    {u"*T.dat", 7}, {u"*M.dat", 3}, {u"*A.dat", 5}, {u"*E.dat", 0}, {u"*F.dat", 1}};

struct Quelle {
    Text ordner, name;
};

// Plain files that a restore could write back, each name once ignoring case.
std::vector<Quelle> Quellen(FileSystem& fs, const Text& ordner, TextView maske) {
    std::vector<Quelle> aus;
    for (const Text& name : Dateien(fs, ordner, maske, true)) {
        const auto gleich = [&](const Quelle& q) { return gleich_ohne_Fall(q.name, name); };
        const auto info = fs.info(ordner + name);
        const bool Ordner = info && info->folder;
        if (!Ordner && Mitgliedsname_zulässig(name) && std::none_of(aus.begin(), aus.end(), gleich))
            aus.push_back({ordner, name});
    }
    return aus;
}

} // namespace

bool Backups::vorhanden(TextView tag, TextView art) const {
    return Datei_passend_vorhanden(kanal_.fs(), platz_.Backuppfad, Text(tag) + u"*" + Text(art) + u".dat");
}

// "yymmdd hhnnss <art>.dat", the time so many seconds from now. The year change names the year that becomes
// the present one by it.
Text Backups::Zeitname(TextView art, int sekunden) const {
    const Zeitpunkt jetzt = kanal_.werk().uhr().now();
    const int s = (jetzt.stunde * 3600 + jetzt.minute * 60 + jetzt.sekunde + sekunden) % SEKUNDEN_AM_TAG;
    const Text jahr = art == u"J" ? ziffern((platz_.Startjahr + 2) % 100, 2) : platz_.Heute_S.substr(0, 2);
    return jahr + platz_.Heute_S.substr(2) + u" " + ziffern(s / 3600, 2) + ziffern(s / 60 % 60, 2) +
           ziffern(s % 60, 2) + u" " + Text(art) + u".dat";
}

std::optional<Dateiinhalt> Backups::Mitglied_lesen(const Text& pfad) {
    auto inhalt = kanal_.werk().lesen(pfad);
    if (inhalt && inhalt->größe == 0) {
        kanal_.app().Pause(LEERE_DATEI_PAUSE);
        inhalt = kanal_.werk().lesen(pfad);
    }
    if (inhalt) return std::move(*inhalt);
    von_vorn_ = inhalt.nummer() == FEHLER_NICHT_GEFUNDEN;
    if (!von_vorn_)
        log_.Logbuch_ergänzen(2, u"Backup konnte nicht erstellt werden - Fehler Nr. " +
                                     ziffern(inhalt.nummer()) + u" beim Lesen der Datei " +
                                     Pfad_kürzen(pfad, 100));
    return std::nullopt;
}

bool Backups::Mitglieder_anfügen(Containerschreiber& container) {
    FileSystem& fs = kanal_.fs();
    std::vector<Quelle> alle = Quellen(fs, platz_.Datenpfad, u"*.dat");
    for (Quelle& q : Quellen(fs, platz_.Logpfad, u"*.log"))
        alle.push_back(std::move(q));
    for (std::size_t n = 0; n < alle.size(); ++n) {
        if (gleich_ohne_Fall(alle[n].name, beschädigt_)) continue;
        const auto inhalt = Mitglied_lesen(alle[n].ordner + alle[n].name);
        if (!inhalt) return false;
        container.anfügen(alle[n].name, inhalt->sicht());
        if (Fortschritt) Fortschritt(static_cast<int>(n) + 1, static_cast<int>(alle.size()));
    }
    return true;
}

// The whole container in memory: a read that fails leaves nothing half on the disk.
std::optional<std::string> Backups::Container() {
    constexpr int VERSUCHE = 3;
    for (int versuch = 1; versuch <= VERSUCHE; ++versuch) {
        von_vorn_ = false;
        Containerschreiber container(kanal_.schlüssel());
        if (Mitglieder_anfügen(container)) return container.bytes();
        if (!von_vorn_) break;
    }
    return std::nullopt;
}

bool Backups::Backup_erstellen(TextView art, const Text& beschädigt) {
    return als_Prozedur(u"modKalvora - Backup_erstellen", [&] {
        if (platz_.Datenrückblick_aktiv || !Ordner_vorhanden(kanal_.fs(), platz_.Backuppfad)) return false;
        const Application::Sanduhrwache sanduhr(kanal_.app(), !platz_.Startphase);
        beschädigt_ = beschädigt;
        const auto container = Container();
        if (!container) return false;
        constexpr int AUSWEICHEN = 60; // seconds: another workstation's backup of the same moment
        Fehlercode f = FEHLER_EXISTIERT;
        for (int s = 0; s < AUSWEICHEN && f == FEHLER_EXISTIERT; ++s) {
            name_ = Zeitname(art, s);
            f = kanal_.werk().neu_anlegen(platz_.Backuppfad + name_, *container).nummer();
        }
        return f == 0;
    });
}

// A failure is passed over: the next start tries again.
bool Backups::Tagessicherung() {
    bool gemacht = false;
    const auto sichern = [&](TextView art) {
        if (!Backup_erstellen(art)) return;
        log_.Logbuch_bereinigen(art);
        gemacht = true;
    };
    if (!vorhanden(platz_.Monat_heute(), u"M")) sichern(u"M");
    if (!vorhanden(platz_.Heute_S, u"M") && !vorhanden(platz_.Heute_S, u"T")) sichern(u"T");
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
}

void Backups::Alte_Dateien_löschen(const Text& ordner, TextView maske, int anzahl) const {
    std::vector<Text> namen = Dateien(kanal_.fs(), ordner, maske, true); // sorted: the oldest first
    const auto marke = [](const Text& name) { return links(name, position(name, u" ") - 1); };
    std::stable_sort(namen.begin(), namen.end(),
                     [&](const Text& a, const Text& b) { return marke(a) < marke(b); });
    const long heute = Val(platz_.Heute_S);
    for (std::size_t n = 0; n + static_cast<std::size_t>(anzahl) < namen.size(); ++n)
        if (anzahl == 0 || heute > Val(links(namen[n], 6)) + 6) Datei_löschen(kanal_.fs(), ordner + namen[n]);
}

} // namespace kalvora
