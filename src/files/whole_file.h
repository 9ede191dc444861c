// Whole files: read in one go, appended in one write, rewritten or created so that nobody ever sees a half.
// A rewrite goes to a dot-named sibling that no mask matches, is synced, and then takes the place of the old
// file. The sibling's name carries host, process and a number: none is ever shared, and none that an earlier
// call has left as the only whole copy is touched again.
#pragma once

#include <memory>
#include <string>

#include "platform/clock.h"
#include "platform/filesystem.h"

namespace kalvora {

inline constexpr std::size_t KOPFBYTES = 64; // enough to tell two rewrites of a file by their keys

struct Dateiinhalt {
    std::unique_ptr<char[]> bytes;
    std::size_t größe = 0;
    std::size_t platz = 0; // of the memory behind `bytes`
    FileInfo info;         // of the open file, not of the path: stamps of paths lag behind on shares
    std::string_view sicht() const { return {bytes.get(), größe}; }
};

class Dateiwerk {
public:
    // `kennung` is this process among all workstations: "<host>-<process id>".
    Dateiwerk(FileSystem& fs, Clock& uhr, Text kennung) : fs_(fs), uhr_(uhr), kennung_(std::move(kennung)) {}
    FileSystem& fs() const { return fs_; }
    Clock& uhr() const { return uhr_; }
    const Text& kennung() const { return kennung_; }

    // The memory of `vorrat` is used again when it suffices.
    Ergebnis<Dateiinhalt> lesen(const Text& pfad, Dateiinhalt vorrat = {}) const;
    Ergebnis<FileInfo> stand(const Text& pfad) const; // opens the file: see Dateiinhalt::info

    struct Anhang {
        std::uint64_t davor = 0; // size before the append
        FileInfo info;           // behind it
        std::string kopf;        // the file's first bytes
    };
    // One write of whole lines, synced. A last line that lacks its end is closed first, by NUL CR LF: its
    // writer was ended in the middle of it. What a short write left is taken back. With `nur_bestehende` a
    // missing or emptied file is left alone: 53. When the file goes under the open handle (52), because
    // somebody replaces it, that is tried once more with the new one.
    Ergebnis<Anhang> anhängen(const Text& pfad, std::string_view bytes, bool nur_bestehende = false) const;
    // Of the stored lines that such an append has written those that are gone: somebody else's append at the
    // same moment has overwritten them, as shares allow. None when the file was written anew since.
    Ergebnis<std::string> Überschriebenes(const Text& pfad, const Anhang& wo, std::string_view zeilen) const;
    // What a reader knows of the file: appends change its size, a rewrite its first bytes.
    struct Vorgefunden {
        std::uint64_t größe = 0;
        std::string kopf;
    };
    // Replaces the file, or makes it. With `gelesen` only while it is still that one, looked at last before
    // the old file goes: 58 when somebody has written to it since. Mode and group of the old one are kept;
    // where that was somebody else's, the folder's rights are added, so that he may go on writing. The result
    // is what was written, as it stood before anybody else could change it.
    Ergebnis<FileInfo> ersetzen(const Text& pfad, std::string_view bytes,
                                const Vorgefunden* gelesen = nullptr) const;
    // Makes the file whole; 58 when something stands there already, which is left alone.
    Ergebnis<FileInfo> neu_anlegen(const Text& pfad, std::string_view bytes) const;

private:
    Ergebnis<Anhang> einmal_anhängen(const Text& pfad, std::string_view bytes, bool nur_bestehende) const;
    struct Nebendatei {
        Text pfad;
        FileInfo info;
    };
    Ergebnis<std::string> Kopf(FileSystem::Handle h) const;
    Ergebnis<std::string> Rest(FileSystem::Handle h, std::uint64_t ab) const;
    void Stück_zurücknehmen(FileSystem::Handle h, std::uint64_t ab, std::string_view bytes) const;
    Ergebnis<FileSystem::Handle> Nebendatei_öffnen(const Text& ziel, Text& neben) const;
    Ergebnis<Nebendatei> in_nebendatei(const Text& ziel, std::string_view bytes,
                                       const FileInfo* vorbild) const;
    Ergebnis<FileInfo> füllen(FileSystem::Handle h, const Text& ziel, std::string_view bytes,
                              const FileInfo* vorbild) const;
    FileInfo Rechte_neuer_Datei(const Text& pfad) const;
    FileInfo Rechte_nach(const FileInfo& alt, unsigned eigner, const Text& pfad) const;
    Fehlercode alles_schreiben(FileSystem::Handle, std::string_view bytes) const;
    bool angekommen(const Text& neben, const Text& pfad, std::string_view bytes) const;
    Fehlercode noch_dieselbe(const Text& pfad, const Vorgefunden* gelesen) const;
    Ergebnis<FileInfo> unterschieben(const Nebendatei& neben, const Text& pfad, std::string_view bytes,
                                     const Vorgefunden* gelesen) const;
    Ergebnis<FileInfo> überschreiben(FileSystem::Handle h, std::string_view bytes) const;
    FileSystem& fs_;
    Clock& uhr_;
    Text kennung_;
    mutable long nebendateien_ = 0; // made so far: the number in the next one's name
};

} // namespace kalvora
