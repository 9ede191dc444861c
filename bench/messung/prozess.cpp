#include "messung/prozess.h"

#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <chrono>
#include <stdexcept>

extern char** environ;

namespace kalvora::bench {

namespace {

using Uhr = std::chrono::steady_clock;

double seit(Uhr::time_point beginn) {
    return std::chrono::duration<double>(Uhr::now() - beginn).count();
}

std::vector<char*> Zeiger(std::vector<std::string>& texte) {
    std::vector<char*> aus;
    for (std::string& text : texte)
        aus.push_back(text.data());
    aus.push_back(nullptr);
    return aus;
}

// The values given come first: of two of the same name the first counts.
std::vector<std::string> Umgebung_mit(const std::vector<std::string>& eigene) {
    std::vector<std::string> aus = eigene;
    for (char** v = environ; *v; ++v)
        aus.emplace_back(*v);
    return aus;
}

// `ausgabe` is a handle that becomes the program's output.
pid_t starten(const Aufrufe& a, int ausgabe) {
    posix_spawn_file_actions_t handlungen;
    posix_spawn_file_actions_init(&handlungen);
    const char* eingabe = a.Eingabe.empty() ? "/dev/null" : a.Eingabe.c_str();
    posix_spawn_file_actions_addopen(&handlungen, STDIN_FILENO, eingabe, O_RDONLY, 0);
    posix_spawn_file_actions_adddup2(&handlungen, ausgabe, STDOUT_FILENO);
    std::vector<std::string> argumente = a.Argumente, umgebung = Umgebung_mit(a.Umgebung);
    pid_t kind = 0;
    const int fehler = posix_spawn(&kind, a.Argumente.front().c_str(), &handlungen, nullptr,
                                   Zeiger(argumente).data(), Zeiger(umgebung).data());
    posix_spawn_file_actions_destroy(&handlungen);
    if (fehler != 0) throw std::runtime_error("cannot start " + a.Argumente.front());
    return kind;
}

void abwarten(pid_t kind, Lauf& lauf) {
    int status = 0;
    rusage verbrauch{};
    if (wait4(kind, &status, 0, &verbrauch) != kind) throw std::runtime_error("the program was lost");
    lauf.Status = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    lauf.Speicher_MB = static_cast<double>(verbrauch.ru_maxrss) * 1024 / 1e6; // told in KiB
}

} // namespace

Lauf bis_zum_Ende(const Aufrufe& a) {
    const int nichts = ::open("/dev/null", O_WRONLY | O_CLOEXEC);
    Lauf lauf;
    const auto beginn = Uhr::now();
    abwarten(starten(a, nichts), lauf);
    lauf.Sekunden = seit(beginn);
    ::close(nichts);
    return lauf;
}

Lauf bis_zum_Zeichen(const Aufrufe& a) {
    int rohr[2];
    if (::pipe2(rohr, O_CLOEXEC) != 0) throw std::runtime_error("no pipe");
    Lauf lauf;
    const auto beginn = Uhr::now();
    const pid_t kind = starten(a, rohr[1]);
    ::close(rohr[1]);
    char zeichen = 0;
    const bool da = ::read(rohr[0], &zeichen, 1) == 1;
    lauf.Sekunden = seit(beginn);
    ::close(rohr[0]);
    abwarten(kind, lauf);
    if (!da) throw std::runtime_error("no sign from " + a.Argumente.front());
    return lauf;
}

} // namespace kalvora::bench
