#include "sicherungsplatz.h"

namespace kalvora {
namespace {

using Namen = std::vector<Text>;

// Names of the members of the newest backup.
Namen Inhalt(Sicherungsplatz& p) {
    Namen namen;
    const std::string bytes = p.fs.inhalt(p.sicherung(p.backups.Backupname())).value_or("");
    if (const auto alle = Container_lesen(bytes))
        for (const auto& m : *alle)
            namen.push_back(m.name + u":" + ziffern(static_cast<long>(m.bytes.size())));
    return namen;
}

void heute(Sicherungsplatz& p, const Text& yymmdd) {
    p.platz.Heute_S = yymmdd;
    p.platz.Heute = FormatDatumSD(yymmdd);
}

// "240301T" is the first backup of that day, "240301T2" the second; other names stand as they are.
Namen Liste(TextView text) {
    Namen namen = teilen(text, u'|');
    for (Text& name : namen)
        if (name.size() <= 8 && nur_Ziffern(name.substr(0, 6)))
            name =
                name.substr(0, 6) + u" 00000" + (name.size() > 7 ? name[7] : u'1') + u" " + name[6] + u".dat";
    return namen;
}

TEST(Backups, Aufbewahrung) {
    struct Fall {
        const char* was;
        Text heute, maske;
        int anzahl;
        TextView gehen, bleiben;
    };
    constexpr TextView ERSTES = u"240301T",
                       SIEBEN = u"240302T|240303T|240304T|240305T|240306T|240307T|240308T";
    for (const Fall& f :
         {Fall{"the eighth goes", u"240308", u"*T.dat", 7, ERSTES, SIEBEN},
          Fall{"not yet a week old", u"240307", u"*T.dat", 1, u"240229T", u"240301T|240302T"},
          Fall{"both of one day", u"240320", u"*T.dat", 1, u"240301T|240301T2", u"240302T"},
          Fall{"one of two of a day", u"240320", u"*T.dat", 1, ERSTES, u"240301T2"},
          Fall{"the month's end", u"240302", u"*T.dat", 1, u"240228T", ERSTES},
          Fall{"none is kept; case", u"240301", u"*e.DAT", 0, u"240301E", u"240301T|000000 000000 I.dat"},
          Fall{"foreign names", u"240320", u"*T.dat", 0, ERSTES, u"2* 1 T.dat|KopieT.dat"},
          Fall{"logs: 2404 is a number too", u"240401", u"*Kalvora.log", 1, u"2403 Kalvora.log",
               u"2403 ÜStunden.log|2404 Kalvora.log"}}) {
        Sicherungsplatz p;
        heute(p, f.heute);
        for (const Text& name : Liste(Text(f.gehen) + u"|" + Text(f.bleiben)))
            p.fs.schreibe(p.sicherung(name), "x");
        p.fs.platte().mache_ordner(p.sicherung(u"200101 000001 T.dat"));
        p.backups.Alte_Dateien_löschen(p.platz.Backuppfad, f.maske, f.anzahl);
        auto bleiben = Liste(f.bleiben);
        std::sort(bleiben.begin(), bleiben.end());
        EXPECT_EQ(p.namen(p.platz.Backuppfad), bleiben) << f.was;
        EXPECT_TRUE(p.fs.gibt_es(p.sicherung(u"200101 000001 T.dat"))) << "a folder is no file";
    }
}

TEST(Backups, Aufräumen_nach_den_Einstellungen) {
    struct Fall {
        int logmonate; // Setting(29)
        int anzber, anzgru;
        bool gesperrt;
        std::size_t logs;
        Namen bleiben; // in the data folder
    };
    const Namen beide{u"Mitarbeiteranzber.dat", u"Mitarbeiteranzgru.dat"};
    for (const Fall& f :
         {Fall{0, 2, 0, false, 35, beide}, Fall{2, 1, 0, false, 3, {u"Mitarbeiteranzgru.dat"}},
          Fall{9, 0, 1, false, 10, {}}, Fall{9, 0, 1, true, 10, beide}}) {
        Sicherungsplatz p;
        p.konfig.ändern() = Konfiguration_Standard(u"Muster");
        p.konfig.Setting_setzen(29, f.logmonate);
        p.konfig.Setting_setzen(1, f.anzber);
        p.konfig.Setting_setzen(17, f.anzgru);
        p.dateien.Reparatursperre = f.gesperrt;
        for (const Text& name : beide)
            p.fs.schreibe(p.daten(name), "x");
        for (const TextView rest : {u".261116 120000 T.dat.PLATZ9-1-1.neu", // of those that were killed
                                    u".000000 000000 I.dat.1.inhaber", u".a.0.claim"})
            p.fs.schreibe(p.sicherung(rest), "x");
        const Namen fremd{u".000000 000000 I.dat.unlesbar", u".DS_Store", u".a.dat.ersetzt"};
        for (const Text& name : fremd)
            p.fs.schreibe(p.sicherung(name), "x");
        heute(p, u"261117");
        p.backups.Aufräumen();
        EXPECT_EQ(p.namen(p.platz.Backuppfad).size(), 6U) << "only a day old";
        EXPECT_EQ(p.namen(p.platz.Datenpfad), beide);
        for (int m = 0; m < 40; ++m)
            p.fs.schreibe(
                p.platz.Logpfad + ziffern(23 + m / 12, 2) + ziffern(m % 12 + 1, 2) + u" Kalvora.log", "x");
        heute(p, u"261118");
        p.backups.Aufräumen();
        EXPECT_EQ(p.namen(p.platz.Datenpfad), f.bleiben);
        EXPECT_EQ(p.namen(p.platz.Logpfad).size(), f.logs);
        EXPECT_EQ(p.namen(p.platz.Backuppfad), fremd);
    }
}

TEST(Backups, Inhalt_und_Namen) {
    Sicherungsplatz p;
    for (const TextView name :
         {u"b.dat", u"A.DAT", u"Kaputt.dat", u"x.txt", u".a.dat.neu", u"~a.dat", u"a.dat"})
        p.fs.schreibe(p.daten(name), "Aa\r\n");
    p.fs.schreibe(p.daten(u"leer.dat"), "");
    p.fs.schreibe(p.daten(u"Leerzeile.dat"), "\r\n\r\n");
    p.fs.schreibe(p.platz.Logpfad + u"2611 Kalvora.log", "Aa\r\nB");
    p.fs.platte().mache_ordner(p.daten(u"Ordner.dat"));
    int fertig = 0;
    p.backups.Fortschritt = [&](int n, int alle) {
        EXPECT_EQ(n, ++fertig);
        EXPECT_EQ(alle, 5);
    };
    EXPECT_TRUE(p.backups.Backup_erstellen(u"T", u"KAPUTT.dat"));
    EXPECT_EQ(p.backups.Backupname(), u"261116 120000 T.dat");
    // The second spelling of a name could not be told apart by whoever restores it.
    EXPECT_EQ(Inhalt(p),
              (Namen{u"A.DAT:4", u"Leerzeile.dat:4", u"b.dat:4", u"leer.dat:0", u"2611 Kalvora.log:4"}));
    p.backups.Fortschritt = {};
    EXPECT_TRUE(p.backups.Backup_erstellen(u"T"));
    EXPECT_EQ(p.backups.Backupname(), u"261116 120001 T.dat") << "same second";
    p.uhr.stelle({{2026, 11, 16}, 23, 59, 59});
    p.platz.Startjahr = 2022;
    EXPECT_TRUE(p.backups.Backup_erstellen(u"J"));
    EXPECT_EQ(p.backups.Backupname(), u"241116 235959 J.dat");
    EXPECT_TRUE(p.backups.Backup_erstellen(u"J"));
    EXPECT_EQ(p.backups.Backupname(), u"241116 235958 J.dat") << "the day has no later second";
    EXPECT_TRUE(p.backups.vorhanden(u"261116", u"t"));
    EXPECT_FALSE(p.backups.vorhanden(u"261115", u"T"));
    const auto vorher = p.namen(p.platz.Backuppfad);
    p.platz.Datenrückblick_aktiv = true;
    EXPECT_FALSE(p.backups.Backup_erstellen(u"T"));
    p.platz.Datenrückblick_aktiv = false;
    p.platz.Backuppfad = u"/srv/x/Data/fehlt/";
    EXPECT_FALSE(p.backups.Backup_erstellen(u"T"));
    EXPECT_EQ(p.namen(u"/srv/x/Data/Backups/"), vorher);
}

TEST(Backups, eines_am_Tag_und_eines_im_Monat) {
    Sicherungsplatz p;
    p.fs.schreibe(p.daten(u"a.dat"), "Aa\r\n");
    struct Tag {
        Text heute;
        bool gemacht;
        Text name;
    };
    for (const Tag& t : {Tag{u"261130", true, u"M"}, Tag{u"261130", false, u"M"}, Tag{u"261201", true, u"M"},
                         Tag{u"261202", true, u"T"}, Tag{u"261202", false, u"T"}}) {
        heute(p, t.heute);
        EXPECT_EQ(p.backups.Tagessicherung(), t.gemacht) << zu_utf8(t.heute);
        EXPECT_EQ(p.backups.Backupname(), t.heute + u" 120000 " + t.name + u".dat");
    }
    // One that cannot be made, or a folder that cannot be looked at, stops nobody; a lost network does.
    heute(p, u"261203");
    for (const Störung& s : {Störung{.aufruf = "read", .dauernd = true},
                             Störung{.aufruf = "list", .maske = u"Backups", .nummer = 70},
                             Störung{.aufruf = "list", .maske = u"Data", .nummer = 52, .dauernd = true},
                             Störung{.aufruf = "rename_new", .nummer = 61, .dauernd = true}}) {
        p.fs.störe(s);
        EXPECT_FALSE(p.backups.Tagessicherung()) << s.aufruf;
        p.fs.störe_nicht();
    }
    p.fs.störe({.aufruf = "list", .maske = u"Backups", .nummer = 52});
    EXPECT_THROW(p.backups.Tagessicherung(), Laufzeitfehler);
    p.fs.störe_nicht();
    EXPECT_EQ(p.namen(p.platz.Backuppfad).size(), 3U);
    const auto log = p.zeilen(p.platz.Logpfad + u"2612 Kalvora.log");
    ASSERT_EQ(log.size(), 4U);
    EXPECT_TRUE(enthält(log[1], u"Fehler Nr. 70 beim Lesen von '/srv/x/Data/Backups"));
    EXPECT_TRUE(enthält(log[3], u"Backup konnte nicht erstellt werden - " + p.backups.Hindernis()));
    EXPECT_TRUE(enthält(log[3], u"Fehler Nr. 61 beim Schreiben von '/srv/x/Data/Backups/261203 1"));
    EXPECT_TRUE(log[3].ends_with(u"' - Der Datenträger ist voll"));
    EXPECT_TRUE(p.backups.Backup_erstellen(u"T"));
    EXPECT_EQ(p.backups.Hindernis(), u"");
}

// A month's version that goes while the backup reads has a successor, which must be in it.
TEST(Backups, Datei_verschwindet_unter_dem_Lesen) {
    Sicherungsplatz p;
    p.fs.schreibe(p.daten(u"2610 261110 Data.dat"), "Aa\r\n");
    p.fs.schreibe(p.daten(u"2611 261110 Data.dat"), "Aa\r\n");
    bool einmal = true;
    p.fs.davor = [&](const std::string& aufruf, const Text& pfad) {
        if (aufruf != "open" || !enthält(pfad, u"2611 261110") || !std::exchange(einmal, false)) return;
        p.fs.platte().entferne(pfad);
        p.fs.schreibe(p.daten(u"2611 261116 Data.dat"), "Bb\r\n");
    };
    EXPECT_TRUE(p.backups.Backup_erstellen(u"T"));
    EXPECT_EQ(Inhalt(p), (Namen{u"2610 261110 Data.dat:4", u"2611 261116 Data.dat:4"}));
    // A name that leads nowhere is passed over in the end.
    p.fs.störe({.aufruf = "open", .maske = u"2610*", .nummer = 53, .dauernd = true});
    EXPECT_TRUE(p.backups.Backup_erstellen(u"T"));
    EXPECT_EQ(Inhalt(p), (Namen{u"2611 261116 Data.dat:4"}));
}

} // namespace
} // namespace kalvora
