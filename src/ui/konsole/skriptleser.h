// Command lines cut into words. A word with blanks stands in double quotes; inside them \", \\ and \n.
// Line numbers count from 1, words from 0; word 0 is the command.
#pragma once

#include <optional>
#include <vector>

#include "base/text.h"
#include "ui/konsole/zeilenquelle.h"

namespace kalvora {

struct Wort {
    Text text;
    bool zitiert = false; // a quoted word is text only: "#3" and "12" are no numbers then
    friend bool operator==(const Wort&, const Wort&) = default;
};

struct Kommandozeile {
    int nummer = 0;
    std::vector<Wort> worte; // none: blank line or comment
    Text fehler;             // why the line could not be read
};

Kommandozeile zerlegen(TextView zeile, int nummer = 1);

class Skriptleser {
public:
    explicit Skriptleser(Zeilenquelle& quelle) : quelle_(quelle) {}
    // The next line that holds a command or a mistake; nothing at the end of the input.
    std::optional<Kommandozeile> nächste();
    void zurück(Kommandozeile zeile) { zurückgelegt_ = std::move(zeile); } // comes again with the next call
    bool bereit() const { return zurückgelegt_ || quelle_.bereit(); }      // nächste() need not wait
    int Zeilennummer() const { return nummer_; }                           // of the line read last
    bool vollständig() const { return quelle_.vollständig(); }

private:
    Zeilenquelle& quelle_;
    std::optional<Kommandozeile> zurückgelegt_;
    int nummer_ = 0;
};

} // namespace kalvora
