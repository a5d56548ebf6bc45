#include "document/Skeleton.h"

#include "document/Paths.h"
#include "document/Text.h"

#include <algorithm>
#include <bitset>
#include <cmath>

namespace quarle {

namespace {

bool ValidIndex(int index) {
    return index >= 0 && index <= LastBone;
}

f32 ReadF32(std::string_view text) {
    return ToF32(TextToNumber(text));
}

// index "name" parent, walked character by character; blanks inside the
// name and extra blanks before the parent do no harm.
void ReadNodeLine(SkeletonTables& tables, std::string_view line) {
    int state = 0;
    int index = -1;
    std::size_t nameStart = 0;
    std::size_t parentStart = 0;
    for (std::size_t p = 0; p < line.size(); ++p) {
        const char c = line[p];
        if (state == 0 && c == ' ') {
            index = ToI16(TextToNumber(line.substr(0, p)));
            if (!ValidIndex(index)) {
                return;
            }
            state = 1;
        } else if (state == 1 && c == '"') {
            nameStart = p + 1;
            state = 2;
        } else if (state == 2 && c == '"') {
            tables.BoneNames[index] = std::string(line.substr(nameStart, p - nameStart));
            state = 3;
        } else if (state == 3 && c == ' ') {
            state = 4;
        } else if (state == 4 && c != ' ') {
            parentStart = p;
            state = 5;
        } else if (state == 5 && c == ' ') {
            tables.Bones[index].Parent =
                ToI16(TextToNumber(line.substr(parentStart, p - parentStart)));
            state = 6;
        }
    }
    if (state == 5) {
        tables.Bones[index].Parent = ToI16(TextToNumber(line.substr(parentStart)));
    }
}

// Column 2..7 of a skeleton line into the bone's field.
void StoreColumn(BoneRec& bone, int column, f32 value, SkeletonVariant variant) {
    const bool attachment = variant == SkeletonVariant::Attachment;
    switch (column) {
    case 2:
        (attachment ? bone.X : bone.Z) = value;
        break;
    case 3:
        if (attachment) {
            bone.Z = -value;
        } else {
            bone.Y = value;
        }
        break;
    case 4:
        (attachment ? bone.Y : bone.X) = value;
        break;
    case 5:
        (attachment ? bone.RotA : bone.RotC) = value;
        break;
    case 6:
        (attachment ? bone.RotC : bone.RotB) = value;
        break;
    case 7:
        (attachment ? bone.RotB : bone.RotA) = value;
        break;
    default:
        break;
    }
}

// Cut at every single blank: two blanks make an empty column, a tab is no
// separator, the seventh column is stored at the line end only when six
// blanks were passed, columns behind it are ignored.
void ReadSkeletonLine(SkeletonTables& tables, std::string_view line, SkeletonVariant variant) {
    int column = 0;
    int index = -1;
    std::size_t start = 0;
    auto take = [&](std::string_view text) {
        ++column;
        if (column == 1) {
            index = ToI16(TextToNumber(text));
            return ValidIndex(index);
        }
        StoreColumn(tables.Bones[index], column, ReadF32(text), variant);
        return column < 7;
    };
    for (std::size_t p = 0; p < line.size(); ++p) {
        if (line[p] == ' ') {
            if (!take(line.substr(start, p - start))) {
                return;
            }
            start = p + 1;
        }
    }
    if (column == 6) {
        take(line.substr(start));
    }
}

bool EqualsUpper(std::string_view line, std::string_view word) {
    return line.size() == word.size() && ToUpper(line) == word;
}

void ComputeController(SkeletonTables& tables, int b) {
    BoneRec& bone = tables.Bones[b];
    const BoneRec& parent = tables.Bones[bone.Parent];
    const f32 a1 = parent.RotA * 0.01745329f;
    const f32 a2 = parent.RotB * 0.01745329f;
    const f32 a3 = parent.RotC * 0.01745329f;
    const double s1 = std::sin(a1), c1 = std::cos(a1);
    const double s2 = std::sin(a2), c2 = std::cos(a2);
    const double s3 = std::sin(a3), c3 = std::cos(a3);
    const f32 m[3][3] = {
        {f32(c2 * c1), f32(-s1 * c3 - s2 * c1 * s3), f32(s1 * s3 - s2 * c1 * c3)},
        {f32(s1 * c2), f32(c1 * c3 - s2 * s1 * s3), f32(-c1 * s3 - s2 * s1 * c3)},
        {f32(s2), f32(s3 * c2), f32(c3 * c2)},
    };
    const f32 p[3] = {bone.X, bone.Y, bone.Z};
    f32 q[3];
    for (int i = 0; i < 3; ++i) {
        q[i] = f32(double(m[i][0]) * p[0] + double(m[i][1]) * p[1] + double(m[i][2]) * p[2]);
    }
    bone.X = parent.X + q[0];
    bone.Y = parent.Y + q[1];
    bone.Z = parent.Z + q[2];
}

void ComputeAttachment(SkeletonTables& tables, int b) {
    BoneRec& bone = tables.Bones[b];
    {
        const BoneRec& parent = tables.Bones[bone.Parent];
        bone.X += parent.X;
        bone.Y += parent.Y;
        bone.Z += parent.Z;
    }
    std::bitset<LastBone + 1> met;
    met.set(b);
    int j = b;
    while (HasParent(tables.Bones[j]) && !met.test(tables.Bones[j].Parent)) {
        j = tables.Bones[j].Parent;
        met.set(j);
        const BoneRec& turn = tables.Bones[j];
        const double a = turn.RotA, sa = std::sin(a), ca = std::cos(a);
        const double bb = turn.RotB, sb = std::sin(bb), cb = std::cos(bb);
        const double c = turn.RotC, sc = std::sin(c), cc = std::cos(c);
        const double k11 = sb * sc * sa + ca * cb, k12 = cc * sa, k13 = cb * sc * sa - sb * ca;
        const double k21 = ca * sb * sc - sa * cb, k22 = cc * ca, k23 = cb * ca * sc + sa * sb;
        const double k31 = k13, k32 = -sc, k33 = cb * cc;
        const double dx = double(bone.X) - turn.X;
        const double dy = double(bone.Y) - turn.Y;
        const double dz = double(bone.Z) - turn.Z;
        bone.X = f32(turn.X + k11 * dx + k12 * dy + k13 * dz);
        bone.Y = f32(turn.Y + k21 * dx + k22 * dy + k23 * dz);
        bone.Z = f32(turn.Z + k31 * dx + k32 * dy + k33 * dz);
    }
}

} // namespace

bool HasParent(const BoneRec& bone) {
    return ValidIndex(bone.Parent);
}

std::optional<std::string> SkeletonFile(const Document& doc) {
    const int groups = std::min<int>(doc.BodyGroupCount, limits::LastBodyGroup);
    for (int g = 1; g <= groups; ++g) {
        const BodyGroupRec& group = doc.BodyGroups[g];
        const int parts = std::min<int>(group.PartCount, limits::LastPart);
        for (int p = 1; p <= parts; ++p) {
            const std::string& part = group.Parts[p];
            if (!part.empty() && part != Blank) {
                return paths::Join(doc.ModelPath, part + ".smd");
            }
        }
    }
    return std::nullopt;
}

void StartSkeleton(SkeletonTables& tables, SkeletonVariant variant) {
    const bool attachment = variant == SkeletonVariant::Attachment;
    tables.SkeletonMin = attachment ? 99999.0f : 9999.0f;
    tables.SkeletonMax = attachment ? -99999.0f : -9999.0f;
    for (std::string& name : tables.BoneNames) {
        name.clear();
    }
}

void ReadSkeletonText(SkeletonTables& tables, std::string_view text, SkeletonVariant variant) {
    bool nodes = false;
    int stage = 0;
    std::size_t pos = 0;
    while (pos < text.size()) {
        std::size_t end = text.find_first_of("\r\n", pos);
        if (end == std::string_view::npos) {
            end = text.size();
        }
        const std::string_view line = Trim(text.substr(pos, end - pos));
        pos = end + 1;
        if (end + 1 < text.size() && text[end] == '\r' && text[end + 1] == '\n') {
            ++pos;
        }
        const bool isNodes = EqualsUpper(line, "NODES");
        const bool isTime0 = EqualsUpper(line, "TIME 0");
        if (isNodes) {
            nodes = true;
        } else if (EqualsUpper(line, "SKELETON")) {
            stage = 1;
        } else if (isTime0) {
            stage = 2;
        } else if (stage == 2 && EqualsUpper(line, "END")) {
            return;
        }
        if (!isNodes && stage == 0 && nodes) {
            ReadNodeLine(tables, line);
        } else if (!isTime0 && stage == 2) {
            ReadSkeletonLine(tables, line, variant);
        }
    }
}

std::vector<int> PlaceBones(SkeletonTables& tables, SkeletonVariant variant) {
    std::vector<int> listed;
    f32& low = tables.SkeletonMin;
    f32& high = tables.SkeletonMax;
    for (int b = 0; b <= LastBone; ++b) {
        if (tables.BoneNames[b].empty()) {
            continue;
        }
        listed.push_back(b);
        if (HasParent(tables.Bones[b])) {
            if (variant == SkeletonVariant::Controller) {
                ComputeController(tables, b);
            } else {
                ComputeAttachment(tables, b);
            }
        }
        for (const f32 v : {tables.Bones[b].X, tables.Bones[b].Y, tables.Bones[b].Z}) {
            if (v > high) {
                high = v;
            }
            if (v < low) {
                low = v;
            }
        }
    }
    if (variant == SkeletonVariant::Controller) {
        low -= 5;
        high += 5;
    } else {
        low -= (high - low) / 100;
        high += (high - low) / 100;
    }
    if (!(high > low) || !std::isfinite(high - low)) {
        const f32 middle = listed.empty() || !std::isfinite(low / 2 + high / 2)
                               ? 0.0f
                               : low / 2 + high / 2;
        low = middle - 1;
        high = middle + 1;
    }
    return listed;
}

SkeletonLoad ContinueSkeleton(SkeletonTables& tables, const Document& doc,
                              SkeletonVariant variant) {
    SkeletonLoad load;
    if (const auto file = SkeletonFile(doc)) {
        load.Path = *file;
        load.Source = SkeletonSource::Unreadable;
        if (const auto text = ReadFileText(*file, FileKind::Smd, &load.Unread)) {
            ReadSkeletonText(tables, *text, variant);
            load.Source = SkeletonSource::Read;
        }
    }
    load.ListedBones = PlaceBones(tables, variant);
    return load;
}

SkeletonLoad LoadSkeleton(SkeletonTables& tables, const Document& doc, SkeletonVariant variant) {
    StartSkeleton(tables, variant);
    return ContinueSkeleton(tables, doc, variant);
}

double SkeletonScale(const SkeletonTables& tables, int widthTwips) {
    const double range = double(tables.SkeletonMax) - tables.SkeletonMin;
    return range > 0 && std::isfinite(range) ? widthTwips / range : 0.0;
}

double SkeletonScreen(const SkeletonTables& tables, double scale, double value) {
    const double screen = (value - tables.SkeletonMin) * scale;
    if (!std::isfinite(screen)) {
        return 0.0;
    }
    return std::clamp(screen, -1.0e6, 1.0e6);
}

} // namespace quarle
