#include "files/whole_file.h"

#include <algorithm>
#include <new>

#include "files/ordner.h"

namespace kalvora {

namespace {

constexpr int UMBENENNEN_VERSUCHE = 5;
constexpr double UMBENENNEN_PAUSE = 0.2; // seconds; a scanner or another client lets go of the name by then
constexpr int NEBENDATEI_VERSUCHE = 100; // names tried for a sibling
// The end of a line that its writer never finished: no stored line holds a NUL, so that readers can tell.
constexpr std::string_view ABGERISSEN("\0\r\n", 3);

// Closes on every way out; the road of success closes by hand and reads the result.
class OffeneDatei {
public:
    OffeneDatei(FileSystem& fs, FileSystem::Handle h) : fs_(fs), h_(h) {}
    ~OffeneDatei() {
        if (offen_) (void)fs_.close(h_); // a fault is told already
    }
    OffeneDatei(const OffeneDatei&) = delete;
    OffeneDatei& operator=(const OffeneDatei&) = delete;
    FileSystem::Handle operator*() const { return h_; }
    [[nodiscard]] Fehlercode schließen() {
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
        inhalt.bytes.reset(new (std::nothrow) char[nötig]);
        inhalt.platz = inhalt.bytes ? nötig : 0;
    }
    if (!inhalt.bytes) return Ergebnis<Dateiinhalt>::fehler(FEHLER_SPEICHER);
    for (;;) {
        const auto n = fs_.read(*datei, inhalt.bytes.get() + inhalt.größe, inhalt.platz - inhalt.größe);
        if (!n) return Ergebnis<Dateiinhalt>::fehler(n.nummer());
        if (*n == 0) break;
        inhalt.größe += *n;
        if (inhalt.größe < inhalt.platz) continue;
        // The file grew while it was read: go on with more room.
        inhalt.platz = inhalt.platz * 2 + 4096;
        std::unique_ptr<char[]> größer(new (std::nothrow) char[inhalt.platz]);
        if (!größer) return Ergebnis<Dateiinhalt>::fehler(FEHLER_SPEICHER);
        std::copy_n(inhalt.bytes.get(), inhalt.größe, größer.get());
        inhalt.bytes = std::move(größer);
    }
    (void)datei.schließen(); // nothing was written: its result says nothing
    return inhalt;
}

Ergebnis<FileInfo> Dateiwerk::stand(const Text& pfad) const {
    const auto h = fs_.open(pfad, OpenMode::Read);
    if (!h) return Ergebnis<FileInfo>::fehler(h.nummer());
    OffeneDatei datei(fs_, *h);
    auto info = fs_.info(*datei);
    (void)datei.schließen();
    return info;
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
    auto anhang = einmal_anhängen(pfad, bytes, nur_bestehende);
    if (anhang.nummer() != FEHLER_NETZ || !fs_.info(pfad)) return anhang;
    fs_.wait(UMBENENNEN_PAUSE);
    return einmal_anhängen(pfad, bytes, nur_bestehende);
}

Ergebnis<Dateiwerk::Anhang> Dateiwerk::einmal_anhängen(const Text& pfad, std::string_view bytes,
                                                       bool nur_bestehende) const {
    using E = Ergebnis<Anhang>;
    const auto h = fs_.open(pfad, nur_bestehende ? OpenMode::Extend : OpenMode::Append);
    if (!h) return E::fehler(h.nummer());
    OffeneDatei datei(fs_, *h);
    const auto vorher = fs_.info(*datei);
    if (!vorher) return E::fehler(vorher.nummer());
    if (vorher->size == 0 && nur_bestehende) return E::fehler(FEHLER_NICHT_GEFUNDEN);
    if (vorher->size == 0) (void)fs_.copy_rights(*datei, Rechte_neuer_Datei(pfad));
    std::string zeilen;
    if (vorher->size > 0) {
        char letztes = '\n';
        const auto n = fs_.read_at(*datei, vorher->size - 1, &letztes, 1);
        if (!n) return E::fehler(n.nummer());
        // Behind a line whose end is only just arriving the mark is passed over; a bare line end would be
        // damage.
        if (*n == 1 && letztes != '\n') zeilen = ABGERISSEN;
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

// What stands in the file from `ab` on.
Ergebnis<std::string> Dateiwerk::Rest(FileSystem::Handle h, std::uint64_t ab) const {
    using E = Ergebnis<std::string>;
    const auto info = fs_.info(h);
    if (!info) return E::fehler(info.nummer());
    std::string rest(info->size > ab ? static_cast<std::size_t>(info->size - ab) : 0, '\0');
    std::size_t gelesen = 0;
    while (gelesen < rest.size()) {
        const auto n = fs_.read_at(h, ab + gelesen, rest.data() + gelesen, rest.size() - gelesen);
        if (!n) return E::fehler(n.nummer());
        if (*n == 0) break;
        gelesen += *n;
    }
    rest.resize(gelesen);
    return rest;
}

Ergebnis<std::string> Dateiwerk::Überschriebenes(const Text& pfad, const Anhang& wo,
                                                 std::string_view zeilen) const {
    using E = Ergebnis<std::string>;
    const auto h = fs_.open(pfad, OpenMode::Read);
    if (!h) return E::fehler(h.nummer());
    const OffeneDatei datei(fs_, *h);
    const auto kopf = Kopf(*datei);
    if (!kopf) return E::fehler(kopf.nummer());
    if (!kopf->starts_with(wo.kopf)) return std::string();
    const auto da = Rest(*datei, wo.davor);
    if (!da) return E::fehler(da.nummer());
    std::string fehlt;
    for (std::size_t ende; !zeilen.empty(); zeilen.remove_prefix(ende)) {
        ende = zeilen.find('\n') + 1; // each line has its end
        const std::string_view zeile = zeilen.substr(0, ende);
        std::size_t stelle = da->find(zeile);
        while (stelle != std::string::npos && stelle > 0 && (*da)[stelle - 1] != '\n' &&
               (*da)[stelle - 1] != '\0')
            stelle = da->find(zeile, stelle + 1); // the end of a longer line
        if (stelle == std::string::npos) fehlt += zeile;
    }
    return fehlt;
}

// A call that failed may have left a piece all the same. Only our own piece goes: somebody else's line may
// stand in its place or behind it.
void Dateiwerk::Stück_zurücknehmen(FileSystem::Handle h, std::uint64_t ab, std::string_view bytes) const {
    const auto jetzt = fs_.info(h);
    if (!jetzt || jetzt->size <= ab || jetzt->size - ab >= bytes.size()) return;
    std::string stück(static_cast<std::size_t>(jetzt->size - ab), '\0');
    const auto n = fs_.read_at(h, ab, stück.data(), stück.size());
    if (n && *n == stück.size() && bytes.starts_with(stück)) (void)fs_.truncate(h, ab);
}

// A sibling that stands there already, left by an earlier process of the same number, may be all that is
// left of a file: it stays, and the next number is taken.
Ergebnis<FileSystem::Handle> Dateiwerk::Nebendatei_öffnen(const Text& ziel, Text& neben) const {
    for (int versuch = 1; versuch <= NEBENDATEI_VERSUCHE; ++versuch) {
        neben = ParentDir(ziel) + u"." + Dateiname_aus_Pfad(ziel) + u"." + kennung_ + u"-" +
                ziffern(++nebendateien_) + u".neu";
        auto h = fs_.open(neben, OpenMode::CreateNew);
        if (h || h.nummer() != FEHLER_EXISTIERT) return h;
    }
    return Ergebnis<FileSystem::Handle>::fehler(FEHLER_VERWEIGERT); // no 58: that is said of the file itself
}

Ergebnis<Dateiwerk::Nebendatei> Dateiwerk::in_nebendatei(const Text& ziel, std::string_view bytes,
                                                         const FileInfo* vorbild) const {
    using E = Ergebnis<Nebendatei>;
    Text neben;
    const auto h = Nebendatei_öffnen(ziel, neben);
    if (!h) return E::fehler(h.nummer());
    OffeneDatei datei(fs_, *h);
    const auto geschrieben = füllen(*datei, ziel, bytes, vorbild);
    const Fehlercode beim_schließen = datei.schließen();
    if (geschrieben && !beim_schließen) return Nebendatei{neben, *geschrieben};
    (void)fs_.remove(neben);
    return E::fehler(geschrieben ? beim_schließen : geschrieben.nummer());
}

Ergebnis<FileInfo> Dateiwerk::füllen(FileSystem::Handle h, const Text& ziel, std::string_view bytes,
                                     const FileInfo* vorbild) const {
    using E = Ergebnis<FileInfo>;
    if (const Fehlercode f = alles_schreiben(h, bytes)) return E::fehler(f);
    const auto eigene = fs_.info(h);
    if (!eigene) return eigene;
    (void)fs_.copy_rights(h, vorbild ? Rechte_nach(*vorbild, eigene->owner, ziel) : Rechte_neuer_Datei(ziel));
    if (const Fehlercode f = fs_.sync(h)) return E::fehler(f);
    return fs_.info(h);
}

// Rights are given as far as that goes: to save with fewer of them is better than not to save.
// Where the folder lets the group or others write, its new files let them append: a month's first save must
// not shut the colleagues out.
FileInfo Dateiwerk::Rechte_neuer_Datei(const Text& pfad) const {
    const auto ordner = fs_.info(ParentDir(pfad));
    FileInfo rechte;
    rechte.mode = 0600 | (ordner ? ordner->mode & 0066 : 0044);
    rechte.group = ordner ? ordner->group : 0;
    return rechte;
}

// Rights of a file that takes the place of `alt`. Renaming changes the owner, and a file of 0644 would shut
// out whoever had it before: then the folder's people, he among them, get what its new files give them.
FileInfo Dateiwerk::Rechte_nach(const FileInfo& alt, unsigned eigner, const Text& pfad) const {
    FileInfo rechte = alt;
    if (alt.owner == eigner) return rechte;
    const FileInfo neue = Rechte_neuer_Datei(pfad);
    rechte.mode |= neue.mode;
    if ((neue.mode & 0020) != 0) rechte.group = neue.group;
    return rechte;
}

// A share may carry a rename out and lose the answer: the sibling is gone and the file holds its bytes.
bool Dateiwerk::angekommen(const Text& neben, const Text& pfad, std::string_view bytes) const {
    const auto rest = fs_.info(neben);
    if (rest || rest.nummer() != FEHLER_NICHT_GEFUNDEN) return false;
    const auto da = lesen(pfad);
    return da && da->sicht() == bytes;
}

Ergebnis<FileInfo> Dateiwerk::überschreiben(FileSystem::Handle h, std::string_view bytes) const {
    using E = Ergebnis<FileInfo>;
    OffeneDatei datei(fs_, h);
    Fehlercode f = alles_schreiben(*datei, bytes);
    if (!f) f = fs_.truncate(*datei, bytes.size());
    if (!f) f = fs_.sync(*datei);
    if (f) return E::fehler(f);
    const auto info = fs_.info(*datei);
    if (const Fehlercode beim_schließen = datei.schließen()) return E::fehler(beim_schließen);
    return info;
}

// What comes between this look and the rename is lost to its writer, who looks for it himself: the two are
// as close together as they can be.
Fehlercode Dateiwerk::noch_dieselbe(const Text& pfad, const Vorgefunden* gelesen) const {
    if (!gelesen) return 0;
    const auto h = fs_.open(pfad, OpenMode::Read);
    if (!h) return h.nummer();
    OffeneDatei datei(fs_, *h);
    const auto info = fs_.info(*datei);
    if (!info) return info.nummer();
    const auto kopf = Kopf(*datei);
    if (!kopf) return kopf.nummer();
    return info->size == gelesen->größe && *kopf == gelesen->kopf ? 0 : int{FEHLER_EXISTIERT};
}

Ergebnis<FileInfo> Dateiwerk::unterschieben(const Nebendatei& neben, const Text& pfad, std::string_view bytes,
                                            const Vorgefunden* gelesen) const {
    using E = Ergebnis<FileInfo>;
    Fehlercode f = 0;
    for (int versuch = 1; versuch <= UMBENENNEN_VERSUCHE; ++versuch) {
        if (const Fehlercode anders = noch_dieselbe(pfad, gelesen)) {
            (void)fs_.remove(neben.pfad);
            return E::fehler(anders);
        }
        f = fs_.rename(neben.pfad, pfad);
        if (!f || angekommen(neben.pfad, pfad, bytes)) return neben.info;
        if (versuch < UMBENENNEN_VERSUCHE) fs_.wait(UMBENENNEN_PAUSE);
    }
    // Some servers refuse to rename over a file that somebody reads. The sibling is whole and synced: it
    // stays as the copy behind which the old file may be written in place.
    if (!fs_.info(neben.pfad)) return E::fehler(f);
    const auto h = fs_.open(pfad, OpenMode::Overwrite);
    if (!h) {
        (void)fs_.remove(neben.pfad); // nothing was touched: the old state stands
        return E::fehler(f);
    }
    auto geschrieben = überschreiben(*h, bytes);
    if (geschrieben) (void)fs_.remove(neben.pfad);
    return geschrieben;
}

Ergebnis<FileInfo> Dateiwerk::ersetzen(const Text& pfad, std::string_view bytes,
                                       const Vorgefunden* gelesen) const {
    using E = Ergebnis<FileInfo>;
    const auto alt = fs_.info(pfad);
    if (!alt && alt.nummer() != FEHLER_NICHT_GEFUNDEN) return E::fehler(alt.nummer());
    if (alt && alt->folder) return E::fehler(FEHLER_SCHREIBSCHUTZ);
    const auto neben = in_nebendatei(pfad, bytes, alt ? &*alt : nullptr);
    if (!neben) return E::fehler(neben.nummer());
    return unterschieben(*neben, pfad, bytes, gelesen);
}

Ergebnis<FileInfo> Dateiwerk::neu_anlegen(const Text& pfad, std::string_view bytes) const {
    using E = Ergebnis<FileInfo>;
    const auto neben = in_nebendatei(pfad, bytes, nullptr);
    if (!neben) return E::fehler(neben.nummer());
    const Fehlercode f = fs_.rename_new(neben->pfad, pfad);
    if (!f || angekommen(neben->pfad, pfad, bytes)) return neben->info;
    (void)fs_.remove(neben->pfad);
    return E::fehler(f);
}

} // namespace kalvora
