#include "safety/monatsrettung.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>
#include <vector>

#include "base/cp1252.h"
#include "files/monatsdatei.h"

namespace kalvora {

namespace {

struct Satz {
    std::string roh; // as stored, without its end
    std::string klar;
    Text schlüssel; // folded
    bool Kommentar = false;
};

// What each person's rows say: the last A row, and all comments in their order.
struct Stand {
    std::map<Text, std::string> A;
    std::map<Text, std::vector<std::string>> K;
    explicit Stand(const std::vector<Satz>& sätze) {
        for (const Satz& s : sätze)
            if (s.Kommentar)
                K[s.schlüssel].push_back(s.klar);
            else
                A[s.schlüssel] = s.klar;
    }
};

struct Inhalt {
    Text kopf; // first line
    std::vector<Satz> sätze;
};

// A last line without its end was never acknowledged, or is the one that was cut.
Inhalt zerlegt(std::string bytes) {
    Inhalt inhalt;
    Rohzeilen zeilen(bytes.data(), bytes.size());
    bool erste = true;
    for (auto zeile = zeilen.nächste(); zeile && zeile->mit_Ende; zeile = zeilen.nächste()) {
        if (zeile->länge == 0) continue;
        Satz s{{zeile->anfang, zeile->länge}, {}, {}, false};
        s.klar = Zeile_entschlüsseln(zeile->anfang, zeile->länge);
        if (std::exchange(erste, false)) inhalt.kopf = aus_cp1252(s.klar);
        const Zeilenbefund b = Zeile_prüfen(std::string_view(s.klar));
        s.Kommentar = b.art == Zeilenbefund::Art::K;
        if (!s.Kommentar && b.art != Zeilenbefund::Art::A) continue;
        s.schlüssel = klein(aus_cp1252(b.schlüssel));
        inhalt.sätze.push_back(std::move(s));
    }
    return inhalt;
}

bool anderer_Monat(const Text& kopf, const Text& yymm) {
    const bool sagt_es =
        kopf.size() == 6 && kopf[0] == u'[' && kopf[5] == u']' && nur_Ziffern(TextView(kopf).substr(1, 4));
    return sagt_es && kopf.substr(1, 4) != yymm;
}

// A flipped bit can make the head another month's; what is mostly the same rows is the same month.
bool dieselben_Sätze(const Stand& hat, const Stand& soll) {
    const auto gleich = std::count_if(hat.A.begin(), hat.A.end(), [&](const auto& a) {
        const auto treffer = soll.A.find(a.first);
        return treffer != soll.A.end() && treffer->second == a.second;
    });
    return gleich > 0 && 2 * static_cast<std::size_t>(gleich) >= hat.A.size();
}

// A row is known again by its bytes: hardly another one is stored with the same key.
std::set<std::string> als_Menge(const std::vector<Satz>& sätze) {
    std::set<std::string> aus;
    for (const Satz& s : sätze)
        aus.insert(s.roh);
    return aus;
}

} // namespace

bool Sätze_fehlen(std::string_view basis, std::string_view datei) {
    const auto da = als_Menge(zerlegt(std::string(datei)).sätze);
    const auto soll = zerlegt(std::string(basis)).sätze;
    return std::any_of(soll.begin(), soll.end(), [&](const Satz& s) { return !da.contains(s.roh); });
}

std::string Monat_ergänzt(std::string_view basis, std::string_view beschädigt, const Text& yymm) {
    std::string aus(basis.substr(0, basis.rfind('\n') + 1));
    Inhalt rest = zerlegt(std::string(beschädigt));
    const std::vector<Satz> da = zerlegt(aus).sätze;
    Stand hat(da);
    if (anderer_Monat(rest.kopf, yymm) && !dieselben_Sätze(hat, Stand(rest.sätze))) return aus;
    // Rows that the base holds itself are no younger than those that follow them there.
    std::erase_if(rest.sätze, [bekannt = als_Menge(da)](const Satz& s) { return bekannt.contains(s.roh); });
    Stand soll(rest.sätze);
    for (const Satz& s : rest.sätze) {
        // Earlier A rows of a person do not count any more; comments only count together.
        const bool neu = s.Kommentar ? hat.K[s.schlüssel] != soll.K[s.schlüssel]
                                     : soll.A[s.schlüssel] == s.klar && hat.A[s.schlüssel] != s.klar;
        if (neu) aus += s.roh + "\r\n";
    }
    return aus;
}

std::optional<std::string> Personen_ergänzt(std::string_view früher, std::string_view datei) {
    const std::vector<Satz> alte = zerlegt(std::string(früher)).sätze;
    const Stand war(alte), ist(zerlegt(std::string(datei)).sätze);
    const auto leer = [](const std::string& satz) {
        return satz.find_last_not_of(' ') < satz.size() - static_cast<std::size_t>(TAGE);
    };
    std::string aus(datei.substr(0, datei.rfind('\n') + 1));
    const std::size_t davor = aus.size();
    for (const Satz& s : alte) {
        const auto tage = war.A.find(s.schlüssel);
        if (tage == war.A.end() || leer(tage->second) || ist.A.contains(s.schlüssel)) continue;
        if (s.Kommentar || s.klar == tage->second) aus += s.roh + "\r\n";
    }
    return aus.size() > davor ? std::optional(std::move(aus)) : std::nullopt;
}

std::string_view hinter_Kopf(std::string_view bytes) {
    for (int n = 1; n <= KOPFZEILEN; ++n)
        bytes.remove_prefix(std::min(bytes.find('\n'), bytes.size() - 1) + 1);
    return bytes;
}

void neu_beginnen(char* bytes, std::size_t größe, Schlüsselquelle& schlüssel) {
    Rohzeilen zeilen(bytes, größe);
    for (int n = 1; n <= KOPFZEILEN; ++n) {
        const auto zeile = zeilen.nächste();
        if (!zeile || !zeile->mit_Ende || zeile->länge == 0) return;
        std::string roh(zeile->anfang, zeile->länge), neu;
        const auto bisher = static_cast<std::uint8_t>(roh[0]);
        std::uint8_t anderer = bisher;
        while (anderer == bisher)
            anderer = schlüssel.nächster();
        Zeile_verschlüsseln(neu, Zeile_entschlüsseln(roh.data(), roh.size()), anderer);
        if (neu.size() == roh.size() + 2) std::copy_n(neu.data(), roh.size(), zeile->anfang); // behind: CR LF
    }
}

} // namespace kalvora
