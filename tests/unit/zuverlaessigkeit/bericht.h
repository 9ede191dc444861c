// Rows for docs/zuverlaessigkeit.md. With KALVORA_ZUVERLAESSIGKEIT naming a file the tests of this folder
// run in full and append their rows to it; without it they try a thinner set and print nothing.
#pragma once

#include <cstdlib>
#include <fstream>
#include <string>
#include <vector>

namespace kalvora {

inline const char* Berichtsdatei() {
    return std::getenv("KALVORA_ZUVERLAESSIGKEIT");
}
inline bool voller_Lauf() {
    return Berichtsdatei() != nullptr;
}
inline void berichten(const std::vector<std::string>& zellen) {
    if (!voller_Lauf()) return;
    std::ofstream datei(Berichtsdatei(), std::ios::app);
    for (const std::string& zelle : zellen)
        datei << "| " << zelle << " ";
    datei << "|\n";
}

} // namespace kalvora
