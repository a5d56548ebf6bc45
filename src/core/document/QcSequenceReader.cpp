#include "document/QcSequenceReader.h"

#include "document/NumberText.h"
#include "document/SequenceNumbers.h"

#include <array>
#include <charconv>
#include <optional>
#include <string>
#include <vector>

namespace quarle {

namespace {

char Lower(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

// The option words as the compiler tells them apart, in its order of tests.
enum class Option {
    Open,
    Close,
    Deform,
    Event,
    Pivot,
    Number, // a row of SequenceNumbers
    Origin,
    Loop,
    Frame,
    Blend,
    Node,
    Transition,
    Motion,
    Animation,
    Activity,
    File,
};

// Most tokens of a sequence are numbers, names and events: their first
// letter tells most of them apart before a word is compared.
// The numeric options are compared whole, so they come ahead of the words
// told apart by their first letters.
Option OptionOf(std::string_view t) {
    if (t.empty()) {
        return Option::File;
    }
    if (SequenceNumberOf(t) >= 0) {
        return Option::Number;
    }
    switch (Lower(t.front())) {
    case '{':
        return t.size() == 1 ? Option::Open : Option::File;
    case '}':
        return t.size() == 1 ? Option::Close : Option::File;
    case 'd':
        return EqualNoCase(t, "deform") ? Option::Deform : Option::File;
    case 'e':
        return EqualNoCase(t, "event") ? Option::Event : Option::File;
    case 'p':
        return EqualNoCase(t, "pivot") ? Option::Pivot : Option::File;
    case 'f':
        return StartsNoCase(t, "frame") ? Option::Frame : Option::File;
    case 'o':
        return EqualNoCase(t, "origin") ? Option::Origin : Option::File;
    case 'r':
        return StartsNoCase(t, "rtra") ? Option::Transition : Option::File;
    case 'l':
        if (StartsNoCase(t, "loop")) {
            return Option::Loop;
        }
        return IsMotionWord(t) ? Option::Motion : Option::File;
    case 'b':
        return StartsNoCase(t, "blend") ? Option::Blend : Option::File;
    case 'n':
        return StartsNoCase(t, "node") ? Option::Node : Option::File;
    case 't':
        return StartsNoCase(t, "tran") ? Option::Transition : Option::File;
    case 'x':
    case 'y':
    case 'z':
        return IsMotionWord(t) ? Option::Motion : Option::File;
    case 'a':
        if (IsMotionWord(t)) {
            return Option::Motion;
        }
        if (EqualNoCase(t, "animation")) {
            return Option::Animation;
        }
        return IsActivityWord(t) ? Option::Activity : Option::File;
    default:
        return Option::File;
    }
}

// A token as read: its text, and its bytes in the script (both views into
// the script's text, which outlives the read).
struct Word {
    std::string_view Text;
    std::string_view Raw;
};

struct EventWords {
    Word Id;
    Word Frame;
    std::optional<Word> Options;
};

struct BlendWords {
    Word Keyword;
    Word Axis;
    Word Min;
    Word Max;
};

} // namespace

// What the tokens of a sequence said, before it becomes a record.
struct SequenceWords {
    std::vector<Word> Files;
    std::array<std::optional<Word>, SequenceNumberCount> Numbers{};
    bool Loop = false;
    std::optional<Word> FrameStart;
    std::optional<Word> FrameEnd;
    bool Origin = false;
    std::array<Word, 3> OriginXyz{};
    std::optional<Word> Activity;
    std::optional<Word> Weight;
    bool LX = false;
    bool LY = false;
    bool LZ = false;
    std::optional<BlendWords> Blend;
    std::vector<EventWords> Events;
    std::vector<std::string_view> Kept; // further options, each token as written

    // Empty again, with the room the last sequence needed.
    void Clear() {
        std::vector<Word> files = std::move(Files);
        std::vector<EventWords> events = std::move(Events);
        std::vector<std::string_view> kept = std::move(Kept);
        *this = SequenceWords{};
        Files = std::move(files);
        Events = std::move(events);
        Kept = std::move(kept);
        Files.clear();
        Events.clear();
        Kept.clear();
    }
};

namespace {

class SequenceGrammar {
public:
    SequenceGrammar(ScriptCursor& cursor, SequenceWords& words) : cursor_(cursor), words_(words) {}

    // Behind the name: options and files to the end of the line, across
    // lines while a brace is open.
    void Read() {
        for (;;) {
            if (depth_ > 0) {
                if (!cursor_.NextCross()) {
                    complete_ = false; // the script ended inside the braces
                    return;
                }
            } else if (!cursor_.Available() || !cursor_.NextOnLine()) {
                // A comment behind the last option stops the compiler.
                complete_ = complete_ && !cursor_.Available();
                return;
            }
            Dispatch();
            if (depth_ < 0) {
                complete_ = false;
                return;
            }
        }
    }

