// Answers that a script queued for the questions and dialogs to come. Each kind is a queue of its own, so
// that a file name never answers a question.
#pragma once

#include <algorithm>
#include <optional>
#include <vector>

#include "base/text.h"

namespace kalvora {

enum class Dialogart { Frage, Eingabe, Datei, Ordner, Farbwahl };

struct Vorratsantwort {
    Dialogart art;
    Text text;  // as the script wrote it
    int nummer; // line of the script
};

class Antwortvorrat {
public:
    void einreihen(Vorratsantwort antwort) { vorrat_.push_back(std::move(antwort)); }

    std::optional<Vorratsantwort> entnehmen(Dialogart art) {
        const auto erste = std::find_if(vorrat_.begin(), vorrat_.end(),
                                        [art](const Vorratsantwort& a) { return a.art == art; });
        if (erste == vorrat_.end()) return std::nullopt;
        Vorratsantwort antwort = std::move(*erste);
        vorrat_.erase(erste);
        return antwort;
    }

    bool hat(Dialogart art) const {
        return std::any_of(vorrat_.begin(), vorrat_.end(),
                           [art](const Vorratsantwort& a) { return a.art == art; });
    }
    const std::vector<Vorratsantwort>& übrig() const { return vorrat_; } // oldest first

private:
    std::vector<Vorratsantwort> vorrat_;
};

} // namespace kalvora
