// The checks made before a write and the differences between two images, both
// named in the keys of `zr310-cli set`.

#include "image_diff.h"
#include "image_edit.h"
#include "model_test_util.h"
#include "radio_info.h"
#include "write_checks.h"

#include <QtTest>

using namespace zr310;
using namespace zr310::test;

namespace {

// Applies `set` pairs, "0xAAA=VV" (the byte at radio address AAA becomes VV)
// and "write_date=DIGITS" to the image.
RadioImage edited(RadioImage image, const QStringList& pairs) {
    for (const QString& pair : pairs) {
        const QString key = pair.section('=', 0, 0);
        const QString value = pair.section('=', 1);
        if (key.startsWith("0x")) {
            image.setAtAddress(key.toInt(nullptr, 16), quint8(value.toInt(nullptr, 16)));
        } else if (key == "write_date") {
            for (int i = 0; i < value.size(); ++i)
                image.setAtAddress(kWriteDateAddress + i, quint8(value[i].toLatin1()));
        } else {
            applyImageEdit(image, key.toStdString(), value.toStdString());
        }
    }
    return image;
}

// CH 3 open on 145.5 MHz both ways in the band 136 - 174MHz, and the priority
// channel; the other channels closed.
RadioImage base() {
    return edited(makeStartImage(),
                  {"CboBand=136 - 174MHz", "ch3.close=false", "ch3.no_tx=false",
                   "ch3.rx_freq=145.5", "ch3.tx_freq=145.5", "CboPriorityCH=CH3"});
}

} // namespace

class TestImageChecks : public QObject {
    Q_OBJECT

private slots:
    // CH 3's receive tone lies at addresses 0x23-0x24, its transmit tone at 0x28-0x29.
    void checks() {
        const auto row = [](const QStringList& pairs, const QStringList& findings) {
            QStringList seen;
            for (const WriteFinding& finding : checkBeforeWrite(edited(base(), pairs))) {
                QVERIFY(finding.message.starts_with(finding.key + ": "));
                seen << qs(severityWord(finding.severity)) + ": " + qs(finding.message);
            }
            QCOMPARE(seen, findings);
        };
        const QString uhf = "CboBand=400 - 470MHz";
        row({"ch3.rx_tone=DCS 777", "ch3.tx_tone=CTC 254.1"}, {});
        row({uhf}, {"error: ch3.rx_freq: 145.50000 MHz is outside the band 400 - 470MHz",
                    "error: ch3.tx_freq: 145.50000 MHz is outside the band 400 - 470MHz"});
        row({uhf, "ch3.rx_freq=440", "ch3.no_tx=true"}, {});   // transmit side of a No TX channel
        row({uhf, "CboPriorityCH=Off", "ch3.close=true"}, {}); // closed channel
        row({"ch3.rx_tone=CTC 88.5", "0x023=84"},
            {"error: ch3.rx_tone: CTCSS value 0x0884 (CTC 88.4) is not one of the 50 tones"});
        row({"ch3.tx_tone=DCS 023", "0x028=FF", "0x029=FF"},
            {"error: ch3.tx_tone: DCS value 0xFFFF is not a three-digit octal code"});
        row({"CboPriorityCH=CH5"}, {"warning: CboPriorityCH: CH5 is closed"});
        // Errors first, by check, then channel.
        row({"CboPriorityCH=CH1", "ch3.rx_tone=-DCS 023", "0x024=02", "ch16.close=false"},
            {"error: ch16.rx_freq: 000.00000 MHz is outside the band 136 - 174MHz",
             "error: ch3.rx_tone: DCS value 0x0213 is not a three-digit octal code",
             "warning: CboPriorityCH: CH1 is closed"});
    }

    // The differences from the base image a to b, made by `pairs`.
    void diff() {
        const auto row = [](const QStringList& pairs, const QStringList& differences) {
            QStringList seen;
            for (const ImageDifference& d : diffImages(base(), edited(base(), pairs)))
                seen << qs(d.key) + ": " + qs(d.a) + " -> " + qs(d.b);
            QCOMPARE(seen, differences);
        };
        row({"ch3.rx_freq=146.52"}, {"ch3.rx_freq: 145.50000 -> 146.52000"});
        row({"ch5.close=false"}, {"ch5.close: true -> false"});
        row({"CboScan=Carrier"}, {"CboScan: Off -> Carrier"}); // one list of a shared byte
        row({"tuning.squelch9=40"}, {"tuning.squelch9: 0 -> 40"});
        row({"0x3E0=5A"}, {"radio_id:  -> Z"});
        row({"write_date=20240506070809"}, {"write_date:  -> 2024-05-06, 07:08:09"});
        row({"user_text=Fleet 7"}, {"user_text:  -> Fleet 7"});
        row({"0x023=55"}, {"byte 0x023: 0x00 -> 0x55"}); // the value of an OFF tone
        row({"CboRing=On", "0x2BC=A0"}, {"CboRing: Off -> On", "byte 0x2BC: 0x00 -> 0xA0"});
        // Keys, then bytes by address.
        row({"0x3F5=01", "CboSQ=5", "0x3F0=02", "ch16.scan=Del"},
            {"ch16.scan: Add -> Del", "CboSQ: 0 -> 5", "byte 0x3F0: 0x00 -> 0x02",
             "byte 0x3F5: 0x00 -> 0x01"});
    }

    // No change goes unlisted: flipping any one bit of a noise image gives a difference.
    void diffMissesNoBit() {
        const RadioImage a = noiseImage(7);
        for (std::size_t i = 0; i < RadioImage::kSize; ++i) {
            for (int bit = 0; bit < 8; ++bit) {
                RadioImage b = a;
                b[i] ^= quint8(1 << bit);
                if (diffImages(a, b).empty())
                    QFAIL(qPrintable(QString("byte %1 bit %2 not listed").arg(i).arg(bit)));
            }
        }
    }
};

QTEST_APPLESS_MAIN(TestImageChecks)
#include "tst_image_checks.moc"
