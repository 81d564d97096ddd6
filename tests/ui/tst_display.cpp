// What ReFlashData shows for an image: grid cells and their colours, the
// boxes beside the grid and the option lists. The editing suites see most
// states of a row; here the languages and the version-1.0 radio.
#include "editing_support.h"

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
    QString colours;        // columns 1..8 as rowColours gives them
};

int wordId(QChar letter) {
    const int ids[] = {1218, 1217, 1100, 1101, 1213, 1214, 1215, 1216};
    return ids[QString("ADOFLHNW").indexOf(letter)];
}

} // namespace

class TestDisplay : public QObject {
    Q_OBJECT
private slots:
    void channelRow() {
        const auto row = [](const ChannelCase& c) {
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
            QCOMPARE(rowColours(window.get(), n), c.colours);
            QCOMPARE(channelBox(window.get(), "chkClose", n)->isChecked(), !c.open);
            QCOMPARE(channelBox(window.get(), "chkForbidTx", n)->isChecked(), !c.txAllowed);
            QCOMPARE(channelBox(window.get(), "chkForbidTx", n)->isEnabled(), c.open);
            QCOMPARE(channelBox(window.get(), "chkSameFreq", n)->isChecked(), c.simplex);
            QCOMPARE(rowColours(window.get(), n + 1), QString("gggggggg")); // untouched
        };
        row({.txMHz = 145.5125, .simplex = true, .colours = "NNNNGRGG"});
        row({.language = 1, .flags = 0x35, .words = "DOLN", .colours = "NNNNRGRR"});
        row({.txAllowed = false, .flags = 0x35, .words = "DOLN", .colours = "NNggRggR"});
        row({.open = false, .narrowRadio = true, .colours = "gggggggg"});
        // Such a radio has no narrow band and no low power.
        row({.flags = 0x35, .version10 = true, .words = "DOHW", .colours = "NNNNRGGG"});
    }

    // A list as one byte of the image sets it, and the text shown (0: not checked).
    void optionLists() {
        const auto row = [](int language, bool version10, int offset, int value, const char* list,
                            int index, int count, int word) {
            auto window = startWindow(language == 1 ? "zh_CN" : "en_US");
            window->image()[std::size_t(offset)] = std::uint8_t(value);
            window->linkFlags().radioIsVersion10 = version10;
            window->ReFlashData();
            auto* box = child<QComboBox>(window.get(), list);
            QCOMPARE(box->count(), count);
            QCOMPARE(box->currentIndex(), index);
            if (word != 0) {
                QCOMPARE(box->currentText(), text(word, Language(language)));
            }
        };
        row(1, false, 0x3D6, 0x31, "CboTXLimit", 0, 11, 1101); // time-out Off
        row(0, false, 0x256, 0x02, "CboPowSel", 2, 3, 0);      // long-hit Moni: short list
        row(0, false, 0x256, 0x02, "CboMoni", 0, 2, 0);
        row(0, true, 0x256, 0x06, "CboMoni", 0, 4, 0); // version 1.0: no power selection
        row(1, false, 0x257, 0x02, "CboBandSel", 1, 2, 1215);
    }
};

QTEST_MAIN(TestDisplay)
#include "tst_display.moc"
