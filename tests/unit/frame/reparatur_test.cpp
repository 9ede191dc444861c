// Damaged and missing files from the question to the start behind the repair, with the backups that the
// program makes itself; the lock; and the wait for a data folder that is not there.
#include "hilfen/programmlauf.h"

namespace kalvora {
namespace {

const Text DATEN = u"/srv/x/Data/";
const std::vector<Text> AUFRUF{u"/path", DATEN, u"/nowelcomescreen"};
const Text MONAT = DATEN + u"2611 261117 Data.dat";

struct Rechner : SpeicherDateisystem {
    Rechner() {
        Installation_ablegen(
            [this](const Text& name, const std::string& bytes) { schreibe(u"/opt/kalvora/" + name, bytes); });
    }
    std::vector<Text> namen(TextView maske) const {
        std::vector<Text> aus;
        for (const auto& [pfad, bytes] : geteilte_platte()->abbild())
            if (passt_auf_Maske(pfad, maske)) aus.push_back(pfad);
        return aus;
    }
    std::vector<Text> zeilen(const Text& pfad) const { return als_Zeilen(inhalt(pfad).value_or("")); }
};

// One start of chef on that day of November 2026; true when the window stood.
bool starte(Platzlauf& l, int tag, Antwort antwort = Antwort::Nein) {
    l.uhr.stelle({{2026, 11, tag}, 8, 0, 0});
    l.fenster.hinweise.clear();
    l.fenster.fragen.clear();
    l.fenster.antwort = antwort;
    return l.starten(AUFRUF);
}

// A company with an entry of the 16th, which the backup of the 17th holds, and one that is younger than that.
void zwei_Tage_arbeiten(Rechner& r) {
    Firma firma;
    firma.monate[u"2611"] = {A(u"otto", u"2")};
    firma.monate[u"2603"] = {A(u"otto", u"1")};
    firma.anlegen(r, DATEN);
    Platzlauf l(r, u"chef");
    ASSERT_TRUE(starte(l, 16));
    ASSERT_TRUE(l.trage_ein(u"anna", 19, 20, 1));
    l.schließen();
    ASSERT_TRUE(starte(l, 17));
    ASSERT_TRUE(l.trage_ein(u"otto", 25, 25, 1));
    l.schließen();
}

std::string verdorben(std::string bytes, std::size_t stelle) {
    bytes[stelle] = static_cast<char>(bytes[stelle] ^ 0x10);
    return bytes;
}

TEST(Reparatur, JedeDateiKommtZurück) {
    const auto erste_Zeile = [](std::string bytes) { return verdorben(std::move(bytes), 2); };
    const auto weg = [](const std::string&) { return std::optional<std::string>(); };
    const auto leer = [](const std::string&) { return std::optional<std::string>(""); };
    const auto halb = [](const std::string& b) { return std::optional(b.substr(0, b.size() / 2)); };
    const auto Nullen = [](const std::string& b) { return std::optional(std::string(b.size(), '\0')); };
    const auto Kopf = [&](const std::string& b) { return std::optional(erste_Zeile(b)); };
    const struct {
        const char* was;
        Text datei;
        std::function<std::optional<std::string>(const std::string&)> schaden;
    } tafel[] = {
        {"configuration: head", DATEN + u"Konfigdaten.dat", Kopf},
        {"configuration: half", DATEN + u"Konfigdaten.dat", halb},
        {"configuration: gone", DATEN + u"Konfigdaten.dat", weg},
        {"staff: gone", DATEN + u"Mitarbeiterdaten.dat", weg},
        {"staff: NULs", DATEN + u"Mitarbeiterdaten.dat", Nullen},
        {"staff: empty", DATEN + u"Mitarbeiterdaten.dat", leer},
        {"holidays: head", DATEN + u"Feiertage.dat", Kopf},
        {"month on show: head", MONAT, Kopf},
        {"month on show: empty", MONAT, leer},
        {"month on show: gone", MONAT, weg},
    };
    for (const auto& fall : tafel)
        for (const int tag : {17, 18}) { // on the 18th the day's own backup holds the damage already
            SCOPED_TRACE(std::string(fall.was) + (tag == 18 ? " on a new day" : ""));
            Rechner r;
            zwei_Tage_arbeiten(r);
            const auto vorher = r.geteilte_platte()->abbild();
            const auto schlecht = fall.schaden(*r.inhalt(fall.datei));
            if (schlecht)
                r.schreibe(fall.datei, *schlecht);
            else
                r.platte().entferne(fall.datei);

            Platzlauf l(r, u"chef");
            EXPECT_FALSE(starte(l, tag, Antwort::Nein)) << "a No ends the program";
            ASSERT_EQ(l.fenster.fragen.size(), 1U);
            EXPECT_TRUE(
                enthält(l.fenster.fragen[0], u"Möchten Sie mit dem Wiederherstellen der Datei beginnen?"));
            EXPECT_EQ(l.fenster.hinweise.back(), u"Das Programm wird beendet");
            EXPECT_TRUE(r.inhalt(fall.datei) == schlecht) << "and touches nothing";
            EXPECT_TRUE(r.namen(u"*Lockfile.txt").empty());

            EXPECT_FALSE(starte(l, tag, Antwort::Ja)) << "a repair ends the program";
            EXPECT_TRUE(l.fenster.hinweise.back().starts_with(u"Wiederherstellen beendet.\n\n"))
                << zu_utf8(l.fenster.hinweise.back());
            const auto kopien = r.namen(fall.datei + u" defekt *");
            EXPECT_EQ(kopien.size(), schlecht ? 1U : 0U);
            for (const Text& kopie : kopien) {
                EXPECT_TRUE(r.inhalt(kopie) == schlecht) << "nothing is deleted";
                EXPECT_TRUE(enthält(l.fenster.hinweise.back(), Dateiname_aus_Pfad(kopie)));
            }
            EXPECT_EQ(r.namen(u"*/Backups/*F.dat").size(),
                      fall.was == std::string("month on show: gone") ? 0U : 1U);
            EXPECT_TRUE(r.inhalt(DATEN + u"Lockfile.txt")->starts_with("Wegen Wartungsarbeiten"));

            Platzlauf anna(r, u"anna", u"/", u"PLATZ2");
            EXPECT_FALSE(starte(anna, tag)) << "locked for the staff";
            EXPECT_TRUE(anna.fenster.hinweise.back().starts_with(u"Programmaufruf gesperrt:\n\n"));
            EXPECT_TRUE(
                enthält(anna.fenster.hinweise.back(), u"folgenden Administratoren aufgehoben werden: "));

            ASSERT_TRUE(starte(l, tag, Antwort::Ja)) << "the administrator works again, and lifts the lock";
            EXPECT_TRUE(l.fenster.hinweise.at(0).starts_with(u"Fehlende oder beschädigte Datei am "));
            EXPECT_TRUE(enthält(l.fenster.hinweise.at(0), u" um 08:00 Uhr erkannt!"));
            EXPECT_EQ(l.zellen(u"anna").substr(18, 2), u"UU");
            EXPECT_EQ(l.zellen(u"otto").substr(0, 1), u"½");
            const bool zu_retten = fall.datei != MONAT || (schlecht && !schlecht->empty());
            EXPECT_EQ(l.zellen(u"otto").substr(24, 1), zu_retten ? u"U" : u".") << "younger than the backup";
            l.schließen();
            EXPECT_TRUE(r.namen(u"*Lockfile.txt").empty());
            for (const TextView name : {u"Konfigdaten.dat", u"Mitarbeiterdaten.dat", u"Feiertage.dat"})
                EXPECT_EQ(r.zeilen(DATEN + Text(name)), als_Zeilen(vorher.at(DATEN + Text(name))));
            ASSERT_TRUE(starte(anna, tag));
        }
}

// The question stood on two workstations at once: what the first repair has brought back stays.
TEST(Reparatur, ZweiZurSelbenZeit) {
    Rechner r;
    zwei_Tage_arbeiten(r);
    const std::string gut = *r.inhalt(DATEN + u"Konfigdaten.dat");
    r.schreibe(DATEN + u"Konfigdaten.dat", "Unsinn\r\n");
    Platzlauf l(r, u"chef");
    l.fenster.bei_Frage = [&] { r.schreibe(DATEN + u"Konfigdaten.dat", gut); };
    EXPECT_FALSE(starte(l, 17, Antwort::Ja));
    EXPECT_TRUE(enthält(l.fenster.hinweise.back(), u"wurde inzwischen wiederhergestellt."));
    EXPECT_EQ(r.inhalt(DATEN + u"Konfigdaten.dat"), gut);
    EXPECT_TRUE(r.namen(u"*Lockfile.txt").empty());
}

// Several files at once: each is asked for, one start after the other, and each comes back.
TEST(Reparatur, MehrereDateien) {
    const std::vector<std::vector<Text>> tafel{
        {u"Konfigdaten.dat", u"2603 261110 Data.dat"},
        {u"Mitarbeiterdaten.dat", u"Konfigdaten.dat", u"Feiertage.dat"},
        {}, // everything but the backups
    };
    for (const auto& weg : tafel) {
        Rechner r;
        zwei_Tage_arbeiten(r);
        for (const auto& [pfad, bytes] : r.geteilte_platte()->abbild())
            if (ParentDir(pfad) == DATEN &&
                (weg.empty() || std::count(weg.begin(), weg.end(), Dateiname_aus_Pfad(pfad)) > 0))
                r.platte().entferne(pfad);
        Platzlauf l(r, u"chef");
        std::size_t starts = 0;
        while (starts < 6 && !starte(l, 17, Antwort::Ja))
            ++starts;
        EXPECT_EQ(starts, weg.empty() ? 4U : weg.size()) << zu_utf8(l.fenster.hinweise.back());
        EXPECT_EQ(l.zellen(u"otto").substr(0, 1), u"½");
        EXPECT_EQ(l.programm->daten().K().U(), Konfiguration_Standard(u"chef").U());
        l.schließen();
        Erfassungsplatz märz({u"otto"}, r.geteilte_platte());
        EXPECT_EQ(märz.Tage_auf_Platte(u"otto", u"2603"), u"1");
    }
}

// A digit of the first year: the staff file is whole, and all months would be others.
TEST(Reparatur, FalschesStartjahr) {
    Rechner r;
    zwei_Tage_arbeiten(r);
    auto zeilen = r.zeilen(DATEN + u"Mitarbeiterdaten.dat");
    zeilen[2] = u"2035";
    r.schreibe(DATEN + u"Mitarbeiterdaten.dat", als_Datei(zeilen));
    Platzlauf l(r, u"chef");
    EXPECT_FALSE(starte(l, 17, Antwort::Ja));
    EXPECT_TRUE(enthält(l.fenster.fragen.at(0), u"Startjahr 2035"));
    ASSERT_TRUE(starte(l, 17));
    EXPECT_EQ(l.programm->platz().Startjahr, 2025);
}

TEST(Reparatur, OhneBackupDerStandard) {
    Rechner r;
    {
        Platzlauf l(r, u"chef");
        r.platte().mache_ordner(u"/srv/x/");
        ASSERT_TRUE(starte(l, 16)); // the first run
        l.schließen();
    }
    for (const auto& [pfad, bytes] : r.geteilte_platte()->abbild())
        if (enthält(pfad, u"/Backups/")) r.platte().entferne(pfad);
    r.platte().entferne(DATEN + u"Mitarbeiterdaten.dat");
    r.schreibe(DATEN + u"Konfigdaten.dat", "Unsinn\r\n");
    Platzlauf l(r, u"chef");
    for (int n = 1; n <= 2; ++n) // two files: each is asked for
        EXPECT_FALSE(starte(l, 16, Antwort::Ja));
    EXPECT_TRUE(starte(l, 16));
    EXPECT_TRUE(l.programm->daten().personal.leer());
    EXPECT_EQ(l.programm->daten().K().Firma, u"Probe GmbH");
    bool vermerkt = false;
    for (const Text& zeile : r.zeilen(DATEN + u"Logs/2611 Kalvora.log"))
        vermerkt = vermerkt || enthält(zeile, u"Konfigdaten.dat' aus Backup fehlgeschlagen");
    EXPECT_TRUE(vermerkt);
}

TEST(Reparatur, WasImWegSteht) {
    const struct {
        const char* was;
        std::function<void(Rechner&)> tun;
        Text hinweis;
    } tafel[] = {
        {"no template", [](Rechner& r) { r.platte().entferne(u"/opt/kalvora/KalvoraSetup.dat"); },
         u"Die Datei '/sys-PLATZ1/KalvoraSetup.dat' wurde nicht gefunden. Installieren"},
        {"no backup",
         [](Rechner& r) {
             r.störe({.aufruf = "rename_new", .maske = u"*F.dat", .nummer = 61, .dauernd = true});
         },
         u"Wiederherstellen nicht möglich. Backup vor Wiederherstellen konnte nicht angelegt werden"},
        {"not to be moved",
         [](Rechner& r) { r.störe({.aufruf = "rename_new", .maske = u"*defekt*", .nummer = 70}); },
         u"Wiederherstellen nicht möglich. Die Datei '" + DATEN +
             u"Konfigdaten.dat' konnte nicht gelöscht werden."},
    };
    for (const auto& fall : tafel) {
        SCOPED_TRACE(fall.was);
        Rechner r;
        zwei_Tage_arbeiten(r);
        r.schreibe(DATEN + u"Konfigdaten.dat", "Unsinn\r\n");
        fall.tun(r);
        Platzlauf l(r, u"chef");
        EXPECT_FALSE(starte(l, 17, Antwort::Ja));
        EXPECT_TRUE(l.fenster.hinweise.back().starts_with(fall.hinweis))
            << zu_utf8(l.fenster.hinweise.back());
        EXPECT_EQ(r.inhalt(DATEN + u"Konfigdaten.dat"), "Unsinn\r\n");
        EXPECT_FALSE(r.gibt_es(DATEN + u"Lockfile.txt"));
    }
}

// A file that no repair is for stays as it is, and is named.
TEST(Reparatur, AndereDateienBleiben) {
    Rechner r;
    zwei_Tage_arbeiten(r);
    r.schreibe(DATEN + u"Ferientage.dat", "");
    Platzlauf l(r, u"chef");
    EXPECT_TRUE(starte(l, 17));
    l.schließen();
    EXPECT_TRUE(l.fenster.fragen.empty());
    EXPECT_EQ(r.inhalt(DATEN + u"Ferientage.dat"), "");
    r.schreibe(u"/sys-PLATZ1/KalvoraSetup.dat", "Unsinn\r\n"); // of no use where data are
    EXPECT_TRUE(starte(l, 17));
}

// The file that names the data folder: what it still says, or the own folder, or a way out.
TEST(Reparatur, Kalvoradat) {
    const Text eigene = u"/sys-PLATZ1/Kalvora.dat";
    for (const bool lesbar : {true, false}) {
        Rechner r;
        zwei_Tage_arbeiten(r);
        Platzlauf l(r, u"chef");
        ASSERT_TRUE(l.starten({u"/setpath", DATEN, u"/nowelcomescreen"}));
        l.schließen();
        r.schreibe(eigene, lesbar ? verdorben(*r.inhalt(eigene), 3) : "Unsinn\r\n");
        l.fenster.antwort = Antwort::Ja;
        EXPECT_FALSE(l.starten({u"/nowelcomescreen"}));
        EXPECT_TRUE(enthält(l.fenster.hinweise.back(),
                            lesbar ? u"Wiederherstellen beendet. Starten Sie das Programm jetzt neu"
                                   : u"Aufrufparameter /setpath"));
        EXPECT_EQ(l.starten({u"/nowelcomescreen"}), lesbar);
        EXPECT_TRUE(l.starten({u"/setpath", DATEN, u"/nowelcomescreen"}));
    }
}

// --- the lock ---------------------------------------------------------------------------------------------

TEST(Sperre, BeimStart) {
    const struct {
        const char* inhalt;
        const char16_t* benutzer;
        bool läuft, bleibt;
        const char16_t* hinweis;
    } tafel[] = {
        {"Umbau|chef\r\n", u"anna", false, true,
         u"Programmaufruf gesperrt:\n\nUmbau.\n\nDiese Sperre kann nur von Benutzer 'chef' aufgehoben "
         u"werden"},
        {"Umbau.|chef|Petra Chef\r\n", u"anna", false, true,
         u"Programmaufruf gesperrt:\n\nUmbau.\n\nDiese Sperre kann nur von Benutzer 'chef' (Petra Chef) "
         u"aufgehoben werden"},
        {"Umbau|CHEF\r\n", u"chef", true, true,
         u"Achtung: Sie haben den Programmaufruf für andere Benutzer gesperrt. Diese erhalten beim "
         u"Programmaufruf den Hinweis:\n\nUmbau"},
        {"Dummy\r\n", u"anna", true, false, nullptr},
        {"", u"anna", true, true, nullptr},
        {"Arbeit|x\r\n/srv/x/Data/Konfigdaten.dat", u"anna", false, true,
         u"Programmaufruf gesperrt:\n\nArbeit."},
        {"Arbeit|x\r\nNoFile 03.2026\r\n16.11.26|08:00\r\n", u"chef", true, true,
         u"Fehlende oder beschädigte Datei am 16.11.26 um 08:00 Uhr erkannt!\n\nFehlende Datei für Monat: "
         u"03.2026"},
    };
    for (const auto& fall : tafel) {
        SCOPED_TRACE(fall.inhalt);
        Rechner r;
        Firma().anlegen(r, DATEN);
        r.schreibe(DATEN + u"Lockfile.txt", fall.inhalt);
        Platzlauf l(r, fall.benutzer);
        EXPECT_EQ(starte(l, 16), fall.läuft);
        EXPECT_EQ(r.gibt_es(DATEN + u"Lockfile.txt"), fall.bleibt);
        ASSERT_EQ(l.fenster.hinweise.size(), fall.hinweis ? 1U : 0U);
        if (fall.hinweis) {
            EXPECT_TRUE(l.fenster.hinweise[0].starts_with(fall.hinweis)) << zu_utf8(l.fenster.hinweise[0]);
        }
    }
}

TEST(Sperre, VorJedemSpeichern) {
    Rechner r;
    Firma().anlegen(r, DATEN);
    Platzlauf l(r, u"anna");
    ASSERT_TRUE(starte(l, 16));
    const auto vorher = r.geteilte_platte()->abbild();
    r.schreibe(DATEN + u"Lockfile.txt", "Umbau|chef\r\n");
    l.trage_ein(u"anna", 20, 21, 1);
    l.programm->schleife();
    EXPECT_EQ(l.programm->ende(), 2);
    EXPECT_TRUE(l.fenster.hinweise.back().starts_with(u"Programmaufruf gesperrt:\n\nUmbau."));
    EXPECT_EQ(r.namen(DATEN + u"2611*"), std::vector<Text>{DATEN + u"2611 261110 Data.dat"});

    Platzlauf chef(r, u"chef", u"/", u"PLATZ2");
    ASSERT_TRUE(starte(chef, 16)) << "his own lock";
    chef.fenster.hinweise.clear();
    chef.fenster_().user_key({u"F6", {.ctrl = true}});
    EXPECT_TRUE(enthält(chef.fenster.hinweise.at(0), u"gesperrt"));
    EXPECT_TRUE(r.gibt_es(DATEN + u"Lockfile.txt")) << "the write test would take it away";
}

// --- errors while the program starts -----------------------------------------------------------------------

// The remembered folder is on a volume that comes, or does not, while the splash window waits.
TEST(Warten, AufDenDatenordner) {
    enum class Was { kommt_von_selbst, von_Hand, aufgegeben, Zeit_vorbei };
    for (const Was was : {Was::kommt_von_selbst, Was::von_Hand, Was::aufgegeben, Was::Zeit_vorbei}) {
        SCOPED_TRACE(static_cast<int>(was));
        Rechner r;
        Firma().anlegen(r, DATEN);
        Platzlauf l(r, u"chef");
        ASSERT_TRUE(l.starten({u"/setpath", DATEN, u"/nowelcomescreen"}));
        l.schließen();
        ASSERT_EQ(r.rename(u"/srv/x/", u"/srv/ausgehängt/"), 0);
        l.fenster.hinweise.clear();
        int pausen = 0;
        const auto splash = [&] { return dynamic_cast<frmStart*>(l.programm->app().active_form()); };
        l.fenster.beim_Warten = [&] {
            if (++pausen != 10) return;
            if (was == Was::aufgegeben) splash()->cmdAuswahl2.user_click();
            if (was == Was::kommt_von_selbst || was == Was::von_Hand)
                r.rename(u"/srv/ausgehängt/", u"/srv/x/");
            if (was == Was::von_Hand) splash()->cmdAuswahl1.user_click();
        };
        const bool läuft = was == Was::kommt_von_selbst || was == Was::von_Hand;
        EXPECT_EQ(l.starten({u"/nowelcomescreen"}), läuft);
        EXPECT_EQ(l.fenster.hinweise, std::vector<Text>{u"Der Datenordner /srv/x/ ist nicht verfügbar"});
        // Half a second each; one pause for the last text, and one before the main window appears.
        EXPECT_EQ(pausen, was == Was::kommt_von_selbst ? 22 : was == Was::Zeit_vorbei ? 61 : 11);
        if (!läuft) {
            EXPECT_EQ(l.programm->ende(), 2);
            EXPECT_TRUE(r.namen(u"/srv/x/*").empty()) << "no new company in its place";
        }
        l.fenster.beim_Warten = {};
    }
}

TEST(Warten, EinSchrittWirdWiederholt) {
    Rechner r;
    Firma().anlegen(r, DATEN);
    Platzlauf l(r, u"chef");
    ASSERT_TRUE(starte(l, 16));
    l.schließen();
    r.störe({.aufruf = "open", .maske = u"Mitarbeiterdaten.dat", .nummer = FEHLER_NETZ, .dauernd = true});
    int pausen = 0;
    l.fenster.beim_Warten = [&] {
        if (++pausen == 5) r.störe_nicht();
    };
    EXPECT_TRUE(starte(l, 16));
    EXPECT_EQ(l.fenster.hinweise, std::vector<Text>{u"Der Datenordner /srv/x/ ist nicht verfügbar"});
    l.schließen();
    l.fenster.beim_Warten = {};
    r.störe({.aufruf = "open", .maske = u"Mitarbeiterdaten.dat", .nummer = FEHLER_NETZ, .dauernd = true});
    EXPECT_FALSE(starte(l, 16)) << "a folder that is there is not waited for without end";
}

TEST(Start, ErzwungenerStart) {
    for (const bool erzwungen : {false, true}) {
        Rechner r;
        Firma().anlegen(r, DATEN);
        // The folder cannot be listed from the reading of the ini file until the window looks again.
        bool gestört = false;
        r.davor = [&](const std::string& aufruf, const Text& pfad) {
            if (aufruf == "info" && enthält(pfad, u"Kalvora_chef.ini") && !std::exchange(gestört, true))
                r.störe({.aufruf = "list", .maske = u"Data", .nummer = 57, .dauernd = true});
            if (gestört && aufruf == "open" && enthält(pfad, u"Konfigdaten.dat")) r.störe_nicht();
        };
        Platzlauf l(r, u"chef");
        auto aufruf = AUFRUF;
        if (erzwungen) aufruf.push_back(u"/enforcestart");
        EXPECT_EQ(l.starten(aufruf), erzwungen);
        ASSERT_EQ(l.fenster.hinweise.size(), 1U);
        EXPECT_EQ(l.fenster.hinweise[0].ends_with(u"Das Programm wird beendet."), !erzwungen);
    }
}

TEST(Start, VersionWirdVermerktOderGemeldet) {
    for (const auto& [version, nachher, gemeldet] : {std::tuple{u"1.9.9", PROGRAMMVERSION, false},
                                                     {u"1.16.2", TextView(u"1.16.2"), true},
                                                     {PROGRAMMVERSION.data(), PROGRAMMVERSION, false}}) {
        Rechner r;
        Firma().anlegen(r, DATEN);
        auto zeilen = r.zeilen(DATEN + u"Konfigdaten.dat");
        zeilen[2] = version;
        r.schreibe(DATEN + u"Konfigdaten.dat", als_Datei(zeilen));
        Platzlauf l(r, u"chef");
        EXPECT_TRUE(starte(l, 16));
        EXPECT_EQ(r.zeilen(DATEN + u"Konfigdaten.dat")[2], nachher);
        EXPECT_EQ(l.fenster.hinweise.size(), gemeldet ? 1U : 0U);
    }
}

TEST(Start, ErsterStartDesTages) {
    Rechner r;
    Firma().anlegen(r, DATEN);
    Platzlauf l(r, u"chef");
    const auto backups = [&](TextView art) {
        return r.namen(DATEN + u"Backups/*" + Text(art) + u".dat").size();
    };
    const struct {
        int tag;
        std::size_t M, T;
    } tafel[] = {{16, 1, 0}, {16, 1, 0}, {17, 1, 1}, {17, 1, 1}, {18, 1, 2}};
    for (const auto& fall : tafel) {
        ASSERT_TRUE(starte(l, fall.tag));
        l.schließen();
        EXPECT_EQ(backups(u"M"), fall.M) << fall.tag;
        EXPECT_EQ(backups(u"T"), fall.T) << fall.tag;
    }
    r.störe({.aufruf = "rename_new", .maske = u"*T.dat", .nummer = 61, .dauernd = true});
    EXPECT_TRUE(starte(l, 19)) << "a backup that fails is passed over";
    EXPECT_TRUE(l.fenster.hinweise.empty());
}

} // namespace
} // namespace kalvora
