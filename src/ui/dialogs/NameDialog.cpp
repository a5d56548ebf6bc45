#include "ui/dialogs/NameDialog.h"

#include "platform/Reflection.h"

#include <QBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace quarle::ui {

using platform::Control;

NameDialog::NameDialog(AppState& state, platform::Services& services, const Design& design,
                       QWidget* parent)
    : LocalisedDialog(state, services, parent) {
    setObjectName(design.Form);
    setWindowTitle(design.Title);

    Label1 = Control(new QLabel(design.Label, this), QStringLiteral("Label1"));
    field_ = Control(new QLineEdit(design.FieldText, this), design.Field);
    field_->setMinimumWidth(design.FieldWidth);
    Label1->setBuddy(field_);
    accept_ = Control(new QPushButton(design.AcceptCaption, this), design.Accept);
    accept_->setDefault(true);
    cancel_ = Control(new QPushButton(design.CancelCaption, this), design.Cancel);
    CreateCmdLocalise();

    auto* name =
        new QBoxLayout(design.LabelBesideField ? QBoxLayout::LeftToRight : QBoxLayout::TopToBottom);
    name->addWidget(Label1);
    name->addWidget(field_, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(CmdLocalise);
    buttons->addStretch(1);
    buttons->addWidget(accept_);
    buttons->addWidget(cancel_);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(name);
    layout->addSpacing(6);
    layout->addLayout(buttons);
}

NameDialog::~NameDialog() = default;

void NameDialog::LoadForm() {
    LoadLanguage();
}

} // namespace quarle::ui
