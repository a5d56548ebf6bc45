#include "document/QcTextureGroups.h"

#include "document/QcGrammar.h"

#include <algorithm>

namespace quarle {

namespace {

std::size_t Index(int i) {
    return static_cast<std::size_t>(i);
}

// Whether a row of the table replaces any texture of the given columns.
bool RowUsed(const Document& doc, int row, int columns) {
    const auto& cells = doc.TextureVariations[Index(row)];
    return std::any_of(cells.begin() + 1, cells.begin() + 1 + columns,
                       [](const std::string& cell) { return cell != Blank; });
}

std::string RowLine(const std::vector<std::string>& names) {
    std::string line = "{";
    for (const std::string& name : names) {
        line += ' ';
        line += TokenOf(name);
    }
    return line + " }";
}

int Columns(const Document& doc) {
    return std::clamp<int>(doc.TextureCount, 0, limits::LastTexture);
}

} // namespace

std::vector<RenderModeRead> MapRenderModes(Document& doc, const std::vector<RenderModeWords>& lines) {
    std::vector<RenderModeRead> reads;
    reads.reserve(lines.size());
    for (const RenderModeWords& line : lines) {
        RenderModeRead read{0, line.Mode, line.Texture, {}};
        for (int i = 1; i <= limits::LastWrittenTextureMode; ++i) {
            TextureModeRec& slot = doc.TextureModes[Index(i)];
            if (slot.Name.empty() || !SameTexture(slot.Name, line.Texture)) {
                continue;
            }
            if (slot.Mode == 0 || slot.Mode == line.Mode) {
                slot.Mode = line.Mode;
                read.Slot = i;
                read.Name = slot.Name;
            }
            break;
        }
        reads.push_back(std::move(read));
    }
    return reads;
}

std::optional<TextureGroupRead> MapTextureGroup(Document& doc, TextureGroupWords words) {
    const int count = Columns(doc);
    if (count == 0 || words.Rows.empty() || words.Rows.front().empty() ||
        static_cast<int>(words.Rows.size()) > limits::LastTextureRow) {
        return std::nullopt;
    }
    TextureGroupRead read;
    const std::vector<std::string>& base = words.Rows.front();
    std::vector<bool> taken(Index(count) + 1, false);
    for (const std::string& name : base) {
        int column = 0;
        for (int c = 1; c <= count && column == 0; ++c) {
            if (SameTexture(doc.TextureVariations[1][Index(c)], name)) {
                column = c;
            }
        }
        if (column > 0 && taken[Index(column)]) {
            return std::nullopt; // two columns of one texture: the table has one
        }
        if (column > 0) {
            taken[Index(column)] = true;
        }
        read.Columns.push_back(column);
    }
    // Rows beyond the reset's reach may hold what an earlier load left.
    for (int r = 2; r <= limits::LastTextureRow; ++r) {
        for (int c = 1; c <= limits::LastTexture; ++c) {
            doc.TextureVariations[Index(r)][Index(c)] = Blank;
        }
    }
    for (std::size_t r = 1; r < words.Rows.size(); ++r) {
        const std::vector<std::string>& row = words.Rows[r];
        for (std::size_t j = 0; j < row.size() && j < base.size(); ++j) {
            const int column = read.Columns[j];
            if (column > 0 && !SameTexture(row[j], base[j])) {
                doc.TextureVariations[r + 1][Index(column)] = row[j];
            }
        }
    }
    read.Name = std::move(words.Name);
    read.Rows = std::move(words.Rows);
    read.TextureCount = doc.TextureCount;
    read.Table = doc.TextureVariations;
    return read;
}

bool TextureGroupChanged(const Document& doc, const TextureGroupRead& read) {
    for (int r = 2; r <= limits::LastTextureRow; ++r) {
        for (int c = 1; c <= limits::LastTexture; ++c) {
            if (doc.TextureVariations[Index(r)][Index(c)] != read.Table[Index(r)][Index(c)]) {
                return true;
            }
        }
    }
    return false;
}

std::vector<std::string> TextureGroupLines(const Document& doc, const TextureGroupRead& read) {
    const int count = Columns(doc);
    const std::vector<std::string>& base = read.Rows.front();
    // The script's columns, then the others that now replace a texture.
    std::vector<int> extra;
    for (int c = 1; c <= count; ++c) {
        const bool mapped = std::find(read.Columns.begin(), read.Columns.end(), c) != read.Columns.end();
        bool used = false;
        for (int r = 2; r <= limits::LastTextureRow && !used; ++r) {
            used = doc.TextureVariations[Index(r)][Index(c)] != Blank;
        }
        if (!mapped && used) {
            extra.push_back(c);
        }
    }
    int rows = static_cast<int>(read.Rows.size());
    for (int r = limits::LastTextureRow; r > rows; --r) {
        if (RowUsed(doc, r, count)) {
            rows = r;
            break;
        }
    }
    const std::string name = IsBareToken(read.Name) ? read.Name : TokenOf(read.Name);
    std::vector<std::string> lines{"$texturegroup " + name, "{"};
    for (int r = 0; r < rows; ++r) {
        std::vector<std::string> names;
        const auto& cells = doc.TextureVariations[Index(r + 1)];
        for (std::size_t j = 0; j < base.size(); ++j) {
            const int column = read.Columns[j];
            if (r == 0) {
                names.push_back(base[j]);
            } else if (column > 0) {
                const std::string& cell = cells[Index(column)];
                names.push_back(cell == Blank ? base[j] : cell);
            } else {
                // A column the forms do not show: as the script had it.
                const bool held = r < static_cast<int>(read.Rows.size()) && j < read.Rows[Index(r)].size();
                names.push_back(held ? read.Rows[Index(r)][j] : base[j]);
            }
        }
        for (const int c : extra) {
            const std::string baseName(TextureKey(doc.TextureVariations[1][Index(c)]));
            const std::string& cell = cells[Index(c)];
            names.push_back(r == 0 || cell == Blank ? baseName : cell);
        }
        lines.push_back(RowLine(names));
    }
    lines.emplace_back("}");
    return lines;
}

std::vector<std::string> NewTextureGroupLines(const Document& doc) {
    const int count = Columns(doc);
    std::vector<std::string> lines;
    if (count == 0) {
        return lines;
    }
    std::vector<std::string> base;
    for (int c = 1; c <= count; ++c) {
        base.emplace_back(TextureKey(doc.TextureVariations[1][Index(c)]));
    }
    for (int r = 2; r <= limits::LastWrittenTextureRow; ++r) {
        if (!RowUsed(doc, r, count)) {
            continue;
        }
        if (lines.empty()) {
            lines = {"", "$texturegroup dummi", "{", RowLine(base)};
        }
        std::vector<std::string> names;
        for (int c = 1; c <= count; ++c) {
            const std::string& cell = doc.TextureVariations[Index(r)][Index(c)];
            names.push_back(cell == Blank ? base[Index(c - 1)] : cell);
        }
        lines.push_back(RowLine(names));
    }
    if (!lines.empty()) {
        lines.emplace_back("}");
    }
    return lines;
}

} // namespace quarle
