// The real file system. Nothing blocks on what is no plain file: pipes and devices are refused with 75.
// Overwrite keeps the old bytes: the writer cuts the file to its new length with truncate() at the end.
// On a share Read passes over what this workstation has kept of the file. A new folder is open to all who may
// write in the one above.
#pragma once

#include <atomic>

#include "platform/filesystem.h"

namespace kalvora {

class PosixFileSystem : public FileSystem {
public:
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
    Text current_folder() override;
    Ergebnis<Text> real_folder(const Text& folder) override;
    Ergebnis<bool> is_link(const Text& path) override;
    void wait(double seconds) override;

    // Does the folder lie on a disk of this computer, which always answers soon? No: a share, what a process
    // serves (FUSE), anything not known, a folder that is not there. May itself last.
    bool on_local_disk(const Text& folder) const;

protected:
    // The two ways to give a file a name that is free, each 0 or an errno. File systems differ in which of
    // them they know; a test takes them away one by one.
    virtual int rename_exclusively(const std::string& from, const std::string& to);
    virtual int link_exclusively(const std::string& from, const std::string& to);
    virtual void claim_pause(); // between two looks at somebody else's claim to a name

private:
    bool lies_on_share(int handle, std::uint64_t device);
    static void share_with_group(const std::string& folder);
    enum class Claim { Name_taken, Gone, Dead };
    Claim watch_claim(const std::string& claim, const std::string& name);
    int rename_claimed(const std::string& from, const std::string& to);

    std::atomic<std::uint64_t> share_{0}; // the device of the last share that was read; calls may be nested
};

} // namespace kalvora
