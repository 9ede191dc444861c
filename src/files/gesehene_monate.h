// What this workstation has read of each month: what has gone since is a fault, not an empty month.
#pragma once

#include <map>

#include "files/monatsdatei.h"

namespace kalvora {

class Gesehene_Monate {
public:
    void merken(const Monatsinhalt& inhalt) {
        if (!inhalt.stamm.empty()) monate_[inhalt.yymm] = {inhalt.stamm, inhalt.größe, inhalt.kopf};
    }
    void merken(const Text& yymm, const Text& stamm) { monate_[yymm].stamm = stamm; } // listed alone
    void vergessen() { monate_.clear(); }
    bool bekannt(const Text& yymm) const { return monate_.contains(yymm); }
    // The month had a newer version, or has none any more.
    bool verschwunden(const Monatsinhalt& inhalt) const {
        const auto gesehen = monate_.find(inhalt.yymm);
        return gesehen != monate_.end() && inhalt.stamm < gesehen->second.stamm;
    }
    // Lines have gone from its end: versions only grow, and a rewrite has another head.
    bool geschrumpft(const Monatsinhalt& inhalt) const {
        const auto gesehen = monate_.find(inhalt.yymm);
        if (gesehen == monate_.end() || gesehen->second.stamm != inhalt.stamm) return false;
        return inhalt.größe < gesehen->second.größe && gesehen->second.kopf.starts_with(inhalt.kopf);
    }

private:
    struct Gesehen {
        Text stamm;
        std::uint64_t größe = 0; // 0: only listed
        std::string kopf;
    };
    std::map<Text, Gesehen> monate_; // by yymm
};

} // namespace kalvora
