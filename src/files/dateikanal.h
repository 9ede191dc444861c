// The single file channel: every data file goes through it, line by line, one file at a time. Reading takes
// the whole file at the open and decodes as it goes; writing collects and reaches the disk at the close,
// whole or not at all. The channel remembers which file was opened last, so that any failure can name it.
#pragma once

#include <functional>

#include "files/whole_file.h"
#include "files/zeilen.h"
#include "platform/window/application.h"

namespace kalvora {

enum class Dateimodus {
    Input,
    Output, // replaces the file
    Append,
    Neu,        // creates the file; one that stands there already is never replaced
    Fortsetzen, // appends, but never makes the file
};
enum class Fehlerweg { Melden, IgnoreErrors };

class Dateikanal {
public:
    Dateikanal(const Dateiwerk& werk, Application& app, std::uint32_t saat)
        : werk_(werk), app_(app), schlüssel_(saat) {}

    // False only with IgnoreErrors; otherwise a failure is a Programmabbruch. A file of length zero is
    // somebody else's rewrite in progress: one wait with a message, then a Dateischaden (ini files may be
    // empty).
    bool Datei_öffnen(const Text& pfad, Dateimodus modus, Fehlerweg weg = Fehlerweg::Melden);
    // For a file opened with Output: it is replaced only while it is still the one that was read.
    void Nur_ersetzen(Dateiwerk::Vorgefunden gelesen) { vorgefunden_ = std::move(gelesen); }
    // Brings what was written to the disk. 0, or the fault's number: with IgnoreErrors any; in mode Neu 58
    // when the file stands there already, with Nur_ersetzen when it is another one, in mode Fortsetzen 53
    // when it is missing or empty. Every other fault is thrown.
    Fehlercode Datei_schließen();
    void verwerfen(); // closes without writing and keeps Letzte_Datei: for the roads of failure

    bool Dateiende(); // EOF
    Text LineIn();    // an empty raw line is a fault, in capture files ("*Data.dat") an empty line
    // The next line decoded, as bytes of the code page, valid until the next call; nothing at the end. A last
    // line without its end is not yet there, and one that was never finished (NUL before its end) never was.
    // For files that others append to while we read.
    struct Klarzeile {
        std::string_view bytes;
        std::uint64_t stelle = 0; // offset of the stored line in the file
    };
    std::optional<Klarzeile> nächste_Klarzeile();
    void LineOut(TextView zeile);
    void Klarzeile_schreiben(std::string_view bytes); // LineOut of bytes of the code page
    Text Rohzeile();                                  // a line as it stands: plain files
    void Rohzeile_schreiben(TextView zeile);
    bool letzte_Zeile_offen();                     // the file's last line lacks its end: the file was cut
    int Zeilennummer() const { return zeile_nr_; } // of the line read last, from 1

    const FileInfo& Stand() const { return stand_; }              // of the file opened or written last
    std::uint64_t Größe_vor_Anhang() const { return davor_; }     // of the file appended to last
    const std::string& Angehängtes() const { return angehängt_; } // the stored lines of the last append
    const std::string& Kopfbytes() const { return kopf_; }        // first bytes, as stored, of that file
    const Text& Letzte_Datei() const { return letzte_datei_; }
    void Letzte_Datei_merken(const Text& pfad) { letzte_datei_ = pfad; } // while a file read is being judged
    const Dateiwerk& werk() const { return werk_; }
    FileSystem& fs() const { return werk_.fs(); }
    Application& app() const { return app_; }
    Schlüsselquelle& schlüssel() { return schlüssel_; }

    bool Daten_geändert = true;                    // something was opened for writing since an import
    bool Reparatursperre = false;                  // an empty file is no damage while a repair lock stands
    std::function<void()> bei_langsamem_Schließen; // a close took more than 0.2 s: the network is slow

private:
    void einlesen(const Text& pfad);
    void schreibprobe(const Text& pfad);
    Fehlercode ausschreiben();
    void ganz_geschrieben(const FileInfo& stand);
    bool nächste_bereit();
    [[noreturn]] void öffnen_gescheitert(const Text& pfad, Dateimodus modus, int nummer) const;

    const Dateiwerk& werk_;
    Application& app_;
    Schlüsselquelle schlüssel_;
    Text letzte_datei_, pfad_;
    Dateimodus modus_ = Dateimodus::Input;
    Fehlerweg weg_ = Fehlerweg::Melden;
    std::optional<Dateiwerk::Vorgefunden> vorgefunden_;
    bool offen_ = false;
    Dateiinhalt inhalt_, speicher_; // the open file; memory of the one before
    std::optional<Rohzeilen> zeilen_;
    std::optional<Rohzeilen::Zeile> vorrat_;
    int zeile_nr_ = 0;
    std::string ausgabe_;
    FileInfo stand_;
    std::uint64_t davor_ = 0;
    std::string kopf_, angehängt_;
};

// A missing file (1, 3) or a wrong header (2, 4). Kinds 1 and 2 lead to the repair, 3 and 4 (files of the
// installation) end the program. `kopf` without brackets.
[[noreturn]] void Dateifehler(int art, const Text& datei, TextView kopf = {}, TextView modul = {});

} // namespace kalvora
