#include "files/dateikanal.h"

#include "hilfen/schaden.h"

namespace kalvora {
namespace {

const Text PFAD = u"/srv/x/Data/Probe.dat";

template <class Ausnahme>
Text text_von(const std::function<void()>& tat) {
    try {
        tat();
    } catch (const Ausnahme& fehler) {
        return fehler.text();
    } catch (const Fehler& anderer) {
        ADD_FAILURE() << "another fault: " << anderer.what();
    }
    return u"<nichts>";
}

TEST(Dateikanal, LeereRohzeile) {
    Prüfplatz p;
    const Text monat = p.daten(u"2611 261116 Data.dat"); // the only kind that may have some
    for (const Text& pfad : {monat, PFAD}) {
        p.fs.schreibe(pfad, "\r\n" + als_Datei({u"danach"}));
        p.kanal.Datei_öffnen(pfad, Dateimodus::Input);
        const auto gelesen = text_von<Laufzeitfehler>([&] { EXPECT_EQ(p.kanal.LineIn(), u""); });
        EXPECT_EQ(gelesen == u"<nichts>", pfad == monat);
        EXPECT_EQ(p.kanal.LineIn(), u"danach");
        EXPECT_NE(text_von<Laufzeitfehler>([&] { p.kanal.LineIn(); }), u"<nichts>") << "past the end";
        p.kanal.Datei_schließen();
    }
}

// The waiting and the way out are in the tests of wrong views.
TEST(Dateikanal, DateiDerLängeNull) {
    Prüfplatz p;
    p.fs.schreibe(PFAD, "");
    EXPECT_EQ(text_von<Dateischaden>([&] { p.kanal.Datei_öffnen(PFAD, Dateimodus::Input); }),
              u"Die Datei '/srv/x/Data/Probe.dat' ist leer.");
    EXPECT_FALSE(p.app.Sanduhr_an());
    p.fs.schreibe(p.daten(u"X.INI"), "");
    EXPECT_TRUE(p.kanal.Datei_öffnen(p.daten(u"X.INI"), Dateimodus::Input));
}

TEST(Dateikanal, ÖffnenScheitert) {
    for (const auto modus : {Dateimodus::Input, Dateimodus::Output, Dateimodus::Append}) {
        Prüfplatz p;
        p.fs.platte().mache_ordner(PFAD);
        const Text text = text_von<Zugriffsabbruch>([&] { p.kanal.Datei_öffnen(PFAD, modus); });
        EXPECT_TRUE(text.starts_with(u"Die Datei '/srv/x/Data/Probe.dat' konnte nicht geöffnet werden."));
        EXPECT_EQ(enthält(text, u"schreibgeschützt"), modus != Dateimodus::Input);
        EXPECT_TRUE(enthält(text, u"vorhanden.\n\nAn der Stelle dieser Datei steht ein Ordner."));
        EXPECT_FALSE(p.kanal.Datei_öffnen(PFAD, modus, Fehlerweg::IgnoreErrors));
        EXPECT_TRUE(p.fenster.hinweise.empty());
    }
    Prüfplatz p;
    p.fs.schreibe(PFAD, "x");
    p.fs.platte().setze_rechte(PFAD, 0444);
    EXPECT_FALSE(p.kanal.Datei_öffnen(PFAD, Dateimodus::Output, Fehlerweg::IgnoreErrors));
    const std::pair<int, const char16_t*> ursachen[] = {
        {FEHLER_ORDNER, u"vorhanden.\n\nDer Ordner '/srv/x/Data' ist zurzeit nicht erreichbar."},
        {FEHLER_GERÄT, u"vorhanden.\n\nDer Datenträger meldet einen Gerätefehler."},
        {FEHLER_VERWEIGERT, u"oder die Datei ist nicht vorhanden"}};
    for (const auto& [nummer, ende] : ursachen) {
        p.fs.störe({.aufruf = "open", .nummer = nummer});
        const Text text = text_von<Zugriffsabbruch>([&] { p.kanal.Datei_öffnen(PFAD, Dateimodus::Input); });
        EXPECT_TRUE(text.ends_with(ende)) << zu_utf8(text);
    }
}

TEST(Dateikanal, AndereSchreibweiseWirdZurKanonischen) {
    Prüfplatz p;
    p.lege(p.daten(u"PROBE.DAT"), {u"alt"});
    p.kanal.Datei_öffnen(PFAD, Dateimodus::Output);
    p.kanal.LineOut(u"neu");
    p.kanal.Datei_schließen();
    EXPECT_EQ(p.zeilen(PFAD), std::vector<Text>{u"neu"});
    EXPECT_FALSE(p.fs.gibt_es(p.daten(u"PROBE.DAT")));
    // A folder that does not tell them apart, and a fault of the first look: both names are one file.
    struct EineDatei : SpeicherDateisystem {
        Ergebnis<std::vector<Text>> list(const Text&) override { return std::vector<Text>{u"PROBE.DAT"}; }
    } fs;
    fs.platte().mache_ordner(u"/srv/x/Data/");
    fs.schreibe(PFAD, "x");
    Schreibweise_entfernen(fs, u"/srv/x/Data/Probe.dat", u"/srv/x/Data/PROBE.DAT");
    EXPECT_TRUE(fs.gibt_es(PFAD));
    fs.störe({.aufruf = "info", .maske = u"Probe.dat", .nummer = 57});
    EXPECT_EQ(Datei_finden(fs, u"/srv/x/Data/", u"Probe.dat"), PFAD);
}

TEST(Dateikanal, LangsamesSchließen) {
    Prüfplatz p;
    int langsam = 0;
    p.kanal.bei_langsamem_Schließen = [&] { ++langsam; };
    p.fs.davor = [&](const std::string& aufruf, const Text&) { p.uhr.weiter(aufruf == "wait" ? 0.4 : 0); };
    p.fs.störe({.aufruf = "rename"});
    p.kanal.Datei_öffnen(PFAD, Dateimodus::Output);
    EXPECT_EQ(p.kanal.Datei_schließen(), 0);
    EXPECT_EQ(langsam, 1);
}

} // namespace
} // namespace kalvora
