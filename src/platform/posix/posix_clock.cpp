#include "platform/posix/posix_clock.h"

#include <chrono>
#include <ctime>

namespace kalvora {

namespace {

std::tm local(std::time_t seconds) {
    std::tm parts{};
    localtime_r(&seconds, &parts);
    return parts;
}

Zeitpunkt zeitpunkt(const std::tm& t) {
    return {{t.tm_year + 1900, t.tm_mon + 1, t.tm_mday}, t.tm_hour, t.tm_min, t.tm_sec};
}

} // namespace

Zeitpunkt PosixClock::now() {
    return zeitpunkt(local(std::chrono::system_clock::to_time_t(std::chrono::system_clock::now())));
}

double PosixClock::steady() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

Datum PosixClock::day_of(Zeitstempel stamp) {
    const Kalendertag tag = time_of(stamp).tag;
    return Datum_aus(tag.jahr, tag.monat, tag.tag);
}

Zeitpunkt PosixClock::time_of(Zeitstempel stamp) {
    constexpr Zeitstempel SEKUNDE = 1'000'000'000;
    const Zeitstempel seconds = stamp / SEKUNDE - (stamp % SEKUNDE < 0 ? 1 : 0);
    return zeitpunkt(local(static_cast<std::time_t>(seconds)));
}

} // namespace kalvora
