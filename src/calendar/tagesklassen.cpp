#include "calendar/tagesklassen.h"

#include <algorithm>

#include "base/zahl.h"

namespace kalvora {

namespace {

struct Ausnahmeteile {
    TextView wochenende, feiertage;
};

Ausnahmeteile teile(TextView ausnahmedaten) {
    const std::size_t trenner = ausnahmedaten.find(u':');
    if (trenner == TextView::npos) return {ausnahmedaten, u"NoEx"};
    return {ausnahmedaten.substr(0, trenner), ausnahmedaten.substr(trenner + 1)};
}

Text Tagesmarke(int tag) {
    return ziffern(tag, 2) + u'|';
}

int Anzahl(TextView tage, char16_t code) {
    return static_cast<int>(std::count(tage.begin(), tage.end(), code));
}

} // namespace

bool CheckFeiertag(const Tagesregeln& regeln, int tag) {
    const TextView ausnahmen = teile(regeln.Ausnahmedaten).feiertage;
    const Text marke = Tagesmarke(tag);
    if (enthält(ausnahmen, marke)) return true;
    return ausnahmen.starts_with(u"NoEx") && enthält(regeln.Feiertagsschlüssel, regeln.Anzeigemonat + marke);
}

bool CheckWochenende(const Tagesregeln& regeln, int tag) {
    const TextView ausnahmen = teile(regeln.Ausnahmedaten).wochenende;
    const TextView wochenende = ausnahmen.starts_with(u"NoEx") ? TextView(regeln.Wochenendtage) : ausnahmen;
    const Datum d = FormatDatumSD(regeln.Anzeigemonat + ziffern(tag, 2));
    return enthält(wochenende, Wochentag_kurz(Wochentag(d))) || enthält(ausnahmen, Tagesmarke(tag));
}

Monatsklassen::Monatsklassen(const Tagesregeln& regeln) {
    for (int tag = 1; tag <= 31; ++tag)
        klassen_[static_cast<size_t>(tag)] = {CheckFeiertag(regeln, tag), CheckWochenende(regeln, tag)};
}

Feld<Text> Kalenderwochenzeile(TextView yymm) {
    Feld<Text> zeile(32, u" ");
    const Datum erster = FormatDatumSD(Text(yymm) + u"01");
    const int d = Tage_im_Monat(yymm);
    for (int tag = 1; tag <= d; ++tag)
        zeile(tag) = ziffern(Kalenderwoche(erster + tag - 1)) + u". KW";
    // The columns that a week has before the first Monday.
    if (Wochentag(erster) >= 6) zeile(1) = u" ";
    if (Wochentag(erster) == 6) zeile(2) = u" ";
    const int letzter = Wochentag(erster + d - 1);
    if (d == 31 && letzter == 1)
        zeile(31) = u" ";
    else if (letzter <= 2)
        for (int spalte = d + 1; spalte <= 32; ++spalte)
            zeile(spalte) = zeile(d);
    return zeile;
}

int Monatsindex(Datum d, int Startjahr) {
    const Kalendertag tag = Kalendertag_aus(d);
    const int jahre = tag.jahr - Startjahr;
    return tag.monat + (jahre == 1 || jahre == 2 ? 12 * jahre : 0);
}

int AnAbwesenheitstage(int Grund, int U, Datum von, Datum bis, int Startjahr, const Monatszeile& zeile) {
    if (Grund == 0) return 0;
    const char16_t code = SFHex(Grund, U);
    const int erster = Monatsindex(von, Startjahr);
    const int letzter = Monatsindex(bis, Startjahr);
    const int tag_von = Kalendertag_aus(von).tag;
    const int tag_bis = Kalendertag_aus(bis).tag;
    if (erster == letzter)
        return Anzahl(mitte(zeile(erster), tag_von, std::max(0, tag_bis - tag_von + 1)), code);
    int summe = Anzahl(mitte(zeile(erster), tag_von), code) + Anzahl(links(zeile(letzter), tag_bis), code);
    for (int monat = erster + 1; monat < letzter; ++monat)
        summe += Anzahl(zeile(monat), code);
    return summe;
}

} // namespace kalvora
