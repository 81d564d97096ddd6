#include "model_test_util.h"
#include "string_table.h"

#include <QtTest>

using namespace zr310;
using namespace zr310::test;
using namespace Qt::StringLiterals;

namespace {

// The ids of the table, as ranges of English ids (1408 is not used).
const std::pair<int, int> kIdRanges[] = {
    {1000, 1030}, {1050, 1055}, {1100, 1105}, {1120, 1139}, {1141, 1184}, {1200, 1226},
    {1300, 1318}, {1350, 1364}, {1400, 1407}, {1409, 1412}, {1500, 1510}, {1520, 1540},
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
        QTest::newRow("doubled quotes")
            << 1530 << "Reading completed, press \"\"Enter\"\" to continue..."
            << u"读频完成，按\"\"确定\"\"继续..."_s;
        QTest::newRow("CR CR LF")
            << 1537 << "Port has no response, please check connection \r\r\nand Power!"
            << u"端口没有响应，请确保连接正确或及其电源是否打开！"_s;
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
        for (auto [lang, text] : {std::pair{1, "删除"}, {0, "Del"}}) {
            gbytLang = lang;
            QCOMPARE(qs(ResString(1217)), QString::fromUtf8(text));
        }
        gbytLang = saved;
    }
};

QTEST_APPLESS_MAIN(TestStrings)
#include "tst_strings.moc"
