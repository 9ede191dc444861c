// The backup container, a line file in one piece: "[KalvoraBackup]", then for each member "[name]", "[n]" and
// its n lines as they are stored in the member. No trailer, no checksum.
#pragma once

#include <optional>
#include <vector>

#include "base/text.h"
#include "files/zeilen.h"

namespace kalvora {

// A plain file name that a restore may write: ends in ".dat" or ".log", holds no separator, begins with
// neither "." nor "~", fits the code page and, with what a rewrite adds to it, a folder; at most 120
// characters.
bool Mitgliedsname_zulässig(TextView name);

class Containerschreiber {
public:
    explicit Containerschreiber(Schlüsselquelle& schlüssel);
    // Room for so many members with so many bytes in all: a container that grows would take twice its size.
    void reservieren(std::size_t mitglieder, std::uint64_t bytes);
    // `bytes`: the whole file; NULs before a line are left out. Of a file that others append to, a last line
    // without its end is not yet there. Any other one was cut, and an empty line keeps that visible.
    void anfügen(TextView name, std::string_view bytes);
    std::string entnehmen() { return std::move(bytes_); }

private:
    void Zeile(TextView klar);
    Schlüsselquelle& schlüssel_;
    std::string bytes_;
};

struct Containermitglied {
    Text name;
    std::string_view bytes; // the stored lines with their ends, whole as the file must be; may be empty
    bool Log() const;
};
// The members, whose views point into `bytes`. Nothing when it is no container or any member could not be
// written back: name not allowed or given twice, count no plain number, lines cut or left over.
std::optional<std::vector<Containermitglied>> Container_lesen(std::string_view bytes);

} // namespace kalvora
