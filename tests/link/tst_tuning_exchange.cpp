#include "link_test_util.h"
#include "programming_transfer.h"
#include "tuning_exchange.h"

#include <QtTest>

using namespace zr310;
using namespace zr310::test;

Q_DECLARE_METATYPE(zr310::TuneCommand)
Q_DECLARE_METATYPE(zr310::TuningExchange::Result)

namespace {

// Lets the virtual line drive one tuning exchange.
class ExchangeEngine : public LinkEngine {
public:
    ExchangeEngine(TuneCommand command, std::uint8_t code, std::uint8_t value)
        : m_command(command), m_code(code), m_value(value) {}
    LinkAction start() override { return exchange.begin(m_command, m_code, m_value); }
    LinkAction onSendTick() override { return exchange.onSendTick(); }
    LinkAction onReply(std::span<const std::uint8_t> r) override { return exchange.onReply(r); }
    LinkAction onWatchdog() override { return exchange.onWatchdog(); }
    TransferOutcome outcome() const override { return TransferOutcome::Running; }

    TuningExchange exchange;

private:
    TuneCommand m_command;
    std::uint8_t m_code, m_value;
};

constexpr int kTuningValues = 0x2F0; // radio address of column 0x5E

} // namespace

class TestTuningExchange : public QObject {
    Q_OBJECT

private slots:
    void frames_data();
    void frames();
    void session_data();
    void session();
};

void TestTuningExchange::frames_data() {
    QTest::addColumn<TuneCommand>("command");
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("value");
    QTest::addColumn<QByteArray>("frame");
    QTest::newRow("enter") << TuneCommand::Enter << 0x55 << 9 << QByteArray("\x55\x00\x00", 3);
    QTest::newRow("value") << TuneCommand::Value << 0x11 << 0x7F << QByteArray("B\x7F\x01", 3);
    QTest::newRow("confirm") << TuneCommand::Confirm << 0x99 << 3 << QByteArray("D\x03\x02", 3);
    QTest::newRow("cancel") << TuneCommand::Cancel << 0x77 << 1 << QByteArray("\x77\x00\x03", 3);
    QTest::newRow("leave") << TuneCommand::Leave << 0xBB << 0 << QByteArray("\x06");
    QTest::newRow("value, no item") << TuneCommand::Value << 0xBB << 1 << QByteArray();
}

void TestTuningExchange::frames() {
    QFETCH(TuneCommand, command);
    QFETCH(int, code);
    QFETCH(int, value);
    QFETCH(QByteArray, frame);
    const auto packet = tuningFrame(command, std::uint8_t(code), std::uint8_t(value));
    QCOMPARE(packet.has_value(), !frame.isEmpty());
    if (packet) {
        const QByteArray bytes(reinterpret_cast<const char*>(packet->bytes.data()),
                               qsizetype(packet->size));
        QCOMPARE(bytes, frame);
    }
}

// Each row is one exchange, run in order on the same radio, which is put
// into tuning mode first.
void TestTuningExchange::session_data() {
    QTest::addColumn<QList<int>>("exchanges"); // command, code, value; repeated
    QTest::addColumn<QList<int>>("results");   // result, reported value; per exchange
    QTest::addColumn<int>("activeItem");       // afterwards; -1 none
    QTest::addColumn<QList<int>>("stored");    // the five values afterwards

    using R = TuningExchange::Result;
    const int enter = 0, value = 1, confirm = 2, cancel = 3, leave = 4;
    const QList<int> untouched{0x10, 0x20, 0x30, 0x40, 0x50};
    QTest::newRow("enter reports the stored value")
        << QList<int>{enter, 0x33, 0} << QList<int>{int(R::ValueReported), 0x20} << 0x33
        << untouched;
    QTest::newRow("values are live until confirmed")
        << QList<int>{enter, 0x33, 0, value, 0x33, 0x44, confirm, 0x33, 0x45}
        << QList<int>{int(R::ValueReported), 0x20, int(R::Acknowledged), 0, int(R::Acknowledged), 0}
        << -1 << QList<int>{0x10, 0x45, 0x30, 0x40, 0x50};
    QTest::newRow("cancel drops the live value")
        << QList<int>{enter, 0x99, 0, value, 0x99, 0x01, cancel, 0x11, 0}
        << QList<int>{int(R::ValueReported), 0x50, int(R::Acknowledged), 0, int(R::Acknowledged), 0}
        << -1 << untouched;
    QTest::newRow("value without an item is refused")
        << QList<int>{value, 0x11, 0x01} << QList<int>{int(R::Refused), 0} << -1 << untouched;
    QTest::newRow("value for another item is refused")
        << QList<int>{enter, 0x11, 0, confirm, 0x55, 0x01}
        << QList<int>{int(R::ValueReported), 0x10, int(R::Refused), 0} << 0x11 << untouched;
    QTest::newRow("unknown item is refused")
        << QList<int>{enter, 0x44, 0} << QList<int>{int(R::Refused), 0} << -1 << untouched;
    QTest::newRow("value of no item is not sent")
        << QList<int>{value, 0xBB, 1} << QList<int>{int(R::Invalid), 0} << -1 << untouched;
    QTest::newRow("after leaving, nothing answers")
        << QList<int>{enter, 0x77, 0, leave, 0xBB, 0, enter, 0x77, 0}
        << QList<int>{int(R::ValueReported), 0x40, int(R::Acknowledged), 0, int(R::NoAnswer), 0}
        << -1 << untouched;
}

void TestTuningExchange::session() {
    QFETCH(QList<int>, exchanges);
    QFETCH(QList<int>, results);
    QFETCH(int, activeItem);
    QFETCH(QList<int>, stored);

    auto memory = patternedMemory(4);
    for (int i = 0; i < 5; ++i)
        memory[kTuningValues + i] = std::uint8_t(0x10 * (i + 1));
    EmulatedRadio radio(memory);
    RadioImage image;
    LinkFlags flags;
    ProgrammingTransfer enter(TransferKind::EnterTuning, image, flags);
    VirtualLink enterLink(enter);
    enterLink.setRadio(radio);
    QVERIFY(enterLink.run());
    QCOMPARE(enter.outcome(), TransferOutcome::Completed);
    QCOMPARE(image.atAddress(kTuningValues + 2), std::uint8_t(0x30));

    for (int i = 0; i < exchanges.size() / 3; ++i) {
        ExchangeEngine engine(TuneCommand(exchanges[3 * i]), std::uint8_t(exchanges[3 * i + 1]),
                              std::uint8_t(exchanges[3 * i + 2]));
        VirtualLink link(engine);
        link.setRadio(radio);
        QVERIFY(link.run());
        const auto result = engine.exchange.result();
        QCOMPARE(int(result), results[2 * i]);
        if (result == TuningExchange::Result::ValueReported)
            QCOMPARE(int(engine.exchange.reportedValue()), results[2 * i + 1]);
        QCOMPARE(engine.exchange.linkState(), engine.exchange.answered() ? 2 : 1);
    }
    const auto item = radio.activeTuningItem();
    QCOMPARE(item ? int(*item) : -1, activeItem);
    for (int i = 0; i < 5; ++i)
        QCOMPARE(int(radio.memory()[kTuningValues + i]), stored[i]);
}

QTEST_APPLESS_MAIN(TestTuningExchange)
#include "tst_tuning_exchange.moc"
