#include "ui/wizards/WizardChain.h"

#include "document/InputFile.h"
#include "document/Paths.h"
#include "platform/Cp1252Text.h"
#include "platform/Reflection.h"

#include <QDir>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QPixmap>
#include <QPushButton>
#include <QStyle>
#include <QVBoxLayout>
#include <algorithm>

namespace quarle::ui {
namespace {

// The mascot's picture keeps this size on every page (2400 x 3600 twips);
// a larger picture is scaled down into it.
constexpr int PictureWidth = 160;
constexpr int PictureHeight = 240;

} // namespace

// ---------------------------------------------------------------------------
// A page

WizardPage::WizardPage(AppState& state, platform::Services& services, WizardChain& chain,
                       const QString& name, const QString& title, QWidget* parent)
    : LocalisedDialog(state, services, parent), chain_(chain) {
    setObjectName(name);
    setWindowTitle(title);
    setModal(true);
}

QLabel* WizardPage::CreatePicQuarle() {
    PicQuarle = platform::Control(new QLabel(this), QStringLiteral("PicQuarle"));
    PicQuarle->setFixedSize(PictureWidth, PictureHeight);
    PicQuarle->setAlignment(Qt::AlignCenter);
    return PicQuarle;
}

QLabel* WizardPage::CreateHelpText(QWidget* parent, const QString& name, const QString& text,
                                   int width) {
    auto* label = platform::Control(new QLabel(text, parent), name);
    label->setWordWrap(true);
    label->setFixedWidth(width);
    return label;
}

QPushButton* WizardPage::CreateAssignButton(const QString& name, const QString& toolTip) {
    auto* button = platform::Control(new QPushButton(this), name);
    button->setIcon(style()->standardIcon(QStyle::SP_ArrowDown));
    button->setIconSize(QSize(24, 24));
    button->setFixedSize(40, 32);
    button->setAutoDefault(false);
    button->setToolTip(toolTip);
    return button;
}

QPushButton* WizardPage::CreatePageButton(const QString& name, const QString& caption) {
    return platform::Control(new QPushButton(caption, this), name);
}

void WizardPage::CreateCmdZurueck() {
    CmdZurueck = CreatePageButton(QStringLiteral("CmdZurueck"), QStringLiteral("<-- Zur\u00fcck"));
    connect(CmdZurueck, &QPushButton::clicked, this, &WizardPage::CmdZurueck_Click);
}

void WizardPage::CreateCmdAbbrechen() {
    CmdAbbrechen = CreatePageButton(QStringLiteral("CmdAbbrechen"), QStringLiteral("Abbrechen"));
    connect(CmdAbbrechen, &QPushButton::clicked, this, &WizardPage::CmdAbbrechen_Click);
}

void WizardPage::CmdZurueck_Click() {
    GoBack();
}

void WizardPage::CmdAbbrechen_Click() {
    EndRun();
}

void WizardPage::CmdWeiter_Click() {
    GoNext();
}

QPushButton* WizardPage::CreateCmdWeiter() {
    QPushButton* next = CreatePageButton(QStringLiteral("CmdWeiter"), QStringLiteral("Weiter -->"));
    connect(next, &QPushButton::clicked, this, &WizardPage::CmdWeiter_Click);
    return next;
}

void WizardPage::LoadPage() {
    LoadLanguage();
    if (PicQuarle != nullptr) {
        // A missing or broken picture leaves the place empty.
        const QPixmap picture(services_.ProgramFolder() + QStringLiteral("/bilder/quarle.jpg"));
        if (!picture.isNull()) {
            PicQuarle->setPixmap(picture.size().boundedTo(PicQuarle->size()) == picture.size()
                                     ? picture
                                     : picture.scaled(PicQuarle->size(), Qt::KeepAspectRatio,
                                                      Qt::SmoothTransformation));
        }
    }
}

void WizardPage::LayOut(QLayout* content, std::initializer_list<QPushButton*> buttons) {
    auto* top = new QHBoxLayout;
    if (PicQuarle != nullptr) {
        top->addWidget(PicQuarle, 0, Qt::AlignTop);
    }
    top->addLayout(content, 1);
    auto* row = new QHBoxLayout;
    row->addWidget(CmdLocalise);
    row->addStretch();
    for (QPushButton* button : buttons) {
        button->setAutoDefault(false);
        row->addWidget(button);
    }
    // Enter goes on (or finishes) while that is open.
    if (buttons.size() > 0) {
        (*(buttons.end() - 1))->setDefault(true);
    }
    auto* page = new QVBoxLayout(this);
    page->addLayout(top, 1);
    page->addLayout(row);
    page->setSizeConstraint(QLayout::SetFixedSize);
}

QPushButton* WizardPage::CreateSummary(QLabel*& allRight, QListWidget*& summary,
                                       const QString& finishName) {
    CreatePicQuarle();
    allRight = platform::Control(new QLabel(QStringLiteral("Sind alle Angaben so richtig:"), this),
                                 QStringLiteral("LblAllRight"));
    summary = platform::Control(new QListWidget(this), QStringLiteral("LstSumm"));
    summary->setMinimumSize(380, 220);
    summary->setSelectionMode(QAbstractItemView::NoSelection);
    CreateCmdZurueck();
    CreateCmdAbbrechen();
    QPushButton* finish = CreatePageButton(finishName, QStringLiteral("Fertigstellen"));
    CreateCmdLocalise();
    // The page opens ready to finish.
    finish->setFocus();
    auto* content = new QVBoxLayout;
    content->addWidget(allRight);
    content->addWidget(summary, 1);
    LayOut(content, {CmdZurueck, CmdAbbrechen, finish});
    return finish;
}

QLayout* WizardPage::FileChoice(QLabel* help, QLabel* listLabel, QListWidget* list,
                                QPushButton* assign, QLabel* fileLabel, QLineEdit* file) {
    auto* content = new QVBoxLayout;
    content->addWidget(help);
    content->addWidget(listLabel);
    content->addWidget(list);
    content->addWidget(assign, 0, Qt::AlignHCenter);
    auto* row = new QGridLayout;
    row->addWidget(fileLabel, 0, 0);
    row->addWidget(file, 0, 1);
    content->addLayout(row);
    content->addStretch();
    return content;
}

void WizardPage::GoNext() {
    chain_.step_ = WizardChain::Step::Next;
    done(Accepted);
}

void WizardPage::GoBack() {
    chain_.step_ = WizardChain::Step::Back;
    done(Accepted);
}

void WizardPage::EndRun() {
    chain_.step_ = WizardChain::Step::None;
    done(Rejected);
}

// ---------------------------------------------------------------------------
// The chain

WizardChain::WizardChain(QWidget* parent, std::function<void(LocalisedDialog&)> connect)
    : parent_(parent), connect_(std::move(connect)) {}

WizardChain::~WizardChain() = default;

void WizardChain::AddPage(Factory factory) {
    factories_.push_back(std::move(factory));
    pages_.emplace_back();
}

void WizardChain::Run() {
    std::optional<QPoint> position;
    std::size_t current = 0;
    while (current < factories_.size()) {
        if (!pages_[current]) {
            pages_[current].reset(factories_[current](*this));
            if (connect_) {
                connect_(*pages_[current]);
            }
        }
        WizardPage& page = *pages_[current];
        // The page's inside goes where the last page's inside was. A move()
        // would place the frame, whose size a window manager tells only
        // after a page is on the screen: each page came up a title bar
        // higher than the last.
        if (position) {
            page.setGeometry(QRect(*position, page.sizeHint()));
        }
        page.Form_Activate();
        // The close box and Escape end the run as Cancel does.
        step_ = Step::None;
        page.exec();
        position = page.geometry().topLeft();
        if (step_ == Step::Next) {
            ++current;
        } else if (step_ == Step::Back && current > 0) {
            --current;
        } else {
            break;
        }
    }
    // Unloads the pages, the last first.
    while (!pages_.empty()) {
        pages_.pop_back();
    }
    factories_.clear();
}

// ---------------------------------------------------------------------------
// Helpers

QStringList SmdFilesOf(const QString& folder) {
    if (folder.isEmpty()) {
        return {};
    }
    QStringList names;
    for (const std::string& name :
         paths::ListFilesBelow(platform::ToCp1252Marked(folder), ".smd")) {
        names.append(platform::FromCp1252(name));
    }
    return names;
}

QString InFolder(const QString& folder, const QString& name) {
    return platform::FromCp1252(
        paths::Join(platform::ToCp1252Marked(folder), platform::ToCp1252Marked(name)));
}

bool FileExistsAt(const QString& path) {
    return !path.isEmpty() && paths::FileExists(platform::ToCp1252Marked(path));
}

QString PathFromDocument(const std::string& folder) {
    return platform::FromCp1252(folder);
}

bool FileReadable(const QString& path) {
    return static_cast<bool>(InputFile::Open(platform::ToCp1252Marked(path), FileKind::Smd));
}

} // namespace quarle::ui
