// The splash window: program name and version while the program starts, and its waiting state while the
// data folder is not reachable.
#pragma once

#include "platform/window/form.h"

namespace kalvora {

struct frmStart : Form {
    explicit frmStart(Application& app, TextView version); // "1.16.1"
    // The waiting state: the buttons set the tag to "D" (try again) or "E" (end).
    void Wartezustand(bool an);
    void Zustand_zeigen(const Text& text);
    void Starttext_setzen(const Text& text); // empty: the ordinary text

    Label lblText1{*this, u"lblText", 1};        // version
    Label lblText2{*this, u"lblText", 2};        // product name
    Label lblText3{*this, u"lblText", 3};        // start text; hidden while waiting
    Label lblText4{*this, u"lblText", 4};        // state of the wait
    Button cmdAuswahl1{*this, u"cmdAuswahl", 1}; // "Erneut versuchen"
    Button cmdAuswahl2{*this, u"cmdAuswahl", 2}; // "Beenden"
};

} // namespace kalvora
