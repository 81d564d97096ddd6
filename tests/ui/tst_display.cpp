// What ReFlashData shows for an image: grid cells and their colours, the
// boxes beside the grid, the model frame and the option lists.
#include "channel.h"
#include "main_form.h"
#include "modal_answerer.h"
#include "options.h"
#include "string_table.h"
#include "ui_test_support.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>

using namespace zr310;

namespace {

constexpr std::size_t kOptionBits = 0x257; // bit 1: the radio is narrow band
constexpr std::size_t kPowerSelection = 0x256;

QString text(int id, Language language) {
    return QString::fromUtf8(ResString(id, language));
}

// Cell colours by letter: N the grid's text colour, g the system's grey
// text, G green 0x608030, R dark red 0x000090, M mid grey 0x808080 (all
// written 0x00BBGGRR).
QColor expectedColour(QChar letter, QWidget* grid) {
    switch (letter.toLatin1()) {
    case 'G':
        return QColor(0x30, 0x80, 0x60);
    case 'R':
        return QColor(0x90, 0x00, 0x00);
    case 'M':
        return QColor(0x80, 0x80, 0x80);
    case 'g':
        return grid->parentWidget()->palette().color(QPalette::Disabled, QPalette::WindowText);
    default:
        return grid->palette().color(QPalette::Text);
    }
}

} // namespace

class TestDisplay : public QObject {
    Q_OBJECT
private slots:
    void channelRow_data();
    void channelRow();
    void simplexBox();
    void optionLists_data();
    void optionLists();
    void band_data();
    void band();
    void version10RadioShowsWideHighAndNoPowerSelection();
};

void TestDisplay::channelRow_data() {
    QTest::addColumn<int>("language");
    QTest::addColumn<bool>("open");
    QTest::addColumn<bool>("txAllowed");
    QTest::addColumn<int>("optionFlags"); // bit 0 narrow, 2 busy, 4 scan del, 5 low
    QTest::addColumn<bool>("narrowRadio");
    QTest::addColumn<QList<int>>("words"); // ids shown in columns 5..8
    QTest::addColumn<QString>("colours");  // columns 1..8

    const QList<int> addOffHighWide{1218, 1101, 1214, 1216};
    const QList<int> delOnLowNarrow{1217, 1100, 1213, 1215};
    for (int language : {0, 1}) {
        const char* lang = language == 0 ? "en" : "zh";
        QTest::addRow("%s active, defaults", lang)
            << language << true << true << 0x00 << false << addOffHighWide << "NNNNGRGG";
        QTest::addRow("%s active, all flags", lang)
            << language << true << true << 0x35 << false << delOnLowNarrow << "NNNNRGRR";
        QTest::addRow("%s no TX", lang)
            << language << true << false << 0x35 << false << delOnLowNarrow << "NNggRggR";
        QTest::addRow("%s closed", lang)
            << language << false << true << 0x00 << false << addOffHighWide << "gggggggg";
        QTest::addRow("%s narrow radio", lang)
            << language << true << true << 0x00 << true << addOffHighWide << "NNNNGRGM";
        QTest::addRow("%s closed, narrow radio", lang)
            << language << false << false << 0x01 << true << QList<int>{1218, 1101, 1214, 1215}
            << "gggggggg";
    }
}

