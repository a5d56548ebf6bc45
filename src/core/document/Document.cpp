#include "document/Document.h"

#include <cstdint>

namespace quarle {

namespace {
const AnimEventRec FreshEvent{};
}

AnimEventRec& EventTable::operator[](int i) {
    if (i >= static_cast<int>(slots_.size())) {
        slots_.resize(static_cast<std::size_t>(i) + 1);
    }
    return slots_[static_cast<std::size_t>(i)];
}

const AnimEventRec& EventTable::operator[](int i) const {
    return i < static_cast<int>(slots_.size()) ? slots_[static_cast<std::size_t>(i)] : FreshEvent;
}

void EventTable::Reset(int first, int last) {
    const int stored = static_cast<int>(slots_.size());
    for (int i = first; i <= last && i < stored; ++i) {
        slots_[static_cast<std::size_t>(i)] = AnimEventRec{};
    }
    // Trailing fresh slots cost memory and say nothing.
    while (!slots_.empty() && slots_.back() == FreshEvent) {
        slots_.pop_back();
    }
    if (slots_.empty()) {
        slots_.shrink_to_fit();
    }
}

Document::Document() {
    InitVars(*this);
}

void InitVars(Document& doc) {
    // 1. animations of every group, slots 0..100
    for (auto& group : doc.Anims) {
        for (int s = 0; s <= limits::LastWrittenAnimSlot; ++s) {
            AnimRec& a = group[static_cast<std::size_t>(s)];
            a.BlendOn = 0;
            a.BlendAxis = 0.0f;
            a.BlendMin = 0.0f;
            a.BlendMax = 0.0f;
            a.Events.Reset(1, limits::LastResetEvent);
            a.EventCount = 0;
            a.SmdFile.clear();
            a.BlendFile.clear();
            a.Scale = 1.0f;
            a.LY = 0;
            a.LZ = 0;
            a.Fps = 30;
            a.Loop = 0;
            a.Name.clear();
            a.FrameLimit = 0;
            a.FrameStart = 0;
            a.FrameEnd = 10;
            a.OriginOn = 0;
            a.OriginX = 0;
            a.OriginY = 0;
            a.OriginZ = 0;
            a.LX = 0;
            a.ActivityId.clear();
            a.Rotate = 0.0f;
            a.KeptFiles.clear();
            a.KeptOptions.clear();
            a.KeptAfter.clear();
        }
    }
    // 2. attachments and controllers
    for (int i = 0; i <= limits::LastAttachment; ++i) {
        doc.Attachments[static_cast<std::size_t>(i)] = AttachmentRec{};
        doc.AttachmentBones[static_cast<std::size_t>(i)].clear();
    }
    for (int i = 0; i <= limits::LastController; ++i) {
        doc.Controllers[static_cast<std::size_t>(i)] = ControllerRec{};
        doc.ControllerBones[static_cast<std::size_t>(i)].clear();
    }
    // 3.
    doc.QcFile.clear();
    // 4. (LstParts is the main window's)
    // 5.
    doc.BodyGroupCount = 0;
    doc.EyesOn = 0;
    doc.ExternalTextures = 0;
    doc.TextureCount = 0;
    doc.Gamma = DefaultGamma;
    doc.SequenceGroupSize = 0;
    doc.ModelScale = 1.0f;
    // 6. texture rows and columns 1..10
    for (int r = 1; r <= limits::LastWrittenTextureRow; ++r) {
        for (int c = 1; c <= limits::LastTexture; ++c) {
            doc.TextureVariations[static_cast<std::size_t>(r)][static_cast<std::size_t>(c)] = Blank;
        }
    }
    // 7. render modes 1..10
    for (int i = 1; i <= limits::LastWrittenTextureMode; ++i) {
        doc.TextureModes[static_cast<std::size_t>(i)].Mode = 0;
        doc.TextureModes[static_cast<std::size_t>(i)].Name.clear();
    }
    // 8. body groups 0..10 with part slots 0..10
    for (int g = 0; g <= limits::LastResetBodyGroup; ++g) {
        BodyGroupRec& bg = doc.BodyGroups[static_cast<std::size_t>(g)];
        bg.PartCount = 0;
        bg.Name.clear();
        for (int p = 0; p <= limits::LastResetBodyGroup; ++p) {
            bg.Parts[static_cast<std::size_t>(p)].clear();
            bg.Reverse[static_cast<std::size_t>(p)] = 0;
        }
        bg.KeptWords.clear();
        bg.KeptAfter.clear();
    }
    // 9. one empty group named "body"
    doc.BodyGroupCount = 1;
    doc.BodyGroups[1].PartCount = 0;
    doc.BodyGroups[1].Name = "body";
    // 10. what the forms do not show
    doc.ModelNameAsWritten.clear();
    doc.ModelPathAsWritten.clear();
    doc.TexturePathAsWritten.clear();
    doc.KeptCdTextures.clear();
    doc.KeptBeforeBody.clear();
    doc.KeptAfterTextures.clear();
    doc.KeptTextureRows = 0;
    for (int g = 0; g <= limits::LastSequenceGroup; ++g) {
        doc.SequenceGroupNames[static_cast<std::size_t>(g)].clear();
        doc.KeptAtGroupStart[static_cast<std::size_t>(g)].clear();
    }
}

std::size_t DocumentFootprint(const Document& doc) {
    auto text = [](const std::string& s) {
        // A short text lives inside the string object; a longer one on the heap.
        const auto object = reinterpret_cast<std::uintptr_t>(&s);
        const auto data = reinterpret_cast<std::uintptr_t>(s.data());
        const bool inside = data >= object && data < object + sizeof(s);
        return inside ? std::size_t{0} : s.capacity() + 1;
    };
    std::size_t bytes = sizeof(Document);
    for (const std::string* s : {&doc.QcFile, &doc.ModelName, &doc.ModelPath, &doc.TexturePath}) {
        bytes += text(*s);
    }
    for (const auto& group : doc.Anims) {
        for (const AnimRec& a : group) {
            bytes += text(a.SmdFile) + text(a.BlendFile) + text(a.Name) + text(a.ActivityId);
            bytes += static_cast<std::size_t>(a.Events.StoredSlots()) * sizeof(AnimEventRec);
            for (int e = 0; e < a.Events.StoredSlots(); ++e) {
                bytes += text(a.Events[e].Parameter);
            }
        }
    }
    for (const auto& bg : doc.BodyGroups) {
        bytes += text(bg.Name);
        for (const auto& p : bg.Parts) {
            bytes += text(p);
        }
    }
    for (const auto& bone : doc.AttachmentBones) {
        bytes += text(bone);
    }
    for (const auto& bone : doc.ControllerBones) {
        bytes += text(bone);
    }
    for (const auto& row : doc.TextureVariations) {
        for (const auto& cell : row) {
            bytes += text(cell);
        }
    }
    for (const auto& mode : doc.TextureModes) {
        bytes += text(mode.Name);
    }
    return bytes;
}

} // namespace quarle
