// What screen readers see of a plan: a table of cells with spoken names.
#pragma once

namespace kalvora {

void Zugang_für_Pläne_einrichten(); // once per program; repeating it changes nothing

} // namespace kalvora
