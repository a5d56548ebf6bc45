// Page "Animationsdateien" of TabSmd: the animations of one sequence group,
// the number of the group, and the name, activity and file of the animation
// on show.
//
// The group is the number in TxtAnimNr and the slot the current row of
// LstAnimations; every handler reads both from the controls again. Entry s of
// the list stands for slot s of the group, which adding, deleting and moving
// keep so.
#include "ui/mainwindow/AnimationsPage.h"

#include "document/InputFile.h"
#include "document/Paths.h"
#include "document/SmdScan.h"
#include "platform/Cp1252Text.h"
#include "ui/common/LimitMessages.h"
#include "ui/dialogs/DlgAnimExt.h"
#include "ui/localisation/Messages.h"
#include "ui/mainwindow/MainWindowShell.h"
#include "ui/mainwindow/ModelFolderList.h"

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

AnimationsPage::AnimationsPage(AppState& state, platform::Services& services,
                               MainWindowControls& controls, const ModelFolderList& folder,
                               MainWindowShell& shell)
    : state_(state), services_(services), c_(controls), folder_(folder), shell_(shell) {
    ConnectAnimationsPage();
}

void AnimationsPage::ConnectAnimationsPage() {
    c_.TxtAnimNr->setValidator(new GroupNumberValidator(c_.TxtAnimNr));
    // The activity is stored as typed: no completion may change the text.
    c_.TxtAnimID->setCompleter(nullptr);
    connect(c_.CmdAnimPfeill, &QPushButton::clicked, this, &AnimationsPage::CmdAnimPfeill_Click);
    connect(c_.CmdAnimPfeilr, &QPushButton::clicked, this, &AnimationsPage::CmdAnimPfeilr_Click);
    connect(c_.TxtAnimNr, &QLineEdit::textChanged, this, &AnimationsPage::TxtAnimNr_Change);
    connect(c_.TxtAnimNr, &QLineEdit::editingFinished, this, [this] {
        if (c_.TxtAnimNr->text().isEmpty()) {
            c_.TxtAnimNr->setText(QStringLiteral("0"));
        }
    });
    connect(c_.LstAnimations, &QListWidget::itemSelectionChanged, this,
            &AnimationsPage::LstAnimations_Click);
    connect(c_.TxtAnimName, &QLineEdit::textChanged, this, &AnimationsPage::TxtAnimName_Change);
    connect(c_.TxtAnimID, &QComboBox::editTextChanged, this, &AnimationsPage::TxtAnimID_Change);
    connect(c_.VScrAnim, &QScrollBar::valueChanged, this, &AnimationsPage::VScrAnim_Change);
    connect(c_.CmdAnimExt, &QPushButton::clicked, this, &AnimationsPage::CmdAnimExt_Click);
}

std::optional<int> AnimationsPage::AnimGroup() const {
    return GroupNumber(c_.TxtAnimNr->text());
}

// ---------------------------------------------------------------------------
// The group on show

void AnimationsPage::CmdAnimPfeill_Click() {
    const int g = AnimGroup().value_or(0);
    c_.TxtAnimNr->setText(QString::number(g <= 0 ? limits::LastSequenceGroup : g - 1));
}

void AnimationsPage::CmdAnimPfeilr_Click() {
    const int g = AnimGroup().value_or(0);
    c_.TxtAnimNr->setText(QString::number(g < limits::LastSequenceGroup ? g + 1 : 0));
}

