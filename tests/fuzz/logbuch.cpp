// The clean-up of a log: pairs go, and every other record stays where it was; other files stay untouched.
#include "fuzz/fuzzplatz.h"

namespace kalvora::fuzz {

namespace {

std::vector<Text> Sätze(const std::string& bytes) {
    auto zeilen = als_Zeilen(bytes, u"");
    std::erase(zeilen, Text());
    return zeilen;
}

bool ist_Teilfolge(const std::vector<Text>& teil, const std::vector<Text>& alle) {
    std::size_t i = 0;
    for (const Text& zeile : alle)
        if (i < teil.size() && teil[i] == zeile) ++i;
    return i == teil.size();
}

} // namespace

void prüfe(const Eingabe& eingabe) {
    Prüfplatz p;
    const bool Vormonat = (eingabe.wahl & 2) != 0;
    const Text pfad = p.platz.Logpfad + (Vormonat ? u"2610" : u"2611") + u" Kalvora.log";
    p.fs.schreibe(p.platz.Logpfad + u"2609 Kalvora.log", "x\r\n");
    p.fs.schreibe(pfad, eingabe.datei);
    const auto leser = [&] { p.log.Logbuch_bereinigen(Vormonat ? u"M" : u"T"); };
    fordere(lesen(p, leser, pfad), "a log failure stops nobody");
    const auto nachher = p.fs.inhalt(pfad);
    const auto vorher_Sätze = Sätze(eingabe.datei), nachher_Sätze = Sätze(nachher.value_or(""));
    fordere((vorher_Sätze.size() - nachher_Sätze.size()) % 2 == 0, "records go in pairs");
    fordere(ist_Teilfolge(nachher_Sätze, vorher_Sätze), "the others stay in their order");
    fordere(nachher || nachher_Sätze.size() < vorher_Sätze.size(), "a log without pairs is not removed");
}

} // namespace kalvora::fuzz
