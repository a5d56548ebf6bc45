// Page "Animationsdateien" of TabSmd: the animations of one sequence group,
// the number of the group, and the name, activity and file of the animation
// on show.
//
// The group is the number in TxtAnimNr and the slot the current row of
// LstAnimations; every handler reads both from the controls again. Entry s of
// the list stands for slot s of the group, which adding, deleting and moving
// keep so.
#include "document/InputFile.h"
#include "document/Paths.h"
#include "document/SmdScan.h"
#include "platform/Cp1252Text.h"
#include "ui/common/LimitMessages.h"
#include "ui/dialogs/DlgAnimExt.h"
#include "ui/localisation/Messages.h"
#include "ui/mainwindow/FrmMain.h"

#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QValidator>
#include <algorithm>
#include <vector>

namespace quarle::ui {
namespace {

std::size_t Slot(int i) {
    return static_cast<std::size_t>(i);
}

// A group number: one or two digits, 0 to 10.
std::optional<int> GroupNumber(const QString& text) {
    if (text.isEmpty() || text.size() > 2) {
        return std::nullopt;
    }
    int value = 0;
    for (const QChar c : text) {
        if (c < QLatin1Char('0') || c > QLatin1Char('9')) {
            return std::nullopt;
        }
        value = value * 10 + (c.unicode() - u'0');
    }
    if (value > limits::LastSequenceGroup) {
        return std::nullopt;
    }
    return value;
}

// TxtAnimNr takes only group numbers. An empty box is allowed while typing;
// left empty, it goes back to group 0.
class GroupNumberValidator : public QValidator {
public:
    using QValidator::QValidator;

