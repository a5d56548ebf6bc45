#include "ui/wizards/Wizard4.h"

#include "platform/Reflection.h"
#include "ui/common/NumberKeys.h"

#include <QCheckBox>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QVBoxLayout>

namespace quarle::ui {

Wizard4::Wizard4(AppState& state, platform::Services& services, WizardChain& chain, QWidget* parent)
    : WizardPage(state, services, chain, QStringLiteral("Wizard4"),
                 QStringLiteral("Wizard - Sonstige"), parent) {
    CreatePicQuarle();
    FrmScale = platform::Control(new QGroupBox(QStringLiteral("Ma\u00dfstab"), this),
                                 QStringLiteral("FrmScale"));
    LblHelpText1 =
        CreateHelpText(FrmScale, QStringLiteral("LblHelpText1"),
                       QStringLiteral("Gib den Ma\u00dfstab in dem das Modell gespeichert werden "
                                      "soll an. Er kann in der Regel auf \"1\" bleiben."));
    LblScale = platform::Control(new QLabel(QStringLiteral("Ma\u00dfstab:"), FrmScale),
                                 QStringLiteral("LblScale"));
    TxtWiz4Massstab = platform::Control(new QLineEdit(QStringLiteral("1"), FrmScale),
                                        QStringLiteral("TxtWiz4Massstab"));
    FrmEyes =
        platform::Control(new QGroupBox(QStringLiteral("Augen"), this), QStringLiteral("FrmEyes"));
    LblHelpText2 =
        CreateHelpText(FrmEyes, QStringLiteral("LblHelpText2"),
                       QStringLiteral("Falls das Modell ein Monster oder ein anderes Lebewesen mit "
                                      "Augen ist sollte jetzt die XYZ-Koordinate des Modells "
                                      "angegeben werden."));
    ChkWiz4Augen = platform::Control(new QCheckBox(QStringLiteral("Augen"), FrmEyes),
                                     QStringLiteral("ChkWiz4Augen"));
    TxtWiz4AugenX = platform::Control(new QLineEdit(QStringLiteral("X"), FrmEyes),
                                      QStringLiteral("TxtWiz4AugenX"));
    TxtWiz4AugenY = platform::Control(new QLineEdit(QStringLiteral("Y"), FrmEyes),
                                      QStringLiteral("TxtWiz4AugenY"));
    TxtWiz4AugenZ = platform::Control(new QLineEdit(QStringLiteral("Z"), FrmEyes),
                                      QStringLiteral("TxtWiz4AugenZ"));
    CreateCmdZurueck();
    CreateCmdAbbrechen();
    CmdWeiter = CreateCmdWeiter();
    CreateCmdLocalise();

    TxtWiz4Massstab->setFixedWidth(80);
    auto* scale = new QGridLayout(FrmScale);
    scale->addWidget(LblHelpText1, 0, 0, 1, 3);
    scale->addWidget(LblScale, 1, 0);
    scale->addWidget(TxtWiz4Massstab, 1, 1);
    scale->setColumnStretch(2, 1);
    auto* eyes = new QGridLayout(FrmEyes);
    eyes->addWidget(LblHelpText2, 0, 0, 1, 5);
    eyes->addWidget(ChkWiz4Augen, 1, 0);
    int column = 1;
    for (QLineEdit* box : {TxtWiz4AugenX, TxtWiz4AugenY, TxtWiz4AugenZ}) {
        box->setEnabled(false);
        box->setFixedWidth(70);
        FilterKeys(box, 3, Pasted::Filtered, Enter::Passes);
        eyes->addWidget(box, 1, column++);
    }
    eyes->setColumnStretch(4, 1);
    FilterKeys(TxtWiz4Massstab, 1, Pasted::Filtered, Enter::Passes);
    auto* content = new QVBoxLayout;
    content->addWidget(FrmScale);
    content->addWidget(FrmEyes);
    content->addStretch();
    LayOut(content, {CmdZurueck, CmdAbbrechen, CmdWeiter});

    connect(ChkWiz4Augen, &QCheckBox::clicked, this, &Wizard4::ChkWiz4Augen_Click);
}

void Wizard4::Form_Load() {
    LoadPage();
}

void Wizard4::ChkWiz4Augen_Click() {
    const bool on = ChkWiz4Augen->isChecked();
    const char* letters[] = {"X", "Y", "Z"};
    int i = 0;
    for (QLineEdit* box : {TxtWiz4AugenX, TxtWiz4AugenY, TxtWiz4AugenZ}) {
        box->setEnabled(on);
        box->setText(on ? QStringLiteral("0") : QString::fromLatin1(letters[i]));
        ++i;
    }
}

} // namespace quarle::ui
