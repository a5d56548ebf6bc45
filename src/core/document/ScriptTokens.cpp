#include "document/ScriptTokens.h"

#include <utility>

namespace quarle {
namespace {

// The compiler's characters are signed: bytes of 128 and above are below the
// blank to it, and so separate tokens like the blank does.
bool IsSeparator(unsigned char c) { return c <= 32 || c >= 128; }

} // namespace

ScriptTokens::ScriptTokens(std::string text, std::string name, FileLoader loadInclude)
    : load_(std::move(loadInclude)) {
    stack_.push_back(Frame{std::move(text), 0, 0, 1});
    sources_.push_back(std::move(name));
}

TokenStatus ScriptTokens::Fail(TokenStatus status, std::string text) {
    token_.Text = std::move(text);
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
        const std::string& s = f.Text;
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
        token_.Quoted = c == '"';
        std::size_t start = f.Pos;
        std::size_t end = start;
        if (token_.Quoted) {
            start = f.Pos + 1;
            end = s.find('"', start);
            if (end == std::string::npos) {
                end = s.size();
            }
            for (std::size_t i = start; i < end; ++i) {
                f.Line += s[i] == '\n' ? 1 : 0;
            }
            f.Pos = end < s.size() ? end + 1 : end;
        } else {
            while (end < s.size() && !IsSeparator(static_cast<unsigned char>(s[end])) &&
                   s[end] != ';') {
                ++end;
            }
            f.Pos = end;
        }
        if (end - start >= static_cast<std::size_t>(MaxTokenLength)) {
            token_.Text.assign(s, start, MaxTokenLength - 1);
            return TokenStatus::TokenTooLong;
        }
        token_.Text.assign(s, start, end - start);
        if (token_.Text != "$include") {
            return TokenStatus::Ok;
        }

        if (const TokenStatus named = Next(false); named != TokenStatus::Ok) {
            return named;
        }
        if (stack_.size() > static_cast<std::size_t>(MaxIncludeNesting)) {
            return TokenStatus::IncludeTooDeep;
        }
        std::optional<std::string> text;
        if (load_) {
            text = load_(token_.Text);
        }
        if (!text) {
            return TokenStatus::IncludeMissing;
        }
        sources_.push_back(token_.Text);
        stack_.push_back(Frame{std::move(*text), 0, static_cast<int>(sources_.size()) - 1, 1});
    }
}

bool ScriptTokens::Available() const {
    const Frame& f = stack_.back();
    for (std::size_t i = f.Pos; i < f.Text.size(); ++i) {
        const auto c = static_cast<unsigned char>(f.Text[i]);
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
