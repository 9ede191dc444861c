// A disk in memory. Several file systems on one disk are several workstations on one folder.
// Paths are absolute; folders are kept without their last "/", the root is "".
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>

#include "platform/filesystem.h"

namespace kalvora {

struct SpeicherDatei {
    std::string bytes;
    std::string gesichert; // what a power failure leaves: the bytes of the last sync
    FileInfo info;
};

class SpeicherPlatte {
public:
    SpeicherPlatte() { knoten_[u""] = ordner_knoten(); }

    // --- for the test: files as a whole, past every call and fault
    void schreibe(const Text& pfad, const std::string& bytes) {
        mache_ordner(oberhalb(pfad));
        auto& datei = knoten_[ohne_strich(pfad)];
        if (!datei) datei = std::make_shared<SpeicherDatei>(SpeicherDatei{{}, {}, {false, 0, 0, 0644, 0, 0}});
        datei->bytes = datei->gesichert = bytes;
        gestempelt(*datei);
    }
    void mache_ordner(const Text& pfad) {
        const Text name = ohne_strich(pfad);
        if (knoten_.contains(name)) return;
        mache_ordner(oberhalb(name));
        knoten_[name] = ordner_knoten();
    }
    std::optional<std::string> inhalt(const Text& pfad) const {
        const auto datei = finde(pfad);
        if (!datei || datei->info.folder) return std::nullopt;
        return datei->bytes;
    }
    bool gibt_es(const Text& pfad) const { return finde(pfad) != nullptr; }
    void entferne(const Text& pfad) { knoten_.erase(ohne_strich(pfad)); }
    void setze_rechte(const Text& pfad, unsigned mode) { knoten_.at(ohne_strich(pfad))->info.mode = mode; }
    void setze_stempel(const Text& pfad, Zeitstempel neu) { knoten_.at(ohne_strich(pfad))->info.time = neu; }
    // All files with their bytes: for "nothing has changed".
    std::map<Text, std::string> abbild() const {
        std::map<Text, std::string> alle;
        for (const auto& [pfad, datei] : knoten_)
            if (!datei->info.folder) alle[pfad] = datei->bytes;
        return alle;
    }
    // A disk of its own with the same files.
    std::shared_ptr<SpeicherPlatte> kopie() const {
        auto neu = std::make_shared<SpeicherPlatte>(*this);
        for (auto& [pfad, datei] : neu->knoten_)
            datei = std::make_shared<SpeicherDatei>(*datei);
        return neu;
    }
    // Power failure: what was not synced is lost, names stay.
    void verliere_ungesichertes() {
        for (auto& [pfad, datei] : knoten_) {
            datei->bytes = datei->gesichert;
            datei->info.size = datei->bytes.size();
        }
    }

    Zeitstempel zeit = 1'794'830'400'000'000'000; // 16.11.2026 12:00 UTC; every change moves it on by 1 ms
    std::size_t frei = SIZE_MAX;                  // bytes that still fit
    // Like a share: an append goes where the end was when the file was opened.
    bool freigabe = false;

    // --- for the file system
    std::shared_ptr<SpeicherDatei> finde(const Text& pfad) const {
        const auto hit = knoten_.find(ohne_strich(pfad));
        return hit == knoten_.end() ? nullptr : hit->second;
    }
    std::map<Text, std::shared_ptr<SpeicherDatei>>& knoten() { return knoten_; }
    void gestempelt(SpeicherDatei& datei) {
        datei.info.size = datei.bytes.size();
        datei.info.time = zeit += 1'000'000;
    }
    static Text ohne_strich(Text pfad) {
        while (!pfad.empty() && pfad.back() == u'/')
            pfad.pop_back();
        return pfad;
    }
    static Text oberhalb(const Text& pfad) {
        const Text name = ohne_strich(pfad);
        const std::size_t strich = name.rfind(u'/');
        return strich == Text::npos ? Text() : name.substr(0, strich);
    }
    std::shared_ptr<SpeicherDatei> ordner_knoten() {
        return std::make_shared<SpeicherDatei>(
            SpeicherDatei{{}, {}, {true, 0, zeit += 1'000'000, 0755, 0, 0}});
    }

private:
    std::map<Text, std::shared_ptr<SpeicherDatei>> knoten_;
};

} // namespace kalvora
