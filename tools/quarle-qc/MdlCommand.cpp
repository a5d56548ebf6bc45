// mdl MODEL.mdl: a compiled model (with its NAMET.mdl and NAME01.mdl files
// beside it) in lines of a fixed form, one thing a line, each table in the
// order of the file and counted from 0. Names stand in double quotes as the
// file holds them; numbers with a decimal point.
//
//   studio "<name>" length <bytes> flags <n>
//   eye <x> <y> <z>
//   hull <min x y z> <max x y z>
//   box <min x y z> <max x y z>
//   bone <i> "<name>" parent <i> position <x> <y> <z> rotation <x> <y> <z>
//   controller <i> bone <i> type <X|Y|Z|XR|YR|ZR>[ wrap] range <start> <end> rest <n> index <n>
//   attachment <i> "<name>" bone <i> origin <x> <y> <z>
//   hitbox <i> bone <i> group <n> min <x> <y> <z> max <x> <y> <z>
//   group <i> "<label>" "<file>"
//   sequence <i> "<label>" fps <f> frames <n> flags <n>[ loop] activity <n> weight <n>
//            group <i> blends <n> motion <n> movement <x> <y> <z> events <n>   (one line)
//   event <sequence> <i> frame <n> id <n> "<options>"
//   bodypart <i> "<name>" models <n>
//   model <bodypart> <i> "<name>" triangles <n> vertices <n> normals <n> meshes <n>
//   texture <i> "<name>" <width> x <height> flags <n>[ <flag name> ...]
//   skin <family> <texture of reference 0> <texture of reference 1> ...
//
// Rotations are in radians, as the file holds them. Flag names are
// flatshade, chrome, fullbright, nomips, alpha, additive and masked. A side
// file that is not found is named on standard error behind "warning: ".
//
// Exit status: 0; 1 with "error: " and the problem on standard error for a
// file that cannot be read as a studio model; 2 for a usage error.
#include "Commands.h"
#include "document/NumberText.h"
#include "studio/StudioModel.h"

#include <concepts>
#include <cstdio>
#include <string>

