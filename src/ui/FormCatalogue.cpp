#include "ui/FormCatalogue.h"

#include "ui/compile/DlgCompile.h"
#include "ui/dialogs/DlgAnimExt.h"
#include "ui/dialogs/DlgBindung.h"
#include "ui/dialogs/DlgController.h"
#include "ui/dialogs/DlgModeleinstellungen.h"
#include "ui/dialogs/DlgName.h"
#include "ui/dialogs/DlgOrigin.h"
#include "ui/dialogs/DlgRenameGroup.h"
#include "ui/dialogs/FrmEvents.h"
#include "ui/localisation/DlgSettings.h"
#include "ui/localisation/frmAbout.h"
#include "ui/mainwindow/FrmMain.h"
#include "ui/preview/FrmCompiledModel.h"
#include "ui/preview/FrmPreview.h"
#include "ui/textures/DlgTextureGroup.h"
#include "ui/textures/DlgTexturemode.h"
#include "ui/wizards/AnimWiz1.h"
#include "ui/wizards/AnimWiz2.h"
#include "ui/wizards/AnimWiz3.h"
#include "ui/wizards/AnimWiz4.h"
#include "ui/wizards/AnimWiz5.h"
#include "ui/wizards/Wizard2.h"
#include "ui/wizards/Wizard3.h"
#include "ui/wizards/Wizard4.h"
#include "ui/wizards/Wizard5.h"

#include <QComboBox>
#include <QListWidget>
#include <type_traits>

namespace quarle::ui {
namespace {

using Factory = std::function<std::unique_ptr<QWidget>(FormNeeds&)>;

// A dialog that works through the main window.
template <class Dialog> std::unique_ptr<QWidget> WithMain(FormNeeds& needs) {
    return std::make_unique<Dialog>(needs.State, needs.Services, needs.Main, &needs.Main);
}

// A wizard page outside a run, with a chain of its own that goes with it.
template <class Page> std::unique_ptr<QWidget> WizardPageAlone(FormNeeds& needs) {
    auto* chain = new WizardChain(&needs.Main, {});
    std::unique_ptr<Page> page;
    if constexpr (std::is_constructible_v<Page, AppState&, platform::Services&, WizardChain&,
                                          FrmMain&, QWidget*>) {
        // The last pages also write into the main window.
        page = std::make_unique<Page>(needs.State, needs.Services, *chain, needs.Main, &needs.Main);
    } else {
        page = std::make_unique<Page>(needs.State, needs.Services, *chain, &needs.Main);
    }
    QObject::connect(page.get(), &QObject::destroyed, [chain] { delete chain; });
    return page;
}

} // namespace

const std::vector<CataloguedForm>& FormCatalogue() {
    static const std::vector<CataloguedForm> forms = {
        {"FrmMain", true,
         [](FormNeeds& needs) -> std::unique_ptr<QWidget> {
             return std::make_unique<FrmMain>(needs.State, needs.Services, needs.Settings);
         }},
        {"DlgSettings", true, WithMain<DlgSettings>},
        {"frmAbout", true,
         [](FormNeeds& needs) -> std::unique_ptr<QWidget> {
             return std::make_unique<frmAbout>(needs.State, needs.Services, &needs.Main);
         }},
        {"FrmPreview", true, WithMain<FrmPreview>},
        {"FrmCompiledModel", true,
         [](FormNeeds& needs) -> std::unique_ptr<QWidget> {
             return std::make_unique<FrmCompiledModel>(needs.State, needs.Services, &needs.Main);
         }},
        {"DlgOrigin", true, WithMain<DlgOrigin>},
        {"DlgController", true, WithMain<DlgController>},
        {"Wizard2", true, WizardPageAlone<Wizard2>},
        {"Wizard3", true, WizardPageAlone<Wizard3>},
        {"Wizard4", true, WizardPageAlone<Wizard4>},
        {"Wizard5", true, WizardPageAlone<Wizard5>},
        {"AnimWiz1", true, WizardPageAlone<AnimWiz1>},
        {"AnimWiz2", true, WizardPageAlone<AnimWiz2>},
        {"AnimWiz3", true, WizardPageAlone<AnimWiz3>},
        {"AnimWiz4", true, WizardPageAlone<AnimWiz4>},
        {"AnimWiz5", true, WizardPageAlone<AnimWiz5>},
        {"DlgCompile", true,
         [](FormNeeds& needs) -> std::unique_ptr<QWidget> {
             return std::make_unique<DlgCompile>(needs.State, needs.Services,
                                                 needs.Main.LstAnimations->count(), &needs.Main);
         }},
        {"DlgBindung", true, WithMain<DlgBindung>},
        {"DlgModeleinstellungen", true, WithMain<DlgModeleinstellungen>},
        // DlgName deletes itself when it closes: whoever builds it here
        // must not close it.
        {"DlgName", true,
         [](FormNeeds& needs) -> std::unique_ptr<QWidget> {
             return std::make_unique<DlgName>(needs.State, needs.Services, needs.Main.CmbBodyGroup,
                                              &needs.Main);
         }},
        {"FrmEvents", true, WithMain<FrmEvents>},
        {"DlgAnimExt", true, WithMain<DlgAnimExt>},
        {"DlgRenameGroup", true,
         [](FormNeeds& needs) -> std::unique_ptr<QWidget> {
             return std::make_unique<DlgRenameGroup>(needs.State, needs.Services,
                                                     needs.Main.CmbBodyGroup, &needs.Main);
         }},
        {"DlgTextureGroup", false, WithMain<DlgTextureGroup>},
        {"DlgTexturemode", false, WithMain<DlgTexturemode>},
        // A new form that reads a language file goes here, behind the last
        // one (or where its section stands in the language files).
    };
    return forms;
}

} // namespace quarle::ui
