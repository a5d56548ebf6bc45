#include "localisation/MessageTexts.h"

#include "localisation/LanguageFile.h"

namespace quarle {
namespace {

bool SameIgnoringCase(std::string_view a, std::string_view b) {
    if (a.size() != b.size()) {
        return false;
    }
    for (std::size_t i = 0; i < a.size(); ++i) {
        char x = a[i];
        char y = b[i];
        if (x >= 'a' && x <= 'z') {
            x = static_cast<char>(x - 'a' + 'A');
        }
        if (y >= 'a' && y <= 'z') {
            y = static_cast<char>(y - 'a' + 'A');
        }
        if (x != y) {
            return false;
        }
    }
    return true;
}

} // namespace

MessageTexts DefaultMessageTexts() {
    MessageTexts texts;
    for (const MessageEntry& entry : MessageTable) {
        texts[static_cast<std::size_t>(entry.Id)] = std::string(entry.English);
    }
    return texts;
}

const MessageTexts& EnglishMessageTexts() {
    static const MessageTexts english = DefaultMessageTexts();
    return english;
}

std::optional<Msg> FindMessageKey(std::string_view key) {
    for (const MessageEntry& entry : MessageTable) {
        if (SameIgnoringCase(entry.Key, key)) {
            return entry.Id;
        }
    }
    return std::nullopt;
}

bool ReadMessageTexts(const std::vector<std::string>& lines, MessageTexts& texts) {
    texts = EnglishMessageTexts();
    std::size_t i = 0;
    while (i < lines.size() && lines[i] != MessagesLine) {
        if (lines[i] == GlobalStringsLine) {
            return false;
        }
        ++i;
    }
    if (i == lines.size()) {
        return false;
    }
    for (++i; i < lines.size() && IsSectionEntry(lines[i]); ++i) {
        const LngEntry entry = *SplitEntry(lines[i]);
        const std::optional<Msg> id = FindMessageKey(entry.Key);
        if (id && !entry.Value.empty()) {
            texts[static_cast<std::size_t>(*id)] = entry.Value;
        }
    }
    return true;
}

std::string FormatMessage(std::string_view pattern, const std::vector<std::string>& args) {
    std::string out;
    out.reserve(pattern.size());
    for (std::size_t i = 0; i < pattern.size(); ++i) {
        const char c = pattern[i];
        if (c == '%' && i + 1 < pattern.size() && pattern[i + 1] >= '1' && pattern[i + 1] <= '9') {
            const auto n = static_cast<std::size_t>(pattern[i + 1] - '1');
            if (n < args.size()) {
                out += args[n];
                ++i;
                continue;
            }
        }
        out += c;
    }
    return out;
}

} // namespace quarle