void AnimationsPage::TxtAnimNr_Change() {
    {
        const QSignalBlocker block(c_.LstAnimations);
        c_.LstAnimations->clear();
        c_.LstAnimations->setCurrentRow(-1);
    }
    const std::optional<int> g = AnimGroup();
    if (!g) {
        // No group while the box is empty: nothing listed, nothing on show.
        c_.TxtAnimName->clear();
        c_.TxtAnimDatei->clear();
        c_.TxtAnimID->setEditText(QString());
        return;
    }
    const auto& group = state_.Doc.Anims[Slot(*g)];
    // The listing ends at the first slot without a file.
    QStringList names;
    for (int i = 0; i <= limits::LastWrittenAnimSlot && !group[Slot(i)].SmdFile.empty(); ++i) {
        names.append(platform::FromCp1252(group[Slot(i)].Name));
    }
    {
        const QSignalBlocker block(c_.LstAnimations);
        c_.LstAnimations->addItems(names);
    }
    // The fields show slot 0 although no entry is selected; with no entry
    // selected their change events write nothing.
    const AnimRec& first = group[0];
    c_.TxtAnimName->setText(platform::FromCp1252(first.Name));
    c_.TxtAnimDatei->setText(platform::FromCp1252(first.SmdFile) + QStringLiteral(".smd"));
    c_.TxtAnimID->setEditText(platform::FromCp1252(first.ActivityId));
}

// ---------------------------------------------------------------------------
// The animation on show

AnimRec* AnimationsPage::CurrentAnim() {
    const int s = c_.LstAnimations->currentRow();
    const std::optional<int> g = AnimGroup();
    if (s < 0 || s > limits::LastAnimSlot || !g) {
        return nullptr;
    }
    return &state_.Doc.Anims[Slot(*g)][Slot(s)];
}

void AnimationsPage::LstAnimations_Click() {
    const AnimRec* current = CurrentAnim();
    if (current == nullptr) {
        return;
    }
    const AnimRec& anim = *current;
    // Copies: the change events below write the same values back.
    const QString file = platform::FromCp1252(anim.SmdFile);
    const QString name = platform::FromCp1252(anim.Name);
    const QString activity = platform::FromCp1252(anim.ActivityId);
    c_.TxtAnimDatei->setText(file + QStringLiteral(".smd"));
    c_.TxtAnimName->setText(name);
    c_.TxtAnimID->setEditText(activity);
    // The last frame of the animation's file, for the dialogs of the
    // animation. A file that is missing leaves the number as it was; one
    // that is there but is not read (a folder, a pipe, ...) is told.
    if (const std::optional<std::string> folder = platform::ToCp1252(folder_.FileListPath())) {
        const std::string file = paths::Join(*folder, anim.SmdFile + ".smd");
        if (!TellUnreadFile(state_, services_, InputFile::Open(file, FileKind::Smd).Problem())) {
            ScanSmdFrames(file, state_.Doc.SmdFrameCount);
        }
    }
}

void AnimationsPage::TxtAnimName_Change() {
    AnimRec* current = CurrentAnim();
    if (current == nullptr) {
        return;
    }
    AnimRec& anim = *current;
    const std::optional<std::string> name = TypedText(state_, services_, c_.TxtAnimName->text());
    if (!name) {
        // Refused: the field goes back to the name the document keeps.
        const QSignalBlocker block(c_.TxtAnimName);
        c_.TxtAnimName->setText(platform::FromCp1252(anim.Name));
        return;
    }
    anim.Name = *name;
    c_.LstAnimations->currentItem()->setText(c_.TxtAnimName->text());
}

void AnimationsPage::TxtAnimID_Change() {
    AnimRec* current = CurrentAnim();
    if (current == nullptr) {
        return;
    }
    AnimRec& anim = *current;
    const std::optional<std::string> activity =
        TypedText(state_, services_, c_.TxtAnimID->currentText());
    if (!activity) {
        const QSignalBlocker block(c_.TxtAnimID);
        c_.TxtAnimID->setEditText(platform::FromCp1252(anim.ActivityId));
        return;
    }
    anim.ActivityId = *activity;
}

// ---------------------------------------------------------------------------
// Adding, deleting and moving animations

