#include "ui/dialogs/DlgAnimExt.h"

#include "document/NumberText.h"
#include "document/SequenceNumbers.h"
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

// The row of the numeric option whose box has this name; past the table for none.
std::size_t NumberRow(std::string_view name) {
    std::size_t row = 0;
    while (row < SequenceNumberCount && SequenceNumbers[row].Box.Name != name) {
        ++row;
    }
    return row;
}

QString Number(const std::string& text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

template <class T> T* Make(QWidget* parent, const QString& text, const char* name) {
    return Control(new T(text, parent), QString::fromLatin1(name));
}

QLineEdit* SmallBox(QWidget* parent, const QString& text, const QString& name) {
    auto* box = Control(new QLineEdit(text, parent), name);
    box->setFixedWidth(64);
    return box;
}

QLineEdit* SmallBox(QWidget* parent, const char* text, const char* name) {
    return SmallBox(parent, QString::fromLatin1(text), QString::fromLatin1(name));
}

flag Value(const QCheckBox* box) {
    return box->isChecked() ? 1 : 0;
}

QString Utf8(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

// A row's number as its box shows it.
std::string NumberShown(double value, SequenceNumberKind kind) {
    return kind == SequenceNumberKind::Count ? IntToText(static_cast<i16>(value))
                                             : FloatToText(static_cast<f32>(value));
}

// The key filter of a row's box: digits, a minus, a point.
int KeyFlags(SequenceNumberKind kind) {
    switch (kind) {
    case SequenceNumberKind::Count:
        return 0;
    case SequenceNumberKind::Degrees:
        return 2;
    case SequenceNumberKind::Factor:
        return 3;
    }
    return 0;
}

} // namespace

DlgAnimExt::DlgAnimExt(AppState& state, platform::Services& services, MainWindowAccess& main,
                       QWidget* parent)
    : LocalisedDialog(state, services, parent), main_(main) {
    setObjectName(QStringLiteral("DlgAnimExt"));
    setWindowTitle(QStringLiteral("Erweiterte Animationseigenschaften"));

    for (std::size_t row = 0; row < SequenceNumberCount; ++row) {
        const SequenceNumber& option = SequenceNumbers[row];
        auto* label = Control(new QLabel(Utf8(option.Label.German), this), Utf8(option.Label.Name));
        // The box shows the record's default, in the point form.
        const double fresh = SequenceNumberDefault(row);
        auto* box = SmallBox(this,
                             Number(option.Kind == SequenceNumberKind::Count
                                        ? IntToText(static_cast<i16>(fresh))
                                        : FloatToPointText(static_cast<f32>(fresh))),
                             Utf8(option.Box.Name));
        if (!option.Box.German.empty()) {
            box->setToolTip(Utf8(option.Box.German));
        }
        NumberLabels.push_back(label);
        NumberBoxes.push_back(box);
    }
    Text6 = NumberBox("Text6");
    TxtAnimRotate = NumberBox("TxtAnimRotate");
    TxtScale = NumberBox("TxtScale");
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
    TxtMinFrame = SmallBox(this, "0", "TxtMinFrame");
    TxtMinFrame->setToolTip(QStringLiteral("Start"));
    Label8 = Make<QLabel>(this, QStringLiteral("bis"), "Label8");
    TxtMaxFrame = SmallBox(this, "10", "TxtMaxFrame");
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
    TxtLimitMin = SmallBox(FrameCtrl, "0", "TxtLimitMin");
    TxtLimitMin->setToolTip(limitTip);
    Label5 = Make<QLabel>(FrameCtrl, QStringLiteral("Max:"), "Label5");
    TxtLimitMax = SmallBox(FrameCtrl, "0", "TxtLimitMax");
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
    const int numbers = static_cast<int>(SequenceNumberCount);
    for (int row = 0; row < numbers; ++row) {
        values->addWidget(NumberLabels[static_cast<std::size_t>(row)], row, 0);
        values->addWidget(NumberBoxes[static_cast<std::size_t>(row)], row, 1);
    }
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
    values->addLayout(frames, std::max(numbers, 2), 0, 1, 4);
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

    for (std::size_t row = 0; row < SequenceNumberCount; ++row) {
        connect(NumberBoxes[row], &QLineEdit::textChanged, this,
                [this, row] { NumberBox_Change(row); });
    }
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
    for (std::size_t row = 0; row < SequenceNumberCount; ++row) {
        FilterKeys(NumberBoxes[row], KeyFlags(SequenceNumbers[row].Kind));
    }
    for (QLineEdit* whole : {TxtMinFrame, TxtMaxFrame}) {
        FilterKeys(whole, 0);
    }
    for (QLineEdit* signedWhole : {TxtLimitMin, TxtLimitMax}) {
        FilterKeys(signedWhole, 2);
    }
}

DlgAnimExt::~DlgAnimExt() = default;

QLineEdit* DlgAnimExt::NumberBox(std::string_view name) const {
    const std::size_t row = NumberRow(name);
    return row < NumberBoxes.size() ? NumberBoxes[row] : nullptr;
}

void DlgAnimExt::Text6_Change() {
    NumberBox_Change(NumberRow("Text6"));
}

void DlgAnimExt::TxtAnimRotate_Change() {
    NumberBox_Change(NumberRow("TxtAnimRotate"));
}

void DlgAnimExt::TxtScale_Change() {
    NumberBox_Change(NumberRow("TxtScale"));
}

void DlgAnimExt::Fill(QLineEdit* box, const QString& text, const std::function<void()>& change) {
    if (box->text() == text) {
        change();
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
    for (std::size_t row = 0; row < SequenceNumberCount; ++row) {
        Fill(NumberBoxes[row],
             Number(NumberShown(SequenceNumberValue(*anim, row), SequenceNumbers[row].Kind)),
             [this, row] { NumberBox_Change(row); });
    }
    Check1->setChecked(anim->Loop == 1);
    ChkFrameGrenze->setChecked(anim->FrameLimit == 1);
    Fill(TxtMinFrame, Number(IntToText(anim->FrameStart)), [this] { TxtMinFrame_Change(); });
    Fill(TxtMaxFrame, Number(IntToText(anim->FrameEnd)), [this] { TxtMaxFrame_Change(); });
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
        Fill(TxtLimitMin, Number(FloatToText(anim->BlendMin)), [this] { TxtLimitMin_Change(); });
        Fill(TxtLimitMax, Number(FloatToText(anim->BlendMax)), [this] { TxtLimitMax_Change(); });
        CmbBlendFile->setEditText(platform::FromCp1252(anim->BlendFile));
    }
}

// An empty box falls back to its row's number, shown in it; a text that is
// no number yet ("-", "1.2.3", above 32767) keeps the last number in the
// record, except for degrees, which read the number at the text's start,
// the user's decimal separator taken as a point.
void DlgAnimExt::NumberBox_Change(std::size_t row) {
    const SequenceNumber& option = SequenceNumbers[row];
    QLineEdit* box = NumberBoxes[row];
    if (box->text().isEmpty()) {
        box->setText(Utf8(option.EmptyText));
    }
    AnimRec* anim = main_.CurrentAnim();
    if (anim == nullptr) {
        return;
    }
    const std::string text = NumberText(box->text());
    switch (option.Kind) {
    case SequenceNumberKind::Count:
        if (const std::optional<i16> whole = StrictToI16(text)) {
            SetSequenceNumber(*anim, row, *whole);
        }
        break;
    case SequenceNumberKind::Degrees:
        SetSequenceNumber(*anim, row, ToF32(FieldNumber(text)));
        break;
    case SequenceNumberKind::Factor:
        if (const std::optional<f32> real = StrictToF32(text)) {
            SetSequenceNumber(*anim, row, *real);
        }
        break;
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
