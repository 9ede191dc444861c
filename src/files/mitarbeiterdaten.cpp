#include "files/mitarbeiterdaten.h"

#include <algorithm>

#include "files/ordner.h"
#include "files/stammdatei.h"
#include "files/zweite_lesung.h"

namespace kalvora {

namespace {

constexpr TextView DATEINAME = u"Mitarbeiterdaten.dat";
constexpr TextView OHNE_NAMEN = u"NoNames";
constexpr TextView KOPF = u"[Mitarbeiterdaten]";
constexpr int STARTJAHR_AB = 2000, STARTJAHR_BIS = 2079; // what two digits of a year can say
constexpr TextView FESTES_FELD = u":000,0:000,0:000,0";  // once three more numbers; nobody reads them

// '9' stands for a digit, '#' for a digit or the sign of a negative number, anything else for itself.
bool hat_Form(TextView text, TextView form) {
    return text.size() == form.size() &&
           std::equal(text.begin(), text.end(), form.begin(), [](char16_t c, char16_t f) {
               if (f == u'9') return ist_Ziffer(c);
               if (f == u'#') return ist_Ziffer(c) || c == u'-';
               return c == f;
           });
}

constexpr TextView LANGE_FORM =
    u"999999:999999:#99,9:#99,9:#99,9:#99,9:#99,9:#99,9:#99,9:#99,9:#99,9:"; // 68 characters

// A short row has whole numbers for the four years and ends its numbers there.
Text verlängert(TextView zeile) {
    if (zeichen(zeile, 24) != u':') return Text(zeile);
    Text lang(links(zeile, 23));
    for (const int ab : {24, 28, 32})
        lang += u",0" + Text(mitte(zeile, ab, 4));
    return lang + u",0:000,0:000,0:000,0:000,0" + Text(mitte(zeile, 36));
}

Text Zahlen(TextView text, char16_t von, char16_t nach) {
    Text aus(text);
    std::replace(aus.begin(), aus.end(), von, nach);
    return aus;
}

// Five numbers, whatever memory holds, each in the file's width.
std::vector<Text> Urlaubszahlen(const Mitarbeiter& m, char16_t trennzeichen) {
    auto zahlen = teilen(m.MA_Urlaub, u':');
    zahlen.resize(5);
    for (Text& zahl : zahlen)
        zahl = Zahlen(BenFormat(zahl, trennzeichen), trennzeichen, u',');
    return zahlen;
}

Text Sonderurlaubszahl(const Mitarbeiter& m, char16_t trennzeichen) {
    return Zahlen(BenFormat(m.MA_Sonderurlaub, trennzeichen), trennzeichen, u',');
}

// The short form holds the residual leave with its decimal and the four years without.
bool braucht_lange_Form(const Mitarbeiter& m, char16_t trennzeichen) {
    if (m.Überschrift()) return false;
    const auto zahlen = Urlaubszahlen(m, trennzeichen);
    return Sonderurlaubszahl(m, trennzeichen) != u"000,0" ||
           std::any_of(zahlen.begin() + 1, zahlen.end(), [](const Text& z) { return !z.ends_with(u'0'); });
}

bool mit_Anspruch(const Mitarbeiter& m) {
    return mitte(m.MA_Urlaub, 7, 5).find_first_of(u"123456789") != TextView::npos;
}

Text Anzeigename_in(const Feld<Text>& zeilen, TextView id) {
    for (const Text& zeile : zeilen) {
        const int trenner = position(zeile, u":", 3);
        if (trenner == 0 || !gleich_ohne_Fall(mitte(zeile, trenner + 1), id)) continue;
        const TextView name = mitte(zeile, 3, trenner - 3);
        return name.starts_with(u'<') && name.ends_with(u'>') ? Text() : Text(name); // still the placeholder
    }
    return {};
}

int Startjahr_aus(Stammdatei& datei) {
    const Text zeile = datei.Zeile();
    const long jahr = Val(zeile);
    if (zeile.size() != 4 || !nur_Ziffern(zeile) || jahr < STARTJAHR_AB || jahr > STARTJAHR_BIS)
        datei.fehlerhaft();
    return static_cast<int>(jahr);
}

} // namespace

// ------------------------------------------------------------------ rows

std::optional<Mitarbeiter> Mitarbeiter_aus_Zeile(TextView zeile, char16_t trennzeichen) {
    if (zeile == KOPF) return std::nullopt; // the file stands there twice
    Mitarbeiter m;
    if (!enthält(zeile, u":")) {
        m.MA_Name = zeile;
        return m;
    }
    const Text lang = verlängert(zeile);
    const TextView rest = mitte(lang, 69);
    const int trenner = position(rest, u":");
    if (!hat_Form(links(lang, 68), LANGE_FORM) || trenner == 0) return std::nullopt;
    m.MA_Von = mitte(lang, 1, 6);
    m.MA_Bis = mitte(lang, 8, 6);
    m.MA_Urlaub = Zahlen(mitte(lang, 15, 29), u',', trennzeichen);
    m.MA_Sonderurlaub = Zahlen(mitte(lang, 45, 5), u',', trennzeichen);
    m.MA_Name = links(rest, trenner - 1);
    m.MA_BenId = mitte(rest, trenner + 1);
    if (m.MA_BenId.empty() || enthält(m.MA_BenId, u":")) return std::nullopt; // no key for the other files
    return m;
}

Text Mitarbeiter_als_Zeile(const Mitarbeiter& m, bool lang, char16_t trennzeichen) {
    if (m.Überschrift()) return m.MA_Name;
    const auto zahlen = Urlaubszahlen(m, trennzeichen);
    Text zeile = m.MA_Von + u":" + m.MA_Bis + u":" + zahlen.front();
    for (size_t k = 1; k < zahlen.size(); ++k)
        zeile += u":" + (lang ? zahlen[k] : Text(links(zahlen[k], 3)));
    if (lang) zeile += u":" + Sonderurlaubszahl(m, trennzeichen) + Text(FESTES_FELD);
    return zeile + u":" + m.MA_Name + u":" + m.MA_BenId;
}

namespace {

Mitarbeiterliste einmal_lesen(Dateikanal& kanal, const Arbeitsplatz& platz) {
    Stammdatei datei(kanal, platz.Datenpfad, Text(DATEINAME));
    Mitarbeiterliste liste;
    datei.Kopf(u"Mitarbeiterdaten");
    liste.Reservezeile = datei.Zeile();
    liste.Startjahr = Startjahr_aus(datei);
    liste.Zeit = datei.Zeit();
    while (!datei.Ende()) {
        auto m = Mitarbeiter_aus_Zeile(datei.Zeile(), platz.gebiet.Dezimaltrennzeichen);
        if (!m) datei.fehlerhaft();
        liste.MA.anfügen(std::move(*m));
    }
    if (liste.MA.leer()) liste.MA.anfügen({Text(OHNE_NAMEN), {}, {}, {}, {}, {}});
    return liste;
}

} // namespace

Mitarbeiterliste Mitarbeiterdatei_lesen(Dateikanal& kanal, const Arbeitsplatz& platz) {
    return zweite_Lesung(kanal.app(), [&] { return einmal_lesen(kanal, platz); });
}

// ------------------------------------------------------------------ Mitarbeiterdaten

void Mitarbeiterdaten::Mitarbeiterdaten_lesen() {
    als_Prozedur(u"modKalvora - Mitarbeiterdaten_lesen", [&] {
        auto liste = Mitarbeiterdatei_lesen(kanal_, platz_);
        reserve_ = std::move(liste.Reservezeile);
        platz_.Startjahr = liste.Startjahr;
        ma_ = std::move(liste.MA);
        zeit_ = liste.Zeit;
        ableiten();
    });
}

void Mitarbeiterdaten::ableiten() {
    const Konfiguration& k = konfig_.werte();
    eingetragen_ = Zeile_zu_BenId(platz_.Benutzername) > 0;
    platz_.Startmeldung.clear(); // what was derived from an older list or configuration holds no longer
    if (platz_.Startphase && k.Setting(1) != 0 && !eingetragen_ && k.Benutzerrolle == 0)
        platz_.Startmeldung =
            u"Sie sind mit Ihrem Windows-Benutzernamen '" + platz_.Benutzername +
            u"' nicht als Mitarbeiter im Kalvora eingetragen.\n\nBitte wenden Sie sich zur Aufnahme in den "
            u"Kalvora an einen Administrator: " +
            k.Administratorenliste();
    // Leave that expires only behind the first month of the leave year makes residual leave alone possible.
    keine_ansprüche_ = k.Resturlaub_Monat >= 2 && k.Resturlaub_Monat > k.Urlaubsjahr_Monat &&
                       std::none_of(ma_.begin(), ma_.end(), mit_Anspruch);
}

std::vector<Text> Mitarbeiterdaten::Zeilen() const {
    const char16_t trennzeichen = platz_.gebiet.Dezimaltrennzeichen;
    const bool lang = std::any_of(ma_.begin(), ma_.end(),
                                  [&](const Mitarbeiter& m) { return braucht_lange_Form(m, trennzeichen); });
    std::vector<Text> zeilen{Text(KOPF), reserve_, ziffern(platz_.Startjahr)};
    for (const Mitarbeiter& m : ma_) {
        Text zeile = Mitarbeiter_als_Zeile(m, lang, trennzeichen);
        const auto zurück = Mitarbeiter_aus_Zeile(zeile, trennzeichen);
        if (!zurück || zurück->MA_Name != m.MA_Name || zurück->MA_BenId != m.MA_BenId)
            throw Laufzeitfehler(5, u"Die Zeile zu '" + m.MA_Name + u"' kann nicht gespeichert werden");
        zeilen.push_back(std::move(zeile));
    }
    return zeilen;
}

bool Mitarbeiterdaten::Mitarbeiterdaten_schreiben(Fehlerweg weg) {
    return als_Prozedur(u"modKalvora - Mitarbeiterdaten_schreiben", [&] {
        const auto zeilen = Zeilen();
        if (!kanal_.Datei_öffnen(platz_.Datenpfad + Text(DATEINAME), Dateimodus::Output, weg)) return false;
        for (const Text& zeile : zeilen)
            kanal_.LineOut(zeile);
        if (kanal_.Datei_schließen() != 0) return false;
        zeit_ = kanal_.Stand().time;
        return true;
    });
}

bool Mitarbeiterdaten::Datei_geändert(bool beobachten) {
    if (beobachten && konfig_.werte().Setting(39) == 1) return false;
    const Text pfad = Datei_finden(kanal_.fs(), platz_.Datenpfad, Text(DATEINAME));
    return Stand_geändert(kanal_, platz_, pfad, zeit_, beobachten);
}

int Mitarbeiterdaten::Zeile_zu_BenId(TextView id) const {
    if (id.empty()) return 0;
    for (int i = 1; i <= ma_.oben(); ++i)
        if (gleich_ohne_Fall(ma_(i).MA_BenId, id)) return i;
    return 0;
}

Text Mitarbeiterdaten::Name_zu_BenutzerID(TextView id) const {
    if (id.empty()) return {};
    if (const int i = Zeile_zu_BenId(id)) return ma_(i).MA_Name;
    const Konfiguration& k = konfig_.werte();
    const Text name = Anzeigename_in(k.Administratoren, id);
    return name.empty() ? Anzeigename_in(k.Privilegierte, id) : name;
}

bool Mitarbeiterdaten::Mitarbeiter_vorhanden() {
    if (!leer()) return true;
    kanal_.app().Hinweis(Text(KEINE_MITARBEITER));
    return false;
}

} // namespace kalvora
