#include "ui/localisation/DlgLocaliseMain.h"

#include "localisation/Cp1252.h"
#include "localisation/LanguageEdit.h"
#include "platform/Reflection.h"
#include "ui/localisation/LanguageWrite.h"
#include "ui/localisation/Messages.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QStyle>
#include <QTimer>
#include <algorithm>

namespace quarle::ui {
namespace {

using platform::Control;

const QString NotAvailableText =
    QString::fromLatin1(NotAvailable.data(), static_cast<qsizetype>(NotAvailable.size()));
const QString TitleText = QStringLiteral("Titel");

// A text of the file as the core edits it: crossed into cp1252 as every form
// crosses text (a text the code page cannot hold is refused with a message),
// then held as the core holds a language file's text.
std::optional<std::string> FileText(const AppState& state, platform::Services& services,
                                    const QString& text) {
    const std::optional<std::string> bytes = TypedText(state, services, text);
    if (!bytes) {
        return std::nullopt;
    }
    return Cp1252ToUtf8(*bytes);
}

} // namespace

DlgLocaliseMain::DlgLocaliseMain(AppState& state, platform::Services& services, QWidget* target,
                                 bool stringsMode, QWidget* parent)
    : QDialog(parent), state_(state), services_(services), target_(target),
      stringsMode_(stringsMode) {
    setObjectName(QStringLiteral("DlgLocaliseMain"));
    setWindowTitle(QStringLiteral("Localisation for "));
    setModal(true);

    LstToLocalise = Control(new QListWidget(this), QStringLiteral("LstToLocalise"));
    LstToLocalise->setMinimumSize(250, 260);
    FrmLocalisation = Control(new QGroupBox(QStringLiteral("Localisation"), this),
                              QStringLiteral("FrmLocalisation"));
    Label2 = Control(new QLabel(QStringLiteral("Old Caption:"), FrmLocalisation),
                     QStringLiteral("Label2"));
    LblOldCaption = Control(new QLineEdit(FrmLocalisation), QStringLiteral("LblOldCaption"));
    LblOldCaption->setReadOnly(true);
    Label3 = Control(new QLabel(QStringLiteral("New Caption:"), FrmLocalisation),
                     QStringLiteral("Label3"));
    TxtNewCaption = Control(new QLineEdit(FrmLocalisation), QStringLiteral("TxtNewCaption"));
    Label4 = Control(new QLabel(QStringLiteral("Old Tooltip:"), FrmLocalisation),
                     QStringLiteral("Label4"));
    LblOldTooltip = Control(new QLineEdit(FrmLocalisation), QStringLiteral("LblOldTooltip"));
    LblOldTooltip->setReadOnly(true);
    Label6 = Control(new QLabel(QStringLiteral("New Tooltip:"), FrmLocalisation),
                     QStringLiteral("Label6"));
    TxtNewTooltip = Control(new QLineEdit(FrmLocalisation), QStringLiteral("TxtNewTooltip"));
    TmrBlink = Control(new QTimer(this), QStringLiteral("TmrBlink"));
    TmrBlink->setInterval(500);
    OKButton = Control(new QPushButton(QStringLiteral("OK"), this), QStringLiteral("OKButton"));
    OKButton->setAutoDefault(false);

    auto* fields = new QGridLayout(FrmLocalisation);
    int line = 0;
    for (auto [label, field] : {std::pair<QLabel*, QLineEdit*>{Label2, LblOldCaption},
                                {Label3, TxtNewCaption},
                                {Label4, LblOldTooltip},
                                {Label6, TxtNewTooltip}}) {
        label->setBuddy(field);
        fields->addWidget(label, line++, 0);
        fields->addWidget(field, line++, 0);
    }
    fields->setRowStretch(line, 1);
    auto* right = new QVBoxLayout;
    right->addWidget(FrmLocalisation, 1);
    right->addWidget(OKButton, 0, Qt::AlignRight);
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(LstToLocalise);
    layout->addLayout(right, 1);
    FrmLocalisation->setMinimumWidth(380);

    // A pick, not the current row: an item view makes its first row current
    // when it gets the focus, and that is no choice of the translator.
    connect(LstToLocalise, &QListWidget::itemSelectionChanged, this,
            &DlgLocaliseMain::LstToLocalise_Click);
    connect(TxtNewCaption, &QLineEdit::textChanged, this, &DlgLocaliseMain::TxtNewCaption_Change);
    connect(TxtNewTooltip, &QLineEdit::textChanged, this, &DlgLocaliseMain::TxtNewTooltip_Change);
    connect(TmrBlink, &QTimer::timeout, this, &DlgLocaliseMain::TmrBlink_Timer);
    connect(OKButton, &QPushButton::clicked, this, &DlgLocaliseMain::OKButton_Click);

    Form_Load();
}

DlgLocaliseMain::~DlgLocaliseMain() {
    Form_Unload();
}

void DlgLocaliseMain::Form_Load() {
    if (!stringsMode_) {
        if (target_ != nullptr) {
            setWindowTitle(windowTitle() + target_->objectName());
        }
        LstToLocalise->addItem(TitleText);
        if (target_ != nullptr) {
            for (const platform::ControlInfo& control : platform::ControlsOf(target_)) {
                const bool caption = platform::Caption(control.Object).has_value();
                const bool tip = platform::ToolTipText(control.Object).has_value();
                if (caption || tip) {
                    LstToLocalise->addItem(control.Key());
                }
            }
        }
    } else {
        for (const std::string& name : state_.IdsNames) {
            LstToLocalise->addItem(QString::fromStdString(name));
        }
        // The messages follow the global strings, under their own keys.
        for (const MessageEntry& entry : MessageTable) {
            LstToLocalise->addItem(
                QString::fromLatin1(entry.Key.data(), static_cast<qsizetype>(entry.Key.size())));
        }
    }
    // Wide enough for the longest key.
    const int scrollBar = style()->pixelMetric(QStyle::PM_ScrollBarExtent);
    LstToLocalise->setMinimumWidth(std::max(250, LstToLocalise->sizeHintForColumn(0) + scrollBar +
                                                     2 * LstToLocalise->frameWidth() + 8));
    // Global strings have no tool tip to translate.
    TxtNewTooltip->setEnabled(!stringsMode_);
    LocItem.clear();
    Pending = false;
    TmrBlink->stop();
    LastRow = -1;
}

QString DlgLocaliseMain::RowText(int row) const {
    const QListWidgetItem* item = LstToLocalise->item(row);
    return item != nullptr ? item->text() : QString();
}

void DlgLocaliseMain::LstToLocalise_Click() {
    const QList<QListWidgetItem*> picked = LstToLocalise->selectedItems();
    const int row = picked.isEmpty() ? LastRow : LstToLocalise->row(picked.first());
    if (row == LastRow && LstToLocaliseTag != QLatin1String("1")) {
        return;
    }
    TmrBlink->stop();
    if (Pending) {
        SaveEntry();
    }
    const bool previousVisible = LocVisible;

    if (!stringsMode_) {
        if (target_ == nullptr) {
            return;
        }
        if (row == 0) {
            LocItem = TitleText;
            LocOldCaption = platform::Caption(target_).value_or(QString());
            LocNewCaption = LocOldCaption;
            LocOldTooltip = NotAvailableText;
            LocNewTooltip = NotAvailableText;
            LocIndex = -1;
        }
        if (LastRow == 0) {
            platform::SetCaption(target_, TxtNewCaption->text());
        }
        const QString newKey = RowText(row);
        const QString oldKey = LastRow > 0 ? RowText(LastRow) : QString();
        for (const platform::ControlInfo& control : platform::ControlsOf(target_)) {
            const QString key = control.Key();
            if (row > 0 && key == newKey) {
                LocItem = control.Name;
                LocOldCaption = platform::Caption(control.Object).value_or(NotAvailableText);
                LocOldTooltip = platform::ToolTipText(control.Object).value_or(NotAvailableText);
                LocNewCaption = LocOldCaption;
                LocNewTooltip = LocOldTooltip;
                LocVisible = platform::Visible(control.Object).value_or(true);
                LocIndex = control.Index;
            }
            if (!oldKey.isEmpty() && key == oldKey) {
                platform::SetVisible(control.Object, previousVisible);
                platform::SetCaption(control.Object, TxtNewCaption->text());
            }
        }
    } else if (row >= 0 && row < LstToLocalise->count()) {
        const auto strings = static_cast<int>(state_.IdsTexts.size());
        LocOldTooltip = NotAvailableText;
        LocItem = RowText(row);
        LocMessage = row < strings ? -1 : row - strings;
        LocOldCaption = QString::fromStdString(
            LocMessage < 0 ? state_.IdsTexts[static_cast<std::size_t>(row)]
                           : state_.MsgTexts[static_cast<std::size_t>(LocMessage)]);
        LocNewCaption = LocOldCaption;
        LocIndex = -1;
    }
    if (row < 0) {
        return;
    }

    LblOldCaption->setText(LocOldCaption);
    TxtNewCaption->setText(LocOldCaption);
    LblOldTooltip->setText(LocOldTooltip);
    TxtNewTooltip->setText(LocOldTooltip);
    // Long texts show from their start.
    for (QLineEdit* field : {LblOldCaption, TxtNewCaption, LblOldTooltip, TxtNewTooltip}) {
        field->setCursorPosition(0);
    }

    Pending = true;
    LastRow = row;
    TmrBlink->start();
}

void DlgLocaliseMain::TxtNewCaption_Change() {
    LocNewCaption = TxtNewCaption->text();
    Pending = true;
}

void DlgLocaliseMain::TxtNewTooltip_Change() {
    LocNewTooltip = TxtNewTooltip->text();
    Pending = true;
}

void DlgLocaliseMain::TmrBlink_Timer() {
    if (stringsMode_ || LastRow <= 0 || !TmrBlink->isActive() || target_ == nullptr) {
        return;
    }
    const QString key = RowText(LastRow);
    for (const platform::ControlInfo& control : platform::ControlsOf(target_)) {
        if (control.Key() == key) {
            platform::SetVisible(control.Object, !platform::Visible(control.Object).value_or(true));
            return;
        }
    }
}

void DlgLocaliseMain::OKButton_Click() {
    accept();
}

void DlgLocaliseMain::done(int result) {
    Form_Unload();
    QDialog::done(result);
}

void DlgLocaliseMain::Form_Unload() {
    if (unloaded_) {
        return;
    }
    unloaded_ = true;
    // The last entry is saved, and the blinking control gets its visibility back.
    LstToLocaliseTag = QStringLiteral("1");
    LstToLocalise_Click();
    LstToLocaliseTag.clear();
    TmrBlink->stop();
}

void DlgLocaliseMain::SaveEntry() {
    // A text the file cannot hold is refused; the file keeps the entry as it was.
    const std::optional<std::string> caption = FileText(state_, services_, LocNewCaption);
    if (!caption) {
        return;
    }
    const std::optional<std::string> tooltip = FileText(state_, services_, LocNewTooltip);
    if (!tooltip) {
        return;
    }
    const QString fileName = QString::fromStdString(state_.Settings.LanguageFile);
    const std::optional<QByteArray> bytes = ReadLanguageBytes(state_, services_, fileName);
    if (!bytes) {
        return;
    }
    const std::string_view old(bytes->constData(), static_cast<std::size_t>(bytes->size()));
    if (stringsMode_ && LocMessage >= 0) {
        MessageTexts messages = state_.MsgTexts;
        const std::string saved =
            SaveMessage(old, static_cast<Msg>(LocMessage), *caption, messages);
        if (WriteLanguageFile(state_, services_, fileName, saved)) {
            state_.MsgTexts = messages;
        }
        return;
    }
    const std::optional<std::string> item = FileText(state_, services_, LocItem);
    const std::optional<std::string> form =
        target_ != nullptr ? FileText(state_, services_, target_->objectName()) : std::string();
    if (!item || !form) {
        return;
    }
    LngEdit edit;
    edit.Item = *item;
    edit.Index = LocIndex;
    edit.NewCaption = *caption;
    edit.NewTooltip = *tooltip;
    edit.WithTooltip = LastRow > 0;
    auto texts = state_.IdsTexts;
    const std::string saved =
        quarle::SaveEntry(old, stringsMode_ ? EditMode::Strings : EditMode::Controls, *form, edit,
                          state_.IdsNames, texts);
    if (WriteLanguageFile(state_, services_, fileName, saved)) {
        state_.IdsTexts = texts;
    }
}

} // namespace quarle::ui
