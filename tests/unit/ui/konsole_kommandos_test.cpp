// The commands of the console on a small window: what reaches the window, what is refused and how it is told.
#include <gtest/gtest.h>

#include "unit/ui/probefenster.h"

namespace kalvora {
namespace {

struct Fall {
    const char *zeile, *protokoll;
};

template <std::size_t N>
void prüfe(Probelauf& lauf, const Fall (&fälle)[N]) {
    for (const Fall& fall : fälle)
        EXPECT_EQ(lauf(fall.zeile), fall.protokoll) << fall.zeile;
}

TEST(Kommandos, melden_was_nicht_geht_mit_der_Zeile) {
    Probelauf lauf;
    lauf.window->cmdAuswahl2.set_enabled(false);
    lauf.window->cmbGruppe.set_visible(false);
    lauf.window->mnuMenü.set_visible(false);
    const Fall FÄLLE[] = {
        {"klicke cmdOK", "FEHLER 1: Unbekanntes Kommando \"klicke\"\n"},
        {"klick cmdFehlt(3)", "FEHLER 2: Kein Steuerelement \"cmdFehlt(3)\" in frmProbe\n"},
        {"klick", "FEHLER 3: Gebrauch: klick CONTROL [umschalt] [strg] [alt]\n"},
        {"klick cmdAuswahl(2)", "FEHLER 4: cmdAuswahl(2) ist gesperrt\n"},
        {"wähle cmbGruppe #0", "FEHLER 5: cmbGruppe ist nicht sichtbar\n"},
        {"menü mnuEintrag", "FEHLER 6: mnuEintrag ist nicht sichtbar\n"},
        {"wähle tabMonate März", "FEHLER 7: tabMonate hat die Bedienung abgelehnt\n"},
        {"wähle tabMonate #3", "FEHLER 8: tabMonate hat keinen Eintrag \"#3\"\n"},
        {"wähle cmdAuswahl(1) #0", "FEHLER 9: cmdAuswahl(1) hat nichts zu wählen\n"},
        {"setze lblText neu", "FEHLER 10: lblText nimmt keinen Text an\n"},
        {"klick tabMonate", "FEHLER 11: tabMonate lässt sich nicht anklicken\n"},
        {"klick cmdAuswahl(1) shift", "FEHLER 12: Umschalttaste erwartet statt \"shift\"\n"},
        {"maus links tabMonate 1 1", "FEHLER 13: tabMonate ist keine Tabelle\n"},
        {"maus mitte msgFlexGrid 1 1", "FEHLER 14: Unbekannte Maustaste \"mitte\"\n"},
        {"taste Strg+Quark", "FEHLER 15: Unbekannte Taste \"Quark\"\n"},
        {"antworte vielleicht", "FEHLER 16: Unbekannte Antwort \"vielleicht\"\n"},
        {"warte bald", "FEHLER 17: Keine Zeit in Sekunden: \"bald\"\n"},
        {"farbe rot", "FEHLER 18: Keine Farbe: \"rot\"\n"},
        {"klick \"cmdAuswahl(1)", "FEHLER 19: Das schließende Anführungszeichen fehlt\n"},
        {"klick cmdAuswahl(1)", "HINWEIS \"Klick\"\n"},
    };
    prüfe(lauf, FÄLLE);
    EXPECT_EQ(lauf.konsole().Fehlerzahl(), 19);
}

TEST(Maus, meldet_was_eine_Hand_täte) {
    Probelauf lauf;
    const Fall FÄLLE[] = {
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
        {"maus links msgFlexGrid Cäsar 1", "FEHLER 6: Keine Zeile \"Cäsar\" in msgFlexGrid\n"},
        {"maus links msgFlexGrid Berta 1", "FEHLER 7: \"Berta\" steht in mehreren Zeilen von msgFlexGrid\n"},
        {"maus links msgFlexGrid Verborgen 1", "FEHLER 8: Keine Zeile \"Verborgen\" in msgFlexGrid\n"},
        {"maus links msgFlexGrid 5 1", "FEHLER 9: Die Zeile 5 von msgFlexGrid ist ausgeblendet\n"},
        {"maus links msgFlexGrid 1 4", "FEHLER 10: Die Spalte 4 von msgFlexGrid ist ausgeblendet\n"},
        {"maus links msgFlexGrid 6 1", "FEHLER 11: msgFlexGrid hat keine Zeile 6\n"},
        {"maus links msgFlexGrid 1 5", "FEHLER 12: msgFlexGrid hat keine Spalte \"5\"\n"},
        {"maus links msgFlexGrid 1 1 bis 2", "FEHLER 13: Hinter bis fehlen Zeile und Spalte\n"},
    };
    prüfe(lauf, FÄLLE);
}

} // namespace
} // namespace kalvora