    State validate(QString& input, int& /*pos*/) const override {
        if (input.isEmpty()) {
            return Intermediate;
        }
        return GroupNumber(input) ? Acceptable : Invalid;
    }
    void fixup(QString& input) const override {
        if (!GroupNumber(input)) {
            input = QStringLiteral("0");
        }
    }
};

} // namespace

void FrmMain::ConnectAnimationsPage() {
    TxtAnimNr->setValidator(new GroupNumberValidator(TxtAnimNr));
    // The activity is stored as typed: no completion may change the text.
    TxtAnimID->setCompleter(nullptr);
    connect(CmdAnimPfeill, &QPushButton::clicked, this, &FrmMain::CmdAnimPfeill_Click);
    connect(CmdAnimPfeilr, &QPushButton::clicked, this, &FrmMain::CmdAnimPfeilr_Click);
    connect(TxtAnimNr, &QLineEdit::textChanged, this, &FrmMain::TxtAnimNr_Change);
    connect(TxtAnimNr, &QLineEdit::editingFinished, this, [this] {
        if (TxtAnimNr->text().isEmpty()) {
            TxtAnimNr->setText(QStringLiteral("0"));
        }
    });
    connect(LstAnimations, &QListWidget::itemSelectionChanged, this, &FrmMain::LstAnimations_Click);
    connect(TxtAnimName, &QLineEdit::textChanged, this, &FrmMain::TxtAnimName_Change);
    connect(TxtAnimID, &QComboBox::editTextChanged, this, &FrmMain::TxtAnimID_Change);
    connect(VScrAnim, &QScrollBar::valueChanged, this, &FrmMain::VScrAnim_Change);
    connect(CmdAnimExt, &QPushButton::clicked, this, &FrmMain::CmdAnimExt_Click);
}

std::optional<int> FrmMain::AnimGroup() const {
    return GroupNumber(TxtAnimNr->text());
}

// ---------------------------------------------------------------------------
// The group on show

void FrmMain::CmdAnimPfeill_Click() {
    const int g = AnimGroup().value_or(0);
    TxtAnimNr->setText(QString::number(g <= 0 ? limits::LastSequenceGroup : g - 1));
}

void FrmMain::CmdAnimPfeilr_Click() {
    const int g = AnimGroup().value_or(0);
    TxtAnimNr->setText(QString::number(g < limits::LastSequenceGroup ? g + 1 : 0));
}

void FrmMain::TxtAnimNr_Change() {
    {
        const QSignalBlocker block(LstAnimations);
        LstAnimations->clear();
        LstAnimations->setCurrentRow(-1);
    }
    const std::optional<int> g = AnimGroup();
    if (!g) {
        // No group while the box is empty: nothing listed, nothing on show.
        TxtAnimName->clear();
        TxtAnimDatei->clear();
        TxtAnimID->setEditText(QString());
        return;
    }
    const auto& group = state_.Doc.Anims[Slot(*g)];
    // The listing ends at the first slot without a file.
    QStringList names;
    for (int i = 0; i <= limits::LastWrittenAnimSlot && !group[Slot(i)].SmdFile.empty(); ++i) {
        names.append(platform::FromCp1252(group[Slot(i)].Name));
    }
    {
        const QSignalBlocker block(LstAnimations);
        LstAnimations->addItems(names);
    }
    // The fields show slot 0 although no entry is selected; with no entry
    // selected their change events write nothing.
    const AnimRec& first = group[0];
    TxtAnimName->setText(platform::FromCp1252(first.Name));
    TxtAnimDatei->setText(platform::FromCp1252(first.SmdFile) + QStringLiteral(".smd"));
    TxtAnimID->setEditText(platform::FromCp1252(first.ActivityId));
}

// ---------------------------------------------------------------------------
// The animation on show

AnimRec* FrmMain::CurrentAnim() {
    const int s = LstAnimations->currentRow();
    const std::optional<int> g = AnimGroup();
    if (s < 0 || s > limits::LastAnimSlot || !g) {
        return nullptr;
    }
    return &state_.Doc.Anims[Slot(*g)][Slot(s)];
}

void FrmMain::LstAnimations_Click() {
    const AnimRec* current = CurrentAnim();
    if (current == nullptr) {
        return;
    }
    const AnimRec& anim = *current;
    // Copies: the change events below write the same values back.
    const QString file = platform::FromCp1252(anim.SmdFile);
    const QString name = platform::FromCp1252(anim.Name);
    const QString activity = platform::FromCp1252(anim.ActivityId);
    TxtAnimDatei->setText(file + QStringLiteral(".smd"));
    TxtAnimName->setText(name);
    TxtAnimID->setEditText(activity);
    // The last frame of the animation's file, for the dialogs of the
    // animation. A file that is missing leaves the number as it was; one
    // that is there but is not read (a folder, a pipe, ...) is told.
    if (const std::optional<std::string> folder = platform::ToCp1252(FileListPath())) {
        const std::string file = paths::Join(*folder, anim.SmdFile + ".smd");
        if (!TellUnreadFile(state_, services_, InputFile::Open(file, FileKind::Smd).Problem())) {
            ScanSmdFrames(file, state_.Doc.SmdFrameCount);
        }
    }
}

void FrmMain::TxtAnimName_Change() {
    AnimRec* current = CurrentAnim();
    if (current == nullptr) {
        return;
    }
    AnimRec& anim = *current;
    const std::optional<std::string> name = TypedText(state_, services_, TxtAnimName->text());
    if (!name) {
        // Refused: the field goes back to the name the document keeps.
        const QSignalBlocker block(TxtAnimName);
        TxtAnimName->setText(platform::FromCp1252(anim.Name));
        return;
    }
    anim.Name = *name;
    LstAnimations->currentItem()->setText(TxtAnimName->text());
}

void FrmMain::TxtAnimID_Change() {
    AnimRec* current = CurrentAnim();
    if (current == nullptr) {
        return;
    }
    AnimRec& anim = *current;
    const std::optional<std::string> activity =
        TypedText(state_, services_, TxtAnimID->currentText());
    if (!activity) {
        const QSignalBlocker block(TxtAnimID);
        TxtAnimID->setEditText(platform::FromCp1252(anim.ActivityId));
        return;
    }
    anim.ActivityId = *activity;
}

// ---------------------------------------------------------------------------
// Adding, deleting and moving animations

void FrmMain::AddAnimationsFromFiles() {
    const std::optional<int> g = AnimGroup();
    if (!g) {
        return;
    }
    auto& group = state_.Doc.Anims[Slot(*g)];
    // Slots 0..100 are those the script keeps. The files that fit are added;
    // one message at the end says how many were left out.
    constexpr int Limit = limits::LastWrittenAnimSlot + 1;
    int added = 0;
    int leftOut = 0;
    for (int row = 0; row < LstFiles->count(); ++row) {
        if (!LstFiles->item(row)->isSelected()) {
            continue;
        }
        const int s = LstAnimations->count();
        if (s >= Limit) {
            ++leftOut;
            continue;
        }
        const QString text = LstFiles->item(row)->text();
        // A file the script's text cannot name is not added.
        const std::optional<std::string> file = TypedText(state_, services_, text);
        if (!file) {
            continue;
        }
        {
            // The new entry is not selected.
            const QSignalBlocker block(LstAnimations);
            LstAnimations->addItem(text);
        }
        group[Slot(s)].Name = *file;
        group[Slot(s)].SmdFile = *file;
        ++added;
    }
    if (leftOut > 0 && added == 0) {
        RefuseAtLimit(state_, services_, MSG_ANIMATIONS_FULL, Limit);
    } else if (leftOut > 0) {
        RefuseAtLimit(state_, services_, MSG_ANIMATIONS_PARTLY_ADDED,
                      {QString::number(Limit), QString::number(added), QString::number(leftOut)});
    }
}

void FrmMain::DeleteSelectedAnimations() {
    const std::optional<int> g = AnimGroup();
    if (!g) {
        return;
    }
    auto& group = state_.Doc.Anims[Slot(*g)];
    std::vector<int> rows;
    for (int i = 0; i < LstAnimations->count(); ++i) {
        if (LstAnimations->item(i)->isSelected()) {
            rows.push_back(i);
        }
    }
    const QSignalBlocker block(LstAnimations);
    // From the last to the first, so that the rows still to come keep their
    // places. The records behind the entry move up a slot, whole with their
    // events, up to the slot of the list's count: the free slot behind the
    // last entry comes onto it. Slots further on are not the list's and stay.
    // Where the table ends, its last slot falls free.
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        const int last = std::min(LstAnimations->count(), limits::LastAnimSlot);
        for (int j = *row; j <= last; ++j) {
            group[Slot(j)] = j < limits::LastAnimSlot ? group[Slot(j + 1)] : AnimRec{};
        }
        delete LstAnimations->takeItem(*row);
    }
    // The fields keep their text; no entry is selected.
    LstAnimations->clearSelection();
    LstAnimations->setCurrentRow(-1);
}

