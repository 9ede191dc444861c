// The month as a table: rows, cells, colours, sums, weeks. November 2026: the 1st is a Sunday, today is
// Monday the 16th, the 17th a holiday.
#include "unit/frame/pruefprogramm.h"

namespace kalvora {
namespace {

const Text DATEN = u"/srv/x/Data/";

struct Ansicht : SpeicherDateisystem, Firma {
    std::unique_ptr<Platzlauf> lauf;
    std::map<int, int> wahl; // display choices

    Platzlauf& öffne(const Text& benutzer, const Text& d = u"161126") {
        anlegen(*this, DATEN);
        lauf = std::make_unique<Platzlauf>(*this, benutzer);
        EXPECT_TRUE(lauf->starten({u"/path", DATEN, u"/nowelcomescreen", u"/d", d}));
        // As if the user had chosen it in an earlier run.
        for (const auto& [index, wert] : wahl)
            lauf->programm->daten().ini.wahl().Fensterdaten_(index) = wert;
        lauf->programm->hauptfenster().Tabellenfelder_anordnen();
        lauf->neu_laden();
        return *lauf;
    }
    const Monatsansicht& ansicht() { return lauf->programm->hauptfenster().ansicht(); }
    std::vector<Text> namen() {
        std::vector<Text> aus;
        for (int row = 1; row < lauf->plan().rows(); ++row)
            aus.push_back(lauf->plan().cell(row, 0).text);
        return aus;
    }
    // Index of the base colour of each day's cell in a row: "0" plain, "1" weekend, ...; "-" another colour.
    Text farben(const Table& tabelle, int row) {
        Text aus;
        for (int tag = 1; tag <= 31; ++tag) {
            const Farbe back = tabelle.cell(row, tag).back;
            char16_t zeichen = u'-';
            for (int n = 7; n >= 0; --n)
                if (lauf->programm->daten().K().Grundfarben(n) == back)
                    zeichen = static_cast<char16_t>(u'0' + n);
            aus += zeichen;
        }
        return aus;
    }
    Text farben(TextView wer) { return farben(lauf->plan(), lauf->zeile(wer)); }
};

Text Tage(std::initializer_list<std::pair<int, TextView>> stücke, char16_t leer) {
    Text aus(31, leer);
    for (const auto& [tag, text] : stücke)
        aus.replace(static_cast<size_t>(tag - 1), text.size(), text);
    return aus;
}

// Base colours that can be told apart.
Feld<Farbe, 0> Farben() {
    return {0xFFFFF0, 0xE8E8E1, 0xC0C0F2, 0xFFF8F3, 0xFFE8C4, 0xAFAFA5, 0xE8FFF6, 0xE8FFE7, 0xC0FFF8};
}

TEST(Monatsansicht, ZeilenNachBeschäftigung) {
    Ansicht v;
    v.personal = {u"Büro",
                  Firma::Person(u"bis3", u"000000", u"261103"),
                  Firma::Person(u"ab30", u"261130", u"999999"),
                  Firma::Person(u"vorher", u"000000", u"261031"),
                  Firma::Person(u"nachher", u"261201", u"999999"),
                  u"Leer"};
    v.öffne(u"chef");
    EXPECT_EQ(v.namen(), (std::vector<Text>{u"Büro", u"bis3 Name", u"ab30 Name", u"Leer"}));
    v.lauf->fenster_().tabMonate.user_select(11);
    EXPECT_EQ(v.namen(), (std::vector<Text>{u"Büro", u"ab30 Name", u"nachher Name", u"Leer"}));
    v.lauf->fenster_().tabMonate.user_select(9);
    EXPECT_EQ(v.namen(), (std::vector<Text>{u"Büro", u"bis3 Name", u"vorher Name", u"Leer"}));
}

TEST(Monatsansicht, ZeilenNachBerechtigungUndGruppe) {
    const struct {
        Text benutzer;
        int Setting1;
        std::vector<Text> namen;
    } tafel[] = {
        {u"eve", 0, {u"vorn Name", u"Büro", u"anna Name", u"", u"otto Name", u"Werk", u"eve Name"}},
        {u"eve", 2, {u"vorn Name", u"Werk", u"eve Name"}}, // what stands above all headings is for everybody
        {u"anna", 2, {u"vorn Name", u"Büro", u"anna Name", u"", u"otto Name"}},
        {u"chef", 2, {u"vorn Name", u"Büro", u"anna Name", u"", u"otto Name", u"Werk", u"eve Name"}},
    };
    for (const auto& fall : tafel) {
        Ansicht v;
        v.personal = {Firma::Person(u"vorn"), u"Büro", Firma::Person(u"anna"), u"",
                      Firma::Person(u"otto"), u"Werk", Firma::Person(u"eve")};
        v.Setting(1, fall.Setting1);
        v.öffne(fall.benutzer);
        EXPECT_EQ(v.namen(), fall.namen) << zu_utf8(fall.benutzer);
    }
    Ansicht v;
    v.öffne(u"chef");
    v.lauf->programm->daten().Anzeigegruppen = {u"Alle|Büro:Werk:", u"Nur Werk|Werk:", u"Nichts|erk:"};
    v.lauf->programm->daten().ini.wahl().Gruppenauswahl = 1;
    v.lauf->neu_laden();
    EXPECT_EQ(v.namen(), (std::vector<Text>{u"Werk", u"eve Name", u"chef Name"}));
    v.lauf->programm->daten().ini.wahl().Gruppenauswahl = 2;
    v.lauf->neu_laden();
    EXPECT_EQ(v.namen(), std::vector<Text>{u""}) << "one empty row";
    EXPECT_EQ(v.lauf->plan().cell(1, 0).back, v.lauf->programm->daten().K().Grundfarben(3));
}

TEST(Monatsansicht, ÜberschriftenUndNamen) {
    Ansicht v;
    v.konfig.Grundfarben = Farben();
    v.öffne(u"chef");
    const Table& plan = v.lauf->plan();
    EXPECT_EQ(plan.cell(0, 0).text, u"Name");
    EXPECT_EQ(plan.cell(0, 1).text, u"So\r1");
    EXPECT_EQ(plan.cell(0, 30).text, u"Mo\r30");
    EXPECT_EQ(plan.cell(0, 31).text, u"") << "no 31st";
    EXPECT_EQ(plan.cell(1, 0).back, Farben()(4));
    EXPECT_EQ(plan.cell(2, 0).back, Farben()(3));
    EXPECT_EQ(plan.cell(2, 32).text, u"anna");
    EXPECT_EQ(plan.cell(1, 32).text, u"");
    v.lauf->plan().set_col_width(1, 360);
    v.lauf->fenster_().tabMonate.user_select(1);
    EXPECT_EQ(plan.cell(0, 28).text, u"Sa 28");
    EXPECT_EQ(plan.cell(0, 29).text, u"");
}

TEST(Monatsansicht, Zellen) {
    Ansicht v;
    v.monate[u"2611"] = {A(u"ANNA", u"1"),      A(u"anna", u" 2345688"), A(u"fremd", u"1"),
                         A(u"otto", u"11"),     u"K:Anna:02-09:Kur",     u"K:anna:04-04:neu",
                         u"K:otto:03-05:nichts"};
    for (const int Setting6 : {0, 1}) {
        v.Setting(6, Setting6);
        v.öffne(u"chef");
        const int row = v.lauf->zeile(u"anna");
        EXPECT_EQ(v.lauf->zellen(row), Tage({{2, u"½ZDKS__"}}, u'.')) << "the later record, case apart";
        EXPECT_EQ(v.lauf->zellen(u"otto"), Tage({{1, u"UU"}}, u'.'));
        const Cell& krank = v.lauf->plan().cell(row, 5);
        EXPECT_EQ(krank.back, 0x8F8FFFU);
        EXPECT_EQ(krank.code, u'5');
        for (int tag = 1; tag <= 31; ++tag) {
            const Text soll = tag < 2 || tag > 8 ? u"" : tag == 4 ? u"neu" : u"Kur";
            EXPECT_EQ(v.ansicht().Zellkommentar(row, tag), soll) << tag;
            EXPECT_EQ(v.lauf->plan().cell(row, tag).bold, !soll.empty() && Setting6 == 0);
            EXPECT_EQ(v.ansicht().Zellkommentar(v.lauf->zeile(u"otto"), tag), u"")
                << "no comment without an entry";
        }
    }
}

TEST(Monatsansicht, FarbenDerTage) {
    // Days 1, 7/8, 14/15, 21/22, 28/29 are weekend, 17 is a holiday, 16 today.
    const struct {
        const char* was;
        int hervorhebung, Setting9;
        Text ausnahmen, leer;
    } tafel[] = {
        {"ordinary", 0, 0, u"NoEx:NoEx",
         Tage({{1, u"1"}, {7, u"11"}, {14, u"1172"}, {21, u"11"}, {28, u"11"}}, u'0')},
        {"today's column belongs to the pointer", 3, 0, u"NoEx:NoEx",
         Tage({{1, u"1"}, {7, u"11"}, {14, u"1102"}, {21, u"11"}, {28, u"11"}}, u'0')},
        {"today not marked", 0, 1, u"NoEx:NoEx",
         Tage({{1, u"1"}, {7, u"11"}, {14, u"1102"}, {21, u"11"}, {28, u"11"}}, u'0')},
        {"a frozen month: Friday alone, the 3rd off, the 6th and the 16th holidays", 0, 0, u"Fr03|:06|16|",
         Tage({{3, u"1"}, {6, u"2"}, {13, u"1"}, {16, u"2"}, {20, u"1"}, {27, u"1"}}, u'0')},
    };
    for (const auto& fall : tafel) {
        SCOPED_TRACE(fall.was);
        Ansicht v;
        v.konfig.Grundfarben = Farben();
        v.ausnahmen[u"2611"] = fall.ausnahmen;
        v.Setting(9, fall.Setting9);
        v.wahl = {{fenster::HERVORHEBUNG, fall.hervorhebung}, {fenster::TAGESSUMMEN, 1}};
        v.monate[u"2611"] = {A(u"anna", Tage({{7, u"1"}, {16, u"111"}}, u' ')),
                             A(u"otto", Tage({{16, u"88"}}, u' '))};
        v.öffne(u"chef");
        EXPECT_EQ(v.farben(u"eve"), fall.leer);
        Text anna = fall.leer;
        for (const size_t tag : {7, 16, 17, 18})
            anna[tag - 1] = u'-';
        EXPECT_EQ(v.farben(u"anna"), anna) << "entries keep their reason's colour";
        Text otto = fall.leer; // free days: the holiday's colour wins over theirs
        for (const size_t tag : {16, 17})
            otto[tag - 1] = fall.leer[tag - 1] == u'2' ? u'2' : u'1';
        EXPECT_EQ(v.farben(u"otto"), otto);
        Text summen = v.farben(v.lauf->fenster_().msgFlexTaSu, 1);
        if (fall.hervorhebung == 3) summen.replace(15, 1, fall.leer, 15, 1); // marked there all the same
        EXPECT_EQ(summen, fall.leer) << "sums have their day's colour, their text aside";
        EXPECT_EQ(v.lauf->plan().cell(0, 16).back == Farben()(6), fall.Setting9 == 0) << "heading of today";
    }
}

TEST(Monatsansicht, FerienHeuteUndÜberschriften) {
    Ansicht v;
    v.konfig.Grundfarben = Farben();
    v.schreibe(DATEN + u"Ferientage.dat",
               als_Datei({u"[Ferientage]", u"", u"65280", u"", u"", u"2611:" + Tage({{14, u"111"}}, u'0')}));
    v.wahl = {{fenster::HERVORHEBUNG, 0}, {fenster::ÜBERSCHRIFTEN, 1}};
    v.öffne(u"chef");
    const Table& plan = v.lauf->plan();
    EXPECT_EQ(plan.cell(0, 14).back, 0x00FF00U);
    EXPECT_EQ(plan.cell(0, 15).back, 0x00FF00U);
    EXPECT_EQ(plan.cell(0, 16).back, Farben()(6)) << "today wins over holidays from school";
    EXPECT_NE(plan.cell(0, 17).back, 0x00FF00U);
    EXPECT_EQ(v.farben(plan, 1), Text(31, u'4')) << "a heading row wins over all";
    EXPECT_EQ(v.farben(u"anna").substr(0, 2), u"10");
    v.lauf->programm->daten().ini.wahl().Fensterdaten_(fenster::SCHULFERIEN_AUS) = 1;
    v.lauf->neu_laden();
    EXPECT_NE(plan.cell(0, 14).back, 0x00FF00U);
    v.lauf->fenster_().tabMonate.user_select(11); // today is in another month
    for (int tag = 1; tag <= 31; ++tag)
        EXPECT_NE(plan.cell(0, tag).back, Farben()(6));
    EXPECT_EQ(v.farben(u"anna").find(u'7'), Text::npos);
}

TEST(Monatsansicht, Tagessummen) {
    Ansicht v;
    v.monate[u"2611"] = {A(u"anna", u"18"), A(u"otto", u"12"), A(u"eve", u"11"), A(u"fremd", u"11"),
                         A(u"eve", u"1")};
    v.wahl = {{fenster::TAGESSUMMEN, 1}};
    Platzlauf& l = v.öffne(u"chef");
    const Table& summen = l.fenster_().msgFlexTaSu;
    EXPECT_TRUE(summen.visible());
    EXPECT_EQ(summen.rows(), 7) << "the delete button has no row";
    EXPECT_EQ(summen.row_height(0), 0);
    EXPECT_EQ(summen.cell(2, 0).text, u"½ Urlaub");
    EXPECT_EQ(summen.cell(1, 1).text, u"3");
    EXPECT_EQ(summen.cell(1, 2).text, u"");
    EXPECT_EQ(summen.cell(2, 2).text, u"1");
    l.programm->daten().ini.wahl().TaSum[1] = u'0';
    l.programm->hauptfenster().Tabellenfelder_anordnen();
    EXPECT_EQ(summen.row_height(2), 0);
    EXPECT_NE(summen.row_height(1), 0);
    // An entry counts at once.
    l.trage_ein(u"chef", 18, 18, 1);
    EXPECT_EQ(summen.cell(1, 18).text, u"1");
    l.trage_ein(u"chef", 18, 18, 7);
    EXPECT_EQ(summen.cell(1, 18).text, u"");
}

TEST(Monatsansicht, Kalenderwochen) {
    Ansicht v;
    v.wahl = {{fenster::KALENDERWOCHEN, 1}};
    Platzlauf& l = v.öffne(u"chef");
    const Table& wochen = l.fenster_().msgFlexKaWo;
    EXPECT_TRUE(wochen.visible());
    EXPECT_TRUE(wochen.merged());
    const auto zeile = [&](int monat) {
        l.fenster_().tabMonate.user_select(monat - 1);
        std::vector<Text> aus;
        for (int spalte = 1; spalte <= 32; ++spalte)
            aus.push_back(wochen.cell(0, spalte).text);
        return aus;
    };
    const auto november = zeile(11);
    EXPECT_EQ(november[0], u" ") << "a Sunday alone has no room";
    EXPECT_EQ(november[1], u"45. KW");
    EXPECT_EQ(november[29], u"49. KW");
    EXPECT_EQ(november[31], u"49. KW") << "carried on behind the end";
    const auto august = zeile(8); // the 1st is a Saturday, the 31st a Monday
    EXPECT_EQ(august[0], u" ");
    EXPECT_EQ(august[1], u" ");
    EXPECT_EQ(august[2], u"32. KW");
    EXPECT_EQ(august[30], u" ");
}

TEST(Monatsansicht, JahreUndMonate) {
    for (const int Setting40 : {0, 1}) {
        Ansicht v;
        v.Setting(40, Setting40);
        Platzlauf& l = v.öffne(u"chef");
        frmKalvora& f = l.fenster_();
        EXPECT_EQ(v.ansicht().Anzeigemonat(), u"2611");
        f.tabJahre.user_select(2);
        EXPECT_EQ(v.ansicht().Anzeigemonat(), Setting40 == 0 ? u"2701" : u"2711");
        f.tabJahre.user_select(0);
        EXPECT_EQ(v.ansicht().Anzeigemonat(), Setting40 == 0 ? u"2512" : u"2511");
        f.tabJahre.user_arrow(1);
        EXPECT_EQ(v.ansicht().Anzeigemonat(), u"2512") << "arrows step the month, not the year";
        f.tabJahre.user_arrow(1);
        EXPECT_EQ(v.ansicht().Anzeigemonat(), u"2512");
        f.tabMonate.user_select(0);
        f.tabJahre.user_arrow(-1);
        EXPECT_EQ(v.ansicht().Anzeigemonat(), u"2501");
    }
    Ansicht v;
    v.öffne(u"chef", u"040126");
    EXPECT_EQ(v.ansicht().Anzeigemonat(), u"2601") << "January, the first tab, is shown too";
}

TEST(Monatsansicht, LangsameAnzeigeWirdGemerkt) {
    Ansicht v;
    EingriffsDateisystem fs(v.geteilte_platte());
    v.anlegen(fs, DATEN);
    Platzlauf l(fs, u"chef");
    ASSERT_TRUE(l.starten({u"/path", DATEN, u"/nowelcomescreen"}));
    EXPECT_FALSE(l.programm->platz().Langsame_Anzeige);
    fs.davor = [&](const std::string& aufruf, const Text& pfad) {
        if (aufruf == "open" && enthält(pfad, u"Data.dat")) l.uhr.weiter(0.3);
    };
    l.neu_laden();
    EXPECT_TRUE(l.programm->platz().Langsame_Anzeige);
    EXPECT_EQ(l.programm->daten().ini.wahl().Fensterdaten_(fenster::LANGSAM), 1);
}

} // namespace
} // namespace kalvora
