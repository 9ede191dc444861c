// What is known of the common locales without any being installed.
#pragma once

#include <array>
#include <optional>
#include <string_view>

#include "base/datum.h"

namespace kalvora {

using Monatsnamen = std::array<Text, 12>;

struct Länderkennung {
    int nummer;  // as in telephone numbers
    Text kürzel; // three letters
};

Länderkennung Länderkennung_von(std::string_view gebiet); // unknown: Germany
std::string_view Hauptgebiet(std::string_view sprache);   // "DE" for "de"; empty when unknown
std::optional<Monatsnamen> Monatsnamen_von(std::string_view sprache);
Datumsformat Datumsformat_von(std::string_view sprache, std::string_view gebiet);
char16_t Dezimaltrennzeichen_von(std::string_view sprache, std::string_view gebiet);

} // namespace kalvora
