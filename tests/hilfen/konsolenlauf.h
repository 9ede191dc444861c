// A run of the whole program that a console script drives.
#pragma once

#include <sstream>

#include "frame/programm.h"
#include "hilfen/test_uhr.h"
#include "hilfen/test_umgebung.h"
#include "ui/konsole/konsolen_fenstersystem.h"

namespace kalvora {

// The program's status; the script's clock begins at `beginn`.
inline int Konsolenlauf(FileSystem& fs, TestUmgebung& umgebung, Zeitpunkt beginn,
                        const std::vector<Text>& aufruf, const std::string& skript, Protokoll& protokoll) {
    std::istringstream strom(skript);
    Stromquelle quelle(strom, true);
    TestUhr echte;
    Skriptuhr uhr(echte, beginn);
    KonsolenFenstersystem system(protokoll, quelle, uhr);
    const int status = Programm({fs, uhr, umgebung}, system, aufruf).ausführen();
    system.abschließen();
    return status;
}

} // namespace kalvora
