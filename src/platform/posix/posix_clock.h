// The workstation's clock.
#pragma once

#include "platform/clock.h"

namespace kalvora {

class PosixClock : public Clock {
public:
    Zeitpunkt now() override;
    double steady() override;
    Datum day_of(Zeitstempel) override;
    Zeitpunkt time_of(Zeitstempel) override;
};

} // namespace kalvora
