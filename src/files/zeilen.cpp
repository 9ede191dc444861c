#include "files/zeilen.h"

#include <algorithm>
#include <array>
#include <cstring>

namespace kalvora {

namespace {

constexpr std::size_t RUNDE = 64;

// Shifts of 64 successive characters for each key modulo 64, twice over so that a run needs no wrap.
constexpr std::array<std::uint8_t, 3 * RUNDE> VERSCHIEBUNG = [] {
    std::array<std::uint8_t, 3 * RUNDE> tabelle{};
    for (std::size_t k = 0; k < tabelle.size(); ++k)
        tabelle[k] = static_cast<std::uint8_t>(k % RUNDE);
    return tabelle;
}();

const std::uint8_t* ab_Schlüssel(std::uint8_t schlüssel) {
    return VERSCHIEBUNG.data() + schlüssel % RUNDE + 1;
}

void zurück(std::uint8_t* z, const std::uint8_t* s, std::size_t n) {
    for (std::size_t i = 0; i < n; ++i) {
        const auto c = z[i];
        z[i] = static_cast<std::uint8_t>(c - s[i] + (c < s[i] + 32 ? 224 : 0));
    }
}

void vor(std::uint8_t* z, const std::uint8_t* s, std::size_t n) {
    for (std::size_t i = 0; i < n; ++i) {
        const unsigned summe = static_cast<unsigned>(z[i]) + s[i];
        z[i] = static_cast<std::uint8_t>(summe - (summe > 255 ? 224u : 0u));
    }
}

} // namespace

std::string_view Zeile_entschlüsseln(char* roh, std::size_t länge) {
    auto* z = reinterpret_cast<std::uint8_t*>(roh);
    const std::uint8_t* s = ab_Schlüssel(z[0]);
    ++z;
    const std::size_t n = länge - 1;
    std::size_t i = 0;
    for (; i + RUNDE <= n; i += RUNDE)
        zurück(z + i, s, RUNDE);
    zurück(z + i, s, n - i);
    return {roh + 1, n};
}

void Zeile_verschlüsseln(std::string& aus, std::string_view klar, std::uint8_t schlüssel) {
    const std::size_t anfang = aus.size() + 1;
    aus += static_cast<char>(schlüssel);
    const bool sauber =
        std::none_of(klar.begin(), klar.end(), [](char c) { return static_cast<std::uint8_t>(c) < 32; });
    if (sauber)
        aus += klar;
    else
        std::copy_if(klar.begin(), klar.end(), std::back_inserter(aus),
                     [](char c) { return static_cast<std::uint8_t>(c) >= 32; });
    auto* z = reinterpret_cast<std::uint8_t*>(aus.data()) + anfang;
    const std::uint8_t* s = ab_Schlüssel(schlüssel);
    const std::size_t n = aus.size() - anfang;
    std::size_t i = 0;
    for (; i + RUNDE <= n; i += RUNDE)
        vor(z + i, s, RUNDE);
    vor(z + i, s, n - i);
    aus += "\r\n";
}

std::optional<Rohzeilen::Zeile> Rohzeilen::nächste() {
    while (hier_ < ende_) {
        const bool loch = *hier_ == '\0';
        while (hier_ < ende_ && *hier_ == '\0')
            ++hier_;
        if (hier_ >= ende_) break;
        char* const anfang = hier_;
        auto* umbruch =
            static_cast<char*>(std::memchr(anfang, '\n', static_cast<std::size_t>(ende_ - anfang)));
        char* schluss = umbruch ? umbruch : ende_;
        hier_ = umbruch ? umbruch + 1 : ende_;
        if (schluss > anfang && schluss[-1] == '\r') --schluss;
        if (loch && schluss == anfang) continue; // a hole at the end, closed by the next append
        return Zeile{anfang, static_cast<std::size_t>(schluss - anfang), umbruch != nullptr};
    }
    return std::nullopt;
}

} // namespace kalvora
