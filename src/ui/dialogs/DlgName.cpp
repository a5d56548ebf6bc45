#include "ui/dialogs/DlgName.h"

#include "platform/Reflection.h"
#include "ui/localisation/ApplyLanguage.h"
#include "ui/mainwindow/LimitMessages.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>
#include <QStyle>
#include <QVBoxLayout>

namespace quarle::ui {

using platform::Control;

DlgName::DlgName(AppState& state, platform::Services& services, QComboBox* groups, QWidget* parent)
    : QDialog(parent), state_(state), services_(services), groups_(groups) {
    setObjectName(QStringLiteral("DlgName"));
    setWindowTitle(QStringLiteral("Gib den Namen der Gruppe ein"));
    setAttribute(Qt::WA_DeleteOnClose);
    setModal(false);

    Label1 = Control(new QLabel(QStringLiteral("Gruppenname:"), this), QStringLiteral("Label1"));
    TxtName = Control(new QLineEdit(this), QStringLiteral("TxtName"));
    TxtName->setMinimumWidth(180);
    Label1->setBuddy(TxtName);
    CmdOK =
        Control(new QPushButton(QStringLiteral("Hinzuf\u00fcgen"), this), QStringLiteral("CmdOK"));
    CmdOK->setDefault(true);
    CmdAbbrechen =
        Control(new QPushButton(QStringLiteral("Abbrechen"), this), QStringLiteral("CmdAbbrechen"));
    CmdLocalise = Control(new QPushButton(this), QStringLiteral("CmdLocalise"));
    const QIcon localise(QStringLiteral(":/icons/localise.png"));
    CmdLocalise->setIcon(
        localise.isNull() ? style()->standardIcon(QStyle::SP_FileDialogDetailedView) : localise);
    CmdLocalise->setFixedSize(26, 26);
    CmdLocalise->setAutoDefault(false);
    CmdLocalise->setVisible(false);

    auto* name = new QHBoxLayout;
    name->addWidget(Label1);
    name->addWidget(TxtName, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(CmdLocalise);
    buttons->addStretch(1);
    buttons->addWidget(CmdOK);
    buttons->addWidget(CmdAbbrechen);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(name);
    layout->addSpacing(6);
    layout->addLayout(buttons);

    connect(CmdOK, &QPushButton::clicked, this, &DlgName::CmdOK_Click);
    connect(CmdAbbrechen, &QPushButton::clicked, this, &DlgName::CmdAbbrechen_Click);
    connect(CmdLocalise, &QPushButton::clicked, this, &DlgName::CmdLocalise_Click);

    Form_Load();
}

DlgName::~DlgName() = default;

void DlgName::Form_Load() {
    ApplyLanguage(state_, services_, this);
    if (state_.LocalisationMode) {
        CmdLocalise->setVisible(true);
    }
}

void DlgName::CmdOK_Click() {
    Document& doc = state_.Doc;
    // The main window may have changed the groups while this stood open: the
    // slot is the one behind the last group now.
    if (doc.BodyGroupCount >= limits::LastBodyGroup) {
        RefuseAtLimit(state_, services_, GroupsFullText);
        return;
    }
    ++doc.BodyGroupCount;
    const QString name = TxtName->text();
    doc.BodyGroups[doc.BodyGroupCount].Name = name.toStdString();
    if (groups_ != nullptr) {
        // The new entry is not selected: the parts on show stay those of
        // the group selected before (also when none was, and the box was empty).
        const int selected = groups_->currentIndex();
        const QSignalBlocker block(groups_);
        groups_->addItem(name);
        groups_->setCurrentIndex(selected);
    }
    close();
}

void DlgName::CmdAbbrechen_Click() {
    close();
}

void DlgName::CmdLocalise_Click() {
    emit LocaliseRequested(this);
}

} // namespace quarle::ui
