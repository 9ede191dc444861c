// The running timers of all open windows and when each is due on the steady clock. A timer that was due while
// the program was busy misses that tick and comes again after its interval.
#pragma once

#include <vector>

#include "platform/window/form.h"

namespace kalvora {

class Zeitgeber {
public:
    // Starts or stops a timer as it is enabled; a running one keeps its time.
    void beachten(Timer& timer, double jetzt);
    void beachten(Form& form, double jetzt);
    void vergessen(const Form& form);
    // The timer that is due first, when that is not behind `bis`; of several the one that was started first.
    struct Fällig {
        Timer* timer = nullptr;
        double wann = 0;
    };
    Fällig nächster(double bis) const;
    void neu_stellen(const Timer& timer, double jetzt); // by its interval

private:
    struct Eintrag {
        Timer* timer;
        double wann;
    };
    std::vector<Eintrag> laufende_;
};

} // namespace kalvora
