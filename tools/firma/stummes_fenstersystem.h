// A windowing system without windows: for tools and measurements, which have nobody to ask. Messages are
// collected.
#pragma once

#include <vector>

#include "platform/window/application.h"

namespace kalvora::firma {

class StummesFenstersystem : public WindowSystem {
public:
    std::vector<Text> hinweise;

    void open(Form&) override {}
    void close(Form&) override {}
    void run(Form&) override {}
    void run_modal(Form&) override {}
    void quit() override {}
    void message(const Text& text) override { hinweise.push_back(text); }
    Antwort question(const Text&, const Frageart& art) override { return art.vorgabe; }
    void process_events() override {}
    void wait(double) override {}
    void beep() override {}
    void set_pointer(Mauszeiger) override {}
    bool active(const Form&) override { return true; }
};

} // namespace kalvora::firma
