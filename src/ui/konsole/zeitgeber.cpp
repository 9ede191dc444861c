#include "ui/konsole/zeitgeber.h"

#include <algorithm>

namespace kalvora {

namespace {

double Abstand(const Timer& timer) {
    return std::max(timer.seconds(), 0.001); // an interval of none would stop the clock
}

} // namespace

void Zeitgeber::beachten(Timer& timer, double jetzt) {
    const auto hit =
        std::find_if(laufende_.begin(), laufende_.end(), [&](const Eintrag& e) { return e.timer == &timer; });
    if (timer.enabled() && hit == laufende_.end())
        laufende_.push_back({&timer, jetzt + Abstand(timer)});
    else if (!timer.enabled() && hit != laufende_.end())
        laufende_.erase(hit);
}

void Zeitgeber::beachten(Form& form, double jetzt) {
    for (Control* control : form.controls())
        if (auto* timer = dynamic_cast<Timer*>(control)) beachten(*timer, jetzt);
}

void Zeitgeber::vergessen(const Form& form) {
    std::erase_if(laufende_, [&](const Eintrag& e) { return &e.timer->form() == &form; });
}

Zeitgeber::Fällig Zeitgeber::nächster(double bis) const {
    const auto erster = std::min_element(laufende_.begin(), laufende_.end(),
                                         [](const Eintrag& a, const Eintrag& b) { return a.wann < b.wann; });
    if (erster == laufende_.end() || erster->wann > bis) return {};
    return {erster->timer, erster->wann};
}

void Zeitgeber::neu_stellen(const Timer& timer, double jetzt) {
    for (Eintrag& e : laufende_)
        if (e.timer == &timer) e.wann = jetzt + Abstand(timer);
}

} // namespace kalvora
