// A fresh folder of the real file system, gone with the object.
#pragma once

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <stdexcept>
#include <string>

#include "base/text.h"

namespace kalvora {

class TempOrdner {
public:
    TempOrdner() {
        std::string muster = (std::filesystem::temp_directory_path() / "kalvora-test-XXXXXX").string();
        if (!mkdtemp(muster.data())) throw std::runtime_error("no temporary folder");
        ordner_ = muster;
        hier_ = std::filesystem::current_path();
    }
    ~TempOrdner() {
        std::error_code egal;
        std::filesystem::current_path(hier_, egal); // the program changes into its folders
        std::filesystem::remove_all(ordner_, egal);
    }
    TempOrdner(const TempOrdner&) = delete;
    TempOrdner& operator=(const TempOrdner&) = delete;

    const std::filesystem::path& ordner() const { return ordner_; }
    Text pfad() const { return aus_utf8(ordner_.string() + "/"); } // ends in "/"
    Text pfad(TextView name) const { return pfad() + Text(name); }

    // Bytes of a file below the folder; folders on the way are made.
    void schreibe(TextView name, const std::string& bytes) const {
        const std::filesystem::path ziel = ordner_ / zu_utf8(name);
        std::filesystem::create_directories(ziel.parent_path());
        std::ofstream datei(ziel, std::ios::binary | std::ios::trunc);
        datei << bytes;
        if (!datei.flush()) throw std::runtime_error("cannot write " + ziel.string());
    }
    std::string lies(TextView name) const {
        std::ifstream datei(ordner_ / zu_utf8(name), std::ios::binary);
        if (!datei) throw std::runtime_error("cannot read " + zu_utf8(name));
        return {std::istreambuf_iterator<char>(datei), {}};
    }
    bool gibt_es(TextView name) const { return std::filesystem::exists(ordner_ / zu_utf8(name)); }

private:
    std::filesystem::path ordner_, hier_;
};

} // namespace kalvora
