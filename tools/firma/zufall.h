// Random numbers of the made-up company: the same on every machine and with every library, because tests and
// measurements compare what was made from a seed. Not for anything secret.
#pragma once

#include <cstdint>
#include <span>

namespace kalvora::firma {

class Zufall {
public:
    explicit Zufall(std::uint64_t saat, std::uint64_t strom = 0)
        : stand_(saat * 0x9E3779B97F4A7C15u ^ (strom + 1) * 0xD1B54A32D192ED03u) {}

    std::uint32_t nächster() {
        stand_ += 0x9E3779B97F4A7C15u;
        std::uint64_t z = stand_;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
        return static_cast<std::uint32_t>(z >> 32);
    }
    int unter(int n) { // 0 to n - 1
        return static_cast<int>((std::uint64_t{nächster()} * static_cast<std::uint64_t>(n)) >> 32);
    }
    int zwischen(int von, int bis) { return von + unter(bis - von + 1); } // both included
    bool prozent(int n) { return unter(100) < n; }

    template <class Reihe>
    const auto& aus(const Reihe& reihe) {
        const std::span alle(reihe);
        return alle[static_cast<std::size_t>(unter(static_cast<int>(alle.size())))];
    }

private:
    std::uint64_t stand_;
};

} // namespace kalvora::firma
