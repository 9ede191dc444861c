// Names of the capture files' versions: exactly "yymm yymmdd Data.dat". Anything else that ends so, such as
// somebody's copy, is no month of the plan.
#pragma once

#include <optional>

#include "platform/filesystem.h"

namespace kalvora {

inline constexpr int STAMMLÄNGE = 11; // "yymm yymmdd"

inline bool ist_Versionsname(TextView name) {
    return name.size() == 20 && nur_Ziffern(name.substr(0, 4)) && name[4] == u' ' &&
           nur_Ziffern(name.substr(5, 6)) && gleich_ohne_Fall(name.substr(STAMMLÄNGE), u" Data.dat");
}

// Year, in full, of the earliest month in the folder; nothing when there is no month.
std::optional<int> Erstes_Jahr(FileSystem& fs, const Text& Datenpfad);

} // namespace kalvora
