// Names of people and departments. All of them can be held by Windows-1252.
#pragma once

#include <span>

#include "base/text.h"

namespace kalvora::firma {

std::span<const TextView> Nachnamen();
std::span<const TextView> Vornamen();
std::span<const TextView> Abteilungen();

// Lower-case ASCII letters, as in user names: "Müller" is "mueller", "Núñez" is "nunez".
Text als_Anmeldename(TextView name);

} // namespace kalvora::firma
