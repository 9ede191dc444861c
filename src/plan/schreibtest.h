// The write test that a user makes by hand: may files be made and deleted in the data folder?
#pragma once

#include "files/dateikanal.h"

namespace kalvora {

// Makes and deletes Lockfile.txt, the name that a lock of the program would have, and tells the outcome in
// one message.
void CheckSchreibberechtigung(Dateikanal& kanal, const Text& ordner);

} // namespace kalvora
