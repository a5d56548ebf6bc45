#include "ui/mainwindow/LimitMessages.h"

#include "localisation/GlobalStrings.h"
#include "ui/localisation/Messages.h"

namespace quarle::ui {

void RefuseAtLimit(const AppState& state, platform::Services& services, Msg message, int limit) {
    services.MsgBox(MessageText(state, message, {QString::number(limit)}), platform::Buttons::Ok,
                    platform::Icon::Exclamation, QString::fromStdString(state.IdsTexts[IDS_ERROR]));
}

} // namespace quarle::ui
