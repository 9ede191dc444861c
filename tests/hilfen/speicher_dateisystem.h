// A workstation's file system on a disk in memory, with a diary of its calls. Any call can fail, be cut short
// or end the program (throws Programmende); see stoerung.h.
#pragma once

#include <algorithm>
#include <functional>

#include "hilfen/speicher_platte.h"
#include "hilfen/stoerung.h"

namespace kalvora {

class SpeicherDateisystem : public FileSystem {
public:
    explicit SpeicherDateisystem(std::shared_ptr<SpeicherPlatte> p = std::make_shared<SpeicherPlatte>())
        : platte_(std::move(p)) {}

    // --- for the test
    SpeicherPlatte& platte() { return *platte_; }
    std::shared_ptr<SpeicherPlatte> geteilte_platte() const { return platte_; }
    void schreibe(const Text& pfad, const std::string& bytes) { platte_->schreibe(pfad, bytes); }
    std::optional<std::string> inhalt(const Text& pfad) const { return platte_->inhalt(pfad); }
    bool gibt_es(const Text& pfad) const { return platte_->gibt_es(pfad); }

    void störe(Störung s) { störstellen_.setzen(std::move(s)); }
    void störe_nicht() { störstellen_.aufheben(); }
    const std::vector<Dateiaufruf>& tagebuch() const { return tagebuch_; }
    void tagebuch_leeren() { tagebuch_.clear(); }
    // Does something just before each call, with its name and path; its own calls are not reported.
    std::function<void(const std::string& aufruf, const Text& pfad)> davor;
    // Calls of that name ("" all, "*" all that change something) since the diary was emptied.
    int anzahl(const std::string& name, TextView maske = u"*") const {
        return static_cast<int>(std::count_if(tagebuch_.begin(), tagebuch_.end(), [&](const Dateiaufruf& a) {
            const bool art = name.empty() || a.name == name || (name == "*" && ändernd(a.name));
            return art && passt_auf_Maske(a.pfad, maske == u"*" ? maske : Text(u"*") + Text(maske));
        }));
    }
    int offene() const { return static_cast<int>(offen_.size()); } // handles not closed
    double gewartet() const { return gewartet_; }                  // seconds in all
    // The program was ended: its handles are gone, the disk stays.
    void neu_starten() {
        offen_.clear();
        störstellen_.aufheben();
    }

