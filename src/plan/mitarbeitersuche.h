// The search for an employee in the main window: by a part of the name, without case, in the rows on show.
#pragma once

#include "plan/frm_kalvora.h"
#include "plan/gemeinsame_daten.h"

namespace kalvora {

class Mitarbeitersuche {
public:
    Mitarbeitersuche(frmKalvora& fenster, Gemeinsame_Daten& daten) : f_(fenster), d_(daten) {}

    // Asks for a name, or goes on behind the last hit with the last one.
    void suchen(bool weiter);
    // Goes to the row of the user himself; false when there is none (told by a message).
    bool eigene_Zeile();

private:
    void zeigen(int row);
    frmKalvora& f_;
    Gemeinsame_Daten& d_;
    Text begriff_;
    int treffer_ = 0; // row of the last hit; 0: from the beginning
};

} // namespace kalvora
