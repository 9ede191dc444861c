// The main window's plan over a disk in memory, for the tests of the entry pipeline. November 2026: the 1st
// is a Sunday, today is Monday the 16th, the 17th a holiday.
#pragma once

#include "hilfen/programmlauf.h"

namespace kalvora::plantest {

inline const Text DATEN = u"/srv/x/Data/";
inline constexpr int U = 1, SONST = 6, LÖSCHEN = 7; // reason numbers; Krank, 5, is for administrators
inline const Text LISTE = u"<Name Vorname> (chef)";

struct Plan : SpeicherDateisystem, Firma {
    std::unique_ptr<Platzlauf> lauf;

    // Rows of November, then the program for this user.
    Platzlauf& öffne(const Text& benutzer, const std::vector<Text>& zeilen = {}) {
        if (!zeilen.empty()) monate[u"2611"] = zeilen;
        anlegen(*this, DATEN);
        return platz(benutzer);
    }
    Platzlauf& platz(const Text& benutzer) {
        lauf = std::make_unique<Platzlauf>(*this, benutzer);
        EXPECT_TRUE(lauf->starten({u"/path", DATEN, u"/nowelcomescreen"}));
        tagebuch_leeren();
        return *lauf;
    }
    // Rows of today's version behind the head, or of the older one while there is none.
    std::vector<Text> zeilen(const Text& yymm = u"2611") const {
        auto bytes = inhalt(DATEN + yymm + u" 261116 Data.dat");
        if (!bytes) bytes = inhalt(DATEN + yymm + u" 261110 Data.dat");
        auto alle = als_Zeilen(bytes.value_or(""));
        return {alle.begin() + 3, alle.end()};
    }
    // Log records without time and user.
    std::vector<Text> log() const {
        std::vector<Text> aus;
        for (const Text& z : als_Zeilen(inhalt(DATEN + u"Logs/2611 Kalvora.log").value_or("")))
            aus.emplace_back(mitte(z, position(z, u"|", position(z, u"|") + 1) + 1));
        return aus;
    }
    int geschrieben() const { return anzahl("write"); }
};

// Days of a row: text at day, text at day, ...
inline Text Tage(std::initializer_list<std::pair<int, TextView>> stücke, int länge = 31) {
    Text aus(static_cast<size_t>(länge), u'.');
    for (const auto& [tag, text] : stücke)
        aus.replace(static_cast<size_t>(tag - 1), text.size(), text);
    return aus;
}
// The same as a stored row: "." is a blank.
inline Text Satz(TextView wer, std::initializer_list<std::pair<int, TextView>> stücke) {
    return A(wer, Ersetzen(Tage(stücke), u".", u" "));
}

} // namespace kalvora::plantest
