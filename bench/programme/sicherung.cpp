// kalvora-bench-sicherung <data folder>: makes one backup in its folder Backups/, to see how much memory that
// takes at most.
#include "firma/stummes_fenstersystem.h"
#include "platform/posix/posix_clock.h"
#include "platform/posix/posix_filesystem.h"
#include "safety/backups.h"

int main(int argc, char** argv) {
    using namespace kalvora;
    if (argc != 2) return 1;
    PosixFileSystem fs;
    PosixClock uhr;
    firma::StummesFenstersystem fenster;
    Application app(fenster);
    const Dateiwerk werk(fs, uhr, u"messung-sicherung");
    Dateikanal kanal(werk, app, 1);
    Arbeitsplatz platz;
    platz.Heute_S = u"261116";
    platz.Datenpfad = aus_utf8(argv[1]);
    platz.Logpfad = platz.Datenpfad + u"Logs/";
    platz.Backuppfad = platz.Datenpfad + u"Backups/";
    Konfigdaten konfig(kanal, platz);
    Logbuch log(kanal, platz, konfig);
    return Backups(kanal, platz, konfig, log).Backup_erstellen(u"T") ? 0 : 2;
}
