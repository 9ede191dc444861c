// The course of a console session: timers, queued answers, modal windows, the end, faults, two workstations.
#include <gtest/gtest.h>

#include <sstream>

#include "base/fehler.h"
#include "unit/ui/probefenster.h"

namespace kalvora {
namespace {

TEST(Zeitgeber, ticken_in_der_Reihe_ihrer_Zeit) {
    Probelauf lauf([](Probefenster& f) { f.tmrLang.set_enabled(true); });
    lauf.window->tmrKurz.set_enabled(true);
    EXPECT_EQ(lauf("warte 1"), "");
    EXPECT_EQ(lauf("warte 0,5"), "HINWEIS \"kurz 1\"\n");
    EXPECT_EQ(lauf("warte 4.5"),
              "HINWEIS \"kurz 2\"\nHINWEIS \"lang\"\nHINWEIS \"kurz 3\"\nHINWEIS \"kurz 4\"\n");
    lauf.window->tmrKurz.set_enabled(false);
    EXPECT_EQ(lauf("warte 2"), "HINWEIS \"lang\"\n");
    lauf.window->tmrKurz.set_enabled(true); // a whole interval again
    EXPECT_EQ(lauf("warte 1,4"), "");
    EXPECT_EQ(lauf("warte 0,1"), "HINWEIS \"kurz 5\"\n");
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

TEST(Zeitgeber, darf_sich_selbst_abschalten) {
    Probelauf lauf;
    Probefenster& f = *lauf.window;
    f.tmrKurz.on_tick = [&f] {
        f.tmrKurz.set_enabled(false);
        f.app().Hinweis(u"einmal");
    };
    f.tmrKurz.set_enabled(true);
    EXPECT_EQ(lauf("warte 60"), "HINWEIS \"einmal\"\n");
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
    EXPECT_EQ(lauf("antworte ja"), "");
    EXPECT_EQ(lauf("antworte abbrechen"), "");
    EXPECT_EQ(lauf("klick cmdAuswahl(1)"), "FRAGE \"Wirklich?\" -> Ja\n");
    EXPECT_EQ(lauf("klick cmdAuswahl(2)"), "FRAGE \"Speichern?\" -> Abbrechen\n");
    EXPECT_EQ(lauf("klick cmdAuswahl(2)"), "FRAGE \"Speichern?\" -> Ja\n");
}

TEST_F(Fragen, lehnen_eine_Antwort_ab_die_nicht_angeboten_wird) {
    lauf("antworte abbrechen");
    EXPECT_EQ(
        lauf("klick cmdAuswahl(1)"),
        "FEHLER 1: Die Frage lässt sich nur mit Ja oder Nein beantworten\nFRAGE \"Wirklich?\" -> Nein\n");
}

TEST_F(Fragen, melden_am_Ende_jede_Antwort_die_übrig_blieb) {
    lauf("antworte ja");
    lauf("datei \"/tmp/a b.csv\"");
    lauf("farbe &H00FF00");
    lauf("antworte nein");
    lauf("klick cmdAuswahl(1)");
    EXPECT_EQ(lauf.ende(), "GESCHLOSSEN frmProbe\n"
                           "FEHLER 2: Die Antwort \"/tmp/a b.csv\" wurde nicht gebraucht\n"
                           "FEHLER 3: Die Antwort \"&H00FF00\" wurde nicht gebraucht\n"
                           "FEHLER 4: Die Antwort \"nein\" wurde nicht gebraucht\n"
                           "ENDE\n");
    EXPECT_EQ(lauf.konsole().Fehlerzahl(), 3);
}

// A whole script against a program that asks before its first window.
std::string Skript_mit_Startfrage(const char* skript, bool vollständig = true) {
    std::istringstream strom(skript);
    Stromquelle quelle(strom, vollständig);
    std::string ausgabe;
    Protokoll protokoll([&](std::string_view zeile) { ausgabe += zeile; });
    TestUhr echte;
    Skriptuhr uhr(echte);
    KonsolenFenstersystem system(protokoll, quelle, uhr);
    Application app(system);
    app.Frage(u"Erste?");
    app.Frage(u"Zweite?");
    Unterfenster fenster(app, u"frmHaupt");
    app.open(fenster);
    app.run(fenster);
    app.close(fenster);
    system.abschließen();
    return ausgabe;
}

TEST(Startfragen, werden_vom_Kopf_des_Skripts_beantwortet) {
    EXPECT_EQ(
        Skript_mit_Startfrage("# Kopf\nantworte nein\nantworte ja\nzeige\n"),
        "FRAGE \"Erste?\" -> Nein\nFRAGE \"Zweite?\" -> Ja\nFENSTER frmHaupt \"Unter\"\ncmdOK = \"OK\"\n"
        "GESCHLOSSEN frmHaupt\nENDE\n");
    EXPECT_EQ(
        Skript_mit_Startfrage("antworte ja\nzeige\nantworte ja\n"),
        "FRAGE \"Erste?\" -> Ja\nFRAGE \"Zweite?\" -> Nein\nFENSTER frmHaupt \"Unter\"\ncmdOK = \"OK\"\n"
        "GESCHLOSSEN frmHaupt\nFEHLER 3: Die Antwort \"ja\" wurde nicht gebraucht\nENDE\n");
}

TEST(Ende, meldet_Kommandos_hinter_dem_Ende_nur_wenn_niemand_mehr_schreibt) {
    constexpr const char* SKRIPT = "klick cmdOK\n\nzeige\n";
    const std::string wie_immer = "FRAGE \"Erste?\" -> Nein\nFRAGE \"Zweite?\" -> Nein\n"
                                  "FENSTER frmHaupt \"Unter\"\nGESCHLOSSEN frmHaupt\n";
    EXPECT_EQ(Skript_mit_Startfrage(SKRIPT), wie_immer + "FEHLER 3: Das Programm war schon beendet\nENDE\n");
    EXPECT_EQ(Skript_mit_Startfrage(SKRIPT, false), wie_immer + "ENDE\n");
}

TEST(Ende, schließt_offene_modale_Fenster_als_Fehler) {
    for (const bool mit_Kommando : {true, false}) {
        Probelauf lauf;
        EXPECT_EQ(lauf("menü mnuEintrag"), "FENSTER frmUnter \"Unter\"\n");
        EXPECT_EQ(lauf("fenster"), "frmProbe \"Probe\"\nfrmUnter \"Unter\"\n");
        EXPECT_EQ(lauf("klick cmdAuswahl(1)"),
                  "FEHLER 3: Kein Steuerelement \"cmdAuswahl(1)\" in frmUnter\n");
        EXPECT_EQ(mit_Kommando ? lauf("ende") : lauf.ende(),
                  std::string("FEHLER ") + (mit_Kommando ? "4" : "3") +
                      ": Das Fenster frmUnter ist am Ende noch offen\n"
                      "GESCHLOSSEN frmUnter\nHINWEIS \"zurück\"\nGESCHLOSSEN frmProbe\nENDE\n");
        EXPECT_FALSE(lauf.konsole().läuft());
    }
}

TEST(Ende, eines_Fensters_das_offen_bleiben_will_ist_ein_Fehler) {
    Probelauf lauf([](Probefenster& f) { f.on_query_close = [] { return false; }; });
    EXPECT_EQ(lauf("ende"), "FEHLER 1: Das Fenster frmProbe lässt sich nicht schließen\n");
    EXPECT_EQ(lauf("fenster"), "frmProbe \"Probe\"\n");
    EXPECT_EQ(lauf.ende(),
              "FEHLER 2: Das Fenster frmProbe lässt sich nicht schließen\nGESCHLOSSEN frmProbe\nENDE\n");
}

TEST(Modale_Fenster, schließt_auch_Esc) {
    Probelauf lauf;
    lauf("menü mnuEintrag");
    EXPECT_EQ(lauf("taste Esc"), "GESCHLOSSEN frmUnter\nHINWEIS \"zurück\"\n");
    EXPECT_EQ(lauf("taste Esc"), "");
    EXPECT_TRUE(lauf.konsole().läuft());
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

// While the splash window waits for the data folder, each step of its wait lets a command in.
TEST(Wartendes_Startfenster, nimmt_Kommandos_an) {
    TestUhr uhr;
    Konsole konsole(uhr, [](KonsolenFenstersystem& system, Skriptuhr& zeit) {
        Application app(system);
        Unterfenster start(app, u"frmStart");
        bool beendet = false;
        start.cmdOK.set_visible(false);
        app.open(start);
        app.windows().wait(1.25); // nothing to press yet: no command is taken
        start.cmdOK.set_visible(true);
        start.cmdOK.on_click = [&](Modifiers) { beendet = true; };
        start.on_query_close = [&] { return beendet = true; };
        while (!beendet)
            app.windows().wait(0.5);
        app.Hinweis(ziffern(static_cast<long>(zeit.steady() * 100)));
        app.close(start);
    });
    EXPECT_EQ(konsole.start(), "FENSTER frmStart \"Unter\"\n");
    EXPECT_EQ(konsole.execute("warte 10"), "");
    EXPECT_EQ(konsole.execute("klick cmdOK"), "HINWEIS \"1175\"\nGESCHLOSSEN frmStart\nENDE\n");
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
