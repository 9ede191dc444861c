#include "files/ordner.h"

#include "hilfen/schaden.h"

namespace kalvora {
namespace {

TEST(Ordner, DateienLöschenSagtObAlleGingen) {
    Prüfplatz p;
    for (const TextView name : {u"a.log", u"B.LOG", u"c.dat"})
        p.fs.schreibe(p.daten(name), "x");
    p.fs.störe({.aufruf = "remove", .maske = u"a.log", .nummer = 70});
    EXPECT_FALSE(Dateien_löschen(p.fs, u"/srv/x/Data", u"*.log"));
    EXPECT_TRUE(p.fs.gibt_es(p.daten(u"a.log")) && !p.fs.gibt_es(p.daten(u"B.LOG"))) << "the others go";
    EXPECT_TRUE(Dateien_löschen(p.fs, u"/srv/x/Data/", u"*.log"));
    EXPECT_TRUE(p.fs.gibt_es(p.daten(u"c.dat")));
    EXPECT_TRUE(Dateien_löschen(p.fs, u"/srv/fehlt/", u"*"));
}

} // namespace
} // namespace kalvora
