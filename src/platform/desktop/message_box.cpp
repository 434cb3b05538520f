#include "platform/desktop/message_box.h"

#include "core/data/texts.h"
#include "platform/desktop/desktop.h"

#include <QMainWindow>
#include <QMessageBox>

namespace {

QMessageBox::Icon iconOf(BoxIcon icon) {
    switch (icon) {
        case BoxIcon::Critical:
            return QMessageBox::Critical;
        case BoxIcon::Question:
            return QMessageBox::Question;
        case BoxIcon::Exclamation:
            return QMessageBox::Warning;
        case BoxIcon::Information:
            return QMessageBox::Information;
        case BoxIcon::None:
            break;
    }
    return QMessageBox::NoIcon;
}

}  // namespace

BoxAnswer messageBox(const QString& text, BoxIcon icon, const QString& title, BoxButtons buttons) {
    const QString lines = withUnixLineEnds(text);
    const bool asks = buttons == BoxButtons::YesNo;
    QMessageBox box(iconOf(icon), title, lines,
                    asks ? QMessageBox::Yes | QMessageBox::No : QMessageBox::Ok, mainWindow());
    box.setTextFormat(Qt::PlainText);
    box.setTextInteractionFlags(Qt::TextSelectableByMouse);
    if (asks) box.setEscapeButton(QMessageBox::No);
    const int answer = box.exec();
    if (!asks) return BoxAnswer::Ok;
    return answer == QMessageBox::Yes ? BoxAnswer::Yes : BoxAnswer::No;
}
