#include "frame/aufruf.h"

#include <algorithm>
#include <array>

namespace kalvora {

namespace {

struct Bekannt {
    TextView name;
    bool mit_Wert;
};
constexpr std::array BEKANNTE{Bekannt{u"d", true},
                              Bekannt{u"enforcestart", false},
                              Bekannt{u"nowelcomescreen", false},
                              Bekannt{u"silent", false},
                              Bekannt{u"path", true},
                              Bekannt{u"setpath", true},
                              Bekannt{u"lookback", false},
                              Bekannt{u"a", true},
                              Bekannt{u"setting", true}};

// The known name at the beginning of a text that follows a "/", or none.
const Bekannt* Kopf(TextView text) {
    if (!text.starts_with(u'/')) return nullptr;
    const TextView kopf = text.substr(1, text.find_first_of(u": ", 1) - 1);
    const auto* treffer = std::find_if(BEKANNTE.begin(), BEKANNTE.end(),
                                       [&](const Bekannt& b) { return gleich_ohne_Fall(b.name, kopf); });
    return treffer == BEKANNTE.end() ? nullptr : treffer;
}

std::vector<Text> zerlegt(const std::vector<Text>& argumente) {
    std::vector<Text> aus;
    for (const Text& argument : argumente) {
        size_t von = 0;
        if (Kopf(argument))
            for (size_t i = argument.find(u" /"); i != Text::npos; i = argument.find(u" /", i + 1))
                if (Kopf(TextView(argument).substr(i + 1))) {
                    aus.push_back(argument.substr(von, i - von));
                    von = i + 1;
                }
        aus.push_back(argument.substr(von));
    }
    return aus;
}

Text ohne_Anführung(TextView wert) {
    wert = trimmen(wert);
    if (wert.starts_with(u'"')) wert.remove_prefix(1);
    if (wert.ends_with(u'"')) wert.remove_suffix(1);
    return Text(trimmen(wert));
}

} // namespace

Aufruf::Aufruf(const std::vector<Text>& argumente) {
    const std::vector<Text> teile = zerlegt(argumente);
    for (size_t i = 0; i < teile.size(); ++i) {
        const Bekannt* bekannt = Kopf(teile[i]);
        if (!bekannt) continue;
        TextView wert = TextView(teile[i]).substr(1 + bekannt->name.size());
        wert = trimmen_links(wert);
        if (wert.starts_with(u':')) wert.remove_prefix(1);
        Text fertig = ohne_Anführung(wert);
        if (fertig.empty() && bekannt->mit_Wert && i + 1 < teile.size() && !Kopf(teile[i + 1]))
            fertig = ohne_Anführung(teile[++i]);
        parameter_.push_back({Text(bekannt->name), std::move(fertig)});
    }
}

const Aufruf::Parameter* Aufruf::erster(std::initializer_list<TextView> namen) const {
    const auto treffer = std::find_if(parameter_.begin(), parameter_.end(), [&](const Parameter& p) {
        return std::find(namen.begin(), namen.end(), p.name) != namen.end();
    });
    return treffer == parameter_.end() ? nullptr : &*treffer;
}

std::optional<Text> Aufruf::Aufrufparameter(TextView name) const {
    const Parameter* p = erster({name});
    return p ? std::optional(p->wert) : std::nullopt;
}

} // namespace kalvora
