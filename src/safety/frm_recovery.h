// The window of restore points: backups by their time, the newest first.
#pragma once

#include "platform/window/form.h"
#include "safety/wiederherstellung.h"

namespace kalvora {

struct frmRecovery : Form {
    frmRecovery(Dateikanal& kanal, const Arbeitsplatz& platz, const Wiederherstellung& sicherungen);

    ComboBox cmbDateiliste{*this, u"cmbDateiliste"};
    Button cmdAuswahl1{*this, u"cmdAuswahl", 1}; // Hilfe
    Button cmdAuswahl2{*this, u"cmdAuswahl", 2}; // OK
    Button cmdAuswahl3{*this, u"cmdAuswahl", 3}; // Abbrechen

    // Fills the list: with the time of each file, or the one that its name says. In look-back mode these are
    // the backups before year changes, otherwise all others.
    void ComboBox_belegen(bool aus_Namen);
    const Text& Backupname() const { return name_; } // of the one chosen; empty: none

private:
    Dateikanal& kanal_;
    const Arbeitsplatz& platz_;
    const Wiederherstellung& sicherungen_;
    std::vector<Text> namen_; // of the lines; empty: there is no file
    Text name_;
};

// Lets the user choose; the file's name without folder, empty when he did not.
Text Sicherung_wählen(Dateikanal& kanal, const Arbeitsplatz& platz, const Wiederherstellung& sicherungen,
                      bool aus_Namen = false);

} // namespace kalvora
