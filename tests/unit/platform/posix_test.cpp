// What only the real system shows: pipes, links, rights, the user's folders, locales.
#include <gtest/gtest.h>

#include <cerrno>
#include <chrono>
#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include "hilfen/temp_ordner.h"
#include "platform/posix/gebietsschema.h"
#include "platform/posix/posix_clock.h"
#include "platform/posix/posix_environment.h"
#include "platform/posix/posix_fehler.h"
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

class Posix : public testing::Test {
protected:
    TempOrdner ordner;
    PosixFileSystem fs;
    PosixEnvironment umgebung;
};

TEST_F(Posix, Fehlernummern) {
    struct Fall {
        int fehler, nummer;
    };
    for (const Fall& f : {Fall{0, 0},         Fall{ENOENT, 53}, Fall{ENOTDIR, 76},      Fall{EACCES, 70},
                          Fall{EPERM, 70},    Fall{EROFS, 75},  Fall{EISDIR, 75},       Fall{EEXIST, 58},
                          Fall{ENOSPC, 61},   Fall{EDQUOT, 61}, Fall{EFBIG, 61},        Fall{EMFILE, 67},
                          Fall{ENFILE, 67},   Fall{ESTALE, 52}, Fall{EHOSTDOWN, 52},    Fall{ETIMEDOUT, 52},
                          Fall{ENOTCONN, 52}, Fall{EINVAL, 52}, Fall{ENAMETOOLONG, 52}, Fall{EIO, 57},
                          Fall{EBADF, 57},    Fall{ENOMEM, 57}})
        EXPECT_EQ(fault_of(f.fehler), f.nummer) << f.fehler;
}

TEST_F(Posix, Rohre_und_Geraete_halten_nicht_auf) {
    const Text rohr = ordner.pfad(u"rohr");
    ASSERT_EQ(mkfifo(zu_utf8(rohr).c_str(), 0600), 0);
    for (const OpenMode modus : {OpenMode::Read, OpenMode::Append, OpenMode::Overwrite}) {
        EXPECT_EQ(fs.open(rohr, modus).nummer(), 75) << static_cast<int>(modus);
        EXPECT_EQ(fs.open(u"/dev/null", modus).nummer(), 75) << static_cast<int>(modus);
    }
}

TEST_F(Posix, Unmoegliche_Namen) {
    EXPECT_EQ(fs.open(ordner.pfad() + Text(300, u'x'), OpenMode::CreateNew).nummer(), 52);
    ordner.schreibe(u"a", "x");
    Text mit_null = ordner.pfad(u"a");
    mit_null += u'\0';
    mit_null += u".dat";
    EXPECT_EQ(fs.info(mit_null).nummer(), 52) << "must not mean the file before the NUL";
    EXPECT_EQ(fs.remove(mit_null), 52);
    EXPECT_TRUE(ordner.gibt_es(u"a"));
    stdfs::create_symlink("schleife", ordner.ordner() / "schleife");
    EXPECT_EQ(fs.open(ordner.pfad(u"schleife"), OpenMode::Read).nummer(), 52);
}

TEST_F(Posix, Verweise_werden_verfolgt_und_nur_selbst_geloescht) {
    ordner.schreibe(u"ziel", "x");
    stdfs::create_symlink("ziel", ordner.ordner() / "verweis");
    stdfs::permissions(ordner.ordner() / "ziel", stdfs::perms::owner_read);
    EXPECT_EQ(fs.info(ordner.pfad(u"verweis"))->size, 1u);
    EXPECT_EQ(fs.remove(ordner.pfad(u"verweis")), 0);
    EXPECT_TRUE(ordner.gibt_es(u"ziel"));
    EXPECT_EQ(fs.info(ordner.pfad(u"ziel"))->mode, 0400u);
    EXPECT_EQ(fs.remove(ordner.pfad(u"ziel")), 0) << "write-protected";
}

TEST_F(Posix, Ordner_ohne_Verweise) {
    stdfs::create_directories(ordner.ordner() / "tief" / "unten");
    stdfs::create_symlink("tief/unten", ordner.ordner() / "verweis");
    stdfs::create_symlink("weg", ordner.ordner() / "lose");
    const Text oben = *fs.real_folder(ordner.pfad());
    EXPECT_EQ(*fs.real_folder(ordner.pfad(u"verweis/")), oben + u"tief/unten/");
    EXPECT_EQ(fs.real_folder(ordner.pfad(u"lose/")).nummer(), 52) << "what it stands for is elsewhere";
    EXPECT_EQ(fs.real_folder(ordner.pfad(u"fehlt/")).nummer(), 76);
}

