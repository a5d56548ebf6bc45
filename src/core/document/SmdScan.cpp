#include "document/SmdScan.h"

#include "document/InputFile.h"
#include "document/Paths.h"
#include "document/Text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
#include <functional>
#include <memory>
#include <optional>
#include <unordered_set>

namespace quarle {

namespace {

// One read. A line is held whole up to this length; see the header.
constexpr std::size_t BlockSize = 128 * 1024;

constexpr auto IsLineEnd = [](char c) { return c == '\n' || c == '\r'; };

// Finds the next byte of a small set with one memchr per byte, which the C
// library runs at memory speed. The next place of each byte is remembered, so
// a hit costs only a new search for the byte it used up. An empty set finds
// every byte.
class AnyOf {
public:
    explicit AnyOf(std::string bytes) : bytes_(std::move(bytes)) { Keep(MaxBytes); }

    // Looks only for the first Count bytes of the set from now on.
    void Keep(std::size_t count) { bytes_.resize(std::min(count, bytes_.size())); }

    // Forgets the remembered places: for a new block.
    void Restart() { next_.fill(nullptr); }

    // The first byte of the set in [p, end), or end. Between two Restart()s,
    // calls pass the same end and a p that never goes back.
    const char* Find(const char* p, const char* end) {
        if (bytes_.empty()) {
            return p;
        }
        const char* first = end;
        for (std::size_t i = 0; i < bytes_.size(); ++i) {
            if (next_[i] == nullptr || next_[i] < p) {
                const void* hit = std::memchr(p, bytes_[i], static_cast<std::size_t>(end - p));
                next_[i] = hit != nullptr ? static_cast<const char*>(hit) : end;
            }
            first = std::min(first, next_[i]);
        }
        return first;
    }

private:
    static constexpr std::size_t MaxBytes = 4;

