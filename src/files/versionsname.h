// Names of the capture files' versions: exactly "yymm yymmdd Data.dat". Anything else that ends so, such as
// somebody's copy, is no month of the plan.
#pragma once

#include <optional>
#include <vector>

#include "platform/filesystem.h"

namespace kalvora {

inline constexpr int STAMMLÄNGE = 11; // "yymm yymmdd"

inline bool ist_Versionsname(TextView name) {
    return name.size() == 20 && nur_Ziffern(name.substr(0, 4)) && name[4] == u' ' &&
           nur_Ziffern(name.substr(5, 6)) && gleich_ohne_Fall(name.substr(STAMMLÄNGE), u" Data.dat");
}

// First years, in full and rising, whose three years hold the most of these months; none without any month.
// A stray month of another year, or a few that are missing, do not shift the plan.
std::vector<int> passende_Startjahre(const std::vector<Text>& namen);
// The same for the months in the folder.
std::vector<int> passende_Startjahre(FileSystem& fs, const Text& Datenpfad);
// Whether a staff list that begins with this year fits the months in the folder.
bool Startjahr_passt(FileSystem& fs, const Text& Datenpfad, std::optional<int> Startjahr);

} // namespace kalvora
