// What is said of a replacement of the data folder that does not come to its end.
#pragma once

#include "base/fehler.h"

namespace kalvora {

inline constexpr TextView ERSATZMODUL = u"modKalvora - Restore_aus_Backupdatei";

// The next start goes on with it.
Programmabbruch nicht_fertig(const Text& ursache, const Text& rat);
Programmabbruch nicht_fertig(const Laufzeitfehler& fehler);
Programmabbruch kein_Recht(int nummer, const Text& ordner);   // in Backups/
Programmabbruch kein_Zutritt(int nummer, const Text& ordner); // whether a copy stands there, nobody can tell
// It has been done, or called off, but the redo copy stays.
Programmabbruch von_Hand_löschen(const Text& kopie, bool getan);

} // namespace kalvora
