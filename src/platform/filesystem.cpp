#include "platform/filesystem.h"

namespace kalvora {

bool Datei_vorhanden(FileSystem& fs, const Text& pfad) {
    const auto stand = fs.info(pfad);
    return stand && !stand->folder;
}

bool Ordner_vorhanden(FileSystem& fs, const Text& pfad) {
    const auto stand = fs.info(pfad);
    return stand && stand->folder;
}

} // namespace kalvora
