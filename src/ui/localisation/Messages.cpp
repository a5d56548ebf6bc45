#include "ui/localisation/Messages.h"

#include <string>
#include <vector>

namespace quarle::ui {

QString MessageText(const AppState& state, Msg key, std::initializer_list<QString> args) {
    std::vector<std::string> utf8;
    utf8.reserve(args.size());
    for (const QString& arg : args) {
        utf8.push_back(arg.toStdString());
    }
    return QString::fromStdString(
        FormatMessage(state.MsgTexts[static_cast<std::size_t>(key)], utf8));
}

} // namespace quarle::ui
