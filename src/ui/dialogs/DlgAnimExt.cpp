#include "ui/dialogs/DlgAnimExt.h"

#include "document/NumberText.h"
#include "document/Text.h"
#include "platform/Cp1252Text.h"
#include "platform/Reflection.h"
#include "ui/common/MainWindowAccess.h"
#include "ui/common/NumberKeys.h"
#include "ui/dialogs/DlgOrigin.h"
#include "ui/dialogs/FrmEvents.h"
#include "ui/localisation/Messages.h"

#include <QCheckBox>
#include <QComboBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QSignalBlocker>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

namespace quarle::ui {

using platform::Control;

namespace {

QString Number(const std::string& text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

template <class T> T* Make(QWidget* parent, const QString& text, const char* name) {
    return Control(new T(text, parent), QString::fromLatin1(name));
}

QLineEdit* NumberBox(QWidget* parent, const char* text, const char* name) {
    auto* box = Make<QLineEdit>(parent, QString::fromLatin1(text), name);
    box->setFixedWidth(64);
    return box;
}

flag Value(const QCheckBox* box) {
    return box->isChecked() ? 1 : 0;
}

} // namespace

DlgAnimExt::DlgAnimExt(AppState& state, platform::Services& services, MainWindowAccess& main,
                       QWidget* parent)
    : LocalisedDialog(state, services, parent), main_(main) {
    setObjectName(QStringLiteral("DlgAnimExt"));
    setWindowTitle(QStringLiteral("Erweiterte Animationseigenschaften"));

    Label6 = Make<QLabel>(this, QStringLiteral("Fps:"), "Label6");
    Text6 = NumberBox(this, "30", "Text6");
    Text6->setToolTip(QStringLiteral("($sequence...fps) - Gibt die Geschwindigkeit an mit der die "
                                     "Animation abgespielt wird"));
    Label7 = Make<QLabel>(this, QStringLiteral("Rotation:"), "Label7");
    TxtAnimRotate = NumberBox(this, "0", "TxtAnimRotate");
    Label2 = Make<QLabel>(this, QStringLiteral("Ma\u00dfstab:"), "Label2");
    TxtScale = NumberBox(this, "1", "TxtScale");
    Check1 = Make<QCheckBox>(this, QStringLiteral("Schleife"), "Check1");
    Check1->setToolTip(
        QStringLiteral("($sequence...looped) - Die Animation wird st\u00e4ndig wiederhohlt"));
    const QString lxTip = QStringLiteral("($sequence - LX) - Sorgt daf\u00fcr dass das Modell nach "
                                         "der Animation nicht wieder an die Ausgangsposition "
                                         "versetzt wird");
    ChkLX = Make<QCheckBox>(this, QStringLiteral("LX"), "ChkLX");
    ChkLY = Make<QCheckBox>(this, QStringLiteral("LY"), "ChkLY");
    ChkLZ = Make<QCheckBox>(this, QStringLiteral("LZ"), "ChkLZ");
    for (QCheckBox* motion : {ChkLX, ChkLY, ChkLZ}) {
        motion->setToolTip(lxTip);
    }
    ChkFrameGrenze = Make<QCheckBox>(this, QStringLiteral("Frames:"), "ChkFrameGrenze");
    ChkFrameGrenze->setToolTip(QStringLiteral("Benutze nur bestimmte Frames der Animation"));
    TxtMinFrame = NumberBox(this, "0", "TxtMinFrame");
    TxtMinFrame->setToolTip(QStringLiteral("Start"));
    Label8 = Make<QLabel>(this, QStringLiteral("bis"), "Label8");
    TxtMaxFrame = NumberBox(this, "10", "TxtMaxFrame");
    TxtMaxFrame->setToolTip(QStringLiteral("Ende"));
    TxtMinFrame->setEnabled(false);
    TxtMaxFrame->setEnabled(false);
    CmdEvents = Make<QPushButton>(this, QStringLiteral("Events"), "CmdEvents");
    CmdOrigin = Make<QPushButton>(this, QStringLiteral("XYZ-Versch."), "CmdOrigin");
    CmdOrigin->setToolTip(
        QStringLiteral("($sequence - origin) - Verschiebt die Nullkoordinaten des Modells"));
    ChkBlend = Make<QCheckBox>(this, QStringLiteral("Animationblending"), "ChkBlend");
    Label1 = Make<QLabel>(this, QStringLiteral("SMD-Datei:"), "Label1");
    CmbBlendFile = Control(new QComboBox(this), QStringLiteral("CmbBlendFile"));
    CmbBlendFile->setEditable(true);
    CmbBlendFile->setInsertPolicy(QComboBox::NoInsert);
    CmbBlendFile->setCompleter(nullptr);
    CmbBlendFile->setEditText(QStringLiteral("Combo1"));
    CmbBlendFile->setEnabled(false);
    FrameCtrl = Make<QGroupBox>(this, QStringLiteral("Blending-Einstellungen"), "FrameCtrl");
    const QString axisTip = QStringLiteral(
        "Legt die Achse fest \u00fcber die Half-Life die Kontrolle \u00fcbernehmen kann");
    const char* axes[] = {"X-Achse", "Y-Achse", "Z-Achse"};
    for (int i = 0; i < 3; ++i) {
        auto* option = Control(new QRadioButton(QString::fromLatin1(axes[i]), FrameCtrl),
                               QStringLiteral("CtrlAchse"), i);
        option->setToolTip(axisTip);
        CtrlAchse[static_cast<std::size_t>(i)] = option;
    }
    CtrlAchse[0]->setChecked(true);
    Label3 = Make<QLabel>(FrameCtrl, QStringLiteral("Grenzen:"), "Label3");
    Label4 = Make<QLabel>(FrameCtrl, QStringLiteral("Min:"), "Label4");
    const QString limitTip = QStringLiteral(
        "Um wieviel Grad an der Achse gedreht werden kann (z.B. dass der Kopf nicht einmal um "
        "360 Grad gedreht werden kann)");
    TxtLimitMin = NumberBox(FrameCtrl, "0", "TxtLimitMin");
    TxtLimitMin->setToolTip(limitTip);
    Label5 = Make<QLabel>(FrameCtrl, QStringLiteral("Max:"), "Label5");
    TxtLimitMax = NumberBox(FrameCtrl, "0", "TxtLimitMax");
    TxtLimitMax->setToolTip(limitTip);
    FrameCtrl->setEnabled(false);
    OKButton = Make<QPushButton>(this, QStringLiteral("OK"), "OKButton");
    OKButton->setDefault(true);
    for (QPushButton* button : {CmdEvents, CmdOrigin}) {
        button->setAutoDefault(false);
        button->setMinimumWidth(100);
    }
    CreateCmdLocalise();

    // Speed, rotation and scale; loop and motion; the frame range.
    auto* values = new QGridLayout;
    values->setHorizontalSpacing(8);
    values->addWidget(Label6, 0, 0);
    values->addWidget(Text6, 0, 1);
    values->addWidget(Label7, 1, 0);
    values->addWidget(TxtAnimRotate, 1, 1);
    values->addWidget(Label2, 2, 0);
    values->addWidget(TxtScale, 2, 1);
    values->addWidget(Check1, 0, 3);
    auto* motion = new QHBoxLayout;
    motion->addWidget(ChkLX);
    motion->addWidget(ChkLY);
    motion->addWidget(ChkLZ);
    motion->addStretch(1);
    values->addLayout(motion, 1, 3);
    values->setColumnMinimumWidth(2, 12);
    auto* frames = new QHBoxLayout;
    frames->addWidget(ChkFrameGrenze);
    frames->addWidget(TxtMinFrame);
    frames->addSpacing(4);
    frames->addWidget(Label8);
    frames->addSpacing(4);
    frames->addWidget(TxtMaxFrame);
    frames->addStretch(1);
    values->addLayout(frames, 3, 0, 1, 4);
    auto* detail = new QVBoxLayout;
    detail->addWidget(CmdEvents);
    detail->addWidget(CmdOrigin);
    detail->addStretch(1);
    auto* top = new QHBoxLayout;
    top->addLayout(values, 1);
    top->addSpacing(12);
    top->addLayout(detail);

    auto* file = new QHBoxLayout;
    file->addWidget(Label1);
    file->addWidget(CmbBlendFile, 1);
    auto* axesRow = new QHBoxLayout;
    for (QRadioButton* option : CtrlAchse) {
        axesRow->addWidget(option);
    }
    axesRow->addStretch(1);
    auto* limits = new QHBoxLayout;
    limits->addWidget(Label3);
    limits->addSpacing(8);
    limits->addWidget(Label4);
    limits->addWidget(TxtLimitMin);
    limits->addSpacing(8);
    limits->addWidget(Label5);
    limits->addWidget(TxtLimitMax);
    limits->addStretch(1);
    auto* blending = new QVBoxLayout(FrameCtrl);
    blending->addLayout(axesRow);
    blending->addLayout(limits);

    auto* bottom = new QHBoxLayout;
    bottom->addWidget(CmdLocalise);
    bottom->addStretch(1);
    bottom->addWidget(OKButton);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addSpacing(8);
    layout->addWidget(ChkBlend);
    layout->addLayout(file);
    layout->addWidget(FrameCtrl);
    layout->addSpacing(6);
    layout->addLayout(bottom);
    CmbBlendFile->setMinimumWidth(200);

    connect(Text6, &QLineEdit::textChanged, this, &DlgAnimExt::Text6_Change);
    connect(TxtAnimRotate, &QLineEdit::textChanged, this, &DlgAnimExt::TxtAnimRotate_Change);
    connect(TxtScale, &QLineEdit::textChanged, this, &DlgAnimExt::TxtScale_Change);
    connect(TxtMinFrame, &QLineEdit::textChanged, this, &DlgAnimExt::TxtMinFrame_Change);
    connect(TxtMaxFrame, &QLineEdit::textChanged, this, &DlgAnimExt::TxtMaxFrame_Change);
    connect(TxtLimitMin, &QLineEdit::textChanged, this, &DlgAnimExt::TxtLimitMin_Change);
    connect(TxtLimitMax, &QLineEdit::textChanged, this, &DlgAnimExt::TxtLimitMax_Change);
    connect(Check1, &QCheckBox::toggled, this, &DlgAnimExt::Check1_Click);
    connect(ChkLX, &QCheckBox::toggled, this, &DlgAnimExt::ChkLX_Click);
    connect(ChkLY, &QCheckBox::toggled, this, &DlgAnimExt::ChkLY_Click);
    connect(ChkLZ, &QCheckBox::toggled, this, &DlgAnimExt::ChkLZ_Click);
    connect(ChkFrameGrenze, &QCheckBox::toggled, this, &DlgAnimExt::ChkFrameGrenze_Click);
    connect(ChkBlend, &QCheckBox::toggled, this, &DlgAnimExt::ChkBlend_Click);
    connect(CmbBlendFile, &QComboBox::activated, this, &DlgAnimExt::CmbBlendFile_Click);
    for (int i = 0; i < 3; ++i) {
        connect(CtrlAchse[static_cast<std::size_t>(i)], &QRadioButton::toggled, this,
                [this, i](bool on) {
                    if (on) {
                        CtrlAchse_Click(i);
                    }
                });
    }
    connect(CmdEvents, &QPushButton::clicked, this, &DlgAnimExt::CmdEvents_Click);
    connect(CmdOrigin, &QPushButton::clicked, this, &DlgAnimExt::CmdOrigin_Click);
    connect(OKButton, &QPushButton::clicked, this, &DlgAnimExt::OKButton_Click);
    for (QLineEdit* whole : {Text6, TxtMinFrame, TxtMaxFrame}) {
        FilterKeys(whole, 0);
    }
    for (QLineEdit* signedWhole : {TxtAnimRotate, TxtLimitMin, TxtLimitMax}) {
        FilterKeys(signedWhole, 2);
    }
    FilterKeys(TxtScale, 3);
}

DlgAnimExt::~DlgAnimExt() = default;

void DlgAnimExt::Fill(QLineEdit* box, const QString& text, void (DlgAnimExt::*change)()) {
    if (box->text() == text) {
        (this->*change)();
    } else {
        box->setText(text);
    }
}

void DlgAnimExt::Form_Load() {
    LoadLanguage();
    AnimRec* anim = main_.CurrentAnim();
    if (anim == nullptr) {
        return;
    }
    // Each box's change event writes its value straight back, through the
    // rules of the event: the frames come down to the file's last frame here.
    Fill(TxtAnimRotate, Number(FloatToText(anim->Rotate)), &DlgAnimExt::TxtAnimRotate_Change);
    Fill(TxtScale, Number(FloatToText(anim->Scale)), &DlgAnimExt::TxtScale_Change);
    Fill(Text6, Number(IntToText(anim->Fps)), &DlgAnimExt::Text6_Change);
    Check1->setChecked(anim->Loop == 1);
    ChkFrameGrenze->setChecked(anim->FrameLimit == 1);
    Fill(TxtMinFrame, Number(IntToText(anim->FrameStart)), &DlgAnimExt::TxtMinFrame_Change);
    Fill(TxtMaxFrame, Number(IntToText(anim->FrameEnd)), &DlgAnimExt::TxtMaxFrame_Change);
    ChkLX->setChecked(anim->LX == 1);
    ChkLY->setChecked(anim->LY == 1);
    ChkLZ->setChecked(anim->LZ == 1);
    {
        // Filling the list must not take the place of the text "Combo1".
        const QSignalBlocker block(CmbBlendFile);
        const QString text = CmbBlendFile->currentText();
        CmbBlendFile->addItems(main_.ModelFileNames());
        CmbBlendFile->setCurrentIndex(-1);
        CmbBlendFile->setEditText(text);
    }
    ChkBlend->setChecked(anim->BlendOn == 1);
    if (anim->BlendOn == 1) {
        // A foreign axis outside 0..2 names the nearest of the three options.
        const float axis = std::isnan(anim->BlendAxis) ? 0.0f : anim->BlendAxis;
        const int index = static_cast<int>(std::clamp(std::nearbyint(axis), 0.0f, 2.0f));
        {
            const QSignalBlocker block(CtrlAchse[static_cast<std::size_t>(index)]);
            CtrlAchse[static_cast<std::size_t>(index)]->setChecked(true);
        }
        CtrlAchse_Click(index);
        Fill(TxtLimitMin, Number(FloatToText(anim->BlendMin)), &DlgAnimExt::TxtLimitMin_Change);
        Fill(TxtLimitMax, Number(FloatToText(anim->BlendMax)), &DlgAnimExt::TxtLimitMax_Change);
        CmbBlendFile->setEditText(platform::FromCp1252(anim->BlendFile));
    }
}

// An empty box falls back to a number shown in it; a text that is no
// number yet ("-", "1.2.3", above 32767) keeps the last number in the record.
void DlgAnimExt::Text6_Change() {
    if (Text6->text().isEmpty()) {
        Text6->setText(QStringLiteral("0"));
    }
    AnimRec* anim = main_.CurrentAnim();
    if (anim == nullptr) {
        return;
    }
    if (const std::optional<i16> fps = StrictToI16(NumberText(Text6->text()))) {
        anim->Fps = *fps;
    }
}

void DlgAnimExt::TxtAnimRotate_Change() {
    if (TxtAnimRotate->text().isEmpty()) {
        TxtAnimRotate->setText(QStringLiteral("0"));
    }
    if (AnimRec* anim = main_.CurrentAnim()) {
        anim->Rotate = ToF32(FieldNumber(NumberText(TxtAnimRotate->text())));
    }
}

void DlgAnimExt::TxtScale_Change() {
    if (TxtScale->text().isEmpty()) {
        TxtScale->setText(QStringLiteral("1"));
    }
    AnimRec* anim = main_.CurrentAnim();
    if (anim == nullptr) {
        return;
    }
    if (const std::optional<f32> scale = StrictToF32(NumberText(TxtScale->text()))) {
        anim->Scale = *scale;
    }
}

void DlgAnimExt::StoreFrame(QLineEdit* box, i16& field) {
    if (box->text().isEmpty()) {
        return;
    }
    const i16 last = state_.Doc.SmdFrameCount;
    if (TextToNumber(NumberText(box->text())) > last) {
        box->setText(Number(IntToText(last)));
    }
    if (const std::optional<i16> frame = StrictToI16(NumberText(box->text()))) {
        field = *frame;
    }
}

void DlgAnimExt::TxtMinFrame_Change() {
    if (AnimRec* anim = main_.CurrentAnim()) {
        StoreFrame(TxtMinFrame, anim->FrameStart);
    }
}

void DlgAnimExt::TxtMaxFrame_Change() {
    if (AnimRec* anim = main_.CurrentAnim()) {
        StoreFrame(TxtMaxFrame, anim->FrameEnd);
    }
}

// The limits read the number at the start of the text, the user's decimal
// separator taken as a point: "12,5" as the box opens on a decimal-comma
// system stays 12.5.
void DlgAnimExt::TxtLimitMin_Change() {
    AnimRec* anim = main_.CurrentAnim();
    if (anim != nullptr && !TxtLimitMin->text().isEmpty()) {
        anim->BlendMin = ToF32(FieldNumber(NumberText(TxtLimitMin->text())));
    }
}

void DlgAnimExt::TxtLimitMax_Change() {
    AnimRec* anim = main_.CurrentAnim();
    if (anim != nullptr && !TxtLimitMax->text().isEmpty()) {
        anim->BlendMax = ToF32(FieldNumber(NumberText(TxtLimitMax->text())));
    }
}

void DlgAnimExt::Check1_Click() {
    if (AnimRec* anim = main_.CurrentAnim()) {
        anim->Loop = Value(Check1);
    }
}

void DlgAnimExt::ChkLX_Click() {
    if (AnimRec* anim = main_.CurrentAnim()) {
        anim->LX = Value(ChkLX);
    }
}

void DlgAnimExt::ChkLY_Click() {
    if (AnimRec* anim = main_.CurrentAnim()) {
        anim->LY = Value(ChkLY);
    }
}

void DlgAnimExt::ChkLZ_Click() {
    if (AnimRec* anim = main_.CurrentAnim()) {
        anim->LZ = Value(ChkLZ);
    }
}

void DlgAnimExt::ChkFrameGrenze_Click() {
    const flag value = Value(ChkFrameGrenze);
    if (AnimRec* anim = main_.CurrentAnim()) {
        anim->FrameLimit = value;
    }
    TxtMinFrame->setEnabled(value != 0);
    TxtMaxFrame->setEnabled(value != 0);
}

void DlgAnimExt::ChkBlend_Click() {
    const flag value = Value(ChkBlend);
    FrameCtrl->setEnabled(value == 1);
    CmbBlendFile->setEnabled(value == 1);
    if (AnimRec* anim = main_.CurrentAnim()) {
        anim->BlendOn = value;
    }
}

void DlgAnimExt::CmbBlendFile_Click() {
    AnimRec* anim = main_.CurrentAnim();
    if (anim == nullptr) {
        return;
    }
    if (const std::optional<std::string> file =
            TypedText(state_, services_, CmbBlendFile->currentText())) {
        anim->BlendFile = *file;
    }
}

void DlgAnimExt::CtrlAchse_Click(int index) {
    if (AnimRec* anim = main_.CurrentAnim()) {
        anim->BlendAxis = static_cast<f32>(index);
    }
}

void DlgAnimExt::CmdEvents_Click() {
    FrmEvents events(state_, services_, main_, this);
    ForwardLocalise(events);
    events.exec();
}

void DlgAnimExt::CmdOrigin_Click() {
    DlgOrigin origin(state_, services_, main_, this);
    ForwardLocalise(origin);
    origin.exec();
}

void DlgAnimExt::OKButton_Click() {
    close();
}

} // namespace quarle::ui
