#include "ui/dialogs/DlgName.h"

#include "ui/common/LimitMessages.h"
#include "ui/localisation/Messages.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPushButton>
#include <QSignalBlocker>

namespace quarle::ui {

DlgName::DlgName(AppState& state, platform::Services& services, QComboBox* groups, QWidget* parent)
    : NameDialog(state, services,
                 {.Form = QStringLiteral("DlgName"),
                  .Title = QStringLiteral("Gib den Namen der Gruppe ein"),
                  .Label = QStringLiteral("Gruppenname:"),
                  .Field = QStringLiteral("TxtName"),
                  .FieldText = QString(),
                  .Accept = QStringLiteral("CmdOK"),
                  .AcceptCaption = QStringLiteral("Hinzuf\u00fcgen"),
                  .Cancel = QStringLiteral("CmdAbbrechen"),
                  .CancelCaption = QStringLiteral("Abbrechen"),
                  .LabelBesideField = true,
                  .FieldWidth = 180},
                 parent),
      TxtName(field_), CmdOK(accept_), CmdAbbrechen(cancel_), groups_(groups) {
    setAttribute(Qt::WA_DeleteOnClose);
    setModal(false);
    connect(CmdOK, &QPushButton::clicked, this, &DlgName::CmdOK_Click);
    connect(CmdAbbrechen, &QPushButton::clicked, this, &DlgName::CmdAbbrechen_Click);
}

DlgName::~DlgName() = default;

void DlgName::Form_Load() {
    LoadForm();
}

void DlgName::CmdOK_Click() {
    Document& doc = state_.Doc;
    // The main window may have changed the groups while this stood open: the
    // slot is the one behind the last group now.
    if (doc.BodyGroupCount >= limits::LastBodyGroup) {
        RefuseAtLimit(state_, services_, MSG_GROUPS_FULL, limits::LastBodyGroup);
        return;
    }
    const QString name = TxtName->text();
    // A refused name leaves the dialog open for another.
    const std::optional<std::string> bytes = TypedText(state_, services_, name);
    if (!bytes) {
        return;
    }
    ++doc.BodyGroupCount;
    doc.BodyGroups[doc.BodyGroupCount].Name = *bytes;
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

} // namespace quarle::ui
