// A mistake in a command; its text goes behind "FEHLER ZEILE: ".
#pragma once

#include "base/fehler.h"

namespace kalvora {

class Kommandofehler : public Fehler {
public:
    using Fehler::Fehler;
};

} // namespace kalvora
