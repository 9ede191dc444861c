#include "files/whole_file.h"

#include <algorithm>

#include "files/ordner.h"

namespace kalvora {

namespace {

constexpr int UMBENENNEN_VERSUCHE = 5;
constexpr double UMBENENNEN_PAUSE = 0.2; // seconds; a scanner or another client lets go of the name by then

// Closes on every way out; the road of success closes by hand and reads the result.
class OffeneDatei {
public:
    OffeneDatei(FileSystem& fs, FileSystem::Handle h) : fs_(fs), h_(h) {}
    ~OffeneDatei() {
        if (offen_) fs_.close(h_);
    }
    OffeneDatei(const OffeneDatei&) = delete;
    OffeneDatei& operator=(const OffeneDatei&) = delete;
    FileSystem::Handle operator*() const { return h_; }
    Fehlercode schließen() {
        offen_ = false;
        return fs_.close(h_);
    }

private:
    FileSystem& fs_;
    FileSystem::Handle h_;
    bool offen_ = true;
};

} // namespace

Ergebnis<Dateiinhalt> Dateiwerk::lesen(const Text& pfad, Dateiinhalt inhalt) const {
    const auto h = fs_.open(pfad, OpenMode::Read);
    if (!h) return Ergebnis<Dateiinhalt>::fehler(h.nummer());
    OffeneDatei datei(fs_, *h);
    const auto info = fs_.info(*datei);
    if (!info) return Ergebnis<Dateiinhalt>::fehler(info.nummer());
    inhalt.info = *info;
    inhalt.größe = 0;
    const auto nötig = static_cast<std::size_t>(info->size) + 1; // one more byte tells the end in one read
    if (inhalt.platz < nötig) {
        inhalt.bytes = std::make_unique_for_overwrite<char[]>(nötig);
        inhalt.platz = nötig;
    }
    for (;;) {
        const auto n = fs_.read(*datei, inhalt.bytes.get() + inhalt.größe, inhalt.platz - inhalt.größe);
        if (!n) return Ergebnis<Dateiinhalt>::fehler(n.nummer());
        if (*n == 0) break;
        inhalt.größe += *n;
        if (inhalt.größe < inhalt.platz) continue;
        // The file grew while it was read: go on with more room.
        inhalt.platz = inhalt.platz * 2 + 4096;
        auto größer = std::make_unique_for_overwrite<char[]>(inhalt.platz);
        std::copy_n(inhalt.bytes.get(), inhalt.größe, größer.get());
        inhalt.bytes = std::move(größer);
    }
    datei.schließen(); // nothing was written: its result says nothing
    return inhalt;
}

Ergebnis<FileInfo> Dateiwerk::stand(const Text& pfad) const {
    const auto h = fs_.open(pfad, OpenMode::Read);
    if (!h) return Ergebnis<FileInfo>::fehler(h.nummer());
    OffeneDatei datei(fs_, *h);
    return fs_.info(*datei);
}

Fehlercode Dateiwerk::alles_schreiben(FileSystem::Handle h, std::string_view bytes) const {
    while (!bytes.empty()) {
        const auto n = fs_.write(h, bytes);
        if (!n) return n.nummer();
        if (*n == 0) return FEHLER_VOLL;
        bytes.remove_prefix(*n);
    }
    return 0;
}

Ergebnis<Dateiwerk::Anhang> Dateiwerk::anhängen(const Text& pfad, std::string_view bytes,
                                                bool nur_bestehende) const {
    using E = Ergebnis<Anhang>;
    const auto h = fs_.open(pfad, nur_bestehende ? OpenMode::Extend : OpenMode::Append);
    if (!h) return E::fehler(h.nummer());
    OffeneDatei datei(fs_, *h);
    const auto vorher = fs_.info(*datei);
    if (!vorher) return E::fehler(vorher.nummer());
    if (vorher->size == 0 && nur_bestehende) return E::fehler(FEHLER_NICHT_GEFUNDEN);
    if (vorher->size == 0) fs_.copy_rights(*datei, Rechte_neuer_Datei(pfad));
    std::string zeilen;
    if (vorher->size > 0) {
        char letztes = '\n';
        const auto n = fs_.read_at(*datei, vorher->size - 1, &letztes, 1);
        if (!n) return E::fehler(n.nummer());
        if (*n == 1 && letztes != '\n') zeilen = letztes == '\r' ? "\n" : "\r\n";
    }
    const auto kopf = Kopf(*datei);
    if (!kopf) return E::fehler(kopf.nummer());
    zeilen += bytes;
    const auto n = fs_.write(*datei, zeilen);
    if (!n || *n < zeilen.size()) {
        Stück_zurücknehmen(*datei, vorher->size, zeilen);
        return E::fehler(n ? FEHLER_VOLL : n.nummer());
    }
    if (const Fehlercode f = fs_.sync(*datei)) return E::fehler(f);
    const auto nachher = fs_.info(*datei);
    if (!nachher) return E::fehler(nachher.nummer());
    if (const Fehlercode f = datei.schließen()) return E::fehler(f);
    return Anhang{vorher->size, *nachher, *kopf};
}

Ergebnis<std::string> Dateiwerk::Kopf(FileSystem::Handle h) const {
    std::string kopf(KOPFBYTES, '\0');
    const auto n = fs_.read_at(h, 0, kopf.data(), kopf.size());
    if (!n) return Ergebnis<std::string>::fehler(n.nummer());
    kopf.resize(*n);
    return kopf;
}

// A call that failed may have left a piece all the same. Only our own piece goes: somebody else's line may
// stand in its place or behind it.
void Dateiwerk::Stück_zurücknehmen(FileSystem::Handle h, std::uint64_t ab, std::string_view bytes) const {
    const auto jetzt = fs_.info(h);
    if (!jetzt || jetzt->size <= ab || jetzt->size - ab >= bytes.size()) return;
    std::string stück(static_cast<std::size_t>(jetzt->size - ab), '\0');
    const auto n = fs_.read_at(h, ab, stück.data(), stück.size());
    if (n && *n == stück.size() && bytes.starts_with(stück)) fs_.truncate(h, ab);
}

Text Dateiwerk::nebendatei(const Text& pfad) const {
    return ParentDir(pfad) + u"." + Dateiname_aus_Pfad(pfad) + u"." + kennung_ + u".neu";
}

Fehlercode Dateiwerk::in_nebendatei(const Text& neben, std::string_view bytes,
                                    const FileInfo* vorbild) const {
    auto h = fs_.open(neben, OpenMode::CreateNew);
    if (!h && h.nummer() == FEHLER_EXISTIERT) { // left behind by an earlier process of the same number
        fs_.remove(neben);
        h = fs_.open(neben, OpenMode::CreateNew);
    }
    if (!h) return h.nummer();
    OffeneDatei datei(fs_, *h);
    Fehlercode f = alles_schreiben(*datei, bytes);
    if (!f) fs_.copy_rights(*datei, vorbild ? *vorbild : Rechte_neuer_Datei(neben));
    if (!f) f = fs_.sync(*datei);
    const Fehlercode beim_schließen = datei.schließen();
    if (!f) f = beim_schließen;
    if (f) fs_.remove(neben);
    return f;
}

// Where the folder lets the group or others write, its new files let them append: a month's first save must
// not shut the colleagues out.
FileInfo Dateiwerk::Rechte_neuer_Datei(const Text& pfad) const {
    const auto ordner = fs_.info(ParentDir(pfad));
    FileInfo rechte;
    rechte.mode = 0600 | (ordner ? ordner->mode & 0066 : 0044);
    rechte.group = ordner ? ordner->group : 0;
    return rechte;
}

// A share may carry a rename out and lose the answer: the sibling is gone and the file holds its bytes.
bool Dateiwerk::angekommen(const Text& neben, const Text& pfad, std::string_view bytes) const {
    const auto rest = fs_.info(neben);
    if (rest || rest.nummer() != FEHLER_NICHT_GEFUNDEN) return false;
    const auto da = lesen(pfad);
    return da && da->sicht() == bytes;
}

Fehlercode Dateiwerk::unterschieben(const Text& neben, const Text& pfad, std::string_view bytes) const {
    Fehlercode f = 0;
    for (int versuch = 1; versuch <= UMBENENNEN_VERSUCHE; ++versuch) {
        f = fs_.rename(neben, pfad);
        if (!f || angekommen(neben, pfad, bytes)) return 0;
        if (versuch < UMBENENNEN_VERSUCHE) uhr_.sleep(UMBENENNEN_PAUSE);
    }
    // Some servers refuse to rename over a file that somebody reads. The sibling is whole and synced: it
    // stays as the copy behind which the old file may be written in place.
    if (!fs_.info(neben)) return f;
    auto h = fs_.open(pfad, OpenMode::Overwrite);
    if (!h) {
        fs_.remove(neben); // nothing was touched: the old state stands
        return f;
    }
    OffeneDatei datei(fs_, *h);
    Fehlercode g = alles_schreiben(*datei, bytes);
    if (!g) g = fs_.truncate(*datei, bytes.size());
    if (!g) g = fs_.sync(*datei);
    const Fehlercode beim_schließen = datei.schließen();
    if (!g) g = beim_schließen;
    if (!g) fs_.remove(neben);
    return g;
}

Fehlercode Dateiwerk::ersetzen(const Text& pfad, std::string_view bytes) const {
    const auto alt = fs_.info(pfad);
    if (!alt && alt.nummer() != FEHLER_NICHT_GEFUNDEN) return alt.nummer();
    if (alt && alt->folder) return FEHLER_SCHREIBSCHUTZ;
    const Text neben = nebendatei(pfad);
    if (const Fehlercode f = in_nebendatei(neben, bytes, alt ? &*alt : nullptr)) return f;
    return unterschieben(neben, pfad, bytes);
}

Fehlercode Dateiwerk::neu_anlegen(const Text& pfad, std::string_view bytes) const {
    const Text neben = nebendatei(pfad);
    if (const Fehlercode f = in_nebendatei(neben, bytes, nullptr)) return f;
    const Fehlercode f = fs_.rename_new(neben, pfad);
    if (f && angekommen(neben, pfad, bytes)) return 0;
    if (f) fs_.remove(neben);
    return f;
}

} // namespace kalvora
