// Names of keys, as the windows' logic and the scripts write them: "F5", "Z", "Pos1", "Bild-ab".
#pragma once

#include <QKeyEvent>
#include <optional>

#include "platform/window/form.h"

namespace kalvora {

// Nothing for keys without a name (modifiers alone, dead keys).
std::optional<Key> Taste_aus(const QKeyEvent& event);

} // namespace kalvora
