// What a load of a script finds: the message after the load that says
// whether a save changes what the compiler reads and names the places worth
// knowing, and the copy of the original that the first save over such a
// script keeps beside it.
#include "ui/mainwindow/LoadReport.h"

#include "document/LoadFindings.h"
#include "document/Paths.h"
#include "localisation/GlobalStrings.h"
#include "platform/Cp1252Text.h"
#include "ui/localisation/Messages.h"

#include <QStringList>
#include <algorithm>
#include <filesystem>
#include <system_error>

namespace quarle::ui {
namespace {

// Paths cross as the file commands hand them over.
QString PathText(const std::string& path) {
    return QString::fromStdString(path);
}

bool SameScript(const std::string& a, const std::string& b) {
    if (a == b) {
        return true;
    }
    std::error_code ec;
    return std::filesystem::equivalent(paths::Resolve(a).value_or(a), paths::Resolve(b).value_or(b),
                                       ec) &&
           !ec;
}

// A quoted line longer than this is cut, so that the message keeps a
// readable width.
constexpr int QuotedLineWidth = 80;

QString Place(const AppState& state, const LoadFinding& finding) {
    QString text = platform::FromCp1252(finding.Text);
    if (text.size() > QuotedLineWidth) {
        text = text.left(QuotedLineWidth - 3) + QStringLiteral("...");
    }
    QString place = MessageText(
        state, MSG_FINDING_PLACE,
        {PathText(paths::FileNameOf(finding.File)), QString::number(finding.Line), text});
    if (finding.Unread.Failure != OpenFailure::None) {
        place += QStringLiteral("\n    ") + OpenProblemText(state, finding.Unread);
    }
    return place;
}

} // namespace

void LoadReport::ReportLoadFindings(const LoadFindings& findings) {
    const std::string& script = state_.Doc.QcFile;
    if (findings.empty() || script.empty()) {
        return;
    }
    KeepOriginalOnFirstSave(script);

    QStringList lines;
    // Whether a save changes what the compiler reads, first; then each kind.
    lines << QString::fromStdString(FindingsHead(findings, state_.MsgTexts));
    lines << QString();
    const auto counts = CountFindings(findings);
    for (int k = 0; k < FindingKinds; ++k) {
        const std::size_t n = counts[static_cast<std::size_t>(k)];
        if (n > 0) {
            lines << QString::number(n) + QStringLiteral(" \u00d7 ") +
                         MessageText(state_, FindingMessage(static_cast<FindingKind>(k)));
        }
    }
    lines << QString() << MessageText(state_, MSG_FINDINGS_FIRST);
    const std::size_t quoted = std::min(findings.size(), QuotedFindings);
    for (std::size_t i = 0; i < quoted; ++i) {
        lines << Place(state_, findings[i]);
    }
    if (findings.size() > quoted) {
        lines << MessageText(state_, MSG_FINDINGS_MORE,
                             {QString::number(findings.size() - quoted)});
    }
    lines << QString()
          << MessageText(state_, MSG_FINDINGS_KEPT,
                         {PathText(paths::FileNameOf(KeptOriginalName(script)))});
    services_.MsgBox(lines.join(QLatin1Char('\n')), platform::Buttons::Ok,
                     platform::Icon::Exclamation, MessageText(state_, MSG_FINDINGS_TITLE));
}

void LoadReport::ForgetIncludesReported() {
    includesReported_.clear();
}

void LoadReport::ReportIncludesWrittenIn(const std::vector<std::string>& includes) {
    QStringList names;
    for (const std::string& include : includes) {
        if (std::find(includesReported_.begin(), includesReported_.end(), include) ==
            includesReported_.end()) {
            includesReported_.push_back(include);
            names << platform::FromCp1252(include);
        }
    }
    if (names.isEmpty()) {
        return;
    }
    services_.MsgBox(
        MessageText(state_, MSG_INCLUDES_WRITTEN_IN, {names.join(QStringLiteral(", "))}),
        platform::Buttons::Ok, platform::Icon::Information,
        MessageText(state_, MSG_FINDINGS_TITLE));
}

void LoadReport::KeepOriginalOnFirstSave(const std::string& script) {
    if (std::none_of(originalsToKeep_.begin(), originalsToKeep_.end(),
                     [&](const std::string& kept) { return SameScript(kept, script); })) {
        originalsToKeep_.push_back(script);
    }
}

void LoadReport::ReportNoDirective() {
    const std::string& script = state_.Doc.QcFile;
    if (script.empty()) {
        return;
    }
    QStringList paragraphs{
        MessageText(state_, MSG_NO_DIRECTIVE, {platform::FromCp1252(paths::FileNameOf(script))})};
    // An empty file has nothing in it worth keeping.
    std::error_code ec;
    const auto size =
        std::filesystem::file_size(paths::ToFsPath(paths::Resolve(script).value_or(script)), ec);
    if (!ec && size > 0) {
        KeepOriginalOnFirstSave(script);
        paragraphs << MessageText(
            state_, MSG_FINDINGS_KEPT,
            {platform::FromCp1252(paths::FileNameOf(KeptOriginalName(script)))});
    }
    services_.MsgBox(paragraphs.join(QStringLiteral("\n\n")), platform::Buttons::Ok,
                     platform::Icon::Exclamation, MessageText(state_, MSG_FINDINGS_TITLE));
}

bool LoadReport::KeepOriginalBeforeSave() {
    const std::string& script = state_.Doc.QcFile;
    const auto pending =
        std::find_if(originalsToKeep_.begin(), originalsToKeep_.end(),
                     [&](const std::string& kept) { return SameScript(kept, script); });
    if (pending == originalsToKeep_.end()) {
        return true;
    }
    // A script that is gone has no original left to keep.
    if (!paths::FileExists(script)) {
        originalsToKeep_.erase(pending);
        return true;
    }
    std::string error;
    if (KeepOriginal(script, error, state_.MsgTexts)) {
        originalsToKeep_.erase(pending);
        return true;
    }
    services_.MsgBox(
        MessageText(state_, MSG_KEEP_ORIGINAL_FAILED, {PathText(KeptOriginalName(script))}) +
            QStringLiteral("\n\n") + QString::fromStdString(error),
        platform::Buttons::Ok, platform::Icon::Critical,
        QString::fromStdString(state_.IdsTexts[IDS_ERROR]));
    return false;
}

} // namespace quarle::ui
