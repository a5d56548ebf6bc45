#include "ui/textures/DlgTexturemode.h"

#include "platform/Cp1252Text.h"
#include "platform/Reflection.h"
#include "ui/textures/TextureSupport.h"

#include <QButtonGroup>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

namespace quarle::ui {

using platform::Control;

DlgTexturemode::DlgTexturemode(AppState& state, platform::Services& services,
                               MainWindowAccess& main, QWidget* parent)
    : LocalisedDialog(state, services, parent), main_(main) {
    setObjectName(QStringLiteral("DlgTexturemode"));
    setWindowTitle(QStringLiteral("Texturemodes"));
    setModal(true);

    LblTextures =
        Control(new QLabel(QStringLiteral("Texturen:"), this), QStringLiteral("LblTextures"));
    LstTextures = Control(new QListWidget(this), QStringLiteral("LstTextures"));
    LstTextures->setSelectionMode(QAbstractItemView::SingleSelection);
    LstTextures->setMinimumSize(200, 150);
    LblTextures->setBuddy(LstTextures);
    FrmRenderMode = Control(new QGroupBox(QStringLiteral("Rendermode:"), this),
                            QStringLiteral("FrmRenderMode"));
    // Modes belong to a texture: nothing to set until one is chosen.
    FrmRenderMode->setEnabled(false);
    const QString captions[] = {QStringLiteral("Normal"), QStringLiteral("Masked"),
                                QStringLiteral("Additive")};
    auto* group = new QButtonGroup(this);
    auto* modes = new QVBoxLayout(FrmRenderMode);
    for (int i = 0; i < 3; ++i) {
        OptModes[static_cast<std::size_t>(i)] =
            Control(new QRadioButton(captions[i], FrmRenderMode), QStringLiteral("OptModes"), i);
        group->addButton(OptModes[static_cast<std::size_t>(i)], i);
        modes->addWidget(OptModes[static_cast<std::size_t>(i)]);
    }
    modes->addStretch(1);
    OptModes[0]->setChecked(true);
    LblWarning = Control(
        new QLabel(QStringLiteral(
                       "Achtung diese Funktion wird nicht von jedem Compiler unterst\u00fctzt!"),
                   this),
        QStringLiteral("LblWarning"));
    LblWarning->setWordWrap(true);
    QPalette red = LblWarning->palette();
    red.setColor(QPalette::WindowText, Qt::red);
    LblWarning->setPalette(red);
    OKButton = Control(new QPushButton(QStringLiteral("OK"), this), QStringLiteral("OKButton"));
    OKButton->setDefault(true);
    CreateCmdLocalise();

    auto* list = new QVBoxLayout;
    list->addWidget(LblTextures);
    list->addWidget(LstTextures, 1);
    auto* columns = new QHBoxLayout;
    columns->addLayout(list, 1);
    columns->addWidget(FrmRenderMode);
    auto* buttons = new QHBoxLayout;
    buttons->addWidget(CmdLocalise);
    buttons->addStretch(1);
    buttons->addWidget(OKButton);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(columns, 1);
    layout->addWidget(LblWarning);
    layout->addLayout(buttons);

    connect(LstTextures, &QListWidget::itemSelectionChanged, this,
            &DlgTexturemode::LstTextures_Click);
    // Setting an option from the list's click writes the same mode back.
    connect(group, &QButtonGroup::idToggled, this, [this](int id, bool checked) {
        if (checked) {
            OptModes_Click(id);
        }
    });
    connect(OKButton, &QPushButton::clicked, this, &DlgTexturemode::OKButton_Click);
}

DlgTexturemode::~DlgTexturemode() = default;

void DlgTexturemode::Form_Load() {
    LoadLanguage(false);
    // A table of its own, filled from the meshes at every opening: slot i
    // belongs to the i-th texture found. Modes are not touched, and slots
    // beyond the count keep their names and modes.
    std::array<std::string, limits::LastTexture + 1> names{};
    int count = 0;
    CollectTextures(state_, services_, names, count);
    Document& doc = state_.Doc;
    for (int i = 1; i <= count; ++i) {
        doc.TextureModes[static_cast<std::size_t>(i)].Name = names[static_cast<std::size_t>(i)];
        LstTextures->addItem(platform::FromCp1252(names[static_cast<std::size_t>(i)]));
    }
}

void DlgTexturemode::LstTextures_Click() {
    const int row = LstTextures->currentRow();
    if (row < 0 || !LstTextures->item(row)->isSelected()) {
        return;
    }
    FrmRenderMode->setEnabled(true);
    const int mode = state_.Doc.TextureModes[static_cast<std::size_t>(row + 1)].Mode;
    if (mode >= 0 && mode < static_cast<int>(OptModes.size())) {
        OptModes[static_cast<std::size_t>(mode)]->setChecked(true);
    }
}

void DlgTexturemode::OptModes_Click(int index) {
    const int row = LstTextures->currentRow();
    if (row < 0 || index < 0 || index >= static_cast<int>(OptModes.size())) {
        return; // no texture chosen: nothing to set
    }
    state_.Doc.TextureModes[static_cast<std::size_t>(row + 1)].Mode = static_cast<u8>(index);
}

void DlgTexturemode::OKButton_Click() {
    accept();
}

} // namespace quarle::ui
