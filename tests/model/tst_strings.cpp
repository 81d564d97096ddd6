#include "model_test_util.h"
#include "string_table.h"

#include <QtTest>

using namespace zr310;
using namespace zr310::test;
using namespace Qt::StringLiterals;

namespace {

// The ids of the table, as ranges of English ids (1408 is not used).
const std::pair<int, int> kIdRanges[] = {
    {1000, 1024}, {1050, 1055}, {1100, 1105}, {1120, 1126}, {1200, 1226}, {1300, 1318},
    {1350, 1364}, {1400, 1407}, {1409, 1412}, {1500, 1510}, {1520, 1540},
};

bool isTableId(int id) {
    for (auto [first, last] : kIdRanges)
        if (id >= first && id <= last)
            return true;
    return false;
}

} // namespace

class TestStrings : public QObject {
    Q_OBJECT

private slots:
    void exactTexts_data() {
        QTest::addColumn<int>("id");
        QTest::addColumn<QString>("english");
        QTest::addColumn<QString>("chinese");
        QTest::newRow("menu with ampersand") << 1001 << "&Open..." << u"打开...(&O)"_s;
        QTest::newRow("monitor off differs") << 1359 << "Off" << u"关闭监听功能"_s;
        QTest::newRow("file filter bar")
            << 1122 << "Data Files (*.k720)|*.k720" << u"数据文件 (*.k720)|*.k720"_s;
        QTest::newRow("trailing CR LF in chinese") << 1123 << "Data hasn't been saved, save it now?"
                                                   << u"数据还没有保存，您需要保存数据吗？\r\n"_s;
        QTest::newRow("leading blank") << 1225 << " Step (KHz)" << u"步进值(KHz)"_s;
        QTest::newRow("doubled quotes")
            << 1530 << "Reading completed, press \"\"Enter\"\" to continue..."
            << u"读频完成，按\"\"确定\"\"继续..."_s;
        QTest::newRow("tab") << 1532 << "Tuning\terror" << u"调整错误"_s;
        QTest::newRow("CR CR LF")
            << 1537 << "Port has no response, please check connection \r\r\nand Power!"
            << u"端口没有响应，请确保连接正确或及其电源是否打开！"_s;
        QTest::newRow("two commas and CR CR LF")
            << 1538
            << "Reading completed,, the radio's version is 1.0, some function \r\r\ncan't be used, "
               "refer to help file for details!"
            << "读频完成，该机为V1.0版，某些功能无效，详情请查看帮助文件！";
        QTest::newRow("two CR CR LF")
            << 1539
            << "The radio's version that is going to be Writed \r\r\nis 1.0, some function "
               "can't be used, refer to help file \r\r\nfor details! Do you wish to continue?"
            << "当前要写频的机器为V1.0版，某些功能无效，详情请查看帮助文件！是否继续？";
    }

    void exactTexts() {
        QFETCH(int, id);
        QFETCH(QString, english);
        QFETCH(QString, chinese);
        QCOMPARE(qs(ResString(id, Language::English)), english);
        QCOMPARE(qs(ResString(id, Language::Chinese)), chinese);
    }

    void everyIdHasBothLanguages() {
        for (int id = 900; id < 2000; ++id) {
            const bool listed = isTableId(id);
            QVERIFY2(hasResString(id) == listed &&
                         ResString(id, Language::English).empty() != listed &&
                         ResString(id, Language::Chinese).empty() != listed,
                     QByteArray::number(id));
        }
    }

    // ResString(id) follows gbytLang: id + 1000 * gbytLang.
    void currentLanguage() {
        const int saved = gbytLang;
        gbytLang = 1;
        QCOMPARE(zr310::currentLanguage(), Language::Chinese);
        QCOMPARE(qs(ResString(1217)), "删除");
        QCOMPARE(qs(ResString(1408)), QString());
        gbytLang = 0;
        QCOMPARE(zr310::currentLanguage(), Language::English);
        QCOMPARE(qs(ResString(1217)), "Del");
        gbytLang = saved;
    }
};

QTEST_APPLESS_MAIN(TestStrings)
#include "tst_strings.moc"
