#include "document/ScriptTokens.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace quarle {
namespace {

// The compiler's characters are signed: bytes of 128 and above are below the
// blank to it, and so separate tokens like the blank does.
constexpr bool IsSeparator(unsigned char c) { return c <= 32 || c >= 128; }

// Bytes that end a bare token: the separators and ';'.
struct TokenEnds {
    bool Ends[256] = {};
    constexpr TokenEnds() {
        for (int c = 0; c < 256; ++c) {
            Ends[c] = IsSeparator(static_cast<unsigned char>(c)) || c == ';';
        }
    }
};
constexpr TokenEnds Bare;

} // namespace

ScriptTokens::ScriptTokens(std::string text, std::string name, FileLoader loadInclude)
    : load_(std::move(loadInclude)) {
    Enter(std::move(text), std::move(name));
}

void ScriptTokens::Enter(std::string text, std::string name) {
    auto held = std::make_shared<const std::string>(std::move(text));
    const int source = static_cast<int>(sources_.size());
    stack_.push_back(Frame{held.get(), 0, source, 1});
    texts_.push_back(std::move(held));
    sources_.push_back(std::move(name));
}

TokenStatus ScriptTokens::Fail(TokenStatus status, std::string text) {
    token_.Text = std::move(text);
    token_.View = {};
    token_.Quoted = false;
    token_.Source = stack_.back().Source;
    token_.Line = stack_.back().Line;
    return status;
}

TokenStatus ScriptTokens::EndOfSource(bool crossLine) {
    if (!crossLine) {
        return Fail(TokenStatus::LineIncomplete);
    }
    if (stack_.size() == 1) {
        return Fail(TokenStatus::End);
    }
    stack_.pop_back();
    return Next(crossLine);
}

TokenStatus ScriptTokens::Next(bool crossLine) {
    if (held_) {
        held_ = false;
        return TokenStatus::Ok;
    }
    for (;;) {
        Frame& f = stack_.back();
        const std::string& s = *f.Text;
        while (f.Pos < s.size() && IsSeparator(static_cast<unsigned char>(s[f.Pos]))) {
            if (s[f.Pos] == '\n') {
                if (!crossLine) {
                    return Fail(TokenStatus::LineIncomplete);
                }
                ++f.Line;
            }
            ++f.Pos;
        }
        if (f.Pos >= s.size()) {
            return EndOfSource(crossLine);
        }
        const char c = s[f.Pos];
        if (c == ';' || c == '#' || (c == '/' && f.Pos + 1 < s.size() && s[f.Pos + 1] == '/')) {
            if (!crossLine) {
                return Fail(TokenStatus::LineIncomplete);
            }
            const std::size_t end = s.find('\n', f.Pos);
            if (end == std::string::npos) {
                f.Pos = s.size();
                return EndOfSource(crossLine);
            }
            f.Pos = end + 1;
            ++f.Line;
            continue;
        }

        token_.Source = f.Source;
        token_.Line = f.Line;
        token_.Begin = f.Pos;
        token_.Quoted = c == '"';
        std::size_t start = f.Pos;
        std::size_t end = start;
        if (token_.Quoted) {
            start = f.Pos + 1;
            end = s.find('"', start);
            if (end == std::string::npos) {
                end = s.size();
            }
            // Most quoted tokens hold no line end: looked for a block at a time.
            const char* const data = s.data();
            for (const void* p = std::memchr(data + start, '\n', end - start); p != nullptr;
                 p = std::memchr(static_cast<const char*>(p) + 1, '\n',
                                 end - (static_cast<const char*>(p) + 1 - data))) {
                ++f.Line;
            }
            f.Pos = end < s.size() ? end + 1 : end;
            if (f.Line > token_.Line) {
                ScriptToken across;
                across.Quoted = true;
                across.Source = token_.Source;
                across.Line = token_.Line;
                across.Begin = token_.Begin;
                across.End = f.Pos;
                acrossLines_.push_back(std::move(across));
            }
        } else {
            const std::size_t size = s.size();
            const char* const data = s.data();
            while (end < size && !Bare.Ends[static_cast<unsigned char>(data[end])]) {
                ++end;
            }
            f.Pos = end;
        }
        token_.End = f.Pos;
        if (end - start >= static_cast<std::size_t>(MaxTokenLength)) {
            token_.View = std::string_view(s).substr(start, MaxTokenLength - 1);
            token_.Text.assign(token_.View);
            return TokenStatus::TokenTooLong;
        }
        token_.View = std::string_view(s).substr(start, end - start);
        if (copyText_) {
            token_.Text.assign(token_.View);
        }
        if (token_.View.size() != 8 || token_.View != "$include") {
            return TokenStatus::Ok;
        }

        ScriptInclude include;
        include.Parent = token_.Source;
        include.Begin = token_.Begin;
        include.Line = token_.Line;
        if (const TokenStatus named = Next(false); named != TokenStatus::Ok) {
            return named;
        }
        include.End = token_.End;
        include.Name = token_.View;
        includes_.push_back(include);
        if (stack_.size() > static_cast<std::size_t>(MaxIncludeNesting)) {
            return TokenStatus::IncludeTooDeep;
        }
        std::optional<std::string> text;
        if (load_) {
            text = load_(include.Name);
        }
        if (!text) {
            return TokenStatus::IncludeMissing;
        }
        includes_.back().Source = static_cast<int>(sources_.size());
        Enter(std::move(*text), include.Name);
    }
}

std::vector<int> ScriptTokens::OpenSources() const {
    std::vector<int> open;
    open.reserve(stack_.size());
    for (const Frame& f : stack_) {
        open.push_back(f.Source);
    }
    return open;
}

bool ScriptTokens::Available() const {
    const Frame& f = stack_.back();
    const std::string& s = *f.Text;
    for (std::size_t i = f.Pos; i < s.size(); ++i) {
        const auto c = static_cast<unsigned char>(s[i]);
        if (c == '\n') {
            return false;
        }
        if (!IsSeparator(c)) {
            return c != ';';
        }
    }
    return false;
}

} // namespace quarle
