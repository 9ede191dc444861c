#include "calendar/feiertage.h"

#include <algorithm>

namespace kalvora {

namespace {

bool fester_Tag(TextView datum) {
    return zeichen(datum, 3) == u'.' && zeichen(datum, 6) == u'.';
}

// "dd.mm." with digits in their places.
bool ist_Tag_im_Jahr(TextView datum) {
    return datum.size() == 6 && fester_Tag(datum) && nur_Ziffern(links(datum, 2)) &&
           nur_Ziffern(mitte(datum, 4, 2));
}

// Month of a code "1" to "9", "A" to "C"; "0" is 0, nothing for any other character.
std::optional<int> Monat_aus_Code(char16_t c) {
    if (ist_Ziffer(c)) return c - u'0';
    if (c >= u'A' && c <= u'C') return c - u'A' + 10;
    return std::nullopt;
}

struct Regel {
    TextView art;       // columns 3 and 4
    TextView parameter; // columns 5 and 6
    int n = 0;
    int monat = 0;
};

// Both columns of the parameter must be readable whatever the kind.
std::optional<Regel> Regel_aus(TextView zeile) {
    Regel r{mitte(zeile, 3, 2), mitte(zeile, 5, 2), 0, 0};
    const auto monat = Monat_aus_Code(zeichen(zeile, 6));
    if (!ist_Ziffer(zeichen(zeile, 5)) || !monat) return std::nullopt;
    r.n = zeichen(zeile, 5) - u'0';
    r.monat = *monat;
    if ((r.art == u"VO" || r.art == u"NO") && !nur_Ziffern(r.parameter)) return std::nullopt;
    return r;
}

bool nach_Wochentag(TextView art) {
    return art == u"W1" || art == u"W4" || art == u"W5" || art == u"L1";
}

// The last such weekday strictly before a day.
Datum Wochentag_davor(Datum d, int wochentag) {
    const int s = Wochentag(d) - wochentag;
    return d - (s < 1 ? s + 7 : s);
}

std::optional<Datum> Tag_der_Regel(const Regel& r, int jahr) {
    if (r.art == u"VO") return Osterdatum(jahr) - static_cast<int>(Val(r.parameter));
    if (r.art == u"NO") return Osterdatum(jahr) + static_cast<int>(Val(r.parameter));
    if (r.art == u"BU") {
        const Datum weihnachten = Datum_aus(jahr, 12, 25);
        return weihnachten - Wochentag(weihnachten) - 28 - 4;
    }
    if (!nach_Wochentag(r.art)) return std::nullopt;
    const int wochentag = r.art[1] - u'0';
    if (r.art == u"L1") return Wochentag_davor(Datum_aus(jahr, r.monat + 1, 1), wochentag) - 7 * r.n;
    return Wochentag_davor(Datum_aus(jahr, r.monat, 1), wochentag) + 7 * r.n;
}

[[noreturn]] void unlesbar(int r) {
    Laufzeitfehler fehler(13, u"Feiertagsregel " + ziffern(r) + u" ist nicht lesbar", {}, r);
    fehler.prozedur = u"modKalvora - Feiertage_berechnen";
    throw fehler;
}

// Behind the name's first bracket stands a note for the holiday window; it goes, and the blank before it too.
Text ohne_Vermerk(Text eintrag) {
    const std::size_t klammer = eintrag.find(u'(');
    if (klammer != Text::npos) eintrag.resize(klammer > 0 ? klammer - 1 : 0);
    return eintrag;
}

// "yymmdd:Name" of a row in a year; empty when the row gives no day.
Text Landesfeiertag(TextView zeile, int r, int jahr) {
    if (zeichen(zeile, 1) != u'1') return {};
    const TextView datum = mitte(zeile, 3, 6);
    Text tag;
    if (fester_Tag(datum)) {
        if (!ist_Tag_im_Jahr(datum)) unlesbar(r);
        tag = ziffern(jahr % 100, 2) + Text(mitte(datum, 4, 2)) + Text(mitte(datum, 1, 2));
    } else {
        const auto regel = Regel_aus(zeile);
        if (!regel) unlesbar(r);
        const auto d = Tag_der_Regel(*regel, jahr);
        if (!d) return {};
        tag = FormatDatumDS(*d);
    }
    return ohne_Vermerk(tag + u":" + Text(mitte(zeile, 10)));
}

Text weiterer_Feiertag(TextView zeile, int jahr) {
    if (!ist_Tag_im_Jahr(zeile)) return {};
    return ziffern(jahr % 100, 2) + Text(mitte(zeile, 4, 2)) + Text(mitte(zeile, 1, 2));
}

void anfügen_für_Jahr(Feld<Text>& liste, const Feld<Text>& regeln, int jahr) {
    const int letzte = std::min(regeln.oben(), FEIERTAGSREGELN_HÖCHSTENS);
    for (int r = 1; r <= letzte; ++r) {
        Text eintrag = r <= FEIERTAGSREGELN_LAND ? Landesfeiertag(regeln(r), r, jahr)
                                                 : weiterer_Feiertag(regeln(r), jahr);
        if (!eintrag.empty()) liste.anfügen(std::move(eintrag));
    }
}

} // namespace

Datum Osterdatum(int jahr) {
    const int a = jahr % 19;
    const int b = jahr % 4;
    const int c = jahr % 7;
    const int d = (19 * a + 24) % 30;
    const int e = (2 * b + 4 * c + 6 * d + 5) % 7;
    const int tag = 22 + d + e;
    return tag > 31 ? Datum_aus(jahr, 4, d + e - 9) : Datum_aus(jahr, 3, tag);
}

Feiertage Feiertage_berechnen(int Startjahr, const Feld<Text>& Feiertagsregeln) {
    Feiertage ergebnis;
    ergebnis.Feiertagsliste.leeren();
    for (int k = 0; k < 3; ++k)
        anfügen_für_Jahr(ergebnis.Feiertagsliste, Feiertagsregeln, Startjahr + k);
    if (ergebnis.Feiertagsliste.leer()) return {};
    ergebnis.Feiertagsschlüssel.clear();
    for (const Text& eintrag : ergebnis.Feiertagsliste)
        ergebnis.Feiertagsschlüssel += Text(links(eintrag, 6)) + u'|';
    return ergebnis;
}

std::optional<Text> Feiertagsname(const Feiertage& feiertage, TextView yymmdd) {
    for (const Text& eintrag : feiertage.Feiertagsliste)
        if (links(eintrag, 6) == yymmdd) return Text(mitte(eintrag, 8));
    return std::nullopt;
}

bool Feiertagsregel_lesbar(TextView regel, int r) {
    if (r > FEIERTAGSREGELN_LAND) return ist_Tag_im_Jahr(regel);
    if (zeichen(regel, 2) != u':' || zeichen(regel, 9) != u':') return false;
    if (zeichen(regel, 1) != u'1') return true;
    const TextView datum = mitte(regel, 3, 6);
    if (fester_Tag(datum)) return ist_Tag_im_Jahr(datum);
    const auto gelesen = Regel_aus(regel);
    if (!gelesen || !Tag_der_Regel(*gelesen, 2000)) return false;
    return !nach_Wochentag(gelesen->art) || gelesen->monat > 0;
}

} // namespace kalvora
