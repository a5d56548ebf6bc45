#include "document/QcLayoutWriter.h"

#include "document/NumberText.h"
#include "document/Paths.h"
#include "document/QcGrammar.h"
#include "document/QcInclude.h"
#include "document/QcScriptLines.h"
#include "document/QcTextureGroups.h"
#include "document/QcWriter.h"

#include <algorithm>
#include <array>
#include <map>
#include <optional>

namespace quarle {

namespace {

std::size_t Index(int i) {
    return static_cast<std::size_t>(i);
}

// Kinds whose records keep an order among themselves: a new one goes among
// them, and inside an include it changes the include.
enum class Class { None, Attachment, Controller, Body, Sequence, RenderMode, Count };

Class ClassOf(PieceKind kind) {
    switch (kind) {
    case PieceKind::Attachment:
        return Class::Attachment;
    case PieceKind::Controller:
        return Class::Controller;
    case PieceKind::BodyGroup:
        return Class::Body;
    case PieceKind::Sequence:
    case PieceKind::SequenceGroup:
        return Class::Sequence;
    case PieceKind::RenderMode:
        return Class::RenderMode;
    default:
        return Class::None;
    }
}

bool IsRecord(PieceKind kind) {
    return kind != PieceKind::Text && kind != PieceKind::IncludeStart &&
           kind != PieceKind::IncludeEnd;
}

// Where a save puts new lines among those of their kind, in the writer's
// order of kinds.
enum Order { Paths, Settings, Attachments, Controllers, Bodies, RenderModes, Textures, Sequences };

// A record of the forms' tables in their order: a body group, a sequence,
// or the start of a sequence group.
struct Element {
    int Piece = -1; // the piece it was read at; -1 for a new one
    bool Anchored = false;
    int Group = 0;
    int Slot = -1; // -1: the $sequencegroup line of Group
};

// The longest run of elements whose pieces stand in the script's order
// stays where it stood; the others are written behind the element before
// them.
void Anchor(std::vector<Element>& list) {
    std::vector<int> tails;       // index into list of the last element of each run length
    std::vector<int> before(list.size(), -1);
    for (std::size_t i = 0; i < list.size(); ++i) {
        if (list[i].Piece < 0) {
            continue;
        }
        const auto at = std::lower_bound(tails.begin(), tails.end(), list[i].Piece,
                                         [&](int e, int piece) { return list[Index(e)].Piece < piece; });
        if (at != tails.begin()) {
            before[i] = *(at - 1);
        }
        if (at == tails.end()) {
            tails.push_back(static_cast<int>(i));
        } else {
            *at = static_cast<int>(i);
        }
    }
    for (int e = tails.empty() ? -1 : tails.back(); e >= 0; e = before[Index(e)]) {
        list[Index(e)].Anchored = true;
    }
}

bool SameBody(const BodyGroupRec& a, const BodyGroupRec& b) {
    if (a.Name != b.Name || a.PartCount != b.PartCount) {
        return false;
    }
    for (int p = 1; p <= std::min<int>(a.PartCount, limits::LastPart); ++p) {
        const auto i = Index(p);
        if (a.Parts[i] != b.Parts[i] || (a.Reverse[i] != 0) != (b.Reverse[i] != 0) ||
            a.PartWords[i] != b.PartWords[i]) {
            return false;
        }
    }
    return true;
}

// Whether a sequence is written: one with a name, or one the script had
// without a name and that is still so.
bool Written(const AnimRec& anim) {
    return !anim.Name.empty() ||
           (anim.From.Read != nullptr && anim.From.Read->Values.Name.empty());
}

// What a piece writes.
struct Content {
    enum Kind { Verbatim, Lines, Nothing } What = Verbatim;
    std::vector<std::string> Text;
};

class LayoutWriter {
public:
    LayoutWriter(const Document& doc, const ScriptLayout& layout, std::ostream& out, char separator)
        : doc_(doc), layout_(layout), out_(out), separator_(separator), eol_(layout.Eol),
          pieces_(layout.Pieces), n_(static_cast<int>(layout.Pieces.size())) {
        const std::string folder = paths::FolderOf(doc.QcFile);
        moved_ = folder != layout.Folder;
        scriptFolder_ = folder;
        for (const TextSpan& quote : layout.QuotesAcrossLines) {
            if (Index(quote.Source) >= quotes_.size()) {
                quotes_.resize(Index(quote.Source) + 1);
            }
            quotes_[Index(quote.Source)].push_back(quote); // in the order of the text
        }
    }

