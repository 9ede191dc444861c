// Where command lines come from: a file, standard input, a terminal, a test.
#pragma once

#include <istream>
#include <optional>
#include <string>

namespace kalvora {

class Zeilenquelle {
public:
    virtual ~Zeilenquelle() = default;
    virtual std::optional<std::string> nächste() = 0; // UTF-8 without line end; nothing at the end
    // Does nächste() return at once? Where somebody types, a program that waits goes on without him.
    virtual bool bereit() { return true; }
    // All lines lie ready. Only then may what is left be read when the program is over: the writer of a
    // pipe could be waiting for that end itself.
    virtual bool vollständig() const { return false; }
};

class Stromquelle : public Zeilenquelle {
public:
    Stromquelle(std::istream& strom, bool ist_vollständig) : strom_(strom), vollständig_(ist_vollständig) {}
    std::optional<std::string> nächste() override {
        std::string zeile;
        if (!std::getline(strom_, zeile)) return std::nullopt;
        return zeile;
    }
    bool vollständig() const override { return vollständig_; }

private:
    std::istream& strom_;
    bool vollständig_;
};

} // namespace kalvora
