#include "ui/wizards/AnimWiz5.h"

#include "document/Text.h"
#include "localisation/GlobalStrings.h"
#include "platform/Cp1252Text.h"
#include "platform/Reflection.h"
#include "ui/common/LimitMessages.h"
#include "ui/common/MainWindowAccess.h"
#include "ui/localisation/Messages.h"
#include "ui/wizards/AnimWiz1.h"
#include "ui/wizards/AnimWiz2.h"
#include "ui/wizards/AnimWiz3.h"
#include "ui/wizards/AnimWiz4.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>

namespace quarle::ui {
namespace {

// The whole number in a box of digits; nothing when the box is empty.
std::optional<i16> WholeNumber(const QLineEdit* box) {
    const std::string text = box->text().toStdString();
    if (text.empty()) {
        return std::nullopt;
    }
    return ToI16(TextToNumber(text));
}

} // namespace

AnimWiz5::AnimWiz5(AppState& state, platform::Services& services, WizardChain& chain,
                   MainWindowAccess& main, QWidget* parent)
    : WizardPage(state, services, chain, QStringLiteral("AnimWiz5"),
                 QStringLiteral("Animation-Wizard"), parent),
      main_(main) {
    CmdWeiter = CreateSummary(LblAllRight, LstSumm, QStringLiteral("CmdWeiter"));
    connect(CmdWeiter, &QPushButton::clicked, this, &AnimWiz5::CmdWeiter_Click);
}

void AnimWiz5::Form_Load() {
    LoadPage();
}

void AnimWiz5::Form_Activate() {
    LstSumm->clear();
    const AnimWiz1* name = chain_.Find<AnimWiz1>();
    const AnimWiz2* file = chain_.Find<AnimWiz2>();
    const AnimWiz3* activity = chain_.Find<AnimWiz3>();
    const AnimWiz4* play = chain_.Find<AnimWiz4>();
    if (name == nullptr || file == nullptr || activity == nullptr || play == nullptr) {
        return;
    }
    const auto ids = [this](Ids key) { return QString::fromStdString(state_.IdsTexts[key]); };
    const QString sep = QStringLiteral(": ");
    const QString id = activity->CmbAnimWiz3AnimID->currentText();
    const QString frames = play->ChkAnimWiz4Frame->isChecked()
                               ? play->TxtAnimWiz4FrameStart->text() + QLatin1Char(' ') +
                                     ids(IDS_TO) + QLatin1Char(' ') +
                                     play->TxtAnimWiz4FrameEnd->text()
                               : ids(IDS_ALL);
    // The wizard sets no motion of its own: the animation keeps the flags
    // of the slot it goes to, which a new slot has none of.
    QStringList motion;
    const std::optional<int> g = main_.AnimGroup();
    const int s = main_.AnimationRowCount();
    if (g && s <= limits::LastWrittenAnimSlot) {
        const AnimRec& slot = state_.Doc.Anims[std::size_t(*g)][std::size_t(s)];
        for (const auto& [on, letters] :
             {std::pair{slot.LX, "LX"}, {slot.LY, "LY"}, {slot.LZ, "LZ"}}) {
            if (on == 1) {
                motion.append(QString::fromLatin1(letters));
            }
        }
    }
    LstSumm->addItems({
        QString(),
        ids(IDS_ANIMATION) + QStringLiteral(" - ") + name->TxtAnimWiz1AnimName->text(),
        QString(),
        QStringLiteral("SMD-") + ids(IDS_FILE) + sep + file->TxtAnimWiz2AnimModel->text(),
        ids(IDS_ANIMATIONID) + sep + (id.isEmpty() ? ids(IDS_NONES) : id),
        ids(IDS_LXPARAMETER) + sep +
            (motion.isEmpty() ? ids(IDS_NONES) : motion.join(QLatin1Char(' '))),
        ids(IDS_FPS) + sep + play->TxtAnimWiz4FpS->text(),
        ids(IDS_SHOWPICTURES) + sep + frames,
        ids(IDS_LOOP) + sep + ids(play->ChkAnimWiz4Schleife->isChecked() ? IDS_ON : IDS_OFF),
    });
}

void AnimWiz5::CmdWeiter_Click() {
    const AnimWiz1* name = chain_.Find<AnimWiz1>();
    const AnimWiz2* file = chain_.Find<AnimWiz2>();
    const AnimWiz3* activity = chain_.Find<AnimWiz3>();
    const AnimWiz4* play = chain_.Find<AnimWiz4>();
    const std::optional<int> g = main_.AnimGroup();
    if (name == nullptr || file == nullptr || activity == nullptr || play == nullptr || !g) {
        return;
    }
    // The script keeps slots 0..100 of a group.
    const int s = main_.AnimationRowCount();
    if (s > limits::LastWrittenAnimSlot) {
        RefuseAtLimit(state_, services_, MSG_ANIMATIONS_FULL, limits::LastWrittenAnimSlot + 1);
        return;
    }
    // Texts the document cannot hold are refused before anything changes.
    const QString fileName = file->TxtAnimWiz2AnimModel->text();
    const std::optional<std::string> base =
        TypedText(state_, services_, fileName.left(fileName.size() - 4));
    if (!base) {
        return;
    }
    const std::optional<std::string> animName =
        TypedText(state_, services_, name->TxtAnimWiz1AnimName->text());
    if (!animName) {
        return;
    }
    const std::optional<std::string> activityId =
        TypedText(state_, services_, activity->CmbAnimWiz3AnimID->currentText());
    if (!activityId) {
        return;
    }
    main_.AppendAnimationRow(platform::FromCp1252(*base));
    AnimRec& anim = state_.Doc.Anims[static_cast<std::size_t>(*g)][static_cast<std::size_t>(s)];
    anim.Name = *animName;
    anim.ActivityId = *activityId;
    // An empty speed box means the usual 30 frames per second.
    anim.Fps = WholeNumber(play->TxtAnimWiz4FpS).value_or(i16{30});
    anim.Loop = play->ChkAnimWiz4Schleife->isChecked() ? 1 : 0;
    anim.FrameLimit = play->ChkAnimWiz4Frame->isChecked() ? 1 : 0;
    anim.SmdFile = *base;
    if (anim.FrameLimit == 1) {
        // An empty frame box leaves the slot's frame as it was.
        anim.FrameStart = WholeNumber(play->TxtAnimWiz4FrameStart).value_or(anim.FrameStart);
        anim.FrameEnd = WholeNumber(play->TxtAnimWiz4FrameEnd).value_or(anim.FrameEnd);
    }
    EndRun();
}

} // namespace quarle::ui
