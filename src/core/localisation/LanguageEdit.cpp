#include "localisation/LanguageEdit.h"

#include "localisation/Cp1252.h"

#include <algorithm>
#include <cctype>
#include <optional>
#include <vector>

namespace quarle {
namespace {

std::string Upper(std::string_view text) {
    std::string upper(text);
    for (char& c : upper) {
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    return upper;
}

bool StartsWith(std::string_view text, std::string_view head) {
    return text.substr(0, head.size()) == head;
}

class Writer {
public:
    void Line(std::string_view line) {
        text_.append(line);
        text_.append("\r\n");
    }
    void Entry(std::string_view key, std::string_view value) {
        text_.append(key);
        text_.append(" = ");
        text_.append(value);
        text_.append("\r\n");
    }
    std::string Bytes() const { return Utf8ToCp1252(text_); }

private:
    std::string text_;
};

} // namespace

std::string LngEdit::Key() const {
    return Index > -1 ? Item + "(" + std::to_string(Index) + ")" : Item;
}

std::string SaveEntry(std::string_view bytes, EditMode mode, std::string_view formName,
                      const LngEdit& edit, const std::array<std::string, IdsKeyTable.size()>& names,
                      std::array<std::string, IdsKeyTable.size()>& texts,
                      std::string_view version) {
    const std::vector<std::string> lines = SplitLines(bytes);
    const bool controls = mode == EditMode::Controls;
    const std::string key = edit.Key();
    const std::string upperKey = Upper(key);
    const std::string upperForm = Upper(formName);
    std::size_t next = 0;
    const auto atEnd = [&] { return next >= lines.size(); };
    std::optional<std::string> held; // read and not yet written
    int found = 0;
    Writer out;

    out.Entry("Version", version);
    // The head, up to the form's section or the strings.
    while (!atEnd()) {
        const std::string& line = lines[next++];
        const std::string upper = Upper(line);
        if (controls && upper == "GLOBAL STRINGS") {
            held = line;
            break;
        }
        if (!StartsWith(line, "Version")) {
            out.Line(line);
        }
        if ((controls && upper == upperForm) || (!controls && upper == "GLOBAL STRINGS")) {
            found = 1;
            break;
        }
    }

    if (!controls) {
        if (found == 0) {
            out.Line(SeparatorLine);
            out.Line(GlobalStringsLine);
        }
        out.Entry("Anzahl", std::to_string(GlobalStringCount));
        if (!atEnd()) {
            ++next; // the old count line
        }
        for (std::size_t i = 1; i < names.size(); ++i) {
            if (edit.Item == names[i]) {
                texts[i] = edit.NewCaption;
            }
            out.Entry(names[i], texts[i]);
            if (!atEnd()) {
                ++next;
            }
        }
    } else {
        const auto writeEntry = [&] {
            out.Entry(key, edit.NewCaption);
            if (edit.WithTooltip) {
                out.Entry(key, edit.NewTooltip);
            }
        };
        if (found == 1) {
            found = 0;
            while (!atEnd()) {
                const std::string& line = lines[next++];
                const std::size_t equals = line.find('=');
                if (equals == std::string::npos || equals == 0) {
                    held = line; // the end of the section
                    break;
                }
                if (Upper(std::string_view(line).substr(0, equals - 1)) != upperKey) {
                    out.Line(line);
                    continue;
                }
                writeEntry();
                if (edit.WithTooltip && !atEnd()) {
                    ++next; // the old tool tip line
                }
                found = 1;
            }
        } else {
            out.Line(formName);
            found = -1;
        }
        if (found < 1) {
            writeEntry();
            if (found == -1) {
                out.Line("");
                out.Line(SeparatorLine);
            }
        }
        if (held) {
            out.Line(*held);
        }
    }

    while (!atEnd()) {
        out.Line(lines[next++]);
    }
    return out.Bytes();
}

std::string SaveMessage(std::string_view bytes, Msg id, std::string_view text, MessageTexts& texts,
                        std::string_view version) {
    const std::vector<std::string> lines = SplitLines(bytes);
    const std::string_view key = MessageTable[static_cast<std::size_t>(id)].Key;
    std::size_t next = 0;
    Writer out;

    out.Entry("Version", version);
    bool inSection = false;
    while (next < lines.size()) {
        const std::string& line = lines[next];
        if (line == GlobalStringsLine) {
            break;
        }
        ++next;
        if (!StartsWith(line, "Version")) {
            out.Line(line);
        }
        if (line == MessagesLine) {
            inSection = true;
            break;
        }
    }
    bool written = false;
    if (inSection) {
        while (next < lines.size() && IsSectionEntry(lines[next])) {
            const std::string& line = lines[next++];
            if (Upper(SplitEntry(line)->Key) == Upper(key)) {
                out.Entry(key, text);
                written = true;
            } else {
                out.Line(line);
            }
        }
    } else {
        out.Line(MessagesLine);
    }
    if (!written) {
        out.Entry(key, text);
    }
    if (!inSection) {
        out.Line("");
        out.Line(SeparatorLine);
    }
    while (next < lines.size()) {
        out.Line(lines[next++]);
    }
    texts[static_cast<std::size_t>(id)] =
        text.empty() ? EnglishMessageTexts()[static_cast<std::size_t>(id)] : std::string(text);
    return out.Bytes();
}

std::string NewLanguage(std::string_view activeBytes, std::string_view description,
                        std::string_view version) {
    Writer out;
    // A line break in the description starts one more header line.
    std::string info = "InfoForThis = ";
    for (const char c : description) {
        if (c == '\n') {
            out.Line(info);
            info.clear();
        } else if (c != '\r') {
            info.push_back(c);
        }
    }
    out.Line(info);
    out.Entry("Version", version);
    for (const std::string& line : SplitLines(activeBytes)) {
        const std::string upper = Upper(line);
        if (!StartsWith(upper, "INFOFORTHIS") && !StartsWith(upper, "VERSION")) {
            out.Line(line);
        }
    }
    return out.Bytes();
}

std::string LanguageFileName(std::string_view language) {
    std::string name;
    for (const char c : language) {
        if (c != ' ') {
            name.push_back(c);
        }
    }
    return name + ".lng";
}

} // namespace quarle

namespace quarle {
namespace {

std::string TrimBlanks(std::string_view text) {
    const std::size_t first = text.find_first_not_of(' ');
    if (first == std::string_view::npos) {
        return {};
    }
    const std::size_t last = text.find_last_not_of(' ');
    return std::string(text.substr(first, last - first + 1));
}

// The fields of one line, as a sequential read by fields gives them.
std::vector<std::string> Fields(std::string_view line) {
    std::vector<std::string> fields;
    std::size_t at = 0;
    while (true) {
        while (at < line.size() && line[at] == ' ') {
            ++at;
        }
        std::size_t end = at;
        if (at < line.size() && line[at] == '"') {
            const std::size_t close = std::min(line.find('"', at + 1), line.size());
            fields.emplace_back(line.substr(at + 1, close - at - 1));
            end = close;
        } else {
            end = std::min(line.find(',', at), line.size());
            fields.push_back(TrimBlanks(line.substr(at, end - at)));
        }
        const std::size_t comma = line.find(',', end);
        if (comma == std::string_view::npos) {
            return fields;
        }
        at = comma + 1;
    }
}

} // namespace

LanguageHeader ReadLanguageHeader(const std::vector<std::string>& lines) {
    static constexpr std::string_view InfoMark = "InfoForThis =";
    static constexpr std::string_view VersionMark = "Version =";
    LanguageHeader header;
    for (const std::string& line : lines) {
        for (const std::string& field : Fields(line)) {
            if (const std::size_t info = field.find(InfoMark); info != std::string::npos) {
                const std::size_t from = info + InfoMark.size() + 1;
                header.Info = from < field.size() ? field.substr(from) : std::string();
                return header;
            }
            if (const std::size_t version = field.find(VersionMark); version != std::string::npos) {
                const std::size_t from = version + VersionMark.size() + 1;
                header.Version = TrimBlanks(from < field.size() ? field.substr(from) : "");
            }
        }
    }
    return header;
}

} // namespace quarle
