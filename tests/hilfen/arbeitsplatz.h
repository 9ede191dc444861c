// The workstation of the tests: a disk in memory that several of them can share, a standing clock, windows
// that only note what they are told, and the files' owners. 16 November 2026; nothing is on the disk but
// folders.
#pragma once

#include <functional>

#include "base/cp1252.h"
#include "files/erfassungsdateien.h"
#include "files/inidatei.h"
#include "files/ordner.h"
#include "firma/stummes_fenstersystem.h"
#include "hilfen/speicher_dateisystem.h"
#include "hilfen/test_uhr.h"

namespace kalvora {

struct StummeFenster : firma::StummesFenstersystem {
    std::function<void()> beim_Warten; // something happens on the disk meanwhile
    void wait(double) override {
        if (beim_Warten) beim_Warten();
    }
};

inline std::string als_Datei(const std::vector<Text>& zeilen, std::uint8_t schlüssel = 77) {
    std::string bytes;
    for (const Text& zeile : zeilen)
        Zeile_verschlüsseln(bytes, zu_cp1252(zeile), schlüssel);
    return bytes;
}

// The plain lines; a line without even a key byte is `leer`.
inline std::vector<Text> als_Zeilen(std::string bytes, TextView leer = u"<leer>") {
    std::vector<Text> zeilen;
    Rohzeilen roh(bytes.data(), bytes.size());
    while (const auto zeile = roh.nächste())
        zeilen.push_back(zeile->länge == 0 ? Text(leer)
                                           : aus_cp1252(Zeile_entschlüsseln(zeile->anfang, zeile->länge)));
    return zeilen;
}

struct Prüfplatz {
    SpeicherDateisystem fs;
    TestUhr uhr;
    StummeFenster fenster;
    Application app{fenster};
    Dateiwerk werk;
    Dateikanal kanal{werk, app, 1};
    Arbeitsplatz platz;
    Konfigdaten konfig{kanal, platz};
    Mitarbeiterdaten personal{kanal, platz, konfig};
    Logbuch log{kanal, platz, konfig};

    explicit Prüfplatz(std::shared_ptr<SpeicherPlatte> platte = std::make_shared<SpeicherPlatte>(),
                       const Text& rechner = u"PLATZ1", Datum heute = Datum_aus(2026, 11, 16))
        : fs(std::move(platte)), werk(fs, uhr, rechner + u"-4711") {
        platz.Heute = heute;
        platz.Heute_S = FormatDatumDS(heute);
        platz.Startjahr = 2025;
        platz.Benutzername = u"Muster";
        platz.Programmpfad = u"/opt/kalvora/";
        platz.Systempfad = u"/home/muster/kalvora/";
        platz.Datenpfad = u"/srv/x/Data/";
        platz.Logpfad = u"/srv/x/Data/Logs/";
        platz.Inipfad = u"/srv/x/Data/IniFiles/";
        platz.Temppfad = u"/run/muster/";
        platz.Inidateiname = u"Kalvora_Muster.ini";
        for (const Text& ordner : {platz.Programmpfad, platz.Systempfad, platz.Datenpfad, platz.Logpfad,
                                   platz.Inipfad, platz.Temppfad})
            fs.platte().mache_ordner(ordner);
    }
    Text daten(TextView name) const { return platz.Datenpfad + Text(name); }
    void lege(const Text& pfad, const std::vector<Text>& zeilen) { fs.schreibe(pfad, als_Datei(zeilen)); }
    std::vector<Text> zeilen(const Text& pfad) const { return als_Zeilen(fs.inhalt(pfad).value_or("")); }
};

// --- months

inline Text tage(TextView anfang) {
    Text alle(anfang);
    alle.resize(31, u' ');
    return alle;
}
// "A:<wer>:" with the days behind `anfang` blank.
inline Text A(TextView wer, TextView anfang) {
    return u"A:" + Text(wer) + u":" + tage(anfang);
}
inline std::vector<Text> Monat(const std::vector<Text>& zeilen, const Text& yymm = u"2611",
                               TextView ausnahmen = u"NoEx:NoEx") {
    std::vector<Text> alle{u"[" + yymm + u"]", u"Reserve", Text(ausnahmen)};
    alle.insert(alle.end(), zeilen.begin(), zeilen.end());
    return alle;
}

// With configuration and staff in memory. An administrator; an empty key is a heading. U is 7.
struct Erfassungsplatz : Prüfplatz {
    Erfassungsdateien erfassung{kanal, platz, konfig, personal, log};
    std::uint8_t schlüssel = 77; // of the versions put there: a file written anew has another one

    explicit Erfassungsplatz(const std::vector<Text>& BenIds,
                             std::shared_ptr<SpeicherPlatte> platte = std::make_shared<SpeicherPlatte>(),
                             const Text& rechner = u"PLATZ1", Datum heute = Datum_aus(2026, 11, 16))
        : Prüfplatz(std::move(platte), rechner, heute) {
        platz.Benutzername = u"chef";
        platz.Temppfad.clear(); // no copy of the log
        konfig.ändern() = Konfiguration_Standard(platz.Benutzername);
        konfig.ändern().Reservezeile = u"KonfigReserve";
        konfig.ableiten();
        for (const Text& wer : BenIds)
            personal.ändern().anfügen({u"Name " + wer, wer, u"000000", u"999999", {}, {}});
        if (BenIds.empty()) personal.ändern().anfügen({u"NoNames", {}, {}, {}, {}, {}});
        personal.ableiten();
    }
    Text pfad(TextView stamm) const { return daten(Text(stamm) + u" Data.dat"); }
    // Puts a version there; its path.
    Text Monatsdatei(TextView stamm, const std::vector<Text>& zeilen, TextView ausnahmen = u"NoEx:NoEx") {
        fs.schreibe(pfad(stamm), als_Datei(Monat(zeilen, Text(links(stamm, 4)), ausnahmen), schlüssel));
        return pfad(stamm);
    }
    // Lines of a version; without the file "<fehlt>".
    std::vector<Text> zeilen(TextView stamm) const {
        return fs.gibt_es(pfad(stamm)) ? Prüfplatz::zeilen(pfad(stamm)) : std::vector<Text>{u"<fehlt>"};
    }
    std::vector<Text> Logzeilen() const {
        std::vector<Text> aus;
        for (const Text& z : Prüfplatz::zeilen(platz.Logpfad + u"2611 Kalvora.log"))
            aus.emplace_back(mitte(z, position(z, u"|") + 1));
        return aus;
    }
    // Names in the data folder without folders.
    std::vector<Text> Versionen() const {
        std::vector<Text> namen;
        for (const auto& [p, bytes] : fs.geteilte_platte()->abbild())
            if (ParentDir(p) == platz.Datenpfad) namen.push_back(Dateiname_aus_Pfad(p));
        return namen;
    }
    // Days of a person as the file in force holds them.
    Text Tage_auf_Platte(const Text& wer, const Text& yymm = u"2611") {
        Erfassungsplatz anderer({wer}, fs.geteilte_platte(), u"LESER", platz.Heute);
        anderer.erfassung.Erfassungsdaten_lesen(yymm);
        const int nr = anderer.erfassung.monat().letzter_Satz(wer);
        return nr == 0 ? Text() : Text(trimmen_rechts(anderer.erfassung.monat().Erfassungsdaten(nr).tage));
    }
};

} // namespace kalvora
