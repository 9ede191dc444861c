// The transcript: one line for each thing that happened, in a form that two runs can be compared by.
#pragma once

#include <functional>
#include <string_view>

#include "base/text.h"

namespace kalvora {

// Line ends as \n (carriage return, line feed, or both as one), quotes as \", other control characters as
// \xNN.
Text maskiert(TextView text);
Text zitiert(TextView text); // the same between quotes

class Protokoll {
public:
    using Ausgabe = std::function<void(std::string_view utf8)>; // gets whole lines, line end included
    explicit Protokoll(Ausgabe ausgabe) : ausgabe_(std::move(ausgabe)) {}

    void zeile(TextView text);
    // A mistake in the script; `nummer` is the line of the command, from 1.
    void fehler(int nummer, TextView text);
    int Fehlerzahl() const { return fehlerzahl_; }

private:
    Ausgabe ausgabe_;
    int fehlerzahl_ = 0;
};

} // namespace kalvora