    // --- FileSystem
    Ergebnis<Handle> open(const Text& pfad, OpenMode modus) override {
        const bool ändert = modus == OpenMode::CreateNew || (legt_an(modus) && !platte_->finde(pfad));
        return rufe<Handle>({"open", pfad}, ändert, [&] { return öffne(pfad, modus); });
    }
    Ergebnis<std::size_t> read(Handle h, char* puffer, std::size_t n) override {
        return mit<std::size_t>("read", h, false, [&](Offen& o) -> Ergebnis<std::size_t> {
            const std::size_t k = kopiere(o, o.stelle, puffer, n);
            o.stelle += k;
            return k;
        });
    }
    Ergebnis<std::size_t> read_at(Handle h, std::uint64_t ab, char* puffer, std::size_t n) override {
        return mit<std::size_t>("read_at", h, false,
                                [&](Offen& o) -> Ergebnis<std::size_t> { return kopiere(o, ab, puffer, n); });
    }
    Ergebnis<std::size_t> write(Handle h, std::string_view bytes) override {
        return schreibe_stück(h, bytes);
    }
    Fehlercode sync(Handle h) override {
        return code("sync", h, [](Offen& o) {
            o.datei->gesichert = o.datei->bytes;
            return 0;
        });
    }
    Fehlercode truncate(Handle h, std::uint64_t größe) override {
        return code("truncate", h, [&](Offen& o) {
            if (o.modus == OpenMode::Read) return 70;
            o.datei->bytes.resize(größe);
            platte_->gestempelt(*o.datei);
            return 0;
        });
    }
    Fehlercode copy_rights(Handle h, const FileInfo& von) override {
        return code("copy_rights", h, [&](Offen& o) {
            o.datei->info.mode = von.mode;
            o.datei->info.group = von.group;
            return 0;
        });
    }
    Ergebnis<FileInfo> info(Handle h) override {
        return mit<FileInfo>("info", h, false, [](Offen& o) -> Ergebnis<FileInfo> { return o.datei->info; });
    }
    Fehlercode close(Handle h) override {
        return code("close", h, [&](Offen&) {
            offen_.erase(h);
            return 0;
        });
    }
    Ergebnis<FileInfo> info(const Text& pfad) override {
        return rufe<FileInfo>({"info", pfad}, false, [&]() -> Ergebnis<FileInfo> {
            const auto datei = platte_->finde(pfad);
            return datei ? Ergebnis<FileInfo>(datei->info) : Ergebnis<FileInfo>::fehler(fehlt(pfad));
        });
    }
    Fehlercode rename(const Text& von, const Text& nach) override {
        return tue({"rename", nach}, [&] { return benenne_um(von, nach, true); });
    }
    Fehlercode rename_new(const Text& von, const Text& nach) override {
        return tue({"rename_new", nach}, [&] { return benenne_um(von, nach, false); });
    }
    Fehlercode remove(const Text& pfad) override {
        return tue({"remove", pfad}, [&] {
            const auto datei = platte_->finde(pfad);
            if (!datei) return fehlt(pfad);
            if (datei->info.folder) return 75;
            platte_->entferne(pfad);
            return 0;
        });
    }
    Fehlercode remove_folder(const Text& pfad) override {
        return tue({"remove_folder", pfad}, [&] {
            const auto datei = platte_->finde(pfad);
            if (!datei || !datei->info.folder) return 76;
            if (!namen(pfad).empty()) return 75;
            platte_->entferne(pfad);
            return 0;
        });
    }
    Fehlercode make_folder(const Text& pfad) override {
        return tue({"make_folder", pfad}, [&] {
            if (platte_->finde(pfad)) return 58;
            if (!ordner(SpeicherPlatte::oberhalb(pfad))) return 76;
            platte_->mache_ordner(pfad);
            return 0;
        });
    }
    Ergebnis<std::vector<Text>> list(const Text& pfad) override {
        return rufe<std::vector<Text>>({"list", pfad}, false, [&]() -> Ergebnis<std::vector<Text>> {
            if (!ordner(pfad)) return Ergebnis<std::vector<Text>>::fehler(76);
            return namen(pfad);
        });
    }
    Fehlercode change_folder(const Text& pfad) override {
        return tue({"change_folder", pfad}, [&] {
            if (!ordner(pfad)) return 76;
            hier_ = SpeicherPlatte::ohne_strich(pfad) + u"/";
            return 0;
        });
    }
    Text current_folder() override { return hier_; }
    Ergebnis<Text> real_folder(const Text& pfad) override { // this disk has no links to folders
        return rufe<Text>({"real_folder", pfad}, false,
                          [&] { return ordner(pfad) ? Ergebnis<Text>(pfad) : Ergebnis<Text>::fehler(76); });
    }
    Ergebnis<bool> is_link(const Text& pfad) override {
        return rufe<bool>({"is_link", pfad}, false, [&]() -> Ergebnis<bool> {
            if (!platte_->finde(pfad)) return Ergebnis<bool>::fehler(fehlt(pfad));
            return false;
        });
    }
    void wait(double sekunden) override {
        melde("wait", {});
        gewartet_ += sekunden;
    }

private:
    struct Offen {
        std::shared_ptr<SpeicherDatei> datei;
        Text pfad;
        OpenMode modus;
        std::size_t stelle = 0;
    };

    void melde(const std::string& aufruf, const Text& pfad) {
        if (!davor || drin_) return;
        drin_ = true;
        davor(aufruf, pfad);
        drin_ = false;
    }
    static bool ändernd(const std::string& name) {
        return name != "read" && name != "read_at" && name != "info" && name != "list" && name != "open" &&
               name != "change_folder" && name != "close" && name != "real_folder" && name != "is_link";
    }

