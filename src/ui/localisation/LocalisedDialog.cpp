#include "ui/localisation/LocalisedDialog.h"

#include "platform/Reflection.h"
#include "ui/localisation/ApplyLanguage.h"

#include <QIcon>
#include <QPushButton>
#include <QStyle>

namespace quarle::ui {

LocalisedDialog::LocalisedDialog(AppState& state, platform::Services& services, QWidget* parent)
    : QDialog(parent), state_(state), services_(services) {}

LocalisedDialog::~LocalisedDialog() = default;

QPushButton* LocalisedDialog::CreateCmdLocalise() {
    CmdLocalise = platform::Control(new QPushButton(this), QStringLiteral("CmdLocalise"));
    const QIcon localise(QStringLiteral(":/icons/localise.png"));
    CmdLocalise->setIcon(
        localise.isNull() ? style()->standardIcon(QStyle::SP_FileDialogDetailedView) : localise);
    CmdLocalise->setFixedSize(26, 26); // 390 twips
    CmdLocalise->setAutoDefault(false);
    CmdLocalise->setVisible(false);
    connect(CmdLocalise, &QPushButton::clicked, this, &LocalisedDialog::CmdLocalise_Click);
    return CmdLocalise;
}

void LocalisedDialog::LoadLanguage(bool applyLanguage) {
    if (applyLanguage) {
        ApplyLanguage(state_, services_, this);
    }
    if (CmdLocalise != nullptr && state_.LocalisationMode) {
        CmdLocalise->setVisible(true);
    }
}

void LocalisedDialog::Load() {
    if (!loaded_) {
        loaded_ = true;
        Form_Load();
    }
}

void LocalisedDialog::setVisible(bool visible) {
    if (visible) {
        Load();
    }
    QDialog::setVisible(visible);
}

void LocalisedDialog::CmdLocalise_Click() {
    emit LocaliseRequested(this);
}

void LocalisedDialog::ForwardLocalise(LocalisedDialog& child) {
    connect(&child, &LocalisedDialog::LocaliseRequested, this, &LocalisedDialog::LocaliseRequested);
}

} // namespace quarle::ui
