#include "ui/dialogs/NumberKeys.h"

#include "document/Text.h"

#include <QCoreApplication>
#include <QKeyEvent>
#include <QLineEdit>

namespace quarle::ui {

namespace {

class NumberKeyFilter : public QObject {
public:
    NumberKeyFilter(QLineEdit* field, int flags) : QObject(field), flags_(flags) {}

    bool eventFilter(QObject* watched, QEvent* event) override {
        if (event->type() != QEvent::KeyPress) {
            return false;
        }
        auto* press = static_cast<QKeyEvent*>(event);
        const QString text = press->text();
        if (text.size() != 1 || !text[0].isPrint() ||
            (press->modifiers() & (Qt::ControlModifier | Qt::AltModifier)) != 0) {
            return false;
        }
        const char16_t typed = text[0].unicode();
        int key = typed < 128 ? int(typed) : 0;
        if (FilterKey(key, flags_) == 0) {
            return true;
        }
        if (key != typed) {
            static_cast<QLineEdit*>(watched)->insert(QString(QChar(key)));
            return true;
        }
        return false;
    }

private:
    int flags_;
};

} // namespace

void FilterNumberKeys(QLineEdit* field, int flags) {
    field->installEventFilter(new NumberKeyFilter(field, flags));
}

} // namespace quarle::ui