    static bool legt_an(OpenMode m) { return m != OpenMode::Read && m != OpenMode::Extend; }
    static bool hängt_an(OpenMode m) { return m == OpenMode::Append || m == OpenMode::Extend; }

    static bool endet_davor(const Störung* s) {
        return s && (s->wirkung == Wirkung::Ende || s->wirkung == Wirkung::Ende_mitten);
    }
    static bool wirkt(const Störung* s) {
        return !s || s->wirkung == Wirkung::Fehler_dahinter || s->wirkung == Wirkung::Ende_dahinter;
    }

    template <class T, class F>
    Ergebnis<T> rufe(Dateiaufruf a, bool ändert, F&& f) {
        melde(a.name, a.pfad);
        const Störung* s = störstellen_.treffer(a.name, a.pfad, ändert);
        if (endet_davor(s)) throw Programmende{};
        Ergebnis<T> e = wirkt(s) ? f() : Ergebnis<T>::fehler(s->nummer);
        if (s && s->wirkung == Wirkung::Ende_dahinter) throw Programmende{};
        if (s && s->wirkung == Wirkung::Fehler_dahinter) e = Ergebnis<T>::fehler(s->nummer);
        a.nummer = e.nummer();
        tagebuch_.push_back(std::move(a));
        return e;
    }
    template <class F>
    Fehlercode tue(Dateiaufruf a, F&& f) {
        const bool ändert = ändernd(a.name);
        return rufe<int>(std::move(a), ändert,
                         [&]() -> Ergebnis<int> {
                             const int nummer = f();
                             return nummer == 0 ? Ergebnis<int>(0) : Ergebnis<int>::fehler(nummer);
                         })
            .nummer();
    }
    template <class T, class F>
    Ergebnis<T> mit(const char* name, Handle h, bool ändert, F&& f) {
        const auto hit = offen_.find(h);
        if (hit == offen_.end()) return Ergebnis<T>::fehler(57);
        return rufe<T>({name, hit->second.pfad}, ändert, [&] { return f(hit->second); });
    }
    template <class F>
    Fehlercode code(const char* name, Handle h, F&& f) {
        const auto hit = offen_.find(h);
        if (hit == offen_.end()) return 57;
        return tue({name, hit->second.pfad}, [&] { return f(hit->second); });
    }

    Ergebnis<Handle> öffne(const Text& pfad, OpenMode modus) {
        auto datei = platte_->finde(pfad);
        if (datei && modus == OpenMode::CreateNew) return Ergebnis<Handle>::fehler(58);
        if (datei && datei->info.folder) return Ergebnis<Handle>::fehler(75);
        if (datei && modus != OpenMode::Read && (datei->info.mode & 0200) == 0)
            return Ergebnis<Handle>::fehler(70);
        if (!datei && (!legt_an(modus) || !ordner(SpeicherPlatte::oberhalb(pfad))))
            return Ergebnis<Handle>::fehler(fehlt(pfad));
        if (!datei) {
            platte_->schreibe(pfad, {});
            datei = platte_->finde(pfad);
        }
        offen_.emplace(++nächster_, Offen{datei, pfad, modus, hängt_an(modus) ? datei->bytes.size() : 0});
        return nächster_;
    }

