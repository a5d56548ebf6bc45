// What the two small dialogs of the body groups share: a label, one text
// field, a button that takes the text, one that cancels, and the localise
// button, hidden unless localisation mode is on. The form applies its
// language when it loads. Each dialog names its controls and handles its
// buttons itself.
#pragma once

#include "ui/localisation/LocalisedDialog.h"

#include <QString>

class QLabel;
class QLineEdit;
class QPushButton;

namespace quarle::ui {

class NameDialog : public LocalisedDialog {
    Q_OBJECT

public:
    QLabel* Label1 = nullptr;

protected:
    // The designed form: names and German captions.
    struct Design {
        QString Form;
        QString Title;
        QString Label;
        QString Field;
        QString FieldText;
        QString Accept;
        QString AcceptCaption;
        QString Cancel;
        QString CancelCaption;
        bool LabelBesideField = false; // else the label stands above the field
        int FieldWidth = 200;          // pixels at least
    };

    // Builds and registers the controls in the order label, field, accept,
    // cancel, localise.
    NameDialog(AppState& state, platform::Services& services, const Design& design,
               QWidget* parent);
    ~NameDialog() override;

    // The common part of Form_Load: the language, then the localise button.
    void LoadForm();

    QLineEdit* field_ = nullptr;
    QPushButton* accept_ = nullptr;
    QPushButton* cancel_ = nullptr;
};

} // namespace quarle::ui
