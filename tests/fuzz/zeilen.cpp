// The line layer: lines of any bytes are cut and decoded within their bounds, and every plain line comes back
// from its stored form.
#include "fuzz/fuzzplatz.h"

namespace kalvora::fuzz {

namespace {

bool hat_Steuerzeichen(std::string_view s) {
    for (const char c : s)
        if (static_cast<std::uint8_t>(c) < 32) return true;
    return false;
}

void Zeilen_zerlegen(std::string bytes) {
    Rohzeilen zeilen(bytes.data(), bytes.size());
    std::size_t bisher = 0;
    while (const auto zeile = zeilen.nächste()) {
        const auto ab = static_cast<std::size_t>(zeile->anfang - bytes.data());
        fordere(ab >= bisher && ab + zeile->länge <= bytes.size(), "a line outside the file");
        bisher = ab + zeile->länge;
        if (zeile->länge == 0) continue;
        const std::string roh(zeile->anfang, zeile->länge);
        const std::string klar(Zeile_entschlüsseln(zeile->anfang, zeile->länge));
        fordere(klar.size() == roh.size() - 1, "the key byte alone goes");
        if (hat_Steuerzeichen(roh)) continue;
        std::string zurück;
        Zeile_verschlüsseln(zurück, klar, static_cast<std::uint8_t>(roh[0]));
        fordere(zurück == roh + "\r\n", "a stored line that does not come back");
    }
}

void schreiben_und_lesen(std::string_view bytes) {
    std::string klar;
    for (const char c : bytes)
        if (static_cast<std::uint8_t>(c) >= 32) klar += c;
    std::string datei;
    for (int schlüssel = 32; schlüssel <= 254; schlüssel += 37)
        Zeile_verschlüsseln(datei, bytes, static_cast<std::uint8_t>(schlüssel));
    const auto zeilen = als_Zeilen(datei, u"");
    fordere(zeilen.size() == 7, "seven lines written");
    for (const Text& zeile : zeilen)
        fordere(zu_cp1252(zeile) == klar, "a plain line that does not come back");
    fordere(zu_cp1252(aus_cp1252(klar)) == klar, "a byte that is not its own way back");
}

} // namespace

void prüfe(const Eingabe& eingabe) {
    Zeilen_zerlegen(std::string(eingabe.alles));
    schreiben_und_lesen(eingabe.alles);
}

} // namespace kalvora::fuzz
