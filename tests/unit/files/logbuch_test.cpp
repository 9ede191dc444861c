#include "files/logbuch.h"

#include "hilfen/schaden.h"

namespace kalvora {
namespace {

struct Logprobe : Prüfplatz {
    const Text datei = platz.Logpfad + u"2611 Kalvora.log";
    const Text kopie = platz.Temppfad + u"2611 Kalvora.log";
    std::vector<Text> log_zeilen() const { return zeilen(datei); }
};

TEST(Logbuch, SammelnUndAusgeben) {
    Logprobe p;
    p.log.Sammeln(true);
    p.log.Logbuch_ergänzen(1, u"a");
    p.log.Logbuch_ergänzen(1, u"b");
    EXPECT_FALSE(p.fs.gibt_es(p.datei));
    p.konfig.Setting_setzen(2, 1);
    p.fs.tagebuch_leeren();
    p.log.Logbuch_ergänzen(1, u"");
    EXPECT_EQ(p.fs.anzahl("write", u"/2611 Kalvora.log"), 2) << "one write each, log and copy";
    p.log.Sammeln(false);
    p.log.Logbuch_ergänzen(1, u"");
    ASSERT_EQ(p.log_zeilen().size(), 2u);
    EXPECT_TRUE(p.log_zeilen()[1].ends_with(u"|Muster|b"));
    EXPECT_EQ(p.zeilen(p.kopie), std::vector<Text>{p.log_zeilen()[1]}) << "of a flush the last record alone";
}

std::vector<Text> mit_Zeit(const std::vector<Text>& texte) {
    std::vector<Text> zeilen;
    for (size_t n = 0; n < texte.size(); ++n)
        zeilen.push_back(u"16.11.26 09:05:" + ziffern(static_cast<long>(n), 2) + u"|" + texte[n]);
    return zeilen;
}

TEST(Logbuch, Bereinigen) {
    const std::pair<std::vector<Text>, std::vector<size_t>> fälle[] = {
        // payloads, indexes of those that stay
        {{u"M|a", u"M|a:Storno"}, {0, 1}}, // nothing would be left: it waits for a record that stays
        {{u"M|a", u"N|a:Storno"}, {0, 1}},
        {{u"M|a", u"M|a", u"M|b", u"M|a:Storno"}, {0, 2}},
        {{u"M|a", u"M|a:Storno", u"M|a:Storno"}, {2}},
        {{u"M|a", u"M|a", u"M|a:Storno", u"M|a:Storno", u"M|b"}, {4}},
        {{u":Storno", u"M|b"}, {0, 1}},
    };
    for (const auto& [texte, bleiben] : fälle) {
        Logprobe p;
        const auto alle = mit_Zeit(texte);
        p.platz.Heute_S = u"261231"; // the month before
        p.lege(p.datei, alle);
        const auto vorher = p.fs.platte().abbild();
        p.log.Logbuch_bereinigen(u"M");
        std::vector<Text> erwartet;
        for (const size_t n : bleiben)
            erwartet.push_back(alle[n]);
        EXPECT_EQ(p.log_zeilen(), erwartet) << zu_utf8(texte.back());
        EXPECT_TRUE(bleiben.size() != alle.size() || p.fs.platte().abbild() == vorher);
    }
}

TEST(Logbuch, BereinigenVerliertKeinenSatz) {
    Logprobe p;
    const std::string paar = als_Datei(mit_Zeit({u"M|a", u"M|a:Storno", u"M|b"}));
    p.fs.schreibe(p.datei, paar + "Axyz");
    p.log.Logbuch_bereinigen(u"T");
    EXPECT_EQ(p.fs.inhalt(p.datei), paar + "Axyz");

    p.fs.schreibe(p.datei, "\r\n" + paar + "\r\n" + als_Datei({u"kurz"}));
    p.log.Logbuch_bereinigen(u"T");
    EXPECT_EQ(p.log_zeilen().size(), 2u);
    EXPECT_EQ(p.log_zeilen().back(), u"kurz");

    // Somebody appends between the reading and the rewriting.
    p.fs.schreibe(p.datei, paar);
    int blicke = 0;
    p.fs.davor = [&](const std::string& aufruf, const Text& pfad) {
        if (aufruf == "open" && pfad == p.datei && ++blicke == 2)
            p.fs.schreibe(p.datei, paar + als_Datei({u"neu"}));
    };
    p.log.Logbuch_bereinigen(u"T");
    p.fs.davor = {};
    EXPECT_EQ(p.log_zeilen().back(), u"neu");
}

// On a share the append of another workstation takes the place of ours now and then.
TEST(Logbuch, ÜberschriebenesWirdNachgetragen) {
    for (const std::string& davor : {std::string(), als_Datei({u"alt"})}) {
        Logprobe p;
        if (!davor.empty()) p.fs.schreibe(p.datei, davor);
        for (const TextView text : {u"a", u"ab", u"b"})
            p.log.Logbuch_ergänzen(1, text);
        const std::string ganz = *p.fs.inhalt(p.datei);
        p.uhr.weiter(2);
        p.log.nachsehen();
        EXPECT_EQ(p.fs.inhalt(p.datei), ganz);

        p.log.Logbuch_ergänzen(1, u"c");
        const std::string c = p.fs.inhalt(p.datei)->substr(ganz.size());
        p.log.Logbuch_ergänzen(2, u"d");
        std::string gestört = *p.fs.inhalt(p.datei);
        gestört.replace(ganz.size(), c.size() - 2, c.size() - 2, 'x');
        p.fs.schreibe(p.datei, gestört);
        p.uhr.weiter(2);
        p.fs.störe({.aufruf = "open", .nummer = FEHLER_NETZ}); // out of reach for a look
        p.log.nachsehen();
        p.fs.störe_nicht();
        EXPECT_EQ(p.fs.inhalt(p.datei), gestört);
        p.log.nachsehen();
        EXPECT_EQ(p.fs.inhalt(p.datei), gestört + c) << "the one that has gone, and no other";
        p.fs.schreibe(p.datei, gestört); // once more
        p.log.nachsehen();
        EXPECT_EQ(p.fs.inhalt(p.datei), gestört) << "too early to say";
        p.uhr.weiter(2);
        p.log.nachsehen();
        EXPECT_EQ(p.fs.inhalt(p.datei), gestört + c);
        p.uhr.weiter(2);
        p.log.nachsehen();
        EXPECT_EQ(p.fs.inhalt(p.datei), gestört + c);

        // Seen is seen; a log that was written anew, or removed, is left as it is.
        p.fs.schreibe(p.datei, gestört);
        p.log.nachsehen();
        EXPECT_EQ(p.fs.inhalt(p.datei), gestört);
        p.log.Logbuch_ergänzen(1, u"e");
        p.fs.schreibe(p.datei, als_Datei({u"anders", u"und noch etwas"}));
        p.log.nachsehen(true);
        EXPECT_EQ(p.log_zeilen().size(), 2u);
        p.log.Logbuch_ergänzen(1, u"f");
        (void)p.fs.remove(p.datei);
        p.log.nachsehen(true);
        EXPECT_FALSE(p.fs.gibt_es(p.datei));
    }
}

} // namespace
} // namespace kalvora
