#include "ui/dialogs/DlgRenameGroup.h"

#include "platform/Reflection.h"
#include "ui/localisation/ApplyLanguage.h"

#include <QComboBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>

namespace quarle::ui {

using platform::Control;

DlgRenameGroup::DlgRenameGroup(AppState& state, platform::Services& services, QComboBox* groups,
                               QWidget* parent)
    : QDialog(parent), state_(state), services_(services), groups_(groups) {
    setObjectName(QStringLiteral("DlgRenameGroup"));
    setWindowTitle(QStringLiteral("Name des Dialogfeldes"));
    setModal(true);

    Label1 = Control(new QLabel(QStringLiteral("Neue Bezeichnung f\u00fcr Gruppe:"), this),
                     QStringLiteral("Label1"));
    TxtNewCaption =
        Control(new QLineEdit(QStringLiteral("Text1"), this), QStringLiteral("TxtNewCaption"));
    TxtNewCaption->setMinimumWidth(220);
    Label1->setBuddy(TxtNewCaption);
    OKButton = Control(new QPushButton(QStringLiteral("OK"), this), QStringLiteral("OKButton"));
    OKButton->setDefault(true);
    CancelButton =
        Control(new QPushButton(QStringLiteral("Abbrechen"), this), QStringLiteral("CancelButton"));
    CmdLocalise = Control(new QPushButton(this), QStringLiteral("CmdLocalise"));
    const QIcon localise(QStringLiteral(":/icons/localise.png"));
    CmdLocalise->setIcon(
        localise.isNull() ? style()->standardIcon(QStyle::SP_FileDialogDetailedView) : localise);
    CmdLocalise->setFixedSize(26, 26);
    CmdLocalise->setAutoDefault(false);
    CmdLocalise->setVisible(false);

    auto* buttons = new QHBoxLayout;
    buttons->addWidget(CmdLocalise);
    buttons->addStretch(1);
    buttons->addWidget(OKButton);
    buttons->addWidget(CancelButton);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(Label1);
    layout->addWidget(TxtNewCaption);
    layout->addSpacing(6);
    layout->addLayout(buttons);

    connect(OKButton, &QPushButton::clicked, this, &DlgRenameGroup::OKButton_Click);
    connect(CancelButton, &QPushButton::clicked, this, &DlgRenameGroup::CancelButton_Click);
    connect(CmdLocalise, &QPushButton::clicked, this, &DlgRenameGroup::CmdLocalise_Click);

    Form_Load();
}

DlgRenameGroup::~DlgRenameGroup() = default;

void DlgRenameGroup::Form_Load() {
    ApplyLanguage(state_, services_, this);
    if (state_.LocalisationMode) {
        CmdLocalise->setVisible(true);
    }
    if (groups_ != nullptr && groups_->currentIndex() >= 0) {
        TxtNewCaption->setText(groups_->itemText(groups_->currentIndex()));
    }
    TxtNewCaption->selectAll();
}

void DlgRenameGroup::OKButton_Click() {
    const int selected = groups_ != nullptr ? groups_->currentIndex() : -1;
    if (selected >= 0 && selected < limits::LastBodyGroup) {
        const QString name = TxtNewCaption->text();
        state_.Doc.BodyGroups[static_cast<std::size_t>(selected) + 1].Name = name.toStdString();
        groups_->setItemText(selected, name);
    }
    accept();
}

void DlgRenameGroup::CancelButton_Click() {
    reject();
}

void DlgRenameGroup::CmdLocalise_Click() {
    emit LocaliseRequested(this);
}

} // namespace quarle::ui
