// What the attachment and the controller dialog share: the two views of the
// skeleton, the bone list and the boxes that describe the picked bone.
//
// A view keeps everything painted on it in a picture of its own and is never
// cleared: later paint covers earlier paint, which is how a bone that was
// marked in red turns grey again. Covering and uncovering the dialog shows
// the same picture.
#pragma once

#include "document/Skeleton.h"
#include "platform/TwipsPicture.h"
#include "ui/localisation/LocalisedDialog.h"

#include <functional>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTimer;

namespace quarle::ui {

class MainWindowAccess;

class SkeletonDialog : public LocalisedDialog {
    Q_OBJECT

public:
    // Each view: a grey picture box of this size.
    static constexpr int ViewWidthTwips = 2655;
    static constexpr int ViewHeightTwips = 2535;

    QLabel* Label6 = nullptr;
    platform::TwipsPicture* PicXY = nullptr;
    QLabel* Label7 = nullptr;
    platform::TwipsPicture* PicXZ = nullptr;
    QComboBox* TxtBone = nullptr;
    QGroupBox* Frame2 = nullptr;
    QLabel* Label8 = nullptr;
    QLineEdit* TxtBoneX = nullptr;
    QLabel* Label9 = nullptr;
    QLineEdit* TxtBoneY = nullptr;
    QLabel* Label10 = nullptr;
    QLineEdit* TxtBoneZ = nullptr;
    QLabel* Label11 = nullptr;
    QLineEdit* TxtParent = nullptr;
    QTimer* Timer1 = nullptr;
    QPushButton* OKButton = nullptr;

    // Paints every bone in grey (and, for attachments, the axes through 0);
    // stops Timer1.
    void DrawSkeleton();
    // The click on a bone of TxtBone: everything grey, the name stored, the
    // picked bone and the line to its parent in dark red, its boxes filled.
    void ShowBone();
    void Timer1_Timer();
    // Every change is already in the document: OK only closes.
    void OKButton_Click();

protected:
    SkeletonDialog(AppState& state, platform::Services& services, SkeletonVariant variant,
                   QWidget* parent);

    // The shared controls, created and registered at this point of the
    // form's order; the caller lays them out.
    void CreateSkeletonControls();
    // The views and the bone box, as laid out in both dialogs.
    QWidget* SkeletonPanel();

    // The list of the numbered items (entries 0 to last), showing "1" until
    // the load picks the first entry. click is the list's pick: it runs on
    // every pick, the entry already shown included, and when the typed text
    // names an entry, which it then selects. So after typed text, whose edits
    // reach no table, picking the entry again shows its record afresh.
    QComboBox* CreateItemList(const QString& name, int last, const QString& toolTip,
                              std::function<void()> click);
    // The entry the list shows; -1 when its text was typed over and names no
    // entry.
    static int ItemIndex(const QComboBox* list, int last);
    // OKButton, the default button, connected.
    void CreateOKButton();
    // The item's controls on the left (its number, the active box, the bone,
    // its frame), the skeleton beside them, OK below.
    void LayOut(QLabel* number, QComboBox* list, QCheckBox* active, QLabel* bone, QGroupBox* frame);

    // LoadSkeleton: the tables read afresh and TxtBone filled. The
    // controller dialog runs the start values on their own first.
    void LoadSkeleton();
    void ContinueSkeleton();

    // TxtBone's text, written to the bone name of the item being edited.
    virtual void StoreBoneName(const QString& text) = 0;
    void TxtBone_Change(const QString& text);

    // The index of the bone whose entry is selected and shown; -1 when no
    // entry is, or the text was typed over.
    int SelectedBone() const;
    // Sets TxtBone's text without a change event reaching the tables twice;
    // selects the entry of that name when there is one.
    void SetBoneText(const std::string& name, bool selectEntry);
    // Selects the entry of the bone with this name; false when there is none.
    bool SelectBoneEntry(const std::string& name);

    SkeletonVariant variant_;

private:
    double Screen(double scale, double value) const;
};

} // namespace quarle::ui
