// The real workstation: variables, user, locale, own place.
#pragma once

#include <map>
#include <string>

#include "platform/environment.h"

namespace kalvora {

class PosixEnvironment : public Environment {
public:
    PosixEnvironment() = default;
    PosixEnvironment(const PosixEnvironment&) = delete;
    PosixEnvironment& operator=(const PosixEnvironment&) = delete;
    ~PosixEnvironment() override; // gives the instance locks back

    Text variable(TextView name) override;
    Text login_name() override;
    Text host_name() override;
    int process_id() override;
    Text program_folder() override;
    Text user_data_folder() override;
    // Empty when no folder can be had that only this user may enter.
    Text private_temp_folder() override;
    Locale locale() override;
    std::uint32_t random_seed() override;
    // A lock file that cannot be opened or locked at all is no sign of another program: true.
    bool lock_instance(const Text& path) override;

private:
    std::map<Text, int> locks_; // path, handle
    std::string own_temp_;      // made by this object because the usual place was not to be trusted
};

} // namespace kalvora
