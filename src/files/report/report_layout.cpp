#include "report_layout.h"

#include "bands.h"
#include "channel.h"
#include "options.h"
#include "sizes.h"
#include "tuning.h"

#include <QFontMetricsF>
#include <QPagedPaintDevice>
#include <QPainter>

#include <algorithm>

namespace zr310 {

namespace {

// The printed area, as fractions of the page.
constexpr double kLeft = 0.08;
constexpr double kRight = 0.92;
constexpr double kTop = 0.06;
constexpr double kBottom = 0.94;

// The body text's pixel size: a fraction of the page width, or of the height
// on a page so wide that the width would make the report overrun it. Below
// 6 pt it follows the width only, and a short page breaks instead.
constexpr double kBodyOfWidth = 0.015;
constexpr double kBodyOfHeight = 0.0107;
constexpr double kSmallestBodyPoints = 6;
constexpr double kLineSpacing = 1.55; // line height per pixel of font size

// Columns of the channel table (left edges).
constexpr double kColChannel = 0.08;
constexpr double kColRxFreq = 0.15;
constexpr double kColRxTone = 0.29;
constexpr double kColTxFreq = 0.42;
constexpr double kColTxTone = 0.56;
constexpr double kColScan = 0.69;
constexpr double kColBusy = 0.79;
constexpr double kColMark = 0.86; // "Close" or "No TX"

// Caption/value pairs, two to a line.
constexpr double kPairCaption[] = {0.10, 0.52};
constexpr double kPairValue[] = {0.28, 0.72};

// "Right after the cell before", for a colon printed on its own.
constexpr double kAfterPrevious = -1;

const QColor kInk(0, 0, 0);
const QColor kGreyInk(0x70, 0x70, 0x70); // what the window shows grey

enum class Role { Body, Bold, Heading, Title };
enum class Align { Left, Centre, Right };

struct Cell {
    double x; // fraction of the width: left edge, centre or right edge by align
    QString text;
    Role role = Role::Body;
    Align align = Align::Left;
    bool grey = false;
};

struct Line {
    std::vector<Cell> cells;
    double spaceBefore = 0;    // in body lines; dropped at the top of a page
    bool keepWithNext = false; // headings go on the page of the line after them
};

using Section = std::vector<Line>;

QString utf8(std::string_view text) {
    return QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
}

QString optionText(OptionId id, const RadioImage& image, Language language) {
    return utf8(optionItems(id, image, language).at(toIndex(decodeOption(id, image))));
}

const QString kTitle = QStringLiteral("ZR-310 PC编程软件");
const QString kModel = QStringLiteral("ZR-310");

Section channelSection(const RadioImage& image, Language language, const QDateTime& printedAt) {
    const QString band = utf8(bandOfImage(image).text);
    Section s;
    s.push_back({{{0.5, kTitle, Role::Title, Align::Centre}}, 0, true});
    s.push_back({{{kLeft, QStringLiteral("信道设置"), Role::Heading},
                  {kRight, printedAt.toString(QStringLiteral("yyyy-MM-dd HH:mm:ss")), Role::Body,
                   Align::Right}},
                 0.5,
                 true});
    s.push_back({{{kLeft, QStringLiteral("机型")},
                  {kAfterPrevious, QStringLiteral(":")},
                  {kColRxFreq, kModel},
                  {kColRxTone, QStringLiteral("频率范围:")},
                  {kColTxFreq, band}},
                 0.3});

    const double columns[] = {kColChannel, kColRxFreq, kColRxTone, kColTxFreq,
                              kColTxTone,  kColScan,   kColBusy};
    const QString headings1[] = {"信道", "接收频率", "接收", "发射频率", "发射", "扫描", "繁忙"};
    const QString headings2[] = {"", "(MHz)", "CTC/DCS", "(MHz)", "CTC/DCS", "删除/添加", "锁定"};
    Line heading1{{}, 0.8, true}, heading2{{}, 0, true}, rules{{}, 0, true};
    for (int i = 0; i < 7; ++i) {
        heading1.cells.push_back({columns[i], headings1[i], Role::Bold});
        if (!headings2[i].isEmpty())
            heading2.cells.push_back({columns[i], headings2[i], Role::Bold});
        const bool narrow = i == 0 || i == 6;
        rules.cells.push_back(
            {columns[i], narrow ? QStringLiteral("----") : QStringLiteral("--------")});
    }
    s.push_back(heading1);
    s.push_back(heading2);
    s.push_back(rules);

    // As the grid shows them: a closed channel all grey, a channel that may
    // not transmit with its transmit side and busy lock grey.
    const QString closeWord = utf8(ResString(txt::Close, language));
    const QString noTxWord = utf8(ResString(txt::NoTx, language));
    for (int n = 1; n <= kChannelCount; ++n) {
        const ChannelTexts ch = decodeChannel(image, channelColumn(n), language);
        const bool greyTx = ch.close || ch.noTx;
        Line row;
        row.cells = {{kColChannel, QString::number(n), Role::Body, Align::Left, ch.close},
                     {kColRxFreq, utf8(ch.rxFreq), Role::Body, Align::Left, ch.close},
                     {kColRxTone, utf8(ch.rxTone), Role::Body, Align::Left, ch.close},
                     {kColTxFreq, utf8(ch.txFreq), Role::Body, Align::Left, greyTx},
                     {kColTxTone, utf8(ch.txTone), Role::Body, Align::Left, greyTx},
                     {kColScan, utf8(ch.scan), Role::Body, Align::Left, ch.close},
                     {kColBusy, utf8(ch.busyLock), Role::Body, Align::Left, greyTx}};
        if (ch.close || ch.noTx)
            row.cells.push_back({kColMark, ch.close ? closeWord : noTxWord});
        s.push_back(row);
    }
    return s;
}

// Caption/value pairs, two to a line, in the order given.
void addPairs(Section& s, const std::vector<std::pair<QString, QString>>& pairs) {
    for (std::size_t i = 0; i < pairs.size(); ++i) {
        const int side = static_cast<int>(i % 2);
        if (side == 0)
            s.push_back({});
        s.back().cells.push_back({kPairCaption[side], pairs[i].first});
        s.back().cells.push_back({kPairValue[side], pairs[i].second});
    }
}

Section functionSection(const RadioImage& image, Language language) {
    const auto option = [&](OptionId id) { return optionText(id, image, language); };
    Section s;
    s.push_back({{{0.5, kTitle, Role::Title, Align::Centre}}, 1.2, true});
    s.push_back({{{kLeft, QStringLiteral("扫描信息和整机功能"), Role::Heading}}, 0.5, true});
    s.push_back({{{kPairCaption[0], QStringLiteral("机型:")}, {kPairValue[0], kModel}}, 0.3});
    s.push_back({{{kLeft, QStringLiteral("扫描信息"), Role::Bold}}, 0.5, true});
    addPairs(s, {{"扫描模式:", option(OptionId::CboScan)},
                 {"恢复信道", option(OptionId::CboBakCH)},
                 {"优先信道:", option(OptionId::CboPriorityCH)},
                 {"回扫周期", option(OptionId::CboBakScan)},
                 {"扫描停留时间:", option(OptionId::CboScanHold)}});
    s.push_back({{{kLeft, QStringLiteral("整机功能"), Role::Bold}}, 0.5, true});
    addPairs(s, {{"监听:", option(OptionId::CboMoni)},
                 {"发射限时", option(OptionId::CboTXLimit)},
                 {"提示音:", option(OptionId::CboRing)},
                 {"手动模式", option(OptionId::CboHandModel)},
                 {"省电功能:", option(OptionId::CboBatFunction)},
                 {"静噪等级", option(OptionId::CboSQ)},
                 {"预告警时间:", option(OptionId::CboPreAlert)},
                 {"TOT再按键时间", option(OptionId::CboTOTAgain)},
                 {"TOT复位时间:", option(OptionId::CboTOTReset)}});
    return s;
}

Section tuningSection(const RadioImage& image) {
    const auto value = [&](TuningItem item) { return QString::number(tuningValue(image, item)); };
    Section s;
    s.push_back({{{kLeft, QStringLiteral("调整设置"), Role::Heading}}, 1.2, true});
    s.push_back({{{kLeft, QStringLiteral("调整项目"), Role::Bold}}, 0.5, true});
    addPairs(s, {{"电池电压电平:", value(TuningItem::LowBattery)},
                 {"第9级静噪电平", value(TuningItem::Squelch9)},
                 {"第3级静噪电平:", value(TuningItem::Squelch3)},
                 {"CDCSS频偏", value(TuningItem::CdcssDeviation)},
                 {"CTCSS频偏:", value(TuningItem::CtcssDeviation)}});
    return s;
}

// Places sections line by line from the top of the first page down.
class Placer {
public:
    Placer(const QPaintDevice& device, ReportLayout& layout)
        : m_device(device), m_layout(layout), m_width(device.width()), m_height(device.height()) {
        const double smallest = kSmallestBodyPoints * device.logicalDpiY() / 72.0;
        const double body = std::max(
            1.0, std::min(kBodyOfWidth * m_width, std::max(kBodyOfHeight * m_height, smallest)));
        const double scales[] = {1.0, 1.0, 1.2, 1.6}; // by Role
        for (int role = 0; role < 4; ++role) {
            QFont font = reportFont();
            font.setPixelSize(std::max(1, static_cast<int>(body * scales[role] + 0.5)));
            font.setBold(role != static_cast<int>(Role::Body));
            m_fonts[role] = font;
        }
        m_bodyLine = kLineSpacing * m_fonts[0].pixelSize();
        m_y = top();
    }

