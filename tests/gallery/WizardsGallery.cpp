// Both wizards walked through the Wizards menu on the sample model folder,
// each page rendered filled in as a user leaves it. Part of the form gallery
// (Gallery.cpp calls WizardsGallery).
#include "GallerySupport.h"
#include "ui/wizards/AnimWiz1.h"
#include "ui/wizards/AnimWiz2.h"
#include "ui/wizards/AnimWiz3.h"
#include "ui/wizards/AnimWiz4.h"
#include "ui/wizards/AnimWiz5.h"
#include "ui/wizards/Wizard2.h"
#include "ui/wizards/Wizard3.h"
#include "ui/wizards/Wizard4.h"
#include "ui/wizards/Wizard5.h"

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QLineEdit>
#include <QListWidget>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTimer>
#include <functional>
#include <vector>

namespace {

using quarle::gallery::Fail;
using quarle::gallery::Save;
using namespace quarle::ui;

// Runs one step per modal page as it shows; a page left over is closed.
void Walk(QAction* menu, std::vector<std::function<void(QWidget*)>> steps) {
    std::size_t next = 0;
    QTimer timer;
    timer.setInterval(5);
    QObject::connect(&timer, &QTimer::timeout, [&] {
        QWidget* page = QApplication::activeModalWidget();
        if (page == nullptr || !page->isVisible()) {
            return;
        }
        if (next >= steps.size()) {
            Fail(QStringLiteral("%1 is left showing").arg(page->objectName()));
            page->close();
            return;
        }
        steps[next++](page);
    });
    timer.start();
    menu->trigger();
    if (next != steps.size()) {
        Fail(QStringLiteral("the wizard ended after %1 pages").arg(next));
    }
}

template <class P> std::function<void(QWidget*)> On(std::function<void(P&)> act) {
    return [act](QWidget* modal) {
        if (auto* page = qobject_cast<P*>(modal)) {
            act(*page);
        } else {
            Fail(QStringLiteral("unexpected page %1").arg(modal->objectName()));
            modal->close();
        }
    };
}

void Select(QListWidget* list, const char* name) {
    const auto found = list->findItems(QString::fromLatin1(name), Qt::MatchExactly);
    if (found.size() != 1) {
        Fail(QStringLiteral("%1 is not listed").arg(QLatin1String(name)));
        return;
    }
    list->setCurrentItem(found.first());
}

} // namespace

void WizardsGallery(const QString& folder, const char* languageFile) {
    quarle::gallery::Window window(languageFile);
    FrmMain& form = window.Start();
    auto& services = window.Services;

    QTemporaryDir model;
    const QDir sample(QStringLiteral(QUARLE_TEST_DATA "/model"));
    for (const QString& name : sample.entryList(QDir::Files)) {
        QFile::copy(sample.filePath(name), QDir(model.path()).filePath(name));
    }
    QDir(model.path()).mkdir(QStringLiteral("textures"));
    const QString skin = QDir(model.path()).filePath(QStringLiteral("textures/skin.bmp"));
    QFile bitmap(skin);
    if (!bitmap.open(QIODevice::WriteOnly) || bitmap.write("BM") != 2) {
        Fail(QStringLiteral("cannot write %1").arg(skin));
    }
    bitmap.close();

    Walk(form.MnuWizardsGrWiz,
         {On<Wizard2>([&](Wizard2& p) {
              services.QueueFolder(QFileInfo(skin).path());
              p.CmdWiz2Texturenpfad->click();
              services.QueueFolder(model.path());
              p.CmdWiz2Modelpfad->click();
              Save(&p, folder, QStringLiteral("Wizard2"));
              p.CmdWeiter->click();
          }),
          On<Wizard3>([&](Wizard3& p) {
              Select(p.LstFiles, "robot_ref.smd");
              p.CmdAssign->click();
              Save(&p, folder, QStringLiteral("Wizard3"));
              p.CmdWeiter->click();
          }),
          On<Wizard4>([&](Wizard4& p) {
              p.ChkWiz4Augen->click();
              p.TxtWiz4AugenZ->setText(QStringLiteral("64"));
              Save(&p, folder, QStringLiteral("Wizard4"));
              p.CmdWeiter->click();
          }),
          On<Wizard5>([&](Wizard5& p) {
              Save(&p, folder, QStringLiteral("Wizard5"));
              p.CmdFertig->click();
          })});

    Walk(form.MnuWizardsAnimWiz, {On<AnimWiz1>([&](AnimWiz1& p) {
                                      p.TxtAnimWiz1AnimName->setText(QStringLiteral("jump"));
                                      Save(&p, folder, QStringLiteral("AnimWiz1"));
                                      p.CmdWeiter->click();
                                  }),
                                  On<AnimWiz2>([&](AnimWiz2& p) {
                                      Select(p.LstFiles, "jump.smd");
                                      p.CmdAssignAnimation->click();
                                      Save(&p, folder, QStringLiteral("AnimWiz2"));
                                      p.CmdWeiter->click();
                                  }),
                                  On<AnimWiz3>([&](AnimWiz3& p) {
                                      p.CmbAnimWiz3AnimID->setEditText(QStringLiteral("ACT_HOP 1"));
                                      Save(&p, folder, QStringLiteral("AnimWiz3"));
                                      p.CmdWeiter->click();
                                  }),
                                  On<AnimWiz4>([&](AnimWiz4& p) {
                                      p.ChkAnimWiz4Frame->click();
                                      p.TxtAnimWiz4FrameStart->setText(QStringLiteral("2"));
                                      p.ChkAnimWiz4Schleife->click();
                                      Save(&p, folder, QStringLiteral("AnimWiz4"));
                                      p.CmdWeiter->click();
                                  }),
                                  On<AnimWiz5>([&](AnimWiz5& p) {
                                      Save(&p, folder, QStringLiteral("AnimWiz5"));
                                      p.CmdWeiter->click();
                                  })});
    if (form.LstAnimations->count() != 1) {
        Fail(QStringLiteral("the animation wizard added no animation"));
    }
    // The two folder choices are the only questions.
    for (const auto& prompt : services.Prompts()) {
        if (prompt.Kind != QStringLiteral("Folder")) {
            Fail(QStringLiteral("wizards (%1) asked: %2").arg(languageFile, prompt.Text));
        }
    }
}
