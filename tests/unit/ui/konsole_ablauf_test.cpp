// The course of a console session: timers, queued answers, modal windows, a wait, the end.
#include <gtest/gtest.h>

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
    lauf.window->tmrKurz.on_tick = [&f = *lauf.window] { f.tmrKurz.set_enabled(false); };
    EXPECT_EQ(lauf("warte 2"), "HINWEIS \"lang\"\n") << "switches itself off";
    lauf.window->tmrKurz.on_tick = [&f = *lauf.window] { f.sage(u"neu"); };
    lauf.window->tmrKurz.set_enabled(true);
    EXPECT_EQ(lauf("warte 1,4"), "") << "a whole interval again";
    EXPECT_EQ(lauf("warte 0,1"), "HINWEIS \"neu\"\n");
}

TEST(Fragen, nehmen_die_Antworten_der_Reihe_nach_sonst_die_Vorgabe) {
    // Button 1 asks yes or no, button 2 with a way out and the answer yes proposed.
    Probelauf lauf([](Probefenster& f) {
        f.cmdAuswahl1.on_click = [&f](Modifiers) { f.app().Frage(u"Wirklich?"); };
        f.cmdAuswahl2.on_click = [&f](Modifiers) {
            f.app().Frage(u"Speichern?", {Fragesymbol::Frage, true, Antwort::Ja});
        };
    });
    EXPECT_EQ(lauf("klick cmdAuswahl(2)"), "FRAGE \"Speichern?\" -> Ja\n");
    for (const char* antwort : {"antworte ja", "antworte abbrechen", "antworte abbrechen"})
        EXPECT_EQ(lauf(antwort), "");
    EXPECT_EQ(lauf("klick cmdAuswahl(1)"), "FRAGE \"Wirklich?\" -> Ja\n");
    EXPECT_EQ(lauf("klick cmdAuswahl(2)"), "FRAGE \"Speichern?\" -> Abbrechen\n");
    EXPECT_EQ(
        lauf("klick cmdAuswahl(1)"),
        "FEHLER 4: Die Frage lässt sich nur mit Ja oder Nein beantworten\nFRAGE \"Wirklich?\" -> Nein\n");
    lauf("datei \"/tmp/a b.csv\"");
    EXPECT_EQ(lauf.ende(), "GESCHLOSSEN frmProbe\nFEHLER 8: Die Antwort \"/tmp/a b.csv\" wurde nicht "
                           "gebraucht\nENDE\n");
    EXPECT_EQ(lauf.konsole().Fehlerzahl(), 2);
}

TEST(Maus, meldet_was_eine_Hand_täte) {
    Probelauf lauf;
    const struct {
        const char *zeile, *protokoll;
    } FÄLLE[] = {
        {"maus links msgFlexGrid Adam 1 bis \"17\" 3",
         "HINWEIS \"ab 1,1\"\nHINWEIS \"markiert 1,1-1,1\"\nHINWEIS \"markiert 1,1-4,3\"\nHINWEIS \"auf "
         "4,3\"\n"},
        {"maus links msgFlexGrid 2 3 umschalt",
         "HINWEIS \"ab 2,3 umschalt\"\nHINWEIS \"markiert 1,1-2,3\"\nHINWEIS \"auf 2,3\"\n"},
        {"maus links msgFlexGrid 2 3 bis 0 0", "HINWEIS \"ab 2,3\"\nHINWEIS \"markiert 2,3-2,3\"\nHINWEIS "
                                               "\"markiert 2,3-1,0\"\nHINWEIS \"auf 0,0\"\n"},
        // A window that the press opens takes the rest of the movement.
        {"maus links msgFlexGrid 1 1 strg", "HINWEIS \"ab 1,1 strg\"\nFENSTER frmUnter \"Unter\"\n"},
        {"klick cmdOK", "GESCHLOSSEN frmUnter\nHINWEIS \"zurück\"\n"},
        {"maus links msgFlexGrid Berta 1", "FEHLER 6: \"Berta\" steht in mehreren Zeilen von msgFlexGrid\n"},
        {"maus links msgFlexGrid Verborgen 1", "FEHLER 7: Keine Zeile \"Verborgen\" in msgFlexGrid\n"},
        {"maus links msgFlexGrid 5 1", "FEHLER 8: Die Zeile 5 von msgFlexGrid ist ausgeblendet\n"},
    };
    for (const auto& fall : FÄLLE)
        EXPECT_EQ(lauf(fall.zeile), fall.protokoll) << fall.zeile;
}

