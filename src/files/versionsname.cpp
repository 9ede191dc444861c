#include "files/versionsname.h"

#include <algorithm>
#include <map>
#include <set>

#include "base/datum.h"
#include "files/ordner.h"

namespace kalvora {

std::vector<int> passende_Startjahre(const std::vector<Text>& namen) {
    constexpr int JAHRE = 3;
    std::set<Text> monate; // "yymm"
    for (const Text& name : namen)
        if (ist_Versionsname(name)) monate.insert(name.substr(0, 4));
    std::map<int, int> anzahl; // of the months by first year
    for (const Text& yymm : monate)
        for (int n = 0; n < JAHRE; ++n)
            ++anzahl[volles_Jahr(static_cast<int>(Val(links(yymm, 2)))) - n];
    int höchste = 0;
    for (const auto& [jahr, zahl] : anzahl)
        höchste = std::max(höchste, zahl);
    std::vector<int> aus;
    for (const auto& [jahr, zahl] : anzahl)
        if (zahl == höchste) aus.push_back(jahr);
    return aus;
}

std::vector<int> passende_Startjahre(FileSystem& fs, const Text& Datenpfad) {
    return passende_Startjahre(Dateien(fs, Datenpfad, u"*Data.dat", true));
}

bool Startjahr_passt(FileSystem& fs, const Text& Datenpfad, std::optional<int> Startjahr) {
    const auto jahre = passende_Startjahre(fs, Datenpfad);
    return jahre.empty() || (Startjahr && std::binary_search(jahre.begin(), jahre.end(), *Startjahr));
}

} // namespace kalvora
