// kalvora-firma: makes a company of any size, for the demo, tests and measurements.
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <string>
#include <string_view>

#include "firma/firma.h"
#include "platform/posix/posix_clock.h"
#include "platform/posix/posix_environment.h"
#include "platform/posix/posix_filesystem.h"

using namespace kalvora;

namespace {

constexpr char HILFE[] =
    "kalvora-firma --ziel FOLDER [--mitarbeiter N] [--seed S] [--heute ddmmyy] [--jahre YYYY]\n"
    "              [--version-heute] [--voll] [--benutzer NAME] [--programmpfad FOLDER]\n"
    "Makes the data folder FOLDER/Data of a made-up company. The same values give the same folder.\n"
    "  --mitarbeiter    number of employees, 50 when left out; at most 100000\n"
    "  --seed           chooses the company, 1 when left out\n"
    "  --heute          the day that counts as today; the system's date when left out\n"
    "  --jahre          first of the three years; the year before today when left out\n"
    "  --version-heute  the present month was already saved today\n"
    "  --voll           every employee has an entry in every month\n"
    "  --benutzer       administrator and one of the staff; the user who runs this when left out\n"
    "  --programmpfad   folder with KalvoraFtg.dat; the folder of this program when left out\n";

constexpr int HÖCHSTENS = 100'000;

struct Falscher_Aufruf {
    std::string text;
};

long long Zahl(const std::string& wert, long long von, long long bis, const char* option) {
    char* ende = nullptr;
    errno = 0;
    const long long zahl = std::strtoll(wert.c_str(), &ende, 10);
    if (wert.empty() || *ende != '\0' || errno != 0 || zahl < von || zahl > bis)
        throw Falscher_Aufruf{std::string(option) + " takes a number from " + std::to_string(von) + " to " +
                              std::to_string(bis) + ", not \"" + wert + "\""};
    return zahl;
}

Datum Tag(const std::string& wert) {
    const Text t = aus_utf8(wert);
    const Datum d =
        t.size() == 6 && nur_Ziffern(t) ? FormatDatumSD(t.substr(4, 2) + t.substr(2, 2) + t.substr(0, 2)) : 0;
    const Text zurück = FormatDatumDS(d);
    if (d == 0 || zurück.substr(4, 2) + zurück.substr(2, 2) + zurück.substr(0, 2) != t)
        throw Falscher_Aufruf{"--heute takes a day as ddmmyy, not \"" + wert + "\""};
    return d;
}

Text Ordner(const std::string& wert) {
    return aus_utf8(std::filesystem::absolute(wert).lexically_normal().string());
}

void übernehmen(std::string_view option, const std::string& wert, Firmenwunsch& w) {
    if (option == "--ziel")
        w.Zielordner = Ordner(wert);
    else if (option == "--mitarbeiter")
        w.Mitarbeiter = static_cast<int>(Zahl(wert, 0, HÖCHSTENS, "--mitarbeiter"));
    else if (option == "--seed")
        w.Saat = static_cast<std::uint64_t>(Zahl(wert, 0, 1'000'000'000'000, "--seed"));
    else if (option == "--heute")
        w.Heute = Tag(wert);
    else if (option == "--jahre")
        w.Startjahr = static_cast<int>(Zahl(wert, 2000, 2076, "--jahre"));
    else if (option == "--benutzer")
        w.Benutzername = aus_utf8(wert);
    else if (option == "--programmpfad")
        w.Programmpfad = Ordner(wert);
    else
        throw Falscher_Aufruf{"unknown option " + std::string(option)};
}

Firmenwunsch Wunsch(int argc, char** argv, Environment& umgebung) {
    Firmenwunsch w;
    w.Programmpfad = umgebung.program_folder();
    w.Benutzername = umgebung.variable(u"USERNAME");
    if (w.Benutzername.empty()) w.Benutzername = umgebung.login_name();
    for (int i = 1; i < argc; ++i) {
        const std::string_view option = argv[i];
        if (option == "--version-heute")
            w.Version_von_heute = true;
        else if (option == "--voll")
            w.Jeden_Monat_Einträge = true;
        else if (i + 1 < argc)
            übernehmen(option, argv[++i], w);
        else
            throw Falscher_Aufruf{"unknown option, or no value behind it: " + std::string(option)};
    }
    if (w.Zielordner.empty()) throw Falscher_Aufruf{"--ziel is missing"};
    return w;
}

int erzeugen(int argc, char** argv) {
    PosixEnvironment umgebung;
    PosixFileSystem fs;
    PosixClock uhr;
    const Firmenbericht b = Firma_erzeugen(fs, uhr, Wunsch(argc, argv, umgebung));
    std::printf("%s: %d employees, %d headings, %d rows, %d comments, %d log records\n",
                zu_utf8(b.Datenpfad).c_str(), b.Mitarbeiter, b.Überschriften, b.Datensätze, b.Kommentare,
                b.Logsätze);
    return 0;
}

} // namespace

int main(int argc, char** argv) {
    if (argc == 2 && std::string_view(argv[1]) == "--help") return std::fputs(HILFE, stdout) < 0;
    try {
        return erzeugen(argc, argv);
    } catch (const Falscher_Aufruf& f) {
        std::fprintf(stderr, "kalvora-firma: %s\n%s", f.text.c_str(), HILFE);
        return 2;
    } catch (const Laufzeitfehler& f) {
        std::fprintf(stderr, "kalvora-firma: %s: %s\n", f.what(), zu_utf8(f.datei).c_str());
    } catch (const std::exception& f) {
        std::fprintf(stderr, "kalvora-firma: %s\n", f.what());
    }
    return 1;
}
