// What the console reads and writes: words of a command line, and texts of the transcript.
#include <gtest/gtest.h>

#include <sstream>

#include "ui/konsole/protokoll.h"
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
        {"", ""},
        {"  # eingerückt", ""},
        {"wähle tabMonate #3", "<wähle><tabMonate><#3>"},
        {"  klick\tcmdAuswahl(8)  ", "<klick><cmdAuswahl(8)>"},
        {"zeige\r", "<zeige>"},
        {R"(setze txtName(3) "Meier, Jörg")", "<setze><txtName(3)>«Meier, Jörg»"},
        {R"(setze txtName(3) "")", "<setze><txtName(3)>«»"},
        {R"(x "a\"b\\c\nd")", "<x>«a\"b\\c\nd»"},
        {R"(x a"b)", R"(<x><a"b>)"},
        {R"(x "offen\)", "! Das schließende Anführungszeichen fehlt"},
        {R"(x "a"b)", "! Hinter dem schließenden Anführungszeichen fehlt ein Leerzeichen"},
        {R"(x "\t")", R"(! Unbekannte Umschreibung \t)"},
    };
    for (const auto& fall : FÄLLE)
        EXPECT_EQ(gelesen(fall.zeile), fall.worte) << fall.zeile;
}

TEST(Skriptleser, zählt_jede_Zeile_und_überspringt_leere) {
    std::istringstream strom("\xEF\xBB\xBF# Kopf\n\nzeige\n  \nende");
    Stromquelle quelle(strom, true);
    Skriptleser leser(quelle);
    const auto erste = leser.nächste();
    ASSERT_TRUE(erste);
    EXPECT_EQ(erste->nummer, 3);
    leser.zurück(*erste);
    EXPECT_EQ(leser.nächste()->worte, erste->worte);
    EXPECT_EQ(leser.nächste()->nummer, 5);
    EXPECT_FALSE(leser.nächste());
}

TEST(Protokoll, schreibt_jeden_Text_in_eine_Zeile) {
    const struct {
        TextView text;
        const char* zitiert;
    } FÄLLE[] = {
        {u"a\r\nb\r\rc", R"("a\nb\n\nc")"},
        {u"sagt \"ja\"", R"("sagt \"ja\"")"},
        {u"\t\u001F~\u007F\u0081\u009F", R"("\x09\x1F~\x7F\x81\x9F")"},
        {u"fest\u00A0leer", "\"fest\u00A0leer\""},
        {u"C:\\neu", R"("C:\neu")"},
    };
    for (const auto& fall : FÄLLE)
        EXPECT_EQ(zu_utf8(zitiert(fall.text)), fall.zitiert);
}

} // namespace
} // namespace kalvora
