// Answers for the boxes and dialogs that the program is about to show.
#pragma once

#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>

#include <functional>
#include <vector>

class QWidget;

// A queue of what is expected to come up, in order, each with its answer. Every box or dialog that
// comes up is compared with the head of the queue and answered as a person would, through its
// buttons. An unexpected one fails the test and is dismissed; an unused answer fails it at the end.
class Answers : public QObject {
    Q_OBJECT

public:
    Answers();

    // A message box with just this title, text (carriage returns or line feeds alike), icon and
    // buttons, answered with `press`.
    void box(const QString& text, QMessageBox::Icon icon = QMessageBox::NoIcon,
             const QString& title = QStringLiteral("Lorvanite"),
             QMessageBox::StandardButtons buttons = QMessageBox::Ok,
             QMessageBox::StandardButton press = QMessageBox::Ok);

    // The question with Yes and No.
    void question(const QString& text, QMessageBox::StandardButton press,
                  const QString& title = QStringLiteral("Lorvanite"));

    // The box of a run-time error, whatever its description says beyond `part`.
    void runTimeError(int number, const QString& part = QString());

    // A file dialog in which `path` is typed and accepted. What it proposed is in the seen list.
    void file(const QString& path);

    // A file dialog whose proposed name is accepted as it stands.
    void fileAsProposed();

    // A file dialog that is cancelled.
    void cancelFile();

    // Anything modal, handled by the test itself, which has to close it.
    void custom(const QString& what, std::function<void(QWidget*)> act);

    // What a file dialog showed when it came up.
    struct SeenFileDialog {
        QString title;
        QString folder;
        QString proposed;
        QStringList filters;
        bool saves = false;
    };
    const std::vector<SeenFileDialog>& fileDialogs() const { return m_fileDialogs; }

    // Called after an answer was given, for pictures.
    void beforeAnswer(std::function<void(QWidget*)> look) { m_look = std::move(look); }

    // Fails the running test for answers that were not used, and empties the queue.
    void verify();

    bool isEmpty() const { return m_queue.empty(); }

private:
    struct Expected {
        QString what;
        std::function<QString(QWidget*)> act;  // returns what was wrong, or the empty text
    };

    void expectFile(const QString& what, std::function<void(class QFileDialog*)> act);
    void look();
    void unexpected(QWidget* modal, const QString& why);

    std::vector<Expected> m_queue;
    std::vector<SeenFileDialog> m_fileDialogs;
    std::function<void(QWidget*)> m_look;
    QTimer m_timer;
    QPointer<QWidget> m_answered;  // a later box may lie at the same address
    QPointer<QWidget> m_seen;
};
