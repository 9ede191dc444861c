// The measurements of the core, one function a theme. Each registers its benchmarks; what it is handed lives
// until all have run.
#pragma once

#include "messung/firmenlager.h"
#include "messung/messung.h"

namespace kalvora::bench {

struct Umfeld {
    Tafel tafel;
    Firmenlager lager;
    Arbeitsstationen stationen{lager};
};

void Zeilendatei_messen(Umfeld& umfeld);
void Alle_Monate_messen(Umfeld& umfeld);
void Monat_aufbauen_messen(Umfeld& umfeld);
void Speichern_messen(Umfeld& umfeld);
void Sicherung_messen(Umfeld& umfeld);

} // namespace kalvora::bench
