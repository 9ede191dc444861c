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
        {{u"/path", u"/srv/x"}, {u"path=/srv/x"}},
        {{u"/path:/srv/x"}, {u"path=/srv/x"}},
        {{u"/path /srv/x"}, {u"path=/srv/x"}},
        {{u"/PATH", u"/Srv/X y/"}, {u"path=/Srv/X y/"}},
        {{u"/path:\"/srv/x\""}, {u"path=/srv/x"}},
        {{u"/path"}, {u"path="}},
        {{u"/path", u"/silent"}, {u"silent=", u"path="}},
        {{u"/path /srv/x /d:041126 /nowelcomescreen"}, {u"d=041126", u"nowelcomescreen=", u"path=/srv/x"}},
        // Paths that hold the name of a parameter are paths.
        {{u"/path", u"/silents"}, {u"path=/silents"}},
        {{u"/path", u"/srv/x /silent"}, {u"path=/srv/x /silent"}},
        {{u"/path /srv/a /b/silent/c"}, {u"path=/srv/a /b/silent/c"}},
        {{u"/srv/silent/data"}, {}},
        {{u"/settings 3=7"}, {}},
        {{u"silent", u"path", u"-silent", u"/", u"//silent", u"\\silent", u""}, {}},
        {{u"/d:041126"}, {u"d=041126"}},
        {{u"/d041126"}, {}},
        {{u"/setting 3=7"}, {u"setting=3=7"}},
        {{u"/silent", u"/srv/x"}, {u"silent="}}, // has no value: what follows is nothing
        {{u"/path", u"/srv/a", u"/path", u"/srv/b"}, {u"path=/srv/a"}}, // the first one counts
    };
    for (const auto& fall : tafel)
        EXPECT_EQ(gefunden(fall.argumente), fall.gefunden)
            << zu_utf8(fall.argumente.empty() ? u"" : fall.argumente.front());
}

} // namespace
} // namespace kalvora