    void Write(std::vector<std::string>* writtenIn) {
        if (layout_.OwnHead) {
            WriteHead(doc_, out_, eol_);
        }
        Plan();
        Emit(writtenIn);
    }

private:
    // --- the plan ---------------------------------------------------------

    void Plan() {
        const std::size_t includes = layout_.Includes.size();
        includeStart_.assign(includes, -1);
        includeEnd_.assign(includes, -1);
        changed_.assign(includes, false);
        firstOf_.assign(includes, {});
        lastOf_.assign(includes, {});
        for (auto& first : firstOf_) {
            first.fill(-1);
        }
        for (auto& last : lastOf_) {
            last.fill(-1);
        }
        element_.assign(Index(n_), -1);
        before_.assign(Index(n_) + 1, {});
        after_.assign(Index(n_), {});
        std::map<int, int> bodyPiece;
        std::map<int, int> sequencePiece;
        std::map<int, int> markerPiece;
        for (int i = 0; i < n_; ++i) {
            const ScriptPiece& p = pieces_[Index(i)];
            switch (p.Kind) {
            case PieceKind::IncludeStart:
                includeStart_[Index(p.Ref)] = i;
                break;
            case PieceKind::IncludeEnd:
                includeEnd_[Index(p.Ref)] = i;
                break;
            case PieceKind::BodyGroup:
                bodyPiece[p.Ref] = i;
                break;
            case PieceKind::Sequence:
                sequencePiece[p.Ref] = i;
                break;
            case PieceKind::SequenceGroup:
                markerPiece[p.Ref] = i;
                break;
            default:
                break;
            }
            const Class c = ClassOf(p.Kind);
            if (c != Class::None) {
                for (int k = p.Include; k >= 0; k = layout_.Includes[Index(k)].Parent) {
                    int& first = firstOf_[Index(k)][Index(static_cast<int>(c))];
                    first = first < 0 ? i : first;
                    lastOf_[Index(k)][Index(static_cast<int>(c))] = i;
                }
            }
            if (IsRecord(p.Kind) && firstDirective_ < 0) {
                firstDirective_ = i;
            }
        }
        BodyList(bodyPiece);
        SequenceList(sequencePiece, markerPiece);
        for (int i = 0; i < n_; ++i) {
            if (!Unchanged(i)) {
                ChangeIncludes(pieces_[Index(i)].Include);
            }
        }
        NewSettings();
        NewSlots();
        for (const Insertion& insertion : insertions_) {
            CheckInsertion(insertion);
        }
        for (Insertion& insertion : insertions_) {
            Place(std::move(insertion));
        }
    }

    void ChangeIncludes(int k) {
        for (; k >= 0; k = layout_.Includes[Index(k)].Parent) {
            changed_[Index(k)] = true;
        }
    }

    int First(PieceKind kind) const {
        for (int i = 0; i < n_; ++i) {
            if (pieces_[Index(i)].Kind == kind) {
                return i;
            }
        }
        return -1;
    }

    int Last(PieceKind kind) const {
        for (int i = n_ - 1; i >= 0; --i) {
            if (pieces_[Index(i)].Kind == kind) {
                return i;
            }
        }
        return -1;
    }

    int FirstOfKinds(std::initializer_list<PieceKind> kinds) const {
        for (int i = 0; i < n_; ++i) {
            if (std::find(kinds.begin(), kinds.end(), pieces_[Index(i)].Kind) != kinds.end()) {
                return i;
            }
        }
        return -1;
    }

    // The piece before which new settings go: before the first body,
    // sequence or texture directive, where $scale scales all of them.
    int SettingsPlace() const {
        return FirstOfKinds({PieceKind::BodyGroup, PieceKind::Sequence, PieceKind::SequenceGroup,
                             PieceKind::TextureGroup, PieceKind::RenderMode});
    }

