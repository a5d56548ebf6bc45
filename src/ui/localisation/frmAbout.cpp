#include "ui/localisation/frmAbout.h"

#include "localisation/GlobalStrings.h"
#include "localisation/LanguageFile.h"
#include "platform/Reflection.h"

#include <QApplication>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QStyle>

namespace quarle::ui {

using platform::Control;

frmAbout::frmAbout(AppState& state, platform::Services& services, QWidget* parent)
    : LocalisedDialog(state, services, parent) {
    setObjectName(QStringLiteral("frmAbout"));
    setWindowTitle(QStringLiteral("\u00dcber"));
    setModal(false);

    picIcon = Control(new QLabel(this), QStringLiteral("picIcon"));
    QIcon icon = QApplication::windowIcon();
    if (icon.isNull()) {
        icon = style()->standardIcon(QStyle::SP_MessageBoxInformation);
    }
    picIcon->setPixmap(icon.pixmap(32, 32));
    picIcon->setFixedSize(32, 32);
    lblTitle = Control(new QLabel(QStringLiteral("Quarle"), this), QStringLiteral("lblTitle"));
    QFont title = lblTitle->font();
    title.setPointSizeF(title.pointSizeF() * 1.6);
    title.setBold(true);
    lblTitle->setFont(title);
    lblDisclaimer =
        Control(new QLabel(QStringLiteral("Quarle erstellt und bearbeitet qc-Dateien f\u00fcr "
                                          "Half-Life-Modelle. Benutzung auf eigene Gefahr."),
                           this),
                QStringLiteral("lblDisclaimer"));
    lblDisclaimer->setWordWrap(true);
    lblDisclaimer->setMinimumWidth(300);
    LblFreeware =
        Control(new QLabel(QStringLiteral("Freeware"), this), QStringLiteral("LblFreeware"));
    LblVersion = Control(new QLabel(this), QStringLiteral("LblVersion"));
    CmdOK = Control(new QPushButton(QStringLiteral("OK"), this), QStringLiteral("CmdOK"));
    CmdOK->setDefault(true);
    CreateCmdLocalise();

    auto* layout = new QGridLayout(this);
    layout->addWidget(picIcon, 0, 0, 2, 1, Qt::AlignTop);
    layout->addWidget(lblTitle, 0, 1);
    layout->addWidget(LblVersion, 1, 1);
    layout->addWidget(lblDisclaimer, 2, 1);
    layout->addWidget(LblFreeware, 3, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(CmdLocalise);
    buttons->addStretch(1);
    buttons->addWidget(CmdOK);
    layout->addLayout(buttons, 4, 0, 1, 2);
    layout->setColumnStretch(1, 1);

    connect(CmdOK, &QPushButton::clicked, this, &frmAbout::CmdOK_Click);
}

frmAbout::~frmAbout() = default;

void frmAbout::Form_Load() {
    LoadLanguage();
    LblVersion->setText(
        QString::fromStdString(state_.IdsTexts[IDS_VERSION]) + QStringLiteral(": ") +
        QString::fromLatin1(ProgramVersion.data(), static_cast<qsizetype>(ProgramVersion.size())));
}

void frmAbout::CmdOK_Click() {
    close();
}

} // namespace quarle::ui
