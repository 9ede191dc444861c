// The call parameters: "/path /srv/x", "/path:/srv/x", "/d:041126", "/silent". An argument is a parameter if
// it begins with "/" and its head, to its end, a ":" or a blank, is a known name in any case; whatever else
// begins with "/" is a value or nothing. An argument that holds a whole command line is split.
#pragma once

#include <initializer_list>
#include <optional>
#include <vector>

#include "base/text.h"

namespace kalvora {

class Aufruf {
public:
    Aufruf() = default;
    explicit Aufruf(const std::vector<Text>& argumente);

    struct Parameter {
        Text name, wert; // the name without "/", in lower case; the value keeps its case, its quotes are off
    };
    // The one that stands first on the command line, nullptr when none of the names is there.
    const Parameter* erster(std::initializer_list<TextView> namen) const;
    bool enthalten(TextView name) const { return erster({name}) != nullptr; }
    // The parameter's value, nothing when the parameter is not there.
    std::optional<Text> Aufrufparameter(TextView name) const;

private:
    std::vector<Parameter> parameter_; // in the order of the command line
};

} // namespace kalvora