    void BodyList(const std::map<int, int>& pieceOf) {
        const int groups = std::min<int>(doc_.BodyGroupCount, limits::LastBodyGroup);
        std::vector<bool> taken(Index(n_), false);
        for (int g = 1; g <= groups; ++g) {
            Element e;
            e.Group = g;
            if (const auto* src = doc_.BodyGroups[Index(g)].From.Read.get()) {
                const auto it = pieceOf.find(src->Id);
                if (it != pieceOf.end() && !taken[Index(it->second)]) {
                    e.Piece = it->second;
                    taken[Index(e.Piece)] = true;
                }
            }
            bodies_.push_back(e);
        }
        Anchor(bodies_);
        for (std::size_t i = 0; i < bodies_.size(); ++i) {
            if (bodies_[i].Anchored) {
                element_[Index(bodies_[i].Piece)] = static_cast<int>(i);
            }
        }
        int fallback = FirstOfKinds({PieceKind::Sequence, PieceKind::SequenceGroup,
                                     PieceKind::TextureGroup});
        Floats(bodies_, Class::Body, Bodies, fallback, [&](const Element& e) {
            const BodyGroupRec& group = doc_.BodyGroups[Index(e.Group)];
            if (const auto* src = group.From.Read.get(); src != nullptr && SameBody(group, src->Values)) {
                return std::vector<std::string>{std::string(layout_.TextOf(src->Span))};
            }
            return BodyGroupLines(group);
        });
    }

    void SequenceList(const std::map<int, int>& pieceOf, const std::map<int, int>& markerOf) {
        int lastGroup = markerOf.empty() ? 0 : markerOf.rbegin()->first;
        for (int g = 0; g <= limits::LastSequenceGroup; ++g) {
            for (int s = 0; s <= limits::LastWrittenAnimSlot; ++s) {
                if (Written(doc_.Anims[Index(g)][Index(s)])) {
                    lastGroup = std::max(lastGroup, g);
                    break;
                }
            }
        }
        std::vector<bool> taken(Index(n_), false);
        for (int g = 0; g <= lastGroup; ++g) {
            if (g > 0) {
                Element marker;
                marker.Group = g;
                const auto it = markerOf.find(g);
                marker.Piece = it == markerOf.end() ? -1 : it->second;
                sequences_.push_back(marker);
            }
            for (int s = 0; s <= limits::LastWrittenAnimSlot; ++s) {
                const AnimRec& anim = doc_.Anims[Index(g)][Index(s)];
                if (!Written(anim)) {
                    continue;
                }
                Element e;
                e.Group = g;
                e.Slot = s;
                if (const auto* src = anim.From.Read.get()) {
                    const auto it = pieceOf.find(src->Id);
                    if (it != pieceOf.end() && !taken[Index(it->second)]) {
                        e.Piece = it->second;
                        taken[Index(e.Piece)] = true;
                    }
                }
                sequences_.push_back(e);
            }
        }
        Anchor(sequences_);
        for (std::size_t i = 0; i < sequences_.size(); ++i) {
            if (sequences_[i].Anchored) {
                element_[Index(sequences_[i].Piece)] = static_cast<int>(i);
            }
        }
        Floats(sequences_, Class::Sequence, Sequences, -1, [&](const Element& e) {
            if (e.Slot < 0) {
                return std::vector<std::string>{"", "$sequencegroup seqgroup" + IntToText(e.Group)};
            }
            // A moved sequence the user left alone keeps its text.
            const AnimRec& anim = doc_.Anims[Index(e.Group)][Index(e.Slot)];
            if (const auto* src = anim.From.Read.get(); src != nullptr && src->Values.Same(anim)) {
                return std::vector<std::string>{std::string(layout_.TextOf(src->Span))};
            }
            return std::vector<std::string>{SequenceLine(anim, separator_)};
        });
    }

    // The elements that lost their place (new ones, moved ones): behind the
    // element before them in the list, or before the first that kept its
    // place, or where the writer puts their kind.
    template <typename LinesOf>
    void Floats(const std::vector<Element>& list, Class c, int order, int fallback,
                LinesOf linesOf) {
        int anchor = -1;
        bool leading = true;
        std::vector<std::string> run;
        const auto flush = [&](int piece, bool before) {
            if (!run.empty()) {
                AddInsertion(piece, before, c, order, std::move(run));
                run.clear();
            }
        };
        for (const Element& e : list) {
            if (e.Anchored) {
                if (leading) {
                    flush(e.Piece, true);
                    leading = false;
                } else {
                    flush(anchor, false);
                }
                anchor = e.Piece;
                continue;
            }
            std::vector<std::string> lines = linesOf(e);
            run.insert(run.end(), lines.begin(), lines.end());
        }
        if (leading) {
            flush(fallback, true);
        } else {
            flush(anchor, false);
        }
    }

    // --- what each piece writes ---------------------------------------------

    bool PathUnchanged(const std::string& held, const std::string& read, const std::string& text) const {
        return held == read && (!moved_ || paths::IsAbsolute(paths::ToStyle(text)));
    }

