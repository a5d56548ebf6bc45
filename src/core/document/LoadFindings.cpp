#include "document/LoadFindings.h"

#include "document/InputFile.h"
#include "document/NumberText.h"
#include "document/Paths.h"
#include "document/SafeWrite.h"
#include "localisation/Cp1252.h"

#include <algorithm>
#include <filesystem>
#include <system_error>

namespace quarle {

namespace {

const std::string& TextOf(const MessageTexts& texts, Msg key) {
    return texts[static_cast<std::size_t>(key)];
}

} // namespace

std::string FindingPlace(const LoadFinding& finding, const MessageTexts& texts) {
    if (finding.Line <= 0) {
        return paths::FileNameOf(finding.File) + ": " + finding.Text;
    }
    return FormatMessage(TextOf(texts, MSG_FINDING_PLACE),
                         {paths::FileNameOf(finding.File), IntToText(finding.Line), finding.Text});
}

std::string FindingWarning(const LoadFinding& finding, const MessageTexts& texts) {
    std::string line = "warning: " + FindingPlace(finding, texts) + " (" +
                       TextOf(texts, FindingMessage(finding.Kind)) + ")";
    if (finding.Unread.Failure != OpenFailure::None) {
        line += ": " + DescribeOpenProblem(finding.Unread, texts);
    }
    return line;
}

std::array<std::size_t, FindingKinds> CountFindings(const LoadFindings& findings) {
    std::array<std::size_t, FindingKinds> counts{};
    for (const LoadFinding& f : findings) {
        ++counts[static_cast<std::size_t>(f.Kind)];
    }
    return counts;
}

std::string FindingsHead(const LoadFindings& findings, const MessageTexts& texts) {
    const auto model = static_cast<long long>(std::count_if(
        findings.begin(), findings.end(), [](const LoadFinding& f) { return ChangesModel(f.Kind); }));
    if (model == 0) {
        return TextOf(texts, MSG_FINDINGS_SAME_MODEL);
    }
    return model == 1 ? TextOf(texts, MSG_FINDINGS_MODEL_ONE)
                      : FormatMessage(TextOf(texts, MSG_FINDINGS_MODEL_MANY), {IntToText(model)});
}

std::string KeptOriginalName(const std::string& script) {
    for (long long n = 1;; ++n) {
        const std::string name = script + ".orig" + (n == 1 ? std::string() : IntToText(n));
        // A name that cannot be tested is taken: the copy then tells why.
        if (!paths::ResolveFs(name)) {
            return name;
        }
    }
}

std::optional<std::string> KeepOriginal(const std::string& script, std::string& error,
                                        const MessageTexts& texts) {
    OpenProblem problem;
    const std::optional<std::string> bytes = ReadFileText(script, FileKind::Script, &problem);
    if (!bytes) {
        problem.Path = Cp1252ToUtf8(problem.Path);
        error = DescribeOpenProblem(problem, texts);
        return std::nullopt;
    }
    SafeWriteResult written;
    for (int attempt = 0; attempt < 16; ++attempt) {
        const std::string to = KeptOriginalName(script);
        // Never over a file: a name taken in the meantime is passed over
        // for the next free one.
        SafeWriteOptions options;
        options.Replace = false;
        options.TemporaryOf = paths::ToFsPath(script);
        written = WriteFileSafely(
            paths::ToFsPath(to), [&](std::ostream& out) { out << *bytes; }, options);
        if (written) {
            return to;
        }
        if (written.Step != SafeWriteStep::Exists) {
            break;
        }
    }
    error = SystemReasonText(written.System, texts);
    return std::nullopt;
}

} // namespace quarle
