// What a hand can do to each kind of control, and how its value reads. One entry a kind: a new kind of
// control is added in bedienung.cpp and nowhere else.
#pragma once

#include "platform/window/form.h"

namespace kalvora {

struct Bedienung {
    // A control without a value is not listed. A table's value has several lines.
    std::vector<Text> (*wert)(const Control&) = nullptr;
    // The user's actions; a missing one cannot be done to this kind. False: refused.
    bool (*klick)(Control&, Modifiers) = nullptr;
    bool (*setze)(Control&, TextView) = nullptr;
    std::vector<Text> (*einträge)(const Control&) = nullptr; // for `wähle`
    bool (*wähle)(Control&, int eintrag) = nullptr;          // from 0
};

const Bedienung& bedienung(ControlKind kind);

// Why a hand cannot reach the control; throws Kommandofehler with the reason, returns when it can.
void Erreichbarkeit_verlangen(const Control& control);
// Behind an action that the control refused. Throws Kommandofehler.
void Annahme_verlangen(const Control& control, bool angenommen);

bool sichtbar(const Control& control);  // an entry of a hidden menu is not
bool bedienbar(const Control& control); // neither it nor its menu is disabled

} // namespace kalvora
