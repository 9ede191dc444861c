#include "safety/monatsrettung.h"
#include "sicherungsplatz.h"

namespace kalvora {
namespace {

using Zeilen = std::vector<Text>;

std::string Mitarbeiterdatei(int Startjahr) {
    return als_Datei({u"[Mitarbeiterdaten]", u"", ziffern(Startjahr), Firma::Person(u"anna")});
}
std::string Monatsdatei(const Zeilen& zeilen, const Text& yymm = u"2611") {
    return als_Datei(Monat(zeilen, yymm));
}

TEST(Dateiprobe, urteilt_wie_die_Leser) {
    Sicherungsplatz p;
    Firma().anlegen(p.fs, p.platz.Datenpfad);
    const auto gut = [&](TextView name) { return *p.fs.inhalt(p.daten(name)); };
    p.fs.schreibe(p.daten(u"Ferientage.dat"),
                  als_Datei({u"[Ferientage]", u"", u"255", u"", u"", u"2611:" + Text(31, u'0')}));
    p.fs.schreibe(p.daten(u"Mitarbeiteranzber.dat"), als_Datei({u"[X]", u""}));
    using enum Dateiprobe::Urteil;
    const Dateiprobe probe(p.dateien, p.platz);
    const auto vorher = p.fs.platte().abbild();
    for (const TextView name : {u"Konfigdaten.dat", u"Mitarbeiterdaten.dat", u"Feiertage.dat",
                                u"Ferientage.dat", u"2611 261110 Data.dat", u"Mitarbeiteranzber.dat"}) {
        const std::string ganz = gut(name);
        EXPECT_EQ(probe.Fehler(Text(name), ganz), u"") << zu_utf8(name);
        EXPECT_EQ(probe.prüfen(klein(name), ganz).urteil, heil) << zu_utf8(name);
        for (const std::string& bytes : {std::string(), std::string(ganz.size(), '\0'), "\r\n" + ganz,
                                         "\x01" + ganz, als_Datei({u"[Kalvoro]", u"x"}).substr(0, 5)}) {
            const auto befund = probe.prüfen(Text(name), bytes);
            const bool ohne_Leser = name == u"Mitarbeiteranzber.dat" && bytes.size() == 5;
            EXPECT_EQ(befund.urteil, ohne_Leser ? heil : beschädigt) << zu_utf8(name) << bytes.size();
            EXPECT_EQ(befund.fehler.empty(), ohne_Leser);
        }
    }
    // An older holiday file needs a delivered template, which is missing here: nothing can be said of it.
    Zeilen ältere{u"[Feiertage]", u"", u"1:01.01.:N"};
    ältere.resize(20);
    EXPECT_EQ(probe.prüfen(u"Feiertage.dat", als_Datei(ältere)).urteil, ungeprüft);
    EXPECT_EQ(probe.prüfen(u"2611 261110 Data.dat", Monatsdatei({u"A:x:zu kurz"})).urteil,
              fehlerhafte_Zeilen);
    EXPECT_EQ(probe.prüfen(u"2612 261110 Data.dat", Monatsdatei({})).urteil, beschädigt);
    EXPECT_EQ(probe.Startjahr(Mitarbeiterdatei(2031)), 2031);
    EXPECT_EQ(probe.Startjahr("x"), std::nullopt);
    EXPECT_EQ(p.fs.platte().abbild(), vorher);
    EXPECT_EQ(p.fs.gewartet(), 0);
    EXPECT_EQ(p.fs.offene(), 0);
    EXPECT_TRUE(p.dialog.hinweise.empty() && p.fenster.hinweise.empty());
}

TEST(Wiederherstellung, Datei_aus_der_neuesten_heilen_Sicherung) {
    const Text M = u"Mitarbeiterdaten.dat", K = u"2611 261110 Data.dat";
    const Mitglieder J2024{{M, Mitarbeiterdatei(2024)}}, J2025{{M, Mitarbeiterdatei(2025)}},
        kaputt{{M, "Ax\r\n"}};
    const Mitglieder Fehlzeile{{K, Monatsdatei({A(u"anna", u"1"), u"A:otto:"})}},
        heil{{K, Monatsdatei({A(u"anna", u"2")})}};
    struct Fall {
        const char* was;
        Text name;
        std::vector<std::pair<Text, Mitglieder>> sicherungen; // the oldest first
        std::string ergebnis;                                 // empty: none
        bool Monate = true;                                   // of 2025 on stand in the folder
    };
    const std::string gut = J2025[0].second;
    const Text SA = u"261114 120000 T.dat", SO = u"261115 120000 T.dat";
    const std::vector<Fall> fälle{
        {"newest damaged", M, {{SA, J2025}, {SO, kaputt}}, gut},
        {"by file time", M, {{SO, kaputt}, {u"250101 120000 M.dat", J2025}}, gut},
        {"errors", M, {{u"261115 120000 F.dat", J2025}, {u"000000 000000 I.dat", J2025}}, ""},
        {"foreign names", M, {{u"Kopie von T.dat", J2025}, {u"261115 120000 TT.dat", J2025}}, ""},
        {"lower case, no date", M, {{u"279999 120000 j.DAT", {{u"MITARBEITERDATEN.DAT", gut}}}}, gut},
        {"of other years", M, {{SA, J2025}, {SO, J2024}}, gut},
        {"no month is left", M, {{SO, J2024}}, J2024[0].second, false},
        {"none", M, {{SO, heil}}, ""},
        {"a month, sound before faulty", K, {{SA, heil}, {SO, Fehlzeile}}, heil[0].second},
        {"a month, faulty before none", K, {{SO, Fehlzeile}}, Fehlzeile[0].second},
    };
    for (const Fall& f : fälle) {
        Sicherungsplatz p;
        for (const Text yymm : {u"2211", u"2503", u"2603", u"2703"}) // the first is a stray one
            if (f.Monate) p.fs.schreibe(p.daten(yymm + u" 250301 Data.dat"), Monatsdatei({}, yymm));
        for (const auto& [name, mitglieder] : f.sicherungen)
            p.lege_Backup(name, mitglieder);
        p.fs.schreibe(p.sicherung(u"261116 000000 T.dat"), "no container");
        p.lege_Backup(u"261116 000001 T.dat", J2025);
        p.fs.störe({.aufruf = "open", .maske = u"261116 000001*", .nummer = 70, .dauernd = true});
        EXPECT_EQ(p.wieder.Datei_zurückholen(f.name), !f.ergebnis.empty()) << f.was;
        EXPECT_EQ(p.fs.inhalt(p.daten(f.name)).value_or(""), f.ergebnis) << f.was;
        EXPECT_EQ(p.fs.offene(), 0);
    }
    // What cannot be seen now may be there: nothing is decided.
    Sicherungsplatz p;
    p.lege_Backup(u"261115 120000 T.dat", J2025);
    p.fs.störe({.aufruf = "open", .maske = u"261115*", .nummer = 52, .dauernd = true});
    EXPECT_THROW(p.wieder.Datei_zurückholen(M), Laufzeitfehler);
}

TEST(Wiederherstellung, Monat_ergänzt_um_lesbare_Zeilen) {
    const auto K = [](const char16_t* rest) { return u"K:anna:" + Text(rest); };
    const Zeilen basis{A(u"anna", u"1"), A(u"anna", u"12"), K(u"01-01:Kur"), A(u"otto", u"3")};
    struct Fall {
        const char* was;
        Zeilen rest; // whole content of the damaged file
        Zeilen dazu;
    };
    const std::vector<Fall> fälle{
        {"all the same", Monat(basis), {}},
        {"one more", Monat({A(u"anna", u"12"), A(u"eve", u"1")}), {A(u"eve", u"1")}},
        {"first line damaged", {u"[26", u"Reserve", u"NoEx:NoEx", A(u"otto", u"4")}, {A(u"otto", u"4")}},
        {"first line missing", {A(u"otto", u"4")}, {A(u"otto", u"4")}},
        {"another month", Monat({A(u"otto", u"4")}, u"2612"), {}},
        {"the last row counts", Monat({A(u"anna", u"9"), A(u"ANNA", u"12")}), {A(u"ANNA", u"12")}},
        {"back to the same", Monat({A(u"anna", u"9"), A(u"anna", u"12")}), {}},
        {"several new", Monat({A(u"anna", u"9"), A(u"anna", u"8")}), {A(u"anna", u"8")}},
        {"faulty rows",
         Monat({u"A:otto:4", u"Q:otto:", u"", K(u"9-01:x"), A(u"otto", u"4")}),
         {A(u"otto", u"4")}},
        {"comments go together",
         Monat({K(u"01-01:Kur"), K(u"02-02:Bad")}),
         {K(u"01-01:Kur"), K(u"02-02:Bad")}},
        {"the same comments", Monat({K(u"01-01:Kur")}), {}},
    };
    for (const Fall& f : fälle) {
        Zeilen erwartet = Monat(basis);
        erwartet.insert(erwartet.end(), f.dazu.begin(), f.dazu.end());
        const std::string neu = Monat_ergänzt(Monatsdatei(basis), als_Datei(f.rest, 90), u"2611");
        EXPECT_EQ(als_Zeilen(neu), erwartet) << f.was;
    }
    // Cut anywhere, or with a hole: only the line hurt is lost.
    const std::string vorn = Monatsdatei({A(u"eve", u"1")}),
                      ganz = Monatsdatei({A(u"eve", u"1"), A(u"adam", u"2")});
    const auto enthalten = [](const std::string& rest, const Text& zeile) {
        const auto zeilen = als_Zeilen(Monat_ergänzt(Monatsdatei({}), rest, u"2611"));
        return std::find(zeilen.begin(), zeilen.end(), zeile) != zeilen.end();
    };
    for (std::size_t n = 0; n < ganz.size(); ++n) {
        EXPECT_EQ(enthalten(ganz.substr(0, n), A(u"eve", u"1")), n >= vorn.size()) << n;
        if (n > vorn.size()) continue;
        EXPECT_TRUE(enthalten(std::string(ganz).insert(n, 5, '\0'), A(u"adam", u"2"))) << n;
    }
}

TEST(Wiederherstellung, Monat_aus_Sicherung_oder_Ordner) {
    const auto mit = [](TextView codes) { return Monatsdatei({A(u"anna", codes)}); };
    const std::string Fehlzeile = Monatsdatei({A(u"anna", u"F"), u"A:otto:"});
    struct Fall {
        const char* was;
        std::vector<Mitglieder> sicherungen; // the oldest first
        Mitglieder ordner;
        Text anna; // "": the month's head alone
    };
    const Text ziel = u"2611 261116 Data.dat", V10 = u"2611 261110 Data.dat", V12 = u"2611 261112 Data.dat";
    const Mitglieder eins{{V10, mit(u"1")}};
    const std::vector<Fall> fälle{
        {"nothing", {}, {{ziel, "kaputt"}}, u""},
        {"the greatest of one backup", {{{u"2611 261101 Data.dat", mit(u"1")}, {V10, mit(u"2")}}}, {}, u"2"},
        {"the newest backup", {{{V12, mit(u"1")}}, {{V10, mit(u"2")}}}, {}, u"2"},
        {"an older sound one", {eins, {{ziel, Fehlzeile}}, {{ziel, "kaputt"}}}, {}, u"1"},
        {"a faulty one", {{{ziel, Fehlzeile}}}, {}, u"F"},
        {"another month", {{{u"2610 261110 Data.dat", mit(u"1")}}}, {}, u""},
        {"the folder's", {eins}, {{V12, mit(u"2")}}, u"2"},
        {"the folder's has gone on", {eins}, {{V10, mit(u"2")}}, u"2"},
        {"the folder's is older", {eins}, {{u"2611 261109 Data.dat", mit(u"2")}}, u"1"},
        {"the folder's is faulty", {eins}, {{V12, Fehlzeile}}, u"1"},
        {"no version's name", {}, {{u"2611 Kopie Data.dat", mit(u"1")}}, u""},
    };
    for (const Fall& f : fälle) {
        Sicherungsplatz p;
        for (std::size_t n = 0; n < f.sicherungen.size(); ++n)
            p.lege_Backup(u"26111" + ziffern(static_cast<long>(n)) + u" 120000 T.dat", f.sicherungen[n]);
        for (const auto& [name, bytes] : f.ordner)
            p.fs.schreibe(p.daten(name), bytes);
        EXPECT_EQ(p.wieder.Monat_zurückholen(u"2611", ziel, "kaputt", u"Res"), !f.anna.empty()) << f.was;
        const auto zeilen = p.zeilen(p.daten(ziel));
        ASSERT_GE(zeilen.size(), 3U) << f.was;
        if (f.anna.empty())
            EXPECT_EQ(zeilen, (Zeilen{u"[2611]", u"Res", u"NoEx:NoEx"})) << f.was;
        else
            EXPECT_EQ(zeilen[3], A(u"anna", f.anna)) << f.was;
    }
    // What can be read in newer ones that are faulty goes along, and what is appended meanwhile.
    Sicherungsplatz q;
    const std::string alt = mit(u"1");
    q.lege_Backup(u"261111 120000 T.dat", {{ziel, alt}});
    q.lege_Backup(u"261112 120000 T.dat",
                  {{ziel, alt + als_Datei({A(u"otto", u"2"), u"A:x", A(u"eve", u"3")}, 50)}});
    q.fs.schreibe(q.daten(ziel), alt + "?");
    bool einmal = true;
    q.fs.davor = [&](const std::string& aufruf, const Text&) {
        if (aufruf == "write" && std::exchange(einmal, false))
            q.fs.schreibe(q.daten(ziel), alt + "?\r\n" + als_Datei({A(u"otto", u"4")}, 60));
    };
    EXPECT_TRUE(q.wieder.Monat_zurückholen(u"2611", ziel, {}));
    EXPECT_EQ(q.zeilen(q.daten(ziel)),
              Monat({A(u"anna", u"1"), A(u"otto", u"2"), A(u"eve", u"3"), A(u"otto", u"4")}));
    EXPECT_NE(q.fs.inhalt(q.daten(ziel))->substr(0, 8), alt.substr(0, 8))
        << "it is another version from now on";
    Sicherungsplatz p; // rows of the damaged file alone are something, too
    EXPECT_TRUE(p.wieder.Monat_zurückholen(u"2611", ziel, als_Datei({u"?", A(u"anna", u"3")})));
    EXPECT_EQ(p.zeilen(p.daten(ziel)).back(), A(u"anna", u"3"));
}

TEST(Wiederherstellung, Restore_aus_Backupdatei) {
    Sicherungsplatz p;
    const auto danach = [&](const Text& datei, const Text& nur) {
        EXPECT_TRUE(p.wieder.Restore_aus_Backupdatei(datei, nur));
        auto alle = p.namen(p.platz.Datenpfad);
        for (const Text& name : p.namen(p.platz.Logpfad))
            alle.push_back(name);
        return alle;
    };
    EXPECT_FALSE(p.wieder.Restore_aus_Backupdatei(u"", u""));
    const Text T = u"261115 120001 T.dat", a = u"a.dat", b = u"b.dat", log = u"2611 Kalvora.log";
    p.lege_Backup(T, {{a, "Aa\r\n"}, {b, ""}, {log, "L\r\n"}});
    EXPECT_EQ(danach(u"", u"c.dat"), Zeilen{}) << "stepped over";
    EXPECT_EQ(danach(u"", b), Zeilen{b});
    p.fs.schreibe(p.daten(u"A.Dat"), "alt");
    EXPECT_EQ(danach(u"", u"NoLogs"), (Zeilen{a, b}));
    EXPECT_EQ(danach(p.sicherung(T), u""), (Zeilen{a, b, log}));
    p.fs.schreibe(p.sicherung(T), als_Datei({u"[KalvoraBackup]", u"[c.dat]", u"[0]", u"[../b.dat]", u"[0]"}));
    EXPECT_FALSE(p.wieder.Restore_aus_Backupdatei(p.sicherung(T), u""));
    EXPECT_EQ(p.Meldungen().size(), 1U);
    EXPECT_FALSE(p.fs.gibt_es(p.daten(u"c.dat")));
}

} // namespace
} // namespace kalvora
