#include "files/versionsname.h"

#include <algorithm>

#include "base/datum.h"
#include "files/ordner.h"

namespace kalvora {

std::optional<int> Erstes_Jahr(FileSystem& fs, const Text& Datenpfad) {
    std::optional<int> erstes;
    for (const Text& name : Dateien(fs, Datenpfad, u"*Data.dat", true)) {
        if (!ist_Versionsname(name)) continue;
        const int jahr = volles_Jahr(static_cast<int>(Val(links(name, 2))));
        erstes = std::min(erstes.value_or(jahr), jahr);
    }
    return erstes;
}

} // namespace kalvora