    bool Unchanged(int i) const {
        const ScriptPiece& p = pieces_[Index(i)];
        const SettingsRead& s = layout_.Settings;
        switch (p.Kind) {
        case PieceKind::Text:
        case PieceKind::IncludeStart:
        case PieceKind::IncludeEnd:
            return true;
        case PieceKind::ModelName:
            return PathUnchanged(doc_.ModelName, s.ModelName, s.ModelNameText);
        case PieceKind::Cd:
            return PathUnchanged(doc_.ModelPath, s.ModelPath, s.ModelPathText);
        case PieceKind::CdTexture:
            return PathUnchanged(doc_.TexturePath, s.TexturePath, s.TexturePathText);
        case PieceKind::Scale:
            return doc_.ModelScale == s.ModelScale;
        case PieceKind::Gamma:
            return doc_.Gamma == s.Gamma;
        case PieceKind::ExternalTextures:
            return doc_.ExternalTextures == 1;
        case PieceKind::EyePosition:
            return doc_.EyesOn == 1 && doc_.EyeX == s.EyeX && doc_.EyeY == s.EyeY &&
                   doc_.EyeZ == s.EyeZ;
        case PieceKind::SequenceGroupSize:
            return doc_.SequenceGroupSize == s.SequenceGroupSize;
        case PieceKind::Attachment: {
            const AttachmentRead& read = layout_.Attachments[Index(p.Ref)];
            return doc_.Attachments[Index(p.Ref)] == read.Values &&
                   doc_.AttachmentBones[Index(p.Ref)] == read.Bone;
        }
        case PieceKind::Controller: {
            const ControllerRead& read = layout_.Controllers[Index(p.Ref)];
            return doc_.Controllers[Index(p.Ref)] == read.Values &&
                   doc_.ControllerBones[Index(p.Ref)] == read.Bone;
        }
        case PieceKind::RenderMode: {
            const RenderModeRead& read = layout_.RenderModes[Index(p.Ref)];
            const TextureModeRec& mode = doc_.TextureModes[Index(read.Slot)];
            return mode.Mode == read.Mode && mode.Name == read.Name;
        }
        case PieceKind::TextureGroup:
            return !layout_.TextureGroup || !TextureGroupChanged(doc_, *layout_.TextureGroup);
        case PieceKind::BodyGroup: {
            const int e = element_[Index(i)];
            if (e < 0) {
                return false;
            }
            const BodyGroupRec& group = doc_.BodyGroups[Index(bodies_[Index(e)].Group)];
            return SameBody(group, group.From.Read->Values);
        }
        case PieceKind::Sequence: {
            const int e = element_[Index(i)];
            if (e < 0) {
                return false;
            }
            const Element& el = sequences_[Index(e)];
            const AnimRec& anim = doc_.Anims[Index(el.Group)][Index(el.Slot)];
            return anim.From.Read->Values.Same(anim);
        }
        case PieceKind::SequenceGroup:
            return element_[Index(i)] >= 0;
        }
        return true;
    }

