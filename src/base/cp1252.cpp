#include "base/cp1252.h"

#include <algorithm>

namespace kalvora {

namespace {

constexpr bool umkehrbar() {
    for (unsigned b = 0; b < 256; ++b) {
        const auto zurück = cp1252_byte(cp1252_zeichen(static_cast<std::uint8_t>(b)));
        if (!zurück || *zurück != b) return false;
    }
    return true;
}
static_assert(umkehrbar(), "every byte must survive the way through the program");

std::array<std::uint8_t, 256> faltung() {
    std::array<std::uint8_t, 256> tabelle{};
    for (unsigned b = 0; b < 256; ++b) {
        const auto gefaltet = cp1252_byte(klein(cp1252_zeichen(static_cast<std::uint8_t>(b))));
        tabelle[b] = gefaltet.value_or(static_cast<std::uint8_t>(b));
    }
    return tabelle;
}

} // namespace

Text aus_cp1252(std::string_view bytes) {
    Text aus(bytes.size(), u'\0');
    std::transform(bytes.begin(), bytes.end(), aus.begin(),
                   [](char c) { return cp1252_zeichen(static_cast<std::uint8_t>(c)); });
    return aus;
}

std::string zu_cp1252(TextView text) {
    std::string aus(text.size(), '?');
    std::transform(text.begin(), text.end(), aus.begin(), [](char16_t c) {
        return c < 0x80 ? static_cast<char>(c) : static_cast<char>(cp1252_byte(c).value_or('?'));
    });
    return aus;
}

bool cp1252_darstellbar(TextView text) {
    return std::all_of(text.begin(), text.end(), [](char16_t c) { return cp1252_byte(c).has_value(); });
}

std::uint8_t cp1252_klein(std::uint8_t byte) {
    static const std::array<std::uint8_t, 256> TABELLE = faltung();
    return TABELLE[byte];
}

bool cp1252_umkehrbar() {
    return umkehrbar();
}

} // namespace kalvora