TEST_F(Posix, Rechte_gehen_mit) {
    ordner.schreibe(u"alt", "x");
    chmod((ordner.ordner() / "alt").c_str(), 0664);
    const auto vorher = fs.info(ordner.pfad(u"alt"));
    auto h = fs.open(ordner.pfad(u".neu"), OpenMode::CreateNew);
    ASSERT_TRUE(h);
    ASSERT_EQ(fchmod(*h, 0600), 0);
    EXPECT_EQ(fs.copy_rights(*h, *vorher), 0);
    EXPECT_EQ(fs.info(*h)->mode, 0664u);
    if (geteuid() == 0) { // only root may give a file to any group
        FileInfo fremd = *vorher;
        fremd.group = 4242;
        EXPECT_EQ(fs.copy_rights(*h, fremd), 0);
        EXPECT_EQ(fs.info(*h)->group, 4242u);
    }
    fs.close(*h);
    EXPECT_EQ(fs.close(*h), 57) << "closed twice";
}

TEST_F(Posix, Handles_gehen_nicht_auf_Kindprozesse_ueber) {
    ordner.schreibe(u"a", "x");
    const auto h = fs.open(ordner.pfad(u"a"), OpenMode::Read);
    EXPECT_EQ(fcntl(*h, F_GETFD) & FD_CLOEXEC, FD_CLOEXEC);
    fs.close(*h);
}

TEST_F(Posix, Lesen_im_Ordner_eines_anderen_Prozesses) {
    if (geteuid() == 0) GTEST_SKIP() << "root may read everything";
    ordner.schreibe(u"zu/a", "x");
    stdfs::permissions(ordner.ordner() / "zu", stdfs::perms::none);
    EXPECT_EQ(fs.list(ordner.pfad(u"zu/")).nummer(), 70);
    EXPECT_EQ(fs.open(ordner.pfad(u"zu/a"), OpenMode::Read).nummer(), 70);
    stdfs::permissions(ordner.ordner() / "zu", stdfs::perms::owner_all);
}

TEST_F(Posix, Ordner_wechseln) {
    const Text vorher = fs.current_folder();
    EXPECT_EQ(fs.change_folder(ordner.pfad(u"fehlt/")), 76);
    EXPECT_EQ(fs.current_folder(), vorher);
    ASSERT_EQ(fs.change_folder(ordner.pfad()), 0);
    EXPECT_EQ(fs.current_folder(), aus_utf8(stdfs::canonical(ordner.ordner()).string() + "/"));
    EXPECT_EQ(fs.change_folder(vorher), 0);
}

TEST_F(Posix, Volle_Platte) {
    struct stat s {};
    if (stat("/dev/full", &s) != 0) GTEST_SKIP();
    const int h = open("/dev/full", O_WRONLY | O_CLOEXEC);
    EXPECT_EQ(fs.write(h, "x").nummer(), 61);
    EXPECT_EQ(fs.sync(h), 0) << "a device that knows no sync is no fault";
    fs.close(h);
}

