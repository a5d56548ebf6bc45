#include "document/QcScriptLines.h"

#include "document/NumberText.h"
#include "document/QcGrammar.h"
#include "document/SequenceNumbers.h"

#include <algorithm>
#include <charconv>

namespace quarle {

namespace {

std::size_t Index(int i) {
    return static_cast<std::size_t>(i);
}

// A number's text as the script had it, written so that it reads back as
// one token: a quoted one (a blank, nothing) in its quotes again.
std::string KeptToken(const std::string& text) {
    return IsBareToken(text) ? text : TokenOf(text);
}

// The text of a number field: the script's own while the value equals the
// one read from it (its kept text, or the point form the script had), else
// the writer's form.
std::string FloatText(f32 value, const f32* read, const NumberTexts* numbers, int field,
                      bool localeForm, char separator) {
    if (read != nullptr && *read == value) {
        if (const std::string* text = numbers ? FindNumberText(*numbers, field) : nullptr) {
            return KeptToken(*text);
        }
        return FloatToPointText(value);
    }
    return localeForm ? FloatToText(value, separator) : FloatToPointText(value);
}

void AppendWhole(std::string& line, long long value) {
    char digits[24];
    const auto written = std::to_chars(digits, digits + sizeof digits, value);
    line.append(digits, static_cast<std::size_t>(written.ptr - digits));
}

void AppendWhole(std::string& line, i16 value, const i16* read, const NumberTexts* numbers,
                 int field) {
    if (read != nullptr && *read == value && numbers != nullptr && !numbers->empty()) {
        if (const std::string* text = FindNumberText(*numbers, field)) {
            line += KeptToken(*text);
            return;
        }
    }
    AppendWhole(line, value);
}

} // namespace

std::string_view AxisWord(f32 axis) {
    if (axis == 1.0f) {
        return "YR";
    }
    if (axis == 2.0f) {
        return "ZR";
    }
    return "XR";
}

std::string NameToken(std::string_view name) {
    return IsBareToken(name) ? std::string(name) : TokenOf(name);
}

namespace {

// An animation file of a sequence: one that reads as an option word stands
// behind "animation".
std::string FileToken(std::string_view file) {
    return IsFileWord(file) ? TokenOf(file) : "animation " + TokenOf(file);
}

} // namespace

std::string SequenceLine(const AnimRec& a, char separator) {
    const SequenceSource* src = a.From.Read.get();
    const SequenceValues* r = src != nullptr ? &src->Values : nullptr;
    const NumberTexts* numbers = src != nullptr ? &src->Numbers : nullptr;
    const auto number = [&](f32 value, f32 SequenceValues::*field, int id) {
        return FloatText(value, r != nullptr ? &(r->*field) : nullptr, numbers, id, true,
                         separator);
    };
    const auto whole = [&](std::string& line, i16 value, i16 SequenceValues::*field, int id) {
        AppendWhole(line, value, r != nullptr ? &(r->*field) : nullptr, numbers, id);
    };
    std::string line;
    // The numeric options that stand at one place of the line, in the
    // table's order.
    const auto numbersAt = [&](SequenceNumberPlace place) {
        for (std::size_t row = 0; row < SequenceNumberCount; ++row) {
            const SequenceNumber& option = SequenceNumbers[row];
            if (option.Place != place) {
                continue;
            }
            const double value = SequenceNumberValue(a, row);
            const bool given = src != nullptr && src->Given[row] && r->Numbers[row] == value;
            if (!option.Always && value == SequenceNumberDefault(row) && !given) {
                continue;
            }
            line += ' ';
            line += option.Keyword;
            line += ' ';
            const int id = fields::SequenceNumber(row);
            if (option.Kind == SequenceNumberKind::Count) {
                const i16 before = r != nullptr ? static_cast<i16>(r->Numbers[row]) : i16{0};
                AppendWhole(line, static_cast<i16>(value), r != nullptr ? &before : nullptr,
                            numbers, id);
            } else {
                const f32 before = r != nullptr ? static_cast<f32>(r->Numbers[row]) : 0.0f;
                line += FloatText(static_cast<f32>(value), r != nullptr ? &before : nullptr,
                                  numbers, id, true, separator);
            }
        }
    };

    line.reserve(256 + 48 * static_cast<std::size_t>(a.EventCount)); // with room for its events
    line += "$sequence ";
    line += TokenOf(a.Name);
    line += ' ';
    line += FileToken(a.SmdFile);
    if (a.BlendOn == 1) {
        line += ' ';
        line += FileToken(a.BlendFile);
    }
    for (const std::string& token : a.KeptFiles) {
        line += ' ';
        line += token;
    }
    numbersAt(SequenceNumberPlace::BehindFiles);
    if (a.Loop == 1) {
        line += " loop";
    }
    if (a.FrameLimit == 1) {
        line += " frame ";
        whole(line, a.FrameStart, &SequenceValues::FrameStart, fields::FrameStart);
        line += ' ';
        whole(line, a.FrameEnd, &SequenceValues::FrameEnd, fields::FrameEnd);
    }
    if (a.OriginOn == 1) {
        line += " origin ";
        whole(line, a.OriginX, &SequenceValues::OriginX, fields::OriginX);
        line += ' ';
        whole(line, a.OriginY, &SequenceValues::OriginY, fields::OriginY);
        line += ' ';
        whole(line, a.OriginZ, &SequenceValues::OriginZ, fields::OriginZ);
    }
    numbersAt(SequenceNumberPlace::BehindOrigin);
    line += ' '; // the blank stands even without an activity
    line += a.ActivityId;
    if (a.LX == 1) {
        line += " LX";
    }
    if (a.LY == 1) {
        line += " LY";
    }
    if (a.LZ == 1) {
        line += " LZ";
    }
    numbersAt(SequenceNumberPlace::BehindMotion);
    if (a.BlendOn == 1) {
        line += " blend ";
        line += AxisWord(a.BlendAxis);
        line += ' ' + number(a.BlendMin, &SequenceValues::BlendMin, fields::BlendMin);
        line += ' ' + number(a.BlendMax, &SequenceValues::BlendMax, fields::BlendMax);
    }
    for (const std::string& token : a.KeptOptions) {
        line += ' ';
        line += token;
    }
    for (int e = 1; e <= a.EventCount; ++e) {
        const AnimEventRec& event = a.Events[e];
        const SequenceValues::Event* before =
            r != nullptr && e <= static_cast<int>(r->Events.size())
                ? &r->Events[static_cast<std::size_t>(e - 1)]
                : nullptr;
        line += " { event ";
        AppendWhole(line, event.EventId, before ? &before->EventId : nullptr, numbers,
                    fields::EventId(e));
        line += ' ';
        AppendWhole(line, event.Frame, before ? &before->Frame : nullptr, numbers,
                    fields::EventFrame(e));
        if (!event.Parameter.empty()) {
            line += ' ';
            line += TokenOf(event.Parameter);
        }
        line += " }";
    }
    return line;
}

std::vector<std::string> BodyGroupLines(const BodyGroupRec& group) {
    const BodyGroupSource* src = group.From.Read.get();
    const int parts = std::min<int>(group.PartCount, limits::LastPart);
    const auto part = [&](int p) {
        std::string text = TokenOf(group.Parts[Index(p)]);
        if (group.Reverse[Index(p)] != 0) {
            text += " reverse";
        }
        if (!group.PartWords[Index(p)].empty()) {
            text += ' ';
            text += group.PartWords[Index(p)];
        }
        return text;
    };
    const std::string name = NameToken(group.Name);
    // A lone part stands on a $body line; a blank one cannot (it would
    // name a file), and the writer puts a reversed one in a block unless
    // the script had it on a $body line.
    if (parts == 1 && group.Parts[1] != Blank &&
        (group.Reverse[1] == 0 || (src != nullptr && src->Body))) {
        return {"$body " + name + " " + part(1)};
    }
    std::vector<std::string> lines{"$bodygroup " + name, "{"};
    for (int p = 1; p <= parts; ++p) {
        lines.push_back(group.Parts[Index(p)] == Blank ? std::string("blank")
                                                       : "studio " + part(p));
    }
    lines.emplace_back("}");
    return lines;
}

std::string AttachmentLine(const Document& doc, int slot, const AttachmentRead* read) {
    const AttachmentRec& a = doc.Attachments[Index(slot)];
    const bool held = read != nullptr && read->Read;
    const NumberTexts* numbers = held ? &read->Numbers : nullptr;
    const auto number = [&](f32 value, f32 AttachmentRec::*field, int id) {
        return FloatText(value, held ? &(read->Values.*field) : nullptr, numbers, id, false, '.');
    };
    return "$attachment " + (held ? read->IndexText : IntToText(slot)) + " " +
           TokenOf(doc.AttachmentBones[Index(slot)]) + " " +
           number(a.X, &AttachmentRec::X, fields::X) + " " +
           number(a.Y, &AttachmentRec::Y, fields::Y) + " " +
           number(a.Z, &AttachmentRec::Z, fields::Z);
}

std::string ControllerLine(const Document& doc, int slot, const ControllerRead* read,
                           char separator) {
    const ControllerRec& c = doc.Controllers[Index(slot)];
    const bool held = read != nullptr && read->Read;
    const NumberTexts* numbers = held ? &read->Numbers : nullptr;
    const auto number = [&](f32 value, f32 ControllerRec::*field, int id) {
        return FloatText(value, held ? &(read->Values.*field) : nullptr, numbers, id, true,
                         separator);
    };
    const std::string axis =
        held && read->Values.Axis == c.Axis ? read->AxisText : std::string(AxisWord(c.Axis));
    return "$controller " + (held ? read->IndexText : IntToText(slot)) + " " +
           TokenOf(doc.ControllerBones[Index(slot)]) + " " + axis + " " +
           number(c.LimitMin, &ControllerRec::LimitMin, fields::LimitMin) + " " +
           number(c.LimitMax, &ControllerRec::LimitMax, fields::LimitMax);
}

std::string RenderModeLine(const TextureModeRec& mode, const RenderModeRead* read) {
    const std::string texture = read != nullptr && read->Name == mode.Name
                                    ? read->Texture
                                    : std::string(TextureKey(mode.Name));
    return "$texrendermode " + TokenOf(texture) + (mode.Mode == 1 ? " masked" : " additive");
}

std::string ScaleLine(const Document& doc, const SettingsRead* read) {
    return "$scale " + FloatText(doc.ModelScale, read ? &read->ModelScale : nullptr,
                                 read ? &read->Numbers : nullptr, fields::ModelScale, false, '.');
}

std::string GammaLine(const Document& doc, const SettingsRead* read) {
    return "$gamma " + FloatText(doc.Gamma, read ? &read->Gamma : nullptr,
                                 read ? &read->Numbers : nullptr, fields::Gamma, false, '.');
}

std::string EyePositionLine(const Document& doc, const SettingsRead* read, char separator) {
    const bool held = read != nullptr && read->EyesOn == 1;
    const NumberTexts* numbers = held ? &read->Numbers : nullptr;
    const auto number = [&](f32 value, const f32* before, int id) {
        return FloatText(value, held ? before : nullptr, numbers, id, true, separator);
    };
    return "$eyeposition " + number(doc.EyeX, read ? &read->EyeX : nullptr, fields::EyeX) + " " +
           number(doc.EyeY, read ? &read->EyeY : nullptr, fields::EyeY) + " " +
           number(doc.EyeZ, read ? &read->EyeZ : nullptr, fields::EyeZ);
}

std::string SequenceGroupSizeLine(const Document& doc, const SettingsRead* read) {
    std::string line = "$sequencegroupsize ";
    AppendWhole(line, doc.SequenceGroupSize, read ? &read->SequenceGroupSize : nullptr,
                read ? &read->Numbers : nullptr, fields::SequenceGroupSize);
    return line;
}

} // namespace quarle
