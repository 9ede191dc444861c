#include "files/konfigdaten.h"

#include "hilfen/schaden.h"

namespace kalvora {
namespace {

struct Konfigprobe : Prüfplatz {
    const Text pfad = daten(u"Konfigdaten.dat");
    const Konfiguration& werte() const { return konfig.werte(); }
    // The standard file with some of its lines (from 1) replaced.
    void lege_Standard(const std::map<size_t, Text>& andere = {}) {
        std::vector<Text> zeilen = standard();
        for (const auto& [n, zeile] : andere)
            zeilen[n - 1] = zeile;
        lege(pfad, zeilen);
    }
    static std::vector<Text> standard() {
        return teilen(u"[Kalvora]\nReserve\n1.16.1\n[Firma]\nMuster & Söhne\nWerk 2\n[Settings]\n"
                      u"0000000000000101110U½##K310030100####0000010000000\na:b:c\nvoid\n[Wochenende]\nSaSo\n"
                      u"[Grundfarben]\n&HFFFFFF\n&HE8E8E8\n&HC0C0FF\n&HFFF8F4\n&HFFE8CE\n&HAFAFAF\n&HE8FFFF\n"
                      u"&HE8FFFF\n&HC0FFFF\n[Schaltflächen]\n&H000000:&H80FF80:0:U:Urlaub\n"
                      u"&H000000:&H80FF80:0:½:½ Urlaub\n&H000000:&H80C0FF:0:Z:Zeitausgleich\n"
                      u"&H000000:&H80FFFF:0:D:Dienstreise\n&H000000:&H8F8FFF:1:K:Krank\n"
                      u"&H000000:&HFFFF80:0:S:Sonstiges\n&HFFFFFF:&HFFFFFF:0: :Löschen\n"
                      u"[Administratoren]\nA:Chef:boss",
                      u'\n');
    }
    Text lies() {
        return ausgang(*this, pfad, [&] { konfig.Konfigdaten_lesen(); });
    }
};

TEST(Konfigdaten, StandardLesenUndUnverändertSchreiben) {
    Konfigprobe p;
    p.lege_Standard();
    ASSERT_EQ(p.lies(), u"");
    const Konfiguration& k = p.werte();
    EXPECT_EQ(k.Grundfarben(8), 0xC0FFFFu) << "index 0 is line 14";
    EXPECT_EQ(k.SF(5), (Schaltfläche{0, 0x8F8FFF, 1, u'K', u"Krank", 0}));
    EXPECT_EQ(std::tuple(k.SF_Urlaub, k.SF_Halburlaub, k.SF_Urlaub2, k.SF_Krank), std::tuple(1, 2, 0, 0));
    p.konfig.Konfigdaten_schreiben();
    EXPECT_EQ(p.zeilen(p.pfad), Konfigprobe::standard());
    auto zeilen = Konfigprobe::standard();
    zeilen.insert(zeilen.begin() + 22, {u"&H000001", u"keine Farbe"}); // of a later version: passed over
    zeilen.erase(zeilen.begin() + 15);
    zeilen[7].replace(30, 1, u"D"); // month 13
    p.lege(p.pfad, zeilen);
    ASSERT_EQ(p.lies(), u"");
    EXPECT_TRUE(k.Grundfarben.anzahl() == GRUNDFARBEN && k.U() == 7 && k.Urlaubsjahr_Monat == 1);
}

TEST(Konfigdaten, Benutzerrolle) {
    const Text eingeschränkt = u"0000000000000100110U½##K310030100####0000010000000"; // Setting 16 off
    const std::tuple<std::vector<Text>, bool, int> fälle[] = {
        {{u"A:Chef:boss"}, false, 0},
        {{u"A:Chef:boss", u"P:*:*"}, false, 1},
        {{u"A:Chef:boss", u"P:Meier:meier", u"P:*:*"}, false, 0}, // only as the first privileged row
        {{u"A:Chef:boss", u"P:M:muster", u"A:M:muster"}, false, 2},
        {{u"A:M:Muster", u"P:M:muster", u"A:Chef:boss"}, false, 2},
        {{u"A:Chef:boss", u"P:M:hausmuster"}, false, 0}, // the whole name, not its end
        {{u"NoAdmins"}, false, 2},
        {{u"A:Chef:boss"}, true, 2}, // Setting 16
    };
    for (const auto& [zeilen, alle, rolle] : fälle) {
        Konfigprobe p;
        auto datei = Konfigprobe::standard();
        datei.pop_back();
        if (!alle) datei[7] = eingeschränkt;
        datei.insert(datei.end(), zeilen.begin(), zeilen.end());
        p.lege(p.pfad, datei);
        ASSERT_EQ(p.lies(), u"");
        EXPECT_EQ(p.werte().Benutzerrolle, rolle) << (zeilen.empty() ? "" : zu_utf8(zeilen.back()));
    }
    Konfigprobe p;
    auto ohne = Konfigprobe::standard();
    ohne.pop_back();
    p.lege(p.pfad, ohne);
    EXPECT_NE(p.lies(), u"") << "cut: everybody would be an administrator";
    p.lege_Standard({{8, eingeschränkt}});
    p.konfig.Dienstlauf(true);
    p.lies();
    EXPECT_EQ(p.werte().Benutzerrolle, 2) << "after every read";
}

TEST(Konfigdaten, SchaltflächenNummer) {
    const auto satz = [](char16_t c, int admin, TextView text) {
        return Schaltfläche{0, 0, admin, c, Text(text), 0};
    };
    Konfiguration k;
    k.SF = {satz(u'R', 0, u"Rest"), satz(u'R', 0, u"RTT jour"), satz(u'U', 1, u"U"),
            satz(u'X', 0, u"X"),    satz(u'X', 1, u"X2"),       satz(u' ', 0, u"Löschen")};
    const std::tuple<int, int, char16_t, TextView, int> fälle[] = {
        // country, Setting 33, letter, kind, record
        {0, 0, u'U', u"", 3},    {0, 0, u'X', u"", 5}, {0, 0, u'R', u"RTT", 1}, {0, 0, u'Q', u"", 0},
        {2, 1, u'R', u"RTT", 2}, {2, 1, u'R', u"", 1}, {2, 0, u'X', u"", 4},
    };
    for (const auto& [land, sonder, buchstabe, art, nummer] : fälle) {
        k.settings.SetSetting(15, land);
        k.settings.SetSetting(33, sonder);
        EXPECT_EQ(k.Schaltflächen_Nummer(buchstabe, art), nummer) << land << sonder << nummer;
    }
}

TEST(Konfigdaten, FremdeInhalteNennenDateiUndZeile) {
    const std::pair<size_t, Text> fälle[] = {{10, u"nichts"},  {12, u"SaXx"},
                                             {20, u"&HFFF"},   {24, u"kein Satz"},
                                             {32, u"A:Meier"}, {30, u"&HFFFFFF:&HFFFFFF:0:L:Löschen"}};
    for (const auto& [n, zeile] : fälle) {
        Konfigprobe p;
        p.lege_Standard({{n, zeile}});
        EXPECT_EQ(p.lies(), u"Zeile " + ziffern(static_cast<long>(n)) +
                                u" der Datei '/srv/x/Data/Konfigdaten.dat' ist fehlerhaft.");
    }
    Konfigprobe p;
    auto zeilen = Konfigprobe::standard();
    zeilen.insert(zeilen.begin() + 23, 18, zeilen[23]);
    p.lege(p.pfad, zeilen);
    EXPECT_EQ(p.lies(), u"") << "25 records";
    zeilen.insert(zeilen.begin() + 23, zeilen[23]);
    p.lege(p.pfad, zeilen);
    EXPECT_NE(p.lies(), u"") << "26 records";
    EXPECT_EQ(p.werte().U(), 25);
}

TEST(Konfigdaten, Verwüstet) {
    Konfigprobe p;
    EXPECT_EQ(p.lies(), u"Die Datei '/srv/x/Data/Konfigdaten.dat' wurde nicht gefunden.");
    p.lege_Standard();
    verwüsten(
        p, p.pfad, [&] { p.konfig.Konfigdaten_lesen(); },
        [&] {
            EXPECT_EQ(p.werte().Firma, u"Muster & Söhne");
            EXPECT_EQ(p.werte().Administratoren(1), u"A:Chef:boss");
        });
}

TEST(Konfigdaten, GeändertNachStempelUndFrist) {
    Konfigprobe p;
    p.lege_Standard();
    p.lies();
    p.konfig.Konfigdaten_schreiben();
    EXPECT_FALSE(p.konfig.Datei_geändert(true)) << "the writer stores the stamp too";
    p.lege_Standard();
    p.konfig.Setting_setzen(39, 1);
    EXPECT_FALSE(p.konfig.Datei_geändert(true));
    p.konfig.Setting_setzen(39, 0);
    for (const auto& [tage, erwartet] : {std::pair{3, true}, {4, false}, {-5, true}}) {
        p.platz.Heute = Datum_aus(2026, 11, 16) + tage;
        EXPECT_EQ(p.konfig.Datei_geändert(true), erwartet) << tage;
    }
    p.fs.platte().entferne(p.pfad);
    EXPECT_TRUE(p.konfig.Datei_geändert(false));
}

} // namespace
} // namespace kalvora
