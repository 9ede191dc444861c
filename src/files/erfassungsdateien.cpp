#include "files/erfassungsdateien.h"

#include <algorithm>
#include <utility>

#include "base/cp1252.h"
#include "files/ordner.h"

namespace kalvora {

namespace {

// Only these names are versions: "dddd dddddd Data.dat".
bool ist_Version(TextView name) {
    return name.size() == 20 && nur_Ziffern(name.substr(0, 4)) && name[4] == u' ' &&
           nur_Ziffern(name.substr(5, 6)) && gleich_ohne_Fall(name.substr(11), u" Data.dat");
}

} // namespace

Erfassungsdateien::Verzeichnis Erfassungsdateien::verzeichnis(TextView yymm) const {
    Verzeichnis aus;
    for (const Text& name : Dateien(kanal_.fs(), platz_.Datenpfad, Text(yymm) + u"*Data.dat"))
        if (ist_Version(name)) aus[name.substr(0, 4)].push_back({name.substr(0, 11), name});
    for (auto& [monat, versionen] : aus)
        std::sort(versionen.begin(), versionen.end(),
                  [](const Version& a, const Version& b) { return a.stamm < b.stamm; });
    return aus;
}

Version Erfassungsdateien::in_Kraft(TextView yymm) const {
    const auto alle = verzeichnis(yymm);
    return alle.empty() ? Version{} : alle.begin()->second.back();
}

Text Erfassungsdateien::Aktuelle_Erfassungsdatei(TextView yymm) const {
    return in_Kraft(yymm).stamm;
}

Zeitstempel Erfassungsdateien::Stand_heute(TextView yymm) const {
    const auto stand = kanal_.werk().stand(Datei_finden(kanal_.fs(), platz_.Datenpfad, heutige_Datei(yymm)));
    return stand ? stand->time : 0;
}

// --- reading ---------------------------------------------------------------------------------------------

Monatsinhalt Erfassungsdateien::einmal_lesen(const Version& version, const Text& yymm) {
    Monatsinhalt inhalt;
    inhalt.yymm = yymm;
    inhalt.stamm = version.stamm;
    if (version.stamm.empty()) return inhalt;
    kanal_.Datei_öffnen(pfad(version.name), Dateimodus::Input);
    try {
        Monat_einlesen(kanal_, pfad(version.name), Codefilter(konfig_.werte().U()), inhalt);
    } catch (...) {
        kanal_.verwerfen();
        throw;
    }
    kanal_.Datei_schließen();
    return inhalt;
}

// What one reading finds may be the middle of somebody else's rewrite, so a fault counts only when a second
// reading finds it again. The version in force may have changed in between.
Monatsinhalt Erfassungsdateien::zweimal_lesen(const Text& yymm) {
    try {
        Monatsinhalt inhalt = einmal_lesen(in_Kraft(yymm), yymm);
        if (!inhalt.fehlerhaft()) return inhalt;
    } catch (const Dateischaden&) {    // NOLINT(bugprone-empty-catch): the second reading decides
    } catch (const Programmabbruch&) { // NOLINT(bugprone-empty-catch): deleted behind a newer version
    }
    kanal_.app().Pause(KURZ_WARTEN);
    return einmal_lesen(in_Kraft(yymm), yymm);
}

void Erfassungsdateien::Fehler_melden(const Monatsinhalt& inhalt) {
    const Text wann = u"Fehlerhafte Daten erkannt in Monat " + Text(mitte(inhalt.yymm, 3, 2)) +
                      platz_.datum().trennzeichen + u"20" + Text(links(inhalt.yymm, 2));
    const Konfiguration& k = konfig_.werte();
    if (k.Benutzerrolle == 0)
        throw Programmabbruch(u"modKalvora - Erfassungsdaten_lesen",
                              wann + u"!\n\nInformieren Sie einen der folgenden Administratoren: " +
                                  k.Administratorenliste(),
                              u"NoLog");
    if (inhalt.fehler_erster_Art > 0 || inhalt.Ausnahmezeile_ohne_Doppelpunkt) log_.Logbuch_ergänzen(2, wann);
    for (const Text& wer : inhalt.fehler_zweiter_Art)
        log_.Logbuch_ergänzen(2, wann + u" bei " + wer);
    kanal_.app().Hinweis(wann + u"!\n\nBitte Administrationslogbuch beachten!");
}

// Stamp of today's file as read. With an older version in force there was none when the folder was listed;
// one that came since is unknown and must be noticed. Behind a later-dated version nobody reads today's.
Zeitstempel Erfassungsdateien::gelesener_Stand() const {
    const Text heute = heutiger_Stamm(monat_.yymm);
    if (monat_.stamm == heute) return monat_.zeit;
    return monat_.stamm < heute ? 0 : Stand_heute(monat_.yymm);
}

bool Erfassungsdateien::Erfassungsdaten_lesen(const Text& yymm) {
    return als_Prozedur(u"modKalvora - Erfassungsdaten_lesen", [&] {
        lesbar_ = false; // until it was read, the month takes no entries
        Monatsinhalt neu = zweimal_lesen(yymm);
        if (neu.fehlerhaft() && (neu.zeit != monat_.zeit || neu.yymm != monat_.yymm)) Fehler_melden(neu);
        monat_ = std::move(neu);
        gesund_ = monat_.fehlerhaft() ? Text() : monat_.stamm;
        lesbar_ = true;
        zeitstempel_ = gelesener_Stand();
        Ausstehende_prüfen(monat_);
        return !monat_.Erfassungsdaten.leer();
    });
}

// --- saving ----------------------------------------------------------------------------------------------

void Erfassungsdateien::Sammeln(bool an) {
    sammeln_ = an;
    log_.Sammeln(an);
}

bool Erfassungsdateien::zulässig(const Text& zeile) const {
    const std::string bytes = zu_cp1252(zeile); // the finding's views point into it
    const Zeilenbefund b = Zeile_prüfen(bytes);
    if (b.schlüssel.empty() || !cp1252_darstellbar(zeile)) return false;
    if (b.art == Zeilenbefund::Art::K) return true;
    if (b.art != Zeilenbefund::Art::A) return false;
    const Codefilter filter(konfig_.werte().U());
    return std::all_of(b.inhalt.begin(), b.inhalt.end(),
                       [&](char c) { return c == ' ' || filter.zulässig(static_cast<unsigned char>(c)); });
}

// A later A row of the same person replaces the one collected last; K rows all stay.
void Erfassungsdateien::puffern(const Text& zeile) {
    const auto bis_Schlüssel = [](const Text& z) { return links(z, position(z, u":", 3)); };
    if (puffer_.empty() || zeile.starts_with(u'K') || bis_Schlüssel(zeile) != bis_Schlüssel(puffer_.back()))
        puffer_.emplace_back();
    puffer_.back() = zeile;
}

bool Erfassungsdateien::Datensatz_speichern(const Text& zeile) {
    return als_Prozedur(u"frmKalvora - Datensatz_speichern", [&] {
        if (!zeile.empty() && !zulässig(zeile)) {
            kanal_.app().Hinweis(
                u"Der Eintrag kann nicht gespeichert werden, weil der Datensatz unvollständig ist. "
                u"Die Anzeige wird jetzt neu geladen.");
            return false;
        }
        if (!zeile.empty() && sammeln_) {
            puffern(zeile);
            return true;
        }
        if (zeile.empty() && sammeln_ && puffer_.empty()) return true;
        const bool sanduhr = platz_.Langsame_Anzeige && !kanal_.app().Sanduhr_an();
        if (sanduhr) kanal_.app().Sanduhr(true);
        const std::vector<Text> zeilen =
            zeile.empty() ? std::exchange(puffer_, {}) : std::vector<Text>{zeile};
        const bool ok = schreiben(zeilen);
        if (sanduhr) kanal_.app().Sanduhr(false);
        return ok;
    });
}

bool Erfassungsdateien::schreiben(const std::vector<Text>& zeilen) {
    const bool Gründe_gelten = !vor_dem_Schreiben || vor_dem_Schreiben();
    const auto alle_zulässig = [&] {
        return std::all_of(zeilen.begin(), zeilen.end(), [&](const Text& z) { return zulässig(z); });
    };
    Text grund;
    if (personal_.leer())
        grund = Mitarbeiterdaten::KEINE_MITARBEITER;
    else if (!lesbar_)
        grund = u"Der Monat konnte nicht gelesen werden und nimmt deshalb keine Einträge an.";
    else if (!Gründe_gelten || !alle_zulässig())
        grund =
            u"Der Eintrag kann nicht gespeichert werden, weil die An-/Abwesenheitsgründe zwischenzeitlich "
            u"geändert wurden. Die Anzeige wird jetzt neu geladen.";
    if (!grund.empty()) {
        kanal_.app().Hinweis(grund);
        return false;
    }
    const Text ziel = Datei_finden(kanal_.fs(), platz_.Datenpfad, heutige_Datei(monat_.yymm));
    bool alte_löschen = gesund_ == heutiger_Stamm(monat_.yymm);
    if (!zeilen.empty() && Datei_vorhanden(kanal_.fs(), ziel))
        anhängen(ziel, zeilen);
    else
        neue_Version(ziel, zeilen, alte_löschen);
    zeitstempel_ = kanal_.Stand().time;
    monat_.stamm = heutiger_Stamm(monat_.yymm);
    for (const Text& zeile : zeilen)
        einpflegen(zeile);
    nach_dem_Schreiben(alte_löschen);
    return true;
}

void Erfassungsdateien::anhängen(const Text& ziel, const std::vector<Text>& zeilen) {
    kanal_.Datei_öffnen(ziel, Dateimodus::Append);
    for (const Text& zeile : zeilen)
        kanal_.LineOut(zeile);
    kanal_.Datei_schließen();
    merken(heutiger_Stamm(monat_.yymm), kanal_.Größe_vor_Anhang(), zeilen);
}

std::vector<Text> Erfassungsdateien::Inhalt_neuer_Version(const Monatsinhalt& alt,
                                                          const std::vector<Text>& zeilen) const {
    std::vector<Text> aus{u"[" + monat_.yymm + u"]",
                          alt.stamm.empty() ? konfig_.werte().Reservezeile : alt.Reservezeile,
                          alt.Ausnahmedaten};
    std::vector<Text> BenIds;
    for (const Mitarbeiter& m : personal_.MA())
        BenIds.push_back(m.MA_BenId);
    for (Text& zeile : Zeilen_verdichten(alt, BenIds))
        aus.push_back(std::move(zeile));
    aus.insert(aus.end(), zeilen.begin(), zeilen.end());
    return aus;
}

// The first save of a day, or (without rows) the rewriting of today's version. Whoever is slower by a moment
// finds the other's version there and appends to it.
void Erfassungsdateien::neue_Version(const Text& ziel, const std::vector<Text>& zeilen, bool& alte_löschen) {
    alte_löschen = false;
    monat_ = zweimal_lesen(monat_.yymm);
    const bool steht_schon = monat_.stamm == heutiger_Stamm(monat_.yymm);
    if (steht_schon && !zeilen.empty()) return anhängen(ziel, zeilen);
    if (steht_schon && monat_.fehlerhaft()) return; // what cannot be read must not be rewritten away
    kanal_.Datei_öffnen(ziel, steht_schon ? Dateimodus::Output : Dateimodus::Neu);
    for (const Text& zeile : Inhalt_neuer_Version(monat_, zeilen))
        kanal_.LineOut(zeile);
    if (kanal_.Datei_schließen() == FEHLER_EXISTIERT) {
        if (!zeilen.empty()) anhängen(ziel, zeilen);
        return;
    }
    // Lines that could not be read stay on the disk for whoever mends them.
    alte_löschen = !monat_.fehlerhaft();
    gesund_ = alte_löschen ? heutiger_Stamm(monat_.yymm) : Text();
    merken(heutiger_Stamm(monat_.yymm), 0, zeilen);
}

// What was saved is part of the month held, so that the next look at it needs no reading.
void Erfassungsdateien::einpflegen(const Text& zeile) {
    const std::string bytes = zu_cp1252(zeile);
    const Zeilenbefund b = Zeile_prüfen(bytes);
    if (b.art == Zeilenbefund::Art::A)
        monat_.Satz_anfügen({aus_cp1252(b.schlüssel), aus_cp1252(b.inhalt), 0});
    else
        monat_.Kommentar_anfügen({aus_cp1252(b.schlüssel), b.von, b.bis, aus_cp1252(b.inhalt), 0});
}

void Erfassungsdateien::nach_dem_Schreiben(bool alte_löschen) {
    const auto alle = verzeichnis(monat_.yymm);
    if (alle.empty()) return;
    const std::vector<Version>& versionen = alle.begin()->second;
    if (alte_löschen) Kleinere_löschen(versionen, heutiger_Stamm(monat_.yymm));
    const Text& stamm = versionen.back().stamm;
    if (rechts(stamm, 6) <= TextView(platz_.Heute_S)) return;
    // No read will ever find these rows, and the user is told so: they are not written again and again.
    std::erase_if(ausstehend_, [&](const Ausstehend& a) {
        return a.yymm == monat_.yymm && a.stamm == heutiger_Stamm(a.yymm);
    });
    const Text datum = platz_.datum().FormatDatumSA(rechts(stamm, 6));
    kanal_.app().Hinweis(
        u"Warnung: Datumskorruption erkannt! Es ist oder war ein Rechner im Netzwerk mit Systemdatum " +
        datum +
        u" vorhanden. Ihr Eintrag kann nur temporär gespeichert werden. Stellen Sie sicher, dass das "
        u"Systemdatum auf "
        u"allen angeschlossenen Rechnern korrekt eingestellt ist und bitten Sie einen Administrator mit "
        u"Vollzugriff auf "
        u"den Datenordner diesen Eintrag für Sie vorzunehmen.");
    log_.Logbuch_ergänzen(
        2, u"Datumskorruption erkannt! Es ist oder war ein Rechner im Netzwerk mit Systemdatum " + datum +
               u" vorhanden");
}

void Erfassungsdateien::Kleinere_löschen(const std::vector<Version>& versionen, TextView stamm) const {
    for (const Version& v : versionen)
        if (TextView(v.stamm) < stamm) Datei_löschen(kanal_.fs(), pfad(v.name));
}

void Erfassungsdateien::Alte_Erfassungsdateien_löschen(TextView stamm) const {
    const auto alle = verzeichnis(links(stamm, 4));
    if (!alle.empty()) Kleinere_löschen(alle.begin()->second, stamm);
}

} // namespace kalvora
