// From the pressed button to the capture file and the log, through the main window's controls.
#include "unit/plan/plan.h"

namespace kalvora {
namespace {

using namespace plantest;

TEST(Eintragung, Spannen) {
    const struct {
        const char* was;
        std::initializer_list<std::pair<int, TextView>> vorher, nachher; // codes, cells
        int von, bis, b;
        Text log; // empty: nothing is written
        int Setting12 = 0;
    } tafel[] = {
        {"Friday to Monday: the weekend stays free",
         {},
         {{20, u"U"}, {23, u"U"}},
         20,
         23,
         U,
         u"Urlaub|201126|231126"},
        {"the same with entries on weekends", {}, {{20, u"UUUU"}}, 20, 23, U, u"Urlaub|201126|231126", 1},
        {"marked from right to left", {}, {{20, u"U"}, {23, u"U"}}, 23, 20, U, u"Urlaub|201126|231126"},
        {"start on a Saturday", {}, {{23, u"UU"}}, 21, 24, U, u"Urlaub|231126|241126"},
        {"end on a Sunday", {}, {{19, u"UU"}}, 19, 22, U, u"Urlaub|191126|201126"},
        {"weekend alone", {}, {}, 21, 22, U, u""},
        {"a holiday alone", {}, {}, 17, 17, U, u""},
        {"over a holiday", {}, {{16, u"U"}, {18, u"U"}}, 16, 18, U, u"Urlaub|161126|181126"},
        {"an entry on a weekend within the span goes",
         {{21, u"6"}},
         {{20, u"U"}, {23, u"U"}},
         20,
         23,
         U,
         u"Urlaub|201126|231126"},
        {"an entry on a weekend at the end counts",
         {{21, u"6"}},
         {{20, u"U"}},
         20,
         21,
         U,
         u"Urlaub|201126|211126"},
        {"beyond the 30th", {}, {{30, u"U"}}, 30, 31, U, u"Urlaub|301126|301126"},
        {"the 31st alone", {}, {}, 31, 31, U, u""},
        {"from the name column", {}, {{16, u"U"}}, 0, 16, U, u"Urlaub|161126|161126"},
        {"a free day stays", {{19, u"8"}}, {{18, u"U_U"}}, 18, 20, U, u"Urlaub|181126|201126"},
        {"a free day is overwritten", {{19, u"8"}}, {{18, u"UUU"}}, 18, 20, U, u"Urlaub|181126|201126", 1},
        {"the same again", {{18, u"111"}}, {{18, u"UUU"}}, 18, 20, U, u""},
        {"in part the same", {{18, u"11"}}, {{18, u"UUU"}}, 18, 20, U, u"Urlaub|181126|201126"},
        {"the same letter's other reason", {{18, u"1"}}, {{18, u"½"}}, 18, 18, 2, u"½ Urlaub|181126|181126"},
        {"delete", {{18, u"66"}}, {{19, u"S"}}, 18, 18, LÖSCHEN, u"Löschen|181126|181126"},
        {"delete: ends without entry fall away", {{19, u"6"}}, {}, 16, 27, LÖSCHEN, u"Löschen|191126|191126"},
        {"delete over nothing", {}, {}, 16, 27, LÖSCHEN, u""},
        {"delete past a free day", {{18, u"68"}}, {{19, u"_"}}, 18, 19, LÖSCHEN, u"Löschen|181126|191126"},
        {"delete a free day", {{18, u"8"}}, {}, 18, 18, LÖSCHEN, u"Löschen|181126|181126", 1},
    };
    for (const auto& fall : tafel) {
        SCOPED_TRACE(fall.was);
        Plan p;
        p.Setting(12, fall.Setting12);
        p.Setting(45, 1);
        Platzlauf& l = p.öffne(u"anna", {Satz(u"anna", fall.vorher), Satz(u"otto", {{18, u"3"}})});
        const auto vorher = p.platte().abbild();
        const Text früher = p.zeilen()[0];
        const Cell kopf = l.plan().cell(0, 18);
        if (fall.von == 0) // the past is for administrators: the name column is dragged over in December
            l.fenster_().tabMonate.user_select(11);
        const int von = fall.von, bis = fall.bis;
        EXPECT_TRUE(l.trage_ein(u"anna", von, bis, fall.b));
        EXPECT_TRUE(l.fenster.hinweise.empty())
            << zu_utf8(l.fenster.hinweise.empty() ? u"" : l.fenster.hinweise[0]);
        EXPECT_FALSE(l.plan().HighLight());
        if (fall.von == 0) {
            EXPECT_EQ(p.zeilen(u"2612").back(), Satz(u"anna", {{1, u"1111"}, {7, u"11111"}, {14, u"111"}}));
            continue;
        }
        EXPECT_EQ(l.zellen(u"anna"), Tage(fall.nachher));
        if (fall.log.empty()) {
            EXPECT_TRUE(p.platte().abbild() == vorher) << "written";
            continue;
        }
        EXPECT_EQ(p.log(), std::vector<Text>{u"anna|" + fall.log});
        // What was written is what is shown, to others too, and the other row is as it was.
        Platzlauf& neu = p.platz(u"chef");
        EXPECT_EQ(neu.zellen(u"anna"), Tage(fall.nachher));
        EXPECT_EQ(neu.zellen(u"otto"), Tage({{18, u"Z"}}));
        EXPECT_EQ(neu.plan().cell(0, 18).text, kopf.text);
    }
}

TEST(Eintragung, GelöschteZellenHabenDieFarbeIhresTages) {
    Plan p;
    p.Setting(12, 1);
    Platzlauf& l = p.öffne(u"chef", {Satz(u"anna", {{16, u"11111111"}}), Satz(u"otto", {})});
    l.trage_ein(u"anna", 16, 23, LÖSCHEN);
    for (int tag = 1; tag <= 31; ++tag) {
        EXPECT_EQ(l.plan().cell(l.zeile(u"anna"), tag).back, l.plan().cell(l.zeile(u"otto"), tag).back)
            << tag;
        EXPECT_EQ(l.plan().cell(l.zeile(u"anna"), tag).code, u' ');
    }
    EXPECT_EQ(p.zeilen().back(), Satz(u"anna", {}));
}

TEST(Eintragung, Ablehnungen) {
    const Text nur_von = u"Einträge können nur von folgenden Administratoren vorgenommen werden: " + LISTE;
    const struct {
        const char* was;
        Text benutzer, wer;
        int von, bis, b;
        std::vector<std::pair<int, int>> settings;
        Text hinweis;
    } tafel[] = {
        {"a button for administrators",
         u"anna",
         u"anna",
         18,
         18,
         5,
         {},
         u"Diese Schaltfläche ist folgenden Administratoren vorbehalten: " + LISTE},
        {"nothing is marked",
         u"anna",
         u"",
         0,
         0,
         U,
         {},
         u"Bitte markieren Sie mit der Maus den Zeitraum für den Sie Eintragungen vornehmen möchten und "
         u"betätigen "
         u"Sie die Schaltfläche dann erneut."},
        {"another's row",
         u"anna",
         u"otto",
         18,
         18,
         U,
         {},
         u"Sie dürfen nur für sich selbst Eintragungen vornehmen.\n\nEinträge für andere Mitarbeiter können "
         u"nur von "
         u"folgenden Administratoren vorgenommen werden: " +
             LISTE},
        {"not listed",
         u"fremd",
         u"otto",
         18,
         18,
         U,
         {},
         u"Sie sind mit Ihrem Windows-Benutzernamen 'fremd' nicht als Mitarbeiter im Kalvora "
         u"eingetragen.\n\n" +
             nur_von},
        {"administrators alone", u"anna", u"anna", 18, 18, U, {{10, 1}}, nur_von},
        {"the same by the other setting", u"anna", u"anna", 18, 18, U, {{28, 1}}, nur_von},
        {"a heading",
         u"chef",
         u"Werk",
         18,
         18,
         U,
         {},
         u"Überschriftzeile. In dieser Zeile ist kein Eintrag möglich."},
        {"the past",
         u"anna",
         u"anna",
         13,
         18,
         U,
         {},
         u"Eintrag nicht möglich. Änderungen für in der Vergangenheit liegende Zeiträume sind folgenden "
         u"Administratoren "
         u"vorbehalten: " +
             LISTE},
        {"the past although confirmed for all",
         u"anna",
         u"anna",
         13,
         13,
         U,
         {{45, 1}},
         u"Eintrag nicht möglich. Änderungen für in der Vergangenheit liegende Zeiträume sind folgenden "
         u"Administratoren "
         u"vorbehalten: " +
             LISTE},
        {"free days alone",
         u"anna",
         u"anna",
         24,
         25,
         LÖSCHEN,
         {},
         u"Arbeitsfreie Tage können nur gelöscht werden, indem Sie auf den Eintrag doppelklicken"},
        {"the name alone", u"anna", u"anna", 0, 0, U, {}, u""},
    };
    for (const auto& fall : tafel) {
        SCOPED_TRACE(fall.was);
        Plan p;
        for (const auto& [n, wert] : fall.settings)
            p.Setting(n, wert);
        Platzlauf& l = p.öffne(fall.benutzer, {Satz(u"anna", {{24, u"8"}})});
        const auto vorher = p.platte().abbild();
        const int row = fall.wer == u"Werk" ? 4 : l.zeile(fall.wer);
        if (!fall.wer.empty()) l.markiere(row, fall.von, fall.bis);
        const Text zellen = row > 0 ? l.zellen(row) : Text();
        l.drücke(fall.b);
        EXPECT_EQ(l.fenster.hinweise,
                  fall.hinweis.empty() ? std::vector<Text>{} : std::vector<Text>{fall.hinweis});
        EXPECT_EQ(row > 0 ? l.zellen(row) : Text(), zellen);
        EXPECT_TRUE(p.platte().abbild() == vorher) << "written";
        EXPECT_TRUE(l.fenster.fragen.empty());
    }
}

TEST(Eintragung, HinweisAufDieMarkierungKommtEinmal) {
    Plan p;
    Platzlauf& l = p.öffne(u"anna");
    l.drücke(U);
    l.drücke(U);
    EXPECT_EQ(l.fenster.hinweise.size(), 1U);
    EXPECT_EQ(p.geschrieben(), 0);
}

TEST(Eintragung, OhneMitarbeiter) {
    Plan p;
    p.personal = {u"NoNames"};
    Platzlauf& l = p.öffne(u"chef");
    l.markiere(1, 18, 18);
    l.drücke(U);
    EXPECT_EQ(l.fenster.hinweise, std::vector<Text>{Text(Mitarbeiterdaten::KEINE_MITARBEITER)});
    EXPECT_EQ(p.geschrieben(), 0);
}

TEST(Eintragung, Vergangenheit) {
    const struct {
        const char* was;
        Text benutzer;
        int Setting45, Setting46;
        Antwort antwort;
        size_t fragen; // in two entries
        bool eingetragen;
    } tafel[] = {
        {"an administrator says no", u"chef", 0, 0, Antwort::Nein, 2, false},
        {"an administrator says yes, once", u"chef", 0, 0, Antwort::Ja, 1, true},
        {"a privileged user", u"priv", 0, 0, Antwort::Ja, 1, true},
        {"confirmed for all", u"chef", 1, 0, Antwort::Nein, 0, true},
        {"employees may", u"anna", 0, 1, Antwort::Ja, 1, true},
        {"employees may, and this one does not", u"anna", 0, 1, Antwort::Nein, 2, false},
        {"employees may without being asked", u"anna", 1, 1, Antwort::Nein, 0, true},
    };
    for (const auto& fall : tafel) {
        SCOPED_TRACE(fall.was);
        Plan p;
        p.Setting(45, fall.Setting45);
        p.Setting(46, fall.Setting46);
        Platzlauf& l = p.öffne(fall.benutzer);
        l.fenster.antwort = fall.antwort;
        l.trage_ein(u"anna", 12, 13, U);
        l.trage_ein(u"anna", 10, 18, SONST);
        EXPECT_EQ(l.fenster.fragen.size(), fall.fragen);
        EXPECT_EQ(l.zellen(u"anna"), fall.eingetragen ? Tage({{10, u"SSSS"}, {16, u"S.S"}}) : Tage({}));
        EXPECT_EQ(p.zeilen().size(), fall.eingetragen ? 2U : 0U);
        EXPECT_TRUE(l.fenster.hinweise.empty());
    }
    // The first day that is left after trimming decides: the weekend before today is none of the past.
    Plan p;
    p.öffne(u"anna").trage_ein(u"anna", 14, 16, U);
    EXPECT_EQ(p.lauf->zellen(u"anna"), Tage({{16, u"U"}}));
    EXPECT_TRUE(p.lauf->fenster.hinweise.empty());
}

// Rows 1 Büro, 2 anna, 3 otto, 4 Werk, 5 eve, 6 chef.
TEST(Eintragung, MehrereZeilen) {
    Plan p;
    Platzlauf& l = p.öffne(u"chef", {Satz(u"otto", {{18, u"11"}}), u"K:otto:18-19:Kur"});
    l.markiere(6, 19, 18, 1); // from below and from the right, over both headings
    l.drücke(U);
    for (TextView wer : {u"anna", u"otto", u"eve", u"chef"})
        EXPECT_EQ(l.zellen(wer), Tage({{18, u"UU"}}));
    // otto's row was that already: nothing of it is written, and his comment stays.
    EXPECT_EQ(p.zeilen(), (std::vector<Text>{Satz(u"otto", {{18, u"11"}}), u"K:otto:18-19:Kur",
                                             Satz(u"anna", {{18, u"11"}}), Satz(u"eve", {{18, u"11"}}),
                                             Satz(u"chef", {{18, u"11"}})}));
    EXPECT_EQ(p.log(), (std::vector<Text>{u"anna|Urlaub|181126|191126", u"eve|Urlaub|181126|191126",
                                          u"chef|Urlaub|181126|191126"}));
    p.tagebuch_leeren();
    l.markiere(1, 18, 19, 6);
    l.drücke(LÖSCHEN);
    EXPECT_EQ(p.geschrieben(), 2) << "one write for the month, one for the log";
    EXPECT_EQ(p.zeilen().size(), 5U + 5U) << "four rows, and a row that takes otto's comment";
    EXPECT_EQ(l.zellen(u"eve"), Tage({}));
    EXPECT_FALSE(l.plan().HighLight());
    EXPECT_TRUE(l.erfassung().Speicherpuffer().empty());
    EXPECT_FALSE(l.erfassung().Sammeln());
}

TEST(Eintragung, MehrereZeilenWerdenVorherGeprüft) {
    for (const auto antwort : {Antwort::Nein, Antwort::Ja}) {
        Plan p;
        Platzlauf& l = p.öffne(u"chef");
        l.fenster.antwort = antwort;
        l.markiere(2, 13, 18, 6);
        l.drücke(U);
        EXPECT_EQ(l.fenster.fragen.size(), 1U) << "once for all rows";
        const bool ja = antwort == Antwort::Ja;
        for (TextView wer : {u"anna", u"chef"})
            EXPECT_EQ(l.zellen(wer), ja ? Tage({{13, u"U"}, {16, u"U.U"}}) : Tage({}));
        EXPECT_EQ(p.zeilen().size(), ja ? 4U : 0U);
        EXPECT_EQ(p.log().size(), ja ? 4U : 0U);
    }
    const struct {
        Text benutzer;
        int Setting44;
        Text hinweis;
    } tafel[] = {
        {u"anna", 0, u"Die Markierung darf sich nur bei Administratoren über mehr als eine Zeile erstrecken"},
        {u"chef", 1, u"Die Markierung darf sich nicht über mehr als eine Zeile erstrecken"},
        {u"priv", 0, u""},
    };
    for (const auto& fall : tafel) {
        Plan p;
        p.Setting(44, fall.Setting44);
        Platzlauf& l = p.öffne(fall.benutzer);
        l.markiere(2, 18, 18, 3);
        l.drücke(U);
        EXPECT_EQ(l.fenster.hinweise,
                  fall.hinweis.empty() ? std::vector<Text>{} : std::vector<Text>{fall.hinweis});
        EXPECT_EQ(l.zellen(u"otto"), fall.hinweis.empty() ? Tage({{18, u"U"}}) : Tage({}));
    }
}

// A refusal on the way leaves neither rows nor log lines behind, on the disk or in the buffers.
TEST(Eintragung, AbgelehntBeimSchreiben) {
    Plan p;
    Platzlauf& l = p.öffne(u"chef", {Satz(u"anna", {{18, u"3"}})});
    l.markiere(2, 18, 18, 6);
    l.erfassung().vor_dem_Schreiben = [] { return false; };
    l.drücke(U);
    EXPECT_EQ(l.fenster.hinweise.size(), 1U);
    EXPECT_EQ(p.geschrieben(), 0);
    EXPECT_EQ(l.zellen(u"anna"), Tage({{18, u"Z"}})) << "shown as it is stored";
    EXPECT_EQ(l.zellen(u"chef"), Tage({}));
    l.erfassung().vor_dem_Schreiben = {};
    l.trage_ein(u"otto", 19, 19, U);
    EXPECT_EQ(p.log(), std::vector<Text>{u"otto|Urlaub|191126|191126"});
}

} // namespace
} // namespace kalvora
