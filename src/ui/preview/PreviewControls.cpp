#include "ui/preview/PreviewControls.h"

#include "platform/Reflection.h"
#include "ui/localisation/Messages.h"

#include <QEvent>
#include <QLabel>
#include <QSlider>
#include <QStyle>
#include <QTimer>

namespace quarle::ui {

using platform::Control;

PlayButton::PlayButton(const AppState& state, const QString& caption, QWidget* parent)
    : QPushButton(caption, parent), state_(state) {
    setCheckable(true);
    setAutoDefault(false);
    setIcon(style()->standardIcon(QStyle::SP_MediaPlay));
    setProperty(platform::CaptionProperty, caption);
    connect(this, &QPushButton::toggled, this, &PlayButton::ShowState);
}

bool PlayButton::event(QEvent* event) {
    if (event->type() == QEvent::DynamicPropertyChange) {
        ShowState(isChecked());
    }
    return QPushButton::event(event);
}

void PlayButton::ShowState(bool playing) {
    setText(playing ? MessageText(state_, MSG_PREVIEW_PAUSE)
                    : property(platform::CaptionProperty).toString());
    setIcon(style()->standardIcon(playing ? QStyle::SP_MediaPause : QStyle::SP_MediaPlay));
}

PreviewControls MakePreviewControls(QWidget* form, const AppState& state, const QString& playTip) {
    PreviewControls c;
    c.CmdPlay = Control(new PlayButton(state, QStringLiteral("Abspielen"), form),
                        QStringLiteral("CmdPlay"));
    c.CmdPlay->setToolTip(playTip);
    c.SldFrame = Control(new QSlider(Qt::Horizontal, form), QStringLiteral("SldFrame"));
    c.SldFrame->setRange(0, 0);
    c.CmdFrameModel = Control(new QPushButton(QStringLiteral("Einpassen (F)"), form),
                              QStringLiteral("CmdFrameModel"));
    c.CmdFrameModel->setToolTip(QStringLiteral("Zeigt das ganze Modell"));
    c.CmdFrameModel->setAutoDefault(false);
    c.LblStatus = Control(new QLabel(form), QStringLiteral("LblStatus"));
    c.LblStatus->setToolTip(QStringLiteral("Was die Vorschau zeigt und was ihr fehlt"));
    c.LblStatus->setWordWrap(true);
    c.TmrTick = Control(new QTimer(form), QStringLiteral("TmrTick"));
    c.TmrTick->setInterval(15);
    return c;
}

} // namespace quarle::ui