    bool Complete() const { return complete_ && !words_.Files.empty(); }
    SequenceWords& Words() { return words_; }

private:
    Word Current() const { return {cursor_.Text(), cursor_.Raw()}; }

    // The value of an option, on its line; nothing when the line has ended.
    std::optional<Word> Argument() {
        if (!cursor_.NextOnLine()) {
            complete_ = false;
            return std::nullopt;
        }
        return Current();
    }

    // An option the record has no field for, kept with its values.
    void Keep(int arguments) {
        const std::size_t start = words_.Kept.size();
        words_.Kept.push_back(cursor_.Raw());
        for (int i = 0; i < arguments; ++i) {
            const std::optional<Word> value = Argument();
            if (!value) {
                words_.Kept.resize(start); // cut short: the compiler refuses the line
                return;
            }
            words_.Kept.push_back(value->Raw);
        }
    }

    void Dispatch() {
        switch (OptionOf(cursor_.Text())) {
        case Option::Open:
            ++depth_;
            break;
        case Option::Close:
            --depth_;
            break;
        case Option::Deform:
            Keep(0);
            break;
        case Option::Event:
            Event();
            break;
        case Option::Pivot:
            Keep(3);
            break;
        case Option::Number:
            Set(words_.Numbers[static_cast<std::size_t>(SequenceNumberOf(cursor_.Text()))]);
            break;
        case Option::Origin:
            Origin();
            break;
        case Option::Loop:
            words_.Loop = true;
            break;
        case Option::Frame:
            Frame();
            break;
        case Option::Blend:
            Blend();
            break;
        case Option::Node:
            Keep(1);
            break;
        case Option::Transition:
            // transition and rtransition, told apart by four letters only
            Keep(2);
            break;
        case Option::Motion:
            Motion();
            break;
        case Option::Animation:
            if (std::optional<Word> file = Argument()) {
                words_.Files.push_back(*file);
            }
            break;
        case Option::Activity:
            // The token behind an activity is its weight, whatever it is.
            words_.Activity = Current();
            words_.Weight = Argument();
            break;
        case Option::File:
            words_.Files.push_back(Current());
            break;
        }
    }

    // A value that a later one of the same option replaces.
    void Set(std::optional<Word>& field) {
        if (std::optional<Word> value = Argument()) {
            field = value;
        }
    }

    void Origin() {
        std::array<Word, 3> xyz;
        for (Word& w : xyz) {
            const std::optional<Word> value = Argument();
            if (!value) {
                return;
            }
            w = *value;
        }
        words_.Origin = true;
        words_.OriginXyz = xyz;
    }

    void Frame() {
        const std::optional<Word> start = Argument();
        const std::optional<Word> end = start ? Argument() : std::nullopt;
        if (end) {
            words_.FrameStart = start;
            words_.FrameEnd = end;
        }
    }

    void Blend() {
        BlendWords blend{Current(), {}, {}, {}};
        for (Word* w : {&blend.Axis, &blend.Min, &blend.Max}) {
            const std::optional<Word> value = Argument();
            if (!value) {
                return;
            }
            *w = *value;
        }
        words_.Blend = blend;
    }

    void Motion() {
        const std::string_view t = cursor_.Text();
        if (EqualNoCase(t, "LX")) {
            words_.LX = true;
        } else if (EqualNoCase(t, "LY")) {
            words_.LY = true;
        } else if (EqualNoCase(t, "LZ")) {
            words_.LZ = true;
        } else {
            Keep(0);
        }
    }

    // The event number and frame, then its options when its line holds a
    // token: one that starts with a brace closes the braces instead.
    void Event() {
        const std::optional<Word> id = Argument();
        const std::optional<Word> frame = id ? Argument() : std::nullopt;
        if (!frame) {
            return;
        }
        EventWords& event = words_.Events.emplace_back(EventWords{*id, *frame, std::nullopt});
        if (cursor_.Available()) {
            if (const std::optional<Word> options = Argument()) {
                if (!options->Text.empty() && options->Text.front() == '}') {
                    --depth_;
                } else {
                    event.Options = options;
                }
            }
        }
    }

