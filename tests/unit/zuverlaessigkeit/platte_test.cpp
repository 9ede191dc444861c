// What only a real file system does: it is full, or refuses this user. The operations of the sweep meet it
// while the program runs, and fresh processes look once it is gone. And workstations whose clocks differ.
#include <fstream>
#include <grp.h>
#include <sched.h>
#include <sys/mount.h>

#include "hilfen/kindprozess.h"
#include "hilfen/speicher_dateisystem.h"
#include "hilfen/temp_ordner.h"
#include "unit/zuverlaessigkeit/bericht.h"
#include "unit/zuverlaessigkeit/vorgaenge.h"

namespace kalvora {
namespace {

namespace stdfs = std::filesystem;
constexpr unsigned NIEMAND = 65534;
using Tat = std::function<void(const stdfs::path& daten)>;

struct Hindernis {
    const char* name;
    Tat an, aus;
    bool voll = false;  // the data folder is a small disk of its own
    bool fremd = false; // files belong to somebody else
    friend void PrintTo(const Hindernis& h, std::ostream* aus) { *aus << h.name; }
};

// A disk that only this process and its children see; false where the machine does not allow it.
bool eigene_Platte(const stdfs::path& ordner, const char* größe) {
    const unsigned uid = geteuid(), gid = getegid();
    if (unshare(CLONE_NEWNS | (uid == 0 ? 0 : CLONE_NEWUSER)) != 0) return false;
    if (uid != 0) {
        std::ofstream("/proc/self/setgroups") << "deny";
        std::ofstream("/proc/self/uid_map") << "0 " << uid << " 1\n";
        std::ofstream("/proc/self/gid_map") << "0 " << gid << " 1\n";
    }
    stdfs::create_directories(ordner);
    return mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           mount("tmpfs", ordner.c_str(), "tmpfs", 0, größe) == 0;
}
void füllen(const stdfs::path& daten) {
    std::ofstream datei(daten / "voll.bin");
    const std::string block(4096, 'x');
    while (datei.write(block.data(), static_cast<std::streamsize>(block.size())).flush()) {
    }
}
void leeren(const stdfs::path& daten) {
    stdfs::remove(daten / "voll.bin");
}

void schenken(const stdfs::path& was) {
    if (geteuid() == 0 && lchown(was.c_str(), NIEMAND, NIEMAND) != 0) throw std::runtime_error("chown");
}
// Rights hold for everybody but root.
void als_Niemand() {
    if (geteuid() == 0 && (setgroups(0, nullptr) != 0 || setresgid(NIEMAND, NIEMAND, NIEMAND) != 0 ||
                           setresuid(NIEMAND, NIEMAND, NIEMAND) != 0))
        throw std::runtime_error("setuid");
}
// All of it becomes this user's, and the file or folder gets these rights until the hindrance is gone.
Hindernis Rechte(const char* name, const char* datei, int rechte) {
    const auto setzen = [datei](const stdfs::path& daten, int r) { // some operations begin without it
        if (stdfs::exists(daten / datei)) stdfs::permissions(daten / datei, static_cast<stdfs::perms>(r));
    };
    const auto an = [=](const stdfs::path& daten) {
        schenken(daten.parent_path().parent_path());
        for (const auto& eintrag : stdfs::recursive_directory_iterator(daten.parent_path().parent_path()))
            schenken(eintrag.path());
        als_Niemand();
        setzen(daten, rechte);
    };
    return {name, an, [=](const stdfs::path& daten) {
                setzen(daten, stdfs::is_directory(daten / datei) ? 0755 : 0644);
            }};
}
// Everything may be written, but a folder of somebody else lets nobody put a file in another one's place.
void nur_eigene_umbenennen(const stdfs::path& daten) {
    const stdfs::path wurzel = daten.parent_path().parent_path();
    schenken(wurzel);
    for (const auto& eintrag : stdfs::recursive_directory_iterator(wurzel))
        if (eintrag.path().string().starts_with(daten.string()))
            stdfs::permissions(eintrag.path(),
                               static_cast<stdfs::perms>(eintrag.is_directory() ? 01777 : 0666));
        else
            schenken(eintrag.path());
    stdfs::permissions(daten, static_cast<stdfs::perms>(01777));
    als_Niemand();
}

struct Ausgang {
    Bilanz bilanz;
    Text falsch; // what is wrong with it
};

// One operation beside the hindrance; the states are those of an undisturbed run on a disk in memory.
Ausgang neben(const Hindernis& h, const stdfs::path& ordner, std::size_t nr) {
    SpeicherDateisystem ruhig;
    const Vorgang dort = vorgang::in_der_Firma(u"/")[nr],
                  v = vorgang::in_der_Firma(aus_utf8((ordner / "platz/").string()))[nr];
    dort.vorbereiten(ruhig);
    const Ungestört ohne(dort, ruhig.platte());
    PosixFileSystem fs;
    v.vorbereiten(fs);
    const auto lauf = v.Platz(fs, v.benutzer, u"PLATZ1");
    if (!v.aufruf.empty() && !lauf->starten(v.aufruf)) return {{}, u"no start before it"};
    const stdfs::path daten = ordner / "platz" / "srv" / "Data";
    h.an(daten);
    v.tat(*lauf);
    const auto dabei = v.Platz(fs, u"otto", u"PLATZ1");
    const bool still = !dabei->starten(v.neustart) && dabei->fenster.hinweise.empty();
    h.aus(daten);
    if (still) return {{}, u"a start ends without a word"};
    Ausgang aus;
    aus.falsch = Richter(v, ohne.alt, ohne.neu).beurteilen(fs, false, !v.gelungen(*lauf), aus.bilanz);
    if (!aus.falsch.empty()) aus.falsch += u", told: " + letzter_Hinweis(*lauf);
    return aus;
}

class Platte : public testing::TestWithParam<Hindernis> {};

TEST_P(Platte, Alt_oder_neu_und_gemeldet) {
    const Hindernis& h = GetParam();
    if (h.fremd && geteuid() != 0) GTEST_SKIP() << "only root can make files of somebody else";
    int versucht = 0, gespeichert = 0, gemeldet = 0;
    const auto alle = vorgang::in_der_Firma(u"/");
    for (std::size_t nr = 0; nr < alle.size(); ++nr) {
        const Vorgang& v = alle[nr];
        if (h.fremd && v.Erfolg == REPARIERT) continue; // somebody else's damaged file cannot be moved aside
        const TempOrdner ordner;
        stdfs::permissions(ordner.ordner(), stdfs::perms::all);
        Kindprozess kind([&](const auto& sagen) {
            if (geteuid() == 0) eigene_Platte(ordner.ordner(), "size=16m"); // where it can be: spares syncs
            if (h.voll && !eigene_Platte(ordner.ordner() / "platz" / "srv", "size=1m"))
                return sagen("cannot");
            const Ausgang a = neben(h, ordner.ordner(), nr);
            sagen(a.bilanz.gespeichert == 1 ? "saved" : "told");
            if (!a.falsch.empty()) sagen(zu_utf8(a.falsch));
        });
        const auto zeilen = kind.zeilen();
        ASSERT_FALSE(zeilen.empty());
        if (zeilen[0] == "cannot")
            GTEST_SKIP() << "no file system can be mounted here: that takes root or user namespaces";
        ASSERT_TRUE(zeilen.size() == 1 && !zeilen[0].starts_with("failed"))
            << v.name << ": " << zeilen.back();
        ++versucht;
        ++(zeilen[0] == "saved" ? gespeichert : gemeldet);
    }
    berichten({h.name, std::to_string(versucht),
               std::to_string(gespeichert) + " saved, " + std::to_string(gemeldet) + " told; nothing lost"});
}

const Hindernis HINDERNISSE[] = {
    {"disk full", füllen, leeren, true},
    Rechte("folder without the right to write", "", 0555),
    Rechte("folder without the right to list", "", 0333),
    Rechte("Backups without the right to write", "Backups", 0555),
    Rechte("Backups without any right", "Backups", 0000),
    Rechte("Logs without the right to write", "Logs", 0555),
    Rechte("the month write-protected", "2611 261116 Data.dat", 0444),
    Rechte("configuration write-protected", "Konfigdaten.dat", 0444),
    {"no file may be put in another one's place", nur_eigene_umbenennen, [](auto&) {}, false, true},
};
INSTANTIATE_TEST_SUITE_P(Hindernis, Platte, testing::ValuesIn(HINDERNISSE));

// A colleague's clock is a day off. Each entry is seen by everybody, or its user is told.
TEST(PlatteUndUhr, Uhren_gehen_verschieden) {
    for (const int versatz : {-1, 1}) {
        std::size_t alle = 0;
        for (const bool fremder_zuerst : {false, true}) {
            SCOPED_TRACE(versatz);
            const Vorgang v = vorgang::in_der_Firma(u"/")[1];
            SpeicherDateisystem fs;
            v.vorbereiten(fs);
            const auto p = v.Platz(fs, u"anna", u"P"), q = v.Platz(fs, u"otto", u"Q");
            q->uhr.stelle({{2026, 11, 16 + versatz}, 12, 0, 0});
            ASSERT_TRUE(p->starten(v.aufruf) && q->starten(v.aufruf));
            std::map<Text, std::vector<int>> gespeichert;
            int nr = 0;
            for (const int heute : {18, 19, 20, 23, 24, 25}) {
                const bool fremder = (nr++ % 2 == 0) == fremder_zuerst;
                Platzlauf& lauf = fremder ? *q : *p;
                const Text wer = fremder ? u"otto" : u"anna";
                const std::size_t vorher = lauf.fenster.hinweise.size();
                lauf.trage_ein(wer, heute, heute, 6);
                lauf.programm->schleife();
                if (lauf.fenster.hinweise.size() == vorher) gespeichert[wer].push_back(heute);
                const auto dritter = v.Platz(fs, u"chef", u"D");
                ASSERT_TRUE(dritter->starten(v.aufruf));
                for (const auto& [person, tage] : gespeichert)
                    for (const int tag : tage)
                        EXPECT_EQ(dritter->zellen(person)[static_cast<std::size_t>(tag - 1)], u'S')
                            << zu_utf8(person) << " " << tag << " behind the " << heute;
            }
            EXPECT_EQ(gespeichert[versatz > 0 ? u"otto" : u"anna"].size(), 3u) << "the later clock's user";
            alle += gespeichert[u"anna"].size() + gespeichert[u"otto"].size();
        }
        berichten({std::string("a colleague's clock a day ") + (versatz < 0 ? "behind" : "ahead"), "12",
                   std::to_string(alle) + " saved, " + std::to_string(12 - alle) + " told; nothing lost"});
    }
}

} // namespace
} // namespace kalvora
