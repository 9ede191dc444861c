// The months as the data folder's names tell them: "yymm yymmdd Data.dat", of which the greatest is in force.
#pragma once

#include <map>
#include <vector>

#include "files/arbeitsplatz.h"
#include "files/versionsname.h"

namespace kalvora {

// One file of a month.
struct Version {
    Text stamm; // "yymm yymmdd"; empty: the month has no file
    Text name;  // as it stands in the folder
};

class Monatsordner {
public:
    Monatsordner(FileSystem& fs, const Arbeitsplatz& platz) : fs_(fs), platz_(platz) {}

    using Verzeichnis = std::map<Text, std::vector<Version>>; // by yymm, sorted by stem
    // A folder that cannot be listed throws.
    Verzeichnis verzeichnis(TextView yymm = u"????") const;
    Version in_Kraft(TextView yymm) const;
    Text pfad(const Text& name) const { return platz_.Datenpfad + name; }
    Text heutiger_Stamm(TextView yymm) const { return Text(yymm) + u" " + platz_.Heute_S; }
    Text heutige_Datei(TextView yymm) const { return heutiger_Stamm(yymm) + u" Data.dat"; }
    Text yymm(int monat) const; // of month 1 to 36 of the three years
    struct Jahresbestand {
        Text fehlend; // "mm.yyyy, mm.yyyy"
        bool Startjahr_passt = true;
        Verzeichnis vorhanden;
    };
    Jahresbestand Bestand() const;
    // Deletes the smaller stems among them; what cannot be deleted stays.
    void Alte_Erfassungsdateien_löschen(const std::vector<Version>& versionen, TextView stamm) const;

private:
    FileSystem& fs_;
    const Arbeitsplatz& platz_;
};

} // namespace kalvora
