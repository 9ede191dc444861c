#include "platform/waiting_filesystem.h"

#include <optional>
#include <type_traits>

namespace kalvora {

using namespace std::chrono_literals;

namespace {

constexpr auto PATIENCE = 80ms; // a call that is done by then was none to wait for
constexpr auto STEP = 30ms;
constexpr auto BELIEVED = 1s;
// A local call is over in microseconds, and the next one follows soon: waking a thread would last longer.
constexpr auto SPIN_FOR_RESULT = 100us, SPIN_FOR_JOB = 200us;

void undisturbed(const std::function<void()>& tell) {
    try {
        tell();
    } catch (...) { // NOLINT(bugprone-empty-catch): the call's own result must not be lost for it
    }
}

} // namespace

WaitingFileSystem::WaitingFileSystem(FileSystem& beneath)
    : beneath_(beneath), spins_(std::thread::hardware_concurrency() > 1), thread_([this] { work(); }) {}

WaitingFileSystem::~WaitingFileSystem() {
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    worker_.notify_one();
    thread_.join();
}

// --- handing over

bool WaitingFileSystem::spin_until(State wanted, std::chrono::microseconds longest) const {
    const auto end = Clock::now() + (spins_ ? longest : 0us);
    while (state_.load() != wanted) {
        if (ending_.load() || Clock::now() >= end) return false;
        std::this_thread::yield();
    }
    return true;
}

void WaitingFileSystem::work() {
    while (!ending_) {
        if (!spin_until(State::Posted, SPIN_FOR_JOB)) {
            std::unique_lock lock(mutex_);
            worker_sleeps_ = true;
            worker_.wait(lock, [this] { return state_ == State::Posted || ending_; });
            worker_sleeps_ = false;
            continue;
        }
        try {
            job_(argument_);
        } catch (...) { // NOLINT(bugprone-empty-catch): thrown again by the caller
            thrown_ = std::current_exception();
        }
        state_ = State::Done;
        if (!caller_sleeps_) continue;
        const std::lock_guard lock(mutex_);
        caller_.notify_one();
    }
}

void WaitingFileSystem::run(void (*job)(void*), void* argument) {
    const auto begin = Clock::now();
    job_ = job;
    argument_ = argument;
    state_ = State::Posted;
    if (worker_sleeps_) {
        const std::lock_guard lock(mutex_);
        worker_.notify_one();
    }
    if (!spin_until(State::Done, SPIN_FOR_RESULT)) let_window_answer(begin);
    state_ = State::Idle;
    if (thrown_) std::rethrow_exception(std::exchange(thrown_, nullptr));
}

void WaitingFileSystem::let_window_answer(Clock::time_point begin) {
    bool told = false;
    for (auto next = begin + PATIENCE;; next = Clock::now() + STEP) {
        {
            std::unique_lock lock(mutex_);
            caller_sleeps_ = true;
            const bool done = caller_.wait_until(lock, next, [this] { return state_ == State::Done; });
            caller_sleeps_ = false;
            if (done) break;
        }
        told = true;
        const double seconds = std::chrono::duration<double>(Clock::now() - begin).count();
        if (while_waiting) undisturbed([&] { while_waiting(seconds); });
    }
    if (told && wait_over) undisturbed(wait_over);
}

template <class F>
auto WaitingFileSystem::on_worker(F&& call) -> decltype(call()) {
    if (outside_) return call();
    struct Guard {
        bool& flag;
        explicit Guard(bool& f) : flag(f) { flag = true; }
        ~Guard() { flag = false; }
        Guard(const Guard&) = delete;
        Guard& operator=(const Guard&) = delete;
    } const guard(outside_);
    struct Job {
        std::remove_reference_t<F>& call;
        std::optional<decltype(call())> result;
    } job{call, std::nullopt};
    run([](void* j) { static_cast<Job*>(j)->result.emplace(static_cast<Job*>(j)->call()); }, &job);
    return std::move(*job.result);
}

// --- what need not be handed over

bool WaitingFileSystem::answers_soon(const Text& path) {
    if (!prompt || outside_) return false;
    const Text folder = path.substr(0, path.rfind(u'/') + 1);
    const auto now = Clock::now();
    const auto known = answers_.find(folder);
    if (known != answers_.end() && now - known->second.asked < BELIEVED) return known->second.prompt;
    const bool soon = on_worker([&] { return prompt(folder); });
    answers_[folder] = {soon, now};
    return soon;
}

template <class Place, class F>
auto WaitingFileSystem::look(const Place& place, F&& call) -> decltype(call()) {
    return answers_soon(place) ? call() : on_worker(call);
}

// --- forwarding

Ergebnis<FileSystem::Handle> WaitingFileSystem::open(const Text& path, OpenMode mode) {
    const bool soon = answers_soon(path);
    const auto open = [&] { return beneath_.open(path, mode); };
    const auto handle = soon ? open() : on_worker(open);
    if (handle && soon) prompt_handles_.insert(*handle);
    return handle;
}

Ergebnis<std::size_t> WaitingFileSystem::read(Handle handle, char* buffer, std::size_t size) {
    return look(handle, [&] { return beneath_.read(handle, buffer, size); });
}

Ergebnis<std::size_t> WaitingFileSystem::read_at(Handle handle, std::uint64_t offset, char* buffer,
                                                 std::size_t size) {
    return look(handle, [&] { return beneath_.read_at(handle, offset, buffer, size); });
}

Ergebnis<std::size_t> WaitingFileSystem::write(Handle handle, std::string_view bytes) {
    return on_worker([&] { return beneath_.write(handle, bytes); });
}

Fehlercode WaitingFileSystem::sync(Handle handle) {
    return on_worker([&] { return beneath_.sync(handle); });
}

Fehlercode WaitingFileSystem::truncate(Handle handle, std::uint64_t size) {
    return on_worker([&] { return beneath_.truncate(handle, size); });
}

Fehlercode WaitingFileSystem::copy_rights(Handle handle, const FileInfo& from) {
    return on_worker([&] { return beneath_.copy_rights(handle, from); });
}

Ergebnis<FileInfo> WaitingFileSystem::info(Handle handle) {
    return look(handle, [&] { return beneath_.info(handle); });
}

Fehlercode WaitingFileSystem::close(Handle handle) {
    const Fehlercode fault = look(handle, [&] { return beneath_.close(handle); });
    prompt_handles_.erase(handle);
    return fault;
}

Ergebnis<FileInfo> WaitingFileSystem::info(const Text& path) {
    return look(path, [&] { return beneath_.info(path); });
}

Fehlercode WaitingFileSystem::rename(const Text& from, const Text& to) {
    return on_worker([&] { return beneath_.rename(from, to); });
}

Fehlercode WaitingFileSystem::rename_new(const Text& from, const Text& to) {
    return on_worker([&] { return beneath_.rename_new(from, to); });
}

Fehlercode WaitingFileSystem::remove(const Text& path) {
    return on_worker([&] { return beneath_.remove(path); });
}

Fehlercode WaitingFileSystem::remove_folder(const Text& path) {
    return on_worker([&] { return beneath_.remove_folder(path); });
}

Fehlercode WaitingFileSystem::make_folder(const Text& path) {
    return on_worker([&] { return beneath_.make_folder(path); });
}

Ergebnis<std::vector<Text>> WaitingFileSystem::list(const Text& folder) {
    return look(folder, [&] { return beneath_.list(folder); });
}

Fehlercode WaitingFileSystem::change_folder(const Text& folder) {
    return look(folder, [&] { return beneath_.change_folder(folder); });
}

Ergebnis<Text> WaitingFileSystem::real_folder(const Text& folder) {
    return look(folder, [&] { return beneath_.real_folder(folder); });
}

} // namespace kalvora