    Ergebnis<std::size_t> schreibe_stück(Handle h, std::string_view bytes) {
        const auto hit = offen_.find(h);
        if (hit == offen_.end() || hit->second.modus == OpenMode::Read)
            return Ergebnis<std::size_t>::fehler(57);
        Offen& o = hit->second;
        melde("write", o.pfad);
        const Störung* s = störstellen_.treffer("write", o.pfad, true);
        if (s && s->wirkung == Wirkung::Ende) throw Programmende{};
        Ergebnis<std::size_t> e = std::size_t{0};
        if (!s || s->wirkung != Wirkung::Fehler) e = lege_ab(o, wirkt(s) ? bytes : bytes.substr(0, s->bytes));
        if (s && (s->wirkung == Wirkung::Ende_mitten || s->wirkung == Wirkung::Ende_dahinter))
            throw Programmende{};
        if (s && s->wirkung != Wirkung::Kurz) e = Ergebnis<std::size_t>::fehler(s->nummer);
        tagebuch_.push_back({"write", o.pfad, e.nummer(), e ? *e : 0});
        return e;
    }
    // Puts the bytes where the file's mode says; a full disk takes what still fits, and is a fault behind
    // that.
    Ergebnis<std::size_t> lege_ab(Offen& o, std::string_view bytes) {
        if (hängt_an(o.modus) && !platte_->freigabe) o.stelle = o.datei->bytes.size();
        if (!bytes.empty() && platte_->frei == 0) return Ergebnis<std::size_t>::fehler(61);
        bytes = bytes.substr(0, platte_->frei);
        auto& ziel = o.datei->bytes;
        if (ziel.size() < o.stelle + bytes.size()) ziel.resize(o.stelle + bytes.size());
        std::copy(bytes.begin(), bytes.end(), ziel.begin() + static_cast<std::ptrdiff_t>(o.stelle));
        o.stelle += bytes.size();
        if (platte_->frei != SIZE_MAX) platte_->frei -= bytes.size();
        platte_->gestempelt(*o.datei);
        return bytes.size();
    }
    static std::size_t kopiere(const Offen& o, std::uint64_t ab, char* puffer, std::size_t n) {
        const std::string& bytes = o.datei->bytes;
        return ab >= bytes.size() ? 0 : bytes.copy(puffer, n, ab);
    }
    Fehlercode benenne_um(const Text& von, const Text& nach, bool ersetzen) {
        const auto quelle = platte_->finde(von);
        if (!quelle) return fehlt(von);
        if (!ordner(SpeicherPlatte::oberhalb(nach))) return 76;
        const auto ziel = platte_->finde(nach);
        if (ziel && !ersetzen) return 58;
        if (ziel && ziel != quelle && (ziel->info.folder || quelle->info.folder)) return 75;
        const Text alt = SpeicherPlatte::ohne_strich(von);
        const Text neu = SpeicherPlatte::ohne_strich(nach);
        auto& knoten = platte_->knoten();
        std::vector<Text> betroffen;
        for (const auto& [pfad, datei] : knoten)
            if (pfad == alt || pfad.starts_with(alt + u"/")) betroffen.push_back(pfad);
        for (const Text& pfad : betroffen) {
            auto datei = knoten.at(pfad);
            knoten.erase(pfad);
            knoten[neu + pfad.substr(alt.size())] = std::move(datei);
        }
        return 0;
    }
    bool ordner(const Text& pfad) const {
        const auto datei = platte_->finde(pfad);
        return datei && datei->info.folder;
    }
    int fehlt(const Text& pfad) const { return ordner(SpeicherPlatte::oberhalb(pfad)) ? 53 : 76; }
    std::vector<Text> namen(const Text& pfad) const {
        const Text vorn = SpeicherPlatte::ohne_strich(pfad) + u"/";
        std::vector<Text> gefunden;
        for (const auto& [voll, datei] : platte_->knoten())
            if (voll.size() > vorn.size() && voll.starts_with(vorn) &&
                voll.find(u'/', vorn.size()) == Text::npos)
                gefunden.push_back(voll.substr(vorn.size()));
        std::sort(gefunden.begin(), gefunden.end());
        return gefunden;
    }

    std::shared_ptr<SpeicherPlatte> platte_;
    Störstellen störstellen_;
    std::vector<Dateiaufruf> tagebuch_;
    std::map<Handle, Offen> offen_;
    Handle nächster_ = 0;
    Text hier_ = u"/";
    bool drin_ = false;
    double gewartet_ = 0;
};

} // namespace kalvora
