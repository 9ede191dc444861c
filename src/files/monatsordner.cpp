#include "files/monatsordner.h"

#include <algorithm>

#include "files/monatsdaten.h"
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

Text Monatsordner::yymm(int monat) const {
    return ziffern((platz_.Startjahr + (monat - 1) / 12) % 100, 2) + ziffern((monat - 1) % 12 + 1, 2);
}

// Months of years to come may be missing. With one wrong digit in the first year the whole plan would be
// another one.
Monatsordner::Jahresbestand Monatsordner::Bestand() const {
    Jahresbestand b;
    const auto alle = verzeichnis();
    std::vector<Text> namen;
    for (const auto& [yymm, versionen] : alle)
        namen.push_back(versionen.back().name);
    const auto jahre = passende_Startjahre(namen);
    b.Startjahr_passt = jahre.empty() || std::binary_search(jahre.begin(), jahre.end(), platz_.Startjahr);
    for (int monat = 1; monat <= MONATE; ++monat) {
        const Text dieser = yymm(monat);
        const auto treffer = alle.find(dieser);
        const int jahr = platz_.Startjahr + (monat - 1) / 12;
        if (treffer != alle.end())
            b.vorhanden.insert(*treffer);
        else if (jahr <= Jahr(platz_.Heute))
            b.fehlend += (b.fehlend.empty() ? u"" : u", ") + dieser.substr(2) + platz_.datum().trennzeichen +
                         ziffern(jahr, 4);
    }
    return b;
}

void Monatsordner::Alte_Erfassungsdateien_löschen(const std::vector<Version>& versionen,
                                                  TextView stamm) const {
    for (const Version& v : versionen)
        if (TextView(v.stamm) < stamm) Datei_löschen(fs_, pfad(v.name));
}

} // namespace kalvora
