#include "files/monatsordner.h"

#include <algorithm>

#include "files/ordner.h"

namespace kalvora {

Monatsordner::Verzeichnis Monatsordner::verzeichnis(TextView yymm) const {
    Verzeichnis aus;
    for (const Text& name : Dateien(fs_, platz_.Datenpfad, Text(yymm) + u"*Data.dat"))
        if (ist_Versionsname(name)) aus[name.substr(0, 4)].push_back({name.substr(0, STAMMLÄNGE), name});
    for (auto& [monat, versionen] : aus)
        std::sort(versionen.begin(), versionen.end(),
                  [](const Version& a, const Version& b) { return a.stamm < b.stamm; });
    return aus;
}

// A mount may remember the folder's names for half a minute, while a colleague has begun today's version and
// taken the older one away: today's is asked for by its name.
Version Monatsordner::in_Kraft(TextView yymm) const {
    const auto alle = verzeichnis(yymm);
    const Version gelistet = alle.empty() ? Version{} : alle.begin()->second.back();
    const Version heute{heutiger_Stamm(yymm), heutige_Datei(yymm)};
    const bool neuer = gelistet.stamm < heute.stamm && Datei_vorhanden(fs_, pfad(heute.name));
    return neuer ? heute : gelistet;
}

void Monatsordner::Alte_Erfassungsdateien_löschen(const std::vector<Version>& versionen,
                                                  TextView stamm) const {
    for (const Version& v : versionen)
        if (TextView(v.stamm) < stamm) Datei_löschen(fs_, pfad(v.name));
}

} // namespace kalvora
