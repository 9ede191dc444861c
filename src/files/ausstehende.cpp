#include "files/ausstehende.h"

#include <algorithm>

#include "base/cp1252.h"

namespace kalvora {

namespace {

constexpr int HÖCHSTENS_VERSUCHE = 4;
// Seconds. A row that a rewrite passed over was written a moment before it. One that is missing long after
// was rather taken back by a colleague, and must not return behind his back.
constexpr double JUNG = 60.0;

void anführen(std::vector<Text>& BenIds, const Text& BenId) {
    const auto gleich = [&](const Text& b) { return gleich_ohne_Fall(b, BenId); };
    if (std::none_of(BenIds.begin(), BenIds.end(), gleich)) BenIds.push_back(BenId);
}

} // namespace

Text Ausstehende::inhalt_jetzt(const Monatsinhalt& monat, const Text& BenId, int tag) {
    if (tag > 0) return monat.Kommentare(BenId)[static_cast<std::size_t>(tag)];
    const int nr = monat.letzter_Satz(BenId);
    return nr > 0 ? monat.Erfassungsdaten(nr).tage : Text(TAGE, u' ');
}

void Ausstehende::merken(const Anhang& wo, const std::vector<Text>& zeilen, const Monatsinhalt& vorher) {
    for (const Text& zeile : zeilen) {
        const std::string bytes = zu_cp1252(zeile);
        const Zeilenbefund b = Zeile_prüfen(bytes);
        const bool satz = b.art == Zeilenbefund::Art::A;
        for (int tag = satz ? 0 : b.von; tag <= b.bis; ++tag) {
            Eintrag neu{wo, aus_cp1252(b.schlüssel), tag, aus_cp1252(b.inhalt), {}};
            neu.vorher.push_back(inhalt_jetzt(vorher, neu.BenId, tag));
            merken(std::move(neu));
        }
    }
}

// It takes the place of one that still waits for the same person and day: only the last one matters.
void Ausstehende::merken(Eintrag neu) {
    std::erase_if(einträge_, [&](Eintrag& e) {
        if (e.wo.yymm != neu.wo.yymm || e.tag != neu.tag || !gleich_ohne_Fall(e.BenId, neu.BenId))
            return false;
        neu.vorher.insert(neu.vorher.end(), e.vorher.begin(), e.vorher.end());
        neu.vorher.push_back(std::move(e.inhalt));
        return true;
    });
    einträge_.push_back(std::move(neu));
}

// A row of the person (for the day) stands at or behind the place of ours: it is ours, or as new as ours.
bool Ausstehende::dahinter(const Eintrag& e, const Monatsinhalt& monat) {
    if (e.tag == 0) {
        const int nr = monat.letzter_Satz(e.BenId);
        return nr > 0 && monat.Erfassungsdaten(nr).stelle >= e.wo.davor;
    }
    return std::any_of(monat.Kommentardaten.begin(), monat.Kommentardaten.end(), [&](const Kommentarsatz& k) {
        return k.stelle >= e.wo.davor && k.von <= e.tag && e.tag <= k.bis &&
               gleich_ohne_Fall(k.BenId, e.BenId);
    });
}

// Places say something only in the very file that we appended to: appends leave its head alone and never
// shorten it. In one that was written anew the content decides.
Ausstehende::Verbleib Ausstehende::verbleib(const Eintrag& e, const Monatsinhalt& jetzt, TextView gründe,
                                            double zeit) {
    const Text da = inhalt_jetzt(jetzt, e.BenId, e.tag);
    if (da == e.inhalt) return Verbleib::Gesehen;
    if (e.tag > 0 && !e.inhalt.empty() &&
        inhalt_jetzt(jetzt, e.BenId, 0)[static_cast<std::size_t>(e.tag - 1)] == u' ')
        return Verbleib::Gesehen; // on a day without an entry a comment is nothing; a removal must hold there
    const bool dieselbe =
        jetzt.stamm == e.wo.stamm && jetzt.größe >= e.wo.davor && jetzt.kopf.starts_with(e.wo.kopf);
    if (dieselbe && dahinter(e, jetzt)) return Verbleib::Gesehen;
    if (!dieselbe) {
        if (std::find(e.vorher.begin(), e.vorher.end(), da) == e.vorher.end()) return Verbleib::Gesehen;
        if (zeit - e.wo.zeit > JUNG) return Verbleib::Ungewiss;
    }
    const bool andere_Bedeutung = e.tag == 0 && gründe != TextView(e.wo.gründe);
    return andere_Bedeutung || e.wo.versuch >= HÖCHSTENS_VERSUCHE ? Verbleib::Ungewiss : Verbleib::Verloren;
}

// Comments of days side by side become one row again.
void Ausstehende::nachtragen(const std::vector<Eintrag>& verloren, Befund& befund) {
    const auto setzt_fort = [](const Eintrag& a, const Eintrag& b) {
        return b.tag > 0 && b.tag == a.tag + 1 && b.inhalt == a.inhalt && gleich_ohne_Fall(a.BenId, b.BenId);
    };
    for (std::size_t von = 0, bis; von < verloren.size(); von = bis) {
        const Eintrag& e = verloren[von];
        for (bis = von + 1; bis < verloren.size() && setzt_fort(verloren[bis - 1], verloren[bis]);)
            ++bis;
        befund.versuch = std::max(befund.versuch, e.wo.versuch + 1);
        befund.nachzutragen.push_back(
            e.tag == 0 ? als_Zeile(Erfassungssatz{e.BenId, e.inhalt})
                       : als_Zeile(Kommentarsatz{e.BenId, e.tag, verloren[bis - 1].tag, e.inhalt}));
    }
}

Ausstehende::Befund Ausstehende::prüfen(const Monatsinhalt& jetzt, TextView gründe, double zeit) {
    Befund befund;
    std::vector<Eintrag> verloren;
    std::erase_if(einträge_, [&](Eintrag& e) {
        if (e.wo.yymm != jetzt.yymm) return false;
        switch (verbleib(e, jetzt, gründe, zeit)) {
        case Verbleib::Gesehen: break;
        case Verbleib::Verloren: verloren.push_back(std::move(e)); break;
        case Verbleib::Ungewiss: anführen(befund.ungewiss, e.BenId); break;
        }
        return true;
    });
    nachtragen(verloren, befund);
    return befund;
}

std::vector<Text> Ausstehende::aufgeben(TextView yymm) {
    std::vector<Text> BenIds;
    std::erase_if(einträge_, [&](const Eintrag& e) {
        if (e.wo.yymm != yymm) return false;
        anführen(BenIds, e.BenId);
        return true;
    });
    return BenIds;
}

void Ausstehende::vergessen(TextView yymm, TextView stamm) {
    std::erase_if(einträge_, [&](const Eintrag& e) { return e.wo.yymm == yymm && e.wo.stamm == stamm; });
}

std::set<Text> Ausstehende::Monate() const {
    std::set<Text> monate;
    for (const Eintrag& e : einträge_)
        monate.insert(e.wo.yymm);
    return monate;
}

} // namespace kalvora
