#include "ui/dialogs/DlgOrigin.h"

#include "document/NumberText.h"
#include "document/Text.h"
#include "localisation/GlobalStrings.h"
#include "platform/Reflection.h"
#include "platform/Twips.h"
#include "ui/common/MainWindowAccess.h"
#include "ui/common/NumberKeys.h"
#include "ui/localisation/Messages.h"

#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMouseEvent>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>
#include <algorithm>
#include <cmath>

namespace quarle::ui {

using platform::Control;

namespace {

constexpr int ViewTwips = 2295;  // width and height of each view
constexpr int TwipsPerUnit = 30; // one origin unit is two pixels
constexpr int LastUnit = 1092;   // the most units a working copy can hold
const QColor AxisColour(192, 192, 192);
const QColor CrossColour(255, 255, 0);

// v taken to the nearest whole number, halves to the even neighbour.
double Whole(double v) {
    return std::nearbyint(v);
}

i16 ToCopy(double twips) {
    return static_cast<i16>(std::clamp(Whole(twips), -32768.0, 32767.0));
}

QString Number(long long value) {
    const std::string text = IntToText(value);
    return QString::fromLatin1(text.data(), static_cast<qsizetype>(text.size()));
}

} // namespace

// ---------------------------------------------------------------------------
// The views

OriginView::OriginView(QWidget* parent) : TwipsPicture(ViewTwips, ViewTwips, Qt::black, parent) {
    setCursor(Qt::CrossCursor);
}

void OriginView::mousePressEvent(QMouseEvent* event) {
    // The press counts at the middle of the pixel under the pointer, so the
    // middle pixel of a view is its centre.
    const QPointF at = event->position();
    emit MouseDown((std::floor(at.x()) + 0.5) * platform::TwipsPerPixel,
                   (std::floor(at.y()) + 0.5) * platform::TwipsPerPixel);
}

// ---------------------------------------------------------------------------
// The dialog

DlgOrigin::DlgOrigin(AppState& state, platform::Services& services, MainWindowAccess& main,
                     QWidget* parent)
    : LocalisedDialog(state, services, parent), main_(main) {
    setObjectName(QStringLiteral("DlgOrigin"));
    setWindowTitle(QStringLiteral("XYZ Verschiebung"));

    Label4 = Control(new QLabel(QStringLiteral("X,Y"), this), QStringLiteral("Label4"));
    PicXYVer = Control(new OriginView(this), QStringLiteral("PicXYVer"));
    PicXYVer->setToolTip(QStringLiteral("XY-Verschiebung"));
    platform::SetControlKind(PicXYVer, platform::ControlKind::Picture);
    Label5 = Control(new QLabel(QStringLiteral("X,Z"), this), QStringLiteral("Label5"));
    PicXZVer = Control(new OriginView(this), QStringLiteral("PicXZVer"));
    PicXZVer->setToolTip(QStringLiteral("XZ-Verschiebung"));
    platform::SetControlKind(PicXZVer, platform::ControlKind::Picture);
    Label1 = Control(new QLabel(QStringLiteral("X:"), this), QStringLiteral("Label1"));
    TxtX = Control(new QLineEdit(QStringLiteral("0"), this), QStringLiteral("TxtX"));
    TxtX->setToolTip(QStringLiteral("X-Verschiebung"));
    Label2 = Control(new QLabel(QStringLiteral("Y:"), this), QStringLiteral("Label2"));
    TxtY = Control(new QLineEdit(QStringLiteral("0"), this), QStringLiteral("TxtY"));
    TxtY->setToolTip(QStringLiteral("Y-Verschiebung"));
    Label3 = Control(new QLabel(QStringLiteral("Z:"), this), QStringLiteral("Label3"));
    TxtZ = Control(new QLineEdit(QStringLiteral("0"), this), QStringLiteral("TxtZ"));
    TxtZ->setToolTip(QStringLiteral("Z-Verschiebung"));
    OKButton = Control(new QPushButton(QStringLiteral("OK"), this), QStringLiteral("OKButton"));
    CancelButton =
        Control(new QPushButton(QStringLiteral("Abbrechen"), this), QStringLiteral("CancelButton"));
    for (QPushButton* button : {OKButton, CancelButton}) {
        button->setAutoDefault(false);
        button->setMinimumWidth(90);
    }
    Timer1 = Control(new QTimer(this), QStringLiteral("Timer1"));
    Timer1->setInterval(100);
    CreateCmdLocalise();

    auto* views = new QGridLayout;
    views->setHorizontalSpacing(12);
    views->addWidget(Label4, 0, 0);
    views->addWidget(PicXYVer, 1, 0);
    views->addWidget(Label5, 0, 1);
    views->addWidget(PicXZVer, 1, 1);
    auto* numbers = new QHBoxLayout;
    for (const auto& [label, box] : {std::pair{Label1, TxtX}, {Label2, TxtY}, {Label3, TxtZ}}) {
        box->setFixedWidth(56);
        numbers->addWidget(label);
        numbers->addWidget(box);
        numbers->addSpacing(8);
    }
    numbers->addStretch(1);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(CmdLocalise);
    bottom->addStretch(1);
    bottom->addWidget(OKButton);
    bottom->addWidget(CancelButton);
    auto* layout = new QVBoxLayout(this);
    layout->addLayout(views);
    layout->addLayout(numbers);
    layout->addSpacing(6);
    layout->addLayout(bottom);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    connect(Timer1, &QTimer::timeout, this, &DlgOrigin::Timer1_Timer);
    connect(PicXYVer, &OriginView::MouseDown, this, &DlgOrigin::PicXYVer_MouseDown);
    connect(PicXZVer, &OriginView::MouseDown, this, &DlgOrigin::PicXZVer_MouseDown);
    OnKeyPress(TxtX, [this](int& key) { TxtX_KeyPress(key); });
    OnKeyPress(TxtY, [this](int& key) { TxtY_KeyPress(key); });
    OnKeyPress(TxtZ, [this](int& key) { TxtZ_KeyPress(key); });
    connect(OKButton, &QPushButton::clicked, this, &DlgOrigin::OKButton_Click);
    connect(CancelButton, &QPushButton::clicked, this, &DlgOrigin::CancelButton_Click);
}

DlgOrigin::~DlgOrigin() = default;

void DlgOrigin::Form_Load() {
    LoadLanguage();
    const AnimRec* anim = main_.CurrentAnim();
    const std::array<i16, 3> record =
        anim != nullptr ? std::array<i16, 3>{anim->OriginX, anim->OriginY, anim->OriginZ}
                        : std::array<i16, 3>{0, 0, 0};
    i16* copies[] = {&state_.OriginEditX, &state_.OriginEditY, &state_.OriginEditZ};
    QLineEdit* boxes[] = {TxtX, TxtY, TxtZ};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        // A number beyond what a view can hold puts the cross at the view's
        // limit; the record keeps it unless the user sets that axis.
        const int units = std::clamp<int>(record[axis], -LastUnit, LastUnit);
        beyondView_[axis] = units != record[axis] ? std::optional<i16>(record[axis]) : std::nullopt;
        *copies[axis] = static_cast<i16>(units * TwipsPerUnit);
        boxes[axis]->setText(Number(record[axis]));
    }
    Timer1->start();
}

