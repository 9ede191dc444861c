// The course of a console session: timers, queued answers, modal windows, the end, faults, two workstations.
#include <gtest/gtest.h>

#include "base/fehler.h"
#include "unit/ui/probefenster.h"

namespace kalvora {
namespace {

std::string Stand(Clock& uhr) {
    return zu_utf8(ziffern(uhr.now().tag.jahr) + u" " + FormatZeit(uhr.now()));
}

TEST(Skriptuhr, rückt_beim_Warten_vor_und_wartet_nur_in_Echtzeit) {
    TestUhr echte({{2027, 12, 31}, 23, 59, 30});
    Skriptuhr uhr(echte), echt(echte, Zeitlauf::Echtzeit);
    for (int i = 0; i < 295; ++i)
        uhr.sleep(0.1); // many short steps lose nothing
    EXPECT_EQ(Stand(uhr), "2027 23:59:59");
    uhr.sleep(0.5);
    uhr.sleep(-5);
    EXPECT_EQ(Stand(uhr), "2028 00:00:00");
    EXPECT_EQ(echte.geschlafen(), 0);
    echt.sleep(2);
    echt.warten_bis(echt.steady() + 3);
    EXPECT_DOUBLE_EQ(echte.geschlafen(), 5);
    EXPECT_EQ(Stand(echt), "2027 23:59:35");
    EXPECT_EQ(Stand(uhr), "2028 00:00:00") << "stands still while real time goes by";
}

TEST(Zeitgeber, ticken_in_der_Reihe_ihrer_Zeit) {
    Probelauf lauf([](Probefenster& f) { f.tmrLang.set_enabled(true); });
    lauf.window->tmrKurz.set_enabled(true);
    EXPECT_EQ(lauf("warte 1"), "");
    EXPECT_EQ(lauf("warte 0,5"), "HINWEIS \"kurz 1\"\n");
    EXPECT_EQ(lauf("warte 4.5"),
              "HINWEIS \"kurz 2\"\nHINWEIS \"lang\"\nHINWEIS \"kurz 3\"\nHINWEIS \"kurz 4\"\n");
    lauf.window->tmrKurz.on_tick = [&f = *lauf.window] { f.tmrKurz.set_enabled(false); };
    EXPECT_EQ(lauf("warte 2"), "HINWEIS \"lang\"\n") << "switches itself off";
    lauf.window->tmrKurz.on_tick = [&f = *lauf.window] { f.sage(u"neu"); };
    lauf.window->tmrKurz.set_enabled(true);
    EXPECT_EQ(lauf("warte 1,4"), "") << "a whole interval again";
    EXPECT_EQ(lauf("warte 0,1"), "HINWEIS \"neu\"\n");
}

TEST(Zeitgeber, ruhen_hinter_einem_modalen_Fenster_und_während_einer_Pause) {
    Probelauf lauf([](Probefenster& f) {
        f.tmrLang.set_enabled(true);
        f.cmdAuswahl1.on_click = [&f](Modifiers) { f.app().Pause(10); };
    });
    lauf("menü mnuEintrag");
    EXPECT_EQ(lauf("warte 5"), ""); // due at 4
    lauf("klick cmdOK");
    EXPECT_EQ(lauf("warte 3"), "HINWEIS \"lang\"\n"); // at 8
    EXPECT_EQ(lauf("klick cmdAuswahl(1)"), "");       // 8 to 18: due at 12 and 16
    EXPECT_EQ(lauf("warte 2"), "HINWEIS \"lang\"\n"); // at 20
}

class Fragen : public testing::Test {
protected:
    // Button 1 asks yes or no, button 2 with a way out and the answer yes proposed.
    static void fragend(Probefenster& f) {
        f.cmdAuswahl1.on_click = [&f](Modifiers) { f.app().Frage(u"Wirklich?"); };
        f.cmdAuswahl2.on_click = [&f](Modifiers) {
            f.app().Frage(u"Speichern?", {Fragesymbol::Frage, true, Antwort::Ja});
        };
    }
    Probelauf lauf{fragend};
};

TEST_F(Fragen, nehmen_die_Antworten_der_Reihe_nach_sonst_die_Vorgabe) {
    EXPECT_EQ(lauf("klick cmdAuswahl(1)"), "FRAGE \"Wirklich?\" -> Nein\n");
    EXPECT_EQ(lauf("klick cmdAuswahl(2)"), "FRAGE \"Speichern?\" -> Ja\n");
    for (const char* antwort : {"antworte ja", "antworte abbrechen", "antworte abbrechen"})
        EXPECT_EQ(lauf(antwort), "");
    EXPECT_EQ(lauf("klick cmdAuswahl(1)"), "FRAGE \"Wirklich?\" -> Ja\n");
    EXPECT_EQ(lauf("klick cmdAuswahl(2)"), "FRAGE \"Speichern?\" -> Abbrechen\n");
    EXPECT_EQ(
        lauf("klick cmdAuswahl(1)"),
        "FEHLER 5: Die Frage lässt sich nur mit Ja oder Nein beantworten\nFRAGE \"Wirklich?\" -> Nein\n");
    lauf("datei \"/tmp/a b.csv\"");
    EXPECT_EQ(lauf.ende(), "GESCHLOSSEN frmProbe\nFEHLER 9: Die Antwort \"/tmp/a b.csv\" wurde nicht "
                           "gebraucht\nENDE\n");
    EXPECT_EQ(lauf.konsole().Fehlerzahl(), 2);
}

TEST(Ende, schließt_offene_modale_Fenster_als_Fehler) {
    Probelauf lauf;
    EXPECT_EQ(lauf("menü mnuEintrag"), "FENSTER frmUnter \"Unter\"\n");
    EXPECT_EQ(lauf("taste Esc"), "GESCHLOSSEN frmUnter\nHINWEIS \"zurück\"\n");
    EXPECT_EQ(lauf("taste Esc"), "") << "not the main window";
    lauf("menü mnuEintrag");
    EXPECT_EQ(lauf("fenster"), "frmProbe \"Probe\"\nfrmUnter \"Unter\"\n");
    EXPECT_EQ(lauf("klick cmdAuswahl(1)"), "FEHLER 6: Kein Steuerelement \"cmdAuswahl(1)\" in frmUnter\n");
    EXPECT_EQ(lauf("ende"), "FEHLER 7: Das Fenster frmUnter ist am Ende noch offen\n"
                            "GESCHLOSSEN frmUnter\nHINWEIS \"zurück\"\nGESCHLOSSEN frmProbe\nENDE\n");
    EXPECT_FALSE(lauf.konsole().läuft());
}

TEST(Tasten, drücken_in_einem_Dialog_die_vorgesehenen_Knöpfe) {
    Probelauf lauf([](Probefenster& f) {
        f.mnuEintrag.on_click = [&f] {
            Unterfenster unter(f.app());
            Button cmdWeg(unter, u"cmdWeg"), cmdMehr(unter, u"cmdMehr");
            unter.cmdOK.set_default(true);
            unter.cmdOK.on_click = [&](Modifiers) { f.sage(u"OK"); };
            cmdMehr.on_click = [&](Modifiers) { f.sage(u"Mehr"); };
            cmdWeg.set_cancel(f.kurz == 0);
            cmdWeg.on_click = [&](Modifiers) { f.app().close(unter); };
            unter.on_query_close = [&] { return f.kurz > 0; };
            f.app().open_modal(unter);
            ++f.kurz;
        };
    });
    const struct {
        const char *zeile, *protokoll;
    } FÄLLE[] = {{"menü mnuEintrag", "FENSTER frmUnter \"Unter\"\n"},
                 {"taste Eingabe", "HINWEIS \"OK\"\n"},
                 {"taste Strg+Eingabe", ""},
                 {"klick cmdMehr", "HINWEIS \"Mehr\"\n"},
                 {"taste Eingabe", "HINWEIS \"Mehr\"\n"}, // it has the focus now
                 {"taste Alt+F4", ""},
                 {"taste Esc", "GESCHLOSSEN frmUnter\n"},
                 {"menü mnuEintrag", "FENSTER frmUnter \"Unter\"\n"},
                 {"taste Esc", "GESCHLOSSEN frmUnter\n"}, // without a cancel button by the frame
                 {"taste Eingabe", ""}};
    for (const auto& fall : FÄLLE)
        EXPECT_EQ(lauf(fall.zeile), fall.protokoll) << fall.zeile;
}

// A program that waits for half a minute in a window of its own before its main window opens.
class Wartelauf : public testing::Test {
protected:
    struct Wartefenster : Form {
        explicit Wartefenster(Application& app) : Form(app, u"frmWarten") {
            cmdErneut.on_click = [this](Modifiers) { set_tag(u"D"); };
        }
        Label lblText{*this, u"lblText", 4};
        Button cmdErneut{*this, u"cmdAuswahl", 1};
    };
    static void laufen(KonsolenFenstersystem& system, Skriptuhr&) {
        Application app(system);
        Wartefenster warten(app);
        app.open(warten);
        int zähler = 60;
        for (; zähler > 0 && warten.tag() != u"D"; --zähler) {
            warten.lblText.set_text(ziffern(zähler / 2));
            app.Pause_in(warten, 0.5);
        }
        system.status(u"Rest " + ziffern(zähler));
        app.close(warten);
        Probefenster haupt(app);
        haupt.tmrLang.set_enabled(true);
        app.open(haupt);
        app.run(haupt);
        app.close(haupt);
    }
    TestUhr uhr;
    Konsole konsole{uhr, laufen};
    void SetUp() override { EXPECT_EQ(konsole.start(), "FENSTER frmWarten \"\"\n"); }
    static constexpr const char* ABGELAUFEN =
        "STATUS \"Rest 0\"\nGESCHLOSSEN frmWarten\nFENSTER frmProbe \"Probe\"\n";
};

TEST_F(Wartelauf, Kommandos_für_das_wartende_Fenster_gelten_gleich) {
    EXPECT_EQ(konsole.execute("zeige lblText(4)"), "\"30\"\n");
    EXPECT_EQ(konsole.execute("warte 9,5"), "");
    EXPECT_EQ(konsole.execute("zeige"), "lblText(4) = \"20\"\ncmdAuswahl(1) = \"\"\n");
    EXPECT_EQ(konsole.execute("klick cmdAuswahl(1)"),
              "STATUS \"Rest 40\"\nGESCHLOSSEN frmWarten\nFENSTER frmProbe \"Probe\"\n");
    EXPECT_EQ(konsole.execute("klick cmdAuswahl(1)"), "HINWEIS \"Klick\"\n");
}

TEST_F(Wartelauf, andere_bleiben_für_später_und_das_Warten_geht_weiter) {
    EXPECT_EQ(konsole.execute("zeige lblText"), std::string(ABGELAUFEN) + "\"Zeile 1\\nZeile \\\"2\\\"\"\n");
    EXPECT_EQ(konsole.execute("fenster"), "frmProbe \"Probe\"\n");
}

TEST_F(Wartelauf, mehr_Zeit_als_gewartet_wird_geht_im_Hauptfenster_weiter) {
    EXPECT_EQ(konsole.execute("warte 35"), std::string(ABGELAUFEN) + "HINWEIS \"lang\"\n"); // every 4 s
    EXPECT_EQ(konsole.execute("warte 2,9"), "");
    EXPECT_EQ(konsole.execute("warte 0,1"), "HINWEIS \"lang\"\n");
}

TEST_F(Wartelauf, das_Ende_der_Eingabe_laesst_das_Warten_zu_Ende_gehen) {
    EXPECT_EQ(konsole.ende(), std::string(ABGELAUFEN) + "GESCHLOSSEN frmProbe\nENDE\n");
    EXPECT_EQ(konsole.Fehlerzahl(), 0);
}

TEST(Fehler_im_Programm, verlässt_alle_Schleifen_und_kommt_beim_Aufrufer_an) {
    Probelauf lauf([](Probefenster& f) {
        f.mnuEintrag.on_click = [&f] {
            Unterfenster unter(f.app());
            unter.cmdOK.on_click = [](Modifiers) { throw Laufzeitfehler(53, u"weg"); };
            f.app().open_modal(unter);
            f.app().Hinweis(u"darf nicht kommen");
        };
    });
    lauf("menü mnuEintrag");
    EXPECT_THROW(lauf("klick cmdOK"), Laufzeitfehler);
    EXPECT_FALSE(lauf.konsole().läuft());
    EXPECT_EQ(lauf("fenster"), "GESCHLOSSEN frmUnter\n"); // what came before the fault; nothing runs any more
}

TEST(Konsolen, zweier_Arbeitsplätze_wechseln_sich_ab) {
    Probelauf erster, zweiter;
    erster("menü mnuEintrag");
    EXPECT_EQ(zweiter("klick cmdAuswahl(1)"), "HINWEIS \"Klick\"\n");
    EXPECT_EQ(erster("klick cmdOK"), "GESCHLOSSEN frmUnter\nHINWEIS \"zurück\"\n");
    EXPECT_EQ(zweiter("menü mnuEintrag"), "FENSTER frmUnter \"Unter\"\n");
    EXPECT_EQ(erster.ende(), "GESCHLOSSEN frmProbe\nENDE\n");
    EXPECT_EQ(zweiter("fenster"), "frmProbe \"Probe\"\nfrmUnter \"Unter\"\n");
}

} // namespace
} // namespace kalvora