TEST_F(Posix, Tag_eines_Stempels_ist_Ortszeit) {
    PosixClock uhr;
    struct Fall {
        const char* zone;
        Zeitstempel sekunden;
        Kalendertag tag;
    };
    // 2026-11-15 23:30 UTC; the second before 1970 has a stamp below 0
    for (const Fall& f : {Fall{"UTC0", 1794785400, {2026, 11, 15}}, Fall{"MEZ-1", 1794785400, {2026, 11, 16}},
                          Fall{"UTC0", -1, {1969, 12, 31}}, Fall{"UTC0", 0, {1970, 1, 1}}}) {
        const Variable zone("TZ", f.zone);
        tzset();
        EXPECT_EQ(Kalendertag_aus(uhr.day_of(f.sekunden * 1'000'000'000 + 5)), f.tag) << f.zone;
    }
    tzset();
    EXPECT_EQ(Kalendertag_aus(uhr.day_of(-5)), (Kalendertag_aus(uhr.day_of(-1'000'000'000))));
    const double vorher = uhr.steady();
    uhr.sleep(0.01);
    EXPECT_GE(uhr.steady() - vorher, 0.01);
    EXPECT_GE(uhr.now().tag.jahr, 2024);
}

TEST_F(Posix, Variablen_und_Orte) {
    const Variable gesetzt("KALVORA_PROBE", "Übung"), leer("KALVORA_LEER", nullptr);
    EXPECT_EQ(umgebung.variable(u"KALVORA_PROBE"), u"Übung");
    EXPECT_EQ(umgebung.variable(u"KALVORA_LEER"), u"");
    EXPECT_TRUE(Datei_vorhanden(fs, umgebung.program_folder() + aus_utf8(program_invocation_short_name)));
    const Variable xdg("XDG_DATA_HOME", "/srv/daten/"), heim("HOME", "/home/muster");
    EXPECT_EQ(umgebung.user_data_folder(), u"/srv/daten/");
    const Variable relativ("XDG_DATA_HOME", "daten");
    EXPECT_EQ(umgebung.user_data_folder(), u"/home/muster/.local/share/") << "a relative one counts as none";
}

class Tempordner : public Posix {
protected:
    std::string name() const { return "kalvora-" + std::to_string(geteuid()); }
    unsigned modus(const Text& pfad) { return fs.info(pfad)->mode & 0777; }
    const std::string basis = ordner.ordner().string();
    const Variable tmp{"TMPDIR", basis.c_str()}, kein_xdg{"XDG_RUNTIME_DIR", nullptr};
};

TEST_F(Tempordner, Wird_fuer_den_Benutzer_allein_angelegt) {
    EXPECT_EQ(umgebung.private_temp_folder(), aus_utf8(basis + "/" + name() + "/"));
    EXPECT_EQ(umgebung.private_temp_folder(), aus_utf8(basis + "/" + name() + "/")) << "again the same";
    EXPECT_EQ(modus(umgebung.private_temp_folder()), 0700u);
    const Variable xdg("XDG_RUNTIME_DIR", basis.c_str());
    EXPECT_EQ(umgebung.private_temp_folder(), ordner.pfad(u"kalvora/"));
    EXPECT_EQ(modus(ordner.pfad(u"kalvora/")), 0700u);
}

TEST_F(Tempordner, Vorgefundenes_wird_nicht_benutzt) {
    struct Fall {
        const char* was;
        std::function<void(const stdfs::path&)> lege_an;
    };
    for (const Fall& f : std::vector<Fall>{{"open to others",
                                            [](const stdfs::path& p) {
                                                stdfs::create_directory(p);
                                                chmod(p.c_str(), 0755);
                                            }},
                                           {"a link",
                                            [&](const stdfs::path& p) {
                                                stdfs::create_directory(ordner.ordner() / "fremd");
                                                chmod((ordner.ordner() / "fremd").c_str(), 0700);
                                                stdfs::create_symlink(ordner.ordner() / "fremd", p);
                                            }},
                                           {"a file", [](const stdfs::path& p) { std::ofstream(p) << "x"; }},
                                           {"another's", [](const stdfs::path& p) {
                                                stdfs::create_directory(p);
                                                chmod(p.c_str(), 0700);
                                                if (geteuid() != 0 || chown(p.c_str(), 4242, 4242) != 0)
                                                    chmod(p.c_str(), 0701);
                                            }}}) {
        const stdfs::path üblich = ordner.ordner() / name();
        stdfs::remove_all(üblich);
        f.lege_an(üblich);
        PosixEnvironment neu;
        const Text pfad = neu.private_temp_folder();
        EXPECT_TRUE(pfad.starts_with(aus_utf8(basis + "/" + name() + "-"))) << f.was << ": " << zu_utf8(pfad);
        EXPECT_EQ(modus(pfad), 0700u) << f.was;
        EXPECT_EQ(neu.private_temp_folder(), pfad) << f.was;
    }
}

TEST_F(Posix, Sperre_gilt_bis_zum_Ende_ihres_Besitzers) {
    const Text pfad = ordner.pfad(u"kalvora.lock");
    {
        PosixEnvironment erster;
        EXPECT_TRUE(erster.lock_instance(pfad));
        EXPECT_TRUE(erster.lock_instance(pfad)) << "its own lock";
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

TEST(Gebietsschema, Tabelle) {
    struct Fall {
        const char* name;
        Datumsreihenfolge reihenfolge;
        char16_t trennzeichen, dezimal, liste;
        const char* januar;
        int land;
        const char* kürzel;
    };
    constexpr auto MTJ = Datumsreihenfolge::MonatTagJahr, TMJ = Datumsreihenfolge::TagMonatJahr,
                   JMT = Datumsreihenfolge::JahrMonatTag;
    // Names in a code page other than UTF-8 are never asked of the system: the table alone answers.
    for (const Fall& f : {
             Fall{"", TMJ, u'.', u',', u';', "Januar", 49, "DEU"},
             Fall{"C", TMJ, u'.', u',', u';', "Januar", 49, "DEU"},
             Fall{"C.UTF-8", TMJ, u'.', u',', u';', "Januar", 49, "DEU"},
             Fall{"POSIX", TMJ, u'.', u',', u';', "Januar", 49, "DEU"},
             Fall{"de_DE@euro", TMJ, u'.', u',', u';', "Januar", 49, "DEU"},
             Fall{"de_AT.ISO-8859-1", TMJ, u'.', u',', u';', "Jänner", 43, "AUT"},
             Fall{"de_CH.ISO-8859-1", TMJ, u'.', u'.', u';', "Januar", 41, "CHE"},
             Fall{"en_US.ISO-8859-1", MTJ, u'/', u'.', u',', "January", 1, "USA"},
             Fall{"en_CA.ISO-8859-1", JMT, u'-', u'.', u',', "January", 1, "CAD"},
             Fall{"en_GB.ISO-8859-1", TMJ, u'/', u'.', u',', "January", 44, "GBR"},
             Fall{"fr_FR@euro", TMJ, u'/', u',', u';', "janvier", 33, "FRA"},
             Fall{"fr_CH.ISO-8859-1", TMJ, u'.', u'.', u';', "janvier", 41, "CHE"},
             Fall{"fr_BE@euro", TMJ, u'/', u',', u';', "janvier", 32, "BEL"},
             Fall{"nl_NL@euro", TMJ, u'-', u',', u';', "januari", 31, "NLD"},
             Fall{"sv_SE.ISO-8859-1", JMT, u'-', u',', u';', "januari", 46, "SWE"},
             Fall{"pl_PL.ISO-8859-2", TMJ, u'.', u',', u';', "styczeń", 48, "POL"},
             Fall{"cs_CZ.ISO-8859-2", TMJ, u'.', u',', u';', "leden", 420, "CZE"},
             Fall{"de_LU@euro", TMJ, u'.', u',', u';', "Januar", 352, "LUX"},
             Fall{"xx_YY", TMJ, u'.', u',', u';', "Januar", 49, "DEU"},
         }) {
        const Locale l = Gebietsschema(f.name, f.name);
        EXPECT_EQ(l.datum.reihenfolge, f.reihenfolge) << f.name;
        EXPECT_EQ(l.datum.trennzeichen, f.trennzeichen) << f.name;
        EXPECT_EQ(l.Dezimaltrennzeichen, f.dezimal) << f.name;
        EXPECT_EQ(l.Listentrennzeichen, f.liste) << f.name;
        EXPECT_EQ(zu_utf8(l.Monatsnamen[0]), f.januar) << f.name;
        EXPECT_EQ(l.Ländernummer, f.land) << f.name;
        EXPECT_EQ(zu_utf8(l.Landeskürzel), f.kürzel) << f.name;
    }
    EXPECT_EQ(Gebietsname_aus("fr").gebiet, "FR");
    EXPECT_EQ(Gebietsname_aus("DE_at").sprache, "de");
}

TEST(Gebietsschema, Muster) {
    struct Fall {
        const char* muster;
        Datumsreihenfolge reihenfolge;
        char16_t trennzeichen;
    };
    constexpr auto MTJ = Datumsreihenfolge::MonatTagJahr, TMJ = Datumsreihenfolge::TagMonatJahr,
                   JMT = Datumsreihenfolge::JahrMonatTag;
    for (const Fall& f :
         {Fall{"%d.%m.%Y", TMJ, u'.'}, Fall{"%m/%d/%y", MTJ, u'/'}, Fall{"%D", MTJ, u'/'},
          Fall{"%Y-%m-%d", JMT, u'-'}, Fall{"%F", JMT, u'-'}, Fall{"%-d.%-m.%Y", TMJ, u'.'},
          Fall{"%e. %m. %Y", TMJ, u'.'}, Fall{"%Y年%m月%d日", JMT, u'/'}, Fall{"%Oy/%Om/%Od", JMT, u'/'},
          Fall{"%a %d %b %Y", TMJ, u'/'}, Fall{"", TMJ, u'/'}, Fall{"%", TMJ, u'/'}}) {
        EXPECT_EQ(Datumsformat_aus_Muster(f.muster).reihenfolge, f.reihenfolge) << f.muster;
        EXPECT_EQ(Datumsformat_aus_Muster(f.muster).trennzeichen, f.trennzeichen) << f.muster;
    }
}

TEST_F(Posix, Gebietsschema_folgt_den_Variablen_in_ihrem_Rang) {
    const Variable alle("LC_ALL", nullptr), sprache("LANG", "en_US.ISO-8859-1"), zeit("LC_TIME", nullptr),
        zahl("LC_NUMERIC", "de_DE@euro");
    EXPECT_EQ(umgebung.locale().datum.reihenfolge, Datumsreihenfolge::MonatTagJahr);
    EXPECT_EQ(umgebung.locale().Dezimaltrennzeichen, u',');
    {
        const Variable leer("LC_TIME", "");
        EXPECT_EQ(umgebung.locale().Ländernummer, 1) << "an empty one counts as none";
        const Variable schwedisch("LC_TIME", "sv_SE.ISO-8859-1");
        EXPECT_EQ(umgebung.locale().datum.reihenfolge, Datumsreihenfolge::JahrMonatTag);
        const Variable über("LC_ALL", "fr_FR@euro");
        EXPECT_EQ(umgebung.locale().Monatsnamen[1], u"février");
    }
    const Variable c("LC_ALL", "C.UTF-8");
    EXPECT_EQ(umgebung.locale().Monatsnamen[2], u"März") << "C stands for no locale at all";
}

} // namespace
} // namespace kalvora
