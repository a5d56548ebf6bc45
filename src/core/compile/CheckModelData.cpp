#include "compile/CheckModelData.h"

#include "compile/CompileFiles.h"
#include "compile/ModelFileChecks.h"
#include "document/Paths.h"
#include "localisation/Cp1252.h"
#include "localisation/GlobalStrings.h"

#include <algorithm>

namespace quarle::compile {

namespace {

// The rows are language text (UTF-8); the document's names and paths are
// cp1252 and are turned to the rows' text where they stand in one.
std::string Shown(const std::string& documentText) {
    return Cp1252ToUtf8(documentText);
}

class Checker {
public:
    Checker(const CheckInput& input, CheckHost* host) : input_(input), host_(host) {}

    const std::string& Text(Ids id) const {
        static const std::string none;
        return input_.Texts ? (*input_.Texts)[id] : none;
    }
    std::string Message(Msg id, const std::vector<std::string>& args) const {
        const MessageTexts& texts = input_.Messages ? *input_.Messages : EnglishMessageTexts();
        return FormatMessage(texts[static_cast<std::size_t>(id)], args);
    }

    void Add(std::string text, RowKind kind) {
        CheckRow row{std::move(text), kind};
        if (kind == RowKind::Error) {
            ++result_.ErrorCount;
        }
        if (host_) {
            host_->AddRow(row);
        }
        result_.Rows.push_back(std::move(row));
    }
    void Warning(std::string text) { Add(std::move(text), RowKind::Warning); }
    void Error(std::string text) { Add(std::move(text), RowKind::Error); }

    CheckResult Take() { return std::move(result_); }

private:
    const CheckInput& input_;
    CheckHost* host_;
    CheckResult result_;
};

// Counters come from scripts and forms that do not test them; never index
// past a table.
int GroupsInUse(const Document& doc) {
    return std::min<int>(doc.BodyGroupCount, limits::LastBodyGroup);
}
int PartsInUse(const BodyGroupRec& group) {
    return std::min<int>(group.PartCount, limits::LastPart);
}

bool HasReferencePart(const Document& doc) {
    for (int g = 1; g <= GroupsInUse(doc); ++g) {
        const BodyGroupRec& group = doc.BodyGroups[g];
        for (int p = 1; p <= PartsInUse(group); ++p) {
            if (!group.Parts[p].empty() && group.Parts[p] != Blank) {
                return true;
            }
        }
    }
    return false;
}

// A sequence in a later sequence group: the model has animations, though
// the animation rows show only the first group.
bool HasGroupedAnimation(const Document& doc) {
    for (int g = 1; g <= limits::LastSequenceGroup; ++g) {
        if (!doc.Anims[static_cast<std::size_t>(g)][0].SmdFile.empty()) {
            return true;
        }
    }
    return false;
}

void CheckCompiler(Checker& c, const std::string& studioMdl) {
    if (studioMdl.empty()) {
        c.Error(c.Text(IDS_ERROR_STUDIOMDLPATH));
    } else if (!paths::FileExists(studioMdl)) {
        // The path that was tried stands on a row of its own below, so the
        // user sees what to correct.
        c.Error(c.Text(IDS_ERROR_STUDIOMDL));
        c.Add("    " + Shown(studioMdl), RowKind::Info);
    } else if (studioMdl.find(' ') != std::string::npos) {
        c.Warning(c.Text(IDS_WARNING_SPACES_PART1));
        c.Warning(c.Text(IDS_WARNING_SPACES_PART2));
    }
}

// The compiler takes a sequence without a name, but the game cannot find it
// by name; an activity, its weight and the frame range are checked in the
// saved script, where the compiler reads them.
void CheckAnimation(Checker& c, const AnimRec& anim) {
    if (anim.Name.empty()) {
        c.Warning(c.Message(MSG_CHECK_ANIMATION_NO_NAME, {Shown(anim.SmdFile)}));
    }
    if (anim.Fps == 0) {
        c.Warning(c.Text(IDS_WARNING_FPS_PART1) + " " + Shown(anim.Name) + " " +
                  c.Text(IDS_WARNING_FPS_PART2));
    }
    if (anim.FrameLimit == 1 && anim.FrameStart > anim.FrameEnd) {
        c.Error(c.Text(IDS_ERROR_STARTFRAME_PART1) + " " + Shown(anim.SmdFile) +
                c.Text(IDS_ERROR_STARTFRAME_PART2));
    }
}

} // namespace

std::string IdleSequenceLine(const Document& doc) {
    return "$sequence idle \"" + doc.BodyGroups[1].Parts[1] + "\"";
}

CheckResult CheckModelData(Document& doc, const CheckInput& input, CheckHost* host) {
    Checker c(input, host);

    // 1-3: the compiler. A blank in its path is only looked at when the
    // file is there; the batch line would break at it.
    if (input.StudioMdlPath) {
        CheckCompiler(c, *input.StudioMdlPath);
    }

    // 4: the textures are taken from the model folder when none is set. The
    // saved script keeps its empty path for this compile.
    if (doc.TexturePath.empty()) {
        c.Warning(c.Text(IDS_WARNING_TEXTUREPATH));
        doc.TexturePath = doc.ModelPath;
    }

    // 5
    if (doc.ModelPath.empty()) {
        c.Error(c.Text(IDS_ERROR_MODELPATH));
    }

    // 6: groups without parts. The compiler writes such a group, and the
    // game divides by its number of parts when it draws the model.
    for (int g = 1; g <= GroupsInUse(doc); ++g) {
        const BodyGroupRec& group = doc.BodyGroups[g];
        if (group.PartCount == 0) {
            c.Error(c.Message(MSG_CHECK_EMPTY_BODYGROUP, {Shown(group.Name)}));
        }
    }

    // 7: at least one real mesh somewhere.
    if (!HasReferencePart(doc)) {
        c.Error(c.Text(IDS_ERROR_NOREFERENCEMODEL));
    }

    // 8: the compiler wants a sequence; give it the reference as an idle
    // pose. Only the saved script gets the line, so the next save drops it.
    if (input.AnimationRows == 0 && !HasGroupedAnimation(doc)) {
        c.Warning(c.Text(IDS_WARNING_IDLEANIMATION));
        if (input.AppendIdleLine) {
            std::string failure = AppendScriptLine(doc.QcFile, IdleSequenceLine(doc));
            if (!failure.empty()) {
                c.Error("The idle animation could not be added to the script \"" +
                        Shown(doc.QcFile) + "\": " + failure);
            }
        }
    }

    // 9: each group up to its first slot without a file.
    for (int g = 0; g <= limits::LastSequenceGroup; ++g) {
        for (int s = 0; s <= limits::LastWrittenAnimSlot; ++s) {
            const AnimRec& anim = doc.Anims[g][s];
            if (anim.SmdFile.empty()) {
                break;
            }
            CheckAnimation(c, anim);
        }
    }

    // 10 on: the saved script, its meshes, animations and bitmaps, as the
    // compiler reads them. Without a model folder nothing can be found.
    if (input.CheckFiles && !doc.ModelPath.empty()) {
        CheckModelFiles(doc, input.Messages ? *input.Messages : EnglishMessageTexts(),
                        [&c](std::string text, RowKind kind) { c.Add(std::move(text), kind); });
    }

    return c.Take();
}

} // namespace quarle::compile
