// The printed report: every caption in its order, every value on the line of
// its caption in both languages, nothing off the page or on another text and
// no heading at the foot of a page, on paper of several sizes.

#include "image_edit.h"
#include "options.h"
#include "report_layout.h"
#include "sizes.h"

#include <QBuffer>
#include <QPageSize>
#include <QPdfWriter>
#include <QtTest>

using namespace zr310;

namespace {

// Channel 1 open with tones, 2 closed, 3 open without transmit; options and
// tuning bytes away from their start values.
ReportLayout layoutOn(const QPageSize& paper, Language language) {
    RadioImage image;
    for (const QString edit :
         {"CboBand=136 - 174MHz", "ch1.close=false", "ch1.no_tx=false", "ch1.rx_freq=145.5",
          "ch1.tx_freq=146.1", "ch1.rx_tone=CTC 88.5", "ch1.tx_tone=-DCS 023", "ch1.scan=Del",
          "ch1.busy_lock=On", "ch3.close=false", "ch3.rx_freq=150", "ch3.tx_freq=151"})
        applyImageEdit(image, edit.section('=', 0, 0).toStdString(),
                       edit.section('=', 1).toStdString());
    const int optionIndexes[] = {4, 10, 7, 15, 1, 0, 1, 5, 2, 5, 2, 1, 3, 3}; // kAllOptions order
    for (int i = 0; i < 14; ++i)
        encodeOption(kAllOptions[toIndex(i)], image, optionIndexes[i]);
    const int tuning[] = {7, 200, 45, 128, 255}; // column 0x5E, blocks 0..4
    for (int block = 0; block < 5; ++block)
        image[RadioImage::linearOffset(0x5E, block)] = static_cast<std::uint8_t>(tuning[block]);

    QBuffer buffer;
    QPdfWriter writer(&buffer);
    writer.setPageSize(paper);
    writer.setPageMargins(QMarginsF(0, 0, 0, 0));
    return layoutReport(image, language, QDateTime(QDate(2024, 3, 5), QTime(14, 7, 9)), writer);
}

// The texts on the line of the first `text`, left to right.
QStringList lineOf(const ReportLayout& layout, const QString& text) {
    const auto at = std::find_if(layout.texts.begin(), layout.texts.end(),
                                 [&](const PlacedText& t) { return t.text == text; });
    QStringList line;
    for (const PlacedText& t : layout.texts)
        if (at != layout.texts.end() && t.page == at->page && t.origin.y() == at->origin.y())
            line << t.text;
    return line;
}

// In the order of first use; split at "|".
const QStringList kCaptions =
    QString(
        "ZR-310 PC编程软件|信道设置|机型|:|频率范围:|信道|接收频率|接收|发射频率|发射|扫描|繁忙|"
        "(MHz)|CTC/DCS|删除/添加|锁定|----|--------|扫描信息和整机功能|机型:|扫描信息|扫描模式:|"
        "恢复信道|优先信道:|回扫周期|扫描停留时间:|整机功能|监听:|发射限时|提示音:|手动模式|"
        "省电功能:|静噪等级|预告警时间:|TOT再按键时间|TOT复位时间:|调整设置|调整项目|"
        "电池电压电平:|第9级静噪电平|第3级静噪电平:|CDCSS频偏|CTCSS频偏:")
        .split('|');

// Texts that may not end a page: headings and the table's heading lines.
const QStringList kHeadingEnds = QString("ZR-310 PC编程软件|2024-03-05 14:07:09|锁定|----|"
                                         "扫描信息和整机功能|扫描信息|整机功能|调整设置|调整项目")
                                     .split('|');

} // namespace

class TestReportLayout : public QObject {
    Q_OBJECT

private slots:
    // Down to a label of 100 x 40 mm, which takes four pages.
    void captionsInOrderOnThePage() {
        const auto row = [](const QPageSize& paper, int pages) {
            const ReportLayout layout = layoutOn(paper, Language::Chinese);
            QCOMPARE(layout.pageCount, pages);
            QStringList firstUse;
            for (const PlacedText& t : layout.texts)
                if (kCaptions.contains(t.text) && !firstUse.contains(t.text))
                    firstUse << t.text;
            QCOMPARE(firstUse, kCaptions);
            QCOMPARE(lineOf(layout, "信道设置"), QStringList({"信道设置", "2024-03-05 14:07:09"}));
            const auto& texts = layout.texts;
            for (std::size_t i = 0; i < texts.size(); ++i) {
                QVERIFY2(QRectF(QPointF(), layout.pageSize).contains(texts[i].bounds),
                         qPrintable(texts[i].text));
                for (std::size_t j = i + 1; j < texts.size(); ++j)
                    QVERIFY(texts[i].page != texts[j].page ||
                            !texts[i].bounds.intersects(texts[j].bounds));
                if (i + 1 < texts.size() && texts[i].page != texts[i + 1].page)
                    QVERIFY2(!kHeadingEnds.contains(texts[i].text), qPrintable(texts[i].text));
            }
        };
        row(QPageSize(QPageSize::A4), 1);
        row(QPageSize(QPageSize::A6), 1);
        row(QPageSize(QSizeF(100, 40), QPageSize::Millimeter), 4);
    }

    // The lines that hold values, from their first text on, in either language.
    void valueLines() {
        const auto row = [](Language language, const QString& line) {
            const QStringList texts = line.split('|');
            QCOMPARE(lineOf(layoutOn(QPageSize(QPageSize::A4), language), texts[0]), texts);
        };
        const Language en = Language::English, zh = Language::Chinese;
        row(en, "机型|:|ZR-310|频率范围:|136 - 174MHz");
        row(en, "1|145.50000|CTC 88.5|146.10000|-DCS 023|Del|On");
        row(en, "2|000.00000|OFF|000.00000|OFF|Add|Off|Close");
        row(zh, "3|150.00000|OFF|151.00000|OFF|添加|关闭|禁发");
        row(zh, "机型:|ZR-310");
        row(zh, "扫描模式:|时间|恢复信道|最近使用信道");
        row(en, "优先信道:|CH5|回扫周期|0.5sec");
        row(zh, "扫描停留时间:|1.5秒");
        row(zh, "监听:|暂态有条件监听|发射限时|120秒");
        row(en, "提示音:|On|手动模式|Off");
        row(en, "省电功能:|On|静噪等级|5");
        row(zh, "预告警时间:|10秒|TOT再按键时间|7秒");
        row(en, "TOT复位时间:|15sec");
        // Tuning: the bytes 0x05E, 0x0DE, 0x15E, 0x1DE and 0x25E in decimal.
        row(en, "电池电压电平:|7|第9级静噪电平|200");
        row(zh, "第3级静噪电平:|45|CDCSS频偏|255");
        row(en, "CTCSS频偏:|128");
    }
};

QTEST_MAIN(TestReportLayout)
#include "tst_report_layout.moc"
