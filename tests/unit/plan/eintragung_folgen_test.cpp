// What an entry takes with it or leaves alone, and what others change meanwhile.
#include <stdexcept>

#include "unit/plan/plan.h"

namespace kalvora {
namespace {

using namespace plantest;

// A stored span over a blank day comes not to life when the day is filled.
TEST(Eintragung, KommentareGehenMitDemEintrag) {
    Plan p;
    const std::vector<Text> vorher{Satz(u"anna", {{18, u"11 1"}}), u"K:anna:18-21:Kur"};
    p.öffne(u"anna", vorher);
    p.schreibe(DATEN + u"2611 261116 Data.dat", als_Datei(Monat(vorher)));
    Platzlauf& l = p.platz(u"anna");
    l.trage_ein(u"anna", 20, 20, U);
    std::vector<Text> soll = vorher;
    soll.insert(soll.end(), {Satz(u"anna", {{18, u"1111"}}), u"K:anna:20-20:"});
    EXPECT_EQ(p.zeilen(), soll);
    for (const bool neu : {false, true}) {
        if (neu) l.neu_laden();
        for (const int tag : {18, 19, 20, 21, 22}) {
            const Text kommentar = tag == 20 || tag == 22 ? u"" : u"Kur";
            EXPECT_EQ(l.programm->hauptfenster().ansicht().Zellkommentar(l.zeile(u"anna"), tag), kommentar);
            EXPECT_EQ(l.plan().cell(l.zeile(u"anna"), tag).bold, !kommentar.empty()) << tag << neu;
        }
    }
}

// The scripts show the cells, and that a save takes them over as they were.
TEST(Eintragung, VerborgeneEinträgeZählenNicht) {
    Plan p;
    p.konfig.SF_Verbergen_Zeile = u"000001";
    p.Setting(43, 1);
    const auto& ansicht = p.öffne(u"anna", {Satz(u"otto", {{18, u"16"}}), u"K:otto:18-19:Kur"})
                              .programm->hauptfenster()
                              .ansicht();
    EXPECT_EQ(p.lauf->zellen(u"otto"), Tage({{18, u"U "}}));
    EXPECT_EQ(ansicht.Zellkommentar(p.lauf->zeile(u"otto"), 19), u"");
    EXPECT_EQ(ansicht.Tagessumme(SONST, 19), 0);
}

// The wait pointer goes with whatever it was for, also when that fails.
TEST(Eintragung, EinFehlerLässtKeineSanduhrStehen) {
    const std::vector<std::pair<const char*, std::function<void(Platzlauf&)>>> WEGE{
        {"open", [](Platzlauf& l) { l.neu_laden(); }},
        {"write", [](Platzlauf& l) { l.trage_ein(u"anna", 18, 18, U); }},
        {"write", [](Platzlauf& l) {
             l.markiere(l.zeile(u"anna"), 18, 18, l.zeile(u"otto"));
             l.drücke(U);
         }}};
    for (const auto& [beim, tun] : WEGE) {
        Plan p;
        Platzlauf& l = p.öffne(u"chef");
        const Application& app = l.programm->app();
        l.programm->platz().Langsame_Anzeige = true;
        bool gewartet = false;
        p.davor = [&, wann = std::string(beim)](const std::string& aufruf, const Text& pfad) {
            if (aufruf != wann || !enthält(pfad, u" Data.dat")) return;
            gewartet = app.Sanduhr_an();
            if (wann == "open") throw std::bad_alloc();
            throw std::runtime_error("kaputt");
        };
        tun(l);
        p.davor = {};
        EXPECT_TRUE(gewartet && app.failed()) << beim;
        EXPECT_FALSE(app.Sanduhr_an()) << beim;
        l.programm->schleife();
        EXPECT_EQ(l.programm->ende(), 2) << "the program ends, and says why";
        EXPECT_EQ(l.fenster.hinweise.size(), 1U);
    }
}

// --- somebody changes the reasons -----------------------------------------------------------------------

Firma mit_neuem_Grund(Firma firma) {
    Feld<Schaltfläche> gründe;
    gründe.anfügen({0, 0x123456, 0, u'H', u"Homeoffice", 0}); // every code means something else now
    for (const Schaltfläche& sf : firma.konfig.SF)
        gründe.anfügen(sf);
    firma.konfig.SF = gründe;
    return firma;
}

// Somebody writes another configuration before the button's own look at it, or between that and the save's.
struct Dazwischen : Plan {
    explicit Dazwischen(const std::function<Firma(Firma)>& andere, int vor_Blick = 2) {
        Platzlauf& l = öffne(u"anna");
        l.markiere(u"anna", 18, 18);
        davor = [=, this, blicke = 0](const std::string& aufruf, const Text& pfad) mutable {
            if (aufruf == "open" && enthält(pfad, u"Konfigdaten.dat") && ++blicke == vor_Blick)
                andere(*this).anlegen(*this, DATEN);
        };
        l.drücke(U);
        davor = {};
    }
};

TEST(Eintragung, GründeGeändert) {
    for (const int vor_Blick : {1, 2}) {
        Dazwischen p(mit_neuem_Grund, vor_Blick);
        Platzlauf& l = *p.lauf;
        EXPECT_EQ(l.fenster.hinweise.size(), 1U) << vor_Blick;
        EXPECT_FALSE(p.gibt_es(DATEN + u"2611 261116 Data.dat"));
        EXPECT_TRUE(p.log().empty());
        EXPECT_EQ(l.zellen(u"anna"), Tage({}));
        EXPECT_EQ(l.fenster_().cmdAuswahl(1)->caption(), u"Homeoffice") << "the buttons follow the reasons";
        l.trage_ein(u"anna", 18, 18, 2);
        EXPECT_EQ(l.zellen(u"anna"), Tage({{18, u"U"}}));
    }
}

// What is read again just before a save is shown with the next look at the month.
TEST(Eintragung, ÜbrigesGeändertZwischenDruckUndSpeichern) {
    Dazwischen p([](Firma neu) {
        neu.konfig.Firma = u"Neue Firma";
        neu.Setting(10, 1); // entries for administrators alone
        return neu;
    });
    frmKalvora& f = p.lauf->fenster_();
    EXPECT_EQ(p.lauf->zellen(u"anna"), Tage({{18, u"U"}}));
    f.tmrTimer1.tick();
    EXPECT_EQ(f.title(), u"Kalvora - Neue Firma");
    EXPECT_FALSE(f.cmdAuswahl(LÖSCHEN)->visible());
}

// The folder is put back behind a year change while another workstation shows a month that goes with it.
TEST(Hauptfenster, MonatGehtMitDenJahren) {
    Plan p;
    Platzlauf& l = p.öffne(u"chef");
    frmKalvora& f = l.fenster_();
    f.tabJahre.user_select(2);
    ASSERT_EQ(l.programm->hauptfenster().ansicht().Anzeigemonat(), u"2701");
    Firma früher = p;
    früher.Startjahr = 2024;
    früher.anlegen(p, DATEN);
    for (int m = 1; m <= 12; ++m)
        p.platte().entferne(DATEN + u"27" + ziffern(m, 2) + u" 261110 Data.dat");
    f.tmrTimer1.tick();
    EXPECT_EQ(f.tabJahre.captions().front(), u"2024");
    EXPECT_TRUE(l.fenster.fragen.empty()) << "no month is missing";
    l.trage_ein(u"anna", 20, 20, U);
    EXPECT_FALSE(p.gibt_es(DATEN + u"2701 261116 Data.dat"));
}

// A colleague's append has taken the place of the log record, as shares allow.
TEST(Hauptfenster, ÜberschriebenerLogsatz) {
    const Text datei = DATEN + u"Logs/2611 Kalvora.log";
    for (const bool am_Ende : {false, true}) {
        Plan p;
        Platzlauf& l = p.öffne(u"anna");
        l.trage_ein(u"anna", 19, 19, U);
        const auto sätze = p.log();
        ASSERT_FALSE(sätze.empty());
        p.schreibe(datei, std::string(p.inhalt(datei)->size() - 2, 'x') + "\r\n");
        if (!am_Ende) l.uhr.weiter(2);
        if (am_Ende)
            l.schließen();
        else
            l.fenster_().tmrTimer1.tick();
        ASSERT_FALSE(p.log().empty());
        EXPECT_EQ(p.log().back(), sätze.back());
    }
}

} // namespace
} // namespace kalvora
