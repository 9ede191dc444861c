// The whole program on a damaged data folder: a message that names the file, or none where damage is no
// fault; nothing deleted, nothing changed, never a crash.
#include <gmock/gmock.h>

#include "firma/firma.h"
#include "hilfen/arbeitsplatz.h"
#include "hilfen/konsolenlauf.h"

namespace kalvora {
namespace {

using testing::IsEmpty;

const Text DATEN = u"/srv/x/Data/", SYSTEM = u"/home/muster/kalvora/", PROGRAMM = u"/opt/kalvora/";
const std::vector<Text> FREI_BESCHREIBBAR{u"/srv/x/Data/Logs", u"/srv/x/Data/IniFiles",
                                          u"/srv/x/Data/Backups", u"/run/muster/"};
std::string gespeichert(const Text& klar) {
    return als_Datei({klar});
}

constexpr const char* SKRIPT = "wähle tabMonate Dez.\n";

enum Schaden { leer, halb, mitten, doppelt, Kopf, fremd, lange_Zeile, fehlt, Ordner, unlesbar };
constexpr const char* NAMEN[] = {"leer",  "halb",        "mitten", "doppelt", "Kopf",
                                 "fremd", "lange_Zeile", "fehlt",  "Ordner",  "unlesbar"};

std::string beschädigt(const std::string& ganz, Schaden s) {
    const std::size_t ende = ganz.rfind('\n', ganz.size() / 2), mitte = ende + 1; // 0 where there is no line
    switch (s) {
    case leer: return {};
    case halb: return ganz.substr(0, mitte);
    case mitten: return ganz.substr(0, mitte + 2);
    case doppelt: return ganz + ganz;
    case Kopf: return gespeichert(u"[Falsch]") + ganz.substr(ganz.find('\n') + 1);
    case fremd: return "\x7F\x45LF\x02\x01" + std::string(400, '\x01') + "\r\n\r\n\x80\xFF" + ganz;
    case lange_Zeile: return ganz + gespeichert(Text(1'000'000, u'x'));
    default: return ganz;
    }
}

struct Lauf {
    int status = 0;
    std::vector<std::string> hinweise; // but for those that ask to wait for another one's writing
    std::string protokoll;
};

// One workstation's runs on a disk.
struct Schauplatz {
    SpeicherDateisystem fs;
    explicit Schauplatz(std::shared_ptr<SpeicherPlatte> platte) : fs(std::move(platte)) {}

    void beschädigen(const Text& pfad, Schaden s) {
        const std::string ganz = fs.inhalt(pfad).value_or("");
        if (s == fehlt || s == Ordner) fs.platte().entferne(pfad);
        if (s == Ordner) fs.platte().mache_ordner(pfad);
        if (s == unlesbar)
            fs.störe({"open", pfad.substr(pfad.rfind(u'/') + 1), 1, Wirkung::Fehler, 70, 0, true});
        else if (s != fehlt && s != Ordner)
            fs.schreibe(pfad, beschädigt(ganz, s));
    }

    Lauf laufen(const std::string& skript, const std::vector<Text>& aufruf = {u"/nowelcomescreen"}) {
        Lauf lauf;
        Protokoll protokoll([&](std::string_view zeile) {
            lauf.protokoll += zeile;
            if (zeile.starts_with("HINWEIS ") && zeile.find("gerade von jemand anderem") == zeile.npos)
                lauf.hinweise.emplace_back(zeile);
        });
        TestUmgebung umgebung;
        umgebung.variablen[u"KALVORA_SYSTEMPFAD"] = SYSTEM;
        lauf.status = Konsolenlauf(fs, umgebung, {{2026, 11, 4}, 8, 0, 0}, aufruf, skript, protokoll);
        return lauf;
    }

