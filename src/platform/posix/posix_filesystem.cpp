#include "platform/posix/posix_filesystem.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <climits>
#include <cstdio>
#include <dirent.h>
#include <fcntl.h>
#include <linux/magic.h>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <sys/vfs.h>
#include <thread>
#include <unistd.h>

#include "platform/posix/posix_fehler.h"

namespace kalvora {

namespace {

constexpr unsigned CLAIM_PAUSE = 100'000; // microseconds
constexpr int CLAIM_LOOKS = 150;          // 15 s: longer than a server is ever silent to a living process

// Repeats a call as long as a signal interrupts it.
template <class F>
auto repeated(F call) {
    auto result = call();
    while (result < 0 && errno == EINTR)
        result = call();
    return result;
}

// A name with a NUL in it would be cut by the system and mean another file.
bool possible(const Text& path) {
    return path.find(u'\0') == Text::npos;
}

std::string folder_of(std::string path) {
    while (path.size() > 1 && path.back() == '/')
        path.pop_back();
    const std::size_t slash = path.rfind('/');
    if (slash == std::string::npos) return ".";
    return path.substr(0, slash + 1);
}

bool on_share(const struct statfs& where) {
    constexpr std::array<unsigned, 4> SHARES{NFS_SUPER_MAGIC, SMB_SUPER_MAGIC, CIFS_SUPER_MAGIC,
                                             SMB2_SUPER_MAGIC};
    return std::find(SHARES.begin(), SHARES.end(), static_cast<unsigned>(where.f_type)) != SHARES.end();
}

bool on_disk(const struct statfs& where) {
    constexpr unsigned XFS = 0x58465342; // not among the system's names
    constexpr std::array<unsigned, 6> DISKS{EXT4_SUPER_MAGIC, BTRFS_SUPER_MAGIC, XFS,
                                            TMPFS_MAGIC,      F2FS_SUPER_MAGIC,  OVERLAYFS_SUPER_MAGIC};
    return std::find(DISKS.begin(), DISKS.end(), static_cast<unsigned>(where.f_type)) != DISKS.end();
}

// An input/output error of a share, or of something that does not even say what it is, is a lost network.
Fehlercode path_fault(int error, const std::string& path) {
    struct stat folder {};
    struct statfs where {};
    if (error == ENOENT && stat(folder_of(path).c_str(), &folder) != 0 &&
        (errno == ENOENT || errno == ENOTDIR))
        return FEHLER_ORDNER;
    if (error == EIO && (statfs(folder_of(path).c_str(), &where) != 0 || on_share(where))) return FEHLER_NETZ;
    return fault_of(error);
}

Fehlercode handle_fault(int error, int handle) {
    struct statfs where {};
    if (error == EIO && (fstatfs(handle, &where) != 0 || on_share(where))) return FEHLER_NETZ;
    return fault_of(error);
}

// The same for a call whose object is a folder: a missing one is 76.
Fehlercode folder_fault(int error, const std::string& path) {
    return error == ENOENT ? static_cast<Fehlercode>(FEHLER_ORDNER) : path_fault(error, path);
}

bool not_supported(int error) {
    return error == EINVAL || error == ENOTSUP || error == ENOSYS; // EOPNOTSUPP is ENOTSUP here
}

FileInfo info_of(const struct stat& s) {
    FileInfo info;
    info.folder = S_ISDIR(s.st_mode);
    info.size = static_cast<std::uint64_t>(s.st_size);
    info.time = static_cast<Zeitstempel>(s.st_mtim.tv_sec) * 1'000'000'000 + s.st_mtim.tv_nsec;
    if (info.time == 0) info.time = 1; // 0 means "no file"
    info.mode = s.st_mode & 07777;
    info.owner = s.st_uid;
    info.group = s.st_gid;
    return info;
}

int flags_of(OpenMode mode) {
    switch (mode) {
    case OpenMode::Read: return O_RDONLY;
    case OpenMode::Append: return O_RDWR | O_APPEND | O_CREAT;
    case OpenMode::Extend: return O_RDWR | O_APPEND;
    case OpenMode::CreateNew: return O_RDWR | O_CREAT | O_EXCL;
    case OpenMode::Overwrite: return O_RDWR | O_CREAT;
    }
    return O_RDONLY;
}

// O_NONBLOCK keeps a pipe or a device from holding the program. On a file that a server has lent out the
// same flag makes the call fail where it would wait a moment; a plain file is therefore opened again.
int open_handle(const std::string& path, int flags) {
    flags |= O_CLOEXEC | O_NOCTTY;
    const int handle = repeated([&] { return ::open(path.c_str(), flags | O_NONBLOCK, 0666); });
    if (handle >= 0 || errno != EWOULDBLOCK) return handle;
    struct stat s {};
    if (stat(path.c_str(), &s) == 0 && !S_ISREG(s.st_mode)) {
        errno = ENODEV;
        return -1;
    }
    return repeated([&] { return ::open(path.c_str(), flags, 0666); });
}

// Makes a changed name last; a folder that cannot be synced loses nothing but that.
void sync_folder(const std::string& path) {
    const int folder =
        repeated([&] { return ::open(folder_of(path).c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
    if (folder < 0) return;
    repeated([&] { return ::fsync(folder); });
    ::close(folder);
}

Fehlercode renaming_fault(int error, const std::string& from, const std::string& to) {
    const Fehlercode fault = path_fault(error, from);
    return fault == FEHLER_NICHT_GEFUNDEN ? path_fault(error, to) : fault;
}

bool same_file(const std::string& a, const std::string& b) {
    struct stat sa {};
    struct stat sb {};
    return stat(a.c_str(), &sa) == 0 && stat(b.c_str(), &sb) == 0 && sa.st_dev == sb.st_dev &&
           sa.st_ino == sb.st_ino;
}

bool stands(const std::string& path) {
    struct stat s {};
    return lstat(path.c_str(), &s) == 0;
}

// A claim to a name that is to be taken: a dot-named file that no mask matches, made exclusively.
std::string claim_name(const std::string& path, int number) {
    const std::size_t slash = path.rfind('/') + 1;
    return path.substr(0, slash) + "." + path.substr(slash) + "." + std::to_string(number) + ".claim";
}

// Takes the write protection off a plain file; true if there was one.
bool made_writable(const std::string& path, mode_t& before) {
    struct stat s {};
    if (lstat(path.c_str(), &s) != 0 || !S_ISREG(s.st_mode) || (s.st_mode & S_IWUSR) != 0) return false;
    before = s.st_mode & 07777;
    return chmod(path.c_str(), before | S_IWUSR) == 0;
}

} // namespace

Ergebnis<FileSystem::Handle> PosixFileSystem::open(const Text& path, OpenMode mode) {
    if (!possible(path)) return Ergebnis<Handle>::fehler(FEHLER_NETZ);
    const std::string name = zu_utf8(path);
    const int handle = open_handle(name, flags_of(mode));
    if (handle < 0) return Ergebnis<Handle>::fehler(path_fault(errno, name));
    struct stat s {};
    if (fstat(handle, &s) != 0) {
        const Fehlercode fault = handle_fault(errno, handle);
        ::close(handle);
        return Ergebnis<Handle>::fehler(fault);
    }
    if (S_ISREG(s.st_mode)) {
        // What another workstation has written must be seen, not what this one has kept of the file.
        if (mode == OpenMode::Read && lies_on_share(handle, s.st_dev))
            posix_fadvise(handle, 0, 0, POSIX_FADV_DONTNEED);
        return handle;
    }
    ::close(handle);
    return Ergebnis<Handle>::fehler(FEHLER_SCHREIBSCHUTZ);
}

// On a share the question itself goes to the server. A disk's device is never one; of the others only a yes
// is remembered, since numbers are given anew: a wrong no would show old bytes, a wrong yes only reads again.
bool PosixFileSystem::lies_on_share(int handle, std::uint64_t device) {
    if (major(device) != 0) return false;
    if (device == share_) return true;
    struct statfs where {};
    if (fstatfs(handle, &where) != 0 || !on_share(where)) return false;
    share_ = device;
    return true;
}

Ergebnis<std::size_t> PosixFileSystem::read(Handle handle, char* buffer, std::size_t size) {
    const ssize_t n = repeated([&] { return ::read(handle, buffer, size); });
    if (n < 0) return Ergebnis<std::size_t>::fehler(handle_fault(errno, handle));
    return static_cast<std::size_t>(n);
}

Ergebnis<std::size_t> PosixFileSystem::read_at(Handle handle, std::uint64_t offset, char* buffer,
                                               std::size_t size) {
    const ssize_t n = repeated([&] { return pread(handle, buffer, size, static_cast<off_t>(offset)); });
    if (n < 0) return Ergebnis<std::size_t>::fehler(handle_fault(errno, handle));
    return static_cast<std::size_t>(n);
}

Ergebnis<std::size_t> PosixFileSystem::write(Handle handle, std::string_view bytes) {
    const ssize_t n = repeated([&] { return ::write(handle, bytes.data(), bytes.size()); });
    if (n < 0) return Ergebnis<std::size_t>::fehler(handle_fault(errno, handle));
    return static_cast<std::size_t>(n);
}

Fehlercode PosixFileSystem::sync(Handle handle) {
    if (repeated([&] { return fdatasync(handle); }) == 0 || not_supported(errno)) return 0;
    return handle_fault(errno, handle);
}

Fehlercode PosixFileSystem::truncate(Handle handle, std::uint64_t size) {
    const int result = repeated([&] { return ftruncate(handle, static_cast<off_t>(size)); });
    return result == 0 ? 0 : handle_fault(errno, handle);
}

Fehlercode PosixFileSystem::copy_rights(Handle handle, const FileInfo& from) {
    struct stat s {};
    if (fstat(handle, &s) != 0) return handle_fault(errno, handle);
    // The group first: changing it may take bits off the mode. Who may not give it keeps his own.
    if (s.st_gid != from.group && fchown(handle, static_cast<uid_t>(-1), from.group) != 0) errno = 0;
    if ((s.st_mode & 07777) == from.mode && s.st_gid == from.group) return 0;
    if (fchmod(handle, from.mode & 07777) == 0) return 0;
    const bool refused = errno == EPERM || errno == EACCES || not_supported(errno);
    return refused ? 0 : handle_fault(errno, handle);
}

Ergebnis<FileInfo> PosixFileSystem::info(Handle handle) {
    struct stat s {};
    if (fstat(handle, &s) != 0) return Ergebnis<FileInfo>::fehler(handle_fault(errno, handle));
    return info_of(s);
}

Fehlercode PosixFileSystem::close(Handle handle) {
    // After an interrupted close the handle is gone all the same; calling again could hit another file.
    if (::close(handle) == 0 || errno == EINTR) return 0;
    return fault_of(errno);
}

Ergebnis<FileInfo> PosixFileSystem::info(const Text& path) {
    if (!possible(path)) return Ergebnis<FileInfo>::fehler(FEHLER_NETZ);
    const std::string name = zu_utf8(path);
    struct stat s {};
    if (stat(name.c_str(), &s) != 0) return Ergebnis<FileInfo>::fehler(path_fault(errno, name));
    return info_of(s);
}

Fehlercode PosixFileSystem::rename(const Text& from, const Text& to) {
    if (!possible(from) || !possible(to)) return FEHLER_NETZ;
    const std::string old_name = zu_utf8(from);
    const std::string new_name = zu_utf8(to);
    if (::rename(old_name.c_str(), new_name.c_str()) != 0) return renaming_fault(errno, old_name, new_name);
    sync_folder(new_name);
    return 0;
}

int PosixFileSystem::rename_exclusively(const std::string& from, const std::string& to) {
    return renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0 ? 0 : errno;
}

int PosixFileSystem::link_exclusively(const std::string& from, const std::string& to) {
    if (link(from.c_str(), to.c_str()) == 0) return 0;
    const int error = errno;
    // A lost answer of the server makes the client ask twice, and the second time the name is taken.
    return error == EEXIST && same_file(from, to) ? 0 : error;
}

void PosixFileSystem::claim_pause() {
    usleep(CLAIM_PAUSE);
}

// Watches somebody else's claim: until the name is taken, the claim is gone, or it has stood so long that
// whoever made it must be dead.
PosixFileSystem::Claim PosixFileSystem::watch_claim(const std::string& claim, const std::string& name) {
    struct stat first {};
    for (int look = 0; look < CLAIM_LOOKS; ++look) {
        struct stat now {};
        if (stands(name)) return Claim::Name_taken;
        if (lstat(claim.c_str(), &now) != 0) return Claim::Gone;
        if (now.st_ino != first.st_ino || now.st_mtim.tv_sec != first.st_mtim.tv_sec ||
            now.st_mtim.tv_nsec != first.st_mtim.tv_nsec)
            look = 0; // another one
        first = now;
        claim_pause();
    }
    return Claim::Dead;
}

// The last way, where a rename cannot be told to replace nothing and there are no links. Whoever has made the
// claim looks whether the name is free and renames; all others wait for him. A dead process's claim is not
// taken away but followed by one of the next number: only one can make that, whereas of two that clear the
// way one would clear away the other's fresh claim. All go when the name stands, for then none matters.
int PosixFileSystem::rename_claimed(const std::string& from, const std::string& to) {
    int number = 0;
    for (;;) {
        const std::string claim = claim_name(to, number);
        const int handle =
            repeated([&] { return ::open(claim.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666); });
        if (handle >= 0) {
            ::close(handle);
            break;
        }
        if (errno != EEXIST) return errno;
        const Claim state = watch_claim(claim, to);
        if (state == Claim::Name_taken) return EEXIST;
        if (state == Claim::Dead) ++number;
    }
    int error = stands(to) ? EEXIST : 0;
    if (error == 0 && ::rename(from.c_str(), to.c_str()) != 0) error = errno;
    for (int n = stands(to) ? 0 : number; n <= number; ++n)
        unlink(claim_name(to, n).c_str());
    return error;
}

Fehlercode PosixFileSystem::rename_new(const Text& from, const Text& to) {
    if (!possible(from) || !possible(to)) return FEHLER_NETZ;
    const std::string old_name = zu_utf8(from);
    const std::string new_name = zu_utf8(to);
    int error = rename_exclusively(old_name, new_name);
    if (not_supported(error)) {
        error = link_exclusively(old_name, new_name);
        if (not_supported(error) || error == EPERM || error == EMLINK)
            error = rename_claimed(old_name, new_name);
        else if (error == 0) // `to` stands whole; a first name that cannot be taken away does not undo that
            unlink(old_name.c_str());
    }
    if (error != 0) return renaming_fault(error, old_name, new_name);
    sync_folder(new_name);
    return 0;
}

Fehlercode PosixFileSystem::remove(const Text& path) {
    if (!possible(path)) return FEHLER_NETZ;
    const std::string name = zu_utf8(path);
    if (unlink(name.c_str()) == 0) return 0;
    int error = errno;
    mode_t before = 0;
    if ((error == EACCES || error == EPERM) && made_writable(name, before)) {
        if (unlink(name.c_str()) == 0) return 0;
        error = errno;
        if (chmod(name.c_str(), before) != 0) errno = 0; // the first fault is the one to tell
    }
    return path_fault(error, name);
}

Fehlercode PosixFileSystem::remove_folder(const Text& path) {
    if (!possible(path)) return FEHLER_NETZ;
    const std::string name = zu_utf8(path);
    return rmdir(name.c_str()) == 0 ? 0 : folder_fault(errno, name);
}

Fehlercode PosixFileSystem::make_folder(const Text& path) {
    if (!possible(path)) return FEHLER_NETZ;
    const std::string name = zu_utf8(path);
    if (mkdir(name.c_str(), 0777) != 0) return folder_fault(errno, name);
    share_with_group(name);
    return 0;
}

// Where others may write, they may write in the new folder too: it is theirs as well, whatever this user's
// umask says. In a folder like /tmp, where everybody keeps to his own, nothing is opened.
void PosixFileSystem::share_with_group(const std::string& folder) {
    struct stat above {};
    const std::string parent = folder_of(folder.back() == '/' ? folder.substr(0, folder.size() - 1) : folder);
    if (stat(parent.c_str(), &above) != 0 || (above.st_mode & S_ISVTX) != 0) return;
    if ((above.st_mode & (S_IWGRP | S_IWOTH)) == 0) return;
    if (chown(folder.c_str(), static_cast<uid_t>(-1), above.st_gid) != 0) return;
    (void)chmod(folder.c_str(), above.st_mode & 02777);
}

Ergebnis<std::vector<Text>> PosixFileSystem::list(const Text& folder) {
    using Namen = Ergebnis<std::vector<Text>>;
    if (!possible(folder)) return Namen::fehler(FEHLER_NETZ);
    const std::string name = zu_utf8(folder);
    DIR* dir = opendir(name.c_str());
    if (!dir) return Namen::fehler(folder_fault(errno, name));
    std::vector<Text> names;
    errno = 0;
    while (const dirent* entry = readdir(dir)) {
        const std::string_view found = entry->d_name;
        if (found != "." && found != "..") names.push_back(aus_utf8(found));
        errno = 0;
    }
    const int error = errno;
    closedir(dir);
    if (error != 0) return Namen::fehler(folder_fault(error, name));
    std::sort(names.begin(), names.end());
    return names;
}

Fehlercode PosixFileSystem::change_folder(const Text& folder) {
    if (!possible(folder)) return FEHLER_NETZ;
    const std::string name = zu_utf8(folder);
    return chdir(name.c_str()) == 0 ? 0 : folder_fault(errno, name);
}

Text PosixFileSystem::current_folder() {
    std::array<char, PATH_MAX> buffer{};
    if (!getcwd(buffer.data(), buffer.size()) || buffer[0] != '/') return {}; // gone, or outside the tree
    Text folder = aus_utf8(buffer.data());
    if (folder.back() != u'/') folder += u'/';
    return folder;
}

Ergebnis<Text> PosixFileSystem::real_folder(const Text& folder) {
    if (!possible(folder)) return Ergebnis<Text>::fehler(FEHLER_NETZ);
    std::string name = zu_utf8(folder);
    std::array<char, PATH_MAX> buffer{};
    if (realpath(name.c_str(), buffer.data())) {
        Text real = aus_utf8(buffer.data());
        if (real.back() != u'/') real += u'/';
        return real;
    }
    const int error = errno;
    while (name.size() > 1 && name.back() == '/')
        name.pop_back(); // with its separator the name would be followed
    struct stat s {};
    const bool dangling = error == ENOENT && lstat(name.c_str(), &s) == 0 && S_ISLNK(s.st_mode);
    return Ergebnis<Text>::fehler(dangling ? FEHLER_NETZ : folder_fault(error, name));
}

Ergebnis<bool> PosixFileSystem::is_link(const Text& path) {
    if (!possible(path)) return Ergebnis<bool>::fehler(FEHLER_NETZ);
    const std::string name = zu_utf8(path);
    struct stat s {};
    if (lstat(name.c_str(), &s) != 0) return Ergebnis<bool>::fehler(path_fault(errno, name));
    return S_ISLNK(s.st_mode);
}

void PosixFileSystem::wait(double seconds) {
    std::this_thread::sleep_for(std::chrono::duration<double>(seconds));
}

bool PosixFileSystem::on_local_disk(const Text& folder) const {
    struct statfs where {};
    return possible(folder) && statfs(zu_utf8(folder).c_str(), &where) == 0 && on_disk(where);
}

} // namespace kalvora
