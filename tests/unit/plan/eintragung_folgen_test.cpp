// What an entry takes with it or leaves alone, and what others change meanwhile.
#include "unit/plan/plan.h"

namespace kalvora {
namespace {

using namespace plantest;

TEST(Eintragung, KommentareGehenMitDemEintrag) {
    const struct {
        const char* was;
        int von, bis, b;
        std::vector<Text> zeilen; // added
        Text kommentare;          // K where a comment is shown
    } tafel[] = {
        {"overwritten in part",
         18,
         18,
         SONST,
         {Satz(u"anna", {{18, u"61 1"}}), u"K:anna:18-18:"},
         Tage({{19, u"K.K"}})},
        {"deleted", 18, 19, LÖSCHEN, {Satz(u"anna", {{21, u"1"}}), u"K:anna:18-19:"}, Tage({{21, u"K"}})},
        {"a stored span over a blank day comes not to life",
         20,
         20,
         U,
         {Satz(u"anna", {{18, u"1111"}}), u"K:anna:20-20:"},
         Tage({{18, u"KK.K"}})},
        {"untouched", 24, 24, U, {Satz(u"anna", {{18, u"11 1"}, {24, u"1"}})}, Tage({{18, u"KK.K"}})},
    };
    for (const auto& fall : tafel) {
        SCOPED_TRACE(fall.was);
        Plan p;
        const std::vector<Text> vorher{Satz(u"anna", {{18, u"11 1"}}), u"K:anna:18-21:Kur"};
        p.öffne(u"anna", vorher);
        p.schreibe(DATEN + u"2611 261116 Data.dat", als_Datei(Monat(vorher)));
        Platzlauf& l = p.platz(u"anna");
        l.trage_ein(u"anna", fall.von, fall.bis, fall.b);
        std::vector<Text> soll = vorher;
        soll.insert(soll.end(), fall.zeilen.begin(), fall.zeilen.end());
        EXPECT_EQ(p.zeilen(), soll);
        for (const bool neu : {false, true}) {
            if (neu) l.neu_laden();
            for (int tag = 1; tag <= 31; ++tag) {
                const bool da = fall.kommentare[static_cast<size_t>(tag - 1)] == u'K';
                EXPECT_EQ(l.programm->hauptfenster().ansicht().Zellkommentar(l.zeile(u"anna"), tag),
                          da ? u"Kur" : u"")
                    << tag << neu;
                EXPECT_EQ(l.plan().cell(l.zeile(u"anna"), tag).bold, da);
            }
        }
    }
}

TEST(Eintragung, VerborgeneEinträgeBleibenBeimSpeichernErhalten) {
    for (const int Setting43 : {0, 1}) {
        Plan p;
        p.konfig.SF_Verbergen_Zeile = u"000001";
        p.Setting(43, Setting43);
        Platzlauf& l = p.öffne(
            u"anna", {Satz(u"anna", {{18, u"6"}}), Satz(u"otto", {{18, u"16"}}), u"K:otto:18-19:Kur"});
        EXPECT_EQ(l.zellen(u"anna"), Tage({{18, u"S"}})) << "the own row";
        EXPECT_EQ(l.zellen(u"otto"), Setting43 == 1 ? Tage({{18, u"U "}}) : Tage({{18, u"U"}}));
        EXPECT_EQ(l.plan().cell(l.zeile(u"otto"), 19).back,
                  l.programm->daten().K().Grundfarben(Setting43 == 1 ? 1 : 0));
        EXPECT_EQ(l.programm->hauptfenster().ansicht().Zellkommentar(l.zeile(u"otto"), 19), u"");
        EXPECT_EQ(l.programm->hauptfenster().ansicht().Tagessumme(SONST, 19), 0);
        l.trage_ein(u"anna", 20, 20, U); // the day's first save takes otto's row over as it was
        EXPECT_EQ(p.platz(u"priv").zellen(u"otto"), Tage({{18, u"US"}}));
        EXPECT_EQ(p.lauf->programm->hauptfenster().ansicht().Tagessumme(SONST, 19), 1);
    }
}

TEST(Eintragung, ArbeitsfreierTag) {
    Plan p;
    Platzlauf& l = p.öffne(u"anna", {Satz(u"anna", {{19, u"1"}})});
    const auto doppelt = [&](int tag) { l.plan().user_double_click(l.zeile(u"anna"), tag); };
    for (const int tag : {18, 19, 17, 21}) // an entry, a holiday and a weekend take no mark
        doppelt(tag);
    EXPECT_EQ(l.zellen(u"anna"), Tage({{18, u"_U"}}));
    EXPECT_EQ(p.zeilen().back(), Satz(u"anna", {{18, u"81"}}));
    doppelt(18);
    EXPECT_EQ(p.zeilen().back(), Satz(u"anna", {{19, u"1"}}));
    EXPECT_EQ(p.zeilen().size(), 3U);
    EXPECT_EQ(p.log(), (std::vector<Text>{u"anna|Arbeitsfrei|181126|181126", u"anna|Löschen|181126|181126"}));
    EXPECT_EQ(l.plan().cell(l.zeile(u"anna"), 18).back, l.plan().cell(l.zeile(u"otto"), 18).back);
    EXPECT_TRUE(l.fenster.hinweise.empty());
}

TEST(Eintragung, KopierpufferTrägtDenGedrücktenGrund) {
    Plan p;
    Platzlauf& l = p.öffne(u"anna");
    l.trage_ein(u"anna", 18, 18, 3);
    EXPECT_EQ(l.programm->hauptfenster().eintragung().Kopierpuffer(), u"3");
    l.drücke(LÖSCHEN); // nothing marked: the buffer changes all the same
    EXPECT_EQ(l.programm->hauptfenster().eintragung().Kopierpuffer(), u" ");
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

TEST(Eintragung, GründeGeändertVorDemDruck) {
    Plan p;
    Platzlauf& l = p.öffne(u"anna");
    l.markiere(u"anna", 18, 18);
    mit_neuem_Grund(p).anlegen(p, DATEN);
    l.drücke(U);
    EXPECT_EQ(l.fenster.hinweise.size(), 1U);
    EXPECT_FALSE(p.gibt_es(DATEN + u"2611 261116 Data.dat"));
    EXPECT_TRUE(p.log().empty());
    EXPECT_EQ(l.fenster_().cmdAuswahl(1)->caption(), u"Homeoffice");
    l.trage_ein(u"anna", 18, 18, 1);
    EXPECT_EQ(l.zellen(u"anna"), Tage({{18, u"H"}}));
}

TEST(Eintragung, GründeGeändertZwischenDruckUndSpeichern) {
    EingriffsDateisystem fs;
    Firma firma;
    firma.anlegen(fs, DATEN);
    Platzlauf l(fs, u"anna");
    ASSERT_TRUE(l.starten({u"/path", DATEN, u"/nowelcomescreen"}));
    l.markiere(u"anna", 18, 18);
    int blicke = 0;
    fs.davor = [&](const std::string& aufruf, const Text& pfad) {
        // The button's own look at the configuration comes first, then the save's.
        if (aufruf == "open" && enthält(pfad, u"Konfigdaten.dat") && ++blicke == 2)
            mit_neuem_Grund(firma).anlegen(fs, DATEN);
    };
    l.drücke(U);
    EXPECT_EQ(l.fenster.hinweise.size(), 1U);
    EXPECT_FALSE(fs.gibt_es(DATEN + u"2611 261116 Data.dat"));
    EXPECT_EQ(l.zellen(u"anna"), Tage({}));
    EXPECT_EQ(l.fenster_().cmdAuswahl(1)->caption(), u"Homeoffice") << "the buttons follow the reasons";
    l.trage_ein(u"anna", 18, 18, 2);
    EXPECT_EQ(l.zellen(u"anna"), Tage({{18, u"U"}}));
}

// What is read again just before a save is shown with the next look at the month.
TEST(Eintragung, ÜbrigesGeändertZwischenDruckUndSpeichern) {
    EingriffsDateisystem fs;
    Firma firma;
    firma.anlegen(fs, DATEN);
    Platzlauf l(fs, u"anna");
    ASSERT_TRUE(l.starten({u"/path", DATEN, u"/nowelcomescreen"}));
    l.markiere(u"anna", 18, 18);
    int blicke = 0;
    fs.davor = [&](const std::string& aufruf, const Text& pfad) {
        if (aufruf != "open" || !enthält(pfad, u"Konfigdaten.dat") || ++blicke != 2) return;
        Firma neu = firma;
        neu.konfig.Firma = u"Neue Firma";
        neu.Setting(10, 1); // entries for administrators alone
        neu.anlegen(fs, DATEN);
    };
    l.drücke(U);
    fs.davor = {};
    EXPECT_EQ(l.zellen(u"anna"), Tage({{18, u"U"}}));
    l.fenster_().tmrTimer1.tick();
    EXPECT_EQ(l.fenster_().title(), u"Kalvora - Neue Firma");
    EXPECT_FALSE(l.fenster_().cmdAuswahl(LÖSCHEN)->visible());
}

} // namespace
} // namespace kalvora
