#pragma once

#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QString>
#include <QTimer>

#include <deque>
#include <functional>

// Answers the modal windows a test provokes, in the order they appear, so
// that no test waits on a box. A modal window that no answer was queued for
// is recorded and rejected; the progress window `frmConnect` is recorded and
// left alone.
class ModalAnswerer : public QObject {
    Q_OBJECT
public:
    struct Seen {
        QString objectName;
        QString title;
        QString text; // message boxes: their text
        QMessageBox::Icon icon = QMessageBox::NoIcon;
    };
    using Answer = std::function<void(QWidget* modal)>;

    // Only one answerer may live at a time: two would both answer.
    ModalAnswerer();

    void answerBox(QMessageBox::StandardButton button);
    // Selects path in a file dialog and accepts it; an empty path cancels.
    void answerFileDialog(const QString& path);
    // Clicks the child button of this object name.
    void clickButton(const QString& buttonName);
    void answer(Answer answer);

    const QList<Seen>& seen() const { return m_seen; }
    QStringList seenNames() const;
    int pending() const { return static_cast<int>(m_answers.size()); }

private:
    void poll();

    QTimer m_timer;
    std::deque<Answer> m_answers;
    QList<Seen> m_seen;
    QList<QPointer<QWidget>> m_handled;
};
