#include "ui/preview/FrmPreview.h"

#include "compile/CompileFiles.h"
#include "document/InputFile.h"
#include "document/Paths.h"
#include "platform/Cp1252Text.h"
#include "platform/Reflection.h"
#include "preview/CompiledModel.h"
#include "ui/common/MainWindowAccess.h"
#include "ui/localisation/Messages.h"
#include "ui/preview/PreviewControls.h"
#include "ui/preview/PreviewView.h"

#include <QCheckBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <QSlider>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>
#include <numbers>

namespace quarle::ui {

using platform::Control;
using preview::Vec3;

namespace {

std::optional<std::filesystem::file_time_type> FileTime(const std::string& path) {
    const std::optional<std::string> found = paths::Resolve(path);
    if (!found) {
        return std::nullopt;
    }
    std::error_code error;
    const auto time = std::filesystem::last_write_time(paths::ToFsPath(*found), error);
    return error ? std::nullopt : std::optional(time);
}

Vec3 Scaled(const Vec3& v, float scale) {
    return {v[0] * scale, v[1] * scale, v[2] * scale};
}

Vec3 Plus(const Vec3& a, const Vec3& b, float times) {
    return {a[0] + b[0] * times, a[1] + b[1] * times, a[2] + b[2] * times};
}

QString Joined(const std::vector<std::string>& names) {
    QStringList list;
    for (const std::string& name : names) {
        list.append(platform::FromCp1252(name));
    }
    return list.join(QStringLiteral(", "));
}

} // namespace

FrmPreview::FrmPreview(AppState& state, platform::Services& services, MainWindowAccess& main,
                       QWidget* parent)
    : LocalisedDialog(state, services, parent), main_(main) {
    setObjectName(QStringLiteral("FrmPreview"));
    setWindowTitle(QStringLiteral("3D-Vorschau"));
    setModal(false);

    PicView = Control(new PreviewView(this), QStringLiteral("PicView"));
    PicView->setToolTip(
        QStringLiteral("Linke Maustaste dreht, rechte oder mittlere verschiebt, das Rad zoomt"));
    const PreviewControls shared = MakePreviewControls(
        this, state_,
        QStringLiteral("Spielt die gew\u00e4hlte Animation ab oder h\u00e4lt sie an"));
    CmdPlay = shared.CmdPlay;
    SldFrame = shared.SldFrame;
    CmdFrameModel = shared.CmdFrameModel;
    LblStatus = shared.LblStatus;
    TmrTick = shared.TmrTick;
    CreateCmdLocalise();
    ChkCompiled = Control(new QCheckBox(QStringLiteral("Kompiliertes Skelett"), this),
                          QStringLiteral("ChkCompiled"));
    ChkCompiled->setToolTip(QStringLiteral(
        "Legt das Skelett des kompilierten Modells in Magenta \u00fcber das der Quellen"));
    ChkCompiled->setEnabled(false);

    auto* controls = new QHBoxLayout;
    controls->addWidget(CmdPlay);
    controls->addWidget(SldFrame, 1);
    controls->addWidget(CmdFrameModel);
    controls->addWidget(ChkCompiled);
    auto* status = new QHBoxLayout;
    status->addWidget(CmdLocalise);
    status->addWidget(LblStatus, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(PicView, 1);
    layout->addLayout(controls);
    layout->addLayout(status);
    resize(640, 520);

    connect(CmdPlay, &QPushButton::clicked, this, &FrmPreview::CmdPlay_Click);
    connect(SldFrame, &QSlider::valueChanged, this, &FrmPreview::SldFrame_Change);
    connect(CmdFrameModel, &QPushButton::clicked, this, &FrmPreview::CmdFrameModel_Click);
    connect(TmrTick, &QTimer::timeout, this, &FrmPreview::TmrTick_Timer);
    connect(ChkCompiled, &QCheckBox::toggled, this, &FrmPreview::TmrTick_Timer);
    // The key works wherever the focus is in the window.
    auto* frameKey = new QShortcut(QKeySequence(Qt::Key_F), this);
    connect(frameKey, &QShortcut::activated, this, &FrmPreview::CmdFrameModel_Click);
}

FrmPreview::~FrmPreview() = default;

void FrmPreview::Form_Load() {
    LoadLanguage();
    CmdPlay->setChecked(true);
    clock_.start();
    TmrTick_Timer();
    TmrTick->start();
}

void FrmPreview::CmdPlay_Click() {
    clock_.restart();
}

void FrmPreview::SldFrame_Change() {
    // A frame picked by hand holds the animation there.
    CmdPlay->setChecked(false);
    frame_ = SldFrame->value();
    const AnimRec* anim = nullptr;
    if (CurrentAnimation(anim) != nullptr && anim->Fps > 0) {
        const int first = anim->FrameLimit == 1 ? std::max<int>(anim->FrameStart, 0) : 0;
        seconds_ = double(frame_ - first) / anim->Fps;
    }
    TmrTick_Timer();
}

void FrmPreview::CmdFrameModel_Click() {
    PicView->FrameModel();
}

FrmPreview::Source FrmPreview::MeshSource() const {
    const Document& doc = state_.Doc;
    Source source;
    source.Files = preview::ChosenPartFiles(doc, main_.PreviewParts());
    for (const std::string& file : source.Files) {
        source.Times.push_back(FileTime(file));
    }
    source.Scale = doc.ModelScale;
    return source;
}

FrmPreview::Source FrmPreview::TextureSource() const {
    const Document& doc = state_.Doc;
    Source source;
    for (const preview::MeshBatch& batch : mesh_.Batches) {
        const std::string name =
            preview::VariedTexture(doc, state_.Preview.TextureRow, batch.Texture);
        source.Files.push_back(paths::Join(doc.TexturePath, name));
        source.Times.push_back(FileTime(source.Files.back()));
        source.Modes.push_back(preview::RenderMode(doc, batch.Texture));
    }
    return source;
}

void FrmPreview::RebuildMesh() {
    std::vector<SmdModel> parts;
    missingParts_.clear();
    for (const std::string& file : meshSource_->Files) {
        SmdModel part = ReadSmdFile(file);
        if (part.Readable) {
            parts.push_back(std::move(part));
        } else {
            missingParts_.push_back(paths::FileNameOf(file));
        }
    }
    mesh_ = preview::BuildMesh(parts, meshSource_->Scale);
    // The whole model is framed: its joints too, which often stand beyond
    // the triangles (a mesh without triangles is framed by them alone).
    const bool noCorners = mesh_.Batches.empty();
    for (std::size_t b = 0; b < mesh_.Bones.Bind.size(); ++b) {
        const Vec3 joint = Scaled(mesh_.Bones.Bind[b].Origin(), meshSource_->Scale);
        for (std::size_t i = 0; i < 3; ++i) {
            const bool first = noCorners && b == 0;
            mesh_.Min[i] = first ? joint[i] : std::min(mesh_.Min[i], joint[i]);
            mesh_.Max[i] = first ? joint[i] : std::max(mesh_.Max[i], joint[i]);
        }
    }
    textureSource_.reset();
}

void FrmPreview::ReloadTextures() {
    std::vector<PreviewTexture> textures;
    missingTextures_.clear();
    for (std::size_t i = 0; i < textureSource_->Files.size(); ++i) {
        PreviewTexture texture;
        texture.Mode = textureSource_->Modes[i];
        if (const std::optional<std::string> bytes =
                ReadFileText(textureSource_->Files[i], FileKind::Bitmap)) {
            texture.Image = preview::DecodeBmp8(*bytes, texture.Mode == 1);
        }
        const std::string name = paths::FileNameOf(textureSource_->Files[i]);
        if (!texture.Image && std::find(missingTextures_.begin(), missingTextures_.end(), name) ==
                                  missingTextures_.end()) {
            missingTextures_.push_back(name);
        }
        textures.push_back(std::move(texture));
    }
    PicView->SetMesh(mesh_, std::move(textures));
    // The first model is framed once it stands in its pose.
    if (!framed_ && !mesh_.Bones.Names.empty()) {
        framed_ = true;
        frameDue_ = true;
    }
}

const SmdModel* FrmPreview::CurrentAnimation(const AnimRec*& anim) {
    anim = nullptr;
    const std::optional<std::pair<int, int>> pick = main_.PreviewAnimation();
    if (!pick || pick->first < 0 || pick->first > limits::LastSequenceGroup || pick->second < 0 ||
        pick->second > limits::LastAnimSlot) {
        return nullptr;
    }
    const AnimRec& rec = state_.Doc.Anims[std::size_t(pick->first)][std::size_t(pick->second)];
    if (rec.SmdFile.empty()) {
        return nullptr;
    }
    anim = &rec;
    const std::string file = paths::Join(state_.Doc.ModelPath, rec.SmdFile + ".smd");
    const std::optional<std::filesystem::file_time_type> time = FileTime(file);
    if (!time) {
        animFile_.clear();
        return nullptr;
    }
    if (file != animFile_ || *time != animTime_) {
        animFile_ = file;
        animTime_ = *time;
        animation_ = ReadSmdFile(file);
    }
    return animation_.Frames.empty() ? nullptr : &animation_;
}

void FrmPreview::TmrTick_Timer() {
    const Source meshSource = MeshSource();
    if (meshSource_ != meshSource) {
        meshSource_ = meshSource;
        RebuildMesh();
    }
    const Source textureSource = TextureSource();
    if (textureSource_ != textureSource) {
        textureSource_ = textureSource;
        ReloadTextures();
    }

    const double step = double(clock_.restart()) / 1000.0;
    const AnimRec* anim = nullptr;
    const SmdModel* animation = CurrentAnimation(anim);
    const int frames = animation != nullptr ? int(animation->Frames.size()) : 0;
    if (animation != nullptr && CmdPlay->isChecked()) {
        seconds_ += step;
        frame_ = preview::FrameAt(*anim, frames, seconds_);
    }
    frame_ = std::clamp(frame_, 0, std::max(frames - 1, 0));
    {
        const QSignalBlocker block(SldFrame);
        SldFrame->setRange(0, std::max(frames - 1, 0));
        SldFrame->setValue(frame_);
    }
    ShowPose(animation);
    if (frameDue_) {
        frameDue_ = false;
        PicView->FrameModel();
    }
    ShowStatus(frames, animation != nullptr ? anim : nullptr);
}

void FrmPreview::ShowPose(const SmdModel* animation) {
    const Document& doc = state_.Doc;
    const preview::Skeleton& bones = mesh_.Bones;
    const float scale = doc.ModelScale;
    const std::vector<preview::BoneMatrix> pose =
        animation != nullptr ? preview::PoseBones(bones, *animation, frame_) : bones.Bind;
    std::vector<Vec3> positions;
    std::vector<Vec3> normals;
    preview::SkinMesh(mesh_, pose, scale, positions, normals);

    auto boneOf = [&bones, &pose](const std::string& name) -> int {
        for (std::size_t b = 0; b < bones.Names.size() && b < pose.size(); ++b) {
            if (paths::EqualsNoCase(bones.Names[b], name)) {
                return int(b);
            }
        }
        return -1;
    };
    PreviewMarkers markers;
    for (std::size_t b = 0; b < pose.size() && b < bones.Parents.size(); ++b) {
        const int parent = bones.Parents[b];
        if (parent >= 0 && std::size_t(parent) < pose.size()) {
            markers.Bones.push_back({Scaled(pose[std::size_t(parent)].Origin(), scale),
                                     Scaled(pose[b].Origin(), scale)});
        }
    }
    for (int i = 0; i <= limits::LastAttachment; ++i) {
        const AttachmentRec& a = doc.Attachments[std::size_t(i)];
        const int bone = boneOf(doc.AttachmentBones[std::size_t(i)]);
        if (a.Active == 1 && bone >= 0) {
            markers.Attachments.push_back(
                {i, Scaled(pose[std::size_t(bone)].Apply({a.X, a.Y, a.Z}), scale)});
        }
    }
    if (doc.EyesOn == 1) {
        markers.Eye = Vec3{doc.EyeX, doc.EyeY, doc.EyeZ};
    }
    const int k = std::clamp(state_.Preview.Controller, 0, limits::LastController);
    const ControllerRec& c = doc.Controllers[std::size_t(k)];
    const int bone = boneOf(doc.ControllerBones[std::size_t(k)]);
    if (c.Active == 1 && bone >= 0) {
        const preview::BoneMatrix& m = pose[std::size_t(bone)];
        const int axis = std::isfinite(c.Axis) ? std::clamp(int(std::lround(c.Axis)), 0, 2) : 0;
        auto unit = [](int i) {
            Vec3 v{0, 0, 0};
            v[std::size_t(i % 3)] = 1.0f;
            return v;
        };
        PreviewMarkers::Controller shown;
        shown.Origin = Scaled(m.Origin(), scale);
        shown.Axis = m.Rotate(unit(axis));
        const Vec3 u = m.Rotate(unit(axis + 1));
        const Vec3 v = m.Rotate(unit(axis + 2));
        const float radius =
            std::max(std::hypot(mesh_.Max[0] - mesh_.Min[0], mesh_.Max[1] - mesh_.Min[1],
                                mesh_.Max[2] - mesh_.Min[2]),
                     1.0f) *
            0.08f;
        constexpr int Steps = 24;
        const float from = c.LimitMin * std::numbers::pi_v<float> / 180.0f;
        const float to = c.LimitMax * std::numbers::pi_v<float> / 180.0f;
        for (int s = 0; s <= Steps; ++s) {
            const float t = from + (to - from) * float(s) / Steps;
            shown.Arc.push_back(
                Plus(Plus(shown.Origin, u, radius * std::cos(t)), v, radius * std::sin(t)));
        }
        markers.Control = std::move(shown);
    }
    AddCompiledSkeleton(pose, animation, markers);
    PicView->SetPose(std::move(positions), std::move(normals), std::move(markers));
}

void FrmPreview::AddCompiledSkeleton(const std::vector<preview::BoneMatrix>& pose,
                                     const SmdModel* animation, PreviewMarkers& markers) {
    compiledStatus_.clear();
    const Document& doc = state_.Doc;
    // The model where the compiler writes it for the script.
    const std::string path =
        doc.QcFile.empty() ? std::string() : compile::ModelFileOf(doc.ModelName, doc.QcFile);
    const bool compiled = !path.empty() && paths::FileExists(path);
    ChkCompiled->setEnabled(compiled);
    if (!compiled || !ChkCompiled->isChecked()) {
        return;
    }
    compiled_.Refresh(path);
    const QString file = platform::FromCp1252(paths::FileNameOf(path));
    const studio::StudioModel* model = compiled_.Model();
    if (model == nullptr) {
        compiledStatus_.append(MessageText(
            state_, MSG_OVERLAY_NO_MODEL,
            {platform::FromCp1252(studio::ProblemText(
                compiled_.Load().Error.value_or(studio::StudioProblem{}), state_.MsgTexts))}));
        return;
    }
    // The same sequence (by name) at the same frame, or the bones at rest.
    const AnimRec* anim = nullptr;
    int sequence = -1;
    int frame = 0;
    const std::optional<std::pair<int, int>> pick = main_.PreviewAnimation();
    if (animation != nullptr && pick) {
        anim = &doc.Anims[std::size_t(pick->first)][std::size_t(pick->second)];
        sequence = preview::CompiledSequence(doc, pick->first, pick->second, *model);
        if (sequence < 0) {
            compiledStatus_.append(
                MessageText(state_, MSG_OVERLAY_NO_SEQUENCE, {platform::FromCp1252(anim->Name)}));
            return;
        }
        frame = preview::CompiledFrame(*animation, *anim, frame_);
    }
    const float scale = doc.ModelScale;
    std::vector<Vec3> joints;
    for (const preview::BoneMatrix& bone : pose) {
        joints.push_back(Scaled(bone.Origin(), scale));
    }
    std::vector<bool> carried(mesh_.Bones.Names.size(), false);
    for (const preview::MeshBatch& batch : mesh_.Batches) {
        for (const preview::MeshVertex& v : batch.Vertices) {
            if (v.Bone >= 0 && std::size_t(v.Bone) < carried.size()) {
                carried[std::size_t(v.Bone)] = true;
            }
        }
    }
    const preview::SkeletonComparison seen =
        preview::CompareSkeletons(mesh_.Bones, joints, carried, *model, sequence, frame,
                                  preview::PlacementOf(doc, anim), scale);
    for (std::size_t b = 0; b < seen.Joints.size(); ++b) {
        // A root is a line of no length: its cross still shows.
        const int parent = seen.Parents[b];
        markers.Compiled.push_back(
            {seen.Joints[parent >= 0 ? std::size_t(parent) : b], seen.Joints[b]});
    }
    if (!seen.LargestBone.empty()) {
        compiledStatus_.append(MessageText(
            state_, MSG_OVERLAY_DISTANCE,
            {file, QString::number(seen.Largest, 'f', 3), platform::FromCp1252(seen.LargestBone)}));
    }
    if (!seen.OnlyCompiled.empty()) {
        compiledStatus_.append(
            MessageText(state_, MSG_OVERLAY_ONLY_COMPILED, {Joined(seen.OnlyCompiled)}));
    }
    if (!seen.OnlySources.empty()) {
        compiledStatus_.append(
            MessageText(state_, MSG_OVERLAY_ONLY_SOURCES, {Joined(seen.OnlySources)}));
    }
    if (sequence >= 0) {
        const studio::Sequence& seq = model->Sequences[std::size_t(sequence)];
        if ((seq.Flags & studio::SequenceLooping) != 0 && frame == seq.Frames - 1) {
            compiledStatus_.append(MessageText(state_, MSG_OVERLAY_LOOP_END));
        }
    }
}

void FrmPreview::ShowStatus(int frameCount, const AnimRec* anim) {
    QStringList parts;
    if (PicView->GlAvailable() == false) {
        parts.append(MessageText(state_, MSG_PREVIEW_NO_GL));
    }
    if (meshSource_ && meshSource_->Files.empty()) {
        parts.append(MessageText(state_, MSG_PREVIEW_NO_PARTS));
    }
    if (!missingParts_.empty()) {
        parts.append(MessageText(state_, MSG_PREVIEW_PARTS_MISSING, {Joined(missingParts_)}));
    }
    if (!missingTextures_.empty()) {
        parts.append(MessageText(state_, MSG_PREVIEW_TEXTURES_MISSING, {Joined(missingTextures_)}));
    }
    std::size_t corners = 0;
    for (const preview::MeshBatch& batch : mesh_.Batches) {
        corners += batch.Vertices.size();
    }
    const QString triangles = QString::number(corners / 3);
    if (anim != nullptr && frameCount > 0) {
        parts.append(MessageText(state_, MSG_PREVIEW_FRAME,
                                 {triangles, platform::FromCp1252(anim->Name),
                                  QString::number(frame_), QString::number(frameCount)}));
    } else {
        parts.append(MessageText(state_, MSG_PREVIEW_BIND_POSE, {triangles}));
    }
    parts.append(compiledStatus_);
    const QString text = parts.join(QStringLiteral(" \u2014 "));
    if (LblStatus->text() != text) {
        LblStatus->setText(text);
    }
}

} // namespace quarle::ui
