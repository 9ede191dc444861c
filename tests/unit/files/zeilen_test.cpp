#include "files/zeilen.h"

#include <gtest/gtest.h>

#include <set>
#include <tuple>

namespace kalvora {
namespace {

std::string gespeichert(std::string_view klar, int schlüssel) {
    std::string aus;
    Zeile_verschlüsseln(aus, klar, static_cast<std::uint8_t>(schlüssel));
    return aus;
}

std::string gelesen(std::string roh) {
    roh.erase(roh.find("\r\n"));
    return std::string(Zeile_entschlüsseln(roh.data(), roh.size()));
}

TEST(Zeilen, DieGespeicherteForm) {
    // Worked out by hand: the shift of the first character is the key modulo 64, plus one.
    const std::tuple<int, std::string, std::string> fälle[] = {
        {'A', "ab", "Ace\r\n"},          {'A', "", "A\r\n"},
        {127, "aa", "\x7F\x61\x62\r\n"}, // 63 wraps to 0: the first character stands as it is
        {32, "\xDF", "\x20\x20\r\n"},    // 223 + 33 is 256, stored as 32
        {32, "\xFF", "\x20\x40\r\n"},    // 31 behind the subtraction is 255
        {'A', "a\tb\x1F", "Ace\r\n"},    // what is below 32 is left out and does not move the shift
        {254, "a", "\xFE\xA0\r\n"},      // 254 is 62 modulo 64
    };
    for (const auto& [schlüssel, klar, roh] : fälle)
        EXPECT_EQ(gespeichert(klar, schlüssel), roh) << schlüssel << " " << klar;
}

TEST(Zeilen, JederTextKommtMitJedemSchlüsselZurück) {
    std::string text;
    for (int c = 32; c <= 255; ++c)
        text += static_cast<char>(c);
    for (int schlüssel = 32; schlüssel <= 254; ++schlüssel) {
        const std::string roh = gespeichert(text, schlüssel);
        EXPECT_EQ(gelesen(roh), text) << schlüssel;
        for (size_t i = 0; i + 2 < roh.size(); ++i)
            ASSERT_GE(static_cast<unsigned char>(roh[i]), 32) << "a control character is stored";
    }
    Schlüsselquelle quelle(7);
    std::set<int> alle;
    for (int n = 0; n < 20000; ++n)
        alle.insert(quelle.nächster());
    EXPECT_EQ(std::pair(*alle.begin(), *alle.rbegin()), std::pair(32, 254));
}

using Stücke = std::vector<std::pair<std::string, bool>>;

Stücke zerlegt(std::string bytes) {
    Stücke stücke;
    Rohzeilen roh(bytes.data(), bytes.size());
    while (const auto zeile = roh.nächste())
        stücke.emplace_back(std::string(zeile->anfang, zeile->länge), zeile->mit_Ende);
    return stücke;
}

TEST(Zeilen, RohzeilenEinerDatei) {
    const std::string nul(5, '\0');
    const std::pair<std::string, Stücke> fälle[] = {
        {"", {}},
        {"a\r\nb\r\n", {{"a", true}, {"b", true}}},
        {"a\nb", {{"a", true}, {"b", false}}},
        {"a\r\n\r\nb\r\n", {{"a", true}, {"", true}, {"b", true}}},
        {"a\r", {{"a", false}}},
        {"a\r\n" + nul + "b\r\n", {{"a", true}, {"b", true}}},     // the record behind a hole
        {"a\r\n" + nul + "\r\nb\r\n", {{"a", true}, {"b", true}}}, // a hole that an append closed
        {"a\r\n" + nul, {{"a", true}}},
        {"a" + nul + "b\r\n", {{"a" + nul + "b", true}}},
    };
    for (const auto& [bytes, erwartet] : fälle)
        EXPECT_EQ(zerlegt(bytes), erwartet) << bytes;
}

} // namespace
} // namespace kalvora
