#include "document/Document.h"

#include <algorithm>
#include <cstdint>
#include <utility>

namespace quarle {

namespace {

const AnimEventRec FreshEvent{};

// A fresh animation, but for the events the reset does not walk (slot 0 and
// those above 10), which keep what they held.
void ResetAnim(AnimRec& a) {
    EventTable events = std::move(a.Events);
    events.Reset(1, limits::LastResetEvent);
    a = AnimRec{};
    a.Events = std::move(events);
}

// A fresh body group, but for the part slots the reset does not walk (above
// 10), which keep their names and flags.
void ResetBodyGroup(BodyGroupRec& group) {
    BodyGroupRec fresh;
    for (int p = limits::LastResetBodyGroup + 1; p <= limits::LastPart; ++p) {
        const auto i = static_cast<std::size_t>(p);
        fresh.Parts[i] = std::move(group.Parts[i]);
        fresh.Reverse[i] = group.Reverse[i];
        fresh.PartWords[i] = std::move(group.PartWords[i]);
    }
    group = std::move(fresh);
}

} // namespace

void EventTable::Grow(int i) {
    slots_.resize(static_cast<std::size_t>(i) + 1);
}

const AnimEventRec& EventTable::Fresh() {
    return FreshEvent;
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

bool EventTable::operator==(const EventTable& other) const {
    const int stored = std::max(StoredSlots(), other.StoredSlots());
    for (int i = 0; i < stored; ++i) {
        if (!((*this)[i] == other[i])) {
            return false;
        }
    }
    return true;
}

AnimGroup::AnimGroup(const AnimGroup& other)
    : front_(other.front_),
      back_(other.back_ ? std::make_unique<BackSlots>(*other.back_) : nullptr) {}

AnimGroup& AnimGroup::operator=(const AnimGroup& other) {
    if (this != &other) {
        front_ = other.front_;
        back_ = other.back_ ? std::make_unique<BackSlots>(*other.back_) : nullptr;
    }
    return *this;
}

AnimRec* AnimGroup::Back() {
    if (!back_) {
        back_ = std::make_unique<BackSlots>();
    }
    return back_->data();
}

const AnimRec& AnimGroup::Fresh() {
    static const AnimRec fresh{};
    return fresh;
}

Document::Document() {
    InitVars(*this);
}

void InitVars(Document& doc) {
    // 1. animations of every group, slots 0..100
    for (auto& group : doc.Anims) {
        for (int s = 0; s <= limits::LastWrittenAnimSlot; ++s) {
            ResetAnim(group[static_cast<std::size_t>(s)]);
        }
    }
    // 2. attachments and controllers, with their bones
    doc.Attachments.fill(AttachmentRec{});
    doc.AttachmentBones.fill(std::string());
    doc.Controllers.fill(ControllerRec{});
    doc.ControllerBones.fill(std::string());
    // 3. and 5.: the document's own fields, and what a load kept of a script
    // (LstParts, step 4, is the main window's; the count of body groups is
    // set in 9.)
    static_cast<DocumentResetFields&>(doc) = DocumentResetFields{};
    // 6. texture rows and columns 1..10
    for (int r = 1; r <= limits::LastWrittenTextureRow; ++r) {
        for (int c = 1; c <= limits::LastTexture; ++c) {
            doc.TextureVariations[static_cast<std::size_t>(r)][static_cast<std::size_t>(c)] = Blank;
        }
    }
    // 7. render modes 1..10
    for (int i = 1; i <= limits::LastWrittenTextureMode; ++i) {
        doc.TextureModes[static_cast<std::size_t>(i)] = TextureModeRec{};
    }
    // 8. body groups 0..10
    for (int g = 0; g <= limits::LastResetBodyGroup; ++g) {
        ResetBodyGroup(doc.BodyGroups[static_cast<std::size_t>(g)]);
    }
    // 9. one empty group named "body"
    doc.BodyGroupCount = 1;
    doc.BodyGroups[1].Name = "body";
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
        if (group.HoldsUpperSlots()) {
            bytes += (AnimGroup::Size - limits::LastWrittenAnimSlot - 1) * sizeof(AnimRec);
        }
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
