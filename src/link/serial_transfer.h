#pragma once

// The radio link for the windows and the command line.
//
//   LinkFlags flags;                          // one per process
//   auto* t = new SerialTransfer(TransferKind::Read, "COM1", image, flags);
//   t->setVersion10Warning([](LinkFlags& f) { /* show the warning, set f */ });
//   connect(t, &SerialTransfer::progress, bar, ...);
//   connect(t, &SerialTransfer::finished, this, [](TransferResult r) { ... });
//   t->start();
//
// Port names: "COM1".."COM4", any name availablePortNames() reports, or
// "sim" (ports.h). The transfer changes `image` in place as blocks arrive
// (read) or are stamped (write), so keep it alive until `finished`.
// `finished` is emitted from inside the transfer's own event handling: to
// dispose of the transfer there, use deleteLater(), not delete.
//
// Outcomes (TransferResult), with the texts to show (text_ids.h):
//   Completed    BlockCounter 200. Read: show txt::ReadVersion10 first
//                when flags.radioIsVersion10, then txt::ReadCompleted;
//                write: txt::WriteCompleted.
//   NoResponse   LinkState 1: show unreachableText(port, portProblem)
//                titled txt::CommunicationError (the port's problem when
//                it could not be opened).
//   Interrupted  show messageId (txt::ReadInterrupted for a read,
//                txt::WriteInterrupted for the other kinds) titled
//                txt::Error.
//   Declined     a write to a version-1.0 radio was not continued: nothing.
//   Cancelled    cancel() was called: show messageId (txt::ReadCancelled
//                for a read, txt::WriteCancelled for the other kinds);
//                "END" went out if the radio was in a session.

#include "link_session.h"
#include "link_types.h"
#include "programming_transfer.h"
#include "radio_image.h"
#include "radio_info_transfer.h"
#include "string_table.h"

#include <QMetaType>
#include <QObject>

#include <functional>

namespace zr310 {

struct TransferResult {
    TransferOutcome outcome = TransferOutcome::Running;
    int linkState = 1;
    int blockCounter = 1;
    bool transferFinished = false;
    int messageId = 0;         // the text the transfer window shows, 0 for none
    PortProblem portProblem{}; // why the port could not be opened, if it could not
};

// A programming transfer (read, write, enter tuning mode, write the tuning
// area) over a serial port.
class SerialTransfer : public QObject {
    Q_OBJECT

public:
    SerialTransfer(TransferKind kind, const QString& portName, RadioImage& image, LinkFlags& flags,
                   QObject* parent = nullptr);

    // Shown when a write meets a version-1.0 radio and the flags ask for the
    // warning. It sets the flags as the warning window does (OK: skip and
    // continue; Cancel: all three cleared; the check box: don't show).
    void setVersion10Warning(std::function<void(LinkFlags&)> warning);
    // The date and time stamped into every write block (local time by default).
    void setClock(ProgrammingTransfer::Clock clock) { m_clock = std::move(clock); }

    void start();
    // Stops at the next packet boundary; `finished` follows as always.
    void cancel() { m_session.cancel(); }
    bool isRunning() const { return m_session.isRunning(); }
    TransferKind kind() const { return m_engine.kind(); }
    QString portName() const { return m_portName; }
    TransferResult result() const;
    const ProgrammingTransfer& engine() const { return m_engine; }
    const RadioImage& sentBlocks() const { return m_engine.sentBlocks(); }

signals:
    void progress(int value, int maximum);
    void finished(zr310::TransferResult result);

private:
    QString m_portName;
    LinkFlags& m_flags;
    ProgrammingTransfer::Clock m_clock = currentLocalDateTime;
    ProgrammingTransfer m_engine;
    LinkSession m_session;
    std::function<void(LinkFlags&)> m_warning;
};

// The radio-information read (user text, write date, radio ID) or write
// (user text and the date's first half) of the radio information window.
// `messageId` of the result is what that window shows: nothing for no
// response (show unreachableText), otherwise txt::ReadCompleted or txt::WriteCompleted, also when
// the exchange stopped early, which that window does not tell apart; the outcome does tell it.
class InfoTransfer : public QObject {
    Q_OBJECT

public:
    InfoTransfer(TransferKind kind, const QString& portName, RadioImage& image, LinkFlags& flags,
                 QObject* parent = nullptr);

    void start();
    void cancel() { m_session.cancel(); }
    bool isRunning() const { return m_session.isRunning(); }
    QString portName() const { return m_portName; }
    TransferResult result() const;

signals:
    void finished(zr310::TransferResult result);

private:
    QString m_portName;
    RadioInfoTransfer m_engine;
    LinkSession m_session;
};

// Text txt::VerifyFailed for a write whose read-back differs: the first differing radio
// address as "0x0030" and the number of differing bytes.
QString verifyFailedText(const WriteCheck& check, Language language);

} // namespace zr310

Q_DECLARE_METATYPE(zr310::TransferResult)