    // Starts the section on a new page when it would fit there but not in
    // what is left of this one.
    void place(const Section& section) {
        double height = 0;
        for (const Line& line : section)
            height += line.spaceBefore * m_bodyLine + lineHeight(line);
        if (m_y > top() && m_y + height > bottom() && height <= bottom() - top())
            newPage();
        for (std::size_t i = 0; i < section.size(); ++i)
            place(section, i);
    }

private:
    double top() const { return kTop * m_height; }
    double bottom() const { return kBottom * m_height; }

    const QFont& font(Role role) const { return m_fonts[static_cast<int>(role)]; }

    Role largestRole(const Line& line) const {
        Role largest = Role::Body;
        for (const Cell& cell : line.cells)
            largest = std::max(largest, cell.role);
        return largest;
    }

    double lineHeight(const Line& line) const {
        return kLineSpacing * font(largestRole(line)).pixelSize();
    }

    void newPage() {
        ++m_page;
        m_y = top();
    }

    // The height of line i and of the lines it is kept with.
    double keptHeight(const Section& section, std::size_t i) const {
        double height = lineHeight(section[i]);
        for (; section[i].keepWithNext && i + 1 < section.size(); ++i)
            height += section[i + 1].spaceBefore * m_bodyLine + lineHeight(section[i + 1]);
        return height;
    }

