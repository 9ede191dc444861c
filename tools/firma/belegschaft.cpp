#include "firma/belegschaft.h"

#include <algorithm>
#include <set>

#include "files/monatsdaten.h"
#include "firma/namen.h"

namespace kalvora::firma {

namespace {

constexpr std::size_t ANMELDENAME_HÖCHSTENS = 16; // characters, a number may follow

struct Name {
    TextView nach, vor;
    Text ganz() const { return Text(nach) + u" " + Text(vor); }
};

// Two people of the same name are told apart by nobody in the plan: rather draw again.
Name Name_ziehen(Zufall& zufall, std::set<Text>& vergeben) {
    Name name;
    for (int versuch = 0; versuch < 50; ++versuch) {
        name = {zufall.aus(Nachnamen()), zufall.aus(Vornamen())};
        if (vergeben.insert(name.ganz()).second) break;
    }
    return name;
}

// "mueller.a", then "mueller.an" and so on, at last with a number.
Text BenId_bilden(const Name& name, std::set<Text>& vergeben) {
    const Text nach(links(als_Anmeldename(name.nach), ANMELDENAME_HÖCHSTENS - 4));
    const Text vor = als_Anmeldename(name.vor);
    for (int n = 1; n <= 3; ++n) {
        const Text id = nach + u"." + Text(links(vor, n));
        if (vergeben.insert(id).second) return id;
    }
    for (int n = 2;; ++n) {
        const Text id = nach + u"." + Text(links(vor, 1)) + ziffern(n);
        if (vergeben.insert(id).second) return id;
    }
}

Text Zahl(int halbe) { // in halves: 61 is "030,5"
    return ziffern(halbe / 2, 3) + (halbe % 2 ? u",5" : u",0");
}

Text Urlaubszahlen(Person& p) {
    const int halb = p.zufall.prozent(6) ? 1 : 0;
    Text zahlen = Zahl(p.zufall.prozent(30) ? p.zufall.unter(17) : 0);
    for (int jahr = 1; jahr <= 4; ++jahr)
        zahlen += u":" + Zahl(p.Urlaubstage * 2 + halb);
    return zahlen;
}

// Most have been there all the time; some came, some went, within the three years.
void Beschäftigung_festlegen(Person& p, Mitarbeiter& m, const Firmenwunsch& wunsch) {
    const Datum anfang = Datum_aus(wunsch.Startjahr, 1, 1);
    p.Eintritt = anfang;
    p.Austritt = Datum_aus(wunsch.Startjahr + 3, 1, 0);
    m.MA_Von = u"000000";
    m.MA_Bis = u"999999";
    const bool kam = p.zufall.prozent(7), ging = p.zufall.prozent(5);
    const int Monat_von = p.zufall.zwischen(2, MONATE - 8), Dauer = p.zufall.zwischen(6, MONATE);
    if (wunsch.Jeden_Monat_Einträge) return;
    if (kam) {
        p.Eintritt = Datum_aus(wunsch.Startjahr, Monat_von, 1);
        m.MA_Von = FormatDatumDS(p.Eintritt);
    }
    const Datum ende = Datum_aus(wunsch.Startjahr, (kam ? Monat_von : 1) + Dauer, 0);
    if (ging && ende < p.Austritt) {
        p.Austritt = ende;
        m.MA_Bis = FormatDatumDS(ende);
    }
}

struct Eintrag {
    Mitarbeiter m;
    Person p;
    Text ordnung; // as sorted within a department
};

Eintrag Eintrag_bilden(int nr, const Firmenwunsch& wunsch, std::set<Text>& namen, std::set<Text>& BenIds) {
    Eintrag e;
    e.p.zufall = Zufall(wunsch.Saat, static_cast<std::uint64_t>(nr));
    const Name name = Name_ziehen(e.p.zufall, namen);
    e.m.MA_Name = name.ganz();
    // The user is one of the staff, so that what concerns the own row can be seen.
    e.m.MA_BenId = nr == 2 && !wunsch.Benutzername.empty() ? wunsch.Benutzername : BenId_bilden(name, BenIds);
    e.p.BenId = e.m.MA_BenId;
    e.p.Urlaubstage = e.p.zufall.zwischen(25, 30);
    e.p.reist = e.p.zufall.prozent(30);
    e.p.Schulkinder = e.p.zufall.prozent(35);
    if (e.p.zufall.prozent(11)) e.p.freier_Wochentag = e.p.zufall.prozent(60) ? 5 : e.p.zufall.zwischen(1, 4);
    e.m.MA_Urlaub = Urlaubszahlen(e.p);
    e.m.MA_Sonderurlaub = u"000,0";
    Beschäftigung_festlegen(e.p, e.m, wunsch);
    e.ordnung = als_Anmeldename(name.nach) + u" " + als_Anmeldename(name.vor);
    return e;
}

Text Überschrift(int nr) { // from 0
    const auto alle = Abteilungen();
    const auto n = static_cast<std::size_t>(nr);
    Text text(alle[n % alle.size()]);
    return n < alle.size() ? text : text + u" " + ziffern(static_cast<long>(n / alle.size()) + 1);
}

} // namespace

Belegschaft Belegschaft_bilden(const Firmenwunsch& wunsch) {
    Belegschaft aus;
    Zufall größen(wunsch.Saat, ~std::uint64_t{0});
    std::set<Text> namen, BenIds{klein(wunsch.Benutzername)};
    for (int nr = 1; nr <= wunsch.Mitarbeiter;) {
        aus.Zeilen.anfügen({Überschrift(aus.Überschriften++), {}, {}, {}, {}, {}});
        std::vector<Eintrag> abteilung;
        for (int rest = größen.zwischen(8, 15); rest > 0 && nr <= wunsch.Mitarbeiter; --rest)
            abteilung.push_back(Eintrag_bilden(nr++, wunsch, namen, BenIds));
        std::stable_sort(abteilung.begin(), abteilung.end(),
                         [](const Eintrag& a, const Eintrag& b) { return a.ordnung < b.ordnung; });
        for (Eintrag& e : abteilung) {
            aus.Zeilen.anfügen(std::move(e.m));
            aus.Personen.push_back(std::move(e.p));
        }
    }
    return aus;
}

} // namespace kalvora::firma
