#include "files/feiertagsdatei.h"

#include "files/ordner.h"
#include "files/stammdatei.h"
#include "files/zweite_lesung.h"

namespace kalvora {

namespace {

constexpr TextView DATEINAME = u"Feiertage.dat";
constexpr int KOPFZEILEN_ALT = 2, REGELN_ALT = 17; // of the older form, which had no country line
constexpr int FERIEN_ZEILENLÄNGE = 36;             // "yymm:" and 31 digits

struct Vorlage {
    Text Land;
    Feld<Text> Regeln = Feld<Text>(FEIERTAGSREGELN_LAND, Text(LEERE_FEIERTAGSREGEL));
};

// The workstation's copy, or else the delivered file itself.
Text Ordner_der_Vorlage(Dateikanal& kanal, const Arbeitsplatz& platz) {
    const Text eigene = Datei_finden(kanal.fs(), platz.Systempfad, u"KalvoraFtg.dat");
    return Datei_vorhanden(kanal.fs(), eigene) ? platz.Systempfad : platz.Programmpfad;
}

Vorlage Vorlage_lesen(Dateikanal& kanal, const Arbeitsplatz& platz, TextView code) {
    Stammdatei datei(kanal, Ordner_der_Vorlage(kanal, platz), u"KalvoraFtg.dat",
                     u"modKalvora - KalvoraFeiertageDat_lesen");
    datei.Kopf(u"KalvoraFeiertageDat");
    Vorlage vorlage;
    const Text anfang = u"[" + Text(code);
    while (!datei.Ende()) {
        const Text zeile = datei.Zeile();
        if (!zeile.starts_with(anfang)) continue;
        vorlage.Land = mitte(zeile, 6, static_cast<int>(zeile.size()) - 6);
        for (int r = 1; r <= FEIERTAGSREGELN_LAND; ++r) {
            vorlage.Regeln(r) = datei.Zeile();
            if (!Feiertagsregel_lesbar(vorlage.Regeln(r), r)) datei.fehlerhaft();
        }
        break;
    }
    return vorlage;
}

// Takes the rest of the file; what stands behind the last row that has a meaning is passed over.
void Regeln_anfügen(Stammdatei& datei, Feld<Text>& regeln) {
    while (!datei.Ende()) {
        Text zeile = datei.Zeile();
        const int r = regeln.oben() + 1;
        if (r > FEIERTAGSREGELN_HÖCHSTENS) continue;
        if (!Feiertagsregel_lesbar(zeile, r)) datei.fehlerhaft();
        regeln.anfügen(std::move(zeile));
    }
    while (regeln.oben() < FEIERTAGSREGELN_LAND)
        regeln.anfügen(Text(LEERE_FEIERTAGSREGEL));
}

// Of the older form only the further holidays are kept; the 16 rules are the template's. The file itself
// stays as it is until the next Feiertage_schreiben.
Vorlage konvertiert(Stammdatei& datei, Dateikanal& kanal, const Arbeitsplatz& platz) {
    for (int n = KOPFZEILEN_ALT + 1; n < KOPFZEILEN_ALT + REGELN_ALT; ++n)
        datei.Zeile();
    Vorlage vorlage = Vorlage_lesen(kanal, platz, u"049");
    Regeln_anfügen(datei, vorlage.Regeln);
    vorlage.Land = u"Deutschland";
    return vorlage;
}

std::pair<Vorlage, Text> Regeldatei_lesen(Dateikanal& kanal, const Arbeitsplatz& platz) {
    Stammdatei datei(kanal, platz.Datenpfad, Text(DATEINAME));
    datei.Kopf(u"Feiertage");
    Text reserve = datei.Zeile();
    Vorlage neu{datei.Zeile(), {}};
    if (zeichen(neu.Land, 2) == u':')
        neu = konvertiert(datei, kanal, platz);
    else
        Regeln_anfügen(datei, neu.Regeln);
    return {std::move(neu), std::move(reserve)};
}

} // namespace

void Feiertagsdatei::Feiertage_lesen() {
    als_Prozedur(u"modKalvora - Feiertage_lesen", [&] {
        auto [neu, reserve] = zweite_Lesung(kanal_.app(), [&] { return Regeldatei_lesen(kanal_, platz_); });
        Feiertage berechnet = kalvora::Feiertage_berechnen(platz_.Startjahr, neu.Regeln);
        reserve_ = std::move(reserve);
        land_ = std::move(neu.Land);
        regeln_ = std::move(neu.Regeln);
        berechnet_ = std::move(berechnet);
    });
}

void Feiertagsdatei::Feiertage_berechnen() {
    berechnet_ = kalvora::Feiertage_berechnen(platz_.Startjahr, regeln_);
}

void Feiertagsdatei::Feiertage_schreiben(Dateimodus modus) {
    als_Prozedur(u"modKalvora - Feiertage_schreiben", [&] {
        kanal_.Datei_öffnen(platz_.Datenpfad + Text(DATEINAME), modus);
        kanal_.LineOut(u"[Feiertage]");
        kanal_.LineOut(reserve_);
        kanal_.LineOut(land_);
        for (const Text& regel : regeln_)
            kanal_.LineOut(regel);
        kanal_.Datei_schließen();
    });
}

void Feiertagsdatei::KalvoraFeiertageDat_lesen(TextView code) {
    als_Prozedur(u"modKalvora - KalvoraFeiertageDat_lesen", [&] {
        Vorlage vorlage = Vorlage_lesen(kanal_, platz_, code);
        land_ = std::move(vorlage.Land);
        regeln_ = std::move(vorlage.Regeln);
    });
}

// ------------------------------------------------------------------ Ferientage.dat

namespace {

constexpr Farbe FERIENFARBE_STANDARD = 0xD8F0D8;

struct Ferien {
    Feld<Text> Monate;
    Farbe farbe = 0;
};

// A whole number outside the colours, such as the negative ones that stand for a colour of somebody's
// desktop, must not come out as a chance colour, least of all as black behind black letters.
std::optional<Farbe> Farbe_aus_Zahl(TextView zahl) {
    const TextView betrag = zahl.starts_with(u'-') ? zahl.substr(1) : zahl;
    if (!nur_Ziffern(betrag)) return std::nullopt;
    const long wert = betrag.size() <= 8 ? Val(zahl) : -1;
    return wert >= 0 && wert <= 0xFFFFFF ? static_cast<Farbe>(wert) : FERIENFARBE_STANDARD;
}

// Nothing for whatever is not exactly as it should be.
std::optional<Ferien> Ferien_lesen(Dateikanal& kanal, const Text& pfad) {
    if (!kanal.Datei_öffnen(pfad, Dateimodus::Input, Fehlerweg::IgnoreErrors)) return std::nullopt;
    Ferien ferien;
    if (kanal.LineIn() != u"[Ferientage]") return std::nullopt;
    kanal.LineIn();
    const auto farbe = Farbe_aus_Zahl(trimmen(kanal.LineIn()));
    if (!farbe) return std::nullopt;
    ferien.farbe = *farbe;
    kanal.LineIn();
    kanal.LineIn();
    while (!kanal.Dateiende()) {
        Text zeile = kanal.LineIn();
        if (zeile.size() != FERIEN_ZEILENLÄNGE || zeichen(zeile, 5) != u':') return std::nullopt;
        ferien.Monate.anfügen(std::move(zeile));
    }
    if (ferien.Monate.leer()) return std::nullopt;
    return ferien;
}

} // namespace

void Ferientagedatei::Ferientage_lesen() {
    Ferientage_ = {Text(OHNE_DATEN)};
    const Text pfad = Datei_finden(kanal_.fs(), platz_.Datenpfad, u"Ferientage.dat");
    if (Datei_vorhanden(kanal_.fs(), pfad)) {
        const auto lesen = [&]() -> std::optional<Ferien> {
            const auto info = kanal_.fs().info(pfad);
            if (info && info->size == 0) return std::nullopt; // not worth a message
            try {
                auto gelesen = Ferien_lesen(kanal_, pfad);
                kanal_.Datei_schließen();
                return gelesen;
            } catch (const Laufzeitfehler&) { // too short, or an empty line
            } catch (const Dateischaden&) {   // of length zero
            }
            kanal_.verwerfen();
            return std::nullopt;
        };
        auto ferien = zweite_Lesung(kanal_.app(), lesen, [](const auto& f) { return f.has_value(); });
        kanal_.Letzte_Datei_merken({}); // whatever fails next, it is not this file
        if (ferien) {
            Ferientage_ = std::move(ferien->Monate);
            farbe_ = ferien->farbe;
        }
    }
    Ferienindex_setzen(monat_, aus_);
}

void Ferientagedatei::Ferienindex_setzen(TextView Anzeigemonat, bool Schulferien_aus) {
    monat_ = Anzeigemonat;
    aus_ = Schulferien_aus;
    index_ = 0;
    if (aus_ || monat_.empty() || !Daten_vorhanden()) return;
    for (int i = 1; i <= Ferientage_.oben(); ++i)
        if (links(Ferientage_(i), 4) == monat_) index_ = i;
}

bool Ferientagedatei::Ferientag(int tag) const {
    return index_ > 0 && tag >= 1 && tag <= 31 && zeichen(Ferientage_(index_), 5 + tag) == u'1';
}

} // namespace kalvora
