// Companies to measure on, made once a size, and a workstation on one of them. They lie in a folder of their
// own in the build folder, because a temporary folder is often no disk and syncing there costs nothing.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "firma/stummes_fenstersystem.h"
#include "plan/gemeinsame_daten.h"
#include "platform/posix/posix_clock.h"
#include "platform/posix/posix_filesystem.h"

namespace kalvora::bench {

inline constexpr TextView HEUTE_S = u"261116"; // the day that counts as today

// A folder that goes with the object.
class Messordner {
public:
    Messordner();
    ~Messordner();
    Messordner(const Messordner&) = delete;
    Messordner& operator=(const Messordner&) = delete;
    const std::string& pfad() const { return pfad_; } // ends in "/"
    Text text() const { return aus_utf8(pfad_); }

private:
    std::string pfad_;
};

// Everybody has entries in every month, and the present month was saved today already.
class Firmenlager {
public:
    Text Datenpfad(int Mitarbeiter);
    const Messordner& ordner() const { return ordner_; }

private:
    Messordner ordner_;
    std::map<int, Text> vorhanden_;
};

// What a running program holds, without windows.
struct Arbeitsstation {
    explicit Arbeitsstation(const Text& Datenpfad);
    Arbeitsstation(const Arbeitsstation&) = delete;
    Arbeitsstation& operator=(const Arbeitsstation&) = delete;

    PosixFileSystem fs;
    PosixClock uhr;
    firma::StummesFenstersystem fenster;
    Application app;
    Dateiwerk werk;
    Dateikanal kanal;
    Arbeitsplatz platz;
    Gemeinsame_Daten daten;
};

// One workstation a size, made when first asked for.
class Arbeitsstationen {
public:
    explicit Arbeitsstationen(Firmenlager& lager) : lager_(lager) {}
    Arbeitsstation& mit(int Mitarbeiter);

private:
    Firmenlager& lager_;
    std::map<int, std::unique_ptr<Arbeitsstation>> alle_;
};

} // namespace kalvora::bench
