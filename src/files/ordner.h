// Paths and folders. Inside the program paths are native and absolute, folders end in "/"; the data files
// keep the backslash form ("\srv\x\Data\" for /srv/x/Data/). Names are compared without case, and names that
// begin with a point (siblings of a rewrite) match no mask.
#pragma once

#include <vector>

#include "platform/filesystem.h"

namespace kalvora {

Text ParentDir(TextView pfad);          // cut behind the last separator before the last character
Text Dateiname_aus_Pfad(TextView pfad); // behind the last separator; one trailing separator is dropped first
Text Pfad_kürzen(TextView pfad, int max); // for messages, in single quotes
Text als_Ordner(Text pfad);               // with a separator at its end; an empty path stays empty
// Between the stored backslash form and the native one. Both forms are read.
Text Pfad_nativ(TextView gespeichert);
Text Pfad_gespeichert(TextView nativ);

// Names in the folder that match the mask, sorted as text. A folder that cannot be listed is a fault, never
// "no file"; with `fehlend_ist_leer` a folder that does not exist has no files.
std::vector<Text> Dateien(FileSystem& fs, const Text& ordner, TextView maske, bool fehlend_ist_leer = false);
// A file matching the mask stands in the folder; false when the folder does not exist.
bool Datei_passend_vorhanden(FileSystem& fs, const Text& ordner, TextView maske);
// Path of a known file: as spelled when it stands there, else the same name in another case, else as spelled.
Text Datei_finden(FileSystem& fs, const Text& ordner, const Text& name);
// Two files, not two spellings of one: whether a folder tells them apart only its listing says.
bool beide_gelistet(FileSystem& fs, const Text& ordner, const Text& name, const Text& anderer);
// The canonical spelling has been written: the same name in another case would be a second file.
void Schreibweise_entfernen(FileSystem& fs, const Text& alte, const Text& gültige);
Laufzeitfehler Zugriffsfehler(int nummer, const Text& pfad); // of a file's fault, for the message

// One level below a folder that stands: a mistyped path or a share that is not there must not become a new
// tree. Programmabbruch on failure.
void Ordner_anlegen(FileSystem& fs, const Text& pfad, int länge = 100);
void Ordnerkette_anlegen(FileSystem& fs, const Text& pfad); // with its parents: for this workstation's own
void Ordner_wechseln(FileSystem& fs, const Text& pfad, int länge = 100); // Programmabbruch on failure
// Errors are ignored: what cannot be deleted stays. A folder must be empty; the current folder leaves it
// first.
void Datei_löschen(FileSystem& fs, const Text& pfad, const Text& temppfad = {});
// True when no file of the mask is left; a folder that is not there has none.
bool Dateien_löschen(FileSystem& fs, const Text& ordner, TextView maske);

} // namespace kalvora
