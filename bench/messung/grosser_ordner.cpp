#include "messung/grosser_ordner.h"

#include <filesystem>
#include <fstream>
#include <stdexcept>

#include "files/zeilen.h"

namespace kalvora::bench {

namespace {

constexpr int LOGMONATE = 24;
constexpr std::size_t LOGBYTES = 3'800'000; // of a month: a dozen records of each employee

void Log_schreiben(const std::string& pfad) {
    std::string bytes;
    bytes.reserve(LOGBYTES + 100);
    Schlüsselquelle schlüssel(5);
    for (int nr = 0; bytes.size() < LOGBYTES; ++nr)
        Zeile_verschlüsseln(
            bytes, "16.11.26 12:00:00|benutzer" + std::to_string(nr % 5000) + "|benutzer|U|161126|171126",
            schlüssel.nächster());
    std::ofstream datei(pfad, std::ios::binary);
    datei << bytes;
    if (!datei.flush()) throw std::runtime_error("cannot write " + pfad);
}

} // namespace

std::string großer_Ordner(Firmenlager& lager) {
    namespace fs = std::filesystem;
    const std::string ordner = lager.ordner().pfad() + "gross/Data/";
    if (fs::exists(ordner)) return ordner;
    fs::create_directories(ordner);
    fs::copy(zu_utf8(lager.Datenpfad(5000)), ordner, fs::copy_options::recursive);
    fs::remove_all(ordner + "Backups"); // of the starts that were measured before
    fs::create_directories(ordner + "Logs");
    for (int m = 0; m < LOGMONATE; ++m)
        Log_schreiben(ordner + "Logs/" + std::to_string(25 + m / 12) + (m % 12 < 9 ? "0" : "") +
                      std::to_string(m % 12 + 1) + " Kalvora.log");
    return ordner;
}

} // namespace kalvora::bench