void TestDisplay::channelRow() {
    QFETCH(int, language);
    QFETCH(bool, open);
    QFETCH(bool, txAllowed);
    QFETCH(int, optionFlags);
    QFETCH(bool, narrowRadio);
    QFETCH(QList<int>, words);
    QFETCH(QString, colours);

    auto window = startWindow(language == 1 ? "zh_CN" : "en_US");
    RadioImage& image = window->image();
    const int n = 7;
    auto channel = ChannelRecord::channel(image, n);
    channel.setOpen(open);
    channel.setTxAllowed(txAllowed);
    channel.setFrequency(Side::Receive, 145.5125);
    channel.setFrequency(Side::Transmit, 145.5050);
    image[RadioImage::linearOffset(channelColumn(n) + 1, 2)] =
        static_cast<std::uint8_t>(optionFlags);
    if (narrowRadio) {
        image[kOptionBits] |= 0x02;
    }
    window->ReFlashData();

    const Language lang = static_cast<Language>(language);
    QCOMPARE(cell(window.get(), n, 1), QString("145.51250"));
    QCOMPARE(cell(window.get(), n, 3), QString("145.50500"));
    QCOMPARE(cell(window.get(), n, 2), QString("OFF"));
    for (int k = 0; k < 4; ++k) {
        QCOMPARE(cell(window.get(), n, 5 + k), text(words[k], lang));
    }
    auto* grid = child<QTableWidget>(window.get(), "channelGrid");
    for (int column = 1; column <= 8; ++column) {
        QCOMPARE(cellColour(window.get(), n, column), expectedColour(colours[column - 1], grid));
    }
    const QString index = QString::number(n - 1);
    QCOMPARE(child<QCheckBox>(window.get(), "chkClose_" + index)->isChecked(), !open);
    QCOMPARE(child<QCheckBox>(window.get(), "chkForbidTx_" + index)->isChecked(), !txAllowed);
    QCOMPARE(child<QCheckBox>(window.get(), "chkForbidTx_" + index)->isEnabled(), open);
    QCOMPARE(child<QComboBox>(window.get(), "CboBandSel")->currentText(),
             text(narrowRadio ? 1215 : 1216, lang));
    // The neighbouring rows are untouched blank channels.
    QCOMPARE(cellColour(window.get(), n + 1, 5), expectedColour('g', grid));
}

void TestDisplay::simplexBox() {
    auto window = startWindow();
    RadioImage& image = window->image();
    for (int n : {1, 2}) {
        auto channel = ChannelRecord::channel(image, n);
        channel.setOpen(true);
        channel.setFrequency(Side::Receive, 446.00625);
        channel.setFrequency(Side::Transmit, n == 1 ? 446.00625 : 446.0125);
    }
    window->ReFlashData();
    QVERIFY(child<QCheckBox>(window.get(), "chkSameFreq_0")->isChecked());
    QVERIFY(!child<QCheckBox>(window.get(), "chkSameFreq_1")->isChecked());
}

void TestDisplay::optionLists_data() {
    QTest::addColumn<int>("language");
    QTest::addColumn<int>("offset");
    QTest::addColumn<int>("value");
    QTest::addColumn<QString>("list");
    QTest::addColumn<int>("index");
    QTest::addColumn<int>("count");
    for (int language : {0, 1}) {
        const char* lang = language == 0 ? "en" : "zh";
        QTest::addRow("%s time-out 300 s", lang)
            << language << 0x3D6 << 0x30 << "CboTXLimit" << 10 << 11;
        QTest::addRow("%s time-out 0x31 is off", lang)
            << language << 0x3D6 << 0x31 << "CboTXLimit" << 0 << 11;
        QTest::addRow("%s rekey 60 s", lang)
            << language << 0x357 << 0x60 << "CboTOTAgain" << 60 << 61;
        QTest::addRow("%s reset 0x16 is off", lang)
            << language << 0x3D7 << 0x16 << "CboTOTReset" << 0 << 16;
        QTest::addRow("%s squelch 0x0A is 0", lang)
            << language << 0x1D7 << 0x0A << "CboSQ" << 0 << 10;
        QTest::addRow("%s priority channel 15", lang)
            << language << 0x156 << 0x15 << "CboPriorityCH" << 15 << 16;
        QTest::addRow("%s revert to priority", lang)
            << language << 0x0D6 << 0x04 << "CboBakCH" << 3 << 4;
        QTest::addRow("%s scan on time", lang) << language << 0x056 << 0x10 << "CboScan" << 2 << 3;
        QTest::addRow("%s long-hit Moni", lang)
            << language << 0x256 << 0x02 << "CboPowSel" << 2 << 3;
        QTest::addRow("%s Moni list short", lang)
            << language << 0x256 << 0x02 << "CboMoni" << 0 << 2;
        QTest::addRow("%s beep on", lang) << language << 0x257 << 0x20 << "CboRing" << 1 << 2;
        QTest::addRow("%s narrow radio", lang)
            << language << 0x257 << 0x02 << "CboBandSel" << 1 << 2;
    }
}

