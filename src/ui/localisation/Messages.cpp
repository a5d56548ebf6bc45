#include "ui/localisation/Messages.h"

#include "localisation/Cp1252.h"
#include "localisation/GlobalStrings.h"
#include "platform/Cp1252Text.h"

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

std::optional<std::string> TypedText(const AppState& state, platform::Services& services,
                                     const QString& text) {
    std::optional<std::string> bytes = platform::ToCp1252(text);
    if (!bytes) {
        services.MsgBox(MessageText(state, MSG_TEXT_NOT_CP1252, {text}), platform::Buttons::Ok,
                        platform::Icon::Exclamation,
                        QString::fromStdString(state.IdsTexts[IDS_ERROR]));
    }
    return bytes;
}

QString OpenProblemText(const AppState& state, const OpenProblem& problem) {
    OpenProblem told = problem;
    told.Path = Cp1252ToUtf8(problem.Path);
    return QString::fromStdString(DescribeOpenProblem(told, state.MsgTexts));
}

bool TellUnreadFile(const AppState& state, platform::Services& services,
                    const OpenProblem& problem) {
    if (problem.Failure == OpenFailure::None || problem.Failure == OpenFailure::Missing) {
        return false;
    }
    services.MsgBox(OpenProblemText(state, problem), platform::Buttons::Ok,
                    platform::Icon::Exclamation, QString::fromStdString(state.IdsTexts[IDS_ERROR]));
    return true;
}

} // namespace quarle::ui
