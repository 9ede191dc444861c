#include "files/erfassungsdateien.h"

#include "hilfen/schaden.h"

namespace kalvora {
namespace {

const Text HEUTE = u"2611 261116";

TEST(Erfassungsdateien, VersionInKraft) {
    Erfassungsplatz p({u"anna"});
    for (TextView name : {u"2611 261110 Data.dat", u"2611 261115 DATA.DAT", u"2611 26112 Data.dat",
                          u"2611_261120 Data.dat", u"2611 261120 Data.dat.neu", u"2611 261120  Data.dat",
                          u"2611 2611xx Data.dat", u"Kopie 2611 261120 Data.dat"})
        p.fs.schreibe(p.platz.Datenpfad + Text(name), als_Datei(Monat({A(u"anna", u"1")})));
    EXPECT_EQ(p.erfassung.Aktuelle_Erfassungsdatei(u"2611"), u"2611 261115");
    EXPECT_EQ(p.erfassung.Aktuelle_Erfassungsdatei(u"2612"), u"");
    EXPECT_TRUE(p.erfassung.Erfassungsdaten_lesen(u"2611"));
    p.fs.störe({.aufruf = "list", .nummer = FEHLER_NETZ, .dauernd = true});
    EXPECT_THROW(p.erfassung.Aktuelle_Erfassungsdatei(u"2612"), Laufzeitfehler) << "never \"no file\"";
}

TEST(Erfassungsdateien, ErsteSpeicherungDesTages) {
    Erfassungsplatz p({u"otto", u"anna"});
    p.Monatsdatei(u"2611 261105", {A(u"anna", u"1")});
    p.Monatsdatei(
        u"2611 261110",
        {A(u"anna", u"1"), A(u"weg", u"1"), A(u"otto", u"2"), A(u"anna", u"4"), u"K:anna:01-02:Kur"},
        u"SaSo:NoEx12|");
    p.Monatsdatei(u"2612 261110", {});
    ASSERT_TRUE(p.erfassung.Erfassungsdaten_lesen(u"2611"));
    EXPECT_TRUE(p.erfassung.Datensatz_speichern(A(u"otto", u"3")));
    EXPECT_EQ(p.zeilen(HEUTE),
              Monat({A(u"otto", u"2"), A(u"anna", u"4"), u"K:anna:01-01:Kur", A(u"otto", u"3")}, u"2611",
                    u"SaSo:NoEx12|"));
    EXPECT_EQ(p.Versionen(), (std::vector<Text>{u"2611 261116 Data.dat", u"2612 261110 Data.dat"}))
        << "the month's older versions are gone, other months' stay";
}

TEST(Erfassungsdateien, MonatOhneDateiOderZeilen) {
    for (const bool mit_Datei : {false, true}) {
        Erfassungsplatz p({u"anna"});
        if (mit_Datei) p.Monatsdatei(u"2611 261105", {}, u"NoEx07|:12|");
        EXPECT_FALSE(p.erfassung.Erfassungsdaten_lesen(u"2611"));
        EXPECT_TRUE(p.erfassung.lesbar());
        EXPECT_TRUE(p.erfassung.Datensatz_speichern(A(u"anna", u"1")));
        const std::vector<Text> neu{u"[2611]", u"KonfigReserve", u"NoEx:NoEx", A(u"anna", u"1")};
        EXPECT_EQ(p.zeilen(HEUTE), mit_Datei ? Monat({A(u"anna", u"1")}, u"2611", u"NoEx07|:12|") : neu);
    }
}

TEST(Erfassungsdateien, SpätereVersionWarntUndBleibt) {
    for (const bool schon_da : {false, true}) {
        Erfassungsplatz p({u"anna"});
        p.Monatsdatei(u"2611 261110", {A(u"anna", u"6")});
        if (schon_da) p.Monatsdatei(HEUTE, {A(u"anna", u"1")});
        p.Monatsdatei(u"2611 261201", {A(u"anna", u"2")});
        ASSERT_TRUE(p.erfassung.Erfassungsdaten_lesen(u"2611"));
        EXPECT_TRUE(p.erfassung.Datensatz_speichern(A(u"anna", u"3")));
        // The user knows; the entry is not written again and again behind his back.
        p.erfassung.Erfassungsdaten_lesen(u"2611");
        p.erfassung.Ausstehende_nachsehen();
        EXPECT_EQ(p.zeilen(HEUTE), Monat({A(u"anna", schon_da ? u"1" : u"2"), A(u"anna", u"3")}));
        EXPECT_EQ(p.zeilen(u"2611 261201"), Monat({A(u"anna", u"2")}));
        EXPECT_EQ(p.Versionen().size(), schon_da ? 3U : 2U); // a version is deleted behind one read as sound
        ASSERT_EQ(p.fenster.hinweise.size(), 1U);
        EXPECT_TRUE(p.fenster.hinweise[0].starts_with(u"Warnung: Datumskorruption erkannt! Es ist oder war "
                                                      u"ein Rechner im Netzwerk mit Systemdatum 01.12.26"));
        EXPECT_EQ(p.Logzeilen().size(), 1U);
    }
}

TEST(Erfassungsdateien, AblehnungenSchreibenNichts) {
    const struct {
        const char* was;
        Text zeile;
    } tafel[] = {
        {"no key", A(u"", u"1")},
        {"30 characters", A(u"anna", u"1").substr(0, 36)},
        {"the delete button's place", A(u"anna", u"7")},
        {"a code beyond the table", A(u"anna", u"9")},
        {"outside the code page", u"K:anna:01-01:\u0416"},
        {"a comment over no days", u"K:anna:05-04:x"},
        {"no row", u"Unsinn"},
    };
    for (const bool sammeln : {false, true})
        for (const auto& fall : tafel) {
            Erfassungsplatz p({u"anna"});
            p.Monatsdatei(HEUTE, {A(u"anna", u"1")});
            p.erfassung.Erfassungsdaten_lesen(u"2611");
            p.erfassung.Sammeln(sammeln);
            const auto vorher = p.fs.platte().abbild();
            EXPECT_FALSE(p.erfassung.Datensatz_speichern(fall.zeile)) << fall.was;
            EXPECT_EQ(p.fenster.hinweise.size(), 1U) << fall.was;
            EXPECT_TRUE(p.erfassung.Speicherpuffer().empty());
            EXPECT_EQ(p.fs.platte().abbild(), vorher);
        }
}

TEST(Erfassungsdateien, KeineEinträgeUndKeinVerdichtenOhneGrundlage) {
    for (const bool ohne_Namen : {false, true}) {
        Erfassungsplatz p(ohne_Namen ? std::vector<Text>{} : std::vector<Text>{u"anna"});
        p.fs.schreibe(p.pfad(u"2611 261110"), als_Datei(Monat({}, ohne_Namen ? u"2611" : u"2512")));
        if (ohne_Namen)
            p.erfassung.Erfassungsdaten_lesen(u"2611");
        else
            EXPECT_THROW(p.erfassung.Erfassungsdaten_lesen(u"2611"), Dateischaden);
        const auto vorher = p.fs.platte().abbild();
        for (const Text& zeile : {A(u"anna", u"1"), Text()})
            EXPECT_FALSE(p.erfassung.Datensatz_speichern(zeile));
        EXPECT_EQ(p.fenster.hinweise.size(), 2U);
        EXPECT_EQ(p.fs.platte().abbild(), vorher);
    }
}

// What cannot be read is not rewritten away, nor deleted with the older version.
TEST(Erfassungsdateien, UnlesbaresGehtMit) {
    for (TextView stamm : {u"2611 261110", u"2611 261116"}) {
        Erfassungsplatz p({u"anna", u"otto"});
        p.Monatsdatei(stamm, {A(u"anna", u"1"), u"A:otto:kurz", A(u"anna", u"2"), u"", u"Unsinn"}, u"ohne");
        p.erfassung.Erfassungsdaten_lesen(u"2611");
        EXPECT_TRUE(p.erfassung.Datensatz_speichern({}));
        EXPECT_TRUE(p.erfassung.Datensatz_speichern(A(u"anna", u"3")));
        EXPECT_EQ(p.zeilen(HEUTE),
                  Monat({A(u"anna", u"2"), u"A:otto:kurz", u"Unsinn", A(u"anna", u"3")}, u"2611", u"ohne"));
        EXPECT_TRUE(p.fs.gibt_es(p.pfad(stamm))) << "a version with faults is not deleted";
    }
}

// Faulty lines go only behind a backup; all others stay as they stand.
TEST(Erfassungsdateien, FehlerhafteZeilenWerdenGemeldetUndGehen) {
    const std::vector<Text> gute{A(u"anna", u"1"), u"K:anna:01-01:Text", A(u"weg", u"2")};
    std::vector<Text> alle = gute;
    alle.insert(alle.begin() + 1, {u"Unsinn", u"A:anna:kurz", u"K:otto:00-01:x", u""});
    const Text wann = u"Fehlerhafte Daten erkannt in Monat 11.2026", log = u"chef|KalvoAdmin|" + wann;
    const struct {
        int rolle;
        bool gesichert;
    } tafel[] = {{2, true}, {2, false}, {0, false}};
    for (const auto& fall : tafel) {
        Erfassungsplatz p({u"anna"});
        p.konfig.ändern().Benutzerrolle = fall.rolle;
        p.erfassung.sichern = [&](TextView art) { return fall.gesichert && art == u"F"; };
        p.Monatsdatei(HEUTE, alle, u"ohne Trenner");
        try {
            for (int n = 0; n < 2; ++n) // told once
                EXPECT_TRUE(p.erfassung.Erfassungsdaten_lesen(u"2611"));
            EXPECT_EQ(fall.rolle, 2) << "staff cannot go on";
            EXPECT_EQ(p.fenster.hinweise,
                      std::vector<Text>{wann + u"!\n\nBitte Administrationslogbuch beachten!"});
            auto zeilen = p.Logzeilen();
            EXPECT_EQ(zeilen.size(), fall.gesichert ? 4U : 3U) << "the last one names the copy";
            zeilen.resize(3);
            EXPECT_EQ(zeilen, (std::vector<Text>{log, log + u" bei anna", log + u" bei otto"}));
        } catch (const Programmabbruch& ende) {
            EXPECT_TRUE(ende.text().ends_with(u"Administratoren: <Name Vorname> (chef)"));
        }
        EXPECT_EQ(p.zeilen(HEUTE), fall.gesichert ? Monat(gute) : Monat(alle, u"2611", u"ohne Trenner"));
    }
}

// A row that broke off in the middle, and rows that have gone again: nobody is stopped by it, all are told.
TEST(Erfassungsdateien, AbgerissenesWirdGemeldetUndAufbewahrt) {
    const Text wann = u"Fehlerhafte Daten erkannt in Monat 11.2026";
    for (const int rolle : {2, 0})
        for (const bool geschrumpft : {false, true}) {
            Erfassungsplatz p({u"anna", u"otto", u"eve"});
            p.konfig.ändern().Benutzerrolle = rolle;
            p.erfassung.sichern = [](TextView) { return true; };
            const Text pfad = p.Monatsdatei(HEUTE, {A(u"anna", u"1"), A(u"otto", u"1"), A(u"eve", u"1")});
            const std::string ganz = *p.fs.inhalt(pfad);
            const std::string halb =
                ganz.substr(0, ganz.find(ganz.substr(ganz.rfind("\r\n", ganz.size() - 3))) -
                                   (geschrumpft ? 0 : 10) + (geschrumpft ? 2 : 0));
            if (geschrumpft) p.erfassung.Erfassungsdaten_lesen(u"2611");
            p.fs.schreibe(pfad, halb);
            EXPECT_TRUE(p.erfassung.Erfassungsdaten_lesen(u"2611"));
            EXPECT_EQ(p.erfassung.monat().letzter_Satz(u"anna"), 1);
            ASSERT_EQ(p.fenster.hinweise.size(), 1u) << rolle << geschrumpft;
            EXPECT_TRUE(p.fenster.hinweise[0].starts_with(wann));
            EXPECT_EQ(p.Logzeilen()[0], u"chef|KalvoAdmin|" + wann);
            p.erfassung.Erfassungsdaten_lesen(u"2611");
            EXPECT_EQ(p.fenster.hinweise.size(), 1u) << "once for one state";
            const auto da = p.Versionen();
            EXPECT_EQ(da.size(), rolle == 2 ? 2u : 1u) << "with a copy of what was taken out";
            EXPECT_EQ(p.fs.inhalt(p.daten(da.back())), halb);
            EXPECT_EQ(p.Logzeilen().size(), da.size());
            EXPECT_TRUE(da.size() == 1 || p.Logzeilen()[1].ends_with(da.back())) << "which the log names";
        }
}

TEST(Startjahr, FolgtDenMeistenMonaten) {
    const struct {
        std::vector<int> jahre; // whose months stand there
        std::vector<Text> dazu;
        std::vector<int> passend;
    } tafel[] = {{{2025, 2026, 2027}, {}, {2025}},
                 {{2025, 2026, 2027}, {u"2412 250101 Data.dat"}, {2025}},
                 {{2025, 2026, 2027}, {u"2401 Kopie Data.dat", u"2301 250101 Data.dat"}, {2025}},
                 {{2026, 2027}, {}, {2025, 2026}},
                 {{}, {}, {}}};
    for (const auto& fall : tafel) {
        std::vector<Text> namen = fall.dazu;
        for (const int jahr : fall.jahre)
            for (int monat = 1; monat <= 12; ++monat)
                namen.push_back(ziffern(jahr % 100, 2) + ziffern(monat, 2) + u" 261116 Data.dat");
        EXPECT_EQ(passende_Startjahre(namen), fall.passend);
    }
}

// Somebody else's save falls just before one of our calls.
TEST(Erfassungsdateien, ZweiImSelbenAugenblick) {
    const struct {
        const char* was;
        bool heutige_da;
        const char* aufruf;
        Text datei, zeile; // empty: compaction
    } tafel[] = {
        {"both begin the day", false, "rename_new", HEUTE, A(u"anna", u"12")},
        {"the other's version came behind our list", false, "open", u"2611 261110", A(u"anna", u"12")},
        {"both append", true, "write", HEUTE, A(u"anna", u"12")},
        {"append while the month is compacted", true, "rename", HEUTE, u""},
    };
    for (const auto& fall : tafel) {
        SCOPED_TRACE(fall.was);
        Erfassungsplatz p({u"anna", u"otto"});
        Erfassungsplatz q({u"anna", u"otto"}, p.fs.geteilte_platte(), u"PLATZ2");
        p.Monatsdatei(u"2611 261110", {A(u"anna", u"1"), A(u"otto", u"1")});
        if (fall.heutige_da) p.Monatsdatei(HEUTE, {A(u"anna", u"1"), A(u"otto", u"1")});
        for (Erfassungsplatz* platz : {&p, &q})
            platz->erfassung.Erfassungsdaten_lesen(u"2611");
        int geschehen = 0;
        p.fs.davor = [&](const std::string& aufruf, const Text& pfad) {
            if (aufruf != fall.aufruf || pfad != p.pfad(fall.datei) || ++geschehen > 1) return;
            EXPECT_TRUE(q.erfassung.Datensatz_speichern(A(u"otto", u"13")));
        };
        EXPECT_TRUE(p.erfassung.Datensatz_speichern(fall.zeile));
        EXPECT_GE(geschehen, 1);
        for (Erfassungsplatz* platz : {&p, &q})
            platz->erfassung.Ausstehende_abschließen();
        EXPECT_EQ(p.Tage_auf_Platte(u"anna"), fall.zeile.empty() ? u"1" : u"12");
        EXPECT_EQ(p.Tage_auf_Platte(u"otto"), u"13");
        EXPECT_TRUE(p.fenster.hinweise.empty() && q.fenster.hinweise.empty());
        EXPECT_EQ(p.Versionen(), std::vector<Text>{HEUTE + u" Data.dat"});
    }
}

// A colleague begins today's version at some moment of our first save: our plan does not show his row, and
// the next check must notice.
TEST(Erfassungsdateien, FremdesInDerErstenSpeicherung) {
    for (int blick = 1; blick <= 4; ++blick) {
        Erfassungsplatz p({u"anna", u"otto"});
        Erfassungsplatz q({u"anna", u"otto"}, p.fs.geteilte_platte(), u"PLATZ2");
        p.Monatsdatei(u"2611 261110", {});
        for (Erfassungsplatz* platz : {&p, &q})
            platz->erfassung.Erfassungsdaten_lesen(u"2611");
        int blicke = 0;
        p.fs.davor = [&](const std::string& aufruf, const Text&) {
            if (aufruf == "list" && ++blicke == blick) q.erfassung.Datensatz_speichern(A(u"otto", u"1"));
        };
        EXPECT_TRUE(p.erfassung.Datensatz_speichern(A(u"anna", u"1")));
        EXPECT_TRUE(blicke < blick || p.erfassung.Monat_geändert()) << blick;
    }
}

// An older version goes only behind a newer one that is sound and takes nobody's entries away with it.
TEST(Erfassungsdateien, Checken) {
    Erfassungsplatz p({u"anna", u"otto"});
    const auto stamm = [](int monat) {
        return ziffern(25 + (monat - 1) / 12, 2) + ziffern((monat - 1) % 12 + 1, 2) + u" 250101";
    };
    const auto anlegen = [&](int monat) { p.Monatsdatei(stamm(monat), {A(u"otto", u"1"), A(u"weg", u"1")}); };
    for (int monat = 1; monat <= 24; ++monat)
        if (monat != 3 && monat != 24) anlegen(monat);
    try {
        p.erfassung.Erfassungsdateien_checken();
        ADD_FAILURE() << "nothing missed";
    } catch (const Dateischaden& schaden) {
        EXPECT_EQ(schaden.text(), u"Keine Erfassungsdatei für An-/Abwesenheitsdaten für folgende(n) Monat(e) "
                                  u"gefunden: 03.2025, 12.2026");
    }
    anlegen(3);
    anlegen(24);
    const std::vector<Text> neue{A(u"otto", u"2")};
    const struct {
        const char* was;
        std::string datei;
        bool bleibt;
    } tafel[] = {
        {"sound; whoever is not in the list any more", als_Datei(Monat(neue, u"2501")), false},
        {"he has taken it back", als_Datei(Monat({A(u"otto", u"")}, u"2502")), false},
        {"somebody's row is missing", als_Datei(Monat({A(u"anna", u"1")}, u"2503")), true},
        {"a faulty row", als_Datei(Monat({neue[0], u"A:anna:kurz"}, u"2504")), true},
        {"a faulty head", als_Datei(Monat(neue, u"2505", u"ohne")), true},
        {"another month's", als_Datei(Monat(neue, u"2501")), true},
        {"empty", "", true},
        {"the older one cannot be read", als_Datei(Monat(neue, u"2508")), true},
    };
    p.fs.schreibe(p.pfad(stamm(8)), "kaputt\r\n");
    for (int n = 1; n <= 8; ++n)
        p.fs.schreibe(p.pfad(stamm(n).substr(0, 10) + u"2"), tafel[n - 1].datei);
    p.erfassung.Erfassungsdateien_checken(); // 2027 may be missing: it is ahead
    for (int n = 1; n <= 8; ++n)
        EXPECT_EQ(p.fs.gibt_es(p.pfad(stamm(n))), tafel[n - 1].bleibt) << tafel[n - 1].was;
}

TEST(Erfassungsdateien, AusnahmenVergangenerMonate) {
    const Feld<Text> liste{u"000000", u"261001:Feiertag", u"261031:Halloween", u"251001:Feiertag"};
    const struct {
        Text art, alt, vorher, nachher;
    } tafel[] = {
        {u"W", u"SaSo", u"NoEx07|:12|", u"SaSo07|:12|"},
        {u"W", u"SaSo", u"Fr07|:NoEx", u"Fr07|:NoEx"},
        {u"W", u"", u"NoEx:NoEx", u":NoEx"},
        {u"W", u"NoEx", u"SaSo07|:NoEx", u"NoEx:NoEx"},
        {u"F", u"", u"SaSo:NoEx12|", u"SaSo:12|01|31|"},
        {u"F", u"NoEx", u"SaSo:12|", u"SaSo:NoEx"},
        {u"W", u"SaSo", u"ohne", u"ohne"},
    };
    for (const auto& fall : tafel) {
        Erfassungsplatz p({u"anna"});
        p.Monatsdatei(u"2610 261010", {A(u"anna", u"1"), u"", u"Unsinn"}, fall.vorher);
        p.Monatsdatei(HEUTE, {}, fall.vorher);
        p.fs.tagebuch_leeren();
        p.erfassung.Ausnahmedaten_in_Erfassungdateien_übernehmen(fall.art, fall.alt, liste);
        EXPECT_EQ(p.zeilen(u"2610 261010"), Monat({A(u"anna", u"1"), u"", u"Unsinn"}, u"2610", fall.nachher))
            << zu_utf8(fall.art + u" " + fall.alt + u" " + fall.vorher);
        EXPECT_EQ(p.zeilen(HEUTE), Monat({}, u"2611", fall.vorher)) << "this month is not past";
        EXPECT_EQ(p.fs.anzahl("rename"), fall.vorher == fall.nachher ? 0 : 1) << "changed files alone";
    }
}

TEST(Erfassungsdateien, DefragmentierenAbAnderthalbZeilen) {
    const std::vector<Text> drei{A(u"anna", u"1"), A(u"otto", u"2"), A(u"anna", u"3")}, // of two persons
        vier{drei[0], drei[1], drei[2], A(u"otto", u"4")}, zwei{vier[2], vier[3]};
    const struct {
        const char* was;
        bool start, sperre, gestört;
        std::vector<Text> vorher, nachher;
        Text sicherung;
    } tafel[] = {
        {"not yet", false, false, false, drei, drei, u""}, {"due", false, false, false, vier, zwei, u"T"},
        {"start", true, false, false, vier, vier, u""},    {"lock", false, true, false, vier, vier, u""},
        {"refused", false, false, true, vier, vier, u"T"},
    };
    for (const auto& fall : tafel) {
        Erfassungsplatz p({u"anna", u"otto"});
        p.platz.Startphase = fall.start;
        p.kanal.Reparatursperre = fall.sperre;
        Text arten;
        p.erfassung.sichern = [&](TextView art) { return arten += art, true; };
        p.Monatsdatei(HEUTE, fall.vorher);
        p.erfassung.Erfassungsdaten_lesen(u"2611");
        if (fall.gestört) p.fs.störe({.aufruf = "open", .nummer = 70, .dauernd = true});
        EXPECT_NO_THROW(p.erfassung.Defragmentieren_wenn_fällig());
        EXPECT_EQ(arten, fall.sicherung) << fall.was;
        EXPECT_EQ(p.zeilen(HEUTE), Monat(fall.nachher)) << fall.was;
    }
}

// A month that had a file and has none any more is lost, not empty; one that never had is empty.
TEST(Erfassungsdateien, VerschwundenerMonat) {
    Erfassungsplatz p({u"anna"});
    EXPECT_FALSE(p.erfassung.Erfassungsdaten_lesen(u"2612"));
    const Text datei = p.Monatsdatei(HEUTE, {A(u"anna", u"1")});
    ASSERT_TRUE(p.erfassung.Erfassungsdaten_lesen(u"2611"));
    p.fs.platte().entferne(datei);
    p.fenster.beim_Warten = [&] { p.Monatsdatei(HEUTE, {A(u"anna", u"1")}); };
    EXPECT_TRUE(p.erfassung.Erfassungsdaten_lesen(u"2611")) << "for a moment only";
    p.fenster.beim_Warten = {};
    p.fs.platte().entferne(datei);
    EXPECT_FALSE(p.erfassung.Monat_geändert()) << "out of sight for a moment, as far as anybody knows";
    EXPECT_THROW(p.erfassung.Datensatz_speichern(A(u"anna", u"2")), Fehler);
    EXPECT_TRUE(p.Versionen().empty()) << "nothing is saved into an empty month";
    p.erfassung.Monate_vergessen();
    EXPECT_FALSE(p.erfassung.Erfassungsdaten_lesen(u"2611")) << "the whole folder was put back";
}

// While a repair lock stands staff list and reasons may be the standard ones: no row and no code is dropped.
TEST(Erfassungsdateien, ReparatursperreBehältAlles) {
    for (const bool sperre : {false, true}) {
        Erfassungsplatz p({u"anna"});
        p.kanal.Reparatursperre = sperre;
        const std::vector<Text> alte{A(u"fremd", u"1"), A(u"anna", u"1Q"), u"K:fremd:01-01:x"};
        p.Monatsdatei(u"2611 261110", alte);
        p.erfassung.Erfassungsdaten_lesen(u"2611");
        EXPECT_TRUE(p.erfassung.Datensatz_speichern(A(u"anna", u"3")));
        std::vector<Text> soll = sperre ? alte : std::vector<Text>{A(u"anna", u"1")};
        soll.push_back(A(u"anna", u"3"));
        EXPECT_EQ(p.zeilen(HEUTE), Monat(soll));
    }
}

} // namespace
} // namespace kalvora
