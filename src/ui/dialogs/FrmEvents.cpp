#include "ui/dialogs/FrmEvents.h"

#include "document/NumberText.h"
#include "document/Text.h"
#include "localisation/GlobalStrings.h"
#include "platform/Cp1252Text.h"
#include "platform/Reflection.h"
#include "ui/common/LimitMessages.h"
#include "ui/common/MainWindowAccess.h"
#include "ui/common/NumberKeys.h"
#include "ui/localisation/Messages.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QIcon>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QSignalBlocker>
#include <QTreeWidget>
#include <QVBoxLayout>
#include <vector>

namespace quarle::ui {

using platform::Control;

namespace {

struct CatalogueRow {
    const char* Number;
    Ids Description;
};

// The event kinds a model can fire, in the order the catalogue lists them.
constexpr CatalogueRow Catalogue[] = {
    {"1000", IDS_EVENT_PLAYERDEAD},
    {"1001", IDS_EVENT_UNINTERRUPTIBLESEQUENCE},
    {"1002", IDS_EVENT_INTERRUPTIBLESEQUENCE},
    {"1003", IDS_EVENT_FIRETRIGGER},
    {"1004", IDS_EVENT_PLAYWAV},
    {"1005", IDS_EVENT_PLAYSENTENCE},
    {"1006", IDS_EVENT_FREEZEPLAYER},
    {"1007", IDS_EVENT_NEXTANIMATION},
    {"1008", IDS_EVENT_PLAYWAVINVOICE},
    {"1009", IDS_EVENT_RANDOMSENTENCE},
    {"1010", IDS_EVENT_PLAYERALIVE},
    {"2001", IDS_EVENT_MONSTERDROPSLIGHTBODY},
    {"2002", IDS_EVENT_MONSTERDROPSHEAVYBODY},
    {"2010", IDS_EVENT_MONSTERPLAYSSWINGSOUND},
    {"2020", IDS_EVENT_MONSTERTURNED180},
    {"5001", IDS_EVENT_MUZZLEFLASHONATTACHMENT0},
    {"5002", IDS_EVENT_SPARKONATTACHMENT},
    {"5004", IDS_EVENT_EMITASOUND},
    {"5011", IDS_EVENT_MUZZLEFLASHONATTACHMENT1},
    {"5021", IDS_EVENT_MUZZLEFLASHONATTACHMENT2},
    {"5031", IDS_EVENT_MUZZLEFLASHONATTACHMENT3},
    {"6001", IDS_EVENT_EJECTSHELLFROMATTACHMENT},
};

QString Number(const std::string& text) {
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

QPushButton* PictureButton(QWidget* form, const char* icon, const char* name) {
    auto* button = Control(new QPushButton(form), QString::fromLatin1(name));
    button->setIcon(QIcon(QStringLiteral(":/icons/%1.png").arg(QLatin1String(icon))));
    button->setFixedSize(34, 30);
    button->setAutoDefault(false);
    return button;
}

} // namespace

FrmEvents::FrmEvents(AppState& state, platform::Services& services, MainWindowAccess& main,
                     QWidget* parent)
    : LocalisedDialog(state, services, parent), main_(main) {
    setObjectName(QStringLiteral("FrmEvents"));
    setWindowTitle(QStringLiteral("Events"));

    LVEvent = Control(new QTreeWidget(this), QStringLiteral("LVEvent"));
    LVEvent->setColumnCount(2);
    LVEvent->setHeaderLabels({QStringLiteral("ID"), QStringLiteral("Name")});
    LVEvent->setRootIsDecorated(false);
    LVEvent->setSelectionMode(QAbstractItemView::ExtendedSelection);
    LVEvent->setUniformRowHeights(true);
    LVEvent->header()->setStretchLastSection(true);
    LVEvent->setColumnWidth(0, 50);
    LVEvent->setMinimumSize(470, 300);
    CmdAdd = PictureButton(this, "arrow_right", "CmdAdd");
    CmdDel = PictureButton(this, "delete", "CmdDel");
    CmdDel->setToolTip(QStringLiteral("L\u00f6sche Animation"));
    LstAnimEvents = Control(new QListWidget(this), QStringLiteral("LstAnimEvents"));
    LstAnimEvents->setSelectionMode(QAbstractItemView::ExtendedSelection);
    LstAnimEvents->setFixedWidth(130);
    LblFrame = Control(new QLabel(QStringLiteral("Frame:"), this), QStringLiteral("LblFrame"));
    TxtFrame = Control(new QLineEdit(this), QStringLiteral("TxtFrame"));
    TxtFrame->setFixedWidth(64);
    LblParameter =
        Control(new QLabel(QStringLiteral("Parameter:"), this), QStringLiteral("LblParameter"));
    TxtParameter = Control(new QLineEdit(this), QStringLiteral("TxtParameter"));
    LblDescription = Control(new QLabel(this), QStringLiteral("LblDescription"));
    LblBeschreibung = Control(new QLabel(this), QStringLiteral("LblBeschreibung"));
    LblBeschreibung->setWordWrap(true);
    LblBeschreibung->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    CmdOK = Control(new QPushButton(QStringLiteral("OK"), this), QStringLiteral("CmdOK"));
    CmdOK->setDefault(true);
    CreateCmdLocalise();

    auto* buttons = new QVBoxLayout;
    buttons->addStretch(1);
    buttons->addWidget(CmdAdd);
    buttons->addWidget(CmdDel);
    buttons->addStretch(1);
    auto* fields = new QGridLayout;
    fields->addWidget(LblFrame, 0, 0);
    fields->addWidget(TxtFrame, 0, 1, Qt::AlignLeft);
    fields->addWidget(LblParameter, 1, 0);
    fields->addWidget(TxtParameter, 1, 1);
    auto* animation = new QVBoxLayout;
    animation->addWidget(LstAnimEvents, 1);
    auto* lists = new QHBoxLayout;
    lists->addWidget(LVEvent, 1);
    lists->addLayout(buttons);
    lists->addLayout(animation);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(CmdLocalise);
    bottom->addStretch(1);
    bottom->addWidget(CmdOK);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(lists, 1);
    layout->addLayout(fields);
    layout->addWidget(LblDescription);
    layout->addWidget(LblBeschreibung);
    layout->addLayout(bottom);
    TxtParameter->setMinimumWidth(240);

    connect(CmdAdd, &QPushButton::clicked, this, &FrmEvents::CmdAdd_Click);
    connect(CmdDel, &QPushButton::clicked, this, &FrmEvents::CmdDel_Click);
    connect(LstAnimEvents, &QListWidget::itemSelectionChanged, this,
            &FrmEvents::LstAnimEvents_Click);
    connect(TxtFrame, &QLineEdit::textChanged, this, &FrmEvents::TxtFrame_Change);
    connect(TxtParameter, &QLineEdit::textChanged, this, &FrmEvents::TxtParameter_Change);
    connect(CmdOK, &QPushButton::clicked, this, &FrmEvents::CmdOK_Click);
    FilterKeys(TxtFrame, 0);
}

FrmEvents::~FrmEvents() = default;

void FrmEvents::Form_Load() {
    LoadLanguage();
    for (const CatalogueRow& row : Catalogue) {
        auto* item = new QTreeWidgetItem(LVEvent);
        item->setText(0, QString::fromLatin1(row.Number));
        item->setText(1, QString::fromStdString(state_.IdsTexts[row.Description]));
    }
    LVEvent->resizeColumnToContents(0);
    if (const AnimRec* anim = main_.CurrentAnim()) {
        for (int i = 1; i <= anim->EventCount; ++i) {
            LstAnimEvents->addItem(Number(IntToText(anim->Events[i].EventId)));
        }
    }
}

void FrmEvents::CmdAdd_Click() {
    AnimRec* anim = main_.CurrentAnim();
    if (anim == nullptr) {
        return;
    }
    for (int row = 0; row < LVEvent->topLevelItemCount(); ++row) {
        const QTreeWidgetItem* item = LVEvent->topLevelItem(row);
        if (!item->isSelected()) {
            continue;
        }
        // EventCount is a byte: the 256th event is refused, the rest kept.
        if (anim->EventCount >= limits::MaxEvents) {
            RefuseAtLimit(state_, services_, MSG_EVENTS_FULL, limits::MaxEvents);
            return;
        }
        {
            // The new row is not selected, and the boxes keep what they show.
            const QSignalBlocker block(LstAnimEvents);
            LstAnimEvents->addItem(item->text(0));
        }
        ++anim->EventCount;
        AnimEventRec& event = anim->Events[LstAnimEvents->count()];
        event.EventId = ToI16(TextToNumber(NumberText(item->text(0))));
        event.Frame = 1;
        event.Parameter.clear();
    }
}

void FrmEvents::CmdDel_Click() {
    AnimRec* anim = main_.CurrentAnim();
    if (anim == nullptr) {
        return;
    }
    std::vector<int> rows;
    for (int i = 0; i < LstAnimEvents->count(); ++i) {
        if (LstAnimEvents->item(i)->isSelected()) {
            rows.push_back(i);
        }
    }
    // From the last to the first, so that the rows still to come keep their
    // places; the table closes up behind each.
    const QSignalBlocker block(LstAnimEvents);
    const EventTable& events = anim->Events;
    for (auto row = rows.rbegin(); row != rows.rend(); ++row) {
        for (int j = *row + 1; j <= anim->EventCount; ++j) {
            const AnimEventRec next = events[j + 1];
            anim->Events[j] = next;
        }
        delete LstAnimEvents->takeItem(*row);
        --anim->EventCount;
    }
    // No row is selected afterwards: the boxes keep their text, and an edit
    // in them reaches no event until a row is clicked.
    LstAnimEvents->clearSelection();
    LstAnimEvents->setCurrentRow(-1);
}

void FrmEvents::LstAnimEvents_Click() {
    const AnimRec* anim = main_.CurrentAnim();
    const int i = LstAnimEvents->currentRow();
    if (anim == nullptr || i < 0) {
        return;
    }
    LstAnimEventsTag = QStringLiteral("1");
    const AnimEventRec& event = anim->Events[i + 1];
    TxtFrame->setText(Number(IntToText(event.Frame)));
    TxtParameter->setText(platform::FromCp1252(event.Parameter));
    LstAnimEventsTag = QStringLiteral("0");
}

void FrmEvents::TxtFrame_Change() {
    AnimRec* anim = main_.CurrentAnim();
    if (anim == nullptr || TxtFrame->text().isEmpty() || LstAnimEventsTag != QLatin1String("0")) {
        return;
    }
    const i16 last = state_.Doc.SmdFrameCount;
    if (TextToNumber(NumberText(TxtFrame->text())) > last) {
        TxtFrame->setText(Number(IntToText(last)));
    }
    // With no row selected the edit lands in the spare slot 0.
    const int slot = LstAnimEvents->currentRow() + 1;
    anim->Events[slot].Frame = ToI16(TextToNumber(NumberText(TxtFrame->text())));
}

void FrmEvents::TxtParameter_Change() {
    AnimRec* anim = main_.CurrentAnim();
    if (anim == nullptr || LstAnimEventsTag != QLatin1String("0")) {
        return;
    }
    if (const std::optional<std::string> text =
            TypedText(state_, services_, TxtParameter->text())) {
        anim->Events[LstAnimEvents->currentRow() + 1].Parameter = *text;
    }
}

void FrmEvents::CmdOK_Click() {
    close();
}

} // namespace quarle::ui
