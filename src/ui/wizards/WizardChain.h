// The chain of modal pages both wizards are made of, and what their pages
// share.
//
// A page is a form of its own. Next hides it and shows the following page
// modally at the same screen position; Back does the same towards the page
// before. A page is loaded the first time it is shown and stays loaded while
// hidden, so its entries survive Back and Next. Cancel, the close box and the
// Escape key end the run; at the end of a run every page is unloaded, so the
// next run starts from the designed texts. Pages read each other's controls
// through the chain (Find).
#pragma once

#include "AppState.h"
#include "platform/Services.h"
#include "ui/localisation/LocalisedDialog.h"

#include <QPoint>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

class QLabel;
class QLineEdit;
class QListWidget;
class QPushButton;

namespace quarle::ui {

class WizardChain;

class WizardPage : public LocalisedDialog {
    Q_OBJECT

public:
    // Runs each time the page is about to be shown, after its load.
    virtual void Form_Activate() {}

    QLabel* PicQuarle = nullptr;
    // Back (from the second page on; null on a first page) and Cancel, the
    // same on every page.
    QPushButton* CmdZurueck = nullptr;
    QPushButton* CmdAbbrechen = nullptr;
    void CmdZurueck_Click();
    void CmdAbbrechen_Click();
    // Next: on to the following page.
    virtual void CmdWeiter_Click();

protected:
    WizardPage(AppState& state, platform::Services& services, WizardChain& chain,
               const QString& name, const QString& title, QWidget* parent);

    // PicQuarle at its place in the creation order; the picture comes with
    // the load.
    QLabel* CreatePicQuarle();
    // A help text of the page or of one of its frames: wrapped to the given
    // width.
    QLabel* CreateHelpText(QWidget* parent, const QString& name, const QString& text,
                           int width = 360);
    // The arrow button that takes the chosen file of a list into the box
    // below it.
    QPushButton* CreateAssignButton(const QString& name, const QString& toolTip);
    // A button of the row below the page; Back, Cancel and Next come
    // connected.
    QPushButton* CreatePageButton(const QString& name, const QString& caption);
    void CreateCmdZurueck();
    void CreateCmdAbbrechen();
    QPushButton* CreateCmdWeiter();
    // The first steps of every page's load: its language, the picture, the
    // localise button in localisation mode.
    void LoadPage();
    // Lays the page out: the picture on the left, the content beside it, the
    // buttons below, CmdLocalise in front of them; the last button is the
    // default one.
    void LayOut(QLayout* content, std::initializer_list<QPushButton*> buttons);
    // The whole last page: the picture, the question above the summary list,
    // Back, Cancel and the button that finishes (returned), which has the
    // focus.
    QPushButton* CreateSummary(QLabel*& allRight, QListWidget*& summary, const QString& finishName);
    // The content of a page that picks a file of a list: the help, the list
    // with its label, the button that takes the chosen file, and the box that
    // holds it with its label.
    static QLayout* FileChoice(QLabel* help, QLabel* listLabel, QListWidget* list,
                               QPushButton* assign, QLabel* fileLabel, QLineEdit* file);

    void GoNext();
    void GoBack();
    void EndRun(); // Cancel, and the end after the last step

    WizardChain& chain_;
};

class WizardChain {
public:
    using Factory = std::function<WizardPage*(WizardChain&)>;

    // parent: the window the pages belong to. connect: given each page as it
    // loads (the opener connects its localise requests).
    WizardChain(QWidget* parent, std::function<void(LocalisedDialog&)> connect);
    ~WizardChain();
    WizardChain(const WizardChain&) = delete;
    WizardChain& operator=(const WizardChain&) = delete;

    void AddPage(Factory factory);
    // Shows the first page and follows the user's steps until the run ends;
    // then unloads every page.
    void Run();

    // The loaded page of this class, or nullptr.
    template <class P> P* Find() const {
        for (const auto& page : pages_) {
            if (auto* found = dynamic_cast<P*>(page.get())) {
                return found;
            }
        }
        return nullptr;
    }
    QWidget* Parent() const { return parent_; }

private:
    friend class WizardPage;
    enum class Step { None, Next, Back };

    QWidget* parent_;
    std::function<void(LocalisedDialog&)> connect_;
    std::vector<Factory> factories_;
    std::vector<std::unique_ptr<WizardPage>> pages_;
    Step step_ = Step::None;
};

// The names of the "*.smd" files of a folder (any case) and of its
// subfolders ("meshes/body.smd"), as the main window's file list has them;
// none when the folder is empty or missing.
QStringList SmdFilesOf(const QString& folder);

// folder + separator + name, for a file of the folder.
QString InFolder(const QString& folder, const QString& name);
bool FileExistsAt(const QString& path);
// Folders cross into the document as platform::ToCp1252Marked makes them,
// as the main window's own folder picks store them.
QString PathFromDocument(const std::string& folder);
// The file is an .smd file that can be read (InputFile.h: a regular file
// within the size limit of .smd files).
bool FileReadable(const QString& path);

} // namespace quarle::ui
