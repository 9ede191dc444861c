// The whole program on a damaged data folder: a message that names the file, or none where damage is no
// fault; nothing deleted, nothing changed, never a crash.
#include <gmock/gmock.h>

#include "firma/firma.h"
#include "unit/boesartig/schauplatz.h"

namespace kalvora {
namespace {

using testing::IsEmpty;

const std::vector<Text> FREI_BESCHREIBBAR{u"/srv/x/Data/Logs", u"/srv/x/Data/IniFiles",
                                          u"/srv/x/Data/Backups", u"/run/muster/"};

std::string Vorlage() {
    std::string bytes = gespeichert("[KalvoraFeiertageDat]") + gespeichert("[049:Deutschland]");
    for (int r = 0; r < FEIERTAGSREGELN_LAND; ++r)
        bytes += gespeichert(r == 0 ? "1:25.12.:1. Weihnachtstag" : "0:31.10.:Reformationstag");
    return bytes;
}

// A company, its Kalvora.dat and an ini file, as they stand after some days of work.
std::shared_ptr<SpeicherPlatte> heile_Platte() {
    static const std::shared_ptr<SpeicherPlatte> platte = [] {
        Schauplatz s(std::make_shared<SpeicherPlatte>());
        s.fs.schreibe(PROGRAMM + u"KalvoraFtg.dat", Vorlage());
        s.fs.schreibe(PROGRAMM + u"KalvoraSetup.dat",
                      gespeichert("[Firma]") + gespeichert("Meine Firma") + gespeichert("Zusatz"));
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
    return Abschrift(*platte);
}

Text Datei_des_Monats(Schauplatz& s, TextView yymm) {
    for (const auto& [pfad, bytes] : s.fs.platte().abbild())
        if (passt_auf_Maske(pfad, DATEN + Text(yymm) + u" * Data.dat")) return pfad;
    return {};
}

constexpr const char* SKRIPT = "wähle tabMonate Dez.\n";

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
        SCOPED_TRACE(Name(schaden));
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
    for (int n = 0; n < SCHÄDEN; ++n)
        prüfe(GetParam(), static_cast<Schaden>(n), GetParam().ausgang[static_cast<std::size_t>(n)]);
}

INSTANTIATE_TEST_SUITE_P(Dateien, Beschädigt, testing::ValuesIn(FÄLLE),
                         [](const auto& fall) { return std::string(fall.param.name); });

TEST(Heil, die_Firma_selbst_läuft_ohne_Meldung) {
    Schauplatz s(heile_Platte());
    const auto vorher = s.bestand(FREI_BESCHREIBBAR);
    const Lauf lauf = s.laufen(SKRIPT);
    EXPECT_EQ(lauf.status, 0) << lauf.protokoll;
    EXPECT_THAT(lauf.hinweise, IsEmpty());
    EXPECT_THAT(Unterschiede(vorher, s.bestand(FREI_BESCHREIBBAR)), IsEmpty());
}

// The log is appended to, whatever stands in it: an administrator may still need what can be read of it.
TEST(Logbuch_beschädigt, behält_was_darin_stand) {
    for (int n = 0; n < SCHÄDEN; ++n) {
        const auto schaden = static_cast<Schaden>(n);
        if (schaden == Schaden::fehlt || schaden == Schaden::Ordner) continue;
        SCOPED_TRACE(Name(schaden));
        Schauplatz s(heile_Platte());
        const Text pfad = DATEN + u"Logs/2611 Kalvora.log";
        s.beschädigen(pfad, schaden);
        const std::string vorher = *s.fs.inhalt(pfad);
        EXPECT_EQ(s.laufen("maus links msgFlexGrid 2 27\nantworte ja\nklick cmdAuswahl(1)\n").status, 0);
        ASSERT_TRUE(s.fs.gibt_es(pfad));
        EXPECT_TRUE(s.fs.inhalt(pfad)->starts_with(vorher));
    }
}

// A damaged month takes no entry that would begin a new version without the rows that could not be read.
TEST(Monat_beschädigt, verliert_beim_Eintragen_keine_Zeile) {
    for (const Schaden schaden : {Schaden::mitten, Schaden::doppelt, Schaden::lange_Zeile}) {
        SCOPED_TRACE(Name(schaden));
        Schauplatz s(heile_Platte());
        const Text pfad = Datei_des_Monats(s, u"2612"); // not of today: the entry begins a new version
        s.beschädigen(pfad, schaden);
        const std::string vorher = *s.fs.inhalt(pfad);
        s.laufen("wähle tabMonate Dez.\nmaus links msgFlexGrid 2 15\nklick cmdAuswahl(1)\n");
        const auto nachher = s.fs.inhalt(pfad);
        if (schaden == Schaden::mitten)
            EXPECT_TRUE(s.fs.gibt_es(DATEN + u"2612 261104 Data.dat"));
        else
            EXPECT_EQ(nachher, vorher);
    }
}

// --- the folder itself

struct Ordnerfall {
    const char* name;
    std::function<void(SpeicherDateisystem&)> tun;
    const char* genannt; // in the one message; nullptr: the program runs
};

TEST(Datenordner, der_nicht_geht_wird_genannt) {
    const auto Datei_statt = [](const Text& ordner) {
        return [ordner](SpeicherDateisystem& fs) {
            auto& knoten = fs.platte().knoten();
            std::erase_if(knoten, [&](const auto& k) {
                return k.first == ordner || k.first.starts_with(ordner + u"/");
            });
            fs.schreibe(ordner, "keiner");
        };
    };
    const Ordnerfall fälle[] = {
        {"not listable",
         [](SpeicherDateisystem& fs) {
             fs.störe({"list", u"Data", 1, Wirkung::Fehler, 70, 0, true});
         },
         "/srv/x/Data"},
        {"network gone",
         [](SpeicherDateisystem& fs) {
             fs.störe({"", u"*", 40, Wirkung::Fehler, 52, 0, true});
         },
         "/srv/x/Data"},
        {"a file in its place", Datei_statt(u"/srv/x/Data"), "/srv/x/Data"},
        {"gone",
         [](SpeicherDateisystem& fs) {
             std::erase_if(fs.platte().knoten(),
                           [](const auto& k) { return k.first.starts_with(u"/srv/x/Data"); });
         },
         "/srv/x/Data"},
        {"Logs is a file", Datei_statt(u"/srv/x/Data/Logs"), "/srv/x/Data/Logs"},
        {"IniFiles is a file", Datei_statt(u"/srv/x/Data/IniFiles"), "/srv/x/Data/IniFiles"},
        {"Backups is a file", Datei_statt(u"/srv/x/Data/Backups"), "/srv/x/Data/Backups"},
        {"nothing can be written",
         [](SpeicherDateisystem& fs) {
             fs.störe({"*", u"*", 1, Wirkung::Fehler, 70, 0, true});
         },
         nullptr},
    };
    for (const Ordnerfall& fall : fälle) {
        SCOPED_TRACE(fall.name);
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

class Auslieferung : public testing::TestWithParam<Fall> {};

// An interrupted first start is taken up again when the delivered file is whole.
TEST_P(Auslieferung, beschädigt_hält_den_ersten_Start_auf) {
    const Text pfad = PROGRAMM + Text(GetParam().datei);
    for (int n = 0; n < SCHÄDEN; ++n) {
        const auto schaden = static_cast<Schaden>(n);
        SCOPED_TRACE(Name(schaden));
        Schauplatz s(heile_Platte());
        const std::string heil = *s.fs.inhalt(pfad);
        const std::vector<Text> aufruf{u"/nowelcomescreen", u"/path", u"/srv/neu"};
        s.fs.platte().mache_ordner(u"/srv/neu");
        s.beschädigen(pfad, schaden);
        const std::vector<Text> neu{u"/srv/neu/", SYSTEM};
        const auto vorher = s.bestand(neu);
        const Lauf lauf = s.laufen(SKRIPT, aufruf);
        EXPECT_THAT(Unterschiede(vorher, s.bestand(neu)), IsEmpty());
        const bool hält = GetParam().ausgang[static_cast<std::size_t>(n)] == u'S';
        EXPECT_EQ(lauf.status, hält ? 2 : 0) << lauf.protokoll;
        EXPECT_EQ(lauf.hinweise.size(), hält ? 1u : 0u) << lauf.protokoll;
        for (const std::string& hinweis : lauf.hinweise)
            EXPECT_NE(hinweis.find(zu_utf8(GetParam().datei)), std::string::npos) << hinweis;
        // The whole program is installed once more: file and the workstation's copy of it.
        s.fs.störe_nicht();
        s.fs.platte().entferne(pfad);
        s.fs.schreibe(pfad, heil);
        if (hält) s.fs.platte().entferne(SYSTEM + Text(GetParam().datei));
        EXPECT_EQ(s.laufen(SKRIPT, aufruf).status, 0);
    }
}

INSTANTIATE_TEST_SUITE_P(Dateien, Auslieferung,
                         testing::Values(Fall{"Vorlage", u"KalvoraFtg.dat", u"SSS-SS-SSS"},
                                         Fall{"Setup", u"KalvoraSetup.dat", u"SSS-SS-SSS"}),
                         [](const auto& fall) { return std::string(fall.param.name); });

} // namespace
} // namespace kalvora
