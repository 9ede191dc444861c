// What goes over all months: the three years in memory, the test at start, the freezing of past months.
#include <algorithm>
#include <utility>

#include "base/cp1252.h"
#include "files/erfassungsdateien.h"
#include "files/ordner.h"
#include "files/zweite_lesung.h"

namespace kalvora {

namespace {

constexpr double EINLESEN_GILT = 30.0; // seconds
constexpr double LANGSAM_AB = 0.2;

// The key of an A row, told by the row's length alone: valid only if it is found to be a known one, since
// known keys hold no colon.
std::string_view Schlüssel_nach_Länge(std::string_view zeile) {
    constexpr std::size_t DAVOR = 2, DANACH = 1 + TAGE;
    if (zeile.size() < DAVOR + DANACH || !zeile.starts_with("A:") || zeile[zeile.size() - DANACH] != ':')
        return {};
    return zeile.substr(DAVOR, zeile.size() - DAVOR - DANACH);
}

} // namespace

// False: a line is no row; it is left out.
bool Erfassungsdateien::Version_in_Monatsdaten(const Version& version, int monat, Schlüsselverzeichnis& wer) {
    const Codefilter filter(konfig_.werte().U());
    const Text yymm(links(version.stamm, 4));
    const int länge = Tage_im_Monat(yymm);
    bool fehlerfrei = true;
    öffnen(version, Fehlerweg::Melden);
    Kopf_einlesen(kanal_, ordner_.pfad(version.name), yymm);
    while (const auto zeile = kanal_.nächste_Klarzeile()) {
        if (const int i = wer.nächste_Zeile(Schlüssel_nach_Länge(zeile->bytes))) {
            filter.übertragen(zeile->bytes.substr(zeile->bytes.size() - TAGE), daten_.zelle(monat, i), länge);
            continue;
        }
        const Zeilenbefund b = Zeile_prüfen(zeile->bytes);
        fehlerfrei = fehlerfrei && (b.art == Zeilenbefund::Art::A || b.art == Zeilenbefund::Art::K);
        if (b.art != Zeilenbefund::Art::A) continue;
        for (int i = wer.finden(b.schlüssel); i > 0; i = wer.nächster_gleicher(i))
            filter.übertragen(b.inhalt, daten_.zelle(monat, i), länge);
    }
    kanal_.Datei_schließen();
    return fehlerfrei;
}

// As with the shown month, what looks damaged or has gone is looked at a second time.
void Erfassungsdateien::Monat_in_Monatsdaten(const Version& version, const Text& yymm, int monat,
                                             Schlüsselverzeichnis& wer) {
    Version jetzt = version;
    bool erneut = false;
    const auto lesen = [&] {
        if (std::exchange(erneut, true)) {
            kanal_.verwerfen();
            daten_.Monat_leeren(monat);
            jetzt = ordner_.in_Kraft(yymm);
        }
        return !jetzt.stamm.empty() && Version_in_Monatsdaten(jetzt, monat, wer);
    };
    zweite_Lesung(kanal_.app(), lesen, [](bool fehlerfrei) { return fehlerfrei; });
    if (jetzt.stamm.empty()) Monate_fehlen(Monat_in_Worten(yymm));
}

void Erfassungsdateien::Alle_Erfassungsdaten_einlesen(bool nur_wenn_alt) {
    als_Prozedur(u"modKalvora - Alle_Erfassungsdaten_einlesen", [&] {
        Clock& uhr = kanal_.werk().uhr();
        const double beginn = uhr.steady();
        const int unterbrechungen = kanal_.app().interruptions();
        std::vector<std::string> schlüssel;
        for (const Mitarbeiter& m : personal_.MA())
            schlüssel.push_back(zu_cp1252(m.MA_BenId));
        const bool dieselben = schlüssel == eingelesen_für_ && platz_.Startjahr == eingelesen_ab_;
        if (nur_wenn_alt && dieselben && beginn - letztes_Einlesen_ < EINLESEN_GILT) return;
        letztes_Einlesen_ = NIE; // a run that fails leaves nothing to rely on
        eingelesen_für_ = std::move(schlüssel);
        eingelesen_ab_ = platz_.Startjahr;
        daten_.setzen(personal_.MA().anzahl());
        Schlüsselverzeichnis wer(eingelesen_für_);
        const auto alle = ordner_.verzeichnis();
        for (int monat = 1; monat <= MONATE; ++monat) {
            const Text yymm = ordner_.yymm(monat);
            const auto treffer = alle.find(yymm);
            if (treffer != alle.end())
                Monat_in_Monatsdaten(treffer->second.back(), yymm, monat, wer);
            else if (gesehen_.bekannt(yymm))
                Monat_in_Monatsdaten({}, yymm, monat, wer);
        }
        letztes_Einlesen_ = uhr.steady();
        // A second look, or a message that waits for the user, says nothing about the network.
        if (kanal_.app().interruptions() == unterbrechungen)
            platz_.Langsames_Netz = letztes_Einlesen_ - beginn > LANGSAM_AB;
    });
}

bool Erfassungsdateien::Erfassungsdaten_vorhanden(int code) const {
    const auto zeichen = static_cast<char>(konfig_.werte().SFHex(code));
    return zeichen != ' ' && daten_.Code_vorhanden(zeichen);
}

// Nothing: it cannot be read.
std::optional<Monatsinhalt> Erfassungsdateien::Version_lesen(const Version& version, const Text& yymm) {
    try {
        return einmal_lesen(version, yymm, Fehlerweg::IgnoreErrors);
    } catch (const Dateischaden&) {
        return std::nullopt;
    }
}

// A newer version may have been begun while only half of the older one was to be seen.
bool Erfassungsdateien::enthält_alles(const Monatsinhalt& neu, const Monatsinhalt& alt) const {
    const auto& zeilen = alt.Erfassungsdaten;
    const auto& personen = personal_.MA();
    return std::all_of(zeilen.begin(), zeilen.end(), [&](const Erfassungssatz& satz) {
        const Erfassungssatz& letzter = zeilen(alt.letzter_Satz(satz.BenId));
        return trimmen(letzter.tage).empty() || neu.letzter_Satz(satz.BenId) > 0 ||
               std::none_of(personen.begin(), personen.end(),
                            [&](const Mitarbeiter& m) { return gleich_ohne_Fall(m.MA_BenId, satz.BenId); });
    });
}

// Older versions go only when the newest one can be read, shows no fault and lacks nobody.
void Erfassungsdateien::Überholte_löschen(const std::vector<Version>& versionen, const Text& yymm) {
    const auto neu = Version_lesen(versionen.back(), yymm);
    if (!neu || !neu->ganz()) return;
    for (const Version& v : versionen) {
        if (v.stamm == neu->stamm) continue;
        const auto alt = Version_lesen(v, yymm);
        if (alt && enthält_alles(*neu, *alt)) ordner_.Alte_Erfassungsdateien_löschen({v}, neu->stamm);
    }
}

void Erfassungsdateien::Erfassungsdateien_checken() {
    als_Prozedur(u"modKalvora - Erfassungsdateien_checken", [&] {
        // A month that is missing for a moment is no reason to ask for a repair.
        const auto bestand = zweite_Lesung(
            kanal_.app(), [&] { return ordner_.Bestand(); },
            [](const Monatsordner::Jahresbestand& b) { return b.fehlend.empty() && b.Startjahr_passt; });
        if (!bestand.Startjahr_passt) {
            Dateischaden schaden(
                u"Das Startjahr " + ziffern(platz_.Startjahr) +
                    u" in der Datei 'Mitarbeiterdaten.dat' passt nicht zu den vorhandenen Monaten.",
                ordner_.pfad(u"Mitarbeiterdaten.dat"));
            schaden.zweimal_gesehen = true;
            throw schaden;
        }
        if (!bestand.fehlend.empty()) Monate_fehlen(bestand.fehlend);
        for (const auto& [yymm, versionen] : bestand.vorhanden) {
            gesehen_.merken(yymm, versionen.back().stamm);
            if (versionen.size() > 1) Überholte_löschen(versionen, yymm);
        }
    });
}

namespace {

// "NoEx" at the part's beginning means that the rules of now apply; anything else is frozen already.
Text Teil_einfrieren(const Text& teil, TextView art, TextView alt, const Text& yymm,
                     const Feld<Text>& Feiertagsliste) {
    if (alt == u"NoEx") return u"NoEx";
    if (!teil.starts_with(u"NoEx")) return teil;
    Text neu = art == u"W" ? Text(alt) + teil.substr(4) : teil.substr(4);
    if (art == u"F")
        for (const Text& eintrag : Feiertagsliste)
            if (links(eintrag, 4) == TextView(yymm)) neu += Text(mitte(eintrag, 5, 2)) + u"|";
    return neu;
}

} // namespace

// "mm.yyyy, mm.yyyy".
void Erfassungsdateien::Monate_fehlen(const Text& monate) {
    Dateischaden schaden(
        u"Keine Erfassungsdatei für An-/Abwesenheitsdaten für folgende(n) Monat(e) gefunden: " + monate, {},
        monate);
    schaden.zweimal_gesehen = true;
    throw schaden;
}

// The lines of a version as bytes of the code page; a last one without its end is not yet there.
std::vector<std::string> Erfassungsdateien::alle_Zeilen(const Version& version, bool* offen) {
    std::vector<std::string> zeilen;
    kanal_.Datei_öffnen(ordner_.pfad(version.name), Dateimodus::Input);
    while (const auto zeile = kanal_.nächste_Klarzeile())
        zeilen.emplace_back(zeile->bytes);
    if (offen) *offen = kanal_.letzte_Zeile_offen();
    kanal_.Datei_schließen();
    return zeilen;
}

// The same; none when it is not that month's file or cannot be read
// to its end.
std::vector<std::string> Erfassungsdateien::Klarzeilen(const Version& version) {
    bool offen = false;
    std::vector<std::string> zeilen = alle_Zeilen(version, &offen);
    const bool ganz = !offen && zeilen.size() >= KOPFZEILEN;
    if (!ganz || zeilen[0] != "[" + zu_cp1252(links(version.stamm, 4)) + "]") zeilen.clear();
    return zeilen;
}

// True: the version is as it must be. False: somebody has changed it meanwhile.
bool Erfassungsdateien::Ausnahmen_übernehmen(const Version& version, TextView art, TextView alt,
                                             const Feld<Text>& Feiertagsliste) {
    std::vector<std::string> zeilen = Klarzeilen(version);
    if (zeilen.empty()) return false;
    const Dateiwerk::Vorgefunden gelesen{kanal_.Stand().size, kanal_.Kopfbytes()};
    const Text alte = aus_cp1252(zeilen[2]);
    const int trenner = position(alte, u":");
    if (trenner == 0) return true;
    Text wochenende(links(alte, trenner - 1)), feiertage(mitte(alte, trenner + 1));
    Text& teil = art == u"W" ? wochenende : feiertage;
    teil = Teil_einfrieren(teil, art, alt, Text(links(version.stamm, 4)), Feiertagsliste);
    const Text neue = wochenende + u":" + feiertage;
    if (neue == alte) return true;
    zeilen[2] = zu_cp1252(neue);
    return unverändert_ersetzen(version, gelesen, zeilen, Fehlerweg::Melden);
}

// Rewrites a version in place. False: somebody has written to it since it was read, or it cannot be written.
bool Erfassungsdateien::unverändert_ersetzen(const Version& version, const Dateiwerk::Vorgefunden& gelesen,
                                             const std::vector<std::string>& zeilen, Fehlerweg weg) {
    if (!kanal_.Datei_öffnen(ordner_.pfad(version.name), Dateimodus::Output, weg)) return false;
    kanal_.Nur_ersetzen(gelesen);
    for (const std::string& zeile : zeilen)
        kanal_.Klarzeile_schreiben(zeile);
    return kanal_.Datei_schließen() == 0;
}

void Erfassungsdateien::Ausnahmedaten_in_Erfassungdateien_übernehmen(TextView art, TextView alt,
                                                                     const Feld<Text>& Feiertagsliste) {
    als_Prozedur(u"modKalvora - Ausnahmedaten_in_Erfassungdateien_übernehmen", [&] {
        for (const auto& [yymm, versionen] : ordner_.verzeichnis()) {
            if (yymm >= platz_.Monat_heute()) continue;
            for (const Version& v : versionen) {
                const auto übernehmen = [&] { return Ausnahmen_übernehmen(v, art, alt, Feiertagsliste); };
                zweite_Lesung(kanal_.app(), übernehmen, [](bool gelungen) { return gelungen; });
            }
            if (yymm == monat_.inhalt.yymm && monat_.lesbar) einlesen(Text(yymm), monat_);
        }
    });
}

} // namespace kalvora
