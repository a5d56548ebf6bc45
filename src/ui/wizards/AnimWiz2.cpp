#include "ui/wizards/AnimWiz2.h"

#include "document/SmdScan.h"
#include "platform/Cp1252Text.h"
#include "platform/Reflection.h"

#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>

namespace quarle::ui {

AnimWiz2::AnimWiz2(AppState& state, platform::Services& services, WizardChain& chain,
                   QWidget* parent)
    : WizardPage(state, services, chain, QStringLiteral("AnimWiz2"),
                 QStringLiteral("Animations-Wizard"), parent) {
    CreatePicQuarle();
    LblHelpText = CreateHelpText(
        this, QStringLiteral("LblHelpText"),
        QStringLiteral("W\u00e4hl die Modelldatei aus in der die Animation "
                       "gespeichert ist. Diese muss sich im dem Ordner befinden, den "
                       "du als Modellpfad angegeben hast. Zum Beispiel \"jump.smd\"."));
    LblAvailableModels = platform::Control(
        new QLabel(QStringLiteral("Vorhandene Modelldateien im Modellordner:"), this),
        QStringLiteral("LblAvailableModels"));
    LstFiles = platform::Control(new QListWidget(this), QStringLiteral("LstFiles"));
    LstFiles->setFixedHeight(110);
    FileAnimWiz2AnimModel =
        platform::Control(new QListWidget(this), QStringLiteral("FileAnimWiz2AnimModel"));
    FileAnimWiz2AnimModel->setVisible(false);
    CmdAssignAnimation = CreateAssignButton(
        QStringLiteral("CmdAssignAnimation"),
        QStringLiteral("Ausgew\u00e4hlte Datei als Animationmodell \u00fcbernehmen"));
    LblAnimationmodel = platform::Control(new QLabel(QStringLiteral("Animationmodell:"), this),
                                          QStringLiteral("LblAnimationmodel"));
    TxtAnimWiz2AnimModel = platform::Control(new QLineEdit(QStringLiteral("Animation"), this),
                                             QStringLiteral("TxtAnimWiz2AnimModel"));
    TxtAnimWiz2AnimModelLong = platform::Control(new QLineEdit(QStringLiteral("Text1"), this),
                                                 QStringLiteral("TxtAnimWiz2AnimModelLong"));
    TxtAnimWiz2AnimModelLong->setVisible(false);
    CreateCmdZurueck();
    CreateCmdAbbrechen();
    CmdWeiter = CreateCmdWeiter();
    CmdWeiter->setEnabled(false);
    CreateCmdLocalise();

    LayOut(FileChoice(LblHelpText, LblAvailableModels, LstFiles, CmdAssignAnimation,
                      LblAnimationmodel, TxtAnimWiz2AnimModel),
           {CmdZurueck, CmdAbbrechen, CmdWeiter});

    connect(CmdAssignAnimation, &QPushButton::clicked, this, &AnimWiz2::CmdAssignAnimation_Click);
    // A double click takes the file, as on the reference page.
    connect(LstFiles, &QListWidget::itemDoubleClicked, this, &AnimWiz2::CmdAssignAnimation_Click);
    connect(TxtAnimWiz2AnimModel, &QLineEdit::textChanged, this,
            &AnimWiz2::TxtAnimWiz2AnimModel_Change);
    connect(TxtAnimWiz2AnimModelLong, &QLineEdit::textChanged, this,
            &AnimWiz2::TxtAnimWiz2AnimModelLong_Change);
}

void AnimWiz2::Form_Load() {
    LoadPage();
}

void AnimWiz2::Form_Activate() {
    LoadLanguage(false); // the localise button, each time
    const QString folder = PathFromDocument(state_.Doc.ModelPath);
    if (!folder.isEmpty()) {
        fileListPath_ = folder;
    }
    FileAnimWiz2AnimModel->clear();
    FileAnimWiz2AnimModel->addItems(SmdFilesOf(fileListPath_));
    LstFiles->clear();
    // Animation files only: a file without "triangles". A file that cannot
    // be read is neither and is left out.
    for (int i = 0; i < FileAnimWiz2AnimModel->count(); ++i) {
        const QString name = FileAnimWiz2AnimModel->item(i)->text();
        const QString path = InFolder(fileListPath_, name);
        if (FileReadable(path) && !IsReferenceSmd(platform::ToCp1252Marked(path))) {
            LstFiles->addItem(name);
        }
    }
    TxtAnimWiz2AnimModelLong_Change();
}

void AnimWiz2::CmdAssignAnimation_Click() {
    QListWidgetItem* item = LstFiles->currentItem();
    if (item == nullptr || !item->isSelected()) {
        return;
    }
    assigning_ = true;
    TxtAnimWiz2AnimModel->setText(item->text());
    assigning_ = false;
    TxtAnimWiz2AnimModelLong->setText(InFolder(fileListPath_, item->text()));
}

void AnimWiz2::TxtAnimWiz2AnimModel_Change() {
    if (assigning_) {
        return;
    }
    // The box and the file the wizard reads always agree: what the user
    // types is a file of the model folder, and Next opens when it exists.
    const QString name = TxtAnimWiz2AnimModel->text();
    TxtAnimWiz2AnimModelLong->setText(name.isEmpty() ? QString() : InFolder(fileListPath_, name));
}

void AnimWiz2::TxtAnimWiz2AnimModelLong_Change() {
    CmdWeiter->setEnabled(FileExistsAt(TxtAnimWiz2AnimModelLong->text()));
}

} // namespace quarle::ui
