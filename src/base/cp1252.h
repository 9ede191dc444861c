// Windows-1252, the code page of every data file. The five bytes that it leaves undefined (81 8D 8F 90 9D)
// stand for the controls of the same code, so that every byte survives a round trip.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "base/text.h"

namespace kalvora {

// Code points of the bytes 0x80 to 0x9F; all other bytes are their own code point.
inline constexpr std::array<char16_t, 32> CP1252_BLOCK{
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

constexpr char16_t cp1252_zeichen(std::uint8_t byte) {
    return byte >= 0x80 && byte < 0xA0 ? CP1252_BLOCK[byte - 0x80u] : static_cast<char16_t>(byte);
}

constexpr std::optional<std::uint8_t> cp1252_byte(char16_t c) {
    if (c < 0x80 || (c >= 0xA0 && c <= 0xFF)) return static_cast<std::uint8_t>(c);
    for (std::size_t k = 0; k < CP1252_BLOCK.size(); ++k)
        if (CP1252_BLOCK[k] == c) return static_cast<std::uint8_t>(0x80 + k);
    return std::nullopt;
}

Text aus_cp1252(std::string_view bytes);
// A character that the code page cannot hold becomes "?"; input fields refuse it before (cp1252_darstellbar).
std::string zu_cp1252(TextView text);
bool cp1252_darstellbar(TextView text);

// Case folding on bytes, the same as `klein` on characters.
std::uint8_t cp1252_klein(std::uint8_t byte);
// Is every byte 1 to 255 its own way back? The start condition of the program.
bool cp1252_umkehrbar();

} // namespace kalvora
