// Every text of the main window fits the widget that shows it, in both
// languages, at the start size and at 1920 x 1080, in the channel view and in
// tuning mode; and a larger window shows a larger channel grid.
#include "channel.h"
#include "tones.h"
#include "ui_test_support.h"

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLayout>
#include <QStyleOptionComboBox>
#include <QTreeWidget>

using namespace zr310;

namespace {

// The longest words of every column: odd channels inverted DCS, narrow, low
// power, scan delete and busy lock; even ones the longest CTCSS tone.
void fillLongTexts(RadioImage& image) {
    for (int n = 1; n <= kChannelCount + kTestChannelCount; ++n) {
        const bool odd = n % 2 == 1;
        auto channel = n <= kChannelCount ? ChannelRecord::channel(image, n)
                                          : ChannelRecord::testChannel(image, n - kChannelCount);
        channel.setOpen(true);
        channel.setTxAllowed(true);
        channel.setFrequency(Side::Receive, 145.5);
        channel.setFrequency(Side::Transmit, 446.00625);
        const Tone tone = odd ? Tone{ToneKind::DcsInverted, dcsValue("754")}
                              : Tone{ToneKind::Ctcss, ctcssValue("254.1")};
        channel.setTone(Side::Receive, tone);
        channel.setTone(Side::Transmit, tone);
        for (auto set : {&ChannelRecord::setNarrow, &ChannelRecord::setBusyLock,
                         &ChannelRecord::setScanDeleted, &ChannelRecord::setLowPower}) {
            (channel.*set)(odd);
        }
    }
}

bool fits(const QFontMetrics& metrics, const QRect& room, const QString& text, bool wrap) {
    const QRect need =
        metrics.boundingRect(QRect(0, 0, room.width(), 10000),
                             Qt::AlignLeft | Qt::AlignTop | (wrap ? Qt::TextWordWrap : 0), text);
    return need.width() <= room.width() && need.height() <= room.height();
}

// The space a cell of an item view gives its text: the delegate's margins off.
QRect textRoom(const QAbstractItemView* view, QRect cell) {
    const int margin = view->style()->pixelMetric(QStyle::PM_FocusFrameHMargin, nullptr, view) + 1;
    return cell.adjusted(margin, 0, -margin, 0).intersected(view->viewport()->rect());
}

// "objectName: text" for each text of `widget` that does not fit.
QStringList cutTexts(QWidget* widget) {
    QStringList cut;
    const QFontMetrics metrics = widget->fontMetrics();
    const auto check = [&](bool ok, const QString& text) {
        if (!ok) {
            cut << widget->objectName() + ": " + text;
        }
    };
    if (auto* label = qobject_cast<QLabel*>(widget)) {
        const int m = label->margin();
        const QRect room = label->contentsRect().adjusted(m, m, -m, -m);
        check(label->text().isEmpty() || fits(metrics, room, label->text(), label->wordWrap()),
              label->text());
    } else if (auto* button = qobject_cast<QAbstractButton*>(widget)) {
        const QSize need = button->sizeHint();
        check(need.width() <= button->width() && need.height() <= button->height(), button->text());
    } else if (auto* box = qobject_cast<QComboBox*>(widget)) {
        // The closed box draws its item one pixel inside the field left of
        // the arrow.
        QStyleOptionComboBox option;
        option.initFrom(box);
        const QRect field = box->style()->subControlRect(QStyle::CC_ComboBox, &option,
                                                         QStyle::SC_ComboBoxEditField, box);
        for (int i = 0; i < box->count(); ++i) {
            check(metrics.horizontalAdvance(box->itemText(i)) <= field.width() - 2,
                  box->itemText(i));
        }
    } else if (auto* table = qobject_cast<QTableWidget*>(widget)) {
        for (int row = 0; row < table->rowCount(); ++row) {
            for (int column = 0; column < table->columnCount(); ++column) {
                const QTableWidgetItem* item = table->item(row, column);
                const QRect room = textRoom(table, table->visualItemRect(item));
                check(fits(metrics, room, item->text(), table->wordWrap()), item->text());
            }
        }
    } else if (auto* tree = qobject_cast<QTreeWidget*>(widget)) {
        for (QTreeWidgetItemIterator it(tree); *it != nullptr; ++it) {
            const QRect room = textRoom(tree, tree->visualItemRect(*it));
            check(fits(metrics, room, (*it)->text(0), false), (*it)->text(0));
        }
    }
    // A frame's minimum holds its title and its layout's minimum: squeezed
    // below it, the title is cut or the widgets overlap.
    if (auto* frame = qobject_cast<QGroupBox*>(widget)) {
        const QSize least = frame->minimumSizeHint();
        check(least.width() <= frame->width() && least.height() <= frame->height(),
              frame->title() + " (frame too small)");
    }
    if (widget->parentWidget()->objectName() != "Frame1" && !widget->inherits("QScrollBar")) {
        check(widget->parentWidget()->rect().contains(widget->geometry()),
              QStringLiteral("(outside its frame)"));
    }
    return cut;
}

QStringList cutTextsOfWindow(QWidget* window) {
    QStringList cut;
    for (QWidget* widget : child(window, "Frame1")->findChildren<QWidget*>()) {
        const bool inView = widget->parentWidget()->inherits("QAbstractScrollArea") ||
                            widget->inherits("QHeaderView");
        if (widget->isVisible() && !inView) {
            cut << cutTexts(widget);
        }
    }
    return cut;
}

// Tuning mode's frames as entering it shows them; with `item`, as while
// the longest item ("9th Squelch Level") is adjusted.
void showTuningFrames(QWidget* window, bool item) {
    for (const char* name : {"fraModel", "fraFunction", "FraCHSet"}) {
        child(window, name)->hide();
    }
    child(window, "TreeViewTune")->show();
    child(window, "FraTestCH")->setVisible(!item);
    child<QGroupBox>(window, "FraTune")->setTitle(text(txt::TuningSquelch9, currentLanguage()));
    child(window, "FraTune")->setVisible(item);
}

} // namespace

