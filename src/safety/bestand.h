// What stood in the data folder when a backup of it was made. By it a replacement of the folder knows what it
// may touch: a file that is another one by now holds something that is kept nowhere else.
#pragma once

#include <map>
#include <vector>

#include "files/arbeitsplatz.h"
#include "files/whole_file.h"

namespace kalvora {

struct Gesehen {
    FileInfo info;
    std::string kopf; // first bytes: a rewrite has other keys
    Dateiwerk::Vorgefunden als_Vorgefunden() const { return {info.size, kopf}; }
};
bool dieselbe(const Gesehen& a, const Gesehen& b);
Ergebnis<Gesehen> ansehen(FileSystem& fs, const Text& pfad); // opens the file: see Dateiinhalt::info
Gesehen gesehen(const Dateiinhalt& inhalt);

using Bestand = std::map<Text, Gesehen>; // by path

// Paths of everything that a backup takes.
std::vector<Text> Sicherungsgut(FileSystem& fs, const Arbeitsplatz& platz);

} // namespace kalvora
