// What goes over all months: the three years in memory, the test at start, the freezing of past months.
#include "base/cp1252.h"
#include "files/erfassungsdateien.h"
#include "files/ordner.h"

namespace kalvora {

namespace {

constexpr double EINLESEN_GILT = 30.0; // seconds
constexpr double LANGSAM_AB = 0.2;

Text yymm_des_Monats(int Startjahr, int monat) {
    return ziffern((Startjahr + (monat - 1) / 12) % 100, 2) + ziffern((monat - 1) % 12 + 1, 2);
}

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
    kanal_.Datei_öffnen(pfad(version.name), Dateimodus::Input);
    Kopf_einlesen(kanal_, pfad(version.name), yymm);
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

// As with the shown month, what looks damaged or has gone is looked at a second time: it may have been the
// middle of somebody else's rewrite, or a version that was deleted behind a newer one.
void Erfassungsdateien::Monat_in_Monatsdaten(const Version& version, int monat, Schlüsselverzeichnis& wer) {
    try {
        if (Version_in_Monatsdaten(version, monat, wer)) return;
    } catch (const Dateischaden&) {    // NOLINT(bugprone-empty-catch): the second reading decides
    } catch (const Programmabbruch&) { // NOLINT(bugprone-empty-catch): the same
    }
    kanal_.verwerfen();
    kanal_.app().Pause(KURZ_WARTEN);
    daten_.Monat_leeren(monat);
    const Version jetzt = in_Kraft(links(version.stamm, 4));
    if (!jetzt.stamm.empty()) Version_in_Monatsdaten(jetzt, monat, wer);
}

void Erfassungsdateien::Alle_Erfassungsdaten_einlesen(bool nur_wenn_alt) {
    als_Prozedur(u"modKalvora - Alle_Erfassungsdaten_einlesen", [&] {
        Clock& uhr = kanal_.werk().uhr();
        const double beginn = uhr.steady();
        if (nur_wenn_alt && beginn - letztes_Einlesen_ < EINLESEN_GILT) return;
        daten_.setzen(personal_.MA().anzahl());
        std::vector<std::string> schlüssel;
        for (const Mitarbeiter& m : personal_.MA())
            schlüssel.push_back(zu_cp1252(m.MA_BenId));
        Schlüsselverzeichnis wer(schlüssel);
        const auto alle = verzeichnis();
        for (int monat = 1; monat <= MONATE; ++monat) {
            const auto treffer = alle.find(yymm_des_Monats(platz_.Startjahr, monat));
            if (treffer != alle.end()) Monat_in_Monatsdaten(treffer->second.back(), monat, wer);
        }
        letztes_Einlesen_ = uhr.steady();
        platz_.Langsames_Netz = letztes_Einlesen_ - beginn > LANGSAM_AB;
    });
}

bool Erfassungsdateien::Erfassungsdaten_vorhanden(int code) const {
    return daten_.Code_vorhanden(static_cast<char>(konfig_.werte().SFHex(code)));
}

// Older versions go only when the newest one can be read and shows no fault.
bool Erfassungsdateien::gesund(const Version& version, const Text& yymm) {
    try {
        return !einmal_lesen(version, yymm).fehlerhaft();
    } catch (const Dateischaden&) {
        return false;
    } catch (const Programmabbruch&) {
        return false;
    }
}

void Erfassungsdateien::Erfassungsdateien_checken() {
    als_Prozedur(u"modKalvora - Erfassungsdateien_checken", [&] {
        Text fehlend;
        const auto alle = verzeichnis();
        const int dieses_Jahr = Jahr(platz_.Heute);
        for (int monat = 1; monat <= MONATE; ++monat) {
            const Text yymm = yymm_des_Monats(platz_.Startjahr, monat);
            const auto treffer = alle.find(yymm);
            const int jahr = platz_.Startjahr + (monat - 1) / 12;
            if (treffer == alle.end()) {
                if (jahr > dieses_Jahr) continue;
                if (!fehlend.empty()) fehlend += u", ";
                fehlend += yymm.substr(2) + platz_.datum().trennzeichen + ziffern(jahr, 4);
            } else if (treffer->second.size() > 1 && gesund(treffer->second.back(), yymm)) {
                Alte_Erfassungsdateien_löschen(treffer->second.back().stamm);
            }
        }
        if (!fehlend.empty())
            throw Dateischaden(
                u"Keine Erfassungsdatei für An-/Abwesenheitsdaten für folgende(n) Monat(e) gefunden: " +
                    fehlend,
                {}, fehlend);
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

void Erfassungsdateien::Ausnahmedaten_in_Erfassungdateien_übernehmen(TextView art, TextView alt,
                                                                     const Feld<Text>& Feiertagsliste) {
    als_Prozedur(u"modKalvora - Ausnahmedaten_in_Erfassungdateien_übernehmen", [&] {
        for (const auto& [yymm, versionen] : verzeichnis()) {
            if (yymm >= platz_.Monat_heute()) continue;
            for (const Version& v : versionen) {
                std::vector<std::string> zeilen;
                kanal_.Datei_öffnen(pfad(v.name), Dateimodus::Input);
                while (const auto zeile = kanal_.nächste_Klarzeile())
                    zeilen.emplace_back(zeile->bytes);
                kanal_.Datei_schließen();
                if (zeilen.size() < 3) continue;
                const Text alte = aus_cp1252(zeilen[2]);
                const int trenner = position(alte, u":");
                if (trenner == 0) continue;
                Text wochenende(links(alte, trenner - 1)), feiertage(mitte(alte, trenner + 1));
                Text& teil = art == u"W" ? wochenende : feiertage;
                teil = Teil_einfrieren(teil, art, alt, yymm, Feiertagsliste);
                const Text neue = wochenende + u":" + feiertage;
                if (neue == alte) continue;
                zeilen[2] = zu_cp1252(neue);
                kanal_.Datei_öffnen(pfad(v.name), Dateimodus::Output);
                for (const std::string& zeile : zeilen)
                    kanal_.Klarzeile_schreiben(zeile);
                kanal_.Datei_schließen();
            }
        }
    });
}

} // namespace kalvora
