// Start and end of the whole program, without a screen, on a disk in memory. First and second start, and who
// may not see the plan, are in the scripts; damaged files in the tests of damage.
#include "hilfen/programmlauf.h"

namespace kalvora {
namespace {

const Text DATEN = u"/srv/x/Data/";
const std::vector<Text> AUFRUF{u"/path", DATEN, u"/nowelcomescreen"};

TEST(Start, OhneFensterUndOhneStart) {
    const struct {
        const char* was;
        std::vector<Text> aufruf;
        int status;
        Text hinweis;
    } tafel[] = {
        {"silent with a fault", {u"/d:991399", u"/silent"}, 2, u""},
        {"no folder", {u"/path", u"/nowelcomescreen"}, 2, u"Der Aufrufparameter /path nennt"},
        {"none to remember", {u"/setpath", u""}, 2, u"Der Aufrufparameter /setpath nennt"},
        {"no date", {u"/d:310226", u"/path", DATEN}, 2, u"Der Wert '310226' des Aufruf"},
    };
    for (const auto& fall : tafel) {
        SCOPED_TRACE(fall.was);
        Haus r;
        const auto vorher = r.platte().abbild();
        Platzlauf l(r, u"chef");
        EXPECT_FALSE(l.starten(fall.aufruf));
        EXPECT_EQ(l.programm->ende(), fall.status);
        EXPECT_EQ(l.fenster.hinweise.size(), fall.hinweis.empty() ? 0U : 1U);
        for (const Text& hinweis : l.fenster.hinweise)
            EXPECT_TRUE(hinweis.starts_with(fall.hinweis)) << zu_utf8(hinweis);
        EXPECT_TRUE(r.platte().abbild() == vorher);
    }
}

TEST(Start, Jahresgrenzen) {
    for (const auto& [d, läuft] : {std::pair{u"311224", false},
                                   {u"010125", true},
                                   {u"311250", true},
                                   {u"010151", false},
                                   {u"010180", false}}) {
        Haus r;
        Platzlauf& l = r.chef;
        EXPECT_EQ(l.starten({u"/path", DATEN, u"/nowelcomescreen", u"/d", d}), läuft) << zu_utf8(d);
        EXPECT_EQ(l.programm->platz().Heute_S,
                  Text(d).substr(4) + Text(d).substr(2, 2) + Text(d).substr(0, 2));
    }
}

TEST(Start, SilentRäumtDieEinrichtungAuf) {
    for (const bool in_Gebrauch : {false, true}) {
        Rechner r;
        if (in_Gebrauch) Firma().anlegen(r, DATEN);
        r.schreibe(u"/sys-PLATZ1/KalvoraSetup.dat", "x");
        auto soll = r.platte().abbild();
        if (in_Gebrauch) soll.erase(u"/sys-PLATZ1/KalvoraSetup.dat");
        Platzlauf l(r, u"chef");
        EXPECT_FALSE(l.starten({u"/silent /path " + DATEN}));
        EXPECT_EQ(l.programm->ende(), 0);
        EXPECT_TRUE(l.fenster.geöffnet.empty()) << "no window, no splash";
        EXPECT_TRUE(r.platte().abbild() == soll);
    }
}

TEST(Start, Setting) {
    const struct {
        Text wert;
        int n;
        char16_t soll;
    } tafel[] = {
        {u"3=7", 3, u'7'},  {u"50=1", 50, u'1'}, {u" 3 = 7 ", 3, u'7'},
        {u"3=12", 0, u' '}, {u"0=1", 0, u' '},   {u"51=1", 0, u' '},
        {u"=7", 0, u' '},   {u"3=x", 0, u' '},   {u"99999999999=1", 0, u' '},
    };
    for (const auto& fall : tafel) {
        Haus r;
        auto soll = r.zeilen(DATEN + u"Konfigdaten.dat");
        if (fall.n > 0) soll[7][static_cast<size_t>(fall.n - 1)] = fall.soll;
        EXPECT_FALSE(r.chef.starten({u"/path", DATEN, u"/setting", fall.wert, u"/nowelcomescreen"}));
        EXPECT_EQ(r.zeilen(DATEN + u"Konfigdaten.dat"), soll) << zu_utf8(fall.wert);
        EXPECT_TRUE(r.chef.fenster.hinweise.empty() && r.chef.fenster.geöffnet.empty());
    }
}

TEST(Start, EineInstanzJeBenutzer) {
    Haus r;
    auto sperren = std::make_shared<TestUmgebung::Sperren>();
    auto erste = std::make_unique<Platzlauf>(r, u"anna", u"/", u"PLATZ1", sperren);
    ASSERT_TRUE(erste->starten(AUFRUF));
    Platzlauf zweite(r, u"anna", u"/", u"PLATZ1", sperren), andere(r, u"otto", u"/", u"PLATZ1", sperren);
    EXPECT_FALSE(zweite.starten(AUFRUF));
    EXPECT_EQ(zweite.programm->ende(), 2);
    EXPECT_EQ(zweite.fenster.hinweise, std::vector<Text>{u"Programm ist bereits gestartet"});
    EXPECT_TRUE(andere.starten(AUFRUF)) << "another user of this machine";
    erste->schließen();
    erste.reset();
    Platzlauf wieder(r, u"anna", u"/", u"PLATZ1", sperren);
    EXPECT_TRUE(wieder.starten(AUFRUF));
}

TEST(Start, Datenordner) {
    const struct {
        std::vector<Text> aufruf;
        Text ordner;
    } tafel[] = {
        {{u"/path", u"/srv/x"}, u"/srv/x/Data/"},
        {{u"/path", u"/srv/x/Data"}, u"/srv/x/Data/"},
        {{u"/path", u"/srv/x/DATA/"}, u"/srv/x/DATA/"},
        {{u"/path", u"\\srv\\x\\Data\\"}, u"/srv/x/Data/"},
        {{u"/path", u"/srv/./y/../x//Data"}, u"/srv/x/Data/"},
        {{u"/path", u"/srv/mydata"}, u"/srv/mydata/Data/"},
        {{u"/setpath", u"/srv/z"}, u"/srv/z/Data/"},
        {{}, u"/srv/z/Data/"}, // remembered, and still so after a run on another folder
        {{u"/path", u"/srv/x"}, u"/srv/x/Data/"},
        {{}, u"/srv/z/Data/"},
        // Of both the first one says which folder, and either way it is remembered.
        {{u"/path", u"/srv/x", u"/setpath", u"/srv/z"}, u"/srv/x/Data/"},
        {{}, u"/srv/x/Data/"},
        {{u"/setpath /srv/z /path /srv/x"}, u"/srv/z/Data/"},
        {{}, u"/srv/z/Data/"},
        {{u"/path", u"/srv/verweis/../x"}, u"/mnt/firma/x/Data/"}, // above the target, not above the link
        {{u"/path", u"/srv/verweis/neu/../../x"}, u"/mnt/firma/x/Data/"},
        {{u"/path", u"/../srv/verweis/x"}, u"/srv/verweis/x/Data/"},
    };
    struct : Rechner { // /srv/verweis leads to /mnt/firma/plan
        Ergebnis<Text> real_folder(const Text& pfad) override {
            return pfad == u"/srv/verweis/" ? Ergebnis<Text>(u"/mnt/firma/plan/")
                                            : Rechner::real_folder(pfad);
        }
    } r;
    for (const auto& fall : tafel) {
        r.platte().mache_ordner(ParentDir(fall.ordner)); // the data folder itself may be new, not those above
        Platzlauf l(r, u"chef");
        EXPECT_TRUE(l.starten(fall.aufruf));
        EXPECT_EQ(l.programm->platz().Datenpfad, fall.ordner);
        EXPECT_EQ(l.programm->platz().Logpfad, fall.ordner + u"Logs/");
        EXPECT_GT(r.anzahl("", fall.ordner + u"Konfigdaten.dat"), 0);
    }
    EXPECT_EQ(r.zeilen(u"/sys-PLATZ1/Kalvora.dat")[1], u"data_pfad=\\srv\\z\\Data\\");
    // The share is not there today: no new company in its place.
    for (const auto& [pfad, bytes] : r.platte().abbild())
        if (pfad.starts_with(u"/srv/z/")) r.platte().entferne(pfad);
    const auto vorher = r.platte().abbild();
    Platzlauf l(r, u"chef");
    EXPECT_FALSE(l.starten({u"/nowelcomescreen"}));
    EXPECT_TRUE(enthält(letzter_Hinweis(l), u"'/srv/z/Data'"));
    EXPECT_FALSE(l.starten({u"/path", u"/mnt/vertippt/firma", u"/nowelcomescreen"}));
    EXPECT_TRUE(letzter_Hinweis(l).starts_with(
        u"Der Ordner '/mnt/vertippt/firma/Data' konnte nicht angelegt werden.\nVermutlich haben Sie"));
    EXPECT_TRUE(enthält(l.fenster.hinweise.at(1), u"Der Ordner '/mnt/vertippt/firma' ist nicht vorhanden"));
    EXPECT_TRUE(r.platte().abbild() == vorher);
}

// Somebody saves settings between our read and our write: both changes hold.
TEST(Start, SettingNebenEinemAnderen) {
    Haus r;
    Firma andere;
    andere.Setting(10, 1);
    bool einmal = true;
    r.davor = [&](const std::string& aufruf, const Text& pfad) {
        if (aufruf == "write" && enthält(pfad, u"Konfigdaten") && std::exchange(einmal, false))
            andere.anlegen(r, DATEN);
    };
    Platzlauf l(r, u"chef");
    EXPECT_FALSE(l.starten({u"/path", DATEN, u"/setting", u"3=7", u"/nowelcomescreen"}));
    const Text werte = r.zeilen(DATEN + u"Konfigdaten.dat")[7];
    EXPECT_EQ(werte[2], u'7');
    EXPECT_EQ(werte[9], u'1');
}

// Of a remembered folder that may not be looked at one does not wait that it comes by itself.
TEST(Start, DatenordnerVerweigert) {
    Haus r;
    Platzlauf& l = r.chef;
    ASSERT_TRUE(l.starten({u"/setpath", DATEN, u"/nowelcomescreen"}));
    l.schließen();
    r.platte().entferne(DATEN + u"IniFiles/");
    r.schreibe(DATEN + u"IniFiles", "x");
    EXPECT_FALSE(l.starten({u"/nowelcomescreen"}));
    r.störe({.aufruf = "info", .maske = u"Data", .nummer = FEHLER_VERWEIGERT, .dauernd = true});
    EXPECT_FALSE(l.starten({u"/nowelcomescreen"}));
    ASSERT_EQ(l.fenster.hinweise.size(), 2U) << "no wait: it will not come by itself";
    EXPECT_TRUE(enthält(l.fenster.hinweise[0],
                        u"Zugriffsberechtigungen.\n\nAn der Stelle dieses Ordners steht eine Datei."));
    EXPECT_TRUE(l.fenster.hinweise[1].starts_with(u"Es ist ein Fehler beim Dateizugriff"));
}

TEST(Start, ErsterLaufNebenSchulferien) {
    Rechner r;
    r.platte().mache_ordner(DATEN);
    r.schreibe(DATEN + u"Ferientage.dat", "");
    Platzlauf l(r, u"chef");
    EXPECT_TRUE(l.starten(AUFRUF));
    EXPECT_TRUE(l.fenster.fragen.empty());
    EXPECT_TRUE(r.gibt_es(DATEN + u"Konfigdaten.dat"));
    EXPECT_TRUE(l.fenster.hinweise.empty()) << "an empty file of school holidays is not worth a word";
}

// What others change while the program starts holds; once it runs, nobody is shut out any more.
TEST(Start, ZulassungFolgtDemStandDerPlatte) {
    Firma firma, gesperrt;
    gesperrt.Setting(1, 1);
    gesperrt.Setting(38, 5); // residual leave alone becomes possible
    SpeicherDateisystem fs;
    firma.anlegen(fs, DATEN);
    fs.davor = [&](const std::string& aufruf, const Text& pfad) {
        if (aufruf == "open" && enthält(pfad, u"Feiertage.dat")) gesperrt.anlegen(fs, DATEN);
    };
    Platzlauf im_Start(fs, u"fremd");
    EXPECT_FALSE(im_Start.starten(AUFRUF));
    ASSERT_EQ(im_Start.fenster.hinweise.size(), 1U);
    EXPECT_TRUE(
        im_Start.fenster.hinweise[0].starts_with(u"Sie sind mit Ihrem Windows-Benutzernamen 'fremd'"));

    fs.davor = {};
    const auto konfig = *fs.inhalt(DATEN + u"Konfigdaten.dat");
    firma.anlegen(fs, DATEN);
    Platzlauf l(fs, u"fremd", u"/", u"PLATZ2");
    ASSERT_TRUE(l.starten(AUFRUF));
    EXPECT_FALSE(l.programm->daten().personal.Keine_Urlaubsansprüche());
    fs.schreibe(DATEN + u"Konfigdaten.dat", konfig);
    l.neu_laden();
    EXPECT_TRUE(l.programm->daten().personal.Keine_Urlaubsansprüche()) << "follows the configuration alone";
    gesperrt.anlegen(fs, DATEN);
    l.neu_laden();
    EXPECT_TRUE(l.programm->platz().Startmeldung.empty());
}

TEST(Ende, FehlerInEinerBehandlungWirdGemeldet) {
    const struct {
        std::function<void(Modifiers)> wirft;
        const char16_t* gemeldet;
    } tafel[] = {{[](Modifiers) { throw std::runtime_error("Handler kaputt"); }, u"Handler kaputt"},
                 {[](Modifiers) { throw Zugriffsfehler(FEHLER_VOLL, u"/srv/voll.dat"); },
                  u"/srv/voll.dat\n\nUrsache: Der Datenträger ist voll.\n\nDas Programm wird beendet."}};
    for (const auto& fall : tafel) {
        Haus r;
        Platzlauf& l = r.chef;
        ASSERT_TRUE(l.starten(AUFRUF));
        l.fenster_().cmdAuswahl(1)->on_click = fall.wirft;
        l.drücke(1);
        l.programm->schleife();
        EXPECT_EQ(l.programm->ende(), 2);
        ASSERT_EQ(l.fenster.hinweise.size(), 1U);
        EXPECT_TRUE(enthält(l.fenster.hinweise[0], fall.gemeldet));
    }
}

// Somebody's rewrite has passed over the last row.
TEST(Ende, UngesehenesWirdVorherNachgetragen) {
    Haus r;
    ASSERT_TRUE(r.chef.starten(AUFRUF) && r.chef.trage_ein(u"anna", 18, 18, 1));
    r.schreibe(DATEN + u"2611 261116 Data.dat", als_Datei(Monat({})));
    r.chef.schließen();
    const Text tage = Erfassungsplatz({u"anna"}, r.geteilte_platte()).Tage_auf_Platte(u"anna");
    EXPECT_EQ(tage, Text(17, u' ') + u"1");
}

TEST(Ende, AnzeigewahlWirdGemerkt) {
    Haus r;
    Platzlauf& l = r.chef;
    ASSERT_TRUE(l.starten(AUFRUF));
    l.programm->daten().ini.wahl().Fensterdaten_(fenster::TAGESSUMMEN) = 1;
    l.fenster_().cmdBeenden.user_click();
    EXPECT_EQ(l.programm->ende(), 0);
    l.programm.reset();
    EXPECT_TRUE(r.gibt_es(DATEN + u"IniFiles/Kalvora_chef.ini"));
    ASSERT_TRUE(l.starten(AUFRUF));
    EXPECT_TRUE(l.fenster_().msgFlexTaSu.visible());
    EXPECT_EQ(r.offene(), 0);
}

} // namespace
} // namespace kalvora
