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
        {"   \t ", ""},
        {"# klick cmdOK", ""},
        {"  # eingerückt", ""},
        {"wähle tabMonate #3", "<wähle><tabMonate><#3>"},
        {"  klick\tcmdAuswahl(8)  ", "<klick><cmdAuswahl(8)>"},
        {"zeige\r", "<zeige>"},
        {R"(setze txtName(3) "Meier, Jörg")", "<setze><txtName(3)>«Meier, Jörg»"},
        {R"(setze txtName(3) "")", "<setze><txtName(3)>«»"},
        {R"(x "a\"b\\c\nd")", "<x>«a\"b\\c\nd»"},
        {R"(x C:\neu)", R"(<x><C:\neu>)"},
        {R"(x a"b)", R"(<x><a"b>)"},
        {"x a#b", "<x><a#b>"},
        {R"(x "offen)", "! Das schließende Anführungszeichen fehlt"},
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
    EXPECT_FALSE(leser.nächste());
}

TEST(Skriptleser, versteht_die_Byte_Marke_am_Anfang) {
    std::istringstream strom("\xEF\xBB\xBFzeige\n");
    Stromquelle quelle(strom, true);
    Skriptleser leser(quelle);
    EXPECT_EQ(leser.nächste()->worte.front().text, u"zeige");
}

TEST(Protokoll, schreibt_jeden_Text_in_eine_Zeile) {
    const struct {
        TextView text;
        const char* zitiert;
    } FÄLLE[] = {
        {u"", R"("")"},
        {u"Müller & Söhne €", R"("Müller & Söhne €")"},
        {u"a\nb", R"("a\nb")"},
        {u"a\r\nb\r\rc", R"("a\nb\n\nc")"},
        {u"sagt \"ja\"", R"("sagt \"ja\"")"},
        {u"\t\u001F~\u007F\u0081\u009F", R"("\x09\x1F~\x7F\x81\x9F")"},
        {u"fest\u00A0leer", "\"fest\u00A0leer\""},
        {u"C:\\neu", R"("C:\neu")"},
    };
    for (const auto& fall : FÄLLE)
        EXPECT_EQ(zu_utf8(zitiert(fall.text)), fall.zitiert);
}

TEST(Protokoll, zählt_die_Fehler) {
    std::string ausgabe;
    Protokoll protokoll([&](std::string_view zeile) { ausgabe += zeile; });
    protokoll.zeile(u"ENDE");
    EXPECT_EQ(protokoll.Fehlerzahl(), 0);
    protokoll.fehler(12, u"gesperrt");
    EXPECT_EQ(protokoll.Fehlerzahl(), 1);
    EXPECT_EQ(ausgabe, "ENDE\nFEHLER 12: gesperrt\n");
}

} // namespace
} // namespace kalvora
