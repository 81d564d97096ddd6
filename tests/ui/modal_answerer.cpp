#include "modal_answerer.h"

#include <QAbstractButton>
#include <QApplication>
#include <QDialog>
#include <QFileDialog>
#include <QLineEdit>

using namespace std::chrono_literals;

ModalAnswerer::ModalAnswerer() {
    m_timer.setInterval(10ms);
    connect(&m_timer, &QTimer::timeout, this, &ModalAnswerer::poll);
    m_timer.start();
}

void ModalAnswerer::answerBox(QMessageBox::StandardButton button) {
    answer([button](QWidget* modal) {
        auto* box = qobject_cast<QMessageBox*>(modal);
        if (box != nullptr && box->button(button) != nullptr) {
            box->button(button)->click();
        } else if (auto* dialog = qobject_cast<QDialog*>(modal)) {
            dialog->reject();
        }
    });
}

void ModalAnswerer::answerFileDialog(const QString& path) {
    answer([path](QWidget* modal) {
        auto* dialog = qobject_cast<QFileDialog*>(modal);
        if (dialog == nullptr || path.isEmpty()) {
            if (auto* other = qobject_cast<QDialog*>(modal)) {
                other->reject();
            }
            return;
        }
        // Typed into the name box, as a user would: selectFile() waits for
        // the folder to be listed.
        if (auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))) {
            name->setText(path);
        } else {
            dialog->selectFile(path);
        }
        static_cast<QDialog*>(dialog)->accept(); // QFileDialog::accept is protected
    });
}

void ModalAnswerer::clickButton(const QString& buttonName) {
    answer([buttonName](QWidget* modal) {
        if (auto* button = modal->findChild<QAbstractButton*>(buttonName)) {
            button->click();
        } else if (auto* dialog = qobject_cast<QDialog*>(modal)) {
            dialog->reject();
        }
    });
}

void ModalAnswerer::answer(Answer answer) {
    m_answers.push_back(std::move(answer));
}

QStringList ModalAnswerer::seenNames() const {
    QStringList names;
    for (const Seen& seen : m_seen) {
        names << seen.objectName;
    }
    return names;
}

void ModalAnswerer::poll() {
    QWidget* modal = QApplication::activeModalWidget();
    if (modal == nullptr || !modal->isVisible()) {
        return;
    }
    // Each window once, also when it is active again after a box over it.
    m_handled.removeAll(nullptr);
    if (m_handled.contains(modal)) {
        return;
    }
    m_handled.append(modal);
    Seen seen{modal->objectName(), modal->windowTitle(), {}, QMessageBox::NoIcon};
    if (modal->objectName() == QLatin1String("frmConnect")) {
        m_seen.append(seen); // runs by itself
        return;
    }
    if (auto* box = qobject_cast<QMessageBox*>(modal)) {
        seen.text = box->text();
        seen.icon = box->icon();
    }
    m_seen.append(seen);
    if (m_answers.empty()) {
        if (auto* dialog = qobject_cast<QDialog*>(modal)) {
            dialog->reject();
        }
        return;
    }
    Answer next = std::move(m_answers.front());
    m_answers.pop_front();
    // Answer from the event loop, not from inside the poll.
    QTimer::singleShot(0, modal, [modal, next] { next(modal); });
}
