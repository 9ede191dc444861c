// The desktop program as its main() starts it. Says when the first month was painted, and ends.
#include "erstes_bild.h"
#include "frame/programm.h"
#include "platform/posix/posix_clock.h"
#include "platform/posix/posix_environment.h"
#include "platform/posix/posix_filesystem.h"
#include "ui/qt/fenstersystem.h"

int main(int argc, char** argv) {
    using namespace kalvora;
    std::vector<Text> argumente;
    for (int i = 1; i < argc; ++i)
        argumente.push_back(aus_utf8(argv[i]));
    QApplication anwendung(argc, argv);
    PosixFileSystem fs;
    PosixClock uhr;
    PosixEnvironment umgebung;
    QtFenstersystem fenster;
    Programm programm({fs, uhr, umgebung}, fenster, argumente);
    const ErstesBild bild(
        [&](const QWidget& w) {
            return !programm.platz().Startphase && w.parent() && w.parent()->objectName() == u"msgFlexGrid";
        },
        [&] {
            programm.hauptfenster().form().user_close();
            fenster.quit();
        });
    return programm.ausführen();
}
