// Own rows that no read has seen yet. Appends of two workstations on a share overwrite each other in a
// fraction of cases although every call succeeds; the one that was lost is found missing at the next read.
#include <algorithm>
#include <set>

#include "base/cp1252.h"
#include "files/erfassungsdateien.h"

namespace kalvora {

namespace {

constexpr int HÖCHSTENS_VERSUCHE = 3;

TextView bis_Schlüssel(const Text& zeile) { // "A:<BenId>:"
    return links(zeile, position(zeile, u":", 3));
}

bool überlappen(const Kommentarsatz& k, const Zeilenbefund& b) {
    return k.von <= b.bis && k.bis >= b.von;
}

} // namespace

// An A row takes the place of one that still waits for the same person: only the last one matters.
void Erfassungsdateien::merken(const Text& stamm, std::uint64_t davor, const std::vector<Text>& zeilen) {
    for (const Text& zeile : zeilen) {
        Ausstehend neu{monat_.yymm, stamm, zeile, {}, davor, 1};
        const std::string bytes = zu_cp1252(zeile);
        const Zeilenbefund b = Zeile_prüfen(bytes);
        if (b.art == Zeilenbefund::Art::A) {
            const int nr = monat_.letzter_Satz(aus_cp1252(b.schlüssel));
            if (nr > 0) neu.vorher.push_back(monat_.Erfassungsdaten(nr).tage);
            std::erase_if(ausstehend_, [&](Ausstehend& a) {
                if (a.yymm != neu.yymm || !gleich_ohne_Fall(bis_Schlüssel(a.zeile), bis_Schlüssel(zeile)))
                    return false;
                neu.vorher.insert(neu.vorher.end(), a.vorher.begin(), a.vorher.end());
                neu.vorher.emplace_back(rechts(a.zeile, TAGE));
                return true;
            });
        }
        ausstehend_.push_back(std::move(neu));
    }
}

// Rows at or behind the place of our append are as new as ours: one of them is ours, or a later one of the
// same person that supersedes it. In a file that was rewritten meanwhile (another version, or one that ends
// before that place: appends never shorten it) places say nothing and the content decides.
Erfassungsdateien::Verbleib Erfassungsdateien::verbleib(const Ausstehend& a,
                                                        const Monatsinhalt& inhalt) const {
    const std::string bytes = zu_cp1252(a.zeile);
    const Zeilenbefund b = Zeile_prüfen(bytes);
    const bool Stellen_gelten = inhalt.stamm == a.stamm && inhalt.größe >= a.davor;
    const bool gesehen = b.art == Zeilenbefund::Art::A ? Satz_gesehen(a, b, inhalt, Stellen_gelten)
                                                       : Kommentar_gesehen(a, b, inhalt, Stellen_gelten);
    return gesehen ? Verbleib::Gesehen : Verbleib::Verloren;
}

bool Erfassungsdateien::Satz_gesehen(const Ausstehend& a, const Zeilenbefund& b, const Monatsinhalt& inhalt,
                                     bool Stellen_gelten) {
    const Text tage = aus_cp1252(b.inhalt);
    const int nr = inhalt.letzter_Satz(aus_cp1252(b.schlüssel));
    if (nr == 0) return trimmen(tage).empty();
    const Erfassungssatz& satz = inhalt.Erfassungsdaten(nr);
    if (satz.tage == tage) return true;
    if (Stellen_gelten) return satz.stelle >= a.davor;
    return std::find(a.vorher.begin(), a.vorher.end(), satz.tage) == a.vorher.end();
}

// On days without an entry a comment has no effect, but a removal must hold there too.
bool Erfassungsdateien::Kommentar_gesehen(const Ausstehend& a, const Zeilenbefund& b,
                                          const Monatsinhalt& inhalt, bool Stellen_gelten) {
    const Text wer = aus_cp1252(b.schlüssel), text = aus_cp1252(b.inhalt);
    const int nr = inhalt.letzter_Satz(wer);
    const auto kommentare = inhalt.Kommentare(wer);
    const auto gilt = [&](int tag) {
        const bool belegt = nr > 0 && zeichen(inhalt.Erfassungsdaten(nr).tage, tag) != u' ';
        return kommentare[static_cast<std::size_t>(tag)] == text || (!text.empty() && !belegt);
    };
    bool überall = true;
    for (int tag = b.von; tag <= b.bis; ++tag)
        überall = überall && gilt(tag);
    const auto überholt = [&](const Kommentarsatz& k) {
        return k.stelle >= a.davor && gleich_ohne_Fall(k.BenId, wer) && überlappen(k, b);
    };
    return überall || (Stellen_gelten &&
                       std::any_of(inhalt.Kommentardaten.begin(), inhalt.Kommentardaten.end(), überholt));
}

bool Erfassungsdateien::Ausstehende_vorhanden(TextView yymm) const {
    return std::any_of(ausstehend_.begin(), ausstehend_.end(),
                       [&](const Ausstehend& a) { return a.yymm == yymm; });
}

void Erfassungsdateien::Ausstehende_prüfen(const Monatsinhalt& inhalt) {
    std::vector<Ausstehend> verloren;
    std::erase_if(ausstehend_, [&](Ausstehend& a) {
        if (a.yymm != inhalt.yymm) return false;
        if (verbleib(a, inhalt) == Verbleib::Verloren) verloren.push_back(std::move(a));
        return true;
    });
    for (const Ausstehend& a : verloren) {
        if (a.versuche > HÖCHSTENS_VERSUCHE) {
            const Text wer(mitte(bis_Schlüssel(a.zeile), 3));
            kanal_.app().Hinweis(
                u"Der Eintrag für '" + Text(links(wer, static_cast<int>(wer.size()) - 1)) +
                u"' konnte nicht bestätigt werden. Bitte prüfen Sie den Eintrag und nehmen Sie ihn "
                u"gegebenenfalls erneut vor.");
            continue;
        }
        const std::size_t vorher = ausstehend_.size();
        try {
            if (!schreiben({a.zeile})) continue;
        } catch (...) {
            // Neither this row nor those behind it were looked after: they go on waiting.
            const auto ab = verloren.begin() + (&a - verloren.data());
            ausstehend_.insert(ausstehend_.end(), ab, verloren.end());
            throw;
        }
        for (std::size_t n = vorher; n < ausstehend_.size(); ++n)
            ausstehend_[n].versuche = a.versuche + 1;
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
