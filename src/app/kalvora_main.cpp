// The desktop program.
#include <QApplication>
#include <cstdio>
#include <string_view>

#include "frame/programm.h"
#include "platform/posix/posix_clock.h"
#include "platform/posix/posix_environment.h"
#include "platform/posix/posix_filesystem.h"
#include "platform/waiting_filesystem.h"
#include "ui/qt/fenstersystem.h"

int main(int argc, char** argv) {
    using namespace kalvora;
    std::vector<Text> argumente;
    for (int i = 1; i < argc; ++i) {
        if (std::string_view(argv[i]) == "--version") {
            std::puts(("Kalvora " + zu_utf8(PROGRAMMVERSION)).c_str());
            return 0;
        }
        argumente.push_back(aus_utf8(argv[i]));
    }
    QApplication anwendung(argc, argv);
    PosixFileSystem platte;
    WaitingFileSystem fs(platte);
    fs.prompt = [&platte](const Text& ordner) { return platte.on_local_disk(ordner); };
    PosixClock uhr;
    PosixEnvironment umgebung;
    QtFenstersystem fenster;
    Programm programm({fs, uhr, umgebung}, fenster, argumente);
    fs.while_waiting = [&programm](double seconds) { programm.app().Warten_zeigen(seconds); };
    fs.wait_over = [&programm] { programm.app().Warten_vorbei(); };
    return programm.ausführen();
}
