#include "ui/wizards/Wizard3.h"

#include "document/SmdScan.h"
#include "platform/Cp1252Text.h"
#include "platform/Reflection.h"
#include "ui/wizards/Wizard2.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

namespace quarle::ui {

Wizard3::Wizard3(AppState& state, platform::Services& services, WizardChain& chain, QWidget* parent)
    : WizardPage(state, services, chain, QStringLiteral("Wizard3"),
                 QStringLiteral("Wizard - Referenzmodell"), parent) {
    CreatePicQuarle();
    LblHelpText1 =
        CreateHelpText(this, QStringLiteral("LblHelpText1"),
                       QStringLiteral("W\u00e4hle die Referenzmodelldatei, also die smd-Datei die "
                                      "den K\u00f6rper (nicht bloss die Knochen) des Modells "
                                      "enth\u00e4lt, aus."));
    LblModelfiles = platform::Control(
        new QLabel(QStringLiteral("Vorhandene Modelldateien im Modellordner:"), this),
        QStringLiteral("LblModelfiles"));
    LstFiles = platform::Control(new QListWidget(this), QStringLiteral("LstFiles"));
    LstFiles->setFixedHeight(110);
    FileWiz3Modeldateien =
        platform::Control(new QListWidget(this), QStringLiteral("FileWiz3Modeldateien"));
    FileWiz3Modeldateien->setVisible(false);
    CmdAssign = CreateAssignButton(
        QStringLiteral("CmdAssign"),
        QStringLiteral("Ausgew\u00e4hlte Datei als Referenzmodell \u00fcbernehmen"));
    LblReferencemodel = platform::Control(new QLabel(QStringLiteral("Referenzmodell:"), this),
                                          QStringLiteral("LblReferencemodel"));
    TxtWiz3Referenzmodel =
        platform::Control(new QLineEdit(this), QStringLiteral("TxtWiz3Referenzmodel"));
    TxtWiz3Referenzmodel->setEnabled(false);
    CreateCmdZurueck();
    CreateCmdAbbrechen();
    CmdWeiter = CreateCmdWeiter();
    CmdWeiter->setEnabled(false);
    CreateCmdLocalise();

    LayOut(FileChoice(LblHelpText1, LblModelfiles, LstFiles, CmdAssign, LblReferencemodel,
                      TxtWiz3Referenzmodel),
           {CmdZurueck, CmdAbbrechen, CmdWeiter});

    connect(CmdAssign, &QPushButton::clicked, this, &Wizard3::CmdAssign_Click);
    connect(LstFiles, &QListWidget::itemDoubleClicked, this, &Wizard3::LstFiles_DblClick);
    connect(TxtWiz3Referenzmodel, &QLineEdit::textChanged, this,
            &Wizard3::TxtWiz3Referenzmodel_Change);
}

void Wizard3::Form_Load() {
    LoadPage();
}

QString Wizard3::ModelFolder() const {
    const Wizard2* paths = chain_.Find<Wizard2>();
    return paths != nullptr ? paths->TxtWiz2Modelpfad->text() : QString();
}

void Wizard3::Form_Activate() {
    const QString folder = ModelFolder();
    FileWiz3Modeldateien->clear();
    FileWiz3Modeldateien->addItems(SmdFilesOf(folder));
    LstFiles->clear();
    TxtWiz3Referenzmodel_Change();
    // Meshes only; a file that cannot be read is no mesh and is left out.
    for (int i = 0; i < FileWiz3Modeldateien->count(); ++i) {
        const QString name = FileWiz3Modeldateien->item(i)->text();
        if (IsReferenceSmd(platform::ToCp1252Marked(InFolder(folder, name)))) {
            LstFiles->addItem(name);
        }
    }
}

void Wizard3::CmdAssign_Click() {
    QListWidgetItem* item = LstFiles->currentItem();
    if (item == nullptr || !item->isSelected()) {
        return;
    }
    TxtWiz3Referenzmodel->setText(item->text());
}

void Wizard3::LstFiles_DblClick() {
    CmdAssign_Click();
}

void Wizard3::TxtWiz3Referenzmodel_Change() {
    const QString name = TxtWiz3Referenzmodel->text();
    CmdWeiter->setEnabled(!name.isEmpty() && FileExistsAt(InFolder(ModelFolder(), name)));
}

} // namespace quarle::ui