void FrmMain::VScrAnim_Change() {
    // A two-way button: -1 moves the selected animation up, 1 down; the bar
    // then goes back to 0.
    const int step = VScrAnim->value();
    LstAnimations->setFocus();
    const int s = LstAnimations->currentRow();
    const int count = LstAnimations->count();
    const std::optional<int> g = AnimGroup();
    const bool moves = g && s >= 0 && LstAnimations->item(s)->isSelected() &&
                       ((step < 0 && s > 0) || (step > 0 && s < count - 1)) &&
                       s + step <= limits::LastAnimSlot;
    if (!moves) {
        return; // the bar stays where it is
    }
    auto& group = state_.Doc.Anims[Slot(*g)];
    std::swap(group[Slot(s)], group[Slot(s + step)]);
    QListWidgetItem* here = LstAnimations->item(s);
    QListWidgetItem* there = LstAnimations->item(s + step);
    const QString text = here->text();
    here->setText(there->text());
    there->setText(text);
    // The moved entry stays selected; its fields and frames are shown again.
    LstAnimations->setCurrentRow(s + step);
    VScrAnim->setValue(0);
    LstAnimations->update();
}

void FrmMain::CmdAnimExt_Click() {
    if (LstAnimations->currentRow() < 0) {
        return;
    }
    DlgAnimExt dialog(state_, services_, *this, this);
    connect(&dialog, &LocalisedDialog::LocaliseRequested, this, &FrmMain::Localise);
    dialog.exec();
}

} // namespace quarle::ui
