// The scrambled line. A stored line is a key byte (32 to 254) and the characters of the plain line, each
// moved by a counter that starts at the key modulo 64 and wraps at 64; characters below 32 are left out.
// Lines end in CR LF. The counter depends on the key and the position alone, so that 64 bytes at a time go by
// one table.
#pragma once

#include <cstdint>
#include <cstring>
#include <optional>
#include <random>
#include <string>
#include <string_view>

namespace kalvora {

// Decodes a raw line (key byte included, not empty) in place; the plain line is the view returned.
std::string_view Zeile_entschlüsseln(char* roh, std::size_t länge);
// Adds the stored form of a plain line and its line end.
void Zeile_verschlüsseln(std::string& aus, std::string_view klar, std::uint8_t schlüssel);

// Random key bytes of the lines that one process writes.
class Schlüsselquelle {
public:
    explicit Schlüsselquelle(std::uint32_t saat) : zufall_(saat) {}
    std::uint8_t nächster() { return static_cast<std::uint8_t>(32 + zufall_() % 223); }

private:
    std::minstd_rand zufall_;
};

// The raw lines of a file, one after the other. NULs before a line (the hole that a lost write leaves on a
// share) are passed over, and the record behind them is taken.
class Rohzeilen {
public:
    Rohzeilen(char* bytes, std::size_t größe) : hier_(bytes), ende_(bytes + größe) {}
    struct Zeile {
        char* anfang = nullptr;
        std::size_t länge = 0;
        bool mit_Ende = true; // false: the file's last line, whose end has not arrived
    };
    std::optional<Zeile> nächste();

private:
    char* hier_;
    char* ende_;
};

// Inline: called once a line.
inline std::optional<Rohzeilen::Zeile> Rohzeilen::nächste() {
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
