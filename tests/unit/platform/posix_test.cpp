// What only the real system shows: pipes, links, rights, the user's folders, locales.
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "hilfen/temp_ordner.h"
#include "platform/posix/gebietsschema.h"
#include "platform/posix/posix_clock.h"
#include "platform/posix/posix_environment.h"
#include "platform/posix/posix_filesystem.h"

namespace kalvora {
namespace {

namespace stdfs = std::filesystem;

// A variable of the process for the length of a test; nullptr takes it away.
class Variable {
public:
    Variable(const char* name, const char* wert) : name_(name) {
        if (const char* alt = std::getenv(name)) alt_ = alt;
        wert ? setenv(name, wert, 1) : unsetenv(name);
    }
    ~Variable() { alt_ ? setenv(name_, alt_->c_str(), 1) : unsetenv(name_); }
    Variable(const Variable&) = delete;
    Variable& operator=(const Variable&) = delete;

private:
    const char* name_;
    std::optional<std::string> alt_;
};

struct Posix : testing::Test {
    TempOrdner ordner;
    PosixFileSystem fs;
    PosixEnvironment umgebung;
};

TEST_F(Posix, Rohre_Geraete_und_unmoegliche_Namen) {
    const Text rohr = ordner.pfad(u"rohr");
    ASSERT_EQ(mkfifo(zu_utf8(rohr).c_str(), 0600), 0);
    for (const OpenMode modus : {OpenMode::Read, OpenMode::Append, OpenMode::Overwrite})
        for (const Text& pfad : {rohr, Text(u"/dev/null")}) // must not wait, either
            EXPECT_EQ(fs.open(pfad, modus).nummer(), 75) << static_cast<int>(modus);
    EXPECT_EQ(fs.open(ordner.pfad() + Text(300, u'x'), OpenMode::CreateNew).nummer(), 52);
    ordner.schreibe(u"a", "x");
    const Text mit_null = ordner.pfad(u"a") + Text(1, u'\0') + u".dat";
    EXPECT_EQ(fs.info(mit_null).nummer(), 52) << "must not mean the file before the NUL";
    EXPECT_EQ(fs.remove(mit_null), 52);
    EXPECT_TRUE(ordner.gibt_es(u"a"));
}

TEST_F(Posix, Rechte_gehen_mit) {
    ordner.schreibe(u"alt", "x");
    chmod((ordner.ordner() / "alt").c_str(), 0664);
    FileInfo vorher = *fs.info(ordner.pfad(u"alt"));
    const auto h = fs.open(ordner.pfad(u".neu"), OpenMode::CreateNew);
    ASSERT_TRUE(h);
    ASSERT_EQ(fchmod(*h, 0600), 0);
    if (geteuid() == 0) vorher.group = 4242; // only root may give a file to any group
    EXPECT_EQ(fs.copy_rights(*h, vorher), 0);
    EXPECT_EQ(fs.info(*h)->mode, 0664u);
    EXPECT_EQ(fs.info(*h)->group, vorher.group);
    fs.close(*h);
}

// A colleague must be able to write his log and his backup in the folders that the first one has made.
TEST_F(Posix, Neue_Ordner_sind_so_offen_wie_der_gemeinsame) {
    const struct {
        mode_t oben, neu;
    } tafel[] = {{02770, 02770}, {0777, 0777}, {01777, 0700}, {0755, 0700}, {0700, 0700}};
    const mode_t vorher = umask(077);
    for (const auto& fall : tafel) {
        const std::string oben = zu_utf8(ordner.pfad(u"oben"));
        ASSERT_EQ(mkdir(oben.c_str(), 0700), 0);
        ASSERT_EQ(chmod(oben.c_str(), fall.oben), 0);
        EXPECT_EQ(fs.make_folder(ordner.pfad(u"oben/Logs/")), 0);
        struct stat s {};
        EXPECT_EQ(stat((oben + "/Logs").c_str(), &s), 0);
        EXPECT_EQ(s.st_mode & 07777, fall.neu) << std::oct << fall.oben;
        stdfs::remove_all(oben);
    }
    umask(vorher);
}

TEST_F(Posix, Tag_eines_Stempels_ist_Ortszeit) {
    PosixClock uhr;
    // 2026-11-15 23:30 UTC; the second before 1970 has a stamp below 0
    for (const auto& [zone, sekunden, tag] :
         {std::tuple{"UTC0", Zeitstempel{1794785400}, Kalendertag{2026, 11, 15}},
          {"MEZ-1", 1794785400, {2026, 11, 16}},
          {"UTC0", -1, {1969, 12, 31}}}) {
        const Variable gesetzt("TZ", zone);
        tzset();
        EXPECT_EQ(Kalendertag_aus(uhr.day_of(sekunden * 1'000'000'000 + 5)), tag) << zone;
    }
    tzset();
}

TEST_F(Posix, Tempordner_gehoert_dem_Benutzer_allein) {
    const std::string name = "kalvora-" + std::to_string(geteuid());
    const stdfs::path üblich = ordner.ordner() / name;
    const Variable tmp("TMPDIR", ordner.ordner().c_str()), kein_xdg("XDG_RUNTIME_DIR", nullptr);
    const Text eigener = ordner.pfad(aus_utf8(name));
    // What stands there: nothing, the own one, one open to others, a link, somebody else's.
    for (const std::string_view was : {"nothing", "own", "open", "link", "foreign"}) {
        if (was != "own") stdfs::remove_all(üblich);
        if (was == "open" || was == "foreign") stdfs::create_directory(üblich);
        if (was == "open") chmod(üblich.c_str(), 0755);
        if (was == "link") stdfs::create_symlink(ordner.ordner(), üblich);
        if (was == "foreign" && (geteuid() != 0 || chown(üblich.c_str(), 4242, 4242) != 0)) continue;
        PosixEnvironment neu;
        const Text pfad = neu.private_temp_folder();
        EXPECT_EQ(fs.info(pfad)->mode & 0777, 0700u) << was;
        EXPECT_EQ(neu.private_temp_folder(), pfad) << was;
        EXPECT_EQ(pfad == eigener + u"/", was == "nothing" || was == "own") << was;
        EXPECT_TRUE(pfad.starts_with(eigener)) << zu_utf8(pfad);
    }
    const Variable xdg("XDG_RUNTIME_DIR", ordner.ordner().c_str());
    EXPECT_EQ(umgebung.private_temp_folder(), ordner.pfad(u"kalvora/"));
}

TEST_F(Posix, Sperre_gilt_bis_zum_Ende_ihres_Besitzers) {
    const Text pfad = ordner.pfad(u"kalvora.lock");
    {
        PosixEnvironment erster;
        EXPECT_TRUE(erster.lock_instance(pfad) && erster.lock_instance(pfad)) << "its own lock";
        EXPECT_FALSE(umgebung.lock_instance(pfad));
    }
    // A process that dies without a word lets go, too.
    const pid_t kind = fork();
    if (kind == 0) {
        PosixEnvironment andere;
        _exit(andere.lock_instance(pfad) ? 0 : 1);
    }
    int ende = -1;
    ASSERT_EQ(waitpid(kind, &ende, 0), kind);
    EXPECT_EQ(ende, 0);
    EXPECT_TRUE(umgebung.lock_instance(pfad));
    EXPECT_TRUE(umgebung.lock_instance(ordner.pfad(u"fehlt/kalvora.lock"))) << "no sign of another program";
}

// Names in a code page other than UTF-8 are never asked of the system: the table alone answers.
TEST(Gebietsschema, Namen_und_ihre_Rueckfaelle) {
    for (const auto& [name, zeichen, januar, kürzel] : {std::tuple{"xx_YY", u".,;", u"Januar", u"DEU"},
                                                        {"de_AT.ISO-8859-1", u".,;", u"Jänner", u"AUT"},
                                                        {"en_CA.ISO-8859-1", u"-.,", u"January", u"CAD"}}) {
        const Locale l = Gebietsschema(name, name);
        EXPECT_EQ((Text{l.datum.trennzeichen, l.Dezimaltrennzeichen, l.Listentrennzeichen}), zeichen) << name;
        EXPECT_EQ(std::pair(l.Monatsnamen[0], l.Landeskürzel), std::pair(Text(januar), Text(kürzel))) << name;
    }
    for (const auto& [muster, reihenfolge, trenner] :
         {std::tuple{"%D", Datumsreihenfolge::MonatTagJahr, u'/'},
          {"%e. %m. %Y", Datumsreihenfolge::TagMonatJahr, u'.'},
          {"%Oy/%Om/%Od", Datumsreihenfolge::JahrMonatTag, u'/'}}) {
        const Datumsformat format = Datumsformat_aus_Muster(muster);
        EXPECT_EQ(std::pair(format.reihenfolge, format.trennzeichen), std::pair(reihenfolge, trenner))
            << muster;
    }
}

TEST_F(Posix, Verweise) {
    stdfs::create_directories(ordner.ordner() / "tief" / "unten");
    stdfs::create_symlink("tief/unten", ordner.ordner() / "verweis");
    stdfs::create_symlink("weg", ordner.ordner() / "lose");
    const Text oben = *fs.real_folder(ordner.pfad());
    EXPECT_EQ(*fs.real_folder(ordner.pfad(u"verweis/")), oben + u"tief/unten/");
    EXPECT_EQ(fs.real_folder(ordner.pfad(u"lose/")).nummer(), 52) << "what it stands for is elsewhere";
    EXPECT_EQ(fs.real_folder(ordner.pfad(u"fehlt/")).nummer(), 76);
    for (const char16_t* name : {u"verweis", u"lose"})
        EXPECT_TRUE(*fs.is_link(ordner.pfad(name))) << zu_utf8(name);
    for (const char16_t* name : {u"tief", u"verweis/"})
        EXPECT_FALSE(*fs.is_link(ordner.pfad(name))) << zu_utf8(name);
}

} // namespace
} // namespace kalvora