    Content Of(int i) const {
        if (Unchanged(i)) {
            return {};
        }
        const ScriptPiece& p = pieces_[Index(i)];
        const SettingsRead& s = layout_.Settings;
        const auto lines = [](std::vector<std::string> text) {
            return Content{Content::Lines, std::move(text)};
        };
        const auto line = [&](std::string text) { return lines({std::move(text)}); };
        const Content nothing{Content::Nothing, {}};
        switch (p.Kind) {
        case PieceKind::ModelName:
            return line("$modelname " + TokenOf(doc_.ModelName));
        case PieceKind::Cd:
            return line("$cd " + TokenOf(FolderToWrite(doc_.ModelPath, s.ModelPathText, scriptFolder_)));
        case PieceKind::CdTexture: {
            std::string text = "$cdtexture " +
                               TokenOf(FolderToWrite(doc_.TexturePath, s.TexturePathText, scriptFolder_));
            for (const std::string& more : s.MoreTextureFolders) {
                text += ' ';
                text += more;
            }
            return line(std::move(text));
        }
        case PieceKind::Scale:
            // Without a $scale the model keeps its size, as with $scale 1.
            return doc_.ModelScale != 1.0f ? line(ScaleLine(doc_, &s)) : nothing;
        case PieceKind::Gamma:
            return doc_.Gamma != DefaultGamma ? line(GammaLine(doc_, &s)) : nothing;
        case PieceKind::ExternalTextures:
            return nothing;
        case PieceKind::EyePosition:
            return doc_.EyesOn == 1 ? line(EyePositionLine(doc_, &s, separator_)) : nothing;
        case PieceKind::SequenceGroupSize:
            return doc_.SequenceGroupSize > 0 ? line(SequenceGroupSizeLine(doc_, &s)) : nothing;
        case PieceKind::Attachment:
            return doc_.Attachments[Index(p.Ref)].Active == 1
                       ? line(AttachmentLine(doc_, p.Ref, &layout_.Attachments[Index(p.Ref)]))
                       : nothing;
        case PieceKind::Controller:
            return doc_.Controllers[Index(p.Ref)].Active == 1
                       ? line(ControllerLine(doc_, p.Ref, &layout_.Controllers[Index(p.Ref)],
                                             separator_))
                       : nothing;
        case PieceKind::RenderMode: {
            // The first line of the texture says its mode now; the others go.
            const RenderModeRead& read = layout_.RenderModes[Index(p.Ref)];
            const TextureModeRec& mode = doc_.TextureModes[Index(read.Slot)];
            for (int j = 0; j < i; ++j) {
                const ScriptPiece& q = pieces_[Index(j)];
                if (q.Kind == PieceKind::RenderMode &&
                    layout_.RenderModes[Index(q.Ref)].Slot == read.Slot) {
                    return nothing;
                }
            }
            return mode.Mode == 1 || mode.Mode == 2 ? line(RenderModeLine(mode, &read)) : nothing;
        }
        case PieceKind::TextureGroup:
            return lines(TextureGroupLines(doc_, *layout_.TextureGroup));
        case PieceKind::BodyGroup: {
            const int e = element_[Index(i)];
            return e < 0 ? nothing
                         : lines(BodyGroupLines(doc_.BodyGroups[Index(bodies_[Index(e)].Group)]));
        }
        case PieceKind::Sequence: {
            const int e = element_[Index(i)];
            if (e < 0) {
                return nothing;
            }
            const Element& el = sequences_[Index(e)];
            return line(SequenceLine(doc_.Anims[Index(el.Group)][Index(el.Slot)], separator_));
        }
        case PieceKind::SequenceGroup:
            return nothing;
        default:
            return {};
        }
    }

    // --- what is new ------------------------------------------------------

    void NewSettings() {
        const SettingsRead& s = layout_.Settings;
        const auto has = [&](PieceKind kind) { return First(kind) >= 0; };
        std::vector<std::string> paths;
        if (!has(PieceKind::ModelName) && doc_.ModelName != s.ModelName) {
            paths.push_back("$modelname " + TokenOf(doc_.ModelName));
        }
        if (!has(PieceKind::Cd) && doc_.ModelPath != s.ModelPath) {
            paths.push_back("$cd " + TokenOf(doc_.ModelPath));
        }
        if (!has(PieceKind::CdTexture) && doc_.TexturePath != s.TexturePath) {
            paths.push_back("$cdtexture " + TokenOf(doc_.TexturePath));
        }
        AddInsertion(firstDirective_, true, Class::None, Paths, std::move(paths));
        std::vector<std::string> settings;
        if (!has(PieceKind::Scale) && doc_.ModelScale != s.ModelScale && doc_.ModelScale != 1.0f) {
            settings.push_back(ScaleLine(doc_, nullptr));
        }
        if (!has(PieceKind::Gamma) && doc_.Gamma != s.Gamma && doc_.Gamma != DefaultGamma) {
            settings.push_back(GammaLine(doc_, nullptr));
        }
        if (!has(PieceKind::ExternalTextures) && doc_.ExternalTextures == 1) {
            settings.emplace_back("$externaltextures");
        }
        if (!has(PieceKind::EyePosition) && doc_.EyesOn == 1 &&
            (s.EyesOn != 1 || doc_.EyeX != s.EyeX || doc_.EyeY != s.EyeY || doc_.EyeZ != s.EyeZ)) {
            settings.push_back(EyePositionLine(doc_, nullptr, separator_));
        }
        if (!has(PieceKind::SequenceGroupSize) && doc_.SequenceGroupSize > 0 &&
            doc_.SequenceGroupSize != s.SequenceGroupSize) {
            settings.push_back(SequenceGroupSizeLine(doc_, nullptr));
        }
        AddInsertion(SettingsPlace(), true, Class::None, Settings, std::move(settings));
    }

