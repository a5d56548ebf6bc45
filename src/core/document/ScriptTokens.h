// A script's text cut into tokens the way the model compiler cuts it.
//
// The compiler reads its script token by token, asking either for the next
// token anywhere ("cross lines") or for one on the current line, and it may
// ask whether the line holds another token. Its rules, which this follows:
//  - bytes up to the blank, and bytes of 128 and above (its characters are
//    signed), separate tokens outside quotes;
//  - a quoted token runs to the next quote, across line ends, bytes kept;
//    a bare token runs to a separator or a ';';
//  - ';', '#' and "//" where a token would start begin a comment that runs to
//    the line's end; met when a token of the same line is wanted, the line
//    counts as incomplete;
//  - a token that is exactly "$include" (quoted or not) is replaced by the
//    tokens of the file named by the next token of its line, and reading goes
//    on behind that name when the file ends;
//  - a token may hold at most MaxTokenLength - 1 bytes, and includes nest at
//    most MaxIncludeNesting deep below the script.
// Line numbers here count every line end (the compiler's own skip those that
// end a comment).
#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace quarle {

struct ScriptToken {
    std::string Text;
    // The same text as it stands in its source, which stays valid as long
    // as the tokens (or whoever took Texts()) hold the source.
    std::string_view View;
    bool Quoted = false;
    int Source = 0; // index into ScriptTokens::Sources(); 0 is the script
    int Line = 0;   // counted from 1 in that source
    // Where its bytes stand in the text of its source: from its first byte
    // (the opening quote of a quoted token) to behind its last (the closing
    // quote, where there is one).
    std::size_t Begin = 0;
    std::size_t End = 0;
};

// An $include met while reading, entered or not.
struct ScriptInclude {
    int Source = -1;        // the included file's source; -1 when it was not entered
    int Parent = 0;         // the source the $include stands in
    std::size_t Begin = 0;  // of the "$include" token in the parent's text
    std::size_t End = 0;    // behind its name
    int Line = 0;           // of the "$include" token
    std::string Name;       // as the line names the file
};

enum class TokenStatus {
    Ok,
    End,             // the script is read (only when crossing lines)
    LineIncomplete,  // a token of the same line was wanted and the line had none
    IncludeMissing,  // an $include names a file that cannot be read
    IncludeTooDeep,  // more includes open at once than the compiler keeps
    TokenTooLong,    // a token of MaxTokenLength bytes or more
};

class ScriptTokens {
public:
    static constexpr int MaxTokenLength = 512;
    static constexpr int MaxIncludeNesting = 6;

    // The whole text of an included file, named as its $include line names
    // it; nothing when it cannot be read. The caller decides where a
    // relative name is looked up (the compiler: its working folder).
    using FileLoader = std::function<std::optional<std::string>(const std::string& name)>;

    ScriptTokens(std::string text, std::string name, FileLoader loadInclude = {});

    // The next token, on any line when crossLine is set, else on the current
    // line only. After anything but Ok, Token() is where it happened (Text is
    // then the include's name, or empty).
    TokenStatus Next(bool crossLine);
    // Whether the current line holds another token ("#" and "//" count as
    // one, as they do for the compiler; ';' does not).
    bool Available() const;
    // Hands the last token out once more on the next call of Next.
    void Unget() { held_ = true; }
    // Whether Token().Text is filled (it is unless told otherwise); a reader
    // that takes Token().View alone saves the copy of every token.
    void CopyText(bool copy) { copyText_ = copy; }

    const ScriptToken& Token() const { return token_; }
    // The script, then each include in the order it was entered.
    const std::vector<std::string>& Sources() const { return sources_; }
    // The whole text of a source, held as long as the tokens are (or as
    // long as whoever took it with Texts()).
    const std::string& SourceText(int source) const { return *texts_[static_cast<std::size_t>(source)]; }
    const std::vector<std::shared_ptr<const std::string>>& Texts() const { return texts_; }
    // Every $include met so far, in the order met.
    const std::vector<ScriptInclude>& Includes() const { return includes_; }
    // The sources being read, from the script to the innermost include.
    std::vector<int> OpenSources() const;
    // The quoted tokens read so far whose bytes hold a line end, in the
    // order read: what stands between their quotes is one token to the
    // compiler, whatever lines it spans.
    const std::vector<ScriptToken>& QuotesAcrossLines() const { return acrossLines_; }

private:
    struct Frame {
        const std::string* Text = nullptr;
        std::size_t Pos = 0;
        int Source = 0;
        int Line = 1;
    };

    void Enter(std::string text, std::string name);

    TokenStatus EndOfSource(bool crossLine);
    TokenStatus Fail(TokenStatus status, std::string text = {});

    std::vector<Frame> stack_;
    std::vector<std::string> sources_;
    std::vector<std::shared_ptr<const std::string>> texts_;
    std::vector<ScriptInclude> includes_;
    std::vector<ScriptToken> acrossLines_;
    FileLoader load_;
    ScriptToken token_;
    bool held_ = false;
    bool copyText_ = true;
};

} // namespace quarle
