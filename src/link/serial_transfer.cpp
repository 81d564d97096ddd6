#include "serial_transfer.h"

namespace zr310 {

SerialTransfer::SerialTransfer(TransferKind kind, const QString& portName, RadioImage& image,
                               LinkFlags& flags, QObject* parent)
    : QObject(parent), m_portName(portName), m_flags(flags),
      m_engine(kind, image, flags, [this] { return m_clock(); }), m_session(m_engine, portName) {
    connect(&m_session, &LinkSession::progress, this, &SerialTransfer::progress);
    connect(&m_session, &LinkSession::finished, this, [this] { emit finished(result()); });
    m_session.setWarningHandler([this] {
        if (m_warning)
            m_warning(m_flags);
    });
}

void SerialTransfer::setVersion10Warning(std::function<void(LinkFlags&)> warning) {
    m_warning = std::move(warning);
}

void SerialTransfer::start() {
    m_session.start();
}

TransferResult SerialTransfer::result() const {
    return {.outcome = m_engine.outcome(),
            .linkState = m_engine.linkState(),
            .blockCounter = m_engine.blockCounter(),
            .transferFinished = m_engine.transferFinished(),
            .messageId = m_engine.messageId(),
            .portProblem = m_session.portProblem()};
}

InfoTransfer::InfoTransfer(TransferKind kind, const QString& portName, RadioImage& image,
                           LinkFlags& flags, QObject* parent)
    : QObject(parent), m_portName(portName), m_engine(kind, image, flags),
      m_session(m_engine, portName) {
    connect(&m_session, &LinkSession::finished, this, [this] { emit finished(result()); });
}

void InfoTransfer::start() {
    m_session.start();
}

TransferResult InfoTransfer::result() const {
    return {.outcome = m_engine.outcome(),
            .linkState = m_engine.linkState(),
            .blockCounter = m_engine.blockCounter(),
            .transferFinished = m_engine.transferFinished(),
            .messageId = m_engine.windowMessageId(),
            .portProblem = m_session.portProblem()};
}

QString verifyFailedText(const WriteCheck& check, Language language) {
    const auto text = ResString(txt::VerifyFailed, language);
    const QString address =
        QStringLiteral("0x") +
        QString::number(check.firstAddress, 16).rightJustified(4, '0').toUpper();
    return QString::fromUtf8(text.data(), qsizetype(text.size()))
        .arg(address)
        .arg(check.differingBytes);
}

} // namespace zr310