    // Attachments and controllers the script did not have go among their
    // kind by their number; render modes behind the others or the bodies;
    // a texture group where none was.
    void NewSlots() {
        for (int slot = 0; slot <= limits::LastAttachment; ++slot) {
            if (doc_.Attachments[Index(slot)].Active == 1 && !layout_.Attachments[Index(slot)].Read) {
                SlotInsertion(PieceKind::Attachment, slot, Class::Attachment, Attachments,
                              AttachmentLine(doc_, slot, nullptr));
            }
        }
        for (int slot = 0; slot <= limits::LastController; ++slot) {
            if (doc_.Controllers[Index(slot)].Active == 1 && !layout_.Controllers[Index(slot)].Read) {
                SlotInsertion(PieceKind::Controller, slot, Class::Controller, Controllers,
                              ControllerLine(doc_, slot, nullptr, separator_),
                              Last(PieceKind::Attachment));
            }
        }
        const int lastMode = Last(PieceKind::RenderMode);
        const int lastBody = Last(PieceKind::BodyGroup);
        const int afterTextures = std::max(lastMode, lastBody);
        const int firstSequence = FirstOfKinds({PieceKind::Sequence, PieceKind::SequenceGroup});
        std::vector<std::string> modes;
        for (int slot = 1; slot <= limits::LastWrittenTextureMode; ++slot) {
            const TextureModeRec& mode = doc_.TextureModes[Index(slot)];
            if (mode.Mode != 1 && mode.Mode != 2) {
                continue;
            }
            const bool read = std::any_of(pieces_.begin(), pieces_.end(), [&](const ScriptPiece& p) {
                return p.Kind == PieceKind::RenderMode &&
                       layout_.RenderModes[Index(p.Ref)].Slot == slot;
            });
            if (!read) {
                modes.push_back(RenderModeLine(mode, nullptr));
            }
        }
        const int modePlace = lastMode >= 0 ? lastMode : lastBody;
        if (modePlace >= 0) {
            AddInsertion(modePlace, false, lastMode >= 0 ? Class::RenderMode : Class::Body,
                         RenderModes, std::move(modes));
        } else {
            AddInsertion(firstSequence, true, Class::None, RenderModes, std::move(modes));
        }
        if (First(PieceKind::TextureGroup) < 0) {
            std::vector<std::string> group = NewTextureGroupLines(doc_);
            if (!group.empty()) {
                group.erase(group.begin()); // the empty line of a new script
            }
            if (afterTextures >= 0) {
                AddInsertion(afterTextures, false, Class::None, Textures, std::move(group));
            } else {
                AddInsertion(firstSequence, true, Class::None, Textures, std::move(group));
            }
        }
    }

    // Among the lines of its kind by its number; without any, behind the
    // line after, or with the new settings.
    void SlotInsertion(PieceKind kind, int slot, Class c, int order, std::string line,
                       int after = -1) {
        int above = -1;
        int last = -1;
        for (int i = 0; i < n_; ++i) {
            const ScriptPiece& p = pieces_[Index(i)];
            if (p.Kind == kind) {
                last = i;
                if (above < 0 && p.Ref > slot) {
                    above = i;
                }
            }
        }
        if (above >= 0) {
            AddInsertion(above, true, c, order, {std::move(line)});
        } else if (last >= 0) {
            AddInsertion(last, false, c, order, {std::move(line)});
        } else if (after >= 0) {
            AddInsertion(after, false, Class::None, order, {std::move(line)});
        } else {
            AddInsertion(SettingsPlace(), true, Class::None, order, {std::move(line)});
        }
    }

    struct Insertion {
        int Piece = -1; // -1: at the end
        bool Before = true;
        Class Kind = Class::None;
        int Order = 0;
        std::vector<std::string> Lines;
    };

    void AddInsertion(int piece, bool before, Class c, int order, std::vector<std::string> lines) {
        if (lines.empty()) {
            return;
        }
        insertions_.push_back({piece, before || piece < 0, c, order, std::move(lines)});
    }

    // New lines inside an include that keep it as its line would stand
    // outside it: among the records of their kind there, they change it.
    void CheckInsertion(const Insertion& insertion) {
        if (insertion.Piece < 0 || insertion.Kind == Class::None) {
            return;
        }
        const int c = static_cast<int>(insertion.Kind);
        for (int k = pieces_[Index(insertion.Piece)].Include; k >= 0;
             k = layout_.Includes[Index(k)].Parent) {
            const int edge = insertion.Before ? firstOf_[Index(k)][Index(c)] : lastOf_[Index(k)][Index(c)];
            if (edge != insertion.Piece) {
                ChangeIncludes(k);
                return;
            }
        }
    }