    std::string bytes_;
    std::array<const char*, MaxBytes> next_{}; // per byte: its next place, or end for none
};

// Line ends in [p, end): every LF, and every CR not followed by LF.
std::size_t CountLineEnds(const char* p, const char* end) {
    auto count = static_cast<std::size_t>(std::count(p, end, '\n'));
    for (const void* hit;
         (hit = std::memchr(p, '\r', static_cast<std::size_t>(end - p))) != nullptr;) {
        p = static_cast<const char*>(hit) + 1;
        count += (p == end || *p != '\n') ? 1 : 0;
    }
    return count;
}

// Opens Path as an .smd file (InputFile.h: through the case fallback of
// paths, regular files only).
InputFile OpenSmd(const std::string& path) {
    return InputFile::Open(path, FileKind::Smd);
}

// The read buffer: two blocks, so that a line cut by one read finds room in
// front of the next. Kept per thread, since every page change scans every
// file of a folder.
char* ReadBuffer() {
    thread_local std::unique_ptr<char[]> buffer(new char[2 * BlockSize]);
    return buffer.get();
}

// A line handed on by ScanLines.
struct ScanLine {
    std::string_view Text;
    std::size_t Skipped; // lines passed over since the last line handed on
};

// Reads File in blocks and hands each line that holds a byte of Finder to
// OnLine(ScanLine), until it returns false. Skipped is counted only when
// CountSkipped is set, and is 0 otherwise.
template <class OnLine>
void ScanLines(InputFile&& file, AnyOf& finder, bool countSkipped, OnLine&& onLine) {
    char* const buffer = ReadBuffer();
    std::size_t kept = 0;    // an unfinished line at the buffer's front
    bool skipLf = false;     // the last block ended on a CR
    bool discarding = false; // inside the dropped rest of an over-long line
    std::size_t skipped = 0;

    auto pastLineEnd = [](const char* stop, const char* end) {
        return stop + ((*stop == '\r' && stop + 1 < end && stop[1] == '\n') ? 2 : 1);
    };
    // The lines of [p, end). The last one may lack its line end.
    auto lines = [&](const char* p, const char* end) {
        while (p < end) {
            const char* hit = finder.Find(p, end);
            if (hit == end) {
                if (countSkipped) {
                    skipped += CountLineEnds(p, end) + (IsLineEnd(end[-1]) ? 0 : 1);
                }
                return true;
            }
            const char* start = hit;
            while (start > p && !IsLineEnd(start[-1])) {
                --start;
            }
            skipped += countSkipped ? CountLineEnds(p, start) : 0;
            const char* stop = std::find_if(hit, end, IsLineEnd);
            if (!onLine(ScanLine{std::string_view(start, static_cast<std::size_t>(stop - start)),
                                 skipped})) {
                return false;
            }
            skipped = 0;
            p = stop == end ? end : pastLineEnd(stop, end);
        }
        return true;
    };

    for (bool atEnd = false; !atEnd;) {
        const std::size_t got = file.Read(buffer + kept, BlockSize);
        atEnd = got == 0;
        const char* p = buffer;
        const char* const end = buffer + kept + got;
        if (skipLf && p < end && *p == '\n') {
            ++p;
        }
        if (discarding) {
            p = std::find_if(p, end, IsLineEnd);
            discarding = p == end;
            p = discarding ? end : pastLineEnd(p, end);
        }
        // Complete lines run up to the last line end; the rest waits for the
        // next read. Of an over-long line, what we hold counts as the line.
        const char* last = end;
        while (!atEnd && last > p && !IsLineEnd(last[-1])) {
            --last;
        }
        if (static_cast<std::size_t>(end - last) >= BlockSize) {
            last = end;
            discarding = true;
        }
        finder.Restart();
        if (!lines(p, last)) {
            return;
        }
        skipLf = last == end && end > buffer && end[-1] == '\r';
        kept = static_cast<std::size_t>(end - last);
        std::memmove(buffer, last, kept);
    }
}

// Calls Fn(value) for each value of Line until it returns false; false then.
template <class Fn> bool ForEachValue(std::string_view line, Fn&& fn) {
    std::size_t i = 0;
    for (;;) {
        while (i < line.size() && (line[i] == ' ' || line[i] == '\t')) {
            ++i;
        }
        std::string_view value;
        std::size_t comma;
        if (i < line.size() && line[i] == '"') {
            const std::size_t close = line.find('"', i + 1);
            value = line.substr(i + 1, close == std::string_view::npos ? close : close - i - 1);
            comma = close == std::string_view::npos ? close : line.find(',', close + 1);
        } else {
            comma = line.find(',', i);
            value = line.substr(i, comma == std::string_view::npos ? comma : comma - i);
        }
        if (!fn(value)) {
            return false;
        }
        if (comma == std::string_view::npos) {
            return true;
        }
        i = comma + 1;
    }
}

// The block-comment mark after a value: "/*" turns it on, then "*/" off.
void UpdateCommentMark(std::string_view value, bool& mark) {
    if (value.find('*') != std::string_view::npos) {
        mark = (mark || value.find("/*") != std::string_view::npos) &&
               value.find("*/") == std::string_view::npos;
    }
}

// Whether Value starts with Word, which is in upper case, in any case.
bool StartsWithNoCase(std::string_view value, std::string_view word) {
    return value.size() >= word.size() &&
           std::equal(word.begin(), word.end(), value.begin(), [](char w, char c) {
               return w == ((c >= 'a' && c <= 'z') ? c - 'a' + 'A' : c);
           });
}

// The frame number of a time value: its text from the sixth character on,
// as told in the header. nullopt for a value that is no time value or has no
// digit there.
std::optional<i16> TimeFrame(std::string_view value) {
    if (value.size() <= 5 || !StartsWithNoCase(value, "TIME")) {
        return std::nullopt;
    }
    std::string_view text = value.substr(5);
    text.remove_prefix(std::min(text.find_first_not_of(" \t"), text.size()));
    const bool negative = text.starts_with('-');
    if (negative || text.starts_with('+')) {
        text.remove_prefix(1);
    }
    auto isDigit = [](char c) { return c >= '0' && c <= '9'; };
    constexpr std::int64_t Saturated = 1'000'000; // far beyond an i16
    std::int64_t whole = 0;
    std::size_t i = 0;
    std::size_t digits = 0;
    for (; i < text.size() && isDigit(text[i]); ++i, ++digits) {
        whole = std::min<std::int64_t>(whole * 10 + (text[i] - '0'), Saturated);
    }
    int half = -1; // the fraction against one half: below, equal or above
    if (i < text.size() && text[i] == '.') {
        for (const std::size_t first = ++i; i < text.size() && isDigit(text[i]); ++i, ++digits) {
            if (i == first) {
                half = (text[i] > '5') - (text[i] < '5');
            } else if (half == 0 && text[i] != '0') {
                half = 1;
            }
        }
    }
    if (digits == 0) {
        return std::nullopt;
    }
    whole += (half > 0 || (half == 0 && whole % 2 == 1)) ? 1 : 0; // halves to even
    return static_cast<i16>(
        std::clamp<std::int64_t>(negative ? -whole : whole, INT16_MIN, INT16_MAX));
}

// The texture lines of a scan so far, held by their upper-case form
// (ToUpper), so that a line is told new or known in one look-up however many
// names a file has.
class TextureSet {
public:
    // Counts Name as known.
    void Add(std::string_view name) {
        known_.insert(ToUpper(name));
        written_.emplace(name);
    }

