#pragma once

#include "main_form.h"
#include "simulated_radio.h"
#include "string_table.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QFileDialog>
#include <QLineEdit>
#include <QMessageBox>
#include <QPointer>
#include <QTableWidget>
#include <QTest>
#include <QTimer>

#include <deque>
#include <functional>
#include <memory>

// A main window as the program starts it, for one test: on COM1 unless a
// port is given ("sim" for the simulated radio).
inline std::unique_ptr<zr310::ui::MainForm> startWindow(const QString& locale = "en_US",
                                                        const QString& port = {}) {
    zr310::ui::StartOptions options;
    options.locale = QLocale(locale);
    if (!port.isEmpty()) {
        options.portName = port;
    }
    auto window = std::make_unique<zr310::ui::MainForm>(options);
    window->show();
    return window;
}

// An emulated radio holding `contents`, served on a pseudo-terminal, and a
// main window on its port; `window` is null when the radio did not start.
struct RadioBench {
    std::unique_ptr<zr310::SimulatedRadio> radio;
    std::unique_ptr<zr310::ui::MainForm> window;

    explicit RadioBench(const zr310::RadioImage& contents, zr310::EmulatedRadioOptions options = {})
        : radio(std::make_unique<zr310::SimulatedRadio>(contents.toRadioOrder(), options)) {
        std::string error;
        if (!radio->start(error)) {
            qWarning("emulated radio: %s", error.c_str());
            return;
        }
        window = startWindow("en_US", QString::fromStdString(radio->devicePath()));
    }
    template <typename T> T ask(T (zr310::EmulatedRadio::*get)() const) const {
        T value{};
        radio->withRadio([&](zr310::EmulatedRadio& r) { value = (r.*get)(); });
        return value;
    }
};

template <typename T = QWidget> T* child(QObject* window, const QString& name) {
    T* found = window->findChild<T*>(name);
    if (found == nullptr) {
        qWarning("no child %s", qPrintable(name));
    }
    return found;
}

inline void trigger(QObject* window, const QString& action) {
    child<QAction>(window, action)->trigger();
}

inline QTableWidgetItem* cell(QObject* window, int row, int column) {
    return child<QTableWidget>(window, "channelGrid")->item(row, column);
}

// A string-table text as a label or message box shows it.
inline QString text(int id, zr310::Language language = zr310::Language::English) {
    return QString::fromUtf8(zr310::ResString(id, language)).replace("\r\r\n", "\n");
}

// How ModalAnswerer logs a window: its name, title and, for message boxes, text.
inline QString seen(const QString& name, int titleId, const QString& body = {},
                    zr310::Language language = {}) {
    return name + ": " + text(titleId, language) + (body.isEmpty() ? "" : ": " + body);
}

// Answers the modal windows a test provokes, in the order they appear, and
// logs each as "name: title" (message boxes also ": text"). A window with no
// answer queued goes to `otherwise`, which closes it as Esc would; the
// progress window frmConnect runs by itself. Only one may live at a time.
class ModalAnswerer {
public:
    using Answer = std::function<void(QWidget* modal)>;
    // Clicks the button, or closes the window as Esc would when there is none.
    static void click(QWidget* modal, QAbstractButton* button = nullptr) {
        if (button != nullptr) {
            button->click();
        } else if (auto* dialog = qobject_cast<QDialog*>(modal)) {
            dialog->reject();
        }
    }

    ModalAnswerer() {
        QObject::connect(&m_timer, &QTimer::timeout, [this] { poll(); });
        m_timer.start(10);
    }
    void answer(Answer answer) { m_answers.push_back(std::move(answer)); }
    void answerBox(QMessageBox::StandardButton button) {
        answer([button](QWidget* modal) {
            auto* box = qobject_cast<QMessageBox*>(modal);
            click(modal, box != nullptr ? box->button(button) : nullptr);
        });
    }
    // Types the path into the file dialog's name box, as a user would, and
    // accepts it.
    void answerFileDialog(const QString& path) {
        answer([path](QWidget* modal) {
            auto* name = modal->findChild<QLineEdit*>("fileNameEdit");
            if (qobject_cast<QFileDialog*>(modal) == nullptr || name == nullptr) {
                return click(modal);
            }
            name->setText(path);
            static_cast<QDialog*>(modal)->accept(); // QFileDialog::accept is protected
        });
    }
    const QStringList& log() const { return m_log; }

    Answer otherwise = [](QWidget* modal) { click(modal); };

private:
    void poll() {
        QWidget* modal = QApplication::activeModalWidget();
        // Each window once, also when it is active again after a box over it.
        m_handled.removeAll(nullptr);
        if (modal == nullptr || !modal->isVisible() || m_handled.contains(modal)) {
            return;
        }
        m_handled.append(modal);
        m_log << modal->objectName() + ": " + modal->windowTitle();
        if (auto* box = qobject_cast<QMessageBox*>(modal)) {
            m_log.last() += ": " + box->text();
        }
        if (modal->objectName() == "frmConnect") {
            return;
        }
        Answer next = otherwise;
        if (!m_answers.empty()) {
            next = std::move(m_answers.front());
            m_answers.pop_front();
        }
        // Answered from the event loop, not from inside the poll.
        QTimer::singleShot(0, modal, [modal, next] { next(modal); });
    }

    QTimer m_timer;
    std::deque<Answer> m_answers;
    QStringList m_log;
    QList<QPointer<QWidget>> m_handled;
};