    // Moves an insertion out of the includes kept as their lines, onto the
    // line of the outermost of them.
    void Place(Insertion insertion) {
        int piece = insertion.Piece;
        if (piece >= 0) {
            int visible = -1;
            for (int k = pieces_[Index(piece)].Include; k >= 0; k = layout_.Includes[Index(k)].Parent) {
                if (changed_[Index(k)]) {
                    break;
                }
                visible = k;
            }
            if (visible >= 0) {
                piece = includeStart_[Index(visible)];
            }
        }
        auto& bucket = piece < 0 ? before_[Index(n_)] : insertion.Before ? before_[Index(piece)]
                                                                         : after_[Index(piece)];
        const auto at = std::upper_bound(bucket.begin(), bucket.end(), insertion.Order,
                                         [](int order, const Insertion& i) { return order < i.Order; });
        bucket.insert(at, std::move(insertion));
    }

    // --- writing ----------------------------------------------------------

    void Raw(std::string_view text) {
        if (!text.empty()) {
            out_.write(text.data(), static_cast<std::streamsize>(text.size()));
            last_ = text.back();
            wrote_ = true;
        }
    }

    void Flush() {
        for (const std::vector<std::string>& lines : pending_) {
            for (const std::string& line : lines) {
                Raw(line);
                Raw(eol_);
            }
        }
        pending_.clear();
    }

    // The quote running across lines that holds byte at of a source, if any.
    const TextSpan* QuoteAt(int source, std::size_t at) const {
        if (Index(source) >= quotes_.size()) {
            return nullptr;
        }
        const std::vector<TextSpan>& quotes = quotes_[Index(source)];
        const auto after = std::upper_bound(quotes.begin(), quotes.end(), at,
                                            [](std::size_t a, const TextSpan& q) { return a < q.Begin; });
        if (after == quotes.begin() || (after - 1)->End <= at) {
            return nullptr;
        }
        return &*(after - 1);
    }

    // The first or the last line end of a text (standing at offset in its
    // source) that no quote holds: where a line of its own can go.
    std::size_t FreeLineEnd(std::string_view text, int source, std::size_t offset, bool last) const {
        std::size_t lf = last ? text.rfind('\n') : text.find('\n');
        while (lf != std::string_view::npos) {
            const TextSpan* quote = QuoteAt(source, offset + lf);
            if (quote == nullptr) {
                break;
            }
            if (!last) {
                lf = text.find('\n', quote->End - offset);
            } else if (quote->Begin <= offset) {
                lf = std::string_view::npos;
            } else {
                lf = text.rfind('\n', quote->Begin - offset - 1);
            }
        }
        return lf;
    }

    // Text between records: the lines waiting for a line end go behind
    // the first one; the lines for the next record go before its line.
    // Neither goes inside a quote that runs across lines: they wait for
    // the line end behind it, or go before the line it opens on.
    void Gap(const TextSpan& span, const std::vector<Insertion>* next) {
        std::string_view text = layout_.TextOf(span);
        std::size_t offset = span.Begin;
        if (eatLineEnd_) {
            eatLineEnd_ = false;
            const std::size_t blank = text.find_first_not_of(" \t");
            const std::string_view rest = text.substr(blank == std::string_view::npos ? text.size() : blank);
            const std::size_t before = text.size();
            if (rest.starts_with("\r\n")) {
                text = rest.substr(2);
            } else if (rest.starts_with("\n") || rest.starts_with("\r")) {
                text = rest.substr(1);
            }
            offset += before - text.size();
        }
        if (!pending_.empty()) {
            const std::size_t lf = FreeLineEnd(text, span.Source, offset, false);
            if (lf != std::string_view::npos) {
                Raw(text.substr(0, lf + 1));
                Flush();
                text = text.substr(lf + 1);
                offset += lf + 1;
            }
        }
        if (next != nullptr && !next->empty()) {
            const std::size_t lf = FreeLineEnd(text, span.Source, offset, true);
            if (lf != std::string_view::npos) {
                Raw(text.substr(0, lf + 1));
                text = text.substr(lf + 1);
                Lines(*next);
                beforeDone_ = true;
            }
        }
        Raw(text);
    }

    // Lines of their own: on a line that starts here.
    void Lines(const std::vector<Insertion>& insertions) {
        if (insertions.empty()) {
            return;
        }
        if (!pending_.empty() || (wrote_ && last_ != '\n')) {
            Raw(eol_);
            Flush();
        }
        for (const Insertion& insertion : insertions) {
            for (const std::string& line : insertion.Lines) {
                Raw(line);
                Raw(eol_);
            }
        }
    }

