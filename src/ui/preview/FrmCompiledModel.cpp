#include "ui/preview/FrmCompiledModel.h"

#include "document/Paths.h"
#include "platform/Cp1252Text.h"
#include "platform/Reflection.h"
#include "preview/CompiledModel.h"
#include "ui/localisation/Messages.h"
#include "ui/preview/PreviewControls.h"
#include "ui/preview/PreviewView.h"

#include <QComboBox>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QShortcut>
#include <QSignalBlocker>
#include <QSlider>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

namespace quarle::ui {

using platform::Control;
using preview::Vec3;

FrmCompiledModel::FrmCompiledModel(AppState& state, platform::Services& services, QWidget* parent)
    : LocalisedDialog(state, services, parent) {
    setObjectName(QStringLiteral("FrmCompiledModel"));
    setWindowTitle(QStringLiteral("Kompiliertes Modell"));
    setModal(false);

    PicView = Control(new PreviewView(this), QStringLiteral("PicView"));
    PicView->setToolTip(
        QStringLiteral("Linke Maustaste dreht, rechte oder mittlere verschiebt, das Rad zoomt"));
    LblSequences =
        Control(new QLabel(QStringLiteral("Sequenzen:"), this), QStringLiteral("LblSequences"));
    LstSequences = Control(new QListWidget(this), QStringLiteral("LstSequences"));
    LstSequences->setToolTip(QStringLiteral("Die Sequenz, die das Modell abspielt"));
    LblBodyPart = Control(new QLabel(QStringLiteral("K\u00f6rperteil:"), this),
                          QStringLiteral("LblBodyPart"));
    CmbBodyPart = Control(new QComboBox(this), QStringLiteral("CmbBodyPart"));
    LblSubModel =
        Control(new QLabel(QStringLiteral("Modell:"), this), QStringLiteral("LblSubModel"));
    CmbSubModel = Control(new QComboBox(this), QStringLiteral("CmbSubModel"));
    CmbSubModel->setToolTip(QStringLiteral("Das Modell, das dieser K\u00f6rperteil zeigt"));
    LblSkin = Control(new QLabel(QStringLiteral("Skin-Familie:"), this), QStringLiteral("LblSkin"));
    CmbSkin = Control(new QComboBox(this), QStringLiteral("CmbSkin"));
    CmbSkin->setToolTip(QStringLiteral("Welche Texturen die Meshes tragen"));
    const PreviewControls shared = MakePreviewControls(
        this, state_, QStringLiteral("Spielt die gew\u00e4hlte Sequenz ab oder h\u00e4lt sie an"));
    CmdPlay = shared.CmdPlay;
    SldFrame = shared.SldFrame;
    CmdFrameModel = shared.CmdFrameModel;
    LblStatus = shared.LblStatus;
    TmrTick = shared.TmrTick;
    CreateCmdLocalise();

    auto* choices = new QGridLayout;
    choices->addWidget(LblSequences, 0, 0, 1, 2);
    choices->addWidget(LstSequences, 1, 0, 1, 2);
    choices->addWidget(LblBodyPart, 2, 0);
    choices->addWidget(CmbBodyPart, 2, 1);
    choices->addWidget(LblSubModel, 3, 0);
    choices->addWidget(CmbSubModel, 3, 1);
    choices->addWidget(LblSkin, 4, 0);
    choices->addWidget(CmbSkin, 4, 1);
    choices->setRowStretch(1, 1);
    auto* top = new QHBoxLayout;
    top->addWidget(PicView, 1);
    top->addLayout(choices);
    auto* controls = new QHBoxLayout;
    controls->addWidget(CmdPlay);
    controls->addWidget(SldFrame, 1);
    controls->addWidget(CmdFrameModel);
    auto* status = new QHBoxLayout;
    status->addWidget(CmdLocalise);
    status->addWidget(LblStatus, 1);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top, 1);
    layout->addLayout(controls);
    layout->addLayout(status);
    resize(820, 560);

    connect(LstSequences, &QListWidget::currentRowChanged, this,
            &FrmCompiledModel::LstSequences_Click);
    connect(CmbBodyPart, &QComboBox::currentIndexChanged, this,
            &FrmCompiledModel::CmbBodyPart_Click);
    connect(CmbSubModel, &QComboBox::currentIndexChanged, this,
            &FrmCompiledModel::CmbSubModel_Click);
    connect(CmbSkin, &QComboBox::currentIndexChanged, this, &FrmCompiledModel::CmbSkin_Click);
    connect(CmdPlay, &QPushButton::clicked, this, &FrmCompiledModel::CmdPlay_Click);
    connect(SldFrame, &QSlider::valueChanged, this, &FrmCompiledModel::SldFrame_Change);
    connect(CmdFrameModel, &QPushButton::clicked, this, &FrmCompiledModel::CmdFrameModel_Click);
    connect(TmrTick, &QTimer::timeout, this, &FrmCompiledModel::TmrTick_Timer);
    auto* frameKey = new QShortcut(QKeySequence(Qt::Key_F), this);
    connect(frameKey, &QShortcut::activated, this, &FrmCompiledModel::CmdFrameModel_Click);
}

