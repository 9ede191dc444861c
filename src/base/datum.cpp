#include "base/datum.h"

#include <algorithm>
#include <array>

namespace kalvora {

namespace {

// Days from 0000-03-01 of the proleptic calendar; the year begins in March so that the leap day comes last.
constexpr long tage_seit_märz_null(long j, int m, int t) {
    if (m <= 2) --j;
    const long ära = (j >= 0 ? j : j - 399) / 400;
    const long jahr_der_ära = j - ära * 400;
    const long tag_des_jahres = (153 * (m + (m > 2 ? -3 : 9)) + 2) / 5 + t - 1;
    return ära * 146097 + jahr_der_ära * 365 + jahr_der_ära / 4 - jahr_der_ära / 100 + tag_des_jahres;
}

constexpr long NULLTAG = tage_seit_märz_null(1899, 12, 30);

int ziffernwert(TextView s, int von, int n) {
    return static_cast<int>(Val(mitte(s, von, n)));
}

Text zwei(int n) {
    return ziffern(n % 100, 2);
}

struct Datumsteile {
    Text tag, monat, jahr;
};

Datumsteile nach_Reihenfolge(const std::vector<Text>& teile, Datumsreihenfolge reihenfolge) {
    const auto teil = [&](size_t k) { return k < teile.size() ? teile[k] : Text(); };
    switch (reihenfolge) {
    case Datumsreihenfolge::MonatTagJahr: return {teil(1), teil(0), teil(2)};
    case Datumsreihenfolge::JahrMonatTag: return {teil(2), teil(1), teil(0)};
    default: return {teil(0), teil(1), teil(2)};
    }
}

// Short forms of a typed date brought to digits with separators; `fehler` is set when nothing can be made of
// it.
Datumsprüfung ergänzt(Text text, const Datumsformat& format) {
    const char16_t trenner = format.trennzeichen;
    if (text.size() == 3 && text[1] == trenner) text = Text(u"0") + text[0] + trenner + u'0' + text[2];
    if (text.size() < 4) return {{}, u"Das eingegebene Datum ist zu kurz"};
    if (text.find(trenner) == Text::npos) {
        if (text.size() == 4)
            text = text.substr(0, 2) + trenner + text.substr(2);
        else if (text.size() == 6)
            text = text.substr(0, 2) + trenner + text.substr(2, 2) + trenner + text.substr(4);
    }
    for (char16_t c : text)
        if (!ist_Ziffer(c) && c != trenner)
            return {{}, Text(u"Unzulässiges Zeichen '") + c + u"' im Datum enthalten"};
    const auto anzahl = std::count(text.begin(), text.end(), trenner);
    if (anzahl == 0) return {{}, Text(u"Kein Datumstrennzeichen '") + trenner + u"' gefunden"};
    // Only the year can be missing, wherever the order has it.
    const bool jahr_vorn = format.reihenfolge == Datumsreihenfolge::JahrMonatTag;
    if (anzahl == 1) text = jahr_vorn ? trenner + text : text + trenner;
    return {text, {}};
}

} // namespace

Datum Datum_aus(int jahr, int monat, int tag) {
    const int monate = monat - 1;
    const int jahre = monate >= 0 ? monate / 12 : (monate - 11) / 12;
    return static_cast<Datum>(tage_seit_märz_null(jahr + jahre, monate - jahre * 12 + 1, 1) - NULLTAG) + tag -
           1;
}

Kalendertag Kalendertag_aus(Datum d) {
    const long tage = d + NULLTAG;
    const long ära = (tage >= 0 ? tage : tage - 146096) / 146097;
    const long t = tage - ära * 146097;
    const long j = (t - t / 1460 + t / 36524 - t / 146096) / 365;
    const long rest = t - (365 * j + j / 4 - j / 100);
    const long m = (5 * rest + 2) / 153;
    const int monat = static_cast<int>(m < 10 ? m + 3 : m - 9);
    return {static_cast<int>(j + ära * 400 + (monat <= 2 ? 1 : 0)), monat,
            static_cast<int>(rest - (153 * m + 2) / 5 + 1)};
}

int Jahr(Datum d) {
    return Kalendertag_aus(d).jahr;
}

int Wochentag(Datum d) {
    return ((d - 2) % 7 + 7) % 7 + 1; // serial 2 is Monday, 1 January 1900
}

int Kalenderwoche(Datum d) {
    const Datum donnerstag = d - Wochentag(d) + 4;
    return (donnerstag - Datum_aus(Jahr(donnerstag), 1, 1)) / 7 + 1;
}

TextView Wochentag_kurz(int wochentag) {
    static constexpr std::array<TextView, 7> NAMEN{u"Mo", u"Di", u"Mi", u"Do", u"Fr", u"Sa", u"So"};
    return wochentag >= 1 && wochentag <= 7 ? NAMEN[static_cast<size_t>(wochentag - 1)] : TextView{};
}

int Tage_im_Monat(int jahr, int monat) {
    return Datum_aus(jahr, monat + 1, 1) - Datum_aus(jahr, monat, 1);
}

int Tage_im_Monat(TextView yymm) {
    return Tage_im_Monat(volles_Jahr(ziffernwert(yymm, 1, 2)), ziffernwert(yymm, 3, 2));
}

int volles_Jahr(int zweistellig) {
    return zweistellig < 80 ? 2000 + zweistellig : 1900 + zweistellig;
}

Text FormatDatumDS(Datum d) {
    const Kalendertag k = Kalendertag_aus(d);
    return zwei(k.jahr) + zwei(k.monat) + zwei(k.tag);
}

Datum FormatDatumSD(TextView s) {
    return Datum_aus(volles_Jahr(ziffernwert(s, 1, 2)), ziffernwert(s, 3, 2), ziffernwert(s, 5, 2));
}

Text FormatZeit(const Zeitpunkt& z) {
    return zwei(z.stunde) + u':' + zwei(z.minute) + u':' + zwei(z.sekunde);
}

Text Datumsformat::FormatDatumSA(TextView s) const {
    const Text jj(mitte(s, 1, 2)), mm(mitte(s, 3, 2)), tt(mitte(s, 5, 2));
    switch (reihenfolge) {
    case Datumsreihenfolge::MonatTagJahr: return mm + trennzeichen + tt + trennzeichen + jj;
    case Datumsreihenfolge::JahrMonatTag: return jj + trennzeichen + mm + trennzeichen + tt;
    default: return tt + trennzeichen + mm + trennzeichen + jj;
    }
}

Text Datumsformat::FormatDatumAS(TextView a) const {
    const Text erstes(mitte(a, 1, 2)), mittleres(mitte(a, 4, 2)), letztes(rechts(a, 2));
    switch (reihenfolge) {
    case Datumsreihenfolge::MonatTagJahr: return letztes + erstes + mittleres;
    case Datumsreihenfolge::JahrMonatTag: return erstes + mittleres + letztes;
    default: return letztes + mittleres + erstes;
    }
}

Datumsprüfung CheckDatum(TextView eingabe, const Datumsformat& format, Datum heute, int höchstlänge) {
    const Text roh(trimmen(eingabe));
    if (roh.empty()) return {roh, {}};
    const Datumsprüfung form = ergänzt(roh, format);
    if (!form.gültig()) return {roh, form.fehler};
    const Datumsteile teile = nach_Reihenfolge(teilen(form.text, format.trennzeichen), format.reihenfolge);
    const long tag = Val(teile.tag);
    const long monat = Val(teile.monat);
    long jahr = teile.jahr.empty() ? Jahr(heute) : Val(teile.jahr);
    if (tag < 1 || tag > 31 || monat < 1 || monat > 12) return {roh, u"Datumseingabe nicht plausibel"};
    if (jahr < 100) jahr = volles_Jahr(static_cast<int>(jahr));
    const int letzter = Tage_im_Monat(static_cast<int>(jahr % 10000), static_cast<int>(monat));
    const Text s = zwei(static_cast<int>(jahr % 100)) + zwei(static_cast<int>(monat)) +
                   zwei(std::min(static_cast<int>(tag), letzter));
    const Text a = format.FormatDatumSA(s);
    if (höchstlänge >= 8) return {a, {}};
    return {format.reihenfolge == Datumsreihenfolge::JahrMonatTag ? Text(mitte(a, 4)) : Text(links(a, 6)),
            {}};
}

} // namespace kalvora