    void place(const Section& section, std::size_t index) {
        const Line& line = section[index];
        double space = m_y > top() ? line.spaceBefore * m_bodyLine : 0;
        const double height = lineHeight(line);
        // An empty page takes any line, so a line taller than the page (on
        // absurd paper) cannot start page after page.
        if (m_y > top() && m_y + space + keptHeight(section, index) > bottom()) {
            newPage();
            space = 0;
        }
        m_y += space;
        const QFontMetricsF lineMetrics(font(largestRole(line)), &m_device);
        const double baseline = m_y + (height - lineMetrics.height()) / 2 + lineMetrics.ascent();
        double previousEnd = kLeft * m_width;
        for (const Cell& cell : line.cells) {
            const QFontMetricsF metrics(font(cell.role), &m_device);
            const double width = metrics.horizontalAdvance(cell.text);
            double x = cell.x == kAfterPrevious ? previousEnd : cell.x * m_width;
            if (cell.align == Align::Centre)
                x -= width / 2;
            else if (cell.align == Align::Right)
                x -= width;
            PlacedText placed;
            placed.page = m_page;
            placed.origin = QPointF(x, baseline);
            placed.bounds = QRectF(x, baseline - metrics.ascent(), width, metrics.height());
            placed.text = cell.text;
            placed.font = font(cell.role);
            placed.colour = cell.grey ? kGreyInk : kInk;
            m_layout.texts.push_back(placed);
            previousEnd = x + width;
        }
        m_y += height;
        m_layout.pageCount = m_page + 1;
    }

    const QPaintDevice& m_device;
    ReportLayout& m_layout;
    double m_width, m_height;
    QFont m_fonts[4];
    double m_bodyLine = 0;
    double m_y = 0;
    int m_page = 0;
};

} // namespace

QFont reportFont() {
    QFont font;
    font.setFamilies({QStringLiteral("WenQuanYi Micro Hei"), QStringLiteral("Noto Sans CJK SC"),
                      QStringLiteral("Source Han Sans SC"), QStringLiteral("Microsoft YaHei"),
                      QStringLiteral("PingFang SC"), QStringLiteral("SimHei")});
    font.setStyleHint(QFont::SansSerif);
    return font;
}

ReportLayout layoutReport(const RadioImage& image, Language language, const QDateTime& printedAt,
                          const QPaintDevice& device) {
    ReportLayout layout;
    layout.pageSize = QSizeF(device.width(), device.height());
    if (device.width() <= 0 || device.height() <= 0)
        return layout;
    Placer placer(device, layout);
    placer.place(channelSection(image, language, printedAt));
    placer.place(functionSection(image, language));
    placer.place(tuningSection(image));
    return layout;
}

void paintReport(QPainter& painter, QPagedPaintDevice& device, const ReportLayout& layout) {
    int page = 0;
    for (const PlacedText& text : layout.texts) {
        for (; page < text.page; ++page)
            device.newPage();
        painter.setFont(text.font);
        painter.setPen(text.colour);
        painter.drawText(text.origin, text.text);
    }
}

bool printReport(QPagedPaintDevice& device, const RadioImage& image, Language language,
                 const QDateTime& printedAt) {
    const ReportLayout layout = layoutReport(image, language, printedAt, device);
    if (layout.pageCount == 0)
        return false;
    QPainter painter;
    if (!painter.begin(&device))
        return false;
    paintReport(painter, device, layout);
    return painter.end();
}

} // namespace zr310