namespace quarle::qc {

namespace {

using namespace quarle::studio;

std::string Num(float v) {
    return FloatToPointText(v);
}

template <std::integral T> std::string Num(T v) {
    return IntToText(static_cast<long long>(v));
}

std::string Quoted(const std::string& s) {
    return '"' + s + '"';
}

std::string Xyz(const Vec3& v) {
    return Num(v[0]) + ' ' + Num(v[1]) + ' ' + Num(v[2]);
}

std::string ControllerType(int type) {
    constexpr const char* Names[] = {"X", "Y", "Z", "XR", "YR", "ZR"};
    std::string word;
    for (int bit = 0; bit < 6; ++bit) {
        if ((type & (1 << bit)) != 0) {
            word += word.empty() ? Names[bit] : std::string("+") + Names[bit];
        }
    }
    if (word.empty()) {
        word = Num(type & 0x7fff);
    }
    return (type & 0x8000) != 0 ? word + " wrap" : word;
}

std::string TextureFlags(int flags) {
    constexpr const char* Names[] = {"flatshade", "chrome", "fullbright", "nomips",
                                     "alpha",     "additive", "masked"};
    std::string words = Num(flags);
    for (int bit = 0; bit < 7; ++bit) {
        if ((flags & (1 << bit)) != 0) {
            words += std::string(" ") + Names[bit];
        }
    }
    return words;
}

std::string Lines(const StudioModel& m) {
    std::string out;
    auto line = [&out](const std::string& text) { out += text + '\n'; };
    line("studio " + Quoted(m.Name) + " length " + Num(m.Length) +
         " flags " + Num(m.Flags));
    line("eye " + Xyz(m.Eye));
    line("hull " + Xyz(m.Min) + ' ' + Xyz(m.Max));
    line("box " + Xyz(m.BoxMin) + ' ' + Xyz(m.BoxMax));
    for (std::size_t i = 0; i < m.Bones.size(); ++i) {
        const Bone& b = m.Bones[i];
        line("bone " + Num(i) + ' ' + Quoted(b.Name) + " parent " +
             Num(b.Parent) + " position " +
             Xyz({b.Value[0], b.Value[1], b.Value[2]}) + " rotation " +
             Xyz({b.Value[3], b.Value[4], b.Value[5]}));
    }
    for (std::size_t i = 0; i < m.Controllers.size(); ++i) {
        const BoneController& c = m.Controllers[i];
        line("controller " + Num(i) + " bone " +
             Num(c.Bone) + " type " + ControllerType(c.Type) +
             " range " + Num(c.Start) + ' ' + Num(c.End) + " rest " +
             Num(c.Rest) + " index " +
             Num(c.Index));
    }
    for (std::size_t i = 0; i < m.Attachments.size(); ++i) {
        const Attachment& a = m.Attachments[i];
        line("attachment " + Num(i) + ' ' + Quoted(a.Name) + " bone " +
             Num(a.Bone) + " origin " + Xyz(a.Origin));
    }
    for (std::size_t i = 0; i < m.HitBoxes.size(); ++i) {
        const HitBox& h = m.HitBoxes[i];
        line("hitbox " + Num(i) + " bone " +
             Num(h.Bone) + " group " +
             Num(h.Group) + " min " + Xyz(h.Min) + " max " +
             Xyz(h.Max));
    }
    for (std::size_t i = 0; i < m.Groups.size(); ++i) {
        line("group " + Num(i) + ' ' + Quoted(m.Groups[i].Label) + ' ' +
             Quoted(m.Groups[i].Name));
    }
    for (std::size_t i = 0; i < m.Sequences.size(); ++i) {
        const Sequence& s = m.Sequences[i];
        line("sequence " + Num(i) + ' ' + Quoted(s.Label) + " fps " +
             Num(s.Fps) + " frames " + Num(s.Frames) + " flags " +
             Num(s.Flags) +
             ((s.Flags & SequenceLooping) != 0 ? " loop" : "") + " activity " +
             Num(s.Activity) + " weight " +
             Num(s.ActivityWeight) + " group " +
             Num(s.Group) + " blends " +
             Num(s.Blends) + " motion " +
             Num(s.MotionType) + " movement " +
             Xyz(s.LinearMovement) + " events " + Num(s.Events.size()));
        for (std::size_t e = 0; e < s.Events.size(); ++e) {
            const Event& ev = s.Events[e];
            line("event " + Num(i) + ' ' +
                 Num(e) + " frame " +
                 Num(ev.Frame) + " id " +
                 Num(ev.Id) + ' ' + Quoted(ev.Options));
        }
    }
    for (std::size_t p = 0; p < m.BodyParts.size(); ++p) {
        const BodyPart& part = m.BodyParts[p];
        line("bodypart " + Num(p) + ' ' + Quoted(part.Name) + " models " +
             Num(part.Models.size()));
        for (std::size_t k = 0; k < part.Models.size(); ++k) {
            const Model& model = part.Models[k];
            line("model " + Num(p) + ' ' +
                 Num(k) + ' ' + Quoted(model.Name) + " triangles " +
                 Num(model.TriangleCount()) + " vertices " +
                 Num(model.Vertices.size()) + " normals " +
                 Num(model.Normals.size()) + " meshes " +
                 Num(model.Meshes.size()));
        }
    }
    for (std::size_t t = 0; t < m.Textures.size(); ++t) {
        const Texture& tex = m.Textures[t];
        line("texture " + Num(t) + ' ' + Quoted(tex.Name) + ' ' +
             Num(tex.Width) + " x " +
             Num(tex.Height) + " flags " + TextureFlags(tex.Flags));
    }
    for (std::size_t f = 0; f < m.SkinFamilies.size(); ++f) {
        std::string row = "skin " + Num(f);
        for (const int t : m.SkinFamilies[f]) {
            row += ' ' + Num(t);
        }
        line(row);
    }
    return out;
}

} // namespace

int RunMdl(const Args& args) {
    if (args.size() != 1 || args[0].starts_with("--")) {
        std::fprintf(stderr, "usage: quarle-qc mdl MODEL.mdl\n");
        return 2;
    }
    const StudioLoad load = ReadStudioFile(args[0]);
    for (const StudioProblem& note : load.Notes) {
        std::fprintf(stderr, "warning: %s\n", ProblemText(note).c_str());
    }
    if (!load.Model) {
        std::fprintf(stderr, "error: %s: %s\n", args[0].c_str(),
                     ProblemText(load.Error.value_or(StudioProblem{})).c_str());
        return 1;
    }
    const std::string out = Lines(*load.Model);
    std::fwrite(out.data(), 1, out.size(), stdout);
    return std::fflush(stdout) == 0 ? 0 : 2;
}

} // namespace quarle::qc
