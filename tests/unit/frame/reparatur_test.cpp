// Damaged and missing files from the question to the start behind the repair, with the backups that the
// program makes itself; the lock; and the wait for a data folder that is not there.
#include "hilfen/programmlauf.h"

namespace kalvora {
namespace {

const Text DATEN = u"/srv/x/Data/";
const std::vector<Text> AUFRUF{u"/path", DATEN, u"/nowelcomescreen"};
const Text MONAT = DATEN + u"2611 261117 Data.dat";

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

// Nothing: the file has gone.
std::optional<std::string> beschädigt(std::string bytes, std::string_view wie) {
    if (wie == "gone") return std::nullopt;
    if (wie == "empty") return "";
    if (wie == "half") return bytes.substr(0, bytes.size() / 2);
    if (wie == "NULs") return std::string(bytes.size(), '\0');
    bytes[2] = static_cast<char>(bytes[2] ^ 0x10); // the head
    return bytes;
}

TEST(Reparatur, JedeDateiKommtZurück) {
    const Text K = DATEN + u"Konfigdaten.dat", M = DATEN + u"Mitarbeiterdaten.dat";
    const struct {
        const char* schaden;
        Text datei;
    } tafel[] = {
        {"head", K},     {"half", K},      {"gone", K},    {"NULs", M}, {"gone", DATEN + u"Feiertage.dat"},
        {"head", MONAT}, {"empty", MONAT}, {"gone", MONAT}};
    for (const auto& fall : tafel)
        for (const int tag : {17, 18}) { // on the 18th the day's own backup holds the damage already
            SCOPED_TRACE(zu_utf8(fall.datei) + " " + fall.schaden + (tag == 18 ? " on a new day" : ""));
            Rechner r;
            zwei_Tage_arbeiten(r);
            const auto vorher = r.geteilte_platte()->abbild();
            const auto schlecht = beschädigt(*r.inhalt(fall.datei), fall.schaden);
            if (schlecht)
                r.schreibe(fall.datei, *schlecht);
            else
                r.platte().entferne(fall.datei);

            Platzlauf l(r, u"chef");
            EXPECT_FALSE(starte(l, tag, Antwort::Nein)) << "a No ends the program";
            ASSERT_EQ(l.fenster.fragen.size(), 1U);
            EXPECT_EQ(l.fenster.hinweise.back(), u"Das Programm wird beendet");
            EXPECT_TRUE(r.inhalt(fall.datei) == schlecht) << "and touches nothing";
            EXPECT_TRUE(r.namen(u"*Lockfile.txt").empty());

            EXPECT_FALSE(starte(l, tag, Antwort::Ja)) << "a repair ends the program";
            EXPECT_TRUE(l.fenster.hinweise.back().starts_with(u"Wiederherstellen beendet.\n\n"))
                << zu_utf8(l.fenster.hinweise.back());
            const Text log = r.zeilen(DATEN + u"Logs/2611 Kalvora.log").back();
            EXPECT_TRUE(enthält(log, u"|KalvoAdmin|Startfehler: ")) << zu_utf8(log);
            const auto kopien = r.namen(fall.datei + u" defekt *");
            EXPECT_EQ(kopien.size(), schlecht ? 1U : 0U);
            for (const Text& kopie : kopien) {
                EXPECT_TRUE(r.inhalt(kopie) == schlecht) << "nothing is deleted";
                EXPECT_TRUE(enthält(l.fenster.hinweise.back(), Dateiname_aus_Pfad(kopie)));
            }
            EXPECT_EQ(r.namen(u"*/Backups/*F.dat").size(), fall.datei == MONAT && !schlecht ? 0U : 1U);
            EXPECT_TRUE(r.inhalt(DATEN + u"Lockfile.txt")->starts_with("Wegen Wartungsarbeiten"));

            Platzlauf anna(r, u"anna", u"/", u"PLATZ2");
            EXPECT_FALSE(starte(anna, tag)) << "locked for the staff";
            EXPECT_TRUE(enthält(anna.fenster.hinweise.back(), u"folgenden Administratoren aufgehoben"));

            ASSERT_TRUE(starte(l, tag, Antwort::Ja)) << "the administrator works again, and lifts the lock";
            EXPECT_TRUE(l.fenster.hinweise.at(0).starts_with(u"Fehlende oder beschädigte Datei am "));
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

// Everything has gone but the backups: each kind is asked for, one start after the other, and comes back.
TEST(Reparatur, AlleDateien) {
    Rechner r;
    zwei_Tage_arbeiten(r);
    for (const Text& pfad : r.namen(DATEN + u"*"))
        if (ParentDir(pfad) == DATEN) r.platte().entferne(pfad);
    Platzlauf l(r, u"chef");
    for (int n = 1; n <= 4; ++n)
        EXPECT_FALSE(starte(l, 17, Antwort::Ja)) << n;
    ASSERT_TRUE(starte(l, 17, Antwort::Ja)) << zu_utf8(l.fenster.hinweise.back());
    EXPECT_EQ(l.zellen(u"otto").substr(0, 1), u"½");
    EXPECT_EQ(l.programm->daten().K().U(), Konfiguration_Standard(u"chef").U());
    l.schließen();
    EXPECT_EQ(Erfassungsplatz({u"otto"}, r.geteilte_platte()).Tage_auf_Platte(u"otto", u"2603"), u"1");
}

// On the day on which the years are to move on: first what is missing comes back.
TEST(Reparatur, FehlenderMonatImJanuar) {
    Rechner r;
    zwei_Tage_arbeiten(r);
    r.platte().entferne(DATEN + u"2701 261110 Data.dat");
    Platzlauf l(r, u"chef");
    l.fenster.antwort = Antwort::Ja;
    for (const bool erster : {true, false}) {
        l.uhr.stelle({{2027, 1, 4}, 8, 0, 0});
        l.fenster.fragen.clear();
        EXPECT_EQ(l.starten(AUFRUF), !erster);
        ASSERT_FALSE(l.fenster.fragen.empty());
        EXPECT_EQ(enthält(l.fenster.fragen[0], u"gefunden: 01.2027"), erster) << zu_utf8(l.fenster.fragen[0]);
    }
    EXPECT_TRUE(l.trage_ein(u"anna", 20, 20, 1));
    EXPECT_TRUE(r.gibt_es(DATEN + u"2701 270104 Data.dat"));
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
}

TEST(Reparatur, WasImWegSteht) {
    const auto gestört = [](const Störung& s) { return [=](Rechner& r) { r.störe(s); }; };
    const struct {
        std::function<void(Rechner&)> tun;
        Text hinweis;
    } tafel[] = {
        {[](Rechner& r) { r.platte().entferne(u"/opt/kalvora/KalvoraSetup.dat"); },
         u"Die Datei '/sys-PLATZ1/KalvoraSetup.dat' wurde nicht gefunden. Installieren"},
        {gestört({.aufruf = "rename_new", .maske = u"*F.dat", .nummer = 61, .dauernd = true}),
         u"Wiederherstellen nicht möglich. Backup vor Wiederherstellen konnte nicht angelegt werden"},
        {gestört({.aufruf = "rename_new", .maske = u"*defekt*", .nummer = 70}),
         u"Wiederherstellen nicht möglich. Die Datei '/srv/x/Data/Konfigdaten.dat' konnte nicht gelöscht"},
    };
    for (const auto& fall : tafel) {
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

// The file that names the data folder: what it still says, or the own folder, or a way out.
TEST(Reparatur, Kalvoradat) {
    const Text eigene = u"/sys-PLATZ1/Kalvora.dat";
    for (const bool lesbar : {true, false}) {
        Rechner r;
        zwei_Tage_arbeiten(r);
        Platzlauf l(r, u"chef");
        ASSERT_TRUE(l.starten({u"/setpath", DATEN, u"/nowelcomescreen"}));
        l.schließen();
        r.schreibe(eigene, lesbar ? *beschädigt(*r.inhalt(eigene), "head") : "Unsinn\r\n");
        l.fenster.antwort = Antwort::Ja;
        EXPECT_FALSE(l.starten({u"/nowelcomescreen"}));
        EXPECT_TRUE(enthält(l.fenster.hinweise.back(),
                            lesbar ? u"Wiederherstellen beendet. Starten Sie das Programm jetzt neu"
                                   : u"Aufrufparameter /setpath"));
        EXPECT_EQ(l.starten({u"/nowelcomescreen"}), lesbar);
        EXPECT_TRUE(l.starten({u"/setpath", DATEN, u"/nowelcomescreen"}));
    }
}

// A month that was cut where a line ends is noticed by the newest backup, before the day's one holds the rest
// for the whole; one that was torn, at once. Either way the rows come back.
TEST(Reparatur, GekürzterMonat) {
    for (const auto& [am_Zeilenende, seitdem] : {std::pair{true, 0}, {true, 6}, {false, 0}}) {
        Rechner r;
        zwei_Tage_arbeiten(r);
        Platzlauf l(r, u"chef");
        ASSERT_TRUE(starte(l, 18)); // makes a backup
        l.schließen();
        std::string bytes = *r.inhalt(MONAT);
        bytes.resize(am_Zeilenende ? bytes.rfind("\r\n", bytes.size() - 3) + 2 : bytes.size() - 9);
        for (int n = 0; n < seitdem; ++n) // it may be longer by now than it was
            bytes += als_Datei({A(u"chef", u"1")}, static_cast<std::uint8_t>(40 + n));
        r.schreibe(MONAT, bytes);
        EXPECT_EQ(starte(l, am_Zeilenende ? 19 : 18, Antwort::Ja), !am_Zeilenende);
        EXPECT_EQ(l.fenster.fragen.size(), am_Zeilenende ? 1U : 0U);
        EXPECT_TRUE(enthält(l.fenster.hinweise.back(), am_Zeilenende ? u"Grundlage ist die Sicherung vom "
                                                                     : u"Fehlerhafte Daten erkannt"));
        if (!am_Zeilenende) l.schließen();
        ASSERT_TRUE(starte(l, 19));
        EXPECT_EQ(l.zellen(u"otto").substr(24, 1), u"U");
        EXPECT_EQ(l.zellen(u"anna").substr(18, 2), u"UU");
        EXPECT_EQ(l.zellen(u"chef").substr(0, 1), seitdem > 0 ? u"U" : u".");
    }
}

// A row that was hurt since yesterday comes back although today's backup holds the damage already; of a torn
// version of today come those persons who have nothing left. What was taken back does not return.
TEST(Reparatur, ZeilenAusFrüherenSicherungen) {
    const struct {
        int tag;
        bool abgerissen;
        Text otto, anna;
    } tafel[] = {{18, false, u"U", u"UU"}, {19, false, u"U", u"UU"}, {17, true, u".", u"UU"}};
    for (const auto& fall : tafel) {
        SCOPED_TRACE(fall.tag);
        Rechner r;
        zwei_Tage_arbeiten(r);
        Platzlauf l(r, u"chef");
        if (fall.tag > 17) {
            ASSERT_TRUE(starte(l, 18));
            l.schließen();
        }
        std::string bytes = *r.inhalt(MONAT);
        if (fall.abgerissen)
            bytes.resize(bytes.find("\r\n", 40) - 3); // in the first row
        else
            bytes[bytes.rfind('\n', bytes.size() - 2) + 2] ^= 0x10; // the last row's kind
        r.schreibe(MONAT, bytes);
        ASSERT_TRUE(starte(l, fall.tag));
        EXPECT_EQ(l.zellen(u"otto").substr(24, 1), fall.otto);
        EXPECT_EQ(l.zellen(u"anna").substr(18, 2), fall.anna);
    }
}

// Whoever cannot read the newest backup, or list them, starts all the same; a backup that can be read tells.
TEST(Reparatur, UnlesbareSicherungen) {
    for (const Störung& s : {Störung{.aufruf = "open", .maske = u"*T.dat", .nummer = 70, .dauernd = true},
                             Störung{.aufruf = "list", .maske = u"Backups", .nummer = 70, .dauernd = true}}) {
        Rechner r;
        zwei_Tage_arbeiten(r);
        Platzlauf l(r, u"chef");
        r.störe(s);
        EXPECT_TRUE(starte(l, 18)) << zu_utf8(l.fenster.hinweise.empty() ? Text()
                                                                         : l.fenster.hinweise.back());
        EXPECT_TRUE(l.fenster.fragen.empty());
        r.störe_nicht();
    }
}

// The staff list goes back to one that does not know somebody's rows: they stay while the lock stands, also
// where the lock was an ordinary one, and a backup holds them when it goes.
TEST(Reparatur, ZeilenUnbekannterBleiben) {
    Rechner r;
    zwei_Tage_arbeiten(r);
    auto zeilen = r.zeilen(MONAT);
    zeilen.push_back(A(u"neu", u"1"));
    r.schreibe(MONAT, als_Datei(zeilen));
    r.schreibe(DATEN + u"Lockfile.txt", "Umbau|chef\r\n");
    Platzlauf l(r, u"chef");
    for (const TextView name : {u"Mitarbeiterdaten.dat", u"Feiertage.dat"}) {
        r.schreibe(DATEN + Text(name), "Unsinn\r\n");
        EXPECT_FALSE(starte(l, 17, Antwort::Ja));
    }
    EXPECT_TRUE(r.inhalt(DATEN + u"Lockfile.txt")
                    ->starts_with("Umbau|chef\r\n/srv/x/Data/Mitarbeiterdaten.dat, Feiertage.dat\r\n"));
    ASSERT_TRUE(starte(l, 18));
    EXPECT_TRUE(l.trage_ein(u"anna", 27, 27, 1));
    const auto steht = r.zeilen(DATEN + u"2611 261118 Data.dat");
    EXPECT_EQ(std::count(steht.begin(), steht.end(), A(u"neu", u"1")), 1);
    const auto backups = r.namen(u"*/Backups/*T.dat").size();
    r.störe({.aufruf = "rename_new", .maske = u"*T.dat", .nummer = 61});
    l.fenster.antwort = Antwort::Ja;
    l.schließen();
    EXPECT_TRUE(r.gibt_es(DATEN + u"Lockfile.txt")) << "not without a backup";
    ASSERT_TRUE(starte(l, 18, Antwort::Ja));
    EXPECT_FALSE(r.gibt_es(DATEN + u"Lockfile.txt"));
    EXPECT_EQ(r.namen(u"*/Backups/*T.dat").size(), backups + 1);
    EXPECT_TRUE(l.trage_ein(u"anna", 26, 26, 1));
    EXPECT_EQ(r.zeilen(DATEN + u"2611 261118 Data.dat").size(), steht.size() + 1) << "not yet cleaned up";
}

// A workstation's copy of a delivered file is no reason to install anew.
TEST(Reparatur, BeschädigteVorlage) {
    for (const TextView name : {u"KalvoraSetup.dat", u"KalvoraFtg.dat"})
        for (const std::string_view schaden : {"empty", "head"})
            for (const bool erster_Lauf : {true, false}) {
                SCOPED_TRACE(zu_utf8(Text(name)) + " " + std::string(schaden));
                Rechner r;
                r.platte().mache_ordner(u"/srv/x/");
                Platzlauf l(r, u"chef");
                if (!erster_Lauf) {
                    ASSERT_TRUE(starte(l, 16));
                    l.schließen();
                    for (const Text& pfad : r.namen(u"*/Backups/*.dat"))
                        r.platte().entferne(pfad);
                    r.platte().entferne(DATEN + u"Feiertage.dat");
                }
                const std::string heil = *r.inhalt(u"/opt/kalvora/" + Text(name));
                r.schreibe(u"/sys-PLATZ1/" + Text(name), *beschädigt(heil, schaden));
                EXPECT_EQ(starte(l, 16, Antwort::Ja), erster_Lauf) << zu_utf8(l.fenster.hinweise.back());
                EXPECT_TRUE(erster_Lauf || starte(l, 16));
            }
}

// --- the lock ---------------------------------------------------------------------------------------------

// The scripts show the lock of somebody with a name, and that of a repair.
TEST(Sperre, BeimStart) {
    const struct {
        const char* inhalt;
        const char16_t* benutzer;
        bool läuft, bleibt;
        Text hinweis; // its beginning
    } tafel[] = {
        {"Umbau|chef\r\n", u"anna", false, true, u"Programmaufruf gesperrt:\n\nUmbau.\n\nDiese Sperre kann"},
        {"Umbau|CHEF\r\n", u"chef", true, true, u"Achtung: Sie haben den Programmaufruf für andere"},
        {"Dummy\r\n", u"anna", true, false, u""},
        {"Umbau|\r\n", u"anna", true, false, u""}, // nobody could lift it
        {"", u"anna", true, true, u""},
        {"Arbeit|x\r\n/srv/x/", u"anna", false, true, u"Programmaufruf gesperrt:\n\nArbeit."},
    };
    for (const auto& fall : tafel) {
        SCOPED_TRACE(fall.inhalt);
        Haus r;
        r.schreibe(DATEN + u"Lockfile.txt", fall.inhalt);
        Platzlauf l(r, fall.benutzer);
        EXPECT_EQ(starte(l, 16), fall.läuft);
        EXPECT_EQ(r.gibt_es(DATEN + u"Lockfile.txt"), fall.bleibt);
        ASSERT_EQ(l.fenster.hinweise.empty(), fall.hinweis.empty());
        EXPECT_TRUE(letzter_Hinweis(l).starts_with(fall.hinweis)) << zu_utf8(letzter_Hinweis(l));
    }
}

TEST(Sperre, VorJedemSpeichern) {
    Haus r;
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

// The remembered folder is on a volume that comes while the splash window waits; one that does not is in the
// scripts.
TEST(Warten, AufDenDatenordner) {
    for (const bool von_Hand : {false, true}) {
        Haus r;
        Platzlauf& l = r.chef;
        ASSERT_TRUE(l.starten({u"/setpath", DATEN, u"/nowelcomescreen"}));
        l.schließen();
        ASSERT_EQ(r.rename(u"/srv/x/", u"/srv/ausgehängt/"), 0);
        int pausen = 0;
        l.fenster.beim_Warten = [&] {
            if (++pausen != 10) return;
            r.rename(u"/srv/ausgehängt/", u"/srv/x/");
            auto* splash = dynamic_cast<frmStart*>(l.programm->app().active_form());
            if (von_Hand) splash->cmdAuswahl1.user_click();
        };
        EXPECT_TRUE(l.starten({u"/nowelcomescreen"}));
        EXPECT_EQ(l.fenster.hinweise, std::vector<Text>{u"Der Datenordner /srv/x/ ist nicht verfügbar"});
        // Half a second each; one pause for the last text, and one before the main window appears.
        EXPECT_EQ(pausen, von_Hand ? 11 : 22);
        l.fenster.beim_Warten = {};
    }
}

// Logs that were put on a share of their own: no folder comes to life in place of the share.
TEST(Warten, AufDenLogordner) {
    Haus r;
    Platzlauf& l = r.chef;
    ASSERT_TRUE(l.starten({u"/setpath", DATEN, u"/nowelcomescreen"}));
    l.schließen();
    r.schreibe(u"/sys-PLATZ1/Kalvora.dat",
               als_Datei({u"[Kalvora]", u"data_pfad=" + DATEN, u"log_pfad=/nas/Logs/"}));
    EXPECT_FALSE(l.starten({u"/nowelcomescreen"}));
    EXPECT_EQ(l.fenster.hinweise.at(0), u"Der Ordner für das Logbuch /nas/Logs/ ist nicht verfügbar");
    r.platte().mache_ordner(u"/nas/");
    EXPECT_TRUE(l.starten({u"/nowelcomescreen"}));
    EXPECT_TRUE(r.gibt_es(u"/nas/Logs"));
}

TEST(Warten, EinSchrittWirdWiederholt) {
    Haus r;
    Platzlauf& l = r.chef;
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
        Haus r;
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
    Haus r; // of an unfinished restore half a state may stand there
    r.störe({.aufruf = "info", .maske = u"000000 000000 I.dat", .nummer = 57, .dauernd = true});
    EXPECT_FALSE(r.chef.starten({u"/path", DATEN, u"/nowelcomescreen", u"/enforcestart"}));
}

TEST(Start, VersionWirdVermerktOderGemeldet) {
    for (const auto& [version, nachher, gemeldet] : {std::tuple{u"1.9.9", PROGRAMMVERSION, false},
                                                     {u"1.16.2", TextView(u"1.16.2"), true},
                                                     {PROGRAMMVERSION.data(), PROGRAMMVERSION, false}}) {
        Haus r;
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
    Haus r;
    Platzlauf& l = r.chef;
    for (const auto& [tag, backups] : {std::pair{16, 1U}, {16, 1U}, {17, 2U}, {17, 2U}}) {
        ASSERT_TRUE(starte(l, tag));
        l.schließen();
        EXPECT_EQ(r.namen(DATEN + u"Backups/*.dat").size(), backups) << tag;
    }
    r.störe({.aufruf = "rename_new", .maske = u"*T.dat", .nummer = 61, .dauernd = true});
    EXPECT_TRUE(starte(l, 19)) << "a backup that fails is passed over";
    EXPECT_TRUE(l.fenster.hinweise.empty());
}

} // namespace
} // namespace kalvora
