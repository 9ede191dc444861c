#include "files/monatsdatei.h"

#include <algorithm>
#include <cstring>

#include "base/cp1252.h"
#include "base/datum.h"
#include "base/zahl.h"
#include "files/ordner.h"

namespace kalvora {

namespace {

bool zwei_Ziffern(std::string_view s, std::size_t ab, int& wert) {
    const auto ziffer = [](char c) { return c >= '0' && c <= '9'; };
    if (!ziffer(s[ab]) || !ziffer(s[ab + 1])) return false;
    wert = (s[ab] - '0') * 10 + (s[ab + 1] - '0');
    return true;
}

// "dd-dd:text"
bool Kommentar_lesbar(std::string_view rest, Zeilenbefund& befund) {
    if (rest.size() < 6 || rest[2] != '-' || rest[5] != ':') return false;
    if (!zwei_Ziffern(rest, 0, befund.von) || !zwei_Ziffern(rest, 3, befund.bis)) return false;
    befund.inhalt = rest.substr(6);
    return befund.von >= 1 && befund.bis <= TAGE && befund.von <= befund.bis;
}

Text tage_gefiltert(std::string_view inhalt, const Codefilter& filter, int länge) {
    Text tage(TAGE, u' ');
    for (int t = 0; t < länge; ++t)
        tage[static_cast<size_t>(t)] = static_cast<char16_t>(filter(inhalt[static_cast<size_t>(t)]));
    return tage;
}

std::string_view Kopfzeile(Dateikanal& kanal, const Text& pfad) {
    const auto zeile = kanal.nächste_Klarzeile();
    if (!zeile) throw Dateischaden(u"Die Datei " + Pfad_kürzen(pfad, 100) + u" ist unvollständig.", pfad);
    return zeile->bytes;
}

void Kopf_prüfen(TextView zeile, const Text& yymm, const Text& pfad) {
    if (zeile == u"[" + yymm + u"]") return;
    throw Dateischaden(u"Dateikorruption entdeckt! Daten für '" + yymm + u"' erwartet, aber Daten für '" +
                           Text(mitte(zeile, 2, 4)) + u"' gefunden.",
                       pfad);
}

void Fehler_vermerken(std::string_view zeile, const Zeilenbefund& b, Monatsinhalt& inhalt) {
    if (b.art == Zeilenbefund::Art::ErsteArt)
        ++inhalt.fehler_erster_Art;
    else
        inhalt.fehler_zweiter_Art.push_back(aus_cp1252(b.schlüssel));
    if (!zeile.empty()) inhalt.unlesbar.emplace_back(zeile);
}

void Zeile_übernehmen(const Dateikanal::Klarzeile& zeile, const Codefilter& filter, int länge,
                      Monatsinhalt& inhalt) {
    const Zeilenbefund b = Zeile_prüfen(zeile.bytes);
    switch (b.art) {
    case Zeilenbefund::Art::A:
        inhalt.Satz_anfügen({aus_cp1252(b.schlüssel), tage_gefiltert(b.inhalt, filter, länge), zeile.stelle});
        break;
    case Zeilenbefund::Art::K:
        inhalt.Kommentar_anfügen({aus_cp1252(b.schlüssel), b.von, b.bis, aus_cp1252(b.inhalt), zeile.stelle});
        break;
    case Zeilenbefund::Art::ErsteArt:
    case Zeilenbefund::Art::ZweiteArt: Fehler_vermerken(zeile.bytes, b, inhalt); break;
    }
}

} // namespace

Text als_Zeile(const Erfassungssatz& satz) {
    return u"A:" + satz.BenId + u":" + satz.tage;
}

Text als_Zeile(const Kommentarsatz& satz) {
    return u"K:" + satz.BenId + u":" + ziffern(satz.von, 2) + u"-" + ziffern(satz.bis, 2) + u":" + satz.text;
}

Codefilter::Codefilter(int U) {
    constexpr int ZIFFERN = 9;
    const int gründe = std::clamp(U - 1, 0, static_cast<int>(CODE_ALPHABET.size()));
    ziffern_ = static_cast<unsigned char>(std::min(gründe, ZIFFERN));
    buchstaben_ = static_cast<unsigned char>(gründe - ziffern_);
    arbeitsfrei_ = static_cast<unsigned char>(SFHex(U + 1, U));
}

void Codefilter::übertragen(std::string_view tage, char* ziel, int länge) const {
    constexpr int BLOCK = 16; // two of them overlap by a day; each is one register
    // 31 times "in the month", then as often "behind it".
    static constexpr auto IM_MONAT = [] {
        std::array<char, 2 * TAGE> tabelle{};
        std::fill_n(tabelle.begin(), TAGE, true);
        return tabelle;
    }();
    if (tage.size() != TAGE || länge < 0 || länge > TAGE) throw Laufzeitfehler(5, u"Keine Tage eines Monats");
    const char* im_Monat = IM_MONAT.data() + (TAGE - länge);
    const Codefilter filter = *this; // whose values the loop then need not fetch again
    for (const int ab : {0, TAGE - BLOCK}) {
        std::array<char, BLOCK> codes; // NOLINT(cppcoreguidelines-pro-type-member-init)
        for (int t = 0; t < BLOCK; ++t) {
            const char c = tage[static_cast<std::size_t>(ab + t)];
            const bool gilt = (im_Monat[ab + t] != 0) & filter.ist_Code(static_cast<unsigned char>(c));
            codes[static_cast<std::size_t>(t)] = gilt ? c : ' ';
        }
        std::memcpy(ziel + ab, codes.data(), BLOCK);
    }
}

int Monatsinhalt::letzter_Satz(TextView BenId) const {
    const auto treffer = letzte_.find(klein(BenId));
    return treffer == letzte_.end() ? 0 : treffer->second;
}

std::array<Text, TAGE + 1> Monatsinhalt::Kommentare(TextView BenId) const {
    std::array<Text, TAGE + 1> tage;
    if (kommentare_.empty()) return tage;
    const auto treffer = kommentare_.find(klein(BenId));
    if (treffer == kommentare_.end()) return tage;
    for (int nr : treffer->second) {
        const Kommentarsatz& k = Kommentardaten(nr);
        for (int t = k.von; t <= k.bis; ++t)
            tage[static_cast<size_t>(t)] = k.text;
    }
    return tage;
}

void Monatsinhalt::Satz_anfügen(Erfassungssatz satz) {
    letzte_[klein(satz.BenId)] = Erfassungsdaten.anzahl() + 1;
    Erfassungsdaten.anfügen(std::move(satz));
}

void Monatsinhalt::Kommentar_anfügen(Kommentarsatz satz) {
    kommentare_[klein(satz.BenId)].push_back(Kommentardaten.anzahl() + 1);
    Kommentardaten.anfügen(std::move(satz));
}

Zeilenbefund Zeile_prüfen(std::string_view zeile) {
    Zeilenbefund b;
    if (zeile.size() < 3 || zeile[1] != ':' || (zeile[0] != 'A' && zeile[0] != 'K')) return b;
    std::size_t trenner = 2; // keys are short: a loop is ahead of a search by call
    while (trenner < zeile.size() && zeile[trenner] != ':')
        ++trenner;
    if (trenner == zeile.size()) return b;
    b.schlüssel = zeile.substr(2, trenner - 2);
    const std::string_view rest = zeile.substr(trenner + 1);
    b.art = Zeilenbefund::Art::ZweiteArt;
    if (zeile[0] == 'A' && rest.size() == TAGE) {
        b.art = Zeilenbefund::Art::A;
        b.inhalt = rest;
    } else if (zeile[0] == 'K' && Kommentar_lesbar(rest, b)) {
        b.art = Zeilenbefund::Art::K;
    }
    return b;
}

Monatskopf Kopf_einlesen(Dateikanal& kanal, const Text& pfad, const Text& yymm) {
    Kopf_prüfen(aus_cp1252(Kopfzeile(kanal, pfad)), yymm, pfad);
    Monatskopf kopf;
    kopf.Reservezeile = aus_cp1252(Kopfzeile(kanal, pfad));
    kopf.Ausnahmedaten = aus_cp1252(Kopfzeile(kanal, pfad));
    return kopf;
}

void Monat_einlesen(Dateikanal& kanal, const Text& pfad, const Codefilter& filter, Monatsinhalt& inhalt) {
    Monatskopf kopf = Kopf_einlesen(kanal, pfad, inhalt.yymm);
    inhalt.Reservezeile = std::move(kopf.Reservezeile);
    inhalt.Ausnahmezeile = inhalt.Ausnahmedaten = std::move(kopf.Ausnahmedaten);
    if (!enthält(inhalt.Ausnahmedaten, u":")) {
        inhalt.Ausnahmezeile_ohne_Doppelpunkt = true;
        inhalt.Ausnahmedaten = KEINE_AUSNAHMEN;
    }
    const int länge = Tage_im_Monat(inhalt.yymm);
    while (const auto zeile = kanal.nächste_Klarzeile())
        Zeile_übernehmen(*zeile, filter, länge, inhalt);
    inhalt.letzte_Zeile_offen = kanal.letzte_Zeile_offen();
    inhalt.zeit = kanal.Stand().time;
    inhalt.größe = kanal.Stand().size;
    inhalt.kopf = kanal.Kopfbytes();
}

std::vector<Text> Zeilen_verdichten(const Monatsinhalt& inhalt, const std::vector<Text>& BenIds) {
    std::vector<Text> zeilen;
    for (const Text& BenId : BenIds) {
        const int nr = inhalt.letzter_Satz(BenId);
        if (BenId.empty() || nr == 0) continue;
        const Erfassungssatz& satz = inhalt.Erfassungsdaten(nr);
        if (trimmen(satz.tage).empty()) continue;
        zeilen.push_back(als_Zeile(Erfassungssatz{BenId, satz.tage}));
        const auto kommentare = inhalt.Kommentare(BenId);
        const auto am = [&](int t) {
            return satz.tage[static_cast<size_t>(t - 1)] == u' '
                       ? TextView{}
                       : TextView(kommentare[static_cast<size_t>(t)]);
        };
        for (int von = 1, bis; von <= TAGE; von = bis + 1) {
            bis = von;
            if (am(von).empty()) continue;
            while (bis < TAGE && am(bis + 1) == am(von))
                ++bis;
            zeilen.push_back(als_Zeile(Kommentarsatz{BenId, von, bis, Text(am(von))}));
        }
    }
    return zeilen;
}

} // namespace kalvora
