#include "document/Document.h"
#include "document/ScriptLayout.h"

#include <gtest/gtest.h>
#include <memory>
#include <string>

namespace quarle {
namespace {

// Every field of every slot away from its fresh value, each slot with values
// of its own, so that a kept slot is told apart from its neighbours.
std::string Mark(const char* what, int i, int j = 0) {
    return std::string(what) + std::to_string(i) + "_" + std::to_string(j);
}

// Events 0..11 are filled: the reset walks 1..10.
constexpr int LastFilledEvent = limits::LastResetEvent + 1;

AnimEventRec FilledEvent(int g, int s, int e) {
    return AnimEventRec{static_cast<i16>(e + 2), static_cast<i16>(g + s + 1), Mark("p", s, e)};
}

AnimRec FilledAnim(int g, int s) {
    AnimRec a;
    a.Fps = static_cast<i16>(s + 31);
    a.Loop = 1;
    a.FrameLimit = 1;
    a.FrameStart = 3;
    a.FrameEnd = static_cast<i16>(g + 11);
    a.OriginOn = 1;
    a.OriginX = 1;
    a.OriginY = 2;
    a.OriginZ = 3;
    a.LX = 1;
    a.LY = 1;
    a.LZ = 1;
    a.Scale = 2.5f;
    a.EventCount = 7;
    a.SmdFile = Mark("smd", g, s);
    for (int e = 0; e <= LastFilledEvent; ++e) {
        a.Events[e] = FilledEvent(g, s, e);
    }
    a.BlendFile = "blend";
    a.BlendOn = 1;
    a.BlendAxis = 2.0f;
    a.BlendMin = -10.0f;
    a.BlendMax = 10.0f;
    a.Name = Mark("anim", g, s);
    a.ActivityId = "ACT_IDLE 1";
    a.Rotate = 90.0f;
    a.KeptFiles = {"more.smd"};
    a.KeptOptions = {"node", "3"};
    a.From.Read = std::make_shared<SequenceSource>();
    return a;
}

BodyGroupRec FilledGroup(int g) {
    BodyGroupRec bg;
    bg.Name = Mark("group", g);
    bg.PartCount = 16;
    for (int p = 0; p <= limits::LastPart; ++p) {
        bg.Parts[static_cast<std::size_t>(p)] = Mark("part", g, p);
        bg.Reverse[static_cast<std::size_t>(p)] = -1;
        bg.PartWords[static_cast<std::size_t>(p)] = "scale 2";
    }
    bg.From.Read = std::make_shared<BodyGroupSource>();
    return bg;
}

TextureModeRec FilledMode(int i) {
    return TextureModeRec{Mark("tex", i), 2};
}

std::unique_ptr<Document> Filled() {
    auto doc = std::make_unique<Document>();
    doc->QcFile = "c:\\model\\robot.qc";
    doc->ModelName = "c:\\model\\robot.mdl";
    doc->ModelPath = "c:\\model";
    doc->TexturePath = "c:\\tex";
    doc->ModelScale = 2.0f;
    doc->Gamma = 2.2f;
    doc->ExternalTextures = 1;
    doc->EyesOn = 1;
    doc->EyeX = 1.0f;
    doc->EyeY = 2.0f;
    doc->EyeZ = 3.0f;
    doc->SequenceGroupSize = 64;
    doc->BodyGroupCount = 32;
    for (int g = 0; g <= limits::LastBodyGroup; ++g) {
        doc->BodyGroups[static_cast<std::size_t>(g)] = FilledGroup(g);
    }
    for (int g = 0; g <= limits::LastSequenceGroup; ++g) {
        for (int s = 0; s <= limits::LastAnimSlot; ++s) {
            doc->Anims[static_cast<std::size_t>(g)][static_cast<std::size_t>(s)] = FilledAnim(g, s);
        }
    }
    for (std::size_t i = 0; i < doc->Attachments.size(); ++i) {
        doc->Attachments[i] = AttachmentRec{1, 1.0f, 2.0f, 3.0f};
        doc->AttachmentBones[i] = "Bip01";
        doc->Controllers[i] = ControllerRec{1, 2.0f, -45.0f, 45.0f};
        doc->ControllerBones[i] = "Bip01 Head";
    }
    doc->TextureCount = 10;
    for (int r = 0; r <= limits::LastTextureRow; ++r) {
        for (int c = 0; c <= limits::LastTexture; ++c) {
            doc->TextureVariations[static_cast<std::size_t>(r)][static_cast<std::size_t>(c)] =
                Mark("cell", r, c);
        }
    }
    for (int i = 0; i <= limits::LastTextureMode; ++i) {
        doc->TextureModes[static_cast<std::size_t>(i)] = FilledMode(i);
    }
    doc->SmdFrameCount = 12;
    doc->Layout = std::make_shared<ScriptLayout>();
    return doc;
}

// A new document over a full one: every slot the reset walks is a fresh
// record, and nothing of the old script is left to be written again; the
// ranges it does not walk, the folders, the eye and the frame count stay.
TEST(Document, ResetMakesFreshRecordsAndKeepsWhatItDoesNotWalk) {
    auto doc = Filled();
    InitVars(*doc);

    int faults = 0;
    auto expect = [&faults](bool ok, const std::string& where) {
        if (!ok && ++faults <= 10) {
            ADD_FAILURE() << where;
        }
    };
    for (int g = 0; g <= limits::LastSequenceGroup; ++g) {
        for (int s = 0; s <= limits::LastAnimSlot; ++s) {
            AnimRec want = FilledAnim(g, s);
            if (s <= limits::LastWrittenAnimSlot) {
                want = AnimRec{};
                want.Events[0] = FilledEvent(g, s, 0);
                want.Events[LastFilledEvent] = FilledEvent(g, s, LastFilledEvent);
            }
            expect(doc->Anims[static_cast<std::size_t>(g)][static_cast<std::size_t>(s)] == want,
                   Mark("Anims ", g, s));
        }
    }
    for (int g = 0; g <= limits::LastBodyGroup; ++g) {
        BodyGroupRec want = FilledGroup(g);
        if (g <= limits::LastResetBodyGroup) {
            const BodyGroupRec old = want;
            want = BodyGroupRec{};
            for (int p = limits::LastResetBodyGroup + 1; p <= limits::LastPart; ++p) {
                want.Parts[static_cast<std::size_t>(p)] = old.Parts[static_cast<std::size_t>(p)];
                want.Reverse[static_cast<std::size_t>(p)] =
                    old.Reverse[static_cast<std::size_t>(p)];
                want.PartWords[static_cast<std::size_t>(p)] =
                    old.PartWords[static_cast<std::size_t>(p)];
            }
        }
        if (g == 1) {
            want.Name = "body";
        }
        expect(doc->BodyGroups[static_cast<std::size_t>(g)] == want, Mark("BodyGroups ", g));
    }
    for (std::size_t i = 0; i < doc->Attachments.size(); ++i) {
        expect(doc->Attachments[i] == AttachmentRec{} && doc->AttachmentBones[i].empty() &&
                   doc->Controllers[i] == ControllerRec{} && doc->ControllerBones[i].empty(),
               Mark("Attachments and Controllers ", static_cast<int>(i)));
    }
    for (int r = 0; r <= limits::LastTextureRow; ++r) {
        for (int c = 0; c <= limits::LastTexture; ++c) {
            const bool reset = r >= 1 && r <= limits::LastWrittenTextureRow && c >= 1;
            expect(
                doc->TextureVariations[static_cast<std::size_t>(r)][static_cast<std::size_t>(c)] ==
                    (reset ? std::string(Blank) : Mark("cell", r, c)),
                Mark("TextureVariations ", r, c));
        }
    }
    for (int i = 0; i <= limits::LastTextureMode; ++i) {
        const bool reset = i >= 1 && i <= limits::LastWrittenTextureMode;
        expect(doc->TextureModes[static_cast<std::size_t>(i)] ==
                   (reset ? TextureModeRec{} : FilledMode(i)),
               Mark("TextureModes ", i));
    }
    EXPECT_EQ(faults, 0);

    EXPECT_EQ(doc->QcFile, "");
    EXPECT_EQ(doc->ModelScale, 1.0f);
    EXPECT_EQ(doc->Gamma, DefaultGamma);
    EXPECT_EQ(doc->ExternalTextures, 0);
    EXPECT_EQ(doc->EyesOn, 0);
    EXPECT_EQ(doc->SequenceGroupSize, 0);
    EXPECT_EQ(doc->BodyGroupCount, 1);
    EXPECT_EQ(doc->TextureCount, 0);
    EXPECT_EQ(doc->Layout, nullptr); // nothing of the old script is written again
    // Not the document's to reset.
    EXPECT_EQ(doc->ModelName, "c:\\model\\robot.mdl");
    EXPECT_EQ(doc->ModelPath, "c:\\model");
    EXPECT_EQ(doc->TexturePath, "c:\\tex");
    EXPECT_EQ(doc->EyeX, 1.0f);
    EXPECT_EQ(doc->EyeY, 2.0f);
    EXPECT_EQ(doc->EyeZ, 3.0f);
    EXPECT_EQ(doc->SmdFrameCount, 12);
}

TEST(Document, FreshDocumentCostsWhatItsFormsUse) {
    auto doc = std::make_unique<Document>();
    const std::size_t bytes = DocumentFootprint(*doc);
    EXPECT_LT(bytes, 512u * 1024);
    // A sequence beyond the 101st of a group costs that group's upper slots;
    // the slots around it read fresh.
    doc->Anims[4][300].Name = "run";
    EXPECT_TRUE(doc->Anims[4].HoldsUpperSlots());
    EXPECT_FALSE(doc->Anims[5].HoldsUpperSlots());
    EXPECT_LT(DocumentFootprint(*doc), bytes + 128u * 1024);
    const Document& read = *doc;
    EXPECT_EQ(read.Anims[4][300].Name, "run");
    EXPECT_TRUE(read.Anims[4][512] == AnimRec{});
    EXPECT_TRUE(read.Anims[5][512] == AnimRec{});
    // Writing the last event slot of one animation costs that animation only.
    doc->Anims[3][7].Events[1024].EventId = 1;
    EXPECT_EQ(doc->Anims[3][7].Events.StoredSlots(), 1025);
    EXPECT_EQ(doc->Anims[3][8].Events.StoredSlots(), 0);
    EXPECT_EQ(doc->Anims[3][8].Events[1024].Frame, 1);
}

} // namespace
} // namespace quarle
