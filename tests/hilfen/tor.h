// A gate: whoever comes to it on another thread waits until the test opens it.
#pragma once

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>

namespace kalvora {

class Tor {
public:
    std::function<void()> bei_Ankunft; // on the thread that waits then

    void warten() {
        std::unique_lock sperre(mutex_);
        if (offen_) return;
        if (bei_Ankunft) bei_Ankunft();
        geöffnet_.wait_for(sperre, std::chrono::seconds(20),
                           [this] { return offen_; }); // a failing test ends
    }
    void öffnen() {
        {
            const std::lock_guard sperre(mutex_);
            offen_ = true;
        }
        geöffnet_.notify_all();
    }

private:
    std::mutex mutex_;
    std::condition_variable geöffnet_;
    bool offen_ = false;
};

} // namespace kalvora
