// What ReFlashData shows for an image: grid cells and their colours, the
// boxes beside the grid, the model frame and the option lists.
#include "channel.h"
#include "ui_test_support.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLabel>
#include <QMap>

using namespace zr310;

namespace {

// Channel 7 as the image holds it and as the grid shows it.
struct ChannelCase {
    int language = 0;
    bool open = true, txAllowed = true;
    int flags = 0; // bit 0 narrow, 2 busy, 4 scan del, 5 low
    bool narrowRadio = false, version10 = false;
    double txMHz = 145.505; // receives on 145.5125
    bool simplex = false;
    QString words = "AFHW"; // columns 5..8: Add/Del, On/oFf, Low/High, Narrow/Wide
    // Columns 1..8: N the grid's text colour, g the system's grey text,
    // G green 0x608030, R dark red 0x000090, M mid grey 0x808080 (0x00BBGGRR).
    QString colours;
};

// A list as one byte of the image sets it, and as the list shows it.
struct OptionCase {
    int language;
    bool version10;
    int offset, value;
    QString list;
    int index, count;
    int word; // the text shown, 0: not checked
};

int wordId(QChar letter) {
    const int ids[] = {1218, 1217, 1100, 1101, 1213, 1214, 1215, 1216};
    return ids[QString("ADOFLHNW").indexOf(letter)];
}

QColor expectedColour(QChar letter, QWidget* grid) {
    const QColor grey =
        grid->parentWidget()->palette().color(QPalette::Disabled, QPalette::WindowText);
    const QMap<QChar, QColor> colours{{'G', QColor(0x30, 0x80, 0x60)},
                                      {'R', QColor(0x90, 0, 0)},
                                      {'M', QColor(0x80, 0x80, 0x80)},
                                      {'g', grey}};
    return colours.value(letter, grid->palette().color(QPalette::Text));
}

} // namespace

Q_DECLARE_METATYPE(ChannelCase)
Q_DECLARE_METATYPE(OptionCase)

class TestDisplay : public QObject {
    Q_OBJECT
private slots:
    void channelRow_data() {
        QTest::addColumn<ChannelCase>("c");
        QTest::newRow("active, simplex")
            << ChannelCase{.txMHz = 145.5125, .simplex = true, .colours = "NNNNGRGG"};
        QTest::newRow("Chinese, all flags")
            << ChannelCase{.language = 1, .flags = 0x35, .words = "DOLN", .colours = "NNNNRGRR"};
        QTest::newRow("no TX") << ChannelCase{
            .txAllowed = false, .flags = 0x35, .words = "DOLN", .colours = "NNggRggR"};
        QTest::newRow("Chinese, closed")
            << ChannelCase{.language = 1, .open = false, .txMHz = 145.5125, .colours = "gggggggg"};
        QTest::newRow("narrow radio") << ChannelCase{.narrowRadio = true, .colours = "NNNNGRGM"};
        QTest::newRow("closed, narrow radio")
            << ChannelCase{.open = false, .narrowRadio = true, .colours = "gggggggg"};
        // Such a radio has no narrow band and no low power.
        QTest::newRow("version-1.0 radio") << ChannelCase{
            .flags = 0x35, .version10 = true, .words = "DOHW", .colours = "NNNNRGGG"};
    }

    void channelRow() {
        QFETCH(ChannelCase, c);
        auto window = startWindow(c.language == 1 ? "zh_CN" : "en_US");
        RadioImage& image = window->image();
        const int n = 7;
        auto channel = ChannelRecord::channel(image, n);
        channel.setOpen(c.open);
        channel.setTxAllowed(c.txAllowed);
        channel.setFrequency(Side::Receive, 145.5125);
        channel.setFrequency(Side::Transmit, c.txMHz);
        image[RadioImage::linearOffset(channelColumn(n) + 1, 2)] = std::uint8_t(c.flags);
        image[0x257] |= c.narrowRadio ? 0x02 : 0x00; // option bits
        window->linkFlags().radioIsVersion10 = c.version10;
        window->ReFlashData();

        QCOMPARE(cell(window.get(), n, 1)->text(), QString("145.51250"));
        QCOMPARE(cell(window.get(), n, 3)->text(), QString::number(c.txMHz, 'f', 5));
        for (int k = 0; k < 4; ++k) {
            QCOMPARE(cell(window.get(), n, 5 + k)->text(),
                     text(wordId(c.words[k]), Language(c.language)));
        }
        auto* grid = child(window.get(), "channelGrid");
        for (int column = 1; column <= 8; ++column) {
            const QColor colour = cell(window.get(), n, column)->foreground().color();
            QCOMPARE(colour, expectedColour(c.colours[column - 1], grid));
        }
        const QString index = QString::number(n - 1);
        QCOMPARE(child<QCheckBox>(window.get(), "chkClose_" + index)->isChecked(), !c.open);
        QCOMPARE(child<QCheckBox>(window.get(), "chkForbidTx_" + index)->isChecked(), !c.txAllowed);
        QCOMPARE(child(window.get(), "chkForbidTx_" + index)->isEnabled(), c.open);
        QCOMPARE(child<QCheckBox>(window.get(), "chkSameFreq_" + index)->isChecked(), c.simplex);
        // The next row is an untouched blank channel.
        QCOMPARE(cell(window.get(), n + 1, 5)->foreground().color(), expectedColour('g', grid));
    }

    void optionLists_data() {
        QTest::addColumn<OptionCase>("o");
        QTest::newRow("Chinese, time-out off")
            << OptionCase{1, false, 0x3D6, 0x31, "CboTXLimit", 0, 11, 1101};
        QTest::newRow("long-hit Moni") << OptionCase{0, false, 0x256, 0x02, "CboPowSel", 2, 3, 0};
        QTest::newRow("Moni list short") << OptionCase{0, false, 0x256, 0x02, "CboMoni", 0, 2, 0};
        QTest::newRow("version-1.0 radio: no power selection")
            << OptionCase{0, true, 0x256, 0x06, "CboMoni", 0, 4, 0};
        QTest::newRow("Chinese, narrow radio")
            << OptionCase{1, false, 0x257, 0x02, "CboBandSel", 1, 2, 1215};
    }

    void optionLists() {
        QFETCH(OptionCase, o);
        auto window = startWindow(o.language == 1 ? "zh_CN" : "en_US");
        window->image()[std::size_t(o.offset)] = std::uint8_t(o.value);
        window->linkFlags().radioIsVersion10 = o.version10;
        window->ReFlashData();
        auto* box = child<QComboBox>(window.get(), o.list);
        QCOMPARE(box->count(), o.count);
        QCOMPARE(box->currentIndex(), o.index);
        if (o.word != 0) {
            QCOMPARE(box->currentText(), text(o.word, Language(o.language)));
        }
    }

    void band() {
        auto window = startWindow();
        window->image()[0x15A] = 0x59;
        window->ReFlashData();
        QCOMPARE(child<QComboBox>(window.get(), "CboBand")->currentText(), QString("465 - 520MHz"));
        QCOMPARE(child<QLabel>(window.get(), "lblBandRange")->text(), "465.00000～520.00000 MHz");
        QCOMPARE(window->bandLimits().lowerMHz, 465);
        QCOMPARE(window->bandLimits().upperMHz, 520);
    }
};

QTEST_MAIN(TestDisplay)
#include "tst_display.moc"