    ScriptCursor& cursor_;
    SequenceWords& words_;
    int depth_ = 0;
    bool complete_ = true;
};

// A whole number field from a token read as the compiler's atoi does, and
// whether the token is the writer's own form of it (most are: up to five
// digits, no zero in front, a minus before a number other than 0).
i16 WholeOf(std::string_view text, bool& plain) {
    const char* p = text.data();
    const char* const end = p + text.size();
    const bool negative = p != end && *p == '-';
    p += negative ? 1 : 0;
    const std::size_t digits = static_cast<std::size_t>(end - p);
    int value = 0;
    plain = digits >= 1 && digits <= 5 && (*p != '0' || (digits == 1 && !negative));
    for (; plain && p != end; ++p) {
        const unsigned d = static_cast<unsigned>(*p - '0');
        plain = d <= 9;
        value = value * 10 + static_cast<int>(d);
    }
    if (plain && value <= (negative ? 32768 : 32767)) {
        return static_cast<i16>(negative ? -value : value);
    }
    plain = false;
    return WholeField(static_cast<double>(CompilerWhole(text)));
}

// Into a field, keeping the token where it is not the writer's form.
i16 Whole(NumberTexts& numbers, int field, const Word& w) {
    bool plain = false;
    const i16 value = WholeOf(w.Text, plain);
    if (!plain) {
        numbers.push_back({static_cast<std::uint16_t>(field), std::string(w.Text)});
    }
    return value;
}

void KeepText(NumberTexts& numbers, int field, std::string_view written, std::string_view read) {
    if (written != read) {
        numbers.push_back({static_cast<std::uint16_t>(field), std::string(read)});
    }
}

// A token as the forms hold it: bare where it reads back so, else as the
// script wrote it.
std::string FormText(const Word& w) {
    return std::string(IsBareToken(w.Text) ? w.Text : w.Raw);
}

} // namespace

SequenceReader::SequenceReader() : words_(std::make_unique<SequenceWords>()) {}

SequenceReader::~SequenceReader() = default;

SequenceResult SequenceReader::Read(ScriptCursor& cursor, AnimRec& anim, SequenceSource& source) {
    SequenceResult result;
    if (!cursor.NextOnLine()) {
        result.Complete = false; // no name: the compiler stops here
        return result;
    }
    result.Named = true;
    NumberTexts& numbers = source.Numbers;
    const std::string_view name = cursor.Text();
    anim.Name = name;
    SequenceWords& w = *words_;
    w.Clear();
    SequenceGrammar grammar(cursor, w);
    grammar.Read();
    result.Complete = grammar.Complete();

    std::size_t file = 0;
    if (!w.Files.empty()) {
        anim.SmdFile = w.Files[0].Text;
        file = 1;
    }
    if (w.Blend && RotationAxis(w.Blend->Axis.Text) >= 0 && w.Files.size() >= 2) {
        anim.BlendOn = 1;
        anim.BlendFile = w.Files[1].Text;
        anim.BlendAxis = static_cast<f32>(RotationAxis(w.Blend->Axis.Text));
        anim.BlendMin = FloatField(CompilerFloat(w.Blend->Min.Text));
        anim.BlendMax = FloatField(CompilerFloat(w.Blend->Max.Text));
        KeepText(numbers, fields::BlendMin, FloatToPointText(anim.BlendMin), w.Blend->Min.Text);
        KeepText(numbers, fields::BlendMax, FloatToPointText(anim.BlendMax), w.Blend->Max.Text);
        file = 2;
    } else if (w.Blend) {
        const BlendWords& b = *w.Blend;
        w.Kept.insert(w.Kept.begin(), {b.Keyword.Raw, b.Axis.Raw, b.Min.Raw, b.Max.Raw});
    }
    for (; file < w.Files.size(); ++file) {
        // One that "animation" named and that reads as an option keeps it.
        const Word& kept = w.Files[file];
        anim.KeptFiles.push_back(IsFileWord(kept.Text) ? std::string(kept.Raw)
                                                       : "animation " + std::string(kept.Raw));
    }
    for (std::size_t row = 0; row < SequenceNumberCount; ++row) {
        if (const std::optional<Word>& read = w.Numbers[row]) {
            source.Given[row] = true;
            const double number = CompilerFloat(read->Text);
            const int field = fields::SequenceNumber(row);
            if (SequenceNumbers[row].Kind == SequenceNumberKind::Count) {
                // The compiler keeps fractions here; the field holds the nearest.
                const i16 whole = WholeField(number);
                SetSequenceNumber(anim, row, whole);
                KeepText(numbers, field, IntToText(whole), read->Text);
            } else {
                const f32 real = FloatField(number);
                SetSequenceNumber(anim, row, real);
                KeepText(numbers, field, FloatToPointText(real), read->Text);
            }
        }
    }
    anim.Loop = w.Loop ? 1 : 0;
    if (w.FrameStart) {
        anim.FrameLimit = 1;
        anim.FrameStart = Whole(numbers, fields::FrameStart, *w.FrameStart);
        anim.FrameEnd = Whole(numbers, fields::FrameEnd, *w.FrameEnd);
    }
    if (w.Origin) {
        anim.OriginOn = 1;
        i16* xyz[] = {&anim.OriginX, &anim.OriginY, &anim.OriginZ};
        for (int i = 0; i < 3; ++i) {
            const Word& read = w.OriginXyz[static_cast<std::size_t>(i)];
            *xyz[i] = WholeField(CompilerFloat(read.Text));
            KeepText(numbers, fields::OriginX + i, IntToText(*xyz[i]), read.Text);
        }
    }
    if (w.Activity) {
        anim.ActivityId = FormText(*w.Activity);
        if (w.Weight) {
            anim.ActivityId += ' ';
            anim.ActivityId += FormText(*w.Weight);
        }
    }
    anim.LX = w.LX ? 1 : 0;
    anim.LY = w.LY ? 1 : 0;
    anim.LZ = w.LZ ? 1 : 0;
    result.Events = static_cast<int>(w.Events.size());
    const int stored = std::min<int>(result.Events, limits::MaxEvents);
    if (stored > 0) {
        anim.Events[stored]; // one allocation for the whole table
    }
    for (int e = 1; e <= stored; ++e) {
        const EventWords& read = w.Events[static_cast<std::size_t>(e - 1)];
        AnimEventRec& event = anim.Events[e];
        event.EventId = Whole(numbers, fields::EventId(e), read.Id);
        event.Frame = Whole(numbers, fields::EventFrame(e), read.Frame);
        if (read.Options) {
            event.Parameter = read.Options->Text;
        }
    }
    anim.EventCount = static_cast<u8>(stored);
    anim.KeptOptions.assign(w.Kept.begin(), w.Kept.end());

    // The values as read, their texts where they stand in the script.
    SequenceValues& v = source.Values;
    for (std::size_t row = 0; row < SequenceNumberCount; ++row) {
        v.Numbers[row] = SequenceNumberValue(anim, row);
    }
    v.Loop = anim.Loop;
    v.FrameLimit = anim.FrameLimit;
    v.FrameStart = anim.FrameStart;
    v.FrameEnd = anim.FrameEnd;
    v.OriginOn = anim.OriginOn;
    v.OriginX = anim.OriginX;
    v.OriginY = anim.OriginY;
    v.OriginZ = anim.OriginZ;
    v.LX = anim.LX;
    v.LY = anim.LY;
    v.LZ = anim.LZ;
    v.SmdFile = w.Files.empty() ? std::string_view() : w.Files[0].Text;
    v.BlendOn = anim.BlendOn;
    v.BlendFile = anim.BlendOn == 1 ? w.Files[1].Text : std::string_view();
    v.BlendAxis = anim.BlendAxis;
    v.BlendMin = anim.BlendMin;
    v.BlendMax = anim.BlendMax;
    v.Name = name;
    v.ActivityId = anim.ActivityId;
    v.KeptFiles = anim.KeptFiles;
    v.KeptOptions = anim.KeptOptions;
    v.Events.reserve(static_cast<std::size_t>(stored));
    for (int e = 1; e <= stored; ++e) {
        const EventWords& read = w.Events[static_cast<std::size_t>(e - 1)];
        const AnimEventRec& event = anim.Events[e];
        v.Events.push_back(
            {event.Frame, event.EventId, read.Options ? read.Options->Text : std::string_view()});
    }
    return result;
}

bool SequenceValues::Same(const AnimRec& a) const {
    for (std::size_t row = 0; row < SequenceNumberCount; ++row) {
        if (SequenceNumberValue(a, row) != Numbers[row]) {
            return false;
        }
    }
    if (a.Loop != Loop || a.FrameLimit != FrameLimit || a.FrameStart != FrameStart ||
        a.FrameEnd != FrameEnd || a.OriginOn != OriginOn || a.OriginX != OriginX ||
        a.OriginY != OriginY || a.OriginZ != OriginZ || a.LX != LX || a.LY != LY || a.LZ != LZ ||
        a.BlendOn != BlendOn || a.BlendAxis != BlendAxis || a.BlendMin != BlendMin ||
        a.BlendMax != BlendMax || a.Name != Name || a.SmdFile != SmdFile ||
        a.BlendFile != BlendFile || a.ActivityId != ActivityId || a.KeptFiles != KeptFiles ||
        a.KeptOptions != KeptOptions || a.EventCount != Events.size()) {
        return false;
    }
    for (std::size_t e = 0; e < Events.size(); ++e) {
        const AnimEventRec& event = a.Events[static_cast<int>(e) + 1];
        if (event.Frame != Events[e].Frame || event.EventId != Events[e].EventId ||
            event.Parameter != Events[e].Parameter) {
            return false;
        }
    }
    return true;
}

} // namespace quarle
