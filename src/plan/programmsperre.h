// Lockfile.txt in the data folder: a plain file by which an administrator, or a repair, keeps the others out.
// Line 1 "<Sperrtext>|<Benutzername>[|<Name>]"; a repair adds the file repaired (or "NoFile " and the months)
// and "<date>|<hh:nn>". And the other thing that keeps everybody from writing: a folder that is being put
// back to an earlier state.
#pragma once

#include <functional>
#include <optional>

#include "files/konfigdaten.h"

namespace kalvora {

struct Sperre {
    Text Sperrtext, Benutzer, Name;
    Text Sperre_Datei, Sperre_Zeit; // of a repair; empty for an ordinary lock
    bool nach_Reparatur() const { return !Sperre_Datei.empty(); }
};

// Copy of the state that the whole data folder is being put back to, in Backups/. While it stands, because
// that is under way or was interrupted, whatever is saved would go. A fault is thrown.
inline constexpr TextView REDOKOPIE = u"000000 000000 I.dat";
bool Ersatz_steht_aus(FileSystem& fs, const Text& Backuppfad);

class Programmsperre {
public:
    Programmsperre(Dateikanal& kanal, const Arbeitsplatz& platz) : kanal_(kanal), platz_(platz) {}

    // At the start and before every save: an ordinary lock of somebody else ends the program, this user's own
    // one is told at the start. One that cannot be read is left alone, one without "|" is deleted.
    void Programmsperre_prüfen();
    // Once the first month is shown: a repair lock ends the program for all but administrators, who are told
    // what to do. Without any administrators it is deleted, and everybody is told.
    void Sperre_melden(const Konfiguration& konfig);
    // An administrator who was told may lift the lock: when the window stands, and when it is closed.
    void Aufhebung_anbieten(const Konfiguration& konfig, bool beim_Beenden);

    bool vorhanden() const; // a lock stands, or a file that may be one; that of a write test is none
    // False: it could not be made, which is told. A lock that stands is left as it is; that of a repair is
    // added to it, in its own words.
    bool anlegen(const Sperre& sperre);
    // A repair lock goes only behind a backup: from then on what the restored lists do not know is cleaned
    // up.
    void aufheben();
    std::function<Text()> davor_sichern; // a backup; what stood in its way, empty when it was made

private:
    Text Pfad() const;
    std::optional<Sperre> stehende() const;
    void merken(std::optional<Sperre> sperre);
    Dateikanal& kanal_;
    const Arbeitsplatz& platz_;
    Text name_;                   // as it is spelled
    std::optional<Sperre> stand_; // as read last
    bool gemeldet_ = false;       // to an administrator, in this run
    bool nachwirkend_ = false;    // a repair lock was lifted by the program itself in this run
};

} // namespace kalvora
