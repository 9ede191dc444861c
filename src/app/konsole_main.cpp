// kalvora-konsole: the program in a terminal or driven by a script. Own options come off the command line,
// all else goes to the program.
#include <poll.h>
#include <sys/ioctl.h>
#include <unistd.h>

#include <fstream>
#include <iostream>

#include "frame/programm.h"
#include "platform/posix/posix_clock.h"
#include "platform/posix/posix_environment.h"
#include "platform/posix/posix_filesystem.h"
#include "ui/konsole/konsolen_fenstersystem.h"
#include "ui/konsole/monatsbild.h"

namespace {

using namespace kalvora;

enum Status { ORDENTLICH = 0, SKRIPT_FEHLERHAFT = 1, SELBST_BEENDET = 2 };

struct Optionen {
    bool version = false;
    bool echtzeit = false;
    std::optional<std::string> skript; // path
    std::vector<Text> übrige;          // call parameters of the program
    bool gültig = true;
};

Optionen Optionen_aus(int argc, char** argv) {
    Optionen optionen;
    for (int i = 1; i < argc; ++i) {
        const std::string_view argument = argv[i];
        if (argument == "--version")
            optionen.version = true;
        else if (argument == "--echtzeit")
            optionen.echtzeit = true;
        else if (argument != "--skript")
            optionen.übrige.push_back(aus_utf8(argument));
        else if (++i < argc)
            optionen.skript = argv[i];
        else
            optionen.gültig = false;
    }
    return optionen;
}

Terminalgröße Größe_des_Terminals() {
    winsize größe{};
    if (ioctl(STDOUT_FILENO, TIOCGWINSZ, &größe) != 0 || größe.ws_col == 0 || größe.ws_row == 0) return {};
    return {größe.ws_col, größe.ws_row};
}

bool Eingabe_bereit() {
    pollfd eingabe{STDIN_FILENO, POLLIN, 0};
    return poll(&eingabe, 1, 0) > 0;
}

// Somebody types: before each line the month as it stands, and a prompt.
class Terminalquelle : public Zeilenquelle {
public:
    std::function<void()> zeichnen;
    std::optional<std::string> nächste() override {
        if (zeichnen) zeichnen();
        std::cout << "kalvora> " << std::flush;
        std::string zeile;
        if (std::getline(std::cin, zeile)) return zeile;
        std::cout << '\n';
        return std::nullopt;
    }
    bool bereit() override { return Eingabe_bereit(); }
};

// Standard input that is no terminal. In real time a program that waits goes on while nothing comes; where
// time is simulated, what comes later is waited for, so that two runs are alike.
class Eingabequelle : public Stromquelle {
public:
    explicit Eingabequelle(bool echtzeit) : Stromquelle(std::cin, false), echtzeit_(echtzeit) {}
    bool bereit() override { return !echtzeit_ || std::cin.rdbuf()->in_avail() > 0 || Eingabe_bereit(); }

private:
    bool echtzeit_;
};

void Monat_zeichnen(const KonsolenFenstersystem& system) {
    const Form* form = system.aktives_Fenster();
    const auto* plan = form ? dynamic_cast<const Table*>(form->find(u"msgFlexGrid")) : nullptr;
    if (plan && plan->visible()) std::cout << Monatsbild(*plan, Größe_des_Terminals());
}

int laufen(const Optionen& optionen, Zeilenquelle& quelle, Terminalquelle* terminal = nullptr) {
    PosixFileSystem fs;
    PosixClock uhr;
    PosixEnvironment umgebung;
    Skriptuhr skriptuhr(uhr, optionen.echtzeit || terminal ? Zeitlauf::Echtzeit : Zeitlauf::Simuliert);
    Protokoll protokoll([](std::string_view zeile) { std::cout << zeile; });
    KonsolenFenstersystem system(protokoll, quelle, skriptuhr);
    system.nach_Kommando = [] { std::cout.flush(); };
    if (terminal) terminal->zeichnen = [&system] { Monat_zeichnen(system); };
    const int status = Programm({fs, skriptuhr, umgebung}, system, optionen.übrige).ausführen();
    system.abschließen();
    std::cout.flush();
    if (status != 0) return SELBST_BEENDET;
    return protokoll.Fehlerzahl() > 0 ? SKRIPT_FEHLERHAFT : ORDENTLICH;
}

int skript_laufen(const Optionen& optionen) {
    std::ifstream datei(*optionen.skript, std::ios::binary);
    if (!datei) {
        std::cerr << "kalvora-konsole: " << *optionen.skript << " lässt sich nicht lesen\n";
        return SELBST_BEENDET;
    }
    Stromquelle quelle(datei, true);
    return laufen(optionen, quelle);
}

} // namespace

int main(int argc, char** argv) {
    const Optionen optionen = Optionen_aus(argc, argv);
    if (optionen.version) {
        std::cout << "Kalvora " << zu_utf8(PROGRAMMVERSION) << '\n';
        return ORDENTLICH;
    }
    if (!optionen.gültig) {
        std::cerr
            << "Gebrauch: kalvora-konsole [--skript DATEI] [--echtzeit] [--version] [Aufrufparameter]\n";
        return SELBST_BEENDET;
    }
    if (optionen.skript) return skript_laufen(optionen);
    if (isatty(STDIN_FILENO) == 1 && isatty(STDOUT_FILENO) == 1) {
        Terminalquelle quelle;
        return laufen(optionen, quelle, &quelle);
    }
    Eingabequelle quelle(optionen.echtzeit);
    return laufen(optionen, quelle);
}
