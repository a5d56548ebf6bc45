// The model settings and the three dialogs of one animation, filled from a
// script loaded through the main window, the walk with its blend, origin and
// events on show. Part of the form gallery (Gallery.cpp calls
// DetailDialogsGallery).
#include "GallerySupport.h"
#include "ui/dialogs/DlgAnimExt.h"
#include "ui/dialogs/DlgModeleinstellungen.h"
#include "ui/dialogs/DlgOrigin.h"
#include "ui/dialogs/FrmEvents.h"

#include <QDir>
#include <QFile>
#include <QListWidget>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTreeWidget>

namespace {

using quarle::gallery::Fail;
using quarle::gallery::Save;

void Show(QDialog& dialog) {
    dialog.setModal(false);
    dialog.show();
}

} // namespace

void DetailDialogsGallery(const QString& folder, const char* languageFile) {
    quarle::gallery::Window window(languageFile);
    quarle::ui::FrmMain& form = window.Start();
    auto& state = *window.State;

    QTemporaryDir model;
    const QDir sample(QStringLiteral(QUARLE_TEST_DATA "/model"));
    for (const QString& name : sample.entryList(QDir::Files)) {
        if (!QFile::copy(sample.filePath(name), QDir(model.path()).filePath(name))) {
            Fail(QStringLiteral("cannot copy %1").arg(name));
        }
    }
    const QString script = QDir(model.path()).filePath(QStringLiteral("robot.qc"));
    QFile qc(script);
    if (!qc.open(QIODevice::WriteOnly)) {
        Fail(QStringLiteral("cannot write %1").arg(script));
        return;
    }
    qc.write(QStringLiteral(
                 "$modelname \"robot.mdl\"\r\n$cd \"%1\"\r\n$cdtexture \"%1\"\r\n"
                 "$scale 1.5\r\n$gamma 2.2\r\n$eyeposition 0 0 64\r\n$sequencegroupsize 128\r\n"
                 "$body body \"robot_ref\"\r\n"
                 "$sequence \"idle\" \"idle\" fps 30 loop ACT_IDLE 1\r\n"
                 "$sequence \"walk\" \"walk\" \"idle\" fps 24 loop frame 2 10 origin 4 -2 3 "
                 "rotate 90 ACT_WALK 1 LX scale 1.25 blend YR -30 45 "
                 "{ event 1004 5 \"common/step1.wav\" } { event 5001 3 \"21\" } "
                 "{ event 1003 8 }\r\n")
                 .arg(model.path())
                 .toUtf8());
    qc.close();
    form.WorkFolder = model.path(); // loadbuffer.dat goes there
    form.Commands().OpenQcFile(script.toStdString());
    form.TabSmd->setCurrentIndex(1);
    form.LstAnimations->setCurrentRow(1);

    {
        quarle::ui::DlgModeleinstellungen settings(state, window.Services, form, &form);
        Show(settings);
        Save(&settings, folder, QStringLiteral("DlgModeleinstellungen"));
    }
    quarle::ui::DlgAnimExt properties(state, window.Services, form, &form);
    Show(properties);
    Save(&properties, folder, QStringLiteral("DlgAnimExt"));
    {
        quarle::ui::FrmEvents events(state, window.Services, form, &properties);
        Show(events);
        events.LVEvent->topLevelItem(4)->setSelected(true);
        events.LstAnimEvents->setCurrentRow(0);
        Save(&events, folder, QStringLiteral("FrmEvents"));
    }
    {
        quarle::ui::DlgOrigin origin(state, window.Services, form, &properties);
        Show(origin);
        QTest::qWait(200); // Timer1 draws the views
        Save(&origin, folder, QStringLiteral("DlgOrigin"));
    }
    if (state.Doc.Anims[0][1].EventCount != 3) {
        Fail(QStringLiteral("the walk was loaded with %1 events, not 3")
                 .arg(state.Doc.Anims[0][1].EventCount));
    }
    quarle::gallery::ExpectNoPrompts(window.Services,
                                     QStringLiteral("the detail dialogs (%1)").arg(languageFile));
}