FrmCompiledModel::~FrmCompiledModel() = default;

void FrmCompiledModel::Form_Load() {
    LoadLanguage();
    caption_ = windowTitle();
    CmdPlay->setChecked(true);
    clock_.start();
    TmrTick->start();
}

void FrmCompiledModel::ShowModel(const std::string& path) {
    // The title below is the loaded caption's.
    Load();
    framed_ = false;
    seconds_ = 0.0;
    frame_ = 0;
    chosen_.clear();
    clock_.restart();
    file_.Refresh(path);
    setWindowTitle(caption_ + QStringLiteral(" - ") +
                   platform::FromCp1252(paths::FileNameOf(path)));
    FillLists();
    {
        const QSignalBlocker block(LstSequences);
        LstSequences->setCurrentRow(LstSequences->count() > 0 ? 0 : -1);
    }
    RebuildMesh();
    TmrTick_Timer();
}

int FrmCompiledModel::ShownSequence() const {
    const studio::StudioModel* model = file_.Model();
    const int row = LstSequences->currentRow();
    return model != nullptr && row >= 0 && std::size_t(row) < model->Sequences.size() ? row : -1;
}

void FrmCompiledModel::FillLists() {
    const studio::StudioModel* model = file_.Model();
    const QSignalBlocker blockSequences(LstSequences);
    const QSignalBlocker blockParts(CmbBodyPart);
    const QSignalBlocker blockSkins(CmbSkin);
    const int sequence = LstSequences->currentRow();
    const int part = CmbBodyPart->currentIndex();
    const int skin = CmbSkin->currentIndex();
    LstSequences->clear();
    CmbBodyPart->clear();
    CmbSkin->clear();
    if (model == nullptr) {
        CmbBodyPart_Click();
        return;
    }
    for (const studio::Sequence& s : model->Sequences) {
        LstSequences->addItem(platform::FromCp1252(s.Label));
    }
    chosen_.resize(model->BodyParts.size(), 0);
    for (std::size_t p = 0; p < model->BodyParts.size(); ++p) {
        CmbBodyPart->addItem(platform::FromCp1252(model->BodyParts[p].Name));
        if (std::size_t(chosen_[p]) >= model->BodyParts[p].Models.size()) {
            chosen_[p] = 0;
        }
    }
    for (std::size_t f = 0; f < model->SkinFamilies.size(); ++f) {
        CmbSkin->addItem(QString::number(f));
    }
    LstSequences->setCurrentRow(std::min(sequence, LstSequences->count() - 1));
    CmbBodyPart->setCurrentIndex(std::clamp(part, 0, CmbBodyPart->count() - 1));
    CmbSkin->setCurrentIndex(std::clamp(skin, 0, CmbSkin->count() - 1));
    CmbBodyPart_Click();
}

void FrmCompiledModel::LstSequences_Click() {
    seconds_ = 0.0;
    frame_ = 0;
    TmrTick_Timer();
}

void FrmCompiledModel::CmbBodyPart_Click() {
    // The models of the part picked, the one on show selected.
    const studio::StudioModel* model = file_.Model();
    const int part = CmbBodyPart->currentIndex();
    const QSignalBlocker block(CmbSubModel);
    CmbSubModel->clear();
    if (model == nullptr || part < 0 || std::size_t(part) >= model->BodyParts.size()) {
        return;
    }
    for (const studio::Model& sub : model->BodyParts[std::size_t(part)].Models) {
        CmbSubModel->addItem(platform::FromCp1252(sub.Name));
    }
    CmbSubModel->setCurrentIndex(chosen_[std::size_t(part)]);
}

void FrmCompiledModel::CmbSubModel_Click() {
    const int part = CmbBodyPart->currentIndex();
    if (part >= 0 && std::size_t(part) < chosen_.size() && CmbSubModel->currentIndex() >= 0) {
        chosen_[std::size_t(part)] = CmbSubModel->currentIndex();
        RebuildMesh();
        TmrTick_Timer();
    }
}

void FrmCompiledModel::CmbSkin_Click() {
    RebuildMesh();
    TmrTick_Timer();
}

void FrmCompiledModel::CmdPlay_Click() {
    clock_.restart();
}

void FrmCompiledModel::SldFrame_Change() {
    // A frame picked by hand holds the sequence there.
    CmdPlay->setChecked(false);
    frame_ = SldFrame->value();
    const studio::StudioModel* model = file_.Model();
    const int s = ShownSequence();
    if (s >= 0 && model->Sequences[std::size_t(s)].Fps > 0) {
        seconds_ = double(frame_) / model->Sequences[std::size_t(s)].Fps;
    }
    TmrTick_Timer();
}

void FrmCompiledModel::CmdFrameModel_Click() {
    PicView->FrameModel();
}

