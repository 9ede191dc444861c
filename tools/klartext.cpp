// kalvora-klartext: prints the plain lines of scrambled line files.
#include <fstream>
#include <iostream>
#include <string>

#include "base/cp1252.h"
#include "files/zeilen.h"

namespace {

using namespace kalvora;

const char* const HILFE = "kalvora-klartext FILE...\n"
                          "Prints the lines of Kalvora's data files and logs as plain text (UTF-8). Several\n"
                          "files stand below their names. Control characters show as \\xNN.\n";

// A damaged file must not control the terminal.
Text sichtbar(const Text& zeile) {
    constexpr TextView ZIFFERN = u"0123456789ABCDEF";
    Text aus;
    for (const char16_t c : zeile) {
        if (c >= 0x20 && (c < 0x7F || c > 0x9F))
            aus += c;
        else
            aus += Text(u"\\x") + ZIFFERN[c / 16 % 16] + ZIFFERN[c % 16];
    }
    return aus;
}

void ausgeben(std::string bytes) {
    Rohzeilen zeilen(bytes.data(), bytes.size());
    while (const auto zeile = zeilen.nächste()) {
        if (zeile->länge > 0)
            std::cout << zu_utf8(sichtbar(aus_cp1252(Zeile_entschlüsseln(zeile->anfang, zeile->länge))));
        std::cout << (zeile->mit_Ende ? "\n" : " (line end missing)\n");
    }
}

bool Datei_ausgeben(const char* pfad, bool mit_Namen) {
    std::ifstream datei(pfad, std::ios::binary);
    std::string bytes;
    char stück[65536];
    while (datei.read(stück, sizeof stück) || datei.gcount() > 0)
        bytes.append(stück, static_cast<std::size_t>(datei.gcount()));
    if (!datei.eof()) { // a folder can be opened, but not read
        std::cout.flush();
        std::cerr << "kalvora-klartext: cannot read " << pfad << '\n';
        return false;
    }
    if (mit_Namen) std::cout << "== " << pfad << '\n';
    ausgeben(std::move(bytes));
    return true;
}

} // namespace

int main(int argc, char** argv) {
    if (argc < 2 || std::string_view(argv[1]) == "--help") {
        (argc < 2 ? std::cerr : std::cout) << HILFE;
        return argc < 2 ? 1 : 0;
    }
    bool alle = true;
    for (int i = 1; i < argc; ++i)
        alle = Datei_ausgeben(argv[i], argc > 2) && alle;
    return alle && std::cout.flush() ? 0 : 1;
}
