// One adapter joins one control of the core to its widget: it shows the control's state without raising
// user events, and hands the user's actions in. What the logic refuses is shown again as it is.
#pragma once

#include <QAction>
#include <QObject>
#include <memory>

#include "platform/window/form.h"

namespace kalvora {

class Adapter : public QObject {
    Q_OBJECT
public:
    virtual void show(Aspect aspect) = 0; // mirrors what changed
    virtual void show_all() = 0;
    virtual QWidget* widget() const { return nullptr; }
    // No event any more; the control may be gone from now on.
    virtual void detach() = 0;
};

// The widget of the control's object name, of the control's kind; throws when it is missing or another one.
std::unique_ptr<Adapter> Adapter_für(Control& control, QWidget& window);
// Menu entries have no widget: `action` is the entry's own, or that of its menu.
std::unique_ptr<Adapter> Adapter_für(MenuItem& item, QAction& action);

} // namespace kalvora
