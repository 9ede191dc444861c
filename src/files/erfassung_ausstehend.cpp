// Own rows that no read has seen yet. Appends of two workstations on a share overwrite each other in a
// fraction of cases although every call succeeds; the one that was lost is found missing at the next read.
#include <algorithm>
#include <set>

#include "base/cp1252.h"
#include "files/erfassungsdateien.h"

namespace kalvora {

namespace {

constexpr int HÖCHSTENS_VERSUCHE = 3;

bool überlappen(const Kommentarsatz& k, const Zeilenbefund& b) {
    return k.von <= b.bis && k.bis >= b.von;
}

} // namespace

void Erfassungsdateien::merken(const Text& stamm, std::uint64_t davor, const std::vector<Text>& zeilen) {
    for (const Text& zeile : zeilen) {
        const std::string bytes = zu_cp1252(zeile);
        const Zeilenbefund b = Zeile_prüfen(bytes);
        const int nr = monat_.letzter_Satz(aus_cp1252(b.schlüssel));
        const bool A = b.art == Zeilenbefund::Art::A;
        ausstehend_.push_back(
            {monat_.yymm, stamm, zeile, A && nr ? monat_.Erfassungsdaten(nr).tage : Text(), davor, 1});
    }
}

// Rows at or behind the place of our append are as new as ours: one of them is ours, or a later one of the
// same person that supersedes it. When the file was rewritten meanwhile, places say nothing and the content
// decides.
Erfassungsdateien::Verbleib Erfassungsdateien::verbleib(const Ausstehend& a,
                                                        const Monatsinhalt& inhalt) const {
    const std::string bytes = zu_cp1252(a.zeile);
    const Zeilenbefund b = Zeile_prüfen(bytes);
    const Text wer = aus_cp1252(b.schlüssel);
    const bool gleiche_Datei = inhalt.stamm == a.stamm;
    if (b.art == Zeilenbefund::Art::A) {
        const int nr = inhalt.letzter_Satz(wer);
        if (nr == 0) return trimmen(aus_cp1252(b.inhalt)).empty() ? Verbleib::Gesehen : Verbleib::Verloren;
        const Erfassungssatz& satz = inhalt.Erfassungsdaten(nr);
        if (satz.tage == aus_cp1252(b.inhalt)) return Verbleib::Gesehen;
        if (gleiche_Datei && satz.stelle >= a.davor) return Verbleib::Gesehen;
        return satz.tage == a.vorher || gleiche_Datei ? Verbleib::Verloren : Verbleib::Gesehen;
    }
    const Text text = aus_cp1252(b.inhalt);
    for (const Kommentarsatz& k : inhalt.Kommentardaten)
        if (gleich_ohne_Fall(k.BenId, wer) && überlappen(k, b) &&
            (k.text == text || (gleiche_Datei && k.stelle >= a.davor)))
            return Verbleib::Gesehen;
    // A comment row that only takes away what is not there any more need not be seen.
    const auto kommentare = inhalt.Kommentare(wer);
    const bool stehen_noch = std::any_of(kommentare.begin() + b.von, kommentare.begin() + b.bis + 1,
                                         [](const Text& t) { return !t.empty(); });
    if (text.empty()) return stehen_noch ? Verbleib::Verloren : Verbleib::Gesehen;
    const int nr = inhalt.letzter_Satz(wer);
    const bool Tage_leer =
        nr == 0 || trimmen(mitte(inhalt.Erfassungsdaten(nr).tage, b.von, b.bis - b.von + 1)).empty();
    return Tage_leer ? Verbleib::Gesehen : Verbleib::Verloren;
}

void Erfassungsdateien::Ausstehende_prüfen(const Monatsinhalt& inhalt) {
    std::vector<Ausstehend> verloren;
    std::erase_if(ausstehend_, [&](Ausstehend& a) {
        if (a.yymm != inhalt.yymm) return false;
        // Of several rows of one person only the last one matters; earlier ones are superseded by it.
        if (verbleib(a, inhalt) == Verbleib::Verloren) verloren.push_back(a);
        return true;
    });
    for (std::size_t k = 0; k < verloren.size(); ++k) {
        const auto wer = [](const Ausstehend& a) { return links(a.zeile, position(a.zeile, u":", 3)); };
        const bool überholt =
            verloren[k].zeile.starts_with(u'A') &&
            std::any_of(verloren.begin() + static_cast<std::ptrdiff_t>(k) + 1, verloren.end(),
                        [&](const Ausstehend& b) { return wer(b) == wer(verloren[k]); });
        if (überholt) continue;
        if (verloren[k].versuche > HÖCHSTENS_VERSUCHE) {
            const Text schlüssel(mitte(wer(verloren[k]), 3));
            kanal_.app().Hinweis(
                u"Der Eintrag für '" + schlüssel.substr(0, schlüssel.size() - 1) +
                u"' konnte nicht bestätigt werden. Bitte prüfen Sie den Eintrag und nehmen Sie ihn "
                u"gegebenenfalls erneut vor.");
            continue;
        }
        const std::size_t vorher = ausstehend_.size();
        if (!schreiben({verloren[k].zeile})) continue;
        for (std::size_t n = vorher; n < ausstehend_.size(); ++n)
            ausstehend_[n].versuche = verloren[k].versuche + 1;
    }
}

void Erfassungsdateien::Ausstehende_nachsehen() {
    // Bounded: each round either sees a row, appends it again or gives it up with a message.
    for (int runde = 0; runde <= HÖCHSTENS_VERSUCHE + 1 && !ausstehend_.empty(); ++runde) {
        std::set<Text> monate;
        for (const Ausstehend& a : ausstehend_)
            monate.insert(a.yymm);
        for (const Text& yymm : monate)
            Erfassungsdaten_lesen(yymm);
    }
}

} // namespace kalvora