class TestLayout : public QObject {
    Q_OBJECT
private slots:
    // As the program starts: Chinese from a CJK font after the default one.
    void initTestCase() {
        QFont font = QApplication::font();
        font.setFamilies({font.family(), "WenQuanYi Micro Hei"});
        QApplication::setFont(font);
    }

    void textsFit_data() {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QSize>("size"); // empty: the start size
        QTest::addColumn<int>("view");   // 0 channels, 1 test channels, 2 an item adjusted
        for (const QString locale : {"en_US", "zh_CN"}) {
            for (const QSize size : {QSize(), QSize(1920, 1080)}) {
                for (int view : {0, 1, 2}) {
                    const QString sizeName = size.isValid() ? "1920x1080" : "start size";
                    QTest::addRow("%s %s view %d", qPrintable(locale), qPrintable(sizeName), view)
                        << locale << size << view;
                }
            }
        }
    }

    void textsFit() {
        QFETCH(QString, locale);
        QFETCH(QSize, size);
        QFETCH(int, view);
        auto window = startWindow(locale);
        fillLongTexts(window->image());
        window->ReFlashData();
        window->ReFlashTestData();
        if (size.isValid()) {
            window->resize(size);
        }
        if (view > 0) {
            showTuningFrames(window.get(), view == 2);
        }
        QVERIFY(QTest::qWaitForWindowExposed(window.get()));
        for (QLayout* layout : window->findChildren<QLayout*>()) {
            layout->activate();
        }
        const QStringList cut = cutTextsOfWindow(window.get());
        QVERIFY2(cut.isEmpty(), qPrintable(cut.join('\n')));
    }

    void gridGrowsWithWindow_data() {
        QTest::addColumn<QString>("grid");
        QTest::newRow("channels") << "channelGrid";
        QTest::newRow("test channels") << "TestChannelGrid";
    }

    void gridGrowsWithWindow() {
        QFETCH(QString, grid);
        auto window = startWindow();
        const QSize start = child(window.get(), grid)->size();
        window->resize(1920, 1080);
        QCoreApplication::processEvents();
        QVERIFY(child(window.get(), grid)->width() > start.width() * 3 / 2);
        QVERIFY(child(window.get(), grid)->height() > start.height() * 3 / 2);
    }
};

QTEST_MAIN(TestLayout)
#include "tst_layout.moc"