    // Whether Line is a texture line (it holds ".BMP" in any case) that
    // matches no known name in upper case. A new line is not yet known:
    // KeepLast() adds it.
    bool IsNew(std::string_view line) {
        // A mesh names the texture of each triangle, mostly one of the few
        // names of the triangles just before and always as first written, so
        // the names last met and the known lines as written settle most
        // without a change of case.
        if (std::find(recent_.begin(), recent_.end(), line) != recent_.end()) {
            return false;
        }
        if (const auto it = written_.find(line); it != written_.end()) {
            Meet(*it);
            return false;
        }
        if (line.find('.') == std::string_view::npos) {
            return false;
        }
        upper_ = ToUpper(line);
        if (upper_.find(".BMP") == std::string::npos) {
            return false;
        }
        if (known_.contains(upper_)) {
            Meet(*written_.emplace(line).first);
            return false;
        }
        tested_ = line;
        return true;
    }

    // Counts the line last found new as known.
    void KeepLast() {
        known_.insert(upper_);
        Meet(*written_.emplace(tested_).first);
    }

private:
    // Looks up a string_view without making a string of it.
    struct Hash {
        using is_transparent = void;
        std::size_t operator()(std::string_view s) const noexcept {
            return std::hash<std::string_view>{}(s);
        }
    };

    // Puts a known line as written among the recent ones, in place of the
    // one met longest ago.
    void Meet(std::string_view written) {
        recent_[nextRecent_] = written;
        nextRecent_ = (nextRecent_ + 1) % recent_.size();
    }

