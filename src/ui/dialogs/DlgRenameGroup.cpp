#include "ui/dialogs/DlgRenameGroup.h"

#include "ui/localisation/Messages.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>

namespace quarle::ui {

DlgRenameGroup::DlgRenameGroup(AppState& state, platform::Services& services, QComboBox* groups,
                               QWidget* parent)
    : NameDialog(state, services,
                 {.Form = QStringLiteral("DlgRenameGroup"),
                  .Title = QStringLiteral("Name des Dialogfeldes"),
                  .Label = QStringLiteral("Neue Bezeichnung f\u00fcr Gruppe:"),
                  .Field = QStringLiteral("TxtNewCaption"),
                  .FieldText = QStringLiteral("Text1"),
                  .Accept = QStringLiteral("OKButton"),
                  .AcceptCaption = QStringLiteral("OK"),
                  .Cancel = QStringLiteral("CancelButton"),
                  .CancelCaption = QStringLiteral("Abbrechen"),
                  .LabelBesideField = false,
                  .FieldWidth = 220},
                 parent),
      TxtNewCaption(field_), OKButton(accept_), CancelButton(cancel_), groups_(groups) {
    setModal(true);
    connect(OKButton, &QPushButton::clicked, this, &DlgRenameGroup::OKButton_Click);
    connect(CancelButton, &QPushButton::clicked, this, &DlgRenameGroup::CancelButton_Click);
}

DlgRenameGroup::~DlgRenameGroup() = default;

void DlgRenameGroup::Form_Load() {
    LoadForm();
    if (groups_ != nullptr && groups_->currentIndex() >= 0) {
        TxtNewCaption->setText(groups_->itemText(groups_->currentIndex()));
    }
    TxtNewCaption->selectAll();
}

void DlgRenameGroup::OKButton_Click() {
    const int selected = groups_ != nullptr ? groups_->currentIndex() : -1;
    if (selected >= 0 && selected < limits::LastBodyGroup) {
        const QString name = TxtNewCaption->text();
        // A refused name leaves the dialog open for another.
        const std::optional<std::string> bytes = TypedText(state_, services_, name);
        if (!bytes) {
            return;
        }
        state_.Doc.BodyGroups[static_cast<std::size_t>(selected) + 1].Name = *bytes;
        groups_->setItemText(selected, name);
    }
    accept();
}

void DlgRenameGroup::CancelButton_Click() {
    reject();
}

} // namespace quarle::ui
