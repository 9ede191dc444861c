// Colours as the files hold them: "&HBBGGRR". In a number red is the lowest byte.
#pragma once

#include <cstdint>
#include <optional>

#include "base/text.h"

namespace kalvora {

using Farbe = std::uint32_t; // 0x00BBGGRR; a fourth byte is ignored

constexpr int rot(Farbe f) {
    return static_cast<int>(f & 0xFF);
}
constexpr int grün(Farbe f) {
    return static_cast<int>((f >> 8) & 0xFF);
}
constexpr int blau(Farbe f) {
    return static_cast<int>((f >> 16) & 0xFF);
}

Text HexFarbe(Farbe farbe);
// Exactly 8 characters "&H" and six hexadecimal digits; nothing otherwise.
std::optional<Farbe> Farbe_aus_Hex(TextView text);

} // namespace kalvora
