// German texts for what Qt brings along itself (buttons and menus of its own widgets), so that they do not
// depend on translation files of the workstation.
#pragma once

#include <QTranslator>

namespace kalvora {

class DeutscheTexte : public QTranslator {
    Q_OBJECT
public:
    using QTranslator::QTranslator;
    bool isEmpty() const override { return false; }
    QString translate(const char* context, const char* source, const char* disambiguation,
                      int n) const override;
};

} // namespace kalvora
