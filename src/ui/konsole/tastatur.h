// Keys: their names, and what a control does with a key that the window left to it.
#pragma once

#include "ui/konsole/konsolen_fenstersystem.h"

namespace kalvora {

// "Strg+Umschalt+P", "Bild-ab"; case of the names is free. Throws Kommandofehler when it is no key.
Key Taste_aus(TextView name);

// First the window, then the default or cancel button (Eingabe, Esc), or the window's frame (Alt+F4, and Esc
// in a modal window without a cancel button), then the control that has the focus; a button there keeps
// Eingabe. A key that nobody takes is no mistake. Throws Kommandofehler when the window takes no input.
void Taste_drücken(KonsolenFenstersystem& system, Form& form, const Key& taste);

} // namespace kalvora
