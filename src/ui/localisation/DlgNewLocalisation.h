// A new language made from the active one: a copy of its texts under a new
// name and description. The new file becomes the file the language editor
// writes to; the program goes on showing the old texts.
#pragma once

#include "AppState.h"
#include "platform/Services.h"

#include <QDialog>

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;

namespace quarle::ui {

class DlgNewLocalisation : public QDialog {
    Q_OBJECT

public:
    DlgNewLocalisation(AppState& state, platform::Services& services, QWidget* parent = nullptr);
    ~DlgNewLocalisation() override;

    QLabel* Label1;
    QLineEdit* TxtLanguage;
    QLabel* Label2;
    QPlainTextEdit* TxtDescription;
    QPushButton* OKButton;
    QPushButton* CancelButton;

    void OKButton_Click();
    void CancelButton_Click();

private:
    AppState& state_;
    platform::Services& services_;
};

} // namespace quarle::ui
