#include "ui/common/NumberKeys.h"

#include "document/Text.h"

#include <QCoreApplication>
#include <QEvent>
#include <QKeyEvent>
#include <QLineEdit>
#include <algorithm>

namespace quarle::ui {
namespace {

class KeyPressFilter : public QObject {
public:
    KeyPressFilter(QLineEdit* box, KeyPressHandler handler)
        : QObject(box), box_(box), handler_(std::move(handler)) {}

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (watched != box_ || event->type() != QEvent::KeyPress) {
            return false;
        }
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->modifiers() & (Qt::ControlModifier | Qt::MetaModifier | Qt::AltModifier)) {
            return false;
        }
        int ascii = 0;
        if (key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter) {
            ascii = 13;
        } else if (key->key() == Qt::Key_Backspace) {
            ascii = 8;
        } else if (key->text().size() == 1 && key->text().at(0).unicode() >= 0x20) {
            ascii = key->text().at(0).unicode();
        } else {
            return false; // types nothing: arrows, Delete, Tab, Escape ...
        }
        const int typed = ascii;
        handler_(ascii);
        if (ascii == typed) {
            return false;
        }
        if (ascii != 0) {
            // The handler typed another character instead (a comma became a point).
            const QString text(QChar(static_cast<char16_t>(ascii)));
            QKeyEvent instead(QEvent::KeyPress, 0, Qt::NoModifier, text);
            box_->removeEventFilter(this);
            QCoreApplication::sendEvent(box_, &instead);
            box_->installEventFilter(this);
        }
        return true;
    }

private:
    QLineEdit* box_;
    KeyPressHandler handler_;
};

} // namespace

void OnKeyPress(QLineEdit* box, KeyPressHandler handler) {
    box->installEventFilter(new KeyPressFilter(box, std::move(handler)));
}

void FilterKeys(QLineEdit* box, int flags, Pasted pasted, Enter enter) {
    OnKeyPress(box, [flags, enter](int& key) {
        if (key != 13 || enter == Enter::Swallowed) {
            FilterKey(key, flags);
        }
    });
    if (pasted == Pasted::Kept) {
        return;
    }
    QObject::connect(box, &QLineEdit::textEdited, box, [box, flags](const QString& text) {
        QString kept;
        for (const QChar c : text) {
            int code = c.unicode() < 128 ? c.unicode() : 0;
            if (code >= 32 && FilterKey(code, flags) != 0) {
                kept.append(QChar(code));
            }
        }
        if (kept != text) {
            const int cursor = box->cursorPosition() - static_cast<int>(text.size() - kept.size());
            box->setText(kept);
            box->setCursorPosition(std::max(0, cursor));
        }
    });
}

std::string NumberText(const QString& text) {
    return text.toLatin1().toStdString();
}

} // namespace quarle::ui