void DlgOrigin::Timer1_Timer() {
    Timer1->stop();
    DrawOrigin();
}

void DlgOrigin::DrawOrigin() {
    const auto draw = [](OriginView* view, double offsetX, double offsetY) {
        const double w = platform::WidthTwips(view);
        const double h = platform::HeightTwips(view);
        view->Cls(Qt::black);
        view->Line(0, h / 2, w, h / 2, AxisColour, 0);
        view->Line(w / 2, 0, w / 2, h, AxisColour, 0);
        const double cx = w / 2 + offsetX;
        const double cy = h / 2 + offsetY;
        view->Line(cx - 30, cy, cx + 45, cy, CrossColour, 0);
        view->Line(cx, cy - 30, cx, cy + 45, CrossColour, 0);
    };
    draw(PicXYVer, state_.OriginEditX, state_.OriginEditY);
    draw(PicXZVer, state_.OriginEditX, state_.OriginEditZ);
}

void DlgOrigin::PicXYVer_MouseDown(double x, double y) {
    state_.OriginEditX = ToCopy(x - platform::WidthTwips(PicXYVer) / 2.0);
    state_.OriginEditY = ToCopy(y - platform::HeightTwips(PicXYVer) / 2.0);
    beyondView_[0].reset();
    beyondView_[1].reset();
    TxtX->setText(Number(static_cast<long long>(Whole(state_.OriginEditX / 30.0))));
    TxtY->setText(Number(static_cast<long long>(Whole(state_.OriginEditY / 30.0))));
    DrawOrigin();
}

