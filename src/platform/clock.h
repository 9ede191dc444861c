// Time. The local date and time of day come from `now`; waits, guards and measures use the steady clock. A
// clock does not wait: the window's waits are Application::Pause, those for a server FileSystem::wait.
#pragma once

#include "base/datum.h"
#include "platform/filesystem.h"

namespace kalvora {

class Clock {
public:
    virtual ~Clock() = default;
    virtual Zeitpunkt now() = 0;                // local time
    virtual double steady() = 0;                // seconds from an arbitrary point, never backwards
    virtual Datum day_of(Zeitstempel) = 0;      // local date of a file's time stamp
    virtual Zeitpunkt time_of(Zeitstempel) = 0; // the same with the time of day
};

} // namespace kalvora
