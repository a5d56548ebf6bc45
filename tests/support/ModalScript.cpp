#include "ModalScript.h"

#include <QApplication>

namespace quarle::test {

ModalScript::ModalScript(Script script, int timeoutMs, int pollMs)
    : script_(std::move(script)), remainingPolls_(pollMs > 0 ? timeoutMs / pollMs + 1 : 1) {
    timer_.setInterval(pollMs);
    QObject::connect(&timer_, &QTimer::timeout, &timer_, [this] { Poll(); });
    timer_.start();
}

ModalScript::~ModalScript() {
    timer_.stop();
}

void ModalScript::Poll() {
    QWidget* modal = QApplication::activeModalWidget();
    if (modal == nullptr) {
        modal = QApplication::activePopupWidget(); // QMenu::exec()
    }
    if (modal == nullptr || !modal->isVisible()) {
        if (--remainingPolls_ <= 0) {
            timer_.stop();
        }
        return;
    }
    timer_.stop();
    ran_ = true;
    modal_ = modal;
    script_(modal);
}

} // namespace quarle::test