void DlgOrigin::PicXZVer_MouseDown(double x, double y) {
    state_.OriginEditX = ToCopy(x - platform::WidthTwips(PicXZVer) / 2.0);
    state_.OriginEditZ = ToCopy(y - platform::HeightTwips(PicXZVer) / 2.0);
    beyondView_[0].reset();
    beyondView_[2].reset();
    TxtX->setText(Number(static_cast<long long>(Whole(state_.OriginEditX / 30.0))));
    TxtZ->setText(Number(static_cast<long long>(Whole(state_.OriginEditZ / 30.0))));
    DrawOrigin();
}

void DlgOrigin::TakeNumber(QLineEdit* box, i16& copy, int axis) {
    const std::optional<double> units = StrictNumber(NumberText(box->text()));
    if (!units || std::fabs(*units) > LastUnit) {
        // Nothing to take: the working copy stays, and the user is told why.
        services_.MsgBox(
            MessageText(state_, MSG_ORIGIN_NOT_A_NUMBER, {box->text(), QString::number(LastUnit)}),
            platform::Buttons::Ok, platform::Icon::Exclamation,
            QString::fromStdString(state_.IdsTexts[IDS_ERROR]));
        return;
    }
    copy = ToCopy(*units * TwipsPerUnit);
    beyondView_[static_cast<std::size_t>(axis)].reset();
    DrawOrigin();
}

void DlgOrigin::TxtX_KeyPress(int& keyAscii) {
    if (keyAscii == 13) {
        TakeNumber(TxtX, state_.OriginEditX, 0);
    }
    FilterKey(keyAscii, 3);
}

void DlgOrigin::TxtY_KeyPress(int& keyAscii) {
    if (keyAscii == 13) {
        TakeNumber(TxtY, state_.OriginEditY, 1);
    }
    FilterKey(keyAscii, 3);
}

void DlgOrigin::TxtZ_KeyPress(int& keyAscii) {
    if (keyAscii == 13) {
        TakeNumber(TxtZ, state_.OriginEditZ, 2);
    }
    FilterKey(keyAscii, 3);
}

void DlgOrigin::OKButton_Click() {
    AnimRec* anim = main_.CurrentAnim();
    if (anim != nullptr) {
        // The sum is of what will be stored: a number beyond the view counts
        // with its own value, not with the view's edge that the copy holds.
        // Summed wide, so two large offsets cannot overflow into a false zero.
        const i16 copies[] = {state_.OriginEditX, state_.OriginEditY, state_.OriginEditZ};
        int sum = 0;
        for (std::size_t axis = 0; axis < 3; ++axis) {
            sum += beyondView_[axis] ? *beyondView_[axis] * TwipsPerUnit : copies[axis];
        }
        if (sum != 0) {
            anim->OriginOn = 1;
            i16* fields[] = {&anim->OriginX, &anim->OriginY, &anim->OriginZ};
            for (std::size_t axis = 0; axis < 3; ++axis) {
                *fields[axis] = beyondView_[axis].value_or(
                    static_cast<i16>(Whole(copies[axis] / static_cast<double>(TwipsPerUnit))));
            }
        } else {
            anim->OriginOn = 0;
        }
    }
    close();
}

void DlgOrigin::CancelButton_Click() {
    close();
}

} // namespace quarle::ui
