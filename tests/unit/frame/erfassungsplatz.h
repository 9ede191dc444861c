// A workstation for the tests of the capture files: configuration and staff in memory, files on a disk that
// several workstations can share, and a place to act just before any call of the file system.
#pragma once

#include "files/erfassungsdateien.h"
#include "unit/files/pruefplatz.h"

namespace kalvora {

// Calls `davor` before opens, lists, writes and renames; what it does itself is not reported.
class EingriffsDateisystem : public SpeicherDateisystem {
public:
    using SpeicherDateisystem::SpeicherDateisystem;
    std::function<void(const std::string& aufruf, const Text& pfad)> davor;

    Ergebnis<Handle> open(const Text& pfad, OpenMode modus) override {
        melde("open", pfad);
        const auto h = SpeicherDateisystem::open(pfad, modus);
        if (h) namen_[*h] = pfad;
        return h;
    }
    Ergebnis<std::size_t> write(Handle h, std::string_view bytes) override {
        melde("write", namen_[h]);
        return SpeicherDateisystem::write(h, bytes);
    }
    Ergebnis<std::vector<Text>> list(const Text& pfad) override {
        melde("list", pfad);
        return SpeicherDateisystem::list(pfad);
    }
    Fehlercode rename(const Text& von, const Text& nach) override {
        melde("rename", nach);
        return SpeicherDateisystem::rename(von, nach);
    }
    Fehlercode rename_new(const Text& von, const Text& nach) override {
        melde("rename_new", nach);
        return SpeicherDateisystem::rename_new(von, nach);
    }

private:
    void melde(const std::string& aufruf, const Text& pfad) {
        if (!davor || drin_) return;
        drin_ = true;
        davor(aufruf, pfad);
        drin_ = false;
    }
    std::map<Handle, Text> namen_;
    bool drin_ = false;
};

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

struct Erfassungsplatz {
    EingriffsDateisystem fs;
    TestUhr uhr;
    StummeFenster fenster;
    Application app{fenster};
    Dateiwerk werk;
    Dateikanal kanal{werk, app, 1};
    Arbeitsplatz platz;
    Konfigdaten konfig{kanal, platz};
    Mitarbeiterdaten personal{kanal, platz, konfig};
    Logbuch log{kanal, platz, konfig};
    Erfassungsdateien erfassung{kanal, platz, konfig, personal, log};
    std::uint8_t schlüssel = 77; // of the versions put there: a file written anew has another one

    // An administrator on 16 November 2026; an empty key is a heading. U is 7.
    explicit Erfassungsplatz(const std::vector<Text>& BenIds,
                             std::shared_ptr<SpeicherPlatte> platte = std::make_shared<SpeicherPlatte>(),
                             const Text& rechner = u"PLATZ1", Datum heute = Datum_aus(2026, 11, 16))
        : fs(std::move(platte)), werk(fs, uhr, rechner + u"-1") {
        platz.Heute = heute;
        platz.Heute_S = FormatDatumDS(heute);
        platz.Startjahr = 2025;
        platz.Benutzername = u"chef";
        platz.Datenpfad = u"/srv/x/Data/";
        platz.Logpfad = u"/srv/x/Data/Logs/";
        fs.platte().mache_ordner(platz.Logpfad);
        konfig.ändern() = Konfiguration_Standard(platz.Benutzername);
        konfig.ändern().Reservezeile = u"KonfigReserve";
        konfig.ableiten();
        for (const Text& wer : BenIds)
            personal.ändern().anfügen({u"Name " + wer, wer, u"000000", u"999999", {}, {}});
        if (BenIds.empty()) personal.ändern().anfügen({u"NoNames", {}, {}, {}, {}, {}});
        personal.ableiten();
    }
    Text pfad(TextView stamm) const { return platz.Datenpfad + Text(stamm) + u" Data.dat"; }
    // Puts a version there; its path.
    Text Monatsdatei(TextView stamm, const std::vector<Text>& zeilen, TextView ausnahmen = u"NoEx:NoEx") {
        fs.schreibe(pfad(stamm), als_Datei(Monat(zeilen, Text(links(stamm, 4)), ausnahmen), schlüssel));
        return pfad(stamm);
    }
    // Lines of a version; without the file "<fehlt>".
    std::vector<Text> zeilen(TextView stamm) const {
        const auto bytes = fs.inhalt(pfad(stamm));
        return bytes ? als_Zeilen(*bytes) : std::vector<Text>{u"<fehlt>"};
    }
    std::vector<Text> Logzeilen() const {
        std::vector<Text> aus;
        for (const Text& z : als_Zeilen(fs.inhalt(platz.Logpfad + u"2611 Kalvora.log").value_or("")))
            aus.emplace_back(mitte(z, position(z, u"|") + 1));
        return aus;
    }
    // Names in the data folder without folders.
    std::vector<Text> Versionen() const {
        std::vector<Text> namen;
        for (const auto& [p, bytes] : const_cast<Erfassungsplatz*>(this)->fs.platte().abbild())
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
