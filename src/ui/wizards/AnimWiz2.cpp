#include "ui/wizards/AnimWiz2.h"

#include "document/SmdScan.h"
#include "platform/Reflection.h"

#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace quarle::ui {

AnimWiz2::AnimWiz2(AppState& state, platform::Services& services, WizardChain& chain,
                   QWidget* parent)
    : WizardPage(state, services, chain, QStringLiteral("AnimWiz2"),
                 QStringLiteral("Animations-Wizard"), parent) {
    CreatePicQuarle();
    LblHelpText = platform::Control(
        new QLabel(QStringLiteral("W\u00e4hl die Modelldatei aus in der die Animation "
                                  "gespeichert ist. Diese muss sich im dem Ordner befinden, den "
                                  "du als Modellpfad angegeben hast. Zum Beispiel \"jump.smd\"."),
                   this),
        QStringLiteral("LblHelpText"));
    LblHelpText->setWordWrap(true);
    LblHelpText->setFixedWidth(360);
    LblAvailableModels = platform::Control(
        new QLabel(QStringLiteral("Vorhandene Modelldateien im Modellordner:"), this),
        QStringLiteral("LblAvailableModels"));
    LstFiles = platform::Control(new QListWidget(this), QStringLiteral("LstFiles"));
    LstFiles->setFixedHeight(110);
    FileAnimWiz2AnimModel =
        platform::Control(new QListWidget(this), QStringLiteral("FileAnimWiz2AnimModel"));
    FileAnimWiz2AnimModel->setVisible(false);
    CmdAssignAnimation =
        platform::Control(new QPushButton(this), QStringLiteral("CmdAssignAnimation"));
    CmdAssignAnimation->setIcon(style()->standardIcon(QStyle::SP_ArrowDown));
    CmdAssignAnimation->setIconSize(QSize(24, 24));
    CmdAssignAnimation->setFixedSize(40, 32);
    CmdAssignAnimation->setAutoDefault(false);
    CmdAssignAnimation->setToolTip(
        QStringLiteral("Ausgew\u00e4hlte Datei als Animationmodell \u00fcbernehmen"));
    LblAnimationmodel = platform::Control(new QLabel(QStringLiteral("Animationmodell:"), this),
                                          QStringLiteral("LblAnimationmodel"));
    TxtAnimWiz2AnimModel = platform::Control(new QLineEdit(QStringLiteral("Animation"), this),
                                             QStringLiteral("TxtAnimWiz2AnimModel"));
    TxtAnimWiz2AnimModelLong = platform::Control(new QLineEdit(QStringLiteral("Text1"), this),
                                                 QStringLiteral("TxtAnimWiz2AnimModelLong"));
    TxtAnimWiz2AnimModelLong->setVisible(false);
    CmdZurueck = platform::Control(new QPushButton(QStringLiteral("<-- Zur\u00fcck"), this),
                                   QStringLiteral("CmdZurueck"));
    CmdAbbrechen = platform::Control(new QPushButton(QStringLiteral("Abbrechen"), this),
                                     QStringLiteral("CmdAbbrechen"));
    CmdWeiter = platform::Control(new QPushButton(QStringLiteral("Weiter -->"), this),
                                  QStringLiteral("CmdWeiter"));
    CmdWeiter->setEnabled(false);
    CreateCmdLocalise();

    auto* content = new QVBoxLayout;
    content->addWidget(LblHelpText);
    content->addWidget(LblAvailableModels);
    content->addWidget(LstFiles);
    content->addWidget(CmdAssignAnimation, 0, Qt::AlignHCenter);
    auto* file = new QGridLayout;
    file->addWidget(LblAnimationmodel, 0, 0);
    file->addWidget(TxtAnimWiz2AnimModel, 0, 1);
    content->addLayout(file);
    content->addStretch();
    LayOut(content, {CmdZurueck, CmdAbbrechen, CmdWeiter});

    connect(CmdAssignAnimation, &QPushButton::clicked, this, &AnimWiz2::CmdAssignAnimation_Click);
    connect(TxtAnimWiz2AnimModel, &QLineEdit::textChanged, this,
            &AnimWiz2::TxtAnimWiz2AnimModel_Change);
    connect(TxtAnimWiz2AnimModelLong, &QLineEdit::textChanged, this,
            &AnimWiz2::TxtAnimWiz2AnimModelLong_Change);
    connect(CmdZurueck, &QPushButton::clicked, this, &AnimWiz2::CmdZurueck_Click);
    connect(CmdAbbrechen, &QPushButton::clicked, this, &AnimWiz2::CmdAbbrechen_Click);
    connect(CmdWeiter, &QPushButton::clicked, this, &AnimWiz2::CmdWeiter_Click);
    Form_Load();
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
        if (FileReadable(path) && !IsReferenceSmd(path.toStdString())) {
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

void AnimWiz2::CmdZurueck_Click() {
    GoBack();
}

void AnimWiz2::CmdAbbrechen_Click() {
    EndRun();
}

void AnimWiz2::CmdWeiter_Click() {
    GoNext();
}

} // namespace quarle::ui
