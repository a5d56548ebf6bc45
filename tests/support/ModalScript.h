// Drives code that calls exec(): the script runs once, as soon as a modal
// widget is showing, with that widget. Create it before calling the code.
//
//     ModalScript script([](QWidget* modal) { modal->close(); });
//     form.CmdOpen_Click();
//     EXPECT_TRUE(script.Ran());
//
// The object owns its timer: a script that never ran stops with it and can
// never fire in a later test.
#pragma once

#include <QPointer>
#include <QTimer>
#include <QWidget>
#include <functional>

namespace quarle::test {

class ModalScript {
public:
    using Script = std::function<void(QWidget* modal)>;

    // Polls every pollMs; gives up after timeoutMs (the script then never runs).
    explicit ModalScript(Script script, int timeoutMs = 10000, int pollMs = 10);
    ~ModalScript();
    ModalScript(const ModalScript&) = delete;
    ModalScript& operator=(const ModalScript&) = delete;

    bool Ran() const { return ran_; }
    // The modal widget the script was handed (nullptr before it ran, or once
    // the widget is gone).
    QWidget* Modal() const { return modal_; }

private:
    void Poll();

    Script script_;
    QTimer timer_;
    int remainingPolls_;
    bool ran_ = false;
    QPointer<QWidget> modal_;
};

} // namespace quarle::test