void AnimationsPage::AddAnimationsFromFiles() {
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
    for (int row = 0; row < c_.LstFiles->count(); ++row) {
        if (!c_.LstFiles->item(row)->isSelected()) {
            continue;
        }
        const int s = c_.LstAnimations->count();
        if (s >= Limit) {
            ++leftOut;
            continue;
        }
        const QString text = c_.LstFiles->item(row)->text();
        // A file the script's text cannot name is not added.
        const std::optional<std::string> file = TypedText(state_, services_, text);
        if (!file) {
            continue;
        }
        {
            // The new entry is not selected.
            const QSignalBlocker block(c_.LstAnimations);
            c_.LstAnimations->addItem(text);
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

void AnimationsPage::DeleteSelectedAnimations() {
    const std::optional<int> g = AnimGroup();
    if (!g) {
        return;
    }
    auto& group = state_.Doc.Anims[Slot(*g)];
    std::vector<int> rows;
    for (int i = 0; i < c_.LstAnimations->count(); ++i) {
        if (c_.LstAnimations->item(i)->isSelected()) {
            rows.push_back(i);
        }
    }
    const QSignalBlocker block(c_.LstAnimations);
    // From the last to the first, so that the rows still to come keep their
    // places. The records behind the entry move up a slot, whole with their
    // events, up to the slot of the list's count: the free slot behind the
    // last entry comes onto it. Slots further on are not the list's and stay.
    // Where the table ends, its last slot falls free.
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        const int last = std::min(c_.LstAnimations->count(), limits::LastAnimSlot);
        for (int j = *row; j <= last; ++j) {
            group[Slot(j)] = j < limits::LastAnimSlot ? group[Slot(j + 1)] : AnimRec{};
        }
        delete c_.LstAnimations->takeItem(*row);
    }
    // The fields keep their text; no entry is selected.
    c_.LstAnimations->clearSelection();
    c_.LstAnimations->setCurrentRow(-1);
}

void AnimationsPage::VScrAnim_Change() {
    // A two-way button: -1 moves the selected animation up, 1 down; the bar
    // then goes back to 0.
    const int step = c_.VScrAnim->value();
    c_.LstAnimations->setFocus();
    const int s = c_.LstAnimations->currentRow();
    const int count = c_.LstAnimations->count();
    const std::optional<int> g = AnimGroup();
    const bool moves = g && s >= 0 && c_.LstAnimations->item(s)->isSelected() &&
                       ((step < 0 && s > 0) || (step > 0 && s < count - 1)) &&
                       s + step <= limits::LastAnimSlot;
    if (!moves) {
        return; // the bar stays where it is
    }
    auto& group = state_.Doc.Anims[Slot(*g)];
    std::swap(group[Slot(s)], group[Slot(s + step)]);
    QListWidgetItem* here = c_.LstAnimations->item(s);
    QListWidgetItem* there = c_.LstAnimations->item(s + step);
    const QString text = here->text();
    here->setText(there->text());
    there->setText(text);
    // The moved entry stays selected; its fields and frames are shown again.
    c_.LstAnimations->setCurrentRow(s + step);
    c_.VScrAnim->setValue(0);
    c_.LstAnimations->update();
}

void AnimationsPage::CmdAnimExt_Click() {
    if (c_.LstAnimations->currentRow() < 0) {
        return;
    }
    DlgAnimExt dialog(state_, services_, shell_, &shell_.Window());
    connect(&dialog, &LocalisedDialog::LocaliseRequested, this,
            [this](QWidget* form) { shell_.Localise(form); });
    dialog.exec();
}

// ---------------------------------------------------------------------------
// What the preview and the wizards reach of the page

std::optional<std::pair<int, int>> AnimationsPage::PreviewAnimation() const {
    const std::optional<int> g = AnimGroup();
    if (!g) {
        return std::nullopt;
    }
    const int row = c_.LstAnimations->currentRow();
    if (row >= 0 && row <= limits::LastAnimSlot && c_.LstAnimations->item(row)->isSelected()) {
        return std::pair{*g, row};
    }
    if (c_.LstAnimations->count() > 0) {
        return std::pair{*g, 0};
    }
    return std::nullopt;
}

int AnimationsPage::AnimationRowCount() const {
    return c_.LstAnimations->count();
}

void AnimationsPage::AppendAnimationRow(const QString& name) {
    // The new entry is not selected.
    const QSignalBlocker block(c_.LstAnimations);
    c_.LstAnimations->addItem(name);
}

} // namespace quarle::ui
