#pragma once

#include "frequency.h"

#include <QLineEdit>

#include <optional>
#include <string>

namespace zr310::ui {

// The in-place frequency box `txtInputBox` that the channel grid lays over an
// RX Freq or TX Freq cell. It takes digits and "." only; Enter accepts and
// Esc puts back the text it was opened with, both moving the grid one column
// right; leaving the box accepts. Up and Down step the frequency by 6.25 kHz
// up to the band edge in that direction. Copy and Paste are left to the Edit
// menu (no context menu, no drops, no middle-click paste).
class FrequencyBox : public QLineEdit {
    Q_OBJECT
public:
    explicit FrequencyBox(QWidget* parent = nullptr);

    // Shows the box over `cell` with `cellText`, or with `typed` in its place
    // when the box was opened by typing a character on the cell.
    void open(const QRect& cell, const QString& cellText, BandLimits limits,
              const QString& typed = {});
    // Ends the edit as leaving the box does (accepting); nothing when closed.
    void finish();

    bool isOpen() const { return m_open; }
    QString savedText() const { return m_savedText; }

    // What the closed box leaves for the image: the typed frequency brought
    // into the band and onto the channel grids, or nothing when the edit was
    // cancelled or left the text as it was (an unchanged text is no edit).
    std::optional<std::string> frequencyToStore(bool accepted) const;

    // The frequency one 6.25 kHz step up or down, kept within the band.
    static QString stepped(const QString& text, BandLimits limits, bool up);

signals:
    // The edit is over and the box hidden. `accepted` is false after Esc;
    // `moveRight` is true after Enter or Esc.
    void closed(bool accepted, bool moveRight);

protected:
    bool event(QEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;

private:
    void close(bool accepted, bool moveRight);

    bool m_open = false;
    QString m_savedText;
    BandLimits m_limits;
};

} // namespace zr310::ui
