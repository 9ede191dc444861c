#include "files/zeilen.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace kalvora {

namespace {

constexpr std::size_t RUNDE = 64;
constexpr std::size_t BLOCK = 16; // characters that go at once; the compiler makes one register of them

// Shifts of 64 successive characters for each key modulo 64, twice over so that a run needs no wrap.
constexpr std::array<std::uint8_t, 3 * RUNDE> VERSCHIEBUNG = [] {
    std::array<std::uint8_t, 3 * RUNDE> tabelle{};
    for (std::size_t k = 0; k < tabelle.size(); ++k)
        tabelle[k] = static_cast<std::uint8_t>(k % RUNDE);
    return tabelle;
}();

// Shifts from character i of a line on, at least RUNDE + BLOCK of them.
const std::uint8_t* Verschiebungen(std::uint8_t schlüssel, std::size_t i) {
    return VERSCHIEBUNG.data() + (schlüssel % RUNDE + 1 + i) % RUNDE;
}

std::uint8_t zurück(std::uint8_t c, std::uint8_t s) {
    const auto grenze = static_cast<std::uint8_t>(s + 32); // at most 95
    return static_cast<std::uint8_t>(c - s + (c < grenze ? 224 : 0));
}

std::uint8_t vor(std::uint8_t c, std::uint8_t s) {
    const auto grenze = static_cast<std::uint8_t>(255 - s); // the last character that needs no wrap
    return static_cast<std::uint8_t>(c + s - (c > grenze ? 224 : 0));
}

using Verschieben = std::uint8_t (*)(std::uint8_t c, std::uint8_t s);

template <Verschieben schieben, std::size_t N>
void Block(const std::uint8_t* von, const std::uint8_t* s, std::uint8_t* nach) {
    std::array<std::uint8_t, N> fertig; // NOLINT(cppcoreguidelines-pro-type-member-init)
    for (std::size_t i = 0; i < N; ++i)
        fertig[i] = schieben(von[i], s[i]);
    std::memcpy(nach, fertig.data(), N);
}

// All n characters of a line in place. The last block may overlap the one before it; it is worked out first,
// from characters that nobody has changed yet, and stored last.
template <Verschieben schieben>
void verschieben(std::uint8_t* z, std::size_t n, std::uint8_t schlüssel) {
    if (n < BLOCK) {
        const std::uint8_t* s = Verschiebungen(schlüssel, 0);
        for (std::size_t i = 0; i < n; ++i)
            z[i] = schieben(z[i], s[i]);
        return;
    }
    std::array<std::uint8_t, BLOCK> letzter; // NOLINT(cppcoreguidelines-pro-type-member-init)
    Block<schieben, BLOCK>(z + n - BLOCK, Verschiebungen(schlüssel, n - BLOCK), letzter.data());
    std::size_t i = 0;
    for (const std::uint8_t* s = Verschiebungen(schlüssel, 0); i + RUNDE < n; i += RUNDE)
        Block<schieben, RUNDE>(z + i, s, z + i);
    for (const std::uint8_t* s = Verschiebungen(schlüssel, i); i + BLOCK < n; i += BLOCK, s += BLOCK)
        Block<schieben, BLOCK>(z + i, s, z + i);
    std::memcpy(z + n - BLOCK, letzter.data(), BLOCK);
}

bool mit_Steuerzeichen(std::string_view text) {
    bool gefunden = false;
    for (const char c : text)
        gefunden |= static_cast<std::uint8_t>(c) < 32;
    return gefunden;
}

} // namespace

std::string_view Zeile_entschlüsseln(char* roh, std::size_t länge) {
    auto* z = reinterpret_cast<std::uint8_t*>(roh);
    verschieben<zurück>(z + 1, länge - 1, z[0]);
    return {roh + 1, länge - 1};
}

void Zeile_verschlüsseln(std::string& aus, std::string_view klar, std::uint8_t schlüssel) {
    const std::size_t anfang = aus.size() + 1;
    aus += static_cast<char>(schlüssel);
    if (mit_Steuerzeichen(klar))
        std::copy_if(klar.begin(), klar.end(), std::back_inserter(aus),
                     [](char c) { return static_cast<std::uint8_t>(c) >= 32; });
    else
        aus += klar;
    verschieben<vor>(reinterpret_cast<std::uint8_t*>(aus.data()) + anfang, aus.size() - anfang, schlüssel);
    aus += "\r\n";
}

} // namespace kalvora
