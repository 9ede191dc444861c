// What the program asks of a file system, call by call, so that a test can refuse, cut short or end the
// program at each of them. Paths are absolute and native ("/srv/x/Data/"); folders end in "/".
// Nothing here throws: every call says its fault as a number (52 to 76).
#pragma once

#include <cassert>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string_view>
#include <vector>

#include "base/fehler.h"
#include "base/text.h"

namespace kalvora {

// A value or the number of the fault that stood in its way. Whoever asks a fault for its value all the same
// gets it thrown.
template <class T>
class [[nodiscard]] Ergebnis {
public:
    Ergebnis(T wert) : wert_(std::move(wert)) {}
    static Ergebnis fehler(int nummer) { return Ergebnis(nummer, 0); }
    explicit operator bool() const { return nummer_ == 0; }
    int nummer() const { return nummer_; }
    T& operator*() {
        verlangen();
        return *wert_;
    }
    const T& operator*() const {
        verlangen();
        return *wert_;
    }
    T* operator->() { return &**this; }
    const T* operator->() const { return &**this; }

private:
    Ergebnis(int nummer, int) : nummer_(nummer) { assert(nummer != 0); }
    void verlangen() const {
        if (!wert_) throw Laufzeitfehler(nummer_, u"Der Zugriff ist gescheitert");
    }
    std::optional<T> wert_;
    int nummer_ = 0;
};

// Success is 0.
using Fehlercode = int;

// Time stamps are compared for equality only, never for order across machines; 0 is "no file".
using Zeitstempel = std::int64_t; // nanoseconds since 1970-01-01 UTC

struct FileInfo {
    bool folder = false;
    std::uint64_t size = 0;
    Zeitstempel time = 0;
    unsigned mode = 0;
    unsigned owner = 0;
    unsigned group = 0;
};

enum class OpenMode {
    Read,
    Append,    // created when missing; also readable, so that the end can be looked at
    Extend,    // the same, but a missing file is a fault (53)
    CreateNew, // fails with 58 when something stands there
    Overwrite, // in place, created when missing; only behind a whole, synced copy
};

class FileSystem {
public:
    using Handle = int;
    virtual ~FileSystem() = default;

    virtual Ergebnis<Handle> open(const Text& path, OpenMode mode) = 0;
    virtual Ergebnis<std::size_t> read(Handle, char* buffer, std::size_t size) = 0; // 0 at the end
    virtual Ergebnis<std::size_t> read_at(Handle, std::uint64_t offset, char* buffer, std::size_t size) = 0;
    virtual Ergebnis<std::size_t> write(Handle, std::string_view bytes) = 0; // may be short
    [[nodiscard]] virtual Fehlercode sync(Handle) = 0;                       // "not supported" is success
    [[nodiscard]] virtual Fehlercode truncate(Handle, std::uint64_t size) = 0;
    [[nodiscard]] virtual Fehlercode
    copy_rights(Handle, const FileInfo& from) = 0; // mode and group, as far as allowed
    virtual Ergebnis<FileInfo> info(Handle) = 0;
    [[nodiscard]] virtual Fehlercode close(Handle) = 0;

    virtual Ergebnis<FileInfo> info(const Text& path) = 0;
    [[nodiscard]] virtual Fehlercode rename(const Text& from, const Text& to) = 0; // replaces `to`
    // `to` appears with the content of `from` only if nothing stood there (58 otherwise); `from` is gone
    // then.
    [[nodiscard]] virtual Fehlercode rename_new(const Text& from, const Text& to) = 0;
    [[nodiscard]] virtual Fehlercode remove(const Text& path) = 0; // a file, write protection notwithstanding
    [[nodiscard]] virtual Fehlercode remove_folder(const Text& path) = 0; // empty folders only
    [[nodiscard]] virtual Fehlercode make_folder(const Text& path) = 0;   // one level
    // Names of a folder, without "." and "..", sorted; a folder that cannot be listed is a fault.
    virtual Ergebnis<std::vector<Text>> list(const Text& folder) = 0;
    [[nodiscard]] virtual Fehlercode change_folder(const Text& folder) = 0;
    virtual Text current_folder() = 0;
    // The folder's path without symbolic links, ending in "/". A link that leads nowhere is a fault of its
    // own (52): what it stands for exists, but not here and now.
    virtual Ergebnis<Text> real_folder(const Text& folder) = 0;
    // Is the name itself a symbolic link, wherever it leads? The other calls follow it.
    virtual Ergebnis<bool> is_link(const Text& path) = 0;

    // A while goes by, for what a server refuses at one moment and grants at the next.
    virtual void wait(double seconds) = 0;
    // Makes a call that may ask a disk and is none of these in the same way as these.
    virtual void carry_out(const std::function<void()>& call) { call(); }
};

bool Datei_vorhanden(FileSystem& fs, const Text& pfad);
bool Ordner_vorhanden(FileSystem& fs, const Text& pfad);

} // namespace kalvora
