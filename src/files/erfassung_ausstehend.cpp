// Own rows that no read has seen yet: looked for with each read of their month, aside, and at the end.
#include <algorithm>

#include "base/cp1252.h"
#include "files/erfassungsdateien.h"

namespace kalvora {

void Erfassungsdateien::Unbestätigte_melden(const Text& yymm, const std::vector<Text>& BenIds) {
    if (BenIds.empty()) return;
    Text wer;
    for (const Text& BenId : BenIds)
        wer += (wer.empty() ? u"'" : u", '") + BenId + u"'";
    const Text was =
        u"Folgender Eintrag im Monat " + Monat_in_Worten(yymm) + u" konnte nicht bestätigt werden: " + wer;
    log_.Logbuch_ergänzen(2, was);
    kanal_.app().Hinweis(was +
                         u". Bitte prüfen Sie den Eintrag und nehmen Sie ihn gegebenenfalls erneut vor.");
}

// True when rows were written again. Without a staff list nothing can be written: they go on waiting.
bool Erfassungsdateien::Ausstehende_prüfen(Monatsstand& monat) {
    if (ausstehend_.leer() || personal_.leer()) return false;
    const Ausstehende vorher = ausstehend_;
    const Ausstehende::Befund befund =
        ausstehend_.prüfen(monat.inhalt, Bedeutung_der_Codes(), kanal_.werk().uhr().steady());
    Unbestätigte_melden(monat.inhalt.yymm, befund.ungewiss);
    if (befund.nachzutragen.empty()) return false;
    try {
        if (schreiben(monat, befund.nachzutragen, befund.versuch).empty()) return true;
    } catch (const Laufzeitfehler& fehler) { // the disk refuses: the rows go on waiting
        ausstehend_ = vorher;
        if (!ist_Dateifehler(fehler.nummer)) throw;
        return false;
    } catch (...) { // a lock, or a damaged month: whoever stops the program tells what still waits
        ausstehend_ = vorher;
        throw;
    }
    std::vector<Text> BenIds;
    for (const Text& zeile : befund.nachzutragen) {
        const std::string bytes = zu_cp1252(zeile);
        BenIds.push_back(aus_cp1252(Zeile_prüfen(bytes).schlüssel));
    }
    BenIds.erase(std::unique(BenIds.begin(), BenIds.end()), BenIds.end());
    Unbestätigte_melden(monat.inhalt.yymm, BenIds);
    return false;
}

// Reads the month aside: neither the shown one nor what was told of it changes. One that cannot be read now
// goes on waiting.
bool Erfassungsdateien::Ausstehende_nachsehen(const Text& yymm) {
    Monatsstand monat;
    try {
        auto inhalt = einmal_lesen(ordner_.in_Kraft(yymm), yymm, Fehlerweg::IgnoreErrors);
        // Half a view is somebody's rewrite: it says nothing of what is missing.
        if (!inhalt || inhalt->letzte_Zeile_offen || gesehen_.verschwunden(*inhalt) ||
            gesehen_.geschrumpft(*inhalt))
            return false;
        monat.inhalt = *std::move(inhalt);
    } catch (const Dateischaden&) {
        return false;
    } catch (const Laufzeitfehler& fehler) { // the folder cannot be listed just now
        if (!ist_Dateifehler(fehler.nummer)) throw;
        return false;
    }
    monat.lesbar = true;
    return Ausstehende_prüfen(monat);
}

bool Erfassungsdateien::Ausstehende_nachsehen() {
    bool nachgetragen = false;
    for (const Text& yymm : ausstehend_.Monate())
        nachgetragen = Ausstehende_nachsehen(yymm) || nachgetragen;
    return nachgetragen;
}

void Erfassungsdateien::Ausstehende_abschließen() {
    // Bounded: each round sees a row, writes it again or gives it up, unless the disk refuses.
    constexpr int RUNDEN = 6;
    try {
        for (int runde = 1; runde <= RUNDEN && !ausstehend_.leer(); ++runde)
            Ausstehende_nachsehen();
    } catch (const Fehler&) { // NOLINT(bugprone-empty-catch): told below is what is left
    }
    for (const Text& yymm : ausstehend_.Monate())
        Unbestätigte_melden(yymm, ausstehend_.aufgeben(yymm));
    log_.nachsehen(true);
}

} // namespace kalvora
