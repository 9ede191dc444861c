// Words of a command line.
#include <gtest/gtest.h>

#include "ui/konsole/skriptleser.h"

namespace kalvora {
namespace {

// Words between < and >, quoted ones between « and ».
std::string gelesen(std::string_view zeile) {
    const Kommandozeile k = zerlegen(aus_utf8(zeile));
    Text ergebnis;
    for (const Wort& wort : k.worte)
        ergebnis += wort.zitiert ? u"«" + wort.text + u"»" : u"<" + wort.text + u">";
    return zu_utf8(k.fehler.empty() ? ergebnis : u"! " + k.fehler);
}

TEST(Skriptleser, zerlegt_Zeilen_in_Worte) {
    const struct {
        const char *zeile, *worte;
    } FÄLLE[] = {
        {"  # eingerückt", ""},
        {"wähle tabMonate #3", "<wähle><tabMonate><#3>"},
        {"  klick\tcmdAuswahl(8)  ", "<klick><cmdAuswahl(8)>"},
        {R"(setze txtName(3) "Meier, Jörg")", "<setze><txtName(3)>«Meier, Jörg»"},
        {R"(x "a\"b\\c\nd")", "<x>«a\"b\\c\nd»"},
        {R"(x a"b)", R"(<x><a"b>)"},
        {R"(x "offen\)", "! Das schließende Anführungszeichen fehlt"},
        {R"(x "a"b)", "! Hinter dem schließenden Anführungszeichen fehlt ein Leerzeichen"},
        {R"(x "\t")", R"(! Unbekannte Umschreibung \t)"},
    };
    for (const auto& fall : FÄLLE)
        EXPECT_EQ(gelesen(fall.zeile), fall.worte) << fall.zeile;
}

} // namespace
} // namespace kalvora
