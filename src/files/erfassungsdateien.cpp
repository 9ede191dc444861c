#include "files/erfassungsdateien.h"

#include <algorithm>
#include <tuple>
#include <utility>

#include "base/cp1252.h"
#include "files/aufbewahrung.h"
#include "files/ordner.h"
#include "files/versionsname.h"
#include "files/zweite_lesung.h"

namespace kalvora {

Text Erfassungsdateien::Aktuelle_Erfassungsdatei(TextView yymm) const {
    return ordner_.in_Kraft(yymm).stamm;
}

bool Erfassungsdateien::Monat_geändert() const {
    try {
        const Version jetzt = ordner_.in_Kraft(monat_.inhalt.yymm);
        // No version or an earlier one: for a moment, as far as anybody knows, or the folder was put back to
        // an earlier state, which writes the configuration too.
        if (jetzt.stamm.empty() || jetzt.stamm < monat_.inhalt.stamm) return konfig_.Datei_ersetzt();
        if (jetzt.stamm != monat_.inhalt.stamm) return true;
        const auto stand = kanal_.werk().stand(ordner_.pfad(jetzt.name));
        return stand && stand->time != monat_.zeit;
    } catch (const Laufzeitfehler& fehler) {
        if (!ist_Dateifehler(fehler.nummer)) throw;
        return false;
    }
}

Text Erfassungsdateien::Monat_in_Worten(TextView yymm) const {
    return Text(mitte(yymm, 3, 2)) + platz_.datum().trennzeichen + u"20" + Text(links(yymm, 2));
}

// --- reading ---------------------------------------------------------------------------------------------

// An empty version is worth another look when a newer one has come meanwhile.
bool Erfassungsdateien::öffnen(const Version& version, Fehlerweg weg) {
    try {
        return kanal_.Datei_öffnen(ordner_.pfad(version.name), Dateimodus::Input, weg);
    } catch (Dateischaden& leer) {
        leer.zweimal_gesehen = ordner_.in_Kraft(links(version.stamm, 4)).stamm == version.stamm;
        throw;
    }
}

// Nothing, with IgnoreErrors alone, when the file cannot be opened.
std::optional<Monatsinhalt> Erfassungsdateien::einmal_lesen(const Version& version, const Text& yymm,
                                                            Fehlerweg weg) {
    Monatsinhalt inhalt;
    inhalt.yymm = yymm;
    inhalt.stamm = version.stamm;
    if (version.stamm.empty()) return inhalt;
    if (!öffnen(version, weg)) return std::nullopt;
    try {
        Monat_einlesen(kanal_, ordner_.pfad(version.name), Codefilter(konfig_.werte().U()), inhalt);
    } catch (...) {
        kanal_.verwerfen();
        throw;
    }
    kanal_.Datei_schließen();
    return inhalt;
}

// The version in force may have changed between the two looks, and the one listed may have been deleted
// behind it. A month that had a version and has none any more is not empty but lost. A last line that is open
// at both looks is no append under way.
Monatsinhalt Erfassungsdateien::zweimal_lesen(const Text& yymm) {
    std::optional<std::uint64_t> offen_bei; // size at the first look
    Monatsinhalt inhalt = zweite_Lesung(
        kanal_.app(), [&] { return *einmal_lesen(ordner_.in_Kraft(yymm), yymm, Fehlerweg::Melden); },
        [&](const Monatsinhalt& gelesen) {
            if (gelesen.letzte_Zeile_offen) offen_bei = gelesen.größe;
            return gelesen.ganz() && !gesehen_.verschwunden(gelesen) && !gesehen_.geschrumpft(gelesen);
        });
    if (inhalt.stamm.empty() && gesehen_.verschwunden(inhalt)) Monate_fehlen(Monat_in_Worten(yymm));
    inhalt.abgerissen =
        (inhalt.letzte_Zeile_offen && offen_bei == inhalt.größe) || gesehen_.geschrumpft(inhalt);
    gesehen_.merken(inhalt);
    return inhalt;
}

// An entry that broke off with its workstation costs nobody his work: who cannot mend it is told whom to ask.
void Erfassungsdateien::Abriss_melden(const Monatsinhalt& inhalt) {
    const Text wann = u"Fehlerhafte Daten erkannt in Monat " + Monat_in_Worten(inhalt.yymm);
    log_.Logbuch_ergänzen(2, wann);
    if (konfig_.werte().Benutzerrolle == 0)
        kanal_.app().Hinweis(wann + u"!\n\nInformieren Sie einen der folgenden Administratoren: " +
                             konfig_.werte().Administratorenliste());
}

void Erfassungsdateien::Fehler_protokollieren(const Monatsinhalt& inhalt) {
    if (!inhalt.fehlerhaft()) return Abriss_melden(inhalt);
    const Text wann = u"Fehlerhafte Daten erkannt in Monat " + Monat_in_Worten(inhalt.yymm);
    const Konfiguration& k = konfig_.werte();
    if (k.Benutzerrolle == 0)
        throw Programmabbruch(u"modKalvora - Erfassungsdaten_lesen",
                              wann + u"!\n\nInformieren Sie einen der folgenden Administratoren: " +
                                  k.Administratorenliste(),
                              u"NoLog");
    if (inhalt.fehler_erster_Art > 0 || inhalt.Ausnahmezeile_ohne_Doppelpunkt) log_.Logbuch_ergänzen(2, wann);
    for (const Text& wer : inhalt.fehler_zweiter_Art)
        log_.Logbuch_ergänzen(2, wann + u" bei " + wer);
}

namespace {

std::vector<std::string> entschlüsselt(std::string bytes) {
    std::vector<std::string> klar;
    Rohzeilen zeilen(bytes.data(), bytes.size());
    while (const auto zeile = zeilen.nächste())
        if (zeile->länge > 0) klar.emplace_back(Zeile_entschlüsseln(zeile->anfang, zeile->länge));
    return klar;
}

} // namespace

// Takes the faulty lines and a torn end out of the version, all others stay as they stand; what was lost
// comes from a backup that holds it. False: without a backup and a copy nothing is taken out (the day's
// backup may be older than the fault), and a file that changes meanwhile is left for the next look.
bool Erfassungsdateien::reparieren(const Monatsinhalt& inhalt) {
    if (!sichern || !sichern(u"F")) return false;
    const Version version = ordner_.in_Kraft(inhalt.yymm);
    if (version.stamm != inhalt.stamm) return false;
    const Text pfad = ordner_.pfad(version.name);
    const auto vorher = kanal_.werk().lesen(pfad);
    if (!vorher) return false;
    const auto kopie = Kopie_aufbewahren(kanal_.werk(), pfad, platz_.Heute_S, vorher->sicht());
    if (!kopie) return false;
    std::vector<std::string> zeilen = alle_Zeilen(version);
    const Dateiwerk::Vorgefunden gelesen{kanal_.Stand().size, kanal_.Kopfbytes()};
    if (gelesen.größe != vorher->größe) return false;
    const auto ganz = vervollständigen ? vervollständigen(version.name, vorher->sicht()) : std::nullopt;
    if (ganz) zeilen = entschlüsselt(*ganz);
    if (zeilen.size() < KOPFZEILEN) return false;
    if (inhalt.Ausnahmezeile_ohne_Doppelpunkt) zeilen[KOPFZEILEN - 1] = zu_cp1252(KEINE_AUSNAHMEN);
    const auto ist_fehlerhaft = [](const std::string& zeile) {
        const Zeilenbefund::Art art = Zeile_prüfen(std::string_view(zeile)).art;
        return art != Zeilenbefund::Art::A && art != Zeilenbefund::Art::K;
    };
    zeilen.erase(std::remove_if(zeilen.begin() + KOPFZEILEN, zeilen.end(), ist_fehlerhaft), zeilen.end());
    if (!unverändert_ersetzen(version, gelesen, zeilen, Fehlerweg::IgnoreErrors)) return false;
    log_.Logbuch_ergänzen(2, u"Die Datei mit den fehlerhaften Daten wurde aufbewahrt als " + *kopie +
                                 (ganz ? u", fehlende Datensätze wurden aus einem Backup ergänzt" : u""));
    return true;
}

// Faults are told once for one state of the file.
void Erfassungsdateien::einlesen(const Text& yymm, Monatsstand& ziel) {
    ziel.lesbar = false; // until it was read, the month takes no entries
    Monatsinhalt neu = zweimal_lesen(yymm);
    const bool fehlerhaft = neu.fehlerhaft() || neu.abgerissen;
    if (fehlerhaft && (neu.stamm != gemeldet_ || neu.zeit != gemeldet_Stand_)) {
        gemeldet_ = neu.stamm;
        gemeldet_Stand_ = neu.zeit;
        Fehler_protokollieren(neu);
        if (konfig_.werte().Benutzerrolle > 0 && reparieren(neu)) neu = zweimal_lesen(yymm);
        if (konfig_.werte().Benutzerrolle > 0)
            kanal_.app().Hinweis(u"Fehlerhafte Daten erkannt in Monat " + Monat_in_Worten(yymm) +
                                 u"!\n\nBitte Administrationslogbuch beachten!");
    }
    ziel.gesund = neu.ganz() ? neu.stamm : Text();
    ziel.zeit = neu.zeit;
    ziel.inhalt = std::move(neu);
    ziel.lesbar = true;
}

bool Erfassungsdateien::Erfassungsdaten_lesen(const Text& yymm) {
    return als_Prozedur(u"modKalvora - Erfassungsdaten_lesen", [&] {
        einlesen(yymm, monat_);
        monat_.ungezeigt = false; // whoever asks for the month shows it
        Ausstehende_prüfen(monat_);
        return !monat_.inhalt.Erfassungsdaten.leer();
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

// Characters below 32 have no place in a stored line: what is written is what can be read again.
Text Erfassungsdateien::speicherbar(const Text& zeile) {
    Text aus = zeile;
    std::erase_if(aus, [](char16_t c) { return c < 32; });
    return aus;
}

bool Erfassungsdateien::Datensatz_speichern(const Text& eingabe) {
    return als_Prozedur(u"frmKalvora - Datensatz_speichern", [&] {
        const Text zeile = speicherbar(eingabe);
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
        const Application::Sanduhrwache sanduhr(kanal_.app(),
                                                platz_.Langsame_Anzeige && !kanal_.app().Sanduhr_an());
        const Text hindernis =
            schreiben(monat_, zeile.empty() ? std::exchange(puffer_, {}) : std::vector<Text>{zeile});
        if (!hindernis.empty()) kanal_.app().Hinweis(hindernis);
        return hindernis.empty();
    });
}

// Why rows cannot be written to the month; empty when they can.
Text Erfassungsdateien::Hindernis(const Monatsstand& monat, const std::vector<Text>& zeilen) {
    const bool Gründe_gelten = !vor_dem_Schreiben || vor_dem_Schreiben();
    if (personal_.leer()) return Text(Mitarbeiterdaten::KEINE_MITARBEITER);
    if (!monat.lesbar) return u"Der Monat konnte nicht gelesen werden und nimmt deshalb keine Einträge an.";
    if (Gründe_gelten &&
        std::all_of(zeilen.begin(), zeilen.end(), [&](const Text& z) { return zulässig(z); }))
        return {};
    return u"Der Eintrag kann nicht gespeichert werden, weil die An-/Abwesenheitsgründe zwischenzeitlich "
           u"geändert wurden. Die Anzeige wird jetzt neu geladen.";
}

// Returns what stood in the way, empty when the rows were written. Today's file can appear or go between a
// look and the next call, but not for ever.
Text Erfassungsdateien::schreiben(Monatsstand& monat, const std::vector<Text>& zeilen, int versuch) {
    if (Text grund = Hindernis(monat, zeilen); !grund.empty()) return grund;
    constexpr int RUNDEN = 4;
    const Text ziel = Datei_finden(kanal_.fs(), platz_.Datenpfad, ordner_.heutige_Datei(monat.inhalt.yymm));
    bool geschrieben = false;
    for (int runde = 1; runde <= RUNDEN && !geschrieben; ++runde)
        geschrieben = (!zeilen.empty() && anhängen(monat, ziel, zeilen, versuch)) ||
                      neue_Version(monat, ziel, zeilen, versuch);
    if (!geschrieben && zeilen.empty()) return {}; // others keep writing: the next look will do it
    if (!geschrieben)
        throw Laufzeitfehler(FEHLER_NICHT_GEFUNDEN, u"Die Datei " + Pfad_kürzen(ziel, 100) + u" wechselt",
                             ziel);
    for (const Text& zeile : zeilen)
        einpflegen(monat.inhalt, zeile);
    nach_dem_Schreiben(monat);
    return {};
}

// What the codes of a row mean now: their reasons, in the order of the codes.
Text Erfassungsdateien::Bedeutung_der_Codes() const {
    Text aus;
    for (const Schaltfläche& sf : konfig_.werte().SF)
        aus += Text(1, sf.SF_Kennbuchstabe) + sf.SF_Text + u"\n";
    return aus;
}

void Erfassungsdateien::merken(const Monatsinhalt& vorher, const std::vector<Text>& zeilen, int versuch) {
    ausstehend_.merken({vorher.yymm, ordner_.heutiger_Stamm(vorher.yymm), kanal_.Kopfbytes(),
                        kanal_.Größe_vor_Anhang(), Bedeutung_der_Codes(), kanal_.werk().uhr().steady(),
                        versuch},
                       zeilen, vorher);
}

// Behind an own write the file is known as before, unless it held what nobody here has read: then the stamp
// held stays another one, and the next check reads the month.
void Erfassungsdateien::Stand_übernehmen(Monatsstand& monat, bool nur_eigenes) const {
    monat.inhalt.stamm = ordner_.heutiger_Stamm(monat.inhalt.yymm);
    if (!nur_eigenes || monat.ungezeigt) {
        monat.zeit = 0;
        return;
    }
    monat.zeit = kanal_.Stand().time;
    monat.inhalt.größe = kanal_.Stand().size;
    monat.inhalt.kopf = kanal_.Kopfbytes();
}

// False: today's file is not there, or somebody has emptied it and is about to write it.
bool Erfassungsdateien::anhängen(Monatsstand& monat, const Text& ziel, const std::vector<Text>& zeilen,
                                 int versuch) {
    kanal_.Datei_öffnen(ziel, Dateimodus::Fortsetzen);
    for (const Text& zeile : zeilen)
        kanal_.LineOut(zeile);
    if (kanal_.Datei_schließen() == FEHLER_NICHT_GEFUNDEN) return false;
    merken(monat.inhalt, zeilen, versuch);
    const Monatsinhalt& bekannt = monat.inhalt;
    Stand_übernehmen(monat, bekannt.stamm == ordner_.heutiger_Stamm(bekannt.yymm) &&
                                bekannt.größe == kanal_.Größe_vor_Anhang() &&
                                kanal_.Kopfbytes().starts_with(bekannt.kopf));
    return true;
}

bool Erfassungsdateien::Defragmentieren_fällig() const {
    const Monatsinhalt& m = monat_.inhalt;
    if (m.stamm == verdichtet_) return false; // refused before: not with a backup at each look
    const int zeilen = m.Erfassungsdaten.anzahl(), personen = personal_.MA().anzahl();
    if (2 * zeilen <= 3 * personen || !monat_.lesbar || personal_.leer() || kanal_.Reparatursperre)
        return false;
    return !platz_.Startphase && !platz_.Datenrückblick_aktiv;
}

bool Erfassungsdateien::Erfassungsdatei_defragmentieren() {
    return als_Prozedur(u"modKalvora - Erfassungsdatei_defragmentieren", [&] {
        if (platz_.Startphase || kanal_.Reparatursperre) return false;
        const Text wann = Monat_in_Worten(monat_.inhalt.yymm);
        const std::string vorher = monat_.inhalt.kopf;
        verdichtet_ = monat_.inhalt.stamm;
        if (konfig_.werte().Benutzerrolle > 0 && sichern && !sichern(u"T"))
            log_.Logbuch_ergänzen(2, u"Backup vor Defragmentieren konnte nicht erstellt werden");
        if (!Datensatz_speichern({}) || monat_.inhalt.kopf == vorher) return false;
        verdichtet_.clear();
        log_.Logbuch_ergänzen(2, u"Erfassungsdatei für " + wann + u" wurde defragmentiert");
        return true;
    });
}

void Erfassungsdateien::Defragmentieren_wenn_fällig() {
    if (!Defragmentieren_fällig()) return;
    try {
        Erfassungsdatei_defragmentieren();
    } catch (const Laufzeitfehler& fehler) { // the file is merely longer than need be
        if (!ist_Dateifehler(fehler.nummer)) throw;
    }
}

// All rows as they stand. Behind a repair the staff list and the reasons may be the standard ones or old
// ones: neither may decide which rows and codes are kept.
std::vector<std::string> Erfassungsdateien::unverdichtet(const Monatsinhalt& alt) {
    if (alt.stamm.empty()) return {};
    std::vector<std::string> zeilen = alle_Zeilen(ordner_.in_Kraft(alt.yymm));
    zeilen.erase(zeilen.begin(), zeilen.begin() + std::min<std::ptrdiff_t>(KOPFZEILEN, std::ssize(zeilen)));
    return zeilen;
}

// Lines that could not be read go along as they stood, for whoever mends them.
std::vector<std::string> Erfassungsdateien::verdichtet(const Monatsinhalt& alt) const {
    std::vector<Text> BenIds;
    for (const Mitarbeiter& m : personal_.MA())
        BenIds.push_back(m.MA_BenId);
    std::vector<std::string> zeilen;
    for (const Text& zeile : Zeilen_verdichten(alt, BenIds))
        zeilen.push_back(zu_cp1252(zeile));
    zeilen.insert(zeilen.end(), alt.unlesbar.begin(), alt.unlesbar.end());
    return zeilen;
}

void Erfassungsdateien::neue_Version_ausgeben(const Monatsinhalt& alt, const std::vector<std::string>& bisher,
                                              const std::vector<Text>& zeilen) {
    kanal_.LineOut(u"[" + alt.yymm + u"]");
    kanal_.LineOut(alt.stamm.empty() ? konfig_.werte().Reservezeile : alt.Reservezeile);
    kanal_.LineOut(alt.Ausnahmezeile_ohne_Doppelpunkt ? alt.Ausnahmezeile : alt.Ausnahmedaten);
    for (const std::string& zeile : bisher)
        kanal_.Klarzeile_schreiben(zeile);
    for (const Text& zeile : zeilen)
        kanal_.LineOut(zeile);
}

// The first save of a day, or (without rows) the rewriting of today's version. False: somebody was faster by
// a moment, and the rows go behind his version.
bool Erfassungsdateien::neue_Version(Monatsstand& monat, const Text& ziel, const std::vector<Text>& zeilen,
                                     int versuch) {
    const auto gezeigt = std::tuple(monat.inhalt.stamm, monat.inhalt.größe, monat.inhalt.kopf);
    einlesen(Text(monat.inhalt.yymm), monat);
    const bool derselbe = gezeigt == std::tie(monat.inhalt.stamm, monat.inhalt.größe, monat.inhalt.kopf);
    monat.ungezeigt = monat.ungezeigt || !derselbe;
    const bool steht_schon = monat.inhalt.stamm == ordner_.heutiger_Stamm(monat.inhalt.yymm);
    if (steht_schon && !zeilen.empty()) return false;
    const std::vector<std::string> bisher =
        kanal_.Reparatursperre ? unverdichtet(monat.inhalt) : verdichtet(monat.inhalt);
    kanal_.Datei_öffnen(ziel, steht_schon ? Dateimodus::Output : Dateimodus::Neu);
    if (steht_schon) kanal_.Nur_ersetzen({monat.inhalt.größe, monat.inhalt.kopf});
    neue_Version_ausgeben(monat.inhalt, bisher, zeilen);
    if (kanal_.Datei_schließen() == FEHLER_EXISTIERT) return zeilen.empty() && !steht_schon;
    // A version with faults stays beside its successor until somebody has looked at it.
    monat.gesund = monat.inhalt.ganz() ? ordner_.heutiger_Stamm(monat.inhalt.yymm) : Text();
    merken(monat.inhalt, zeilen, versuch);
    Stand_übernehmen(monat, true);
    return true;
}

// What was saved is part of the month held, so that the next look at it needs no reading.
void Erfassungsdateien::einpflegen(Monatsinhalt& inhalt, const Text& zeile) {
    const std::string bytes = zu_cp1252(zeile);
    const Zeilenbefund b = Zeile_prüfen(bytes);
    if (b.art == Zeilenbefund::Art::A)
        inhalt.Satz_anfügen({aus_cp1252(b.schlüssel), aus_cp1252(b.inhalt), 0});
    else
        inhalt.Kommentar_anfügen({aus_cp1252(b.schlüssel), b.von, b.bis, aus_cp1252(b.inhalt), 0});
}

// Older versions go only behind one that was read sound or written whole by this program.
void Erfassungsdateien::nach_dem_Schreiben(const Monatsstand& monat) {
    const Text heutiger = ordner_.heutiger_Stamm(monat.inhalt.yymm);
    const auto alle = ordner_.verzeichnis(monat.inhalt.yymm);
    if (alle.empty()) return;
    const std::vector<Version>& versionen = alle.begin()->second;
    if (monat.gesund == heutiger) ordner_.Alte_Erfassungsdateien_löschen(versionen, heutiger);
    if (rechts(versionen.back().stamm, 6) <= TextView(platz_.Heute_S)) return;
    // No read will ever find these rows, and the user is told so: they are not written again and again.
    ausstehend_.vergessen(monat.inhalt.yymm, heutiger);
    Datumskorruption_melden(versionen.back().stamm);
}

void Erfassungsdateien::Datumskorruption_melden(const Text& stamm) {
    const Text datum = platz_.datum().FormatDatumSA(rechts(stamm, 6));
    const Text erkannt =
        u"Datumskorruption erkannt! Es ist oder war ein Rechner im Netzwerk mit Systemdatum " + datum +
        u" vorhanden";
    kanal_.app().Hinweis(
        u"Warnung: " + erkannt +
        u". Ihr Eintrag kann nur temporär gespeichert werden. Stellen Sie sicher, dass das Systemdatum auf "
        u"allen angeschlossenen Rechnern korrekt eingestellt ist und bitten Sie einen Administrator mit "
        u"Vollzugriff auf den Datenordner diesen Eintrag für Sie vorzunehmen.");
    log_.Logbuch_ergänzen(2, erkannt);
}

} // namespace kalvora
