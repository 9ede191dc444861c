// The call parameters: "/path /srv/x", "/path:/srv/x", "/d:041126", "/silent". An argument is a parameter if
// it begins with "/" and its head, to its end, a ":" or a blank, is a known name in any case; whatever else
// begins with "/" is a value or nothing. An argument that holds a whole command line is split.
#pragma once

#include <map>
#include <optional>
#include <vector>

#include "base/text.h"

namespace kalvora {

class Aufruf {
public:
    Aufruf() = default;
    explicit Aufruf(const std::vector<Text>& argumente);

    // `name` without "/", in lower case.
    bool enthalten(TextView name) const { return werte_.contains(Text(name)); }
    // The parameter's value, nothing when the parameter is not there. Case is kept, quotes are off.
    std::optional<Text> Aufrufparameter(TextView name) const;

private:
    std::map<Text, Text> werte_; // the first one of a name counts
};

} // namespace kalvora