void TestDisplay::optionLists() {
    QFETCH(int, language);
    QFETCH(int, offset);
    QFETCH(int, value);
    QFETCH(QString, list);
    QFETCH(int, index);
    QFETCH(int, count);
    auto window = startWindow(language == 1 ? "zh_CN" : "en_US");
    window->image()[static_cast<std::size_t>(offset)] = static_cast<std::uint8_t>(value);
    window->ReFlashData();
    auto* box = child<QComboBox>(window.get(), list);
    QCOMPARE(box->count(), count);
    QCOMPARE(box->currentIndex(), index);
    OptionId id{};
    QVERIFY(optionFromName(list.toStdString(), id));
    const auto items = optionItems(id, window->image(), static_cast<Language>(language));
    QCOMPARE(box->currentText(), QString::fromStdString(items[static_cast<std::size_t>(index)]));
}

void TestDisplay::band_data() {
    QTest::addColumn<int>("code");
    QTest::addColumn<QString>("band");
    QTest::addColumn<QString>("range");
    QTest::addColumn<int>("lower");
    QTest::addColumn<int>("upper");
    QTest::newRow("0x00") << 0x00 << "150 - 174MHz"
                          << "150.00000～174.00000 MHz" << 150 << 174;
    QTest::newRow("0x01") << 0x01 << "136 - 150MHz"
                          << "136.00000～150.00000 MHz" << 136 << 150;
    QTest::newRow("0x59") << 0x59 << "465 - 520MHz"
                          << "465.00000～520.00000 MHz" << 465 << 520;
    QTest::newRow("unknown") << 0xFF << "450 - 470MHz"
                             << "450.00000～470.00000 MHz" << 450 << 470;
}

void TestDisplay::band() {
    QFETCH(int, code);
    QFETCH(QString, band);
    QFETCH(QString, range);
    QFETCH(int, lower);
    QFETCH(int, upper);
    auto window = startWindow();
    window->image()[0x15A] = static_cast<std::uint8_t>(code);
    window->ReFlashData();
    QCOMPARE(child<QComboBox>(window.get(), "CboBand")->currentText(), band);
    QCOMPARE(child<QLabel>(window.get(), "lblBandRange")->text(), range);
    QCOMPARE(window->bandLimits().lowerMHz, lower);
    QCOMPARE(window->bandLimits().upperMHz, upper);
}

void TestDisplay::version10RadioShowsWideHighAndNoPowerSelection() {
    auto window = startWindow();
    RadioImage& image = window->image();
    auto channel = ChannelRecord::channel(image, 3);
    channel.setOpen(true);
    channel.setTxAllowed(true);
    channel.setNarrow(true);
    channel.setLowPower(true);
    channel.setBusyLock(true);
    image[kPowerSelection] = 0x06; // long-hit Moni, and a bit that stays
    window->linkFlags().radioIsVersion10 = true;
    window->ReFlashData();

    QCOMPARE(cell(window.get(), 3, 8), text(1216, Language::English));
    QCOMPARE(cell(window.get(), 3, 7), text(1214, Language::English));
    QCOMPARE(cell(window.get(), 3, 6), text(1100, Language::English));
    QVERIFY(!channel.narrow());
    QVERIFY(!channel.lowPower());
    QVERIFY(channel.busyLock());
    QCOMPARE(int(image[kPowerSelection]), 0x04);
    QCOMPARE(child<QComboBox>(window.get(), "CboPowSel")->currentIndex(), 0);
    QCOMPARE(child<QComboBox>(window.get(), "CboMoni")->count(), 4);
}

QTEST_MAIN(TestDisplay)
#include "tst_display.moc"