void FrmCompiledModel::RebuildMesh() {
    const studio::StudioModel* model = file_.Model();
    if (model == nullptr) {
        mesh_ = {};
        PicView->ClearMesh();
        return;
    }
    std::vector<int> textureOf;
    mesh_ = preview::BuildCompiledMesh(*model, chosen_, std::max(CmbSkin->currentIndex(), 0),
                                       textureOf);
    std::vector<PreviewTexture> textures;
    for (const int t : textureOf) {
        PreviewTexture texture;
        if (t >= 0 && std::size_t(t) < model->Textures.size()) {
            const studio::Texture& source = model->Textures[std::size_t(t)];
            texture.Image = preview::CompiledTexture(source);
            texture.Mode = preview::CompiledRenderMode(source.Flags);
        }
        textures.push_back(std::move(texture));
    }
    PicView->SetMesh(mesh_, std::move(textures));
    if (!framed_) {
        framed_ = true;
        PicView->FrameModel();
    }
}

void FrmCompiledModel::TmrTick_Timer() {
    if (!file_.Path().empty() && file_.Refresh(file_.Path())) {
        FillLists();
        RebuildMesh();
    }
    const double step = double(clock_.restart()) / 1000.0;
    const studio::StudioModel* model = file_.Model();
    const int s = ShownSequence();
    int frames = 0;
    if (s >= 0) {
        const studio::Sequence& seq = model->Sequences[std::size_t(s)];
        frames = seq.Frames;
        if (CmdPlay->isChecked()) {
            seconds_ += step;
            // The preview's clock for a record of the sequence's speed and loop.
            AnimRec timing;
            timing.Fps = i16(std::clamp(std::lround(seq.Fps), 0L, 32767L));
            timing.Loop = (seq.Flags & studio::SequenceLooping) != 0 ? 1 : 0;
            frame_ = preview::FrameAt(timing, frames, seconds_);
        }
    }
    frame_ = std::clamp(frame_, 0, std::max(frames - 1, 0));
    {
        const QSignalBlocker block(SldFrame);
        SldFrame->setRange(0, std::max(frames - 1, 0));
        SldFrame->setValue(frame_);
    }
    ShowPose();
    ShowStatus();
}

void FrmCompiledModel::ShowPose() {
    const studio::StudioModel* model = file_.Model();
    if (model == nullptr) {
        return;
    }
    const std::vector<preview::BoneMatrix> pose =
        preview::PoseCompiled(*model, ShownSequence(), frame_);
    std::vector<Vec3> positions;
    std::vector<Vec3> normals;
    preview::SkinMesh(mesh_, pose, 1.0f, positions, normals);
    PreviewMarkers markers;
    for (std::size_t b = 0; b < pose.size(); ++b) {
        const int parent = model->Bones[b].Parent;
        if (parent >= 0) {
            markers.Bones.push_back({pose[std::size_t(parent)].Origin(), pose[b].Origin()});
        }
    }
    for (std::size_t a = 0; a < model->Attachments.size(); ++a) {
        const studio::Attachment& at = model->Attachments[a];
        markers.Attachments.push_back({int(a), pose[std::size_t(at.Bone)].Apply(at.Origin)});
    }
    PicView->SetPose(std::move(positions), std::move(normals), std::move(markers));
}

void FrmCompiledModel::ShowStatus() {
    QStringList parts;
    if (PicView->GlAvailable() == false) {
        parts.append(MessageText(state_, MSG_PREVIEW_NO_GL));
    }
    const studio::StudioLoad& load = file_.Load();
    const QString file = platform::FromCp1252(paths::FileNameOf(file_.Path()));
    if (load.Error) {
        parts.append(MessageText(
            state_, MSG_COMPILED_UNREADABLE,
            {file, platform::FromCp1252(studio::ProblemText(*load.Error, state_.MsgTexts))}));
    }
    for (const studio::StudioProblem& note : load.Notes) {
        parts.append(platform::FromCp1252(studio::ProblemText(note, state_.MsgTexts)));
    }
    if (const studio::StudioModel* model = file_.Model()) {
        std::size_t corners = 0;
        for (const preview::MeshBatch& batch : mesh_.Batches) {
            corners += batch.Vertices.size();
        }
        const QString triangles = QString::number(corners / 3);
        const int s = ShownSequence();
        if (s >= 0) {
            const studio::Sequence& seq = model->Sequences[std::size_t(s)];
            parts.append(MessageText(state_, MSG_PREVIEW_FRAME,
                                     {triangles, platform::FromCp1252(seq.Label),
                                      QString::number(frame_), QString::number(seq.Frames)}));
        } else {
            parts.append(MessageText(state_, MSG_COMPILED_AT_REST, {triangles}));
        }
    }
    const QString text = parts.join(QStringLiteral(" \u2014 "));
    if (LblStatus->text() != text) {
        LblStatus->setText(text);
    }
}

} // namespace quarle::ui
