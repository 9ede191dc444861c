// Kalvora.dat in Systempfad: where the shared data are. Paths in the file keep the backslash form.
#pragma once

#include "files/arbeitsplatz.h"
#include "files/dateikanal.h"

namespace kalvora {

// Sets Datenpfad, Logpfad and Datenpfad_alt; without a file they stay empty.
void Kalvoradat_lesen(Dateikanal& kanal, Arbeitsplatz& platz, bool still = false);
void Kalvoradat_schreiben(Dateikanal& kanal, const Arbeitsplatz& platz);

} // namespace kalvora
