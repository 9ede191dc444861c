// A child of the test that does something and says lines to its parent until it ends or is killed; and the
// workstation's files in such a process, on the real file system.
#pragma once

#include <algorithm>
#include <csignal>
#include <functional>
#include <sstream>
#include <sys/wait.h>
#include <unistd.h>

#include "hilfen/arbeitsplatz.h"
#include "platform/posix/posix_clock.h"
#include "platform/posix/posix_filesystem.h"

namespace kalvora {

class Kindprozess {
public:
    using Sagen = std::function<void(const std::string& zeile)>;
    explicit Kindprozess(const std::function<void(const Sagen&)>& tat) {
        int rohr[2];
        if (pipe(rohr) != 0) throw std::runtime_error("no pipe");
        kind_ = fork();
        if (kind_ < 0) throw std::runtime_error("no child");
        if (kind_ == 0) {
            close(rohr[0]);
            ausführen(tat, rohr[1]);
        }
        close(rohr[1]);
        rohr_ = rohr[0];
    }
    ~Kindprozess() {
        töten();
        zeilen();
    }
    Kindprozess(const Kindprozess&) = delete;
    Kindprozess& operator=(const Kindprozess&) = delete;

    void töten() const {
        if (kind_ > 0) kill(kind_, SIGKILL);
    }
    // Waits for the end; what it said in whole lines. One that failed says so in its last.
    std::vector<std::string> zeilen() {
        if (kind_ <= 0) return {};
        std::string alles;
        char puffer[4096];
        for (ssize_t n = 0; (n = read(rohr_, puffer, sizeof puffer)) > 0;)
            alles.append(puffer, static_cast<std::size_t>(n));
        close(rohr_);
        int status = 0;
        waitpid(std::exchange(kind_, -1), &status, 0);
        std::vector<std::string> aus;
        std::istringstream strom(alles.substr(0, alles.rfind('\n') + 1));
        for (std::string zeile; std::getline(strom, zeile);)
            aus.push_back(zeile);
        if (WIFSIGNALED(status) && WTERMSIG(status) != SIGKILL) aus.push_back("failed: signal");
        return aus;
    }

private:
    [[noreturn]] static void ausführen(const std::function<void(const Sagen&)>& tat, int rohr) {
        const Sagen sagen = [rohr](const std::string& zeile) {
            std::string ganz = zeile;
            std::replace(ganz.begin(), ganz.end(), '\n', ' ');
            ganz += '\n';
            if (write(rohr, ganz.data(), ganz.size()) != static_cast<ssize_t>(ganz.size())) _exit(4);
        };
        try {
            tat(sagen);
        } catch (const std::exception& fehler) {
            sagen(std::string("failed: ") + fehler.what());
        } catch (...) { // the parent sees the line
            sagen("failed");
        }
        _exit(0);
    }
    pid_t kind_ = -1;
    int rohr_ = -1;
};

// Waits of the program take their time.
struct WartendeFenster : StummeFenster {
    void wait(double sekunden) override { usleep(static_cast<useconds_t>(sekunden * 1e6)); }
};

struct EchterPlatz {
    PosixFileSystem fs;
    PosixClock uhr;
    WartendeFenster fenster;
    Application app{fenster};
    Dateiwerk werk{fs, uhr, u"RECHNER-" + ziffern(getpid())};
    Dateikanal kanal{werk, app, static_cast<std::uint32_t>(getpid())};
    Arbeitsplatz platz;
    Konfigdaten konfig{kanal, platz};
    Mitarbeiterdaten personal{kanal, platz, konfig};
    Logbuch log{kanal, platz, konfig};
    Erfassungsdateien erfassung{kanal, platz, konfig, personal, log};

    explicit EchterPlatz(const Text& daten, const Text& yymm = u"2611") {
        platz.Heute = Datum_aus(2026, 11, 16);
        platz.Heute_S = u"261116";
        platz.Datenpfad = daten;
        konfig.Konfigdaten_lesen();
        personal.Mitarbeiterdaten_lesen();
        erfassung.Erfassungsdaten_lesen(yymm);
    }
};

} // namespace kalvora
