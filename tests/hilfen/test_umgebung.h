// A workstation whose every answer the test sets. Locks are shared between the workstations that are given
// the same Sperren object.
#pragma once

#include <map>
#include <memory>
#include <set>

#include "platform/environment.h"

namespace kalvora {

class TestUmgebung : public Environment {
public:
    using Sperren = std::set<Text>;
    explicit TestUmgebung(std::shared_ptr<Sperren> s = std::make_shared<Sperren>()) : sperren(std::move(s)) {}
    ~TestUmgebung() override {
        for (const Text& pfad : eigene_)
            sperren->erase(pfad);
    }
    TestUmgebung(const TestUmgebung&) = delete;
    TestUmgebung& operator=(const TestUmgebung&) = delete;

    std::map<Text, Text> variablen{{u"USERNAME", u"Muster"}};
    Text rechner = u"PLATZ1";
    Text programmordner = u"/opt/kalvora/";
    std::uint32_t zufall = 1;
    std::shared_ptr<Sperren> sperren;

    Text variable(TextView name) override {
        const auto hit = variablen.find(Text(name));
        return hit == variablen.end() ? Text() : hit->second;
    }
    Text login_name() override { return u"muster"; }
    Text host_name() override { return rechner; }
    int process_id() override { return 4711; }
    Text program_folder() override { return programmordner; }
    Text user_data_folder() override { return u"/home/muster/.local/share/"; }
    Text private_temp_folder() override { return u"/run/muster/kalvora/"; }
    Locale locale() override { return {}; }
    std::uint32_t random_seed() override { return zufall; }
    bool lock_instance(const Text& pfad) override {
        if (eigene_.contains(pfad)) return true;
        if (!sperren->insert(pfad).second) return false;
        eigene_.insert(pfad);
        return true;
    }

private:
    std::set<Text> eigene_;
};

} // namespace kalvora