    void Queue(const std::vector<Insertion>& insertions) {
        for (const Insertion& insertion : insertions) {
            pending_.push_back(insertion.Lines);
        }
    }

    std::string IncludeLine(int k) const {
        const IncludeRead& include = layout_.Includes[Index(k)];
        const std::string_view written = layout_.TextOf(include.Line);
        const bool relative = !paths::IsAbsolute(paths::ToStyle(include.Name));
        if (!include.Asked && !(moved_ && relative)) {
            return std::string(written);
        }
        // The file where it was found, seen from the script's folder.
        std::string path = include.Disk;
        const std::string folder = scriptFolder_.empty() ? std::string() : scriptFolder_ + paths::Separator();
        if (!folder.empty() && path.starts_with(folder)) {
            path = path.substr(folder.size());
        }
        return "$include " + TokenOf(path);
    }

    void Emit(std::vector<std::string>* writtenIn) {
        for (int i = 0; i < n_; ++i) {
            const ScriptPiece& p = pieces_[Index(i)];
            if (!beforeDone_) {
                Lines(before_[Index(i)]);
            }
            beforeDone_ = false;
            const std::vector<Insertion>* next = i + 1 < n_ ? &before_[Index(i + 1)] : nullptr;
            switch (p.Kind) {
            case PieceKind::Text:
                Gap(p.Span, next);
                break;
            case PieceKind::IncludeStart:
                if (!changed_[Index(p.Ref)]) {
                    Raw(IncludeLine(p.Ref));
                    Queue(after_[Index(i)]);
                    i = includeEnd_[Index(p.Ref)];
                    continue;
                }
                if (writtenIn != nullptr) {
                    writtenIn->emplace_back(layout_.TextOf(p.Span));
                }
                break;
            case PieceKind::IncludeEnd:
                break;
            default: {
                const Content content = Of(i);
                if (content.What == Content::Verbatim) {
                    Raw(layout_.TextOf(p.Span));
                } else if (content.What == Content::Lines) {
                    for (std::size_t l = 0; l < content.Text.size(); ++l) {
                        Raw(content.Text[l]);
                        if (l + 1 < content.Text.size()) {
                            Raw(eol_);
                        }
                    }
                } else if (!wrote_ || last_ == '\n') {
                    eatLineEnd_ = true; // a line of its own that goes
                }
                break;
            }
            }
            Queue(after_[Index(i)]);
        }
        if (!beforeDone_) {
            Lines(before_[Index(n_)]);
        }
        if (!pending_.empty()) {
            if (wrote_ && last_ != '\n') {
                Raw(eol_);
            }
            Flush();
        }
    }

    const Document& doc_;
    const ScriptLayout& layout_;
    std::ostream& out_;
    char separator_;
    std::string eol_;
    const std::vector<ScriptPiece>& pieces_;
    int n_;
    bool moved_ = false;
    std::string scriptFolder_;

    // The quotes that run across lines, by source.
    std::vector<std::vector<TextSpan>> quotes_;
    std::vector<int> includeStart_;
    std::vector<int> includeEnd_;
    std::vector<bool> changed_;
    std::vector<std::array<int, static_cast<std::size_t>(Class::Count)>> firstOf_;
    std::vector<std::array<int, static_cast<std::size_t>(Class::Count)>> lastOf_;
    int firstDirective_ = -1;
    std::vector<Element> bodies_;
    std::vector<Element> sequences_;
    std::vector<int> element_; // per piece: the anchored element written there
    std::vector<Insertion> insertions_;
    std::vector<std::vector<Insertion>> before_;
    std::vector<std::vector<Insertion>> after_;

    std::vector<std::vector<std::string>> pending_;
    bool beforeDone_ = false;
    bool eatLineEnd_ = false;
    bool wrote_ = false;
    char last_ = '\0';
};

} // namespace

void WriteHead(const Document& doc, std::ostream& out, std::string_view eol) {
    out << "// QC-File for Half-Life Model: \"" << doc.ModelName << '"' << eol;
    out << "// Createt with \"Quarle 0.8.4\"" << eol;
    out << MakersNotice << eol;
    out << eol;
}

void WriteLayoutScript(const Document& doc, const ScriptLayout& layout, std::ostream& out,
                       char decimalSeparator, std::vector<std::string>* writtenIn) {
    LayoutWriter(doc, layout, out, decimalSeparator).Write(writtenIn);
}

} // namespace quarle
