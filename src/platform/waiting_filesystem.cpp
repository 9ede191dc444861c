#include "platform/waiting_filesystem.h"

#include <optional>
#include <utility>

namespace kalvora {

using namespace std::chrono_literals;

namespace {

constexpr auto PATIENCE = 80ms; // a call that is done by then was none to wait for
constexpr auto STEP = 30ms;
constexpr auto BELIEVED = 1s;

void undisturbed(const std::function<void()>& tell) {
    try {
        tell();
    } catch (...) { // NOLINT(bugprone-empty-catch): the call's own result must not be lost for it
    }
}

} // namespace

WaitingFileSystem::WaitingFileSystem(FileSystem& beneath) : beneath_(beneath), thread_([this] { work(); }) {}

WaitingFileSystem::~WaitingFileSystem() {
    {
        const std::lock_guard lock(mutex_);
        ending_ = true;
    }
    worker_.notify_one();
    thread_.join();
}

// --- handing over

void WaitingFileSystem::work() {
    std::unique_lock lock(mutex_);
    for (;;) {
        worker_.wait(lock, [this] { return job_ || ending_; });
        if (!job_) return;
        const Job& job = *job_;
        std::exception_ptr thrown;
        lock.unlock();
        try {
            job();
        } catch (...) { // thrown again by the caller
            thrown = std::current_exception();
        }
        lock.lock();
        thrown_ = std::move(thrown); // none is left here: the caller alone lets go of what was thrown
        job_ = nullptr;
        caller_.notify_one();
    }
}

void WaitingFileSystem::run(const Job& job) {
    {
        const std::lock_guard lock(mutex_);
        job_ = &job;
    }
    worker_.notify_one();
    let_window_answer();
    if (thrown_) std::rethrow_exception(std::exchange(thrown_, nullptr)); // the worker has nothing to do
}

void WaitingFileSystem::let_window_answer() {
    const auto begin = Clock::now();
    bool told = false;
    std::unique_lock lock(mutex_);
    for (auto next = begin + PATIENCE; !caller_.wait_until(lock, next, [this] { return !job_; });
         next = Clock::now() + STEP) {
        lock.unlock();
        told = true;
        const double seconds = std::chrono::duration<double>(Clock::now() - begin).count();
        if (while_waiting) undisturbed([&] { while_waiting(seconds); });
        lock.lock();
    }
    lock.unlock();
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
    std::optional<decltype(call())> result;
    run([&] { result.emplace(call()); });
    return std::move(*result);
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

Ergebnis<bool> WaitingFileSystem::is_link(const Text& path) {
    return look(path, [&] { return beneath_.is_link(path); });
}

void WaitingFileSystem::wait(double seconds) {
    carry_out([&] { beneath_.wait(seconds); });
}

void WaitingFileSystem::carry_out(const std::function<void()>& call) {
    on_worker([&] {
        beneath_.carry_out(call);
        return true;
    });
}

} // namespace kalvora
