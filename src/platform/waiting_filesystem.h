// A file system whose calls may last without holding up the window: each runs on a worker thread, and while
// it lasts the calling thread is given a moment again and again, to let the window answer. Otherwise it is
// the file system beneath. To be called from one thread alone.
//
// Handing over means waking a thread twice: tens of microseconds, or on a busy computer as long as another
// process holds the processor. What only looks at a folder that always answers soon (`prompt`) is therefore
// done at once, and what is left ends in a sync or on a server, either of which lasts longer.
#pragma once

#include <chrono>
#include <condition_variable>
#include <exception>
#include <functional>
#include <map>
#include <mutex>
#include <set>
#include <thread>

#include "platform/filesystem.h"

namespace kalvora {

class WaitingFileSystem : public FileSystem {
public:
    explicit WaitingFileSystem(FileSystem& beneath);
    ~WaitingFileSystem() override;
    WaitingFileSystem(const WaitingFileSystem&) = delete;
    WaitingFileSystem& operator=(const WaitingFileSystem&) = delete;

    // On the calling thread, from 80 ms on about every 30 ms while a call lasts, with its seconds so far. A
    // call of the file system from within runs at once, beside the one that lasts. What it throws is lost:
    // the call has to come to its end, and its result counts.
    std::function<void(double seconds)> while_waiting;
    std::function<void()> wait_over; // once behind a call during which while_waiting ran
    // Does this folder always answer soon? Asked on the worker; the answer is believed for a second, since a
    // share may be mounted there meanwhile. Without it every call is handed over.
    std::function<bool(const Text& folder)> prompt;

    Ergebnis<Handle> open(const Text& path, OpenMode mode) override;
    Ergebnis<std::size_t> read(Handle, char* buffer, std::size_t size) override;
    Ergebnis<std::size_t> read_at(Handle, std::uint64_t offset, char* buffer, std::size_t size) override;
    Ergebnis<std::size_t> write(Handle, std::string_view bytes) override;
    Fehlercode sync(Handle) override;
    Fehlercode truncate(Handle, std::uint64_t size) override;
    Fehlercode copy_rights(Handle, const FileInfo& from) override;
    Ergebnis<FileInfo> info(Handle) override;
    Fehlercode close(Handle) override;

    Ergebnis<FileInfo> info(const Text& path) override;
    Fehlercode rename(const Text& from, const Text& to) override;
    Fehlercode rename_new(const Text& from, const Text& to) override;
    Fehlercode remove(const Text& path) override;
    Fehlercode remove_folder(const Text& path) override;
    Fehlercode make_folder(const Text& path) override;
    Ergebnis<std::vector<Text>> list(const Text& folder) override;
    Fehlercode change_folder(const Text& folder) override;
    Text current_folder() override { return beneath_.current_folder(); } // asks no disk
    Ergebnis<Text> real_folder(const Text& folder) override;
    Ergebnis<bool> is_link(const Text& path) override;
    void wait(double seconds) override;
    void carry_out(const std::function<void()>& call) override;

private:
    using Clock = std::chrono::steady_clock;

    struct Answer {
        bool prompt = false;
        Clock::time_point asked;
    };
    bool answers_soon(const Text& path); // a file's folder counts
    bool answers_soon(Handle handle) const { return prompt_handles_.contains(handle); }
    template <class Place, class F>
    auto look(const Place& place, F&& call) -> decltype(call());
    template <class F>
    auto on_worker(F&& call) -> decltype(call());
    using Job = std::function<void()>;
    void run(const Job& job); // on the worker; comes back when it is done, and never before
    void work();              // the worker's loop
    void let_window_answer();

    FileSystem& beneath_;
    std::map<Text, Answer> answers_; // by folder
    std::set<Handle> prompt_handles_;
    bool outside_ = false; // a call is under way: what comes now is nested
    // What both threads touch, under the mutex. The job and its result stand on the caller's stack.
    std::mutex mutex_;
    std::condition_variable caller_, worker_;
    const Job* job_ = nullptr; // until it is done
    std::exception_ptr thrown_;
    bool ending_ = false;
    std::thread thread_; // last: begins when all else stands
};

} // namespace kalvora
