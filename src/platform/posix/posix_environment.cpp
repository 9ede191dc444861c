#include "platform/posix/posix_environment.h"

#include <array>
#include <cerrno>
#include <climits>
#include <cstdlib>
#include <fcntl.h>
#include <pwd.h>
#include <random>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

#include "platform/posix/gebietsschema.h"

namespace kalvora {

namespace {

std::string value_of(const char* name) {
    const char* value = std::getenv(name);
    return value ? value : "";
}

// A folder named by a variable counts only when it is absolute.
std::string folder_from(const char* name) {
    std::string folder = value_of(name);
    if (!folder.starts_with('/')) return {};
    while (folder.size() > 1 && folder.back() == '/')
        folder.pop_back();
    return folder;
}

struct Benutzer {
    std::string name, heimat;
};

Benutzer current_user() {
    std::vector<char> buffer(16384);
    passwd entry{};
    passwd* found = nullptr;
    if (getpwuid_r(geteuid(), &entry, buffer.data(), buffer.size(), &found) != 0 || !found) return {};
    return {found->pw_name ? found->pw_name : "", found->pw_dir ? found->pw_dir : ""};
}

bool own_folder(const std::string& path) {
    struct stat s {};
    return lstat(path.c_str(), &s) == 0 && S_ISDIR(s.st_mode) && s.st_uid == geteuid();
}

// A folder that nobody else may enter or has put there: not a link, this user's, mode 0700.
bool private_folder(const std::string& path) {
    if (mkdir(path.c_str(), 0700) != 0 && errno != EEXIST) return false;
    struct stat s {};
    return own_folder(path) && lstat(path.c_str(), &s) == 0 && (s.st_mode & 0777) == 0700;
}

std::string first_set(std::initializer_list<const char*> names) {
    for (const char* name : names)
        if (std::string value = value_of(name); !value.empty()) return value;
    return {};
}

} // namespace

PosixEnvironment::~PosixEnvironment() {
    for (const auto& [path, handle] : locks_)
        ::close(handle);
}

Text PosixEnvironment::variable(TextView name) {
    return aus_utf8(value_of(zu_utf8(name).c_str()));
}

Text PosixEnvironment::login_name() {
    return aus_utf8(current_user().name);
}

Text PosixEnvironment::host_name() {
    std::array<char, 256> name{};
    if (gethostname(name.data(), name.size() - 1) != 0) return {};
    return aus_utf8(name.data());
}

int PosixEnvironment::process_id() {
    return static_cast<int>(getpid());
}

Text PosixEnvironment::program_folder() {
    std::array<char, PATH_MAX> buffer{};
    const ssize_t length = readlink("/proc/self/exe", buffer.data(), buffer.size());
    if (length <= 0) return {};
    const std::string path(buffer.data(), static_cast<std::size_t>(length));
    return aus_utf8(path.substr(0, path.rfind('/') + 1));
}

Text PosixEnvironment::user_data_folder() {
    if (const std::string data = folder_from("XDG_DATA_HOME"); !data.empty()) return aus_utf8(data + "/");
    std::string home = folder_from("HOME");
    if (home.empty()) home = current_user().heimat;
    return aus_utf8((home == "/" ? "" : home) + "/.local/share/");
}

Text PosixEnvironment::private_temp_folder() {
    const std::string runtime = folder_from("XDG_RUNTIME_DIR");
    if (!runtime.empty() && own_folder(runtime) && private_folder(runtime + "/kalvora"))
        return aus_utf8(runtime + "/kalvora/");
    std::string base = folder_from("TMPDIR");
    if (base.empty()) base = "/tmp";
    const std::string usual = base + "/kalvora-" + std::to_string(geteuid());
    if (private_folder(usual)) return aus_utf8(usual + "/");
    // Somebody stands in the way: one of our own with a name that nobody can know before.
    if (own_temp_.empty() || !private_folder(own_temp_)) {
        own_temp_ = usual + "-XXXXXX";
        if (!mkdtemp(own_temp_.data())) own_temp_.clear();
    }
    return own_temp_.empty() ? Text() : aus_utf8(own_temp_ + "/");
}

Locale PosixEnvironment::locale() {
    return Gebietsschema(first_set({"LC_ALL", "LC_TIME", "LANG"}),
                         first_set({"LC_ALL", "LC_NUMERIC", "LANG"}));
}

std::uint32_t PosixEnvironment::random_seed() {
    return std::random_device{}();
}

bool PosixEnvironment::lock_instance(const Text& path) {
    if (locks_.contains(path)) return true;
    const int handle = ::open(zu_utf8(path).c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NONBLOCK, 0600);
    if (handle < 0) return true;
    int result = flock(handle, LOCK_EX | LOCK_NB);
    while (result != 0 && errno == EINTR)
        result = flock(handle, LOCK_EX | LOCK_NB);
    if (result != 0 && errno == EWOULDBLOCK) {
        ::close(handle);
        return false;
    }
    locks_.emplace(path, handle);
    return true;
}

} // namespace kalvora
