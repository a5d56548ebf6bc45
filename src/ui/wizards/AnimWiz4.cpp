#include "ui/wizards/AnimWiz4.h"

#include "document/NumberText.h"
#include "document/SmdScan.h"
#include "platform/Cp1252Text.h"
#include "platform/Reflection.h"
#include "ui/common/NumberKeys.h"
#include "ui/wizards/AnimWiz2.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace quarle::ui {
AnimWiz4::AnimWiz4(AppState& state, platform::Services& services, WizardChain& chain,
                   QWidget* parent)
    : WizardPage(state, services, chain, QStringLiteral("AnimWiz4"),
                 QStringLiteral("Animations-Wizard"), parent) {
    CreatePicQuarle();
    FrmFPS = platform::Control(new QGroupBox(QStringLiteral("FramesPerSecond"), this),
                               QStringLiteral("FrmFPS"));
    LblHelpText1 =
        CreateHelpText(FrmFPS, QStringLiteral("LblHelpText1"),
                       QStringLiteral("Mit welcher Geschwindigkeit soll die Animation "
                                      "ablaufen (in Bildern pro Sekunde - fps), Standart "
                                      "ist 30."));
    LblFPS =
        platform::Control(new QLabel(QStringLiteral("Fps:"), FrmFPS), QStringLiteral("LblFPS"));
    TxtAnimWiz4FpS = platform::Control(new QLineEdit(QStringLiteral("30"), FrmFPS),
                                       QStringLiteral("TxtAnimWiz4FpS"));
    FrmFramelilimts = platform::Control(new QGroupBox(QStringLiteral("Framesbegrenzung"), this),
                                        QStringLiteral("FrmFramelilimts"));
    LblHelpText2 = CreateHelpText(FrmFramelilimts, QStringLiteral("LblHelpText2"),
                                  QStringLiteral("Wenn nicht alle Bilder der Animation angezeigt "
                                                 "werden sollen, kannst du hier den Start- und den "
                                                 "Endpunkt f\u00fcr die Animation angeben."));
    ChkAnimWiz4Frame = platform::Control(new QCheckBox(QStringLiteral("Frames:"), FrmFramelilimts),
                                         QStringLiteral("ChkAnimWiz4Frame"));
    TxtAnimWiz4FrameStart = platform::Control(new QLineEdit(QStringLiteral("0"), FrmFramelilimts),
                                              QStringLiteral("TxtAnimWiz4FrameStart"));
    TxtAnimWiz4FrameStart->setEnabled(false);
    LblTo = platform::Control(new QLabel(QStringLiteral("bis"), FrmFramelilimts),
                              QStringLiteral("LblTo"));
    TxtAnimWiz4FrameEnd = platform::Control(new QLineEdit(QStringLiteral("10"), FrmFramelilimts),
                                            QStringLiteral("TxtAnimWiz4FrameEnd"));
    TxtAnimWiz4FrameEnd->setEnabled(false);
    FrmLoop = platform::Control(new QGroupBox(QStringLiteral("Schleife"), this),
                                QStringLiteral("FrmLoop"));
    LblHelpText3 =
        CreateHelpText(FrmLoop, QStringLiteral("LblHelpText3"),
                       QStringLiteral("Soll sich die Animation st\u00e4ndig wiederhohlen?"));
    ChkAnimWiz4Schleife = platform::Control(new QCheckBox(QStringLiteral("Schleife"), FrmLoop),
                                            QStringLiteral("ChkAnimWiz4Schleife"));
    CreateCmdZurueck();
    CreateCmdAbbrechen();
    CmdWeiter = CreateCmdWeiter();
    CreateCmdLocalise();

    for (QLineEdit* box : {TxtAnimWiz4FpS, TxtAnimWiz4FrameStart, TxtAnimWiz4FrameEnd}) {
        box->setFixedWidth(60);
        FilterKeys(box, 0, Pasted::Filtered, Enter::Passes);
    }
    auto* fps = new QGridLayout(FrmFPS);
    fps->addWidget(LblHelpText1, 0, 0, 1, 3);
    fps->addWidget(LblFPS, 1, 0);
    fps->addWidget(TxtAnimWiz4FpS, 1, 1);
    fps->setColumnStretch(2, 1);
    auto* frames = new QGridLayout(FrmFramelilimts);
    frames->addWidget(LblHelpText2, 0, 0, 1, 5);
    frames->addWidget(ChkAnimWiz4Frame, 1, 0);
    frames->addWidget(TxtAnimWiz4FrameStart, 1, 1);
    frames->addWidget(LblTo, 1, 2);
    frames->addWidget(TxtAnimWiz4FrameEnd, 1, 3);
    frames->setColumnStretch(4, 1);
    auto* loop = new QVBoxLayout(FrmLoop);
    loop->addWidget(LblHelpText3);
    loop->addWidget(ChkAnimWiz4Schleife);
    auto* content = new QVBoxLayout;
    content->addWidget(FrmFPS);
    content->addWidget(FrmFramelilimts);
    content->addWidget(FrmLoop);
    LayOut(content, {CmdZurueck, CmdAbbrechen, CmdWeiter});

    connect(ChkAnimWiz4Frame, &QCheckBox::clicked, this, &AnimWiz4::ChkAnimWiz4Frame_Click);
    connect(TxtAnimWiz4FrameStart, &QLineEdit::textChanged, this,
            &AnimWiz4::TxtAnimWiz4FrameStart_Change);
    connect(TxtAnimWiz4FrameEnd, &QLineEdit::textChanged, this,
            &AnimWiz4::TxtAnimWiz4FrameEnd_Change);
}

void AnimWiz4::Form_Load() {
    LoadPage();
}

void AnimWiz4::Form_Activate() {
    const AnimWiz2* file = chain_.Find<AnimWiz2>();
    if (file != nullptr) {
        // A file that cannot be read leaves the count of the file before.
        ScanSmdFrames(platform::ToCp1252Marked(file->TxtAnimWiz2AnimModelLong->text()),
                      state_.Doc.SmdFrameCount);
    }
    TxtAnimWiz4FrameEnd->setText(QString::number(state_.Doc.SmdFrameCount));
}

void AnimWiz4::ChkAnimWiz4Frame_Click() {
    const bool on = ChkAnimWiz4Frame->isChecked();
    TxtAnimWiz4FrameStart->setEnabled(on);
    TxtAnimWiz4FrameEnd->setEnabled(on);
}

void AnimWiz4::LimitFrame(QLineEdit* box) {
    // An empty box is left to the user; digits beyond the 16-bit range are
    // above the last frame too.
    const QString text = box->text();
    if (text.isEmpty()) {
        return;
    }
    const std::optional<i16> frame = StrictToI16(text.toStdString(), '.');
    if (!frame || *frame > state_.Doc.SmdFrameCount) {
        box->setText(QString::number(state_.Doc.SmdFrameCount));
    }
}

void AnimWiz4::TxtAnimWiz4FrameStart_Change() {
    LimitFrame(TxtAnimWiz4FrameStart);
}

void AnimWiz4::TxtAnimWiz4FrameEnd_Change() {
    LimitFrame(TxtAnimWiz4FrameEnd);
}

} // namespace quarle::ui
