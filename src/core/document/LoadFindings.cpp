#include "document/LoadFindings.h"

#include "document/NumberText.h"
#include "document/Paths.h"

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
    return "warning: " + FindingPlace(finding, texts) + " (" +
           TextOf(texts, FindingMessage(finding.Kind)) + ")";
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
        std::error_code ec;
        if (!std::filesystem::exists(paths::Resolve(name).value_or(name), ec)) {
            return name;
        }
    }
}

std::optional<std::string> KeepOriginal(const std::string& script, std::string& error) {
    const std::string from = paths::Resolve(script).value_or(script);
    std::error_code ec;
    for (int attempt = 0; attempt < 16; ++attempt) {
        const std::string to = KeptOriginalName(script);
        // copy_options::none refuses a target that exists, so a name taken
        // in the meantime is never replaced; the next free one is tried.
        if (std::filesystem::copy_file(from, to, std::filesystem::copy_options::none, ec)) {
            return to;
        }
        if (ec != std::errc::file_exists) {
            // Nothing half copied stays behind under the kept name.
            std::error_code ignored;
            if (std::filesystem::exists(to, ignored) &&
                !std::filesystem::equivalent(from, to, ignored)) {
                std::filesystem::remove(to, ignored);
            }
            break;
        }
    }
    error = ec.message();
    return std::nullopt;
}

} // namespace quarle
