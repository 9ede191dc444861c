// Reading a shared file that somebody may just be rewriting: what one reading finds wrong has consequences
// only when a second one, a moment later, finds it again.
#pragma once

#include "base/fehler.h"
#include "platform/window/application.h"

namespace kalvora {

inline constexpr double KURZ_WARTEN = 0.4; // seconds until a doubtful view is looked at again

// What `lesen()` gives. It runs again when its first result is not `gut`, or when it ended in damage or a
// file fault; an ordered stop is no matter of a second look. The second run's outcome holds, good or bad.
template <class Lesen, class Gut>
auto zweite_Lesung(Application& app, Lesen&& lesen, Gut&& gut) {
    try {
        auto gelesen = lesen();
        if (gut(gelesen)) return gelesen;
    } catch (const Dateischaden& schaden) {
        if (schaden.zweimal_gesehen) throw;
    } catch (const Laufzeitfehler& fehler) {
        if (!ist_Dateifehler(fehler.nummer)) throw; // of any other the second reading decides
    }
    app.Pause(KURZ_WARTEN);
    return lesen();
}

template <class Lesen>
auto zweite_Lesung(Application& app, Lesen&& lesen) {
    return zweite_Lesung(app, lesen, [](const auto&) { return true; });
}

} // namespace kalvora
