#include "files/konfigdaten.h"

#include <algorithm>
#include <array>

#include "files/ordner.h"
#include "files/stammdatei.h"
#include "files/zweite_lesung.h"

namespace kalvora {

namespace {

constexpr TextView DATEINAME = u"Konfigdaten.dat";
constexpr TextView OHNE = u"NoAdmins", OFFENE_LISTE = u"*:*", NICHTS_VERBORGEN = u"void";
constexpr int FRANKREICH = 2;
constexpr int LISTE_HÖCHSTENS = 250; // characters of names in a message

bool ist_Wochenende(TextView text) {
    if (text.size() % 2 != 0) return false;
    for (size_t k = 0; k < text.size(); k += 2) {
        int tag = 1;
        while (tag <= 7 && Wochentag_kurz(tag) != text.substr(k, 2))
            ++tag;
        if (tag > 7) return false;
    }
    return true;
}

bool ist_Verbergen_Zeile(TextView text) {
    return text == NICHTS_VERBORGEN || text.find_first_not_of(u"01") == TextView::npos;
}

// "A:<name>:<Benutzername>"
bool ist_Administratorzeile(TextView zeile) {
    return zeichen(zeile, 2) == u':' && position(zeile, u":", 3) > 0;
}

// ------------------------------------------------------------------ derived values

int Benutzerrolle_ermitteln(const Konfiguration& k, TextView Benutzername) {
    const Text ende = u":" + Text(Benutzername);
    const auto genannt = [&](const Text& zeile) { return endet_ohne_Fall(zeile, ende); };
    const bool ohne_Administratoren = k.Administratoren.leer() || k.Administratoren(1) == OHNE;
    if (ohne_Administratoren || k.Setting(16) == 1 ||
        std::any_of(k.Administratoren.begin(), k.Administratoren.end(), genannt))
        return 2;
    if (std::any_of(k.Privilegierte.begin(), k.Privilegierte.end(), genannt)) return 1;
    return !k.Privilegierte.leer() && mitte(k.Privilegierte(1), 3) == OFFENE_LISTE ? 1 : 0;
}

// Record of the letter at a settings position; "#" stands for no letter.
int Satz_zu_Setting(const Konfiguration& k, int n, TextView art = {}) {
    const char16_t buchstabe = zeichen(k.settings.werte(), n);
    return buchstabe == u'#' ? 0 : k.Schaltflächen_Nummer(buchstabe, art);
}

// A month as alphabet digit at a settings position; what is no month counts as `sonst`.
int Monat_zu_Setting(const Konfiguration& k, int n, int sonst) {
    const int wert = HexDec(zeichen(k.settings.werte(), n));
    return wert >= 1 && wert <= 12 ? wert : sonst;
}

void Verbergen_ableiten(Konfiguration& k) {
    const bool je_Satz = k.SF_Verbergen_Zeile != NICHTS_VERBORGEN;
    for (int n = 1; n <= k.U(); ++n)
        k.SF(n).SF_Verbergen = je_Satz && zeichen(k.SF_Verbergen_Zeile, n) == u'1' ? 1 : 0;
    k.SF_Krank = k.Setting(5) != 0 ? Satz_zu_Setting(k, 24) : 0;
    if (k.SF_Krank > 0 && !je_Satz) k.SF(k.SF_Krank).SF_Verbergen = 1;
}

void Werte_ableiten(Konfiguration& k, TextView Benutzername) {
    k.Benutzerrolle = Benutzerrolle_ermitteln(k, Benutzername);
    k.SF_Urlaub = Satz_zu_Setting(k, 20);
    k.SF_Halburlaub = Satz_zu_Setting(k, 21);
    k.SF_Urlaub2 = Satz_zu_Setting(k, 22);
    k.SF_Halburlaub2 = Satz_zu_Setting(k, 23);
    k.SF_Sonderurlaub = Satz_zu_Setting(k, 34, u"RTT");
    k.SF_Halbsonderurlaub = Satz_zu_Setting(k, 35, u"RTT");
    k.SF_Sonderurlaub2 = Satz_zu_Setting(k, 36, u"RTT");
    k.SF_Halbsonderurlaub2 = Satz_zu_Setting(k, 37, u"RTT");
    Verbergen_ableiten(k);
    k.Urlaubsjahr_Monat = Monat_zu_Setting(k, 31, 1);
    k.Resturlaub_Monat = Monat_zu_Setting(k, 38, 0);
    const int breite = HexDec(zeichen(k.settings.werte(), 48));
    k.SF_Breite = breite > 0 ? (breite - 1) * 30 + 1800 : 0;
}

// ------------------------------------------------------------------ reading

void Kopfteil_lesen(Stammdatei& datei, Konfiguration& k) {
    datei.Kopf(u"Kalvora");
    k.Reservezeile = datei.Zeile();
    k.Konfigversion = datei.Zeile();
    datei.Kopf(u"Firma");
    k.Firma = datei.Zeile();
    k.Firmenzusatz = datei.Zeile();
    datei.Kopf(u"Settings");
    k.settings = Settings(datei.Zeile());
    k.settings.migrieren();
    k.Zeile_9 = datei.Zeile();
    k.SF_Verbergen_Zeile = datei.Zeile();
    if (!ist_Verbergen_Zeile(k.SF_Verbergen_Zeile)) datei.fehlerhaft();
    datei.Kopf(u"Wochenende");
    k.Wochenendtage = datei.Zeile();
    if (!ist_Wochenende(k.Wochenendtage)) datei.fehlerhaft();
}

void Farben_lesen(Stammdatei& datei, Konfiguration& k) {
    datei.Kopf(u"Grundfarben");
    k.Grundfarben = Grundfarben_Standard();
    for (int n = 0; !datei.nächste().starts_with(u'['); ++n) {
        const auto farbe = Farbe_aus_Hex(datei.Zeile());
        if (n >= GRUNDFARBEN) continue;
        if (!farbe) datei.fehlerhaft();
        k.Grundfarben(n) = *farbe;
    }
}

void Schaltflächen_lesen(Stammdatei& datei, Konfiguration& k) {
    datei.Kopf(u"[Schaltfl", u"Schaltflaechen"); // the rest of the word differs with old code pages
    while (!datei.nächste().starts_with(u'[')) {
        Schaltfläche sf;
        if (!Schaltfläche_aus_Zeile(datei.Zeile(), sf) || k.U() >= HÖCHSTZAHL_SÄTZE) datei.fehlerhaft();
        k.SF.anfügen(std::move(sf));
    }
    // The codes of all capture files rest on the delete button's being the last record.
    if (k.SF.leer() || k.SF(k.U()).SF_Kennbuchstabe != u' ') datei.fehlerhaft();
}

void Administratoren_lesen(Stammdatei& datei, Konfiguration& k) {
    datei.Kopf(u"Administratoren");
    k.Administratoren.leeren();
    k.Privilegierte.leeren();
    if (datei.Ende()) datei.unvollständig(); // without administrators everybody would be one
    while (!datei.Ende()) {
        Text zeile = datei.Zeile();
        if (zeile == OHNE) continue;
        if (!ist_Administratorzeile(zeile)) datei.fehlerhaft();
        (zeile.front() == u'A' ? k.Administratoren : k.Privilegierte).anfügen(std::move(zeile));
    }
    for (auto* liste : {&k.Administratoren, &k.Privilegierte})
        if (liste->leer()) liste->anfügen(Text(OHNE));
}

struct Gelesen {
    Konfiguration werte;
    Zeitstempel zeit;
    Dateiwerk::Vorgefunden datei;
};
Gelesen Konfigdatei_lesen(Dateikanal& kanal, const Text& ordner) {
    Stammdatei datei(kanal, ordner, Text(DATEINAME));
    Konfiguration k;
    Kopfteil_lesen(datei, k);
    Farben_lesen(datei, k);
    Schaltflächen_lesen(datei, k);
    Administratoren_lesen(datei, k);
    return {std::move(k), datei.Zeit(), datei.Vorgefunden()};
}

// ------------------------------------------------------------------ writing

void ausgeben(Dateikanal& kanal, const Konfiguration& k) {
    for (const Text& zeile : {Text(u"[Kalvora]"), k.Reservezeile, Text(PROGRAMMVERSION), Text(u"[Firma]"),
                              k.Firma, k.Firmenzusatz, Text(u"[Settings]"), k.settings.werte(), k.Zeile_9,
                              k.SF_Verbergen_Zeile, Text(u"[Wochenende]"), k.Wochenendtage})
        kanal.LineOut(zeile);
    kanal.LineOut(u"[Grundfarben]");
    for (const Farbe farbe : k.Grundfarben)
        kanal.LineOut(HexFarbe(farbe));
    kanal.LineOut(u"[Schaltflächen]");
    for (const Schaltfläche& sf : k.SF)
        kanal.LineOut(Schaltfläche_als_Zeile(sf));
    kanal.LineOut(u"[Administratoren]");
    // The sentinel stands in the file for the administrators alone.
    for (const Text& zeile : k.Administratoren)
        kanal.LineOut(zeile);
    for (const Text& zeile : k.Privilegierte)
        if (zeile != OHNE) kanal.LineOut(zeile);
}

} // namespace

// ------------------------------------------------------------------ Konfiguration

int Konfiguration::Schaltflächen_Nummer(char16_t buchstabe, TextView art) const {
    int treffer = 0;
    if (Setting(15) == FRANKREICH) {
        // Leave and compensation days share a letter there, and the caption tells them apart.
        const bool rtt = art == u"RTT";
        for (int n = 1; n <= U(); ++n) {
            if (SF(n).SF_Kennbuchstabe != buchstabe) continue;
            if (treffer == 0) treffer = n;
            if (!rtt && Setting(33) != 1) return treffer;
            if (enthält(klein(SF(n).SF_Text), u"rtt") == rtt) return n;
        }
        return treffer;
    }
    // Of several records with the letter the one for administrators wins.
    for (int n = 1; n <= U(); ++n) {
        if (SF(n).SF_Kennbuchstabe != buchstabe) continue;
        if (treffer == 0 || SF(n).SF_Nur_Admin == 1) treffer = n;
    }
    return treffer;
}

Text Konfiguration::Administratorenliste(bool auch_Privilegierte) const {
    Text liste;
    for (const auto* zeilen : {&Administratoren, auch_Privilegierte ? &Privilegierte : nullptr}) {
        if (!zeilen) continue;
        for (const Text& zeile : *zeilen) {
            if (zeile == OHNE || mitte(zeile, 3) == OFFENE_LISTE) continue;
            if (static_cast<int>(liste.size()) > LISTE_HÖCHSTENS) return liste + u" ...";
            const int trenner = position(zeile, u":", 3);
            if (!liste.empty()) liste += u", ";
            liste += Text(mitte(zeile, 3, trenner - 3)) + u" (" + Text(mitte(zeile, trenner + 1)) + u")";
        }
    }
    return liste;
}

// ------------------------------------------------------------------ Konfigdaten

void Konfigdaten::Konfigdaten_lesen() {
    als_Prozedur(u"modKalvora - Konfigdaten_lesen", [&] {
        auto neu = zweite_Lesung(kanal_.app(), [&] { return Konfigdatei_lesen(kanal_, platz_.Datenpfad); });
        werte_ = std::move(neu.werte);
        zeit_ = neu.zeit;
        gelesen_ = std::move(neu.datei);
        ableiten();
    });
}

void Konfigdaten::ableiten() {
    Werte_ableiten(werte_, platz_.Benutzername);
    if (dienstlauf_) werte_.Benutzerrolle = 2;
}

bool Konfigdaten::Konfigdaten_schreiben(Dateimodus modus) {
    return als_Prozedur(u"modKalvora - Konfigdaten_schreiben", [&] {
        kanal_.Datei_öffnen(platz_.Datenpfad + Text(DATEINAME), modus);
        if (gelesen_) kanal_.Nur_ersetzen(*gelesen_);
        ausgeben(kanal_, werte_);
        if (kanal_.Datei_schließen() != 0) return false;
        werte_.Konfigversion = PROGRAMMVERSION;
        zeit_ = kanal_.Stand().time;
        gelesen_ = {kanal_.Stand().size, kanal_.Kopfbytes()};
        return true;
    });
}

bool Konfigdaten::Datei_geändert(bool beobachten) {
    if (beobachten && werte_.Setting(39) == 1) return false;
    const Text pfad = Datei_finden(kanal_.fs(), platz_.Datenpfad, Text(DATEINAME));
    return Stand_geändert(kanal_, platz_, pfad, zeit_, beobachten);
}

bool Konfigdaten::Datei_ersetzt() const {
    const auto stand = kanal_.werk().stand(Datei_finden(kanal_.fs(), platz_.Datenpfad, Text(DATEINAME)));
    return stand && stand->time != zeit_;
}

// ------------------------------------------------------------------ line forms and standard content

Text Schaltfläche_als_Zeile(const Schaltfläche& sf) {
    return HexFarbe(sf.SF_Schriftfarbe) + u":" + HexFarbe(sf.SF_Hintergrundfarbe) + u":" +
           ziffern(sf.SF_Nur_Admin) + u":" + Text(1, sf.SF_Kennbuchstabe) + u":" + sf.SF_Text;
}

bool Schaltfläche_aus_Zeile(TextView zeile, Schaltfläche& sf) {
    const auto schrift = Farbe_aus_Hex(mitte(zeile, 1, 8));
    const auto hintergrund = Farbe_aus_Hex(mitte(zeile, 10, 8));
    const char16_t nur_Admin = zeichen(zeile, 19);
    for (const int trenner : {9, 18, 20, 22})
        if (zeichen(zeile, trenner) != u':') return false;
    if (!schrift || !hintergrund || !ist_Ziffer(nur_Admin)) return false;
    sf = {*schrift, *hintergrund, nur_Admin - u'0', zeichen(zeile, 21), Text(mitte(zeile, 23)), 0};
    return true;
}

const Feld<Farbe, 0>& Grundfarben_Standard() {
    static const Feld<Farbe, 0> farben{0xFFFFFF, 0xE8E8E8, 0xC0C0FF, 0xFFF8F4, 0xFFE8CE,
                                       0xAFAFAF, 0xE8FFFF, 0xE8FFFF, 0xC0FFFF};
    return farben;
}

const Feld<Schaltfläche>& Schaltflächen_Standard() {
    static const Feld<Schaltfläche> sätze{
        {0, 0x80FF80, 0, u'U', u"Urlaub", 0},        {0, 0x80FF80, 0, u'½', u"½ Urlaub", 0},
        {0, 0x80C0FF, 0, u'Z', u"Zeitausgleich", 0}, {0, 0x80FFFF, 0, u'D', u"Dienstreise", 0},
        {0, 0x8F8FFF, 1, u'K', u"Krank", 0},         {0, 0xFFFF80, 0, u'S', u"Sonstiges", 0},
        {0xFFFFFF, 0xFFFFFF, 0, u' ', u"Löschen", 0}};
    return sätze;
}

Konfiguration Konfiguration_Standard(const Text& Benutzername) {
    Konfiguration k;
    k.Konfigversion = PROGRAMMVERSION;
    k.Zeile_9 = u"::";
    k.Grundfarben = Grundfarben_Standard();
    k.SF = Schaltflächen_Standard();
    k.Administratoren(1) = u"A:<Name Vorname>:" + Benutzername;
    return k;
}

} // namespace kalvora