// As on a screen that shows the whole table (tests of the plan's view have the same keys).
TEST(Tasten, markieren_in_Tabellen_wie_auf_dem_Bildschirm) {
    Probelauf lauf([](Probefenster& f) {
        f.msgFlexGrid.on_selection_changed = [&f](int) { f.msgFlexGrid.set_HighLight(true); };
        f.msgFlexGrid.set_row_kind(1, RowKind::Heading);
        f.msgFlexGrid.set_marked_col(2);
    });
    Table& tabelle = lauf.window->msgFlexGrid;
    lauf("maus links msgFlexGrid 0 0");
    const struct {
        const char* taste;
        Selection danach;
    } FÄLLE[] = {{"Bild-ab", {2, 2, 2, 2}}, // the first key: today, below the heading
                 {"Ab", {3, 2, 3, 2}},
                 {"Umschalt+Bild-ab", {3, 2, 4, 2}}, // the last row is hidden
                 {"Umschalt+Rechts", {3, 2, 4, 3}},
                 {"Rechts", {4, 3, 4, 3}}, // and the last column
                 {"Bild-auf", {1, 3, 1, 3}},
                 {"Strg+Ende", {4, 3, 4, 3}},
                 {"Umschalt+Strg+Pos1", {4, 3, 1, 3}},
                 {"Pos1", {1, 1, 1, 1}},
                 {"Ende", {1, 3, 1, 3}},
                 {"Auf", {1, 3, 1, 3}}};
    for (const auto& fall : FÄLLE) {
        EXPECT_EQ(lauf(std::string("taste ") + fall.taste), "") << fall.taste;
        EXPECT_EQ(tabelle.selection(), fall.danach) << fall.taste;
    }
    tabelle.set_HighLight(false);
    tabelle.set_TopRow(3);
    lauf("taste Strg+Pos1");
    EXPECT_EQ(tabelle.selection(), (Selection{1, 2, 1, 2})) << "jumps at once";
    EXPECT_EQ(tabelle.TopRow(), 1) << "and comes into view";
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

// A program that waits for half a minute in a window of its own before its main window opens. What means the
// main window is kept for it; what means the waiting one is in the scripts.
TEST(Wartelauf, andere_Kommandos_und_übrige_Zeit_bleiben_für_das_Hauptfenster) {
    const auto laufen = [](KonsolenFenstersystem& system, Skriptuhr&) {
        Application app(system);
        Unterfenster warten(app, u"frmWarten");
        app.open(warten);
        for (int n = 0; n < 60; ++n)
            app.Pause_in(warten, 0.5);
        app.close(warten);
        Probefenster haupt(app);
        haupt.tmrLang.set_enabled(true);
        app.open(haupt);
        app.run(haupt);
        app.close(haupt);
    };
    const struct {
        const char *zeile, *danach;
    } FÄLLE[] = {{"zeige lblText", "\"Zeile 1\\nZeile \\\"2\\\"\"\n"},
                 {"warte 35", "HINWEIS \"lang\"\n"}}; // every 4 s
    for (const auto& fall : FÄLLE) {
        TestUhr uhr;
        Konsole konsole(uhr, laufen);
        EXPECT_EQ(konsole.start(), "FENSTER frmWarten \"Unter\"\n");
        EXPECT_EQ(konsole.execute(fall.zeile),
                  std::string("GESCHLOSSEN frmWarten\nFENSTER frmProbe \"Probe\"\n") + fall.danach);
        EXPECT_EQ(konsole.ende(), "GESCHLOSSEN frmProbe\nENDE\n");
    }
}

} // namespace
} // namespace kalvora
