// The month as a table: rows, cells, colours, sums, weeks. November 2026: the 1st is a Sunday, today is
// Monday the 16th, the 17th a holiday.
#include "unit/plan/plan.h"

namespace kalvora {
namespace {

using plantest::DATEN;

struct Ansicht : plantest::Plan {
    std::map<int, int> wahl; // display choices

    Platzlauf& zeige(const Text& benutzer = u"chef") {
        öffne(benutzer);
        // As if the user had chosen it in an earlier run.
        for (const auto& [index, wert] : wahl)
            lauf->programm->daten().ini.wahl().Fensterdaten_(index) = wert;
        lauf->programm->hauptfenster().Tabellenfelder_anordnen();
        lauf->neu_laden();
        return *lauf;
    }
    const Monatsansicht& ansicht() { return lauf->programm->hauptfenster().ansicht(); }
    Text namen() {
        Text aus;
        for (int row = 1; row < lauf->plan().rows(); ++row)
            aus += lauf->plan().cell(row, 0).text + u"|";
        return aus;
    }
    Text Wochenanfänge() {
        Text aus;
        for (int tag = 1; tag <= 31; ++tag)
            if (lauf->plan().group_begins(tag)) aus += ziffern(tag) + u" ";
        return aus;
    }
    // Index of the base colour of each day's cell in a row: "0" plain, "1" weekend, ...; "-" another colour.
    Text farben(const Table& tabelle, int row) {
        Text aus;
        for (int tag = 1; tag <= 31; ++tag) {
            char16_t zeichen = u'-';
            for (int n = 7; n >= 0; --n)
                if (lauf->programm->daten().K().Grundfarben(n) == tabelle.cell(row, tag).back)
                    zeichen = static_cast<char16_t>(u'0' + n);
            aus += zeichen;
        }
        return aus;
    }
    Text farben(TextView wer) { return farben(lauf->plan(), lauf->zeile(wer)); }
};

Text Tage(std::initializer_list<std::pair<int, TextView>> stücke, char16_t leer) {
    return Ersetzen(plantest::Tage(stücke), u".", Text(1, leer));
}

// Base colours that can be told apart.
Feld<Farbe, 0> Farben() {
    return {0xFFFFF0, 0xE8E8E1, 0xC0C0F2, 0xFFF8F3, 0xFFE8C4, 0xAFAFA5, 0xE8FFF6, 0xE8FFE7, 0xC0FFF8};
}

TEST(Monatsansicht, ZeilenNachBeschäftigungBerechtigungUndGruppe) {
    Ansicht v;
    v.personal = {u"Büro", Firma::Person(u"bis3", u"000000", u"261103"),
                  Firma::Person(u"ab30", u"261130", u"999999"), Firma::Person(u"alt", u"000000", u"261031"),
                  u"Leer"};
    v.zeige();
    EXPECT_EQ(v.namen(), u"Büro|bis3 Name|ab30 Name|Leer|");
    v.lauf->fenster_().tabMonate.user_select(11);
    EXPECT_EQ(v.namen(), u"Büro|ab30 Name|Leer|");
    Ansicht w;
    w.personal = {Firma::Person(u"vorn"), u"Büro", Firma::Person(u"anna"), u"", u"Werk",
                  Firma::Person(u"eve")};
    w.Setting(1, 2);
    w.zeige(u"eve");
    EXPECT_EQ(w.namen(), u"vorn Name|Werk|eve Name|") << "what stands above all headings is for everybody";
    w.zeige(u"anna");
    EXPECT_EQ(w.namen(), u"vorn Name|Büro|anna Name||");
    w.zeige(u"chef");
    w.lauf->programm->daten().Anzeigegruppen = {u"Alle|Büro:Werk:", u"Nur Werk|Werk:", u"Nichts|erk:"};
    for (const auto& [gruppe, namen] : {std::pair{1, u"Werk|eve Name|"}, {2, u"|"}}) {
        w.lauf->programm->daten().ini.wahl().Gruppenauswahl = gruppe;
        w.lauf->neu_laden();
        EXPECT_TRUE(enthält(w.namen(), namen)) << zu_utf8(w.namen());
        EXPECT_FALSE(enthält(w.namen(), u"anna"));
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
        {"a frozen month: Friday alone, the 3rd off, the 6th and the 16th holidays", 0, 1, u"Fr03|:06|16|",
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
        v.zeige();
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
        EXPECT_EQ(summen, fall.leer) << "sums have their day's colour";
        EXPECT_EQ(v.lauf->plan().cell(0, 16).back == Farben()(6), fall.Setting9 == 0) << "heading of today";
    }
}

TEST(Monatsansicht, FerienHeuteUndÜberschriften) {
    Ansicht v;
    v.konfig.Grundfarben = Farben();
    v.schreibe(DATEN + u"Ferientage.dat",
               als_Datei({u"[Ferientage]", u"", u"65280", u"", u"", u"2611:" + Tage({{14, u"111"}}, u'0')}));
    v.wahl = {{fenster::HERVORHEBUNG, 0}, {fenster::ÜBERSCHRIFTEN, 1}};
    v.zeige();
    const Table& plan = v.lauf->plan();
    for (const auto& [tag, farbe] : {std::pair{15, 0x00FF00U}, {16, 0xE8FFF6U}}) // today wins
        EXPECT_EQ(plan.cell(0, tag).back, farbe);
    EXPECT_EQ(v.farben(plan, 1), Text(31, u'4')) << "a heading row wins over all";
    EXPECT_EQ(v.Wochenanfänge(), u"2 9 16 23 30 ");
    v.lauf->fenster_().tabMonate.user_select(11);
    EXPECT_EQ(v.Wochenanfänge(), u"7 14 21 28 ");
    EXPECT_EQ(v.farben(u"anna").find(u'7'), Text::npos) << "today is in another month";
}

TEST(Monatsansicht, Tagessummen) {
    Ansicht v;
    v.monate[u"2611"] = {A(u"anna", u"18"), A(u"otto", u"12"), A(u"eve", u"11"), A(u"fremd", u"11"),
                         A(u"eve", u"1")};
    v.wahl = {{fenster::TAGESSUMMEN, 1}};
    Platzlauf& l = v.zeige();
    const Table& summen = l.fenster_().msgFlexTaSu;
    EXPECT_EQ(summen.rows(), 7) << "the delete button has no row";
    for (const auto& [row, tag, text] :
         {std::tuple{1, 1, u"3"}, {1, 2, u""}, {2, 2, u"1"}, {2, 0, u"½ Urlaub"}})
        EXPECT_EQ(summen.cell(row, tag).text, text);
    l.programm->daten().ini.wahl().TaSum[1] = u'0';
    l.programm->hauptfenster().Tabellenfelder_anordnen();
    EXPECT_EQ(summen.row_height(2), 0);
    EXPECT_NE(summen.row_height(1), 0);
    EXPECT_EQ(summen.accessible_name(1, 4), u"Mittwoch 4. November, Urlaub: 0");
    l.trage_ein(u"chef", 18, 18, 1); // counts at once
    EXPECT_EQ(summen.cell(1, 18).text, u"1");
}

} // namespace
} // namespace kalvora
