#pragma once

#include "main_form.h"

#include <QAction>
#include <QMenu>
#include <QTableWidget>
#include <QTest>

#include <memory>

// A main window as the program starts it, for one test.
inline std::unique_ptr<zr310::ui::MainForm> startWindow(const QString& locale = "en_US",
                                                        const QString& port = "sim") {
    zr310::ui::StartOptions options;
    options.locale = QLocale(locale);
    options.portName = port;
    auto window = std::make_unique<zr310::ui::MainForm>(options);
    window->show();
    return window;
}

template <typename T> T* child(QObject* window, const QString& name) {
    T* found = window->findChild<T*>(name);
    if (found == nullptr) {
        qWarning("no child %s", qPrintable(name));
    }
    return found;
}

inline QAction* action(QObject* window, const QString& name) {
    return child<QAction>(window, name);
}

inline QString cell(QObject* window, int row, int column) {
    return child<QTableWidget>(window, "channelGrid")->item(row, column)->text();
}

inline QColor cellColour(QObject* window, int row, int column) {
    return child<QTableWidget>(window, "channelGrid")->item(row, column)->foreground().color();
}
