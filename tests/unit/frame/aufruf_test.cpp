#include "frame/aufruf.h"

#include <gtest/gtest.h>

namespace kalvora {
namespace {

// "name=value" of each known parameter that was found, in this order.
std::vector<Text> gefunden(const std::vector<Text>& argumente) {
    const Aufruf aufruf(argumente);
    std::vector<Text> aus;
    for (const TextView name : {u"d", u"enforcestart", u"nowelcomescreen", u"silent", u"path", u"setpath",
                                u"lookback", u"a", u"setting"}) {
        const auto wert = aufruf.Aufrufparameter(name);
        EXPECT_EQ(wert.has_value(), aufruf.enthalten(name));
        if (wert) aus.push_back(Text(name) + u"=" + *wert);
    }
    return aus;
}

TEST(Aufruf, Lesarten) {
    using Worte = std::vector<Text>;
    const struct {
        Worte argumente, gefunden;
    } tafel[] = {
        {{}, {}},
        {{u"/path", u"/srv/x"}, {u"path=/srv/x"}},
        {{u"/path:/srv/x"}, {u"path=/srv/x"}},
        {{u"/path /srv/x"}, {u"path=/srv/x"}},
        {{u"/PATH", u"/Srv/X y/"}, {u"path=/Srv/X y/"}},
        {{u"/path: /srv/x "}, {u"path=/srv/x"}},
        {{u"/path", u"\"/srv/x y\""}, {u"path=/srv/x y"}},
        {{u"/path:\"/srv/x\""}, {u"path=/srv/x"}},
        {{u"/path", u"relativ/data"}, {u"path=relativ/data"}},
        {{u"/path"}, {u"path="}},
        {{u"/path", u""}, {u"path="}},
        {{u"/path", u"/silent"}, {u"silent=", u"path="}},
        {{u"/path /srv/x /silent"}, {u"silent=", u"path=/srv/x"}},
        {{u"/path /srv/x /d:041126 /nowelcomescreen"}, {u"d=041126", u"nowelcomescreen=", u"path=/srv/x"}},
        {{u"/nowelcomescreen /path", u"/srv/x"}, {u"nowelcomescreen=", u"path=/srv/x"}},
        {{u"/silent /a:DienstLauf"}, {u"silent=", u"a=DienstLauf"}},
        // Paths that hold the name of a parameter are paths.
        {{u"/path", u"/srv/silent/data"}, {u"path=/srv/silent/data"}},
        {{u"/path", u"/home/x/settings"}, {u"path=/home/x/settings"}},
        {{u"/path", u"/silents"}, {u"path=/silents"}},
        {{u"/path", u"/srv/x /silent"}, {u"path=/srv/x /silent"}},
        {{u"/path /srv/a /b/silent/c"}, {u"path=/srv/a /b/silent/c"}},
        {{u"/srv/silent/data"}, {}},
        {{u"/pathology", u"/srv/x"}, {}},
        {{u"/settings 3=7"}, {}},
        {{u"silent", u"path", u"-silent", u"/", u"//silent", u"\\silent", u""}, {}},
        {{u"/d:041126"}, {u"d=041126"}},
        {{u"/d", u"041126"}, {u"d=041126"}},
        {{u"/d041126"}, {}},
        {{u"/setting", u"3=7"}, {u"setting=3=7"}},
        {{u"/setting:3=7"}, {u"setting=3=7"}},
        {{u"/setting 3=7"}, {u"setting=3=7"}},
        {{u"/a:dienstlauf"}, {u"a=dienstlauf"}},
        {{u"/setpath", u"/srv/x"}, {u"setpath=/srv/x"}},
        {{u"/silent", u"/srv/x"}, {u"silent="}}, // has no value: what follows is nothing
        {{u"/path", u"/srv/a", u"/path", u"/srv/b"}, {u"path=/srv/a"}}, // the first one counts
        {{u"/lookback", u"/enforcestart"}, {u"enforcestart=", u"lookback="}},
        {{u"/path", u"/srv/M\u00FCller/\u00DCbersicht"}, {u"path=/srv/M\u00FCller/\u00DCbersicht"}},
    };
    for (const auto& fall : tafel)
        EXPECT_EQ(gefunden(fall.argumente), fall.gefunden)
            << zu_utf8(fall.argumente.empty() ? u"" : fall.argumente.front());
}

} // namespace
} // namespace kalvora
