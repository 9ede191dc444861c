// What the program asks of the workstation around it: variables, the user, the locale, its own place.
#pragma once

#include <array>
#include <cstdint>

#include "base/datum.h"
#include "base/text.h"

namespace kalvora {

struct Locale {
    Datumsformat datum; // order and separator
    char16_t Dezimaltrennzeichen = u',';
    char16_t Listentrennzeichen = u';';
    std::array<Text, 12> Monatsnamen{u"Januar",    u"Februar", u"März",     u"April",
                                     u"Mai",       u"Juni",    u"Juli",     u"August",
                                     u"September", u"Oktober", u"November", u"Dezember"};
    int Ländernummer = 49; // as in telephone numbers; 1 is North America, told apart by `Landeskürzel`
    Text Landeskürzel = u"DEU";
};

class Environment {
public:
    virtual ~Environment() = default;
    virtual Text variable(TextView name) = 0; // empty when not set
    virtual Text login_name() = 0;            // of the user id; may be empty
    virtual Text host_name() = 0;
    virtual int process_id() = 0;
    virtual Text program_folder() = 0;      // ends in "/"
    virtual Text user_data_folder() = 0;    // the user's place for program data, ends in "/"
    virtual Text private_temp_folder() = 0; // only this user may enter it; ends in "/"; created when missing
    virtual Locale locale() = 0;
    virtual std::uint32_t random_seed() = 0;
    // Takes the lock file of this user's running program; it dies with the process. False: another one runs.
    virtual bool lock_instance(const Text& path) = 0; // may ask a server: through FileSystem::carry_out
};

} // namespace kalvora