    // What stands on the disk, folders as "<Ordner>", without what a run may write.
    std::map<Text, std::string> bestand(const std::vector<Text>& ohne) {
        std::map<Text, std::string> alle;
        for (const auto& [pfad, knoten] : fs.platte().knoten())
            if (std::none_of(ohne.begin(), ohne.end(), [&p = pfad](auto& o) { return p.starts_with(o); }))
                alle[pfad] = knoten->info.folder ? "<Ordner>" : knoten->bytes;
        return alle;
    }
};

// Names of what differs, so that a failure does not print whole files.
std::vector<std::string> Unterschiede(std::map<Text, std::string> vorher,
                                      const std::map<Text, std::string>& nachher) {
    std::vector<std::string> namen;
    for (const auto& [pfad, bytes] : nachher) {
        const auto alt = vorher.extract(pfad);
        if (!alt || alt.mapped() != bytes) namen.push_back((alt ? "changed: " : "new: ") + zu_utf8(pfad));
    }
    for (const auto& [pfad, bytes] : vorher)
        namen.push_back("gone: " + zu_utf8(pfad));
    return namen;
}

// A company, its Kalvora.dat and an ini file, as they stand after some days of work.
std::shared_ptr<SpeicherPlatte> heile_Platte() {
    static const std::shared_ptr<SpeicherPlatte> platte = [] {
        Schauplatz s(std::make_shared<SpeicherPlatte>());
        std::vector<Text> vorlage{u"[KalvoraFeiertageDat]", u"[049:Deutschland]", u"1:25.12.:Weihnachten"};
        vorlage.resize(2 + FEIERTAGSREGELN_LAND, u"0:31.10.:Reformationstag");
        s.fs.schreibe(PROGRAMM + u"KalvoraFtg.dat", als_Datei(vorlage));
        s.fs.schreibe(PROGRAMM + u"KalvoraSetup.dat", als_Datei({u"[Firma]", u"Meine Firma", u"Zusatz"}));
        s.fs.platte().mache_ordner(u"/run/muster/kalvora");
        s.fs.platte().mache_ordner(u"/srv/x");
        TestUhr uhr;
        Firmenwunsch wunsch;
        wunsch.Zielordner = u"/srv/x";
        wunsch.Mitarbeiter = 5;
        wunsch.Heute = Datum_aus(2026, 11, 4);
        wunsch.Benutzername = u"Muster";
        wunsch.Programmpfad = PROGRAMM;
        wunsch.Version_von_heute = wunsch.Jeden_Monat_Einträge = true;
        Firma_erzeugen(s.fs, uhr, wunsch);
        s.laufen("", {u"/nowelcomescreen", u"/setpath", u"/srv/x"});
        return s.fs.geteilte_platte();
    }();
    return platte->kopie();
}

Text Datei_des_Monats(Schauplatz& s, TextView yymm) {
    for (const auto& [pfad, bytes] : s.fs.platte().abbild())
        if (passt_auf_Maske(pfad, DATEN + Text(yymm) + u" * Data.dat")) return pfad;
    return {};
}

// --- the table: one letter for each damage, in the order of `Schaden`
//   S  the program says what is wrong, by the file's name, and stops
//   M  it says which month has unreadable rows, and goes on
//   F  the month is named as missing, and the program stops
//   -  nothing is wrong that anybody could see, or it does not matter
//   N  a workstation that knows no folder begins with one of its own
struct Fall {
    const char* name;
    TextView datei; // below DATEN; "yymm" for a month's file; absolute with "/"
    TextView ausgang;
    friend void PrintTo(const Fall& f, std::ostream* o) { *o << f.name; }
};
//                                           leer halb mitten doppelt Kopf fremd lang fehlt Ordner unlesbar
const Fall FÄLLE[] = {
    {"Konfigdaten", u"Konfigdaten.dat", u"SSSSSSSSSS"},
    {"Mitarbeiterdaten", u"Mitarbeiterdaten.dat", u"S-SSSS-SSS"},
    {"Feiertage", u"Feiertage.dat", u"S-SSSSSSSS"},
    {"Ferientage", u"Ferientage.dat", u"----------"},
    {"dieser_Monat", u"2611", u"S--MSSMFSS"},
    {"anderer_Monat", u"2612", u"S--MSSMFSS"},
    {"Kalvora", u"/home/muster/kalvora/Kalvora.dat", u"SSSSSSSNSS"},
    {"Inidatei", u"IniFiles/Kalvora_Muster.ini", u"----------"},
    {"Logbuch", u"Logs/2611 Kalvora.log", u"----------"},
};

class Beschädigt : public testing::TestWithParam<Fall> {
protected:
    static void prüfe(const Fall& fall, Schaden schaden, char16_t erwartet) {
        Schauplatz s(heile_Platte());
        const Text pfad = fall.datei.size() == 4         ? Datei_des_Monats(s, fall.datei)
                          : fall.datei.starts_with(u'/') ? Text(fall.datei)
                                                         : DATEN + Text(fall.datei);
        ASSERT_TRUE(s.fs.gibt_es(pfad));
        s.beschädigen(pfad, schaden);
        std::vector<Text> ohne = FREI_BESCHREIBBAR;
        if (erwartet == u'N') ohne.push_back(SYSTEM);
        const auto vorher = s.bestand(ohne);
        const Lauf lauf = s.laufen(SKRIPT);
        EXPECT_THAT(Unterschiede(vorher, s.bestand(ohne)), IsEmpty());
        EXPECT_EQ(s.fs.offene(), 0);
        Text genannt = pfad.substr(pfad.rfind(u'/') + 1);
        if (erwartet == u'M' || erwartet == u'F')
            genannt = genannt.substr(2, 2) + u".20" + genannt.substr(0, 2);
        EXPECT_EQ(lauf.status, erwartet == u'S' || erwartet == u'F' ? 2 : 0) << lauf.protokoll;
        EXPECT_EQ(lauf.hinweise.size(), erwartet == u'-' || erwartet == u'N' ? 0u : 1u) << lauf.protokoll;
        for (const std::string& hinweis : lauf.hinweise)
            EXPECT_NE(hinweis.find(zu_utf8(genannt)), std::string::npos) << hinweis;
    }
};

TEST_P(Beschädigt, wird_genannt_und_bleibt_wie_sie_ist) {
    for (std::size_t n = 0; n < std::size(NAMEN); ++n) {
        SCOPED_TRACE(NAMEN[n]);
        prüfe(GetParam(), static_cast<Schaden>(n), GetParam().ausgang[n]);
    }
}

INSTANTIATE_TEST_SUITE_P(Dateien, Beschädigt, testing::ValuesIn(FÄLLE),
                         [](const auto& fall) { return std::string(fall.param.name); });

// Lines that cannot be read are taken out of a month only behind a backup that holds them.
TEST(Monat_beschädigt, verliert_beim_Eintragen_keine_Zeile) {
    for (const Schaden schaden : {mitten, doppelt, lange_Zeile}) {
        SCOPED_TRACE(NAMEN[schaden]);
        Schauplatz s(heile_Platte());
        const Text pfad = Datei_des_Monats(s, u"2612"); // not of today: the entry begins a new version
        s.beschädigen(pfad, schaden);
        const auto vorher = s.fs.inhalt(pfad);
        s.laufen("wähle tabMonate Dez.\nmaus links msgFlexGrid 2 15\nklick cmdAuswahl(1)\n");
        if (s.fs.inhalt(pfad) == vorher) continue;
        bool im_Backup = schaden == mitten; // a torn row goes along into the new version
        for (const auto& [name, bytes] : s.fs.platte().abbild())
            im_Backup = im_Backup || (passt_auf_Maske(name, u"*/Backups/*F.dat") &&
                                      bytes.find(*vorher) != std::string::npos);
        EXPECT_TRUE(im_Backup);
    }
}

// --- the folder itself

TEST(Datenordner, der_nicht_geht_wird_genannt) {
    const auto weg = [](const Text& ordner) {
        return [ordner](SpeicherDateisystem& fs) {
            std::erase_if(fs.platte().knoten(), [&](const auto& k) {
                return k.first == ordner || k.first.starts_with(ordner + u"/");
            });
        };
    };
    const auto Datei_statt = [&](const Text& ordner) {
        return [weg, ordner](SpeicherDateisystem& fs) {
            weg(ordner)(fs);
            fs.schreibe(ordner, "keiner");
        };
    };
    const auto Störung = [](const char* aufruf, const Text& maske, int beim, int nummer) {
        return [=](SpeicherDateisystem& fs) {
            fs.störe({aufruf, maske, beim, Wirkung::Fehler, nummer, 0, true});
        };
    };
    const struct {
        const char* was;
        std::function<void(SpeicherDateisystem&)> tun;
        const char* genannt; // in the one message; nullptr: the program runs
    } fälle[] = {
        {"not listable", Störung("list", u"Data", 1, 70), "/srv/x/Data"},
        {"network gone", Störung("", u"*", 40, 52), "Der Datenordner /srv/x/ ist nicht"},
        {"a file in its place", Datei_statt(u"/srv/x/Data"), "Der Datenordner /srv/x/ ist nicht"},
        {"gone", weg(u"/srv/x/Data"), "Der Datenordner /srv/x/ ist nicht"},
        {"Logs is a file", Datei_statt(u"/srv/x/Data/Logs"), "/srv/x/Data/Logs"},
        {"IniFiles is a file", Datei_statt(u"/srv/x/Data/IniFiles"), "/srv/x/Data/IniFiles"},
        {"Backups is a file", Datei_statt(u"/srv/x/Data/Backups"), "/srv/x/Data/Backups"},
        {"nothing can be written", Störung("*", u"*", 1, 70), nullptr},
    };
    for (const auto& fall : fälle) {
        SCOPED_TRACE(fall.was);
        Schauplatz s(heile_Platte());
        fall.tun(s.fs);
        const auto vorher = s.bestand({});
        const Lauf lauf = s.laufen(SKRIPT);
        EXPECT_EQ(lauf.hinweise.size(), fall.genannt ? 1u : 0u) << lauf.protokoll;
        for (const std::string& hinweis : lauf.hinweise)
            EXPECT_NE(hinweis.find(fall.genannt), std::string::npos) << hinweis;
        for (const std::string& unterschied : Unterschiede(vorher, s.bestand({})))
            EXPECT_TRUE(unterschied.find("/Logs/") != std::string::npos ||
                        unterschied.find("/IniFiles/") != std::string::npos)
                << unterschied;
    }
}

// --- the delivered files, which the first start reads

// An interrupted first start is taken up again when the delivered file is whole.
TEST(Auslieferung, beschädigt_hält_den_ersten_Start_auf) {
    for (const Text& name : {Text(u"KalvoraFtg.dat"), Text(u"KalvoraSetup.dat")})
        for (std::size_t n = 0; n < std::size(NAMEN); ++n) {
            SCOPED_TRACE(zu_utf8(name) + " " + NAMEN[n]);
            Schauplatz s(heile_Platte());
            const Text pfad = PROGRAMM + name;
            const std::string heil = *s.fs.inhalt(pfad);
            const std::vector<Text> aufruf{u"/nowelcomescreen", u"/path", u"/srv/neu"};
            s.fs.platte().mache_ordner(u"/srv/neu");
            s.beschädigen(pfad, static_cast<Schaden>(n));
            const std::vector<Text> neu{u"/srv/neu/", SYSTEM};
            const auto vorher = s.bestand(neu);
            const Lauf lauf = s.laufen(SKRIPT, aufruf);
            EXPECT_THAT(Unterschiede(vorher, s.bestand(neu)), IsEmpty());
            const bool hält = n != doppelt && n != lange_Zeile;
            EXPECT_EQ(lauf.status, hält ? 2 : 0) << lauf.protokoll;
            EXPECT_EQ(lauf.hinweise.size(), hält ? 1u : 0u) << lauf.protokoll;
            for (const std::string& hinweis : lauf.hinweise)
                EXPECT_NE(hinweis.find(zu_utf8(name)), std::string::npos) << hinweis;
            // The whole program is installed once more: file and the workstation's copy of it.
            s.fs.störe_nicht();
            s.fs.platte().entferne(pfad);
            s.fs.schreibe(pfad, heil);
            if (hält) s.fs.platte().entferne(SYSTEM + name);
            EXPECT_EQ(s.laufen(SKRIPT, aufruf).status, 0);
        }
}

} // namespace
} // namespace kalvora
