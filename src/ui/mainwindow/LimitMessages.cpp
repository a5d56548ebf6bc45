#include "ui/mainwindow/LimitMessages.h"

#include "localisation/GlobalStrings.h"

namespace quarle::ui {

void RefuseAtLimit(const AppState& state, platform::Services& services, const char* text) {
    services.MsgBox(QString::fromUtf8(text), platform::Buttons::Ok, platform::Icon::Exclamation,
                    QString::fromStdString(state.IdsTexts[IDS_ERROR]));
}

} // namespace quarle::ui