    std::unordered_set<std::string> known_;                           // upper case
    std::unordered_set<std::string, Hash, std::equal_to<>> written_; // as written
    std::string upper_;         // of the line last tested
    std::string_view tested_;   // the line last found new, while its block lasts
    // Known lines as written met last, kept in written_'s nodes. An empty
    // view matches no line a scan hands on, since every such line holds a byte.
    std::array<std::string_view, 8> recent_{};
    std::size_t nextRecent_ = 0;
};

} // namespace

std::string FindFileValue(const std::string& path, std::string_view word, int& line) {
    std::string result(NoToken);
    InputFile file = OpenSmd(path);
    if (!file || word.find_first_of("\r\n") != std::string_view::npos) {
        return result; // no value holds a line end
    }
    // A value that matches holds Word's first byte, and a value that moves the
    // comment mark holds '*'. Every other line is exactly one value, unless it
    // holds a comma. An empty word matches any value.
    AnyOf finder(word.empty() ? std::string() : std::string{word[0], '*', ','});
    std::int64_t counter = 0;
    bool comment = false;
    ScanLines(std::move(file), finder, true, [&](const ScanLine& scan) {
        counter += static_cast<std::int64_t>(scan.Skipped);
        return ForEachValue(scan.Text, [&](std::string_view value) {
            ++counter;
            UpdateCommentMark(value, comment);
            if (comment || counter < line || !value.starts_with(word)) {
                return true;
            }
            std::string_view behind = value.substr(word.size());
            if (behind.starts_with('"')) {
                behind.remove_prefix(1);
            }
            if (behind.ends_with('"')) {
                behind.remove_suffix(1);
            }
            result.assign(behind);
            line = static_cast<int>(std::min<std::int64_t>(counter, INT32_MAX));
            return false;
        });
    });
    return result;
}

bool IsReferenceSmd(const std::string& path) {
    AnyOf finder("g*"); // the rarest letter of "triangles" in .smd text, and the comment mark
    bool comment = false;
    bool found = false;
    ScanLines(OpenSmd(path), finder, false, [&](const ScanLine& scan) {
        return ForEachValue(scan.Text, [&](std::string_view value) {
            UpdateCommentMark(value, comment);
            found = !comment && value.starts_with("triangles");
            return !found;
        });
    });
    return found;
}

void ScanSmdFrames(const std::string& path, i16& frameCount) {
    AnyOf finder("tT");
    ScanLines(OpenSmd(path), finder, false, [&](const ScanLine& scan) {
        ForEachValue(scan.Text, [&](std::string_view value) {
            frameCount = TimeFrame(value).value_or(frameCount);
            return true;
        });
        return true;
    });
}

bool CollectBmpLines(const std::string& path, std::span<std::string> names, int& count) {
    const int capacity = std::max(0, static_cast<int>(names.size()) - 1);
    int known = std::clamp(count, 0, capacity);
    const std::span<const std::string> table = names.empty() ? names : names.subspan(1);
    TextureSet textures;
    for (const std::string& name : table.first(static_cast<std::size_t>(known))) {
        textures.Add(name);
    }
    AnyOf finder("bB");
    bool fits = true;
    ScanLines(OpenSmd(path), finder, false, [&](const ScanLine& scan) {
        if (!textures.IsNew(scan.Text)) {
            return true;
        }
        fits = known < capacity;
        if (fits) {
            textures.KeepLast();
            count = ++known;
            names[static_cast<std::size_t>(known)].assign(scan.Text);
        }
        return fits;
    });
    return fits;
}

SmdFacts ScanSmdFile(const std::string& path) {
    SmdFacts facts;
    InputFile file = OpenSmd(path);
    facts.Readable = static_cast<bool>(file);
    facts.Unread = file.Problem();
    // Time values and texture lines share an 'M' in either case, so two
    // searches find both. Until the file is known to be a reference mesh,
    // lines that can hold "triangles" or move the comment mark count too.
    AnyOf finder("mMg*");
    TextureSet textures;
    bool comment = false;
    ScanLines(std::move(file), finder, false, [&](const ScanLine& scan) {
        const std::string_view line = scan.Text;
        // Behind the reference test, only a line with a 't' can hold a time value.
        if (!facts.Reference ||
            std::any_of(line.begin(), line.end(), [](char c) { return (c | 0x20) == 't'; })) {
            ForEachValue(line, [&](std::string_view value) {
                if (!facts.Reference) {
                    UpdateCommentMark(value, comment);
                    facts.Reference = !comment && value.starts_with("triangles");
                    if (facts.Reference) {
                        finder.Keep(2); // from now on only 'm' and 'M' matter
                    }
                }
                if (std::optional<i16> frame = TimeFrame(value)) {
                    facts.HasTime = true;
                    facts.LastFrame = *frame;
                }
                return true;
            });
        }
        if (textures.IsNew(line)) {
            textures.KeepLast();
            facts.Textures.emplace_back(line);
        }
        return true;
    });
    return facts;
}

} // namespace quarle
