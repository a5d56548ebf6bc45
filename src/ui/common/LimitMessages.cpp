#include "ui/common/LimitMessages.h"

#include "localisation/GlobalStrings.h"
#include "ui/localisation/Messages.h"

namespace quarle::ui {

void RefuseAtLimit(const AppState& state, platform::Services& services, Msg message, int limit) {
    RefuseAtLimit(state, services, message, {QString::number(limit)});
}

void RefuseAtLimit(const AppState& state, platform::Services& services, Msg message,
                   std::initializer_list<QString> args) {
    services.MsgBox(MessageText(state, message, args), platform::Buttons::Ok,
                    platform::Icon::Exclamation, QString::fromStdString(state.IdsTexts[IDS_ERROR]));
}

} // namespace quarle::ui
